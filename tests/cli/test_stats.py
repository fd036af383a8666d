"""What comes of completing tasks: `quillo stats`, and the request for feedback."""

import json
import re
import time
import unittest

from quillo_command import SECONDS_FROM_1970_TO_2001, CommandTest, stored_task, unix_seconds

LIFETIME = "Quillo.stats.lifetime"
DAILY = "Quillo.stats.daily"
FASTEST = "Quillo.stats.fastest"
SLOWEST = "Quillo.stats.slowest"
AWARDS = "Quillo.stats.awards"
ENABLED = "Quillo.stats.enabled"
COUNTED_FOR_REVIEW = "Quillo.review.lifetimeCompletions"
LAST_ASKED_BY = "Quillo.review.lastPromptedVersion"
REVIEW_PENDING = "Quillo.linux.review.pending"

DAY = 86_400
AWARDS_IN_ORDER = [
    "lightningFast",
    "quickDraw",
    "longGame",
    "weekLongWinner",
    "monthlyMaven",
    "earlyBird",
    "nightOwl",
]
NOTHING = {
    "enabled": True,
    "today": 0,
    "thisWeek": 0,
    "allTime": 0,
    "streak": 0,
    "bestStreak": 0,
    "averageSeconds": None,
    "rank": "Tadpole",
    "progress": "0 tasks completed · 5 more to reach Hopper",
    "fastest": None,
    "slowest": None,
    "awards": [],
}


def hours_ahead_where_it_is(hour):
    """How far ahead of UTC, or behind it, it is that hour of the day now: from -10 to 13."""
    return (hour - time.gmtime().tm_hour + 10) % 24 - 10


def zone(hours_ahead):
    return f"Etc/GMT{-hours_ahead:+d}"


class StatsTest(CommandTest):
    """Takes place around noon, so that no day ends while a test runs."""

    def setUp(self):
        super().setUp()
        self.hours_ahead = hours_ahead_where_it_is(12)
        self.quillo.environment["TZ"] = zone(self.hours_ahead)

    def stats(self, **options):
        return self.done("stats", "--json", **options).json

    def put_record(self, key, title, seconds, completed_at):
        record = {
            "title": title,
            "durationSeconds": seconds,
            "completedAt": completed_at - SECONDS_FROM_1970_TO_2001,
        }
        self.quillo.put(key, "data", json.dumps(record).encode())

    def put_days(self, counts):
        """Writes how many tasks were completed so many days ago."""
        today = time.time() + self.hours_ahead * 3600
        days = {time.strftime("%Y-%m-%d", time.gmtime(today - ago * DAY)): count for ago, count in counts.items()}
        self.quillo.put(DAILY, "data", json.dumps(days).encode())

    def complete(self, count):
        for _ in range(count):
            self.done("add", "task")
            self.done("done", "1")


class Json(StatsTest):
    def test_of_the_very_beginning(self):
        answer = self.done("stats", "--json")
        self.assertEqual(answer.json, NOTHING)
        self.assertEqual(list(answer.json), list(NOTHING))
        self.assertEqual(answer.output, json.dumps(NOTHING, indent=2, ensure_ascii=False) + "\n")
        self.assertEqual(list(self.folder.iterdir()), [])

    def test_of_one_completion(self):
        before = time.time()
        created = self.done("add", "--json", "Buy milk").json["createdAt"]
        self.done("done", "1")
        after = time.time()
        stats = self.stats()
        self.assertEqual(list(stats), list(NOTHING))
        self.assertEqual(
            {key: stats[key] for key in ("enabled", "today", "thisWeek", "allTime", "streak", "bestStreak", "rank")},
            {"enabled": True, "today": 1, "thisWeek": 1, "allTime": 1, "streak": 1, "bestStreak": 1, "rank": "Tadpole"},
        )
        self.assertEqual(stats["progress"], "1 tasks completed · 4 more to reach Hopper")
        self.assertEqual(stats["fastest"], stats["slowest"])
        record = stats["fastest"]
        self.assertEqual(list(record), ["title", "durationSeconds", "completedAt"])
        self.assertEqual(record["title"], "Buy milk")
        self.assertTrue(0 < record["durationSeconds"] <= after - before)
        self.assertEqual(stats["averageSeconds"], record["durationSeconds"])
        self.assertTrue(unix_seconds(created) <= unix_seconds(record["completedAt"]) <= after)
        self.assertEqual(record["completedAt"], self.quillo.tasks()[0]["completedAt"])
        self.assertEqual(stats["awards"], ["lightningFast", "quickDraw"])

    def test_numbers_are_those_of_the_stored_days(self):
        self.put_days({0: 2, 1: 1, 2: 4, 6: 8, 7: 16, 30: 32})
        self.quillo.put(LIFETIME, "integer", 999)
        stats = self.stats()
        self.assertEqual(
            {key: stats[key] for key in ("today", "thisWeek", "allTime", "streak", "bestStreak")},
            {"today": 2, "thisWeek": 15, "allTime": 999, "streak": 3, "bestStreak": 3},
        )
        self.assertEqual(
            (stats["rank"], stats["progress"]), ("Croak Master", "999 tasks completed · 1 more to reach Pondsmith")
        )
        self.quillo.put(LIFETIME, "integer", 1000)
        stats = self.stats()
        self.assertEqual(
            (stats["rank"], stats["progress"]), ("Pondsmith", "1000 tasks completed · top rank reached 👑")
        )

    def test_records_are_written_whole(self):
        title = 'quoted " \\ \n 漢字 🙂'
        self.put_record(FASTEST, title, 12.5, 1_772_719_200.9)
        self.put_record(SLOWEST, "slow", 1e9, -5.5)
        stats = self.stats()
        self.assertEqual(
            [stats["fastest"], stats["slowest"]],
            [
                {"title": title, "durationSeconds": 12.5, "completedAt": "2026-03-05T14:00:00Z"},
                {"title": "slow", "durationSeconds": 1e9, "completedAt": "1969-12-31T23:59:54Z"},
            ],
        )
        self.assertEqual(stats["averageSeconds"], (12.5 + 1e9) / 2)

    def test_awards_are_in_their_order(self):
        self.quillo.put(AWARDS, "data", json.dumps(AWARDS_IN_ORDER[::-1]).encode())
        self.assertEqual(self.stats()["awards"], AWARDS_IN_ORDER)

    def test_is_the_same_in_every_language_and_at_a_terminal(self):
        self.complete(1)
        expected = self.done("stats", "--json").output
        self.assertEqual(self.done("stats", "--json", environment={"LC_ALL": "ar_EG.UTF-8"}).output, expected)
        self.assertEqual(self.quillo.on_terminal("stats", "--json").output, expected)

    def test_today_is_the_users(self):
        early = hours_ahead_where_it_is(1)
        self.quillo.environment["TZ"] = zone(early)
        self.complete(1)
        self.assertEqual(self.stats()["today"], 1)
        self.assertEqual(self.stats(environment={"TZ": zone(early - 2)})["today"], 0)
        self.assertEqual(self.stats()["awards"], ["lightningFast", "quickDraw", "earlyBird"])


class Readable(StatsTest):
    AT_THE_BEGINNING = """\
Today              0
This week          0
All time           0
Streak            0d
Best streak       0d
Avg time           -

Tadpole
0 tasks completed · 5 more to reach Hopper

No completions yet
Complete a few tasks to set a record

Awards
[ ] Lightning Fast: Done in under a minute
[ ] Quick Draw: Done in under five
[ ] Long Game: Patience pays off
[ ] Week-long Winner: Seven days in a row
[ ] Monthly Maven: Thirty days strong
[ ] Early Bird: Crushed before 8 AM
[ ] Night Owl: Burned the midnight oil
"""

    def put_a_good_run(self):
        self.put_days({n: 3 for n in range(40)})
        self.quillo.put(LIFETIME, "integer", 123)
        self.put_record(FASTEST, "Buy milk", 42.9, 1_772_719_200)
        self.put_record(SLOWEST, "Write the book", 2 * DAY + 4 * 3600 + 59, 1_772_719_200)
        self.quillo.put(AWARDS, "data", b'["monthlyMaven","lightningFast"]')

    def test_at_the_beginning(self):
        self.assertEqual(self.done("stats").output, self.AT_THE_BEGINNING)

    def test_later(self):
        self.put_a_good_run()
        self.assertEqual(
            self.done("stats").output,
            """\
Today              3
This week         21
All time         123
Streak           40d
Best streak      40d
Avg time       1d 2h

Bullfrog
123 tasks completed · 377 more to reach Croak Master

Fastest          42s  Buy milk
Slowest        2d 4h  Write the book

Awards
[x] Lightning Fast: Done in under a minute
[ ] Quick Draw: Done in under five
[ ] Long Game: Patience pays off
[ ] Week-long Winner: Seven days in a row
[x] Monthly Maven: Thirty days strong
[ ] Early Bird: Crushed before 8 AM
[ ] Night Owl: Burned the midnight oil
""",
        )

    def test_at_a_terminal_awards_that_were_not_earned_are_dim(self):
        self.put_a_good_run()
        plain = self.done("stats").output
        coloured = self.quillo.on_terminal("stats").output
        self.assertEqual(re.sub("\x1b\\[[02]m", "", coloured), plain)
        self.assertEqual(
            re.findall("\x1b\\[2m(.*?)\x1b\\[0m", coloured),
            [line for line in plain.splitlines() if line.startswith("[ ]")],
        )
        for environment in ({"NO_COLOR": "1"}, {"TERM": "dumb"}):
            self.assertEqual(self.quillo.on_terminal("stats", environment=environment).output, plain)

    def test_titles_cannot_drive_the_terminal_and_are_cut_at_its_edge(self):
        title = "\x1b[31mred\nline\u202e" + "x" * 300
        self.put_record(FASTEST, title, 1, 0)
        self.put_record(SLOWEST, title, 1, 0)
        answer = self.quillo.on_terminal("stats", columns=60, environment={"NO_COLOR": "1"})
        self.assert_fit_for_terminals(answer.output)
        for line in answer.lines:
            self.assertLessEqual(len(line), 60)
        output = self.done("stats").output
        self.assert_fit_for_terminals(output)
        self.assertEqual(output.count("x" * 300), 2)


class Counting(StatsTest):
    def test_each_completion_counts_once(self):
        self.complete(3)
        self.done("done", "1")  # It is done already.
        self.assertEqual([self.stats()[key] for key in ("today", "thisWeek", "allTime")], [3, 3, 3])

    def test_reopening_takes_nothing_back(self):
        self.complete(1)
        self.done("undone", "1")
        self.assertEqual(self.stats()["allTime"], 1)
        self.done("done", "1")
        self.assertEqual(self.stats()["allTime"], 2)

    def test_neither_deleting_nor_clearing_changes_anything(self):
        self.complete(2)
        before = self.stats()
        self.done("delete", "1")
        self.done("clear-completed")
        self.assertEqual(self.stats(), before)

    def test_a_task_that_took_long(self):
        age = 8 * DAY + 5 * 3600
        self.quillo.put_items(
            {**stored_task(1, "old"), "createdAt": time.time() - SECONDS_FROM_1970_TO_2001 - age}
        )
        self.done("done", "1")
        stats = self.stats()
        self.assertIn("longGame", stats["awards"])
        self.assertAlmostEqual(stats["slowest"]["durationSeconds"], age, delta=60)
        self.assertIn("Slowest        8d 5h  old\n", self.done("stats").output)

    def test_nothing_is_counted_while_statistics_are_off(self):
        self.complete(1)
        self.quillo.put(ENABLED, "boolean", 0)
        before = self.stats()
        self.assertFalse(before["enabled"])
        self.complete(1)
        self.assertEqual(self.stats(), before)
        self.assertEqual(self.done("stats").lines[:2], ["Statistics are off: nothing is counted.", ""])
        self.quillo.put(ENABLED, "boolean", 1)
        self.complete(1)
        self.assertEqual(self.stats()["allTime"], 2)

    def test_only_a_boolean_switches_them_off(self):
        for word, value in (("integer", 0), ("string", "false"), ("data", b"\0")):
            self.quillo.put(ENABLED, word, value)
            self.assertTrue(self.stats()["enabled"], word)

    def test_damaged_values_count_as_absent_and_are_kept(self):
        damage = b'{"2026-'
        for key in (DAILY, FASTEST, SLOWEST, AWARDS):
            self.quillo.put(key, "data", damage)
        self.quillo.put(LIFETIME, "integer", 41)
        answer = self.quillo("stats", "--json")
        self.assertEqual(answer.code, 0)
        self.assertEqual({**answer.json, "allTime": 0, "rank": "Tadpole", "progress": NOTHING["progress"]}, NOTHING)
        self.assertEqual(answer.json["allTime"], 41)

        self.done("add", "task")
        self.assertEqual(self.quillo("done", "1").code, 0)
        self.assertEqual(self.stats()["allTime"], 42)
        kept = {name.split("Z-", 1)[1]: content for name, content in self.quillo.files().items() if "damaged-" in name}
        self.assertEqual(kept, dict.fromkeys((DAILY, FASTEST, SLOWEST, AWARDS), damage))


class Feedback(StatsTest):
    def review(self):
        """What is stored about asking for feedback, without the words for its types."""
        return {
            key: value
            for key, (_, value) in self.quillo.preferences().items()
            if key in (COUNTED_FOR_REVIEW, LAST_ASKED_BY, REVIEW_PENDING)
        }

    def version(self):
        return self.done("version").output.split()[1]

    def test_the_fifth_completion_asks_once(self):
        self.complete(4)
        self.assertEqual(self.review(), {COUNTED_FOR_REVIEW: 4})
        self.complete(1)
        asked = {COUNTED_FOR_REVIEW: 5, LAST_ASKED_BY: self.version(), REVIEW_PENDING: 1}
        self.assertEqual(self.review(), asked)
        self.assertEqual(self.quillo.preferences()[REVIEW_PENDING], ("boolean", 1))
        self.complete(1)
        self.assertEqual(self.review(), {**asked, COUNTED_FOR_REVIEW: 6})

    def test_a_version_that_asked_before_does_not_ask_again(self):
        self.quillo.put(LAST_ASKED_BY, "string", self.version())
        self.complete(5)
        self.assertNotIn(REVIEW_PENDING, self.review())

    def test_asks_whatever_becomes_of_the_statistics(self):
        self.quillo.put(ENABLED, "boolean", 0)
        self.complete(5)
        self.assertEqual(self.review()[REVIEW_PENDING], 1)

    def test_what_is_done_already_is_no_completion(self):
        self.complete(4)
        self.done("done", "1")
        self.assertEqual(self.review(), {COUNTED_FOR_REVIEW: 4})


class Quitting(CommandTest):
    def test_where_nobody_runs_there_is_nothing_to_do(self):
        self.assertEqual(self.done("quit").output, "")
        self.assertEqual(list(self.folder.iterdir()), [])
        self.quillo.put_items(stored_task(1, "task"))
        before = self.quillo.files()
        self.assertEqual(self.done("quit").output, "")
        self.assertEqual(self.quillo.files(), before)


if __name__ == "__main__":
    unittest.main()
