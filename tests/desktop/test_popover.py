"""The popover: tasks are typed into it, shown in it, and everything else is found from it."""

import unittest

from desktop_program import DesktopProgram, wait_until
from quillo_command import stored_task
from quillo_on_desktop import (
    HIDE_DONE,
    MASCOT,
    MORE,
    NEW_TASK,
    SHOW_DONE,
    WAIT_SECONDS,
    BesideATerminal,
    DesktopTest,
)

OPTIONS = [
    "Quick Add… (Ctrl+Alt+Super+T)",
    "Export as Markdown…",
    "Export as JSON…",
    "Clear Completed",
    "Statistics…",
    "Settings…",
    "Check for Updates…",
    "Quit Quillo",
]
EMPTY = "All clear."
STATISTICS_SETTING = "Quillo.stats.enabled"


class PopoverTest(DesktopTest):
    def open(self):
        self.program = self.start()
        self.popover = self.program.open_popover()
        return self.popover


class Entry(PopoverTest):
    def test_a_task_in_plain_words(self):
        popover = self.open()
        self.input.type("Call mom tomorrow at 9am\n")
        row = popover.row("Call mom")
        self.assertRegex(row.name, r"\ACall mom, Due \w{3} \d+, \d{4} at 9:00 AM\Z")
        (task,) = self.quillo.tasks()
        self.assertEqual((task["title"], task["isDone"]), ("Call mom", False))
        self.assertTrue(popover.has("label", "1 active"))

    def test_the_field_is_empty_at_once_and_ready_for_the_next(self):
        popover = self.open()
        self.input.type("milk\nbread\neggs\n")
        self.eventually(popover.rows, ["eggs", "bread", "milk"])
        self.assertEqual(popover.entry.text, "")
        self.assertIn("focused", popover.entry.states)
        self.assertEqual(self.quillo.titles(), ["eggs", "bread", "milk"])

    def test_blanks_add_nothing_and_stay(self):
        popover = self.open()
        self.input.type("\n   \n")
        self.eventually(lambda: popover.entry.text, "   ")
        self.input.type("milk  \n")
        self.eventually(popover.rows, ["milk"])
        self.assertEqual(self.quillo.titles(), ["milk"])

    def test_what_the_command_adds_is_there_at_once(self):
        popover = self.open()
        self.add("from outside")
        self.eventually(popover.rows, ["from outside"])
        self.done("delete", "1")
        self.eventually(popover.rows, [])
        popover.find("label", EMPTY)

    def test_what_was_typed_waits_for_the_next_time(self):
        popover = self.open()
        self.input.type("half a th")
        self.eventually(lambda: popover.entry.text, "half a th")
        self.input.key("Escape")
        self.eventually(self.program.has_popover, False)
        self.assertEqual(self.program.open_popover().entry.text, "half a th")


class Done(PopoverTest):
    def setUp(self):
        super().setUp()
        self.add("one", "two", "three")
        self.done("done", "2")
        self.open()

    def test_done_tasks_are_shown_on_request(self):
        popover = self.popover
        self.assertEqual(popover.rows(), ["three", "one"])
        for label in ("2 active", "1 done"):
            self.assertTrue(popover.has("label", label), label)
        popover.click("push button", SHOW_DONE)
        self.eventually(popover.rows, ["three", "one", "Completed task: two"])
        popover.click("push button", HIDE_DONE)
        self.eventually(popover.rows, ["three", "one"])
        popover.click("push button", SHOW_DONE)
        popover.click("push button", "Hide done")
        self.eventually(popover.rows, ["three", "one"])

    def test_a_done_task_is_taken_back(self):
        self.popover.click("push button", SHOW_DONE)
        self.input.click(self.popover.checkbox("two").centre)
        self.eventually(lambda: self.popover.rows(), ["three", "two", "one"])
        self.assertEqual(self.active_titles(), ["three", "two", "one"])

    def test_clear_completed(self):
        self.popover.open_menu()
        self.popover.choose("Clear Completed")
        self.eventually(self.quillo.titles, ["three", "one"])
        self.eventually(lambda: self.popover.has("push button", SHOW_DONE), False)

    def test_all_clear(self):
        self.done("done", "1")
        self.done("done", "3")
        self.popover.find("label", EMPTY)
        self.popover.find(name=MASCOT)


class Options(PopoverTest):
    def test_the_items_in_their_order(self):
        self.assertEqual(self.open().open_menu(), OPTIONS)

    def test_without_statistics_there_is_no_window_for_them(self):
        self.quillo.put(STATISTICS_SETTING, "boolean", 0)
        self.assertEqual(self.open().open_menu(), [item for item in OPTIONS if item != "Statistics…"])

    def test_quick_add(self):
        self.open().open_menu()
        self.popover.choose(OPTIONS[0])
        self.program.quick_add()
        self.eventually(self.program.has_popover, False)

    def test_quit(self):
        self.open()
        self.input.type("last words\n")
        self.popover.row("last words")
        self.popover.open_menu()
        self.popover.choose("Quit Quillo")
        self.assertEqual(self.program.wait(), 0, self.program.errors)
        self.assertEqual(self.quillo.titles(), ["last words"])

    def test_escape_closes_the_menu_first_then_the_popover(self):
        self.open().open_menu()
        self.input.key("Escape")
        self.eventually(lambda: self.popover.has("menu item"), False)
        self.assertTrue(self.program.has_popover())
        self.input.key("Escape")
        self.eventually(self.program.has_popover, False)

    def test_by_the_keyboard(self):
        self.open()
        self.focus("push button", MORE)
        self.input.key("Return")
        self.assertEqual(self.popover.menu_items(), OPTIONS)
        self.input.key("Down")
        self.input.key("Up")
        self.input.key("Return")
        self.program.quick_add()

    def focus(self, role, name):
        """Goes there with the tabulator."""
        for _ in range(20):
            if "focused" in self.popover.find(role, name).states:
                return
            self.input.key("shift+Tab")
        self.fail(f"{name} is not reached")


class ComingAndGoing(BesideATerminal, PopoverTest):
    def test_escape_closes_it(self):
        self.open()
        self.input.key("Escape")
        self.eventually(self.program.has_popover, False)

    def test_a_click_elsewhere_closes_it(self):
        terminal = self.start_terminal()
        self.open()
        self.input.click(terminal.window.centre)
        self.eventually(self.program.has_popover, False)
        self.assert_has_the_keyboard(terminal)

    def test_escape_gives_the_keyboard_back(self):
        terminal = self.start_terminal()
        self.open()
        self.input.key("Escape")
        self.eventually(self.program.has_popover, False)
        self.assert_has_the_keyboard(terminal)

    def test_the_icon_gives_the_keyboard_back(self):
        terminal = self.start_terminal()
        self.open()
        self.input.click(self.desktop.status_icon())
        self.eventually(self.program.has_popover, False)
        self.assert_has_the_keyboard(terminal)

    def test_a_window_that_has_gone_meanwhile_gets_no_keyboard(self):
        terminal = self.start_terminal()
        self.open()
        terminal.process.stop()
        self.input.type("milk\n")
        self.popover.row("milk")
        self.input.key("Escape")
        self.eventually(self.program.has_popover, False)
        self.open_again()

    def test_a_keyboard_that_was_taken_at_once_and_given_to_nobody_comes_back(self):
        self.open()
        self.input.key("Escape")
        self.eventually(self.program.has_popover, False)
        self.input.click(self.desktop.status_icon())
        self.eventually(self.program.has_popover, True)
        self.desktop.screen.give_keyboard_to_nobody()
        self.eventually(self.program.is_active, True)
        self.input.type("milk\n")
        self.popover.row("milk")

    def test_another_workspace_is_not_covered(self):
        self.start_terminal()
        self.open()
        self.desktop.screen.switch_to_workspace(1)
        self.addCleanup(self.desktop.screen.switch_to_workspace, 0)
        self.eventually(self.program.has_popover, False)

    def test_the_window_manager_is_not_asked(self):
        self.assertFalse(self.open().window.is_managed)

    def test_a_window_manager_that_may_lose_the_keyboard_is_asked(self):
        self.desktop.screen.rename_window_manager("Unheard-of")
        self.addCleanup(self.desktop.screen.rename_window_manager, "Openbox")
        terminal = self.start_terminal()
        self.assertTrue(self.open().window.is_managed)
        self.input.type("milk\n")
        self.popover.row("milk")
        self.input.key("Escape")
        self.eventually(self.program.has_popover, False)
        self.assert_has_the_keyboard(terminal)
        self.open_again()

    def test_a_second_start_opens_it_and_ends(self):
        self.program = self.start()
        second = DesktopProgram(self.quillo.folder, self.program.environment, arguments=("--show", "open"))
        self.addCleanup(second.kill)
        self.assertEqual(second.wait(), 0, second.errors)
        self.program.popover()

    def test_the_command_opens_it(self):
        self.program = self.start()
        self.done("open")
        self.program.popover()
        self.done("open")
        self.program.popover()

    def test_the_field_has_the_keyboard_every_time(self):
        self.program = self.start()
        for number in range(3):
            popover = self.program.open_popover()
            self.input.type(f"task {number}\n")
            popover.row(f"task {number}")
            self.input.key("Escape")
            self.eventually(self.program.has_popover, False)

    def open_again(self):
        """It has the keyboard then."""
        popover = self.program.open_popover()
        self.input.type("bread\n")
        popover.row("bread")

    def test_all_is_there_after_a_restart(self):
        self.open()
        self.input.type("milk\nCall mom tomorrow at 9am\n")
        self.popover.row("Call mom")
        before = self.popover.rows()
        self.assert_ends_well(self.program)
        self.eventually(self.desktop.status_icons, None)
        self.assertEqual(self.open().rows(), before)


class KeyboardAlone(PopoverTest):
    def setUp(self):
        super().setUp()
        self.add("three", "two", "one")
        self.open()
        self.input.key("Down")
        self.eventually(self.focused, "one")

    def focused(self):
        """The name of the row that has the keyboard."""
        rows = [node.name for node in self.popover.node.find_all("list item") if "focused" in node.states]
        return rows[0] if rows else None

    def test_arrows_choose(self):
        self.input.key("Down")
        self.eventually(self.focused, "two")
        self.input.key("Down")
        self.input.key("Down")
        self.eventually(self.focused, "three")
        self.input.key("Up")
        self.eventually(self.focused, "two")

    def test_up_from_the_first_goes_back_to_the_field(self):
        self.input.key("Up")
        self.eventually(lambda: "focused" in self.popover.entry.states, True)

    def test_space_ticks(self):
        self.input.key("Down")
        self.input.key("space")
        self.eventually(self.popover.rows, ["one", "three"])
        self.assertEqual(self.active_titles(), ["one", "three"])

    def test_return_edits(self):
        self.input.key("Return")
        self.eventually(lambda: self.popover.names("text"), [NEW_TASK, "Edit"])
        self.input.key("ctrl+a")
        self.input.type("changed\n")
        self.eventually(self.popover.rows, ["changed", "two", "three"])
        self.assertEqual(self.quillo.titles(), ["changed", "two", "three"])

    def test_delete_deletes(self):
        self.input.key("Down")
        self.input.key("Delete")
        self.eventually(self.popover.rows, ["one", "three"])
        self.eventually(self.focused, "three")
        self.assertEqual(self.quillo.titles(), ["one", "three"])

    def test_the_menu_key_opens_the_menu(self):
        self.input.key("Menu")
        self.assertEqual(self.popover.menu_items(), ["Mark complete", "Edit", "Delete"])
        # The keyboard is on the first item, as the keyboard has opened it.
        self.input.key("Return")
        self.eventually(self.quillo.titles, ["one", "two", "three"])
        self.eventually(self.active_titles, ["two", "three"])

    def test_the_tabulator_reaches_everything_and_comes_round(self):
        self.done("done", "3")
        reached = []
        for _ in range(30):
            self.input.key("Tab")
            reached.append(self.settled_focus())
            if reached[0] in reached[1:]:
                break
        names = {name for name, _ in reached}
        for name in (NEW_TASK, MORE, SHOW_DONE, "Set reminder for one", "Delete one", "one"):
            self.assertIn(name, names)

    def settled_focus(self):
        """(name, role) of what has the keyboard."""

        def focused():
            return [(node.name, node.role) for node in self.popover.node.walk() if "focused" in node.states]

        before = wait_until(focused, "something has the keyboard", WAIT_SECONDS)
        return before[-1]


class LongLists(PopoverTest):
    def put(self, count):
        self.quillo.put_items(*(stored_task(number, f"Task {number}") for number in range(count)))

    def test_a_thousand_tasks(self):
        self.put(1000)
        popover = self.open()
        self.assertTrue(popover.has("label", "1,000 active"))
        self.assertEqual(popover.rows()[0], "Task 0")
        self.input.key("Down")
        self.input.key("End")
        popover.row("Task 999")
        self.input.key("Home")
        popover.row("Task 0")

    def test_a_hundred_thousand_tasks(self):
        self.put(100_000)
        popover = self.open()
        self.assertTrue(popover.has("label", "100,000 active"))
        self.input.click(popover.checkbox("Task 0").centre)
        self.eventually(lambda: popover.rows()[0], "Task 1")
        self.input.key("Down")
        self.input.key("End")
        popover.row("Task 99999")
        self.input.key("Home")
        self.input.click(popover.entry.centre)
        self.eventually(lambda: "focused" in popover.entry.states, True)
        self.input.type("one more\n")
        popover.row("one more")
        self.assertTrue(popover.has("label", "100,000 active"))


if __name__ == "__main__":
    unittest.main()
