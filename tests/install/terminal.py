"""A program at a terminal, for what programs do only there."""

import fcntl
import os
import pty
import select
import signal
import struct
import termios
import time


class Terminal:
    """Runs a program on a terminal of its own; to be used in a `with`."""

    TIME_LIMIT_SECONDS = 30

    def __init__(self, command, environment, rows=60, columns=120):
        self._shown = ""
        self._process, self._descriptor = pty.fork()
        if self._process == 0:
            os.execvpe(command[0], command, environment)
        fcntl.ioctl(self._descriptor, termios.TIOCSWINSZ, struct.pack("HHHH", rows, columns, 0, 0))

    def __enter__(self):
        return self

    def __exit__(self, *_):
        os.kill(self._process, signal.SIGKILL)
        os.waitpid(self._process, 0)
        os.close(self._descriptor)

    def type(self, text):
        """Types the text; what was shown before counts no longer."""
        self._shown = ""
        os.write(self._descriptor, text.encode())

    def wait_for(self, *texts):
        """Returns what is shown once all of the texts are; an error if that takes too long."""
        deadline = time.monotonic() + self.TIME_LIMIT_SECONDS
        while not all(text in self._shown for text in texts):
            left = deadline - time.monotonic()
            if left <= 0 or not select.select([self._descriptor], [], [], left)[0]:
                raise AssertionError(f"the terminal does not show {texts}, but:\n{self._shown}")
            try:
                self._shown += os.read(self._descriptor, 65536).decode(errors="replace")
            except OSError:  # The program has ended.
                raise AssertionError(f"the program ended at:\n{self._shown}") from None
        return self._shown
