"""A task's row: ticked, edited, given a reminder and deleted with the pointer."""

import unittest
from datetime import datetime, timedelta
from zoneinfo import ZoneInfo

from pictures import closest
from quillo_command import stored_task, unix_seconds
from quillo_on_desktop import NEW_TASK, SHOW_DONE, DesktopTest

ZONE = ZoneInfo("Europe/Berlin")  # that of the programs
EDITOR = "Edit"
HEADING = "Remind me"
CHOICES = ["In 1 hour", "In 3 hours", "Tonight", "Tomorrow 9 AM"]

DONE_GREEN = (79, 186, 128)
TODAY_ORANGE = (242, 163, 77)
OVERDUE_RED = (232, 97, 89)
# Of each of red, green and blue, in 255: rounding, and no more.
SAME_COLOUR = 2


def now():
    return datetime.now(ZONE)


class RowTest(DesktopTest):
    def open(self):
        self.program = self.start()
        self.popover = self.program.open_popover()
        return self.popover

    def double_click(self, title):
        """On the title, which stands at the beginning of the row, behind the circle."""
        left, top, width, height = self.popover.row(title).area
        box = self.popover.checkbox(title).area
        self.input.double_click((box[0] + box[2] + 16, box[1] + box[3] // 2))

    def due(self, title):
        """When the task is due, or None."""
        (task,) = [task for task in self.quillo.tasks() if task["title"] == title]
        due = task.get("dueDate")
        return due and datetime.fromtimestamp(unix_seconds(due), ZONE)


class Tick(RowTest):
    def test_a_click_on_the_circle_completes(self):
        self.add("milk", "bread")
        popover = self.open()
        box = popover.checkbox("milk")
        self.assertNotIn("checked", box.states)
        self.input.click(box.centre)
        self.eventually(popover.rows, ["bread"])
        self.assertEqual(self.active_titles(), ["bread"])
        popover.click("push button", SHOW_DONE)
        self.assertIn("checked", popover.checkbox("milk").states)
        self.input.click(popover.checkbox("milk").centre)
        self.eventually(lambda: sorted(self.active_titles()), ["bread", "milk"])

    def test_the_circle_measures_18(self):
        self.add("milk")
        self.assertEqual(self.open().checkbox("milk").area[2:], (18, 18))

    def test_an_assistive_program_ticks(self):
        self.add("milk")
        popover = self.open()
        popover.checkbox("milk").do("Press")
        self.eventually(self.active_titles, [])


class Title(RowTest):
    def setUp(self):
        super().setUp()
        self.add("milk", "bread")
        self.open()
        self.double_click("milk")
        self.eventually(lambda: self.popover.names("text"), [NEW_TASK, EDITOR])
        self.editor = self.popover.find("text", EDITOR)
        self.eventually(lambda: self.editor.text, "milk")
        self.assertIn("focused", self.editor.states)

    def type_instead(self, text):
        self.input.key("ctrl+a")
        self.input.type(text)

    def assert_editing_has_ended(self):
        self.eventually(lambda: self.popover.names("text"), [NEW_TASK])

    def test_return_keeps_what_was_typed_trimmed(self):
        self.type_instead("  oat milk \n")
        self.assert_editing_has_ended()
        self.eventually(self.popover.rows, ["bread", "oat milk"])
        self.assertEqual(self.quillo.titles(), ["bread", "oat milk"])

    def test_words_for_a_date_stay_words(self):
        self.type_instead("milk tomorrow at 9am\n")
        self.eventually(self.popover.rows, ["bread", "milk tomorrow at 9am"])
        self.assertIsNone(self.due("milk tomorrow at 9am"))

    def test_blanks_change_nothing(self):
        self.type_instead("   \n")
        self.assert_editing_has_ended()
        self.assertEqual(self.popover.rows(), ["bread", "milk"])
        self.assertEqual(self.quillo.titles(), ["bread", "milk"])

    def test_escape_drops_what_was_typed_and_only_that(self):
        self.type_instead("nonsense")
        self.input.key("Escape")
        self.assert_editing_has_ended()
        self.assertTrue(self.program.has_popover())
        self.assertEqual(self.popover.rows(), ["bread", "milk"])
        self.assertEqual(self.quillo.titles(), ["bread", "milk"])


class Hover(RowTest):
    def test_buttons_come_with_the_pointer_and_go_with_it(self):
        self.add("milk", "bread")
        popover = self.open()
        self.assertNotIn("Delete milk", popover.names("push button"))
        popover.hover("milk")
        popover.find("push button", "Set reminder for milk")
        popover.find("push button", "Delete milk")
        self.assertNotIn("Delete bread", popover.names("push button"))
        self.input.move(popover.entry.centre)
        self.eventually(lambda: "Delete milk" in popover.names("push button"), False)

    def test_delete(self):
        self.add("milk", "bread")
        popover = self.open()
        popover.hover("milk")
        popover.click("push button", "Delete milk")
        self.eventually(popover.rows, ["bread"])
        self.assertEqual(self.quillo.titles(), ["bread"])


class ContextMenu(RowTest):
    def open_menu(self, title):
        self.input.right_click(self.popover.row(title).centre)
        return self.popover.menu_items()

    def test_of_an_active_task(self):
        self.add("milk")
        self.open()
        self.assertEqual(self.open_menu("milk"), ["Mark complete", "Edit", "Delete"])
        self.popover.choose("Mark complete")
        self.eventually(self.active_titles, [])

    def test_of_a_done_task(self):
        self.add("milk")
        self.done("done", "1")
        self.open()
        self.popover.click("push button", SHOW_DONE)
        self.assertEqual(self.open_menu("milk"), ["Mark incomplete", "Edit", "Delete"])
        self.popover.choose("Mark incomplete")
        self.eventually(self.active_titles, ["milk"])

    def test_edit(self):
        self.add("milk")
        self.open()
        self.open_menu("milk")
        self.popover.choose("Edit")
        self.popover.find("text", EDITOR)
        self.input.key("ctrl+a")
        self.input.type("bread\n")
        self.eventually(self.quillo.titles, ["bread"])

    def test_delete(self):
        self.add("milk", "bread")
        self.open()
        self.open_menu("bread")
        self.popover.choose("Delete")
        self.eventually(self.quillo.titles, ["milk"])


class Reminder(RowTest):
    def open_reminder(self, title):
        self.open()
        self.popover.hover(title)
        self.popover.click("push button", f"Set reminder for {title}")
        self.popover.find("label", HEADING)

    def choose(self, button):
        self.popover.click("push button", button)
        self.eventually(lambda: self.popover.has("label", HEADING), False)

    def assert_about(self, moment, expected):
        self.assertLess(abs(moment - expected), timedelta(minutes=1))

    def test_what_it_offers(self):
        self.add("milk", "bread tomorrow at 9am")
        self.open_reminder("milk")
        buttons = self.popover.names("push button")
        for name in (*CHOICES, "Set"):
            self.assertIn(name, buttons)
        # Without a date there is nothing to clear.
        self.assertNotIn("Clear", buttons)
        for name in ("Date", "Time"):
            self.assertTrue(self.popover.has(name=name), name)
        self.input.key("Escape")
        self.eventually(lambda: self.popover.has("label", HEADING), False)
        self.popover.hover("bread")
        self.popover.click("push button", "Set reminder for bread")
        self.popover.find("push button", "Clear")

    def test_in_some_hours(self):
        for button, hours in (("In 1 hour", 1), ("In 3 hours", 3)):
            with self.subTest(button):
                self.add(button)
                if not hasattr(self, "program"):
                    self.open_reminder(button)
                else:
                    self.popover.hover(button)
                    self.popover.click("push button", f"Set reminder for {button}")
                expected = now() + timedelta(hours=hours)
                self.choose(button)
                self.eventually(lambda: self.due(button) is not None, True)
                self.assert_about(self.due(button), expected)

    def test_tonight_and_tomorrow(self):
        self.add("milk")
        self.open_reminder("milk")
        today = now()
        self.choose("Tonight")
        self.eventually(lambda: self.due("milk") is not None, True)
        tonight = today.replace(hour=20, minute=0, second=0, microsecond=0)
        self.assertEqual(self.due("milk"), tonight if tonight > today else tonight + timedelta(days=1))
        self.popover.hover("milk")
        self.popover.click("push button", "Set reminder for milk")
        self.choose("Tomorrow 9 AM")
        tomorrow = (today + timedelta(days=1)).replace(hour=9, minute=0, second=0, microsecond=0)
        self.eventually(lambda: self.due("milk"), tomorrow)

    def test_clear(self):
        self.add("milk tomorrow at 9am")
        self.assertIsNotNone(self.due("milk"))
        self.open_reminder("milk")
        self.choose("Clear")
        self.eventually(lambda: self.due("milk"), None)
        (task,) = self.quillo.tasks()
        self.assertNotIn("notificationID", task)

    def test_return_sets_what_the_pickers_show(self):
        self.add("milk tomorrow at 9am")
        due = self.due("milk")
        self.open_reminder("milk")
        # From the date, which has the keyboard at first, to the hours of the time.
        self.input.key("Up")
        self.input.key("Tab")
        self.input.key("Up")
        self.input.key("Return")
        self.eventually(lambda: self.popover.has("label", HEADING), False)
        self.eventually(lambda: self.due("milk") != due, True)
        moved = abs(self.due("milk") - due)
        self.assertIn(moved, (timedelta(hours=25), timedelta(hours=23)))

    def test_escape_closes_it_and_only_it(self):
        self.add("milk")
        self.open_reminder("milk")
        self.input.key("Escape")
        self.eventually(lambda: self.popover.has("label", HEADING), False)
        self.assertTrue(self.program.has_popover())
        self.assertIsNone(self.due("milk"))


class Colours(RowTest):
    def stored(self, title, due, done=False):
        moment = now().replace(microsecond=0)
        return stored_task(len(title), title, done=done, due=(moment + due).timestamp())

    def assert_shown(self, colour, title):
        picture = self.desktop.screen.picture_at_rest(self.popover.row(title).area)
        self.assertLessEqual(closest(picture, colour), SAME_COLOUR)

    def assert_not_shown(self, colour, title):
        picture = self.desktop.screen.picture_at_rest(self.popover.row(title).area)
        self.assertGreater(closest(picture, colour), SAME_COLOUR)

    def test_of_what_is_due(self):
        self.quillo.put_items(
            self.stored("overdue", -timedelta(days=30)),
            self.stored("in a month", timedelta(days=30)),
            self.stored("was overdue", -timedelta(days=30), done=True),
        )
        self.open()
        self.popover.click("push button", SHOW_DONE)
        self.popover.row("was overdue")
        self.input.move(self.popover.entry.centre)
        self.assert_shown(OVERDUE_RED, "overdue")
        self.assert_not_shown(OVERDUE_RED, "in a month")
        self.assert_not_shown(OVERDUE_RED, "was overdue")
        self.assert_shown(DONE_GREEN, "was overdue")
        self.assert_not_shown(DONE_GREEN, "overdue")

    def test_of_what_is_due_later_today(self):
        if (now() + timedelta(minutes=30)).date() != now().date():
            self.skipTest("today has too little left")
        self.quillo.put_items(self.stored("today", timedelta(minutes=20)))
        self.open()
        self.assert_shown(TODAY_ORANGE, "today")


class Titles(RowTest):
    LONG = "x" * 9_990
    STRANGE = {
        "line breaks": "first\nsecond\rthird\u2028fourth",
        "from right to left": "\u05e7\u05e0\u05d4 \u05d7\u05dc\u05d1 tomorrow",
        "pictures": "\U0001f95b\U0001f468\u200d\U0001f469\u200d\U0001f467 milk \U0001f1e9\U0001f1ea",
        "markup": "<b>bold</b> &amp; <img src='file:///etc/passwd'>",
        "controls": "a\u0001b\u202ec",
    }

    def test_strange_ones_take_one_line_and_lose_nothing(self):
        tasks = [stored_task(0, "plain"), stored_task(1, self.LONG)]
        tasks += [stored_task(number, title) for number, title in enumerate(self.STRANGE.values(), 2)]
        self.quillo.put_items(*tasks)
        popover = self.open()
        heights = {node.area[3] for node in popover.node.find_all("list item")}
        self.assertEqual(len(heights), 1, heights)
        self.assertEqual(self.quillo.titles(), [task["title"] for task in tasks])
        # A row that holds one can be worked with like any other.
        self.input.click(popover.checkbox("plain").centre)
        self.eventually(lambda: len(self.active_titles()), len(tasks) - 1)
        first = popover.node.find_all("list item")[0]
        self.input.click(first.find("check box").centre)
        self.eventually(lambda: len(self.active_titles()), len(tasks) - 2)
        self.assert_ends_well(self.program)


if __name__ == "__main__":
    unittest.main()
