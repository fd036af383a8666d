"""What the desktop asks for, from a settings portal of the test's own and from X servers of its own."""

import json
import os
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

BUS_CONFIGURATION = """
<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:path={folder}/bus</listen>
  <policy context="default">
    <allow send_destination="*"/>
    <allow receive_sender="*"/>
    <allow own="*"/>
  </policy>
</busconfig>
"""

PATH = "/org/freedesktop/portal/desktop"
INTERFACE = "org.freedesktop.portal.Settings"
DESCRIPTION = """
<node>
  <interface name="org.freedesktop.portal.Settings">
    <method name="ReadAll"><arg type="as" direction="in"/><arg type="a{sa{sv}}" direction="out"/></method>
    <method name="ReadOne"><arg type="s" direction="in"/><arg type="s" direction="in"/>
      <arg type="v" direction="out"/></method>
    <method name="Read"><arg type="s" direction="in"/><arg type="s" direction="in"/>
      <arg type="v" direction="out"/></method>
    <signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal>
  </interface>
</node>
"""

APPEARANCE = "org.freedesktop.appearance"
GNOME = "org.gnome.desktop.interface"
KDE = "org.kde.kdeglobals.KDE"

NOTHING_SPECIAL = {
    "dark": False,
    "highContrast": False,
    "reduceMotion": False,
    "reduceTransparency": False,
    "accent": None,
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


class Bus:
    def __init__(self, folder):
        configuration = os.path.join(folder, "bus.conf")
        with open(configuration, "w", encoding="utf-8") as file:
            file.write(BUS_CONFIGURATION.format(folder=folder))
        self.process = subprocess.Popen(
            ["dbus-daemon", f"--config-file={configuration}", "--nofork", "--nosyslog", "--print-address=1"],
            stdout=subprocess.PIPE,
            stderr=subprocess.DEVNULL,
        )
        self.address = self.process.stdout.readline().decode().strip()

    def connect(self):
        return Gio.DBusConnection.new_for_address_sync(
            self.address,
            Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION,
            None,
            None,
        )

    def stop(self):
        self.process.kill()
        self.process.wait()
        self.process.stdout.close()


class Portal:
    """A settings portal that knows the given methods; what it was asked stands in `asked`."""

    def __init__(self, bus, values, methods=("ReadAll", "ReadOne", "Read")):
        self.values = values
        self.methods = methods
        self.asked = []
        self.connection = bus.connect()
        self.connection.set_exit_on_close(False)
        description = Gio.DBusNodeInfo.new_for_xml(DESCRIPTION).interfaces[0]
        self.connection.register_object(PATH, description, self._answer, None, None)
        Gio.bus_own_name_on_connection(
            self.connection, "org.freedesktop.portal.Desktop", Gio.BusNameOwnerFlags.NONE, None, None
        )

    def _answer(self, _connection, _sender, _path, _interface, method, parameters, invocation):
        arguments = parameters.unpack()
        self.asked.append((method, *arguments))
        if method not in self.methods:
            invocation.return_dbus_error("org.freedesktop.DBus.Error.UnknownMethod", "no such method")
        elif method == "ReadAll":
            wanted = {space: keys for space, keys in self.values.items() if space in arguments[0]}
            invocation.return_value(GLib.Variant("(a{sa{sv}})", (wanted,)))
        elif (value := self.values.get(arguments[0], {}).get(arguments[1])) is None:
            invocation.return_dbus_error("org.freedesktop.portal.Error.NotFound", "no such setting")
        else:
            # Read has always given a variant in a variant.
            answer = GLib.Variant("v", value) if method == "Read" else value
            invocation.return_value(GLib.Variant("(v)", (answer,)))

    def change(self, space, key, value, connection=None):
        (connection or self.connection).emit_signal(
            None, PATH, INTERFACE, "SettingChanged", GLib.Variant("(ssv)", (space, key, value))
        )

    def leave(self):
        self.connection.close_sync(None)


class Printer:
    """The program that prints what it is told."""

    def __init__(self, *arguments, **environment):
        self.process = subprocess.Popen(
            [os.environ["APPEARANCE_PRINTER"], *arguments],
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
            stderr=subprocess.PIPE,
            env={"PATH": os.environ["PATH"], **environment},
            text=True,
        )
        self.lines = queue.Queue()
        self.log = []
        self.readers = [
            threading.Thread(target=lambda: [self.lines.put(json.loads(line)) for line in self.process.stdout]),
            threading.Thread(target=lambda: self.log.extend(self.process.stderr)),
        ]
        for reader in self.readers:
            reader.start()

    def next(self):
        until(lambda: not self.lines.empty() or self.process.poll() is not None, "a line is printed")
        return self.lines.get(timeout=PATIENCE_SECONDS)

    def says_nothing_more(self):
        end = time.monotonic() + QUIET_SECONDS
        until(lambda: time.monotonic() > end, "time passes")
        return self.lines.empty() and self.process.poll() is None

    def stop(self):
        """Lets it end by itself."""
        if not self.process.stdin.closed:
            self.process.stdin.close()
        self.process.wait(PATIENCE_SECONDS)
        for reader in self.readers:
            reader.join()
        self.process.stdout.close()
        self.process.stderr.close()
        return self.process.returncode


class AppearanceTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="quillo-appearance-")
        self.addCleanup(folder.cleanup)
        self.bus = Bus(folder.name)
        self.addCleanup(self.bus.stop)

    def start(self, *arguments, **environment):
        printer = Printer(*arguments, **{"DBUS_SESSION_BUS_ADDRESS": self.bus.address, **environment})
        self.addCleanup(printer.stop)
        return printer

    def assert_next(self, printer, **expected):
        self.assertEqual(printer.next(), {**NOTHING_SPECIAL, **expected})


class OfAPortal(AppearanceTest):
    EVERYTHING = {
        APPEARANCE: {
            "color-scheme": GLib.Variant("u", 1),
            "accent-color": GLib.Variant("(ddd)", (0.5, 0.25, 1.0)),
            "contrast": GLib.Variant("u", 1),
            "reduced-motion": GLib.Variant("u", 1),
        },
        GNOME: {"gtk-theme": GLib.Variant("s", "Adwaita")},
        "org.example": {"color-scheme": GLib.Variant("u", 2)},
    }
    EXPECTED = {
        "dark": True,
        "accent": [0.5, 0.25, 1.0],
        "highContrast": True,
        "reduceMotion": True,
        "reduceTransparency": True,
    }

    def test_is_read_with_one_question(self):
        portal = Portal(self.bus, self.EVERYTHING)
        printer = self.start()
        self.assert_next(printer)  # before there was time to answer
        self.assert_next(printer, **self.EXPECTED)
        self.assertTrue(printer.says_nothing_more())
        self.assertEqual([question[0] for question in portal.asked], ["ReadAll"])

    def test_is_read_key_by_key_where_it_knows_no_other_way(self):
        for methods in ("ReadOne",), ("Read",):
            with self.subTest(methods=methods):
                portal = Portal(self.bus, self.EVERYTHING, methods)
                printer = self.start()
                printed = printer.next()
                while printed != {**NOTHING_SPECIAL, **self.EXPECTED}:
                    printed = printer.next()
                self.assertTrue(printer.says_nothing_more())
                self.assertIn((methods[0], APPEARANCE, "accent-color"), portal.asked)
                portal.leave()

    def test_is_followed(self):
        portal = Portal(self.bus, {})
        printer = self.start()
        self.assert_next(printer)
        until(lambda: portal.asked, "the portal is asked")
        self.assertTrue(printer.says_nothing_more())
        portal.change(APPEARANCE, "color-scheme", GLib.Variant("u", 1))
        self.assert_next(printer, dark=True)
        portal.change(APPEARANCE, "accent-color", GLib.Variant("(ddd)", (1.0, 0.0, 0.0)))
        self.assert_next(printer, dark=True, accent=[1, 0, 0])
        portal.change(APPEARANCE, "accent-color", GLib.Variant("(ddd)", (-1.0, -1.0, -1.0)))
        self.assert_next(printer, dark=True)
        portal.change(GNOME, "enable-animations", GLib.Variant("b", False))
        self.assert_next(printer, dark=True, reduceMotion=True)
        portal.change(GNOME, "enable-animations", GLib.Variant("b", True))
        self.assert_next(printer, dark=True)
        portal.change(KDE, "AnimationDurationFactor", GLib.Variant("s", "0"))
        self.assert_next(printer, dark=True, reduceMotion=True)
        portal.change(APPEARANCE, "color-scheme", GLib.Variant("u", 2))
        self.assert_next(printer, reduceMotion=True)

    def test_says_nonsense(self):
        portal = Portal(
            self.bus,
            {
                APPEARANCE: {
                    "color-scheme": GLib.Variant("as", ["dark"] * 1000),
                    "accent-color": GLib.Variant("(dd)", (0.5, 0.5)),
                    "contrast": GLib.Variant("s", "1"),
                    "reduced-motion": GLib.Variant("a{sv}", {"a": GLib.Variant("(ddd)", (0, 0, 0))}),
                },
                GNOME: {"gtk-theme": GLib.Variant("s", "x" * 1_000_000 + "-dark")},
                KDE: {"AnimationDurationFactor": GLib.Variant("s", "0 ")},
            },
        )
        printer = self.start()
        self.assert_next(printer)
        until(lambda: portal.asked, "the portal is asked")
        nested = GLib.Variant("u", 1)
        for _ in range(30):
            nested = GLib.Variant("v", nested)
        portal.change(APPEARANCE, "color-scheme", nested)
        portal.change("", "", GLib.Variant("s", ""))
        portal.change("x" * 100_000, "color-scheme", GLib.Variant("u", 1))
        self.assertTrue(printer.says_nothing_more())
        portal.change(APPEARANCE, "color-scheme", GLib.Variant("u", 1))
        self.assert_next(printer, dark=True)

    def test_answers_in_another_form(self):
        def answer(_connection, _sender, _path, _interface, method, _parameters, invocation):
            if method == "ReadAll":
                invocation.return_value(GLib.Variant("(s)", ("everything",)))
            else:
                invocation.return_value(GLib.Variant("(v)", (GLib.Variant("u", 1),)))

        connection = self.bus.connect()
        description = Gio.DBusNodeInfo.new_for_xml(DESCRIPTION.replace("a{sa{sv}}", "s")).interfaces[0]
        connection.register_object(PATH, description, answer, None, None)
        Gio.bus_own_name_on_connection(
            connection, "org.freedesktop.portal.Desktop", Gio.BusNameOwnerFlags.NONE, None, None
        )
        printer = self.start()
        printed = printer.next()
        while not (printed["dark"] and printed["highContrast"] and printed["reduceMotion"]):
            printed = printer.next()
        self.assertIsNone(printed["accent"])

    def test_is_not_believed_to_be_another(self):
        portal = Portal(self.bus, {})
        printer = self.start()
        self.assert_next(printer)
        until(lambda: portal.asked, "the portal is asked")
        portal.change(APPEARANCE, "color-scheme", GLib.Variant("u", 1), self.bus.connect())
        self.assertTrue(printer.says_nothing_more())

    def test_comes_late_goes_away_and_is_replaced(self):
        printer = self.start()
        self.assert_next(printer)
        self.assertTrue(printer.says_nothing_more())
        first = Portal(self.bus, {APPEARANCE: {"color-scheme": GLib.Variant("u", 1)}})
        self.assert_next(printer, dark=True)
        first.leave()
        self.assertTrue(printer.says_nothing_more())
        Portal(self.bus, {APPEARANCE: {"contrast": GLib.Variant("u", 1)}})
        self.assert_next(printer, highContrast=True, reduceTransparency=True)

    def test_goes_away_with_the_bus(self):
        Portal(self.bus, {APPEARANCE: {"color-scheme": GLib.Variant("u", 1)}})
        printer = self.start()
        self.assert_next(printer)
        self.assert_next(printer, dark=True)
        self.bus.process.kill()
        self.assertTrue(printer.says_nothing_more())
        self.assertEqual(printer.stop(), 0)


class WithoutAPortal(AppearanceTest):
    def test_nothing_special_is_wanted(self):
        printer = self.start()
        self.assert_next(printer)
        self.assertTrue(printer.says_nothing_more())
        self.assertEqual(printer.stop(), 0)
        self.assertEqual(len(printer.log), 1, printer.log)

    def test_nor_without_a_bus(self):
        printer = self.start(DBUS_SESSION_BUS_ADDRESS="unix:path=/nonexistent")
        self.assert_next(printer)
        self.assertTrue(printer.says_nothing_more())
        self.assertEqual(printer.stop(), 0)
        self.assertIn("there is no session bus", "".join(printer.log))

    def test_the_environment_is_heard(self):
        printer = self.start(QUILLO_REDUCE_MOTION="1", QUILLO_REDUCE_TRANSPARENCY="1")
        self.assert_next(printer, reduceMotion=True, reduceTransparency=True)

    def test_the_environment_goes_before_the_desktop(self):
        Portal(self.bus, {APPEARANCE: {"reduced-motion": GLib.Variant("u", 1), "color-scheme": GLib.Variant("u", 1)}})
        printer = self.start(QUILLO_REDUCE_MOTION="0")
        self.assert_next(printer)
        self.assert_next(printer, dark=True)


class OnX11(AppearanceTest):
    def start_server(self):
        """An X server of the test's own; returns it and its display."""
        told, tell = os.pipe()
        server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(tell), "-screen", "0", "640x480x24", "-nolisten", "tcp"],
            pass_fds=[tell],
            stderr=subprocess.DEVNULL,
        )
        os.close(tell)

        def stop():
            server.kill()
            server.wait()

        self.addCleanup(stop)
        with os.fdopen(told, encoding="ascii") as number:
            return server, ":" + number.readline().strip()

    def start_compositor(self, display):
        compositor = subprocess.Popen(
            ["picom", "--backend", "xrender", "--config", "/dev/null"],
            env={"PATH": os.environ["PATH"], "DISPLAY": display, "DBUS_SESSION_BUS_ADDRESS": self.bus.address},
            stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL,
        )

        def stop():
            compositor.kill()
            compositor.wait()

        self.addCleanup(stop)
        return stop

    def test_a_compositor_is_followed(self):
        _, display = self.start_server()
        printer = self.start("x11", DISPLAY=display)
        self.assert_next(printer, reduceTransparency=True)
        self.assertTrue(printer.says_nothing_more())
        stop = self.start_compositor(display)
        self.assert_next(printer)
        late = self.start("x11", DISPLAY=display)
        self.assert_next(late)
        stop()
        self.assert_next(printer, reduceTransparency=True)
        self.assert_next(late, reduceTransparency=True)

    def test_the_server_goes_away(self):
        server, display = self.start_server()
        printer = self.start("x11", DISPLAY=display)
        self.assert_next(printer, reduceTransparency=True)
        server.kill()
        self.assertTrue(printer.says_nothing_more())
        with open(f"/proc/{printer.process.pid}/schedstat", encoding="ascii") as file:
            spent = int(file.read().split()[0]) / 1e9
        self.assertLess(spent, QUIET_SECONDS / 2, "it does not turn round and round")
        self.assertEqual(printer.stop(), 0)

    def test_there_is_no_server(self):
        printer = self.start("x11", DISPLAY=":nowhere")
        self.assert_next(printer, reduceTransparency=True)
        self.assertEqual(printer.stop(), 0)
        self.assertIn("the display cannot be reached", "".join(printer.log))


if __name__ == "__main__":
    unittest.main()
