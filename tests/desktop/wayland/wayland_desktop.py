"""A private Wayland desktop: KWin in a window on a screen of its own, and the portals of Plasma.

    with WaylandDesktop() as desktop:
        ...

The screen is an X server's, so that keys and the pointer are as real, and pictures as true, as on the other private
desktops. Programs on the desktop know nothing of that server: they have the compositor only.
"""

import glob
import os
import pathlib
import pwd
import shutil
import socket
import stat

from desktop import PORTAL, Desktop
from desktop_program import wait_until

COMPOSITOR = "org.kde.KWin"
SHORTCUTS_OF_PLASMA = "org.kde.kglobalaccel"
PORTAL_OF_PLASMA = "org.freedesktop.impl.portal.desktop.kde"
ORDINARY_USER = "nobody"

# Tells what would have been opened in other programs, in place of opening it.
XDG_OPEN = """#!/bin/sh
echo "$@" >> "{folder}/opened"
"""

# The compositor gives the name of its X server only to what it starts itself.
TELL_DISPLAY = """#!/bin/sh
echo "$DISPLAY" > "{folder}/display.new" && mv "{folder}/display.new" "{folder}/display"
"""


class WaylandDesktop(Desktop):
    """Without `shortcuts` its portal knows the settings only. With `xwayland` there is an X server for programs too, as
    on most desktops. There are no panel and no notifications on it."""

    def __init__(self, width=1280, height=1000, shortcuts=True, xwayland=False):
        super().__init__(width, height)
        self._xwayland = xwayland
        self._parts = [
            self._start_screen,
            self._start_bus,
            self._start_accessibility,
            self.start_compositor,
            self._start_portals_of_plasma if shortcuts else self._start_portal,
        ]

    def _make_folders(self):
        super()._make_folders()
        self.environment |= {"XDG_SESSION_TYPE": "wayland", "XDG_CURRENT_DESKTOP": "KDE"}

    def start_compositor(self):
        """Also again, after its end."""
        # Programs are to find the compositor, and not the server that it is shown on.
        self.environment.pop("DISPLAY", None)
        display = f"wayland-{len(self._processes)}"
        self.environment["WAYLAND_DISPLAY"] = display
        width, height = map(str, self.size)
        self.compositor = self.start(
            *(str(self._plain_copy("kwin_wayland")), "--no-lockscreen", "--socket", display),
            *("--x11-display", self.screen.name, "--width", width, "--height", height),
            *(("--xwayland", self._script("tell_display", TELL_DISPLAY)) if self._xwayland else ()),
            # Drawn without OpenGL, whose drivers may not be there.
            environment={"KWIN_COMPOSE": "Q"},
        )
        wait_until(self._compositor_takes_connections, "the compositor is there")
        for name in (COMPOSITOR, SHORTCUTS_OF_PLASMA):
            self._wait_for_owner(name)
        if self._xwayland:
            wait_until((self.folder / "display").exists, "there is an X server for programs")
            self.environment["DISPLAY"] = self._told("display")[0]

    def _plain_copy(self, program):
        """A copy of the program without the capabilities that its file has: with them it is not run where the user may
        never have them, such as in containers, and is not killed with the test."""
        copy = self.folder / program
        if not copy.exists():
            shutil.copyfile(program_path(program), copy)
            copy.chmod(stat.S_IRWXU)
        return copy

    def _compositor_takes_connections(self):
        if self.compositor.process.poll() is not None:
            raise AssertionError(f"there is no compositor: {self.compositor}")
        path = pathlib.Path(self.environment["XDG_RUNTIME_DIR"]) / self.environment["WAYLAND_DISPLAY"]
        with socket.socket(socket.AF_UNIX) as client:
            return client.connect_ex(str(path)) == 0

    def _start_portals_of_plasma(self):
        tools = pathlib.Path(self._script("xdg-open", XDG_OPEN)).parent
        path = f"{tools}:{self.environment['PATH']}"
        backend = program_path("/usr/lib/*/libexec/xdg-desktop-portal-kde")
        self.start(backend, environment={"QT_QPA_PLATFORM": "wayland", "PATH": path})
        self._wait_for_owner(PORTAL_OF_PLASMA)
        self.start(program_path("/usr/libexec/xdg-desktop-portal"), "--verbose")
        self._wait_for_owner(PORTAL)

    def opened(self):
        """What the portal has opened in other programs: addresses."""
        return self._told("opened")

    def _script(self, name, text):
        """The path of a program that leaves word in a file of the desktop's folder."""
        path = self.folder / "tools" / name
        path.parent.mkdir(exist_ok=True)
        path.write_text(text.format(folder=self.folder))
        path.chmod(stat.S_IRWXU)
        return str(path)

    def _told(self, name):
        """The lines of that file."""
        path = self.folder / name
        return path.read_text().splitlines() if path.exists() else []


def program_path(pattern):
    """The path of the program of that name, or whose path has that pattern; an error where it is not installed."""
    found = [shutil.which(pattern)] if "/" not in pattern else glob.glob(pattern)
    if not found or not found[0]:
        raise AssertionError(f"there is no {pattern}")
    return found[0]


def become_ordinary_user():
    """KWin does not run for root; so the whole test does not, from here on. QUILLO_FAILURES then is a folder within the
    one it was, which that user may write to."""
    if os.geteuid() != 0:
        return
    user = pwd.getpwnam(ORDINARY_USER)
    if folder := os.environ.get("QUILLO_FAILURES"):
        own = pathlib.Path(folder) / "wayland"
        own.mkdir(parents=True, exist_ok=True)
        os.chown(own, user.pw_uid, user.pw_gid)
        os.environ["QUILLO_FAILURES"] = str(own)
    os.setgroups([])
    os.setgid(user.pw_gid)
    os.setuid(user.pw_uid)
    for name in ("QUILLO", "QUILLO_DESKTOP"):
        if not os.access(os.environ[name], os.X_OK):
            raise AssertionError(f"{os.environ[name]} cannot be run by the user {ORDINARY_USER}")
