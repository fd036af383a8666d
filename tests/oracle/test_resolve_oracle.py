#!/usr/bin/env python3
"""Checks of the oracle for classifications itself, with expectations worked out by hand."""

import calendar
import json
import unittest

from random_classifications import CALENDAR_END, ZONES, random_requests
from resolve_oracle import KINDS, LARGEST_NUMBER, SMALLEST_NUMBER, resolve

BERLIN = "Europe/Berlin"


def utc(year, month, day, hour=0, minute=0, second=0):
    return calendar.timegm((year, month, day, hour, minute, second))


def winter_in_berlin(year, month, day, hour=0, minute=0, second=0):
    """One hour ahead of UTC."""
    return utc(year, month, day, hour, minute, second) - 3600


def summer_in_berlin(year, month, day, hour=0, minute=0, second=0):
    """Two hours ahead of UTC."""
    return utc(year, month, day, hour, minute, second) - 7200


# Wednesday 5 March 2025, ten in the morning, twelve seconds and a quarter.
WEDNESDAY = winter_in_berlin(2025, 3, 5, 10, 0, 12) + 0.25


def classification(kind, amount=0, month=0, day=0, hour=None, minute=0):
    return {
        "kind": kind, "amount": amount, "month": month, "day": day,
        "hasTime": hour is not None, "hour": hour or 0, "minute": minute, "title": "x",
    }  # fmt: skip


class OracleTest(unittest.TestCase):
    def check(self, due, kind, now=WEDNESDAY, zone=BERLIN, **numbers):
        self.assertEqual(resolve(classification(kind, **numbers), now, zone), due, (kind, numbers))


class Days(OracleTest):
    def test_no_date(self):
        self.check(None, "NONE", hour=9)

    def test_today_and_tonight(self):
        self.check(winter_in_berlin(2025, 3, 5, 9), "TODAY")
        self.check(winter_in_berlin(2025, 3, 5, 20), "TONIGHT")
        self.check(winter_in_berlin(2025, 3, 5, 8, 5), "TODAY", hour=8, minute=5)
        self.check(winter_in_berlin(2025, 3, 5, 22), "TONIGHT", hour=22)

    def test_coming_days(self):
        self.check(winter_in_berlin(2025, 3, 6, 9), "TOMORROW")
        self.check(winter_in_berlin(2025, 3, 7, 9), "DAY_AFTER_TOMORROW")

    def test_weekdays(self):
        self.check(winter_in_berlin(2025, 3, 5, 9), "THIS_WEDNESDAY")
        self.check(winter_in_berlin(2025, 3, 12, 9), "NEXT_WEDNESDAY")
        for family in ("THIS", "NEXT"):
            self.check(winter_in_berlin(2025, 3, 6, 9), f"{family}_THURSDAY")
            self.check(winter_in_berlin(2025, 3, 9, 9), f"{family}_SUNDAY")
            self.check(winter_in_berlin(2025, 3, 11, 9), f"{family}_TUESDAY")

    def test_weekends(self):
        self.check(winter_in_berlin(2025, 3, 8, 9), "THIS_WEEKEND")
        self.check(winter_in_berlin(2025, 3, 8, 9), "THIS_WEEKEND", now=winter_in_berlin(2025, 3, 8, 23))
        self.check(winter_in_berlin(2025, 3, 15, 9), "THIS_WEEKEND", now=winter_in_berlin(2025, 3, 9))


class Amounts(OracleTest):
    def test_minutes_and_hours_keep_the_seconds(self):
        self.check(WEDNESDAY + 600, "IN_MINUTES", amount=10, hour=7)
        self.check(WEDNESDAY + 7200, "IN_HOURS", amount=2)

    def test_days_and_weeks(self):
        self.check(winter_in_berlin(2025, 3, 8, 9), "IN_DAYS", amount=3)
        self.check(winter_in_berlin(2025, 3, 19, 9), "IN_WEEKS", amount=2)
        self.check(winter_in_berlin(2025, 3, 6, 9), "WEEKS_FROM_TOMORROW", amount=0)
        self.check(winter_in_berlin(2025, 3, 20, 9), "WEEKS_FROM_TOMORROW", amount=2)

    def test_too_little(self):
        for kind in ("IN_MINUTES", "IN_HOURS", "IN_DAYS", "IN_WEEKS"):
            for amount in (0, -1, SMALLEST_NUMBER):
                self.check(None, kind, amount=amount)
        self.check(None, "WEEKS_FROM_TOMORROW", amount=-1)

    def test_too_much(self):
        self.check(WEDNESDAY, "IN_MINUTES", amount=LARGEST_NUMBER)
        self.check(WEDNESDAY, "IN_HOURS", amount=LARGEST_NUMBER)
        self.check(winter_in_berlin(2025, 3, 5, 9), "IN_DAYS", amount=LARGEST_NUMBER)
        self.check(winter_in_berlin(2025, 3, 5, 9), "IN_WEEKS", amount=LARGEST_NUMBER // 7)
        self.check(winter_in_berlin(2025, 3, 6, 9), "WEEKS_FROM_TOMORROW", amount=LARGEST_NUMBER // 7)
        for kind in ("IN_WEEKS", "WEEKS_FROM_TOMORROW"):
            self.check(None, kind, amount=LARGEST_NUMBER // 7 + 1)


class Dates(OracleTest):
    def test_month_and_day(self):
        march_first = {"month": 3, "day": 1}
        self.check(winter_in_berlin(2026, 3, 1, 9), "SPECIFIC_DATE", now=winter_in_berlin(2025, 3, 2), **march_first)
        for now in (winter_in_berlin(2025, 3, 1), winter_in_berlin(2025, 3, 1, 23, 59, 59)):
            self.check(winter_in_berlin(2025, 3, 1, 9), "SPECIFIC_DATE", now=now, **march_first)

    def test_day_alone(self):
        for month in (0, 13, -1, SMALLEST_NUMBER, LARGEST_NUMBER):
            self.check(winter_in_berlin(2025, 3, 5, 9), "SPECIFIC_DATE", month=month, day=5)
            self.check(summer_in_berlin(2025, 4, 4, 9), "SPECIFIC_DATE", month=month, day=4)
        december = winter_in_berlin(2025, 12, 20)
        self.check(winter_in_berlin(2025, 1, 5, 9), "SPECIFIC_DATE", now=december, day=5)

    def test_impossible_days(self):
        for day in (0, 32, -1, SMALLEST_NUMBER, LARGEST_NUMBER):
            self.check(None, "SPECIFIC_DATE", month=3, day=day)
        self.check(summer_in_berlin(2025, 5, 1, 9), "SPECIFIC_DATE", month=4, day=31)
        self.check(winter_in_berlin(2026, 3, 1, 9), "SPECIFIC_DATE", month=2, day=29)
        leap_year = winter_in_berlin(2024, 1, 1)
        self.check(winter_in_berlin(2024, 2, 29, 9), "SPECIFIC_DATE", now=leap_year, month=2, day=29)
        self.check(winter_in_berlin(2024, 3, 1, 9), "SPECIFIC_DATE", now=leap_year, month=2, day=30)

    def test_past_the_last_year(self):
        now = winter_in_berlin(9999, 6, 1)
        self.check(summer_in_berlin(9999, 6, 1, 9), "SPECIFIC_DATE", now=now, month=3, day=1)


class Times(OracleTest):
    def test_clamped(self):
        self.check(winter_in_berlin(2025, 3, 5, 23, 59), "TODAY", hour=27, minute=75)
        self.check(winter_in_berlin(2025, 3, 5, 0, 0), "TODAY", hour=-5, minute=-1)
        self.check(winter_in_berlin(2025, 3, 5, 23, 0), "TODAY", hour=LARGEST_NUMBER, minute=SMALLEST_NUMBER)

    def test_clock_changes(self):
        # On 30 March 2025 the clock goes from 2:00 to 3:00, on 26 October from 3:00 back to 2:00.
        self.check(summer_in_berlin(2025, 3, 30, 3, 30), "SPECIFIC_DATE", month=3, day=30, hour=2, minute=30)
        self.check(winter_in_berlin(2025, 10, 26, 2, 30), "SPECIFIC_DATE", month=10, day=26, hour=2, minute=30)

    def test_midnights_that_a_clock_change_skips_or_repeats(self):
        # In Sao Paulo 4 November 2018 began at 1:00, three hours behind UTC until then.
        noon = utc(2018, 11, 3, 15)
        self.check(utc(2018, 11, 4, 3), "TOMORROW", now=noon, zone="America/Sao_Paulo", hour=0)
        # In Havana the first hour of 3 November 2024 came twice, the second one five hours behind UTC.
        noon = utc(2024, 11, 2, 16)
        self.check(utc(2024, 11, 3, 5), "TOMORROW", now=noon, zone="America/Havana", hour=0)


class RandomRequests(unittest.TestCase):
    def test_repeat_by_their_seed(self):
        self.assertEqual(list(random_requests(200, 5)), list(random_requests(200, 5)))
        self.assertNotEqual(list(random_requests(200, 5)), list(random_requests(200, 6)))

    def test_hold_what_they_say(self):
        for request in random_requests(2000, 1):
            written = json.loads(request.json)
            self.assertEqual(written["id"], request.identifier)
            self.assertEqual(written["classification"] | request.classification, written["classification"])
            self.assertIn(request.classification["kind"], KINDS)
            self.assertIn(request.zone, ZONES)
            self.assertLess(request.now, CALENDAR_END)
            for name in ("amount", "month", "day", "hour", "minute"):
                self.assertTrue(SMALLEST_NUMBER <= request.classification[name] <= LARGEST_NUMBER)


if __name__ == "__main__":
    unittest.main()
