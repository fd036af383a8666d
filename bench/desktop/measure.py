#!/usr/bin/env python3
"""What the desktop program costs, beside the least that Qt programs of its kind cost and beside peers.

    measure.py [--rounds 11] [--openings 20] [--idle 30] [--json FILE]

Everything runs on a private desktop, one after another in turns; medians are shown. The programs are named by the
environment, see candidates.py. Needs what the tests on the private desktop need, and the folders tests/cli,
tests/resident and tests/desktop in PYTHONPATH.
"""

import argparse
import json
import pathlib
import statistics

from candidates import (
    LIST_FLOOR,
    PEERS,
    TASKS,
    TRAY_FLOOR,
    installed_peers,
    list_floor,
    ours,
    quillo_desktop,
    quillo_popover,
    tray_floor,
)
from stage import Stage


def in_turns(rounds, measurements):
    """{name: its figures, medians of so many rounds}, of functions that measure once."""
    found = {name: [] for name in measurements}
    for turn in range(rounds + 1):
        for name, measure in measurements.items():
            figures = measure()
            if turn > 0:  # The first fills caches.
                found[name].append(figures)
    return {name: medians(rows) for name, rows in found.items()}


def medians(rows):
    return {key: statistics.median(row[key] for row in rows) for key in rows[0]}


def measure(stage, arguments):
    quillos = {ours(tasks): stage.quillo(tasks) for tasks in TASKS}
    starts = {TRAY_FLOOR: lambda: stage.status_item(tray_floor())}
    frames = {LIST_FLOOR: lambda: stage.first_frame(list_floor())}
    for name, quillo in quillos.items():
        starts[name] = lambda quillo=quillo: stage.status_item(quillo_desktop(), quillo)
        frames[name] = lambda quillo=quillo: stage.first_frame(quillo_popover(), quillo)
    for name, command in installed_peers().items():
        frames[name] = lambda command=command: stage.first_frame(command)
    in_use = {}
    figures = {
        "status_item": in_turns(arguments.rounds, starts),
        "first_frame": in_turns(arguments.rounds, frames),
        "reopened": {
            LIST_FLOOR: {
                key: statistics.median(value)
                for key, value in stage.reopened(list_floor(), arguments.openings).items()
            }
        },
        "resting": {TRAY_FLOOR: stage.resting(tray_floor())},
        "in_use": in_use,
        "absent": [name for name in PEERS if name not in frames],
    }
    for name, quillo in quillos.items():
        row = stage.in_use(quillo_desktop(), quillo, arguments.openings, arguments.idle)
        in_use[name] = {
            key: statistics.median(value) if isinstance(value, list) else value for key, value in row.items()
        }
    return figures


def show(figures):
    for what in ("status_item", "first_frame", "reopened", "resting", "in_use"):
        print(f"{what}:")
        for name, row in figures[what].items():
            print(f"  {name}: " + ", ".join(f"{key} {value:.4g}" for key, value in row.items()))
    for name in figures["absent"]:
        print(f"{name}: not installed")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--rounds", type=int, default=11)
    parser.add_argument("--openings", type=int, default=20, help="how often the popover is opened again")
    parser.add_argument("--idle", type=float, default=30, help="seconds in which nothing is to happen")
    parser.add_argument("--json", type=pathlib.Path, help="write the figures there as well")
    arguments = parser.parse_args()
    with Stage() as stage:
        figures = measure(stage, arguments)
    show(figures)
    if arguments.json:
        arguments.json.write_text(json.dumps(figures, indent=2) + "\n")


if __name__ == "__main__":
    main()
