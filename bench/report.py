#!/usr/bin/env python3
"""Makes docs/performance.md of what was measured: report.py BENCHMARKS.json WHOLE_PROCESS.json"""

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


if __name__ == "__main__":
    main()
