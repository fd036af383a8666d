"""What is on the private screen: windows, and pictures of them."""

import time

from PIL import ImageGrab
from Xlib import X, Xatom, error
from Xlib.display import Display
from Xlib.protocol import event
from Xlib.xobject.resource import Resource

from desktop_program import PATIENCE_SECONDS, wait_until

# Two pictures that far apart and alike: what was moving has come to rest.
REST_SECONDS = 0.1
# No ground, shadows aside, has more colours.
COLOURS_OF_EMPTINESS = 64


class Window:
    """A top-level window of a program. `process` is the number of the process that it belongs to, or None; `is_managed`
    says whether the window manager looks after it, `is_menu` whether it is a menu. One that has gone raises BadWindow or
    BadDrawable."""

    def __init__(self, display, handle):
        self._display = display
        self._handle = handle
        process = self._read("_NET_WM_PID")
        self.process = process[0] if process else None
        title = self._read("_NET_WM_NAME")
        self.title = title.decode() if isinstance(title, bytes) else ""
        self.is_managed = not handle.get_attributes().override_redirect
        # Qt does not say that its menus are menus, but keeps window managers off them.
        kinds = {kind.removeprefix("_NET_WM_WINDOW_TYPE_") for kind in self.kinds}
        looks_like_a_menu = not self.is_managed and "NORMAL" in kinds and "UTILITY" not in kinds
        self.is_menu = looks_like_a_menu or "POPUP_MENU" in kinds

    def _read(self, name):
        """The value of the property, or None."""
        found = self._handle.get_full_property(self._display.get_atom(name), X.AnyPropertyType)
        return found.value if found else None

    def _read_names(self, name):
        return {self._display.get_atom_name(atom) for atom in self._read(name) or ()}

    @property
    def states(self):
        """Such as {"_NET_WM_STATE_ABOVE"}."""
        return self._read_names("_NET_WM_STATE")

    @property
    def kinds(self):
        """Such as {"_NET_WM_WINDOW_TYPE_NORMAL"}."""
        return self._read_names("_NET_WM_WINDOW_TYPE")

    @property
    def workspace(self):
        """Its number, or None where it is on all of them."""
        found = self._read("_NET_WM_DESKTOP")
        return None if not found or found[0] == 0xFFFFFFFF else found[0]

    @property
    def area(self):
        """(left, top, width, height) in pixels, without what a window manager draws around it."""
        size = self._handle.get_geometry()
        corner = self._handle.translate_coords(self._display.screen().root, 0, 0)
        return (-corner.x, -corner.y, size.width, size.height)

    @property
    def centre(self):
        left, top, width, height = self.area
        return (left + width // 2, top + height // 2)

    def close(self):
        """Closes it, as the button in its frame does."""
        message = event.ClientMessage(
            window=self._handle,
            client_type=self._display.get_atom("_NET_CLOSE_WINDOW"),
            data=(32, [X.CurrentTime, 2, 0, 0, 0]),
        )
        root = self._display.screen().root
        root.send_event(message, X.SubstructureRedirectMask | X.SubstructureNotifyMask)
        self._display.flush()

    def contains(self, place):
        left, top, width, height = self.area
        return left <= place[0] < left + width and top <= place[1] < top + height


class Screen:
    """The screen of that name, such as ":7"."""

    def __init__(self, name):
        self.name = name
        self.display = Display(name)
        self.root = self.display.screen().root

    def stop(self):
        """Lets go of the screen."""
        try:
            self.display.close()
        except Exception:  # The server is gone already, which some tests want.
            pass

    def has_window_manager(self):
        return self._root_property("_NET_SUPPORTING_WM_CHECK") is not None

    def rename_window_manager(self, name):
        (window,) = self._root_property("_NET_SUPPORTING_WM_CHECK")
        handle = self.display.create_resource_object("window", window)
        handle.change_property(
            self.display.get_atom("_NET_WM_NAME"), self.display.get_atom("UTF8_STRING"), 8, name.encode()
        )
        self.display.sync()

    def give_keyboard_to_nobody(self):
        self.display.set_input_focus(X.NONE, X.RevertToNone, X.CurrentTime)
        self.display.sync()

    def has_compositor(self):
        return self.display.get_selection_owner(self.display.get_atom("_NET_WM_CM_S0")) != X.NONE

    def _root_property(self, name):
        found = self.root.get_full_property(self.display.get_atom(name), X.AnyPropertyType)
        return found.value if found else None

    def windows(self, process):
        """The visible top-level windows of the process, from bottom to top, without menus and the like."""
        found = map(self._client, self.root.query_tree().children)
        return [window for window in found if window and window.process == process and not window.is_menu]

    def _client(self, handle, depth=2):
        """The program's window in a frame of the window manager, which may be the frame itself; or None."""
        try:
            if handle.get_attributes().map_state != X.IsViewable:
                return None
            window = Window(self.display, handle)
            if window.process:
                return window
            if depth:
                for child in handle.query_tree().children:
                    if found := self._client(child, depth - 1):
                        return found
        except (error.BadWindow, error.BadDrawable):  # It went while we looked.
            pass
        return None

    def has_menu(self):
        """Whether some program shows a menu in a window of its own."""
        return any(map(self._is_menu, self.root.query_tree().children))

    def _is_menu(self, handle):
        try:
            return Window(self.display, handle).is_menu and handle.get_attributes().map_state == X.IsViewable
        except (error.BadWindow, error.BadDrawable):  # It went while we looked.
            return False

    def process_at(self, place):
        """The process whose window is uppermost at that place, or None."""
        for handle in reversed(self.root.query_tree().children):
            window = self._client(handle)
            if window and window.contains(place):
                return window.process
        return None

    def active_process(self):
        """The process that keys go to, or None. The window manager's word for it comes earlier than the keyboard."""
        window = self.display.get_input_focus().focus
        try:
            while isinstance(window, Resource):
                if process := Window(self.display, window).process:
                    return process
                window = window.query_tree().parent
        except error.BadWindow:  # It went while we looked.
            pass
        return None

    def paint(self, colour):
        """Gives the desktop's ground that colour, (red, green, blue) of 255."""
        red, green, blue = colour
        pixel = red << 16 | green << 8 | blue
        size = self.root.get_geometry()
        ground = self.root.create_pixmap(size.width, size.height, size.depth)
        context = ground.create_gc(foreground=pixel)
        ground.fill_rectangle(context, 0, 0, size.width, size.height)
        # What compositors take the ground from.
        for name in ("_XROOTPMAP_ID", "ESETROOT_PMAP_ID"):
            self.root.change_property(self.display.get_atom(name), Xatom.PIXMAP, 32, [ground.id])
        self.root.change_attributes(background_pixmap=ground)
        self.root.clear_area()
        self.display.sync()

    def switch_to_workspace(self, number):
        message = event.ClientMessage(
            window=self.root,
            client_type=self.display.get_atom("_NET_CURRENT_DESKTOP"),
            data=(32, [number, X.CurrentTime, 0, 0, 0]),
        )
        self.root.send_event(message, X.SubstructureRedirectMask | X.SubstructureNotifyMask)
        self.display.flush()
        current = "_NET_CURRENT_DESKTOP"
        wait_until(lambda: self._root_property(current)[0] == number, f"workspace {number} is shown")

    def picture(self, area=None):
        """What is shown there, or on the whole screen: an RGB image of the PIL."""
        box = None
        if area:
            left, top, width, height = area
            box = (left, top, left + width, top + height)
        return ImageGrab.grab(box, xdisplay=self.name).convert("RGB")

    def is_painted(self, area):
        """Whether there is more than an empty ground: text has many colours, along the edges of its strokes."""
        picture = self.picture(area)
        return len(picture.getcolors(picture.width * picture.height)) > COLOURS_OF_EMPTINESS

    def picture_at_rest(self, area=None):
        """The same, when nothing moves there any more."""
        deadline = time.monotonic() + PATIENCE_SECONDS
        before = self.picture(area)
        while True:
            time.sleep(REST_SECONDS)
            after = self.picture(area)
            if after.tobytes() == before.tobytes():
                return after
            if time.monotonic() > deadline:
                raise AssertionError("the picture does not come to rest")
            before = after
