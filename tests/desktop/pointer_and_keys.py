"""A hand on the pointer and on the keyboard: programs cannot tell these events from real ones."""

import time

from Xlib import XK, X
from Xlib.ext import xtest

LEFT, MIDDLE, RIGHT, WHEEL_UP, WHEEL_DOWN = 1, 2, 3, 4, 5
# Two clicks within this time and place are a double click to every toolkit.
DOUBLE_CLICK_SECONDS = 0.5
# A key that is held during a click is held so much longer than the button, at least.
HELD_SECONDS = 0.1
# No finger goes down or up faster. Window managers look at each press before they pass it on, and lose what comes while
# they do.
FINGER_SECONDS = 0.03
# A drag is one only after some way, and where the pointer comes by, not faster than a hand.
DRAG_STEPS = 8
DRAG_STEP_SECONDS = 0.02
# The names of the keys that hold others down.
HELD = {"ctrl": "Control_L", "alt": "Alt_L", "shift": "Shift_L", "super": "Super_L"}
# Characters that are no keysym's name.
NAMES = {" ": "space", "\n": "Return", "\t": "Tab"}


class PointerAndKeys:
    def __init__(self, display):
        self._display = display
        self._last_click = (None, 0.0)

    def move(self, place):
        """`place` is (x, y) in pixels of the screen."""
        xtest.fake_input(self._display, X.MotionNotify, x=round(place[0]), y=round(place[1]))
        self._display.sync()

    def click(self, place, button=LEFT, hold=(), apart=True):
        """Moves there and clicks once; where it is to stand apart, never so that it makes a double click with the click
        before."""
        before, when = self._last_click
        if apart and before == (place, button):
            time.sleep(max(0.0, when + DOUBLE_CLICK_SECONDS - time.monotonic()))
        self._click(place, button, hold)

    def double_click(self, place):
        self.click(place)
        self._click(place, LEFT, ())

    def right_click(self, place):
        self.click(place, RIGHT)

    def _click(self, place, button, hold):
        self.move(place)
        with self._held(hold):
            self.press(button)
            self.release(button)
            if hold:  # Nobody lets go of both at the same moment.
                time.sleep(HELD_SECONDS)
        self._last_click = ((place, button), time.monotonic())

    def press(self, button=LEFT):
        self._event(X.ButtonPress, button)
        time.sleep(FINGER_SECONDS)

    def release(self, button=LEFT):
        self._event(X.ButtonRelease, button)
        time.sleep(FINGER_SECONDS)

    def drag(self, start, end):
        self.move(start)
        self.press()
        for step in range(1, DRAG_STEPS + 1):
            time.sleep(DRAG_STEP_SECONDS)
            self.move(tuple(a + (b - a) * step / DRAG_STEPS for a, b in zip(start, end)))
        self.release()

    def key(self, combination):
        """Such as "Return", "ctrl+q" or "ctrl+alt+super+t"; keys have the names of X11."""
        *hold, name = combination.split("+")
        with self._held(hold):
            self._tap(name)

    def type(self, text):
        """Types it on an American keyboard, which has ASCII only."""
        for character in text:
            self._tap(NAMES.get(character, character))

    def _tap(self, name):
        code, shifted = self._key(name)
        with self._held(("shift",) if shifted else ()):
            self._event(X.KeyPress, code)
            self._event(X.KeyRelease, code)

    def _key(self, name):
        """The key of that name, and whether shift has to be held."""
        symbol = ord(name) if len(name) == 1 else XK.string_to_keysym(name)
        for level, shifted in ((0, False), (1, True)):
            for code, at in self._display.keysym_to_keycodes(symbol):
                if at == level:
                    return code, shifted
        raise ValueError(f"there is no key for {name!r}")

    def _held(self, names):
        return _Held(self, [self._key(HELD[name])[0] for name in names])

    def _event(self, kind, detail):
        xtest.fake_input(self._display, kind, detail)
        self._display.sync()


class _Held:
    """Keys that are down as long as this lives, also where something fails."""

    def __init__(self, hand, codes):
        self._hand = hand
        self._codes = codes

    def __enter__(self):
        for code in self._codes:
            self._hand._event(X.KeyPress, code)

    def __exit__(self, *_):
        for code in reversed(self._codes):
            self._hand._event(X.KeyRelease, code)
