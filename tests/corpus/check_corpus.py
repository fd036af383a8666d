#!/usr/bin/env python3
"""Checks the program's reading of every phrase in this folder's .tsv files.

usage: check_corpus.py --quillo PATH

README.md beside this file explains the columns.
"""

import argparse
import json
import os
import pathlib
import re
import subprocess
import sys
from dataclasses import dataclass
from datetime import datetime, timezone
from zoneinfo import ZoneInfo, ZoneInfoNotFoundError, available_timezones

FOLDER = pathlib.Path(__file__).resolve().parent
FEWEST_LINES = 300
TIME_LIMIT_SECONDS = 120
# Without the system's zone data the offsets stand unchecked; due times are compared all the same.
HAVE_ZONES = bool(available_timezones())
ESCAPE = re.compile(r"\\(?:u\{([0-9A-Fa-f]{1,6})\}|(.?))", re.DOTALL)


class BadLine(ValueError):
    """A corpus line that cannot be read, or contradicts itself."""


@dataclass
class Case:
    place: str  # file:line, also the id sent to the program
    phrase: str
    now: str
    zone: str
    answer: dict  # the keys of the program's answer that are compared
    due_text: str


def unescape(text):
    def one(match):
        if match[1]:
            return chr(int(match[1], 16))
        try:
            return {"t": "\t", "n": "\n", "\\": "\\"}[match[2]]
        except KeyError:
            raise BadLine(f"unknown escape {match[0]!r}") from None

    return ESCAPE.sub(one, text)


def instant(text, zone, column):
    try:
        moment = datetime.fromisoformat(text)
    except ValueError as error:
        raise BadLine(f"{column}: {error}") from None
    if moment.tzinfo is None:
        raise BadLine(f"{column} has no offset: {text}")
    if not HAVE_ZONES:
        return moment.timestamp()
    try:
        local = moment.astimezone(ZoneInfo(zone))
    except ZoneInfoNotFoundError:
        raise BadLine(f"unknown zone {zone}") from None
    if local.utcoffset() != moment.utcoffset():
        raise BadLine(f"{column} {text} is {local.isoformat()} in {zone}")
    return moment.timestamp()


def read_case(line, place):
    columns = line.split("\t")
    if len(columns) == 4:
        columns.append("")
    if len(columns) != 5:
        raise BadLine(f"{len(columns)} columns, expected 5")
    phrase, now, zone, due, title = columns
    instant(now, zone, "now")
    answer = {"hint": due != "nohint", "title": unescape(title), "due": None}
    if due == "nohint":
        answer["path"] = "none"
    elif due == "none":
        answer["path"] = "miss"
    else:
        answer["path"] = "rules"
        answer["due"] = instant(due, zone, "due")
    return Case(place, unescape(phrase), now, zone, answer, due)


def read_corpus():
    cases, bad = [], []
    for path in sorted(FOLDER.glob("*.tsv")):
        seen = {}
        # Only "\n" ends a line: phrases may hold other separators.
        for number, line in enumerate(path.read_bytes().decode("utf-8").split("\n"), 1):
            if not line.strip() or line.startswith("#"):
                continue
            place = f"{path.name}:{number}"
            try:
                case = read_case(line, place)
                key = (case.phrase, case.now, case.zone)
                if key in seen:
                    raise BadLine(f"same as line {seen[key]}")
                seen[key] = number
                cases.append(case)
            except BadLine as error:
                bad.append(f"{place}: {error}")
    return cases, bad


def ask(program, cases):
    """The program's answers by place, and complaints about the run itself."""
    request = "".join(
        json.dumps(
            {"id": c.place, "text": c.phrase, "now": c.now, "tz": c.zone, "locale": "en_US"},
            ensure_ascii=False,
        )
        + "\n"
        for c in cases
    )
    try:
        run = subprocess.run(
            [program, "parse", "--jsonl"],
            input=request.encode("utf-8"),
            capture_output=True,
            timeout=TIME_LIMIT_SECONDS,
            env={**os.environ, "QUILLO_LANGUAGE_MODEL": "none"},
        )
    except (OSError, subprocess.TimeoutExpired) as error:
        return {}, [f"{program}: {error}"]

    answers, complaints = {}, []
    for line in run.stdout.split(b"\n"):
        if not line.strip():
            continue
        try:
            answer = json.loads(line)
            place = answer["id"]
            if place in answers:
                complaints.append(f"{place}: answered twice")
            answers[place] = answer
        except (ValueError, KeyError, TypeError):
            complaints.append(f"unreadable answer: {line[:200]!r}")
    if run.returncode != 0:
        said = run.stderr.decode("utf-8", "replace").strip()
        complaints.append(f"{program} ended with status {run.returncode}: {said}")
    return answers, complaints


def due_in_words(seconds, zone):
    if not isinstance(seconds, (int, float)) or isinstance(seconds, bool):
        return json.dumps(seconds)
    try:
        return datetime.fromtimestamp(seconds, ZoneInfo(zone) if HAVE_ZONES else timezone.utc).isoformat()
    except (OverflowError, ValueError, OSError):
        return str(seconds)


def differences(case, answer):
    """One text for every compared key that differs."""
    if answer is None:
        return ["no answer"]
    if "error" in answer:
        return [f"error: {answer['error']}"]
    found = []
    for key, expected in case.answer.items():
        got = answer.get(key, "(missing)")
        # True equals 1 in Python, but not in the contract.
        if got == expected and isinstance(got, bool) == isinstance(expected, bool):
            continue
        if key == "due":
            found.append(f"due: expected {case.due_text}, got {due_in_words(got, case.zone)}")
        else:
            found.append(
                f"{key}: expected {json.dumps(expected, ensure_ascii=False)},"
                f" got {json.dumps(got, ensure_ascii=False)}"
            )
    return found


def main():
    parser = argparse.ArgumentParser(description="check the phrase corpus against the program")
    parser.add_argument("--quillo", required=True, metavar="PATH", help="the quillo program")
    program = parser.parse_args().quillo
    if os.sep in program:
        program = os.path.abspath(program)

    cases, complaints = read_corpus()
    answers, more = ask(program, cases)
    complaints += more

    failed = 0
    for case in cases:
        found = differences(case, answers.pop(case.place, None))
        if found:
            failed += 1
            print(f"{case.place}: {json.dumps(case.phrase, ensure_ascii=False)}")
            for text in found:
                print(f"    {text}")
    complaints += [f"answer to a line never sent: {place}" for place in answers]
    if len(cases) < FEWEST_LINES:
        complaints.append(f"only {len(cases)} lines, expected at least {FEWEST_LINES}")
    for text in complaints:
        print(text)
    if not HAVE_ZONES:
        print("no zone data on this machine: the offsets in the files were not checked")
    print(f"{len(cases)} lines checked, {failed} failed")
    return 1 if failed or complaints else 0


if __name__ == "__main__":
    sys.stdout.reconfigure(encoding="utf-8", errors="replace")
    sys.exit(main())
