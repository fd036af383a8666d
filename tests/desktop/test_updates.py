"""Looking for a newer version, as the user meets it.

What needs a feed is shown by update_window.cpp, the same window and adapter with keys of the test's own: the program
takes its keys from nowhere but its makers. Its path is in the environment variable UPDATE_WINDOW.
"""

import os
import pathlib
import sys
import unittest

import file_manager
import release_server
from desktop_program import wait_until
from quillo_on_desktop import UPDATES_TITLE, WAIT_SECONDS, DesktopTest, Program, View

ARCHIVE = "quillo-2.0.tar.gz"
AVAILABLE = "A new version of Quillo is available"
NOTES = "<ul><li>Opens faster</li><li>Understands more dates</li></ul>"


class UpdateWindow(Program):
    """The window by itself. `state` are the small files that update_window.cpp reads."""

    def __init__(self, desktop, folder, command=None, scale=1, environment=None, **state):
        self.desktop = desktop
        self.scale = scale
        self.folder = pathlib.Path(folder)
        self.folder.mkdir(exist_ok=True)
        self.archive = os.urandom(2_000_000)
        (self.folder / ARCHIVE).write_bytes(self.archive)
        files = {"feed": "appcast.xml", "place": ARCHIVE, "build": "10", "notes.html": NOTES, "asks": "user", **state}
        for name, text in files.items():
            (self.folder / name).write_text(text)
        server = release_server.serve(self.folder)
        address = f"http://127.0.0.1:{server.server_port}/"
        arguments = [os.environ["UPDATE_WINDOW"], str(self.folder), address]
        if command is not None:
            arguments.append(command)
        variables = {**(environment or {}), "QT_SCALE_FACTOR": str(scale)}
        self._started = desktop.start(*arguments, environment=variables)
        self.process = self._started.process

    @property
    def errors(self):
        return str(self._started)

    def kill(self):
        self._started.kill()

    def view(self):
        return View(self, self._ready_window(UPDATES_TITLE))

    def is_shown(self):
        return self._window_titled(UPDATES_TITLE) is not None


class UpdateTest(DesktopTest):
    def show(self, **options):
        """The window, once it has asked the server."""
        self.program = UpdateWindow(self.desktop, self.folder / "served", **options)
        self._programs.append(self.program)
        self.window = self.program.view()

    def sees(self, heading):
        self.window.find("label", heading)

    def texts(self):
        return self.window.names("label")

    def has_focus(self, name):
        self.eventually(lambda: "focused" in self.window.find("push button", name).states, True)

    def assert_gone(self):
        self.eventually(self.program.is_shown, False)

    @property
    def downloads(self):
        return self.desktop.home / "Downloads"

    def downloaded(self):
        return sorted(path.name for path in self.downloads.glob("*")) + [
            path.name for path in self.downloads.glob(".quillo*")
        ]

    def tearDown(self):
        super().tearDown()
        for path in self.downloads.glob("*"):
            path.unlink()


class Offers(UpdateTest):
    def test_a_download_ends_in_the_file_manager(self):
        script = pathlib.Path(file_manager.__file__)
        manager = self.desktop.start(sys.executable, "-B", str(script))
        wait_until(lambda: self.desktop.bus.owner(file_manager.NAME), "the file manager is there")
        self.show()
        self.sees(AVAILABLE)
        self.assertIn("Version 2.0 is there; you have 1.0. Would you like to download it?", self.texts())
        notes = self.window.find("label", "What is new")
        self.assertEqual(notes.description, "• Opens faster\n• Understands more dates")
        self.has_focus("Download")
        self.input.key("Return")
        self.sees("Quillo 2.0 was downloaded")
        self.assertEqual((self.downloads / ARCHIVE).read_bytes(), self.program.archive)
        self.assertEqual(self.downloaded(), [ARCHIVE])
        address = (self.downloads / ARCHIVE).as_uri()
        self.eventually(lambda: manager.output.split(), [address])
        self.has_focus("Show in Folder")
        self.window.click("push button", "Show in Folder")
        self.eventually(lambda: manager.output.split(), [address, address])
        self.window.click("push button", "Close")
        self.assert_gone()
        manager.stop()

    def test_later_and_skip_close_the_window(self):
        for answer in ("Later", "Skip This Version"):
            self.show()
            self.window.click("push button", answer)
            self.assert_gone()
            self.assertEqual(self.downloaded(), [])
            self.program.kill()

    def test_a_package_manager_is_named_with_its_command(self):
        command = "sudo apt update && sudo apt install --only-upgrade quillo"
        self.show(command=command)
        self.sees(AVAILABLE)
        self.sees(command)
        self.assertFalse(self.window.has("push button", "Download"))
        self.window.click("push button", "Copy")
        self.has_focus("Later")

    def test_everything_can_be_reached_with_the_keyboard(self):
        self.show()
        self.has_focus("Download")
        reached = []
        for _ in range(4):
            self.input.key("Tab")
            reached.append(wait_until(self._focused, "something has the keyboard", WAIT_SECONDS))
        self.assertEqual(set(reached), {"Download", "Later", "Skip This Version", "What is new"})
        self.input.key("Escape")
        self.assert_gone()

    def _focused(self):
        nodes = self.window.node.walk()
        return next((node.name for node in nodes if "focused" in node.states and node.name != UPDATES_TITLE), None)

    def test_it_is_a_window_like_others(self):
        self.show()
        self.assertEqual(self.window.window.kinds & {"_NET_WM_WINDOW_TYPE_DIALOG"}, {"_NET_WM_WINDOW_TYPE_DIALOG"})
        self.assertEqual(self.window.window.area[2], 480)
        self.input.key("ctrl+w")
        self.assert_gone()


class InTheBackground(UpdateTest):
    def test_an_offer_leaves_the_keyboard_where_it_is(self):
        terminal = self.desktop.start("xterm")
        self.addCleanup(terminal.stop)
        screen = self.desktop.screen
        self.eventually(lambda: screen.active_process() == terminal.process.pid, True)
        self.program = UpdateWindow(self.desktop, self.folder / "served", asks="itself")
        self._programs.append(self.program)
        self.eventually(self.program.is_shown, True)
        screen.picture_at_rest()
        self.assertEqual(screen.active_process(), terminal.process.pid)
        self.window = View(self.program, self.program._window_titled(UPDATES_TITLE))
        self.sees(AVAILABLE)


class Failures(UpdateTest):
    def test_a_newest_version_is_told_so(self):
        self.show(build="20")
        self.sees("Quillo is up to date")
        self.sees("Version 1.0 is the newest there is.")
        self.has_focus("Close")
        self.input.key("space")
        self.assert_gone()

    def test_a_check_can_be_given_up(self):
        self.show(feed="silent/appcast.xml")
        self.sees("Checking for updates…")
        self.window.find("progress bar", "Checking for updates…")
        self.has_focus("Cancel")
        self.input.key("Return")
        self.assert_gone()

    def test_a_download_shows_how_far_it_is_and_can_be_given_up(self):
        self.show(place="silent/" + ARCHIVE)
        self.window.click("push button", "Download")
        bar = self.window.find("progress bar", "Downloading Quillo 2.0…")
        self.sees("1.0 MB of 2.0 MB")
        self.assertEqual(bar.description, "1.0 MB of 2.0 MB")
        self.window.click("push button", "Cancel")
        self.assert_gone()
        self.assertEqual(self.downloaded(), [])

    def test_a_forged_archive_is_not_kept(self):
        self.show()
        self.sees(AVAILABLE)
        forged = self.program.archive[:-1] + bytes([self.program.archive[-1] ^ 1])
        (self.program.folder / ARCHIVE).write_bytes(forged)
        self.window.click("push button", "Download")
        self.sees("The update could not be downloaded")
        self.sees("The download was not signed by the makers of Quillo. It was not kept.")
        self.assertEqual(self.downloaded(), [])
        # The makers have noticed.
        (self.program.folder / ARCHIVE).write_bytes(self.program.archive)
        self.has_focus("Try Again")
        self.input.key("Return")
        self.sees("Quillo 2.0 was downloaded")

    def test_what_goes_wrong_is_said_in_words(self):
        words = {
            "endless/appcast.xml": "The server's list of versions is far too long. It was not used.",
            "away/appcast.xml": "The server leads to a connection that is not protected. "
            "Nothing was loaded from there.",
            "missing/appcast.xml": "The server could not be reached, or the connection was lost. "
            "Check your connection to the internet, or try again later.",
        }
        for feed, text in words.items():
            self.show(feed=feed)
            self.sees("Quillo could not check for updates")
            self.sees(text)
            self.program.kill()


class TheProgram(DesktopTest):
    def test_without_a_feed_it_says_that_it_does_not_look(self):
        program = self.start()
        popover = program.open_popover()
        popover.open_menu()
        popover.choose("Check for Updates…")
        window = View(program, program._ready_window(UPDATES_TITLE))
        window.find("label", "This Quillo does not look for updates")
        self.assertFalse(window.has("push button", "Try Again"))
        window.click("push button", "Close")
        self.eventually(lambda: program._window_titled(UPDATES_TITLE), None)
        self.assert_ends_well(program)


if __name__ == "__main__":
    unittest.main()
