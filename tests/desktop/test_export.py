"""The list is saved where the user wants it, beside everything else that goes on."""

import json
import pathlib
import tempfile
import unittest

from desktop_program import wait_until
from quillo_on_desktop import WAIT_SECONDS, DesktopTest, StatusItem

MARKDOWN = "Export as Markdown"
JSON = "Export as JSON"
DOCUMENT = "# Quillo Export\n\n- [ ] two ] *\n- [ ] one\n"


class ExportTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self.folder_to_save_in = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.add("one", "two ] *")
        self.program = self.start()

    def ask(self, title):
        """Chooses the line of the popover's menu; returns the panel that asks where to save."""
        popover = self.program.open_popover()
        popover.open_menu()
        popover.choose(title + "…")
        return self.program.view(title)

    def save(self, panel, file):
        self.name(panel, file)
        panel.click("push button", "Save")

    def name(self, panel, file):
        self.input.key("ctrl+a")
        self.input.type(str(file))
        self.eventually(lambda: panel.find("text").text, str(file))

    def written(self, file):
        return wait_until(lambda: file.exists() and file.read_text(), f"{file} is written", WAIT_SECONDS)


class Panels(ExportTest):
    def test_markdown(self):
        panel = self.ask(MARKDOWN)
        self.assertEqual(panel.find("text").text, "Quillo.md")
        file = self.folder_to_save_in / "list.md"
        self.save(panel, file)
        self.assertEqual(self.written(file), DOCUMENT)
        self.eventually(lambda: self.program.has_window(MARKDOWN), False)

    def test_json_by_the_keyboard_and_without_an_ending(self):
        panel = self.ask(JSON)
        self.assertEqual(panel.find("text").text, "Quillo.json")
        file = self.folder_to_save_in / "list"
        self.name(panel, file)
        self.input.key("Return")
        tasks = json.loads(self.written(file.with_suffix(".json")))
        self.assertEqual([task["title"] for task in tasks], ["two ] *", "one"])

    def test_the_list_is_that_of_the_moment_of_asking(self):
        panel = self.ask(MARKDOWN)
        self.add("three")
        file = self.folder_to_save_in / "list.md"
        self.save(panel, file)
        self.assertEqual(self.written(file), DOCUMENT)

    def test_escape_writes_nothing(self):
        self.ask(MARKDOWN)
        self.input.key("Escape")
        self.eventually(lambda: self.program.has_window(MARKDOWN), False)
        self.assertEqual(list(self.desktop.home.rglob("Quillo.md")), [])

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
    def test_a_folder_that_is_gone(self):
        folder = self.folder_to_save_in / "gone"
        folder.mkdir()
        panel = self.ask(MARKDOWN)
        self.name(panel, folder / "list.md")
        folder.rmdir()
        panel.click("push button", "Save")
        # Qt's own panel may see it; else nothing is said. Either way the program goes on.
        self.add("three")
        self.assertEqual(len(self.quillo.titles()), 3)
        self.assertFalse(folder.exists())
        self.assert_ends_well(self.program)


if __name__ == "__main__":
    unittest.main()
