"""The quick-add panel: there from everywhere by one shortcut, and gone with the task."""

import unittest

from desktop import PANEL_HEIGHT
from desktop_program import wait_until
from quillo_on_desktop import QUICK_ADD_SIZE, SHORTCUT, WAIT_SECONDS, DesktopTest

KEYCAP = "⏎"
# The panel's lower edge is a line.
PANEL_EDGE = 1
ABOVE_THE_MIDDLE = 80


class QuickAddTest(DesktopTest):
    def start_terminal(self, *arguments):
        """A terminal, which has the keyboard."""
        terminal = self.desktop.start("xterm", *arguments)
        self.addCleanup(terminal.stop)
        process = terminal.process.pid
        wait_until(lambda: self.desktop.screen.active_process() == process, "the terminal has the keyboard")
        return process

    def setUp(self):
        super().setUp()
        self.program = self.start()
        self.terminal = self.start_terminal("-geometry", "80x24+100+200")

    def assert_hidden(self):
        self.eventually(self.program.has_quick_add, False)


class Shortcut(QuickAddTest):
    def test_a_task_from_within_another_program(self):
        panel = self.program.open_quick_add()
        self.assertIn("focused", panel.entry.states)
        self.input.type("Email Sam in 2 hours\n")
        self.assert_hidden()
        self.eventually(self.quillo.titles, ["Email Sam"])
        self.assertIn("dueDate", self.quillo.tasks()[0])
        self.eventually(self.desktop.screen.active_process, self.terminal)

    def test_it_hides_what_it_has_shown(self):
        for _ in range(2):
            self.program.open_quick_add()
            self.input.key(SHORTCUT)
            self.assert_hidden()

    def test_locks_do_not_matter(self):
        for lock in ("Num_Lock", "Caps_Lock"):
            self.input.key(lock)
            self.addCleanup(self.input.key, lock)
        self.program.open_quick_add()

    def test_it_works_while_the_popover_is_open(self):
        self.program.open_popover()
        self.program.open_quick_add()
        self.eventually(self.program.has_popover, False)

    def test_above_a_window_that_fills_the_screen(self):
        terminal = self.start_terminal("-fullscreen")
        screen = self.desktop.screen
        self.assertEqual(screen.windows(terminal)[0].area, (0, 0, *self.desktop.size))
        panel = self.program.open_quick_add()
        self.assertEqual(screen.process_at(panel.window.centre), self.program.process.pid)
        self.input.type("seen\n")
        self.eventually(self.quillo.titles, ["seen"])

    def test_on_every_workspace(self):
        self.program.open_quick_add()
        self.input.key("Escape")
        self.assert_hidden()
        self.desktop.screen.switch_to_workspace(1)
        self.addCleanup(self.desktop.screen.switch_to_workspace, 0)
        self.assertIn(self.program.open_quick_add().window.workspace, (None, 1))

    def test_the_command_shows_it(self):
        for _ in range(2):
            self.done("quick-add")
            self.program.quick_add()


class Panel(QuickAddTest):
    def open(self):
        self.panel = self.program.open_quick_add()
        return self.panel

    def test_it_stands_a_little_above_the_middle(self):
        left, top, width, height = self.open().window.area
        screen_width, screen_height = self.desktop.size
        free = PANEL_HEIGHT + PANEL_EDGE
        self.assertEqual(left + width / 2, screen_width / 2)
        middle = free + (screen_height - free) / 2
        self.assertAlmostEqual(top + height / 2, middle - ABOVE_THE_MIDDLE, delta=1)

    def test_escape_drops_it(self):
        self.open()
        self.input.type("never mind")
        self.input.key("Escape")
        self.assert_hidden()
        self.assertEqual(self.quillo.titles(), [])
        self.assertEqual(self.open().entry.text, "")

    def test_blanks_add_nothing_and_hide_it(self):
        for text in ("", "   "):
            self.open()
            self.input.type(text + "\n")
            self.assert_hidden()
        self.assertEqual(self.quillo.titles(), [])

    def test_a_second_return_adds_nothing_twice(self):
        self.open()
        self.input.type("once\n\n\n")
        self.assert_hidden()
        self.eventually(self.quillo.titles, ["once"])
        self.assert_ends_well(self.program)
        self.assertEqual(self.quillo.titles(), ["once"])

    def test_going_elsewhere_hides_it(self):
        self.open()
        self.input.type("half")
        (window,) = self.desktop.screen.windows(self.terminal)
        left, top, width, height = window.area
        self.input.click((left + 20, top + 20))
        self.assert_hidden()
        self.assertEqual(self.quillo.titles(), [])

    def test_the_keycap_is_there_as_long_as_there_is_text(self):
        panel = self.open()
        self.assertFalse(panel.has(name=KEYCAP))
        self.input.type("x")
        panel.find(name=KEYCAP)
        self.input.key("BackSpace")
        self.eventually(lambda: panel.has(name=KEYCAP), False)

    def test_it_is_dragged_by_its_background(self):
        panel = self.open()
        left, top, width, height = panel.window.area
        grip = (left + (width - QUICK_ADD_SIZE[0]) // 2 + 10, top + height // 2)
        self.input.drag(grip, (grip[0] + 60, grip[1] + 40))
        self.eventually(lambda: panel.window.area[:2], (left + 60, top + 40))
        # The window manager has had the keyboard meanwhile.
        wait_until(self.program.is_active, "the panel has the keyboard again", WAIT_SECONDS)
        self.desktop.screen.picture_at_rest(panel.window.area)
        self.input.type("after a drag\n")
        self.eventually(self.quillo.titles, ["after a drag"])


if __name__ == "__main__":
    unittest.main()
