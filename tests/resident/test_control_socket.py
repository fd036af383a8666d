"""Whoever may talk to the program's socket, it goes on working, and answers those whom it should."""

import concurrent.futures
import json
import os
import pathlib
import socket
import stat
import subprocess
import sys
import time
import unittest

from desktop_program import PATIENCE_SECONDS, DesktopProgram, wait_until
from session import ResidentTest, is_shipped_build

MEGABYTE = 1 << 20
# Those that say nothing are dropped after this time, and no more than so many are served at once.
PATIENCE_OF_THE_SERVER = 10
MOST_CONNECTIONS = 256

ADD = {"command": "add", "text": "from the socket", "tz": "Europe/Berlin", "locale": "en_US"}

CONNECT_AS_NOBODY = """
import os, socket, sys
os.setgroups([])
os.setgid(65534)
os.setuid(65534)
connection = socket.socket(socket.AF_UNIX)
try:
    connection.connect(sys.argv[1])
    connection.sendall(sys.argv[2].encode() + b"\\n")
    print("answer", connection.recv(65536))
except OSError as error:
    print(type(error).__name__)
"""


def line(request):
    return json.dumps(request).encode() + b"\n"


def everything_from(connection):
    """What comes until the other side closes; None where it closes without having read everything."""
    received = b""
    try:
        while piece := connection.recv(65536):
            received += piece
    except ConnectionResetError:
        return None
    return received


class Requests(ResidentTest):
    def setUp(self):
        super().setUp()
        self.program = self.start()

    def ask(self, *pieces):
        """Sends the pieces, one after the other, and returns all that is answered."""
        with self.program.connect() as connection:
            for piece in pieces:
                connection.sendall(piece)
            return everything_from(connection)

    def assert_still_works(self):
        self.add("still works")
        self.assertEqual(self.quillo.titles()[0], "still works")

    def test_a_request_by_hand(self):
        answer = json.loads(self.ask(line(ADD)))
        self.assertEqual(answer["numbers"], [1])
        self.assertEqual(answer["tasks"][0]["title"], "from the socket")
        self.assertEqual(self.quillo.titles(), ["from the socket"])

    def test_a_request_in_pieces(self):
        whole = line(ADD)
        answer = json.loads(self.ask(*(whole[at : at + 1] for at in range(len(whole)))))
        self.assertEqual(answer["numbers"], [1])

    def test_garbage_is_refused_in_words(self):
        for garbage in (
            b"\n",
            b"hello\n",
            b"\0" * 1000 + b"\n",
            os.urandom(10_000).replace(b"\n", b"") + b"\n",
            b"GET / HTTP/1.1\r\nHost: localhost\r\n\r\n",
            b"[]\n",
            b"{}\n",
            b'{"command":"add"}\n',
            b"[" * 100_000 + b"\n",
            line({**ADD, "command": "explode"}),
            line({**ADD, "text": 5}),
            line({**ADD, "text": None}),
            line({**ADD, "text": "\ud800"}),
            line({**ADD, "tz": "Nowhere/Nothing"}),
            line({**ADD, "command": "restore", "which": -1}),
            line({**ADD, "command": "restore", "which": 10**30}),
            line({**ADD, "command": "done", "task": "9" * 100_000}),
            line(ADD).replace(b"from", b"caf\xe9"),
            line(ADD) * 2,
        ):
            with self.subTest(garbage[:40]):
                answer = json.loads(self.ask(garbage))
                self.assertEqual(list(answer), ["error"])
                self.assertIsInstance(answer["error"], str)
        self.assertEqual(self.quillo.titles(), [])
        self.assert_still_works()

    def test_what_is_too_long_is_not_read_to_its_end(self):
        with self.program.connect() as connection, self.assertRaises(ConnectionError):
            for _ in range(64):
                connection.sendall(b"x" * MEGABYTE)
        self.assert_still_works()
        if is_shipped_build():
            self.assertLess(self.memory(), 64 * MEGABYTE)

    def memory(self):
        pages = pathlib.Path(f"/proc/{self.program.process.pid}/statm").read_text().split()[1]
        return int(pages) * os.sysconf("SC_PAGESIZE")

    def test_half_a_line_does_nothing(self):
        with self.program.connect() as connection:
            connection.sendall(line(ADD)[:-1])
            connection.shutdown(socket.SHUT_WR)
            self.assertEqual(everything_from(connection), b"")
        with self.program.connect() as connection:
            connection.sendall(line(ADD)[:-20])
        self.assert_still_works()
        self.assertEqual(self.quillo.titles(), ["still works"])

    def test_who_leaves_before_the_answer_is_served_all_the_same(self):
        for _ in range(50):
            with self.program.connect() as connection:
                connection.sendall(line(ADD))
        wait_until(lambda: len(self.quillo.titles()) == 50, "all are served")
        self.assert_still_works()

    def test_who_does_not_take_the_answer_holds_up_nobody(self):
        self.add(*("x" * 100_000 + f" {number}" for number in range(20)))
        for number in range(1, 21):
            self.done("done", str(number))
        # The answer, two megabytes, is more than a socket takes at once.
        with self.program.connect() as connection:
            connection.sendall(line({**ADD, "command": "clear-completed"}))
            wait_until(lambda: self.quillo.titles() == [], "the list is clear")
            self.assert_still_works()
            self.assertEqual(len(json.loads(everything_from(connection))["tasks"]), 20)


class ManyConnections(ResidentTest):
    def test_three_hundred_requests_at_once_are_all_answered(self):
        program = self.start()
        connections = [program.connect() for _ in range(300)]
        for number, connection in enumerate(connections):
            connection.sendall(line({**ADD, "text": f"task {number}"}))
        with concurrent.futures.ThreadPoolExecutor(16) as executor:
            answers = list(executor.map(everything_from, connections))
        for connection in connections:
            connection.close()
        titles = sorted(json.loads(answer)["tasks"][0]["title"] for answer in answers)
        self.assertEqual(titles, sorted(f"task {number}" for number in range(300)))
        self.assertEqual(sorted(self.quillo.titles()), titles)

    def test_silent_ones_are_dropped_in_the_end(self):
        program = self.start()
        silent = [program.connect() for _ in range(MOST_CONNECTIONS - 6)]
        self.add("beside silent ones")
        silent += [program.connect() for _ in range(300 - len(silent))]
        # Those that are served now have to be dropped before the rest can be.
        silent[0].settimeout(PATIENCE_OF_THE_SERVER + 5)
        self.assertEqual(silent[0].recv(1), b"")
        self.add("after silent ones")
        for connection in silent:
            connection.close()
        self.assertEqual(self.quillo.titles(), ["after silent ones", "beside silent ones"])
        self.assert_ends_well(program)

    def test_silent_ones_do_not_hold_up_the_end(self):
        program = self.start()
        silent = [program.connect() for _ in range(300)]
        started = time.monotonic()
        self.assert_ends_well(program)
        self.assertLess(time.monotonic() - started, PATIENCE_OF_THE_SERVER / 2)
        for connection in silent:
            connection.close()


class Place(ResidentTest):
    def test_it_is_for_the_user_alone(self):
        program = self.start(preexec_fn=lambda: os.umask(0))
        self.assertEqual(stat.S_IMODE(program.socket.stat().st_mode), 0o600)
        self.assertTrue(stat.S_ISSOCK(program.socket.stat().st_mode))
        self.assertEqual(stat.S_IMODE(self.quillo.folder.stat().st_mode), 0o700)
        self.add("task")
        for path in self.quillo.folder.iterdir():
            self.assertEqual(stat.S_IMODE(path.stat().st_mode), 0o600, path)

    @unittest.skipIf(os.geteuid() != 0, "only root can be somebody else")
    def test_another_user_is_not_served(self):
        program = self.start()
        self.folder.chmod(0o755)
        self.assertEqual(self.as_nobody(program), "PermissionError")
        # Nor where the files let everybody in.
        self.quillo.folder.chmod(0o777)
        program.socket.chmod(0o777)
        self.assertIn(self.as_nobody(program), ("answer b''", "BrokenPipeError", "ConnectionResetError"))
        self.add("mine")
        self.assertEqual(self.quillo.titles(), ["mine"])

    def as_nobody(self, program):
        """What comes of a request that another user makes."""
        command = [sys.executable, "-c", CONNECT_AS_NOBODY, program.socket, json.dumps(ADD)]
        return subprocess.check_output(command, text=True, timeout=PATIENCE_SECONDS).strip()

    def test_one_that_a_killed_program_left_is_no_obstacle(self):
        program = self.start()
        self.add("one")
        program.kill()
        self.assertTrue(program.socket.exists())
        self.add("two")
        program = self.start()
        self.add("three")
        self.assert_ends_well(program)
        self.assertFalse(program.socket.exists())
        self.assertEqual(self.quillo.titles(), ["three", "two", "one"])

    def test_what_lies_in_its_place_is_no_obstacle(self):
        self.quillo.folder.mkdir()
        (self.quillo.folder / "control.sock").write_text("no socket")
        self.add("one")
        program = self.start()
        self.add("two")
        self.assert_ends_well(program)
        self.assertEqual(self.quillo.titles(), ["two", "one"])

    def test_a_folder_in_its_place_leaves_the_list_usable(self):
        (self.quillo.folder / "control.sock").mkdir(parents=True)
        self.add("one")
        self.assertEqual(self.quillo.titles(), ["one"])

    def test_where_the_path_is_too_long_it_is_in_the_runtime_folder(self):
        runtime = self.folder / "runtime"
        runtime.mkdir(mode=0o700)
        quillo = self.make_quillo("x" * 120)
        quillo.environment["XDG_RUNTIME_DIR"] = str(runtime)
        program = self.start(quillo)
        self.assertEqual([stat.S_IMODE(path.stat().st_mode) for path in runtime.iterdir()], [0o600])
        before = quillo("list", "--json").json
        self.add("task", quillo=quillo)
        self.assertEqual((before, quillo.titles()), ([], ["task"]))
        # The program is what did it: a command would not have got the list.
        self.assertEqual(quillo.lock.read_text(), f"{program.process.pid}\n")
        self.assert_ends_well(program)
        self.assertEqual(list(runtime.iterdir()), [])

    def test_where_there_is_no_place_for_it_the_program_says_so(self):
        quillo = self.make_quillo("x" * 120)
        environment = {**quillo.environment, "DBUS_SESSION_BUS_ADDRESS": self.bus.address}
        program = DesktopProgram(quillo.folder, environment)
        self.addCleanup(program.kill)
        wait_until(lambda: "too long" in program.errors, "it says so")
        answer = quillo("add", "task")
        self.assert_refused(answer, 1)
        self.assertIn(str(program.process.pid), answer.errors)
        self.assert_ends_well(program)


if __name__ == "__main__":
    unittest.main()
