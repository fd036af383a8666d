"""The program as a Wayland client, on the desktop whose portal offers shortcuts that work everywhere."""

import subprocess
import time
import unittest

from gi.repository import GLib

from desktop_program import wait_until
from quillo_on_desktop import NEW_TASK, POPOVER_TITLE, WAIT_SECONDS, DesktopTest, Popover, Program, QuickAdd
from wayland_desktop import SHORTCUTS_OF_PLASMA, WaylandDesktop, become_ordinary_user


def setUpModule():
    become_ordinary_user()


class WaylandWindow:
    """A window of the program. Where it is, only the compositor knows; `area` is therefore the whole screen."""

    def __init__(self, title, size):
        self.title = title
        self.area = (0, 0, *size)


class WaylandProgram(Program):
    """One run of the program as a Wayland client. What windows it has, assistive programs are told."""

    def __init__(self, desktop, quillo, environment=None, **options):
        super().__init__(desktop, quillo, {"QUILLO_PLATFORM": "wayland", **(environment or {})}, **options)

    def popover(self):
        return Popover(self, self._ready_window(POPOVER_TITLE))

    def quick_add(self):
        return QuickAdd(self, self._ready_window(NEW_TASK))

    def _node_titled(self, title):
        try:
            return next((top for top in self.tree.children if top.name == title and top.is_showing()), None)
        except GLib.Error:  # It went while we looked.
            return None

    def _window_titled(self, title):
        return WaylandWindow(title, self.desktop.size) if self._node_titled(title) else None

    def _ready_window(self, title):
        """The window of this title, when it is there, has the keyboard, and can be seen."""

        def has_keyboard():
            node = self._node_titled(title)
            return node and "active" in node.states

        wait_until(has_keyboard, f"the window {title!r} is there and has the keyboard", WAIT_SECONDS)
        window = self._window_titled(title)
        is_painted = self.desktop.screen.is_painted
        wait_until(lambda: is_painted(window.area), f"the window {title!r} is painted", WAIT_SECONDS)
        return window


class WaylandTest(DesktopTest):
    @classmethod
    def setUpClass(cls):
        super(DesktopTest, cls).setUpClass()
        cls.desktop = cls.enterClassContext(WaylandDesktop(**cls.desktop_options))

    def launch(self, **options):
        program = WaylandProgram(self.desktop, self.quillo, **options)
        self._programs.append(program)
        return program

    def start(self, **options):
        program = super().start(**options)
        self.assertFalse(program.has_ended(), program.errors)
        return program

    def open_popover(self, program):
        self.done("open")
        return program.popover()

    def has_shortcut(self):
        """Whether it is one of those that the desktop listens for."""
        components = self.desktop.bus.call(
            SHORTCUTS_OF_PLASMA, "/kglobalaccel", "org.kde.KGlobalAccel", "allComponents"
        )
        for path in components[0]:
            component = (SHORTCUTS_OF_PLASMA, path, "org.kde.kglobalaccel.Component")
            if self.desktop.bus.call(*component, "isActive")[0]:
                if "quick-add" in self.desktop.bus.call(*component, "shortcutNames")[0]:
                    return True
        return False


class ThePopover(WaylandTest):
    def test_a_task_is_entered(self):
        program = self.start()
        popover = self.open_popover(program)
        self.assertIn("focused", popover.entry.states)
        self.input.type("Call mom tomorrow at 9am\n")
        popover.row("Call mom")
        self.eventually(self.quillo.titles, ["Call mom"])
        self.assertIn("dueDate", self.quillo.tasks()[0])
        self.assertIn("Call mom", self.done("list").output)
        self.input.key("Escape")
        self.eventually(program.has_popover, False)
        self.assert_ends_well(program)


class TheShortcut(WaylandTest):
    def start_with_shortcut(self):
        program = self.start()
        wait_until(self.has_shortcut, "the desktop has the shortcut", WAIT_SECONDS)
        return program

    def add_by_shortcut(self, program, text):
        panel = program.open_quick_add()
        self.assertIn("focused", panel.entry.states)
        self.input.type(text + "\n")
        self.eventually(program.has_quick_add, False)

    def test_a_task_from_everywhere(self):
        program = self.start_with_shortcut()
        self.add_by_shortcut(program, "Email Sam in 2 hours")
        self.eventually(self.quillo.titles, ["Email Sam"])
        self.assertIn("dueDate", self.quillo.tasks()[0])
        self.assertNotIn("shortcut", program.errors)
        self.assert_ends_well(program)

    def test_at_every_start(self):
        for title in ("one", "two"):
            program = self.start_with_shortcut()
            self.add_by_shortcut(program, title)
            self.assert_ends_well(program)
            self.eventually(self.has_shortcut, False)
        self.assertEqual(self.quillo.titles(), ["two", "one"])

    def test_no_settings_are_opened(self):
        self.add_by_shortcut(self.start_with_shortcut(), "meanwhile")
        self.assertEqual(self.desktop.opened(), [])


class ThereIsAnXServerToo(WaylandTest):
    """Where nothing else is said, the program is an X11 client, which can place its windows."""

    desktop_options = {"xwayland": True}

    def shown_by_x11(self, title):
        """How many windows of this title that server shows."""
        command = ["xdotool", "search", "--onlyvisible", "--name", f"^{title}$"]
        found = subprocess.run(command, env=self.desktop.environment, stdout=subprocess.PIPE, timeout=WAIT_SECONDS)
        return len(found.stdout.splitlines())

    def test_the_shortcut_is_the_portals(self):
        program = self.start(environment={"QUILLO_PLATFORM": ""})
        wait_until(self.has_shortcut, "the desktop has the shortcut", WAIT_SECONDS)
        program.open_quick_add()
        self.assertEqual(self.shown_by_x11(NEW_TASK), 1)
        self.input.type("from everywhere\n")
        self.eventually(self.quillo.titles, ["from everywhere"])
        self.assertNotIn("shortcut", program.errors)
        self.assert_ends_well(program)


class TheCompositorGoes(WaylandTest):
    def test_a_task_entered_just_before_is_there_at_the_next_start(self):
        program = self.start()
        self.open_popover(program)
        self.input.type("last words\n")
        time.sleep(0.05)
        self.desktop.compositor.kill()
        # However it ended, it was no crash.
        self.assertGreaterEqual(program.wait(), 0, program.errors)
        self.desktop.start_compositor()
        self.quillo = self.make_quillo("data")
        again = self.start()
        popover = self.open_popover(again)
        popover.row("last words")
        self.assertEqual(self.quillo.titles(), ["last words"])
        self.assert_ends_well(again)


class ThereAreNoShortcuts(WaylandTest):
    desktop_options = {"shortcuts": False}

    def test_the_log_says_why_and_the_command_helps(self):
        program = self.start()
        wait_until(lambda: "shortcut" in program.errors, "the log names the shortcut", WAIT_SECONDS)
        self.assertRegex(program.errors, "no global shortcut: .*portal offers no shortcuts: .*GlobalShortcuts")
        self.assertIn("quillo quick-add", program.errors)
        self.done("quick-add")
        program.quick_add()
        self.input.type("by the command\n")
        self.eventually(self.quillo.titles, ["by the command"])


if __name__ == "__main__":
    unittest.main()
