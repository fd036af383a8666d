#!/usr/bin/env python3
"""Random lines of typed text, each with an instant and a time zone, for `quillo parse --jsonl`.

    random_lines.py --lines 5 --seed 7

The same seed gives the same lines. Every kind of phrase occurs, alone, side by side and
overlapping, together with near misses, odd spacing, letters and digits of other scripts, and
instants close to clock changes and to the ends of months and years.
"""

import argparse
import bisect
import dataclasses
import datetime
import functools
import json
import random
import sys
import zoneinfo

# Zones whose past and future rules no longer change from one release of the zone data to the next:
# a full hour at night, a full hour, half an hour, a change at midnight (until 2019), a change at
# one minute past midnight (until 2011), and no changes at all.
ZONES = (
    "Europe/Berlin",
    "America/New_York",
    "Australia/Lord_Howe",
    "America/Sao_Paulo",
    "America/St_Johns",
    "Asia/Kathmandu",
)
FIRST_INSTANT = 1_104_537_600  # 2005-01-01 in UTC
LAST_INSTANT = 1_767_225_600  # 2026-01-01 in UTC

MINUTE = 60
HOUR = 3_600
DAY = 86_400
END_OF_YEAR_9999 = 253_402_300_800  # in UTC


@dataclasses.dataclass(frozen=True)
class Line:
    """One line of input for the tool, and the same things as the comparison needs them."""

    identifier: object
    text: str
    now: float  # seconds since 1970, with at most milliseconds
    zone: str
    json: str  # the input object, without a newline


# --- Words -----------------------------------------------------------------------------------

PLAIN_TITLES = (
    "Buy milk", "call mom", "Email Sam", "pay rent", "Dentist", "water the plants", "standup",
    "book flights", "fix the bike", "read chapter 7", "send 3 invoices", "gym", "file taxes",
    "renew passport", "ring Åsa", "café with Zoë", "Straße fegen", "купить хлеб", "買い物",
    "शाम की चाय", "شراء الحليب", "לקנות חלב", "🛒 groceries", "👩‍👩‍👧 school play", "❤️ note",
    "👍🏽 reply", "report", "walk", "x", "a", "I", "plan B", "room 101", "v2.0", "C++ talk",
    "50% off", "#inbox", "@home", "he said \"no\"", "back\\slash", "a/b test", "the", "in", "at", "on",
)

# Look temporal to the hint, or nearly so, and are dated by no rule.
HINT_ONLY = (
    "asap", "soon", "later", "Maybe fix the market page", "translate the letter", "end of month",
    "new year party", "christmas gifts", "thanksgiving turkey", "tmrw", "tomorow", "next week",
    "next month", "this week", "a couple of days", "in a few minutes", "in some days",
    "in several weeks", "in a month", "in 3 months", "about an hour", "about a week", "around here",
    "early bird", "first thing", "weekend trip", "goodnight", "3/14", "on 12/31 party", "decide",
    "mayor", "octopus", "augment", "call mon early", "see you mon ", "wed or thu ", " sun ",
    " fri ", " tue ", "\tsat ", "5 p", "7 a", "9 a.m. sharp", "4p.m. sharp", "5 hours from today",
    "10 minutes from tomorrow", "by morning's end", "couple of", "few hours", "Sunday's",
    "in two weeks",
)

# The same, between blanks and with nothing else around.
HINT_FRAGMENTS = (
    "mon", "tue", "wed", "thu", "fri", "sat", "sun", "a few", "a couple", "couple of",
    "few minutes", "few hours", "first thing", "end of", "early", "around", "about a",
    "about an hour", "soon", "asap", "later", "new year",
)

NEAR_MISSES = (
    "at 2460", "at 960", "at 0960", "at 2400", "at 24", "at 45", "at 7:60", "at 23:59", "at 0",
    "at 00", "at 0:00", "at 12", "at 12:30", "at 7:5", "at 7:305", "at 12345", "at7", "at  7",
    "13pm", "13am", "23pm", "24pm", "25am", "0am", "0pm", "12am", "12pm", "12:60pm", "7:60 am",
    "1360am", "1260 pm", "2400am", "2359 pm", "000am", "0000pm", "930am", "930 a.m.", "9:5am",
    "930amp", "9amazing", "at 5 ambulances", "at 10:30 amazing", "at 6 pmx", "at 8 a", "feb 29",
    "feb 30", "february 31st", "apr 31", "june 31", "sep 31st", "nov 31", "jan 0", "march 32",
    "may 99", "march 2025", "may 5,", "mar.5", "mar5", "sept 5", "jan 1", "dec 31", "oct 3th",
    "oct 3thx", "may 1st 2nd", "the 15 reports", "the 15", "the 15th", "the 0th", "the 32nd",
    "the 31st", "the 29th", "the 30th", "the 1st", "on the 0", "by the 99 and the 5th",
    "on the 32nd", "until the 31", "after the 1st of", "before the 100", "in a minute", "in an hr",
    "in an mins", "in 0 days", "in 00 weeks", "in 1 minutess", "in -5 days", "in 1.5 hours",
    "within 2 days", "in  a  week", "in 5days", "5 days from Now!", "days from now",
    "0 weeks from today", "3 weeks from tomorrow", "3 hours from tomorrow", "day after  tomorrow",
    "the day after tomorrow", "daily after tomorrow", "this  weekend", "next weekend",
    "next  friday", "nextfriday", "fridays", "this friday", "this next friday", "next this friday",
    "tomorrows", "to-morrow", "tomorrow's", "(tomorrow)", "today's", "2day", "tonight's", "_today_",
    "today_", "nightly", "knight", "mid-night", "Good night", "afternoons", "noonday", "12 noon",
)

OVERLAPS = (
    "jan 5 am", "mar 3pm", "at 5 days from now", "at 10 minutes from now",
    "at 2 weeks from tomorrow", "in 3 days in the morning", "in 20 minutes this evening",
    "in 2 hours tonight", "in an hour at noon", "at 9 tonight", "at 12 tonight",
    "at 12:30 this evening", "at 0 at night", "at 11 in the evening", "at 8 tonight at 9",
    "tonight morning", "tonight night", "midnight tonight", "noon tomorrow midnight",
    "the day after tomorrow tomorrow", "next friday this friday", "by the 5th jan 6", "on the 5 am",
    "by the 10 pm", "after the 7am", "may 12:30pm", "june 9:15 am", "dec 11 at 12 am",
    "feb 29 29th", "5 days from tomorrow from now", "3 weeks from today at 7",
    "in 5 weeks from now", "in 2 days from tomorrow", "at 5 at 6", "at 7:60 at 8", "at 2460 at 9",
    "1360am 9am", "13pm 1pm", "march 0 march 5", "the 32nd the 5th",
    "in 99999999999999999999 days in 2 days", "in 99999999999999999999 hrs or 2 days from now",
    "in 99999999999 weeks, 3 hours from now", "99999999999999999999 days from now friday",
    "99999999999 weeks from now 2 days from tomorrow", "at 5 5 pm", "at 1530 pm",
    "at 930 am tomorrow", "today at 6 minutes from now", "sunday night at 8",
)

# Hold letters that characters beyond ASCII fold to.
FOLDABLE_PHRASES = (
    "august 5", "in august 31st", "by the 1st", "the 21st", "the 31st", "sep 1st", "september 12",
    "in 2 weeks", "in a week", "3 weeks from now", "5 hrs from now", "in 10 minutes", "in 2 hours",
    "in 3 days", "2 weeks from tomorrow", "1 week from today", "4 days from today", "this weekend",
    "this week end", "sunday", "next sunday", "tuesday at 3", "next wednesday", "this thursday",
    "this friday", "saturday morning",
)

MONTHS_IN_FULL = (
    "january", "february", "march", "april", "may", "june",
    "july", "august", "september", "october", "november", "december",
)
MONTHS = (*MONTHS_IN_FULL, *(month[:3] for month in MONTHS_IN_FULL))
WEEKDAYS = ("sunday", "monday", "tuesday", "wednesday", "thursday", "friday", "saturday")
OFFSET_UNITS = ("min", "minute", "minutes", "hr", "hrs", "hour", "hours", "day", "days", "week", "weeks")
ORDINAL_SUFFIXES = ("st", "nd", "rd", "th")
PERIODS = ("morning", "afternoon", "evening", "night")
CONNECTORS = ("in the", "this", "on", "for", "with", "and", "by", "around", "the", "a", "or", "not", "—", "/", "&")

# Loose words from which accidental phrases form.
SOUP = (
    *CONNECTORS, *WEEKDAYS, *MONTHS, *OFFSET_UNITS, *PERIODS, "at", "in", "on", "by", "until",
    "before", "after", "the", "from", "now", "today", "tomorrow", "tonight", "noon", "midnight",
    "next", "this", "weekend", "am", "pm", "a", "an", "day", "5", "7", "12", "15", "31", "930",
    "1530", "2:30", "1st", "2nd", "3rd", "15th", "am.", "p.m.", ":", ",", ".",
)

# --- Characters ------------------------------------------------------------------------------

WHITE_SPACES = (
    " ", "  ", "\t", "\n", "\r\n", "\v", "\f", "\x85", "\xa0", "\u1680", "\u2003", "\u2009",
    "\u2028", "\u2029", "\u202f", "\u205f", "\u3000", " \t ", "\u2003 ",
)
# Not white space, although some of them look so.
FALSE_WHITE_SPACES = ("\x1c", "\x1f", "\u180e", "\u200b", "\u2060", "\ufeff", "\x00", "_", "-")

# Zero-width, combining and other characters that matter to word boundaries.
BOUNDARY_TROUBLE = (
    "\u0301", "\u0323", "\u20dd", "\ufe0f", "\u20e3", "\u200d", "\u200c", "\u200b", "\u200e",
    "\u200f", "\u00ad", "\ufeff", "\u2060", "\u061c", "\u0903", "\u09be", "\uff9e", "\u302e",
    "\U000e0020", "\U000e0067", "\U0001d165", "\U0001f3fd", "\u203f", "\u24b6", "\U0001f130",
    "\u2163", "\u00b2", "\u00aa", "\u0660", "\uff15", "\u0e01", "é", "ß", "字", "한", "𝐱", "𐐷", "ا",
    "א", "😀", "🇩🇪", "'", "\u2019", "_", "-", "·", "\u0345", "\u0e33",
)

# Zeros of other scripts' digits; the other nine follow.
FOREIGN_ZEROS = (
    "\u0660", "\u06f0", "\u0966", "\u09e6", "\u0e50", "\uff10",
    "\U0001d7ce", "\U0001d7f6", "\U000104a0",
)

# Characters that case folding makes equal to Latin letters of the patterns.
FOLDED_LETTERS = (("st", "\ufb06"), ("st", "\ufb05"), ("s", "\u017f"), ("k", "\u212a"))
# The same, and others that are near a Latin letter in another way, or only look like one.
EXOTIC_LETTERS = (
    *FOLDED_LETTERS, ("i", "\u0130"), ("i", "\u0131"),
    ("a", "\u0430"), ("a", "\uff41"), ("o", "\U0001d428"), ("fi", "\ufb01"), ("ss", "\u00df"),
)

END_PUNCTUATION = (",", ";", ".", ":", "...", " , ", ";:", "!", "?", ")", "-", "—", "«", ": ;", "., ", "…")


# --- Phrases ---------------------------------------------------------------------------------


class PhraseMaker:
    def __init__(self, generator):
        self.random = generator

    def clock_time(self):
        hour = self.random.randint(0, 23)
        minute = self.random.choice((0, 0, 15, 30, 45, 59, self.random.randint(0, 69)))
        suffix = self.random.choice(("am", "pm"))
        gap = self.random.choice(("", " ", ""))
        at = self.random.choice(("at ", "at ", ""))
        twelve_hour = self.random.choice((hour % 12 or 12, hour))
        return self.random.choice((
            f"{at}{twelve_hour}{gap}{suffix}",
            f"{at}{twelve_hour}:{minute:02}{gap}{suffix}",
            f"{at}{twelve_hour}{minute:02}{gap}{suffix}",
            f"{at}{hour:02}{minute:02}{gap}{suffix}",
            f"at {hour}",
            f"at {hour}:{minute:02}",
            f"at {hour}{minute:02}",
            f"at {hour:02}{minute:02}",
            f"at {hour:02}:{minute:02}",
            "noon",
            "midnight",
            "at noon",
            "at midnight",
        ))

    def period(self):
        return self.random.choice(("", "in the ", "this ", "early ")) + self.random.choice(PERIODS)

    def amount(self):
        return self.random.choice((
            str(self.random.randint(0, 12)),
            str(self.random.randint(0, 12)),
            str(self.random.randint(13, 400)),
            str(self.random.randint(400, 100_000)),
            "0" * self.random.randint(1, 20) + str(self.random.randint(0, 99)),
        ))

    def offset(self):
        unit = self.random.choice(OFFSET_UNITS)
        return self.random.choice((
            f"in {self.amount()} {unit}",
            f"in {self.amount()} {unit}",
            f"in {self.random.choice(('a', 'an'))} {unit}",
            f"{self.amount()} {unit} from now",
        ))

    def amount_from_tomorrow(self):
        unit = self.random.choice(("day", "days", "week", "weeks"))
        return f"{self.amount()} {unit} from {self.random.choice(('tomorrow', 'today'))}"

    def day_number(self):
        number = self.random.choice((1, 15, 28, 29, 30, 31, self.random.randint(0, 33), self.random.randint(1, 31)))
        return self.random.choice((str(number), str(number), f"{number:02}"))

    def ordinal(self):
        return self.day_number() + self.random.choice(ORDINAL_SUFFIXES)

    def month_date(self):
        day = self.random.choice((self.day_number(), self.ordinal()))
        return f"{self.random.choice(('', 'on ', 'by '))}{self.random.choice(MONTHS)} {day}"

    def numbered_day(self):
        preposition = self.random.choice(("on", "by", "until", "before", "after"))
        return self.random.choice((
            f"{preposition} the {self.day_number()}",
            f"{preposition} the {self.ordinal()}",
            f"the {self.ordinal()}",
            f"the {self.ordinal()}",
        ))

    def day_word(self):
        return self.random.choice((
            "day after tomorrow", "the day after tomorrow", "this weekend", "tomorrow", "tonight", "today",
            "tomorrow", "tonight", "today", "by tomorrow", "later today",
        ))

    def weekday(self):
        return self.random.choice(("next ", "this ", "", "on ")) + self.random.choice(WEEKDAYS)

    def huge_amount(self):
        digits = self.random.randint(5, 30)
        amount = self.random.choice((
            str(self.random.randint(10 ** (digits - 1), 10**digits - 1)),
            str(self.random.randint(2_900_000, 2_930_000)),  # days to about the year 9999
            str(self.random.randint(415_000, 417_000)),  # the same in weeks
            str(self.random.randint(69_800_000, 70_100_000)),  # in hours
            str(self.random.randint(4_190_000_000, 4_206_000_000)),  # in minutes
            str(2**63 - 1),
            str(2**63),
            str(2**64 + 3),
            str(2**32 + 2),
            str(2**63 // 7 + self.random.randint(0, 3)),
            "0" * 25 + "7",
        ))
        return self.random.choice((
            f"in {amount} {self.random.choice(OFFSET_UNITS)}",
            f"{amount} {self.random.choice(OFFSET_UNITS)} from now",
            f"{amount} {self.random.choice(('days', 'weeks'))} from {self.random.choice(('tomorrow', 'today'))}",
        ))

    def any_phrase(self):
        return self.random.choice((
            self.clock_time, self.clock_time, self.clock_time, self.period, self.offset, self.offset,
            self.amount_from_tomorrow, self.month_date, self.month_date, self.numbered_day, self.numbered_day,
            self.day_word, self.day_word, self.weekday, self.weekday,
        ))()

    def title(self):
        return self.random.choice(PLAIN_TITLES)


# --- Instants --------------------------------------------------------------------------------


@functools.lru_cache(maxsize=None)
def clock_changes(zone_name):
    """The instants from the first to the last at which the zone's offset changes."""
    zone = zoneinfo.ZoneInfo(zone_name)

    def offset_at(instant):
        return datetime.datetime.fromtimestamp(instant, zone).utcoffset()

    changes = []
    for day_start in range(FIRST_INSTANT, LAST_INSTANT, DAY):
        before = offset_at(day_start)
        if offset_at(day_start + DAY) != before:
            seconds = range(day_start, day_start + DAY)
            changes.append(seconds[bisect.bisect_left(seconds, True, key=lambda s: offset_at(s) != before)])
    return tuple(changes)


def instant_at(zone_name, year, month, day, hour, minute, second):
    zone = zoneinfo.ZoneInfo(zone_name)
    return int(datetime.datetime(year, month, day, hour, minute, second, tzinfo=zone).timestamp())


def random_instant(generator, zone_name):
    kind = generator.random()
    if kind < 0.35 and clock_changes(zone_name):
        change = generator.choice(clock_changes(zone_name))
        distance = (0, -1, 1, generator.randint(-3 * HOUR, 3 * HOUR), generator.randint(-3 * DAY, DAY))
        return change + generator.choice(distance)
    year = generator.randint(2005, 2025)
    any_time = (generator.randint(0, 23), generator.randint(0, 59), generator.randint(0, 59))
    time = generator.choice(((0, 0, 0), (23, 59, 59), (9, 0, 0), any_time))
    if kind < 0.55:  # first and last days of months
        month = generator.randint(1, 12)
        first = datetime.date(year, month, 1)
        date = generator.choice((first, first - datetime.timedelta(days=1), first - datetime.timedelta(days=2)))
        date = max(date, datetime.date(2005, 1, 1))
        return instant_at(zone_name, date.year, date.month, date.day, *time)
    if kind < 0.65:  # ends of years
        month, day = generator.choice(((1, 1), (1, 2), (12, 30), (12, 31), (12, 15)))
        return instant_at(zone_name, year, month, day, *time)
    if kind < 0.75:  # around leap days
        month, day = generator.choice(((2, 28), (3, 1), (3, 2), (2, 27)))
        if generator.random() < 0.4:
            year, month, day = generator.choice((2008, 2012, 2016, 2020, 2024)), 2, 29
        return instant_at(zone_name, year, month, day, *time)
    return generator.randint(FIRST_INSTANT, LAST_INSTANT - 1)


def written_now(generator, instant, fraction, zone_name):
    """The instant in one of the forms the tool reads."""
    zone = zoneinfo.ZoneInfo(zone_name)
    local = datetime.datetime.fromtimestamp(instant, zone)
    occurs_once = local.replace(fold=0).utcoffset() == local.replace(fold=1).utcoffset()
    decimals = f"{fraction:.3f}".rstrip("0").lstrip("0") if fraction else ""

    form = generator.choice(("number", "utc", "offset", "other offset", "local", "local"))
    if form == "local" and not occurs_once:
        form = "offset"
    if form == "number":
        return instant + fraction
    if form == "local":
        return local.strftime("%Y-%m-%dT%H:%M:%S") + decimals
    if form == "utc":
        utc = datetime.datetime.fromtimestamp(instant, datetime.timezone.utc)
        return utc.strftime("%Y-%m-%dT%H:%M:%S") + decimals + "Z"
    if form == "other offset":
        minutes = generator.choice((-720, -210, -60, 0, 330, 345, 765, 840))
        other_zone = datetime.timezone(datetime.timedelta(minutes=minutes))
        local = datetime.datetime.fromtimestamp(instant, other_zone)
    offset_minutes = local.utcoffset() // datetime.timedelta(minutes=1)
    sign = "-" if offset_minutes < 0 else "+"
    hours, minutes = divmod(abs(offset_minutes), 60)
    return f"{local.strftime('%Y-%m-%dT%H:%M:%S')}{decimals}{sign}{hours:02}:{minutes:02}"


# --- Lines -----------------------------------------------------------------------------------


class LineMaker:
    def __init__(self, generator):
        self.random = generator
        self.phrases = PhraseMaker(generator)
        self.kinds = (
            (6, self.plain_line),
            (2, self.blank_line),
            (30, self.one_phrase_line),
            (18, self.several_phrases_line),
            (3, self.bare_phrase_line),
            (7, self.overlap_line),
            (9, self.near_miss_line),
            (4, self.hint_only_line),
            (4, self.huge_amount_line),
            (2, self.folded_line),
            (8, self.soup_line),
        )
        # Kinds whose text is made for the instant.
        self.timed_kinds = (
            (10, self.clock_change_line),
            (3, self.rolling_date_line),
            (2, self.last_year_line),
        )
        self.zones_with_clock_changes = [zone for zone in ZONES if clock_changes(zone)]

    def line(self, number):
        kind = self.weighted_choice((*self.kinds, (13, None)))
        if kind is None:
            text, instant, zone = self.weighted_choice(self.timed_kinds)()
        else:
            zone = self.random.choice(ZONES)
            text, instant = kind(), random_instant(self.random, zone)
        fraction = self.random.choice((0, 0, 0.5, 0.25, 0.999, 0.001))
        return self.written(number, self.disturbed(text), instant, fraction, zone)

    def weighted_choice(self, weighted):
        weights, choices = zip(*weighted)
        return self.random.choices(choices, weights)[0]

    # Kinds of lines.

    def plain_line(self):
        return self.joined([self.phrases.title() for _ in range(self.random.randint(1, 3))])

    def blank_line(self):
        return "".join(self.random.choice(WHITE_SPACES) for _ in range(self.random.randint(0, 4)))

    def one_phrase_line(self):
        pieces = [self.phrases.title(), self.phrases.any_phrase()]
        if self.random.random() < 0.3:
            pieces.append(self.phrases.title())
        if self.random.random() < 0.3:
            self.random.shuffle(pieces)
        return self.joined(pieces)

    def several_phrases_line(self):
        pieces = [self.phrases.any_phrase() for _ in range(self.random.randint(2, 4))]
        for _ in range(self.random.randint(0, 2)):
            word = self.random.choice((self.phrases.title(), self.random.choice(CONNECTORS)))
            pieces.insert(self.random.randint(0, len(pieces)), word)
        return self.joined(pieces)

    def bare_phrase_line(self):
        return self.phrases.any_phrase()

    def overlap_line(self):
        return self.with_title(self.random.choice(OVERLAPS))

    def near_miss_line(self):
        pieces = [self.random.choice(NEAR_MISSES)]
        if self.random.random() < 0.4:
            pieces.append(self.random.choice((self.random.choice(NEAR_MISSES), self.phrases.any_phrase())))
        return self.with_title(self.joined(pieces))

    def hint_only_line(self):
        if self.random.random() < 0.5:
            return self.with_title(self.random.choice(HINT_ONLY))
        return f"{self.phrases.title()} {self.random.choice(HINT_FRAGMENTS)} {self.phrases.title()}"

    def huge_amount_line(self):
        pieces = [self.phrases.huge_amount()]
        if self.random.random() < 0.3:
            pieces.append(self.random.choice((self.phrases.huge_amount(), self.phrases.any_phrase())))
        return self.with_title(self.joined(pieces))

    def folded_line(self):
        """A phrase that only exotic case folding makes one, often with the same in plain after it."""
        plain, exotic = self.random.choice(FOLDED_LETTERS)
        phrase = self.random.choice([phrase for phrase in FOLDABLE_PHRASES if plain in phrase])
        pieces = [phrase.replace(plain, exotic, 1)]
        if self.random.random() < 0.6:
            pieces.append(self.random.choice((phrase, phrase, self.phrases.any_phrase())))
        return self.with_title(self.joined(pieces))

    def soup_line(self):
        words = [self.random.choice(SOUP) for _ in range(self.random.randint(2, 14))]
        if self.random.random() < 0.1:
            words *= self.random.randint(2, 12)
        return self.joined(words)

    def clock_change_line(self):
        """The due time falls into the hours of a clock change."""
        zone_name = self.random.choice(self.zones_with_clock_changes)
        change = self.random.choice(clock_changes(zone_name))
        zone = zoneinfo.ZoneInfo(zone_name)
        # Written with the offset before and the offset after the change, this is skipped or repeated.
        before = datetime.datetime.fromtimestamp(change - 1, zone).utcoffset()
        after = datetime.datetime.fromtimestamp(change, zone).utcoffset()
        span_start = datetime.datetime(1970, 1, 1) + datetime.timedelta(seconds=change) + min(before, after)
        length = abs(after - before) // datetime.timedelta(minutes=1)
        minutes_into_span = self.random.choice((0, length - 1, length, self.random.randint(0, length)))
        wall_time = span_start + datetime.timedelta(minutes=minutes_into_span)
        # Said some days earlier at the same wall time, or a little earlier.
        days = self.random.choice((0, 1, 1, 2, 7, 14, self.random.randint(1, 300)))
        earlier = (wall_time - datetime.timedelta(days=days)).replace(tzinfo=zone)
        instant = int(earlier.timestamp()) + self.random.randint(0, 59)
        clock = self.random.choice((
            f"at {wall_time.hour:02}{wall_time.minute:02}",
            f"at {wall_time.hour % 12 or 12}:{wall_time.minute:02} {'pm' if wall_time.hour >= 12 else 'am'}",
        ))
        if wall_time.hour == 0 and wall_time.minute == 0:
            clock = self.random.choice((clock, "midnight"))
        date = f"{MONTHS_IN_FULL[wall_time.month - 1]} {wall_time.day}"
        weekday = WEEKDAYS[wall_time.isoweekday() % 7]
        phrase = self.random.choice((
            f"in {days} days",
            f"{days} days from now",
            f"{clock} in {days} days",
            f"{max(days - 1, 0)} days from tomorrow {clock}",
            f"{date} {clock}",
            f"{weekday} {clock}",
        ))
        if days == 1:
            phrase = self.random.choice((phrase, f"tomorrow {clock}"))
        if days == 0 or self.random.random() < 0.3:
            # Minutes and hours that end around the change, wherever they start.
            away = self.random.choice((self.random.randint(0, 180), self.random.randint(0, 3_000)))
            instant = change + self.random.randint(-length, length) * MINUTE - away * MINUTE
            phrase = self.random.choice((
                f"in {away} minutes", f"in {away // 60} hours", f"{away} min from now", clock,
            ))
        return self.with_title(phrase), instant, zone_name

    def rolling_date_line(self):
        """A date that its month does not have, said around the day that it rolls over to."""
        zone_name = self.random.choice(ZONES)
        year = self.random.randint(2006, 2025)
        month, day = self.random.choice(((2, 29), (2, 30), (2, 31), (4, 31), (6, 31), (9, 31), (11, 31)))
        phrase = self.random.choice((
            f"{MONTHS_IN_FULL[month - 1]} {day}",
            f"{MONTHS_IN_FULL[month - 1][:3]} {day}th",
            f"by the {day}",
            f"the {day}st",
        ))
        said = datetime.date(year, month, 28) + datetime.timedelta(days=self.random.randint(0, 6))
        time = self.random.choice(((0, 0, 0), (12, 34, 56), (23, 59, 59)))
        instant = instant_at(zone_name, said.year, said.month, said.day, *time)
        return self.with_title(phrase), instant, zone_name

    def last_year_line(self):
        """An offset that ends within two days of the end of the year 9999."""
        zone_name = self.random.choice(ZONES)
        instant = random_instant(self.random, zone_name)
        seconds_left = END_OF_YEAR_9999 - instant + self.random.randint(-2 * DAY, 2 * DAY)
        phrase = self.random.choice((
            f"in {seconds_left // MINUTE} minutes",
            f"{seconds_left // HOUR} hours from now",
            f"in {seconds_left // DAY} days",
            f"{seconds_left // DAY} days from {self.random.choice(('today', 'tomorrow'))}",
        ))
        return self.with_title(phrase), instant, zone_name

    def with_title(self, phrase):
        pieces = [phrase]
        if self.random.random() < 0.85:
            pieces.insert(self.random.randint(0, 1), self.phrases.title())
        return self.joined(pieces)

    def joined(self, pieces):
        if self.random.random() < 0.8:
            return " ".join(pieces)
        text = pieces[0]
        for piece in pieces[1:]:
            text += self.separator() + piece
        return text

    def separator(self):
        return self.random.choice((
            " ", "  ", ", ", "", ". ", " - ", ":",
            self.random.choice(WHITE_SPACES), self.random.choice(FALSE_WHITE_SPACES),
        ))

    # Disturbances: each leaves most lines alone.

    def disturbed(self, text):
        for chance, disturb in (
            (0.25, self.in_other_case),
            (0.10, self.with_other_spaces),
            (0.05, self.with_exotic_letter),
            (0.04, self.with_foreign_digits),
            (0.08, self.with_boundary_trouble),
            (0.15, self.with_end_punctuation),
            (0.08, self.with_outer_spaces),
            (0.02, self.with_one_character_changed),
        ):
            if self.random.random() < chance:
                text = disturb(text)
        return text

    def in_other_case(self, text):
        return self.random.choice((
            text.upper(),
            text.title(),
            text.capitalize(),
            "".join(self.random.choice((c, c.upper())) for c in text),
        ))

    def with_other_spaces(self, text):
        return "".join(
            self.random.choice(WHITE_SPACES) if c == " " and self.random.random() < 0.6 else c for c in text
        )

    def with_exotic_letter(self, text):
        possible = [pair for pair in EXOTIC_LETTERS if pair[0] in text.lower()]
        if not possible:
            return text
        plain, exotic = self.random.choice(possible)
        places = [i for i in range(len(text)) if text[i : i + len(plain)].lower() == plain]
        if not places:
            return text
        place = self.random.choice(places)
        return text[:place] + exotic + text[place + len(plain) :]

    def with_foreign_digits(self, text):
        plain = " " + text if self.random.random() < 0.3 else ""
        zero = ord(self.random.choice(FOREIGN_ZEROS))
        all_of_them = self.random.random() < 0.5
        changed = ""
        for character in text:
            if character in "0123456789" and (all_of_them or self.random.random() < 0.3):
                character = chr(zero + int(character))
            changed += character
        return changed + plain

    def with_boundary_trouble(self, text):
        # Mostly at the edges of words, where it matters.
        edges = [i for i in range(len(text) + 1) if i in (0, len(text)) or " " in text[i - 1 : i + 1]]
        for _ in range(self.random.choice((1, 1, 2, 3))):
            place = self.random.choice((self.random.choice(edges), self.random.randint(0, len(text))))
            text = text[:place] + self.random.choice(BOUNDARY_TROUBLE) + text[place:]
        return text

    def with_end_punctuation(self, text):
        if self.random.random() < 0.3:
            text = self.random.choice(END_PUNCTUATION) + text
        return text + self.random.choice(END_PUNCTUATION)

    def with_outer_spaces(self, text):
        return self.random.choice(WHITE_SPACES) + text + self.random.choice(WHITE_SPACES)

    def with_one_character_changed(self, text):
        if not text:
            return text
        place = self.random.randrange(len(text))
        return text[:place] + self.random.choice(("", text[place] * 2, "0", "a", " ", ".")) + text[place + 1 :]

    # The input object.

    def written(self, number, text, instant, fraction, zone):
        identifier = self.random.choice((
            number, number, number, f"line {number}", f"№{number}", None, True,
            [number, "a"], {"line": number},
        ))
        fields = {"id": identifier, "text": text, "now": written_now(self.random, instant, fraction, zone), "tz": zone}
        if self.random.random() < 0.5:
            fields["locale"] = "en_US"
        if self.random.random() < 0.1:
            fields["remark"] = "not for you"
        names = list(fields)
        if self.random.random() < 0.2:
            self.random.shuffle(names)
        written = json.dumps({name: fields[name] for name in names}, ensure_ascii=self.random.random() < 0.5)
        return Line(identifier, text, instant + fraction, zone, written)


def random_lines(count, seed):
    maker = LineMaker(random.Random(seed))
    for number in range(1, count + 1):
        yield maker.line(number)


def main():
    arguments = argparse.ArgumentParser(description="Prints random input lines for `quillo parse --jsonl`.")
    arguments.add_argument("--lines", type=int, default=100)
    arguments.add_argument("--seed", type=int, default=1)
    options = arguments.parse_args()
    for line in random_lines(options.lines, options.seed):
        sys.stdout.buffer.write(line.json.encode("utf-8") + b"\n")


if __name__ == "__main__":
    main()
