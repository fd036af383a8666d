"""The shortcut as a grabbed key, on X servers of the test's own."""

import ctypes
import os
import re
import signal
import subprocess
import time
import unittest

from Xlib import X
from Xlib.display import Display
from Xlib.ext import xtest

from shortcut_printer import (
    A,
    COMMAND,
    CONTROL,
    NO_ERROR,
    OPTION,
    PATIENCE_SECONDS,
    SHIFT,
    STANDARD,
    T,
    TAKEN,
    UNAVAILABLE,
    ShortcutPrinter,
    until,
)

# Keycodes, which are places on the keyboard.
KEY_A, KEY_Q, KEY_T = 38, 24, 28
CONTROL_KEY, SHIFT_KEY, ALT_KEY, SUPER_KEY = 37, 50, 64, 133
CAPS_LOCK_KEY, NUM_LOCK_KEY = 66, 77
STANDARD_MODIFIER_KEYS = (CONTROL_KEY, ALT_KEY, SUPER_KEY)

# Bits of the keyboard's state, as the usual keyboard map places them.
LOCK, CONTROL_BIT, ALT_BIT, NUM_LOCK_BIT, MOD3_BIT, SUPER_BIT = 0x02, 0x04, 0x08, 0x10, 0x20, 0x40
STANDARD_BITS = CONTROL_BIT | ALT_BIT | SUPER_BIT
GRAB_MODE_ASYNC = 1

# A held key repeats after 660 ms, if nobody has changed that.
HELD_SECONDS = 1.2


class Cookie(ctypes.Structure):
    _fields_ = [("sequence", ctypes.c_uint)]


class Iterator(ctypes.Structure):
    _fields_ = [("data", ctypes.POINTER(ctypes.c_uint32)), ("rem", ctypes.c_int), ("index", ctypes.c_int)]


class PointerReply(ctypes.Structure):
    _fields_ = [("others", ctypes.c_uint8 * 24), ("mask", ctypes.c_uint16)]


class OtherProgram:
    """Another client of the X server."""

    def __init__(self, display):
        self.xcb = ctypes.CDLL("libxcb.so.1")
        for name, result in {
            "xcb_connect": ctypes.c_void_p,
            "xcb_get_setup": ctypes.c_void_p,
            "xcb_setup_roots_iterator": Iterator,
            "xcb_grab_key_checked": Cookie,
            "xcb_ungrab_key_checked": Cookie,
            "xcb_request_check": ctypes.c_void_p,
            "xcb_query_pointer": Cookie,
            "xcb_query_pointer_reply": ctypes.POINTER(PointerReply),
        }.items():
            getattr(self.xcb, name).restype = result
        self.connection = ctypes.c_void_p(self.xcb.xcb_connect(display.encode(), None))
        setup = ctypes.c_void_p(self.xcb.xcb_get_setup(self.connection))
        self.root = self.xcb.xcb_setup_roots_iterator(setup).data[0]

    def _succeeds(self, cookie):
        return self.xcb.xcb_request_check(self.connection, cookie) is None

    def grab(self, keycode, modifiers):
        """Grabs a key with exactly these modifiers; whether that was granted."""
        modes = (ctypes.c_uint8(GRAB_MODE_ASYNC), ctypes.c_uint8(GRAB_MODE_ASYNC))
        return self._succeeds(
            self.xcb.xcb_grab_key_checked(
                self.connection, ctypes.c_uint8(0), self.root, ctypes.c_uint16(modifiers), ctypes.c_uint8(keycode), *modes
            )
        )

    def ungrab(self, keycode, modifiers):
        assert self._succeeds(
            self.xcb.xcb_ungrab_key_checked(
                self.connection, ctypes.c_uint8(keycode), self.root, ctypes.c_uint16(modifiers)
            )
        )

    def may_grab(self, keycode, modifiers):
        """Whether nobody else has grabbed that."""
        granted = self.grab(keycode, modifiers)
        if granted:
            self.ungrab(keycode, modifiers)
        return granted

    def keyboard_state(self):
        cookie = self.xcb.xcb_query_pointer(self.connection, self.root)
        return self.xcb.xcb_query_pointer_reply(self.connection, cookie, None).contents.mask

    def end(self):
        self.xcb.xcb_disconnect(self.connection)


class XServer:
    def __init__(self):
        reading, writing = os.pipe()
        self.process = subprocess.Popen(
            ["Xvfb", "-displayfd", str(writing), "-screen", "0", "320x240x24", "-nolisten", "tcp", "-noreset"],
            pass_fds=[writing],
            stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL,
        )
        os.close(writing)
        with os.fdopen(reading) as number:
            self.display = ":" + number.readline().strip()

    def _run(self, *command, **options):
        return subprocess.run(command, env={**os.environ, "DISPLAY": self.display}, check=True, **options)

    def type(self, *actions):
        """Each action is "keydown" or "keyup", or "key" for both, and a keycode."""
        self._run("xdotool", *(str(word) for action in actions for word in action))

    def press(self, keycode=KEY_T, modifiers=STANDARD_MODIFIER_KEYS):
        down = [("keydown", modifier) for modifier in modifiers]
        up = [("keyup", modifier) for modifier in modifiers]
        self.type(*down, ("key", keycode), *up)

    def set_layout(self, *arguments):
        self._run("setxkbmap", *arguments)

    def change_keyboard_map(self, change):
        """Replaces the keyboard map by what `change` makes of its text."""
        silent = {"stderr": subprocess.DEVNULL}
        text = self._run("xkbcomp", self.display, "-", stdout=subprocess.PIPE, **silent).stdout.decode()
        self._run("xkbcomp", "-", self.display, input=change(text).encode(), **silent)

    def stop(self):
        self.process.terminate()
        self.process.wait(timeout=PATIENCE_SECONDS)


class X11ShortcutTest(unittest.TestCase):
    def setUp(self):
        self.server = XServer()
        self.addCleanup(self.server.stop)
        self.other = OtherProgram(self.server.display)
        self.addCleanup(self.other.end)
        self.printer = self.start()

    def start(self, **options):
        printer = ShortcutPrinter(display=self.server.display, **options)
        self.addCleanup(self.assert_ends_well, printer)
        return printer

    def assert_ends_well(self, printer):
        self.assertEqual(printer.end(), 0)

    def assert_pressed_once(self, printer=None):
        printer = printer or self.printer
        self.assertEqual(printer.next_line(), "pressed ")
        self.assertTrue(printer.stays_quiet(), printer.lines())

    def test_a_press_triggers_once_whichever_locks_are_on(self):
        self.assertEqual(self.printer.register(), NO_ERROR)
        for lock_key, state in (
            (None, 0),
            (CAPS_LOCK_KEY, LOCK),
            (NUM_LOCK_KEY, LOCK | NUM_LOCK_BIT),
            (CAPS_LOCK_KEY, NUM_LOCK_BIT),
        ):
            with self.subTest(state=state):
                if lock_key:
                    self.server.type(("key", lock_key))
                self.assertEqual(self.other.keyboard_state() & 0xFF, state)
                self.server.press()
                self.assert_pressed_once()
        self.assertEqual(self.printer.log(), [])

    def test_other_modifiers_and_keys_trigger_nothing(self):
        self.assertEqual(self.printer.register(), NO_ERROR)
        self.server.press(KEY_T, (CONTROL_KEY, ALT_KEY))
        self.server.press(KEY_T, (*STANDARD_MODIFIER_KEYS, SHIFT_KEY))
        self.server.press(KEY_T, ())
        self.server.press(KEY_A)
        self.assertTrue(self.printer.stays_quiet(), self.printer.lines())

    def test_a_held_key_triggers_once(self):
        self.assertEqual(self.printer.register(), NO_ERROR)
        down = [("keydown", key) for key in (*STANDARD_MODIFIER_KEYS, KEY_T)]
        up = [("keyup", key) for key in (KEY_T, *STANDARD_MODIFIER_KEYS)]
        self.server.type(*down)
        self.assertEqual(self.printer.next_line(), "pressed ")
        time.sleep(HELD_SECONDS)
        self.assertEqual(self.printer.lines().count("pressed "), 1)
        self.server.type(*up)
        self.assertTrue(self.printer.stays_quiet(), self.printer.lines())
        self.server.press()
        self.assert_pressed_once()

    def test_presses_in_a_row_trigger_each(self):
        self.assertEqual(self.printer.register(), NO_ERROR)
        for _ in range(3):
            self.server.press()
        self.assertEqual([self.printer.next_line() for _ in range(3)], ["pressed "] * 3)
        self.assertTrue(self.printer.stays_quiet())

    def test_what_another_program_has_is_not_registered(self):
        self.assertEqual(self.printer.register(), NO_ERROR)
        second = self.start()
        self.assertEqual(second.register(), TAKEN)
        (line,) = second.log()
        self.assertIn("no global shortcut: another program has it", line)
        self.server.press()
        self.assert_pressed_once()
        self.assertTrue(second.stays_quiet())

        self.printer.unregister()
        self.assertEqual(second.register(), NO_ERROR)
        self.server.press()
        self.assert_pressed_once(second)
        self.assertTrue(self.printer.stays_quiet())

    def test_nothing_is_kept_of_what_another_program_has_in_part(self):
        for taken in (0, LOCK, NUM_LOCK_BIT, LOCK | NUM_LOCK_BIT):
            with self.subTest(taken=taken):
                self.assertTrue(self.other.grab(KEY_T, STANDARD_BITS | taken))
                self.assertEqual(self.printer.register(), TAKEN)
                for locks in (0, LOCK, NUM_LOCK_BIT, LOCK | NUM_LOCK_BIT):
                    self.assertTrue(locks == taken or self.other.may_grab(KEY_T, STANDARD_BITS | locks))
                self.other.ungrab(KEY_T, STANDARD_BITS | taken)
        self.assertEqual(self.printer.register(), NO_ERROR)
        for locks in (0, LOCK, NUM_LOCK_BIT, LOCK | NUM_LOCK_BIT):
            self.assertFalse(self.other.may_grab(KEY_T, STANDARD_BITS | locks))

    def test_another_shortcut_takes_the_place_of_the_first(self):
        self.assertEqual(self.printer.register(), NO_ERROR)
        self.printer.unregister()
        self.assertEqual(self.printer.register((A, SHIFT | COMMAND)), NO_ERROR)
        self.server.press()
        self.assertTrue(self.printer.stays_quiet(), self.printer.lines())
        self.server.press(KEY_A, (SHIFT_KEY, SUPER_KEY))
        self.assert_pressed_once()
        self.assertTrue(self.other.may_grab(KEY_T, STANDARD_BITS))

    def test_the_same_shortcut_can_be_registered_again(self):
        for _ in range(2):
            self.assertEqual(self.printer.register(), NO_ERROR)
            self.printer.unregister()
        self.assertEqual(self.printer.register(), NO_ERROR)
        self.server.press()
        self.assert_pressed_once()
        self.printer.unregister()
        self.server.press()
        self.assertTrue(self.printer.stays_quiet())
        self.assertTrue(self.other.may_grab(KEY_T, STANDARD_BITS))

    def test_a_key_is_a_place_whatever_the_layout_writes_there(self):
        self.server.set_layout("fr")
        self.assertEqual(self.printer.register((A, CONTROL | OPTION)), NO_ERROR)
        self.server.press(KEY_A, (CONTROL_KEY, ALT_KEY))
        self.assert_pressed_once()
        self.server.press(KEY_Q, (CONTROL_KEY, ALT_KEY))
        self.assertTrue(self.printer.stays_quiet())

    def test_another_layout_changes_nothing(self):
        self.assertEqual(self.printer.register(), NO_ERROR)
        for layout in ("de", "us,ru", "fr"):
            self.server.set_layout(layout)
            self.server.press()
            self.assert_pressed_once()
        self.assertEqual(self.printer.log(), [])

    def test_a_press_soon_after_a_change_of_the_keyboard_is_not_lost(self):
        """Also where it comes while the program looks at the new keyboard map."""
        self.assertEqual(self.printer.register(), NO_ERROR)
        display = Display(self.server.display)
        self.addCleanup(display.close)
        for key in STANDARD_MODIFIER_KEYS:
            xtest.fake_input(display, X.KeyPress, key)
        written = display.get_keyboard_mapping(KEY_A, 1)
        for attempt in range(200):
            # A release and a press of the same millisecond are a held key's.
            time.sleep(0.002)
            display.change_keyboard_mapping(KEY_A, written)
            display.flush()
            pause_until = time.perf_counter() + attempt * 5e-6
            while time.perf_counter() < pause_until:
                pass
            xtest.fake_input(display, X.KeyPress, KEY_T)
            xtest.fake_input(display, X.KeyRelease, KEY_T)
            display.sync()
            self.assertEqual(self.printer.next_line(), "pressed ", attempt)

    def test_a_modifier_is_followed_where_the_keyboard_map_moves_it(self):
        self.assertEqual(self.printer.register(), NO_ERROR)
        self.server.change_keyboard_map(
            lambda text: re.sub(r"modifier_map Mod4 (\{ *<(?:LWIN|RWIN|SUPR))", r"modifier_map Mod3 \1", text)
        )
        until(lambda: self.other.may_grab(KEY_T, STANDARD_BITS), "the old grab is given back")
        moved = CONTROL_BIT | ALT_BIT | MOD3_BIT
        until(lambda: not self.other.may_grab(KEY_T, moved), "there is another")
        self.server.press()
        self.assert_pressed_once()
        self.assertEqual(self.printer.log(), [])

    def test_a_shortcut_that_the_keyboard_does_not_have_is_unavailable(self):
        for config in ((T, 0), (T, 0x1), (58, COMMAND), (4294967295, COMMAND)):
            with self.subTest(config=config):
                self.assertEqual(self.printer.register(config), UNAVAILABLE)
        self.assertEqual(len(self.printer.log()), 4)

    def test_a_program_that_ends_gives_its_shortcut_back(self):
        short = ShortcutPrinter(display=self.server.display)
        self.assertEqual(short.register(), NO_ERROR)
        self.assertEqual(short.end(), 0)
        self.assertEqual(self.printer.register(), NO_ERROR)


class GoneXServerTest(unittest.TestCase):
    def start(self, **options):
        printer = ShortcutPrinter(**options)
        self.addCleanup(lambda: self.assertEqual(printer.end(), 0))
        return printer

    def test_without_an_x_server_or_a_bus_the_log_says_why(self):
        for display in (None, ":nonsense"):
            with self.subTest(display=display):
                printer = self.start(display=display)
                self.assertEqual(printer.register(), UNAVAILABLE)
                (line,) = printer.log()
                self.assertIn("no global shortcut: the X server cannot be reached; there is no session bus", line)
                self.assertIn("quillo quick-add", line)

    def test_an_x_server_that_is_gone_ends_nothing_but_the_shortcut(self):
        server = XServer()
        printer = self.start(display=server.display)
        self.assertEqual(printer.register(), NO_ERROR)
        server.stop()
        until(lambda: printer.log(), "the loss is in the log")
        self.assertEqual(len(printer.log()), 1)
        self.assertIn("the global shortcut is lost: the X server is gone", printer.log()[0])
        printer.unregister()
        self.assertEqual(printer.register(), UNAVAILABLE)

    def test_a_server_that_goes_while_something_is_asked_of_it_ends_nothing(self):
        for killed in (False, True):
            with self.subTest(killed=killed):
                server = XServer()
                printer = self.start(display=server.display)
                self.assertEqual(printer.register(), NO_ERROR)
                printer.process.send_signal(signal.SIGSTOP)  # Stopped, so that it notices nothing until it has been asked.
                if killed:
                    server.process.kill()
                server.stop()
                printer.say("unregister")
                printer.process.send_signal(signal.SIGCONT)
                self.assertEqual(printer.next_line(), "unregistered")
                self.assertEqual(printer.register(), UNAVAILABLE)


if __name__ == "__main__":
    unittest.main()
