#!/usr/bin/env python3
"""Checks of the oracle itself, with expectations worked out by hand."""

import calendar
import json
import unittest

from random_lines import FIRST_INSTANT, ZONES, clock_changes, random_lines
from rules_oracle import Step, understand, understand_with_steps

BERLIN = "Europe/Berlin"
NEW_YORK = "America/New_York"
SAO_PAULO = "America/Sao_Paulo"
LORD_HOWE = "Australia/Lord_Howe"
ST_JOHNS = "America/St_Johns"
KATHMANDU = "Asia/Kathmandu"


def utc(year, month, day, hour=0, minute=0, second=0):
    return calendar.timegm((year, month, day, hour, minute, second))


def winter_in_berlin(year, month, day, hour=0, minute=0, second=0):
    """One hour ahead of UTC."""
    return utc(year, month, day, hour, minute, second) - 3600


def summer_in_berlin(year, month, day, hour=0, minute=0, second=0):
    """Two hours ahead of UTC."""
    return utc(year, month, day, hour, minute, second) - 7200


# Tuesday 4 March 2025, ten in the morning and twelve seconds.
TUESDAY = winter_in_berlin(2025, 3, 4, 10, 0, 12)


class OracleTest(unittest.TestCase):
    def check_dated(self, text, due, title, interpretation=None, now=TUESDAY, zone=BERLIN):
        answer = understand(text, now, zone)
        self.assertEqual((answer["path"], answer["hint"]), ("rules", True), text)
        self.assertEqual(answer["due"], due, f"{text}: {answer['interpretation']}")
        self.assertEqual(answer["title"], title)
        if interpretation is not None:
            self.assertEqual(answer["interpretation"], interpretation)

    def check_miss(self, text, title=None, now=TUESDAY, zone=BERLIN):
        expected = {
            "hint": True,
            "title": text if title is None else title,
            "due": None,
            "interpretation": "regex+ai miss",
            "path": "miss",
        }
        self.assertEqual(understand(text, now, zone), expected)

    def check_untouched(self, text, title):
        expected = {"hint": False, "title": title, "due": None, "interpretation": None, "path": "none"}
        self.assertEqual(understand(text, TUESDAY, BERLIN), expected)


class WholeLineTest(OracleTest):
    def test_blank_lines_are_left_alone(self):
        self.check_untouched("   ", "")
        self.check_untouched("", "")
        self.check_untouched("\u2003\n\xa0", "")

    def test_plain_titles_have_no_hint(self):
        self.check_untouched("Buy milk", "Buy milk")
        self.check_untouched(" Buy  milk\n", "Buy  milk")
        self.check_untouched("call mon", "call mon")

    def test_dated_line(self):
        self.check_dated(
            "Call mom tomorrow", winter_in_berlin(2025, 3, 5, 9), "Call mom", "Wed Mar 5, 2025 09:00"
        )

    def test_fragments_of_words_give_a_hint_but_no_date(self):
        self.check_miss("Maybe fix the market page")
        self.check_miss("asap")
        self.check_miss("in some days")
        self.check_miss("3/14 pie")

    def test_line_of_nothing_but_a_phrase_keeps_it_as_title(self):
        self.check_dated("tomorrow", winter_in_berlin(2025, 3, 5, 9), "tomorrow")
        self.check_dated(" tomorrow, ", winter_in_berlin(2025, 3, 5, 9), "tomorrow,")

    def test_example_of_the_command_line(self):
        now = winter_in_berlin(2025, 3, 4, 10)
        self.check_dated("call mom tomorrow at 9am", 1741161600, "call mom", "Wed Mar 5, 2025 09:00", now)


class DayTest(OracleTest):
    def test_numbered_day_already_past_is_next_month(self):
        middle_of_march = winter_in_berlin(2025, 3, 15, 12)
        self.check_dated("Pay rent on the 1st", summer_in_berlin(2025, 4, 1, 9), "Pay rent", now=middle_of_march)
        middle_of_december = winter_in_berlin(2025, 12, 15, 12)
        self.check_dated("Pay rent on the 1st", winter_in_berlin(2026, 1, 1, 9), "Pay rent", now=middle_of_december)

    def test_numbered_day_of_today_is_today(self):
        self.check_dated("Pay rent on the 4th", winter_in_berlin(2025, 3, 4, 9), "Pay rent")

    def test_numbered_day_beyond_the_month_rolls_over(self):
        now = winter_in_berlin(2025, 1, 30, 12)
        self.check_dated("rent by the 29", winter_in_berlin(2025, 3, 1, 9), "rent", now=now)

    def test_second_form_is_tried_when_the_first_names_no_day(self):
        self.check_dated("on the 99 see the 5th", winter_in_berlin(2025, 3, 5, 9), "on the 99 see")

    def test_month_date_already_past_is_next_year(self):
        self.check_dated("Dentist march 3", winter_in_berlin(2026, 3, 3, 9), "Dentist")
        self.check_dated(
            "Dentist march 3", winter_in_berlin(2025, 3, 3, 9), "Dentist", now=winter_in_berlin(2025, 3, 3, 23, 59, 59)
        )

    def test_impossible_date_rolls_over(self):
        self.check_dated("feb 30 party", winter_in_berlin(2026, 3, 2, 9), "party", "Mon Mar 2, 2026 09:00")
        second_of_march = winter_in_berlin(2025, 3, 2, 12)
        self.check_dated("feb 30 party", winter_in_berlin(2025, 3, 2, 9), "party", now=second_of_march)
        # The day that was written counts again in the following year, a leap year.
        summer_of_2023 = summer_in_berlin(2023, 6, 1, 12)
        self.check_dated("feb 29", winter_in_berlin(2024, 2, 29, 9), "feb 29", now=summer_of_2023)

    def test_weekend(self):
        saturday = winter_in_berlin(2025, 3, 8, 22)
        self.check_dated("Report this weekend", winter_in_berlin(2025, 3, 8, 9), "Report", now=saturday)
        sunday = winter_in_berlin(2025, 3, 9, 22)
        self.check_dated("Report this weekend", winter_in_berlin(2025, 3, 15, 9), "Report", now=sunday)
        self.check_dated("Report this weekend", winter_in_berlin(2025, 3, 8, 9), "Report")

    def test_weekday_is_never_today(self):
        monday = winter_in_berlin(2025, 3, 3, 8)
        for text in ("Call next monday", "Call monday", "Call this monday"):
            self.check_dated(text, winter_in_berlin(2025, 3, 10, 9), "Call", now=monday)
        for text in ("Call next friday", "Call friday", "Call this friday"):
            self.check_dated(text, winter_in_berlin(2025, 3, 7, 9), "Call", now=monday)

    def test_amount_from_tomorrow(self):
        self.check_dated("Buy 2 days from tomorrow", winter_in_berlin(2025, 3, 7, 9), "Buy")
        self.check_dated("Buy 1 week from today", winter_in_berlin(2025, 3, 11, 9), "Buy")

    def test_bare_number_without_suffix_is_no_day(self):
        self.check_untouched("Pick up the 15 reports", "Pick up the 15 reports")
        self.check_miss("Pick up the 15 reports later")

    def test_impossible_day_leaves_the_line_to_later_rules(self):
        self.check_miss("jan 0")
        self.check_miss("jan 32")
        self.check_dated("jan 32 friday", winter_in_berlin(2025, 3, 7, 9), "jan 32")
        self.check_dated("jan 0 on the 9th", winter_in_berlin(2025, 3, 9, 9), "jan 0")

    def test_first_group_to_yield_a_day_wins(self):
        self.check_dated("friday march 9 tomorrow", winter_in_berlin(2025, 3, 9, 9), "friday tomorrow")
        self.check_dated("the day after tomorrow", winter_in_berlin(2025, 3, 6, 9), "the")


class TimeTest(OracleTest):
    def test_offsets_keep_the_clock_time_and_drop_the_seconds(self):
        self.check_dated("Email Sam in 2 hours", winter_in_berlin(2025, 3, 4, 12), "Email Sam")
        self.check_dated("pay rent in 3 days", winter_in_berlin(2025, 3, 7, 10), "pay rent")
        self.check_dated("pay rent in a week", winter_in_berlin(2025, 3, 11, 10), "pay rent")
        self.check_dated("tea 90 minutes from now", winter_in_berlin(2025, 3, 4, 11, 30), "tea")

    def test_fraction_of_a_second_changes_nothing(self):
        last_moment = winter_in_berlin(2025, 3, 4, 10, 59, 59) + 0.999
        self.check_dated("tea in 1 minute", winter_in_berlin(2025, 3, 4, 11), "tea", now=last_moment)

    def test_clock_time_spelled_out_wins_over_an_offset(self):
        self.check_dated("pay at 8am in 3 days", winter_in_berlin(2025, 3, 7, 8), "pay")

    def test_period_word_sets_the_hour_of_an_offset(self):
        self.check_dated("pay in 3 days in the morning", winter_in_berlin(2025, 3, 7, 9), "pay in the")

    def test_past_clock_time_stays_today(self):
        self.check_dated("call at 8am", winter_in_berlin(2025, 3, 4, 8), "call")

    def test_clock_time_on_a_day(self):
        self.check_dated("call mom tomorrow at 9am", winter_in_berlin(2025, 3, 5, 9), "call mom")

    def test_times_without_a_colon(self):
        self.check_dated("standup at 930am", winter_in_berlin(2025, 3, 4, 9, 30), "standup")
        self.check_dated("standup at 1530", winter_in_berlin(2025, 3, 4, 15, 30), "standup")
        self.check_miss("at 2460")
        self.check_dated("at 2460 tomorrow", winter_in_berlin(2025, 3, 5, 9), "at 2460")

    def test_twelve(self):
        self.check_dated("x 12am", winter_in_berlin(2025, 3, 4, 0), "x", "Tue Mar 4, 2025 00:00")
        self.check_dated("x 12pm", winter_in_berlin(2025, 3, 4, 12), "x")
        self.check_dated("x noon", winter_in_berlin(2025, 3, 4, 12), "x")
        self.check_dated("x midnight", winter_in_berlin(2025, 3, 4, 0), "x")

    def test_hours_beyond_twelve_with_a_suffix(self):
        self.check_dated("x 13pm", winter_in_berlin(2025, 3, 4, 13), "x")
        self.check_miss("x 24pm")
        self.check_miss("x 9:60am")

    def test_evening_context(self):
        self.check_dated("dinner tonight", winter_in_berlin(2025, 3, 4, 20), "dinner")
        self.check_dated("dinner tonight at 8", winter_in_berlin(2025, 3, 4, 20), "dinner")
        self.check_dated("walk at 9 tonight", winter_in_berlin(2025, 3, 4, 21), "walk")
        self.check_dated("walk at 9", winter_in_berlin(2025, 3, 4, 9), "walk")
        self.check_dated("walk at 3", winter_in_berlin(2025, 3, 4, 15), "walk")
        self.check_dated("walk at 7", winter_in_berlin(2025, 3, 4, 19), "walk")
        self.check_dated("walk at 8", winter_in_berlin(2025, 3, 4, 8), "walk")
        self.check_dated("walk at 12 tonight", winter_in_berlin(2025, 3, 4, 12), "walk")

    def test_impossible_times_after_at(self):
        self.check_miss("at 45")
        self.check_miss("at 7:60")
        self.check_dated("at 0", winter_in_berlin(2025, 3, 4, 0), "at 0")

    def test_period_words(self):
        self.check_dated("gym in the morning tomorrow", winter_in_berlin(2025, 3, 5, 9), "gym in the")
        self.check_dated("report friday afternoon", winter_in_berlin(2025, 3, 7, 14), "report")
        self.check_dated("Good night", winter_in_berlin(2025, 3, 4, 20), "Good")
        self.check_dated("tonight in the evening", winter_in_berlin(2025, 3, 4, 18), "in the")

    def test_suffix_is_not_seen_in_a_longer_word(self):
        self.check_miss("at 5 ambulances")
        # Only the minutes stand in front of the word, so the hour alone is taken.
        self.check_dated("at 10:30 amazing", winter_in_berlin(2025, 3, 4, 10), "30 amazing")


class TitleTest(OracleTest):
    def test_separators_at_the_ends_go(self):
        self.check_dated("tomorrow: call mom, ", winter_in_berlin(2025, 3, 5, 9), "call mom")
        self.check_dated("; call\tmom \n now . tomorrow.", winter_in_berlin(2025, 3, 5, 9), "call mom now")

    def test_overlapping_phrases_are_removed_once(self):
        self.check_dated("x jan 5 am y", winter_in_berlin(2026, 1, 5, 5), "x y")
        self.check_dated("x at 5 days from now y", winter_in_berlin(2025, 3, 9, 17), "x y")


class CharacterTest(OracleTest):
    def test_foreign_digits_are_no_numbers(self):
        self.check_miss("x in ٣ days")
        self.check_miss("x at ９am")
        self.check_miss("march ३")

    def test_foreign_digits_end_only_their_own_rule(self):
        self.check_dated("x at ９am, tomorrow at 3", winter_in_berlin(2025, 3, 5, 15), "x at ９am")
        # Only the first match of a pattern counts.
        self.check_miss("x march ३ march 5")

    def test_exotic_folding_makes_no_word(self):
        self.check_miss("x in 2 wee\u212as")
        self.check_miss("\u017funday tue\u017fday in may")
        self.check_miss("augu\ufb06 5")
        self.check_dated("thi\u017f weekend friday", winter_in_berlin(2025, 3, 7, 9), "thi\u017f weekend")
        # The word in front belongs to the first match, so the weekday does not count either.
        self.check_miss("thi\u017f friday")
        self.check_miss("thi\u017f friday sunday")

    def test_dotted_and_dotless_i_are_other_letters(self):
        self.check_miss("fr\u0130day in may")
        self.check_miss("fr\u0131day in may")

    def test_white_space_of_all_kinds(self):
        self.check_dated("call\u2003at\xa09\u202fam", winter_in_berlin(2025, 3, 4, 9), "call")
        self.check_miss("in\x1c3\x1cdays soon")

    def test_combining_and_format_characters_hide_boundaries(self):
        self.check_miss("tomorrow\u0301")
        self.check_miss("tomorrow\u200d")
        self.check_miss("tomorrow\u200b go")
        self.check_miss("a\u200dtomorrow")
        self.check_dated("\u2764\ufe0ftomorrow", winter_in_berlin(2025, 3, 5, 9), "\u2764\ufe0f")
        self.check_dated("\u200btomorrow", winter_in_berlin(2025, 3, 5, 9), "\u200b")
        self.check_dated("tomorrow\U0001f3fd", winter_in_berlin(2025, 3, 5, 9), "\U0001f3fd")

    def test_letters_marks_and_connectors_belong_to_words(self):
        for neighbour in ("é", "字", "_", "\u203f", "\u24b6", "\u2163", "\u0903"):
            self.check_miss("tomorrow" + neighbour)
        for neighbour in ("-", "\u2019", "😀", "\u00b2"):
            self.check_dated("x tomorrow" + neighbour, winter_in_berlin(2025, 3, 5, 9), "x " + neighbour)


class AmountTest(OracleTest):
    def test_leading_zeros(self):
        self.check_dated("x in 0000000000000000000000000000002 hours", winter_in_berlin(2025, 3, 4, 12), "x")

    def test_amount_beyond_64_bits(self):
        self.check_miss("in 9223372036854775808 days")
        self.check_miss("9223372036854775808 days from now")
        answer, steps = understand_with_steps("9223372036854775808 days from today", TUESDAY, BERLIN)
        self.assertIn(Step.AMOUNT_TOO_LARGE_REFUSED, steps)
        # The word alone is left for the day words.
        self.assertEqual(answer["title"], "9223372036854775808 days from")

    def test_offset_past_the_year_9999(self):
        self.check_miss("in 9223372036854775807 weeks")
        # From 4 March 2025 it is 303 days to the next year, then 7974 years with 1933 leap days to the year
        # 10000: 2912746 days.
        self.check_miss("in 2912746 days")
        self.check_dated("x in 2912745 days", winter_in_berlin(9999, 12, 31, 10), "x", "Fri Dec 31, 9999 10:00")

    def test_offset_counts_by_the_local_year(self):
        # The last hour of 9999 in New York is in the year 10000 in UTC, five hours ahead.
        ten_in_new_york = utc(2025, 3, 4, 15)
        last_hour = utc(9999, 12, 31, 23) + 5 * 3600
        hours = (last_hour - ten_in_new_york) // 3600
        self.check_dated(
            f"x in {hours} hours", last_hour, "x", "Fri Dec 31, 9999 23:00", now=ten_in_new_york, zone=NEW_YORK
        )
        self.check_miss(f"x in {hours + 1} hours", now=ten_in_new_york, zone=NEW_YORK)

    def test_day_past_the_year_9999_from_tomorrow_is_today(self):
        for amount in ("2912745 days", "416107 weeks", "9223372036854775807 weeks"):
            self.check_dated(f"x {amount} from tomorrow", winter_in_berlin(2025, 3, 4, 9), "x")


class ClockChangeTest(OracleTest):
    def test_skipped_wall_time_moves_forward(self):
        # Berlin went from 2:00 to 3:00 on 30 March 2025.
        saturday = winter_in_berlin(2025, 3, 29, 12)
        self.check_dated("x tomorrow 2:30am", utc(2025, 3, 30, 1, 30), "x", "Sun Mar 30, 2025 03:30", saturday)
        half_past_two = winter_in_berlin(2025, 3, 29, 2, 30)
        self.check_dated("x in 1 day", utc(2025, 3, 30, 1, 30), "x", "Sun Mar 30, 2025 03:30", half_past_two)
        summer_before = summer_in_berlin(2024, 10, 20, 2, 30)
        self.check_dated("x in 161 days", utc(2025, 3, 30, 1, 30), "x", "Sun Mar 30, 2025 03:30", summer_before)

    def test_hours_are_absolute(self):
        noon = winter_in_berlin(2025, 3, 29, 12)
        self.check_dated("x in 24 hours", utc(2025, 3, 30, 11), "x", "Sun Mar 30, 2025 13:00", noon)

    def test_repeated_wall_time_is_the_later_one(self):
        # Berlin went from 3:00 back to 2:00 on 26 October 2025, at 1:00 UTC.
        saturday = summer_in_berlin(2025, 10, 25, 12)
        self.check_dated("x tomorrow 2:30am", utc(2025, 10, 26, 1, 30), "x", "Sun Oct 26, 2025 02:30", saturday)
        # Ten minutes after the first 2:30 it is 2:40, which is read as the second 2:40.
        first_half_past_two = utc(2025, 10, 26, 0, 30)
        self.check_dated("x in 10 minutes", utc(2025, 10, 26, 1, 40), "x", now=first_half_past_two)
        self.check_dated("x in 0 minutes", utc(2025, 10, 26, 1, 30), "x", now=first_half_past_two)

    def test_midnight_that_does_not_exist(self):
        # São Paulo went from 0:00 to 1:00 on 4 November 2018.
        noon = utc(2018, 11, 3, 15)
        self.check_dated(
            "x tomorrow midnight", utc(2018, 11, 4, 3), "x", "Sun Nov 4, 2018 01:00", noon, SAO_PAULO
        )
        self.check_dated("x november 4", utc(2018, 11, 4, 11), "x", "Sun Nov 4, 2018 09:00", noon, SAO_PAULO)

    def test_change_of_half_an_hour(self):
        # Lord Howe Island went from 2:00 (10:30 ahead) to 2:30 (11:00 ahead) on 5 October 2025.
        noon = utc(2025, 10, 4, 1, 30)
        self.check_dated(
            "x tomorrow 2:15am", utc(2025, 10, 4, 15, 45), "x", "Sun Oct 5, 2025 02:45", noon, LORD_HOWE
        )

    def test_change_that_repeats_the_end_of_a_day(self):
        # At 0:01 on 7 November 2010 (2:30 behind) it became 23:01 of the day before (3:30 behind).
        noon = utc(2010, 11, 6, 14, 30)
        self.check_dated(
            "x today at 2330", utc(2010, 11, 7, 3), "x", "Sat Nov 6, 2010 23:30", noon, ST_JOHNS
        )

    def test_zone_without_clock_changes(self):
        ten = utc(2025, 3, 4, 4, 15)
        self.check_dated("x in 2 hours", utc(2025, 3, 4, 6, 15), "x", "Tue Mar 4, 2025 12:00", ten, KATHMANDU)


class RandomLinesTest(unittest.TestCase):
    def test_same_seed_gives_the_same_lines(self):
        self.assertEqual(list(random_lines(50, 11)), list(random_lines(50, 11)))
        self.assertNotEqual(list(random_lines(50, 11)), list(random_lines(50, 12)))

    def test_every_line_is_one_line_of_json_that_says_what_it_should(self):
        for line in random_lines(2000, 13):
            self.assertNotIn("\n", line.json)
            written = json.loads(line.json)
            self.assertEqual((written["text"], written["tz"], written["id"]), (line.text, line.zone, line.identifier))

    def test_clock_changes_are_known(self):
        # Berlin, 30 March 2025, 1:00 UTC, is the second to last change before 2026.
        self.assertEqual(clock_changes(BERLIN)[-2], utc(2025, 3, 30, 1))
        self.assertEqual(clock_changes(KATHMANDU), ())
        self.assertEqual(FIRST_INSTANT, utc(2005, 1, 1))
        self.assertGreaterEqual(sum(1 for zone in ZONES if clock_changes(zone)), 5)


if __name__ == "__main__":
    unittest.main()
