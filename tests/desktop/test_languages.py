"""The program in another language than English."""

import unittest

from quillo_on_desktop import DesktopTest, StatusItem

GERMAN = {"LC_ALL": "de_DE.UTF-8", "LANGUAGE": "de"}


class German(DesktopTest):
    def setUp(self):
        super().setUp()
        self.add("Call mom tomorrow at 9am")
        self.program = self.start(environment=GERMAN)

    def test_the_list(self):
        self.input.click(self.desktop.status_icon())
        popover = self.program.view("Quillo")
        for text in ("1 offen", "Strg+Alt+Super+T", "von überall hinzufügen."):
            self.eventually(lambda text=text: text in popover.names("label"), True)
        (row,) = popover.names("list item")
        self.assertRegex(row, r"^Call mom, Fällig \d+\.\d+\.\d{4} um 09:00$")
        self.input.type("milk\n")
        self.eventually(lambda: "2 offen" in popover.names("label"), True)

    def test_the_menu_of_the_status_bar(self):
        labels = [line["label"].replace("_", "") for line in StatusItem(self.desktop).menu() if "label" in line]
        self.assertEqual(
            labels,
            [
                "Quillo öffnen",
                "Schnelleingabe …",
                "Einstellungen …",
                "Exportieren …",
                "Nach Updates suchen …",
                "Quillo beenden",
            ],
        )

    def test_the_windows(self):
        for command, title in (("settings", "Quillo – Einstellungen"), ("statistics", "Quillo – Statistik")):
            self.done(command)
            self.program.view(title)

    def test_the_panel_that_asks_where_to_save(self):
        self.input.click(self.desktop.status_icon())
        popover = self.program.view("Quillo")
        popover.click("push button", "Weitere Optionen")
        popover.click("menu item", "Als Markdown exportieren …")
        self.program.view("Als Markdown exportieren").find("push button", "Speichern")


class Arabic(DesktopTest):
    def test_english_texts_run_from_the_left_also_where_those_of_qt_do_not(self):
        program = self.start(environment={"LC_ALL": "ar_EG.UTF-8", "LANGUAGE": "ar"})
        popover = program.open_popover()
        popover.open_menu()
        popover.choose("Export as Markdown…")
        program.view("Export as Markdown")  # Qt's own, in Arabic
        self.eventually(program.has_popover, False)
        self.input.key("Escape")
        self.done("open")
        popover = program.popover()
        self.assertLess(popover.find("heading", "Quillo").area[0], popover.find("push button", "More options").area[0])


if __name__ == "__main__":
    unittest.main()
