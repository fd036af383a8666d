"""Passwords in a keyring, on a session bus of the test's own."""

import os
import pathlib
import shutil
import subprocess
import tempfile
import time
import unittest

from desktop_program import PATIENCE_SECONDS
from keyring import Keyring
from session import Bus

URL = "https://cloud.example.org/dav/My%20Files"
USER = "Zoë K"
PASSWORD = "pässword with blanks"


class Asker:
    """A program that asks for the password of a place."""

    def __init__(self, address, url=URL, user=USER, environment=None):
        variables = {"PATH": os.environ["PATH"], **(environment or {})}
        if address is not None:
            variables["DBUS_SESSION_BUS_ADDRESS"] = address
        self.errors = tempfile.TemporaryFile()
        self.process = subprocess.Popen(
            [os.environ["ASK_PASSWORDS"], url, user],
            env=variables,
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
            stderr=self.errors,
            text=True,
            encoding="utf-8",
        )

    def __call__(self, line):
        self.process.stdin.write(line + "\n")
        self.process.stdin.flush()
        return self.process.stdout.readline().rstrip("\n")

    def log(self):
        return os.pread(self.errors.fileno(), 1 << 20, 0).decode()

    def end(self):
        """Its exit code."""
        self.process.stdin.close()
        code = self.process.wait(timeout=PATIENCE_SECONDS)
        self.process.stdout.close()
        self.errors.close()
        return code


class SecretsTest(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="quillo-test-"))
        self.addCleanup(shutil.rmtree, self.folder)
        self.bus = self.make_bus("first")

    def make_bus(self, name):
        bus = Bus(self.folder / name)
        self.addCleanup(bus.stop)
        return bus

    def make_keyring(self):
        keyring = Keyring(self.bus, self.folder / "home")
        self.addCleanup(keyring.die)
        return keyring

    def make_asker(self, address="", **options):
        asker = Asker(self.bus.address if address == "" else address, **options)
        self.addCleanup(lambda: self.assertEqual(asker.end(), 0))
        return asker


class InAKeyring(SecretsTest):
    def setUp(self):
        super().setUp()
        self.keyring = self.make_keyring()
        self.ask = self.make_asker()

    def test_are_kept_found_changed_and_forgotten(self):
        self.assertEqual(self.ask("has"), "no")
        self.assertEqual(self.ask("find"), "none")
        self.assertEqual(self.ask("keep first"), "for good")
        self.assertEqual(self.ask("keep " + PASSWORD), "for good")
        self.assertEqual(self.ask("has"), "yes")
        self.assertEqual(self.ask("find"), "found " + PASSWORD)
        self.assertEqual(self.make_asker()("find"), "found " + PASSWORD)
        self.assertEqual(len(self.keyring.items()), 1)
        self.assertEqual(self.ask("forget"), "done")
        self.assertEqual(self.ask("find"), "none")
        self.assertEqual(self.keyring.items(), [])
        self.assertEqual(self.ask("forget"), "done")

    def test_say_what_they_are_for(self):
        self.ask("keep " + PASSWORD)
        ((label, attributes),) = self.keyring.items()
        self.assertEqual(label, "Quillo: " + URL)
        self.assertEqual(attributes, {"xdg:schema": "org.quillo.Quillo.Sync", "url": URL, "user": USER})

    def test_are_those_of_one_user_at_one_place(self):
        self.ask("keep " + PASSWORD)
        for other in {"url": URL + "/"}, {"url": "https://example.org"}, {"user": "zoë k"}, {"user": ""}:
            with self.subTest(other):
                asker = self.make_asker(**other)
                self.assertEqual((asker("has"), asker("find"), asker("forget")), ("no", "none", "done"))
        self.assertEqual(self.ask("find"), "found " + PASSWORD)

    def test_may_have_a_thousand_bytes_and_any_characters(self):
        for password in "x" * 1024, "\u202e\U0001f511 ' \" \\ %s $HOME", "é" * 512:
            self.assertEqual(self.ask("keep " + password), "for good")
            self.assertEqual(self.ask("find"), "found " + password)
        self.assertIn("too long", self.ask("keep " + "x" * 1025))
        self.assertIn("control character", self.ask("keep a\tb"))
        self.assertEqual(self.ask("find"), "found " + password)

    def test_survive_the_keyring(self):
        self.ask("keep " + PASSWORD)
        self.keyring.die()
        self.assertEqual((self.ask("has"), self.ask("find")), ("no", "none"))
        self.make_keyring()
        self.assertEqual((self.ask("has"), self.ask("find")), ("yes", "found " + PASSWORD))

    def test_that_cannot_be_kept_are_there_until_the_program_ends(self):
        self.keyring.die()
        self.assertEqual(self.ask("keep " + PASSWORD), "until the end")
        self.assertEqual((self.ask("find"), self.ask("has")), ("found " + PASSWORD, "no"))
        self.assertEqual(self.make_asker()("find"), "none")
        self.make_keyring()
        self.assertEqual(self.ask("keep other"), "for good")
        self.assertEqual(self.make_asker()("find"), "found other")

    def test_in_a_locked_keyring_are_there_but_not_to_be_had(self):
        self.ask("keep " + PASSWORD)
        self.keyring.lock()
        self.assertEqual(self.ask("has"), "yes")
        self.assertEqual(self.ask("find quietly"), "error: the keyring is locked, and the password is in it")
        # Nobody is there who could ask the user: as if he had refused.
        self.assertEqual(self.ask("find"), "error: the keyring stays locked, and the password is in it")
        self.assertTrue(self.ask("forget").startswith("error: "))
        self.keyring.unlock()
        self.assertEqual(self.make_asker()("find quietly"), "found " + PASSWORD)

    def test_who_has_refused_is_not_asked_again(self):
        self.ask("keep " + PASSWORD)
        self.keyring.lock()
        refused = self.ask("find")
        self.keyring.unlock()
        self.assertEqual(self.ask("find quietly"), refused)
        self.assertEqual(self.ask("keep " + PASSWORD), "for good")
        self.assertEqual(self.ask("find quietly"), "found " + PASSWORD)

    def test_a_service_that_stands_still_is_given_up(self):
        self.ask("keep " + PASSWORD)
        self.keyring.process.send_signal(19)
        began = time.monotonic()
        self.assertEqual(self.ask("has"), "no")
        self.assertLess(time.monotonic() - began, 10)
        self.keyring.process.send_signal(18)
        self.assertEqual(self.ask("has"), "yes")

    def test_never_reach_the_log(self):
        self.ask("keep " + PASSWORD)
        self.keyring.lock()
        self.assertEqual(self.ask("keep " + PASSWORD), "until the end")
        self.ask("keep a\tsecret")
        self.assertIn("kept until the program ends", self.ask.log())
        self.assertNotIn(PASSWORD, self.ask.log())
        self.assertNotIn("secret", self.ask.log())


class Nowhere(SecretsTest):
    def assert_memory_only(self, ask):
        self.assertEqual((ask("has"), ask("find")), ("no", "none"))
        self.assertEqual(ask("keep " + PASSWORD), "until the end")
        self.assertEqual(ask("find"), "found " + PASSWORD)
        self.assertEqual((ask("forget"), ask("find")), ("done", "none"))

    def test_without_a_keyring(self):
        self.assert_memory_only(self.make_asker())

    def test_without_a_bus(self):
        for address in None, "", "unix:path=/nowhere", "nonsense":
            with self.subTest(address):
                asker = Asker(address)
                self.assert_memory_only(asker)
                self.assertEqual(asker.end(), 0)

    def test_no_bus_is_started_for_it(self):
        environment = {"DISPLAY": ":99", "PATH": str(self.folder)}
        (self.folder / "dbus-launch").write_text(f"#!/bin/sh\ntouch {self.folder}/launched\n")
        (self.folder / "dbus-launch").chmod(0o755)
        self.assert_memory_only(self.make_asker(None, environment=environment))
        self.assertFalse((self.folder / "launched").exists())

    def test_the_program_survives_the_bus(self):
        bus = self.bus
        keyring = self.make_keyring()
        ask = self.make_asker()
        self.assertEqual(ask("keep " + PASSWORD), "for good")
        bus.die()
        self.assertEqual((ask("has"), ask("find")), ("no", "none"))
        time.sleep(0.2)
        self.assertEqual(ask("has"), "no")
        keyring.die()


if __name__ == "__main__":
    unittest.main()
