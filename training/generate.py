"""Makes labelled texts: titles and phrases put together as people type them, with their slips.

usage: generate.py PROGRAM ENGLISH SEED COUNT FILE
"""

import pathlib
import pickle
import random
import re
import sys

from english import paths
from negatives import Negatives
from phrases import Meaning, Phrases
from said import Said
from titles import Titles
from tokens import tokenize
from written import Written
import titles

ROLES = "KSNHMTDIABY"  # keep, strip, amount, hour, minute, hour and minute, day, month number, first and second of a/b, year
NEIGHBOURS = dict(
    zip(
        "qwertyuiopasdfghjklzxcvbnm",
        [
            "wa",
            "qes",
            "wrd",
            "etf",
            "ryg",
            "tuh",
            "yij",
            "uok",
            "ipl",
            "ol",
            "qsz",
            "adwx",
            "sfec",
            "dgrv",
            "fhtb",
            "gjyn",
            "hkum",
            "jlim",
            "kop",
            "xas",
            "zcsd",
            "xvdf",
            "cbfg",
            "vngh",
            "bmhj",
            "nkj",
        ],
    )
)


def unmarked(text):
    """A title without what the marks of labelled texts are made of."""
    return re.sub(r"[{}|<>]", "", text)


class Generator:
    def __init__(self, seed, real):
        self.r = random.Random(seed)
        self.phrases = Phrases(self.r)
        self.titles = Titles(self.r)
        self.written = Written(self.r)
        self.said = Said(self.r)
        self.negatives = Negatives(self.r, self.titles, real)

    def slip(self, word):
        r = self.r
        i = r.randrange(len(word) - 1)
        kind = r.randrange(6)
        if kind == 0:
            return word[:i] + word[i + 1] + word[i] + word[i + 2 :]
        if kind == 1:
            return word[: i + 1] + word[i + 2 :]
        if kind == 2:
            return word[: i + 1] + word[i] + word[i + 1 :]
        if kind == 3:
            c = NEIGHBOURS.get(word[i + 1].lower())
            return word[: i + 1] + r.choice(c) + word[i + 2 :] if c else word
        if kind == 4:
            c = NEIGHBOURS.get(word[i].lower())
            return word[: i + 1] + r.choice(c) + word[i + 1 :] if c else word
        vowels = [j for j in range(1, len(word)) if word[j] in "aeiou"]
        if not vowels:
            return word
        j = r.choice(vowels)
        return word[:j] + (r.choice("aeiou") if r.random() < 0.5 else "") + word[j + 1 :]

    def with_slips(self, marked, share):
        r = self.r

        def one(match):
            word = match[0]
            return self.slip(word) if len(word) > 3 and r.random() < share else word

        return re.sub(r"(?<![{|\w])[A-Za-z]{4,}(?!\w)", one, marked)

    def cased(self, marked):
        """A whole text in one of the ways people use capitals."""
        form = self.r.random()
        keep_roles = lambda change: re.sub(
            r"\{[^}]*\}|[^{]+", lambda m: m[0] if m[0][0] == "{" else change(m[0]), marked
        )
        if form < 0.42:
            return keep_roles(str.lower)
        if form < 0.45:
            return keep_roles(str.upper)
        if form < 0.62:
            for i, c in enumerate(marked):
                if c.isalpha():
                    return marked[:i] + c.upper() + marked[i + 1 :]
                if c == "{":
                    break
        if form < 0.7:
            return keep_roles(
                lambda text: re.sub(
                    r"\b(monday|tuesday|wednesday|thursday|friday|saturday|sunday|january|february|march|april|june|july|august|september|october|november|december|mon|tue|wed|thu|fri|sat|sun|christmas|thanksgiving|easter)\b",
                    lambda m: m[0].capitalize(),
                    text,
                )
            )
        if form < 0.73:
            return keep_roles(lambda text: re.sub(r"\b[a-z]", lambda m: m[0].upper(), text))
        return marked

    def as_said(self):
        """What a writer said, mostly of another task."""
        if self.r.random() < 0.25:
            task, meaning = self.said.task()
            return self.labelled(self.cased(task), meaning)
        when, meaning, where = self.said.phrase()
        when = self.with_slips(when, self.r.choice([0, 0, 0, 0, 0.1, 0.2]))
        before, _, after = self.written.place(where)
        return self.labelled(self.cased(self.written.filled(before, when, after)), meaning)

    def positive(self):
        r = self.r
        if r.random() < 0.045:
            day, time, meaning = self.phrases.apart()
            first, last = (day, time) if r.random() < 0.7 else (time, day)
            title = unmarked(self.written.undated() if r.random() < 0.2 else self.titles.title())
            return self.labelled(self.cased(f"<{first}> {title} <{last}>"), meaning)
        if r.random() < 0.32:
            return self.as_said()
        phrase = self.phrases.phrase()
        marked = self.with_slips(phrase.text, r.choice([0, 0, 0, 0, 0.1, 0.25]))
        if r.random() < 0.3:
            before, when, after = self.written.place()
            if re.search(r"\d/\d", when) and r.random() < 0.7:
                phrase = self.phrases.numeric_date()
                marked = phrase.text
            return self.labelled(self.cased(self.written.filled(before, marked, after)), phrase.meaning)
        if r.random() < 0.03:
            title = ""
        elif r.random() < 0.1:
            title = self.written.undated()
        else:
            title = self.titles.trap() if r.random() < 0.16 else self.titles.title()
            if r.random() < 0.12:
                title = self.with_slips(title, 0.12)
        title = unmarked(title)
        if title and r.random() < 0.02:
            title += r.choice([" 🌹", " 🎂", " 🚗", " ❗", " 😀", " 📦"])
        # The phrase in angle brackets, the title as it is.
        inner = f"<{marked}>"
        place = r.random()
        if phrase.is_name and (0.56 <= place < 0.8 or 0.91 < place <= 0.93):
            title = unmarked(
                r.choice(
                    [
                        lambda: f"{r.choice(titles.DO)} {self.titles.thing()}",
                        lambda: f"{r.choice(titles.VERBS[:28])} {r.choice(titles.PEOPLE)}",
                    ]
                )()
            )
        if title and place > 0.93:
            second = unmarked(self.titles.aside())
            whole = title + " " + inner + r.choice([", ", ", ", ", ", " - ", "; ", ". ", " and ", " then "]) + second
        elif title and place > 0.91:
            second = unmarked(self.titles.aside())
            whole = "<" + marked + r.choice(["", "", ","]) + "> " + title + ", " + second
        elif not title:
            whole = inner
        elif place < 0.56:
            joint = r.choices(
                [" ", ", ", " - ", "; ", ": ", " -- ", " (", "... ", " – ", ". ", " @ ", " | "],
                [80, 7, 4, 1, 1, 1, 2, 1, 1, 1, 0, 0],
            )[0]
            whole = (
                title + " " + inner[:1] + "(" + inner[1:-1] + ")>"
                if joint == " ("
                else title + (joint if joint[-1] == " " else joint + " ") + inner
            )
            if joint in (", ", " - ", "; ", ": ", " -- ", "... ", " – ", ". "):
                whole = title + "<" + joint + marked + ">" if joint != ". " else title + ". " + inner
        elif place < 0.8:
            joint = r.choices([" ", ", ", ": ", " - ", "; ", "... "], [72, 12, 8, 6, 1, 1])[0]
            whole = "<" + marked + joint.rstrip() + "> " + title if joint != " " else inner + " " + title
        else:
            words = title.split(" ")
            cut = [
                i
                for i in range(1, len(words))
                if words[i].lower()
                in (
                    "for",
                    "with",
                    "about",
                    "at",
                    "to",
                    "re",
                    "and",
                    "from",
                    "in",
                    "on",
                    "re:",
                    "w/",
                    "regarding",
                    "before",
                    "via",
                )
            ]
            if (len(words) < 3 or phrase.is_name) and not cut:
                whole = title + " " + inner
            else:
                i = r.choice(cut) if cut and (phrase.is_name or r.random() < 0.85) else r.randrange(1, len(words))
                whole = " ".join(words[:i]) + " " + inner + " " + " ".join(words[i:])
                if re.search(r"\b(at|before|in|on|after)$", " ".join(words[:i]).lower()):
                    whole = title + " " + inner
        if r.random() < 0.05:
            whole += r.choice(["!", "!!", "?", ".", "...", " :)", " 🙂", " pls", " please", " !", " 🎉", " ❗", " thx"])
        elif r.random() < 0.03:
            whole = (
                r.choice(
                    [
                        "🎂 ",
                        "- ",
                        "* ",
                        "❗ ",
                        "[ ] ",
                        "todo: ",
                        "TODO ",
                        "! ",
                        "📞 ",
                        "reminder: ",
                        "remind me to ",
                        "remember: ",
                        "hey ",
                    ]
                )
                + whole
            )
        return self.labelled(self.cased(whole), phrase.meaning)

    def labelled(self, marked, meaning):
        """The plain text, its roles and its meaning. Marks: <only time>, {digits|role}."""
        text, roles, inside, at = [], [], False, 0
        while at < len(marked):
            c = marked[at]
            if c == "<":
                inside = True
            elif c == ">":
                inside = False
            elif c == "{":
                end = marked.index("}", at)
                digits, role = marked[at + 1 : end].split("|")
                text.append(digits)
                roles.append(role * len(digits))
                at = end
            else:
                text.append(c)
                roles.append("S" if inside else "K")
            at += 1
        plain, by_character = "".join(text), "".join(roles)
        tokens = tokenize(plain)
        return plain, "".join(by_character[token.start] for token in tokens), meaning

    def negative(self):
        text = self.negatives.text()
        if self.r.random() < 0.06:
            text = self.with_slips(text, 0.1)
        if self.r.random() < 0.25:
            text = self.cased(text.replace("{", "").replace("<", "").replace(">", "").replace("|", ""))
        text = text.strip()
        return text, "K" * len(tokenize(text)), Meaning()


def examples(seed, count, real, program, negatives=0.44):
    """That many examples, most of which only a model can date."""
    generator = Generator(seed, real)
    found, seen = [], set()
    while len(found) < count:
        batch = []
        for _ in range(20_000):
            example = generator.negative() if generator.r.random() < negatives else generator.positive()
            if (
                example[0]
                and example[0] not in seen
                and len(example[1])
                and len(example[0]) < 300
                and "\n" not in example[0]
            ):
                seen.add(example[0])
                batch.append(example)
        for example, path in zip(batch, paths([text for text, _, _ in batch], program)):
            # What never arrives helps a little to learn what does.
            if path == "miss" or generator.r.random() < (
                0.12 if path == "rules" else 0.25 if example[2].kind != "NONE" else 0.02
            ):
                found.append(example)
    return found[:count]


if __name__ == "__main__":
    program, english, seed, count, file = sys.argv[1:]
    real = pathlib.Path(english).read_text(encoding="utf-8").splitlines()
    with open(file, "wb") as out:
        pickle.dump(examples(int(seed), int(count), real, program), out)
