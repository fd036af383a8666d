"""Three computers that keep their lists in step through a real WebDAV server.

usage: test_servers.py SERVER...

Each SERVER (lighttpd, apache, rclone) is started on this machine with a folder of its own and put through the same random
history: tasks are added, done and deleted, lists are exchanged, several at a time; commands are killed, and so is the
server, which comes back later. After each step the computers are held against the rules; at the end all must have the
list with the highest stamp. Then one forgets a computer that has long been silent. QUILLO_SYNC_SEED=<number> plays the
history of that number.
"""

import base64
import http.client
import json
import os
import random
import signal
import socket
import subprocess
import sys
import time
import unittest

from desktop_program import PATIENCE_SECONDS, wait_until
from quillo_command import CommandTest, stored_task

PLACE = "Quillo.linux.sync.place"
ROUNDS = 60
KEPT_LISTS = 10
TWO_YEARS_IN_SECONDS = 2 * 365 * 24 * 60 * 60


def free_port():
    with socket.socket() as taken:
        taken.bind(("127.0.0.1", 0))
        return taken.getsockname()[1]


class Server:
    """Runs in the foreground, and serves a folder."""

    def __init__(self, folder):
        self.folder = folder
        self.root = folder / "served"
        self.files = self.root / "quillo" / "v1"
        self.port = free_port()
        self.process = None
        for made in self.files, folder / "more":
            made.mkdir(parents=True)
        self.log = open(folder / "log", "ab")
        for path in [folder, *folder.rglob("*")]:
            path.chmod(0o777)

    @property
    def url(self):
        return f"http://127.0.0.1:{self.port}"

    def start(self):
        self.process = subprocess.Popen(
            ["setpriv", "--pdeathsig", "KILL", *self.command()],
            stdin=subprocess.DEVNULL, stdout=self.log, stderr=self.log, start_new_session=True,
        )  # fmt: skip
        wait_until(self.answers, f"the server answers; see {self.log.name}")

    def answers(self):
        connection = http.client.HTTPConnection("127.0.0.1", self.port, timeout=5)
        try:
            connection.request("OPTIONS", "/")
            return connection.getresponse().status < 500
        except (OSError, http.client.HTTPException):
            return False
        finally:
            connection.close()

    def kill(self):
        """With all its processes, as a machine does that loses its power."""
        if self.process:
            os.killpg(self.process.pid, signal.SIGKILL)
            self.process.wait()
            self.process = None

    def stamps(self):
        """Of the files that are whole: some servers leave half of one when they are killed, or who sends it is."""
        found = []
        for file in self.files.glob("*.json"):
            try:
                found.append(json.loads(file.read_bytes())["stamp"])
            except ValueError:
                pass
        return found


class Lighttpd(Server):
    def command(self):
        configuration = self.folder / "lighttpd.conf"
        configuration.write_text(
            f'server.modules = ("mod_webdav")\nserver.document-root = "{self.root}"\nserver.bind = "127.0.0.1"\n'
            f'server.port = {self.port}\nserver.upload-dirs = ("{self.folder}/more")\n'
            'mimetype.assign = (".json" => "application/json")\nwebdav.activate = "enable"\n'
        )
        return ["/usr/sbin/lighttpd", "-D", "-f", str(configuration)]


class Apache(Server):
    def command(self):
        configuration = self.folder / "apache.conf"
        modules = "mpm_event authz_core dav dav_fs"
        configuration.write_text(
            "\n".join(f"LoadModule {name}_module /usr/lib/apache2/modules/mod_{name}.so" for name in modules.split())
            + f'\nServerName localhost\nListen 127.0.0.1:{self.port}\nServerRoot "{self.folder}"\nPidFile more/pid\n'
            f'DocumentRoot "{self.root}"\nDAVLockDB more/locks\nDefaultRuntimeDir more\nErrorLog "{self.log.name}"\n'
            f'User www-data\nGroup www-data\n<Directory "{self.root}">\nDAV on\nRequire all granted\n</Directory>\n'
        )
        return ["/usr/sbin/apache2", "-X", "-f", str(configuration)]


class Rclone(Server):
    def command(self):
        return ["rclone", "--config", str(self.folder / "more/none"), "serve", "webdav", str(self.root),
                "--addr", f"127.0.0.1:{self.port}"]  # fmt: skip


class History:
    """The same for every server."""

    def setUp(self):
        super().setUp()
        self.folder.chmod(0o755)
        self.server = self.Server(self.folder / "server")
        self.addCleanup(self.server.log.close)
        self.addCleanup(self.server.kill)
        self.server.start()
        self.computers = [self.make_quillo(f"computer {number}") for number in range(3)]
        for quillo in self.computers:
            quillo.put(PLACE, "string", f"webdav {self.server.url}")
            # So that it has a name among the others before it is killed for the first time.
            answer = quillo("sync", "now")
            self.assertEqual((answer.code, answer.errors), (0, ""))

    def test_all_end_with_the_latest_list(self):
        seed = int(os.environ.get("QUILLO_SYNC_SEED", random.SystemRandom().randrange(10**9)))
        self.random = random.Random(seed)
        try:
            for number in range(ROUNDS):
                self.round(number)
            self.check_end()
            self.check_forgetting()
        except AssertionError as error:
            raise AssertionError(f"{error}\nseed {seed}, log:\n{(self.server.folder / 'log').read_text()}") from error

    def round(self, number):
        if self.server.process and number in (ROUNDS // 3, ROUNDS // 3 * 2):
            self.kill_in_the_midst()
        elif not self.server.process:
            for quillo in self.computers:
                self.check_without_server(quillo, number)
            self.server.start()
        quillo = self.random.choice(self.computers)
        kind = self.random.randrange(10)
        if kind < 5:
            words = self.random.choice([("add", f"task {number}")] * 3 + [("done", "1"), ("delete", "2")])
            self.change(quillo, *words)
        elif kind < 8 and self.server.process:
            self.exchange(quillo)
        elif self.server.process:
            self.exchange_at_once()

    def change(self, quillo, *words):
        answer = quillo(*words)
        self.assertIn(answer.code, (0, 1), answer.errors)  # There may be no such task.

    def exchange(self, quillo):
        """The latest of all lists, its own among them, is its own now, and lies there."""
        before = self.state(quillo)
        there = self.server.stamps()
        answer = quillo("sync", "now")
        self.assertEqual((answer.code, answer.errors), (0, ""))
        self.check_taken_over(quillo, before)
        self.assertEqual(self.stamp(quillo), max([before[1], *there]))
        self.assertGreaterEqual(max(self.server.stamps(), default=0), before[1])

    def exchange_at_once(self):
        """Some are killed."""
        before = [self.state(quillo) for quillo in self.computers]
        commands = [quillo.start("sync", "now") for quillo in self.computers]
        time.sleep(self.random.uniform(0, 0.1))
        for command in commands:
            if self.random.random() < 0.4:
                command.kill()
            command.communicate(timeout=PATIENCE_SECONDS)
        for quillo, state in zip(self.computers, before):
            self.check_taken_over(quillo, state)

    def kill_in_the_midst(self):
        before = [self.state(quillo) for quillo in self.computers]
        commands = [quillo.start("sync", "now") for quillo in self.computers]
        time.sleep(self.random.uniform(0, 0.1))
        self.server.kill()
        for command, quillo, state in zip(commands, self.computers, before):
            _, errors = command.communicate(timeout=PATIENCE_SECONDS)
            self.assertIn(command.returncode, (0, 1), errors)
            self.check_taken_over(quillo, state)

    def check_without_server(self, quillo, number):
        self.change(quillo, "add", f"alone {number}")
        before = self.state(quillo)
        answer = quillo("sync", "now")
        self.assert_refused(answer, 1)
        self.assertIn("nobody answers there", answer.errors)
        self.assertEqual(self.state(quillo), before)

    def stamp(self, quillo):
        return self.state(quillo)[1]

    def state(self, quillo):
        # What was killed may have left something for SQLite to do, which it does when something is read.
        connection = quillo.connect()
        connection.execute("SELECT count(*) FROM preferences").fetchone()
        connection.close()
        preferences = quillo.preferences()
        items = preferences.get("Quillo.items.v1", ("data", b"[]"))[1]
        return items, preferences.get("Quillo.items.v1.stamp", ("double", 0))[1]

    def check_taken_over(self, quillo, before):
        """What was replaced is among the earlier lists."""
        items, stamp = self.state(quillo)
        self.assertGreaterEqual(stamp, before[1])
        if items != before[0] and before[0] != b"[]":
            kept = [json.loads(file.read_text()) for file in (quillo.folder / "backups").iterdir()]
            self.assertLessEqual(len(kept), KEPT_LISTS)
            self.assertIn(json.loads(before[0]), kept)

    def check_end(self):
        for quillo in self.computers * 2:
            self.exchange(quillo)
        self.assertEqual(len({self.state(quillo) for quillo in self.computers}), 1)
        self.assertEqual(max(self.server.stamps()), self.stamp(self.computers[0]))
        self.assertEqual(len(self.server.stamps()), len(self.computers))
        for quillo in self.computers:
            earlier = quillo("restore").lines
            self.assertEqual([line for line in earlier if "cannot be read" in line], [])
            self.assertEqual(list(quillo.folder.glob("*damaged*")), [])

    def check_forgetting(self):
        identifier = "00000001-2222-4333-8444-555555555555"
        items = base64.b64encode(json.dumps([stored_task(1, "left behind")]).encode()).decode()
        content = {"format": 1, "device": identifier, "name": "laptop", "app": "", "items": items,
                   "stamp": time.time() - TWO_YEARS_IN_SECONDS}
        file = self.server.files / f"{identifier}.json"
        connection = http.client.HTTPConnection("127.0.0.1", self.server.port, timeout=PATIENCE_SECONDS)
        connection.request("PUT", f"/quillo/v1/{file.name}", json.dumps(content).encode())
        self.assertEqual(connection.getresponse().status, 201)
        connection.close()
        self.assertTrue(file.exists())
        answer = self.computers[0]("sync", "forget", identifier)
        self.assertEqual((answer.code, answer.errors), (0, ""))
        self.assertFalse(file.exists())
        self.assertIn("left behind", self.computers[0]("restore").lines[0])
        self.assertEqual(len(self.server.stamps()), len(self.computers))


SERVERS = {"lighttpd": Lighttpd, "apache": Apache, "rclone": Rclone}


def load_tests(loader, *_):
    suite = unittest.TestSuite()
    for name in NAMES:
        case = type(f"With{name.title()}", (History, CommandTest), {"Server": SERVERS[name]})
        suite.addTests(loader.loadTestsFromTestCase(case))
    return suite


if __name__ == "__main__":
    NAMES = [name for name in sys.argv[1:] if name in SERVERS] or list(SERVERS)
    unittest.main(argv=[sys.argv[0], *(name for name in sys.argv[1:] if name not in SERVERS)])
