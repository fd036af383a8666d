"""A private desktop: screen, buses, window manager, compositor, panel with a status area, notification daemon, settings.

    with Desktop() as desktop:
        ...

Everything in it is started by the test, in folders, on buses and on a screen of its own, and stopped with it. Any number
of them can be there at once.
"""

import json
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

from PIL import Image, ImageChops
from Xlib.error import DisplayConnectionError

from accessibility import AccessibilityBus
from desktop_program import PATIENCE_SECONDS, wait_until
from pointer_and_keys import PointerAndKeys
from screen import Screen
from session import Bus

WATCHER = "org.kde.StatusNotifierWatcher"
NOTIFICATIONS = "org.freedesktop.Notifications"
ACCESSIBILITY = "org.a11y.Bus"
PORTAL = "org.freedesktop.portal.Desktop"

# The panel lies along the upper edge; its status area is at the end of it.
PANEL_HEIGHT = 32
# So much, of 255, does what the pointer points at change on the panel; icons stand out more.
NO_ICON = 60
PANEL = f"""<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="length" type="uint" value="100"/>
      <property name="size" type="uint" value="{PANEL_HEIGHT}"/>
      <property name="plugin-ids" type="array">
        <value type="int" value="1"/>
        <value type="int" value="2"/>
      </property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="separator">
      <property name="expand" type="bool" value="true"/>
      <property name="style" type="uint" value="0"/>
    </property>
    <property name="plugin-2" type="string" value="systray"/>
  </property>
</channel>
"""

WINDOW_MANAGER = """<?xml version="1.0" encoding="UTF-8"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><focusNew>yes</focusNew><followMouse>no</followMouse></focus>
  <desktops><number>{workspaces}</number></desktops>
  <keyboard>{bindings}</keyboard>
  <mouse>
    <context name="Client">
      <mousebind button="Left" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
    </context>
    <context name="Titlebar">
      <mousebind button="Left" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
      <mousebind button="Left" action="Drag"><action name="Move"/></mousebind>
    </context>
  </mouse>
</openbox_config>
"""
BINDING = '<keybind key="{}"><action name="Execute"><command>true</command></action></keybind>'

# Away from the status area, so that no notification covers what comes up there.
NOTIFICATION_DAEMON = """
[global]
origin = bottom-left
markup = full
stack_duplicates = false
history_length = 100
"""


class Desktop:
    """The window manager is openbox or xfwm4; `workspaces` and `taken_keys` are for the former only. With `taken_keys`
    (such as "C-A-W-t") another program holds these key combinations. What is false in `compositor`,
    `panel`, `notifications` or `bus` is not there. `appearance` is what the settings portal says at first, see portal.py.
    """

    def __init__(
        self,
        width=1280,
        height=1024,
        compositor=True,
        panel=True,
        notifications=True,
        bus=True,
        window_manager="openbox",
        workspaces=2,
        taken_keys=(),
        appearance=None,
    ):
        self.size = (width, height)
        self._parts = [
            part
            for part, wanted in (
                (self._start_screen, True),
                (self._start_bus, bus),
                (self._start_accessibility, bus),
                (self._start_portal, bus),
                (self._start_openbox if window_manager == "openbox" else self._start_xfwm4, True),
                (self.start_compositor, compositor),
                (self.start_panel, bus and panel),
                (self.start_notifications, bus and notifications),
            )
            if wanted
        ]
        self._workspaces = workspaces
        self._taken_keys = taken_keys
        self._appearance = dict(appearance or {})
        self._processes = []  # what was started, the latest last
        self.bus = None
        self.panel = None

    def __enter__(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="quillo-desktop-"))
        try:
            self._make_folders()
            for start in self._parts:
                start()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        for process in reversed(self._processes):
            process.stop()
        self._processes.clear()
        if self.bus:
            self.bus.stop()
        shutil.rmtree(self.folder, ignore_errors=True)

    def _make_folders(self):
        home = self.folder / "home"
        runtime = self.folder / "run"
        for folder in (home / ".config", home / ".local/share", home / ".cache", home / ".local/state", runtime):
            folder.mkdir(parents=True, mode=0o700)
        # LC_ALL decides the texts of the program; the rest of the desktop need not know the language.
        self.environment = {
            "PATH": "/usr/bin:/bin",
            "HOME": str(home),
            "XDG_CONFIG_HOME": str(home / ".config"),
            "XDG_DATA_HOME": str(home / ".local/share"),
            "XDG_CACHE_HOME": str(home / ".cache"),
            "XDG_STATE_HOME": str(home / ".local/state"),
            "XDG_RUNTIME_DIR": str(runtime),
            "XDG_SESSION_TYPE": "x11",
            "LANG": "C.UTF-8",
            "TZ": "Europe/Berlin",
            "NO_AT_BRIDGE": "0",
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
            # A bus that is not there must not be looked for elsewhere.
            "DBUS_SESSION_BUS_ADDRESS": "unix:path=/nonexistent",
        }

    @property
    def home(self):
        return pathlib.Path(self.environment["HOME"])

    def start(self, *command, environment=None, **options):
        """Starts a program on the desktop; it is stopped with it, if it is still there then."""
        process = Process(command, {**self.environment, **(environment or {})}, self.folder, **options)
        self._processes.append(process)
        return process

    def told(self):
        """What the programs of the desktop have written, one text each."""
        return [str(process) for process in self._processes if isinstance(process, Process)]

    # The parts, each of which returns when it does what it is there for.

    def _start_screen(self):
        number, told = os.pipe()
        width, height = self.size
        self.server = self.start(
            *("Xvfb", "-displayfd", str(told), "-screen", "0", f"{width}x{height}x24"),
            *("-dpi", "96", "-nolisten", "tcp", "-noreset"),
            pass_fds=[told],
        )
        os.close(told)
        with open(number) as display:
            name = display.readline().strip()
        if not name:
            raise AssertionError(f"there is no screen: {self.server.output}")
        self.environment["DISPLAY"] = ":" + name
        self.screen = self._when_it_listens(lambda: Screen(":" + name))
        self.input = PointerAndKeys(self.screen.display)
        self._processes.append(self.screen)

    def _when_it_listens(self, connect):
        def attempt():
            try:
                return connect()
            except DisplayConnectionError:
                return None

        return wait_until(attempt, "the screen takes connections")

    def _start_bus(self):
        self.bus = Bus(self.folder / "bus", self.environment)
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = self.bus.address

    def _start_accessibility(self):
        self.start("/usr/libexec/at-spi-bus-launcher", "--launch-immediately", pdeathsig="TERM")
        self._wait_for_owner(ACCESSIBILITY)
        (address,) = self.bus.call(ACCESSIBILITY, "/org/a11y/bus", "org.a11y.Bus", "GetAddress")
        self.accessibility = AccessibilityBus(address)
        self._processes.append(self.accessibility)

    def _start_portal(self):
        self.portal = Portal(self, self._appearance)
        self._wait_for_owner(PORTAL)

    def _start_openbox(self):
        configuration = self.folder / "openbox.xml"
        bindings = "".join(map(BINDING.format, self._taken_keys))
        configuration.write_text(WINDOW_MANAGER.format(workspaces=self._workspaces, bindings=bindings))
        self._start_window_manager("openbox", "--sm-disable", "--config-file", str(configuration))

    def _start_xfwm4(self):
        self._start_window_manager("xfwm4", "--compositor=off", "--sm-client-disable")

    def _start_window_manager(self, *command):
        self.start(*command)
        wait_until(self.screen.has_window_manager, "the window manager is there")

    def start_compositor(self):
        self.compositor = self.start("picom", "--backend", "xrender", "--config", "/dev/null")
        wait_until(self.screen.has_compositor, "the compositor is there")

    def start_panel(self):
        configuration = self.home / ".config/xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml"
        configuration.parent.mkdir(parents=True, exist_ok=True)
        configuration.write_text(PANEL)
        service = pathlib.Path("/usr/share/dbus-1/services/org.xfce.Xfconf.service")
        shutil.copy(service, self.bus.folder / "services")
        self.bus.call(
            "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "ReloadConfig"
        )
        self.panel = self.start("xfce4-panel", "--disable-wm-check")
        self._wait_for_owner(WATCHER)

    def has_panel(self):
        return self.panel is not None

    def stop_panel(self):
        self.panel.stop()
        self.panel = None
        wait_until(lambda: not self.bus.owner(WATCHER), "the panel is gone")

    def status_icons(self):
        """The area of the screen that icons take on the panel, or None where there are none."""
        # Its lower edge is a line of another colour.
        panel = self.screen.picture_at_rest((0, 0, self.size[0], PANEL_HEIGHT - 2))
        empty = Image.new("RGB", panel.size, panel.getpixel((0, 0)))
        difference = ImageChops.difference(panel, empty).convert("L")
        return difference.point(lambda value: 255 if value > NO_ICON else 0).getbbox()

    def status_icon(self):
        """The middle of the only icon on the panel, as soon as it is there."""
        left, top, right, bottom = wait_until(self.status_icons, "there is an icon on the panel")
        return ((left + right) // 2, (top + bottom) // 2)

    def start_notifications(self):
        configuration = self.folder / "dunstrc"
        configuration.write_text(NOTIFICATION_DAEMON)
        self.notifications = self.start("dunst", "-config", str(configuration))
        self._wait_for_owner(NOTIFICATIONS)

    def _wait_for_owner(self, name):
        wait_until(lambda: self.bus.owner(name), f"{name} is on the bus")


class Process:
    """A program that runs on the desktop. What it writes is kept, to be shown where something fails."""

    def __init__(self, command, environment, folder, pdeathsig="KILL", **options):
        self._name = command[0]
        self._output = tempfile.TemporaryFile(dir=folder)
        # Should the test be killed, it goes too; with TERM it can end what it has started itself.
        self.process = subprocess.Popen(
            ["setpriv", "--pdeathsig", pdeathsig, *command],
            env=environment,
            cwd=environment["HOME"],
            **{"stdin": subprocess.DEVNULL, "stdout": self._output, "stderr": self._output, **options},
        )

    @property
    def output(self):
        return os.pread(self._output.fileno(), 1 << 20, 0).decode(errors="replace")

    def __str__(self):
        if self._output.closed:
            return f"{self._name}: stopped"
        end = self.process.poll()
        return f"{self._name}: {'runs' if end is None else f'has ended with {end}'}: {self.output}"

    def kill(self):
        self.process.kill()
        self.process.wait(timeout=PATIENCE_SECONDS)

    def stop(self):
        """Ends it, where it has not ended."""
        if self.process.poll() is None:
            self.process.terminate()
            try:
                self.process.wait(timeout=PATIENCE_SECONDS / 10)
            except subprocess.TimeoutExpired:
                self.kill()
        self._output.close()


class Portal:
    """What the desktop's settings say; see portal.py for the names and values."""

    def __init__(self, desktop, settings):
        script = pathlib.Path(__file__).with_name("portal.py")
        inside, self._changes = os.pipe()
        desktop.start(sys.executable, "-B", str(script), json.dumps(settings), stdin=inside)
        os.close(inside)

    def set(self, key, value):
        """Changes a setting, or takes it away. Programs hear of it."""
        os.write(self._changes, json.dumps([key, value]).encode() + b"\n")
