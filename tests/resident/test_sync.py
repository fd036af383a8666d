"""Programs, each with a home of its own, and a folder that is the same for all."""

import base64
import json
import random
import time
import unittest

from desktop_program import PATIENCE_SECONDS, wait_until
from process_costs import context_switches
from quillo_command import stored_task
from session import ResidentTest

# What is added on one machine is on the other's list so soon.
MOST_SECONDS = 2
IDLE_SECONDS = 10


class SyncTest(ResidentTest):
    def setUp(self):
        super().setUp()
        self.root = self.folder / "shared"
        self.root.mkdir()
        self.left = self.make_quillo("left")
        self.right = self.make_quillo("right")

    def use(self, quillo, *options):
        answer = quillo("sync", "use", "folder", str(self.root), *options)
        self.assertEqual((answer.code, answer.errors), (0, ""))

    def status(self, quillo):
        return quillo("sync", "status", "--json").json

    def assert_arrives(self, title, quillo):
        began = time.monotonic()
        wait_until(lambda: title in quillo.titles(), f"{title} is there", MOST_SECONDS)
        return time.monotonic() - began


class TwoPrograms(SyncTest):
    def setUp(self):
        super().setUp()
        self.programs = [self.start(self.left), self.start(self.right)]
        self.use(self.left)
        self.use(self.right)

    def test_what_is_added_on_one_is_on_the_other_within_two_seconds(self):
        for number in range(10):
            here, there = (self.left, self.right) if number % 2 else (self.right, self.left)
            self.add(f"task {number}", quillo=here)
            print(f"{self.assert_arrives(f'task {number}', there):.3f} s")
        self.assertEqual(self.left.titles(), self.right.titles())
        self.assertEqual(len(self.left.titles()), 10)

    def test_nothing_happens_while_nothing_happens(self):
        self.add("task", quillo=self.left)
        self.assert_arrives("task", self.right)
        time.sleep(1)
        before = [context_switches(program.process.pid) for program in self.programs]
        time.sleep(IDLE_SECONDS)
        self.assertEqual([context_switches(program.process.pid) for program in self.programs], before)

    def test_a_folder_that_comes_back_is_noticed(self):
        self.add("before", quillo=self.left)
        self.assert_arrives("before", self.right)
        away = self.folder / "away"
        self.root.rename(away)
        self.add("meanwhile", quillo=self.left)
        wait_until(lambda: self.status(self.left)["problem"], "the problem is told")
        self.assertFalse(self.root.exists())
        away.rename(self.root)
        self.assert_arrives("meanwhile", self.right)
        self.assertIsNone(self.status(self.left)["problem"])

    def test_quitting_right_after_a_change_loses_nothing(self):
        for number in range(5):
            self.add(f"task {number}", quillo=self.left)
            self.assert_ends_well(self.programs[0])
            self.assert_arrives(f"task {number}", self.right)
            self.programs[0] = self.start(self.left)

    def test_what_a_killed_program_had_saved_goes_out_when_it_starts_again(self):
        away = self.folder / "away"
        self.root.rename(away)
        self.add("task", quillo=self.left)
        self.programs[0].kill()
        away.rename(self.root)
        time.sleep(0.5)
        self.assertEqual(self.right.titles(), [])
        self.programs[0] = self.start(self.left)
        self.assert_arrives("task", self.right)

    def test_half_files_and_strangers_do_no_harm(self):
        self.add("task", quillo=self.left)
        self.assert_arrives("task", self.right)
        stranger = "11111111-2222-4333-8444-555555555555"
        whole = json.dumps(
            {
                "format": 1,
                "device": stranger,
                "name": "stranger",
                "app": "",
                "items": base64.b64encode(json.dumps([stored_task(1, "strange")]).encode()).decode(),
                "stamp": time.time() + 10,
            }
        )
        file = self.root / "quillo" / "v1" / f"{stranger}.json"
        file.write_text(whole[:100])
        wait_until(lambda: "skipped" in self.programs[0].errors, "it is skipped")
        self.assertEqual(self.left.titles(), ["task"])
        file.write_text(whole)
        self.assert_arrives("strange", self.left)
        self.assert_arrives("strange", self.right)


class Killed(SyncTest):
    """Three computers: two with a program, which is killed as commands are, and one with commands alone."""

    ROUNDS = 60
    LONGEST_SECONDS = 0.15

    def test_all_end_with_the_latest_list(self):
        seed = random.SystemRandom().randrange(10**9)
        self.random = random.Random(seed)
        self.computers = [self.left, self.right, self.make_quillo("commands only")]
        self.programs = [self.start(quillo) for quillo in self.computers[:2]]
        for quillo in self.computers:
            self.use(quillo)
        try:
            for number in range(self.ROUNDS):
                self.round(number)
            self.check()
        except AssertionError as error:
            raise AssertionError(f"{error}\nseed {seed}") from error

    def round(self, number):
        """A command on each computer, some of which do not come to their end, nor do the programs."""
        commands = [
            quillo.start(*self.random.choice([("add", f"task {number}"), ("done", "1"), ("delete", "2"), ("sync", "now")]))
            for quillo in self.computers
        ]
        time.sleep(self.random.uniform(0, self.LONGEST_SECONDS))
        for which in range(2):
            if self.random.random() < 0.3:
                self.programs[which].kill()
                self.programs[which] = None
        for command in commands:
            if self.random.random() < 0.5:
                command.kill()
            command.communicate(timeout=PATIENCE_SECONDS)
        for which, quillo in enumerate(self.computers[:2]):
            self.programs[which] = self.programs[which] or self.start(quillo)

    def check(self):
        def stamps():
            return [quillo.stamp() for quillo in self.computers]

        for quillo in self.computers:
            answer = quillo("sync", "now")
            self.assertEqual((answer.code, answer.errors), (0, ""))
        highest = max(stamps())
        for quillo in self.computers:
            quillo("sync", "now")
        wait_until(lambda: set(stamps()) == {highest}, "all have the latest list")
        self.assertEqual(len({quillo.stored_bytes() for quillo in self.computers}), 1)
        files = [json.loads(file.read_text()) for file in (self.root / "quillo" / "v1").glob("*.json")]
        self.assertEqual(max(file["stamp"] for file in files), highest)
        for quillo in self.computers:
            for kept in (quillo.folder / "backups").iterdir():
                self.assertIsInstance(json.loads(kept.read_text()), list)
            earlier = quillo("restore").lines
            self.assertEqual([line for line in earlier if "cannot be read" in line], [])
            self.assertEqual(list(quillo.folder.glob("*damaged*")), [])


if __name__ == "__main__":
    unittest.main()
