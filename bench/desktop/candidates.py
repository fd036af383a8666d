"""The programs that are measured, by the names that figures have. Ours and the floors are named by the environment
variables QUILLO, QUILLO_DESKTOP, QUILLO_BENCH_TRAY and QUILLO_BENCH_LIST."""

import os
import shutil

TASKS = (100, 100_000)
TRAY_FLOOR = "bare Qt tray program"
LIST_FLOOR = "bare Qt list window"
PEERS = ("xpad", "gnote")


def ours(tasks):
    return f"Quillo, {tasks:,} tasks"


def quillo_desktop(*arguments):
    return [os.environ["QUILLO_DESKTOP"], *arguments]


def quillo_popover():
    return quillo_desktop("--show", "open")


def tray_floor():
    return [os.environ["QUILLO_BENCH_TRAY"]]


def list_floor():
    return [os.environ["QUILLO_BENCH_LIST"]]


def installed_peers():
    """{name: command} of the programs of other people that are there, which show notes."""
    return {name: [path] for name in PEERS if (path := shutil.which(name))}
