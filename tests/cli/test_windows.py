"""Commands that bring up a window of the desktop program."""

import os
import unittest

from desktop_program import wait_until
from quillo_command import CommandTest, desktop_program, without_desktop_program

WINDOWS = ("open", "quick-add", "settings", "statistics")

# Stands in for the desktop program and notes how it was started.
NOTES = """#!/bin/sh
output=$(readlink /proc/$$/fd/2)
{ echo "$@"; ps -o sid= -p $$; echo "$output"; } >"$NOTES.unfinished"
mv "$NOTES.unfinished" "$NOTES"
"""


@without_desktop_program("it would be asked")
class NobodyRuns(CommandTest):
    def setUp(self):
        super().setUp()
        self.programs = self.folder / "programs"
        self.programs.mkdir()
        self.quillo.environment["PATH"] = f"{self.programs}:/usr/bin:/bin"

    def install_stand_in(self):
        self.notes = self.folder / "notes"
        self.quillo.environment["NOTES"] = str(self.notes)
        program = self.programs / "quillo-desktop"
        program.write_text(NOTES)
        program.chmod(0o755)

    def test_without_a_display_the_commands_that_work_are_named(self):
        self.install_stand_in()
        for words in ([], *([window] for window in WINDOWS)):
            with self.subTest(words):
                answer = self.quillo(*words)
                self.assert_refused(answer, 1)
                self.assertIn("there is no display", answer.errors)
                self.assertIn("quillo add, list", answer.errors)
        self.assertFalse(self.notes.exists())
        self.assertFalse(self.quillo.folder.exists())

    def test_the_program_is_started_for_the_window(self):
        self.install_stand_in()
        for variable in ("DISPLAY", "WAYLAND_DISPLAY"):
            for words, window in (([], "open"), *(([window], window) for window in WINDOWS)):
                with self.subTest(words):
                    self.quillo.environment[variable] = "nowhere"
                    self.done(*words)
                    wait_until(self.notes.exists, "the program was started")
                    arguments, session, output = self.notes.read_text().splitlines()
                    self.assertEqual(arguments, f"--show {window}")
                    self.assertNotEqual(int(session), os.getsid(0))
                    self.assertEqual(output, "/dev/null")
                    self.notes.unlink()
            del self.quillo.environment[variable]

    def test_a_program_that_is_not_installed_is_named(self):
        self.quillo.environment["DISPLAY"] = ":0"
        self.quillo.environment["PATH"] = str(self.programs)
        answer = self.quillo("open")
        self.assert_refused(answer, 1)
        self.assertIn("quillo-desktop is not installed", answer.errors)


@unittest.skipUnless(desktop_program(), "needs the desktop program")
class RunningWithoutAScreen(CommandTest):
    def test_says_so(self):
        self.quillo.hold()
        self.quillo.environment["DISPLAY"] = ":0"
        for window in WINDOWS:
            answer = self.quillo(window)
            self.assert_refused(answer, 1)
            self.assertIn("has no screen", answer.errors)


if __name__ == "__main__":
    unittest.main()
