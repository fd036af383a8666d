"""The icon in the status bar: what it says, what clicks on it do, and what becomes of it when the panel goes and comes."""

import unittest

from desktop import PANEL_HEIGHT
from desktop_program import wait_until
from quillo_on_desktop import WAIT_SECONDS, DesktopTest, StatusItem

MENU_OF_THE_PANEL = [
    "Open Quillo",
    "Quick Add…",
    "Settings…",
    "Export…",
    "Check for Updates…",
    "Quit Quillo",
]


def can_be_chosen(item):
    return item.get("type") != "separator" and item.get("enabled", True)


class Face(DesktopTest):
    def test_it_says_what_it_is(self):
        self.start()
        item = StatusItem(self.desktop)
        icon, pictures, title, text = item.ToolTip
        self.assertEqual((title, text), ("Quillo — open task list", ""))
        self.assertEqual(item.Title, "Quillo")
        self.assertEqual(item.Status, "Active")
        self.assertEqual(item.IconAccessibleDesc, "Quillo — open task list")
        self.assertIs(item.ItemIsMenu, False)

    def test_it_counts_what_is_to_do(self):
        self.start()
        item = StatusItem(self.desktop)
        self.assertEqual(item.XAyatanaLabel, "")
        self.add("milk", "bread")
        self.eventually(lambda: item.XAyatanaLabel, "2")
        self.assertEqual(item.ToolTip[2:], ("Quillo — open task list", "2"))
        self.done("done", "1")
        self.eventually(lambda: item.XAyatanaLabel, "1")
        self.done("done", "2")
        self.eventually(lambda: item.XAyatanaLabel, "")
        self.assertEqual(item.ToolTip[2:], ("Quillo — open task list", ""))

    def test_the_count_is_seen_on_the_panel(self):
        self.start()
        self.desktop.status_icon()
        strip = (0, 0, self.desktop.size[0], PANEL_HEIGHT)
        bare = self.desktop.screen.picture_at_rest(strip)
        self.add("milk")
        wait_until(lambda: self.desktop.screen.picture(strip) != bare, "the icon shows a count", WAIT_SECONDS)
        self.done("done", "1")
        wait_until(lambda: self.desktop.screen.picture(strip) == bare, "the icon is bare again", WAIT_SECONDS)


class Clicks(DesktopTest):
    def setUp(self):
        super().setUp()
        self.program = self.start()
        self.icon = self.desktop.status_icon()

    def wait_for_menu(self):
        """Until there is one, and it has been drawn: then it has the keyboard too."""
        wait_until(self.desktop.screen.has_menu, "there is a menu", WAIT_SECONDS)
        self.desktop.screen.picture_at_rest()

    def choose_in_the_menu_of_the_panel(self, text):
        """With the keyboard, which passes over what cannot be chosen."""
        self.input.right_click(self.icon)
        self.wait_for_menu()
        item = StatusItem(self.desktop)
        # What the panel has of the menu may be from before the list was there; it asks anew when it shows it.
        wait_until(lambda: item.menu()[0]["enabled"], "the menu is complete", WAIT_SECONDS)
        self.desktop.screen.picture_at_rest()
        choices = [entry["label"] for entry in item.menu() if can_be_chosen(entry)]
        for _ in range(choices.index(text) + 1):
            self.input.key("Down")
        self.input.key("Return")

    def test_a_click_opens_the_list_under_the_icon(self):
        popover = self.program.open_popover()
        left, top, width, height = popover.window.area
        # It may reach beyond the edges by its shadow, which is not part of it.
        self.assertLess(abs(top - PANEL_HEIGHT), 32)
        self.assertLessEqual(left, self.icon[0])
        self.assertGreaterEqual(left + width, self.icon[0])

    def test_another_click_closes_it_and_a_third_opens_it(self):
        for _ in range(2):
            self.program.open_popover()
            self.input.click(self.icon)
            self.eventually(self.program.has_popover, False)
        self.program.open_popover()

    def test_a_right_click_opens_the_menu(self):
        self.input.right_click(self.icon)
        self.wait_for_menu()
        items = StatusItem(self.desktop).menu()
        self.assertEqual([item["label"] for item in items if "label" in item], MENU_OF_THE_PANEL)
        self.assertFalse(self.program.has_popover())
        self.input.key("Escape")
        # The menu does not stay attached.
        self.program.open_popover()

    def test_the_menu_of_the_panel_leads_to_the_list(self):
        self.choose_in_the_menu_of_the_panel("Open Quillo")
        self.program.popover()

    def test_a_click_with_control_opens_the_menu(self):
        self.input.click(self.icon, hold=("ctrl",))
        self.wait_for_menu()
        self.assertFalse(self.program.has_popover())
        self.input.key("Escape")
        self.eventually(self.desktop.screen.has_menu, False)
        # The menu does not stay attached.
        self.program.open_popover()

    def test_the_menu_of_a_click_with_control_is_without_a_way_to_the_list(self):
        self.input.click(self.icon, hold=("ctrl",))
        self.wait_for_menu()
        self.input.key("Down")
        self.input.key("Return")
        self.program.quick_add()

    def test_quick_add_is_shown_and_never_hidden(self):
        for _ in range(2):
            self.choose_in_the_menu_of_the_panel("Quick Add…")
            self.program.quick_add()

    def test_quit_quits(self):
        self.add("milk")
        self.choose_in_the_menu_of_the_panel("Quit Quillo")
        self.assertEqual(self.program.wait(), 0, self.program.errors)
        self.assertEqual(self.quillo.titles(), ["milk"])


class PanelThatGoes(DesktopTest):
    def test_the_icon_is_back_when_the_panel_is(self):
        program = self.start()
        self.add("milk")
        program.open_popover()
        self.input.key("Escape")
        self.desktop.stop_panel()
        self.add("bread")
        self.desktop.start_panel()
        self.assertEqual(program.open_popover().rows(), ["bread", "milk"])
        self.assertEqual(StatusItem(self.desktop).XAyatanaLabel, "2")
        self.assert_ends_well(program)


class PanelThatComesLate(DesktopTest):
    desktop_options = {"panel": False}

    def test_the_icon_is_there_as_soon_as_there_is_a_place_for_it(self):
        program = self.start()
        self.desktop.start_panel()
        program.open_popover()


if __name__ == "__main__":
    unittest.main()
