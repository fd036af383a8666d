"""Writes what the trainer's own net makes of 500 texts, for the program to be held against."""

import datetime
import json
import random
import sys

from generate import Generator
from predict import *

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


def main(model, out):
    net = load(model)
    r = random.Random(99)
    real = open("/tmp/real2.txt").read().split("\n")
    generator = Generator(98, real)
    texts = list(ODD)
    while len(texts) < 500:
        text = (generator.negative() if r.random() < 0.3 else generator.positive())[0]
        texts.append(text + ("" if r.random() < 0.9 else r.choice([" 🙂", " – ok", " é", " naïveté"])))
    lines = []
    for text, output in zip(texts, outputs(net, [t or "-" for t in texts])):
        now = datetime.datetime(
            r.choice([2024, 2025, 2026, 2028]), r.randrange(1, 13), r.randrange(1, 29), r.randrange(24), r.randrange(60)
        )
        locale = r.choice(["en_US", "en_US", "en_GB", "de_DE", "en", ""])
        if not tokenize(text):
            lines.append(
                {"text": text, "now": now.isoformat(), "locale": locale, "tokens": [], "answer": dict(NONE, title=text)}
            )
            continue
        tokens, roles, heads = output
        answer, score = classify(text, now, month_first(locale), output)
        rows = features(text, tokens)
        lines.append(
            {
                "text": text,
                "now": now.isoformat(),
                "locale": locale,
                "tokens": [
                    [
                        len(text[: t.start].encode()),
                        len(text[: t.end].encode()),
                        [c for c in row[0] if c],
                        row[1],
                        row[2],
                        int("".join(str(int(f)) for f in row[3]), 2),
                    ]
                    for t, row in zip(tokens, rows)
                ],
                "roles": [[int(row.argmax()), round(float(row.max()), 4)] for row in roles],
                "kind": [round(float(x), 4) for x in heads["kind"]],
                "best": {
                    name: [int(scores.argmax()), round(float(scores.max()), 4)]
                    for name, scores in heads.items()
                    if name != "kind"
                },
                "answer": answer,
                "score": round(score, 4),
            }
        )
    with open(out, "w") as file:
        for line in lines:
            file.write(json.dumps(line, ensure_ascii=False, separators=(",", ":")) + "\n")


if __name__ == "__main__":
    main(sys.argv[1], sys.argv[2])
