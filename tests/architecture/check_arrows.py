#!/usr/bin/env python3
"""Compares the arrow chart in docs/architecture.md with what CMake links and with what the files in src/ include.

usage: check_arrows.py --source FOLDER --arrows FILE

FILE is what quillo_export_arrows (ExportArrows.cmake) writes. Prints one line for each difference and exits 1 if there
is any. The chart is the block that begins with ```arrows; a line "store -> model, ports" says that src/store may use
src/model, src/ports, and whatever these may use.
"""

import argparse
import pathlib
import re
import sys

CHART = "docs/architecture.md"
CHART_BLOCK = re.compile(r"^```arrows\n(.*?)^```$", re.MULTILINE | re.DOTALL)
CHART_LINE = re.compile(r"(\w+)(?: -> (\w+(?:, \w+)*))?")
INCLUDE = re.compile(r'\s*#\s*include\s*(["<])([^">]+)[">]')
QT_HEADER = re.compile(r"Q[A-Z]|Qt|q[a-z0-9_]+\.h$")
SOURCE_ENDINGS = {".h", ".cpp", ".in"}


def read_chart(text):
    """The modules that each module points at, and what is wrong with the chart itself."""
    blocks = CHART_BLOCK.findall(text)
    if len(blocks) != 1:
        return {}, [f"{CHART}: there are {len(blocks)} blocks that begin with ```arrows, not one"]
    chart, problems = {}, []
    for line in blocks[0].splitlines():
        match = CHART_LINE.fullmatch(line)
        if not match:
            problems.append(f'{CHART}: cannot read the line "{line}"')
        elif match[1] in chart:
            problems.append(f"{CHART}: {match[1]} has two lines")
        else:
            chart[match[1]] = set(match[2].split(", ")) if match[2] else set()
    return chart, problems


def read_cmake_arrows(text):
    """The modules that each module links, and the set of core modules."""
    arrows, core = {}, set()
    for line in text.splitlines():
        module, kind, *linked = line.split()
        arrows.setdefault(module, set()).update(set(linked) - {module})
        if kind == "core":
            core.add(module)
    return arrows, core


def reachable(arrows, module):
    """The module and all that it reaches by arrows."""
    found, waiting = set(), [module]
    while waiting:
        at = waiting.pop()
        if at not in found:
            found.add(at)
            waiting += arrows.get(at, ())
    return found


def compare_modules(chart, folders):
    for module in sorted(folders - set(chart)):
        yield f"{CHART}: src/{module} is not in the chart"
    for module in sorted(set(chart) - folders):
        yield f"{CHART}: the chart has {module}, but there is no src/{module}"


def compare_arrows(chart, linked):
    drawn = {(module, other) for module in chart for other in chart[module]}
    declared = {(module, other) for module in linked for other in linked[module]}
    for module, other in sorted(drawn - declared):
        yield f"{CHART}: the chart has {module} -> {other}, but src/{module}/CMakeLists.txt does not"
    for module, other in sorted(declared - drawn):
        yield f"src/{module}/CMakeLists.txt: {module} -> {other} is not in the chart"


def check_includes(source, chart, core):
    for path in sorted(source.rglob("*")):
        if path.suffix not in SOURCE_ENDINGS or path.parent == source:
            continue
        module = path.relative_to(source).parts[0]
        allowed = reachable(chart, module)
        for number, line in enumerate(path.read_text().splitlines(), 1):
            match = INCLUDE.match(line)
            problem = match and check_include(match[1], match[2], module, allowed, source, core)
            if problem:
                yield f"src/{path.relative_to(source)}:{number}: {problem}"


def check_include(quote, name, module, allowed, source, core):
    """What is wrong with one include, or None."""
    if (source / name).exists() or (source / f"{name}.in").exists():
        other = name.split("/")[0]
        return None if other in allowed else f'"{name}" is out of reach: no arrows lead from {module} to {other}'
    if name.startswith("unicode/") and module != "unicode":
        return f"<{name}> belongs to ICU, which only src/unicode may use"
    if QT_HEADER.match(name) and module in core:
        return f"<{name}> belongs to Qt, which a core module may not use"
    if name.startswith("moc_") and module not in core:
        return None  # Made by Qt's meta-object compiler.
    return f'"{name}" is no file below src/' if quote == '"' else None


def differences(root, cmake_arrows):
    """One line for each, given the project's folder and the text that quillo_export_arrows wrote."""
    source = root / "src"
    chart, problems = read_chart((root / CHART).read_text())
    if not chart:
        return problems
    linked, core = read_cmake_arrows(cmake_arrows)
    folders = {folder.name for folder in source.iterdir() if folder.is_dir()}
    return [
        *problems,
        *compare_modules(chart, folders),
        *compare_arrows(chart, linked),
        *check_includes(source, chart, core),
    ]


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--source", type=pathlib.Path, required=True)
    parser.add_argument("--arrows", type=pathlib.Path, required=True)
    arguments = parser.parse_args()
    found = differences(arguments.source, arguments.arrows.read_text())
    print("\n".join(found) or f"{CHART}, CMake and src/ agree")
    sys.exit(1 if found else 0)


if __name__ == "__main__":
    main()
