"""How the windows look: their sizes, text that stands out from its ground in light and dark, nothing cut off."""

import unittest

from desktop_program import wait_until
from pictures import LEAST_CONTRAST, background, closest, luminance, text_contrast, touched_edges
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

    def assert_readable(self, view, at_least=LEAST_CONTRAST):
        """All text stands out, and none touches the edge of its place."""
        whole = view.picture()
        left, top, _, _ = view.window.area
        seen = 0
        for node in self.texts(view):
            x, y, width, height = node.area
            if not width or not height:
                continue
            part = whole.crop((x - left, y - top, x - left + width, y - top + height))
            with self.subTest(role=node.role, name=node.name):
                self.assertGreaterEqual(round(text_contrast(part), 2), at_least)
                if node.role in ("label", "heading"):
                    self.assertEqual(touched_edges(part) & {"right"}, set())
            seen += 1
        self.assertGreater(seen, 0)


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
        popover = self.open()
        popover.open_menu()
        self.input.move((5, self.desktop.size[1] - 5))
        whole = popover.picture()
        left, top, _, _ = popover.window.area
        for node in popover.node.find_all("menu item"):
            if "enabled" not in node.states:
                continue
            x, y, width, height = node.area
            part = whole.crop((x - left, y - top, x - left + width, y - top + height))
            with self.subTest(node.name):
                self.assertGreaterEqual(round(text_contrast(part), 2), LEAST_CONTRAST)

    def test_the_reminder(self):
        self.fill()
        popover = self.open()
        popover.hover("Call the dentist")
        popover.click("push button", "Set reminder for Call the dentist")
        heading = popover.find("label", "Remind me")
        whole = popover.picture()
        left, top, _, _ = popover.window.area
        for name in ("Remind me", "In 1 hour", "In 3 hours", "Tonight", "Tomorrow 9 AM", "Clear", "Set"):
            x, y, width, height = popover.find(None, name).area if name != "Remind me" else heading.area
            part = whole.crop((x - left, y - top, x - left + width, y - top + height))
            with self.subTest(name):
                self.assertGreaterEqual(round(text_contrast(part), 2), LEAST_CONTRAST)

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
    desktop_options = {"compositor": False}

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
                self._end(program)

    def test_without_a_compositor_corners_are_filled(self):
        program = self.start()
        for view in (program.open_popover(), program.open_quick_add()):
            picture = view.picture()
            inside = background(picture)
            desktop = self.desktop.screen.picture((2, self.desktop.size[1] - 2, 1, 1)).getpixel((0, 0))
            for x in (1, picture.width - 2):
                for y in (1, picture.height - 2):
                    self.assertNotEqual(picture.getpixel((x, y)), desktop)
                    self.assertNotEqual(picture.getpixel((x, y)), (0, 0, 0), inside)


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
        before = popover.picture()
        self.desktop.portal.set("color-scheme", 4_000_000_000)
        self.desktop.portal.set("accent-color", (7.0, -1.0, 0.0))
        self.desktop.portal.set("contrast", 99)
        self.assertEqual(background(popover.picture()), background(before))
        self.input.type("still there\n")
        popover.row("still there")


if __name__ == "__main__":
    unittest.main()
