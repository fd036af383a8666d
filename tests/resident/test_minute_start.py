"""Reminders for one real minute start, with everything that can happen to them before it."""

import html
import time
import unittest

from desktop_program import wait_until
from session import Clock, Dunst, ResidentTest, can_have_other_clocks

MARKUP = '<b>bold</b> <a href="x">link</a> &amp; "quoted" 100% \\n'
# What has to be done before the minute starts takes less than this.
PREPARATION_SECONDS = 15


class AtAMinuteStart(ResidentTest):
    """One test, because all of it waits for the same minute."""

    def test_reminders(self):
        self.begin()
        self.prepare_dunst()
        self.prepare_closed_program()
        self.prepare_killed_program()
        self.prepare_late_daemon()
        self.assertLess(time.time(), self.minute, "the machine is too slow for this test")

        wait_until(lambda: time.time() >= self.minute, "the minute starts")
        self.killed = self.start(self.killed_quillo)
        wait_until(lambda: time.time() >= self.minute + 1, "the first second is over")
        self.check_dunst()
        self.check_stand_in()
        self.check_late_daemon()
        if can_have_other_clocks():
            self.check_that_all_is_over()

    def begin(self):
        left = -time.time() % 60
        if left < PREPARATION_SECONDS:
            time.sleep(left + 0.01)
        self.minute = time.time() // 60 * 60 + 60

    def in_a_minute(self, *titles):
        return [title + " in 1 minute" for title in titles]

    def prepare_dunst(self):
        self.dunst_bus = self.make_bus()
        self.dunst = Dunst(self.dunst_bus, self.folder)
        self.addCleanup(self.dunst.stop)
        self.running = self.start(bus=self.dunst_bus)
        titles = ("plain", MARKUP, "completed", "deleted", "cleared", "put off", "reopened")
        self.add(*self.in_a_minute(*titles), "barrier in 2 minutes")
        numbers = {task["title"]: str(task["number"]) for task in self.quillo.tasks()}
        self.done("done", numbers["completed"])
        self.done("remind", numbers["cleared"], "--clear")
        self.done("remind", numbers["put off"], "in 3 days")
        self.done("done", numbers["reopened"])
        self.done("undone", numbers["reopened"])
        self.done("delete", numbers["deleted"])

    def prepare_closed_program(self):
        """A command writes the request while no program runs."""
        self.stand_in = self.make_stand_in("body")
        self.closed_quillo = self.make_quillo("closed")
        self.add(*self.in_a_minute("while closed"), quillo=self.closed_quillo)
        self.closed = self.start(self.closed_quillo)

    def prepare_killed_program(self):
        self.killed_quillo = self.make_quillo("killed")
        program = self.start(self.killed_quillo)
        self.add(*self.in_a_minute("while killed"), quillo=self.killed_quillo)
        program.kill()

    def prepare_late_daemon(self):
        self.late_bus = self.make_bus()
        self.late_quillo = self.make_quillo("late")
        self.late = self.start(self.late_quillo, bus=self.late_bus)
        self.add(*self.in_a_minute("without a daemon"), quillo=self.late_quillo)

    def check_dunst(self):
        received = self.dunst.received()
        self.assertEqual(
            [(one["application"], one["title"]) for one in received], [("Quillo", "Quillo")] * len(received)
        )
        # This dunst reads markup.
        self.assertEqual(sorted(html.unescape(one["body"]) for one in received), sorted(["plain", MARKUP]))
        self.assertNotIn("<", "".join(one["body"] for one in received))
        for one in received:
            self.assert_in_time(one)
        self.assert_ends_well(self.running)

    def check_stand_in(self):
        self.stand_in.wait_for("while killed")
        received = self.stand_in.received()
        self.assertEqual([one["body"] for one in received], ["while closed", "while killed"])
        self.assert_in_time(received[0])
        self.assertEqual((received[0]["application"], received[0]["title"]), ("Quillo", "Quillo"))
        hints = received[0]["hints"]
        self.assertEqual((hints["urgency"], hints["desktop-entry"]), (2, "org.quillo.Quillo"))
        self.assertIn("sound-name", hints)
        self.assert_ends_well(self.closed)
        self.assert_ends_well(self.killed)

    def check_late_daemon(self):
        self.assertFalse(self.late.has_ended())
        daemon = self.make_stand_in("body", bus=self.late_bus)
        daemon.wait_for("without a daemon")
        self.assertEqual(daemon.bodies(), ["without a daemon"])
        self.assert_ends_well(self.late)

    def check_that_all_is_over(self):
        """Once is once: a later run shows what was due after, and only that."""
        clock = Clock(120)
        again = self.start(bus=self.dunst_bus, environment=clock.environment)
        wait_until(lambda: self.dunst.count("displayedLength") > 0, "the barrier is shown")
        self.assert_ends_well(again)
        self.assertEqual([one["body"] for one in self.dunst.received()][2:], ["barrier"])

    def assert_in_time(self, one):
        late = one["at"] - self.minute
        print(f"{one['body']!r}: {late * 1000:.1f} ms after the minute began")
        self.assertTrue(0 <= late <= 1, f"{one['body']!r} came {late:.3f} s after the minute began")


if __name__ == "__main__":
    unittest.main()
