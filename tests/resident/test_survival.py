"""What was answered is on disk, whatever ends the program, and whenever."""

import concurrent.futures
import itertools
import random
import resource
import signal
import threading
import time
import unittest

from desktop_program import wait_until
from quillo_command import ITEMS, stored_task
from session import ResidentTest

KILLS = 200
LONGEST_LIFE_SECONDS = 0.1
WORKERS = 4
# What a command says that was sent to a program that went away; it may have been done or not.
UNKNOWN = "stopped before it answered"


class AddedInParallel:
    """Commands that add tasks, several at a time, until they are told to stop or there have been enough."""

    def __init__(self, quillo, most=None):
        self.quillo = quillo
        self.answered = []  # the titles of the tasks whose command said that it was done
        self.unknown = []  # ... that the program went away
        self.refused = []  # (title, what the command said instead)
        self._numbers = itertools.count() if most is None else iter(range(most))
        self._stop = threading.Event()
        self._executor = concurrent.futures.ThreadPoolExecutor(WORKERS)
        self._workers = [self._executor.submit(self._work) for _ in range(WORKERS)]

    def _work(self):
        while not self._stop.is_set() and (number := next(self._numbers, None)) is not None:
            title = f"task {number}"
            answer = self.quillo("add", title)
            if (answer.code, answer.output, answer.errors) == (0, title + "\n", ""):
                self.answered.append(title)
            elif answer.code == 1 and UNKNOWN in answer.errors:
                self.unknown.append(title)
            else:
                self.refused.append((title, answer))

    def stop(self):
        self._stop.set()
        self.finish()

    def finish(self):
        """Waits for the last of them."""
        for worker in self._workers:
            worker.result()
        self._executor.shutdown()


class Survival(ResidentTest):
    def check(self, added, titles):
        """Every answered task is there once, the others at most once."""
        self.assertEqual(len(set(titles)), len(titles), "a task is there twice")
        self.assertEqual(set(added.answered) - set(titles), set(), "answered, but not there")
        self.assertEqual(set(titles) - set(added.answered) - set(added.unknown), set(), "refused, but there")
        self.assertEqual(added.refused, [])

    def test_asked_to_end_in_the_middle_of_a_thousand_commands(self):
        program = self.start()
        added = AddedInParallel(self.quillo, 1000)
        self.addCleanup(added.stop)
        wait_until(lambda: len(added.answered) >= 300, "the program is in the middle of it")
        code, before = program.terminate(), len(added.answered)
        self.assertEqual((code, program.errors), (0, ""))
        self.assertLess(before, 1000)
        added.finish()
        print(f"ended after {before} answers; {len(added.unknown)} commands do not know whether they were done")
        self.assertEqual(len(added.answered) + len(added.unknown), 1000)
        self.check(added, self.quillo.titles())

    def test_killed_again_and_again(self):
        seed = random.SystemRandom().randrange(10**9)
        lives = random.Random(seed)
        added = AddedInParallel(self.quillo)
        self.addCleanup(added.stop)
        try:
            for number in range(KILLS):
                program = self.start()
                self.assertFalse(program.has_ended(), program.errors)
                time.sleep(lives.uniform(0, LONGEST_LIFE_SECONDS))
                self.assertEqual(program.kill(), -signal.SIGKILL, program.errors)
                if number % 20 == 0:
                    sure = list(added.answered)
                    self.assertEqual(set(sure) - set(self.quillo.titles()), set(), "answered, but not there")
            added.stop()
            self.check(added, self.quillo.titles())
        except AssertionError as error:
            raise AssertionError(f"{error}\nseed {seed}, {len(added.answered)} tasks answered") from error
        print(f"{len(added.answered)} tasks answered, {len(added.unknown)} unknown")
        # Proof that there was something at stake.
        self.assertGreaterEqual(len(added.answered), KILLS, f"seed {seed}")
        connection = self.quillo.connect()
        self.assertEqual(connection.execute("PRAGMA integrity_check").fetchall(), [("ok",)])
        connection.close()
        self.assertEqual(list(self.quillo.folder.glob("*damaged*")), [])


class BadDisk(ResidentTest):
    def test_a_damaged_file_is_moved_aside_at_start(self):
        self.quillo.folder.mkdir()
        self.quillo.database.write_bytes(b"This is no database. " * 100)
        program = self.start()
        self.add("after")
        self.assert_ends_well(program)
        self.assertEqual(program.errors.count("\n"), 1, program.errors)
        (aside,) = self.quillo.folder.glob("preferences.damaged-*")
        self.assertIn(str(aside), program.errors)
        self.assertEqual(aside.read_bytes(), b"This is no database. " * 100)
        self.assertEqual(self.quillo.titles(), ["after"])

    def test_a_damaged_list_is_copied_aside_before_it_is_written_over(self):
        self.quillo.put_items(stored_task(1, "lost"))
        damaged = self.quillo.stored_bytes()[:-1]
        self.quillo.put(ITEMS, "data", damaged)
        program = self.start()
        self.assertEqual(list(self.quillo.folder.glob("damaged-*")), [])
        self.add("after")
        self.assert_ends_well(program)
        (aside,) = self.quillo.folder.glob("damaged-*")
        self.assertIn(str(aside), program.errors)
        self.assertEqual(aside.read_bytes(), damaged)

    def test_what_cannot_be_written_is_kept_and_written_later(self):
        program = self.start(preexec_fn=lambda: signal.signal(signal.SIGXFSZ, signal.SIG_IGN))
        self.add("small")
        self.limit_files(program, 300_000)
        large = ["y" * 100_000] * 5
        answer = self.quillo("add", *large)
        self.assert_refused(answer, 1)
        self.assertIn("tries again", answer.errors)
        self.assertEqual(self.quillo.titles(), ["small"])
        self.limit_files(program, resource.RLIM_INFINITY)
        self.add("later")
        self.assertEqual(self.quillo.titles(), ["later", " ".join(large), "small"])
        self.assert_ends_well(program)

    def limit_files(self, program, size):
        resource.prlimit(program.process.pid, resource.RLIMIT_FSIZE, (size, resource.RLIM_INFINITY))

    def test_a_folder_that_cannot_be_had_ends_it_in_words(self):
        self.quillo.folder.write_text("no folder")
        program = self.start()
        self.assertEqual(program.wait(), 1)
        self.assertRegex(program.errors, r"\Aquillo: .+\n\Z")


if __name__ == "__main__":
    unittest.main()
