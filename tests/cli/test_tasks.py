"""The commands that show and change the list: add, list, done, undone, edit, delete, clear-completed."""

import json
import os
import signal
import time
import unittest

from quillo_command import (
    LONGEST_ARGUMENT,
    CommandTest,
    stored_task,
    unix_seconds,
    width,
)

MARCH_5_2025_AT_9 = 1_741_161_600  # in Berlin

UNUSUAL_TEXTS = [
    "[x]",
    "[ ] box",
    "-5",
    "--json",
    "--",
    "a -- b",
    "%s %n %d %%",
    "'single' \"double\" `back` $(echo) $HOME \\n \\",
    "<b>&amp;</b>",
    "🙂 👩‍👩‍👧 🇩🇪",
    "שלום עולם",
    "مرحبا بالعالم",
    "漢字かな交じり",
    "e\u0301 combining",
    "\u0130stanbul \u1e9e ſ",
    "a\u00a0b\u3000c",
    "x" * 1000,
    "null",
    "0",
    "\u200bzero\ufeffwidth",
    "\U0010fffd \ue000",
]

# Title as typed, and as it may be shown on one line.
DANGEROUS_TEXTS = [
    "\x1b[31mred\x1b[0m",
    "\x1b]0;window title\x07",
    "\x1b[2J\x1b[H cleared",
    "bell \x07 back \x08\x08\x08 delete \x7f",
    "\u009b31m eight-bit escape \u0090 \u009d",
    "first\nsecond",
    "first\r\nsecond",
    "over\rwritten",
    "tab\tvertical\x0bfeed\x0c",
    "\u2028line\u2029paragraph\u0085next",
    "\u202egnp.exe",
    "\u2066\u2067isolated",
    "\u200emarks\u200f",
    "\x01\x02\x03\x1c\x1d\x1e\x1f",
]


class Adding(CommandTest):
    def test_prints_title_and_due_date(self):
        before = time.time()
        answer = self.done("add", "Email Sam in 2 hours", environment={"TZ": "UTC"})
        after = time.time()

        (task,) = self.quillo.tasks()
        due = unix_seconds(task["dueDate"])
        self.assertTrue(before + 7200 - 60 < due <= after + 7200, due)
        self.assertEqual(due % 60, 0)
        shown_due = time.strftime("%b %-d, %Y at %-I:%M %p", time.gmtime(due))
        self.assertEqual(answer.output, f"Email Sam  {shown_due}\n")

    def test_prints_only_the_title_where_nothing_is_due(self):
        self.assertEqual(self.done("add", "Buy milk").output, "Buy milk\n")

    def test_joins_its_words_with_blanks(self):
        self.done("add", "Call", "mom", "about  the", "cake")
        self.assertEqual(self.quillo.titles(), ["Call mom about  the cake"])

    def test_json_is_the_exported_task_with_its_number(self):
        before = time.time()
        answer = self.done("add", "--json", "call", "mom", "in", "3", "days")
        task = answer.json
        self.assertEqual(
            list(task), ["createdAt", "dueDate", "id", "isDone", "notificationID", "number", "title"]
        )
        self.assertEqual(task["notificationID"], "quillo." + task["id"])
        self.assertEqual(answer.output, json.dumps(task, indent=2) + "\n")
        self.assertEqual((task["title"], task["isDone"], task["number"]), ("call mom", False, 1))
        self.assertRegex(task["id"], r"\A[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}\Z")
        self.assertTrue(int(before) <= unix_seconds(task["createdAt"]) <= time.time())
        self.assertEqual([task], self.quillo.tasks())

    def test_json_leaves_out_what_a_task_does_not_have(self):
        task = self.done("add", "Buy milk", "--json").json
        self.assertEqual(list(task), ["createdAt", "id", "isDone", "number", "title"])

    def test_two_dashes_end_the_options(self):
        self.done("add", "--", "--json", "is", "an", "option")
        self.done("add", "keep", "--", "-5", "--", "degrees")
        self.assertEqual(self.quillo.titles(), ["keep -5 -- degrees", "--json is an option"])

    def test_keeps_unusual_texts_as_they_are(self):
        for text in UNUSUAL_TEXTS:
            answer = self.done("add", "--", text)
            self.assertEqual(answer.output, text.translate({0xA0: " ", 0x3000: " "}) + "\n")
        self.assertEqual(self.quillo.titles(), UNUSUAL_TEXTS[::-1])

    def test_refuses_blank_texts(self):
        self.done("add", "there")
        before = self.quillo.files()
        for words in (["add", ""], ["add", " "], ["add", "", ""], ["add", "\t\n\r\u00a0\u2003\u2028"]):
            self.assert_refused(self.quillo(*words), 1)
        self.assertEqual(self.quillo.files(), before)

    def test_trims_white_space_around_the_text(self):
        self.done("add", " \t\u3000 Buy milk \n")
        self.assertEqual(self.quillo.titles(), ["Buy milk"])

    def test_falls_back_to_the_text_when_all_of_it_is_a_date(self):
        self.assertEqual(self.done("add", "--json", "tomorrow").json["title"], "tomorrow")

    def test_replaces_malformed_utf8_and_says_so(self):
        texts = {
            b"caf\xe9": "caf\ufffd",
            b"\xff\xfe two": "\ufffd\ufffd two",
            b"\xc0\xaf overlong": "\ufffd\ufffd overlong",
            b"\xed\xa0\x80 surrogate": "\ufffd\ufffd\ufffd surrogate",
            b"cut \xf0\x9f\x99": "cut \ufffd",
            b"\xf4\x90\x80\x80 beyond": "\ufffd\ufffd\ufffd\ufffd beyond",
        }
        for text, title in texts.items():
            with self.subTest(text):
                answer = self.quillo("add", "--json", text)
                self.assertEqual(answer.code, 0)
                self.assertEqual(answer.json["title"], title)
                self.assert_one_line(answer.errors)
                self.assertIn("U+FFFD", answer.errors)

    def test_takes_the_longest_argument_there_is(self):
        text = "é" * ((LONGEST_ARGUMENT - 1) // 2)
        self.done("add", text)
        self.assertEqual(self.quillo.titles(), [text])

    def test_takes_a_text_of_a_megabyte(self):
        words = [letter * 99_999 for letter in "abcdefghij"] + ["tomorrow", "at", "9am"]
        self.done("add", *words)
        (task,) = self.quillo.tasks()
        self.assertTrue(task["title"] == " ".join(words[:10]), len(task["title"]))
        self.assertIn("dueDate", task)
        self.done("done", "1")
        self.done("edit", "1", "--", *words[5:])
        self.assertTrue(self.quillo.titles() == [" ".join(words[5:])])


class Numbers(CommandTest):
    def test_the_newest_is_1_and_a_task_keeps_its_number_under_every_filter(self):
        for title in ("oldest", "second", "third", "newest"):
            self.done("add", title)
        self.done("done", "2")
        self.done("done", "4")

        def numbers(*options):
            return {task["title"]: task["number"] for task in self.done("list", "--json", *options).json}

        self.assertEqual(numbers("--all"), {"newest": 1, "third": 2, "second": 3, "oldest": 4})
        self.assertEqual(numbers(), {"newest": 1, "second": 3})
        self.assertEqual(numbers("--done"), {"third": 2, "oldest": 4})
        self.assertEqual(self.done("list").output, "1  [ ]  newest\n3  [ ]  second\n")
        self.assertEqual(self.done("list", "--done").output, "2  [x]  third\n4  [x]  oldest\n")

        self.done("done", "3")
        self.done("undone", "4")
        self.assertEqual(numbers(), {"newest": 1, "oldest": 4})

    def test_numbers_close_up_when_a_task_goes(self):
        for title in ("c", "b", "a"):
            self.done("add", title)
        self.assertEqual(self.done("delete", "2").output, "b\n")
        self.assertEqual(self.done("list").output, "1  [ ]  a\n2  [ ]  c\n")

    def test_what_is_no_number_of_a_task_is_refused(self):
        self.done("add", "only")
        before = self.quillo.files()
        unknown = ["0", "2", "-1", "1.0", "+1", "1x", "0x1", " 1", "1 ", "", "-", "one", "١", "18446744073709551617"]
        for command in (["done"], ["undone"], ["delete"], ["edit"]):
            for task in unknown:
                with self.subTest(command, task=task):
                    text = ["text"] if command == ["edit"] else []
                    self.assert_refused(self.quillo(*command, "--", task, *text), 1)
        self.assertEqual(self.quillo.files(), before)

    def test_a_refusal_says_which_task_there_is_not(self):
        self.done("add", "only")
        self.assertIn("7", self.quillo("done", "7").errors)


class Identifiers(CommandTest):
    def setUp(self):
        super().setUp()
        self.quillo.put_items(
            stored_task(1, "first", identifier="ABCDEF01-1111-4000-8000-000000000001"),
            stored_task(2, "second", identifier="ABCDEF01-1122-4000-8000-000000000002"),
            stored_task(3, "digits", identifier="12345678-0000-4000-8000-000000000003"),
        )

    def test_whole_identifiers_and_unique_prefixes_name_a_task(self):
        for task, title in {
            "ABCDEF01-1111-4000-8000-000000000001": "first",
            "abcdef01-1111-4000-8000-000000000001": "first",
            "ABCDEF01111140008000000000000001": "first",
            "ABCDEF01-112": "second",
            "aBcDeF01112": "second",
            "ABCDEF01-1122-": "second",
            "12345678": "digits",
            "12345678-": "digits",
        }.items():
            with self.subTest(task):
                self.assertEqual(self.done("edit", task, title).output, title + "\n")

    def test_a_prefix_of_several_tasks_is_refused(self):
        before = self.quillo.preferences()
        for task in ("ABCDEF01", "abcdef01-11"):
            self.assert_refused(self.quillo("done", task), 1)
        self.assertEqual(self.quillo.preferences(), before)

    def test_what_fits_no_task_is_refused(self):
        for task in (
            "ABCDEF0",  # too short
            "ABCDEF0-",
            "1234567",
            "ABCDEF02",
            "ABCDEF01-1111-4000-8000-0000000000011",  # too long
            "GGGGGGGG",
            "ABCDEF01 1111",
            "{ABCDEF01-1111-4000-8000-000000000001}",
            "first",
        ):
            with self.subTest(task):
                self.assert_refused(self.quillo("done", task), 1)


class Completing(CommandTest):
    def test_done_and_undone(self):
        self.done("add", "Buy milk")
        before = time.time()
        self.assertEqual(self.done("done", "1").output, "Buy milk\n")
        (task,) = self.quillo.tasks()
        self.assertTrue(task["isDone"])
        self.assertTrue(int(before) <= unix_seconds(task["completedAt"]) <= time.time())

        self.assertEqual(self.done("undone", "1").output, "Buy milk\n")
        (task,) = self.quillo.tasks()
        self.assertFalse(task["isDone"])
        self.assertNotIn("completedAt", task)

    def test_what_is_so_already_is_named_and_nothing_is_written(self):
        self.done("add", "open")
        self.done("add", "finished")
        self.done("done", "1")
        files, stamp = self.quillo.files(), self.quillo.stamp()
        changed_at = self.quillo.database.stat().st_mtime_ns
        self.assertEqual(self.done("done", "1").output, "finished\n")
        self.assertEqual(self.done("undone", "2").output, "open\n")
        self.assertEqual(self.quillo.files(), files)
        self.assertEqual(self.quillo.stamp(), stamp)
        self.assertEqual(self.quillo.database.stat().st_mtime_ns, changed_at)

    def test_a_done_task_stays_where_it_is(self):
        for title in ("c", "b", "a"):
            self.done("add", title)
        self.done("done", "2")
        self.assertEqual(self.done("list", "--all").output, "1  [ ]  a\n2  [x]  b\n3  [ ]  c\n")


class Editing(CommandTest):
    def test_takes_the_text_as_it_stands(self):
        self.done("add", "call mom tomorrow at 9am")
        (before,) = self.quillo.tasks()
        self.assertEqual(self.done("edit", "1", "tomorrow", "in 2 hours,").output, "tomorrow in 2 hours,\n")
        (after,) = self.quillo.tasks()
        self.assertEqual(after, {**before, "title": "tomorrow in 2 hours,"})

    def test_leaves_a_done_task_done(self):
        self.done("add", "a")
        self.done("done", "1")
        (before,) = self.quillo.tasks()
        self.done("edit", "1", "b")
        self.assertEqual(self.quillo.tasks(), [{**before, "title": "b"}])

    def test_refuses_blank_texts_and_keeps_the_title(self):
        self.done("add", "a")
        before = self.quillo.files()
        for text in ("", "  ", "\n\u3000"):
            self.assert_refused(self.quillo("edit", "1", text), 1)
        self.assertEqual(self.quillo.files(), before)

    def test_keeps_unusual_texts_as_they_are(self):
        self.done("add", "a")
        for text in UNUSUAL_TEXTS:
            with self.subTest(text):
                self.done("edit", "1", "--", text)
                self.assertEqual(self.quillo.titles(), [text])

    def test_replaces_malformed_utf8_and_says_so(self):
        self.done("add", "a")
        answer = self.quillo("edit", "1", b"caf\xe9")
        self.assertEqual((answer.code, answer.output), (0, "caf\ufffd\n"))
        self.assert_one_line(answer.errors)


class Removing(CommandTest):
    def test_delete_prints_what_it_deleted(self):
        self.done("add", "keep")
        self.done("add", "go tomorrow")
        self.assertEqual(self.done("delete", "1").output, "go\n")
        self.assertEqual(self.quillo.titles(), ["keep"])

    def test_clear_completed_prints_what_it_deleted_and_keeps_the_rest_in_order(self):
        for title in ("e", "d", "c", "b", "a"):
            self.done("add", title)
        self.done("done", "2")
        self.done("done", "4")
        self.assertEqual(self.done("clear-completed").output, "b\nd\n")
        self.assertEqual(self.quillo.titles(), ["a", "c", "e"])

    def test_clear_completed_without_done_tasks_prints_nothing(self):
        self.done("add", "a")
        self.assertEqual(self.done("clear-completed").output, "")
        self.assertEqual(self.quillo.titles(), ["a"])


class Listing(CommandTest):
    def test_an_empty_list(self):
        self.assertEqual(self.done("list").output, "")
        self.assertEqual(self.done("list", "--json").output, "[]\n")
        self.assertFalse(self.quillo.folder.exists())

    def test_json_holds_the_exported_tasks_with_their_numbers(self):
        self.quillo.put_items(
            stored_task(1, "open 🙂", due=MARCH_5_2025_AT_9 + 59.9),
            stored_task(2, "finished", done=True),
            {**stored_task(3, "reminded"), "notificationID": "quillo.3"},
        )
        answer = self.done("list", "--all", "--json")
        self.assertEqual(
            answer.json,
            [
                {
                    "createdAt": "2025-02-23T10:40:01Z",
                    "dueDate": "2025-03-05T08:00:59Z",
                    "id": "00000001-0000-4000-8000-000000000000",
                    "isDone": False,
                    "number": 1,
                    "title": "open 🙂",
                },
                {
                    "completedAt": "2025-02-24T14:26:42Z",
                    "createdAt": "2025-02-23T10:40:02Z",
                    "id": "00000002-0000-4000-8000-000000000000",
                    "isDone": True,
                    "number": 2,
                    "title": "finished",
                },
                {
                    "createdAt": "2025-02-23T10:40:03Z",
                    "id": "00000003-0000-4000-8000-000000000000",
                    "isDone": False,
                    "notificationID": "quillo.3",
                    "number": 3,
                    "title": "reminded",
                },
            ],
        )
        # Sorted keys, two blanks a level: the text itself, not only its meaning.
        self.assertEqual(answer.output, json.dumps(answer.json, indent=2, ensure_ascii=False) + "\n")
        self.assertEqual(
            [task["title"] for task in self.done("list", "--done", "--json").json], ["finished"]
        )

    def test_columns_line_up_whatever_the_titles_hold(self):
        titles = ["plain", "漢字かな", "e\u0301e\u0301e\u0301", "ｆｕｌｌ", "שלום", "a\u200bb", "🙂", "a\nb"] + ["x"] * 3
        self.quillo.put_items(
            *(stored_task(n, title, due=MARCH_5_2025_AT_9, done=n % 2 == 0) for n, title in enumerate(titles))
        )
        lines = self.done("list", "--all").lines
        self.assertEqual(len(lines), len(titles))
        for number, line in enumerate(lines, 1):
            self.assertRegex(line, rf"\A {{0,1}}{number}  \[[ x]\]  \S.*  Mar 5, 2025 at 9:00 AM\Z")
        columns = {(line.index("["), width(line[: line.index("Mar")])) for line in lines}
        self.assertEqual(len(columns), 1, columns)

    def test_a_title_never_touches_its_due_date(self):
        self.quillo.put_items(
            *(
                stored_task(n, "w" * length, due=MARCH_5_2025_AT_9)
                for n, length in enumerate((1, 58, 59, 60, 61, 62, 63, 100, 1000))
            )
        )
        for line in self.done("list").lines:
            self.assertRegex(line, r"w  +Mar 5, 2025 at 9:00 AM\Z")

    def test_titles_are_never_cut_off_a_terminal(self):
        self.done("add", "y" * 5000)
        self.assertEqual(self.done("list").output, "1  [ ]  " + "y" * 5000 + "\n")

    def test_nothing_that_drives_a_terminal_is_shown(self):
        for text in DANGEROUS_TEXTS:
            with self.subTest(text):
                self.quillo.put_items(stored_task(1, text), stored_task(2, text, done=True))
                answers = [
                    self.done("add", "--", "x" + text),
                    self.done("list", "--all"),
                    self.done("done", "2"),
                    self.done("undone", "2"),
                    self.done("remind", "2", "--clear"),
                    self.done("edit", "1", "--", "y" + text),
                    self.done("delete", "1"),
                    self.done("clear-completed"),
                    self.done("restore"),
                ]
                self.assertEqual([len(answer.lines) for answer in answers[:-1]], [1, 3, 1, 1, 1, 1, 1, 1])
                for answer in answers:
                    self.assert_fit_for_terminals(answer.output)
                self.assertEqual(self.quillo.titles(), [text])

    def test_all_and_done_exclude_each_other(self):
        self.assert_refused(self.quillo("list", "--all", "--done"), 2)


class OnATerminal(CommandTest):
    DIM = "\x1b[2m"
    RED = "\x1b[31m"
    PLAIN = "\x1b[0m"

    def setUp(self):
        super().setUp()
        self.quillo.put_items(
            stored_task(1, "late", due=MARCH_5_2025_AT_9),
            stored_task(2, "done late", done=True, due=MARCH_5_2025_AT_9),
            stored_task(3, "far", due=MARCH_5_2025_AT_9 + 100 * 365 * 86_400),
        )

    def shown(self, *options, **terminal):
        answer = self.quillo.on_terminal("list", *options, **terminal)
        self.assertEqual((answer.code, answer.errors), (0, ""))
        return answer.output

    def test_what_is_done_is_dim_and_what_is_late_is_red(self):
        late, done_late, far = self.shown("--all").splitlines()
        self.assertIn(self.RED + "Mar 5, 2025 at 9:00 AM" + self.PLAIN, late)
        self.assertIn(self.DIM + "done late" + self.PLAIN, done_late)
        self.assertNotIn(self.RED, done_late)
        self.assertNotIn(self.RED, far)

    def test_colours_stay_away_where_they_are_not_wanted(self):
        self.assertIn("\x1b", self.shown("--all"))
        for environment in ({"NO_COLOR": "1"}, {"NO_COLOR": "0"}, {"TERM": "dumb"}):
            self.assertNotIn("\x1b", self.shown("--all", environment=environment), environment)
        self.assertIn("\x1b", self.shown("--all", environment={"NO_COLOR": ""}))
        self.assertNotIn("\x1b", self.done("list", "--all").output)

    def test_without_colours_the_columns_are_the_same(self):
        plain = self.shown("--all", environment={"NO_COLOR": "1"})
        coloured = self.shown("--all")
        for code in (self.DIM, self.RED, self.PLAIN):
            coloured = coloured.replace(code, "")
        self.assertEqual(coloured, plain)

    def test_long_titles_are_cut_at_the_edge_with_an_ellipsis(self):
        titles = ["w" * 300, "漢字" * 100, "e\u0301" * 300]
        self.quillo.put_items(*(stored_task(n, title, due=MARCH_5_2025_AT_9) for n, title in enumerate(titles)))
        for columns in (50, 51, 72, 80):
            for line in self.shown(columns=columns, environment={"NO_COLOR": "1"}).splitlines():
                self.assertRegex(line, r"…  ? ?Mar 5, 2025 at 9:00 AM\Z")
                self.assertIn(width(line), (columns - 1, columns))

    def test_a_title_is_cut_only_where_its_line_would_not_fit(self):
        titles = {1: "w" * 100, 2: "v" * 140}
        self.quillo.put_items(
            stored_task(1, titles[1], due=MARCH_5_2025_AT_9), stored_task(2, titles[2]), stored_task(3, "short")
        )
        output = self.shown(columns=200)
        self.assertIn(titles[1], output)
        self.assertIn(titles[2], output)

    def test_a_narrow_terminal_still_shows_numbers_and_titles(self):
        for columns in (1, 2, 10, 20):
            lines = self.shown("--all", columns=columns, environment={"NO_COLOR": "1"}).splitlines()
            self.assertEqual([line.split("  ")[0] for line in lines], ["1", "2", "3"])

    def test_a_person_is_told_that_there_is_nothing(self):
        self.quillo.put_items()
        self.assertNotEqual(self.shown(), "")
        self.assertNotEqual(self.shown("--done"), "")
        self.assertEqual(self.done("list").output, "")

    def test_json_is_plain(self):
        self.assertEqual(self.shown("--all", "--json"), self.done("list", "--all", "--json").output)

    def test_only_colours_reach_it(self):
        self.quillo.put_items(
            *(stored_task(n, text, due=MARCH_5_2025_AT_9, done=n % 2 == 0) for n, text in enumerate(DANGEROUS_TEXTS))
        )
        output = self.shown("--all", columns=200)
        for code in (self.DIM, self.RED, self.PLAIN):
            output = output.replace(code, "")
        self.assertEqual(len(output.splitlines()), len(DANGEROUS_TEXTS))
        self.assert_fit_for_terminals(output)


class LocaleAndZone(CommandTest):
    def setUp(self):
        super().setUp()
        self.quillo.put_items(stored_task(1, "task", due=MARCH_5_2025_AT_9))

    def due(self, **environment):
        answer = self.done("list", environment=environment)
        self.assertTrue(answer.output.startswith("1  [ ]  task  "), answer.output)
        return answer.output.removeprefix("1  [ ]  task  ").rstrip("\n")

    def test_dates_are_written_as_the_locale_does(self):
        for locale, parts in {
            "en_US.UTF-8": ["Mar 5, 2025 at 9:00 AM"],
            "en_GB.UTF-8": ["5 Mar 2025", "09:00"],
            "de_DE.UTF-8": ["05.03.2025", "09:00"],
            "fr_FR": ["5 mars 2025", "09:00"],
            "ja_JP.UTF-8": ["2025/03/05", "9:00"],
            "ar_EG.UTF-8": ["٢٠٢٥", "٩:٠٠"],
            "C": ["Mar 5, 2025 at 9:00 AM"],
            "C.UTF-8": ["Mar 5, 2025 at 9:00 AM"],
            "POSIX": ["Mar 5, 2025 at 9:00 AM"],
        }.items():
            with self.subTest(locale):
                due = self.due(LC_ALL=locale)
                for part in parts:
                    self.assertIn(part, due)

    def test_the_variables_of_the_locale_have_their_usual_order(self):
        german, english, french = "05.03.2025", "Mar 5, 2025", "5 mars 2025"
        self.assertIn(german, self.due(LC_ALL="de_DE.UTF-8", LC_TIME="fr_FR.UTF-8", LANG="en_US.UTF-8"))
        self.assertIn(french, self.due(LC_ALL="", LC_TIME="fr_FR.UTF-8", LANG="de_DE.UTF-8"))
        self.assertIn(german, self.due(LC_ALL=None, LC_TIME=None, LANG="de_DE.UTF-8"))
        self.assertIn(english, self.due(LC_ALL=None, LC_TIME=None, LANG=None))

    def test_a_locale_that_nobody_knows_is_no_obstacle(self):
        for locale in ("xx_YY.UTF-8", "garbage", "de_DE@euro", "%s", "_", "x" * 500, "\x1b[31m"):
            with self.subTest(locale):
                self.assertIn("2025", self.due(LC_ALL=locale))

    def test_times_are_of_the_users_zone(self):
        for zone, time_of_day in {
            "Europe/Berlin": "9:00 AM",
            "America/New_York": "3:00 AM",
            "Asia/Tokyo": "5:00 PM",
            "UTC": "8:00 AM",
            ":Europe/Berlin": "9:00 AM",
            "Etc/GMT+3": "5:00 AM",
        }.items():
            with self.subTest(zone):
                self.assertIn("at " + time_of_day, self.due(TZ=zone))

    def test_zones_that_other_programs_understand_are_understood(self):
        for zone, time_of_day in {
            ":/usr/share/zoneinfo/Asia/Tokyo": "5:00 PM",
            "/usr/share/zoneinfo/Asia/Tokyo": "5:00 PM",
            "CET-1CEST,M3.5.0,M10.5.0/3": "9:00 AM",
            "XYZ-5": "1:00 PM",
            "GMT+3": "5:00 AM",
            "UTC+3": "5:00 AM",
        }.items():
            with self.subTest(zone):
                self.assertIn("at " + time_of_day, self.due(TZ=zone))

    def test_the_systems_own_zone_is_understood_however_it_is_named(self):
        self.assertIn("Mar 5, 2025", self.due(TZ=":/etc/localtime"))
        self.assertIn("Mar 5, 2025", self.due(TZ=None))

    def test_a_zone_that_is_newer_than_the_librarys_data_is_no_obstacle(self):
        self.assertIn("Mar 5, 2025", self.due(TZ="America/Coyhaique"))


class WhereOutputCannotGo(CommandTest):
    COMMANDS = (
        ["add", "more"],
        ["list"],
        ["list", "--json"],
        ["done", "1"],
        ["remind", "1", "--clear"],
        ["export", "markdown"],
        ["export", "json", "-o", "-"],
        ["stats"],
        ["stats", "--json"],
        ["parse", "x"],
        ["help"],
        ["version"],
    )

    def setUp(self):
        super().setUp()
        self.done("add", "first")

    def test_a_full_disk_behind_standard_output(self):
        for words in self.COMMANDS:
            with self.subTest(words), open("/dev/full", "wb") as full:
                answer = self.quillo(*words, stdout=full)
                self.assertEqual(answer.code, 1)
                self.assert_one_line(answer.errors)
        self.assertEqual(self.quillo.titles(), ["more", "first"])

    def test_a_closed_standard_output(self):
        for words in self.COMMANDS:
            with self.subTest(words):
                answer = self.quillo(*words, stdout=None, preexec_fn=lambda: os.close(1))
                self.assertEqual(answer.code, 1)
                self.assert_one_line(answer.errors)
        self.assertEqual(self.quillo.titles(), ["more", "first"])

    def test_what_is_printed_never_lands_in_a_file_of_the_data_folder(self):
        self.quillo.put_items(*(stored_task(n, f"secret {n} " + "s" * 500, done=True) for n in range(100)))

        def close_all():
            os.closerange(0, 3)

        started = self.quillo.start("clear-completed", stdin=None, stdout=None, stderr=None, preexec_fn=close_all)
        started.wait(timeout=60)
        self.assertEqual(self.quillo.stored_items(), [])
        files = self.quillo.files()
        self.assertNotIn(b"secret", files["preferences.lock"])
        (backup,) = [content for name, content in files.items() if name.startswith("backups/")]
        self.assertEqual(len(json.loads(backup)), 100)

    def test_a_reader_that_leaves_early_is_no_disaster(self):
        self.quillo.put_items(*(stored_task(n, "t" * 1000) for n in range(1000)))
        process = self.quillo.start("list")
        self.assertEqual(process.stdout.read(1), b" ")
        process.stdout.close()
        errors = process.stderr.read().decode()
        process.stderr.close()
        self.assertIn(process.wait(timeout=60), (1, -signal.SIGPIPE))
        self.assertLessEqual(errors.count("\n"), 1, errors)


if __name__ == "__main__":
    unittest.main()
