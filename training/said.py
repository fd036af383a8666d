"""Made-up tasks of which it is known what the words that say when mean: words/said.txt, which label.py makes.

A line is the task with those words in brackets and roles at their digits, a tab, and the meaning: its kind, and what words say
of the rest, such as hour=15.
"""

import re

from phrases import Meaning, ordinal_suffix
from titles import words
from written import where_of


def line_of(marked, tokens, roles, meaning):
    """That of a task with brackets. The tokens are those of the text without them."""
    numbers = {token.start: (token.text, role) for token, role in zip(tokens, roles) if role not in "KS"}
    line, at, skipped = "", 0, 0
    for c in marked:
        if c in "[]":
            line += c
            continue
        if skipped:
            skipped -= 1
        elif at in numbers:
            digits, role = numbers[at]
            line += f"{{{digits}|{role}}}"
            skipped = len(digits) - 1
        else:
            line += c
        at += 1
    rest = "".join(
        f" {name}={value}" for name, value in vars(meaning).items() if name != "kind" and value not in (None, "NONE")
    )
    return f"{line}\t{meaning.kind}{rest}"


def read(line):
    """The task with angle brackets for its brackets, and its meaning."""
    marked, meaning = line.split("\t")
    kind, *rest = meaning.split(" ")
    values = {name: value if name == "shift" else int(value) for name, value in (part.split("=") for part in rest)}
    return marked.replace("[", "<").replace("]", ">"), Meaning(kind, **values)


SAID = [read(line) for line in words("said")]


class Said:
    def __init__(self, rng):
        self.r = rng

    def task(self):
        task, meaning = self.r.choice(SAID)
        return self.renumbered(task), meaning

    def phrase(self):
        """What says when, its meaning, and where it stood."""
        task, meaning = self.r.choice(SAID)
        while task.count("<") != 1:
            task, meaning = self.r.choice(SAID)
        before, when, after = re.fullmatch(r"(.*)<(.*)>(.*)", task).groups()
        return self.renumbered(when), meaning, where_of(before, after)

    def renumbered(self, text):
        """Often with other days, minutes and amounts: what is read from digits may be any."""
        if self.r.random() < 0.5:
            return text

        def other(match):
            digits, role, suffix = match.groups()
            if role == "D" and len(digits) <= 2:
                days = [n for n in range(1, 29) if suffix in ("", ordinal_suffix(n))]
                return f"{{{self.r.choice(days):0{len(digits) if digits[0] == '0' else 1}}|D}}{suffix}"
            if role == "M":
                return f"{{{self.r.choice([0, 5, 10, 15, 15, 20, 30, 30, 30, 40, 45, 45, 50]):02}|M}}{suffix}"
            if role == "N" and len(digits) == 1 and digits != "1":
                return f"{{{self.r.randrange(2, 10)}|N}}{suffix}"
            return match[0]

        return re.sub(r"\{(\d+)\|(\w)\}(st|nd|rd|th|)", other, text)
