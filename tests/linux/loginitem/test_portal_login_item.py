"""Starting at login as a sandboxed program asks for it, of a portal of the test's own on a private bus.

The program to run is named by the environment variable LOGIN_ITEM_PRINTER.
"""

import os
import select
import subprocess
import tempfile
import unittest

from gi.repository import Gio, GLib

from desktop_program import PATIENCE_SECONDS, wait_until
from session import Bus

SERVICE = "org.freedesktop.portal.Desktop"
PATH = "/org/freedesktop/portal/desktop"
REQUEST = "org.freedesktop.portal.Request"
BACKGROUND = """
<node>
  <interface name="org.freedesktop.portal.Background">
    <method name="RequestBackground"><arg type="s" direction="in"/><arg type="a{sv}" direction="in"/>
      <arg type="o" direction="out"/></method>
    <property name="version" type="u" access="read"/>
  </interface>
</node>
"""

DONE, CANCELLED = 0, 1


class Portal:
    """Answers with `code`; and with `autostart`, where that is not what was asked for."""

    def __init__(self, address, code=DONE, autostart=None):
        self.code = code
        self.autostart = autostart
        self.asked = []
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        self.connection = Gio.DBusConnection.new_for_address_sync(address, flags, None, None)
        (interface,) = Gio.DBusNodeInfo.new_for_xml(BACKGROUND).interfaces
        self.connection.register_object(PATH, interface, self._answer, lambda *_: GLib.Variant("u", 2), None)
        named = []
        Gio.bus_own_name_on_connection(
            self.connection, SERVICE, Gio.BusNameOwnerFlags.NONE, lambda *_: named.append(True), None
        )
        while not named:
            GLib.MainContext.default().iteration(True)

    def _answer(self, _connection, sender, _path, _interface, _method, parameters, invocation):
        window, options = parameters.unpack()
        request = f"{PATH}/request/{sender[1:].replace('.', '_')}/{options.pop('handle_token')}"
        self.asked.append((window, options))
        invocation.return_value(GLib.Variant("(o)", (request,)))
        autostart = options["autostart"] if self.autostart is None else self.autostart
        results = {"background": GLib.Variant("b", True), "autostart": GLib.Variant("b", autostart)}
        self.connection.emit_signal(
            sender, request, REQUEST, "Response", GLib.Variant("(ua{sv})", (self.code, results))
        )

    def leave(self):
        self.connection.close_sync(None)


class PortalLoginItem(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.bus = Bus(folder.name)
        self.addCleanup(self.bus.stop)
        self.printer = subprocess.Popen(
            [os.environ["LOGIN_ITEM_PRINTER"]],
            env={"PATH": os.environ["PATH"], "DBUS_SESSION_BUS_ADDRESS": self.bus.address},
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
        )
        self.addCleanup(self.end)

    def end(self):
        self.printer.stdin.close()
        self.assertEqual(self.printer.wait(PATIENCE_SECONDS), 0)
        self.printer.stdout.close()

    def make_portal(self, **options):
        portal = Portal(self.bus.address, **options)
        self.addCleanup(portal.leave)
        return portal

    def tell(self, line):
        """The answer to a line."""
        self.printer.stdin.write(f"{line}\n".encode())
        self.printer.stdin.flush()

        def answered():
            GLib.MainContext.default().iteration(False)
            return select.select([self.printer.stdout], [], [], 0)[0]

        wait_until(answered, f"{line!r} is answered")
        return self.printer.stdout.readline().decode().strip()

    def test_it_asks_for_what_was_chosen(self):
        portal = self.make_portal()
        for line, autostart in (("on", True), ("off", False)):
            self.assertEqual(self.tell(line), "done")
            wish = {
                "reason": "Because of the test.",
                "autostart": autostart,
                "commandline": ["quillo-desktop"],
                "dbus-activatable": False,
            }
            self.assertEqual(portal.asked.pop(), ("", wish))

    def test_what_is_not_allowed_has_failed(self):
        self.make_portal(code=CANCELLED)
        self.assertEqual(self.tell("on"), "starting at login was not allowed")

    def test_a_portal_may_decide_otherwise(self):
        self.make_portal(autostart=False)
        self.assertIn("decided otherwise", self.tell("on"))

    def test_without_a_portal_nothing_starts_at_login(self):
        self.assertIn("the desktop's portal starts no programs at login: ", self.tell("on"))

    def test_the_portal_does_not_tell_what_is_set(self):
        self.assertEqual(self.tell("read"), "unknown")


if __name__ == "__main__":
    unittest.main()
