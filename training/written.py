"""Tasks that writers made up, with and without a date. words/dated.txt has the words that say when in brackets, when the task
was typed, and when it is due."""

import re

from titles import words


def where_of(before, after):
    """Where between these words others stand: whether at the start, and whether at the end."""
    return not before.strip(), not after.strip()


UNDATED = words("undated")
TASKS = [line.split("\t")[0] for line in words("dated")]
DATED = [re.fullmatch(r"(.*)\[(.*)\](.*)", task).groups() for task in TASKS if task.count("[") == 1]

# By where those words stand: at the start, in the middle, at the end.
PLACES = {}
for parts in DATED:
    PLACES.setdefault(where_of(parts[0], parts[2]), []).append(parts)


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

    def place(self, where=None):
        """What stood before the words that said when, those words, and what stood behind them: at the start, the end or
        wherever."""
        before, when, after = self.r.choice(PLACES[where] if where else DATED)
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
