"""Commands while no desktop program runs, and a list that is kept in step through a WebDAV server."""

import base64
import json
import time
import unittest

from dav_server import DavServer
from desktop_program import wait_until
from quillo_command import CommandTest, stored_task

PLACE = "Quillo.linux.sync.place"
DEVICE = "Quillo.linux.sync.device"
SLOW_SECONDS = 10
# Far longer than a command takes on a busy machine, far shorter than the slow server.
AT_ONCE_SECONDS = 3
DAY_SECONDS = 24 * 60 * 60


class WebDavTest(CommandTest):
    def setUp(self):
        super().setUp()
        self.server = DavServer(slow_seconds=SLOW_SECONDS)
        self.addCleanup(self.server.server_close)
        self.addCleanup(self.server.shutdown)

    def use(self, part, quillo=None):
        self.server.place(part).folders |= {"quillo", "quillo/v1"}
        (quillo or self.quillo).put(PLACE, "string", f"webdav {self.server.address(part)}")

    def test_do_not_go_by_the_network(self):
        self.use("slow")
        began = time.monotonic()
        self.done("add", "task")
        self.done("done", "1")
        self.done("list", "--all")
        self.assertLess(time.monotonic() - began, AT_ONCE_SECONDS)
        self.assertEqual(self.server.events, [])

    def test_but_for_the_one_that_asks_for_it(self):
        other = self.make_quillo("other")
        self.use("good")
        self.use("good", other)
        self.done("add", "task")
        self.done("sync", "now")
        self.assertEqual(other("sync", "now").code, 0)
        self.assertEqual(other.titles(), ["task"])
        self.assertEqual(len(self.server.place("good").files), 2)
        status = self.done("sync", "status", "--json").json
        self.assertIsNone(status["problem"])

    def test_which_says_what_is_in_the_way(self):
        self.done("add", "task")
        for part, complaint in (
            ("busy", "the server is not ready for the moment"),
            ("full", "the server's disk is full"),
            ("closed", "the server breaks off the connection"),
            ("web-page", "a web page comes instead"),
            ("password", "the server wants a user's name and password"),
        ):
            with self.subTest(part):
                self.use(part)
                answer = self.quillo("sync", "now")
                self.assert_refused(answer, 1)
                self.assertIn(complaint, answer.errors)
                self.assertIn(complaint, self.done("sync", "status", "--json").json["problem"])
                self.assertEqual(self.quillo.titles(), ["task"])

    def leave(self, part, number, days_ago, *titles):
        """What another computer has left, on which something was changed so many days ago."""
        identifier = f"{number:08X}-2222-4333-8444-555555555555"
        items = json.dumps([stored_task(number, title) for title in titles])
        content = {"format": 1, "device": identifier, "name": f"laptop {number}", "app": "",
                   "items": base64.b64encode(items.encode()).decode(), "stamp": time.time() - days_ago * DAY_SECONDS}
        self.server.place(part).store(f"quillo/v1/{identifier}.json", json.dumps(content).encode())
        return identifier

    def is_there(self, part, identifier):
        return f"quillo/v1/{identifier}.json" in self.server.place(part).files

    def test_take_away_what_is_a_year_old_and_keep_its_list(self):
        self.done("add", "mine")
        self.use("good")
        old = self.leave("good", 1, 366, "left behind")
        empty = self.leave("good", 2, 5000)
        recent = self.leave("good", 3, 364, "task")
        self.assertEqual(self.done("sync", "forget", old[:8].lower()).output, "")
        self.assertFalse(self.is_there("good", old))
        self.assertIn("left behind", self.done("restore").lines[0])
        earlier = len(self.done("restore").lines)
        self.done("sync", "forget", empty)
        self.assertFalse(self.is_there("good", empty))
        self.assertEqual(len(self.done("restore").lines), earlier)
        self.assert_refused(self.quillo("sync", "forget", recent), 1)
        self.assertTrue(self.is_there("good", recent))
        self.assertEqual(self.quillo.titles(), ["mine"])
        devices = self.done("sync", "status", "--json").json["devices"]
        self.assertEqual({device["device"] for device in devices if not device["thisComputer"]}, {recent})

    def test_say_why_nothing_is_taken_away(self):
        self.done("add", "mine")
        for part, complaint in (("kept", "the server does not allow that"), ("kept-locked", "somebody has locked the file")):
            with self.subTest(part):
                self.use(part)
                old = self.leave(part, 1, 366, "left behind")
                answer = self.quillo("sync", "forget", old)
                self.assert_refused(answer, 1)
                self.assertIn(complaint, answer.errors)
                self.assertTrue(self.is_there(part, old))

    def test_know_their_name_before_anything_is_sent(self):
        self.done("add", "task")
        self.use("stored-late")
        self.assertNotIn(DEVICE, self.quillo.preferences())
        files = self.server.place("stored-late").files
        command = self.quillo.start("sync", "now")
        wait_until(lambda: files, "the list is sent")
        command.kill()
        command.communicate()
        (file,) = files
        self.assertEqual(self.quillo.preferences()[DEVICE][1].split()[0], file.rpartition("/")[2].removesuffix(".json"))


if __name__ == "__main__":
    unittest.main()
