"""The program's place on the session bus, and in a session that has none, or loses it."""

import argparse
import os
import pathlib
import signal
import subprocess
import sys
import unittest

from gi.repository import GLib

from desktop_program import PATIENCE_SECONDS, DesktopProgram, wait_until
from session import APPLICATION, NAME, ResidentTest

arguments = None  # from the command line, see main()

NO_BUS = {"DBUS_SESSION_BUS_ADDRESS": "unix:path=/nonexistent"}
NO_DATA = GLib.Variant("(a{sv})", ({},))
ACTION = GLib.Variant("(sava{sv})", ("quick-add", [], {}))


class OnABus(ResidentTest):
    def test_it_owns_its_name_and_is_an_application(self):
        program = self.start()
        wait_until(lambda: self.bus.owner(NAME) == program.process.pid, "it owns its name")
        self.bus.call(NAME, *APPLICATION, "Activate", NO_DATA)
        self.bus.call(NAME, *APPLICATION, "Open", GLib.Variant("(asa{sv})", ([], {})))
        self.bus.call(NAME, *APPLICATION, "ActivateAction", ACTION)
        self.assert_ends_well(program)
        self.assertEqual(program.errors, "")
        self.assertIsNone(self.bus.owner(NAME))

    def test_a_second_one_leaves_the_list_to_the_first(self):
        first = self.start()
        self.add("one")
        second = DesktopProgram(self.quillo.folder, first.environment)
        self.assertEqual((second.wait(), second.errors), (0, ""))
        self.add("two")
        self.assert_ends_well(first)
        self.assertEqual(self.quillo.titles(), ["two", "one"])

    def test_many_that_start_at_once_leave_it_to_one(self):
        environment = {**self.quillo.environment, "DBUS_SESSION_BUS_ADDRESS": self.bus.address}
        programs = [DesktopProgram(self.quillo.folder, environment) for _ in range(8)]
        for program in programs:
            self.addCleanup(program.kill)
        wait_until(lambda: sum(not program.has_ended() for program in programs) == 1, "one is left")
        (left,) = [program for program in programs if not program.has_ended()]
        self.assertEqual([program.wait() for program in programs if program is not left], [0] * 7)
        left.wait_until_ready()
        self.add("task")
        self.assert_ends_well(left)

    def test_one_for_another_folder_works_beside_it(self):
        first = self.start()
        other = self.make_quillo("other")
        second = self.start(other)
        self.add("here")
        self.add("there", quillo=other)
        self.assert_ends_well(first)
        self.assert_ends_well(second)
        self.assertEqual((self.quillo.titles(), other.titles()), (["here"], ["there"]))
        self.assertEqual((first.errors, second.errors.count("\n")), ("", 1), second.errors)
        self.assertIn("another folder", second.errors)

    def test_when_the_bus_dies_it_ends_with_everything_on_disk(self):
        program = self.start()
        self.add(*(f"task {number}" for number in range(20)))
        self.bus.die()
        self.assertEqual(program.wait(), 0, program.errors)
        self.assertEqual(program.errors, "quillo: the session bus is gone\n")
        self.assertEqual(self.quillo.titles(), [f"task {number}" for number in reversed(range(20))])
        self.assertEqual(set(self.quillo.files()), {"preferences.lock", "preferences.sqlite"})

    def test_without_a_bus_it_works_and_says_so_once(self):
        program = self.start(environment=NO_BUS)
        self.add("one", "two in 2 hours")
        self.done("done", "2")
        self.assert_ends_well(program)
        self.assertEqual(program.errors, "quillo: there is no session bus: no notifications are shown\n")
        self.assertEqual(self.quillo.titles(), ["two", "one"])

    def test_a_bus_that_nobody_has_told_it_of_is_none(self):
        program = self.start(environment={"DBUS_SESSION_BUS_ADDRESS": ""})
        self.add("task")
        self.assert_ends_well(program)
        self.assertIn("no session bus", program.errors)


class Quitting(ResidentTest):
    def test_a_command_ends_it(self):
        program = self.start()
        self.add("task")
        self.assertEqual(self.done("quit").output, "")
        self.assertEqual((program.wait(), program.errors), (0, ""))
        self.assertEqual(set(self.quillo.files()), {"preferences.lock", "preferences.sqlite"})
        self.assertEqual(list(self.quillo.folder.glob("*.sock")), [])
        self.done("quit")
        self.assertEqual(self.quillo.titles(), ["task"])

    def test_one_that_starts_right_after_the_command_takes_over(self):
        program = self.start()
        for number in range(20):
            self.add(f"task {number}")
            self.done("quit")
            following = self.start()
            self.assertEqual((program.wait(), program.errors), (0, ""))
            self.assertFalse(following.has_ended())
            program = following
        self.assert_ends_well(program)

    def test_signals_end_it(self):
        for name in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            with self.subTest(name.name):
                program = self.start()
                self.add(name.name)
                program.process.send_signal(name)
                self.assertEqual((program.wait(), program.errors), (0, ""))
                self.assertEqual(self.quillo.titles()[0], name.name)

    def test_one_that_starts_while_another_ends_disturbs_nothing(self):
        taken_over = 0
        for number in range(20):
            first = self.start()
            self.add(f"before {number}")
            first.process.terminate()
            second = self.start()
            self.add(f"after {number}")
            self.assertEqual(first.wait(), 0, first.errors)
            # Where it found the first still at work, it has left the list to it.
            wait_until(lambda: second.has_ended() or self.holder() == second.process.pid, "the second has decided")
            taken_over += not second.has_ended()
            self.assertEqual(second.terminate(), 0, second.errors)
        print(f"{taken_over} of 20 took over")
        self.assertEqual(len(self.quillo.titles()), 40)

    def holder(self):
        """The process that holds the list, or 0."""
        return int(self.quillo.lock.read_text() or 0)


class Activation(ResidentTest):
    def test_asking_for_its_name_starts_it(self):
        prefix = self.folder / "installed"
        subprocess.run(
            [arguments.cmake, "--install", arguments.build, "--prefix", prefix],
            check=True,
            stdout=subprocess.DEVNULL,
            timeout=PATIENCE_SECONDS,
        )
        service = prefix / f"share/dbus-1/services/{NAME}.service"
        bus = self.make_bus(**self.quillo.environment)
        (bus.folder / "services" / service.name).write_bytes(service.read_bytes())
        bus.call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "ReloadConfig")

        bus.call(NAME, *APPLICATION, "Activate", NO_DATA)
        process = bus.owner(NAME)
        self.assertEqual(pathlib.Path(os.readlink(f"/proc/{process}/exe")), prefix / "libexec/quillo/quillo-headless")
        self.add("task")
        self.done("quit")
        wait_until(lambda: bus.owner(NAME) is None, "it has ended")
        self.assertEqual(self.quillo.titles(), ["task"])


def main():
    global arguments
    parser = argparse.ArgumentParser()
    parser.add_argument("--cmake", required=True)
    parser.add_argument("--build", required=True)
    arguments, others = parser.parse_known_args()
    unittest.main(argv=[sys.argv[0], *others])


if __name__ == "__main__":
    main()
