"""What comes of texts that the rules cannot date: what a language model says, or the text as it was typed."""

import concurrent.futures
import json
import time
import unittest
from datetime import datetime, timedelta
from zoneinfo import ZoneInfo

from chat_server import PARTS, SAYINGS, STATUSES
from desktop_program import DesktopProgram, wait_until
from json_lines import ask
from language_models import LanguageModelTest
from quillo_command import desktop_program, unix_seconds, without_desktop_program

BERLIN = ZoneInfo("Europe/Berlin")
NOW = "2025-03-04T09:41:00"  # a Tuesday
TOMORROW_AT_9 = 1741161600
TOMORROW_AT_21 = 1741204800

TEXT = "call mom tmrw 9p"
# What the servers make of every text.
TITLE = "Call mom"
INTERPRETATION = "AI: TOMORROW amount=0 m=0 d=0 hasTime=true 9:0"
MISS = "regex+ai miss"
# A text that has a hint, as "market" begins like a month, and no date.
NO_DATE = "Maybe fix the market page"

GOOD = {"good", "ollama", "llama"}
BAD = sorted({*PARTS, *STATUSES, *SAYINGS} - GOOD - {"none"})

# A server has six seconds. The slowest here takes ten, so that who has waited for it is found out.
LONGEST_SECONDS = 9

INSTRUCTIONS = """\
You are a strict natural-language todo parser. The user typed something with possibly temporal language. Classify it \
into exactly ONE bucket. Default to NONE when uncertain.

Right now: {:%A, %B} {} local.

Bucket catalog (pick ONE):
  NONE  — no clear date or time. Use this when uncertain.
  TODAY, TONIGHT, TOMORROW, DAY_AFTER_TOMORROW
  THIS_SUNDAY..THIS_SATURDAY  (named weekday, soonest upcoming)
  NEXT_SUNDAY..NEXT_SATURDAY  ("next" weekday — skips current week)
  IN_MINUTES, IN_HOURS, IN_DAYS, IN_WEEKS  (set amount = N)
  WEEKS_FROM_TOMORROW  (set amount = N)
  SPECIFIC_DATE  (set month 1-12 and day 1-31; month=0 if only "the Nth")
  THIS_WEEKEND

hasTime = true only if a TIME OF DAY is present (clock time, "noon", "midnight", \
"morning"/"afternoon"/"evening"/"night", "tonight"). Set hour 0-23 and minute 0-59 when true. ELSE 0/0.

Time-word conventions: noon=12, midnight=0, morning=9, afternoon=14, evening=18, night=20, tonight=20.

title strips ALL temporal language. Keep verbs and nouns. Never invent.

Examples:
- "in a couple hours" → kind=IN_HOURS, amount=2, hasTime=false
- "in a few minutes" → kind=IN_MINUTES, amount=10, hasTime=false
- "later today" → kind=TODAY, hasTime=false
- "first thing tomorrow" → kind=TOMORROW, hasTime=true, hour=8, minute=0
- "by 5pm" → kind=TODAY, hasTime=true, hour=17, minute=0
- "around 3" → kind=TODAY, hasTime=true, hour=15, minute=0
- "tmrw at 9p" → kind=TOMORROW, hasTime=true, hour=21, minute=0
- "early next week" → kind=NEXT_MONDAY, hasTime=false
- "wednesday afternoon" → kind=THIS_WEDNESDAY, hasTime=true, hour=14, minute=0

REJECT (default NONE):
- "Buy 3 apples" → kind=NONE, title unchanged
- "Email Sam back" → kind=NONE
- "Pick up the 15 reports" → kind=NONE (not "the 15th")
- "Schedule a 1:1 meeting" → kind=NONE
- "Review issue #42" → kind=NONE"""

DAYS = "SUNDAY MONDAY TUESDAY WEDNESDAY THURSDAY FRIDAY SATURDAY".split()
KINDS = [
    *("NONE", "TODAY", "TONIGHT", "TOMORROW", "DAY_AFTER_TOMORROW"),
    *(f"THIS_{day}" for day in DAYS),
    *(f"NEXT_{day}" for day in DAYS),
    *("IN_MINUTES", "IN_HOURS", "IN_DAYS", "IN_WEEKS", "WEEKS_FROM_TOMORROW", "SPECIFIC_DATE", "THIS_WEEKEND"),
]
# {name: (type, what the model is told about it)}, in this order.
PROPERTIES = {
    "kind": ("string", "Pick the SINGLE best-matching enum case. NONE if there's any doubt."),
    "amount": ("integer", "Required for IN_MINUTES/IN_HOURS/IN_DAYS/IN_WEEKS/WEEKS_FROM_TOMORROW."),
    "month": ("integer", "Month 1-12 for SPECIFIC_DATE. 0 if no month given or kind is not SPECIFIC_DATE."),
    "day": ("integer", "Day 1-31 for SPECIFIC_DATE. 0 otherwise."),
    "hasTime": ("boolean", "True only when input specifies a TIME OF DAY."),
    "hour": ("integer", "Hour 0-23 (24-hour). 0 if hasTime is false."),
    "minute": ("integer", "Minute 0-59. 0 if hasTime is false."),
    "title": ("string", "Clean task title with all temporal phrases stripped."),
}


def instructions(now):
    return INSTRUCTIONS.format(now, f"{now.day}, {now.year} at {now:%H:%M}")


def schema():
    properties = {
        name: {"type": kind, **({"enum": KINDS} if name == "kind" else {}), "description": description}
        for name, (kind, description) in PROPERTIES.items()
    }
    return {
        "type": "object",
        "properties": properties,
        "required": list(PROPERTIES),
        "additionalProperties": False,
    }


def question(system, user, model="first"):
    """What is sent to a server, members in this order."""
    return {
        "model": model,
        "messages": [{"role": "system", "content": system}, {"role": "user", "content": user}],
        "stream": False,
        "response_format": {
            "type": "json_schema",
            "json_schema": {"name": "todo", "strict": True, "schema": schema()},
        },
    }


class ServedTest(LanguageModelTest):
    def place(self, part):
        """The choice of a model of the server in that part."""
        return f"{self.server.address(part)} first"

    def asked(self, part):
        """The questions that the server was asked in that part."""
        return self.server.requests(f"/{part}/v1/chat/completions")

    def wait_until_asked(self, part, times=1):
        wait_until(lambda: len(self.asked(part)) == times, f"{part} is asked")

    def begin(self, *arguments, **options):
        """Runs a command beside the test."""
        process = self.quillo.start(*arguments, **options)

        def end():
            process.kill()
            process.communicate()

        self.addCleanup(end)
        return process

    def end(self, process):
        """Waits for it; it must succeed without a word on standard error. Returns its output."""
        output, errors = process.communicate()
        self.assertEqual((process.returncode, errors), (0, b""))
        return output.decode()

    def parse(self, text, *options, **environment):
        return self.done("parse", "--json", "--now", NOW, *options, "--", text, environment=environment).json

    def assert_understood(self, task):
        """That of the exported task, what the servers say has become."""
        created = datetime.fromtimestamp(unix_seconds(task["createdAt"]), BERLIN)
        due = datetime.fromtimestamp(unix_seconds(task["dueDate"]), BERLIN)
        tomorrow = created.date() + timedelta(days=1)
        self.assertEqual((task["title"], due.date(), f"{due:%H:%M}"), (TITLE, tomorrow, "09:00"))


class Answers(ServedTest):
    def test_a_good_one_is_taken(self):
        for part in sorted(GOOD):
            with self.subTest(part):
                self.choose(*self.place(part).split())
                understood = self.parse(TEXT)
                self.assertEqual((understood["title"], understood["due"]), (TITLE, TOMORROW_AT_9))
                self.assertEqual((understood["interpretation"], understood["path"]), (INTERPRETATION, "model"))
                self.assert_understood(self.done("add", "--json", TEXT).json)

    def test_a_model_may_say_that_there_is_no_date(self):
        self.choose(*self.place("none").split())
        understood = self.parse(NO_DATE)
        self.assertEqual((understood["title"], understood["due"]), ("Fix the market page", None))
        self.assertEqual(understood["interpretation"], "AI: NONE amount=0 m=0 d=0 hasTime=false 0:0")
        task = self.done("add", "--json", NO_DATE).json
        self.assertEqual(task["title"], "Fix the market page")
        self.assertNotIn("dueDate", task)

    def test_without_a_good_one_the_text_is_kept_as_it_was_typed(self):
        # All at once, as some take as long as they may.
        with concurrent.futures.ThreadPoolExecutor(2 * len(BAD)) as executor:
            parses = {
                part: executor.submit(self.timed, self.parse, TEXT, QUILLO_LANGUAGE_MODEL=self.place(part))
                for part in BAD
            }
            for part in BAD:
                with self.subTest(part):
                    understood, seconds = parses[part].result()
                    self.assertEqual((understood["title"], understood["due"]), (TEXT, None))
                    self.assertEqual((understood["interpretation"], understood["path"]), (MISS, "miss"))
                    self.assertLess(seconds, LONGEST_SECONDS)
                    self.assertEqual(len(self.asked(part)), 1)

            adds = {}
            for part in BAD:
                self.choose(*self.place(part).split())
                text = f"{part} tmrw 9p"
                adds[part] = executor.submit(self.timed, self.done, "add", "--json", text)
                self.wait_until_asked(part, times=2)
            for part in BAD:
                with self.subTest(part):
                    answer, seconds = adds[part].result()
                    self.assertEqual(answer.json["title"], f"{part} tmrw 9p")
                    self.assertNotIn("dueDate", answer.json)
                    self.assertLess(seconds, LONGEST_SECONDS)
        self.assertEqual(sorted(self.quillo.titles()), sorted(f"{part} tmrw 9p" for part in BAD))

    @staticmethod
    def timed(do, *arguments, **options):
        start = time.monotonic()
        return do(*arguments, **options), time.monotonic() - start

    def test_where_nobody_listens_the_text_is_kept_as_it_was_typed(self):
        self.server.shutdown()
        self.server.server_close()
        self.choose(*self.place("good").split())
        self.assertEqual(self.parse(TEXT)["interpretation"], MISS)
        self.done("add", TEXT)
        self.assertEqual(self.quillo.titles(), [TEXT])


class Questions(ServedTest):
    """What is sent to a server, to the last byte of it."""

    def assert_same(self, body, expected):
        self.assertEqual(json.dumps(body), json.dumps(expected))  # The order of members counts.

    def test_of_parse(self):
        self.parse(f"  {TEXT} \n", QUILLO_LANGUAGE_MODEL=self.place("good"))
        self.assertEqual(len(self.server.events), 1)
        now = datetime.fromisoformat(NOW)
        self.assert_same(self.asked("good")[0], question(instructions(now), TEXT))
        self.assertIn("Right now: Tuesday, March 4, 2025 at 09:41 local.", instructions(now))

    def test_of_add(self):
        self.choose(*self.place("good").split())
        before = datetime.now(BERLIN)
        self.done("add", f"  {TEXT} \n")
        nows = (before, datetime.now(BERLIN))
        self.assertEqual(len(self.server.events), 1)
        (body,) = self.asked("good")
        self.assertIn(json.dumps(body), [json.dumps(question(instructions(now), TEXT)) for now in nows])

    def test_of_remind(self):
        self.choose(*self.place("good").split())
        self.done("add", "task")
        self.done("remind", "1", TEXT)
        self.assertEqual([body["messages"][1]["content"] for body in self.asked("good")], [TEXT])
        self.assertIn("dueDate", self.quillo.tasks()[0])

    def test_go_to_the_first_model_where_none_is_named(self):
        self.parse(TEXT, QUILLO_LANGUAGE_MODEL=self.server.address("good"))
        self.assertEqual(
            [event["path"] for event in self.server.events], ["/good/v1/models", "/good/v1/chat/completions"]
        )
        self.assert_same(self.asked("good")[0], question(instructions(datetime.fromisoformat(NOW)), TEXT))

    def test_hold_the_schema_in_words_on_request(self):
        self.parse(TEXT, QUILLO_LANGUAGE_MODEL=f"--schema-in-prompt {self.place('good')}")
        told = self.asked("good")[0]["messages"][0]["content"]
        self.assertTrue(told.startswith(instructions(datetime.fromisoformat(NOW))))
        for name, (kind, description) in PROPERTIES.items():
            self.assertIn(f"- {name} ({kind}): {description}\n", told)

    def test_are_not_asked_about_other_texts(self):
        self.choose(*self.place("good").split())
        for text in ("Buy milk", "call mom tomorrow at 9am", "tmrw " + "very " * 100 + "long"):
            self.done("add", text)
            self.parse(text)
        self.assertEqual(self.server.events, [])


class Choice(ServedTest):
    def test_of_the_preferences_is_asked(self):
        for choice, path in ((["none"], "miss"), (self.place("good").split(), "model"), (["none"], "miss")):
            self.choose(*choice)
            self.assertEqual(self.parse(TEXT)["path"], path)

    def test_of_none(self):
        self.choose("none")
        for text in (NO_DATE, TEXT):
            self.assertEqual(self.parse(text)["interpretation"], MISS)
            self.done("add", text)
        self.assertEqual(self.quillo.titles(), [TEXT, NO_DATE])

    def test_of_the_environment_is_for_one_run(self):
        for kept in ("none", self.place("broken")):
            self.choose(*kept.split())
            understood = self.parse(TEXT, QUILLO_LANGUAGE_MODEL=self.place("good"))
            self.assertEqual((understood["title"], understood["due"]), (TITLE, TOMORROW_AT_9))
            understood = self.parse(TEXT, QUILLO_LANGUAGE_MODEL="embedded")
            self.assertEqual((understood["title"], understood["due"]), ("call mom", TOMORROW_AT_21))
            self.assertEqual(self.parse(TEXT)["path"], "miss")
        self.choose(*self.place("good").split())
        self.assertEqual(self.parse(TEXT, QUILLO_LANGUAGE_MODEL="none")["interpretation"], MISS)
        self.assertEqual(self.parse(TEXT)["path"], "model")

    @without_desktop_program("the environment of the desktop program counts")
    def test_of_the_environment_is_for_one_task(self):
        self.choose("none")
        self.done("add", TEXT, environment={"QUILLO_LANGUAGE_MODEL": self.place("good")})
        self.done("add", TEXT, environment={"QUILLO_LANGUAGE_MODEL": "embedded"})
        self.done("add", TEXT)
        self.assertEqual(self.quillo.titles(), [TEXT, "call mom", TITLE])

    def test_is_taken_up_at_once(self):
        """By the desktop program, too, where one runs."""
        titles = []
        for choice, title in (
            ("none", TEXT),
            (self.place("good"), TITLE),
            ("embedded", "call mom"),
            (self.place("broken"), TEXT),
            (self.place("good"), TITLE),
        ):
            self.choose(*choice.split())
            self.done("add", TEXT)
            titles.insert(0, title)
            self.assertEqual(self.quillo.titles(), titles)


class Embedded(ServedTest):
    def test_needs_no_choice(self):
        understood = self.parse(TEXT)
        self.assertEqual((understood["title"], understood["due"]), ("call mom", TOMORROW_AT_21))
        self.assertEqual(understood["interpretation"], "AI: TOMORROW amount=0 m=0 d=0 hasTime=true 21:0")
        self.done("add", TEXT)
        self.assertEqual(self.quillo.titles(), ["call mom"])

    def test_trace_shows_what_it_said_and_how_sure_it_is(self):
        understood = self.parse(TEXT, "--trace")
        self.assertEqual(list(understood)[-3:], ["trace", "classification", "score"])
        self.assertEqual(list(understood["classification"]), list(PROPERTIES))
        self.assertEqual(understood["classification"]["kind"], "TOMORROW")
        self.assertEqual(understood["classification"]["title"], "call mom")
        self.assertTrue(0 <= understood["score"] <= 1, understood["score"])
        *_, classification, score = self.done("parse", "--trace", "--now", NOW, TEXT).lines
        self.assertEqual(
            classification,
            "classification  kind TOMORROW, amount 0, month 0, day 0, hasTime true, hour 21, minute 0, "
            'title "call mom"',
        )
        self.assertAlmostEqual(float(score.removeprefix("score ")), understood["score"], places=5)
        self.assertNotIn("classification", self.parse(TEXT))

    def test_a_server_is_not_sure_of_anything(self):
        understood = self.parse(TEXT, "--trace", QUILLO_LANGUAGE_MODEL=self.place("good"))
        self.assertEqual(list(understood)[-2:], ["trace", "classification"])
        self.assertEqual(understood["classification"], SAYINGS["good"])


class Lines(ServedTest):
    def test_are_answered_in_turn(self):
        self.server.slow_seconds = 1
        lines = [{"id": 1, "text": TEXT}, {"id": 2, "text": "Buy milk"}, {"id": 3, "text": TEXT}]
        text = "".join(json.dumps({**line, "now": NOW}) + "\n" for line in lines).encode()
        options = {"environment": {"QUILLO_LANGUAGE_MODEL": self.place("slow")}}
        output = self.done("parse", "--jsonl", text=text, **options).output
        answers = [json.loads(line) for line in output.splitlines()]
        self.assertEqual([answer["id"] for answer in answers], [1, 2, 3])
        self.assertEqual([answer["path"] for answer in answers], ["model", "none", "model"])
        self.assertEqual([answer["due"] for answer in answers], [TOMORROW_AT_9, None, TOMORROW_AT_9])

    def test_each_is_answered_before_the_next_comes(self):
        self.server.slow_seconds = 0
        parse = self.begin("parse", "--jsonl", stdin=-1, environment={"QUILLO_LANGUAGE_MODEL": self.place("slow")})
        for number in range(3):
            self.assertEqual(ask(parse, {"id": number, "text": TEXT, "now": NOW})["due"], TOMORROW_AT_9)
        self.server.slow_seconds = 10
        self.assertEqual(ask(parse, {"id": 3, "text": TEXT})["interpretation"], MISS)
        self.assertEqual(ask(parse, {"id": 4, "text": "Buy milk"})["path"], "none")


class Meanwhile(ServedTest):
    """While one command waits for a slow server, the list is there for the others."""

    def setUp(self):
        super().setUp()
        self.choose(*self.place("slow").split())

    def test_tasks_are_added_and_changed(self):
        self.done("add", "before")
        slow = self.begin("add", TEXT)
        self.wait_until_asked("slow")
        self.server.slow_seconds = 0
        self.done("add", "Buy milk")
        self.done("done", "2")
        self.done("add", TEXT)  # Its answer comes first.
        self.assertEqual(self.quillo.titles(), [TITLE, "Buy milk", "before"])
        self.assertIsNone(slow.poll())
        self.end(slow)
        tasks = self.quillo.tasks()
        titles = [(task["title"], task["isDone"]) for task in tasks]
        self.assertEqual(titles, [(TEXT, False), (TITLE, False), ("Buy milk", False), ("before", True)])

    def test_another_model_is_chosen(self):
        self.server.slow_seconds = 3
        slow = self.begin("add", "--json", TEXT)
        self.wait_until_asked("slow")
        self.choose("none")
        self.done("add", NO_DATE)
        self.assertIsNone(slow.poll())
        self.assert_understood(json.loads(self.end(slow)))
        self.assertEqual(self.quillo.titles(), [TITLE, NO_DATE])

    def test_a_reminder_is_for_the_task_that_had_the_number(self):
        self.server.slow_seconds = 3
        self.done("add", "meant")
        slow = self.begin("remind", "1", TEXT)
        self.wait_until_asked("slow")
        self.done("add", "not meant")
        self.assertIsNone(slow.poll())
        self.end(slow)
        due = {task["title"]: "dueDate" in task for task in self.quillo.tasks()}
        self.assertEqual(due, {"not meant": False, "meant": True})

    def test_a_reminder_is_for_no_task_that_is_gone(self):
        self.server.slow_seconds = 3
        self.done("add", "meant")
        slow = self.begin("remind", "1", TEXT)
        self.wait_until_asked("slow")
        self.done("add", "not meant")
        self.done("delete", "2")
        output, errors = slow.communicate()
        self.assertEqual((slow.returncode, output), (1, b""))
        self.assert_one_line(errors.decode())
        (task,) = self.quillo.tasks()
        self.assertNotIn("dueDate", task)

    def test_nobody_is_asked_about_a_task_that_there_is_not(self):
        self.assert_refused(self.quillo("remind", "1", TEXT), 1)
        self.assertEqual(self.server.events, [])

    @unittest.skipUnless(desktop_program(), "needs the desktop program")
    def test_a_desktop_program_that_has_started_takes_the_text(self):
        self.quillo.let_go()
        self.server.slow_seconds = 2
        slow = self.begin("add", TEXT, environment={"QUILLO_DATA_DIR": str(self.quillo.folder)})
        self.wait_until_asked("slow")
        program = DesktopProgram(self.quillo.folder, self.quillo.environment)
        self.addCleanup(program.kill)
        program.wait_until_ready()
        self.assertFalse(program.has_ended(), program.errors)
        self.assertIsNone(slow.poll())
        self.end(slow)
        self.assertEqual(self.quillo.titles(), [TITLE])
        self.assertEqual(program.terminate(), 0)


if __name__ == "__main__":
    unittest.main()
