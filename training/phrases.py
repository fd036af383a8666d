"""What people type to say when: phrases, with what each of their words is for, and what they mean.

A phrase is a text with marks: {3|D} is a digit run with a role of its own; everything else in it only says when, and is cut
from the title. `Meaning` is what the network learns to tell of it; it knows nothing of today's date.
"""

import pathlib
import random
import re
from collections import Counter
from dataclasses import dataclass, field, replace

WEEKDAYS = ["sunday", "monday", "tuesday", "wednesday", "thursday", "friday", "saturday"]
WEEKDAY_SHORT = [["sun"], ["mon"], ["tue", "tues"], ["wed", "weds"], ["thu", "thur", "thurs"], ["fri"], ["sat"]]
MISSPELT_WEEKDAYS = [
    ["sundy", "suday", "sundya", "sunady", "sumday"],
    ["munday", "mondy", "mnday", "moday", "monady", "monda"],
    ["tusday", "teusday", "tuseday", "tuesdy", "tuesady", "tueday", "tuesdays"[:7] + "y"],
    ["wensday", "wendsday", "wednsday", "wedsday", "wedneday", "wednesdy", "wensdey", "wendesday", "wednsesday"],
    ["thrusday", "thurday", "thursdy", "thusday", "thirsday", "thurdsay", "thrsday", "thurzday"],
    ["firday", "fridy", "frday", "fryday", "firdya", "fridday", "fridya", "frid"],
    ["saterday", "satruday", "satuday", "saturdy", "sturday", "satrday", "saturaday", "sataurday"],
]
MONTHS = [
    "january",
    "february",
    "march",
    "april",
    "may",
    "june",
    "july",
    "august",
    "september",
    "october",
    "november",
    "december",
]
MONTH_SHORT = [
    ["jan"],
    ["feb"],
    ["mar"],
    ["apr"],
    ["may"],
    ["jun"],
    ["jul"],
    ["aug"],
    ["sep", "sept"],
    ["oct"],
    ["nov"],
    ["dec"],
]
MONTH_LENGTHS = [31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31]
NUMBERS = [
    "zero",
    "one",
    "two",
    "three",
    "four",
    "five",
    "six",
    "seven",
    "eight",
    "nine",
    "ten",
    "eleven",
    "twelve",
    "thirteen",
    "fourteen",
    "fifteen",
    "sixteen",
    "seventeen",
    "eighteen",
    "nineteen",
    "twenty",
]
ORDINALS = [
    "",
    "first",
    "second",
    "third",
    "fourth",
    "fifth",
    "sixth",
    "seventh",
    "eighth",
    "ninth",
    "tenth",
    "eleventh",
    "twelfth",
    "thirteenth",
    "fourteenth",
    "fifteenth",
    "sixteenth",
    "seventeenth",
    "eighteenth",
    "nineteenth",
    "twentieth",
    "twenty first",
    "twenty second",
    "twenty third",
    "twenty fourth",
    "twenty fifth",
    "twenty sixth",
    "twenty seventh",
    "twenty eighth",
    "twenty ninth",
    "thirtieth",
    "thirty first",
]

KINDS = (
    ["NONE", "TODAY", "TONIGHT", "TOMORROW", "DAY_AFTER_TOMORROW"]
    + ["THIS_" + day.upper() for day in WEEKDAYS]
    + ["NEXT_" + day.upper() for day in WEEKDAYS]
    + ["IN_MINUTES", "IN_HOURS", "IN_DAYS", "IN_WEEKS", "WEEKS_FROM_TOMORROW", "SPECIFIC_DATE", "THIS_WEEKEND"]
    # What the mapper makes one of the above of, knowing today's date.
    + ["NEXT_WEEK_" + day.upper() for day in WEEKDAYS]
    + ["WEEK_AFTER_" + day.upper() for day in WEEKDAYS]
    + [
        "NEXT_WEEKEND",
        "WEEK_AFTER_NEXT",
        "IN_MONTHS",
        "NEXT_MONTH_DAY",
        "THIS_MONTH_DAY",
        "NUMERIC_DATE",
        "THANKSGIVING",
        "CYBER_MONDAY",
        "MLK_DAY",
        "PRESIDENTS_DAY",
        "COLUMBUS_DAY",
        "LABOR_DAY",
        "MEMORIAL_DAY",
        "MOTHERS_DAY",
        "FATHERS_DAY",
        "EASTER",
        "GOOD_FRIDAY",
        "EASTER_MONDAY",
    ]
    # The second Saturday of a month: the amount counts, 5 is the last one.
    + ["NTH_" + day.upper() for day in WEEKDAYS]
)

AMOUNTS = list(range(0, 32)) + [
    36,
    40,
    42,
    45,
    48,
    50,
    60,
    70,
    72,
    75,
    80,
    90,
    100,
    105,
    110,
    120,
    135,
    150,
    180,
    210,
    240,
    300,
]
MINUTES = list(range(0, 60, 5))
# Where a phrase says how far from a date it means, the amount says how many.
SHIFTS = ["NONE", "DAYS_BEFORE", "DAYS_AFTER", "WEEKS_BEFORE", "WEEKS_AFTER", "FROM_TOMORROW"]
HOLIDAYS = KINDS[KINDS.index("THANKSGIVING") : KINDS.index("EASTER_MONDAY") + 1]
SHIFTED = {"SPECIFIC_DATE", "NUMERIC_DATE", "THIS_MONTH_DAY", "NEXT_MONTH_DAY", "IN_DAYS", "IN_MONTHS", *HOLIDAYS}


def ordinal_suffix(n):
    return "th" if n in (11, 12, 13) else {1: "st", 2: "nd", 3: "rd"}.get(n % 10, "th")


@dataclass
class Meaning:
    kind: str = "NONE"
    amount: int | None = None  # in words; digits are read from the text
    month: int | None = None
    day: int | None = None  # in words
    hour: int | None = None
    minute: int | None = None
    shift: str = "NONE"

    @property
    def has_time(self):
        return self.hour is not None


@dataclass
class Phrase:
    text: str  # with marks
    meaning: Meaning = field(default_factory=Meaning)
    is_name: bool = False  # without a preposition: before a thing it would be an adjective, or a fraction


class Phrases:
    def __init__(self, rng: random.Random):
        self.r = rng

    # Small helpers.

    def pick(self, *options):
        return self.r.choice(options)

    def chance(self, probability):
        return self.r.random() < probability

    def weighted(self, table):
        """One of (weight, thing)."""
        return self.r.choices([thing for _, thing in table], [weight for weight, _ in table])[0]

    def ordinal_suffix(self, n):
        if self.chance(0.04):
            return self.pick("th", "st", "rd", "nd")
        return ordinal_suffix(n)

    def tomorrow(self):
        return self.pick(
            "tmrw",
            "tmr",
            "tmw",
            "tmo",
            "tmrrw",
            "tomoz",
            "tomo",
            "2moro",
            "2morrow",
            "2mrw",
            "2moz",
            "2mro",
            "tmorrow",
            "tomorow",
            "tommorow",
            "tommorrow",
            "tomorro",
            "tomorrw",
            "tomorow",
            "tmro",
            "tomm",
            "tom",
            "tomorrow",
            "tomorrow",
            "tomorrow",
            "tomorrow's",
            "tmrw",
            "tomorow",
            "tmrw",
            "tomrrow",
            "tomarrow",
            "tomorroww",
            "morrow",
            "tmmrw",
            "tomrw",
        )

    def today(self):
        return self.pick(
            "today", "tday", "2day", "todya", "toda", "todayy", "tody", "todday", "this day", "2dy", "today"
        )

    def weekday(self, short_ok=True):
        day = self.r.randrange(7)
        if short_ok and self.chance(0.5):
            return day, self.r.choice(WEEKDAY_SHORT[day]) + (self.pick(".", "") if self.chance(0.15) else "")
        return day, WEEKDAYS[day]

    def month(self):
        month = self.r.randrange(12)
        if self.chance(0.45):
            return month + 1, self.r.choice(MONTH_SHORT[month]) + ("." if self.chance(0.22) else "")
        return month + 1, MONTHS[month]

    # Times of day.

    def meridiem(self, pm):
        if pm:
            return self.pick("p", "p", "p", "pm", "pm", " pm", " p", "p.m.", " p.m.", " p.m", "PM", " PM", "P")
        return self.pick("a", "a", "am", "am", " am", " a", "a.m.", " a.m.", " a.m", "AM", " AM", "A")

    @staticmethod
    def bare_hour(h):
        return h + 12 if 1 <= h <= 7 else h

    def minute(self):
        return self.pick(0, 15, 30, 30, 30, 45, 10, 20, 40, 50, 5, 55, self.r.randrange(60))

    def clock(self, part=None):
        """A clock time: (marked text, hour, minute). `part` is a part of the day that stands beside it."""
        h = self.r.randrange(1, 13)
        m = self.minute() if self.chance(0.45) else 0

        def hour(value):
            if part == "am":
                return value % 12
            if part:
                return value % 12 + 12
            return self.bare_hour(value)

        def digits(mark_hour=True):
            zero = "0" if h < 10 and self.chance(0.08) else ""
            if m or self.chance(0.1):
                sep = self.pick(":", ":", ":", ":", ".", "h" if self.chance(0.2) else ":")
                if m and self.chance(0.09):
                    sep = " "
                return f"{{{zero}{h}|H}}{sep}{{{m:02}|M}}"
            return f"{{{zero}{h}|H}}"

        h = self.r.choice(
            {
                "night": [7, 8, 9, 10, 11],
                "am": [5, 6, 7, 8, 9, 10, 11],
                "pm": [12, 1, 2, 3, 4, 5],
                "evening": [4, 5, 6, 7, 8, 9, 10],
            }.get(part, [h])
        )
        form = self.weighted(
            [
                (26, "meridiem"),
                (22, "bare"),
                (9, "run"),
                (8, "run meridiem"),
                (6, "24h"),
                (9, "word"),
                (6, "past"),
                (4, "o'clock"),
                (4, "ish"),
            ]
        )
        if part and form in ("meridiem", "run meridiem", "24h"):
            form = "bare"
        if form == "meridiem":
            pm = self.chance(0.68)
            return digits() + self.meridiem(pm), h % 12 + (12 if pm else 0), m
        if form == "bare":
            return digits(), hour(h), m
        if form == "o'clock":
            m = 0
            return (
                f"{{{h}|H}}" + self.pick(" o'clock", " oclock", "oclock", " o clock", " o'clock sharp", " sharp"),
                hour(h),
                0,
            )
        if form == "ish":
            return digits() + self.pick("ish", "-ish", " ish", "ish"), hour(h), m
        if form == "run":
            m = self.minute()
            return f"{{{h}{m:02}|T}}", hour(h), m
        if form == "run meridiem":
            m, pm = self.minute(), self.chance(0.65)
            return f"{{{h}{m:02}|T}}" + self.meridiem(pm), h % 12 + (12 if pm else 0), m
        if form == "24h":
            h24 = self.r.randrange(0, 24)
            zero = "0" if h24 < 10 and self.chance(0.7) else ""
            if h24 < 13 and not zero:
                h24 = self.r.randrange(13, 24)
            m = self.minute()
            return (
                self.weighted(
                    [
                        (
                            5,
                            (
                                f"{{{zero}{h24}|H}}:{{{m:02}|M}}",
                                h24 if h24 > 12 or h24 == 0 or (zero and h24 > 7) else hour(h24),
                                m,
                            ),
                        ),
                        (2, (f"{{{zero}{h24}|H}}" + self.pick("h", " h", "hrs", " uhr"), h24, 0)),
                        (2, (f"{{{zero}{h24}|H}}h{{{m:02}|M}}", h24, m)),
                        (2, (f"{{{h24:02}{m:02}|T}}" + self.pick("", "", "h", "hrs", " hrs", " hours"), h24, m)),
                        (
                            2,
                            (
                                f"{{{zero}{h24}|H}}.{{{m:02}|M}}",
                                h24 if h24 > 12 or h24 == 0 or (zero and h24 > 7) else hour(h24),
                                m,
                            ),
                        ),
                    ]
                )
                if h24 > 12 or h24 == 0
                else (f"{{{h24:02}{m:02}|T}}" + self.pick("", "", "h", "hrs", " hrs", " hours"), h24, m)
            )
        if form == "word":
            m = self.pick(0, 0, 0, 15, 30, 30, 45, 10, 20, 40, 50)
            words = {
                0: "",
                15: " fifteen",
                30: " thirty",
                45: " forty five",
                10: " ten",
                20: " twenty",
                40: " forty",
                50: " fifty",
            }[m]
            text = NUMBERS[h] + words
            if not part and self.chance(0.45):
                pm = self.chance(0.65)
                return (
                    text + self.pick(" pm", " p.m.", "pm", " p")
                    if pm
                    else text + self.pick(" am", " a.m.", "am", " a"),
                    h % 12 + (12 if pm else 0),
                    m,
                )
            if m == 0 and self.chance(0.4):
                text += self.pick(" o'clock", " oclock", "ish", " ish", " sharp")
            return text, hour(h), m
        # past and to: the hour before "to" is not the one that is named.
        number = f"{{{h}|H}}" if self.chance(0.5) else NUMBERS[h]
        tail, fix = "", None
        if not part and self.chance(0.3):
            pm = self.chance(0.65)
            tail, fix = self.meridiem(pm), pm

        def fixed(value):
            if fix is None:
                return hour((value - 1) % 12 + 1)
            return value % 12 + (12 if fix else 0)

        if self.chance(0.62):
            minute, word = self.pick(
                (30, "half past"),
                (15, "qtr past"),
                (30, "half past"),
                (30, "half"),
                (15, "quarter past"),
                (15, "a quarter past"),
                (10, "ten past"),
                (20, "twenty past"),
                (5, "five past"),
                (15, "quarter after"),
                (30, "1/2 past"),
                (10, "10 past"),
                (20, "20 past"),
                (25, "twenty five past"),
                (15, "1/4 past"),
            )
            return f"{word} {number}{tail}", fixed(h), minute
        minute, word = self.pick(
            (45, "quarter to"),
            (45, "qtr to"),
            (45, "quarter to"),
            (45, "a quarter to"),
            (50, "ten to"),
            (40, "twenty to"),
            (55, "five to"),
            (45, "quarter of"),
            (45, "quarter till"),
            (50, "10 to"),
            (40, "20 to"),
            (45, "1/4 to"),
            (55, "5 to"),
            (35, "twenty five to"),
        )
        number = f"{h}" if number.startswith("{") else number
        if h == 1 and fix is None and not part:
            return f"{word} {number}{tail}", 12, minute
        before = h - 1 or 12
        if fix is not None:
            return f"{word} {number}{tail}", (h % 12 + (12 if fix else 0) - 1) % 24, minute
        return f"{word} {number}{tail}", (self.bare_hour(h) - 1) if not part else hour(before), minute

    def range(self):
        """A span of time; its start counts."""
        h = self.r.randrange(1, 13)
        length = self.r.randrange(1, 5)
        pm = self.chance(0.6)
        start = h % 12 + (12 if pm else 0)
        end = start + length
        if end > 23:
            start, end = 13, 13 + length
            h, pm = 1, True
        e12 = (end - 1) % 12 + 1
        end_pm = end >= 12
        half = self.chance(0.25)
        m = 30 if half else 0
        hd = f"{{{h}|H}}:{{30|M}}" if half else f"{{{h}|H}}"
        ed = self.pick(f"{e12}", f"{e12}", f"{e12}:30", f"{e12}:00", f"{e12}")
        dash = self.pick("-", "-", " - ", "–", " to ", " till ", " until ", "to")
        mer = lambda is_pm: self.meridiem(is_pm)
        form = self.pick(0, 1, 2, 2, 3, 4, 5)
        if form == 0:
            text = f"{hd}{mer(pm)}{dash}{ed}{mer(end_pm)}"
        elif form == 1:
            text = f"{hd}{dash}{ed}{mer(end_pm)}"
            if pm != end_pm and h >= 12:
                text = f"{hd}{mer(pm)}{dash}{ed}{mer(end_pm)}"
            elif pm and not end_pm:
                text = f"{hd}{mer(pm)}{dash}{ed}{mer(end_pm)}"
        elif form == 2:
            start = self.bare_hour(h)
            text = f"{hd}{dash}{ed}"
        elif form == 3:
            if self.chance(0.5):
                start = self.bare_hour(h)
                text = (
                    self.pick("between", "between", "btw", "btwn", "bet", "betw", "b/w")
                    + f" {hd} "
                    + self.pick("and", "and", "&", "n")
                    + f" {ed}"
                )
            else:
                text = (
                    self.pick("between", "between", "btw", "btwn", "bet", "betw", "b/w")
                    + f" {hd}{mer(pm)} "
                    + self.pick("and", "and", "&")
                    + f" {ed}{mer(end_pm)}"
                )
        elif form == 5:  # Digits without a mark between hour and minute.
            if self.chance(0.4):
                start, m = self.bare_hour(h), self.minute()
                text = self.pick(f"{{{h}{m:02}|T}}{dash}{e12}", f"{{{h}{m:02}|T}}{dash}{e12}{self.minute():02}")
            else:
                start, m = self.r.randrange(0, 20), self.pick(0, 0, 15, 30, 45)
                end = f"{start + length:02}{self.pick(m, 0, 30):02}"
                text = f"{{{start:02}{m:02}|T}}{dash}{end}" + self.pick("", "", "", "h", " hrs")
        else:
            s24 = self.r.randrange(8, 20)
            return f"{{{s24}|H}}:{{{m:02}|M}}{dash}{s24 + length}:{m:02}", s24 if s24 > 12 or s24 >= 8 else s24 + 12, m
        if form in (0, 1) and self.chance(0.15):
            text = "from " + text
        return text, start, m

    def fixed_time(self):
        """A word for a time of day: (text, hour)."""
        return self.weighted(
            [
                (
                    5,
                    (
                        self.pick(
                            "noon",
                            "at noon",
                            "by noon",
                            "around noon",
                            "about noon",
                            "noonish",
                            "noon-ish",
                            "midday",
                            "at midday",
                            "mid day",
                            "12 noon",
                            "@ noon",
                            "high noon",
                        ),
                        12,
                    ),
                ),
                (3, (self.pick("midnight", "at midnight", "by midnight", "before midnight", "around midnight"), 0)),
                (
                    8,
                    (
                        self.pick(
                            "morning",
                            "in the morning",
                            "in the morning",
                            "early morning",
                            "in the am",
                            "am",
                            "morn",
                            "morn",
                            "in the morn",
                            "mornin",
                            "mid morning",
                            "early in the morning",
                            "late morning",
                            "a.m.",
                            "this morning",
                        ),
                        9,
                    ),
                ),
                (
                    7,
                    (
                        self.pick(
                            "afternoon",
                            "in the afternoon",
                            "early afternoon",
                            "late afternoon",
                            "aft",
                            "arvo",
                            "afternoon sometime",
                            "pm",
                            "this afternoon",
                            "mid afternoon",
                            "in the pm",
                            "this aft",
                            "this arvo",
                            "arv",
                            "aftn",
                            "afternon",
                        ),
                        14,
                    ),
                ),
                (
                    7,
                    (
                        self.pick(
                            "evening",
                            "in the evening",
                            "early evening",
                            "late evening",
                            "eve",
                            "evng",
                            "eve",
                            "this eve",
                            "this evening",
                            "evenin",
                            "in the eve",
                        ),
                        18,
                    ),
                ),
                (
                    5,
                    (self.pick("night", "at night", "nite", "late at night", "late night", "at nite", "nighttime"), 20),
                ),
                (
                    6,
                    (
                        self.pick(
                            "eod",
                            "by eod",
                            "end of day",
                            "by end of day",
                            "by the end of the day",
                            "end of the day",
                            "cob",
                            "by cob",
                            "close of business",
                            "before end of day",
                            "EOD",
                            "e.o.d.",
                            "c.o.b.",
                            "by c.o.b.",
                            "eo day",
                            "by EOD",
                            "COB",
                            "before cob",
                            "by close of business",
                            "end of business",
                            "eob",
                            "day's end",
                            "by end of business",
                            "before eod",
                            "end of the work day",
                            "end of workday",
                            "at the end of the day",
                            "by days end",
                            "by day end",
                            "end of buisness",
                        ),
                        17,
                    ),
                ),
                (
                    5,
                    (
                        self.pick(
                            "first thing",
                            "first thing in the morning",
                            "1st thing",
                            "first thing in the am",
                            "first thing am",
                            "very first thing",
                            "frist thing",
                            "fist thing",
                        ),
                        8,
                    ),
                ),
                (
                    5,
                    (
                        self.pick(
                            "lunchtime",
                            "at lunchtime",
                            "lunch time",
                            "around lunchtime",
                            "at lunch",
                            "by lunch",
                            "by lunchtime",
                            "before lunch",
                            "over lunch",
                            "around lunch",
                            "during lunch",
                            "about lunchtime",
                            "lunch",
                            "at lunch time",
                            "lunchtme",
                        ),
                        12,
                    ),
                ),
            ]
        )

    def time_preposition(self):
        return self.pick(
            "at ",
            "at ",
            "at ",
            "@ ",
            "@",
            "by ",
            "by ",
            "around ",
            "around ",
            "about ",
            "arnd ",
            "circa ",
            "before ",
            "b4 ",
            "bfr ",
            "after ",
            "~",
            "approx ",
            "no later than ",
            "sometime around ",
            "at about ",
            "at around ",
            "just after ",
            "abt ",
            "round ",
            "from ",
            "starting ",
            "starting at ",
            "for ",
            "roughly ",
            "at like ",
            "like ",
            "approximately ",
            "not later than ",
            "until ",
            "till ",
            "latest ",
            "at approx ",
            "around about ",
            "a little after ",
            "around like ",
        )

    def time(self, beside_day):
        """A time of day: (text, hour, minute)."""
        kind = self.weighted([(60, "clock"), (14, "range"), (30, "fixed"), (14, "part and clock")])
        if kind == "fixed":
            text, hour = self.fixed_time()
            return text, hour, 0
        if kind == "range":
            text, hour, minute = self.range()
            if self.chance(0.25):
                text = (
                    self.pick("at ", "from ", "@ ", "between ") + text
                    if not text.startswith(("from", "between"))
                    else text
                )
            return text, hour, minute
        if kind == "part and clock":
            part, words = self.pick(
                ("am", ["in the morning", "morning", "in the am", "this morning"]),
                ("am", ["morn", "mornin", "a.m.", "bright n early", "bright and early", "before work", "b4 work"]),
                (
                    "pm",
                    ["in the afternoon", "this afternoon", "afternoon", "aft", "arvo", "after lunch", "after school"],
                ),
                (
                    "evening",
                    ["in the evening", "evening", "this evening", "eve", "after work", "for dinner", "at dinner"],
                ),
                ("night", ["at night", "night", "nite", "nite", "nt", "nite", "bedtime", "at bedtime"]),
            )
            text, hour, minute = self.clock(part)
            word = self.r.choice(words)
            if self.chance(0.75):
                return self.pick("at ", "around ", "@ ", "by ", "about ", "") + text + " " + word, hour, minute
            return word + self.pick(" at ", " around ", " ", " @ ", ", ", " about ") + text, hour, minute
        text, hour, minute = self.clock()
        bare = text[-1] == "}" and "|M}" not in text
        if not beside_day and bare and (self.chance(0.97) or text.endswith("|T}")):
            text = self.time_preposition() + text
        elif self.chance(0.5):
            text = self.time_preposition() + text
        return text, hour, minute

    # Days.

    def count(self, few=3, up_to=31):
        """A number of things: (text, amount in words or None where it stands in digits)."""
        form = self.weighted([(50, "digits"), (20, "word"), (14, "couple"), (12, "few"), (5, "several"), (14, "one")])
        if form == "digits":
            n = self.r.randrange(1, up_to) if self.chance(0.6) else self.r.randrange(1, 8)
            return f"{{{n}|N}} ", n, True
        if form == "word":
            n = self.r.randrange(2, 13) if self.chance(0.9) else self.r.randrange(13, 21)
            return NUMBERS[n] + " ", n, False
        if form == "couple":
            return (
                self.pick(
                    "a couple ",
                    "a couple of ",
                    "couple ",
                    "couple of ",
                    "a cple ",
                    "a coupla ",
                    "a couple more ",
                    "a cpl of ",
                    "cpl ",
                    "a couple o ",
                ),
                2,
                False,
            )
        if form == "few":
            return self.pick("a few ", "a few ", "few ", "a few more ", "another few ", "a fwe "), few, False
        if form == "several":
            return "several ", 5, False
        return self.pick("a ", "an ", "one ", "1 ", "a "), 1, False

    def unit(self, name, plural):
        forms = {
            "minutes": [
                "min",
                "mins",
                "minute",
                "minutes",
                "minuts",
                "mintues",
                "m",
                "mns",
                "mnts",
                "minites",
                "mins.",
            ],
            "hours": ["hr", "hrs", "hour", "hours", "h", "hous", "huors", "hrs.", "horus", "hs"],
            "days": ["day", "days", "d", "dys", "dayz", "days", "days"],
            "weeks": ["week", "weeks", "wk", "wks", "w", "weeks", "weks", "wk."],
            "months": ["month", "months", "mo", "mos", "mth", "mths", "months", "mnths", "monthes"],
        }[name]
        if self.chance(0.55):
            return name if plural else name[:-1]
        return self.r.choice(forms)

    def offset(self):
        """So much time from now on."""
        unit = self.pick(
            "minutes",
            "minutes",
            "hours",
            "hours",
            "days",
            "days",
            "days",
            "weeks",
            "weeks",
            "weeks",
            "months",
            "months",
        )
        kind = {
            "minutes": "IN_MINUTES",
            "hours": "IN_HOURS",
            "days": "IN_DAYS",
            "weeks": "IN_WEEKS",
            "months": "IN_MONTHS",
        }[unit]
        special = self.r.random()
        if special < 0.02:
            return Phrase(
                self.pick("in ", "in ", "in about ") + f"{{{self.pick(5, 10, 15, 20, 30, 45)}|N}}",
                Meaning("IN_MINUTES"),
            )
        if special < 0.13:
            amount, text = self.pick(
                (75, "an hour & 15"),
                (75, "1 hr 15"),
                (75, "1 hr 15 min"),
                (90, "1 hr 30"),
                (150, "2 hrs 30"),
                (30, "half an hour"),
                (30, "half hour"),
                (30, "half a hour"),
                (30, "1/2 hour"),
                (30, "a half hour"),
                (90, "an hour and a half"),
                (90, "1.5 hours"),
                (90, "one and a half hours"),
                (90, "1 1/2 hours"),
                (150, "two and a half hours"),
                (150, "2.5 hrs"),
                (150, "2 and a half hours"),
                (45, "three quarters of an hour"),
                (15, "quarter of an hour"),
                (15, "a quarter hour"),
                (75, "1h15"),
                (90, "1h30"),
                (90, "1 hr 30 min"),
                (90, "1h 30m"),
                (75, "an hour and 15 min"),
                (150, "2h30"),
                (135, "2h15"),
                (90, "hour and a half"),
                (30, "1/2 an hour"),
                (90, "1.5h"),
                (90, "1,5 hours"),
                (30, "half hr"),
                (90, "an hr and a half"),
                (210, "3.5 hours"),
                (45, "3/4 hour"),
                (90, "1.5 hrs"),
                (75, "an hour and a quarter"),
                (150, "2 1/2 hrs"),
                (150, "2 1/2 hours"),
                (210, "3 1/2 hours"),
                (210, "3 and a half hrs"),
                (210, "three and a half hours"),
                (150, "2 and a half hrs"),
                (90, "an hr n a half"),
                (90, "an hour n a half"),
                (30, "half an hr"),
                (15, "fifteen mins"),
                (30, "thirty minutes"),
                (45, "forty five min"),
                (90, "ninety mins"),
                (90, "ninety minutes"),
            )
            meaning = Meaning("IN_MINUTES", amount=amount)
        elif special < 0.2:
            kind, amount, text = self.pick(
                ("IN_WEEKS", 2, "a fortnight"),
                ("IN_WEEKS", 2, "fortnight"),
                ("IN_HOURS", 1, "an hour"),
                ("IN_HOURS", 1, "an hour"),
                ("IN_HOURS", 1, "about an hour"),
                ("IN_MONTHS", 12, "a year"),
                ("IN_MONTHS", 12, "1 year"),
                ("IN_MONTHS", 12, "one year"),
                ("IN_MONTHS", 6, "half a year"),
                ("IN_HOURS", 1, "the hour"),
                ("IN_HOURS", 1, "1 hour or so"),
                ("IN_DAYS", 1, "a day"),
                ("IN_HOURS", 24, "24h"),
                ("IN_HOURS", 48, "48h"),
                ("IN_MONTHS", 24, "two years"),
                ("IN_MONTHS", 18, "a year and a half"),
            )
            meaning = Meaning(kind, amount=amount)
        else:
            number, amount, digits = self.count(
                10 if unit == "minutes" else 3, 91 if unit == "minutes" else 31 if unit != "months" else 13
            )
            word = self.unit(unit, amount != 1)
            if digits and self.chance(0.3):
                number = number.rstrip()
            text = number + word
            if self.chance(0.07):
                text += self.pick(" or so", " time", "' time", "ish", " max", " tops")
            meaning = Meaning(kind, amount=None if digits else amount)
            if unit == "minutes" and digits and self.chance(0.5):
                n = self.pick(5, 10, 15, 20, 30, 40, 45, 60, 90)
                text = text.replace(f"{{{amount}|N}}", f"{{{n}|N}}")
        unit_is_day = meaning.kind in ("IN_DAYS", "IN_WEEKS", "IN_MONTHS")
        form = self.weighted(
            [
                (46, "in"),
                (22, "from now"),
                (10, "within"),
                (6, "about"),
                (8 if unit_is_day else 0, "from today"),
                (4, "later"),
            ]
        )
        if form == "in":
            text = (
                self.pick(
                    "in ",
                    "in ",
                    "in ",
                    "in ",
                    "in about ",
                    "in around ",
                    "in abt ",
                    "in roughly ",
                    "in another ",
                    "in just ",
                    "due in ",
                    "in like ",
                    "sometime in ",
                    "in ~",
                    "in approx ",
                    "ina " if text.startswith("a ") else "in ",
                )
                + text
            )
            if text.startswith("ina a "):
                text = "ina " + text[6:]
        elif form == "from now":
            text += self.pick(
                " from now",
                " from now",
                " frm now",
                " fromnow",
                " from nw",
                " fr now",
                " from right now",
                " from this moment" if not unit_is_day else " from now",
            )
        elif form == "within":
            text = self.pick("within ", "within ", "within the next ", "in the next ") + text
        elif form == "about":
            text = (
                self.pick("about ", "around ")
                + text
                + self.pick(" from now", " from now", " from today" if unit_is_day else " from now")
            )
        elif form == "from today":
            text += self.pick(" from today", " from 2day", " from tday", " frm today", " after today")
        else:
            text += self.pick(" later", " on", " hence")
            if " on" == text[-3:] and not unit_is_day:
                text = text[:-3] + " later"
        return Phrase(text, meaning)

    def from_tomorrow(self):
        tomorrow = self.tomorrow()
        if self.chance(0.15):
            amount, text = self.pick(
                (1, "a week "), (1, "a wk "), (2, "a fortnight "), (2, "fortnight "), (2, "2 weeks ")
            )
            if self.chance(0.2):
                return Phrase(tomorrow + self.pick(" week", " wk"), Meaning("WEEKS_FROM_TOMORROW", amount=1))
            return Phrase(text + self.pick("", "from ") + tomorrow, Meaning("WEEKS_FROM_TOMORROW", amount=amount))
        if self.chance(0.7):
            number, amount, digits = self.count(3, 9)
            word = self.unit("weeks", amount != 1)
            return Phrase(
                number + word + self.pick(" from ", " from ", " after ", " frm ") + tomorrow,
                Meaning("WEEKS_FROM_TOMORROW", amount=None if digits else amount),
            )
        unit = self.pick("days", "months")
        number, amount, digits = self.count(1, 12 if unit == "days" else 3)
        if unit == "months" and self.chance(0.7):
            number, amount, digits = self.pick("a ", "a ", "one ", "", "1 "), 1, False
        word = self.unit(unit, amount != 1)
        return Phrase(
            number + word + self.pick(" from ", " from ", " from ", " after ", " frm ") + tomorrow,
            Meaning(
                {"days": "IN_DAYS", "months": "IN_MONTHS"}[unit],
                amount=None if digits else amount,
                shift="FROM_TOMORROW",
            ),
        )

    def day_word(self):
        form = self.weighted([(40, "tomorrow"), (12, "today"), (10, "tonight"), (12, "day after")])
        if form == "tomorrow":
            text = self.tomorrow()
            prefix = self.weighted(
                [
                    (60, ""),
                    (5, "by "),
                    (3, "before "),
                    (4, "for "),
                    (4, "sometime "),
                    (5, "early "),
                    (4, "late "),
                    (3, "due "),
                    (3, "later "),
                    (2, "on "),
                    (2, "anytime "),
                    (1, "latest by "),
                    (1, "the "),
                ]
            )
            return Phrase(prefix + text, Meaning("TOMORROW"))
        if form == "today":
            return Phrase(
                self.weighted(
                    [
                        (10, "later " + self.today()),
                        (3, "sometime " + self.today()),
                        (4, "before " + self.today() + " ends"),
                        (6, self.pick("by ", "for ", "", "due ", "early ", "late ") + self.today()),
                        (4, "later on " + self.today()),
                        (3, "still " + self.today()),
                        (3, "asap " + self.today()),
                        (2, self.today() + " sometime"),
                        (2, "a bit later " + self.today()),
                        (2, self.today() + " if possible"),
                    ]
                ),
                Meaning("TODAY"),
            )
        if form == "tonight":
            return Phrase(
                self.pick("", "", "", "late ", "later ", "by ", "for ", "early ")
                + self.pick(
                    "tonite",
                    "2nite",
                    "tonigt",
                    "tonihgt",
                    "tonght",
                    "tonigh",
                    "tonight",
                    "tongiht",
                    "2night",
                    "tnite",
                    "tonite",
                    "ton8",
                    "tonnight",
                ),
                Meaning("TONIGHT"),
            )
        return Phrase(
            self.pick("", "the ", "by ", "on the ", "by the ")
            + self.pick("day after ", "day after ", "day aft ", "day afer ", "dy after ")
            + self.tomorrow()
            if self.chance(0.85)
            else "overmorrow",
            Meaning("DAY_AFTER_TOMORROW"),
        )

    def weekday_phrase(self):
        day, name = self.weekday()
        if self.chance(0.35):
            name = self.pick(*MISSPELT_WEEKDAYS[day])
        form = self.weighted([(50, "this"), (22, "next"), (10, "next week"), (8, "week after")])
        if form == "this":
            return Phrase(
                self.pick(
                    "",
                    "",
                    "",
                    "",
                    "on ",
                    "on ",
                    "this ",
                    "by ",
                    "before ",
                    "b4 ",
                    "this coming ",
                    "coming ",
                    "due ",
                    "for ",
                    "until ",
                    "till ",
                    "sometime ",
                    "no later than ",
                    "the coming ",
                    "upcoming ",
                    "late ",
                    "early ",
                    "by this ",
                    "come ",
                    "thsi ",
                    "ths ",
                )
                + name,
                Meaning("THIS_" + WEEKDAYS[day].upper()),
            )
        if form == "next":
            return Phrase(
                self.pick("", "", "on ", "by ", "before ", "for ")
                + self.pick("next ", "next ", "next ", "nxt ", "nex ", "enxt ", "net ")
                + name,
                Meaning("NEXT_" + WEEKDAYS[day].upper()),
            )
        if form == "next week":
            week = self.pick("next week", "next wk", "nxt week", "nxt wk", "next week", "nex week", "next wek")
            text = self.weighted(
                [
                    (4, f"{name} {week}"),
                    (3, f"{week} {name}"),
                    (2, f"{name} of {week}"),
                    (2, f"{week} on {name}"),
                    (1, f"on {name} {week}"),
                    (1, f"{week}, {name}"),
                    (1, f"by {name} {week}"),
                ]
            )
            return Phrase(text, Meaning("NEXT_WEEK_" + WEEKDAYS[day].upper()))
        kind = "WEEK_AFTER_" + WEEKDAYS[day].upper()
        joint = self.pick(" from ", " from ", " from ", " frm ", " on ", " after ", " from this ")
        if self.chance(0.4):
            number, amount, digits = self.count(3, 7)
            text = number + self.unit("weeks", amount != 1) + joint + name
            return Phrase(text, Meaning(kind, amount=None if digits else amount))
        if self.chance(0.25):  # The second one is a week after the first.
            which = self.r.randrange(2, 6)
            number = self.pick(NUMBERS[which], str(which))
            text = f"{number} {name.rstrip('.')}s from {self.pick('now', 'now', 'today')}"
            return Phrase(text, Meaning(kind, amount=which - 1))
        if self.chance(0.3):
            fortnight = self.pick("a fortnight", "fortnight", "a fortnite", "fortnite")
            text = self.pick(fortnight + joint + name, f"{name} fortnight")
            return Phrase(text, Meaning(kind, amount=2))
        return Phrase(
            self.pick(
                f"{name} week",
                f"{name} wk",
                self.pick("a week", "1 week", "one week", "a wk", "week", "wk", "1 wk") + joint + name,
            ),
            Meaning(kind, amount=1),
        )

    def weekend(self):
        word = self.pick(
            "weekend",
            "weekend",
            "weekend",
            "wkend",
            "wknd",
            "wkd",
            "week-end",
            "weeknd",
            "weekened",
            "wkend",
            "week end",
            "weeekend",
        )
        if self.chance(0.36):
            return Phrase(
                self.pick("", "", "by ", "over ", "on ", "for ", "before ", "sometime ")
                + self.pick("next ", "nxt ", "nex ", "next ", "the following ")
                + word
                if self.chance(0.85)
                else self.pick("the ", "") + word + self.pick(" after this one", " after this", " after"),
                Meaning("NEXT_WEEKEND"),
            )
        return Phrase(
            self.pick(
                "",
                "",
                "",
                "this ",
                "this ",
                "over the ",
                "on the ",
                "at the ",
                "by the ",
                "before the ",
                "sometime this ",
                "over ",
                "this coming ",
                "on ",
                "the ",
                "by this ",
                "thsi ",
                "ths ",
                "during the ",
                "coming ",
                "on this ",
                "sometime over the ",
                "by ",
                "come the ",
                "the coming ",
                "late this ",
                "early this ",
                "for the ",
            )
            + word,
            Meaning("THIS_WEEKEND"),
        )

    def week(self):
        next_week = self.pick(
            "next week",
            "next week",
            "next week",
            "next week",
            "nxt week",
            "next wk",
            "nxt wk",
            "nex week",
            "next wek",
            "the next week",
            "next weeek",
            "nextweek",
            "coming week",
            "the coming week",
            "the following week",
            "following week",
            "next week",
            "next week",
            "net week",
        )
        this_week = self.pick(
            "the week",
            "week",
            "this week",
            "the wk",
            "this wk",
            "wk",
            "the working week",
            "this week",
            "work week",
            "the work week",
            "thsi week",
        )
        prefix = self.pick(
            "",
            "",
            "",
            "",
            "by ",
            "by the ",
            "the ",
            "at the ",
            "in the ",
            "sometime ",
            "before the ",
            "towards the ",
            "around the ",
            "on the ",
            "until ",
            "till ",
        )

        def part(*words):
            return prefix + self.r.choice(words)

        form = self.weighted(
            [
                (20, "next"),
                (12, "early next"),
                (10, "mid next"),
                (8, "late next"),
                (10, "end next"),
                (14, "end this"),
                (8, "later this"),
                (8, "mid this"),
                (4, "after next"),
                (3, "eow"),
            ]
        )
        if form == "next":
            return Phrase(
                self.pick(
                    "",
                    "",
                    "",
                    "",
                    "by ",
                    "sometime ",
                    "for ",
                    "before ",
                    "during ",
                    "some time ",
                    "in ",
                    "any time ",
                    "until ",
                    "one day ",
                    "at some point ",
                    "due ",
                    "",
                    "starting ",
                )
                + next_week,
                Meaning("NEXT_MONDAY"),
            )
        if form == "early next":
            return Phrase(
                self.weighted(
                    [
                        (
                            6,
                            self.pick(
                                "early ",
                                "early ",
                                "earlyish ",
                                "erly ",
                                "earlier ",
                                "early on ",
                                "ealry ",
                                "very early ",
                                "by early ",
                            )
                            + next_week,
                        ),
                        (
                            5,
                            part(
                                "beginning of ",
                                "start of ",
                                "begin of ",
                                "beginning ",
                                "beginning of the ",
                                "first day of ",
                                "start ",
                                "begining of ",
                                "first part of ",
                            )
                            + next_week,
                        ),
                    ]
                ),
                Meaning("NEXT_MONDAY"),
            )
        if form == "mid next":
            return Phrase(
                self.weighted(
                    [
                        (
                            5,
                            self.pick("mid ", "mid-", "midweek ", "mid week ", "by mid ", "around mid ", "about mid ")
                            + next_week,
                        ),
                        (4, part("middle of ", "midde of ", "mid of ") + next_week),
                        (2, next_week + self.pick(" midweek", " mid week", ", midweek", " mid")),
                    ]
                ),
                Meaning("NEXT_WEEK_WEDNESDAY"),
            )
        if form == "late next":
            return Phrase(
                self.pick(
                    "late ",
                    "later ",
                    "late ",
                    "latter part of ",
                    "later on ",
                    "by late ",
                    "late in ",
                    "later in ",
                    "l8 ",
                )
                + next_week,
                Meaning("NEXT_WEEK_FRIDAY"),
            )
        if form == "end next":
            return Phrase(
                part(
                    "end of ",
                    "end of ",
                    "end ",
                    "close of ",
                    "en dof ",
                    "end f ",
                    "last day of ",
                    "back end of ",
                    "tail end of ",
                )
                + next_week,
                Meaning("NEXT_WEEK_FRIDAY"),
            )
        if form == "end this":
            return Phrase(
                part("end of ", "end of ", "end of ", "end ", "en of ", "ned of ", "close of ", "end fo ") + this_week,
                Meaning("THIS_FRIDAY"),
            )
        if form == "eow":
            return Phrase(
                self.pick("by ", "", "before ", "end of week ", "until ") + self.pick("eow", "EOW", "e.o.w."),
                Meaning("THIS_FRIDAY"),
            )
        if form == "later this":
            return Phrase(
                self.pick(
                    "later this week",
                    "late this week",
                    "later on this week",
                    "later in the week",
                    "late in the week",
                    "late this wk",
                    "later this wk",
                    "before the week is over",
                    "before the week is out",
                    "before the week ends",
                    "by week's end",
                    "by weeks end",
                    "before this week is over",
                    "latr this week",
                    "towards the end of the week",
                    "before the week end",
                ),
                Meaning("THIS_FRIDAY"),
            )
        if form == "mid this":
            return Phrase(
                self.pick(
                    "midweek",
                    "midwk",
                    "mid wk",
                    "mid week",
                    "mid-week",
                    "mid this week",
                    "middle of the week",
                    "in the middle of the week",
                    "around midweek",
                    "about midweek",
                    "middle of this week",
                    "by midweek",
                    "by mid week",
                    "around the middle of the week",
                    "around mid week",
                    "around mid-week",
                ),
                Meaning("THIS_WEDNESDAY"),
            )
        return Phrase(
            self.pick("", "by ", "sometime ")
            + self.pick("the week after next", "week after next", "the wk after next", "week after nxt"),
            Meaning("WEEK_AFTER_NEXT"),
        )

    def month_phrase(self):
        next_month = self.pick(
            "next month",
            "next month",
            "next month",
            "nxt month",
            "next mth",
            "nex month",
            "next mnth",
            "the next month",
            "next mo",
            "the following month",
            "next monht",
            "nextmonth",
            "coming month",
            "the coming month",
        )
        this_month = self.pick(
            "the month",
            "the month",
            "month",
            "this month",
            "this month",
            "the mth",
            "mth",
            "current month",
            "the current month",
            "this mnth",
        )
        prefix = self.pick(
            "",
            "",
            "",
            "by ",
            "by the ",
            "the ",
            "at the ",
            "before the ",
            "around the ",
            "towards the ",
            "sometime ",
            "until the ",
            "on the ",
        )
        ending = self.pick(
            "end of ", "end of ", "end of ", "end ", "very end of ", "ned of ", "end fo ", "last day of ", "close of "
        )
        starting = self.pick(
            "start of ",
            "beginning of ",
            "first of ",
            "begin of ",
            "1st of ",
            "beginning ",
            "first day of ",
            "begining of ",
            "early ",
            "early ",
        )
        middle = self.pick("middle of ", "mid ", "mid ", "mid-", "midde of ", "mid of ")
        late = self.pick("late ", "later ", "late ", "late in ", "later in ", "later on ")
        form = self.weighted(
            [
                (14, "next"),
                (9, "early next"),
                (5, "mid next"),
                (4, "late next"),
                (8, "end next"),
                (16, "end this"),
                (6, "eom"),
                (4, "mid this"),
                (3, "late this"),
                (5, "start this"),
                (8, "day of next"),
                (3, "day of this"),
                (4, "year end"),
            ]
        )
        if form == "next":
            return Phrase(
                self.pick("", "", "", "by ", "sometime ", "in ", "before ", "during ", "for ", "until ", "some time ")
                + next_month,
                Meaning("NEXT_MONTH_DAY", day=1),
            )
        if form == "early next":
            return Phrase(
                (prefix if not starting.startswith("early") else self.pick("", "", "by ")) + starting + next_month,
                Meaning("NEXT_MONTH_DAY", day=1),
            )
        if form == "mid next":
            return Phrase(
                (prefix if middle.startswith("mid") and "of" in middle else self.pick("", "by ", "around "))
                + middle
                + next_month,
                Meaning("NEXT_MONTH_DAY", day=15),
            )
        if form == "late next":
            return Phrase(self.pick("", "by ", "") + late + next_month, Meaning("NEXT_MONTH_DAY", day=25))
        if form == "end next":
            return Phrase(prefix + ending + next_month, Meaning("NEXT_MONTH_DAY", day=31))
        if form == "end this":
            return Phrase(prefix + ending + this_month, Meaning("THIS_MONTH_DAY", day=31))
        if form == "eom":
            return Phrase(
                self.pick(
                    "eom",
                    "by eom",
                    "EOM",
                    "by EOM",
                    "month end",
                    "by month end",
                    "at month end",
                    "by month's end",
                    "month's end",
                    "before the month is over",
                    "before the month is out",
                    "by months end",
                    "before month end",
                    "before the month ends",
                    "month-end",
                    "by month-end",
                ),
                Meaning("THIS_MONTH_DAY", day=31),
            )
        if form == "mid this":
            return Phrase(
                self.pick(
                    "mid month",
                    "mid-month",
                    "middle of the month",
                    "the middle of the month",
                    "mid this month",
                    "middle of this month",
                    "by mid month",
                    "around the middle of the month",
                    "around mid month",
                    "by the middle of the month",
                    "midmonth",
                ),
                Meaning("THIS_MONTH_DAY", day=15),
            )
        if form == "late this":
            return Phrase(
                self.pick(
                    "late this month",
                    "later this month",
                    "late in the month",
                    "later in the month",
                    "late this mth",
                    "later on this month",
                ),
                Meaning("THIS_MONTH_DAY", day=25),
            )
        if form == "start this":
            return Phrase(
                self.pick(
                    "first of the month",
                    "the first of the month",
                    "on the first of the month",
                    "1st of the month",
                    "beginning of the month",
                    "start of the month",
                    "by the first of the month",
                    "by the 1st of the month",
                    "around the first of the month",
                    "at the start of the month",
                    "at the beginning of the month",
                    "by the start of the month",
                ),
                Meaning("THIS_MONTH_DAY", day=1),
            )
        if form == "year end":
            return Phrase(
                self.pick("", "by ", "by the ", "before the ", "the ", "at the ", "before ", "around the ")
                + self.pick(
                    "end of the year",
                    "end of year",
                    "eoy",
                    "year end",
                    "end of this year",
                    "year's end",
                    "years end",
                    "EOY",
                    "year-end",
                    "end of the yr",
                    "end of yr",
                    "last day of the year",
                ),
                Meaning("SPECIFIC_DATE", month=12, day=31),
            )
        day = self.r.randrange(1, 29)
        text, word = self.day_number(day)
        if form == "day of this":
            return Phrase(
                self.pick("", "on ", "by ")
                + text
                + self.pick(" of this month", " of the month", " this month", " of this mth"),
                Meaning("THIS_MONTH_DAY", day=word),
            )
        return Phrase(
            self.weighted(
                [
                    (
                        5,
                        self.pick("", "on ", "by ", "before ")
                        + text
                        + self.pick(" of ", " of ", " ", " in ")
                        + next_month,
                    ),
                    (2, next_month + self.pick(" on ", " ", ", ") + text),
                ]
            ),
            Meaning("NEXT_MONTH_DAY", day=word),
        )

    # Dates.

    def day_number(self, day, article=None):
        """A day of a month: (text, day if it stands in words)."""
        form = self.weighted([(50, "ordinal"), (28, "digits"), (17, "word")])
        the = "the " if (self.chance(0.35) if article is None else article) else ""
        if form == "ordinal":
            zero = "0" if day < 10 and self.chance(0.02) else ""
            return (
                f"{the}{{{zero}{day}|D}}{self.pick('', '', '', ' ') if self.chance(0.1) else ''}{self.ordinal_suffix(day)}",
                None,
            )
        if form == "digits":
            zero = "0" if day < 10 and self.chance(0.1) else ""
            return f"{the if self.chance(0.3) else ''}{{{zero}{day}|D}}", None
        return (
            the + (ORDINALS[day].replace(" ", self.pick(" ", "-")) if self.chance(0.85) or day > 20 else NUMBERS[day]),
            day,
        )

    def year_suffix(self):
        """Nothing, or a year."""
        if self.chance(0.85):
            return ""
        year = self.pick(2025, 2025, 2026, 2026, 2027, 2024, 2028)
        return self.pick(" ", ", ", " ", "/", "-") + (
            f"{{{year}|Y}}" if self.chance(0.8) else self.pick("'", "") + f"{{{year % 100}|Y}}"
        )

    def stress(self):
        """Mostly nothing."""
        if self.chance(0.96):
            return ""
        return self.pick(" latest", " at the latest", " sharp", " or earlier", " or before", " at latest", " for sure")

    def date(self):
        month, name = self.month()
        day = self.r.randrange(1, MONTH_LENGTHS[month - 1] + 1)
        text, word = self.day_number(day)
        order = self.weighted([(30, "day of month"), (30, "day month"), (18, "month day"), (6, "glued")])
        bare = text.replace("the ", "")
        if order == "day of month":
            date = text + self.pick(" of ", " of ", " of ", " off ", " in ", " o ", " fo ") + name
        elif order == "day month":
            date = text + self.pick(" ", " ", " ", " ", "-", ". ", "/", ", ") + name
        elif order == "month day":
            date = name + self.pick(" ", " ", " the ", " the ", ", ", "-", ". ", "/") + bare
        else:
            date, word = (
                f"{{{day}|D}}{name.rstrip('.')}" if self.chance(0.6) else f"{name.rstrip('.')}{{{day}|D}}"
            ), None
        if order != "glued" and self.chance(0.05):
            last = min(day + self.r.randrange(1, 6), MONTH_LENGTHS[month - 1])
            date, word = self.pick(
                (f"{{{day}|D}}-{last} {name}", None),
                (f"{{{day}|D}} to {last} {name}", None),
                (f"{{{day}|D}}th-{last}th {name}", None),
                (f"{name} {{{day}|D}}-{last}", None),
                (f"{{{day}|D}} - {last} of {name}", None),
                (f"{{{day}|D}}–{last} {name}", None),
                (f"{name} {{{day}|D}} to {last}", None),
                (f"{name} {{{day}|D}}th to {last}th", None),
            )
        if order in ("month day", "day of month") and date[-1] != "." and self.chance(0.03):
            date += self.pick("ish", "ish", "-ish", " or so", " ish")
        date += self.year_suffix()
        prefix = self.pick(
            "",
            "",
            "",
            "",
            "on ",
            "on ",
            "by ",
            "by ",
            "before ",
            "until ",
            "due ",
            "for ",
            "around ",
            "till ",
            "no later than ",
            "about ",
            "after ",
            "from ",
            "starting ",
            "due by ",
            "deadline ",
            "latest ",
            "on or before ",
            "not later than ",
            "wk of ",
            "week of ",
        )
        date += self.stress()
        if self.chance(0.12):
            weekday = self.weekday()[1]
            date = self.pick(
                f"{weekday} {date}",
                f"{weekday} {date}",
                f"{weekday}, {date}",
                f"{date} ({weekday})",
                f"{date}, {weekday}",
            )
        return Phrase(prefix + date, Meaning("SPECIFIC_DATE", month=month, day=word))

    def numeric_date(self):
        month = self.r.randrange(1, 13)
        day = self.r.randrange(1, MONTH_LENGTHS[month - 1] + 1)
        year = self.pick(2025, 2025, 2026, 2026, 2027, 2024)
        zero = self.chance(0.25)
        two = lambda n: f"{n:02}" if zero else str(n)
        prefix = self.pick(
            "",
            "",
            "",
            "on ",
            "by ",
            "before ",
            "due ",
            "until ",
            "for ",
            "around ",
            "till ",
            "from ",
            "after ",
            "about ",
            "due by ",
            "latest ",
            "deadline ",
            "due: ",
            "on or before ",
            "wk of ",
            "week of ",
        )
        form = self.weighted(
            [(50, "slash"), (16, "slash year"), (10, "iso"), (9, "dotted"), (5, "dash"), (4, "iso slash")]
        )
        first, second = (month, day) if self.chance(0.7) else (day, month)
        if form == "slash":
            date = f"{{{two(first)}|A}}/{{{two(second)}|B}}"
        elif form == "slash year":
            date = f"{{{two(first)}|A}}/{{{two(second)}|B}}/{{{year if self.chance(0.5) else year % 100}|Y}}"
        elif form == "iso":
            date = f"{{{year}|Y}}-{{{month:02}|I}}-{{{day:02}|D}}"
        elif form == "iso slash":
            date = f"{{{year}|Y}}{self.pick('/', '.')}{{{two(month)}|I}}/{{{two(day)}|D}}"
        elif form == "dotted":
            date = f"{{{two(first)}|A}}.{{{two(second)}|B}}" + self.pick(
                "", "", f".{{{year}|Y}}", f".{{{year % 100}|Y}}"
            )
            if self.chance(0.3):  # As Germans write it.
                date = f"{{{two(day)}|D}}.{{{two(month)}|I}}" + self.pick(
                    ".", ".", f".{{{year}|Y}}", f".{{{year % 100}|Y}}"
                )
        else:
            date = f"{{{two(first)}|A}}-{{{two(second)}|B}}" + self.pick("", f"-{{{year}|Y}}", f"-{{{year % 100}|Y}}")
        if form == "slash" and self.chance(0.06):
            last = min(day + self.r.randrange(1, 8), MONTH_LENGTHS[month - 1])
            date += self.pick("-", " - ", " to ", "–") + f"{two(month)}/{two(last)}"
        date += self.stress()
        if self.chance(0.11):
            weekday = self.weekday()[1]
            if self.chance(0.2):
                weekday = self.pick("m", "tu", "w", "th", "f", "sa", "su", "M", "Tu", "W", "Th", "F")
            date = self.pick(f"{weekday} {date}", f"{weekday} {date}", f"{weekday}, {date}", f"{date} ({weekday})")
        # Before a thing a fraction would be written so, but few fractions are.
        return Phrase(prefix + date, Meaning("NUMERIC_DATE"), is_name=prefix == "" and self.chance(0.45))

    def nth(self):
        day = self.r.randrange(1, 32)
        text, word = self.day_number(day)
        if self.chance(0.25):
            weekday = self.weekday()[1]
            if text.endswith("|D}") and not text.startswith("the "):
                text += self.ordinal_suffix(day)
            text = weekday + self.pick(" ", " ", ", ") + text
            return Phrase(
                self.pick("", "", "on ", "by ", "due ", "before ") + text,
                Meaning("SPECIFIC_DATE", month=None, day=word),
            )
        if (
            not text.startswith("the ")
            and "th" not in text
            and "st" not in text
            and "nd" not in text
            and "rd" not in text
        ):
            text = "the " + text
        prefix = self.pick(
            "",
            "on ",
            "on ",
            "by ",
            "by ",
            "before ",
            "until ",
            "due ",
            "around ",
            "till ",
            "after ",
            "for ",
            "due by ",
            "no later than ",
            "about ",
            "sometime around ",
            "from ",
        )
        return Phrase(prefix + text, Meaning("SPECIFIC_DATE", month=None, day=word))

    def weekday_of_month(self):
        day, name = self.weekday()
        which = self.r.choice([1, 1, 2, 3, 4, 5, 5])
        if which == 5:
            count, word = self.pick("last ", "last ", "the last ", "very last ", "final "), 5
        elif self.chance(0.6):
            count, word = self.pick("", "the ") + f"{{{which}|N}}{self.ordinal_suffix(which)} ", None
        else:
            count, word = self.pick("", "the ") + ORDINALS[which] + " ", which
        if self.chance(0.75):
            month, of_month = self.month()
            of_month = self.pick("of ", "of ", "of ", "in ", "in ", "") + of_month
        else:
            month, of_month = None, self.pick(
                "of the month", "of the month", "of this month", "this month", "in the month"
            )
        prefix = self.pick("", "", "on ", "on ", "by ", "before ", "due ")
        return Phrase(
            f"{prefix}{count}{name} {of_month}", Meaning("NTH_" + WEEKDAYS[day].upper(), amount=word, month=month)
        )

    def part_of_month(self):
        month, name = self.month()
        prefix = self.pick("", "", "by ", "in ", "around ", "until ", "before ", "sometime ")
        form = self.weighted([(10, "early"), (8, "start"), (9, "mid"), (7, "middle"), (8, "late"), (14, "end")])
        if form == "early":
            return Phrase(
                prefix + self.pick("early ", "early ", "erly ", "early in ", "very early ") + name,
                Meaning("SPECIFIC_DATE", month=month, day=1),
            )
        if form == "start":
            return Phrase(
                self.pick("", "by ", "by the ", "the ", "at the ", "around the ", "before the ")
                + self.pick(
                    "start of ",
                    "beginning of ",
                    "begin of ",
                    "first day of ",
                    "first of ",
                    "first of ",
                    "begining of ",
                    "beginning ",
                    "start ",
                )
                + name,
                Meaning("SPECIFIC_DATE", month=month, day=1),
            )
        if form == "mid":
            return Phrase(
                prefix + self.pick("mid ", "mid-", "mid ", "midd ", "mid of ") + name,
                Meaning("SPECIFIC_DATE", month=month, day=15),
            )
        if form == "middle":
            return Phrase(
                self.pick("", "by ", "by the ", "the ", "in the ", "around the ")
                + self.pick("middle of ", "middle ", "midle of ")
                + name,
                Meaning("SPECIFIC_DATE", month=month, day=15),
            )
        if form == "late":
            return Phrase(
                prefix + self.pick("late ", "late ", "late in ", "later in ") + name,
                Meaning("SPECIFIC_DATE", month=month, day=25),
            )
        return Phrase(
            self.pick(
                "", "", "by ", "by the ", "the ", "at the ", "around the ", "before the ", "until the ", "towards the "
            )
            + self.pick("end of ", "end of ", "end ", "very end of ", "last day of ", "end f ", "close of ", "ned of ")
            + name,
            Meaning("SPECIFIC_DATE", month=month, day=31),
        )

    def holiday(self):
        christmas = self.pick(
            "christmas",
            "christmas",
            "christmas",
            "xmas",
            "christmas day",
            "x-mas",
            "chrismas",
            "xmas day",
            "cristmas",
            "Christmas",
            "chistmas",
        )
        new_year = self.pick(
            "new year",
            "new years",
            "new year's",
            "new year's day",
            "new years day",
            "new yr",
            "the new year",
            "New Year",
            "new yaer",
            "new yrs",
            "newyear",
            "New Year's Day",
        )
        thanksgiving = self.pick(
            "thanksgiving",
            "thanksgiving",
            "thanksgiving day",
            "thanksgivng",
            "thankgiving",
            "Thanksgiving",
            "thanksgving",
            "turkey day",
            "thanksgiving",
        )
        fixed = [
            (12, christmas, 12, 25),
            (8, self.pick("christmas eve", "xmas eve", "chrismas eve", "Christmas Eve", "x-mas eve"), 12, 24),
            (9, new_year, 1, 1),
            (
                9,
                self.pick(
                    "new year's eve",
                    "new years eve",
                    "nye",
                    "new year eve",
                    "new yrs eve",
                    "New Year's Eve",
                    "new year’s eve",
                ),
                12,
                31,
            ),
            (6, self.pick("halloween", "haloween", "Halloween", "hallowen", "halloween night"), 10, 31),
            (
                6,
                self.pick("valentine's day", "valentines day", "valentines", "valentine's", "v-day", "valentine day"),
                2,
                14,
            ),
            (
                4,
                self.pick(
                    "st patrick's day",
                    "st patricks day",
                    "st. patrick's day",
                    "saint patrick's day",
                    "st paddys day",
                    "st paddy's day",
                    "st pats day",
                    "st pats",
                    "st paddys",
                    "st patty's day",
                ),
                3,
                17,
            ),
            (
                4,
                self.pick("4th of july", "fourth of july", "independence day", "the 4th of july", "the fourth of july"),
                7,
                4,
            ),
            (3, self.pick("april fools", "april fool's day", "april fools day", "april fools'"), 4, 1),
            (2, self.pick("tax day", "tax day"), 4, 15),
            (4, self.pick("veterans day", "veteran's day", "veterans' day", "armistice day"), 11, 11),
            (2, self.pick("earth day"), 4, 22),
            (2, self.pick("cinco de mayo"), 5, 5),
            (2, self.pick("juneteenth"), 6, 19),
            (1, "may day", 5, 1),
            (1, self.pick("guy fawkes", "bonfire night", "guy fawkes night"), 11, 5),
            (1, self.pick("ides of march", "the ides of march"), 3, 15),
            (1, self.pick("nikolaus", "st nicholas day"), 12, 6),
            (1, self.pick("three kings day", "epiphany"), 1, 6),
            (1, self.pick("all saints day", "all saints"), 11, 1),
            (1, self.pick("groundhog day"), 2, 2),
            (3, "boxing day", 12, 26),
            (1.5, self.pick("vday", "v day", "v-day", "valentines", "valentine's"), 2, 14),
            (1.5, self.pick("pi day"), 3, 14),
            (1, "canada day", 7, 1),
            (1.5, self.pick("xmas eve", "christmas eve"), 12, 24),
            (
                1,
                self.pick(
                    "st pattys", "st patricks", "st paddys", "st pats", "st patricks day", "st pattys day", "paddys day"
                ),
                3,
                17,
            ),
        ]
        other = [
            (11, thanksgiving, "THANKSGIVING"),
            (1, self.pick("cyber monday", "cyber mon"), "CYBER_MONDAY"),
            (3, self.pick("labor day", "labor day", "labour day"), "LABOR_DAY"),
            (3, "memorial day", "MEMORIAL_DAY"),
            (2, self.pick("presidents day", "president's day", "presidents' day"), "PRESIDENTS_DAY"),
            (2, self.pick("mlk day", "martin luther king day", "MLK day"), "MLK_DAY"),
            (1.5, self.pick("columbus day", "indigenous peoples day", "indigenous peoples' day"), "COLUMBUS_DAY"),
            (3, self.pick("mother's day", "mothers day"), "MOTHERS_DAY"),
            (3, self.pick("father's day", "fathers day"), "FATHERS_DAY"),
            (5, self.pick("easter", "easter sunday", "Easter"), "EASTER"),
            (2, "good friday", "GOOD_FRIDAY"),
            (2, self.pick("easter monday", "easter mon"), "EASTER_MONDAY"),
            (1.5, self.pick("easter", "easter sunday", "easter day"), "EASTER"),
            (1.5, self.pick("mem day", "memorial day"), "MEMORIAL_DAY"),
            (1, self.pick("prez day", "pres day", "pres. day"), "PRESIDENTS_DAY"),
            (1.5, self.pick("t-giving", "tgiving", "thx giving", "thxgiving", "turkey day"), "THANKSGIVING"),
            (1, self.pick("mom's day", "moms day", "mothers day"), "MOTHERS_DAY"),
            (1, self.pick("dads day", "dad's day", "fathers day"), "FATHERS_DAY"),
        ]
        table = [(w, t, Meaning("SPECIFIC_DATE", month=m, day=d)) for w, t, m, d in fixed] + [
            (w, t, Meaning(k)) for w, t, k in other
        ]
        _, text, meaning = self.r.choices(table, [w for w, _, _ in table])[0]
        special = self.r.random()
        if special < 0.05:
            text, meaning = self.pick(
                ("black friday", Meaning("THANKSGIVING", amount=1, shift="DAYS_AFTER")),
                ("blk friday", Meaning("THANKSGIVING", amount=1, shift="DAYS_AFTER")),
                (thanksgiving + " eve", Meaning("THANKSGIVING", amount=1, shift="DAYS_BEFORE")),
                ("xmas eve eve", Meaning("SPECIFIC_DATE", month=12, day=24, amount=1, shift="DAYS_BEFORE")),
                ("palm sunday", Meaning("EASTER", amount=1, shift="WEEKS_BEFORE")),
                ("easter sat", Meaning("EASTER", amount=1, shift="DAYS_BEFORE")),
            )
        elif special < 0.34:
            return self.away(text, meaning)
        prefix = self.pick(
            "on ",
            "by ",
            "by ",
            "before ",
            "before ",
            "until ",
            "around ",
            "due ",
            "till ",
            "no later than ",
            "",
            "",
            "in time for ",
            "right before ",
            "sometime around ",
            "well before ",
            "ahead of ",
            "just before ",
            "around ",
            "about ",
            "at ",
            "this ",
            "come ",
            "b4 ",
            "early on ",
            "by about ",
        )
        return Phrase(prefix + text, replace(meaning), is_name=prefix == "")

    WEEKDAY_HOLIDAYS = {
        **dict.fromkeys(["LABOR_DAY", "MEMORIAL_DAY", "PRESIDENTS_DAY", "MLK_DAY", "COLUMBUS_DAY"], 1),
        **dict.fromkeys(["EASTER", "MOTHERS_DAY", "FATHERS_DAY"], 0),
        "THANKSGIVING": 4,
    }

    def away(self, text, meaning):
        """So many days or weeks before or after a day."""
        before = self.chance(0.68)
        joint = (
            self.pick("before ", "before ", "b4 ", "b4 ", "bfr ") if before else self.pick("after ", "after ", "aftr ")
        )
        article = self.pick("the ", "the ", "")
        text = (
            article if re.match(r"(new year|{?\d?4\|?D?}?(st|nd|rd|th)|\{\d+\|D\}(st|nd|rd|th)$)", text) else ""
        ) + text
        form = self.weighted([(30, "day"), (8, "night"), (24, "days"), (30, "weeks"), (8, "weekday")])
        suffix = "BEFORE" if before else "AFTER"
        if form == "night":
            night = self.pick("the night ", "night ", "nite ", "the nite ", "the evening ", "evening ")
            hour = 18 if "evening" in night else 20
            meaning = replace(meaning, shift="DAYS_" + suffix, amount=1, hour=hour, minute=0)
            return Phrase(night + joint + text, meaning)
        if form == "weekday" and meaning.kind in self.WEEKDAY_HOLIDAYS:
            day, name = self.weekday()
            distance = (self.WEEKDAY_HOLIDAYS[meaning.kind] - day) * (1 if before else -1) % 7 or 7
            meaning = replace(meaning, shift="DAYS_" + suffix, amount=distance)
            return Phrase(self.pick("the ", "the ", "", "on the ") + name + " " + joint + text, meaning)
        if form == "days":
            number, amount, digits = self.count(3, 12)
            unit = self.pick("days ", "days ", "days ", "dys ") if amount != 1 else "day "
        elif form == "weeks":
            if self.chance(0.6):
                number, amount, digits = (
                    self.pick("a ", "a ", "one ", "1 ", "{1|N} ", "the ", "", "exactly 1 "),
                    1,
                    False,
                )
                digits = number == "{1|N} "
                unit = self.pick("week ", "week ", "wk ")
            else:
                number, amount, digits = self.count(3, 5)
                unit = self.pick("weeks ", "wks ", "weeks ") if amount != 1 else "week "
        else:
            number, amount, digits = self.pick("the ", "the ", "", "", "a ", "one ", "1 "), 1, False
            unit = self.pick("day ", "day ", "day ", "dy ")
        meaning = replace(
            meaning, shift=("WEEKS_" if form == "weeks" else "DAYS_") + suffix, amount=None if digits else amount
        )
        lead = self.weighted([(14, ""), (2, "by "), (2, "on " if form == "day" else ""), (1, "around "), (1, "due ")])
        return Phrase(lead + number + unit + joint + text, meaning)

    # Together.

    DAY_FAMILIES = [
        (15, "day_word"),
        (25, "weekday_phrase"),
        (13, "offset"),
        (3, "from_tomorrow"),
        (5, "weekend"),
        (13, "week"),
        (11, "month_phrase"),
        (15, "date"),
        (12, "numeric_date"),
        (5, "nth"),
        (9, "part_of_month"),
        (4, "weekday_of_month"),
        (11, "holiday"),
    ]

    def phrase(self):
        form = self.r.random()
        if form < 0.2:  # a time without a day
            text, hour, minute = self.time(beside_day=False)
            text += self.stress()
            if self.chance(0.12):
                text = self.weighted(
                    [
                        (3, "later " + text),
                        (2, "today " + text),
                        (2, text + " today"),
                        (1, "sometime " + text),
                        (1, self.today() + " " + text),
                    ]
                )
            return Phrase(text, Meaning("TODAY", hour=hour, minute=minute))
        if form < 0.203:
            return Phrase(
                self.pick("in ", "", "in about ") + self.pick("3/4 of an hour", "3/4 hr", "three quarters of an hour"),
                Meaning("IN_MINUTES", amount=45),
            )
        day = getattr(self, self.weighted(self.DAY_FAMILIES))()
        if day.meaning.kind in ("IN_MINUTES", "IN_HOURS"):
            return day
        if day.meaning.kind in ("SPECIFIC_DATE", "NUMERIC_DATE") and day.meaning.shift == "NONE" and self.chance(0.05):
            plain = re.sub(r"^(on|by|due|before|until|till|for|b4) ", "", day.text)
            if re.match(r"[a-z]+\.? \{|\{|the \{", plain, re.I) and day.meaning.hour is None:
                day = self.away(plain, day.meaning)
        if self.chance(0.012) and day.meaning.kind.startswith(("TOMORROW", "THIS_", "NEXT_")):
            first = self.pick(
                "first thing ", "1st thing ", "first thing on " if "DAY" in day.meaning.kind else "first thing "
            )
            return Phrase(first + day.text.removeprefix("on "), replace(day.meaning, hour=8, minute=0))
        if day.meaning.kind == "TONIGHT":
            if self.chance(0.4):
                text, hour, minute = self.clock("night")
                text = self.pick("at ", "around ", "", "@ ", "by ", "about ") + text
                joined = text + " " + day.text if self.chance(0.4) else day.text + " " + text
                return Phrase(joined, replace(day.meaning, hour=hour, minute=minute))
            return Phrase(day.text, replace(day.meaning, hour=20, minute=0))
        likely = "DAY" in day.meaning.kind[:-1] and day.meaning.kind.startswith(("THIS_", "NEXT_"))
        if self.chance(0.55 if likely or day.meaning.kind == "NUMERIC_DATE" else 0.36):
            text, hour, minute = self.time(beside_day=True)
            joint = self.weighted([(52, " "), (6, ", "), (2, " - "), (1, " — "), (1, " @ ")])
            # Beside a date in digits only what cannot be another part of it stands without a word between.
            plain_time = "|M}" in text or re.search(r"\}\s?[ap]|^\{\d{4}\|T", text, re.I) is not None
            meaning = replace(day.meaning, hour=hour, minute=minute)
            if self.chance(0.33):
                if text[-1] == "}" and day.text[:1] in "{0123456789":
                    joint = self.pick(" on ", ", ", *([" ", " "] if plain_time else []))
                return Phrase(
                    text
                    + (
                        " on "
                        if joint == " "
                        and self.chance(0.25)
                        and not day.text.startswith(("on ", "by ", "in ", "before ", "until "))
                        else joint
                    )
                    + day.text,
                    meaning,
                )
            if day.text[-1] == "}" and text[:1] in "{0123456789":
                joint = self.pick(" at ", ", ", " @ ", " around ", *([" ", " ", " ", " "] if plain_time else [" at "]))
            return Phrase(day.text + joint + text, meaning)
        return day

    def apart(self):
        """A day and a time that stand apart from one another: their texts, and what they mean together."""
        day = None
        while day is None or day.meaning.kind in ("IN_MINUTES", "IN_HOURS", "TONIGHT") or day.is_name:
            day = getattr(self, self.weighted(self.DAY_FAMILIES))()
        text, hour, minute = self.time(beside_day=False)
        return day.text, text, replace(day.meaning, hour=hour, minute=minute)


def words_to_cut():
    """The words that phrases are made of, here and as writers said them, but for rare ones."""
    phrases = Phrases(random.Random(0))
    counts = Counter(
        word for _ in range(200_000) for word in set(re.findall(r"[a-z]+(?:'[a-z]+)*", phrases.phrase().text.lower()))
    )
    said = (pathlib.Path(__file__).resolve().parent / "words" / "said.txt").read_text(encoding="utf-8")
    marked = " ".join(re.findall(r"\[(.*?)\]", re.sub(r"\{.*?\}", " ", said.lower())))
    written = Counter(re.findall(r"[a-z]+(?:'[a-z]+)*", marked))
    often = [word for word, count in counts.items() if count > 2] + [
        word for word, count in written.items() if count > 1
    ]
    return sorted(word for word in set(often) if len(word) > 2)


if __name__ == "__main__":
    (pathlib.Path(__file__).resolve().parent / "words" / "cut.txt").write_text(
        "\n".join(words_to_cut()) + "\n", encoding="utf-8"
    )
