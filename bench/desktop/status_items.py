"""Tells when a program's item has come into the status area: who watches over the area announces it on the bus."""

import time
from dataclasses import dataclass

from gi.repository import Gio, GLib

from desktop import WATCHER
from desktop_program import PATIENCE_SECONDS
from process_costs import processor_ms
from quillo_on_desktop import StatusItem


class StatusItems:
    """Those that are announced on the bus from now on."""

    def __init__(self, bus):
        self._bus = bus
        self._announced = []
        self._subscription = bus.connection.signal_subscribe(
            *(WATCHER, WATCHER, "StatusNotifierItemRegistered", None, None, Gio.DBusSignalFlags.NONE), self._hear
        )

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._bus.connection.signal_unsubscribe(self._subscription)

    def wait_for(self, process):
        """The Item of the process, as soon as it is announced."""
        context = GLib.MainContext.default()
        alarm = GLib.timeout_add_seconds(PATIENCE_SECONDS, lambda: GLib.SOURCE_CONTINUE)
        deadline = time.monotonic() + PATIENCE_SECONDS
        self._process = process
        try:
            while time.monotonic() < deadline:
                context.iteration(True)
                while self._announced:
                    item = self._announced.pop(0)
                    if self._bus.owner(item.name) == process:
                        return item
        finally:
            GLib.source_remove(alarm)
        raise AssertionError(f"waited {PATIENCE_SECONDS} s in vain: an item in the status area")

    def _hear(self, connection, sender, path, interface, signal, parameters):
        registered, spent = time.monotonic(), processor_ms(self._process)
        name, _, path = parameters.unpack()[0].partition("/")
        self._announced.append(Item(self._bus, name, f"/{path}", registered, spent))


@dataclass
class Item:
    """`registered` says when it was announced, by time.monotonic(), and `processor_ms` how much processor time its
    process had spent then."""

    bus: object
    name: str
    path: str
    registered: float
    processor_ms: float

    def click(self):
        """As panels tell of a click in their upper left corner. Waits for no answer: only what the program does next
        is of interest."""
        place = GLib.Variant("(ii)", (0, 0))
        self.bus.connection.call(
            self.name,
            self.path,
            StatusItem.INTERFACE,
            "Activate",
            place,
            None,
            Gio.DBusCallFlags.NONE,
            -1,
            None,
            None,
        )
