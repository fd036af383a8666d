"""What a process has cost so far: processor time, memory, context switches. Reading it costs the process nothing.

All of it is the kernel's own account. Memory is in MB of 2^20 bytes.
"""

import pathlib
import re
import time
from dataclasses import dataclass

from desktop_program import PATIENCE_SECONDS

# A process that has not run for so long has come to rest.
REST_SECONDS = 0.25
LOOK_SECONDS = 0.02
# linux/posix-timers.h: a process has a clock that shows its processor time, ended threads included. The clock's number
# is made of the process's, as clock_getcpuclockid() does, and of the kind of clock.
KIND_OF_CLOCK = 2


def processor_ms(process):
    """The processor time of the process, user and system, since its start."""
    return time.clock_gettime_ns(~process << 3 | KIND_OF_CLOCK) / 1e6


def main_thread_ms(process):
    """The same of its main thread alone."""
    return int(pathlib.Path(f"/proc/{process}/task/{process}/schedstat").read_text().split()[0]) / 1e6


def wait_for_rest(process, seconds=REST_SECONDS):
    """Waits until the process has not run for so long; returns its processor time."""
    deadline = time.monotonic() + PATIENCE_SECONDS
    spent, since = processor_ms(process), time.monotonic()
    while (now := time.monotonic()) < since + seconds:
        if now > deadline:
            raise AssertionError(f"process {process} does not come to rest")
        time.sleep(LOOK_SECONDS)
        if (after := processor_ms(process)) != spent:
            spent, since = after, time.monotonic()
    return spent


@dataclass
class Memory:
    """What is resident; that with shared pages divided among who shares them; what is no file's content."""

    resident: float
    proportional: float
    anonymous: float


def memory(process):
    """The Memory of the process."""
    text = pathlib.Path(f"/proc/{process}/smaps_rollup").read_text()
    sizes = dict(re.findall(r"^(\w+):\s+(\d+) kB$", text, re.MULTILINE))
    return Memory(*(int(sizes[name]) / 1024 for name in ("Rss", "Pss", "Anonymous")))


def context_switches(process):
    """{thread: how often it was switched to or from}"""
    return {
        task.name: sum(map(int, re.findall(r"ctxt_switches:\s+(\d+)", (task / "status").read_text())))
        for task in pathlib.Path(f"/proc/{process}/task").iterdir()
    }
