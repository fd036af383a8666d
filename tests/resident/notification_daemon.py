"""Stands in for a desktop's notification daemon: prints what it is asked to show, one JSON object a line.

usage: notification_daemon.py BUS-ADDRESS MILLISECONDS [CAPABILITY...]

It takes so long to answer when it has shown something.
"""

import json
import sys
import time

from gi.repository import Gio, GLib

INTERFACE = """
<node>
  <interface name="org.freedesktop.Notifications">
    <method name="GetCapabilities"><arg type="as" direction="out"/></method>
    <method name="GetServerInformation">
      <arg type="s" direction="out"/><arg type="s" direction="out"/>
      <arg type="s" direction="out"/><arg type="s" direction="out"/>
    </method>
    <method name="Notify">
      <arg type="s" direction="in"/><arg type="u" direction="in"/><arg type="s" direction="in"/>
      <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="as" direction="in"/>
      <arg type="a{sv}" direction="in"/><arg type="i" direction="in"/><arg type="u" direction="out"/>
    </method>
    <method name="CloseNotification"><arg type="u" direction="in"/></method>
  </interface>
</node>
"""
ARGUMENTS = ("application", "replaces", "icon", "title", "body", "actions", "hints", "timeout")

address, milliseconds, *capabilities = sys.argv[1:]
shown = 0


def answer(connection, sender, path, interface, method, parameters, invocation):
    global shown
    if method == "GetCapabilities":
        invocation.return_value(GLib.Variant("(as)", (capabilities,)))
    elif method == "GetServerInformation":
        invocation.return_value(GLib.Variant("(ssss)", ("Stand-in", "Quillo", "1", "1.2")))
    elif method == "Notify":
        shown += 1
        arguments = dict(zip(ARGUMENTS, parameters.unpack()))
        print(json.dumps({"at": time.time(), **arguments}), flush=True)
        number = GLib.Variant("(u)", (shown,))
        if milliseconds == "0":
            invocation.return_value(number)
        else:
            GLib.timeout_add(int(milliseconds), invocation.return_value, number)
    else:
        invocation.return_value(None)


connection = Gio.DBusConnection.new_for_address_sync(
    address,
    Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION,
    None,
    None,
)
interface = Gio.DBusNodeInfo.new_for_xml(INTERFACE).interfaces[0]
connection.register_object("/org/freedesktop/Notifications", interface, answer, None, None)
Gio.bus_own_name_on_connection(connection, "org.freedesktop.Notifications", Gio.BusNameOwnerFlags.NONE, None, None)
GLib.MainLoop().run()
