"""Olo, who sits in the popover, and what five taps bring to light."""

import time
import unittest

from desktop_program import wait_until
from quillo_on_desktop import CREDITS_BUTTON, MASCOT, WAIT_SECONDS, DesktopTest

THANKS = "Thanks for using Quillo.\nMade with care for the status bar power user."
SECRET_SECONDS = 3


class Mascot(DesktopTest):
    def setUp(self):
        super().setUp()
        self.popover = self.start().open_popover()
        self.olo = self.popover.find(name=MASCOT)

    def tap(self, times=1):
        """Taps so fast that they count, and so slowly that each does."""
        for _ in range(times):
            self.input.click(self.olo.centre, apart=False)

    def has_credits(self):
        return self.popover.has("push button", CREDITS_BUTTON)

    def test_says_what_it_is(self):
        self.assertEqual(self.olo.description, "Tap five times for a surprise.")

    def test_five_quick_taps_bring_the_credits(self):
        self.tap(4)
        self.assertFalse(self.has_credits())
        self.tap()
        self.popover.find("push button", CREDITS_BUTTON)
        texts = self.popover.names("label")
        self.assertTrue(any(text.startswith("Hi, I’") for text in texts), texts)
        self.assertIn(THANKS, texts)
        self.popover.click("push button", CREDITS_BUTTON)
        self.eventually(self.has_credits, False)
        # The field has the keyboard again.
        self.input.type("back to work\n")
        self.popover.row("back to work")

    def test_slow_taps_bring_nothing(self):
        for _ in range(5):
            self.tap()
            time.sleep(SECRET_SECONDS / 4 + 0.1)
        self.assertFalse(self.has_credits())

    def test_escape_leaves_the_credits(self):
        self.tap(5)
        self.popover.find("push button", CREDITS_BUTTON)
        self.input.key("Escape")
        self.eventually(self.has_credits, False)

    def test_it_hops(self):
        left, top, width, height = self.olo.area
        area = (left, top - height // 4, width, height)
        pictures = {self.desktop.screen.picture(area).tobytes()}
        self.tap()
        end = time.monotonic() + 0.6
        while time.monotonic() < end:
            pictures.add(self.desktop.screen.picture(area).tobytes())
        # Up, down, and frames of its own between.
        self.assertGreater(len(pictures), 4)


class StillMascot(DesktopTest):
    desktop_options = {"appearance": {"reduced-motion": 1}}

    def test_it_keeps_still(self):
        popover = self.start().open_popover()
        olo = popover.find(name=MASCOT)
        still = self.desktop.screen.picture_at_rest(olo.area).tobytes()
        end = time.monotonic() + 3
        while time.monotonic() < end:
            self.assertEqual(self.desktop.screen.picture(olo.area).tobytes(), still)
        # Taps count all the same.
        for _ in range(5):
            self.input.click(olo.centre, apart=False)
        popover.find("push button", CREDITS_BUTTON)


if __name__ == "__main__":
    unittest.main()
