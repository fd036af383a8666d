"""Recording another shortcut in the settings window."""

import unittest

from quillo_on_desktop import SHORTCUT
from test_settings import RECORDER, SettingsTest

OTHER = "shift+super+k"
RECORDING = "Press shortcut…"
RECORDING_HELP = "Press the new shortcut, or Esc to cancel."
RESTORE = "Restore Default"


class Recorder(SettingsTest):
    def setUp(self):
        super().setUp()
        self.open()

    def shown(self):
        return self.view.find("push button", RECORDER).description

    def record(self):
        self.view.click("push button", RECORDER)
        self.eventually(self.shown, RECORDING)

    def record_other(self):
        self.record()
        self.input.key(OTHER)
        self.eventually(self.shown, "⇧⌘K")

    def assert_opens_quick_add(self, shortcut):
        self.input.key(shortcut)
        self.program.quick_add()
        self.input.key("Escape")
        self.eventually(self.program.has_quick_add, False)

    def assert_opens_nothing(self, shortcut, working):
        """It had time enough when the one that works has opened the panel, and has not closed it again."""
        self.input.key(shortcut)
        self.assert_opens_quick_add(working)

    def test_another_shortcut_replaces_the_old_one_at_once_and_for_good(self):
        self.assertEqual(self.shown(), "⌃⌥⌘T")
        self.record_other()
        self.assert_opens_nothing(SHORTCUT, working=OTHER)
        self.assert_ends_well(self.program)
        del self.program
        self.open()
        self.assertEqual(self.shown(), "⇧⌘K")
        self.assert_opens_nothing(SHORTCUT, working=OTHER)

    def test_the_default_is_restored(self):
        self.assertFalse(self.view.has("push button", RESTORE))
        self.record_other()
        self.view.click("push button", RESTORE)
        self.eventually(self.shown, "⌃⌥⌘T")
        self.eventually(lambda: self.view.has("push button", RESTORE), False)
        self.assert_opens_nothing(OTHER, working=SHORTCUT)

    def test_by_the_keyboard_alone(self):
        self.tab_to(RECORDER)
        self.input.key("space")
        self.eventually(self.shown, RECORDING)
        self.input.key(OTHER)
        self.eventually(self.shown, "⇧⌘K")

    def test_a_bare_key_is_not_taken(self):
        self.record()
        self.view.find("label", RECORDING_HELP)
        self.input.key("t")
        self.input.key("Return")
        self.input.key("Tab")
        self.input.key(OTHER)
        self.eventually(self.shown, "⇧⌘K")

    def test_escape_and_a_second_click_take_nothing(self):
        for stop in (lambda: self.input.key("Escape"), lambda: self.view.click("push button", RECORDER)):
            self.record()
            stop()
            self.eventually(self.shown, "⌃⌥⌘T")
            self.assertTrue(self.is_open())
            self.assertFalse(self.view.has("label", RECORDING_HELP))
        self.assert_opens_quick_add(SHORTCUT)

    def test_the_shortcut_itself_is_recorded_and_opens_nothing(self):
        self.record()
        self.input.key(SHORTCUT)
        self.eventually(self.shown, "⌃⌥⌘T")
        self.assertFalse(self.program.has_quick_add())
        self.assert_opens_quick_add(SHORTCUT)

    def test_keys_that_the_window_knows_are_recorded_like_others(self):
        for key, shown in (("ctrl+w", "⌃W"), ("shift+Tab", "⇧⇥"), ("alt+space", "⌥Space"), ("ctrl+Return", "⌃↩")):
            with self.subTest(key=key):
                self.record()
                self.input.key(key)
                self.eventually(self.shown, shown)

    def test_going_elsewhere_stops_it(self):
        self.record()
        self.program.open_popover()
        self.assert_opens_quick_add(SHORTCUT)

    def test_closing_the_window_stops_it(self):
        self.record()
        self.view.window.close()
        self.eventually(self.is_open, False)
        self.assert_opens_quick_add(SHORTCUT)
        self.open()
        self.assertEqual(self.shown(), "⌃⌥⌘T")


if __name__ == "__main__":
    unittest.main()
