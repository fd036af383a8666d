"""Reminders whose minute came while nobody could show them, or comes under another clock or in another zone."""

import html
import os
import pathlib
import shutil
import subprocess
import time
import unittest

from session import Clock, ResidentTest, needs_other_clocks

HOUR = 3600
MARKUP = '<b>bold</b> & "quoted" &lt; 5'


@needs_other_clocks
class Missed(ResidentTest):
    def setUp(self):
        super().setUp()
        self.daemon = self.make_stand_in("body")

    def add_missed(self, count):
        """Tasks that were due 15, 14, ... minutes ago, by a clock that shows an hour less; nobody ran."""
        titles = [f"missed {number}" for number in range(count)]
        self.add(
            *(f"{title} in {45 + number} minutes" for number, title in enumerate(titles)),
            environment=Clock(-HOUR).environment,
        )
        return titles

    def assert_shown_once(self, *bodies):
        """A program shows these, and a later one does not."""
        program = self.start()
        self.daemon.wait_for(bodies[-1])
        self.assert_ends_well(program)
        self.assertEqual(self.daemon.bodies(), list(bodies))
        self.assert_not_shown_again()

    def assert_not_shown_again(self):
        """A program that is started now shows nothing but what has become due since."""
        before = self.daemon.bodies()
        self.add("later in 2 minutes")
        program = self.start(environment=Clock(120).environment)
        self.daemon.wait_for("later")
        self.assert_ends_well(program)
        self.assertEqual(self.daemon.bodies(), [*before, "later"])

    def test_five_are_shown_one_by_one(self):
        self.assert_shown_once(*self.add_missed(5))

    def test_of_six_the_latest_five_and_one_for_the_other(self):
        titles = self.add_missed(6)
        self.assert_shown_once(*titles[1:], "1 more reminder was due")

    def test_of_seven_the_latest_five_and_one_for_the_others(self):
        titles = self.add_missed(7)
        self.assert_shown_once(*titles[2:], "2 more reminders were due")

    def test_not_those_of_tasks_that_are_done_or_gone(self):
        self.add_missed(4)
        self.done("done", "1")
        self.done("delete", "2")
        self.assert_shown_once("missed 0", "missed 1")

    def test_one_that_is_being_shown_at_the_end_is_not_shown_again(self):
        self.daemon.stop()
        self.daemon = self.make_stand_in("body", answer_delay=300)
        (title,) = self.add_missed(1)
        program = self.start()
        self.daemon.wait_for(title)
        self.assert_ends_well(program)
        self.assert_not_shown_again()

    def test_markup_is_text_to_every_daemon(self):
        self.add(f"{MARKUP} in 45 minutes", environment=Clock(-HOUR).environment)
        self.daemon.stop()
        reads_markup = self.make_stand_in("body", "body-markup")
        program = self.start()
        reads_markup.wait_for(html.escape(MARKUP))
        self.assert_ends_well(program)

    def test_another_daemon_takes_over(self):
        clock = Clock.before_a_minute(2)
        self.add("first in 45 minutes", environment=clock.later(-HOUR).environment)
        program = self.start(environment=clock.environment)
        self.daemon.wait_for("first")
        self.daemon.stop()
        other = self.make_stand_in("body", "body-markup")
        self.add("<second> in 1 minute", environment=clock.environment)
        other.wait_for("&lt;second&gt;")
        self.assert_ends_well(program)
        self.assertEqual(other.bodies(), ["&lt;second&gt;"])

    def test_without_a_bus_they_wait_for_a_run_with_one(self):
        titles = self.add_missed(2)
        program = self.start(environment={"DBUS_SESSION_BUS_ADDRESS": "unix:path=/nonexistent"})
        self.add("anything")
        self.assert_ends_well(program)
        self.assert_shown_once(*titles)


@needs_other_clocks
class ClockSet(ResidentTest):
    """While no program runs. That a program notices it is the kernel's doing, which only the real clock shows."""

    def setUp(self):
        super().setUp()
        self.daemon = self.make_stand_in("body")
        self.clock = Clock.before_a_minute(2)

    def test_a_minute_of_another_clock_starts(self):
        program = self.start(environment=self.clock.environment)
        self.add("by that clock in 1 minute", environment=self.clock.environment)
        minute = self.clock.now() // 60 * 60 + 60
        self.daemon.wait_for("by that clock")
        late = self.daemon.received()[0]["at"] + self.clock.ahead - minute
        self.assertTrue(-0.01 <= late <= 1, late)  # The library's clock goes by milliseconds.
        self.assert_ends_well(program)

    def test_forward_shows_what_has_become_due(self):
        self.add("soon in 20 minutes", environment=self.clock.environment)
        self.assert_ends_well(self.start(environment=self.clock.environment))
        self.assertEqual(self.daemon.bodies(), [])
        program = self.start(environment=self.clock.later(HOUR).environment)
        self.daemon.wait_for("soon")
        self.assert_ends_well(program)
        self.assertEqual(self.daemon.bodies(), ["soon"])

    def test_back_shows_nothing_twice(self):
        self.add("once in 1 minute", environment=self.clock.environment)
        minute = self.clock.now() // 60 * 60 + 60
        program = self.start(environment=self.clock.environment)
        self.daemon.wait_for("once")
        self.assert_ends_well(program)
        back = Clock(minute - 2 - time.time())
        program = self.start(environment=back.environment)
        self.add("later in 1 minute", environment=back.environment)
        self.daemon.wait_for("later")
        self.assert_ends_well(program)
        self.assertEqual(self.daemon.bodies(), ["once", "later"])


class ZoneChanged(ResidentTest):
    """The program gets an /etc of its own, in which the zone can be changed."""

    def setUp(self):
        super().setUp()
        if os.geteuid() != 0 or subprocess.run(["unshare", "-m", "true"], stderr=subprocess.DEVNULL).returncode != 0:
            self.skipTest("mounts cannot be private here")
        self.etc = self.folder / "etc"
        self.etc.mkdir()
        for name in ("passwd", "ld.so.cache", "nsswitch.conf"):
            if (source := pathlib.Path("/etc", name)).exists():
                shutil.copy(source, self.etc)
        self.set_zone("UTC")
        del self.quillo.environment["TZ"]
        self.daemon = self.make_stand_in("body")
        self.program = self.start(
            command=["unshare", "-m", "sh", "-c", f'mount --bind {self.etc} /etc && exec "$@"', "sh"]
        )

    def set_zone(self, zone):
        """The way systems do it: a link that takes the place of another."""
        (self.etc / "new").symlink_to(f"/usr/share/zoneinfo/{zone}")
        (self.etc / "new").rename(self.etc / "localtime")

    def test_a_reminder_keeps_its_time_of_day(self):
        self.done("add", "in two hours in 2 hours", environment={"TZ": "UTC"})
        self.done("add", "in six hours in 6 hours", environment={"TZ": "UTC"})
        self.set_zone("Etc/GMT-3")
        self.daemon.wait_for("in two hours")
        self.assert_ends_well(self.program)
        self.assertEqual(self.daemon.bodies(), ["in two hours"])


if __name__ == "__main__":
    unittest.main()
