"""Tasks that writers made up, with and without a date: words/dated.txt has the words that say when in brackets."""

import re

from titles import words

UNDATED = words("undated")
DATED = [re.fullmatch(r"(.*)\[(.*)\](.*)", line).groups() for line in words("dated")]


class Written:
    def __init__(self, rng):
        self.r = rng

    def renumbered(self, text):
        """Often with other numbers, as what they count does not matter; years stay."""

        def other(match):
            digits = match[0]
            if self.r.random() < 0.5 or re.fullmatch(r"(19|20)\d\d", digits):
                return digits
            least = 10 ** (len(digits) - 1)
            return str(self.r.randrange(least, 10 * least))

        return re.sub(r"\d+", other, text) if len(text) < 200 and self.r.random() < 0.6 else text

    def undated(self):
        return self.renumbered(self.r.choice(UNDATED))

    def place(self):
        """What stood before the words that said when, those words, and what stood behind them."""
        before, when, after = self.r.choice(DATED)
        return self.renumbered(before), when, self.renumbered(after)

    @staticmethod
    def filled(before, phrase, after):
        """A task with that phrase at its place, the phrase and what goes with it in angle brackets."""
        # A mark that only parts the title from the date at its end goes with the date.
        if not after.strip():
            title = before.rstrip(" ,;:-–—")
            return f"{title}<{before[len(title):]}{phrase}>{after}"
        if not before.strip():
            title = after.lstrip(" ,;:-–—")
            return f"{before}<{phrase}{after[: len(after) - len(title)]}>{title}"
        return f"{before}<{phrase}>{after}"
