"""The settings window: every control acts at once, by the pointer and by the keyboard alone."""

import unittest

from desktop_program import wait_until
from quillo_command import stored_task
from quillo_on_desktop import SETTINGS_TITLE, WAIT_SECONDS, DesktopTest, View

SIZE = (480, 580)

LOGIN = "Launch Quillo at login"
SYNC = "Sync between computers"
CONFIGURE = "Configure…"
RECORDER = "Open Quick Add"
CLEAR = "Clear Completed Tasks"
TRACK = "Track completion statistics"
RESET = "Reset Statistics…"
CONFIRMATION = "Reset all statistics?"

AUTOSTART = """[Desktop Entry]
Type=Application
Name=Quillo
Icon=org.quillo.Quillo
Exec=quillo-desktop
Terminal=false
X-GNOME-Autostart-enabled=true
"""


class SettingsTest(DesktopTest):
    def open(self, **options):
        if not hasattr(self, "program"):
            self.program = self.start(**options)
        self.done("settings")
        return self.settings()

    def settings(self):
        self.view = View(self.program, self.program._ready_window(SETTINGS_TITLE))
        return self.view

    def is_open(self):
        return self.program._window_titled(SETTINGS_TITLE) is not None

    def is_on(self, name):
        return "checked" in self.view.find("check box", name).states

    def focused(self):
        """What has the keyboard, innermost."""

        def find():
            return [node for node in self.view.node.find_all() if "focused" in node.states and node.name]

        return wait_until(find, "something has the keyboard", WAIT_SECONDS)[-1]

    def way_round(self):
        """What the Tab key leads to, one after another."""
        way = []
        for _ in range(20):
            self.input.key("Tab")
            if (name := self.focused().name) in way:
                break
            way.append(name)
        return way

    def tab_to(self, name):
        """Goes there with the Tab key."""
        for _ in range(20):
            self.input.key("Tab")
            if "focused" in self.node(name).states:
                return
        raise AssertionError(f"the Tab key does not lead to {name!r}")

    def node(self, name):
        (found,) = [node for node in self.view.node.find_all(name=name, showing=False) if "focusable" in node.states]
        return found

    def preference(self, key):
        """(type, value)"""
        return self.quillo.preferences()[key]

    @property
    def autostart(self):
        return self.desktop.home / ".config/autostart"

    def files(self):
        return sorted(file.name for file in self.autostart.iterdir()) if self.autostart.is_dir() else []


class Window(SettingsTest):
    def test_it_is_an_ordinary_window_of_a_fixed_size(self):
        window = self.open().window
        self.assertTrue(window.is_managed)
        self.assertEqual(window.area[2:], SIZE)
        self.assertEqual(window.kinds, {"_NET_WM_WINDOW_TYPE_DIALOG", "_NET_WM_WINDOW_TYPE_NORMAL"})

    def test_opening_it_twice_gives_the_same_window(self):
        self.open()
        self.open()
        windows = [window for window in self.program.windows() if window.title == SETTINGS_TITLE]
        self.assertEqual(len(windows), 1)

    def test_it_opens_from_the_menu_of_the_popover(self):
        self.program = self.start()
        popover = self.program.open_popover()
        popover.open_menu()
        popover.choose("Settings…")
        self.settings()

    def test_escape_and_control_w_close_it_and_it_comes_back_where_it_was(self):
        for key in ("Escape", "ctrl+w"):
            place = self.open().window.area
            self.input.key(key)
            self.eventually(self.is_open, False)
            self.assertEqual(self.open().window.area, place)

    def test_it_shows_every_text(self):
        view = self.open()
        expected = [
            *("Quick Add Hotkey", "Data", "Statistics", "Updates"),
            *(LOGIN, SYNC, CONFIGURE, TRACK, "Check for updates automatically"),
            *(RECORDER, CLEAR, "Export as Markdown…", "Export as JSON…", RESET, "Check for Updates Now…"),
            *("Click the field to record a new shortcut. Press from anywhere to capture a task.",),
            *("Quillo", "Tiny, fast todo list that lives in your status bar.", "Visit website", "Contact support"),
        ]
        nodes = list(view.node.walk())
        names = [node.name for node in nodes]
        for name in expected:
            self.assertIn(name, names)
        helps = {node.name: node.description for node in nodes}
        self.assertEqual(helps[SYNC], "Keeps your list in sync across your computers.")
        self.assertEqual(
            helps[TRACK], "Counts completions, streaks, and personal records. Stays on this computer."
        )

    def test_the_tab_key_goes_all_the_way_round_and_what_it_reaches_is_in_sight(self):
        self.quillo.put_items(stored_task(1, "Post the letter", done=True))
        view = self.open()
        way = self.way_round()
        self.assertEqual(way[:5], [LOGIN, SYNC, CONFIGURE, RECORDER, CLEAR])
        self.assertEqual(way[-2:], ["Visit website", "Contact support"])
        self.assertEqual(self.focused().name, LOGIN)
        left, top, width, height = view.window.area
        for name in way[1:]:
            self.input.key("Tab")
            focused = self.focused()
            self.assertEqual(focused.name, name)
            self.assertTrue(top <= focused.area[1] <= top + height - focused.area[3], focused)


class LoginItem(SettingsTest):
    def setUp(self):
        super().setUp()
        self.addCleanup(self.clear)

    def clear(self):
        if self.autostart.is_dir():
            for file in self.autostart.iterdir():
                file.unlink()
            self.autostart.rmdir()
        else:
            self.autostart.unlink(missing_ok=True)

    def test_on_and_off_leave_exactly_the_right_file(self):
        view = self.open()
        self.assertFalse(self.is_on(LOGIN))
        view.click("check box", LOGIN)
        self.eventually(self.files, ["org.quillo.Quillo.desktop"])
        self.assertEqual((self.autostart / "org.quillo.Quillo.desktop").read_text(), AUTOSTART)
        self.assertTrue(self.is_on(LOGIN))
        view.click("check box", LOGIN)
        self.eventually(self.files, [])
        self.assertFalse(self.is_on(LOGIN))

    def test_by_the_keyboard(self):
        self.open()
        self.tab_to(LOGIN)
        self.input.key("space")
        self.eventually(self.files, ["org.quillo.Quillo.desktop"])
        self.eventually(lambda: self.is_on(LOGIN), True)

    def test_a_folder_that_cannot_be_written_flips_it_back(self):
        self.autostart.write_text("a file where the folder would be")
        view = self.open()
        view.click("check box", LOGIN)
        wait_until(lambda: "starting at login stays as it is" in self.program.errors, "it has failed", WAIT_SECONDS)
        self.eventually(lambda: self.is_on(LOGIN), False)
        self.assertEqual(self.autostart.read_text(), "a file where the folder would be")

    def test_it_shows_what_the_desktop_has_made_of_it(self):
        self.open()
        self.input.key("Escape")
        self.eventually(self.is_open, False)
        self.autostart.mkdir()
        (self.autostart / "org.quillo.Quillo.desktop").write_text(AUTOSTART)
        self.open()
        self.eventually(lambda: self.is_on(LOGIN), True)


class Switches(SettingsTest):
    def test_they_are_what_they_were_left_at(self):
        view = self.open()
        for name in (SYNC, TRACK):
            self.assertTrue(self.is_on(name))
            self.tab_to(name)
            self.input.key("space")
            self.eventually(lambda name=name: self.is_on(name), False)
        self.assert_ends_well(self.program)
        for key in ("Quillo.iCloudSync", "Quillo.stats.enabled"):
            self.assertEqual(self.preference(key), ("boolean", 0))
        del self.program
        self.open()
        for name in (SYNC, TRACK):
            self.assertFalse(self.is_on(name))

    def test_completed_tasks_are_cleared_while_there_are_some(self):
        self.open()
        self.add("Buy milk", "Call mom")
        self.assertNotIn(CLEAR, self.way_round())
        self.done("done", "1")
        self.assertIn(CLEAR, self.way_round())
        self.view.click("push button", CLEAR)
        self.eventually(self.quillo.titles, ["Buy milk"])
        self.assertNotIn(CLEAR, self.way_round())


class Reset(SettingsTest):
    def setUp(self):
        super().setUp()
        self.program = self.start()
        self.add("Buy milk")
        self.done("done", "1")
        self.assertEqual(self.completions(), 1)
        self.open()
        self.tab_to(RESET)
        self.input.key("Return")
        self.view.find("heading", CONFIRMATION)

    def completions(self):
        return self.quillo("stats", "--json").json["allTime"]

    def is_asking(self):
        return self.view.has("heading", CONFIRMATION)

    def test_escape_leaves_them(self):
        self.input.key("Escape")
        self.eventually(self.is_asking, False)
        self.assertTrue(self.is_open())
        self.assertEqual(self.completions(), 1)
        self.assertIn("focused", self.node(RESET).states)

    def test_cancel_has_the_keyboard(self):
        self.assertIn("focused", self.view.find("push button", "Cancel").states)
        self.input.key("Return")
        self.eventually(self.is_asking, False)
        self.assertEqual(self.completions(), 1)

    def test_it_erases_them(self):
        self.view.click("push button", "Reset Statistics")
        self.eventually(self.is_asking, False)
        self.eventually(self.completions, 0)


if __name__ == "__main__":
    unittest.main()
