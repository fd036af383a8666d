"""With the window manager of XFCE, which takes some things otherwise than openbox does."""

import unittest

from quillo_on_desktop import SETTINGS_TITLE, BesideATerminal, DesktopTest


class Xfwm4(BesideATerminal, DesktopTest):
    desktop_options = {"window_manager": "xfwm4"}

    def setUp(self):
        super().setUp()
        self.terminal = self.start_terminal()
        self.program = self.start()

    def test_the_popover_takes_the_keyboard_and_gives_it_back(self):
        for number in range(2):
            popover = self.program.open_popover()
            self.assertFalse(popover.window.is_managed)
            self.input.type(f"task {number}\n")
            popover.row(f"task {number}")
            self.input.key("Escape")
            self.eventually(self.program.has_popover, False)
            self.assert_has_the_keyboard(self.terminal)

    def test_a_click_elsewhere_closes_the_popover(self):
        self.program.open_popover()
        self.input.click(self.terminal.window.centre)
        self.eventually(self.program.has_popover, False)
        self.assert_has_the_keyboard(self.terminal)

    def test_a_window_that_the_popover_opens_keeps_the_keyboard(self):
        popover = self.program.open_popover()
        popover.open_menu()
        popover.choose("Settings…")
        self.program.view(SETTINGS_TITLE)
        self.eventually(self.program.has_popover, False)
        self.assertTrue(self.program.is_active())

    def test_the_quick_add_panel_is_on_every_workspace(self):
        for workspace in (0, 1):
            self.desktop.screen.switch_to_workspace(workspace)
            self.addCleanup(self.desktop.screen.switch_to_workspace, 0)
            panel = self.program.open_quick_add()
            self.assertIn("focused", panel.entry.states)
            self.assertIsNone(panel.window.workspace)
            self.input.type(f"from workspace {workspace}\n")
            self.eventually(self.program.has_quick_add, False)
        self.eventually(self.quillo.titles, ["from workspace 1", "from workspace 0"])


if __name__ == "__main__":
    unittest.main()
