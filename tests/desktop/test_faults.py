"""What goes wrong around the program while its windows are used: nothing is lost, nothing crashes, the log says why."""

import fcntl
import os
import pathlib
import shutil
import tempfile
import time
import unittest
import unittest.mock

from desktop import Desktop
from desktop_program import DesktopProgram, desktop_program, wait_until
from quillo_command import stored_task
from quillo_on_desktop import SHORTCUT, WAIT_SECONDS, DesktopTest, StatusItem

SHORTCUT_IN_OPENBOX = "C-A-W-t"


class OwnDesktopTest(DesktopTest):
    """Where the desktop itself is broken: each test has its own."""

    @classmethod
    def setUpClass(cls):
        super(DesktopTest, cls).setUpClass()

    def setUp(self):
        self.desktop = self.enterContext(Desktop(**self.desktop_options))
        super().setUp()

    def _end_programs(self):
        for program in self._programs:
            program.kill()


class TheScreenGoes(OwnDesktopTest):
    def test_a_task_entered_just_before_is_there_at_the_next_start(self):
        for number, window in enumerate(("open_popover", "open_quick_add")):
            with self.subTest(window), Desktop() as desktop:
                self.desktop = desktop
                self.quillo = self.make_quillo(window)
                program = self.start()
                desktop.status_icon()
                getattr(program, window)()
                desktop.input.type(f"task {number}\n")
                time.sleep(0.05)
                desktop.server.kill()
                code = program.wait()
                # However it ended, it was no crash.
                self.assertGreaterEqual(code, 0, program.errors)
                self.assertEqual(self.quillo.titles(), [f"task {number}"])


class TheWindowsAreMissing(DesktopTest):
    def test_a_command_that_wants_one_is_told_so_and_the_list_works(self):
        installed = pathlib.Path(desktop_program())
        folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        shutil.copy(installed, folder)
        with unittest.mock.patch.dict(os.environ, QUILLO_DESKTOP=str(folder / installed.name)):
            program = self.start()
        for window in ("open", "settings"):
            answer = self.quillo(window)
            self.assertEqual(answer.code, 1)
            self.assertIn("the windows cannot be loaded", answer.errors)
        self.assertIn("there are no windows: ", program.errors)
        self.add("all the same")
        self.assert_ends_well(program)


class TheBusGoes(OwnDesktopTest):
    def test_it_ends_in_order(self):
        program = self.start()
        program.open_popover()
        self.input.type("last words\n")
        time.sleep(0.05)
        self.desktop.bus.die()
        self.assertEqual(program.wait(), 0, program.errors)
        self.assertIn("session bus is gone", program.errors)
        self.assertEqual(self.quillo.titles(), ["last words"])


class ThereIsNoBus(OwnDesktopTest):
    desktop_options = {"bus": False}

    def test_it_works_and_says_what_is_missing(self):
        program = self.start()
        self.assertIn("no session bus", program.errors)
        self.input.key(SHORTCUT)
        wait_until(program.is_active, "quick add has the keyboard", WAIT_SECONDS)
        self.input.type("without a bus\n")
        self.eventually(self.quillo.titles, ["without a bus"])
        self.done("open")
        wait_until(program.is_active, "the popover has the keyboard", WAIT_SECONDS)
        self.input.type("again\n")
        self.eventually(self.quillo.titles, ["again", "without a bus"])
        self.assert_ends_well(program)


class ThereAreNoNotifications(DesktopTest):
    desktop_options = {"notifications": False}

    def test_tasks_with_a_date_are_kept(self):
        program = self.start()
        popover = program.open_popover()
        self.input.type("Call mom tomorrow at 9am\n")
        popover.row("Call mom")
        self.assertIn("dueDate", self.quillo.tasks()[0])
        self.assert_ends_well(program)


class TheShortcutIsTaken(DesktopTest):
    desktop_options = {"taken_keys": [SHORTCUT_IN_OPENBOX]}

    def test_the_log_says_so_and_the_rest_works(self):
        program = self.start()
        wait_until(lambda: "shortcut" in program.errors, "the log names the shortcut", WAIT_SECONDS)
        self.input.key(SHORTCUT)
        popover = program.open_popover()
        self.assertFalse(program.has_quick_add())
        self.input.type("milk\n")
        popover.row("milk")
        self.done("quick-add")
        program.quick_add()


class TheListIsHeld(DesktopTest):
    def hold(self):
        """As a command does that changes the list."""
        self.quillo.folder.mkdir(parents=True, exist_ok=True)
        lock = open(self.quillo.folder / "preferences.lock", "w")
        self.addCleanup(lock.close)
        fcntl.flock(lock, fcntl.LOCK_EX)
        return lock

    def test_a_click_is_answered_as_soon_as_the_list_can_be_had(self):
        self.quillo.put_items(stored_task(1, "kept"))
        lock = self.hold()
        program = self.launch()
        item = StatusItem(self.desktop)
        self.assertFalse(program.answers())
        # The list is waited for a few seconds only: no time to find the icon in a picture.
        item.activate()
        lock.close()
        self.assertEqual(program.popover().rows(), ["kept"])

    def test_it_gives_up_in_words(self):
        self.hold()
        program = self.launch()
        self.desktop.status_icon()
        self.assertEqual(program.wait(), 1)
        self.assertRegex(program.errors, "held|use")


class TwoAtOnce(DesktopTest):
    def test_a_second_start_hands_over(self):
        program = self.start()
        self.add("milk")
        for arguments in ((), ("--show", "quick-add")):
            second = DesktopProgram(self.quillo.folder, program.environment, arguments=arguments)
            self.addCleanup(second.kill)
            self.assertEqual(second.wait(), 0, second.errors)
        program.quick_add()
        self.assertEqual(self.quillo.titles(), ["milk"])

    def test_many_starts_at_once_leave_one(self):
        programs = [self.launch() for _ in range(4)]
        wait_until(lambda: sum(program.has_ended() for program in programs) == 3, "three hand over")
        (left,) = [program for program in programs if not program.has_ended()]
        left.wait_until_ready()
        self.add("milk")
        self.eventually(left.open_popover().rows, ["milk"])
        for program in programs:
            if program is not left:
                self.assertEqual(program.wait(), 0, program.errors)


class TheEnd(DesktopTest):
    def test_in_the_middle_of_saving_many(self):
        self.quillo.put_items(*(stored_task(number, f"Task {number}") for number in range(20_000)))
        program = self.start()
        program.open_popover()
        self.input.type("first\nsecond\nthird\n")
        time.sleep(0.02)
        self.assert_ends_well(program)
        # What had been entered by then is kept; typing goes on after the signal, unheard.
        titles = self.quillo.titles()
        self.assertEqual(len(titles) - 20_000, titles.index("Task 0"))
        self.assertIn(titles[: titles.index("Task 0")], ([], ["first"], ["second", "first"], ["third", "second", "first"]))

    def test_everything_answered_is_kept(self):
        program = self.start()
        popover = program.open_popover()
        for number in range(5):
            self.input.type(f"task {number}\n")
        self.eventually(lambda: len(popover.rows()), 5)
        self.assert_ends_well(program)
        self.assertEqual(self.quillo.titles(), [f"task {number}" for number in reversed(range(5))])


if __name__ == "__main__":
    unittest.main()
