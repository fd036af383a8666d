#!/usr/bin/env python3
"""A slow and obvious second reading of how Quillo understands a typed line.

The program itself matches ICU patterns in C++. This module answers the same question with
nothing but Python's standard library and no shared code, so that the two can be compared line
by line (compare_parser.py). Clarity goes before speed everywhere.

    understand("Email Sam in 2 hours", 1741078800, "Europe/Berlin")

The language is English with the names of en_US. There is no language model here: a line that
looks temporal but that no rule dates ends as a miss.
"""

import datetime
import enum
import functools
import math
import re
import unicodedata
import zoneinfo


class Step(enum.Enum):
    """What happened while a line was understood. The comparison counts these, to be sure that
    every rule and every special case really was exercised."""

    # Why a line was taken to be temporal.
    HINT_WORD = "hint: a word or fragment"
    HINT_CLOCK_OR_OFFSET = "hint: a clock time or an offset"
    HINT_MONTH = "hint: a month name"
    HINT_NUMBERED_DAY = "hint: a numbered day"
    # Which rule gave the time of day.
    NOON = "time: noon"
    MIDNIGHT = "time: midnight"
    COMPACT_TIME_WITH_SUFFIX = "time: 930am"
    TIME_WITH_SUFFIX = "time: 9:30 am"
    AT_COMPACT_TIME = "time: at 1530"
    AT_HOUR = "time: at 9:30"
    MORNING = "time: morning"
    AFTERNOON = "time: afternoon"
    EVENING = "time: evening"
    NIGHT = "time: night"
    TONIGHT_HOUR = "time: the hour of tonight"
    OFFSET_KEEPS_CLOCK = "time: from the offset"
    DEFAULT_TIME = "time: the default of 9:00"
    # Which rule gave the day.
    IN_AMOUNT = "day: in 3 days"
    AMOUNT_FROM_NOW = "day: 3 days from now"
    AMOUNT_FROM_TOMORROW = "day: 2 weeks from tomorrow"
    MONTH_DATE = "day: march 3rd"
    PREPOSITION_NUMBERED_DAY = "day: by the 15"
    NUMBERED_DAY = "day: the 15th"
    DAY_AFTER_TOMORROW = "day: day after tomorrow"
    THIS_WEEKEND = "day: this weekend"
    TOMORROW = "day: tomorrow"
    TONIGHT = "day: tonight"
    TODAY = "day: today"
    NEXT_WEEKDAY = "day: next friday"
    WEEKDAY = "day: friday"
    TODAY_BY_TIME_ALONE = "day: today, from a time alone"
    # Units of an offset.
    MINUTES = "unit: minutes"
    HOURS = "unit: hours"
    DAYS = "unit: days"
    WEEKS = "unit: weeks"
    # Special cases.
    FOREIGN_DIGITS_REFUSED = "refused: digits of another script"
    FOLDED_LETTERS_REFUSED = "refused: a word that only case folding matched"
    IMPOSSIBLE_TIME_REFUSED = "refused: an impossible clock time"
    IMPOSSIBLE_DAY_REFUSED = "refused: a day outside 1 to 31"
    AMOUNT_TOO_LARGE_REFUSED = "refused: an amount beyond 64 bits"
    OFFSET_TOO_FAR_REFUSED = "refused: an offset past the year 9999"
    TOO_FAR_READ_AS_NOW = "special: a day past the year 9999 read as today"
    EVENING_MOVED_HOUR = "special: the evening moved an hour to after noon"
    SMALL_HOUR_MOVED = "special: a small hour read as after noon"
    PERIOD_OVERRODE_OFFSET = "special: a period word overrode an offset's clock time"
    ROLLED_OVER = "special: an impossible date rolled over"
    FOLLOWING_YEAR = "special: a past date moved to the following year"
    WALL_TIME_SKIPPED = "special: the due wall time is skipped by a clock change"
    WALL_TIME_REPEATED = "special: the due wall time occurs twice"
    PHRASES_OVERLAP = "special: phrases overlap in the line"
    TITLE_FELL_BACK = "special: nothing but phrases, the whole line is the title"


# --- Characters ----------------------------------------------------------------------------

# Unicode White_Space. Python's own idea of white space also holds U+001C to U+001F.
WHITE_SPACE = (
    "\t\n\v\f\r \x85\xa0\u1680\u2000\u2001\u2002\u2003\u2004\u2005\u2006\u2007\u2008\u2009\u200a"
    "\u2028\u2029\u202f\u205f\u3000"
)

ZERO_WIDTH_NON_JOINER = "\u200c"
ZERO_WIDTH_JOINER = "\u200d"

# Alphabetic symbols, the only alphabetic characters that are neither letters, marks nor letter
# numbers: circled, squared and negative circled and squared Latin letters.
ALPHABETIC_SYMBOLS = (
    (0x24B6, 0x24E9),
    (0x1F130, 0x1F149),
    (0x1F150, 0x1F169),
    (0x1F170, 0x1F189),
)

# Other_Grapheme_Extend: what extends a grapheme without being a nonspacing or enclosing mark.
OTHER_GRAPHEME_EXTENDERS = (
    (0x09BE, 0x09BE), (0x09D7, 0x09D7), (0x0B3E, 0x0B3E), (0x0B57, 0x0B57), (0x0BBE, 0x0BBE),
    (0x0BD7, 0x0BD7), (0x0CC2, 0x0CC2), (0x0CD5, 0x0CD6), (0x0D3E, 0x0D3E), (0x0D57, 0x0D57),
    (0x0DCF, 0x0DCF), (0x0DDF, 0x0DDF), (0x1B35, 0x1B35), (0x200C, 0x200C), (0x302E, 0x302F),
    (0xFF9E, 0xFF9F), (0x1133E, 0x1133E), (0x11357, 0x11357), (0x114B0, 0x114B0),
    (0x114BD, 0x114BD), (0x115AF, 0x115AF), (0x11930, 0x11930), (0x1D165, 0x1D165),
    (0x1D16E, 0x1D172), (0xE0020, 0xE007F),
)


def lies_in(character, ranges):
    return any(first <= ord(character) <= last for first, last in ranges)


@functools.lru_cache(maxsize=None)
def is_word_character(character):
    """A letter, mark, decimal digit, letter number, connector or joiner."""
    category = unicodedata.category(character)
    return (
        category[0] in "LM"
        or category in ("Nd", "Nl", "Pc")
        or character in (ZERO_WIDTH_NON_JOINER, ZERO_WIDTH_JOINER)
        or lies_in(character, ALPHABETIC_SYMBOLS)
    )


@functools.lru_cache(maxsize=None)
def clings_to_previous(character):
    """Combining and format characters belong to what stands before them: no word boundary is
    seen in front of one, and looking back for the previous character skips them."""
    return unicodedata.category(character) in ("Mn", "Me", "Cf") or lies_in(
        character, OTHER_GRAPHEME_EXTENDERS
    )


def is_word_boundary(text, position):
    if position < len(text) and clings_to_previous(text[position]):
        return False
    word_follows = position < len(text) and is_word_character(text[position])
    previous = position - 1
    while previous >= 0 and clings_to_previous(text[previous]):
        previous -= 1
    word_precedes = previous >= 0 and is_word_character(text[previous])
    return word_follows != word_precedes


def trim(text):
    return text.strip(WHITE_SPACE)


# --- Patterns ------------------------------------------------------------------------------

# Python's \b, \s and case-insensitive matching differ from ICU's, so a pattern is not run as it
# stands. In the text, a mark is set in front of every character (and one at the very end) that
# says whether a word boundary is there. In the pattern, whatever takes one character takes
# the mark in front of it too, and \b looks at the mark. The marks are noncharacters, which no
# text holds.
BOUNDARY_MARK = "\U0010fffe"
NO_BOUNDARY_MARK = "\U0010ffff"


def mark_word_boundaries(text):
    if BOUNDARY_MARK in text or NO_BOUNDARY_MARK in text:
        raise ValueError("the text holds a noncharacter that is used as a mark here")
    marked = []
    for position in range(len(text) + 1):
        marked.append(BOUNDARY_MARK if is_word_boundary(text, position) else NO_BOUNDARY_MARK)
        marked.append(text[position : position + 1])
    return "".join(marked)


# Beyond the two cases of its own, case folding makes these equal to a Latin letter or pair of
# letters that occurs in the patterns: the long s, the Kelvin sign, and the two st ligatures.
EXOTIC_FORMS = {"s": "\u017f", "k": "\u212a", "st": "\ufb05\ufb06"}


class Match:
    """Where a pattern matched in the unmarked text, and what its groups captured."""

    def __init__(self, marked_match):
        # Marks and characters alternate, and a match begins and ends in front of a mark.
        self.start = marked_match.start() // 2
        self.end = marked_match.end() // 2
        self.text = marked_match.group()[1::2]
        self.groups = tuple(
            None if group is None else group[1::2] for group in marked_match.groups()
        )

    def holds_foreign_characters(self):
        """Digits of other scripts and letters that only case folding made equal match, but are
        neither numbers nor words here. White space of any kind is fine."""
        return any(ord(c) > 127 and c not in WHITE_SPACE for c in self.text)


class Pattern:
    """A regular expression in ICU's notation, as far as it is used here."""

    def __init__(self, notation, ignore_case):
        self.regex = re.compile(self.translate(notation, ignore_case))

    def first_match(self, marked_text):
        found = self.regex.search(marked_text)
        return Match(found) if found else None

    @classmethod
    def translate(cls, notation, ignore_case):
        translated = []
        position = 0
        while position < len(notation):
            rest = notation[position:]
            if rest.startswith("\\b"):
                token, meaning = "\\b", f"(?={BOUNDARY_MARK})"
            elif rest.startswith("\\d"):
                # Any decimal digit, in Python as in ICU.
                token, meaning = "\\d", cls.one_character("\\d")
            elif rest.startswith("\\s"):
                token, meaning = "\\s", cls.one_character(f"[{WHITE_SPACE}]")
            elif rest.startswith("\\."):
                token, meaning = "\\.", cls.one_character("\\.")
            elif rest.startswith(("(?:", "(?!")):
                token = meaning = rest[:3]
            elif rest[0] in "()|?+*":
                token = meaning = rest[0]
            elif rest[0] == "{":
                token = meaning = rest[: rest.index("}") + 1]
            elif ignore_case and rest.startswith("st"):
                two_letters = cls.literal("s", ignore_case) + cls.literal("t", ignore_case)
                ligature = cls.one_character(f"[{EXOTIC_FORMS['st']}]")
                token, meaning = "st", f"(?:{two_letters}|{ligature})"
            elif rest[0].isascii() and (rest[0].isalnum() or rest[0] in " :/"):
                token, meaning = rest[0], cls.literal(rest[0], ignore_case)
            else:
                raise ValueError(f"unknown notation: {rest}")
            translated.append(meaning)
            position += len(token)
        return "".join(translated)

    @classmethod
    def literal(cls, character, ignore_case):
        if ignore_case and character.isalpha():
            forms = character.lower() + character.upper() + EXOTIC_FORMS.get(character, "")
            return cls.one_character(f"[{forms}]")
        return cls.one_character(character)

    @staticmethod
    def one_character(expression):
        return f"(?:[{BOUNDARY_MARK}{NO_BOUNDARY_MARK}]{expression})"


def in_any_case(notation):
    return Pattern(notation, ignore_case=True)


def as_written(notation):
    return Pattern(notation, ignore_case=False)


# --- Does the line look temporal at all? -----------------------------------------------------

# Blanks at the ends are part of the fragment.
HINT_FRAGMENTS = (
    "today", "tomorrow", "tonight", "tomorow", "tmrw",
    "morning", "afternoon", "evening", "night", "noon", "midnight",
    "monday", "tuesday", "wednesday", "thursday", "friday", "saturday", "sunday",
    " mon ", " tue ", " wed ", " thu ", " fri ", " sat ", " sun ",
    "next week", "next month", "this week", "this evening", "later", "asap", "weekend", "soon",
    "from now", "from tomorrow", "from today", "after tomorrow",
    "christmas", "thanksgiving", "new year",
    " a couple", " a few", "couple of", "few minutes", "few hours",
    "first thing", "end of", "early", "late tonight", "late tomorrow",
    "by tomorrow", "by today", "by morning", "by noon", "by tonight",
    "around ", "about an hour", "about a",
)

# These run on text already in lower case, without folding.
HINT_CLOCK_AND_OFFSET_PATTERNS = (
    as_written(r"\bin\s+(a|an|\d+|some|several)\s+(min|minute|minutes|hour|hours|hr|hrs|day|days|week|weeks|month|months)\b"),
    as_written(r"\b\d+\s+(min|minute|minutes|hour|hours|hr|hrs|day|days|week|weeks)\s+from\s+(now|today|tomorrow)\b"),
    as_written(r"\b\d{1,2}(:\d{2})?\s*(am|pm|a\.m\.|p\.m\.|p|a)\b"),
    as_written(r"\b\d{3,4}\s*(am|pm)\b"),
    as_written(r"\bat\s+\d{1,2}(:\d{2})?\b"),
    as_written(r"\bat\s+\d{3,4}\b"),
)

HINT_MONTHS = (
    "jan", "feb", "mar", "apr", "may", "jun", "jul", "aug", "sep", "oct", "nov", "dec",
    "january", "february", "march", "april", "june", "july", "august", "september", "october",
    "november", "december",
)

HINT_NUMBERED_DAY_PATTERNS = (
    as_written(r"\b\d{1,2}/\d{1,2}\b"),
    as_written(r"\b(?:on|by|until|before|after)\s+the\s+\d{1,2}(st|nd|rd|th)?\b"),
    as_written(r"\bthe\s+\d{1,2}(st|nd|rd|th)\b"),
)


def temporal_hint(text):
    """The step that makes the line look temporal, or nothing. Generous on purpose: fragments
    count inside words too."""
    lowered = text.lower()
    marked = mark_word_boundaries(lowered)
    if any(fragment in lowered for fragment in HINT_FRAGMENTS):
        return Step.HINT_WORD
    if any(pattern.first_match(marked) for pattern in HINT_CLOCK_AND_OFFSET_PATTERNS):
        return Step.HINT_CLOCK_OR_OFFSET
    if any(month in lowered for month in HINT_MONTHS):
        return Step.HINT_MONTH
    if any(pattern.first_match(marked) for pattern in HINT_NUMBERED_DAY_PATTERNS):
        return Step.HINT_NUMBERED_DAY
    return None


# --- Instants and wall times -----------------------------------------------------------------

# An instant is a whole number of seconds since 1970 in UTC; a wall time is a naive datetime.

EPOCH = datetime.datetime(1970, 1, 1)
LAST_DAY = datetime.date(9999, 12, 31)
SECONDS_IN_A_DAY = 86_400
START_OF_YEAR_9000 = (datetime.date(9000, 1, 1) - EPOCH.date()).days * SECONDS_IN_A_DAY
END_OF_YEAR_9999 = ((LAST_DAY - EPOCH.date()).days + 1) * SECONDS_IN_A_DAY
SECONDS_IN_400_YEARS = 146_097 * SECONDS_IN_A_DAY


def wall_time_of(instant, zone):
    """The wall time in the zone, or nothing when it is past the year 9999 there."""
    if instant > END_OF_YEAR_9999 + 2 * SECONDS_IN_A_DAY:
        return None
    # Python's calendar ends with the year 9999, in UTC, and so close to its end the offset could not be
    # asked for. Calendar and clock changes repeat every 400 years, so an earlier instant is asked.
    sample = instant - SECONDS_IN_400_YEARS if instant > START_OF_YEAR_9000 else instant
    offset = datetime.datetime.fromtimestamp(sample, zone).utcoffset()
    seconds = instant + offset // datetime.timedelta(seconds=1)
    if seconds >= END_OF_YEAR_9999:
        return None
    return EPOCH + datetime.timedelta(seconds=seconds)


def offsets_of(wall_time, zone):
    """The zone's offsets before and after a clock change at that wall time; equal when the wall
    time occurs exactly once."""
    before = wall_time.replace(tzinfo=zone, fold=0).utcoffset()
    after = wall_time.replace(tzinfo=zone, fold=1).utcoffset()
    return before, after


def instant_of(wall_time, zone):
    """Of a repeated wall time the later instant. A skipped one is read with the offset before
    the change, which moves it forward by the length of the gap. In both cases that is the
    smaller of the two offsets."""
    return (wall_time - EPOCH - min(offsets_of(wall_time, zone))) // datetime.timedelta(seconds=1)


def days_after(day, amount):
    """The calendar day that many days later, or nothing past the year 9999."""
    if day.toordinal() + amount > LAST_DAY.toordinal():
        return None
    return day + datetime.timedelta(days=amount)


def lenient_date(year, month, day):
    """Days that the month does not have roll over into the next month: 30 February is 2 March,
    or 1 March in a leap year."""
    return datetime.date(year, month, 1) + datetime.timedelta(days=day - 1)


def weekday_number(day):
    """Sunday 1 to Saturday 7."""
    return day.isoweekday() % 7 + 1


# English names, whatever the process's locale.
WEEKDAY_ABBREVIATIONS = ("Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat")
MONTH_ABBREVIATIONS = ("Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec")


def formatted(wall_time):
    """As in "Tue Mar 4, 2025 09:00"."""
    weekday = WEEKDAY_ABBREVIATIONS[weekday_number(wall_time) - 1]
    month = MONTH_ABBREVIATIONS[wall_time.month - 1]
    return (
        f"{weekday} {month} {wall_time.day}, {wall_time.year:04} "
        f"{wall_time.hour:02}:{wall_time.minute:02}"
    )


# --- The rules -------------------------------------------------------------------------------

EVENING_CONTEXT = in_any_case(r"\b(tonight|evening|night)\b")

NOON = in_any_case(r"\bnoon\b")
MIDNIGHT = in_any_case(r"\bmidnight\b")
COMPACT_TIME_WITH_SUFFIX = in_any_case(r"\b(?:at\s+)?(\d{3,4})\s*(am|pm)\b")
TIME_WITH_SUFFIX = in_any_case(r"\b(?:at\s+)?(\d{1,2})(?::(\d{2}))?\s*(am|pm)\b")
AT_COMPACT_TIME = in_any_case(r"\bat\s+(\d{3,4})\b")
AT_HOUR = in_any_case(r"\bat\s+(\d{1,2})(?::(\d{2}))?\b(?!\s*(?:am|pm))")

PERIOD_WORDS = (
    (in_any_case(r"\bmorning\b"), 9, Step.MORNING),
    (in_any_case(r"\bafternoon\b"), 14, Step.AFTERNOON),
    (in_any_case(r"\bevening\b"), 18, Step.EVENING),
    (in_any_case(r"\bnight\b"), 20, Step.NIGHT),
)
TONIGHT_HOUR = 20
DEFAULT_HOUR = 9

IN_AMOUNT = in_any_case(r"\bin\s+(a|an|\d+)\s+(min|minutes?|hr|hrs|hour|hours|day|days|week|weeks)\b")
AMOUNT_FROM_NOW = in_any_case(r"\b(\d+)\s+(min|minutes?|hr|hrs|hour|hours|day|days|week|weeks)\s+from\s+now\b")
AMOUNT_FROM_TOMORROW = in_any_case(r"\b(\d+)\s+(day|days|week|weeks)\s+from\s+(tomorrow|today)\b")

# The units of an offset, told by how the word begins: unit, seconds, days.
OFFSET_UNITS = (
    ("min", Step.MINUTES, 60, None),
    ("hr", Step.HOURS, 3600, None),
    ("hour", Step.HOURS, 3600, None),
    ("day", Step.DAYS, None, 1),
    ("week", Step.WEEKS, None, 7),
)

MONTH_DATE = in_any_case(
    r"\b(jan|january|feb|february|mar|march|apr|april|may|jun|june|jul|july|aug|august"
    r"|sep|september|oct|october|nov|november|dec|december)\s+(\d{1,2})(st|nd|rd|th)?\b"
)
PREPOSITION_NUMBERED_DAY = in_any_case(r"\b(?:on|by|until|before|after)\s+the\s+(\d{1,2})(st|nd|rd|th)?\b")
NUMBERED_DAY = in_any_case(r"\bthe\s+(\d{1,2})(st|nd|rd|th)\b")

DAY_AFTER_TOMORROW = in_any_case(r"\bday\s+after\s+tomorrow\b")
THIS_WEEKEND = in_any_case(r"\bthis\s+weekend\b")
TOMORROW = in_any_case(r"\btomorrow\b")
TONIGHT = in_any_case(r"\btonight\b")
TODAY = in_any_case(r"\btoday\b")
NEXT_WEEKDAY = in_any_case(r"\bnext\s+(sunday|monday|tuesday|wednesday|thursday|friday|saturday)\b")
WEEKDAY = in_any_case(r"\b(?:this\s+)?(sunday|monday|tuesday|wednesday|thursday|friday|saturday)\b")

WEEKDAYS = ("sunday", "monday", "tuesday", "wednesday", "thursday", "friday", "saturday")
MONTHS = ("jan", "feb", "mar", "apr", "may", "jun", "jul", "aug", "sep", "oct", "nov", "dec")

LARGEST_AMOUNT = 2**63 - 1


class Extractor:
    """Finds the due date in one trimmed line and cuts the phrases it came from out of the title.

    After extract(): `due` and `due_wall_time` (nothing when no rule found a date), `title`, and
    `steps`, what happened on the way.
    """

    def __init__(self, text, now, zone):
        self.text = text
        self.marked = mark_word_boundaries(text)
        # A fraction of a second never matters: nothing below a minute survives.
        self.now = math.floor(now)
        self.zone = zone
        self.wall_now = wall_time_of(self.now, zone)
        self.today = self.wall_now.date()
        self.phrases = []  # the ranges to cut out of the title
        self.steps = []
        self.due = None
        self.due_wall_time = None
        self.title = None

    def extract(self):
        self.is_evening = EVENING_CONTEXT.first_match(self.marked) is not None

        # The time of day goes before every day rule.
        clock_time = self.find_clock_time()
        time = clock_time

        # The first group of rules to yield a day wins.
        offset_wall_time = self.find_offset()
        if offset_wall_time is not None:
            day = offset_wall_time.date()
            # An offset carries its own clock time; one spelled out in the line goes before it.
            if clock_time is None:
                time = offset_wall_time.time()
        else:
            day = self.find_amount_from_tomorrow()
            if day is None:
                day = self.find_month_date()
            if day is None:
                day = self.find_numbered_day()
            if day is None:
                day = self.find_day_word()

        # Period words count only where no clock time was spelled out, and go before an offset's.
        if clock_time is None:
            period_time = self.find_period_word()
            if period_time is not None:
                if offset_wall_time is not None:
                    self.steps.append(Step.PERIOD_OVERRODE_OFFSET)
                time = period_time
            elif Step.TONIGHT in self.steps:
                self.steps.append(Step.TONIGHT_HOUR)
                time = datetime.time(TONIGHT_HOUR)
            elif offset_wall_time is not None:
                self.steps.append(Step.OFFSET_KEEPS_CLOCK)

        if day is not None or time is not None:
            self.join(day, time)
        self.title = self.clean_title()

    def find(self, pattern):
        """Only the first match of a pattern counts, and not even that when it holds foreign characters."""
        match = pattern.first_match(self.marked)
        if match is not None and match.holds_foreign_characters():
            has_foreign_digits = any(c.isdecimal() and not c.isascii() for c in match.text)
            self.steps.append(
                Step.FOREIGN_DIGITS_REFUSED if has_foreign_digits else Step.FOLDED_LETTERS_REFUSED
            )
            return None
        return match

    def accept(self, match, step):
        self.phrases.append((match.start, match.end))
        self.steps.append(step)

    # Time of day: every rule is tried in turn until one yields a time.

    def find_clock_time(self):
        for rule in (
            self.find_noon,
            self.find_midnight,
            self.find_compact_time_with_suffix,
            self.find_time_with_suffix,
            self.find_at_compact_time,
            self.find_at_hour,
        ):
            time = rule()
            if time is not None:
                return time
        return None

    def find_noon(self):
        match = self.find(NOON)
        if match is None:
            return None
        self.accept(match, Step.NOON)
        return datetime.time(12, 0)

    def find_midnight(self):
        match = self.find(MIDNIGHT)
        if match is None:
            return None
        self.accept(match, Step.MIDNIGHT)
        return datetime.time(0, 0)

    def find_compact_time_with_suffix(self):
        """930am, at 1230 pm: the last two of three or four digits are the minutes."""
        match = self.find(COMPACT_TIME_WITH_SUFFIX)
        if match is None:
            return None
        digits, suffix = match.groups
        hour = self.hour_with_suffix(int(digits[:-2]), suffix)
        return self.accept_time(match, Step.COMPACT_TIME_WITH_SUFFIX, hour, int(digits[-2:]))

    def find_time_with_suffix(self):
        """9am, at 9:30 PM."""
        match = self.find(TIME_WITH_SUFFIX)
        if match is None:
            return None
        hour_digits, minute_digits, suffix = match.groups
        hour = self.hour_with_suffix(int(hour_digits), suffix)
        return self.accept_time(match, Step.TIME_WITH_SUFFIX, hour, int(minute_digits or "0"))

    @staticmethod
    def hour_with_suffix(hour, suffix):
        """Hours beyond 12 are taken as they are: 13pm is 13:00, and so is 13am."""
        if suffix.lower() == "pm" and hour < 12:
            return hour + 12
        if suffix.lower() == "am" and hour == 12:
            return 0
        return hour

    def find_at_compact_time(self):
        """at 1530, at 930: a 24-hour time without a colon, taken as it is."""
        match = self.find(AT_COMPACT_TIME)
        if match is None:
            return None
        (digits,) = match.groups
        return self.accept_time(match, Step.AT_COMPACT_TIME, int(digits[:-2]), int(digits[-2:]))

    def find_at_hour(self):
        """at 3, at 9:15: before noon or after is guessed. Up to 7 means after noon, and in a line about
        the evening every hour up to 11 does."""
        match = self.find(AT_HOUR)
        if match is None:
            return None
        hour_digits, minute_digits = match.groups
        hour = int(hour_digits)
        moved_by = None
        if 1 <= hour <= 11 and (self.is_evening or hour < 8):
            moved_by = Step.SMALL_HOUR_MOVED if hour < 8 else Step.EVENING_MOVED_HOUR
            hour += 12
        time = self.accept_time(match, Step.AT_HOUR, hour, int(minute_digits or "0"))
        if time is not None and moved_by is not None:
            self.steps.append(moved_by)
        return time

    def accept_time(self, match, step, hour, minute):
        if not (0 <= hour <= 23 and 0 <= minute <= 59):
            self.steps.append(Step.IMPOSSIBLE_TIME_REFUSED)
            return None
        self.accept(match, step)
        return datetime.time(hour, minute)

    def find_period_word(self):
        for pattern, hour, step in PERIOD_WORDS:
            match = self.find(pattern)
            if match is not None:
                self.accept(match, step)
                return datetime.time(hour)
        return None

    # Days, first group: offsets from this moment, which carry a clock time of their own.

    def find_offset(self):
        """in 2 hours, in a week, 3 days from now: the wall time there."""
        for pattern, step in ((IN_AMOUNT, Step.IN_AMOUNT), (AMOUNT_FROM_NOW, Step.AMOUNT_FROM_NOW)):
            match = self.find(pattern)
            if match is None:
                continue
            amount = self.read_amount(match.groups[0])
            if amount is None:
                continue
            unit_word = match.groups[1].lower()
            unit, seconds, days = next(
                row[1:] for row in OFFSET_UNITS if unit_word.startswith(row[0])
            )
            if days is not None:
                wall_time = self.days_from_now(amount * days)
            else:
                wall_time = wall_time_of(self.now + amount * seconds, self.zone)
            if wall_time is None:
                self.steps.append(Step.OFFSET_TOO_FAR_REFUSED)
                continue
            self.accept(match, step)
            self.steps.append(unit)
            return wall_time.replace(second=0)
        return None

    def read_amount(self, word):
        if word.lower() in ("a", "an"):
            return 1
        amount = int(word)
        if amount > LARGEST_AMOUNT:
            self.steps.append(Step.AMOUNT_TOO_LARGE_REFUSED)
            return None
        return amount

    def days_from_now(self, days):
        """Days keep the wall time, where it exists on that day."""
        day = days_after(self.today, days)
        if day is None:
            return None
        wall_time = datetime.datetime.combine(day, self.wall_now.time())
        return wall_time_of(instant_of(wall_time, self.zone), self.zone)

    # Days, second group.

    def find_amount_from_tomorrow(self):
        """2 days from tomorrow, 1 week from today."""
        match = self.find(AMOUNT_FROM_TOMORROW)
        if match is None:
            return None
        digits, unit_word, base_word = match.groups
        amount = self.read_amount(digits)
        if amount is None:
            return None
        base = days_after(self.today, 1) if base_word.lower() == "tomorrow" else self.today
        day = days_after(base, 7 * amount if unit_word.lower().startswith("week") else amount)
        if day is None:
            self.steps.append(Step.TOO_FAR_READ_AS_NOW)
            day = self.today
        self.accept(match, Step.AMOUNT_FROM_TOMORROW)
        return day

    # Days, third group: dates.

    def find_month_date(self):
        """march 3, Feb 29th: this year, or next year when that day is already past."""
        match = self.find(MONTH_DATE)
        if match is None:
            return None
        month_word, day_digits, _ordinal = match.groups
        if not self.is_possible_day(int(day_digits)):
            return None
        month = MONTHS.index(month_word[:3].lower()) + 1
        self.accept(match, Step.MONTH_DATE)
        return self.date_not_before_today(month, int(day_digits))

    def find_numbered_day(self):
        """by the 15, the 15th: in this month, or in the next when that day is already past."""
        for pattern, step in (
            (PREPOSITION_NUMBERED_DAY, Step.PREPOSITION_NUMBERED_DAY),
            (NUMBERED_DAY, Step.NUMBERED_DAY),
        ):
            match = self.find(pattern)
            if match is None:
                continue
            day = int(match.groups[0])
            if not self.is_possible_day(day):
                continue
            month = self.today.month
            if day < self.today.day:
                month = 1 if month == 12 else month + 1
            self.accept(match, step)
            return self.date_not_before_today(month, day)
        return None

    def is_possible_day(self, day):
        if 1 <= day <= 31:
            return True
        self.steps.append(Step.IMPOSSIBLE_DAY_REFUSED)
        return False

    def date_not_before_today(self, month, day):
        date = lenient_date(self.today.year, month, day)
        if date < self.today:
            self.steps.append(Step.FOLLOWING_YEAR)
            date = lenient_date(self.today.year + 1, month, day)
        if date.month != month:
            self.steps.append(Step.ROLLED_OVER)
        return date

    # Days, fourth group: words.

    def find_day_word(self):
        for pattern, days, step in (
            (DAY_AFTER_TOMORROW, 2, Step.DAY_AFTER_TOMORROW),
            (THIS_WEEKEND, self.days_until_saturday(), Step.THIS_WEEKEND),
            (TOMORROW, 1, Step.TOMORROW),
            (TONIGHT, 0, Step.TONIGHT),
            (TODAY, 0, Step.TODAY),
        ):
            match = self.find(pattern)
            if match is not None:
                self.accept(match, step)
                return days_after(self.today, days)

        # A weekday is 1 to 7 days ahead, never today, with "next" as without.
        for pattern, step in ((NEXT_WEEKDAY, Step.NEXT_WEEKDAY), (WEEKDAY, Step.WEEKDAY)):
            match = self.find(pattern)
            if match is not None:
                self.accept(match, step)
                target = WEEKDAYS.index(match.groups[0].lower()) + 1
                difference = target - weekday_number(self.today)
                if difference <= 0:
                    difference += 7
                return days_after(self.today, difference)
        return None

    def days_until_saturday(self):
        """None on a Saturday itself, six on a Sunday."""
        return 7 - weekday_number(self.today)

    # Putting it together.

    def join(self, day, time):
        """Due is that time on that day; today when only a time was found, 9:00 when only a day."""
        if day is None:
            self.steps.append(Step.TODAY_BY_TIME_ALONE)
            day = self.today
        if time is None:
            self.steps.append(Step.DEFAULT_TIME)
            time = datetime.time(DEFAULT_HOUR)
        wall_time = datetime.datetime.combine(day, time)
        before, after = offsets_of(wall_time, self.zone)
        if before < after:
            self.steps.append(Step.WALL_TIME_SKIPPED)
        elif before > after:
            self.steps.append(Step.WALL_TIME_REPEATED)
        self.due = instant_of(wall_time, self.zone)
        self.due_wall_time = wall_time_of(self.due, self.zone)

    def clean_title(self):
        """The line without its phrases, white space made single blanks, and no separators left
        hanging at the ends."""
        if not self.phrases:
            return trim(self.text)
        cut = [position for start, end in self.phrases for position in range(start, end)]
        if len(cut) != len(set(cut)):
            self.steps.append(Step.PHRASES_OVERLAP)
        kept = "".join(c for position, c in enumerate(self.text) if position not in cut)
        collapsed = re.sub(f"[{WHITE_SPACE}]+", " ", kept)
        return trim(collapsed).strip(",;.: ")


# --- The whole way ---------------------------------------------------------------------------


def understand_with_steps(text, now, zone):
    """The answer of understand(), and the list of steps that led to it."""
    title = trim(text)
    answer = {"hint": False, "title": title, "due": None, "interpretation": None, "path": "none"}
    if title == "":
        return answer, []

    hint = temporal_hint(title)
    if hint is None:
        return answer, []
    answer["hint"] = True

    extractor = Extractor(title, now, zoneinfo.ZoneInfo(zone))
    extractor.extract()
    steps = [hint] + extractor.steps
    if extractor.due is None:
        answer.update(interpretation="regex+ai miss", path="miss")
        return answer, steps

    if extractor.title == "":
        steps.append(Step.TITLE_FELL_BACK)
    else:
        answer["title"] = extractor.title
    answer.update(
        due=extractor.due, interpretation=formatted(extractor.due_wall_time), path="rules"
    )
    return answer, steps


def understand(text, now, zone):
    """What Quillo makes of a typed line.

    now: seconds since 1970, any kind of number, a fraction allowed. zone: a name such as
    "Europe/Berlin". The answer holds hint, title, due (whole seconds since 1970, or None),
    interpretation (or None) and path ("none", "rules" or "miss").
    """
    answer, _steps = understand_with_steps(text, now, zone)
    return answer
