"""A private desktop on which programs are measured, one at a time and all in the same way."""

import os
import pathlib
import signal
import subprocess
import tempfile
import time
from contextlib import ExitStack, contextmanager

from desktop import Desktop
from desktop_program import PATIENCE_SECONDS, wait_until
from painted_windows import PaintedWindows
from process_costs import context_switches, main_thread_ms, memory, processor_ms, wait_for_rest
from quillo_command import stored_task
from quillo_on_desktop import LoneQuillo
from status_items import StatusItems

HOUR = 3600
# What comes after the first frame, such as a fading in, has happened by then, and what is loaded behind it is there.
SHOWN_SECONDS = 1
# Qt ends threads, and looks for what to throw away, when that has not been used for 30 s.
FORGOTTEN_SECONDS = 32
# Long enough for whatever is put off until nobody looks.
CLOSED_SECONDS = 2
# So many tasks, far from one another, are ticked off to see what one takes.
TICKED = 20


class Stage:
    """`desktop` is the Desktop. Figures are dictionaries whose keys end in their unit: ms, mb (of 2^20 bytes) or none
    for a number; "wall" is time on the clock on the wall, "cpu" processor time of the program alone."""

    def __enter__(self):
        with ExitStack() as parts:
            self.desktop = parts.enter_context(Desktop())
            self._items = parts.enter_context(StatusItems(self.desktop.bus))
            self._windows = parts.enter_context(PaintedWindows(self.desktop.screen.name))
            self._folder = pathlib.Path(parts.enter_context(tempfile.TemporaryDirectory(prefix="quillo-stage-")))
            self._parts = parts.pop_all()
        return self

    def __exit__(self, *_):
        self._parts.close()

    def quillo(self, tasks):
        """A Quillo that has so many tasks, which are all due: each row has two lines."""
        quillo = LoneQuillo(self._folder / f"{tasks}-tasks", self.desktop)
        now = time.time()
        quillo.put_items(
            *(
                stored_task(number, f"Task number {number} about something to do", due=now + number * HOUR)
                for number in range(1, tasks + 1)
            )
        )
        return quillo

    @contextmanager
    def _running(self, command, quillo=None):
        """A run of the program, without what assistive programs make it do. A program that is none of ours finds
        nothing of its runs before."""
        variables = {**self.desktop.environment, **(quillo.environment if quillo else self._empty_folders())}
        del variables["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"]
        self._windows.forget()
        run = Run(command, variables)
        try:
            yield run
        finally:
            run.end()

    def _empty_folders(self):
        return {
            name: tempfile.mkdtemp(dir=self._folder)
            for name in ("XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME")
        }

    def status_item(self, command, quillo=None):
        """From exec to the status area's word that the program's item is there; and the processor time until the
        program has come to rest."""
        with self._running(command, quillo) as run:
            item = self._items.wait_for(run.process)
            return {
                "cpu_ms": item.processor_ms,
                "wall_ms": (item.registered - run.started) * 1000,
                "rest_cpu_ms": wait_for_rest(run.process),
            }

    def first_frame(self, command, quillo=None):
        """From exec until the program's window has been painted, and the memory taken while it is shown."""
        with self._running(command, quillo) as run:
            when, spent = self._windows.wait_until_painted(run.process)
            time.sleep(SHOWN_SECONDS)
            shown = memory(run.process)
            return {"cpu_ms": spent, "wall_ms": (when - run.started) * 1000, **of_memory(shown)}

    def reopened(self, command, openings):
        """A program whose window SIGUSR1 takes away and brings back: how long the latter takes, so often."""
        with self._running(command) as run:
            self._windows.wait_until_painted(run.process)
            walls, cpus = [], []
            for _ in range(openings):
                time.sleep(SHOWN_SECONDS)
                self._windows.forget()
                os.kill(run.process, signal.SIGUSR1)
                self._windows.wait_until_gone(run.process)
                wait_for_rest(run.process)
                self._windows.forget()
                before, started = processor_ms(run.process), time.monotonic()
                os.kill(run.process, signal.SIGUSR1)
                painted, spent = self._windows.wait_until_painted(run.process)
                walls.append((painted - started) * 1000)
                cpus.append(spent - before)
        return {"reopen_wall_ms": walls, "reopen_cpu_ms": cpus}

    def resting(self, command, quillo=None):
        """What a program takes that shows nothing but its icon."""
        with self._running(command, quillo) as run:
            self._items.wait_for(run.process)
            wait_for_rest(run.process, CLOSED_SECONDS)
            return of_memory(memory(run.process))

    def in_use(self, command, quillo, openings, idle_seconds):
        """The program opened and closed so often, left alone with its popover closed, and used. What is found of the
        openings are lists of figures."""
        with self._running(command, quillo) as run:
            item = self._items.wait_for(run.process)
            wait_for_rest(run.process)
            self._open(run, item)  # This one makes the popover.
            reopened = []
            for _ in range(openings):
                self._close(run)
                wait_for_rest(run.process)
                reopened.append(self._open(run, item))
            shown = self._shown(run)
            self._close(run)
            wait_for_rest(run.process, CLOSED_SECONDS)
            closed = memory(run.process)
            just_closed = self._context_switches(run, idle_seconds)
            time.sleep(FORGOTTEN_SECONDS)
            idle = self._context_switches(run, idle_seconds)
            ticked = self._tick_off(run, quillo)
        return {
            "reopen_wall_ms": [wall for wall, _ in reopened],
            "reopen_cpu_ms": [cpu for _, cpu in reopened],
            "shown_cpu_ms_per_s": shown,
            **{f"closed_{name}": value for name, value in of_memory(closed).items()},
            "idle_s": idle_seconds,
            "just_closed_context_switches": just_closed,
            "idle_context_switches": idle,
            "done_main_thread_ms": ticked,
        }

    def _open(self, run, item):
        """Clicks the icon, as panels tell programs of it. Returns how long the popover took to be painted, and the
        processor time."""
        self._windows.forget()
        before, started = processor_ms(run.process), time.monotonic()
        item.click()
        painted, spent = self._windows.wait_until_painted(run.process)
        screen = self.desktop.screen
        wait_until(lambda: screen.active_process() == run.process, "the popover has the keyboard")
        return (painted - started) * 1000, spent - before

    def _close(self, run):
        self._windows.forget()
        self.desktop.input.key("Escape")
        self._windows.wait_until_gone(run.process)

    def _context_switches(self, run, seconds):
        """So many in the time. Threads that come or go count with all that they did."""
        before = context_switches(run.process)
        time.sleep(seconds)
        after = context_switches(run.process)
        return sum(abs(after.get(thread, 0) - before.get(thread, 0)) for thread in before | after)

    def _shown(self, run):
        """The processor time that the open popover takes in a second in which nobody touches it."""
        time.sleep(SHOWN_SECONDS)
        before, started = processor_ms(run.process), time.monotonic()
        time.sleep(SHOWN_SECONDS)
        return (processor_ms(run.process) - before) / (time.monotonic() - started)

    def _tick_off(self, run, quillo):
        """What the main thread spends on one `quillo done`, all told: on understanding and answering the command, the
        list, the rows of the closed popover, and the number at the icon."""
        count = len(quillo.tasks())
        before = main_thread_ms(run.process)
        for number in range(TICKED):
            answer = quillo("done", str(1 + number * count // TICKED))
            if answer.code != 0:
                raise AssertionError(answer.errors)
        wait_for_rest(run.process)
        return (main_thread_ms(run.process) - before) / TICKED


class Run:
    """One run of a program: its `process`, and when, by time.monotonic(), it was `started`."""

    def __init__(self, command, environment):
        self._output = tempfile.TemporaryFile()
        self.started = time.monotonic()
        self._process = subprocess.Popen(
            command,
            env=environment,
            cwd=environment["HOME"],
            stdin=subprocess.DEVNULL,
            stdout=self._output,
            stderr=self._output,
        )
        self.process = self._process.pid

    def end(self):
        if self._process.poll() is not None:
            output = os.pread(self._output.fileno(), 1 << 16, 0).decode(errors="replace")
            raise AssertionError(f"{self._process.args[0]} has ended with {self._process.returncode}: {output}")
        self._process.terminate()
        self._process.wait(timeout=PATIENCE_SECONDS)
        self._output.close()


def of_memory(taken):
    return {
        "resident_mb": taken.resident,
        "proportional_mb": taken.proportional,
        "anonymous_mb": taken.anonymous,
    }
