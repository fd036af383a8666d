"""How the windows look: their sizes, text that stands out from its ground in light and dark, nothing cut off."""

import unittest

from desktop_program import wait_until
from pictures import LEAST_CONTRAST, background, closest, luminance, text_contrast
from quillo_command import stored_task
from quillo_on_desktop import (
    MORE,
    POPOVER_SIZE,
    QUICK_ADD_SIZE,
    SHOW_DONE,
    WAIT_SECONDS,
    DesktopTest,
)

DARK, LIGHT = 1, 2
GROUND = (200, 40, 160)  # like nothing of ours
UNPAINTED = (0, 0, 0)
# What has text of its own on the screen.
TEXT_ROLES = ("label", "heading", "push button", "menu item", "list item", "text")
# Buttons whose symbol is all they show.
SYMBOLS = (MORE, "Set reminder for ", "Delete ")
LAST_YEAR = 1_740_000_000
IN_TEN_YEARS = 2_050_000_000


class Looks(DesktopTest):
    """What is the same on every desktop."""

    scale = 2

    def fill(self):
        self.quillo.put_items(
            stored_task(1, "Water the plants"),
            stored_task(2, "Call the dentist", due=LAST_YEAR),
            stored_task(3, "Renew the passport", due=IN_TEN_YEARS),
            stored_task(4, "Buy milk", done=True),
            stored_task(5, "Post the letter", done=True, due=LAST_YEAR),
        )

    def open(self):
        self.program = self.start(scale=self.scale)
        self.popover = self.program.open_popover()
        return self.popover

    def texts(self, view):
        """Everything in a window that shows text."""
        for node in view.node.walk():
            if node.role in TEXT_ROLES and node.is_showing() and node.name and not node.name.startswith(SYMBOLS):
                yield node

    def assert_readable(self, view):
        """All text stands out, is inside the window, and no text lies upon another."""
        whole = view.picture()
        places = []
        for node in self.texts(view):
            with self.subTest(role=node.role, name=node.name):
                place = self.place_in(view, node)
                self.assert_stands_out(whole, place)
                self.assertEqual(place, common(place, (0, 0, whole.width, whole.height)))
                if node.role != "list item":  # Which holds other things.
                    for other in places:
                        self.assertIsNone(common(place, other))
                    places.append(place)
        self.assertGreater(len(places), 0)

    def assert_stands_out(self, picture, place):
        self.assertGreaterEqual(round(text_contrast(picture.crop(place)), 2), LEAST_CONTRAST)

    def place_in(self, view, node):
        """Where it is in the window: (left, top, right, bottom)."""
        left, top, _, _ = view.window.area
        x, y, width, height = node.area
        return (x - left, y - top, x - left + width, y - top + height)


def common(one, other):
    """The area that both share, or None."""
    left, top = max(one[0], other[0]), max(one[1], other[1])
    right, bottom = min(one[2], other[2]), min(one[3], other[3])
    return (left, top, right, bottom) if left < right and top < bottom else None


class Readable:
    """Mixed into a class of tests for each look."""

    def test_the_empty_popover(self):
        self.assert_readable(self.open())

    def test_the_list(self):
        self.fill()
        popover = self.open()
        popover.click("push button", SHOW_DONE)
        popover.row("Post the letter")
        self.input.move(popover.find("heading", "Quillo").centre)
        self.assert_readable(popover)

    def test_the_menu(self):
        self.fill()  # With done tasks every item can be chosen; one that cannot may stand out less.
        popover = self.open()
        popover.open_menu()
        self.input.move((5, self.desktop.size[1] - 5))
        whole = popover.picture()
        for node in popover.node.find_all("menu item"):
            with self.subTest(node.name):
                self.assert_stands_out(whole, self.place_in(popover, node))

    def test_the_reminder(self):
        self.fill()
        popover = self.open()
        popover.hover("Call the dentist")
        popover.click("push button", "Set reminder for Call the dentist")
        popover.find("label", "Remind me")
        whole = popover.picture()
        for name in ("Remind me", "In 1 hour", "In 3 hours", "Tonight", "Tomorrow 9 AM", "Clear", "Set"):
            (node,) = [found for found in popover.node.find_all(name=name) if found.role != "dialog"]
            with self.subTest(name):
                self.assert_stands_out(whole, self.place_in(popover, node))

    def test_quick_add(self):
        self.program = self.start(scale=self.scale)
        panel = self.program.open_quick_add()
        self.assert_readable(panel)
        self.input.type("Email Sam in 2 hours")
        self.eventually(lambda: panel.entry.text, "Email Sam in 2 hours")
        self.assert_readable(panel)


class Light(Readable, Looks):
    desktop_options = {"appearance": {"color-scheme": LIGHT}}


class Dark(Readable, Looks):
    desktop_options = {"appearance": {"color-scheme": DARK}}


class HighContrast(Readable, Looks):
    desktop_options = {"appearance": {"color-scheme": DARK, "contrast": 1}}


class LightHighContrast(Readable, Looks):
    desktop_options = {"appearance": {"color-scheme": LIGHT, "contrast": 1}}


class Sizes(Looks):
    desktop_options = {"compositor": False, "width": 1920, "height": 1600}

    def test_at_every_scale(self):
        for scale in (1, 1.25, 2, 3):
            with self.subTest(scale):
                program = self.start(scale=scale)
                popover = program.open_popover()
                expected = tuple(round(length * scale) for length in POPOVER_SIZE)
                self.assertEqual(popover.window.area[2:], expected)
                panel = program.open_quick_add()
                expected = tuple(round(length * scale) for length in QUICK_ADD_SIZE)
                self.assertEqual(panel.window.area[2:], expected)
                self._end_programs()

    def test_without_a_compositor_corners_are_filled(self):
        program = self.start()
        self.desktop.screen.paint(GROUND)
        for open_view in (program.open_popover, program.open_quick_add):
            picture = open_view().picture()
            for x in (1, picture.width - 2):
                for y in (1, picture.height - 2):
                    self.assertNotIn(picture.getpixel((x, y)), (GROUND, UNPAINTED))


class LiveChanges(Looks):
    def tearDown(self):
        for setting in ("color-scheme", "accent-color", "contrast", "reduced-motion"):
            self.desktop.portal.set(setting, None)
        super().tearDown()

    def test_the_windows_follow_the_colour_scheme_at_once(self):
        popover = self.open()

        def is_dark():
            return luminance(background(popover.picture())) < 0.2

        self.assertFalse(is_dark())
        self.desktop.portal.set("color-scheme", DARK)
        wait_until(is_dark, "it is dark", WAIT_SECONDS)
        self.assert_readable(popover)
        self.desktop.portal.set("color-scheme", LIGHT)
        wait_until(lambda: not is_dark(), "it is light", WAIT_SECONDS)
        self.assert_readable(popover)

    def test_the_accent_colour_is_the_desktops(self):
        colour = (0.8, 0.1, 0.4)
        self.desktop.portal.set("accent-color", colour)
        panel = self.start(scale=self.scale).open_quick_add()
        self.assertLessEqual(closest(panel.picture(), tuple(round(255 * part) for part in colour)), 2)

    def test_foreign_values_change_nothing(self):
        popover = self.open()
        self.input.type("is shown\n")
        popover.row("is shown")
        before = popover.picture()
        self.desktop.portal.set("color-scheme", 4_000_000_000)
        self.desktop.portal.set("accent-color", (7.0, -1.0, 0.0))
        self.desktop.portal.set("contrast", 99)
        self.assertEqual(background(popover.picture()), background(before))
        self.input.type("still there\n")
        popover.row("still there")


if __name__ == "__main__":
    unittest.main()
