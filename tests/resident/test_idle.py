"""A program that has nothing to do does nothing, and takes little memory for it."""

import time
import unittest

from process_costs import context_switches, memory
from quillo_command import stored_task
from session import Clock, ResidentTest, can_have_other_clocks, is_shipped_build

IDLE_SECONDS = 30
MOST_MEGABYTES = 24
# What happened before may still be on its way to the disk or the bus for this long.
SETTLING_SECONDS = 1
HOUR = 3600


class Idle(ResidentTest):
    """One test, because all of it waits for the same half minute."""

    def test_nothing_happens_and_little_is_taken(self):
        daemon = self.make_stand_in("body")
        programs = {
            "empty": self.start(self.make_quillo("empty")),
            "in use": self.in_use(daemon),
            "without a bus": self.start(
                self.make_quillo("alone"), environment={"DBUS_SESSION_BUS_ADDRESS": "unix:path=/nonexistent"}
            ),
            "10,000 tasks": self.large(),
        }
        time.sleep(SETTLING_SECONDS)
        before = {name: context_switches(program.process.pid) for name, program in programs.items()}
        taken = {name: memory(program.process.pid).resident for name, program in programs.items()}
        time.sleep(IDLE_SECONDS)
        for name, program in programs.items():
            with self.subTest(name):
                print(f"{name}: {taken[name]:.1f} MB, {len(before[name])} threads")
                self.assertEqual(context_switches(program.process.pid), before[name])
                self.assert_ends_well(program)
                if is_shipped_build():
                    self.assertLessEqual(taken[name], MOST_MEGABYTES)

    def in_use(self, daemon):
        """One that has answered commands, has shown a reminder, and waits for another."""
        quillo = self.make_quillo("used")
        if can_have_other_clocks():
            self.add("missed in 45 minutes", quillo=quillo, environment=Clock(-HOUR).environment)
        program = self.start(quillo)
        if can_have_other_clocks():
            daemon.wait_for("missed")
        self.add("due in 3 hours", "milk", "bread", quillo=quillo)
        self.assertEqual(quillo("done", "1").code, 0)
        return program

    def large(self):
        """One that has ten thousand tasks, and has changed them."""
        quillo = self.make_quillo("large")
        quillo.put_items(
            *(
                stored_task(number, f"Task number {number} of a long list", done=number % 3 == 0, due=1e9 + number)
                for number in range(10_000)
            )
        )
        program = self.start(quillo)
        self.add("one more", quillo=quillo)
        self.assertEqual(quillo("done", "7").code, 0)
        return program


if __name__ == "__main__":
    unittest.main()
