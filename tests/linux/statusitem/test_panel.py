"""The status item as panels meet it on the session bus: panels of the test's own, without a screen."""

import struct
import time
import unittest

from gi.repository import Gio, GLib

from status_item_program import (
    FACE,
    ITEM,
    MENU_INTERFACE,
    PROPERTIES,
    QUIET_SECONDS,
    StatusItemTest,
    serve_for,
    until,
)

MENU = [
    {"title": "Open_it & see", "shortcut": "Ctrl+Super+O"},
    None,
    {"title": "Later…", "enabled": False},
    {"title": "Quit", "shortcut": "Ctrl+Q"},
]


class ItemTest(StatusItemTest):
    """With a bus, a panel, and an item in it."""

    bar_names = ()

    def setUp(self):
        super().setUp()
        self.start_bus()
        self.panel = self.start_panel(names=self.bar_names)
        self.program = self.start_program()
        self.item = self.panel.item()

    def property(self, name):
        parameters = GLib.Variant("(ss)", (ITEM[1], name))
        return self.bus.call(self.item, ITEM[0], PROPERTIES, "Get", parameters)[0]

    def all_properties(self):
        return self.bus.call(self.item, ITEM[0], PROPERTIES, "GetAll", GLib.Variant("(s)", (ITEM[1],)))[0]

    def call(self, method, signature="()", *arguments):
        return self.bus.call(self.item, *ITEM, method, GLib.Variant(signature, arguments))

    def menu(self, method, signature="()", *arguments):
        path = self.property("Menu")
        return self.bus.call(self.item, path, MENU_INTERFACE, method, GLib.Variant(signature, arguments))

    def signals_of(self, interface):
        """A list that grows with what the item announces."""
        signals = []

        def keep(_connection, _sender, _path, _interface, name, parameters):
            signals.append((name, *parameters.unpack()))

        subscription = self.bus.connection.signal_subscribe(
            None, interface, None, None, None, Gio.DBusSignalFlags.NONE, keep
        )
        self.addCleanup(self.bus.connection.signal_unsubscribe, subscription)
        # It holds once the bus has answered something asked later.
        self.bus.has("org.freedesktop.DBus")
        return signals

    def pictures(self):
        """Width of the picture -> rows of pixels (alpha, red, green, blue)."""
        pictures = {}
        for width, height, pixels in self.property("IconPixmap"):
            self.assertEqual(len(pixels), width * height * 4)
            flat = list(struct.iter_unpack("4B", bytes(pixels)))
            pictures[width] = [flat[row * width : (row + 1) * width] for row in range(height)]
        return pictures

    def assertRefused(self, call, *arguments):
        with self.assertRaises(GLib.Error) as error:
            call(*arguments)
        self.assertEqual(
            Gio.DBusError.get_remote_error(error.exception), "org.freedesktop.DBus.Error.InvalidArgs"
        )


class Properties(ItemTest):
    def test_everything_a_panel_reads(self):
        properties = self.all_properties()
        properties.pop("IconPixmap")
        self.assertEqual(
            properties,
            {
                "Category": "ApplicationStatus",
                "Id": "org.quillo.Quillo",
                "Title": "List",
                "Status": "Active",
                "WindowId": 0,
                "ItemIsMenu": False,
                "Menu": "/StatusNotifierItem/Menu",
                "IconThemePath": "",
                "IconName": "",
                "IconAccessibleDesc": "Opens the list",
                "OverlayIconName": "",
                "OverlayIconPixmap": [],
                "AttentionIconName": "",
                "AttentionIconPixmap": [],
                "AttentionMovieName": "",
                "ToolTip": ("", [], "A list & more", ""),
                "XAyatanaLabel": "",
                "XAyatanaLabelGuide": "99",
            },
        )

    def test_is_described_to_those_who_ask_for_its_methods_first(self):
        (xml,) = self.bus.call(self.item, ITEM[0], "org.freedesktop.DBus.Introspectable", "Introspect")
        interface = Gio.DBusNodeInfo.new_for_xml(xml).lookup_interface(ITEM[1])
        self.assertEqual(
            {method.name: "".join(argument.signature for argument in method.in_args) for method in interface.methods},
            {
                "Activate": "ii",
                "SecondaryActivate": "ii",
                "XAyatanaSecondaryActivate": "u",
                "ContextMenu": "ii",
                "Scroll": "is",
                "ProvideXdgActivationToken": "s",
            },
        )
        types = {entry.name: entry.signature for entry in interface.properties}
        self.assertEqual(types["IconPixmap"], "a(iiay)")
        self.assertEqual(types["ToolTip"], "(sa(iiay)ss)")
        self.assertEqual(types["Menu"], "o")
        self.assertEqual(
            {signal.name for signal in interface.signals},
            {"NewTitle", "NewIcon", "NewToolTip", "XAyatanaNewLabel"},
        )

    def test_pictures_are_square_and_of_several_sizes(self):
        pictures = self.pictures()
        self.assertLessEqual({22, 24, 44}, set(pictures))
        for width, rows in pictures.items():
            self.assertEqual(len(rows), width)
            self.assertEqual(rows[0][0], (0, 0, 0, 0), "the corner of the disc")
            alpha, red, green, blue = rows[width // 2][width // 2]
            self.assertEqual(alpha, 255)
            self.assertGreater(green, red)

    def test_the_count_is_label_badge_and_second_line(self):
        signals = self.signals_of(ITEM[1])
        plain = self.pictures()
        self.program.tell(do="title", text=" 3")
        until(lambda: len(signals) == 3, "the count was announced")
        self.assertCountEqual(signals, [("NewIcon",), ("NewToolTip",), ("XAyatanaNewLabel", "3", "99")])
        self.assertEqual(self.property("XAyatanaLabel"), "3")
        self.assertEqual(self.property("ToolTip"), ("", [], "A list & more", "3"))
        with_badge = self.pictures()
        for width, rows in with_badge.items():
            self.assertEqual(rows[width // 4][width // 4], plain[width][width // 4][width // 4], "the symbol stays")
            alpha, red, green, _ = rows[-2][width * 7 // 10]
            self.assertEqual(alpha, 255)
            self.assertGreater(red, green, "the badge is there")

        self.program.tell(do="title", text="")
        until(lambda: len(signals) == 6, "the count is gone")
        self.assertEqual(self.property("XAyatanaLabel"), "")
        self.assertEqual(self.property("ToolTip"), ("", [], "A list & more", ""))
        self.assertEqual(self.pictures(), plain)

    def test_announces_only_what_is_new(self):
        self.program.tell(do="title", text=" 100")
        until(lambda: self.property("XAyatanaLabel") == "100", "the count is there")
        signals = self.signals_of(ITEM[1])
        self.program.tell(do="title", text=" 100")
        self.program.tell(**FACE)
        self.program.tell(do="title", text=" 101")
        until(lambda: self.property("XAyatanaLabel") == "101", "the count is there")
        serve_for(QUIET_SECONDS)
        self.assertCountEqual(signals, [("NewToolTip",), ("XAyatanaNewLabel", "101", "99")])
        self.program.tell(**{**FACE, "accessibilityLabel": "Another"})
        until(lambda: ("NewTitle",) in signals, "the new title was announced")
        self.assertNotIn(("NewIcon",), signals)


class Clicks(ItemTest):
    def assertClick(self, **expected):
        click = {"event": "click", "button": "left", "control": False, "place": None, "token": "", **expected}
        self.assertEqual(self.program.next("click"), click)

    def test_left_middle_and_right_with_their_places(self):
        self.call("Activate", "(ii)", 300, 7)
        self.assertClick(place=[300, 7])
        self.call("ContextMenu", "(ii)", 301, 8)
        self.assertClick(button="right", place=[301, 8])
        self.call("SecondaryActivate", "(ii)", 302, 9)
        self.assertClick(place=[302, 9])
        self.call("XAyatanaSecondaryActivate", "(u)", 1234)
        self.assertClick()

    def test_places_that_are_none(self):
        for x, y in ((0, 0), (-5, 7), (2**31 - 1, 10), (-(2**31), -(2**31))):
            self.call("Activate", "(ii)", x, y)
            self.assertClick()

    def test_a_token_is_for_the_next_click_alone(self):
        self.call("ProvideXdgActivationToken", "(s)", "earlier")
        self.call("ProvideXdgActivationToken", "(s)", "token-7")
        self.call("Activate", "(ii)", 1, 1)
        self.assertClick(place=[1, 1], token="token-7")
        self.call("Activate", "(ii)", 1, 1)
        self.assertClick(place=[1, 1])

    def test_a_token_of_unheard_length_is_dropped(self):
        self.call("ProvideXdgActivationToken", "(s)", "token-8")
        self.call("ProvideXdgActivationToken", "(s)", "x" * 1_000_000)
        self.call("Activate", "(ii)", 1, 1)
        self.assertClick(place=[1, 1])

    def test_scrolling_does_nothing(self):
        self.call("Scroll", "(is)", -120, "vertical")
        serve_for(QUIET_SECONDS)
        self.assertEqual(self.program.events("click"), [])


class Menu(ItemTest):
    def setUp(self):
        super().setUp()
        self.program.tell(do="menu", lines=MENU)
        self.program.next("menu asked for")
        self.layout()  # Answered after the menu has been announced.

    def layout(self, parent=0, depth=-1, names=()):
        return self.menu("GetLayout", "(iias)", parent, depth, names)

    def lines(self):
        """The numbers of the lines, from above."""
        return [line[0] for line in self.layout()[1][2]]

    def test_the_layout(self):
        revision, (root, properties, lines) = self.layout()
        self.assertGreater(revision, 0)
        self.assertEqual((root, properties), (0, {"children-display": "submenu"}))
        numbers = [line[0] for line in lines]
        self.assertEqual(len(set(numbers) | {0}), 5, "each has a number of its own")
        self.assertEqual(
            [line[1] for line in lines],
            [
                {"label": "Open__it & see", "enabled": True, "shortcut": [["Control", "Super", "O"]]},
                {"type": "separator"},
                {"label": "Later…", "enabled": False},
                {"label": "Quit", "enabled": True, "shortcut": [["Control", "Q"]]},
            ],
        )
        self.assertEqual([line[2] for line in lines], [[], [], [], []])
        properties = self.bus.call(
            self.item, self.property("Menu"), PROPERTIES, "GetAll", GLib.Variant("(s)", (MENU_INTERFACE,))
        )[0]
        self.assertEqual(
            properties, {"Version": 3, "Status": "normal", "TextDirection": "ltr", "IconThemePath": []}
        )

    def test_parts_of_the_layout(self):
        self.assertEqual(self.layout(depth=0)[1], (0, {"children-display": "submenu"}, []))
        whole = self.layout()
        for depth in (1, 2, 2**31 - 1, -(2**31)):
            self.assertEqual(self.layout(depth=depth), whole)
        first, *_, last = self.lines()
        self.assertEqual(self.layout(last)[1], whole[1][2][3])
        labels = self.layout(names=["label", "no-such-property"])[1]
        self.assertEqual(labels[1], {})
        self.assertEqual(
            [line[1] for line in labels[2]],
            [{"label": "Open__it & see"}, {}, {"label": "Later…"}, {"label": "Quit"}],
        )
        group = self.menu("GetGroupProperties", "(aias)", [last, first, last, -4], ["label"])[0]
        self.assertEqual(group, [(first, {"label": "Open__it & see"}), (last, {"label": "Quit"})])
        everything = self.menu("GetGroupProperties", "(aias)", [], [])[0]
        self.assertEqual([line for line, _ in everything], [0, *self.lines()])
        self.assertEqual(self.menu("GetProperty", "(is)", last, "label"), ("Quit",))

    def test_choosing_a_line(self):
        first, separator, disabled, last = self.lines()
        nothing = GLib.Variant("i", 0)
        self.menu("Event", "(isvu)", first, "clicked", nothing, 0)
        self.assertEqual(self.program.next("chosen")["title"], "Open_it & see")
        (unknown,) = self.menu("EventGroup", "(a(isvu))", [(last, "clicked", nothing, 0), (999, "clicked", nothing, 0)])
        self.assertEqual(unknown, [999])
        self.assertEqual(self.program.next("chosen")["title"], "Quit")
        for line, event in (
            *((0, "opened"), (first, "hovered"), (first, "")),
            *((separator, "clicked"), (disabled, "clicked"), (0, "clicked")),
        ):
            self.menu("Event", "(isvu)", line, event, nothing, 0)
        serve_for(QUIET_SECONDS)
        self.assertEqual(self.program.events("chosen"), [])

    def test_is_asked_for_afresh_each_time_it_is_about_to_show(self):
        signals = self.signals_of(MENU_INTERFACE)
        revision, _ = self.layout()
        old = self.lines()
        self.assertEqual(self.menu("AboutToShow", "(i)", 0), (False,))
        self.program.next("menu asked for")
        self.assertEqual(self.lines(), old)
        self.assertEqual(signals, [])

        self.program.tell(do="menu", lines=[{"title": "Another"}])
        until(lambda: signals, "the new menu was announced")
        self.assertEqual(signals, [("LayoutUpdated", revision + 1, 0)])
        self.assertEqual(self.layout()[0], revision + 1)
        # What a panel still shows of the earlier menu does not choose in the new one.
        self.assertEqual(set(old) & set(self.lines()), set())
        self.assertRefused(self.menu, "Event", "(isvu)", old[0], "clicked", GLib.Variant("i", 0), 0)
        self.program.next("menu asked for")
        self.assertEqual(self.menu("AboutToShowGroup", "(ai)", [0, 77]), ([], [77]))
        self.program.next("menu asked for")

    def test_foreign_numbers_and_lists(self):
        nothing = GLib.Variant("i", 0)
        for number in (-1, 999, 2**31 - 1, -(2**31)):
            self.assertRefused(self.layout, number)
            self.assertRefused(self.menu, "GetProperty", "(is)", number, "label")
            self.assertRefused(self.menu, "Event", "(isvu)", number, "clicked", nothing, 0)
            self.assertRefused(self.menu, "AboutToShow", "(i)", number)
        self.assertRefused(self.menu, "GetProperty", "(is)", 0, "no-such-property")
        self.assertRefused(self.menu, "EventGroup", "(a(isvu))", [(998, "clicked", nothing, 0)])
        first = self.lines()[0]
        many = [first] * 100_000
        self.assertRefused(self.menu, "GetGroupProperties", "(aias)", many, [])
        self.assertRefused(self.menu, "GetGroupProperties", "(aias)", [], ["label"] * 100_000)
        self.assertRefused(self.layout, 0, -1, ["x" * 1000] * 300)
        self.assertRefused(self.menu, "AboutToShowGroup", "(ai)", many)
        self.assertRefused(self.menu, "EventGroup", "(a(isvu))", [(first, "clicked", nothing, 0)] * 1000)
        deep = nothing
        for _ in range(30):
            deep = GLib.Variant("v", deep)
        self.menu("Event", "(isvu)", first, "hovered", deep, 0)
        serve_for(QUIET_SECONDS)
        self.assertEqual(self.program.events("chosen"), [])
        self.assertEqual(self.program.end(), 0)


class LabelledBar(ItemTest):
    """One that shows the text beside the icon."""

    bar_names = ("org.ayatana.indicator.application",)

    def test_gets_the_icon_by_its_name_and_no_badge(self):
        self.assertEqual(self.property("IconName"), "org.quillo.Quillo-symbolic")
        plain = self.pictures()
        signals = self.signals_of(ITEM[1])
        self.program.tell(do="title", text=" 3")
        until(lambda: self.property("XAyatanaLabel") == "3", "the count is there")
        self.assertEqual(self.pictures(), plain)
        serve_for(QUIET_SECONDS)
        self.assertCountEqual(signals, [("NewToolTip",), ("XAyatanaNewLabel", "3", "99")])

    def test_its_successor_may_be_another(self):
        signals = self.signals_of(ITEM[1])
        self.panel.stop()
        panel = self.start_panel()
        self.assertEqual(panel.item(), self.item)
        self.assertEqual(self.property("IconName"), "")
        self.assertIn(("NewIcon",), signals)


class PanelsComeAndGo(StatusItemTest):
    def test_one_that_is_late(self):
        self.start_bus()
        program = self.start_program()
        line = program.next("log")["line"]
        self.assertIn("no status bar", line)
        panel = self.start_panel()
        panel.item()
        serve_for(QUIET_SECONDS)
        self.assertEqual(len(panel.items), 1)

    def test_one_that_is_restarted(self):
        self.start_bus()
        panel = self.start_panel()
        program = self.start_program()
        item = panel.item()
        for _ in range(3):
            panel.stop()
            panel = self.start_panel()
            self.assertEqual(panel.item(), item)
            serve_for(QUIET_SECONDS)
            self.assertEqual(panel.items, [item])
        self.assertEqual(program.log(), [])

    def test_one_that_takes_no_items(self):
        self.start_bus()
        panel = self.start_panel(refuses=True)
        program = self.start_program()
        self.assertIn("no room", program.next("log")["line"])
        self.assertIn("no status bar", program.next("log")["line"])
        self.assertEqual(len(panel.items), 1)

    def test_none_at_all(self):
        self.start_bus()
        program = self.start_program()
        self.assertIn("no status bar", program.next("log")["line"])
        program.tell(do="title", text=" 3")
        program.tell(do="show menu", lines=MENU)
        serve_for(QUIET_SECONDS)
        self.assertEqual(program.log(), [])
        self.assertEqual(program.end(), 0)

    def test_the_item_leaves_with_the_program(self):
        self.start_bus()
        panel = self.start_panel()
        program = self.start_program()
        item = panel.item()
        self.assertTrue(self.bus.has(item))
        self.assertEqual(program.end(), 0)
        until(lambda: not self.bus.has(item), "its connection is closed")


class BusTrouble(StatusItemTest):
    def test_no_bus(self):
        program = self.start_program()
        self.assertIn("no session bus", program.next("log")["line"])
        self.assertIn("no status bar", program.next("log")["line"])
        program.tell(do="title", text=" 3")
        program.tell(do="menu", lines=MENU)
        program.next("menu asked for")
        self.assertEqual(program.end(), 0)

    def test_a_bus_that_dies(self):
        self.start_bus()
        panel = self.start_panel()
        program = self.start_program()
        panel.item()
        self.bus.die()
        self.assertIn("the session bus is gone", program.next("log")["line"])
        program.tell(do="title", text=" 3")
        program.tell(do="menu", lines=MENU)
        program.next("menu asked for")
        self.assertIn("no status bar", program.next("log")["line"])
        self.assertEqual(program.end(), 0)

    def test_a_bus_that_dies_while_the_item_makes_itself_known(self):
        for delay in (0.0, 0.01, 0.03):
            with self.subTest(delay=delay):
                self.folder = self.folder / "again"
                self.folder.mkdir()
                self.start_bus()
                self.start_panel()
                program = self.start_program()
                time.sleep(delay)
                self.bus.die()
                program.tell(do="title", text=" 3")
                program.next("log")
                self.assertEqual(program.end(), 0)


if __name__ == "__main__":
    unittest.main()
