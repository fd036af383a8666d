"""Runs quillo-desktop, without a screen where nothing else is said: the program that holds a list for as long as it runs.

The program to run is named by the environment variable QUILLO_DESKTOP.
"""

import os
import pathlib
import signal
import socket
import subprocess
import tempfile
import time

PATIENCE_SECONDS = 60
POLL_SECONDS = 0.002
# A socket's path has to be shorter than this, its closing zero byte included.
LONGEST_SOCKET_PATH = 108


def desktop_program():
    """The path of the program to test, or None where there is none."""
    return os.environ.get("QUILLO_DESKTOP")


def wait_until(condition, what, seconds=PATIENCE_SECONDS):
    """Returns what the condition returns, as soon as that is something; an error if it takes too long."""
    deadline = time.monotonic() + seconds
    while not (result := condition()):
        if time.monotonic() > deadline:
            raise AssertionError(f"waited {seconds} s in vain: {what}")
        time.sleep(POLL_SECONDS)
    return result


class DesktopProgram:
    """One run of the program, from its start to its end. What it writes to standard error is kept."""

    def __init__(self, folder, environment, command=(), arguments=("--headless",), **options):
        """`command` is put before the program."""
        self.folder = pathlib.Path(folder)
        self.environment = environment
        self._errors = tempfile.TemporaryFile()
        self._last_errors = None
        self.process = subprocess.Popen(
            [*command, desktop_program(), *arguments],
            env=environment,
            stdin=subprocess.DEVNULL,
            stdout=subprocess.DEVNULL,
            stderr=self._errors,
            **options,
        )

    @property
    def socket(self):
        """Where it listens, or None while it does not."""
        path = self.folder / "control.sock"
        if len(os.fsencode(path)) < LONGEST_SOCKET_PATH:
            return path
        return next(pathlib.Path(self.environment["XDG_RUNTIME_DIR"]).glob("quillo-*.sock"), None)

    @property
    def errors(self):
        """What it has written to standard error so far."""
        if self._last_errors is None:
            return os.pread(self._errors.fileno(), 1 << 24, 0).decode()
        return self._last_errors

    def has_ended(self):
        return self.process.poll() is not None

    def connect(self):
        """A connection to its socket."""
        connection = socket.socket(socket.AF_UNIX)
        connection.settimeout(PATIENCE_SECONDS)
        try:
            connection.connect(str(self.socket))
        except BaseException:
            connection.close()
            raise
        return connection

    def answers(self):
        """Whether it takes commands. It says so itself: a connection alone is the system's word, which comes before."""
        try:
            with self.connect() as connection:
                connection.sendall(b'{"command":"none"}\n')
                return bool(connection.recv(1))
        except OSError:
            return False

    def wait_until_ready(self):
        """Returns when it takes commands, or has ended because it cannot."""
        wait_until(lambda: self.has_ended() or self.answers(), "the program is ready")
        return self

    def wait(self):
        """Waits for its end and returns its exit code, negative for a signal."""
        code = self.process.wait(timeout=PATIENCE_SECONDS)
        if self._last_errors is None:
            self._last_errors = self.errors
            self._errors.close()
        return code

    def terminate(self):
        self.process.send_signal(signal.SIGTERM)
        return self.wait()

    def kill(self):
        self.process.kill()
        return self.wait()
