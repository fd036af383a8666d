#!/usr/bin/env python3
"""Random classifications, each with an instant and a time zone, for `quillo resolve --jsonl`.

    random_classifications.py --lines 5 --seed 7

The same seed gives the same lines. Numbers lie in their ranges, at the edges, and far outside up to
64 bits; instants are close to clock changes, to the ends of months and years, and to the end of the
calendar.
"""

import argparse
import dataclasses
import datetime
import json
import random
import sys
import zoneinfo

from random_lines import END_OF_YEAR_9999 as CALENDAR_END
from random_lines import DAY, HOUR, MINUTE, clock_changes, random_instant, written_now
from resolve_oracle import KINDS, LARGEST_NUMBER, SMALLEST_NUMBER, WEEKDAYS
from rules_oracle import weekday_number

# All have clock changes, and rules for past and future that no longer change from one release of
# the zone data to the next: a full hour at night, half an hour, changes that skip midnight (in one
# zone until 2019) and repeat it, and a change at one minute past midnight (until 2011).
ZONES = ("Europe/Berlin", "Australia/Lord_Howe", "America/Sao_Paulo", "America/Havana", "America/St_Johns")

# Sums of such fractions are exact.
FRACTIONS = (0, 0, 0.5, 0.25, 0.125, 0.875)

EXTREME_NUMBERS = (
    LARGEST_NUMBER, LARGEST_NUMBER - 1, SMALLEST_NUMBER, SMALLEST_NUMBER + 1,
    2**31 - 1, 2**31, -(2**31), -(2**31) - 1, 2**32, 2**53 + 1,
)  # fmt: skip
FACTORS = (7, 60)  # by which amounts are multiplied

AMOUNT_KINDS = ("IN_MINUTES", "IN_HOURS", "IN_DAYS", "IN_WEEKS", "WEEKS_FROM_TOMORROW")


@dataclasses.dataclass(frozen=True)
class Request:
    """One line of input for the tool, and the same things as the comparison needs them."""

    identifier: object
    classification: dict
    now: float  # seconds since 1970
    zone: str
    json: str  # the input object, without a newline


class RequestMaker:
    def __init__(self, generator):
        self.random = generator

    def request(self, number):
        make = self.random.choices(
            (self.any_classification, self.extreme_amount, self.to_clock_change, self.near_end),
            weights=(55, 5, 26, 14),
        )[0]
        classification, instant, zone = make()
        fraction = self.random.choice(FRACTIONS)
        return self.written(number, classification, instant, fraction, zone)

    # Numbers.

    def number(self, usual):
        """Mostly one of the usual numbers, sometimes one just beside them, sometimes an extreme one."""
        kind = self.random.random()
        if kind < 0.8:
            return self.random.choice(usual)
        if kind < 0.9:
            return self.random.choice((usual[0] - 1, usual[-1] + 1, -1, 0, 99))
        return self.extreme_number()

    def extreme_number(self):
        edge = LARGEST_NUMBER // self.random.choice(FACTORS)
        return self.random.choice((
            *EXTREME_NUMBERS, edge, edge + 1, edge - 1, self.random.randint(SMALLEST_NUMBER, LARGEST_NUMBER),
        ))

    def amount(self):
        kind = self.random.random()
        if kind < 0.9:
            return self.number(range(1, self.random.choice((2, 15, 400, 5_000))))
        # Up to millions of days; some are past the end of the calendar, others are not.
        return self.random.randint(1, 10 ** self.random.randint(4, 12))

    def classification(self, **known):
        """Any numbers, as a model may leave behind some that its kind has no use for."""
        return {
            "kind": self.random.choice(KINDS),
            "amount": self.amount(),
            "month": self.random.choice((0, self.number(range(1, 13)), self.number(range(1, 13)))),
            "day": self.number(range(1, 32)),
            "hasTime": self.random.random() < 0.5,
            "hour": self.number(range(24)),
            "minute": self.number(range(60)),
            **known,
        }

    # Kinds of requests: a classification, an instant and a zone.

    def any_classification(self):
        zone = self.random.choice(ZONES)
        instant = random_instant(self.random, zone)
        known = {"kind": self.random.choice((*KINDS, *["SPECIFIC_DATE"] * 3))}
        if self.random.random() < 0.2:  # months that lack such a day
            known["day"] = self.random.choice((29, 30, 31))
            known["month"] = self.random.choice((0, 2, 4, 6, 9, 11))
        return self.classification(**known), instant, zone

    def extreme_amount(self):
        zone = self.random.choice(ZONES)
        known = {"kind": self.random.choice(AMOUNT_KINDS), "amount": self.extreme_number()}
        return self.classification(**known), random_instant(self.random, zone), zone

    def to_clock_change(self):
        """A classification that means a wall time around a clock change."""
        zone_name = self.random.choice(ZONES)
        zone = zoneinfo.ZoneInfo(zone_name)
        change = self.random.choice(clock_changes(zone_name))
        # Written with the offset before and the offset after the change, this is skipped or repeated.
        before = datetime.datetime.fromtimestamp(change - 1, zone).utcoffset()
        after = datetime.datetime.fromtimestamp(change, zone).utcoffset()
        span_start = datetime.datetime(1970, 1, 1) + datetime.timedelta(seconds=change) + min(before, after)
        length = abs(after - before) // datetime.timedelta(minutes=1)
        minutes_into_span = self.random.choice((-1, 0, length - 1, length, self.random.randint(0, length)))
        wall_time = span_start + datetime.timedelta(minutes=minutes_into_span)
        if self.random.random() < 0.2:  # minutes and hours that end around the change
            away = self.random.choice((self.random.randint(1, 180), self.random.randint(1, 3_000)))
            minutes = self.random.random() < 0.5
            known = {"kind": "IN_MINUTES" if minutes else "IN_HOURS", "amount": away}
            instant = change - away * (MINUTE if minutes else HOUR) + self.random.randint(-HOUR, HOUR)
            return self.classification(**known), instant, zone_name
        return self.to_wall_time(wall_time, zone_name)

    def to_wall_time(self, wall_time, zone_name):
        """A classification that means that wall time, said some days earlier at about the same time."""
        days = self.random.choice((0, 1, 2, 6, 7, 14, 15, self.random.randint(1, 300)))
        earlier = (wall_time - datetime.timedelta(days=days)).replace(tzinfo=zoneinfo.ZoneInfo(zone_name))
        instant = int(earlier.timestamp()) + self.random.randint(0, 59)
        weekday = WEEKDAYS[weekday_number(wall_time) - 1]
        month = self.random.choice((wall_time.month, 0))
        choices = [{"kind": "SPECIFIC_DATE", "month": month, "day": wall_time.day}]
        if days == 0:
            choices += [{"kind": "TODAY"}, {"kind": "TONIGHT"}]
        if days >= 1:
            choices.append({"kind": "IN_DAYS", "amount": days})
        if days == 1:
            choices.append({"kind": "TOMORROW"})
        if days == 2:
            choices.append({"kind": "DAY_AFTER_TOMORROW"})
        if days < 7:
            choices.append({"kind": f"THIS_{weekday}"})
        if 1 <= days <= 7:
            choices.append({"kind": f"NEXT_{weekday}"})
        if days >= 7 and days % 7 == 0:
            choices.append({"kind": "IN_WEEKS", "amount": days // 7})
        if days % 7 == 1:
            choices.append({"kind": "WEEKS_FROM_TOMORROW", "amount": days // 7})
        known = {**self.random.choice(choices), "hasTime": True, "hour": wall_time.hour, "minute": wall_time.minute}
        return self.classification(**known), instant, zone_name

    def near_end(self):
        """An instant in the last two years of the calendar, or in the last days or hours of them."""
        longest = self.random.choice((731 * DAY, 40 * DAY, 2 * DAY, 12 * HOUR))
        instant = CALENDAR_END - self.random.randint(1, longest)
        days_left = (CALENDAR_END - instant) // DAY
        zone = self.random.choice(ZONES)
        if self.random.random() < 0.5:
            kind = self.random.choice((*KINDS, *["SPECIFIC_DATE"] * 10))
            return self.classification(kind=kind), instant, zone
        kind, amount = self.random.choice((
            ("IN_MINUTES", days_left * 1440),
            ("IN_HOURS", days_left * 24),
            ("IN_DAYS", days_left),
            ("IN_WEEKS", days_left // 7),
            ("WEEKS_FROM_TOMORROW", days_left // 7),
        ))
        return self.classification(kind=kind, amount=amount + self.random.randint(-2, 2)), instant, zone

    # The input object.

    def written(self, number, classification, instant, fraction, zone):
        names = [*classification, "title"]
        if self.random.random() < 0.2:
            self.random.shuffle(names)
        titled = {**classification, "title": "Call mom"}
        # The other forms need Python's calendar, which ends too early for zones ahead of UTC.
        is_last_day = instant >= CALENDAR_END - DAY
        now = instant + fraction if is_last_day else written_now(self.random, instant, fraction, zone)
        identifier = self.random.choice((number, f"line {number}", [number]))
        fields = {
            "id": identifier,
            "classification": {name: titled[name] for name in names},
            "now": now,
            "tz": zone,
        }
        return Request(identifier, classification, instant + fraction, zone, json.dumps(fields))


def random_requests(count, seed):
    maker = RequestMaker(random.Random(seed))
    for number in range(1, count + 1):
        yield maker.request(number)


def main():
    arguments = argparse.ArgumentParser(description="Prints random input lines for `quillo resolve --jsonl`.")
    arguments.add_argument("--lines", type=int, default=100)
    arguments.add_argument("--seed", type=int, default=1)
    options = arguments.parse_args()
    for request in random_requests(options.lines, options.seed):
        print(request.json)


if __name__ == "__main__":
    main()
