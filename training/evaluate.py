"""Says how often the network is right.

usage: evaluate.py WEIGHTS PROGRAM CORPUS ENGLISH [--errors]

CORPUS is the folder of model-development.jsonl and model-frozen.jsonl, ENGLISH a file of lines without dates. --errors shows
those of the development set; those of the frozen one are never shown.
"""

import datetime
import json
import math
import pathlib
import subprocess
import sys
from dataclasses import dataclass
from zoneinfo import ZoneInfo

from predict import classify, load, month_first, outputs

ZONE = "America/New_York"


@dataclass
class Judged:
    wanted: dict
    due: str | None
    title: str
    score: float

    @property
    def date_right(self):
        return self.due == self.wanted["due"]

    @property
    def title_right(self):
        return self.title == self.wanted["title"]


def judged(net, rows, program):
    """Each row with what the program would make of the network's answer."""
    answers = []
    for row, output in zip(rows, outputs(net, [row["text"] for row in rows])):
        now = datetime.datetime.fromisoformat(row["now"])
        answers.append(classify(row["text"], now, month_first(row.get("locale", "en_US")), output))
    questions = "".join(
        json.dumps({"id": i, "classification": answer, "now": row["now"], "tz": ZONE}) + "\n"
        for i, ((answer, _), row) in enumerate(zip(answers, rows))
    )
    resolved = subprocess.run(
        [program, "resolve", "--jsonl"], input=questions.encode(), stdout=subprocess.PIPE, check=True
    )
    results = []
    for line, row, (answer, score) in zip(resolved.stdout.decode().splitlines(), rows, answers):
        due = json.loads(line)["due"]
        if due is not None:
            due = datetime.datetime.fromtimestamp(due, ZoneInfo(ZONE)).strftime("%Y-%m-%dT%H:%M")
        results.append(Judged(row, due, answer["title"].strip() or row["text"].strip(), score))
    return results


def share(count, total):
    """In per cent, with Wilson's 95 % interval."""
    z, p = 1.96, count / total
    middle = (p + z * z / 2 / total) / (1 + z * z / total)
    half = z / (1 + z * z / total) * math.sqrt(p * (1 - p) / total + z * z / 4 / total / total)
    return f"{100 * p:.1f} % ({100 * max(0, middle - half):.1f}-{100 * (middle + half):.1f})"


def table(name, results):
    dated = [result for result in results if result.wanted["due"]]
    undated = [result for result in results if not result.wanted["due"]]
    print(f"\n## {name}: {len(dated)} texts with a date, {len(undated)} without\n")
    print("| | |\n|---|---|")
    print(f"| date and time right, of all | {share(sum(r.date_right for r in results), len(results))} |")
    print(f"| date and time right, of those with a date | {share(sum(r.date_right for r in dated), len(dated))} |")
    print(f"| title right, of all | {share(sum(r.title_right for r in results), len(results))} |")
    print(f"| title right, of those with a date | {share(sum(r.title_right for r in dated), len(dated))} |")
    wrong = sum(r.due is not None and not r.date_right for r in dated)
    print(f"| a wrong date, of those with a date | {share(wrong, len(dated))} |")
    print(f"| a date, of those without | {share(sum(r.due is not None for r in undated), len(undated))} |")


def main(weights, program, corpus, english, errors=False):
    net = load(weights)
    for name in "development", "frozen":
        file = pathlib.Path(corpus) / f"model-{name}.jsonl"
        rows = [json.loads(line) for line in file.read_text(encoding="utf-8").splitlines()]
        results = judged(net, rows, program)
        table(name.capitalize() + " set", results)
        for r in results if errors and name == "development" else []:
            if not (r.date_right and r.title_right):
                what = "title" if r.date_right else "date"
                print(
                    f"{what} {r.score:.2f} {r.wanted['text']!r}: {r.due} {r.title!r}, not {r.wanted['due']} {r.wanted['title']!r}"
                )
    lines = pathlib.Path(english).read_text(encoding="utf-8").splitlines()
    results = judged(
        net, [{"text": line, "now": "2025-03-04T09:41", "due": None, "title": line} for line in lines], program
    )
    print(f"\n## Real English without dates: {len(lines)} lines for a model\n")
    print(f"| a date | {share(sum(r.due is not None for r in results), len(lines))} |")


if __name__ == "__main__":
    main(*sys.argv[1:5], errors="--errors" in sys.argv)
