#!/usr/bin/env python3
"""A slow and obvious second reading of how Quillo turns a classification into a due date.

A classification says which of 26 kinds of date a text speaks of, and gives a few numbers; none of
them can be trusted to lie in its range. This module answers the same question as the program with
nothing but Python's standard library and no shared code, so that the two can be compared
(compare_resolver.py).

    resolve({"kind": "TOMORROW", "hasTime": True, "hour": 9, ...}, 1741078800, "Europe/Berlin")

The calendar is the Gregorian one, up to the year 9999.
"""

import datetime
import enum
import fractions
import math
import zoneinfo

from rules_oracle import days_after, instant_of, lenient_date, offsets_of, wall_time_of, weekday_number

WEEKDAYS = ("SUNDAY", "MONDAY", "TUESDAY", "WEDNESDAY", "THURSDAY", "FRIDAY", "SATURDAY")
KINDS = (
    "NONE", "TODAY", "TONIGHT", "TOMORROW", "DAY_AFTER_TOMORROW",
    *(f"THIS_{weekday}" for weekday in WEEKDAYS),
    *(f"NEXT_{weekday}" for weekday in WEEKDAYS),
    "IN_MINUTES", "IN_HOURS", "IN_DAYS", "IN_WEEKS", "WEEKS_FROM_TOMORROW", "SPECIFIC_DATE", "THIS_WEEKEND",
)  # fmt: skip

LARGEST_NUMBER = 2**63 - 1
SMALLEST_NUMBER = -(2**63)

TONIGHT_HOUR = 20
DEFAULT_HOUR = 9


class Case(enum.Enum):
    """What happened while a classification was resolved. The comparison counts these, to be sure
    that every special case really was exercised."""

    AMOUNT_TOO_SMALL = "absent: an amount that is too small"
    WEEKS_OVERFLOW = "absent: weeks whose days do not fit 64 bits"
    IMPOSSIBLE_DAY = "absent: a day outside 1 to 31"
    TIME_TOO_FAR = "absent: the day lies past the year 9999"
    FRACTION_KEPT = "minutes or hours keep the fraction of a second"
    TOO_FAR_READ_AS_START = "an addition past the year 9999 leaves its start"
    SAME_WEEKDAY = "the named weekday is today"
    THIS_YEAR = "a date in this year"
    FOLLOWING_YEAR = "a date in the following year"
    NO_FOLLOWING_YEAR = "a date after the year 9999 is read as now"
    SAME_MONTH = "a numbered day in this month"
    FOLLOWING_MONTH = "a numbered day in the following month"
    BACK_TO_JANUARY = "a numbered day in December wraps to January of the same year"
    ROLLED_OVER = "an impossible date rolled over"
    DEFAULT_TIME = "the default of 9:00"
    TONIGHT_TIME = "the default of tonight"
    GIVEN_TIME = "a time that was given"
    HOUR_CLAMPED = "an hour outside 0 to 23"
    MINUTE_CLAMPED = "a minute outside 0 to 59"
    WALL_TIME_SKIPPED = "the due wall time is skipped by a clock change"
    WALL_TIME_REPEATED = "the due wall time occurs twice"


class Resolver:
    """Resolves one classification: first to an instant of the day that is meant, then to the time on
    that day."""

    def __init__(self, classification, now, zone_name):
        self.kind = classification["kind"]
        self.amount = classification["amount"]
        self.month = classification["month"]
        self.day = classification["day"]
        self.has_time = classification["hasTime"]
        self.hour = classification["hour"]
        self.minute = classification["minute"]
        self.now = now
        self.zone = zoneinfo.ZoneInfo(zone_name)
        self.cases = []

    def due(self):
        """Seconds since 1970, or nothing."""
        if self.kind == "NONE":
            return None
        if self.kind == "IN_MINUTES":
            return self.after_seconds(60)
        if self.kind == "IN_HOURS":
            return self.after_seconds(3600)
        base = self.base()
        if base is None:
            return None
        return self.at_time_of_day(base)

    # Minutes and hours are exact.

    def after_seconds(self, seconds_each):
        if self.amount < 1:
            self.cases.append(Case.AMOUNT_TOO_SMALL)
            return None
        due = fractions.Fraction(self.now) + self.amount * seconds_each
        if wall_time_of(math.floor(due), self.zone) is None:
            self.cases.append(Case.TOO_FAR_READ_AS_START)
            due = fractions.Fraction(self.now)
        if due.denominator == 1:
            return int(due)
        self.cases.append(Case.FRACTION_KEPT)
        return float(due)

    # Any instant of the day that is meant; whole seconds will do.

    def base(self):
        now = math.floor(self.now)
        if self.kind in ("TODAY", "TONIGHT"):
            return now
        if self.kind == "TOMORROW":
            return self.plus_days(now, 1)
        if self.kind == "DAY_AFTER_TOMORROW":
            return self.plus_days(now, 2)
        if self.kind == "IN_DAYS":
            return self.after_days(now, self.amount, smallest=1)
        if self.kind == "IN_WEEKS":
            return self.after_weeks(now, smallest=1)
        if self.kind == "WEEKS_FROM_TOMORROW":
            return self.after_weeks(self.plus_days(now, 1), smallest=0)
        if self.kind == "SPECIFIC_DATE":
            return self.specific_date(now)
        if self.kind == "THIS_WEEKEND":
            return self.on_weekday(now, "SATURDAY", same_day=0)
        family, weekday = self.kind.split("_")
        return self.on_weekday(now, weekday, same_day={"THIS": 0, "NEXT": 7}[family])

    def plus_days(self, instant, days):
        """The same wall time that many days later; the instant itself where that is past all dates."""
        wall_time = wall_time_of(instant, self.zone)
        day = None if wall_time is None else days_after(wall_time.date(), days)
        if day is None:
            self.cases.append(Case.TOO_FAR_READ_AS_START)
            return instant
        return instant_of(datetime.datetime.combine(day, wall_time.time()), self.zone)

    def after_days(self, instant, days, smallest):
        if self.amount < smallest:
            self.cases.append(Case.AMOUNT_TOO_SMALL)
            return None
        return self.plus_days(instant, days)

    def after_weeks(self, instant, smallest):
        if 7 * self.amount > LARGEST_NUMBER:
            self.cases.append(Case.WEEKS_OVERFLOW)
            return None
        return self.after_days(instant, 7 * self.amount, smallest)

    def on_weekday(self, instant, weekday, same_day):
        """The next such day; on the very day, `same_day` days later."""
        wall_time = wall_time_of(instant, self.zone)
        if wall_time is None:
            self.cases.append(Case.TOO_FAR_READ_AS_START)
            return instant
        difference = WEEKDAYS.index(weekday) + 1 - weekday_number(wall_time)
        if difference < 0:
            difference += 7
        if difference == 0:
            self.cases.append(Case.SAME_WEEKDAY)
            difference = same_day
        return self.plus_days(instant, difference)

    # Dates.

    def specific_date(self, now):
        if not 1 <= self.day <= 31:
            self.cases.append(Case.IMPOSSIBLE_DAY)
            return None
        wall_now = wall_time_of(now, self.zone)
        if wall_now is None:
            return now
        if 1 <= self.month <= 12:
            return self.coming_date(now, wall_now)
        return self.numbered_day(wall_now)

    def coming_date(self, now, wall_now):
        """That day of that month, in the following year where it is past in this one."""
        date = self.start_of(wall_now.year, self.month)
        if date >= self.start_of_day(wall_now.date()):
            self.cases.append(Case.THIS_YEAR)
            return date
        if wall_now.year == datetime.MAXYEAR:
            self.cases.append(Case.NO_FOLLOWING_YEAR)
            return now
        self.cases.append(Case.FOLLOWING_YEAR)
        return self.start_of(wall_now.year + 1, self.month)

    def numbered_day(self, wall_now):
        """That day of this month or the next one, with no look at the year: after December comes the
        January eleven months back."""
        month = wall_now.month
        if self.day >= wall_now.day:
            self.cases.append(Case.SAME_MONTH)
        elif month < 12:
            self.cases.append(Case.FOLLOWING_MONTH)
            month += 1
        else:
            self.cases.append(Case.BACK_TO_JANUARY)
            month = 1
        return self.start_of(wall_now.year, month)

    def start_of(self, year, month):
        date = lenient_date(year, month, self.day)
        if date.month != month:
            self.cases.append(Case.ROLLED_OVER)
        return self.start_of_day(date)

    def start_of_day(self, date):
        return instant_of(datetime.datetime.combine(date, datetime.time()), self.zone)

    # The time on that day.

    def at_time_of_day(self, base):
        wall_base = wall_time_of(base, self.zone)
        if wall_base is None:
            self.cases.append(Case.TIME_TOO_FAR)
            return None
        wall_time = datetime.datetime.combine(wall_base.date(), self.time_of_day())
        before, after = offsets_of(wall_time, self.zone)
        if before < after:
            self.cases.append(Case.WALL_TIME_SKIPPED)
        elif before > after:
            self.cases.append(Case.WALL_TIME_REPEATED)
        return instant_of(wall_time, self.zone)

    def time_of_day(self):
        if not self.has_time and self.kind == "TONIGHT":
            self.cases.append(Case.TONIGHT_TIME)
            return datetime.time(TONIGHT_HOUR)
        if not self.has_time:
            self.cases.append(Case.DEFAULT_TIME)
            return datetime.time(DEFAULT_HOUR)
        hour = min(max(self.hour, 0), 23)
        minute = min(max(self.minute, 0), 59)
        self.cases.append(Case.GIVEN_TIME)
        if hour != self.hour:
            self.cases.append(Case.HOUR_CLAMPED)
        if minute != self.minute:
            self.cases.append(Case.MINUTE_CLAMPED)
        return datetime.time(hour, minute)


def resolve_with_cases(classification, now, zone):
    """The answer of resolve(), and the list of cases on the way to it."""
    resolver = Resolver(classification, now, zone)
    due = resolver.due()
    return due, resolver.cases


def resolve(classification, now, zone):
    """When a text that was classified so is due.

    classification: the eight fields by name. now: seconds since 1970, any kind of number, a fraction
    allowed. zone: a name such as "Europe/Berlin". The answer is in seconds since 1970, whole where it
    can be, or None.
    """
    due, _cases = resolve_with_cases(classification, now, zone)
    return due
