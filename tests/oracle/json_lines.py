"""Asks a `quillo ... --jsonl` command many lines at once."""

import json
import os
import subprocess


def answers_of(quillo, command, requests):
    """What the command prints for these lines of JSON, as a list of lines, and a list of what is wrong
    with that as a whole."""
    environment = {**os.environ, "QUILLO_LANGUAGE_MODEL": "none"}
    typed = "".join(request + "\n" for request in requests)
    finished = subprocess.run(
        [quillo, command, "--jsonl"],
        input=typed.encode("utf-8"),
        stdout=subprocess.PIPE,
        env=environment,
        check=False,
    )
    printed = finished.stdout.split(b"\n")
    problems = []
    if finished.returncode != 0:
        problems.append(f"{quillo} ended with status {finished.returncode}")
    if printed.pop() != b"":
        problems.append("the last answer does not end with a newline")
    if len(printed) != len(requests):
        problems.append(f"{len(requests)} lines were given, {len(printed)} answers came back")
    return printed, problems


def canonical(printed):
    """An answer in one exact spelling: order of keys and kind of number count, blanks and
    escapes do not. What is no JSON is left as it is."""
    try:
        return json.dumps(json.loads(printed), ensure_ascii=True)
    except ValueError:
        return repr(printed)
