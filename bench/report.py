#!/usr/bin/env python3
"""Makes docs/performance.md of what was measured: report.py BENCHMARKS.json WHOLE_PROCESS.json DESKTOP.json"""

import json
import os
import platform
import re
import subprocess
import sys

SIZES = (100, 10_000, 100_000)


def processor():
    with open("/proc/cpuinfo", encoding="utf-8") as file:
        found = re.search(r"model name\s*:\s*(.*)", file.read())
    return found.group(1) if found else platform.machine()


def distribution():
    with open("/etc/os-release", encoding="utf-8") as file:
        found = re.search(r'PRETTY_NAME="(.*)"', file.read())
    return found.group(1) if found else platform.system()


def medians(path):
    """Benchmark name -> its median: times in milliseconds, and the counters."""
    with open(path, encoding="utf-8") as file:
        benchmarks = json.load(file)["benchmarks"]
    scale = {"ns": 1e-6, "us": 1e-3, "ms": 1.0, "s": 1e3}
    result = {}
    for row in benchmarks:
        if row.get("aggregate_name") != "median":
            continue
        factor = scale[row["time_unit"]]
        result[row["run_name"]] = {**row, "cpu_ms": row["cpu_time"] * factor, "real_ms": row["real_time"] * factor}
    return result


def number(value):
    return f"{value:.3g}" if value < 100 else f"{value:,.0f}"


def table(heading, rows):
    print("| " + " | ".join(heading) + " |")
    print("|" + "---|" * len(heading))
    for row in rows:
        print("| " + " | ".join(row) + " |")
    print()


def beside(found, what, ours, floor, key):
    our, its = found[ours][key], found[floor][key]
    return [what, number(our), number(its), f"{our / its:.2f}"]


def beside_floor(rows, floor, keys):
    """A row for each program: its figures, and its processor time as a part of that of the floor."""
    for name, row in rows.items():
        ratio = row["cpu_ms"] / rows[floor]["cpu_ms"]
        yield [name, *(number(row[key]) for key in keys), f"{ratio:.2f}"]


def desktop(found):
    """What bench/desktop/measure.py has found."""
    print("## On the desktop\n")
    print(
        "On a private desktop, in turns. The floors are the least that Qt programs of the kind are: one with an icon "
        "in the status area, and a Qt Quick window with an entry field and a hundred rows, both in `bench/desktop`. "
        "Memory is in MB of 2^20 bytes.\n"
    )
    print("From exec to the status area's word that the item is there, and until the program has come to rest:\n")
    keys = ("cpu_ms", "wall_ms", "rest_cpu_ms")
    table(
        ["", "processor time", "elapsed", "processor time until at rest", "ratio to the floor"],
        beside_floor(found["status_item"], "bare Qt tray program", keys),
    )
    print("From exec to a painted window, and the memory while it is shown:\n")
    keys = ("cpu_ms", "wall_ms", "resident_mb", "proportional_mb", "anonymous_mb")
    table(
        ["", "processor time", "elapsed", "resident", "proportional", "anonymous", "ratio to the floor"],
        beside_floor(found["first_frame"], "bare Qt list window", keys),
    )
    for name in found["absent"]:
        print(f"{name} was not installed.\n")
    print("The program in use, its popover opened and closed, then left alone:\n")
    (idle,) = {row["idle_s"] for row in found["in_use"].values()}
    table(
        ["", *found["in_use"]],
        [
            [what, *(number(row[key]) for row in found["in_use"].values())]
            for what, key in (
                ("from a click to the painted popover, elapsed, median", "reopen_wall_ms"),
                ("the same, processor time", "reopen_cpu_ms"),
                ("popover open and untouched, processor time a second", "shown_cpu_ms_per_s"),
                (f"popover closed, context switches in {idle:g} s", "idle_context_switches"),
                ("popover closed, resident MB", "closed_resident_mb"),
                ("popover closed, proportional MB", "closed_proportional_mb"),
                ("popover closed, anonymous MB", "closed_anonymous_mb"),
                ("one `quillo done`, main thread, with the icon's number", "done_main_thread_ms"),
            )
        ],
    )
    (bare,) = found["reopened"].values()
    print(
        "The bare Qt list window, taken away and brought back: "
        f"{number(bare['reopen_wall_ms'])} ms until it is painted, {number(bare['reopen_cpu_ms'])} ms of processor time. "
        "It waits for the window manager, which the popover does without.\n"
    )
    print("The bare Qt tray program at rest, for comparison:\n")
    (floor,) = found["resting"].values()
    table(["resident MB", "proportional MB", "anonymous MB"], [[number(value) for value in floor.values()]])


def main():
    found = medians(sys.argv[1])
    with open(sys.argv[2], encoding="utf-8") as file:
        whole = json.load(file)
    compiler = subprocess.run(["c++", "--version"], capture_output=True, text=True, check=True).stdout.splitlines()[0]

    print("# Performance\n")
    print("Written by `scripts/bench`; medians of several runs, times in milliseconds unless it says otherwise.\n")
    print(f"Machine: {processor()}, {os.cpu_count()} cores; {distribution()}; {compiler}.\n")

    print("## Whole commands\n")
    print("From start to exit, processor time, beside taskwarrior's `task` with the same tasks, in turns.\n")
    table(
        ["command", "tasks", "quillo", "task", "ratio"],
        [
            [row["command"], f"{row['tasks']:,}", number(row["quillo"]["cpu_ms"]), number(row["taskwarrior"]["cpu_ms"]),
             f"{row['cpu_ratio']:.2f}"]
            for row in whole
        ],
    )  # fmt: skip

    print("## Understanding text\n")
    print(
        "3,000 distinct lines: a third without a hint of a time, half dated, a sixth of 200 and more characters. Beside "
        "them one plain run of the same compiled patterns over the same lines.\n"
    )
    table(
        ["", "Quillo", "the patterns", "ratio"],
        [beside(found, "3,000 lines", "parse3000Lines", "plainPatterns3000Lines", "cpu_ms")],
    )

    print("## The embedded language model\n")
    print("A typical text, one of 200 characters, and unpacking the weights when the first text asks for them.\n")
    unpacked = found["unpackWeights"]
    table(["", "ms"], [
        ["a typical text", number(found["classifyTypicalTexts"]["us_a_text"] * 1e-3)],
        ["200 characters", number(found["classifyLongTexts"]["us_a_text"] * 1e-3)],
        ["unpacking", number(unpacked["cpu_ms"])],
    ])
    print(f"The weights are {unpacked['bytes'] / 1000:.0f} KB, and {unpacked['resident_bytes'] / 1000:.0f} KB in memory.\n")

    print("## The stored list\n")
    print("All tasks read into memory, beside a bare simdjson pass over every field (both copy the bytes first, as simdjson wants room behind them); and written, beside RapidJSON alone.\n")
    rows = []
    for size in SIZES:
        read = "stored items/read"
        rows.append(beside(found, f"read {size:,} tasks", f"{read}/Quillo/{size}", f"{read}/bare simdjson/{size}", "cpu_ms"))
    for size in SIZES:
        write = "stored items/write"
        rows.append(
            beside(found, f"write {size:,} tasks", f"{write}/Quillo/{size}", f"{write}/bare RapidJSON/{size}", "cpu_ms")
        )
    table(["", "Quillo", "bare", "ratio"], rows)
    print(
        "Opening a list checks it and decodes nothing; only what is looked at is decoded, and only what changed is encoded "
        "again:\n"
    )
    table(
        ["", *(f"{size:,} tasks" for size in SIZES)],
        [
            [what, *(number(found[f"task list/{name}/{size}"]["cpu_ms"]) for size in SIZES)]
            for what, name in (("open", "open"), ("open, add one, write", "open, add, write"))
        ],
    )

    print("## The preferences file\n")
    print("A list of that many tasks and its stamp, committed, beside SQLite alone writing the same with the same settings.\n")
    name = "{}/tasks:{}/process_time/real_time"
    table(
        ["", "Quillo", "SQLite", "ratio"],
        [
            beside(found, f"save {size:,} tasks", name.format("savePreferences", size), name.format("savePlainly", size),
                   "cpu_ms")
            for size in SIZES
        ],
    )  # fmt: skip

    print("## The list in memory\n")
    print("One change of a resident list, in microseconds: what the main thread spends, and the save behind its back.\n")
    rows = []
    for change in ("add", "toggle"):
        for size in SIZES:
            row = next(value for key, value in found.items() if key.startswith(f"todo store/{change}/{size}/"))
            rows.append(
                [f"{change}, {size:,} tasks", *(number(row[counter]) for counter in ("median_us", "p99_us", "background_us"))]
            )
    table(["", "main thread, median", "99th percentile", "background"], rows)

    print("The same with the popover's rows following:\n")
    table(
        ["", "main thread, median", "99th percentile"],
        [
            [f"toggle, {size:,} tasks", number(row["median_us"]), number(row["p99_us"])]
            for size in SIZES
            for key, row in found.items()
            if key.startswith(f"task list model/toggle/{size}/")
        ],
    )

    with open(sys.argv[3], encoding="utf-8") as file:
        desktop(json.load(file))


if __name__ == "__main__":
    main()
