"""The earlier lists that are kept, and how to get one back: `quillo restore`."""

import unittest

from desktop_program import desktop_program, wait_until
from quillo_command import ITEMS, CommandTest, stored_task

KEPT_LISTS = 10


class RestoreTest(CommandTest):
    def listed(self):
        """[(number, what is said of its contents)] of the lists that are kept."""
        lines = self.done("restore").lines
        for line in lines:
            self.assertRegex(line, r"\A ?\d+  [A-Z][a-z]{2} \d+, \d{4} at \d+:\d\d [AP]M +\S")
        return [(int(line.split()[0]), line.split("M ", 1)[1].strip()) for line in lines]

    def contents(self):
        return [text for _, text in self.listed()]

    def backups(self):
        return sorted((self.quillo.folder / "backups").iterdir())


class Listing(RestoreTest):
    def test_nothing_kept_is_nothing_listed(self):
        self.assertEqual(self.done("restore").output, "")
        self.assertEqual(list(self.folder.iterdir()), [])
        self.assertEqual(self.quillo.on_terminal("restore").output, "No earlier list is kept.\n")

    def test_names_the_latest_first_and_says_what_is_in_it(self):
        self.quillo.put_items(*(stored_task(n, f"t{n}", done=n == 3) for n in range(4)))
        self.done("delete", "1")
        self.done("delete", "1")
        self.done("clear-completed")
        self.assertEqual(
            self.listed(),
            [
                (1, "2 tasks, 1 of them done; gone since: t3"),
                (2, "3 tasks, 1 of them done; gone since: t1, t3"),
                (3, "4 tasks, 1 of them done; gone since: t0, t1, t3"),
            ],
        )

    def test_names_no_more_than_three_of_what_is_gone(self):
        self.quillo.put_items(*(stored_task(n, f"t{n}", done=n < 5) for n in range(6)))
        self.done("clear-completed")
        self.assertEqual(self.contents(), ["6 tasks, 5 of them done; gone since: t0, t1, t2, and 2 more"])

    def test_what_came_back_is_not_gone(self):
        self.done("add", "one")
        self.done("delete", "1")
        self.done("restore", "1")
        self.assertEqual(self.contents(), ["1 task"])

    def test_says_when_each_was_replaced(self):
        folder = self.quillo.folder / "backups"
        folder.mkdir(parents=True)
        for name in ("20250304T084100.250Z", "20251231T230000.000Z", "20250704T123000.000Z"):
            (folder / f"{name}.json").write_text("[]")
        self.assertEqual(
            self.done("restore").output,
            " 1  Jan 1, 2026 at 12:00 AM  0 tasks\n"
            " 2  Jul 4, 2025 at 2:30 PM   0 tasks\n"
            " 3  Mar 4, 2025 at 9:41 AM   0 tasks\n",
        )
        german = self.done("restore", environment={"LC_ALL": "de_DE.UTF-8", "TZ": "UTC"}).lines
        self.assertEqual(german[2], " 3  04.03.2025 um 08:41  0 tasks")

    def test_numbers_line_up(self):
        self.quillo.put_items(*(stored_task(n, f"t{n}") for n in range(12)))
        for _ in range(12):
            self.done("delete", "1")
        lines = self.done("restore").lines
        self.assertEqual([line[:4] for line in lines], [f"{n:2}  " for n in range(1, KEPT_LISTS + 1)])

    def test_a_list_that_cannot_be_read_is_said_to_be_so(self):
        self.quillo.put_items(*(stored_task(n, f"t{n}") for n in range(7)))
        for _ in range(7):
            self.done("delete", "1")
        damages = (b"", b"[{broken", b"{}", b"\x00" * 1000, b'[{"id":1}]')
        for path, damage in zip(self.backups(), damages):
            path.write_bytes(damage)
        self.assertEqual([text == "cannot be read" for text in self.contents()], [False] * 2 + [True] * len(damages))

    def test_titles_cannot_drive_the_terminal(self):
        self.quillo.put_items(stored_task(1, "\x1b[31mred\nline\u202e" + "x" * 300))
        self.done("delete", "1")
        answer = self.quillo.on_terminal("restore", columns=60)
        self.assertEqual((answer.code, answer.errors), (0, ""))
        self.assert_fit_for_terminals(answer.output)
        (line,) = answer.lines
        self.assertEqual(len(line), 60)
        self.assertTrue(line.endswith("…"), line)
        self.assertIn("x" * 300, self.done("restore").output)

    def test_works_where_the_present_list_is_lost(self):
        self.done("add", "one")
        self.done("delete", "1")
        self.done("add", "two")
        self.quillo.put(ITEMS, "data", b"[{broken")
        answer = self.quillo("restore")
        self.assertEqual(answer.code, 0)
        self.assertIn("1 task; gone since: one", answer.output)
        self.quillo.database.write_bytes(b"This is no database. " * 100)
        answer = self.quillo("restore")
        self.assertEqual(answer.code, 0)
        self.assertRegex(answer.output, r"\A 1  .*  1 task\n\Z")


class Restoring(RestoreTest):
    def test_brings_a_list_back_whole(self):
        self.done("add", "Call mom in 2 days")
        self.done("add", "Buy milk")
        self.done("done", "1")
        before = self.quillo.stored_items()
        self.done("delete", "2")
        self.done("clear-completed")
        self.assertEqual(self.quillo.tasks(), [])

        self.assertEqual(self.done("restore", "2").output, "2 tasks, 1 of them done\n")
        self.assertEqual(self.quillo.stored_items(), before)

    @unittest.skipUnless(desktop_program(), "the desktop program sees to it, at the latest when it starts")
    def test_a_task_that_comes_back_is_reminded_of_again(self):
        def booked():
            return self.quillo.preferences().get("Quillo.linux.reminders.v1")

        self.done("add", "Call mom in 2 days")
        before = booked()
        self.done("delete", "1")
        self.assertNotEqual(booked(), before)
        self.done("restore", "1")
        wait_until(lambda: booked() == before, "the reminder is booked")

    def test_what_it_replaced_is_kept_in_turn(self):
        self.done("add", "one")
        self.done("delete", "1")
        self.done("add", "two")
        self.assertEqual(self.done("restore", "1").output, "1 task\n")
        self.assertEqual(self.quillo.titles(), ["one"])
        self.assertEqual(self.contents(), ["1 task; gone since: two", "1 task"])
        self.done("restore", "1")
        self.assertEqual(self.quillo.titles(), ["two"])
        self.assertEqual(self.contents(), ["1 task; gone since: one", "1 task", "1 task; gone since: one"])

    def test_the_oldest_one_can_be_brought_back(self):
        self.quillo.put_items(*(stored_task(n, f"t{n}") for n in range(KEPT_LISTS + 1)))
        for _ in range(KEPT_LISTS):
            self.done("delete", "1")
        self.done("restore", str(KEPT_LISTS))
        self.assertEqual(self.quillo.titles(), [f"t{n}" for n in range(KEPT_LISTS + 1)])
        self.assertEqual(len(self.backups()), KEPT_LISTS)

    def test_takes_a_new_stamp(self):
        self.done("add", "one")
        self.done("delete", "1")
        before = self.quillo.stamp()
        self.done("restore", "1")
        self.assertGreater(self.quillo.stamp(), before)

    def test_counts_no_completions(self):
        self.done("add", "one")
        self.done("done", "1")
        self.done("clear-completed")
        self.done("restore", "1")
        self.assertEqual(self.done("stats", "--json").json["allTime"], 1)

    def test_what_was_damaged_is_put_aside_first(self):
        self.done("add", "one")
        self.done("delete", "1")
        self.quillo.put(ITEMS, "data", b"[{broken")
        self.assertEqual(self.quillo("restore", "1").code, 0)
        self.assertEqual(self.quillo.titles(), ["one"])
        (aside,) = [content for name, content in self.quillo.files().items() if name.startswith("damaged-")]
        self.assertEqual(aside, b"[{broken")

    def test_refuses_what_is_not_there_and_changes_nothing(self):
        self.done("add", "one")
        self.done("add", "two")
        self.done("delete", "1")
        before = self.quillo.files()
        for number in ("0", "2", "99", "-1", "+1", "1.0", "1x", "one", "", " 1", "18446744073709551617", "١"):
            with self.subTest(number):
                answer = self.quillo("restore", "--", number)
                self.assert_refused(answer, 1)
                self.assertIn(number, answer.errors)
        self.assertEqual(self.quillo.files(), before)

    def test_refuses_where_nothing_is_kept(self):
        self.done("add", "one")
        answer = self.quillo("restore", "1")
        self.assert_refused(answer, 1)
        self.assertIn("none is kept", answer.errors)

    def test_refuses_a_list_that_cannot_be_read_and_changes_nothing(self):
        self.done("add", "one")
        self.done("delete", "1")
        self.quillo.let_go()
        (path,) = self.backups()
        for damage in (b"", b"[{broken", b"{}", b"\x00" * 1000):
            with self.subTest(damage[:10]):
                path.write_bytes(damage)
                before = self.quillo.files()
                self.assert_refused(self.quillo("restore", "1"), 1)
                self.assertEqual(self.quillo.files(), before)


if __name__ == "__main__":
    unittest.main()
