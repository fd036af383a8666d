"""The list is saved where the user wants it, beside everything else that goes on."""

import json
import os
import pathlib
import subprocess
import tempfile
import time
import unittest

from desktop_program import wait_until
from quillo_on_desktop import SETTLED_SECONDS, WAIT_SECONDS, DesktopTest, StatusItem

MARKDOWN = "Export as Markdown"
JSON = "Export as JSON"
DOCUMENT = "# Quillo Export\n\n- [ ] two ] *\n- [ ] one\n"


class ExportTest(DesktopTest):
    def setUp(self):
        # Before the program, which uses them until it is ended.
        self.documents = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        configuration = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        super().setUp()
        (configuration / "user-dirs.dirs").write_text(f'XDG_DOCUMENTS_DIR="{self.documents}"\n')
        self.add("one", "two ] *")
        self.program = self.start(environment={"XDG_CONFIG_HOME": str(configuration)})

    def ask(self, title):
        """Chooses the line of the popover's menu; returns the panel that asks where to save: in the documents."""
        popover = self.program.open_popover()
        popover.open_menu()
        popover.choose(title + "…")
        panel = self.program.view(title)
        self.eventually(self.program.has_popover, False)
        time.sleep(SETTLED_SECONDS)
        return panel

    def save(self, panel, name):
        self.name(panel, name)
        self.input.key("Tab")  # What Qt's panel suggests would take the click.
        panel.click("push button", "Save")

    def name(self, panel, name):
        """Without a folder: while that is being typed Qt's panel would open it."""
        self.input.key("ctrl+a")
        self.input.type(name)
        self.eventually(lambda: panel.find("text").text, name)

    def written(self, name):
        file = self.documents / name
        return wait_until(lambda: file.exists() and file.read_text(), f"{file} is written", WAIT_SECONDS)


class Panels(ExportTest):
    def test_markdown(self):
        panel = self.ask(MARKDOWN)
        self.assertEqual(panel.find("text").text, "Quillo.md")
        self.save(panel, "list.md")
        self.assertEqual(self.written("list.md"), DOCUMENT)
        self.eventually(lambda: self.program.has_window(MARKDOWN), False)

    def test_json_by_the_keyboard_and_without_an_ending(self):
        panel = self.ask(JSON)
        self.assertEqual(panel.find("text").text, "Quillo.json")
        self.name(panel, "list")
        self.input.key("Return")
        tasks = json.loads(self.written("list.json"))
        self.assertEqual([task["title"] for task in tasks], ["two ] *", "one"])

    def test_the_list_is_that_of_the_moment_of_asking(self):
        panel = self.ask(MARKDOWN)
        self.add("three")
        self.save(panel, "list.md")
        self.assertEqual(self.written("list.md"), DOCUMENT)

    def test_escape_writes_nothing(self):
        self.ask(MARKDOWN)
        self.input.key("Escape")
        self.eventually(lambda: self.program.has_window(MARKDOWN), False)
        self.assertEqual(list(self.documents.iterdir()), [])

    def test_the_rest_goes_on_while_a_panel_is_open(self):
        self.ask(MARKDOWN)
        popover = self.program.open_popover()
        self.input.type("three\n")
        popover.row("three")
        self.assertTrue(self.program.has_window(MARKDOWN))

    def test_the_program_ends_while_a_panel_is_open(self):
        self.ask(MARKDOWN)
        self.assert_ends_well(self.program)

    def test_the_menu_of_the_status_item(self):
        self.input.right_click(self.desktop.status_icon())
        self.wait_for_menu()
        item = StatusItem(self.desktop)
        choices = [entry["label"] for entry in item.menu() if entry.get("label") and entry.get("enabled", True)]
        for _ in range(choices.index("Export…") + 1):
            self.input.key("Down")
        self.input.key("Return")
        # Then ours, which assistive programs do not find in the program's tree.
        self.wait_for_menu()
        for key in ("Down", "Down", "Return"):
            self.input.key(key)
        self.program.view(JSON)

    def wait_for_menu(self):
        wait_until(self.desktop.screen.has_menu, "there is a menu", WAIT_SECONDS)
        self.desktop.screen.picture_at_rest()


class Failures(ExportTest):
    def assert_goes_on(self):
        self.add("and on")
        self.assertEqual(self.quillo.titles()[0], "and on")
        self.assert_ends_well(self.program)

    def test_a_folder_that_is_gone(self):
        panel = self.ask(MARKDOWN)
        self.name(panel, "list.md")
        self.documents.rmdir()
        panel.click("push button", "Save")
        # Qt's own panel may see it; else nothing is said.
        self.assert_goes_on()
        self.assertFalse(self.documents.exists())
        self.documents.mkdir()

    @unittest.skipUnless(os.geteuid() == 0, "only root may make a small disk")
    def test_a_full_disk(self):
        subprocess.run(["mount", "-t", "tmpfs", "-o", "size=8k", "tmpfs", self.documents], check=True)
        self.addCleanup(subprocess.run, ["umount", self.documents], check=True)
        (self.documents / "list.md").write_text("an earlier one")
        for number in range(20):
            self.add(f"{number} " + "so much " * 100)
        panel = self.ask(MARKDOWN)
        self.save(panel, "list.md")
        wait_until(lambda: len(self.program.windows()) == 2, "it asks whether to replace the file", WAIT_SECONDS)
        self.input.key("alt+y")
        self.eventually(lambda: "the list could not be exported" in self.program.errors, True)
        self.assertEqual([file.name for file in self.documents.iterdir()], ["list.md"])
        self.assertEqual((self.documents / "list.md").read_text(), "an earlier one")
        self.assert_goes_on()


if __name__ == "__main__":
    unittest.main()
