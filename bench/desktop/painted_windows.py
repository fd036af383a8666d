"""Tells when a window has been painted, without asking again and again: the X server tells of every drawing."""

import select
import time

from PIL import Image
from Xlib import X, error
from Xlib.display import Display
from Xlib.ext import damage

from desktop_program import PATIENCE_SECONDS
from process_costs import processor_ms
from screen import COLOURS_OF_EMPTINESS


def when_drawn(event):
    """By time.monotonic(), which is the server's clock too, in milliseconds of 32 bits. That we come to hear of it takes
    longer: looking at what was drawn before takes as long as the drawing."""
    now = time.monotonic()
    return now - (int(now * 1000) - event.timestamp) % (1 << 32) / 1000


class PaintedWindows:
    """Watches the top-level windows that are made on the screen of that name, such as ":7", from now on."""

    def __init__(self, screen):
        self._display = Display(screen)
        # Windows may go while we ask for them.
        self._display.set_error_handler(lambda *_: None)
        self._display.damage_query_version()
        self._drawing = self._display.extension_event.DamageNotify
        self._owners = {}  # {window: its process, or None}
        self._root = self._display.screen().root
        self._root.change_attributes(event_mask=X.SubstructureNotifyMask)
        self._display.sync()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._display.close()

    def wait_until_painted(self, process):
        """Waits for something to be drawn into a window of the process that then shows more than an empty ground.
        Returns when the server drew it, by time.monotonic(), and the processor time of the process then.

        What counts is the content of the window. What a compositor makes of it, such as a fading in, comes on top.
        """
        while True:
            event = self._next("is painted")
            if event.type != self._drawing:
                continue
            spent = processor_ms(process)
            window = self._display.create_resource_object("window", event.drawable.id)
            if self._is_painted(window, process):
                return when_drawn(event), spent

    def wait_until_gone(self, process):
        """Waits until a window of the process is taken from the screen."""
        while True:
            event = self._next("goes")
            if event.type == X.UnmapNotify and self._owner(event.window) == process:
                return

    def forget(self):
        """Lets go of what the server has told so far."""
        self._display.sync()
        while self._display.pending_events():
            self._follow(self._display.next_event())

    def _next(self, what):
        deadline = time.monotonic() + PATIENCE_SECONDS
        while not self._display.pending_events():
            if not select.select([self._display], [], [], deadline - time.monotonic())[0]:
                raise AssertionError(f"waited {PATIENCE_SECONDS} s in vain: a window {what}")
        event = self._display.next_event()
        self._follow(event)
        return event

    def _follow(self, event):
        if event.type == X.CreateNotify:
            event.window.damage_create(damage.DamageReportRawRectangles)
            event.window.change_attributes(event_mask=X.StructureNotifyMask)
            self._display.flush()
        elif event.type == X.DestroyNotify:
            self._owners.pop(event.window.id, None)

    def _owner(self, window):
        """The process of the window, which programs name before they show or draw anything."""
        if window.id not in self._owners:
            try:
                found = window.get_full_property(self._display.get_atom("_NET_WM_PID"), X.AnyPropertyType)
            except error.BadWindow:
                return None
            self._owners[window.id] = found.value[0] if found else None
        return self._owners[window.id]

    def _is_painted(self, window, process):
        if self._owner(window) != process:
            return False
        try:
            size = window.get_geometry()
            pixels = window.get_image(0, 0, size.width, size.height, X.ZPixmap, 0xFFFFFFFF).data
        except (error.BadWindow, error.BadDrawable, error.BadMatch):  # It is not shown, or not any more.
            return False
        picture = Image.frombuffer("RGB", (size.width, size.height), pixels, "raw", "BGRX")
        return len(picture.getcolors(size.width * size.height)) > COLOURS_OF_EMPTINESS
