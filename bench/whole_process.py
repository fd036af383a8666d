#!/usr/bin/env python3
"""Whole commands, from start to exit, beside taskwarrior's on the same tasks: CPU time and elapsed time.

    whole_process.py --quillo build/release/src/cli/quillo [--runs 21] [--json FILE]

Both keep lists of 100 and 10,000 open tasks of the same titles, half of them due. The commands take turns; medians are
shown, and Quillo's CPU time as a part of taskwarrior's.
"""

import argparse
import datetime
import json
import os
import pathlib
import random
import shutil
import sqlite3
import statistics
import subprocess
import sys
import tempfile
import time
import uuid

SIZES = (100, 10_000)
FIRST_CREATED = 1_735_732_800  # 2025-01-01 12:00:00 UTC, in seconds since 1970
EPOCH_2001 = 978_307_200


def make_tasks(count):
    """Title, creation and due time of as many tasks."""
    source = random.Random(count)
    for index in range(count):
        created = FIRST_CREATED + index * 600
        due = created + 3600 * source.randrange(1, 2000) if index % 2 else None
        yield f"Task number {index + 1} about something to do", created, due


def fill_quillo(quillo, folder, count, environment):
    """Lets Quillo make its file, then puts the list there as Quillo would have written it."""
    subprocess.run([quillo, "add", "first"], env=environment, check=True, stdout=subprocess.DEVNULL)
    items = []
    for title, created, due in make_tasks(count):
        item = {"id": str(uuid.uuid4()).upper(), "title": title, "isDone": False}
        if due is not None:
            item["dueDate"] = due - EPOCH_2001
        item["createdAt"] = created - EPOCH_2001 + 0.25
        items.insert(0, item)
    stored = json.dumps(items, separators=(",", ":"), ensure_ascii=False).encode()
    with sqlite3.connect(folder / "preferences.sqlite") as file:
        file.execute("UPDATE preferences SET value = ? WHERE key = 'Quillo.items.v1'", (stored,))
    file.close()


def fill_taskwarrior(task, folder, count, environment):
    (folder / "taskrc").write_text(f"data.location={folder}\n")

    def timestamp(seconds):
        return datetime.datetime.fromtimestamp(seconds, datetime.timezone.utc).strftime("%Y%m%dT%H%M%SZ")

    tasks = []
    for title, created, due in make_tasks(count):
        entry = {"uuid": str(uuid.uuid4()), "description": title, "status": "pending", "entry": timestamp(created)}
        if due is not None:
            entry["due"] = timestamp(due)
        tasks.append(entry)
    subprocess.run(
        [task, "rc.confirmation=no", "import", "-"],
        input=json.dumps(tasks).encode(),
        env=environment,
        check=True,
        stdout=subprocess.DEVNULL,
        stderr=subprocess.DEVNULL,
    )


def measure(command, environment):
    """CPU and elapsed milliseconds of one run."""
    null = os.open(os.devnull, os.O_RDWR)
    before = time.perf_counter()
    child = os.posix_spawn(
        command[0], command, environment, file_actions=[(os.POSIX_SPAWN_DUP2, null, fd) for fd in (0, 1, 2)]
    )
    _, status, usage = os.wait4(child, 0)
    elapsed = time.perf_counter() - before
    os.close(null)
    if status != 0:
        sys.exit(f"{' '.join(command)} failed with status {status}")
    return (usage.ru_utime + usage.ru_stime) * 1000, elapsed * 1000


def compare(ours, theirs, runs):
    results = {"quillo": [], "taskwarrior": []}
    for run in range(runs + 2):
        for name, (command, environment) in (("quillo", ours), ("taskwarrior", theirs)):
            result = measure(command, environment)
            if run >= 2:  # the first two fill caches
                results[name].append(result)
    return {
        name: {
            "cpu_ms": statistics.median(cpu for cpu, _ in rows),
            "wall_ms": statistics.median(wall for _, wall in rows),
        }
        for name, rows in results.items()
    }


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--quillo", required=True, type=lambda text: str(pathlib.Path(text).resolve()))
    parser.add_argument("--runs", type=int, default=21)
    parser.add_argument("--json", type=pathlib.Path, help="write the figures there as well")
    arguments = parser.parse_args()
    task = shutil.which("task")
    if task is None:
        sys.exit("whole_process.py: taskwarrior's `task` is not installed")

    rows = []
    for size in SIZES:
        with tempfile.TemporaryDirectory() as name:
            folder = pathlib.Path(name)
            (folder / "quillo").mkdir()
            (folder / "task").mkdir()
            common = {"PATH": os.environ["PATH"], "HOME": name, "TZ": "Europe/Berlin", "LC_ALL": "C.UTF-8"}
            quillo_environment = {**common, "QUILLO_DATA_DIR": str(folder / "quillo")}
            task_environment = {**common, "TASKRC": str(folder / "task" / "taskrc")}
            fill_quillo(arguments.quillo, folder / "quillo", size, quillo_environment)
            fill_taskwarrior(task, folder / "task", size, task_environment)
            for what, ours, theirs in (
                ("add, without a date", ["add", "Buy milk"], ["add", "Buy milk"]),
                ("add, with a date", ["add", "Email Sam in 2 hours"], ["add", "Email Sam", "due:2h"]),
                ("list", ["list"], ["list"]),
            ):
                medians = compare(
                    ([arguments.quillo, *ours], quillo_environment),
                    ([task, *theirs], task_environment),
                    arguments.runs,
                )
                ratio = medians["quillo"]["cpu_ms"] / medians["taskwarrior"]["cpu_ms"]
                rows.append({"command": what, "tasks": size, **medians, "cpu_ratio": ratio})
                print(
                    f"{what:20} {size:6} tasks   "
                    f"quillo {medians['quillo']['cpu_ms']:6.1f} ms CPU {medians['quillo']['wall_ms']:6.1f} ms   "
                    f"task {medians['taskwarrior']['cpu_ms']:6.1f} ms CPU {medians['taskwarrior']['wall_ms']:6.1f} ms   "
                    f"CPU ratio {ratio:.2f}"
                )
    if arguments.json:
        arguments.json.write_text(json.dumps(rows, indent=2) + "\n")


if __name__ == "__main__":
    main()
