"""Commands while no desktop program runs, and a list that is kept in step through a WebDAV server."""

import time
import unittest

from dav_server import DavServer
from quillo_command import CommandTest

PLACE = "Quillo.linux.sync.place"
SLOW_SECONDS = 10
# Far longer than a command takes on a busy machine, far shorter than the slow server.
AT_ONCE_SECONDS = 3


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


if __name__ == "__main__":
    unittest.main()
