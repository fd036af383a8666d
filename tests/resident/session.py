"""A private desktop session: a bus, and something on it that shows notifications."""

import glob
import json
import os
import pathlib
import subprocess
import sys
import tempfile
import time
import unittest

from gi.repository import Gio, GLib

from desktop_program import PATIENCE_SECONDS, DesktopProgram, wait_until
from quillo_command import CommandTest, Quillo

NAME = "org.quillo.Quillo"
APPLICATION = ("/org/quillo/Quillo", "org.freedesktop.Application")
NOTIFICATIONS = ("org.freedesktop.Notifications", "/org/freedesktop/Notifications")

# Without the folders of services of the machine: what is on this bus, the test has put there.
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

DUNST_CONFIGURATION = """
[global]
markup = {markup}
stack_duplicates = false
history_length = 100
"""


class Bus:
    """A session bus of its own. What it starts by itself gets `environment`."""

    def __init__(self, folder, environment=None):
        self.folder = pathlib.Path(folder)
        (self.folder / "services").mkdir(parents=True)
        configuration = self.folder / "bus.conf"
        configuration.write_text(BUS_CONFIGURATION.format(folder=self.folder))
        # Should the test be killed, it goes too.
        self.process = subprocess.Popen(
            ["setpriv", "--pdeathsig", "KILL"]
            + ["dbus-daemon", f"--config-file={configuration}", "--nofork", "--nosyslog", "--print-address=1"],
            env={"PATH": os.environ["PATH"], **(environment or {})},
            stdout=subprocess.PIPE,
            stderr=subprocess.DEVNULL,
        )
        self.address = self.process.stdout.readline().decode().strip()
        self.connection = Gio.DBusConnection.new_for_address_sync(
            self.address,
            Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION,
            None,
            None,
        )

    def call(self, name, path, interface, method, parameters=None):
        """Calls a method and returns what it returned, unpacked."""
        answer = self.connection.call_sync(
            name, path, interface, method, parameters, None, Gio.DBusCallFlags.NONE, PATIENCE_SECONDS * 1000, None
        )
        return answer.unpack()

    def owner(self, name):
        """The process that owns the name, or None."""
        bus = ("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus")
        try:
            return self.call(*bus, "GetConnectionUnixProcessID", GLib.Variant("(s)", (name,)))[0]
        except GLib.Error:
            return None

    def die(self):
        self.process.kill()
        self.process.wait()

    def stop(self):
        self.die()
        self.process.stdout.close()


class Dunst:
    """The notification daemon dunst, on a screen that nobody sees."""

    def __init__(self, bus, folder, markup="full"):
        self.bus = bus
        configuration = pathlib.Path(folder) / "dunstrc"
        configuration.write_text(DUNST_CONFIGURATION.format(markup=markup))
        self.log = tempfile.TemporaryFile()
        number, told = os.pipe()
        self.screen = subprocess.Popen(
            ["Xvfb", "-displayfd", str(told), "-screen", "0", "640x480x24", "-nolisten", "tcp"],
            pass_fds=[told],
            stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL,
        )
        os.close(told)
        with open(number) as display:
            self.display = display.readline().strip()
        self.daemon = subprocess.Popen(
            ["dunst", "-config", configuration],
            env={"DISPLAY": ":" + self.display, "DBUS_SESSION_BUS_ADDRESS": bus.address, "HOME": str(folder)},
            stdout=self.log,
            stderr=self.log,
        )
        wait_until(lambda: bus.owner(NOTIFICATIONS[0]), "dunst is there")

    def received(self):
        """What it has received: dictionaries with title, body, application and at, in the order of arrival. They are
        closed by that."""
        control = (*NOTIFICATIONS, "org.dunstproject.cmd0")
        self.bus.call(*control, "NotificationCloseAll")
        wait_until(lambda: self.count("displayedLength") == 0, "dunst has closed all notifications")
        since_boot = time.time() - time.clock_gettime(time.CLOCK_BOOTTIME)
        history = self.bus.call(*control, "NotificationListHistory")[0]
        return sorted(
            (
                {
                    "application": entry["appname"],
                    "title": entry["summary"],
                    "body": entry["body"],
                    "at": entry["timestamp"] / 1e6 + since_boot,
                }
                for entry in history
            ),
            key=lambda entry: entry["at"],
        )

    def count(self, which):
        properties = (*NOTIFICATIONS, "org.freedesktop.DBus.Properties")
        return self.bus.call(*properties, "Get", GLib.Variant("(ss)", ("org.dunstproject.cmd0", which)))[0]

    def stop(self):
        for process in (self.daemon, self.screen):
            process.terminate()
            process.wait(timeout=PATIENCE_SECONDS)
        self.log.close()


class StandIn:
    """A notification daemon that tells what it is asked, and when. Answers take `answer_delay` milliseconds."""

    def __init__(self, bus, *capabilities, answer_delay=0):
        self.bus = bus
        self.output = tempfile.TemporaryFile()
        script = pathlib.Path(__file__).with_name("notification_daemon.py")
        self.process = subprocess.Popen(
            [sys.executable, "-B", script, bus.address, str(answer_delay), *capabilities], stdout=self.output
        )
        wait_until(lambda: bus.owner(NOTIFICATIONS[0]) == self.process.pid, "the notification daemon is there")

    def received(self):
        text = os.pread(self.output.fileno(), 1 << 24, 0).decode()
        return [json.loads(line) for line in text.split("\n")[:-1]]

    def bodies(self):
        return [notification["body"] for notification in self.received()]

    def wait_for(self, body):
        """Waits for a notification that says this, and until who sent it knows it, if it is told at once."""
        wait_until(lambda: body in self.bodies(), f"a notification {body!r}")
        self.bus.call(*NOTIFICATIONS, NOTIFICATIONS[0], "GetCapabilities")

    def stop(self):
        self.process.terminate()
        self.process.wait(timeout=PATIENCE_SECONDS)
        self.output.close()


class Clock:
    """A wall clock that goes ahead of the real one. To be given to programs, in their environment."""

    def __init__(self, ahead):
        (library,) = glob.glob("/usr/lib/*/faketime/libfaketimeMT.so.1")
        self.ahead = ahead
        self.environment = {
            "LD_PRELOAD": library,
            "FAKETIME": f"{ahead:+.3f}s",
            "FAKETIME_DONT_FAKE_MONOTONIC": "1",
        }

    @staticmethod
    def before_a_minute(seconds):
        """On which a minute starts in so many seconds from now."""
        return Clock(-(time.time() + seconds) % 60)

    def later(self, seconds):
        return Clock(self.ahead + seconds)

    def now(self):
        return time.time() + self.ahead


def is_desktop_sanitized():
    content = pathlib.Path(os.environ["QUILLO_DESKTOP"]).read_bytes()
    return b"__asan_init" in content or b"__tsan_init" in content


def can_have_other_clocks():
    return bool(glob.glob("/usr/lib/*/faketime/libfaketimeMT.so.1")) and not is_desktop_sanitized()


needs_other_clocks = unittest.skipUnless(
    can_have_other_clocks(), "there is no libfaketime that could be loaded into the program"
)


def is_shipped_build():
    """Whether the program was built as it is shipped: optimised, and without sanitizers."""
    return not is_desktop_sanitized() and os.environ.get("QUILLO_BUILD_TYPE") in ("Release", "RelWithDebInfo")


class LoneQuillo(Quillo):
    """The command. The tests here start the desktop program themselves."""

    def hold(self):
        pass


class ResidentTest(CommandTest):
    """A test with a fresh data folder and a session bus; neither program runs yet."""

    def setUp(self):
        super().setUp()
        self.bus = self.make_bus()

    def make_quillo(self, name):
        return LoneQuillo(self.folder / name)

    def make_bus(self, **environment):
        bus = Bus(tempfile.mkdtemp(dir=self.folder, prefix="session-") + "/bus", environment)
        self.addCleanup(bus.stop)
        return bus

    def make_stand_in(self, *capabilities, bus=None, answer_delay=0):
        daemon = StandIn(bus or self.bus, *capabilities, answer_delay=answer_delay)
        self.addCleanup(daemon.stop)
        return daemon

    def start(self, quillo=None, bus=None, environment=None, **options):
        """A desktop program over the command's folder, ready for commands. It is killed if the test does not end it."""
        quillo = quillo or self.quillo
        program = DesktopProgram(
            quillo.folder,
            {
                **quillo.environment,
                "DBUS_SESSION_BUS_ADDRESS": (bus or self.bus).address,
                **(environment or {}),
            },
            **options,
        )
        self.addCleanup(self.end, program)
        return program.wait_until_ready()

    def end(self, program):
        program.kill()

    def assert_ends_well(self, program):
        self.assertEqual(program.terminate(), 0, program.errors)

    def add(self, *titles, quillo=None, environment=None):
        for title in titles:
            answer = (quillo or self.quillo)("add", "--", title, environment=environment)
            self.assertEqual((answer.code, answer.errors), (0, ""))
