"""Reads off what made-up tasks mean: of all readings that give the moment that the writer wanted, the one that the network
finds likeliest. What words and digits stand for is known then, also where the network alone had read them otherwise.

usage: label.py NETWORK ORACLE DATED OUT

DATED holds a task in each line, with the words that say when in brackets, when it was typed and when it is due, parted by
tabs. ORACLE is the folder of resolve_oracle.py.
"""

import datetime
import heapq
import itertools
import math
import pathlib
import re
import sys
from zoneinfo import ZoneInfo

import numpy as np

import predict
from dataset import COUNTED
from generate import ROLES
from net import HEADS
from phrases import AMOUNTS, KINDS, MINUTES, SHIFTED, SHIFTS, WEEKDAYS, Meaning
from predict import classify, outputs, softmax
from said import line_of
from tokens import is_digit

ZONE = "America/New_York"
READINGS = 3000  # at most, of one text
LEAST = math.log(1e-6)  # less likely than that is a coincidence


# What the words must have in them for such a reading; without it that it gives the right moment is a coincidence.
WEEKDAY_LETTERS = {day.upper(): day[:2] for day in WEEKDAYS}
NEEDED = [
    (r"(NEXT|WEEK_AFTER)_", r"we?e?k|ne?xt|after|fortnight|from|follow"),
    (r"NTH_", r"\d(st|nd|rd|th)|first|second|third|fourth|last"),
    (r"THIS_WEEKEND", r"w.*k"),
    (r"IN_DAYS", r"da?y|from|night|tom|\dd"),
    (r"DAY_AFTER_TOMORROW", r"after|overm|2|two"),
    (r"TOMORROW", r"t[om]|2m|morrow|ma[nñ]ana"),
    (r"PRESIDENTS_DAY", r"pre|wash"),
]
SHIFT_WORDS = r"b4|bef|bfr|aft|eve|black|palm|from|frm|prior|ahead|sat"


def fits(phrase, kind, shift):
    phrase = phrase.lower()
    day = kind.rsplit("_", 1)[-1]
    if day in WEEKDAY_LETTERS and WEEKDAY_LETTERS[day] not in phrase and kind.startswith("THIS_"):
        return False
    if shift == "FROM_TOMORROW" and not re.search(r"fro?m|after", phrase):
        return False
    if shift != "NONE" and not re.search(SHIFT_WORDS, phrase):
        return False
    return all(re.search(words, phrase) for kinds, words in NEEDED if re.match(kinds, kind))


def one_hot(length, place):
    scores = np.full(length, -40.0, np.float32)
    scores[place] = 40
    return scores


def most(scores, count):
    """The likeliest places, with the logarithms of their probabilities."""
    p = softmax(scores)
    return [(math.log(max(float(p[i]), 1e-12)), int(i)) for i in np.argsort(-p)[:count]]


def products(lists):
    """The ways to take one of each list, the likeliest first."""
    heap, seen = [(-sum(options[0][0] for options in lists), (0,) * len(lists))], set()
    while heap:
        cost, places = heapq.heappop(heap)
        yield -cost, [options[i][1] for options, i in zip(lists, places)]
        for n in range(len(lists)):
            further = places[:n] + (places[n] + 1,) + places[n + 1 :]
            if further[n] < len(lists[n]) and further not in seen:
                seen.add(further)
                step = lists[n][further[n]][0] - lists[n][places[n]][0]
                heapq.heappush(heap, (cost - step, further))


def heads_of(kind):
    """The heads that say something of a date of that kind."""
    return [
        *(["amount"] if kind.startswith(COUNTED) or kind in SHIFTED else []),
        *(["shift"] if kind in SHIFTED else []),
        *(["month"] if kind.startswith(("SPECIFIC", "NTH_")) else []),
        *(["day"] if kind in ("SPECIFIC_DATE", "NEXT_MONTH_DAY", "THIS_MONTH_DAY") else []),
        *(["hour", "minute"] if kind not in ("IN_MINUTES", "IN_HOURS") else []),
    ]


def roles_of(kind):
    """What digits within a phrase of that kind can stand for."""
    return (
        "S"
        + ("HMT" if kind not in ("IN_MINUTES", "IN_HOURS") else "")
        + ("N" if kind.startswith(COUNTED) or kind in SHIFTED else "")
        + ("D" if kind in ("SPECIFIC_DATE", "NUMERIC_DATE", "NEXT_MONTH_DAY", "THIS_MONTH_DAY") else "")
        + ("ABI" if kind == "NUMERIC_DATE" else "")
        + ("Y" if kind in ("SPECIFIC_DATE", "NUMERIC_DATE") else "")
    )


WIDTH = {"shift": 6, "amount": 6, "month": 3, "day": 4, "hour": 8, "minute": 3}


def readings(tokens, role_scores, head_scores, inside):
    """Roles and places in each head, the likeliest first. Outside the brackets all is kept."""
    digits = [i for i, token in enumerate(tokens) if inside[i] and is_digit(token.text[0])]

    def of_kind(weight, kind):
        names, allowed = heads_of(KINDS[kind]), roles_of(KINDS[kind])
        options = []
        for i in digits:
            likely = most(role_scores[i][: len(ROLES)], len(ROLES))
            options.append([(p, place) for p, place in likely if ROLES[place] in allowed])
        for score, places in products([*options, *(most(head_scores[name], WIDTH[name]) for name in names)]):
            roles = ["S" if within else "K" for within in inside]
            for i, place in zip(digits, places):
                roles[i] = ROLES[place]
            chosen = dict(zip(names, places[len(digits) :]))
            yield -(weight + score), roles, kind, chosen

    kinds = [(p, kind) for p, kind in most(head_scores["kind"], 16) if KINDS[kind] != "NONE"]
    yield from heapq.merge(*(of_kind(p, kind) for p, kind in kinds), key=lambda found: found[0])


def meaning_of(kind, roles, chosen):
    """What a phrase means where digits are read from the text, as the generator has it."""
    hour, shift = chosen.get("hour", 24), SHIFTS[chosen.get("shift", 0)]
    counted = KINDS[kind].startswith(COUNTED) or shift != "NONE"
    return Meaning(
        KINDS[kind],
        amount=AMOUNTS[chosen["amount"]] if counted and "N" not in roles else None,
        month=chosen.get("month") or None,
        day=(chosen.get("day") or None) if "D" not in roles else None,
        hour=None if hour == 24 else hour,
        minute=None if hour == 24 else MINUTES[chosen.get("minute", 0)],
        shift=shift,
    )


def label(text, inside_characters, now, due, output, resolve):
    tokens, role_scores, head_scores = output
    inside = [inside_characters[token.start] for token in tokens]
    phrase = "".join(c for c, within in zip(text, inside_characters) if within)
    for cost, roles, kind, chosen in itertools.islice(readings(tokens, role_scores, head_scores, inside), READINGS):
        if -cost < LEAST:
            return None
        shift = SHIFTS[chosen.get("shift", 0)]
        stray = (
            "N" in roles
            and not KINDS[kind].startswith(COUNTED)
            and shift == "NONE"
            or "M" in roles
            and "H" not in roles
        )
        if stray or not fits(phrase, KINDS[kind], shift):
            continue
        forced = {
            name: one_hot(len(head_scores[name]), chosen.get(name, 24 if name == "hour" else 0)) for name in HEADS
        }
        forced["kind"] = one_hot(len(KINDS), kind)
        answer, _ = classify(
            text, now, True, (tokens, [one_hot(len(ROLES), ROLES.index(role)) for role in roles], forced)
        )
        if answer["kind"] == "NONE" or resolve(answer, now) != due:
            continue
        # The hour as it was read from digits.
        if answer["hasTime"]:
            chosen["hour"] = answer["hour"]
            chosen["minute"] = MINUTES.index(answer["minute"]) if answer["minute"] in MINUTES else 0
        elif "hour" in chosen:
            chosen["hour"] = 24
        return -cost, tokens, roles, meaning_of(kind, roles, chosen)
    return None


def main(network, oracle, dated, out):
    sys.path.insert(0, oracle)
    from resolve_oracle import resolve as seconds

    predict.may_be_cut = lambda word: True
    zone = ZoneInfo(ZONE)

    def resolve(answer, now):
        due = seconds(answer, int(now.replace(tzinfo=zone).timestamp()), ZONE)
        return due and datetime.datetime.fromtimestamp(int(due), zone).strftime("%Y-%m-%dT%H:%M")

    lines = []
    for line in pathlib.Path(dated).read_text(encoding="utf-8").splitlines():
        marked, now, due = line.split("\t")
        text, inside = "", []
        within = False
        for c in marked:
            if c in "[]":
                within = c == "["
            else:
                text += c
                inside.append(within)
        lines.append((text, inside, datetime.datetime.fromisoformat(now), due, marked))
    found, lost = [], []
    for (text, inside, now, due, marked), output in zip(lines, outputs(predict.load(network), [l[0] for l in lines])):
        labelled = label(text, inside, now, due, output, resolve)
        if labelled is None:
            lost.append((marked, due))
        else:
            found.append((labelled[0], line_of(marked, *labelled[1:])))
    with open(out, "w", encoding="utf-8") as file:
        file.writelines(line + "\n" for _, line in found)
    for p, line in sorted(found)[:400]:
        print(f"{p:.1f} {line}")
    print("LOST", len(lost), "FOUND", len(found))
    for marked, due in lost:
        print("lost", due, marked)


if __name__ == "__main__":
    main(*sys.argv[1:])
