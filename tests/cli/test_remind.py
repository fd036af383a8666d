"""The command that gives a task another due date: `quillo remind`, and the book of reminders that it writes."""

import json
import time
import unittest

from quillo_command import SECONDS_FROM_1970_TO_2001, CommandTest, stored_task, unix_seconds

BOOK = "Quillo.linux.reminders.v1"
DAY = 86_400


class RemindTest(CommandTest):
    def book(self):
        """{identifier: reminder}"""
        if BOOK not in self.quillo.preferences():
            return {}
        word, value = self.quillo.preferences()[BOOK]
        self.assertEqual(word, "data")
        return {reminder["identifier"]: reminder for reminder in json.loads(value)}

    def assert_reminded(self, task):
        """The task, as `list --json` shows it, has exactly one reminder: that of its title and due date."""
        identifier = "quillo." + task["id"]
        self.assertEqual(task["notificationID"], identifier)
        self.assertEqual(list(self.book()), [identifier])
        reminder = self.book()[identifier]
        self.assertEqual((reminder["title"], reminder["body"]), ("Quillo", task["title"]))
        due = unix_seconds(task["dueDate"])
        self.assertEqual(reminder["dueDate"] + SECONDS_FROM_1970_TO_2001, due)
        minute = [reminder[key] for key in ("year", "month", "day", "hour", "minute")]
        self.assertEqual(minute, list(time.gmtime(due)[:5]))


class Setting(RemindTest):
    def setUp(self):
        super().setUp()
        self.quillo.environment["TZ"] = "UTC"

    def test_gives_a_task_a_date_and_a_reminder(self):
        self.done("add", "Call mom")
        before = time.time()
        answer = self.done("remind", "1", "in 2 hours")
        after = time.time()
        (task,) = self.quillo.tasks()
        due = unix_seconds(task["dueDate"])
        self.assertTrue(before + 7200 - 60 < due <= after + 7200, due)
        self.assertEqual(answer.output, "Call mom  " + time.strftime("%b %-d, %Y at %-I:%M %p\n", time.gmtime(due)))
        self.assert_reminded(task)

    def test_its_words_need_no_quotes(self):
        self.done("add", "Call mom")
        answer = self.done("remind", "1", "tomorrow", "at", "9", "am")
        self.assertIn(" at 9:00 AM", answer.output)
        self.assert_reminded(self.quillo.tasks()[0])

    def test_moves_a_date_and_its_reminder(self):
        first = self.done("add", "--json", "Call mom in 2 days").json
        self.done("remind", "1", "in 3 days")
        (task,) = self.quillo.tasks()
        moved = unix_seconds(task["dueDate"]) - unix_seconds(first["dueDate"])
        self.assertTrue(DAY - 60 < moved <= DAY + 60 * 60, moved)
        self.assertEqual({**task, "dueDate": None}, {**first, "dueDate": None})
        self.assert_reminded(task)

    def test_changes_nothing_but_the_date(self):
        self.done("add", "lunch tomorrow, at noon, with Sam")
        (before,) = self.quillo.tasks()
        self.done("remind", "1", "in 5 days")
        (after,) = self.quillo.tasks()
        self.assertEqual({**after, "dueDate": None}, {**before, "dueDate": None})
        self.assertNotEqual(after["dueDate"], before["dueDate"])

    def test_a_task_may_be_named_by_its_identifier(self):
        identifier = self.done("add", "--json", "Call mom").json["id"]
        self.done("add", "another")
        self.done("remind", identifier[:8], "tomorrow")
        self.assertIn("dueDate", self.quillo.tasks()[1])
        self.assertNotIn("dueDate", self.quillo.tasks()[0])

    def test_a_date_that_has_passed_is_kept_and_nobody_reminded(self):
        self.done("add", "Call mom in 2 days")
        self.done("remind", "1", "today", "at", "midnight")
        (task,) = self.quillo.tasks()
        self.assertLess(unix_seconds(task["dueDate"]), time.time())
        self.assertNotIn("notificationID", task)
        self.assertEqual(self.book(), {})

    def test_nobody_is_reminded_of_a_task_that_is_done(self):
        self.done("add", "Call mom")
        self.done("done", "1")
        self.assertRegex(self.done("remind", "1", "tomorrow").output, r"\ACall mom  .+ at 9:00 AM\n\Z")
        (task,) = self.quillo.tasks()
        self.assertTrue(task["isDone"])
        self.assertIn("dueDate", task)
        self.assertNotIn("notificationID", task)
        self.assertEqual(self.book(), {})

    def test_completing_deleting_and_clearing_take_the_reminder_back(self):
        for words in (["done", "1"], ["delete", "1"]):
            with self.subTest(words):
                self.done("add", "Call mom")
                self.done("remind", "1", "tomorrow")
                self.assertEqual(len(self.book()), 1)
                self.done(*words)
                self.assertEqual(self.book(), {})
                self.done("clear-completed")

    def test_means_the_day_of_where_it_is_typed(self):
        zone = {"TZ": "Asia/Tokyo"}
        self.done("add", "Call mom")
        self.assertIn(" at 9:00 AM", self.done("remind", "1", "tomorrow", environment=zone).output)
        due = time.gmtime(unix_seconds(self.quillo.tasks()[0]["dueDate"]))
        self.assertEqual((due.tm_hour, due.tm_min), (0, 0))

    def test_answers_in_the_language_of_who_asks(self):
        self.done("add", "Call mom")
        answer = self.done("remind", "1", "tomorrow", environment={"LC_ALL": "de_DE.UTF-8"})
        self.assertRegex(answer.output, r"\ACall mom  \d\d\.\d\d\.\d{4} um 09:00\n\Z")


class Clearing(RemindTest):
    def test_takes_date_and_reminder_away(self):
        self.done("add", "Call mom tomorrow")
        self.assertEqual(len(self.book()), 1)
        for words in (["remind", "1", "--clear"], ["remind", "--clear", "1"]):
            self.assertEqual(self.done(*words).output, "Call mom\n")
            (task,) = self.quillo.tasks()
            self.assertEqual(set(task), {"createdAt", "id", "isDone", "number", "title"})
            self.assertEqual(self.book(), {})

    def test_writes_nothing_where_there_is_no_date(self):
        self.done("add", "Call mom")
        before = self.quillo.files()
        self.assertEqual(self.done("remind", "1", "--clear").output, "Call mom\n")
        self.assertEqual(self.quillo.files(), before)

    def test_of_a_done_task_too(self):
        self.quillo.put_items(stored_task(1, "done", done=True, due=time.time() + DAY))
        self.done("remind", "1", "--clear")
        self.assertNotIn("dueDate", self.quillo.tasks()[0])


class Refusing(RemindTest):
    def setUp(self):
        super().setUp()
        self.done("add", "Call mom tomorrow")

    def test_what_is_no_date_and_writes_nothing(self):
        before = self.quillo.files()
        for when in ("soon", "", " ", "Buy milk", "the 15 reports", "25:00", "\u3000", "x" * 10_000):
            with self.subTest(when[:20]):
                answer = self.quillo("remind", "1", when)
                self.assert_refused(answer, 1)
                self.assertIn("no date", answer.errors)
        self.assertEqual(self.quillo.files(), before)

    def test_a_task_that_is_not_there(self):
        before = self.quillo.files()
        for words in (["remind", "7", "tomorrow"], ["remind", "7", "--clear"], ["remind", "ABCDEF01", "tomorrow"]):
            with self.subTest(words):
                self.assert_refused(self.quillo(*words), 1)
        self.assertEqual(self.quillo.files(), before)


class DamagedBook(RemindTest):
    def test_is_no_obstacle(self):
        """The book is worth no more than the list: whatever is in it, the next reminder is booked."""
        for word, value in (
            ("data", b"[{broken"),
            ("data", b"null"),
            ("data", b'[{"identifier":1}]'),
            ("data", b"\x00" * 1000),
            ("string", "[]"),
            ("integer", 5),
        ):
            with self.subTest(word=word, value=value):
                self.quillo.put_items(stored_task(1, "Call mom"))
                self.quillo.put(BOOK, word, value)
                self.assertEqual(self.quillo("remind", "1", "tomorrow").code, 0)
                (task,) = self.quillo.tasks()
                self.assertEqual(list(self.book()), [task["notificationID"]])


if __name__ == "__main__":
    unittest.main()
