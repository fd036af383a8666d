"""Stands in for the desktop's file manager: prints the addresses of the files that it is to show, a line each."""

from gi.repository import Gio, GLib

NAME = "org.freedesktop.FileManager1"
PATH = "/org/freedesktop/FileManager1"
INTERFACE = """
<node>
  <interface name="org.freedesktop.FileManager1">
    <method name="ShowItems"><arg type="as" direction="in"/><arg type="s" direction="in"/></method>
  </interface>
</node>
"""


def answer(connection, sender, path, interface, method, parameters, invocation):
    for address in parameters.unpack()[0]:
        print(address, flush=True)
    invocation.return_value(None)


def export(connection, name):
    (interface,) = Gio.DBusNodeInfo.new_for_xml(INTERFACE).interfaces
    connection.register_object(PATH, interface, answer, None, None)


if __name__ == "__main__":
    Gio.bus_own_name(Gio.BusType.SESSION, NAME, Gio.BusNameOwnerFlags.NONE, export, None, None)
    GLib.MainLoop().run()
