"""Keeping the list in step: the sheet in the settings, and two computers, each with a screen of its own."""

import time
import unittest

from dav_server import PASSWORD, USER, DavServer
from desktop import Desktop
from desktop_program import wait_until
from quillo_command import stored_task
from quillo_on_desktop import SETTINGS_TITLE, WAIT_SECONDS, DesktopTest, LoneQuillo, Program

SHEET = "Sync"
CONFIGURE = "Configure…"
NOTHING, FOLDER, SERVER = "Nothing", "A folder", "A WebDAV server"
USE, TEST, DONE = "Use This Place", "Test Connection", "Done"
MINE, THEIRS = "Keep the List of This Computer", "Keep the Other List"

# What is added on one screen is on the other so soon.
MOST_SECONDS = 2


class SyncTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self.root = self.folder / "shared"
        self.root.mkdir()

    def open_sheet(self, program=None):
        self.program = program or self.start()
        self.program.quillo("settings")
        self.view = self.program.view(SETTINGS_TITLE)
        self.view.click("push button", CONFIGURE)
        wait_until(lambda: self.view.has("dialog", SHEET), "the sheet is there", WAIT_SECONDS)
        return self.view

    def fill(self, **fields):
        """Types into the fields of those names."""
        for name, text in fields.items():
            self.view.click("text", name)
            self.program.desktop.input.key("ctrl+a")
            self.program.desktop.input.type(text)

    def use(self, folder):
        self.view.click("radio button", FOLDER)
        self.fill(Folder=str(folder))
        self.view.click("push button", USE)

    def serve(self):
        """The address of a server that wants a password."""
        server = DavServer()
        self.addCleanup(server.server_close)
        self.addCleanup(server.shutdown)
        return server.address("password")

    def use_server(self, address, password):
        self.view.click("radio button", SERVER)
        self.fill(Address=address, User=USER, Password=password)
        self.view.click("push button", USE)

    def use_on(self, program, use):
        self.open_sheet(program)
        use()
        self.wait_for("push button", DONE)
        self.close_sheet()
        program.desktop.input.key("Escape")
        self.eventually(lambda: program.has_window(SETTINGS_TITLE), False)

    def close_sheet(self):
        self.program.desktop.input.key("Escape")
        self.eventually(lambda: self.view.has("dialog", SHEET), False)

    def wait_for(self, role, name):
        wait_until(lambda: self.view.has(role, name), f"{role} {name!r} is there", WAIT_SECONDS)

    def status(self, quillo=None):
        return (quillo or self.quillo)("sync", "status", "--json").json

    def answers(self):
        return self.view.names("alert message")


class Sheet(SyncTest):
    def test_it_begins_with_nothing_and_shows_what_each_place_needs(self):
        view = self.open_sheet()
        self.assertIn("checked", view.find("radio button", NOTHING).states)
        self.assertEqual(view.names("text"), [])
        view.click("radio button", FOLDER)
        self.assertEqual(view.names("text"), ["Folder"])
        view.click("radio button", SERVER)
        self.assertEqual(view.names("text"), ["Address", "User", "Password"])

    def test_a_folder_is_used_from_now_on(self):
        self.add("buy milk")
        self.open_sheet()
        self.use(self.root)
        self.wait_for("push button", DONE)
        self.assertEqual(self.status()["folder"], str(self.root))
        self.assertEqual(len(list((self.root / "quillo/v1").glob("*.json"))), 1)
        self.wait_for("heading", "State")
        self.wait_for("push button", "Sync Now")

        self.view.click("radio button", NOTHING)
        self.view.click("push button", USE)
        self.wait_for("push button", DONE)
        self.assertEqual(self.status()["place"], "off")

    def test_what_cannot_be_used_is_told_and_changes_nothing(self):
        self.open_sheet()
        self.use(self.folder / "not-there")
        self.eventually(lambda: any("not-there" in text for text in self.answers()), True)
        self.assertEqual(self.status()["place"], "off")
        self.use("not/absolute")
        self.eventually(lambda: any("absolute" in text for text in self.answers()), True)

    def test_a_place_is_tested_without_being_used(self):
        self.open_sheet()
        self.view.click("radio button", FOLDER)
        self.fill(Folder=str(self.root))
        self.view.click("push button", TEST)
        self.eventually(self.answers, ["The place can be used."])
        self.assertEqual(self.status()["place"], "off")

    def test_where_both_sides_have_tasks_the_user_says_which_go_on(self):
        other = self.make_quillo("other")
        other.put_items(stored_task(1, "theirs"))
        other("sync", "use", "folder", str(self.root))
        self.quillo.put_items(stored_task(2, "mine"))
        self.open_sheet()
        self.use(self.root)
        self.wait_for("push button", THEIRS)
        self.assertEqual(self.quillo.titles(), ["mine"])
        self.view.click("push button", THEIRS)
        self.eventually(self.quillo.titles, ["theirs"])

        # The other one can be brought back here.
        self.close_sheet()
        self.view.click("push button", CONFIGURE)
        self.wait_for("push button", "Restore")
        for _ in range(20):  # It comes into view with the keyboard.
            self.input.key("Tab")
            if "focused" in self.view.find("push button", "Restore").states:
                break
        self.view.click("push button", "Restore")
        self.eventually(self.quillo.titles, ["mine"])
        self.eventually(self.answers, ["The earlier list is back."])

    def test_a_server_wants_the_right_password(self):
        address = self.serve()
        self.open_sheet()
        self.use_server(address, "not it")
        self.eventually(lambda: any("password" in text for text in self.answers()), True)
        self.assertEqual(self.status()["place"], "off")
        self.use_server(address, PASSWORD)
        self.wait_for("push button", DONE)
        status = self.status()
        self.assertEqual((status["place"], status["url"], status["user"]), ("webdav", address, USER))
        # What was typed is not shown again, nor kept in the field.
        self.assertEqual(self.view.find("text", "Password").text, "")

    def test_it_works_by_the_keyboard_alone(self):
        self.open_sheet()
        self.close_sheet()
        for _ in range(3):
            self.input.key("Tab")
        self.input.key("Return")
        self.wait_for("dialog", SHEET)
        for chosen in (FOLDER, SERVER, NOTHING, FOLDER):
            self.input.key("Down")
            self.eventually(lambda: "checked" in self.view.find("radio button", chosen).states, True)
        self.input.key("Tab")
        self.input.type(str(self.root))
        self.input.key("Return")
        self.eventually(lambda: self.status()["folder"], str(self.root))
        self.close_sheet()
        # The keyboard is where it was.
        self.input.key("space")
        self.wait_for("dialog", SHEET)
        self.assertTrue(self.program.has_window(SETTINGS_TITLE))

    def test_a_folder_is_chosen_in_a_panel(self):
        self.open_sheet()
        self.view.click("radio button", FOLDER)
        self.view.click("push button", "Choose Folder…")
        panel = self.program.view("Folder to Sync Through")
        self.input.key("ctrl+a")
        # Qt completes what is typed, a moment later.
        self.input.type(f"{self.folder}/")
        panel.picture()
        self.input.type(self.root.name)
        panel.picture()
        self.input.key("Return")
        self.eventually(lambda: self.view.find("text", "Folder").text, str(self.root))
        self.assertEqual(self.status()["place"], "off")

    def test_what_was_typed_goes_with_the_sheet(self):
        self.open_sheet()
        self.view.click("radio button", SERVER)
        self.fill(Address="https://cloud.example")
        self.close_sheet()
        self.view.click("push button", CONFIGURE)
        self.wait_for("dialog", SHEET)
        self.assertIn("checked", self.view.find("radio button", NOTHING).states)


class TwoComputers(SyncTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.other_desktop = cls.enterClassContext(Desktop())

    def setUp(self):
        super().setUp()
        self.other = LoneQuillo(self.folder / "other", self.other_desktop)
        self.here = self.start()
        self.there = Program(self.other_desktop, self.other)
        self._programs.append(self.there)
        self.there.wait_until_ready()

    def assert_shown(self, popover, title):
        began = time.monotonic()
        wait_until(lambda: title in popover.rows(), title, MOST_SECONDS)
        return time.monotonic() - began

    def test_what_is_added_on_one_screen_is_on_the_other_through_a_folder(self):
        for program in (self.here, self.there):
            self.use_on(program, lambda: self.use(self.root))
        there = self.there.open_popover()
        here = self.here.open_popover()
        for number in range(3):
            self.input.type(f"Call mom {number}")
            self.input.key("Return")
            seconds = self.assert_shown(there, f"Call mom {number}")
            print(f"on the other screen after {seconds:.3f} s")
        self.assertEqual(self.other.titles(), ["Call mom 2", "Call mom 1", "Call mom 0"])

        # And back: ticked off there, done here.
        there.picture()  # The rows have come to rest.
        self.other_desktop.input.click(there.checkbox("Call mom 1").centre)
        wait_until(lambda: "Call mom 1" not in here.rows(), "it is done here", WAIT_SECONDS)

    def test_what_is_added_on_one_screen_is_on_the_other_through_a_server(self):
        address = self.serve()
        for program in (self.here, self.there):
            self.use_on(program, lambda: self.use_server(address, PASSWORD))
        here = self.here.open_popover()
        self.input.type("Call mom")
        self.input.key("Return")
        here.row("Call mom")
        self.eventually(lambda: len(self.status(self.quillo)["devices"]), 2)
        time.sleep(1)
        # The server tells nobody: it is looked at when the list is opened.
        seconds = self.assert_shown(self.there.open_popover(), "Call mom")
        print(f"on the other screen after {seconds:.3f} s")


if __name__ == "__main__":
    unittest.main()
