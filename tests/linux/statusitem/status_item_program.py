"""Drives status_item_driver, and panels for it to stand in.

The program is named by the environment variable STATUS_ITEM_DRIVER.
"""

import json
import os
import pathlib
import queue
import subprocess
import tempfile
import threading
import time
import unittest

from gi.repository import Gio, GLib

PATIENCE_SECONDS = 30
# So long nothing must come that should not.
QUIET_SECONDS = 0.5

ITEM = ("/StatusNotifierItem", "org.kde.StatusNotifierItem")
PROPERTIES = "org.freedesktop.DBus.Properties"
MENU_INTERFACE = "com.canonical.dbusmenu"

# What is on this bus, the test has put there.
BUS_CONFIGURATION = """
<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:path={folder}/bus</listen>
  <servicedir>{folder}/services</servicedir>
  <policy context="default">
    <allow send_destination="*"/>
    <allow receive_sender="*"/>
    <allow own="*"/>
  </policy>
</busconfig>
"""
DAEMON = ("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus")

WATCHER = "org.kde.StatusNotifierWatcher"
WATCHER_DESCRIPTION = """
<node>
  <interface name="org.kde.StatusNotifierWatcher">
    <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
  </interface>
</node>
"""

FACE = {
    "do": "face",
    "symbol": "checklist",
    "symbolDescription": "Opens the list",
    "toolTip": "A list & more",
    "accessibilityLabel": "List",
}


def until(condition, what):
    """Serves the test's own connections until the condition holds."""
    deadline = time.monotonic() + PATIENCE_SECONDS
    while not (result := condition()):
        if time.monotonic() > deadline:
            raise AssertionError(f"in {PATIENCE_SECONDS} s not: {what}")
        GLib.MainContext.default().iteration(False)
        time.sleep(0.002)
    return result


def serve_for(seconds):
    deadline = time.monotonic() + seconds
    while time.monotonic() < deadline:
        GLib.MainContext.default().iteration(False)
        time.sleep(0.002)


class Bus:
    """A session bus of its own. What it starts by itself gets `environment`."""

    def __init__(self, folder, environment):
        self.services = folder / "services"
        self.services.mkdir(parents=True)
        configuration = folder / "bus.conf"
        configuration.write_text(BUS_CONFIGURATION.format(folder=folder))
        self._process = subprocess.Popen(
            ["dbus-daemon", f"--config-file={configuration}", "--nofork", "--nosyslog", "--print-address=1"],
            env=environment,
            stdout=subprocess.PIPE,
            stderr=subprocess.DEVNULL,
        )
        self.address = self._process.stdout.readline().decode().strip()
        self.connection = self.connect()

    def connect(self):
        connection = Gio.DBusConnection.new_for_address_sync(
            self.address,
            Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION,
            None,
            None,
        )
        connection.set_exit_on_close(False)
        return connection

    def call(self, name, path, interface, method, parameters=None):
        """Calls a method and returns what it returned, unpacked."""
        return call(self.connection, name, path, interface, method, parameters)

    def has(self, name):
        return self.call(*DAEMON, "NameHasOwner", GLib.Variant("(s)", (name,)))[0]

    def die(self):
        self._process.kill()
        self._process.wait()

    def stop(self):
        self.die()
        self._process.stdout.close()


def call(connection, name, path, interface, method, parameters=None):
    answer = connection.call_sync(
        name, path, interface, method, parameters, None, Gio.DBusCallFlags.NONE, PATIENCE_SECONDS * 1000, None
    )
    return answer.unpack()


class Panel:
    """Takes status items; owns `names` beside the watcher's."""

    def __init__(self, bus, names=(), refuses=False):
        self.items = []
        self._refuses = refuses
        self._connection = bus.connect()
        description = Gio.DBusNodeInfo.new_for_xml(WATCHER_DESCRIPTION).interfaces[0]
        self._connection.register_object("/StatusNotifierWatcher", description, self._answer, None, None)
        for name in (*names, WATCHER):
            assert call(self._connection, *DAEMON, "RequestName", GLib.Variant("(su)", (name, 4))) == (1,), name

    def _answer(self, _connection, _sender, _path, _interface, _method, parameters, invocation):
        self.items.append(parameters.unpack()[0])
        if self._refuses:
            invocation.return_dbus_error("org.freedesktop.DBus.Error.Failed", "no room")
        else:
            invocation.return_value(None)

    def item(self):
        """The name of the only item, as soon as it is there."""
        until(lambda: self.items, "an item made itself known")
        return self.items[0]

    def stop(self):
        if not self._connection.is_closed():
            self._connection.close_sync(None)


class Program:
    """The driver, with the events it told of."""

    def __init__(self, environment, platform="offscreen"):
        self._events = queue.Queue()
        self.seen = []
        self.process = subprocess.Popen(
            [os.environ["STATUS_ITEM_DRIVER"]],
            env={**environment, "QT_QPA_PLATFORM": platform},
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
            stderr=subprocess.DEVNULL,
            text=True,
        )
        self._reader = threading.Thread(target=self._read, daemon=True)
        self._reader.start()

    def _read(self):
        for line in self.process.stdout:
            self._events.put(json.loads(line))

    def tell(self, **command):
        self.process.stdin.write(json.dumps(command) + "\n")
        self.process.stdin.flush()

    def events(self, kind):
        """All events of the kind so far."""
        while not self._events.empty():
            self.seen.append(self._events.get())
        return [event for event in self.seen if event["event"] == kind]

    def next(self, kind):
        """The next event of the kind that nobody has asked for yet; those before it of other kinds stay."""
        event = until(lambda: next(iter(self.events(kind)), None), f"{kind}; there was {self.seen}")
        self.seen.remove(event)
        return event

    def log(self):
        return [event["line"] for event in self.events("log")]

    def end(self):
        """Its exit status, once its input has ended."""
        self.process.stdin.close()
        status = self.process.wait(timeout=PATIENCE_SECONDS)
        self._reader.join()
        self.process.stdout.close()
        return status

    def stop(self):
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait()
        if not self.process.stdin.closed:
            try:
                self.process.stdin.close()
            except BrokenPipeError:
                pass
        self._reader.join()
        self.process.stdout.close()


class StatusItemTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        runtime = self.folder / "runtime"
        runtime.mkdir(mode=0o700)
        self.environment = {
            "PATH": "/usr/bin:/bin",
            "HOME": str(self.folder),
            "XDG_RUNTIME_DIR": str(runtime),
            "LANG": "C.UTF-8",
            "DBUS_SESSION_BUS_ADDRESS": "unix:path=/nonexistent",
        }

    def start_bus(self):
        self.bus = Bus(self.folder / "bus", self.environment)
        self.addCleanup(self.bus.stop)
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = self.bus.address

    def start_panel(self, **options):
        panel = Panel(self.bus, **options)
        self.addCleanup(panel.stop)
        return panel

    def start_program(self, platform="offscreen"):
        program = Program(self.environment, platform)
        self.addCleanup(program.stop)
        program.tell(**FACE)
        return program
