"""The statistics window: what was completed, in numbers, ranks, records and awards."""

import time
import unittest

from quillo_on_desktop import STATISTICS_TITLE, DesktopTest

AWARDS = [
    "Lightning Fast, Done in under a minute",
    "Quick Draw, Done in under five",
    "Long Game, Patience pays off",
    "Week-long Winner, Seven days in a row",
    "Monthly Maven, Thirty days strong",
    "Early Bird, Crushed before 8 AM",
    "Night Owl, Burned the midnight oil",
]
QUICK = AWARDS[:2]
SIZE = (460, 620)
LIFETIME = "Quillo.stats.lifetime"


class StatisticsTest(DesktopTest):
    def open(self, **options):
        self.program = self.start(**options)
        self.done("statistics")
        self.window = self.program.view(STATISTICS_TITLE)
        return self.window

    def is_open(self):
        return self.program.has_window(STATISTICS_TITLE)

    def awards(self, state):
        return [node.name for node in self.window.node.find_all("list item") if node.description == state]

    def cells(self):
        """What is counted, and the numbers."""
        names = ("Today", "This week", "All time", "Streak", "Best streak", "Avg time")
        pairs = [label.split(", ") for label in self.window.names("label")]
        return {pair[0]: pair[1] for pair in pairs if pair[0] in names}


class Content(StatisticsTest):
    def test_before_the_first_completion(self):
        window = self.open()
        self.assertEqual(window.window.area[2:], SIZE)
        self.assertEqual(
            self.cells(),
            {"Today": "0", "This week": "0", "All time": "0", "Streak": "0d", "Best streak": "0d", "Avg time": "–"},
        )
        self.assertTrue(window.has("heading", "Tadpole"))
        for text in (
            "0 tasks completed · 5 more to reach Hopper",
            "No completions yet",
            "Complete a few tasks to set a record",
        ):
            self.assertTrue(window.has("label", text), text)
        self.assertEqual(window.names("list item"), AWARDS)
        self.assertEqual(self.awards("Not earned yet"), AWARDS)

    def test_follows_completions_while_it_is_open(self):
        window = self.open()
        self.add("Buy milk")
        self.done("done", "1")
        self.eventually(lambda: self.cells().get("All time"), "1")
        cells = self.cells()
        self.assertEqual([cells[name] for name in ("Today", "This week", "Streak", "Best streak")], ["1", "1", "1d", "1d"])
        self.assertTrue(window.has("label", "1 tasks completed · 4 more to reach Hopper"))
        self.assertFalse(window.has("label", "No completions yet"))
        for record in ("Fastest", "Slowest"):
            window.find("label", f"{record}, Buy milk, {cells['Avg time']}")
        # By day and night there are others besides.
        self.assertLessEqual(set(QUICK), set(self.awards("New")))

    def test_awards_are_new_until_the_next_start(self):
        self.open()
        self.add("Buy milk")
        self.done("done", "1")
        self.eventually(lambda: set(QUICK) <= set(self.awards("New")), True)
        self.assert_ends_well(self.program)
        self.eventually(self.desktop.status_icons, None)
        self.open()
        self.assertLessEqual(set(QUICK), set(self.awards("Earned")))
        self.assertEqual(self.awards("New"), [])

    def test_the_top_rank(self):
        self.quillo.put(LIFETIME, "integer", 1000)
        window = self.open()
        self.assertTrue(window.has("heading", "Pondsmith"))
        self.assertTrue(window.has("label", "1000 tasks completed · top rank reached 👑"))


class ComingAndGoing(StatisticsTest):
    def test_by_the_pointer(self):
        self.program = self.start()
        popover = self.program.open_popover()
        popover.open_menu()
        popover.choose("Statistics…")
        self.program.view(STATISTICS_TITLE)
        self.eventually(self.program.has_popover, False)

    def test_by_the_keyboard(self):
        self.program = self.start()
        popover = self.program.open_popover()
        self.input.key("shift+Tab")
        self.input.key("Return")
        popover.menu_items()
        for _ in range(20):
            if "focused" in popover.find("menu item", "Statistics…").states:
                break
            self.input.key("Down")
        self.input.key("Return")
        self.program.view(STATISTICS_TITLE)
        for keys in ("Escape", "ctrl+w"):
            self.done("statistics")
            self.program.view(STATISTICS_TITLE)
            self.input.key(keys)
            self.eventually(self.is_open, False)

    def test_opening_twice_gives_the_same_window_where_it_was_left(self):
        left, top, width, _ = self.open().window.area
        self.done("statistics")
        self.assertEqual([window.title for window in self.program.windows()], [STATISTICS_TITLE])
        self.input.drag((left + width // 2, top - 8), (left + width // 2 - 120, top + 52))
        self.eventually(lambda: self.program.view(STATISTICS_TITLE).window.area[:2], (left - 120, top + 60))
        self.input.key("Escape")
        self.eventually(self.is_open, False)
        self.done("statistics")
        self.eventually(lambda: self.program.view(STATISTICS_TITLE).window.area[:2], (left - 120, top + 60))

    def test_it_has_a_fixed_size_and_a_frame(self):
        window = self.open().window
        self.assertTrue(window.is_managed)
        self.assertEqual(window.kinds & {"_NET_WM_WINDOW_TYPE_DIALOG"}, {"_NET_WM_WINDOW_TYPE_DIALOG"})


class StillSparkle(StatisticsTest):
    desktop_options = {"appearance": {"reduced-motion": 1}}

    def test_nothing_moves(self):
        window = self.open()
        self.add("Buy milk")
        self.done("done", "1")
        self.eventually(lambda: set(QUICK) <= set(self.awards("New")), True)
        still = window.picture().tobytes()
        end = time.monotonic() + 2
        while time.monotonic() < end:
            self.assertEqual(self.desktop.screen.picture(window.window.area).tobytes(), still)


class Sparkle(StatisticsTest):
    def test_it_twinkles_for_a_while(self):
        window = self.open()
        self.add("Buy milk")
        before = window.picture().tobytes()
        self.done("done", "1")
        pictures = set()
        end = time.monotonic() + 3
        while time.monotonic() < end:
            pictures.add(self.desktop.screen.picture(window.window.area).tobytes())
        self.assertGreater(len(pictures), 6)
        self.assertNotEqual(window.picture().tobytes(), before)


if __name__ == "__main__":
    unittest.main()
