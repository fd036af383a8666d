"""The status item on a screen, in Xfce's panel: its area for status items, and its older system tray."""

import contextlib
import os
import pathlib
import shutil
import subprocess
import unittest

from PIL import ImageGrab
from Xlib import XK, X
from Xlib.display import Display
from Xlib.error import BadDrawable, BadWindow, DisplayConnectionError
from Xlib.ext import xtest

from pointer_and_keys import MIDDLE, RIGHT, PointerAndKeys
from status_item_program import QUIET_SECONDS, WATCHER, StatusItemTest, serve_for, until

SCREEN = (800, 600)
PANEL_HEIGHT = 32
PANEL = f"""<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="length" type="uint" value="100"/>
      <property name="size" type="uint" value="{PANEL_HEIGHT}"/>
      <property name="plugin-ids" type="array"><value type="int" value="1"/></property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="systray"/>
  </property>
</channel>
"""
MENU = [{"title": "Open"}, None, {"title": "Quit", "shortcut": "Ctrl+Q"}]


def is_symbol(red, green, blue):
    return green > red + 60 and green > blue + 20


def is_badge(red, green, blue):
    return red > green + 100 and red > blue + 100


class PanelTest(StatusItemTest):
    def setUp(self):
        super().setUp()
        self.start_screen()
        self.start_bus()

    def start(self, *command, **options):
        process = subprocess.Popen(
            command,
            env=self.environment,
            **{"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL, **options},
        )
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        return process

    def start_screen(self):
        number, told = os.pipe()
        width, height = SCREEN
        size = f"{width}x{height}x24"
        self.start(
            *("Xvfb", "-displayfd", str(told), "-screen", "0", size, "-nolisten", "tcp", "-noreset"),
            pass_fds=[told],
        )
        os.close(told)
        with open(number) as display:
            self.environment["DISPLAY"] = ":" + display.readline().strip()

        def attempt():
            try:
                return Display(self.environment["DISPLAY"])
            except DisplayConnectionError:
                return None

        display = until(attempt, "the screen takes connections")
        self.addCleanup(display.close)
        self.input = PointerAndKeys(display)
        self.display = display

    def start_panel(self):
        configuration = self.folder / ".config/xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml"
        configuration.parent.mkdir(parents=True, exist_ok=True)
        configuration.write_text(PANEL)
        shutil.copy("/usr/share/dbus-1/services/org.xfce.Xfconf.service", self.bus.services)
        daemon = ("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus")
        self.bus.call(*daemon, "ReloadConfig")
        panel = self.start("xfce4-panel", "--disable-wm-check")
        until(lambda: self.bus.has(WATCHER), "the panel is there")
        return panel

    def places(self, is_colour):
        """Where the panel shows such a colour."""
        picture = ImageGrab.grab((0, 0, SCREEN[0], PANEL_HEIGHT), xdisplay=self.environment["DISPLAY"])
        width = picture.width
        return [divmod(i, width)[::-1] for i, pixel in enumerate(picture.convert("RGB").getdata()) if is_colour(*pixel)]

    def icon(self):
        """The middle of the icon, as soon as it is there."""
        places = until(lambda: self.places(is_symbol), "there is an icon on the panel")
        return tuple((min(along) + max(along)) // 2 for along in zip(*places))

    def keep_picture(self, name):
        """Where a person wants to look: QUILLO_TEST_PICTURES names a folder."""
        if folder := os.environ.get("QUILLO_TEST_PICTURES"):
            ImageGrab.grab(xdisplay=self.environment["DISPLAY"]).save(pathlib.Path(folder) / f"{name}.png")

    def assertClick(self, program, button="left", control=False, near=None):
        click = program.next("click")
        self.assertEqual((click["button"], click["control"]), (button, control))
        for told, meant in zip(click["place"], near):
            self.assertAlmostEqual(told, meant, delta=1)

    def windows(self):
        """Those that are to be seen."""
        return [child for child in self.display.screen().root.query_tree().children if self.is_seen(child)]

    def is_seen(self, window):
        try:
            return window.get_attributes().map_state and window.get_geometry().width > 1
        except (BadDrawable, BadWindow):  # It went away meanwhile.
            return False

    @contextlib.contextmanager
    def holding_control(self):
        """As people do: longer than the click takes to arrive."""
        control = self.display.keysym_to_keycode(XK.XK_Control_L)
        xtest.fake_input(self.display, X.KeyPress, control)
        try:
            yield
        finally:
            xtest.fake_input(self.display, X.KeyRelease, control)
            self.display.sync()


class StatusArea(PanelTest):
    def test_from_click_to_menu(self):
        self.start_panel()
        program = self.start_program("xcb")
        program.tell(do="menu", lines=MENU)
        icon = self.icon()

        self.input.click(icon)
        self.assertClick(program, near=icon)
        with self.holding_control():
            self.input.click(icon)
            self.assertClick(program, control=True, near=icon)
        self.input.click(icon, MIDDLE)
        self.assertClick(program, near=icon)

        # This panel shows the menu by itself.
        program.events("menu asked for")
        program.seen.clear()
        before = len(self.windows())
        self.input.click(icon, RIGHT)
        program.next("menu asked for")
        until(lambda: len(self.windows()) > before, "the menu is shown")
        serve_for(QUIET_SECONDS)
        self.keep_picture("panel-menu")
        self.input.key("Down")
        self.input.key("Return")
        self.assertEqual(program.next("chosen")["title"], "Open")
        self.assertEqual(program.events("click"), [])

    def test_the_count_stands_on_the_icon(self):
        self.start_panel()
        program = self.start_program("xcb")
        self.icon()
        self.assertEqual(self.places(is_badge), [])
        program.tell(do="title", text=" 12")
        until(lambda: self.places(is_badge), "the badge is there")
        self.keep_picture("panel-badge")
        program.tell(do="title", text="")
        until(lambda: not self.places(is_badge), "the badge is gone")

    def test_a_panel_that_crashes_and_comes_back(self):
        panel = self.start_panel()
        program = self.start_program("xcb")
        program.tell(do="title", text=" 3")
        self.icon()
        panel.kill()
        panel.wait()
        until(lambda: not self.bus.has(WATCHER), "the panel is gone")
        self.start_panel()
        icon = self.icon()
        self.input.click(icon)
        self.assertClick(program, near=icon)
        self.assertEqual(program.log(), [])


class SystemTray(PanelTest):
    """For a program that has no bus, the panel is no more than a system tray."""

    def start_program_without_bus(self):
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=/nonexistent"
        return self.start_program("xcb")

    def test_from_click_to_menu(self):
        self.start_panel()
        program = self.start_program_without_bus()
        self.assertIn("no session bus", program.next("log")["line"])
        icon = self.icon()
        program.tell(do="title", text=" 7")
        until(lambda: self.places(is_badge), "the badge is there")
        self.keep_picture("tray-badge")
        icon = self.icon()
        self.input.click(icon)
        self.assertClick(program, near=icon)
        self.input.click(icon, hold=("ctrl",))
        self.assertClick(program, control=True, near=icon)
        self.input.click(icon, RIGHT)
        self.assertClick(program, button="right", near=icon)
        self.assertEqual(program.log(), [])

    def test_a_tray_that_is_late(self):
        program = self.start_program_without_bus()
        program.next("log")
        self.assertIn("no status bar", program.next("log")["line"])
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = self.bus.address
        self.start_panel()
        icon = self.icon()
        self.input.click(icon)
        self.assertClick(program, near=icon)

    def test_is_given_up_for_a_panel(self):
        program = self.start_program("xcb")
        program.tell(do="menu", lines=MENU)
        program.next("menu asked for")
        self.assertIn("no status bar", program.next("log")["line"])
        self.start_panel()
        self.icon()
        serve_for(2 * QUIET_SECONDS)
        across = [x for x, _ in self.places(is_symbol)]
        self.assertLess(max(across) - min(across), PANEL_HEIGHT, "there is one icon")
        program.events("menu asked for")
        program.seen.clear()
        self.input.click(self.icon(), RIGHT)
        program.next("menu asked for")


class OwnMenu(PanelTest):
    def setUp(self):
        super().setUp()
        self.program = self.start_program("xcb")

    def show(self, **where):
        before = self.windows()
        self.program.tell(do="show menu", lines=MENU, **where)
        (menu,) = until(lambda: [window for window in self.windows() if window not in before], "the menu is shown")
        return menu

    def corner(self, window):
        geometry = window.get_geometry()
        return (geometry.x, geometry.y)

    def test_at_a_place(self):
        menu = self.show(place=[200, 150])
        self.assertEqual(self.corner(menu), (200, 150))
        serve_for(QUIET_SECONDS)
        self.keep_picture("own-menu")
        self.input.click((210, 160))
        self.assertEqual(self.program.next("chosen")["title"], "Open")
        until(lambda: menu not in self.windows(), "the menu is gone")

    def test_at_the_pointer_by_keyboard(self):
        self.input.move((300, 250))
        menu = self.show()
        for at, meant in zip(self.corner(menu), (300, 250)):
            self.assertAlmostEqual(at, meant, delta=1)
        self.input.key("Down")
        self.input.key("Down")
        self.input.key("Return")
        self.assertEqual(self.program.next("chosen")["title"], "Quit")

    def test_gives_way_to_another(self):
        first = self.show(place=[200, 150])
        second = self.show(place=[400, 350])
        self.assertEqual(self.corner(second), (400, 350))
        until(lambda: first not in self.windows(), "the first is gone")
        self.input.key("Escape")
        until(lambda: second not in self.windows(), "the second is gone")
        self.assertEqual(self.program.events("chosen"), [])


if __name__ == "__main__":
    unittest.main()
