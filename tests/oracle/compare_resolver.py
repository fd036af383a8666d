#!/usr/bin/env python3
"""Compares `quillo resolve --jsonl` with the slow oracle on random classifications.

    compare_resolver.py --quillo build/dev/src/cli/quillo --lines 20000

Prints one line and exits 0 when every answer agrees. Otherwise prints the seed and the first
differences and exits 1; the same seed and number of lines repeat the run.
"""

import argparse
import collections
import json
import random
import sys

from json_lines import answers_of, canonical
from random_classifications import ZONES, random_requests
from resolve_oracle import KINDS, Case, resolve_with_cases

SHOWN_DIFFERENCES = 20
# One line in this many must be of each kind, in each zone and exercise each case, or the run proves
# too little.
LINES_PER_REQUIRED_OCCURRENCE = 1_000
FEWEST_LINES = 5_000


def main():
    arguments = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    arguments.add_argument("--quillo", required=True, help="the program under test")
    arguments.add_argument("--lines", type=int, default=20_000, help=f"at least {FEWEST_LINES}")
    arguments.add_argument("--seed", type=int, default=None, help="random when not given")
    options = arguments.parse_args()
    if options.lines < FEWEST_LINES:
        arguments.error(f"fewer than {FEWEST_LINES} lines do not reach every case")
    seed = random.SystemRandom().randrange(10**9) if options.seed is None else options.seed

    requests = list(random_requests(options.lines, seed))
    printed, problems = answers_of(options.quillo, "resolve", [request.json for request in requests])

    differences = 0
    occurrences = collections.Counter(dict.fromkeys((*KINDS, *ZONES, *Case), 0))
    for number, request in enumerate(requests):
        due, cases = resolve_with_cases(request.classification, request.now, request.zone)
        occurrences.update({request.classification["kind"], request.zone, *cases})
        expected = json.dumps({"id": request.identifier, "due": due})
        actual = canonical(printed[number]) if number < len(printed) else "(no answer)"
        if actual != expected:
            differences += 1
            if differences <= SHOWN_DIFFERENCES:
                print(f"  input:  {request.json}\n  oracle: {expected}\n  quillo: {actual}\n")
    if differences:
        problems.append(f"{differences} of {len(requests)} answers differ")

    required = options.lines // LINES_PER_REQUIRED_OCCURRENCE
    for what, count in occurrences.items():
        if count < required:
            name = what.value if isinstance(what, Case) else what
            problems.append(f"only {count} lines for \"{name}\", at least {required} are needed")

    if problems:
        for problem in problems:
            print(problem)
        print(f"repeat with: --seed {seed} --lines {options.lines}")
        return 1
    rarest = min(occurrences.values())
    print(
        f"{len(requests)} lines agree (seed {seed}): each of {len(KINDS)} kinds, {len(ZONES)} zones and "
        f"{len(Case)} special cases at least {rarest} times"
    )
    return 0


if __name__ == "__main__":
    sys.exit(main())
