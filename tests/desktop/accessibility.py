"""What assistive programs see of the programs on a desktop: names, roles, states, places, and what can be done.

Asks the programs themselves each time, over the accessibility bus (AT-SPI 2), and keeps nothing.
"""

from gi.repository import Gio, GLib

from desktop_program import PATIENCE_SECONDS, wait_until

ROOT = ("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root")
NULL = "/org/a11y/atspi/null"
INTERFACE = "org.a11y.atspi."
PROPERTIES = "org.freedesktop.DBus.Properties"
SCREEN_COORDINATES = 0

# The bits of AtspiStateType, see atspi-constants.h.
STATES = (
    "invalid active armed busy checked collapsed defunct editable enabled expandable expanded focusable focused "
    "has-tooltip horizontal iconified modal multi-line multiselectable opaque pressed resizable selectable selected "
    "sensitive showing single-line stale transient vertical visible manages-descendants indeterminate required truncated "
    "animated invalid-entry supports-autocompletion selectable-text is-default visited checkable has-popup read-only"
).split()


class AccessibilityBus:
    def __init__(self, address):
        self.connection = Gio.DBusConnection.new_for_address_sync(
            address,
            Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION,
            None,
            None,
        )

    def stop(self):
        """Lets go of the bus."""
        if not self.connection.is_closed():
            self.connection.close_sync()

    def call(self, name, path, interface, method, parameters=None):
        answer = self.connection.call_sync(
            name, path, interface, method, parameters, None, Gio.DBusCallFlags.NONE, PATIENCE_SECONDS * 1000, None
        )
        return answer.unpack()

    def process(self, name):
        bus = ("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus")
        return self.call(*bus, "GetConnectionUnixProcessID", GLib.Variant("(s)", (name,)))[0]

    def application(self, process, scale=1):
        """The program of that process, as soon as it is there. `scale` is what it does not know of its own size: Qt 6.4
        tells places in units of which so many pixels make one."""

        def find():
            for candidate in Node(self, *ROOT, scale).children:
                try:
                    if self.process(candidate.bus_name) == process:
                        return candidate
                except GLib.Error:  # It went while we looked.
                    pass
            return None

        return wait_until(find, f"process {process} can be seen by assistive programs")


class Node:
    """An object of a program's tree. What is gone raises GLib.Error."""

    def __init__(self, bus, bus_name, path, scale):
        self._bus = bus
        self._scale = scale
        self.bus_name = bus_name
        self.path = path

    def __eq__(self, other):
        return isinstance(other, Node) and (self.bus_name, self.path) == (other.bus_name, other.path)

    def __hash__(self):
        return hash((self.bus_name, self.path))

    def __repr__(self):
        return f"<{self.role} {self.name!r}>"

    def _call(self, interface, method, parameters=None):
        return self._bus.call(self.bus_name, self.path, INTERFACE + interface, method, parameters)

    def _property(self, interface, name):
        parameters = GLib.Variant("(ss)", (INTERFACE + interface, name))
        return self._bus.call(self.bus_name, self.path, PROPERTIES, "Get", parameters)[0]

    @property
    def name(self):
        return self._property("Accessible", "Name")

    @property
    def description(self):
        return self._property("Accessible", "Description")

    @property
    def role(self):
        """Such as "push button"."""
        return self._call("Accessible", "GetRoleName")[0]

    @property
    def states(self):
        low, high = self._call("Accessible", "GetState")[0]
        bits = low | high << 32
        return {state for number, state in enumerate(STATES) if bits >> number & 1}

    @property
    def children(self):
        (found,) = self._call("Accessible", "GetChildren")
        return [Node(self._bus, name, path, self._scale) for name, path in found if path != NULL]

    @property
    def area(self):
        """(left, top, width, height) on the screen, in pixels."""
        (extents,) = self._call("Component", "GetExtents", GLib.Variant("(u)", (SCREEN_COORDINATES,)))
        return tuple(number * self._scale for number in extents)

    @property
    def centre(self):
        left, top, width, height = self.area
        return (left + width // 2, top + height // 2)

    @property
    def text(self):
        """What stands in a field."""
        return self._call("Text", "GetText", GLib.Variant("(ii)", (0, -1)))[0]

    @property
    def value(self):
        return self._property("Value", "CurrentValue")

    @property
    def actions(self):
        """The names of what can be done with it."""
        if INTERFACE + "Action" not in self._call("Accessible", "GetInterfaces")[0]:
            return []
        return [name for name, *_ in self._call("Action", "GetActions")[0]]

    def do(self, action):
        """Does what an assistive program can do with it."""
        number = self.actions.index(action)
        if not self._call("Action", "DoAction", GLib.Variant("(i)", (number,)))[0]:
            raise AssertionError(f"{self!r} does not {action}")

    def is_showing(self):
        return "showing" in self.states

    def walk(self):
        """This and all below it, parents first."""
        yield self
        for child in self.children:
            yield from child.walk()

    def find_all(self, role=None, name=None, showing=True):
        """Those below it, and it itself, that have this role and this name."""
        found = []
        for node in self.walk():
            try:
                if (name is None or node.name == name) and (role is None or node.role == role):
                    if not showing or node.is_showing():
                        found.append(node)
            except GLib.Error:  # It went while we looked.
                pass
        return found

    def find(self, role=None, name=None, showing=True, seconds=PATIENCE_SECONDS):
        """The only one of them, as soon as it is there."""

        def attempt():
            try:
                found = self.find_all(role, name, showing)
            except GLib.Error:
                return None
            if len(found) > 1:
                raise AssertionError(f"there are several: {found}")
            return found[0] if found else None

        return wait_until(attempt, f"a {role or 'thing'} named {name!r}", seconds)

    def describe(self, indent=""):
        """The tree in lines, for people: role, name, description, states that matter, area."""
        interesting = self.states & {"focused", "checked", "editable", "selected", "expanded", "focusable"}
        try:
            area = self.area
        except GLib.Error:
            area = ""
        hidden = "" if self.is_showing() else " HIDDEN"
        lines = [
            f"{indent}{self.role} {self.name!r} {self.description!r} {sorted(interesting)} {area} {self.actions}{hidden}"
        ]
        for child in self.children:
            lines += child.describe(indent + "  ")
        return lines
