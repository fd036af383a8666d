#!/usr/bin/env python3
"""Compares `quillo parse --jsonl` with the slow oracle on random lines, field by field.

    compare_parser.py --quillo build/dev/src/cli/quillo --lines 20000

Prints one line and exits 0 when every answer agrees. Otherwise prints the seed and the first
differences and exits 1; the same seed and number of lines repeat the run.
"""

import argparse
import collections
import json
import random
import sys

from json_lines import answers_of, canonical
from random_lines import random_lines
from rules_oracle import Step, understand_with_steps

SHOWN_DIFFERENCES = 20
PATHS = ("none", "rules", "miss")
# One line in this many must exercise each path and each step, or the run proves too little.
LINES_PER_REQUIRED_OCCURRENCE = 1_000
FEWEST_LINES = 5_000


def report(line, expected, actual):
    print(f"  input:  {line.json}")
    print(f"  text:   {ascii(line.text)}")
    print(f"  oracle: {expected}")
    print(f"  quillo: {actual}")
    print()


def main():
    arguments = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    arguments.add_argument("--quillo", required=True, help="the program under test")
    arguments.add_argument("--lines", type=int, default=20_000, help=f"at least {FEWEST_LINES}")
    arguments.add_argument("--seed", type=int, default=None, help="random when not given")
    options = arguments.parse_args()
    sys.stdout.reconfigure(errors="backslashreplace")  # whatever the terminal's character set
    if options.lines < FEWEST_LINES:
        arguments.error(f"fewer than {FEWEST_LINES} lines do not reach every rule")
    seed = random.SystemRandom().randrange(10**9) if options.seed is None else options.seed

    lines = list(random_lines(options.lines, seed))
    printed, problems = answers_of(options.quillo, "parse", [line.json for line in lines])

    differences = 0
    occurrences = collections.Counter({**dict.fromkeys(PATHS, 0), **dict.fromkeys(Step, 0)})
    for number, line in enumerate(lines):
        answer, steps = understand_with_steps(line.text, line.now, line.zone)
        occurrences[answer["path"]] += 1
        occurrences.update(set(steps))
        expected = json.dumps({"id": line.identifier, **answer})
        actual = canonical(printed[number]) if number < len(printed) else "(no answer)"
        if actual != expected:
            differences += 1
            if differences <= SHOWN_DIFFERENCES:
                report(line, expected, actual)
    if differences:
        problems.append(f"{differences} of {len(lines)} answers differ")

    required = options.lines // LINES_PER_REQUIRED_OCCURRENCE
    for path_or_step, count in occurrences.items():
        if count < required:
            name = path_or_step.value if isinstance(path_or_step, Step) else f"path: {path_or_step}"
            problems.append(f"only {count} lines for \"{name}\", at least {required} are needed")

    if problems:
        for problem in problems:
            print(problem)
        print(f"repeat with: --seed {seed} --lines {options.lines}")
        return 1
    paths = ", ".join(f"{path} {occurrences[path]}" for path in PATHS)
    rarest = min(occurrences[step] for step in Step)
    print(
        f"{len(lines)} lines agree (seed {seed}): {paths}; "
        f"each of {len(Step)} rules and special cases at least {rarest} times"
    )
    return 0


if __name__ == "__main__":
    sys.exit(main())
