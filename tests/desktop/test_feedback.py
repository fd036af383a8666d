"""After five completed tasks the popover asks once how the program does, and leads to those who want to know."""

import pathlib
import tempfile
import unittest
import urllib.parse

from desktop_program import wait_until
from quillo_on_desktop import WAIT_SECONDS, DesktopTest

MAIL = "Send feedback by email"
REVIEW = "Leave a public review"
LATER = "Maybe later"
QUESTION = "How is Quillo working for you?"

TASKS = ("one", "two", "three", "four", "five", "six", "seven")


class FeedbackTest(DesktopTest):
    def setUp(self):
        super().setUp()
        folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.opened_file = folder / "opened"
        opener = folder / "xdg-open"
        opener.write_text(f'#!/bin/sh\nprintf "%s\\n" "$@" >> {self.opened_file}\n')
        opener.chmod(0o755)
        self.environment = {"PATH": f"{folder}:/usr/bin:/bin"}
        self.add(*TASKS)

    def complete(self, *numbers):
        for number in numbers:
            self.done("done", str(number))

    def open_popover(self):
        self.program = self.start(environment=self.environment)
        self.popover = self.program.open_popover()

    def is_asked(self):
        return self.popover.has("push button", LATER)

    def come_again(self):
        """Closes the popover and opens it again."""
        self.input.key("Escape")
        self.eventually(self.program.has_popover, False)
        self.popover = self.program.open_popover()

    def opened(self):
        """The addresses that were opened, when there are some."""

        def find():
            return self.opened_file.exists() and self.opened_file.read_text().splitlines()

        return wait_until(find, "something is opened", WAIT_SECONDS)


class Asking(FeedbackTest):
    def test_the_fifth_completion_asks_and_no_other(self):
        self.open_popover()
        for title in TASKS[:4]:
            self.input.click(self.popover.checkbox(title).centre)
            self.eventually(lambda: title in self.popover.rows(), False)
        self.assertFalse(self.is_asked())
        self.input.click(self.popover.checkbox(TASKS[4]).centre)
        self.popover.find("label", QUESTION)
        self.assertTrue(self.popover.has("label", "If you have a moment, your feedback helps a lot."))
        self.popover.click("push button", LATER)
        self.eventually(self.is_asked, False)
        self.input.click(self.popover.checkbox(TASKS[5]).centre)
        self.eventually(self.popover.rows, [TASKS[6]])
        self.come_again()
        self.popover.row(TASKS[6])
        self.assertFalse(self.is_asked())

    def test_five_commands_ask_too(self):
        self.program = self.start(environment=self.environment)
        self.complete(1, 2, 3, 4, 5)
        self.popover = self.program.open_popover()
        self.popover.find("label", QUESTION)

    def test_five_commands_ask_also_when_no_program_was_running(self):
        self.complete(1, 2, 3, 4, 5)
        self.open_popover()
        self.popover.find("label", QUESTION)
        self.input.key("Escape")
        self.eventually(self.is_asked, False)
        self.assertTrue(self.program.has_popover())
        self.come_again()
        self.popover.row(TASKS[0])
        self.assertFalse(self.is_asked())


class Answering(FeedbackTest):
    def setUp(self):
        super().setUp()
        self.complete(1, 2, 3, 4, 5)
        self.open_popover()
        self.popover.find("label", QUESTION)

    def assert_letter(self):
        (address,) = self.opened()
        letter = urllib.parse.urlsplit(address)
        self.assertEqual(letter.scheme, "mailto")
        self.assertRegex(letter.path, r"\A[^@]+@[^@]+\Z")
        query = dict(urllib.parse.parse_qsl(letter.query))
        self.assertEqual(query["subject"], "Quillo feedback")
        self.assertRegex(query["body"], r"\A\n\n---\nQuillo [0-9.]+ \([0-9.]+\) on Linux\Z")

    def test_a_letter_by_the_pointer(self):
        self.popover.click("push button", MAIL)
        self.assert_letter()
        self.eventually(self.is_asked, False)

    def test_a_letter_by_return(self):
        self.input.key("Return")
        self.assert_letter()
        self.eventually(self.is_asked, False)

    def test_a_review_by_the_pointer(self):
        self.popover.click("push button", REVIEW)
        (address,) = self.opened()
        self.assertRegex(address, r"\Ahttps://")
        self.eventually(self.is_asked, False)

    def test_a_review_by_the_keyboard(self):
        self.input.key("Tab")
        self.eventually(lambda: "focused" in self.popover.find("push button", REVIEW).states, True)
        self.input.key("space")
        (address,) = self.opened()
        self.assertRegex(address, r"\Ahttps://")

    def test_maybe_later_by_the_keyboard(self):
        self.input.key("Tab")
        self.input.key("Tab")
        self.eventually(lambda: "focused" in self.popover.find("push button", LATER).states, True)
        self.input.key("Return")
        self.eventually(self.is_asked, False)
        self.assertFalse(self.opened_file.exists())
        # The field has the keyboard again.
        self.input.type("go on\n")
        self.popover.row("go on")


if __name__ == "__main__":
    unittest.main()
