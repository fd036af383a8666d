#!/usr/bin/env python3
"""Writes lines.txt: 3,000 distinct lines as people type them, for the parse benchmark.

A third holds no hint of a time, half is dated by a rule, the rest has a hint that leads nowhere; a sixth is 200 and more
characters long. The same file comes out each time.
"""

import pathlib
import random

verbs = "Buy Call Email Fix Review Send Write Book Order Clean Return Print Read Ask Pay Plan Pack Visit Draft Check".split()
things = [
    "milk", "the dentist", "Sam about the offer", "the kitchen tap", "issue #42", "3 apples", "the quarterly numbers",
    "a gift for Lena", "the library books", "two boarding passes", "Ümit's résumé", "the landlord", "flight tickets",
    "the garden hose", "slides for the talk", "Dr. Okafor", "a table for four", "the gym bag", "日本語の本", "cat food 🐈",
]
places = ["", " at the office", " in Lisbon", " on the way home", " with Priya", " for the kids", " (urgent)", " - v2"]
dated = [
    "tomorrow", "tomorrow at 9am", "today at noon", "tonight", "tonight at 8", "next friday", "this weekend", "monday",
    "on the 15th", "by the 1st", "march 3rd", "Dec 24 at 6pm", "in 2 hours", "in 30 minutes", "in a week",
    "3 days from now", "2 weeks from tomorrow", "at 1530", "at 5:45 pm", "friday afternoon", "day after tomorrow at 7",
    "wednesday morning", "at midnight", "at 10", "in 3 days at 4pm",
]
undated = ["later", "asap", "soon", "early next week", "around 3", "end of month", "first thing", "tmrw 9", "by xmas or christmas"]
filler = (
    "and do not forget to bring the blue folder with the signed copies, the spare keys, the charger, and the list of "
    "questions that came up when we went through the whole plan with the others who could not come along "
).split()


def lines(seed=20251104):
    source = random.Random(seed)
    seen = set()
    for index in range(3000):
        while True:
            words = source.choice(verbs) + " " + source.choice(things) + source.choice(places)
            if index % 6 == 5:
                extra = []
                while sum(map(len, extra)) + len(extra) < 200:
                    extra.append(source.choice(filler))
                words += " " + " ".join(extra)
            if index % 6 in (1, 3, 5):
                phrase = source.choice(dated)
                words = f"{phrase} {words}" if source.random() < 0.2 else f"{words} {phrase}"
            elif index % 6 == 2:
                words += " " + source.choice(undated)
            if source.random() < 0.3:
                words += f" no {source.randrange(100, 10000)}x"
            if words not in seen:
                break
        seen.add(words)
        yield words


if __name__ == "__main__":
    pathlib.Path(__file__).with_name("lines.txt").write_text("\n".join(lines()) + "\n", encoding="utf-8")
