"""Plays a short scene with the real program on a private desktop, and leaves a picture of each step.

usage: play_demo.py FOLDER
"""

import pathlib
import sys
import tempfile

from desktop import Desktop
from desktop_program import wait_until
from quillo_on_desktop import LoneQuillo, Program


class Scene:
    def __init__(self, desktop, quillo, folder):
        self.desktop = desktop
        self.quillo = quillo
        self.folder = folder
        self.steps = 0

    def step(self, words):
        """Says what has just been done and takes a picture of it."""
        self.steps += 1
        path = self.folder / f"{self.steps}-{words.lower().replace(' ', '-')}.png"
        self.desktop.screen.picture_at_rest().save(path, optimize=True)
        print(f"{self.steps}. {words}: {path.name}", flush=True)

    def play(self):
        hand = self.desktop.input
        program = Program(self.desktop, self.quillo)
        try:
            program.wait_until_ready()
            self.desktop.status_icon()
            self.step("Quillo stands in the status bar")

            popover = program.open_popover()
            hand.type("Call mom tomorrow at 9am")
            self.step("A click opens the list and a task is typed")
            hand.key("Return")
            popover.row("Call mom")
            hand.type("Buy milk\n")
            popover.row("Buy milk")
            self.step("Return adds it")
            hand.click(popover.checkbox("Buy milk").centre)
            wait_until(lambda: len(popover.rows()) == 1, "the task is ticked")
            self.step("A click on the circle completes one")
            hand.key("Escape")
            wait_until(lambda: not program.has_popover(), "the list is closed")

            terminal = self.desktop.start("xterm", "-geometry", "90x24+60+120")
            wait_until(
                lambda: self.desktop.screen.active_process() == terminal.process.pid, "the terminal is there"
            )
            program.open_quick_add()
            hand.type("Email Sam in 2 hours")
            self.step("The shortcut opens quick add over everything")
            hand.key("Return")
            wait_until(lambda: not program.has_quick_add(), "the panel is gone")
            terminal.stop()
            program.open_popover().row("Email Sam")
            self.step("It is in the list")
            print(self.quillo("list", "--all").output, end="")
            if program.terminate() != 0:
                raise AssertionError(program.errors)
        finally:
            program.kill()


def main(folder):
    folder = pathlib.Path(folder)
    folder.mkdir(parents=True, exist_ok=True)
    with Desktop(width=1280, height=800) as desktop, tempfile.TemporaryDirectory() as data:
        desktop.screen.paint((92, 124, 138))
        Scene(desktop, LoneQuillo(pathlib.Path(data) / "data", desktop), folder).play()


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    main(sys.argv[1])
