"""Writes what the trainer's own network makes of 500 texts, for the program to be held against.

usage: golden.py WEIGHTS ENGLISH FILE
"""

import datetime
import json
import pathlib
import random
import sys

from generate import Generator
from predict import NONE, classify, load, month_first, outputs
from tokens import features, tokenize

ODD = [
    "",
    " ",
    "tmrw",
    "9p",
    "?",
    "🎂 party tmrw 9p 🎉",
    "Café à 9p tmrw",
    "日本語 tmrw 9p",
    "Übung früh am 3. märz",
    "call mom 9p",
    "ﬁx tmrw",
    "naïve plan 12/5",
    "o’clock 3",
    "don't call tmrw",
    "tmrw" * 40,
    "call mom tmrw 9p " * 17 + "and then",
    "a b c d e f g h i j k l m n o p q r s t u v w x y z " * 5,
    "x" * 300,
    "1" * 300,
    "12345 tmrw 123456789",
    "2025-13-45",
    "31/02 tmrw",
    "29/2",
    "feb 29",
    "on feb 30 9p",
    "Zürich um 15h30",
    "\u00a0tmrw\u00a09p",
    "call\u2003mom tmrw",
    "ALL CAPS TMRW 9P",
    "İstanbul tmrw",
    "tmrw 25:99",
    "at 24:00 early",
    "in 999 weeks early",
    "in 1000 weeks early",
    "0 min from now early",
    "around 0",
    "wendsday 9a",
    "“quoted” tmrw",
    "end of feb",
    "the 31st",
    "the thirty first",
    "12/31/2025",
    "1/1/31",
    "5.12.",
    "2025/04/02 dentist",
]


def texts(english):
    r = random.Random(99)
    generator = Generator(98, english)
    found = list(ODD)
    while len(found) < 500:
        text = (generator.negative() if r.random() < 0.3 else generator.positive())[0]
        found.append(text + ("" if r.random() < 0.9 else r.choice([" 🙂", " – ok", " é", " naïveté"])))
    return found


def token_row(text, token, row):
    """Begin and end in bytes, rows of characters, class of the value, row of the lexicon, flags as bits."""
    characters, value, word, flags = row
    place = [len(text[:at].encode()) for at in (token.start, token.end)]
    return [*place, [c for c in characters if c], value, word, int("".join(str(int(flag)) for flag in flags), 2)]


def best(scores):
    return [int(scores.argmax()), round(float(scores.max()), 4)]


def golden(text, output, now, locale):
    line = {"text": text, "now": now.isoformat(), "locale": locale}
    if not tokenize(text):
        return {**line, "tokens": [], "answer": dict(NONE, title=text)}
    tokens, roles, heads = output
    answer, score = classify(text, now, month_first(locale), output)
    return {
        **line,
        "tokens": [token_row(text, token, row) for token, row in zip(tokens, features(text, tokens))],
        "roles": [best(scores) for scores in roles],
        "kind": [round(float(score), 4) for score in heads["kind"]],
        "best": {name: best(scores) for name, scores in heads.items() if name != "kind"},
        "answer": answer,
        "score": round(score, 4),
    }


def main(weights, english, file):
    found = texts(pathlib.Path(english).read_text(encoding="utf-8").splitlines())
    r = random.Random(97)
    with open(file, "w", encoding="utf-8") as out:
        for text, output in zip(found, outputs(load(weights), [text or "-" for text in found])):
            now = datetime.datetime(
                r.choice([2024, 2025, 2026, 2028]),
                r.randrange(1, 13),
                r.randrange(1, 29),
                r.randrange(24),
                r.randrange(60),
            )
            locale = r.choice(["en_US", "en_US", "en_GB", "de_DE", "en", ""])
            line = golden(text, output, now, locale)
            out.write(json.dumps(line, ensure_ascii=False, separators=(",", ":")) + "\n")


if __name__ == "__main__":
    main(*sys.argv[1:])
