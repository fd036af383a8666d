"""The password of a place on a server, from the user to the keyring: by commands, and by the desktop program. And that it
is to be found nowhere else."""

import base64
import os
import pathlib
import pty
import select
import signal
import subprocess
import termios
import threading
import time
import unittest

from dav_server import DavServer, basic
from desktop_program import PATIENCE_SECONDS, wait_until
from keyring import Keyring
from quillo_command import Answer, decoded
from session import ResidentTest

USER = "me"
PASSWORD = "korrekt-Pferd-Bätterie"
WRONG = "falsch-Esel-Glühbirne"


class PasswordTest(ResidentTest):
    def setUp(self):
        super().setUp()
        self.server = DavServer(password=PASSWORD)
        self.addCleanup(self.server.server_close)
        self.addCleanup(self.server.shutdown)
        self.url = self.server.address("password")
        self.quillo.environment["DBUS_SESSION_BUS_ADDRESS"] = self.bus.address

    def told(self):
        """What the server has heard of who asks."""
        return {event["authorization"] for event in self.server.events if "method" in event}

    def make_keyring(self):
        keyring = Keyring(self.bus, self.folder / "keyring")
        self.addCleanup(keyring.die)
        return keyring

    def use(self, password=PASSWORD, *options):
        words = ("sync", "use", "webdav", self.url, "--user", USER, "--password-stdin", *options)
        return self.quillo(*words, text=password.encode() + b"\n")

    def status(self):
        return self.done("sync", "status", "--json").json

    def lines(self):
        return self.done("sync", "status").lines

    def on_keyboard(self, *words, typed, until="Password"):
        """Runs the command with a terminal as its standard input. `typed` is a text, or a signal, once it asks."""
        outside, inside = pty.openpty()
        process = self.quillo.start(*words, stdin=inside)
        errors = b""
        while until.encode() not in errors and process.poll() is None:
            if select.select([process.stderr], [], [], PATIENCE_SECONDS)[0]:
                errors += os.read(process.stderr.fileno(), 65536)
        wait_until(lambda: not termios.tcgetattr(outside)[3] & termios.ECHO, "nothing is shown")
        if isinstance(typed, str):
            os.write(outside, typed.encode() + b"\n")
        else:
            process.send_signal(typed)
        output, more = process.communicate(timeout=PATIENCE_SECONDS)
        self.assertTrue(termios.tcgetattr(outside)[3] & termios.ECHO, "the terminal is as it was")
        shown = b""
        while select.select([outside], [], [], 0)[0]:
            shown += os.read(outside, 65536)
        os.close(outside)
        os.close(inside)
        return Answer(process.returncode, decoded(output), decoded(errors + more)), decoded(shown)


class Typed(PasswordTest):
    def setUp(self):
        super().setUp()
        self.words = ("sync", "use", "webdav", self.url, "--user", USER)

    def test_on_a_terminal_it_is_asked_for_and_not_shown(self):
        answer, shown = self.on_keyboard(*self.words, typed=PASSWORD)
        self.assertEqual((answer.code, answer.errors), (0, f"Password for {USER} at {self.url}: "))
        self.assertEqual(answer.lines[0], f"webdav {self.url} {USER}")
        self.assertEqual(shown.strip(), "")
        self.assertNotIn(PASSWORD, answer.output)

    def test_a_wrong_one_is_told_and_not_kept(self):
        keyring = self.make_keyring()
        answer, _ = self.on_keyboard(*self.words, typed=WRONG)
        self.assertEqual(answer.code, 1)
        self.assertIn("password is wrong", answer.errors)
        self.assertEqual(keyring.items(), [])
        self.assertEqual(self.status()["place"], "off")

    def test_none_and_one_that_is_none_are_refused(self):
        for typed, complaint in (("", "no password was given"), ("a\x0fb", "control character"), ("x" * 1500, "too long")):
            with self.subTest(complaint):
                answer, _ = self.on_keyboard(*self.words, typed=typed)
                self.assertEqual(answer.code, 1)
                self.assertIn(complaint, answer.errors)

    def test_who_gives_up_finds_his_terminal_as_it_was(self):
        for number in signal.SIGINT, signal.SIGTERM, signal.SIGHUP:
            answer, _ = self.on_keyboard(*self.words, typed=number)
            self.assertEqual(answer.code, -number)

    def test_without_a_terminal_there_has_to_be_a_line(self):
        answer = self.quillo(*self.words)
        self.assert_refused(answer, 1)
        self.assertIn("--password-stdin", answer.errors)
        self.assert_refused(self.quillo(*self.words, "--password-stdin"), 1)

    def test_without_a_user_nobody_is_asked_and_nothing_is_told(self):
        url = self.server.address("good")
        self.assertEqual(self.done("sync", "use", "webdav", url + "/").lines, [f"webdav {url}"])
        self.done("add", "task")
        self.done("sync", "now")
        self.assertEqual(self.told(), {""})
        status = self.status()
        self.assertEqual((status["place"], status["url"], status["user"], status["passwordKept"]),
                         ("webdav", url, None, None))


class WithAKeyring(PasswordTest):
    def setUp(self):
        super().setUp()
        self.keyring = self.make_keyring()

    def test_commands_find_it_there(self):
        self.assertEqual(self.use().lines, [f"webdav {self.url} {USER}", "password        in the keyring"])
        self.done("add", "task")
        self.done("sync", "now")
        status = self.status()
        self.assertEqual((status["place"], status["url"], status["user"], status["passwordKept"]),
                         ("webdav", self.url, USER, True))
        self.assertEqual(self.lines()[:3], [f"place           webdav {self.url}", f"user            {USER}",
                                            "password        in the keyring"])
        self.done("sync", "off")
        self.assertEqual(self.keyring.items(), [])

    def test_the_program_finds_it_there_when_it_starts(self):
        program = self.start()
        self.assertEqual(self.use().code, 0)
        self.assert_ends_well(program)
        self.server.events.clear()
        program = self.start()
        wait_until(lambda: self.server.events, "it asks the server")
        self.done("add", "task")
        self.done("sync", "now")
        self.assertEqual(self.told(), {basic(USER, PASSWORD)})
        self.done("sync", "off")
        self.assertEqual(self.keyring.items(), [])
        self.assert_ends_well(program)

    def test_a_locked_one_is_told(self):
        self.use()
        self.keyring.lock()
        program = self.start()
        wait_until(lambda: self.status()["problem"], "the problem is told")
        self.assertEqual(self.status()["problem"], "the keyring stays locked, and the password is in it")
        self.assertTrue(self.status()["passwordKept"])
        answer = self.quillo("sync", "now", "--password-stdin", text=PASSWORD.encode())
        self.assertEqual(answer.code, 0, answer.errors)
        self.assertIsNone(self.status()["problem"])
        self.assert_ends_well(program)

    def test_commands_that_add_tasks_open_no_keyring(self):
        self.use()
        self.keyring.lock()
        began = time.monotonic()
        self.done("add", "task")
        self.assertLess(time.monotonic() - began, 3)


class WithoutAKeyring(PasswordTest):
    def test_commands_ask_each_time(self):
        self.assertEqual(self.use().lines[1], "password        to be given at each start: no keyring has it")
        answer = self.quillo("sync", "now")
        self.assert_refused(answer, 1)
        self.assertIn("--password-stdin", answer.errors)
        answer, shown = self.on_keyboard("sync", "now", typed=PASSWORD)
        self.assertEqual((answer.code, shown.strip()), (0, ""))
        self.assertFalse(self.status()["passwordKept"])

    def test_the_program_wants_it_at_each_start(self):
        program = self.start()
        self.assertEqual(self.use().code, 0)
        self.done("sync", "now")
        self.assert_ends_well(program)
        program = self.start()
        wait_until(lambda: self.status()["problem"], "the problem is told")
        self.assertEqual(
            self.status()["problem"],
            f"the password for {USER} at {self.url} is not known: give it in the settings, or to quillo sync now",
        )
        self.assert_refused(self.quillo("sync", "now"), 1)
        self.done("sync", "now", "--password-stdin", text=PASSWORD.encode())
        self.assertIsNone(self.status()["problem"])
        self.done("sync", "now")
        self.assert_ends_well(program)

    def test_only_the_user_reaches_the_control_socket(self):
        program = self.start()
        self.assertEqual(program.socket.stat().st_mode & 0o777, 0o600)
        self.assert_ends_well(program)


class Leaks(PasswordTest):
    """What everybody on the machine could read, while the password goes its way."""

    def setUp(self):
        super().setUp()
        pair = f"{USER}:{PASSWORD}".encode()
        self.traces = [PASSWORD.encode(), base64.b64encode(PASSWORD.encode()), base64.b64encode(pair),
                       PASSWORD.encode("unicode_escape"), PASSWORD.encode("utf-16-le"), WRONG.encode()]
        self.found = []
        self.looks = 0
        self.ended = threading.Event()
        self.watcher = threading.Thread(target=self.watch)
        self.watcher.start()
        self.addCleanup(self.watcher.join)
        self.addCleanup(self.ended.set)
        # As much in the log as the libraries give.
        self.quillo.environment.update(G_MESSAGES_DEBUG="all", G_DBUS_DEBUG="all", QT_LOGGING_RULES="*.debug=true")

    def has_trace(self, content):
        return any(trace in content for trace in self.traces)

    def watch(self):
        """Looks at the arguments and the environment of all processes, over and over."""
        while not self.ended.is_set():
            for process in filter(str.isdigit, os.listdir("/proc")):
                for name in "cmdline", "environ":
                    try:
                        content = pathlib.Path("/proc", process, name).read_bytes()
                    except OSError:
                        continue
                    if self.has_trace(content):
                        self.found.append((process, name))
            self.looks += 1

    def go_all_ways(self):
        """Everything that was printed or logged meanwhile."""
        said = []

        def run(*words, **options):
            answer = self.quillo(*words, **options)
            said.extend([answer.output, answer.errors])
            return answer

        for running in False, True:
            program = self.start() if running else None
            use = ("sync", "use", "webdav", self.url, "--user", USER, "--password-stdin")
            self.assertEqual(run(*use, text=WRONG.encode()).code, 1)
            self.assertEqual(run(*use, text=PASSWORD.encode() + b"\n").code, 0)
            run("add", "task")
            self.assertEqual(run("sync", "now", "--password-stdin", text=PASSWORD.encode()).code, 0)
            self.assertEqual(run("sync", "now", "--password-stdin", text=WRONG.encode() + b"\0").code, 1)
            run("sync", "status")
            run("sync", "status", "--json")
            for words in (["sync", "use", "webdav", f"http://{USER}:x@127.0.0.1"], ["sync", "now"]):
                run(*words)
            self.look_into_files()
            if program:
                program.terminate()
                said.append(program.errors)
                program = self.start()
                run("sync", "now")
            run("sync", "off")
            if program:
                program.kill()
                said.append(program.errors)
        return "".join(said)

    def look_into_files(self):
        for file in self.folder.rglob("*"):
            if file.is_file():
                self.assertFalse(self.has_trace(file.read_bytes()), file)
        for file, (content, _) in list(self.server.place("password").files.items()):
            self.assertFalse(self.has_trace(content), file)

    def assert_no_leaks(self):
        said = self.go_all_ways()
        self.assertFalse(self.has_trace(said.encode("utf-8", "surrogateescape")), "what was said")
        self.look_into_files()
        looks = self.looks
        wait_until(lambda: self.looks > looks + 1, "looks at the processes")
        self.assertTrue(self.watcher.is_alive())
        self.assertEqual(self.found, [])

    def test_there_are_none_with_a_keyring(self):
        self.make_keyring()
        self.assert_no_leaks()

    def test_there_are_none_without_one(self):
        self.assert_no_leaks()

    def test_would_be_found(self):
        process = subprocess.Popen(["cat", "-", PASSWORD], stdin=subprocess.PIPE)
        self.addCleanup(process.wait)
        self.addCleanup(process.stdin.close)
        self.addCleanup(process.kill)
        wait_until(lambda: self.found, "the argument is found")
        (self.folder / "file").write_bytes(self.traces[2])
        with self.assertRaises(AssertionError):
            self.look_into_files()


if __name__ == "__main__":
    unittest.main()
