"""A command that said it was done has done it, even when the machine stops the next moment."""

import os
import random
import signal
import subprocess
import time
import unittest

from quillo_command import PATIENCE_SECONDS, CommandTest, is_sanitized, program

KILLS = 200
LONGEST_ROUND_SECONDS = 0.2
# So many commands fit into the longest round also where commands are slow.
COMMANDS_A_ROUND = 5

ADD_FOR_EVER = 'number=0; while :; do "$0" add "r$1n$number"; number=$((number + 1)); done'


class Killed(CommandTest):
    def test_every_task_whose_command_had_answered_is_there_once(self):
        self.quillo.hold()
        seed = random.SystemRandom().randrange(10**9)
        instants = random.Random(seed)
        longest = max(LONGEST_ROUND_SECONDS, COMMANDS_A_ROUND * self.seconds_of_a_command())
        answered = []
        try:
            for number in range(KILLS):
                answered += self.killed_round(number, instants.uniform(0, longest))
                self.check(number, answered)
        except AssertionError as error:
            raise AssertionError(f"{error}\nseed {seed}, {len(answered)} tasks answered") from error
        # Proof that the rounds were long enough for something to be at stake; a sanitizer makes commands slower.
        fewest = KILLS // 2 if is_sanitized() else KILLS
        self.assertGreaterEqual(len(answered), fewest, f"seed {seed}")

        connection = self.quillo.connect()
        self.assertEqual(connection.execute("PRAGMA integrity_check").fetchall(), [("ok",)])
        connection.close()
        self.assertEqual(list(self.quillo.folder.glob("*damaged*")), [])
        self.done("add", "after it all")
        self.assertEqual(self.quillo.titles()[0], "after it all")

    def seconds_of_a_command(self):
        start = time.monotonic()
        self.done("list")
        return time.monotonic() - start

    def killed_round(self, number, seconds):
        """Adds tasks one after the other until everything is killed; returns the titles that were printed."""
        process = subprocess.Popen(
            ["sh", "-c", ADD_FOR_EVER, program(), str(number)],
            env=self.quillo.environment,
            stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE,
            stderr=subprocess.PIPE,
            start_new_session=True,
        )
        time.sleep(seconds)
        os.killpg(process.pid, signal.SIGKILL)
        output, errors = process.communicate(timeout=PATIENCE_SECONDS)
        self.assertEqual((process.returncode, errors), (-signal.SIGKILL, b""))
        titles = output.decode().split("\n")
        self.assertEqual(titles.pop(), "", "half a line was printed")
        self.assertEqual(titles, [f"r{number}n{count}" for count in range(len(titles))])
        return titles

    def check(self, number, answered):
        answer = self.quillo("list", "--all", "--json")
        self.assertEqual((answer.code, answer.errors), (0, ""))
        titles = [task["title"] for task in answer.json][::-1]
        self.assertEqual(len(set(titles)), len(titles), "a task is there twice")
        self.assertEqual(set(answered) - set(titles), set(), "answered, but not there")
        # Of each round one command more may have done its work without coming to say so.
        self.assertLessEqual(len(titles), len(answered) + number + 1)
        # All in the order in which they were added, and none that nobody added.
        self.assertEqual(titles, sorted(titles, key=lambda title: [int(part) for part in title[1:].split("n")]))


if __name__ == "__main__":
    unittest.main()
