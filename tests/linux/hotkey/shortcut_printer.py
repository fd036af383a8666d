"""Runs the program that registers shortcuts and prints what comes of it.

The program to run is named by the environment variable SHORTCUT_PRINTER.
"""

import os
import subprocess
import tempfile
import time

from gi.repository import GLib

PATIENCE_SECONDS = 20
# So long nothing must come that should not.
QUIET_SECONDS = 0.5

NO_ERROR, TAKEN, UNAVAILABLE = 0, -9878, -9879
# Key codes of shortcuts.
A, S, T = 0, 1, 17
COMMAND, SHIFT, OPTION, CONTROL = 0x100, 0x200, 0x800, 0x1000
STANDARD = (T, CONTROL | OPTION | COMMAND)


def until(condition, what):
    """Returns what the condition returns, as soon as that is something; serves the test's own bus connections."""
    deadline = time.monotonic() + PATIENCE_SECONDS
    while not (result := condition()):
        if time.monotonic() > deadline:
            raise AssertionError(f"in {PATIENCE_SECONDS} s not: {what}")
        GLib.MainContext.default().iteration(False)
        time.sleep(0.002)
    return result


class ShortcutPrinter:
    """One run of the program. Without `bus_address` there is no session bus, without `display` no X server."""

    def __init__(self, display=None, bus_address=None, **environment):
        self._output = tempfile.TemporaryFile()
        self._errors = tempfile.TemporaryFile()
        self._read = 0
        self.process = subprocess.Popen(
            [os.environ["SHORTCUT_PRINTER"]],
            env={
                "PATH": os.environ["PATH"],
                "DBUS_SESSION_BUS_ADDRESS": bus_address or "unix:path=/nonexistent",
                **({"DISPLAY": display} if display else {}),
                **environment,
            },
            stdin=subprocess.PIPE,
            stdout=self._output,
            stderr=self._errors,
        )

    def lines(self):
        """All that was printed so far."""
        return os.pread(self._output.fileno(), 1 << 20, 0).decode().splitlines()

    def log(self):
        """The lines of the program's log so far."""
        return os.pread(self._errors.fileno(), 1 << 20, 0).decode().splitlines()

    def next_line(self):
        line = until(lambda: self.lines()[self._read :], "another line is printed")[0]
        self._read += 1
        return line

    def stays_quiet(self):
        """Whether nothing more is printed for a while."""
        end = time.monotonic() + QUIET_SECONDS
        while time.monotonic() < end:
            GLib.MainContext.default().iteration(False)
            time.sleep(0.002)
        return self.lines()[self._read :] == []

    def say(self, line):
        self.process.stdin.write(f"{line}\n".encode())
        self.process.stdin.flush()

    def ask(self, config=STANDARD):
        self.say("register {} {}".format(*config))

    def register(self, config=STANDARD):
        """Registers a shortcut and returns the status."""
        self.ask(config)
        word, status = self.next_line().split()
        assert word == "status"
        return int(status)

    def unregister(self):
        self.say("unregister")
        assert self.next_line() == "unregistered"

    def keys(self):
        """What the desktop says of its keys, with a + where it has a dialog for them; or None."""
        self.say("keys")
        line = self.next_line()
        return None if line == "none" else line.removeprefix("keys ")

    def configure(self):
        self.say("configure")
        assert self.next_line() == "configured"

    def end(self):
        """Ends the program, if it still runs, and returns its exit code."""
        self.process.stdin.close()
        try:
            return self.process.wait(timeout=PATIENCE_SECONDS)
        except subprocess.TimeoutExpired:
            self.process.kill()
            return self.process.wait()
        finally:
            self._output.close()
            self._errors.close()
