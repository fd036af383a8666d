"""Two programs, each with a home of its own, and a folder that is the same for both."""

import json
import pathlib
import time
import unittest

from desktop_program import wait_until
from process_costs import context_switches
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


if __name__ == "__main__":
    unittest.main()
