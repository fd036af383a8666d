"""What assistive programs find in the windows: everything has its role and its name."""

import unittest

from desktop_program import wait_until
from quillo_command import stored_task
from quillo_on_desktop import (
    CREDITS_BUTTON,
    HIDE_DONE,
    MASCOT,
    MORE,
    NEW_TASK,
    SHOW_DONE,
    WAIT_SECONDS,
    DesktopTest,
)

ENTRY_HINT = "Press Return to add. Use natural language for dates and times."
QUICK_ADD_HINT = "Press Return to add. Press Escape to cancel."
IN_TEN_YEARS = 2_050_000_000  # on December 17, 2034, at 9:26 PM in Berlin
# Roles that only group others.
GROUPS = ("filler", "panel", "layered pane", "root pane")


class Trees(DesktopTest):
    maxDiff = None

    def open(self, *tasks):
        if tasks:
            self.quillo.put_items(*tasks)
        self.program = self.start()
        self.popover = self.program.open_popover()
        return self.popover

    def tree(self, view):
        """(role, name) of everything that is shown, in the order of the tree."""
        return [
            (node.role, node.name)
            for node in view.node.walk()
            if node.is_showing() and not (node.role in GROUPS and not node.name)
        ]

    def assert_tree(self, view, *expected):
        self.eventually(lambda: self.tree(view), list(expected))
        self.assert_all_named(view)

    def assert_all_named(self, view):
        """Whatever can be acted on or reached by the keyboard has a name and a role that says what it is."""
        for node in view.node.walk():
            if node.actions or "focusable" in node.states:
                with self.subTest(node=repr(node), path=node.path):
                    self.assertNotEqual(node.name, "")
                    self.assertNotIn(node.role, ("unknown", "invalid"))


class Popover(Trees):
    def test_empty(self):
        self.assert_tree(
            self.open(),
            ("frame", "Quillo"),
            ("heading", "Quillo"),
            ("label", "0 active"),
            ("push button", MORE),
            ("text", NEW_TASK),
            ("push button", MASCOT),
            ("label", "All clear."),
            ("list", "Quillo"),
            ("label", "Press"),
            ("label", "Ctrl+Alt+Super+T"),
            ("label", "from anywhere to add."),
        )
        self.assertEqual(self.popover.entry.description, ENTRY_HINT)
        self.assertIn("editable", self.popover.entry.states)
        self.assertIn("focused", self.popover.entry.states)

    def test_with_tasks(self):
        popover = self.open(
            stored_task(1, "Water the plants"),
            stored_task(2, "Renew the passport", due=IN_TEN_YEARS),
            stored_task(3, "Buy milk", done=True),
            stored_task(4, "Post the letter", done=True, due=IN_TEN_YEARS),
        )
        popover.click("push button", SHOW_DONE)
        self.input.move(popover.entry.centre)
        self.assert_tree(
            popover,
            ("frame", "Quillo"),
            ("heading", "Quillo"),
            ("label", "2 active"),
            ("push button", MASCOT),
            ("push button", MORE),
            ("text", NEW_TASK),
            ("list", "Quillo"),
            ("list item", "Water the plants"),
            ("check box", "Water the plants"),
            ("list item", "Renew the passport, Due Dec 17, 2034 at 9:26 PM"),
            ("check box", "Renew the passport"),
            ("list item", "Completed task: Buy milk"),
            ("check box", "Buy milk"),
            ("list item", "Completed task: Post the letter, Due Dec 17, 2034 at 9:26 PM"),
            ("check box", "Post the letter"),
            ("push button", HIDE_DONE),
            ("label", "2 done"),
            ("push button", "Hide done"),
            ("label", "Press"),
            ("label", "Ctrl+Alt+Super+T"),
            ("label", "from anywhere to add."),
        )
        for title, done in (("Water the plants", False), ("Buy milk", True)):
            self.assertEqual("checked" in popover.checkbox(title).states, done)

    def test_a_row_under_the_pointer(self):
        popover = self.open(stored_task(1, "Water the plants"))
        popover.hover("Water the plants")
        popover.find("push button", "Delete Water the plants")
        row = popover.row("Water the plants")
        self.assertEqual(
            [(node.role, node.name) for node in row.walk() if node.is_showing()],
            [
                ("list item", "Water the plants"),
                ("check box", "Water the plants"),
                ("push button", "Set reminder for Water the plants"),
                ("push button", "Delete Water the plants"),
            ],
        )
        self.assert_all_named(popover)

    def test_the_options(self):
        popover = self.open()
        popover.open_menu()
        self.assertEqual(len(popover.node.find_all("popup menu")), 1)
        self.assert_all_named(popover)

    def test_the_reminder(self):
        popover = self.open(stored_task(1, "Water the plants"))
        popover.hover("Water the plants")
        popover.click("push button", "Set reminder for Water the plants")
        dialog = popover.find("dialog", "Remind me")
        self.assertEqual(
            [(node.role, node.name) for node in dialog.walk() if node.is_showing()],
            [
                ("dialog", "Remind me"),
                ("label", "Remind me"),
                ("push button", "In 1 hour"),
                ("push button", "In 3 hours"),
                ("push button", "Tonight"),
                ("push button", "Tomorrow 9 AM"),
                ("button with drop down", "Date"),
                ("spin box", "Time"),
                ("push button", "Set"),
            ],
        )
        self.assert_all_named(popover)

    def test_editing(self):
        popover = self.open(stored_task(1, "Water the plants"))
        self.input.key("Down")
        self.input.key("Return")
        self.eventually(lambda: len(popover.names("text")), 2)
        self.assert_all_named(popover)

    def test_the_credits(self):
        popover = self.open()
        for _ in range(5):
            self.input.click(popover.find(name=MASCOT).centre, apart=False)
        popover.find("push button", CREDITS_BUTTON)
        self.assert_all_named(popover)

    def test_everything_is_done_without_a_pointer(self):
        """By the actions that assistive programs are offered."""
        popover = self.open(stored_task(1, "one"), stored_task(2, "two"), stored_task(3, "three"))
        popover.checkbox("one").do("Press")
        self.eventually(popover.rows, ["two", "three"])
        popover.find("push button", SHOW_DONE).do("Press")
        popover.find("push button", "Hide done").do("Press")
        self.eventually(popover.rows, ["two", "three"])
        popover.find("push button", MORE).do("Press")
        popover.find("menu item", "Clear Completed").do("Press")
        self.eventually(self.quillo.titles, ["two", "three"])


class QuickAdd(Trees):
    def test_with_and_without_text(self):
        panel = self.start().open_quick_add()
        self.assert_tree(panel, ("frame", NEW_TASK), ("text", NEW_TASK))
        self.assertEqual(panel.entry.description, QUICK_ADD_HINT)
        self.assertIn("focused", panel.entry.states)
        self.input.type("x")
        self.assert_tree(panel, ("frame", NEW_TASK), ("text", NEW_TASK), ("label", "⏎"))


if __name__ == "__main__":
    unittest.main()
