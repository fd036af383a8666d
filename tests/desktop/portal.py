"""Stands in for the desktop's settings portal: tells programs how the user wants them to look and move.

usage: portal.py SETTINGS

The settings are a JSON object of those in org.freedesktop.appearance; each line of standard input is a JSON array
[key, value] that changes one:

    ["color-scheme", 1]                  0 no preference, 1 dark, 2 light
    ["accent-color", [0.9, 0.3, 0.1]]    red, green and blue from 0 to 1
    ["contrast", 1]                      1 high
    ["reduced-motion", 1]                1 reduced

null takes a setting away. It ends with its input.
"""

import json
import sys
import threading

from gi.repository import Gio, GLib

APPEARANCE = "org.freedesktop.appearance"
NAME = "org.freedesktop.portal.Desktop"
PATH = "/org/freedesktop/portal/desktop"
SETTINGS = "org.freedesktop.portal.Settings"
TYPES = {"color-scheme": "u", "accent-color": "(ddd)", "contrast": "u", "reduced-motion": "u"}

INTERFACE = """
<node>
  <interface name="org.freedesktop.portal.Settings">
    <method name="ReadAll"><arg type="as" direction="in"/><arg type="a{sa{sv}}" direction="out"/></method>
    <method name="Read">
      <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/>
    </method>
    <method name="ReadOne">
      <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/>
    </method>
    <signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal>
    <property name="version" type="u" access="read"/>
  </interface>
</node>
"""


def answer(connection, sender, path, interface, method, parameters, invocation):
    if method == "ReadAll":
        invocation.return_value(GLib.Variant("(a{sa{sv}})", ({APPEARANCE: settings},)))
        return
    group, key = parameters.unpack()
    if group != APPEARANCE or key not in settings:
        invocation.return_dbus_error("org.freedesktop.portal.Error.NotFound", "Requested setting not found")
    elif method == "ReadOne":
        invocation.return_value(GLib.Variant("(v)", (settings[key],)))
    else:  # Read wraps the value once more than it should; programs count on that.
        invocation.return_value(GLib.Variant("(v)", (GLib.Variant("v", settings[key]),)))


def variant(key, value):
    return GLib.Variant(TYPES[key], tuple(value) if isinstance(value, list) else value)


def change(key, value):
    if value is None:
        settings.pop(key, None)
        return
    settings[key] = variant(key, value)
    changed = GLib.Variant("(ssv)", (APPEARANCE, key, settings[key]))
    connection.emit_signal(None, PATH, SETTINGS, "SettingChanged", changed)


def take_changes():
    for line in sys.stdin:
        GLib.idle_add(change, *json.loads(line))
    GLib.idle_add(loop.quit)


settings = {key: variant(key, value) for key, value in json.loads(sys.argv[1]).items()}
loop = GLib.MainLoop()
connection = Gio.bus_get_sync(Gio.BusType.SESSION)
interface = Gio.DBusNodeInfo.new_for_xml(INTERFACE).interfaces[0]
connection.register_object(PATH, interface, answer, None, lambda *_: GLib.Variant("u", 2))
Gio.bus_own_name_on_connection(connection, NAME, Gio.BusNameOwnerFlags.NONE, None, None)
threading.Thread(target=take_changes, daemon=True).start()
loop.run()
