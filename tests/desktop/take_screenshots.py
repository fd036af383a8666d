"""Takes pictures of the real program, for people to look at.

usage: take_screenshots.py FOLDER

Each scene in light and dark, at single and double size: FOLDER/<scene>-<light|dark>-<1x|2x>.png. The program's clock
starts at the same moment each time, so that pictures change only when the program does.
"""

import glob
import pathlib
import sys
import tempfile
from datetime import datetime
from zoneinfo import ZoneInfo

from desktop import Desktop
from desktop_program import wait_until
from quillo_command import stored_task
from quillo_on_desktop import (
    CREDITS_BUTTON,
    MASCOT,
    SETTINGS_TITLE,
    SHOW_DONE,
    STATISTICS_TITLE,
    UPDATES_TITLE,
    LoneQuillo,
    Program,
)

NOW = datetime(2026, 3, 5, 10, 20, tzinfo=ZoneInfo("Europe/Berlin"))  # a Thursday
GROUNDS = {"light": (198, 210, 222), "dark": (38, 44, 54)}
SCHEMES = {"light": 2, "dark": 1}
SCALES = (1, 2)
SCREEN = (1600, 1300)  # with room for a popover of double size and its shadow


def clock():
    """The environment of a program whose clock shows NOW when it starts."""
    (library,) = glob.glob("/usr/lib/*/faketime/libfaketimeMT.so.1")
    return {
        "LD_PRELOAD": library,
        "FAKETIME": f"@{NOW:%Y-%m-%d %H:%M:%S}",
        "FAKETIME_DONT_FAKE_MONOTONIC": "1",
    }


def at(month, day, hour, minute=0):
    return NOW.replace(month=month, day=day, hour=hour, minute=minute).timestamp()


def mixed():
    return [
        stored_task(1, "Call mom", due=at(3, 6, 9)),
        stored_task(2, "Email Sam", due=at(3, 5, 12, 20)),
        stored_task(3, "Pay rent", due=at(3, 2, 9)),
        stored_task(4, "Buy milk and a loaf of bread"),
        stored_task(5, "Write down what was said in the meeting about the new office", due=at(3, 7, 14, 30)),
        stored_task(6, "Renew the passport", due=at(4, 20, 10)),
        stored_task(7, "Water the plants", done=True),
        stored_task(8, "Book a table for Friday", done=True, due=at(3, 4, 18)),
    ]


def thousand():
    words = ("Read", "Sort", "Answer", "Copy", "Send", "Check", "Print", "File")
    return [stored_task(number, f"{words[number % 8]} letter {number + 1}") for number in range(1000)]


class Scenes:
    """Each method brings the program into a scene and returns the window to be seen."""

    def __init__(self, program):
        self.program = program
        self.input = program.desktop.input

    def popover(self):
        # In the middle of the screen, where all of its shadow is seen.
        self.program.quillo("open")
        popover = self.program.popover()
        self.input.move((5, self.program.desktop.size[1] - 5))
        return popover

    def with_done(self):
        popover = self.popover()
        popover.click("push button", SHOW_DONE)
        self.input.move((5, self.program.desktop.size[1] - 5))
        return popover

    def hover(self):
        popover = self.with_done()
        popover.hover("Call mom")
        popover.find("push button", "Delete Call mom")
        return popover

    def editing(self):
        popover = self.popover()
        for key in ("Down", "Down", "Down", "Down", "Return"):
            self.input.key(key)
        return popover

    def reminder(self):
        popover = self.popover()
        popover.hover("Email Sam")
        popover.click("push button", "Set reminder for Email Sam")
        popover.find("label", "Remind me")
        self.input.move((5, self.program.desktop.size[1] - 5))
        return popover

    def options(self):
        popover = self.popover()
        popover.open_menu()
        self.input.move((5, self.program.desktop.size[1] - 5))
        return popover

    def quick_add(self):
        panel = self.program.open_quick_add()
        self.input.type("Email Sam in 2 hours")
        return panel

    def quick_add_empty(self):
        return self.program.open_quick_add()

    def complete(self, *titles):
        """As a user of the command does, so that it counts."""
        for title in titles:
            self.program.quillo("add", "--", title)
            self.program.quillo("done", "1")

    def feedback(self):
        self.complete(*("one", "two", "three", "four", "five"))
        popover = self.popover()
        popover.find("push button", "Maybe later")
        return popover

    def credits(self):
        popover = self.popover()
        olo = popover.find(name=MASCOT).centre
        for _ in range(5):
            self.input.click(olo, apart=False)
        popover.find("push button", CREDITS_BUTTON)
        self.input.move((5, self.program.desktop.size[1] - 5))
        return popover

    def settings(self):
        self.program.quillo("settings")
        return self.program.view(SETTINGS_TITLE)

    def recording(self):
        settings = self.settings()
        settings.click("push button", "Open Quick Add")
        self.input.move((5, self.program.desktop.size[1] - 5))
        return settings

    def end_of_settings(self):
        settings = self.settings()
        for _ in range(4):
            self.input.key("shift+Tab")
        return settings

    def statistics(self):
        self.complete("Water the plants", "Book a table", "Buy milk", "Sort the letters", "Call the bank", "Pay rent")
        return self.no_statistics()

    def no_statistics(self):
        self.program.quillo("statistics")
        return self.program.view(STATISTICS_TITLE)

    def updates(self):
        popover = self.popover()
        popover.open_menu()
        popover.choose("Check for Updates…")
        updates = self.program.view(UPDATES_TITLE)
        wait_until(lambda: not self.program.has_popover(), "the popover is gone")
        return updates


SCENES = {
    "popover-empty": (list, Scenes.popover),
    "popover-tasks": (mixed, Scenes.with_done),
    "popover-thousand": (thousand, Scenes.popover),
    "popover-editing": (mixed, Scenes.editing),
    "popover-reminder": (mixed, Scenes.reminder),
    "popover-hover": (mixed, Scenes.hover),
    "popover-options": (mixed, Scenes.options),
    "quick-add": (list, Scenes.quick_add),
    "quick-add-empty": (list, Scenes.quick_add_empty),
    "feedback": (list, Scenes.feedback),
    "credits": (list, Scenes.credits),
    "settings": (mixed, Scenes.settings),
    "settings-recording": (mixed, Scenes.recording),
    "settings-end": (mixed, Scenes.end_of_settings),
    "statistics": (mixed, Scenes.statistics),
    "statistics-empty": (list, Scenes.no_statistics),
    "updates": (list, Scenes.updates),
}


def take(desktop, name, scale, path):
    tasks, scene = SCENES[name]
    with tempfile.TemporaryDirectory() as folder:
        quillo = LoneQuillo(pathlib.Path(folder) / "data", desktop)
        if stored := tasks():
            quillo.put_items(*stored)
        desktop.input.move((5, desktop.size[1] - 5))
        program = Program(desktop, quillo, environment=clock(), scale=scale)
        try:
            program.wait_until_ready()
            scene(Scenes(program)).picture().save(path, optimize=True)
        finally:
            program.kill()


def main(folder):
    folder = pathlib.Path(folder)
    folder.mkdir(parents=True, exist_ok=True)
    for look, ground in GROUNDS.items():
        with Desktop(*SCREEN, appearance={"color-scheme": SCHEMES[look], "reduced-motion": 1}) as desktop:
            desktop.screen.paint(ground)
            for scale in SCALES:
                for name in SCENES:
                    path = folder / f"{name}-{look}-{scale}x.png"
                    take(desktop, name, scale, path)
                    print(path, flush=True)


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    main(sys.argv[1])
