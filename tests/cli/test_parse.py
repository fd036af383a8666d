"""`quillo parse`: for people, as JSON, and line by line for scripts."""

import fcntl
import json
import os
import random
import select
import threading
import time
import unittest

from json_lines import JsonLinesTest, ask
from quillo_command import PATIENCE_SECONDS, CommandTest, decoded, is_sanitized

NOW = "2025-03-04T10:00:00"  # a Tuesday
CALL_MOM = {"id": 1, "text": "call mom tomorrow at 9am", "now": NOW, "tz": "Europe/Berlin"}
CALL_MOM_ANSWER = (
    '{"id":1,"hint":true,"title":"call mom","due":1741161600,'
    '"interpretation":"Wed Mar 5, 2025 09:00","path":"rules"}\n'
)
KEYS = ["id", "hint", "title", "due", "interpretation", "path"]

DANGEROUS_TEXTS = [
    "\x1b[31mred tomorrow\x1b[0m",
    "\x1b]0;title\x07 at 3",
    "\u009b2J at 3",
    "two\nlines at\n3",
    "\u202eat 3\r",
    "buy\nmilk",
]


class ForPeople(CommandTest):
    def test_shows_what_was_understood(self):
        output = self.done("parse", "--now", NOW, "call mom tomorrow at 9am").output
        for part in ("call mom", "Mar 5, 2025 at 9:00 AM", "Wed Mar 5, 2025 09:00", "rules"):
            self.assertIn(part, output)
        self.assertNotIn("tomorrow", output)

    def test_says_when_no_date_was_found(self):
        for text, path in (("Buy milk", "none"), ("Maybe fix the market page", "miss")):
            output = self.done("parse", "--now", NOW, text).output
            self.assertIn(text, output)
            self.assertIn(path, output)
            self.assertNotIn("2025", output)

    def test_trace_shows_which_rule_matched_where(self):
        output = self.done("parse", "--now", NOW, "--trace", "  call mom tomorrow at 9am").output
        for part in ('"at 9am"', "18-24", '"tomorrow"', "9-17"):
            self.assertIn(part, output)
        self.assertNotIn("9-17", self.done("parse", "--now", NOW, "call mom tomorrow at 9am").output)

    def test_nothing_that_drives_a_terminal_is_shown(self):
        for text in DANGEROUS_TEXTS:
            with self.subTest(text):
                answer = self.done("parse", "--now", NOW, "--trace", "--", text)
                self.assert_fit_for_terminals(answer.output)
                # A line end in the text makes no line that looks as if it were ours.
                on_one_line = self.done("parse", "--now", NOW, "--trace", "--", text.replace("\n", " "))
                self.assertEqual(len(answer.lines), len(on_one_line.lines))

    def test_uses_the_users_locale(self):
        output = self.done("parse", "--now", NOW, "tomorrow", environment={"LC_ALL": "de_DE.UTF-8"}).output
        self.assertIn("05.03.2025", output)
        self.assertIn("Mi", output)

    def test_joins_its_words_with_blanks_and_takes_options_anywhere(self):
        output = self.done("parse", "call", "mom", "--now", NOW, "at", "--json", "9am").output
        self.assertEqual(json.loads(output)["title"], "call mom")

    def test_two_dashes_end_the_options(self):
        answer = self.done("parse", "--json", "--", "--json", "at", "3")
        self.assertEqual(answer.json["title"], "--json")


class AsJson(CommandTest):
    def parse(self, text, *options):
        return self.done("parse", "--json", *options, "--", text).json

    def test_is_one_line_with_the_keys_of_a_json_line_but_the_id(self):
        answer = self.done("parse", "--json", "--now", NOW, "--time-zone", "Europe/Berlin", CALL_MOM["text"])
        self.assertEqual(answer.output, CALL_MOM_ANSWER.replace('"id":1,', ""))

    def test_trace_names_what_matched_where(self):
        answer = self.parse("call mom tomorrow at 9am", "--now", NOW, "--trace")
        self.assertEqual(list(answer), KEYS[1:] + ["trace"])
        matched = {(entry["text"], entry["start"], entry["end"]) for entry in answer["trace"]}
        self.assertEqual(matched, {("tomorrow", 9, 17), ("at 9am", 18, 24)})
        for entry in answer["trace"]:
            self.assertTrue(entry["family"] and entry["rule"])
        self.assertEqual(self.parse("Buy milk", "--trace")["trace"], [])

    def test_now_can_be_written_in_many_ways(self):
        # Each is followed by what "in 0 min" gives for it in Berlin.
        for now, due in {
            "2025-03-04T10:00:00": 1741078800,
            "2025-03-04T10:00": 1741078800,
            "2025-03-04 10:00": 1741078800,
            "2025-03-04T10:00:59.999": 1741078800,
            "2025-03-04T10:00:00.25": 1741078800,
            "2025-03-04T09:00:00Z": 1741078800,
            "2025-03-04t09:00:00z": 1741078800,
            "2025-03-04T10:00:00+01:00": 1741078800,
            "2025-03-04T10:00:00+0100": 1741078800,
            "2025-03-04T10:00:00+01": 1741078800,
            "2025-03-03T21:30:00-11:30": 1741078800,
            "1741078800": 1741078800,
            "1741078859.75": 1741078800,
            "-1": -60,
            "0": 0,
            "2025-03-04": 1741042800,
            "9999-12-31T12:00:00Z": 253402257600,
            "2024-02-29": 1709161200,
            "2025-03-30T02:30": 1743298200,  # skipped when the clocks changed: an hour on
            "2025-10-26T02:30": 1761442200,  # there were two: the later one
        }.items():
            with self.subTest(now):
                answer = self.parse("x in 0 min", f"--now={now}", "--time-zone", "Europe/Berlin")
                self.assertEqual(answer["due"], due)

    def test_now_counts_in_the_gregorian_calendar_however_long_ago(self):
        for now, due in {
            "1582-10-15T00:00:00Z": -12219292800,
            "1582-10-10T00:00:00Z": -12219724800,
            "1500-03-01T12:00:00Z": -14826628800,
            "0001-01-01T00:00:00Z": -62135596800,
        }.items():
            with self.subTest(now):
                self.assertEqual(self.parse("x in 0 min", "--now", now, "--time-zone", "UTC")["due"], due)

    def test_now_that_is_no_time_is_refused(self):
        for now in (
            "", " ", "nonsense", "tomorrow", "2025-03", "2025-3-4", "2025-02-29", "2025-13-01", "2025-00-10",
            "2025-01-00", "2025-01-32", "2025-03-04T", "2025-03-04T10", "2025-03-04T24:00", "2025-03-04T10:60",
            "2025-03-04T10:00:60", "2025-03-04T10:00:00+", "2025-03-04T10:00:00+25:00", "2025-03-04T10:00:00 Europe",
            "2025-03-04T10:00:00ZZ", "2025-03-04T10:00:00x", " 2025-03-04", "2025-03-04 ", "0000-01-01", "10000-01-01",
            "-0001-01-01", "+2025-03-04", "nan", "inf", "-inf", "1e999", "1e300", "0x10", "1,5", "1741078800 ",
            "-62135596801", "253402300800", "--", "٢٠٢٥-٠٣-٠٤", "2025-03-04T10:00:00.1.2",
        ):
            with self.subTest(now):
                self.assert_refused(self.quillo("parse", f"--now={now}", "--time-zone", "UTC", "x at 3"), 1)

    def test_time_zones(self):
        noon_utc = 1741176000
        for zone, hours in {
            "Europe/Berlin": 1,
            "UTC": 0,
            "Asia/Kathmandu": 5.75,
            "America/New_York": -5,
            "Pacific/Kiritimati": 14,
            "Etc/GMT+3": -3,
        }.items():
            answer = self.parse("x at noon", "--now", "2025-03-05T15:00", "--time-zone", zone)
            self.assertEqual(answer["due"], noon_utc - hours * 3600, zone)

    def test_an_unknown_time_zone_is_refused(self):
        for zone in ("Nowhere/Nothing", "europe/berlin", "Europe", "+01:00", " UTC", "UTC ", "%s", "x" * 10_000):
            with self.subTest(zone):
                self.assert_refused(self.quillo("parse", "--time-zone", zone, "x"), 1)

    def test_the_locale_gives_the_names_of_days_and_months(self):
        def interpretation(locale):
            return self.parse("x tomorrow", "--now", NOW, "--locale", locale)["interpretation"]

        self.assertEqual(interpretation("en_US"), "Wed Mar 5, 2025 09:00")
        self.assertEqual(interpretation("en-US"), "Wed Mar 5, 2025 09:00")
        self.assertRegex(interpretation("de_DE"), r"\AMi\.? März 5, 2025 09:00\Z")
        self.assertRegex(interpretation("fr"), r"\Amer\. mars 5, 2025 09:00\Z")
        self.assertIn("水", interpretation("ja"))

    def test_the_locale_does_not_change_what_is_understood(self):
        for locale in ("en", "ar", "th", "fa", "ja"):
            answer = self.parse("x tomorrow", "--now", NOW, "--locale", locale)
            self.assertEqual(answer["due"], 1741161600, locale)

    def test_a_strange_locale_is_no_obstacle(self):
        for locale in ("xx_YY", "garbage", "$%&/()", "x" * 400, "en_US@calendar=buddhist"):
            with self.subTest(locale):
                self.assertEqual(self.parse("x tomorrow", "--now", NOW, "--locale", locale)["due"], 1741161600)

    def test_malformed_utf8_reads_as_the_replacement_character_and_is_said(self):
        answer = self.quillo("parse", "--json", b"caf\xe9 at 3")
        self.assertEqual((answer.code, answer.json["title"]), (0, "caf\ufffd"))
        self.assert_one_line(answer.errors)


class LeavesNoTrace(CommandTest):
    def test_makes_no_data_folder(self):
        self.done("parse", "x at 3")
        self.done("parse", "--json", "x at 3")
        self.done("parse", "--jsonl", text=b'{"text":"x at 3"}\n')
        self.assertEqual(list(self.folder.iterdir()), [])

    def test_needs_no_home(self):
        nowhere = {"HOME": None, "QUILLO_DATA_DIR": None, "XDG_DATA_HOME": None}
        self.done("parse", "x at 3", environment=nowhere)

    def test_does_not_wait_for_the_lock_nor_take_it(self):
        self.done("add", "x")
        before = self.quillo.files()
        with open(self.quillo.lock, "rb") as lock:
            fcntl.flock(lock, fcntl.LOCK_EX)
            started = time.monotonic()
            self.done("parse", "x at 3")
            self.done("parse", "--jsonl", text=b'{"text":"x at 3"}\n')
            self.assertLess(time.monotonic() - started, 1.5)
        process = self.quillo.start("parse", "--jsonl", stdin=-1)
        try:
            ask(process, CALL_MOM)
            self.done("done", "1")
        finally:
            process.communicate(timeout=PATIENCE_SECONDS)
        self.assertEqual(self.quillo.files().keys(), before.keys())


class JsonLines(JsonLinesTest):
    command = "parse"

    def test_the_answer_to_the_letter(self):
        answer = self.done("parse", "--jsonl", text=json.dumps(CALL_MOM).encode() + b"\n")
        self.assertEqual(answer.output, CALL_MOM_ANSWER)

    def test_the_paths(self):
        for text, hint, title, path in (
            ("", False, "", "none"),
            ("   ", False, "", "none"),
            ("Buy milk", False, "Buy milk", "none"),
            ("  Buy milk \n", False, "Buy milk", "none"),
            ("Maybe fix the market page", True, "Maybe fix the market page", "miss"),
        ):
            (answer,) = self.lines({"id": 7, "text": text})
            interpretation = "regex+ai miss" if path == "miss" else None
            self.assertEqual(
                list(answer.items()),
                list(zip(KEYS, (7, hint, title, None, interpretation, path))),
            )

    def test_due_is_a_whole_number(self):
        answer = self.done("parse", "--jsonl", text=b'{"text":"x in 2 hours","now":1741078859.75}\n')
        self.assertIn('"due":1741086000,', answer.output)

    def test_every_kind_of_id_comes_back(self):
        ids = [
            0, -1, 1.5, 0.1, 1e23, 9007199254740993, 18446744073709551615, -9223372036854775808, True, False, None,
            "", "x", "ä🙂\u0000\u001f\"\\/\u2028", "x" * 100_000, [], {}, [1, [2, {"a": None}]],
            {"a": {"b": [1.25, "c"]}},
        ]  # fmt: skip
        answers = self.lines(*({"id": each, "text": "x"} for each in ids))
        for each, answer in zip(ids, answers, strict=True):
            self.assertEqual((type(answer["id"]), answer["id"]), (type(each), each))

    def test_an_id_comes_back_however_large_its_number_is(self):
        for number in ("18446744073709551616", "12345678901234567890123", "-9223372036854775809"):
            with self.subTest(number):
                (answer,) = self.lines(b'{"id":%s,"text":"x"}\n' % number.encode())
                self.assertEqual(answer["id"], int(number))

    def test_numbers_that_are_not_asked_for_do_no_harm(self):
        (answer,) = self.lines(b'{"id":1,"text":"x","size":12345678901234567890123}\n')
        self.assertEqual((answer["id"], answer["title"]), (1, "x"))

    def test_a_missing_id_is_null(self):
        self.assertEqual(self.lines({"text": "x"})[0]["id"], None)

    def test_unknown_keys_are_ignored(self):
        extra = {"Text": 5, "note": "y", "locales": [], "nested": {"text": "no", "id": 9}, "": None}
        self.assertEqual(self.lines({**extra, **CALL_MOM, "more": 1.5}), self.lines(CALL_MOM))

    def test_null_is_like_absent(self):
        answers = self.lines({"id": 1, "text": "x at 3", "now": None, "tz": None, "locale": None})
        self.assertEqual(answers[0]["path"], "rules")

    def test_keys_and_texts_may_be_written_with_escapes(self):
        (answer,) = self.lines(b'{"\\u0069d":1,"te\\u0078t":"\\u0063af\\u00e9 \\ud83d\\ude42 at \\u0033"}\n')
        self.assertEqual((answer["id"], answer["title"], answer["path"]), (1, "café 🙂", "rules"))

    def test_each_line_has_its_own_now_zone_and_locale(self):
        answers = self.lines(
            {"text": "x at 3", "now": "2025-03-05T12:00", "tz": "UTC"},
            {"text": "x at 3", "now": "2025-03-05T12:00", "tz": "America/New_York", "locale": "de_DE"},
            {"text": "x at 3", "now": "2025-03-05T12:00+14:00", "tz": "UTC"},
            {"text": "x at 3", "now": 0, "tz": "UTC"},
            {"text": "x at 3", "now": -0.5, "tz": "UTC"},
        )
        self.assertEqual(
            [answer["due"] for answer in answers], [1741186800, 1741204800, 1741100400, 54000, 54000 - 86400]
        )
        self.assertRegex(answers[1]["interpretation"], r"\AMi\.? März 5, 2025 15:00\Z")

    def test_the_options_fill_in_what_a_line_leaves_out(self):
        request = {"text": "x at 3"}
        options = ("--now", "2025-03-05T12:00", "--time-zone", "Asia/Tokyo", "--locale", "de_DE")
        (answer,) = self.lines(request, options=options)
        self.assertEqual(answer["due"], 1741154400)
        self.assertRegex(answer["interpretation"], r"\AMi\.? März")
        (answer,) = self.lines({**request, "now": 0, "tz": "UTC", "locale": "en_US"}, options=options)
        self.assertEqual((answer["due"], answer["interpretation"]), (54000, "Thu Jan 1, 1970 15:00"))

    def test_without_anything_it_is_now_here_in_english(self):
        before = time.time()
        (answer,) = self.lines(
            {"text": "x in 0 min"}, environment={"TZ": "Asia/Tokyo", "LC_ALL": "de_DE.UTF-8"}
        )
        after = time.time()
        self.assertTrue(before - 60 < answer["due"] <= after, answer)
        tokyo = time.gmtime(answer["due"] + 9 * 3600)
        self.assertEqual(answer["interpretation"], time.strftime("%a %b %-d, %Y %H:%M", tokyo))

    def test_every_answer_comes_before_the_next_line_is_sent(self):
        process = self.quillo.start("parse", "--jsonl", stdin=-1)
        try:
            for number in range(5):
                process.stdin.write(json.dumps({**CALL_MOM, "id": number}).encode() + b"\n")
                process.stdin.flush()
                ready, _, _ = select.select([process.stdout], [], [], PATIENCE_SECONDS)
                self.assertTrue(ready, "no answer")
                self.assertEqual(json.loads(process.stdout.readline())["id"], number)
            process.stdin.write(b"broken\n")
            process.stdin.flush()
            self.assertTrue(select.select([process.stdout], [], [], PATIENCE_SECONDS)[0], "no answer")
        finally:
            output, _ = process.communicate(timeout=PATIENCE_SECONDS)
        self.assertIn("error", json.loads(output))

    def test_a_last_line_without_its_end_is_read(self):
        self.assertEqual([a["id"] for a in self.lines(b'{"id":1,"text":""}\n{"id":2,"text":""}')], [1, 2])

    def test_blank_lines_are_skipped(self):
        self.assertEqual(self.lines(b"\n\n   \n\t\n\r\n"), [])
        self.assertEqual([a["id"] for a in self.lines(b'\n{"id":1,"text":""}\n \n{"id":2,"text":""}\n\n')], [1, 2])
        self.assertEqual(self.lines(), [])

    def test_lines_may_end_as_on_windows(self):
        (one, two) = self.lines(b'{"id":1,"text":"x at 3"}\r\n{"id":2,"text":"y"}\r\n')
        self.assertEqual((one["title"], two["title"]), ("x", "y"))

    def test_white_space_between_the_parts_of_a_line(self):
        (answer,) = self.lines(b' \t{ "id" :\t1 , "text" : "x" } \t\n')
        self.assertEqual(answer["title"], "x")

    def test_lines_that_are_no_json_object_are_answered_and_the_rest_goes_on(self):
        bad = [
            b"nonsense", b"{", b"}", b"[]", b'"text"', b"5", b"null", b'{"id":1,"text":"x"', b'{"id":1,"text":"x"} y',
            b'{"id":1,"text":"x"}{"id":2,"text":"y"}', b"{'id':1}", b'{"id":1,"text":"x",}', b'{"id":01,"text":"x"}',
            b'{"id":1,"text":"a\tb"}', b'{"id":1,"text":"\\x41"}', b'{"id":1,"text":"\\u12"}', b"\x00",
            b'{"id":1,"text":"a\x00b"}', b'{"id":NaN,"text":"x"}', b"\xff\xfe{", b"// comment", b'{"id" 1}', b"\x0b",
        ]  # fmt: skip
        for line in bad:
            with self.subTest(line):
                before, refused, after = self.lines(
                    {"id": "before", "text": ""}, line + b"\n", {"id": "after", "text": ""}, code=1, errors=None
                )
                self.assertEqual((before["id"], after["id"]), ("before", "after"))
                self.assertEqual((list(refused), refused["id"]), (["id", "error"], None))

    def test_bad_members_are_answered_with_the_lines_id(self):
        bad = [
            {"id": 1},
            {"id": 2, "text": None},
            {"id": 3, "text": 5},
            {"id": 4, "text": ["x"]},
            {"id": 5, "text": "x", "now": "nonsense"},
            {"id": 6, "text": "x", "now": True},
            {"id": 7, "text": "x", "now": {}},
            {"id": 8, "text": "x", "now": "2025-02-30"},
            {"id": 9, "text": "x", "now": 1e300},
            {"id": 10, "text": "x", "now": "10000-01-01"},
            {"id": 11, "text": "x", "now": "0000-12-31"},
            {"id": 12, "text": "x", "now": ""},
            {"id": 13, "text": "x", "tz": "Nowhere/Nothing"},
            {"id": 14, "text": "x", "tz": 5},
            {"id": 15, "text": "x", "tz": ""},
            {"id": 16, "text": "x", "tz": "x" * 100_000},
            {"id": 17, "text": "x", "locale": 5},
            {"id": 18, "text": "x", "locale": ["de"]},
            {"id": ["a"], "text": False},
        ]
        self.assertEqual(self.refusals(*bad), [each["id"] for each in bad])

    def test_a_zone_is_unknown_also_when_it_only_begins_like_a_known_one(self):
        self.refusals({"text": "at 3", "tz": "Europe/Berlin\u0000x"}, {"text": "at 3", "tz": "UTC\u0000"})

    def test_good_lines_after_a_bad_one_are_answered_as_ever(self):
        answers = self.lines({"id": 0}, CALL_MOM, b"broken\n", CALL_MOM, code=1)
        self.assertEqual(answers[1], json.loads(CALL_MOM_ANSWER))
        self.assertEqual(answers[3], json.loads(CALL_MOM_ANSWER))

    def test_errors_are_one_line_of_json_whatever_they_quote(self):
        for value in ("two\nlines", "\u0000", '"quotes"\\', "\u2028", "🙂"):
            self.refusals({"text": "x", "tz": value}, {"text": "x", "now": value})

    def test_null_characters_in_a_text(self):
        (answer,) = self.lines({"text": "\u0000a\u0000b tomorrow\u0000", "now": NOW})
        self.assertEqual((answer["title"], answer["path"]), ("\u0000a\u0000b \u0000", "rules"))

    def test_malformed_characters_read_as_the_replacement_character_and_are_said(self):
        for text, title in {
            rb"a\ud800b": "a\ufffdb",
            rb"a\udc00": "a\ufffd",
            rb"\udc00\ud800": "\ufffd\ufffd",
            rb"\ud83dx\ude42": "\ufffdx\ufffd",
            rb"\ud83d\ud83d\ude42": "\ufffd🙂",
            b"a\xffb": "a\ufffdb",
            b"caf\xe9": "caf\ufffd",
            b"\xed\xa0\x80": "\ufffd\ufffd\ufffd",
        }.items():
            with self.subTest(text):
                request = b'{"id":1,"text":"' + text + b'"}\n'
                answer = self.quillo("parse", "--jsonl", text=b'{"text":"fine"}\n' + request)
                self.assertEqual(answer.code, 0)
                self.assertEqual(json.loads(answer.lines[1])["title"], title)
                self.assert_one_line(answer.errors)
                self.assertIn("2", answer.errors)  # the number of the line

    def test_well_formed_characters_are_left_alone(self):
        texts = [r"\ud800 stays", "\\", "\\\\ud800", "🙂", "\ufffd", "\uffff", "\U0010ffff", "a\\", '"', "\x7f\x80"]
        answers = self.lines(*({"text": text} for text in texts))
        self.assertEqual([answer["title"] for answer in answers], texts)

    def test_texts_of_a_megabyte(self):
        size = 1 << 20
        for text, title in (
            ("a" * size, "a" * size),
            ("é" * (size // 2) + " tomorrow", "é" * (size // 2)),
            (" " * size + "x at 3", "x"),
            ("in 2 hours " * (size // 11), None),
            ("1" * size + " days from now", None),
            ("x at 3" + " " * size + "y", None),
            ("\u0130" * (size // 2) + " today", "\u0130" * (size // 2)),
            ("today " * (size // 6), None),
            ("12 " * (size // 3) + "am", None),
            ("the 1" * (size // 5), None),
        ):
            started = time.monotonic()
            (answer,) = self.lines({"text": text, "now": NOW})
            self.assertLess(time.monotonic() - started, 20)
            if title is not None:
                self.assertTrue(answer["title"] == title, answer["title"][:50])

    def test_deep_nesting_is_answered_not_crashed_on(self):
        deep = lambda levels: b'{"id":' + b"[" * levels + b"]" * levels + b',"text":"x"}\n'  # noqa: E731
        (answer,) = self.lines(deep(500))
        self.assertEqual(json.dumps(answer["id"]), "[" * 500 + "]" * 500)
        self.assertEqual(self.refusals(deep(100_000), b'{"a":' * 500_000 + b"\n"), [None, None])

    @unittest.skipIf(is_sanitized(), "a sanitizer keeps memory")
    def test_a_line_of_any_length_is_refused_in_bounded_memory(self):
        process = self.quillo.start("parse", "--jsonl", stdin=-1)
        try:
            refused = ask(process, b'{"id":1,"text":"' + b"a" * (200 << 20) + b'"}')
            self.assertEqual((list(refused), refused["id"]), (["id", "error"], None))
            self.assertEqual(ask(process, {"id": 2, "text": "x"})["id"], 2)
            self.assertLess(memory_of(process, "VmHWM"), 64 << 10)
        finally:
            errors = process.communicate(timeout=PATIENCE_SECONDS)[1]
        self.assertEqual((process.returncode, decoded(errors)), (1, ""))

    def test_a_line_that_is_too_long_is_refused_without_looking_at_its_characters(self):
        for filler in (b"\xc3\xa9", b"\xe2\x82\xac", b"a\xc3\xa9"):
            self.assertEqual(self.refusals(b'{"id":1,"text":"' + filler * (9 << 20) + b'"}\n'), [None])

    def test_the_longest_line_is_16_mebibytes(self):
        frame = b'{"id":1,"text":""}'
        longest = frame.replace(b'""', b'"' + b"a" * ((16 << 20) - len(frame)) + b'"')
        self.assertEqual(len(self.lines(longest + b"\n")[0]["title"]), (16 << 20) - len(frame))
        self.refusals(longest.replace(b"aa", b"aaa", 1) + b"\n")

    def test_input_that_cannot_be_read_is_an_error(self):
        folder = os.open(self.folder, os.O_RDONLY)
        process = self.quillo.start("parse", "--jsonl", stdin=folder)
        os.close(folder)
        output, errors = process.communicate(timeout=PATIENCE_SECONDS)
        self.assertEqual((process.returncode, output), (1, b""))
        self.assert_one_line(decoded(errors))


def memory_of(process, which):
    """In KiB: VmRSS now, VmHWM at most so far."""
    with open(f"/proc/{process.pid}/status", encoding="ascii") as status:
        return next(int(line.split()[1]) for line in status if line.startswith(which + ":"))


@unittest.skipIf(is_sanitized(), "a sanitizer keeps memory")
class Memory(CommandTest):
    """A script may keep one `parse --jsonl` running for ever: it must not grow."""

    TEXTS = [
        "Email Sam in 2 hours",
        "call mom tomorrow at 9am",
        "buy milk",
        "dentist on the 15th at 3pm",
        "market page later",
        "ünïcödé 🙂 next friday evening",
        "a long one " * 30 + "day after tomorrow",
    ]
    ALLOWED_KIB = 1024

    def grown(self, fill_in):
        """By how many KiB the process is larger after 100,000 lines than after 10,000. `fill_in` adds to a request."""
        lines = random.Random(20250304)

        def request(number):
            text = f"{lines.choice(self.TEXTS)} {lines.randrange(10**9)}"
            return {"id": number, "text": text, **fill_in(lines)}

        process = self.quillo.start("parse", "--jsonl", "--now", NOW, stdin=-1)

        def send(count):
            for number in range(count):
                process.stdin.write(json.dumps(request(number)).encode() + b"\n")
            process.stdin.flush()

        def memory_after(count):
            sender = threading.Thread(target=send, args=(count,))
            sender.start()
            for number in range(count):
                answer = process.stdout.readline()
                self.assertTrue(answer.startswith(b'{"id":%d,"hint":' % number), answer)
            sender.join()
            return memory_of(process, "VmRSS")

        try:
            early = memory_after(10_000)
            return memory_after(90_000) - early
        finally:
            process.communicate(timeout=PATIENCE_SECONDS)

    def test_in_one_zone(self):
        self.assertLessEqual(self.grown(lambda lines: {}), self.ALLOWED_KIB)

    def test_in_many_zones_and_locales(self):
        zones = [f"Etc/GMT{sign}{hours}" for sign in "+-" for hours in range(1, 13)]
        zones += ["Europe/Berlin", "Asia/Tokyo", "America/New_York", "Australia/Sydney", "Asia/Kolkata", "UTC"]
        locales = ["en_US", "en_GB", "de_DE", "fr_FR", "ja_JP", "ar_EG", "th_TH", "fa_IR", "ru_RU", "zh_CN", "hi_IN"]
        grown = self.grown(lambda lines: {"tz": lines.choice(zones), "locale": lines.choice(locales)})
        self.assertLessEqual(grown, self.ALLOWED_KIB)


if __name__ == "__main__":
    unittest.main()
