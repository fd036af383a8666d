"""The real program on a private desktop, as its user meets it: each file here opens windows and works in them.

What is named below is named as assistive programs hear it. With QUILLO_FAILURES set to a folder, a test that fails
leaves there what was on the screen then, and what the programs have said.
"""

import os
import pathlib
import sys
import tempfile
import time

from gi.repository import GLib

from desktop import WATCHER, Desktop
from desktop_program import DesktopProgram, wait_until
from quillo_command import CommandTest, Quillo

WAIT_SECONDS = 60
NAME = "org.quillo.Quillo"

POPOVER_SIZE = (360, 480)
QUICK_ADD_SIZE = (600, 72)
SHORTCUT = "ctrl+alt+super+t"

NEW_TASK = "New task"  # both entry fields, and the title of the quick-add panel
POPOVER_TITLE = "Quillo"
MORE = "More options"
SHOW_DONE = "Show completed tasks"
HIDE_DONE = "Hide completed tasks"
STATISTICS_TITLE = "Quillo Statistics"
SETTINGS_TITLE = "Quillo Settings"
UPDATES_TITLE = "Software Update"
MASCOT = "Olo, the Quillo mascot"
CREDITS_BUTTON = "Back to work"

# As long as no animation of ours takes.
SETTLED_SECONDS = 0.5


class LoneQuillo(Quillo):
    """The command on a desktop. The tests here start the desktop program themselves."""

    def __init__(self, folder, desktop):
        super().__init__(folder)
        self.environment = {**desktop.environment, **self.environment, "HOME": str(desktop.home)}

    def hold(self):
        pass


class Program(DesktopProgram):
    """One run of the program with a screen."""

    def __init__(self, desktop, quillo, environment=None, arguments=(), scale=1):
        self.desktop = desktop
        self.quillo = quillo
        self.scale = scale
        variables = {**quillo.environment, **(environment or {})}
        if scale != 1:
            variables["QT_SCALE_FACTOR"] = str(scale)
        super().__init__(quillo.folder, variables, arguments=arguments)

    @property
    def tree(self):
        """What assistive programs see of it."""
        return self.desktop.accessibility.application(self.process.pid, self.scale)

    def windows(self):
        return self.desktop.screen.windows(self.process.pid)

    def is_active(self):
        """Whether it has the keyboard."""
        return self.desktop.screen.active_process() == self.process.pid

    def open_popover(self):
        """Clicks the icon on the panel; returns the popover, ready to be typed into."""
        self.desktop.input.click(self.desktop.status_icon())
        return self.popover()

    def popover(self):
        """The popover that is about to come up, or is there."""
        return Popover(self, self._ready_window(POPOVER_TITLE))

    def has_popover(self):
        return self._window_titled(POPOVER_TITLE) is not None

    def open_quick_add(self):
        """By the shortcut, which works from everywhere."""
        self.desktop.input.key(SHORTCUT)
        return self.quick_add()

    def quick_add(self):
        return QuickAdd(self, self._ready_window(NEW_TASK))

    def has_quick_add(self):
        return self._window_titled(NEW_TASK) is not None

    def view(self, title):
        """The window of that title, ready to be worked in."""
        return View(self, self._ready_window(title))

    def has_window(self, title):
        return self._window_titled(title) is not None

    def _window_titled(self, title):
        return next((window for window in self.windows() if window.title == title), None)

    def _ready_window(self, title):
        """The window of this title, when it is there, has the keyboard, and can be seen."""
        window = wait_until(lambda: self._window_titled(title), f"the window {title!r} is there", WAIT_SECONDS)
        wait_until(self.is_active, f"the window {title!r} has the keyboard", WAIT_SECONDS)
        is_painted = self.desktop.screen.is_painted
        within = without_shadow(window.area)
        wait_until(lambda: is_painted(within), f"the window {title!r} is painted", WAIT_SECONDS)
        return window


def without_shadow(area):
    """What of a window is not its shadow, or less."""
    left, top, width, height = area
    edge = min(height // 4, 40)
    return left + edge, top + edge, width - 2 * edge, height - 2 * edge


class View:
    """A window of the program that is shown."""

    def __init__(self, program, window):
        self.program = program
        self.window = window
        self.input = program.desktop.input

    @property
    def node(self):
        """Its tree. Hidden windows stay in the program's list."""
        title = self.window.title

        def find():
            return next((top for top in self.program.tree.children if top.name == title and top.is_showing()), None)

        return wait_until(find, f"assistive programs see {title!r}", WAIT_SECONDS)

    def find(self, role=None, name=None):
        return self.node.find(role, name, seconds=WAIT_SECONDS)

    def has(self, role=None, name=None):
        try:
            return bool(self.node.find_all(role, name))
        except GLib.Error:  # Something went while we looked.
            return bool(self.node.find_all(role, name))

    def names(self, role):
        """The names of all that have the role, in the order of the tree."""
        try:
            return [node.name for node in self.node.find_all(role)]
        except GLib.Error:
            return [node.name for node in self.node.find_all(role)]

    def click(self, role, name):
        self.input.click(self.find(role, name).centre)

    @property
    def entry(self):
        return self.find("text", NEW_TASK)

    def picture(self):
        """When nothing moves any more."""
        return self.program.desktop.screen.picture_at_rest(self.window.area)


class Popover(View):
    def rows(self):
        """The names of the rows, from top to bottom: as assistive programs read them out."""
        while True:
            try:
                nodes = [(node.area[1], node.name) for node in self.node.find_all("list item")]
                return [name for _, name in sorted(nodes)]
            except GLib.Error:  # Something went while we looked.
                pass

    def row(self, title):
        """The row of the task with this title, done or not, due or not."""

        def matches(name):
            return name.removeprefix("Completed task: ").split(", Due ")[0] == title

        def find():
            try:
                return next((node for node in self.node.find_all("list item") if matches(node.name)), None)
            except GLib.Error:
                return None

        return wait_until(find, f"there is a row {title!r}", WAIT_SECONDS)

    def checkbox(self, title):
        return self.row(title).find("check box", seconds=WAIT_SECONDS)

    def hover(self, title):
        """Points at the row, without touching it; its buttons come up."""
        left, top, width, height = self.row(title).area
        self.input.move((left + width // 2, top + height // 2))

    def open_menu(self):
        self.click("push button", MORE)
        return self.menu_items()

    def menu_items(self):
        """The texts of the menu that is open."""
        wait_until(lambda: self.names("menu item"), "there is a menu", WAIT_SECONDS)
        return self.names("menu item")

    def choose(self, item):
        self.click("menu item", item)


class QuickAdd(View):
    pass


class DesktopTest(CommandTest):
    """A test on a desktop that the tests of its class share, with a data folder of its own. No program runs yet.

    `desktop_options` are those of the Desktop.
    """

    desktop_options = {}

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.desktop = cls.enterClassContext(Desktop(**cls.desktop_options))

    def setUp(self):
        super().setUp()
        self._programs = []
        self.addCleanup(self._end_programs)
        self.input = self.desktop.input
        # Where it points at nothing of ours.
        self.input.move((5, self.desktop.size[1] - 5))

    def make_quillo(self, name):
        return LoneQuillo(self.folder / name, self.desktop)

    def start(self, **options):
        """A run of the program, ready for commands, with its icon on the panel where there is one. It is killed if the
        test does not end it."""
        program = self.launch(**options)
        program.wait_until_ready()
        return program

    def launch(self, **options):
        """The same, that may not be ready."""
        program = Program(self.desktop, self.quillo, **options)
        self._programs.append(program)
        return program

    def _end_programs(self):
        for program in self._programs:
            program.kill()
        if self.desktop.has_panel():
            # An icon must not be taken for that of the next program.
            wait_until(lambda: not self.desktop.status_icons(), "the icon is gone")

    def _callTestMethod(self, method):
        try:
            super()._callTestMethod(method)
        except BaseException:
            self._keep_evidence()
            raise

    def _keep_evidence(self):
        if not (folder := os.environ.get("QUILLO_FAILURES")):
            return
        name = pathlib.Path(sys.argv[0]).stem + self.id().removeprefix("__main__")
        evidence = pathlib.Path(folder) / name
        evidence.parent.mkdir(parents=True, exist_ok=True)
        texts = [f"quillo-desktop: {program.errors}" for program in self._programs]
        evidence.with_suffix(evidence.suffix + ".txt").write_text("\n".join([*texts, *self.desktop.told()]))
        try:
            self.desktop.screen.picture().save(f"{evidence}.png")
        except OSError:  # The screen is gone; some tests want that.
            pass

    def add(self, *texts):
        for text in texts:
            self.done("add", "--", text)

    def eventually(self, get, expected):
        """Waits for a value, and says what came in its place."""
        deadline = time.monotonic() + WAIT_SECONDS
        while (value := get()) != expected and time.monotonic() < deadline:
            time.sleep(0.02)
        self.assertEqual(value, expected)

    def active_titles(self):
        return [task["title"] for task in self.quillo.tasks() if not task["isDone"]]

    def assert_ends_well(self, program):
        self.assertEqual(program.terminate(), 0, program.errors)


class StatusItem:
    """The program's item in the status area, as panels read it: its properties are attributes here."""

    INTERFACE = "org.kde.StatusNotifierItem"
    MENU = "com.canonical.dbusmenu"

    def __init__(self, desktop):
        self._bus = desktop.bus
        watcher = GLib.Variant("(ss)", (WATCHER, "RegisteredStatusNotifierItems"))
        properties = ("/StatusNotifierWatcher", "org.freedesktop.DBus.Properties")

        def items():
            return self._bus.call(WATCHER, *properties, "Get", watcher)[0]

        item = wait_until(items, "an item is registered")[0]
        self._name, _, path = item.partition("/")
        self._path = "/" + path

    def __getattr__(self, name):
        parameters = GLib.Variant("(ss)", (self.INTERFACE, name))
        return self._bus.call(self._name, self._path, "org.freedesktop.DBus.Properties", "Get", parameters)[0]

    def activate(self):
        """Clicks on it, as a panel tells of a click in its upper left corner."""
        self._bus.call(self._name, self._path, self.INTERFACE, "Activate", GLib.Variant("(ii)", (0, 0)))

    def menu(self):
        """The items of the menu that panels draw: dictionaries with label, type, enabled, shortcut, as far as they
        are set."""
        parameters = GLib.Variant("(iias)", (0, -1, []))
        _, (_, _, children) = self._bus.call(self._name, self.Menu, self.MENU, "GetLayout", parameters)
        return [properties for _, properties, _ in children]


class Terminal:
    """A program of somebody else's, whose window takes what is typed."""

    def __init__(self, test):
        handle, self._heard = tempfile.mkstemp()
        os.close(handle)
        test.addCleanup(os.remove, self._heard)
        keep = f"cat > {self._heard}"
        self.process = test.desktop.start("xterm", "-geometry", "80x24+100+400", "-e", keep)
        test.addCleanup(self.process.stop)
        shown = test.desktop.screen.windows
        (self.window,) = wait_until(lambda: shown(self.process.process.pid), "there is a terminal")

    def heard(self):
        return pathlib.Path(self._heard).read_text()


class BesideATerminal:
    """For a DesktopTest in which somebody else's program has the keyboard first."""

    def start_terminal(self):
        """A terminal that has the keyboard, and shows what is typed into it."""
        terminal = Terminal(self)
        self.input.click(terminal.window.centre)
        self.eventually(self.desktop.screen.active_process, terminal.process.process.pid)
        return terminal

    def assert_has_the_keyboard(self, terminal):
        self.eventually(self.desktop.screen.active_process, terminal.process.process.pid)
        before = terminal.heard()
        self.input.type("echo\n")
        self.eventually(terminal.heard, before + "echo\n")
