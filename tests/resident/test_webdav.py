"""Programs, each with a home of its own, and a WebDAV server between them."""

import time
import unittest

from dav_server import PASSWORD, USER, DavServer
from desktop_program import wait_until
from process_costs import context_switches
from session import ResidentTest

PLACE = "Quillo.linux.sync.place"
SLOW_SECONDS = 10
# Far longer than a command takes on a busy machine, far shorter than the slow server.
AT_ONCE_SECONDS = 3
IDLE_SECONDS = 10


class WebDavTest(ResidentTest):
    def setUp(self):
        super().setUp()
        self.server = DavServer(slow_seconds=SLOW_SECONDS)
        self.addCleanup(self.server.server_close)
        self.addCleanup(self.server.shutdown)
        self.left = self.make_quillo("left")
        self.right = self.make_quillo("right")

    def use(self, quillo, part):
        """Before its program starts."""
        self.server.place(part).folders |= {"quillo", "quillo/v1"}
        quillo.put(PLACE, "string", f"webdav {self.server.address(part)}")

    def stored(self, part):
        return self.server.place(part).stored

    def test_what_is_added_on_one_comes_to_the_other_when_that_looks(self):
        for quillo in self.left, self.right:
            self.use(quillo, "good")
            self.start(quillo)
        for number in range(4):
            here, there = (self.left, self.right) if number % 2 else (self.right, self.left)
            stored = self.stored("good")
            self.add(f"task {number}", quillo=here)
            wait_until(lambda: self.stored("good") > stored, "it is sent")
            answer = there("sync", "now")
            self.assertEqual((answer.code, answer.errors), (0, ""))
            wait_until(lambda: f"task {number}" in there.titles(), "it is taken over", AT_ONCE_SECONDS)
        self.assertEqual(self.left.titles(), self.right.titles())

    def test_nothing_happens_while_nothing_happens(self):
        self.use(self.left, "good")
        program = self.start(self.left)
        self.add("task", quillo=self.left)
        wait_until(lambda: self.stored("good"), "it is sent")
        time.sleep(1)
        before = context_switches(program.process.pid), len(self.server.events)
        time.sleep(IDLE_SECONDS)
        self.assertEqual((context_switches(program.process.pid), len(self.server.events)), before)

    def test_a_password_that_nobody_keeps_is_asked_for_once_a_start(self):
        notifications = self.make_stand_in("body")
        address = self.server.address("password")
        self.server.place("password").folders |= {"quillo", "quillo/v1"}
        self.left.put(PLACE, "string", f"webdav {address} {USER}")
        self.start(self.left)
        wait_until(lambda: notifications.received(), "the password is asked for")
        self.left("sync", "now")
        (told,) = notifications.received()
        self.assertEqual(told["title"], "Sync needs your password")
        self.assertIn(address, told["body"])
        answer = self.left("sync", "now", "--password-stdin", text=f"{PASSWORD}\n".encode())
        self.assertEqual((answer.code, answer.errors), (0, ""))
        wait_until(lambda: self.left("sync", "status", "--json").json["problem"] is None, "it is in step")
        self.assertEqual(len(notifications.received()), 1)

    def test_a_slow_server_makes_nothing_slower(self):
        self.use(self.left, "slow")
        program = self.start(self.left)
        wait_until(lambda: self.server.events, "the server is asked")
        began = time.monotonic()
        for number in range(5):
            self.add(f"task {number}", quillo=self.left)
        print(f"five tasks: {time.monotonic() - began:.3f} s")
        self.assertLess(time.monotonic() - began, AT_ONCE_SECONDS)
        began = time.monotonic()
        self.assert_ends_well(program)
        print(f"the end: {time.monotonic() - began:.3f} s")
        self.assertLess(time.monotonic() - began, AT_ONCE_SECONDS)
        wait_until(lambda: any("gone" in event for event in self.server.events), "it was given up")

    def test_what_was_not_sent_goes_out_when_it_starts_again(self):
        self.use(self.left, "slow")
        program = self.start(self.left)
        self.add("task", quillo=self.left)
        program.kill()
        self.use(self.left, "good")
        self.start(self.left)
        wait_until(lambda: self.stored("good"), "it is sent")

    def test_it_ends_whatever_the_server_is_doing(self):
        self.use(self.left, "drip")
        for number in range(6):
            program = self.start(self.left)
            time.sleep(0.05 * number)
            self.assert_ends_well(program)


if __name__ == "__main__":
    unittest.main()
