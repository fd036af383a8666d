"""`quillo resolve --jsonl`: due dates of classified texts, line by line for scripts."""

import fcntl
import json
import os
import select
import time
import unittest

from json_lines import JsonLinesTest, ask
from quillo_command import PATIENCE_SECONDS, decoded

NOW = "2025-03-04T10:00:00.25"  # a Tuesday
TOMORROW = {
    "id": 1,
    "classification": {
        "kind": "TOMORROW", "amount": 0, "month": 0, "day": 0, "hasTime": True, "hour": 9, "minute": 0, "title": "",
    },
    "now": NOW,
    "tz": "Europe/Berlin",
}  # fmt: skip
TOMORROW_ANSWER = '{"id":1,"due":1741161600}\n'
LARGEST = 2**63 - 1
SMALLEST = -(2**63)

# Each for Tuesday, 4 March 2025, 10:00:00.25 in Berlin, with the numbers that matter to the kind.
DUE_DATES = [
    ({"kind": "NONE"}, None),
    ({"kind": "TODAY"}, 1741075200),
    ({"kind": "TONIGHT"}, 1741114800),
    ({"kind": "TOMORROW"}, 1741161600),
    ({"kind": "DAY_AFTER_TOMORROW"}, 1741248000),
    ({"kind": "THIS_SUNDAY"}, 1741507200),
    ({"kind": "THIS_MONDAY"}, 1741593600),
    ({"kind": "THIS_TUESDAY"}, 1741075200),
    ({"kind": "THIS_WEDNESDAY"}, 1741161600),
    ({"kind": "THIS_THURSDAY"}, 1741248000),
    ({"kind": "THIS_FRIDAY"}, 1741334400),
    ({"kind": "THIS_SATURDAY"}, 1741420800),
    ({"kind": "NEXT_SUNDAY"}, 1741507200),
    ({"kind": "NEXT_MONDAY"}, 1741593600),
    ({"kind": "NEXT_TUESDAY"}, 1741680000),
    ({"kind": "NEXT_WEDNESDAY"}, 1741161600),
    ({"kind": "NEXT_THURSDAY"}, 1741248000),
    ({"kind": "NEXT_FRIDAY"}, 1741334400),
    ({"kind": "NEXT_SATURDAY"}, 1741420800),
    ({"kind": "IN_MINUTES", "amount": 10}, 1741079400.25),
    ({"kind": "IN_HOURS", "amount": 2}, 1741086000.25),
    ({"kind": "IN_DAYS", "amount": 3}, 1741334400),
    ({"kind": "IN_WEEKS", "amount": 2}, 1742284800),
    ({"kind": "WEEKS_FROM_TOMORROW", "amount": 2}, 1742371200),
    ({"kind": "SPECIFIC_DATE", "month": 3, "day": 15}, 1742025600),
    ({"kind": "THIS_WEEKEND"}, 1741420800),
]


class Resolve(JsonLinesTest):
    command = "resolve"

    def due(self, now=NOW, zone="Europe/Berlin", **classification):
        (answer,) = self.lines({"classification": classification, "now": now, "tz": zone})
        self.assertEqual(list(answer), ["id", "due"])
        return answer["due"]

    def test_the_answer_to_the_letter(self):
        answer = self.done("resolve", "--jsonl", text=json.dumps(TOMORROW).encode() + b"\n")
        self.assertEqual(answer.output, TOMORROW_ANSWER)

    def test_every_kind(self):
        answers = self.lines(*({**TOMORROW, "classification": each} for each, _ in DUE_DATES))
        self.assertEqual(len({each["kind"] for each, _ in DUE_DATES}), 26)
        for (classification, due), answer in zip(DUE_DATES, answers, strict=True):
            self.assertEqual(answer, {"id": 1, "due": due}, classification)

    def test_due_has_a_fraction_only_if_it_is_not_whole(self):
        for now, due in ((1741078860, "1741079460"), (1741078860.5, "1741079460.5"), (-0.75, "599.25"), (0, "600")):
            request = {"classification": {"kind": "IN_MINUTES", "amount": 10}, "now": now, "tz": "UTC"}
            answer = self.done("resolve", "--jsonl", text=json.dumps(request).encode())
            self.assertEqual(answer.output, '{"id":null,"due":%s}\n' % due)

    def test_no_due_date_is_null(self):
        answer = self.done("resolve", "--jsonl", text=b'{"id":"x","classification":{"kind":"NONE"}}')
        self.assertEqual(answer.output, '{"id":"x","due":null}\n')

    def test_only_the_kind_is_needed(self):
        nothing = {"amount": None, "month": None, "day": None, "hasTime": None, "hour": None, "minute": None}
        self.assertEqual(self.due(kind="TODAY"), 1741075200)
        self.assertEqual(self.due(kind="TODAY", title=None, **nothing), 1741075200)
        self.assertEqual(self.due(kind="TODAY", hour=7), 1741075200)
        self.assertEqual(self.due(kind="TODAY", hasTime=True), 1741042800)
        self.assertEqual(self.due(kind="IN_DAYS"), None)
        self.assertEqual(self.due(kind="WEEKS_FROM_TOMORROW"), 1741161600)
        self.assertEqual(self.due(kind="SPECIFIC_DATE"), None)

    def test_any_integers_of_64_bits(self):
        for number in (LARGEST, SMALLEST, 0, -1):
            numbers = dict.fromkeys(("amount", "month", "day", "hour", "minute"), number)
            for classification, _ in DUE_DATES:
                for has_time in (True, False):
                    self.due(**{**numbers, **classification, "hasTime": has_time})
        self.assertEqual(self.due(kind="IN_WEEKS", amount=LARGEST), None)
        self.assertEqual(self.due(kind="TODAY", hasTime=True, hour=LARGEST, minute=SMALLEST), 1741125600)

    def test_keys_that_are_not_asked_for_are_ignored(self):
        classification = {"Kind": 5, "hasDate": [], **TOMORROW["classification"], "nested": {"kind": "NONE", "hour": "x"}}
        request = {"text": 5, "kind": "NONE", "amount": "x", **TOMORROW, "classification": classification}
        self.assertEqual(self.lines(request), [json.loads(TOMORROW_ANSWER)])

    def test_of_several_members_of_one_name_the_last_counts(self):
        (answer,) = self.lines(
            b'{"classification":{"kind":"NONE"},"classification":{"kind":"NONE","hour":"x","kind":"TODAY","hour":1},'
            b'"now":0,"tz":"UTC"}\n'
        )
        self.assertEqual(answer["due"], 32400)

    def test_each_line_has_its_own_now_and_zone(self):
        kind = {"classification": {"kind": "TODAY"}}
        answers = self.lines(
            {**kind, "now": "2025-03-05T12:00", "tz": "UTC"},
            {**kind, "now": "2025-03-05T12:00", "tz": "America/New_York"},
            {**kind, "now": "2025-03-05T12:00+14:00", "tz": "UTC"},
            {**kind, "now": -0.5, "tz": "UTC"},
        )
        self.assertEqual([answer["due"] for answer in answers], [1741165200, 1741183200, 1741078800, -54000])

    def test_the_options_fill_in_what_a_line_leaves_out(self):
        request = {"classification": {"kind": "SPECIFIC_DATE", "month": 1, "day": 1}}
        options = ("--now", "2025-03-05T12:00", "--time-zone", "Asia/Tokyo", "--locale", "fa_IR")
        (answer,) = self.lines(request, options=options)
        self.assertEqual(answer["due"], 1742515200)  # the Persian new year, 21 March 2025
        (answer,) = self.lines({**request, "now": 0, "tz": "UTC", "locale": "en_US"}, options=options)
        self.assertEqual(answer["due"], 32400)

    def test_without_anything_it_is_now_in_the_zone_of_the_system(self):
        request = {"classification": {"kind": "IN_MINUTES", "amount": 1}}
        before = time.time()
        (answer,) = self.lines(request)
        self.assertTrue(before <= answer["due"] - 60 <= time.time(), answer)
        (answer,) = self.lines({"classification": {"kind": "TODAY"}, "now": 0}, environment={"TZ": "Asia/Tokyo"})
        self.assertEqual(answer["due"], 0)

    def test_the_users_locale_makes_no_difference(self):
        request = {**TOMORROW, "classification": {"kind": "SPECIFIC_DATE", "month": 3, "day": 15}}
        (answer,) = self.lines(request, environment={"LC_ALL": "fa_IR.UTF-8"})
        self.assertEqual(answer["due"], 1742025600)

    def test_every_answer_comes_before_the_next_line_is_sent(self):
        process = self.quillo.start("resolve", "--jsonl", stdin=-1)
        try:
            for number in range(3):
                process.stdin.write(json.dumps({**TOMORROW, "id": number}).encode() + b"\n")
                process.stdin.flush()
                ready, _, _ = select.select([process.stdout], [], [], PATIENCE_SECONDS)
                self.assertTrue(ready, "no answer")
                self.assertEqual(json.loads(process.stdout.readline())["id"], number)
        finally:
            process.communicate(timeout=PATIENCE_SECONDS)
        self.assertEqual(process.returncode, 0)

    def test_lines_that_are_no_json_object_are_answered_and_the_rest_goes_on(self):
        for line in (b"nonsense", b"[]", b'"TODAY"', b'{"classification":{"kind":"TODAY"}', b'{"classification":{}}}'):
            with self.subTest(line):
                first, refused, last = self.lines(TOMORROW, line + b"\n", b"\n", TOMORROW, code=1)
                self.assertEqual([first, last], [json.loads(TOMORROW_ANSWER)] * 2)
                self.assertEqual((list(refused), refused["id"]), (["id", "error"], None))

    def test_bad_members_are_answered_with_the_lines_id(self):
        good = TOMORROW["classification"]
        bad = [
            {},
            {"text": "x tomorrow"},
            {"classification": None},
            {"classification": "TOMORROW"},
            {"classification": 5},
            {"classification": True},
            {"classification": ["kind", "TOMORROW"]},
            {"classification": {}},
            {"classification": {**good, "kind": None}},
            {"classification": {**good, "kind": 5}},
            {"classification": {**good, "kind": {"TOMORROW": 1}}},
            {"classification": {**good, "kind": ""}},
            {"classification": {**good, "kind": "tomorrow"}},
            {"classification": {**good, "kind": "NEXT_WEEK"}},
            {"classification": {**good, "kind": "TOMORROW "}},
            {"classification": {**good, "kind": "TOMORROW\u0000"}},
            {"classification": {**good, "hasTime": "true"}},
            {"classification": {**good, "hasTime": 1}},
            {"classification": {**good, "title": 5}},
            {"classification": {**good, "title": []}},
            {"classification": good, "now": "nonsense"},
            {"classification": good, "now": {}},
            {"classification": good, "tz": "Nowhere/Nothing"},
            {"classification": good, "tz": 5},
            {"classification": good, "locale": 5},
        ]
        for name in ("amount", "month", "day", "hour", "minute"):
            for value in ("5", True, [], {}, 1.5, 1e2, LARGEST + 1, SMALLEST - 1, 10**30):
                bad.append({"classification": {**good, name: value}})
        numbered = [{"id": number, **each} for number, each in enumerate(bad)]
        self.assertEqual(self.refusals(*numbered), list(range(len(bad))))

    def test_the_error_says_what_is_wrong(self):
        def error(**classification):
            (answer,) = self.lines({"classification": classification}, code=1)
            return answer["error"]

        self.assertEqual(error(kind="NEXT_WEEK"), 'Unexpected rawValue "NEXT_WEEK"')
        self.assertIn('"kind"', error())
        self.assertIn('"minute"', error(kind="TODAY", minute="x"))
        self.assertIn('"hasTime"', error(kind="TODAY", hasTime=0))

    def test_errors_are_one_line_of_json_whatever_they_quote(self):
        for value in ("two\nlines", "\u0000", '"quotes"\\', "\u2028", "🙂"):
            self.refusals({"classification": {"kind": value}})

    def test_deep_nesting_is_answered_not_crashed_on(self):
        deep = lambda levels: (  # noqa: E731
            b'{"classification":{"kind":"TODAY","more":' + b"[" * levels + b"]" * levels + b'},"now":0,"tz":"UTC"}\n'
        )
        (answer,) = self.lines(deep(500))
        self.assertEqual(answer["due"], 32400)
        self.refusals(deep(100_000), b'{"classification":' * 500_000 + b"\n")

    def test_malformed_characters_are_said(self):
        request = b'{"id":1,"classification":{"kind":"NONE","title":"a\xffb"}}\n'
        answer = self.quillo("resolve", "--jsonl", text=request)
        self.assertEqual((answer.code, answer.output), (0, '{"id":1,"due":null}\n'))
        self.assert_one_line(answer.errors)

    def test_lines_of_megabytes(self):
        title = "x" * (1 << 20)
        (answer,) = self.lines({"classification": {"kind": "TODAY", "title": title}, "now": 0, "tz": "UTC"})
        self.assertEqual(answer["due"], 32400)
        self.refusals(json.dumps({"classification": {"kind": "TODAY", "title": title * 17}}).encode() + b"\n")

    def test_input_that_cannot_be_read_is_an_error(self):
        folder = os.open(self.folder, os.O_RDONLY)
        process = self.quillo.start("resolve", "--jsonl", stdin=folder)
        os.close(folder)
        output, errors = process.communicate(timeout=PATIENCE_SECONDS)
        self.assertEqual((process.returncode, output), (1, b""))
        self.assert_one_line(decoded(errors))


class Usage(JsonLinesTest):
    command = "resolve"

    def test_lines_are_the_only_form(self):
        for words in ((), ("tomorrow",), ("--jsonl", "tomorrow"), ("--now", NOW), ("--json",), ("--jsonl", "--trace")):
            with self.subTest(words):
                answer = self.quillo("resolve", *words)
                self.assert_refused(answer, 2)
                self.assertIn("usage: quillo resolve ", answer.errors)

    def test_options_that_cannot_be_understood_are_refused(self):
        for options in (("--now", "nonsense"), ("--time-zone", "Nowhere/Nothing")):
            self.assert_refused(self.quillo("resolve", "--jsonl", *options, text=b'{"classification":{}}\n'), 1)

    def test_leaves_no_trace_and_needs_no_home(self):
        self.assertEqual(self.lines(TOMORROW), [json.loads(TOMORROW_ANSWER)])
        self.assertEqual(list(self.folder.iterdir()), [])
        nowhere = {"HOME": None, "QUILLO_DATA_DIR": None, "XDG_DATA_HOME": None}
        self.assertEqual(self.lines(TOMORROW, environment=nowhere), [json.loads(TOMORROW_ANSWER)])

    def test_does_not_wait_for_the_lock_nor_take_it(self):
        self.done("add", "x")
        with open(self.quillo.lock, "rb") as lock:
            fcntl.flock(lock, fcntl.LOCK_EX)
            started = time.monotonic()
            self.assertEqual(self.lines(TOMORROW), [json.loads(TOMORROW_ANSWER)])
            self.assertLess(time.monotonic() - started, 1.5)
        process = self.quillo.start("resolve", "--jsonl", stdin=-1)
        try:
            self.assertEqual(ask(process, TOMORROW), json.loads(TOMORROW_ANSWER))
            self.done("done", "1")
        finally:
            process.communicate(timeout=PATIENCE_SECONDS)


if __name__ == "__main__":
    unittest.main()
