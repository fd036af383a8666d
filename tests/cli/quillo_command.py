"""Runs the quillo command as a user's shell would, each test with a data folder of its own.

The program to run is named by the environment variable QUILLO. Where QUILLO_DESKTOP names the desktop program, commands
that change a list find one running that holds it, and have to do the same as without.
"""

import fcntl
import json
import os
import pathlib
import pty
import re
import shutil
import sqlite3
import struct
import subprocess
import tempfile
import termios
import unicodedata
import unittest
from dataclasses import dataclass
from datetime import datetime, timezone

from desktop_program import PATIENCE_SECONDS, DesktopProgram, desktop_program

# Linux refuses single arguments longer than this, the closing zero byte included.
LONGEST_ARGUMENT = 131_072
SECONDS_FROM_1970_TO_2001 = 978_307_200

CHANGES = {"add", "done", "undone", "edit", "delete", "clear-completed", "remind"}
# What decides whose list a command is about.
FOLDER_VARIABLES = {"QUILLO_DATA_DIR", "XDG_DATA_HOME", "HOME"}

ITEMS = "Quillo.items.v1"
STAMP = "Quillo.items.v1.stamp"
APPLICATION_ID = int.from_bytes(b"QLLO", "big")
NEW_TABLE = "CREATE TABLE preferences(key TEXT PRIMARY KEY, type TEXT NOT NULL, value)"

# Everything that could drive a terminal, or switch the writing direction of what follows; and, as decoded() reads
# them, bytes that are no UTF-8.
UNFIT_FOR_TERMINALS = re.compile(
    "[\x00-\x09\x0b-\x1f\x7f-\x9f\u200e\u200f\u202a-\u202e\u2066-\u2069\udc80-\udcff]"
)


def program():
    path = os.environ.get("QUILLO")
    if not path:
        raise SystemExit("the environment variable QUILLO must name the program to test")
    return path


def is_sanitized():
    """Sanitizers keep freed memory for a while, which spoils every look at memory."""
    content = pathlib.Path(program()).read_bytes()
    return b"__asan_init" in content or b"__tsan_init" in content


def changes_the_list(command, *words):
    """Whether the command goes to the program that holds the list."""
    if command == "sync":
        return words[:1] != ("status",)
    return command in CHANGES or (command == "restore" and bool(words)) or (command, *words[:1]) == ("model", "use")


def without_desktop_program(reason):
    """Marks a test, or a class of them, that means nothing while a desktop program holds the list."""
    return unittest.skipIf(desktop_program(), reason)


@dataclass
class Answer:
    """What a command did."""

    code: int
    output: str
    errors: str

    @property
    def lines(self):
        return self.output.splitlines()

    @property
    def json(self):
        return json.loads(self.output)


class Quillo:
    """The command with a data folder and an environment of its own. `folder` need not exist."""

    def __init__(self, folder):
        self.folder = pathlib.Path(folder)
        self.holder = None  # the desktop program that holds the list
        self.environment = {
            "PATH": "/usr/bin:/bin",
            "HOME": str(self.folder.parent / "home"),
            "QUILLO_DATA_DIR": str(self.folder),
            "QUILLO_LANGUAGE_MODEL": "none",
            "TZ": "Europe/Berlin",
            "LC_ALL": "en_US.UTF-8",
            **{name: os.environ[name] for name in ["ASAN_OPTIONS"] if name in os.environ},
        }

    # Who names one of these files is going to touch it, behind the back of every program.

    @property
    def database(self):
        self.let_go()
        return self.folder / "preferences.sqlite"

    @property
    def lock(self):
        self.let_go()
        return self.folder / "preferences.lock"

    def start(self, *arguments, environment=None, as_user=False, **options):
        """The running command. Variables that are None in `environment` are taken away."""
        if arguments and changes_the_list(*arguments) and FOLDER_VARIABLES.isdisjoint(environment or {}):
            self.hold()
        variables = {**self.environment, **(environment or {})}
        variables = {name: value for name, value in variables.items() if value is not None}
        return subprocess.Popen(
            [*(without_privileges() if as_user else []), program(), *arguments],
            env=variables,
            **{"stdin": subprocess.DEVNULL, "stdout": subprocess.PIPE, "stderr": subprocess.PIPE, **options},
        )

    def hold(self):
        """Has a desktop program hold the list, where there is one to be tested and it can."""
        if not desktop_program() or self.holder:
            return
        holder = DesktopProgram(self.folder, self.environment).wait_until_ready()
        if not holder.has_ended():
            self.holder = holder
        elif holder.wait() != 1:
            raise AssertionError(f"quillo-desktop ended with {holder.wait()}: {holder.errors}")

    def let_go(self):
        """Ends the desktop program."""
        holder, self.holder = self.holder, None
        if holder and holder.terminate() != 0:
            raise AssertionError(f"quillo-desktop ended with {holder.wait()}: {holder.errors}")

    def __call__(self, *arguments, text=b"", **options):
        """Runs the command with `text` as its standard input and waits for it."""
        process = self.start(*arguments, stdin=subprocess.PIPE, **options)
        try:
            output, errors = process.communicate(text, timeout=PATIENCE_SECONDS)
        except subprocess.TimeoutExpired:
            process.kill()
            process.communicate()
            raise
        return Answer(process.returncode, decoded(output or b""), decoded(errors or b""))

    def on_terminal(self, *arguments, columns=80, environment=None):
        """Runs the command with a terminal of that width as its standard output."""
        outside, inside = pty.openpty()
        fcntl.ioctl(inside, termios.TIOCSWINSZ, struct.pack("HHHH", 24, columns, 0, 0))
        process = self.start(*arguments, stdout=inside, environment={"TERM": "xterm", **(environment or {})})
        os.close(inside)
        output = bytearray()
        while True:
            try:
                piece = os.read(outside, 65536)
            except OSError:  # How Linux says that nobody has the other side open any more.
                break
            if not piece:
                break
            output += piece
        os.close(outside)
        errors = process.communicate(timeout=PATIENCE_SECONDS)[1]
        # A terminal writes line ends as carriage return and line feed.
        return Answer(process.returncode, decoded(output).replace("\r\n", "\n"), decoded(errors))

    def tasks(self):
        """The whole list, as `list --all --json` shows it."""
        return self("list", "--all", "--json").json

    def titles(self):
        return [task["title"] for task in self.tasks()]

    def connect(self):
        """A connection to the preferences file; made, with the table in it, where it does not exist."""
        existed = self.database.exists()
        self.folder.mkdir(parents=True, exist_ok=True)
        connection = sqlite3.connect(self.database, isolation_level=None)
        if not existed:
            connection.execute(NEW_TABLE)
            connection.execute(f"PRAGMA application_id={APPLICATION_ID}")
            connection.execute("PRAGMA user_version=1")
        return connection

    def preferences(self):
        """{key: (type word, value)}, read without writing."""
        connection = sqlite3.connect(f"file:{self.folder / 'preferences.sqlite'}?mode=ro", uri=True)
        try:
            rows = connection.execute("SELECT key, type, value FROM preferences").fetchall()
        finally:
            connection.close()
        return {key: (word, value) for key, word, value in rows}

    def put(self, key, word, value):
        """Writes one row of the preferences by hand."""
        connection = self.connect()
        connection.execute("INSERT OR REPLACE INTO preferences VALUES(?, ?, ?)", (key, word, value))
        connection.close()

    def put_items(self, *items):
        """Writes a task list by hand: dictionaries in the stored form."""
        text = json.dumps(items, ensure_ascii=False, separators=(",", ":"))
        self.put(ITEMS, "data", text.encode())
        self.put(STAMP, "double", 1000.5)

    def stored_bytes(self):
        return self.preferences()[ITEMS][1]

    def stored_items(self):
        return json.loads(self.stored_bytes())

    def stamp(self):
        return self.preferences()[STAMP][1]

    def files(self):
        """{path inside the data folder: content} of all files, when nobody has them open."""
        self.let_go()
        return {
            str(path.relative_to(self.folder)): path.read_bytes()
            for path in sorted(self.folder.rglob("*"))
            if path.is_file()
        }


def decoded(output):
    """Text of the bytes; each byte that is no UTF-8 becomes a lone surrogate, which no sound output holds."""
    return output.decode(errors="surrogateescape")


def without_privileges():
    """What to put before a command so that file modes bind it, as they do not bind root."""
    if os.geteuid() != 0:
        return []
    return ["setpriv", "--bounding-set=-dac_override,-dac_read_search"]


def stored_task(number, title, done=False, due=None, identifier=None):
    """A task in the stored form. `due` is in seconds since 1970."""
    task = {
        "id": identifier or f"{number:08X}-0000-4000-8000-000000000000",
        "title": title,
        "isDone": done,
    }
    if due is not None:
        task["dueDate"] = due - SECONDS_FROM_1970_TO_2001
    task["createdAt"] = 762_000_000.25 + number
    if done:
        task["completedAt"] = 762_100_000.5 + number
    return task


def unix_seconds(iso_time):
    """Of an exported time such as 2026-03-05T15:00:00Z."""
    parsed = datetime.strptime(iso_time, "%Y-%m-%dT%H:%M:%SZ")
    return parsed.replace(tzinfo=timezone.utc).timestamp()


def width(text):
    """Columns that the text takes on a terminal."""
    columns = 0
    for character in text:
        if unicodedata.category(character) in ("Mn", "Me", "Cf"):
            continue
        columns += 2 if unicodedata.east_asian_width(character) in ("W", "F") else 1
    return columns


class CommandTest(unittest.TestCase):
    """A test with a fresh, not yet existing data folder."""

    maxDiff = None

    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="quillo-test-"))
        self.addCleanup(self.remove_folder)
        self.quillo = self.make_quillo("data")

    def make_quillo(self, name):
        """A command whose data folder has that name."""
        quillo = Quillo(self.folder / name)
        self.addCleanup(quillo.let_go)
        return quillo

    def remove_folder(self):
        for path in [self.folder, *self.folder.rglob("*")]:
            if path.is_dir() and not path.is_symlink():
                path.chmod(0o700)
        shutil.rmtree(self.folder)

    def done(self, *arguments, **options):
        """Runs a command that must succeed without a word on standard error; returns its answer."""
        answer = self.quillo(*arguments, **options)
        self.assertEqual((answer.code, answer.errors), (0, ""), arguments)
        return answer

    def assert_refused(self, answer, code):
        """The exit code, nothing on standard output, exactly one line on standard error."""
        self.assertEqual(answer.code, code, answer.errors)
        self.assertEqual(answer.output, "")
        self.assert_one_line(answer.errors)

    def assert_one_line(self, errors):
        self.assertRegex(errors, r"\Aquillo: .+\n\Z")
        self.assertEqual(errors.count("\n"), 1, errors)
        self.assert_fit_for_terminals(errors)

    def assert_fit_for_terminals(self, text):
        self.assertEqual(UNFIT_FOR_TERMINALS.findall(text), [], ascii(text))
