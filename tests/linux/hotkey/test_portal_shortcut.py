"""The shortcut as the desktop's portal offers it, from a portal of the test's own on a private bus."""

import pathlib
import subprocess
import tempfile
import unittest

from gi.repository import Gio, GLib

from shortcut_printer import (
    COMMAND,
    NO_ERROR,
    SHIFT,
    STANDARD,
    TAKEN,
    UNAVAILABLE,
    ShortcutPrinter,
    until,
)

# Starts nothing by itself: what is on this bus, the test has put there.
BUS_CONFIGURATION = """
<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:path={folder}/bus</listen>
  <policy context="default">
    <allow send_destination="*"/>
    <allow receive_sender="*"/>
    <allow own="*"/>
  </policy>
</busconfig>
"""

SERVICE = "org.freedesktop.portal.Desktop"
PATH = "/org/freedesktop/portal/desktop"
REQUEST = "org.freedesktop.portal.Request"
SHORTCUTS = "org.freedesktop.portal.GlobalShortcuts"
SESSION = "org.freedesktop.portal.Session"
REGISTRY = """
  <interface name="org.freedesktop.host.portal.Registry">
    <method name="Register"><arg type="s" direction="in"/><arg type="a{sv}" direction="in"/></method>
  </interface>
"""
GLOBAL_SHORTCUTS = """
  <interface name="org.freedesktop.portal.GlobalShortcuts">
    <method name="CreateSession"><arg type="a{sv}" direction="in"/><arg type="o" direction="out"/></method>
    <method name="ListShortcuts"><arg type="o" direction="in"/><arg type="a{sv}" direction="in"/>
      <arg type="o" direction="out"/></method>
    <method name="BindShortcuts"><arg type="o" direction="in"/><arg type="a(sa{sv})" direction="in"/>
      <arg type="s" direction="in"/><arg type="a{sv}" direction="in"/><arg type="o" direction="out"/></method>
    <signal name="Activated"><arg type="o"/><arg type="s"/><arg type="t"/><arg type="a{sv}"/></signal>
  </interface>
"""
# As its version 2 is, with a dialog for shortcuts.
CONFIGURABLE_SHORTCUTS = GLOBAL_SHORTCUTS.replace(
    '<signal name="Activated">',
    """<method name="ConfigureShortcuts"><arg type="o" direction="in"/><arg type="s" direction="in"/>
      <arg type="a{sv}" direction="in"/></method>
    <property name="version" type="u" access="read"/>
    <signal name="ShortcutsChanged"><arg type="o"/><arg type="a(sa{sv})"/></signal>
    <signal name="Activated">""",
)
SESSION_OBJECT = """
<node>
  <interface name="org.freedesktop.portal.Session"><method name="Close"/></interface>
</node>
"""

DONE, CANCELLED, FAILED = 0, 1, 2
QUESTIONS = ["CreateSession", "ListShortcuts", "BindShortcuts"]
EVERYTHING = (REGISTRY, GLOBAL_SHORTCUTS)
DESCRIBED = {"description": "Quick Add…", "preferred_trigger": "CTRL+ALT+LOGO+t"}


class Bus:
    def __init__(self, folder):
        configuration = pathlib.Path(folder) / "bus.conf"
        configuration.write_text(BUS_CONFIGURATION.format(folder=folder))
        self.process = subprocess.Popen(
            ["dbus-daemon", f"--config-file={configuration}", "--nofork", "--nosyslog", "--print-address=1"],
            stdout=subprocess.PIPE,
            stderr=subprocess.DEVNULL,
        )
        self.address = self.process.stdout.readline().decode().strip()

    def connect(self):
        connection = Gio.DBusConnection.new_for_address_sync(
            self.address,
            Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION,
            None,
            None,
        )
        connection.set_exit_on_close(False)
        return connection

    def stop(self):
        self.process.kill()
        self.process.wait()
        self.process.stdout.close()


class Portal:
    """A portal whose answers the test gives, or that answers `codes` by itself. What it was asked stands in `asked`."""

    def __init__(self, bus, interfaces=EVERYTHING, codes=(DONE, DONE, DONE), listed=None, bound=None, foreseeable=True):
        """`listed` is what ListShortcuts results in; `bound` what BindShortcuts does, where that is not what was asked
        for."""
        self.codes = dict(zip(QUESTIONS, codes or ()))
        self.listed = listed or {}
        self.bound = bound
        self.foreseeable = foreseeable
        self.asked = []
        self.waiting = []
        self.sessions = {}
        self.connection = bus.connect()
        for interface in Gio.DBusNodeInfo.new_for_xml(f"<node>{''.join(interfaces)}</node>").interfaces:
            self.connection.register_object(PATH, interface, self._answer, lambda *_: GLib.Variant("u", 2), None)
        named = []
        Gio.bus_own_name_on_connection(
            self.connection, SERVICE, Gio.BusNameOwnerFlags.NONE, lambda *_: named.append(True), None
        )
        until(lambda: named, "the portal has its name")

    def methods(self):
        return [method for method, *_ in self.asked]

    def _answer(self, _connection, sender, _path, _interface, method, parameters, invocation):
        arguments = parameters.unpack()
        self.asked.append((method, *arguments))
        if method in ("Register", "ConfigureShortcuts"):
            invocation.return_value(None)
            return
        options = arguments[-1]
        ours = sender[1:].replace(".", "_")
        request = f"{PATH}/request/{ours if self.foreseeable else 'x'}/{options['handle_token']}"
        invocation.return_value(GLib.Variant("(o)", (request,)))
        results = {}
        if method == "CreateSession":
            session = f"{PATH}/session/{ours}/{options['session_handle_token']}"
            self._open_session(session)
            results["session_handle"] = GLib.Variant("s", session)
        elif method == "ListShortcuts":
            results = self.listed
        elif self.bound is not None:
            results = self.bound
        else:
            results["shortcuts"] = parameters.get_child_value(1)
        self.waiting.append((method, sender, request, results))
        if method in self.codes:
            self.respond(self.codes[method])

    def _open_session(self, session):
        description = Gio.DBusNodeInfo.new_for_xml(SESSION_OBJECT).interfaces[0]

        def close(_connection, _sender, path, _interface, _method, _parameters, invocation):
            self.connection.unregister_object(self.sessions.pop(path))
            invocation.return_value(None)

        self.sessions[session] = self.connection.register_object(session, description, close, None, None)

    def respond(self, code):
        """Answers the request that waits."""
        method, sender, request, results = self.waiting.pop(0)
        self.connection.emit_signal(
            sender, request, REQUEST, "Response", GLib.Variant("(ua{sv})", (code, results if code == DONE else {}))
        )

    def press(self, token=None, session=None, shortcut="quick-add", connection=None):
        options = {} if token is None else {"activation_token": GLib.Variant("s", token)}
        session = session or next(iter(self.sessions))
        (connection or self.connection).emit_signal(
            None, PATH, SHORTCUTS, "Activated", GLib.Variant("(osta{sv})", (session, shortcut, 12345, options))
        )

    def change_keys(self, description, session=None, shortcut="quick-add"):
        """Tells that the user has chosen other keys."""
        shortcuts = [(shortcut, {"trigger_description": GLib.Variant("s", description)})]
        session = session or next(iter(self.sessions))
        self.connection.emit_signal(
            None, PATH, SHORTCUTS, "ShortcutsChanged", GLib.Variant("(oa(sa{sv}))", (session, shortcuts))
        )

    def leave(self):
        if not self.connection.is_closed():
            self.connection.close_sync(None)


class PortalShortcutTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.bus = Bus(folder.name)
        self.addCleanup(self.bus.stop)

    def make_portal(self, *arguments, **options):
        portal = Portal(self.bus, *arguments, **options)
        self.addCleanup(portal.leave)
        return portal

    def start(self, **options):
        printer = ShortcutPrinter(bus_address=self.bus.address, WAYLAND_DISPLAY="wayland-none", **options)
        self.addCleanup(self.end, printer)
        return printer

    def end(self, printer):
        self.assertEqual(printer.end(), 0)

    def assert_unavailable(self, printer, reason):
        self.assertEqual(printer.register(), UNAVAILABLE)
        (line,) = printer.log()
        self.assertRegex(line, f"no global shortcut: {reason}.*; the X server cannot be reached")
        self.assertIn("quillo quick-add", line)

    def test_it_introduces_itself_and_binds_what_it_wants(self):
        portal = self.make_portal()
        printer = self.start()
        self.assertEqual(printer.register(), NO_ERROR)
        self.assertEqual(portal.methods(), ["Register", *QUESTIONS])
        self.assertEqual(portal.asked[0], ("Register", "org.quillo.Quillo", {}))
        self.assertEqual(portal.asked[1][1]["shortcuts"], [("quick-add", DESCRIBED)])
        session, shortcuts, window, _options = portal.asked[3][1:]
        self.assertEqual((shortcuts, window), ([("quick-add", DESCRIBED)], ""))
        self.assertEqual(list(portal.sessions), [session])
        self.assertEqual(printer.log(), [])

    def test_a_press_comes_with_its_activation_token(self):
        portal = self.make_portal()
        printer = self.start()
        self.assertEqual(printer.register(), NO_ERROR)
        for token, told in (("token-7", "token-7"), (None, ""), ("", ""), ("x" * 5000, "")):
            portal.press(token)
            self.assertEqual(printer.next_line(), f"pressed {told}")
        self.assertTrue(printer.stays_quiet())

    def test_what_is_not_ours_triggers_nothing(self):
        portal = self.make_portal()
        printer = self.start()
        self.assertEqual(printer.register(), NO_ERROR)
        portal.press(session=PATH + "/session/other/one")
        portal.press(shortcut="other")
        portal.press(connection=self.bus.connect())
        self.assertTrue(printer.stays_quiet(), printer.lines())
        portal.press()
        self.assertEqual(printer.next_line(), "pressed ")

    def test_a_portal_that_names_its_requests_itself_is_heard(self):
        portal = self.make_portal(codes=None, foreseeable=False)
        printer = self.start()
        printer.ask()
        for method in QUESTIONS:
            until(lambda method=method: method in portal.methods(), method)
            self.assertTrue(printer.stays_quiet())
            portal.respond(DONE)
        self.assertEqual(printer.next_line(), f"status {NO_ERROR}")

    def test_a_portal_without_a_registry_needs_no_introduction(self):
        portal = self.make_portal(interfaces=[GLOBAL_SHORTCUTS])
        printer = self.start()
        self.assertEqual(printer.register(), NO_ERROR)
        self.assertEqual(portal.methods(), QUESTIONS)

    def test_without_a_portal_the_log_says_why(self):
        self.assert_unavailable(self.start(), "the desktop has no portal: .*org.freedesktop.portal.Desktop")

    def test_without_shortcuts_in_the_portal_the_log_says_why(self):
        self.make_portal(interfaces=[REGISTRY])
        self.assert_unavailable(self.start(), "the desktop's portal offers no shortcuts: .*GlobalShortcuts")

    def test_without_a_session_the_log_says_why(self):
        for code in (CANCELLED, FAILED, 77):
            with self.subTest(code=code):
                portal = self.make_portal(codes=[code])
                self.assert_unavailable(self.start(), "the desktop's portal made no session")
                portal.leave()

    def test_a_failed_binding_is_unavailable_and_leaves_no_session(self):
        portal = self.make_portal(codes=(DONE, DONE, FAILED))
        self.assert_unavailable(self.start(), "the desktop's portal did not bind it")
        until(lambda: not portal.sessions, "the session is closed")

    def test_what_the_user_refuses_is_not_tried_another_way(self):
        portal = self.make_portal(codes=(DONE, DONE, CANCELLED))
        printer = self.start()
        self.assertEqual(printer.register(), TAKEN)
        (line,) = printer.log()
        self.assertIn("no global shortcut: it was not allowed (", line)
        until(lambda: not portal.sessions, "the session is closed")

    def test_a_shortcut_without_a_key_may_still_be_given_one(self):
        strange = [
            {},
            {"shortcuts": GLib.Variant("a(sa{sv})", [])},
            {"shortcuts": GLib.Variant("a(sa{sv})", [("other", {})])},
            {"shortcuts": GLib.Variant("a(sa{sv})", [("quick-add", {"trigger_description": GLib.Variant("s", "")})])},
            {"shortcuts": GLib.Variant("s", "none")},
            {"shortcuts": GLib.Variant("a(ss)", [("quick-add", "")])},
        ]
        for bound in strange:
            with self.subTest(bound=bound):
                portal = self.make_portal(bound=bound)
                printer = self.start()
                self.assertEqual(printer.register(), NO_ERROR)
                (line,) = printer.log()
                self.assertIn("no key", line)
                portal.press()
                self.assertEqual(printer.next_line(), "pressed ")
                self.end(printer)
                portal.leave()

    def test_the_keys_are_those_that_the_portal_tells(self):
        bound = {"shortcuts": GLib.Variant("a(sa{sv})", [("quick-add", {"trigger_description": GLib.Variant("s", "X")})])}
        for options in ({"bound": bound}, {"listed": bound}):
            portal = self.make_portal(**options)
            printer = self.start()
            self.assertIsNone(printer.keys())
            self.assertEqual(printer.register(), NO_ERROR)
            self.assertEqual(printer.keys(), "X")
            printer.configure()
            self.assertNotIn("ConfigureShortcuts", portal.methods())
            portal.change_keys("Y")
            until(lambda: printer.keys() == "Y", "the change is heard")
            portal.change_keys("Z", session=PATH + "/session/other/one")
            portal.change_keys("Z", shortcut="other")
            portal.press()
            self.assertEqual(printer.next_line(), "pressed ")
            self.assertEqual(printer.keys(), "Y")
            printer.unregister()
            self.assertIsNone(printer.keys())
            self.end(printer)
            portal.leave()

    def test_a_portal_with_a_dialog_of_its_own_shows_it(self):
        portal = self.make_portal(interfaces=(REGISTRY, CONFIGURABLE_SHORTCUTS))
        printer = self.start()
        printer.configure()
        self.assertEqual(printer.register(), NO_ERROR)
        until(lambda: printer.keys() == "+", "the version is known")
        printer.configure()
        until(lambda: portal.methods()[-1] == "ConfigureShortcuts", "the dialog is asked for")
        (session,) = portal.sessions
        self.assertEqual(portal.asked[-1][1:], (session, "", {}))
        self.assertEqual(portal.methods().count("ConfigureShortcuts"), 1)

    def test_another_shortcut_gets_a_session_of_its_own(self):
        portal = self.make_portal()
        printer = self.start()
        self.assertEqual(printer.register(), NO_ERROR)
        (first,) = portal.sessions
        printer.unregister()
        until(lambda: not portal.sessions, "the session is closed")
        portal.press(session=first)
        self.assertTrue(printer.stays_quiet())
        self.assertEqual(printer.register((36, SHIFT | COMMAND)), NO_ERROR)
        self.assertEqual(portal.asked[-1][2][0][1]["preferred_trigger"], "SHIFT+LOGO+Return")
        self.assertEqual(portal.methods().count("Register"), 1)
        self.assertEqual(len(portal.sessions), 1)
        portal.press()
        self.assertEqual(printer.next_line(), "pressed ")

    def test_what_the_portal_knows_already_is_not_bound_again(self):
        known = {"shortcuts": GLib.Variant("a(sa{sv})", [("quick-add", {})])}
        portal = self.make_portal(listed=known)
        printer = self.start()
        self.assertEqual(printer.register(), NO_ERROR)
        self.assertEqual(portal.methods(), ["Register", "CreateSession", "ListShortcuts"])
        portal.press("token")
        self.assertEqual(printer.next_line(), "pressed token")
        self.assertEqual(printer.log(), [])

    def test_a_shortcut_has_the_same_session_each_time_and_one_at_a_time(self):
        portal = self.make_portal(codes=None)
        names = []
        for _ in range(2):
            printer = self.start()
            printer.ask()
            until(lambda: portal.waiting, "a session is asked for")
            printer.unregister()
            printer.ask()
            self.assertTrue(printer.stays_quiet())
            self.assertEqual(len(portal.waiting), 1)
            self.respond_until(portal, "BindShortcuts")
            portal.respond(DONE)
            self.assertEqual(printer.next_line(), f"status {NO_ERROR}")
            self.assertEqual(len(portal.sessions), 1)
            names.append(next(iter(portal.sessions)).split("/")[-1])
            self.end(printer)
            portal.sessions.clear()
        self.assertEqual(names, ["quillo_CTRL_ALT_LOGO_t"] * 2)

    def test_what_was_given_up_is_not_answered_and_leaves_no_session(self):
        portal = self.make_portal(codes=None)
        printer = self.start()
        printer.ask()
        until(lambda: portal.waiting, "a session is asked for")
        printer.unregister()
        portal.respond(DONE)
        until(lambda: not portal.sessions, "the session is closed")
        self.assertTrue(printer.stays_quiet())

        printer.ask()
        self.respond_until(portal, "BindShortcuts")
        printer.unregister()
        until(lambda: not portal.sessions, "the session is closed")
        printer.ask()
        until(lambda: len(portal.waiting) == 2, "another session is asked for")
        portal.respond(FAILED)
        self.assertTrue(printer.stays_quiet())
        self.assertEqual(printer.log(), [])
        self.respond_until(portal, "BindShortcuts")
        portal.respond(DONE)
        self.assertEqual(printer.next_line(), f"status {NO_ERROR}")

    def respond_until(self, portal, method):
        """Responds that all is done, until that question waits for its response."""
        while until(lambda: portal.waiting, "the portal is asked")[0][0] != method:
            portal.respond(DONE)

    def test_a_portal_that_is_started_again_is_asked_again(self):
        first = self.make_portal()
        printer = self.start()
        self.assertEqual(printer.register(), NO_ERROR)
        first.leave()
        until(lambda: len(printer.log()) == 1, "the loss is in the log")
        self.assertIn("the global shortcut is lost: the desktop's portal is gone", printer.log()[0])
        second = self.make_portal()
        until(lambda: second.sessions and "BindShortcuts" in second.methods(), "it is bound again")
        second.press("token")
        self.assertEqual(printer.next_line(), "pressed token")
        self.assertEqual(second.methods(), ["Register", *QUESTIONS])
        self.assertEqual(len(printer.log()), 1)

    def test_a_portal_that_goes_while_it_is_asked_has_answered(self):
        portal = self.make_portal(codes=None)
        printer = self.start()
        printer.ask()
        until(lambda: portal.waiting, "a session is asked for")
        portal.leave()
        self.assertEqual(printer.next_line(), f"status {UNAVAILABLE}")
        (line,) = printer.log()
        self.assertIn("no global shortcut: the desktop's portal is gone; ", line)
        self.make_portal()
        self.assertEqual(printer.register(), NO_ERROR)

    def test_a_bus_that_goes_ends_nothing_but_the_shortcut(self):
        self.make_portal()
        printer = self.start()
        self.assertEqual(printer.register(), NO_ERROR)
        self.bus.stop()
        self.assertTrue(printer.stays_quiet())
        printer.unregister()
        self.assertEqual(printer.register(), UNAVAILABLE)
        self.assertIn("there is no session bus", printer.log()[-1])

    def test_no_shortcut_is_asked_for_without_a_modifier_or_a_key(self):
        portal = self.make_portal()
        printer = self.start()
        for config in ((STANDARD[0], 0), (63, COMMAND)):
            self.assertEqual(printer.register(config), UNAVAILABLE)
        self.assertEqual(portal.asked, [])


if __name__ == "__main__":
    unittest.main()
