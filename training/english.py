"""Lines of real English without dates, for what must not be taken for one.

usage: english.py training|judging PROGRAM FILE

Writes those that only a model would understand, by PROGRAM, the quillo command. Training learns from WordNet, the
descriptions of Debian's packages, and books and manuals of several kinds; what judges it, Git's manual, it never sees.
"""

import html
import json
import pathlib
import re
import subprocess
import sys

BOOKS = [
    "postgresql-doc-15/html",
    "python3.11/html",
    "debian-handbook/html/en-US",
    "anarchism/html",
]
MONTHS = "january|february|march|april|may|june|july|august|september|october|november|december"
SHORT_MONTHS = "jan|feb|mar|apr|may|jun|jul|aug|sep|oct|nov|dec"
# Generous: a line too many left out does no harm.
DATED = re.compile(
    r"\b(now|today|tomorrow|tonight|yesterday|(mon|tues|wednes|thurs|fri|satur|sun)days?|noon|midnight|o'clock|a\.m|p\.m|"
    r"(in the|this|every|each|by) (morning|afternoon|evening)|at night|weekend|next (week|month|year)|christmas|"
    r"thanksgiving|new year|from now|end of (the|this|next) (day|week|month|year)|"
    rf"(early|late|mid|middle of|end of|in|since|by|until|before|on) ({MONTHS})|"
    r"(in|within|after|for) [\w' ]{0,24}\b(minute|hour|day|week|month|year)s?|at (one|two|three|four|five|six|seven|"
    rf"eight|nine|ten|eleven|twelve))\b|\b\d{{1,2}}(st|nd|rd|th)?( of)? ({SHORT_MONTHS})|\b({SHORT_MONTHS})\w* \d|"
    r"\b\d+ ?[ap]m\b|\bat \d|\b\d{1,2}/\d{1,2}\b|\baround \d{1,2}$|\b\d{1,2}:\d\d|\d{4}-\d\d-\d\d",
    re.I,
)


def sentences(text):
    return re.split(r"(?<=[.:;!?])\s+", re.sub(r"\s+", " ", text))


def wordnet(folder="/usr/share/wordnet"):
    """Definitions and examples."""
    for part in "noun", "verb", "adj", "adv":
        with open(f"{folder}/data.{part}", encoding="utf-8", errors="replace") as data:
            for line in data:
                if not line.startswith("  ") and "|" in line:
                    gloss = line.split("|", 1)[1]
                    yield from re.findall(r'"([^"]+)"', gloss)
                    yield from re.sub(r'"[^"]*"', "", gloss).split(";")


def package_descriptions():
    text = subprocess.run(["apt-cache", "dumpavail"], stdout=subprocess.PIPE, check=True).stdout.decode(
        "utf-8", "replace"
    )
    for description in re.findall(r"^Description(?:-en)?: (.*(?:\n .*)*)", text, re.M):
        for paragraph in re.split(r"\n \.\n", description):
            yield from sentences(paragraph)


def manual(folder):
    """The paragraphs of a manual in HTML."""
    for page in sorted(pathlib.Path("/usr/share/doc", folder).rglob("*.html")):
        for paragraph in re.findall(r"<p[^>]*>(.*?)</p>", page.read_text(encoding="utf-8", errors="replace"), re.S):
            yield from sentences(html.unescape(re.sub(r"<[^>]+>", "", paragraph)))


def undated(lines):
    lines = {line.strip(" .;*-") for line in lines}
    return sorted(line for line in lines if 8 < len(line) < 160 and not DATED.search(line))


def paths(texts, program):
    """Who understands each text: none, rules, model or miss."""
    questions = "".join(
        json.dumps({"id": i, "text": text, "now": "2025-03-04T09:41", "tz": "America/New_York", "locale": "en_US"})
        + "\n"
        for i, text in enumerate(texts)
    )
    environment = {"QUILLO_LANGUAGE_MODEL": "none", "HOME": "/nonexistent", "PATH": "/usr/bin:/bin"}
    answers = subprocess.run(
        [program, "parse", "--jsonl"], input=questions.encode(), stdout=subprocess.PIPE, env=environment, check=True
    ).stdout
    return [json.loads(line)["path"] for line in answers.decode().splitlines()]


def main(what, program, file):
    if what == "training":
        books = (line for book in BOOKS for line in manual(book))
        lines = undated([*wordnet(), *package_descriptions(), *books])
    else:
        lines = undated(manual("git/html"))
    for_a_model = [line for line, path in zip(lines, paths(lines, program)) if path == "miss"]
    print(f"{len(lines)} lines of English without dates, {len(for_a_model)} of them for a model")
    pathlib.Path(file).write_text("\n".join(for_a_model) + "\n", encoding="utf-8")


if __name__ == "__main__":
    main(*sys.argv[1:])
