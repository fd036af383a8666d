#!/usr/bin/env python3
"""Installs Quillo into a folder, and unpacks its Debian package into another, and uses what is there.

usage: test_install.py --cmake PATH --cpack PATH --build FOLDER --version VERSION [unittest argument...]
"""

import argparse
import configparser
import contextlib
import gzip
import os
import pathlib
import re
import shlex
import shutil
import sqlite3
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree

from terminal import Terminal

arguments = None  # from the command line, see main()

IDENTIFIER = "org.quillo.Quillo"

# A title that would do harm where a shell took it for anything but text.
NASTY_TITLE = "It's \"so\" $(touch harm) `touch harm` ${HOME} 50% a:b\\c\nsecond * line"
NASTY_LINE = NASTY_TITLE.replace("\n", " ")

COMPLETE_IN_BASH = r"""
source "$1"
shift
[[ $(complete -p quillo) =~ -F\ ([^ ]+) ]] || exit 1
COMP_WORDS=("$@")
COMP_CWORD=$(($# - 1))
COMP_TYPE=9
"${BASH_REMATCH[1]}" "$1" "${@: -1}" "${@: -2:1}"
((${#COMPREPLY[@]} == 0)) || printf '%s\0' "${COMPREPLY[@]}"
"""

LOGGING_STAND_IN = """#!/bin/sh
echo "$*" >> "$HOME/calls"
echo ' 1  [ ]  One'
echo '20  [ ]  Twenty'
"""

FAILING_STAND_IN = """#!/bin/sh
echo 'quillo: out of order' >&2
exit 1
"""


def run(command, **options):
    """Runs a command that must succeed and returns what it printed."""
    done = subprocess.run(command, capture_output=True, text=True, timeout=120, stdin=subprocess.DEVNULL, **options)
    if done.returncode != 0:
        raise AssertionError(f"{command} failed with {done.returncode}:\n{done.stdout}{done.stderr}")
    return done.stdout


def needs(program):
    return unittest.skipUnless(shutil.which(program), f"{program} is not installed")


class Installed:
    """What must hold wherever Quillo is installed. `prefix` is the folder that holds bin and share."""

    zsh_folder = None
    programs = None  # where what is installed says that the programs are

    @classmethod
    def setUpClass(cls):
        cls.stage = pathlib.Path(tempfile.mkdtemp(prefix="quillo-install-"))
        cls.addClassCleanup(shutil.rmtree, cls.stage)
        cls.prefix = cls.install()
        cls.desktop_file = cls.prefix / f"share/applications/{IDENTIFIER}.desktop"
        cls.metainfo = cls.prefix / f"share/metainfo/{IDENTIFIER}.metainfo.xml"
        cls.bash_completion = cls.prefix / "share/bash-completion/completions/quillo"
        cls.fish_completion = cls.prefix / "share/fish/vendor_completions.d/quillo.fish"
        cls.zsh_completion = cls.prefix / "share/zsh" / cls.zsh_folder / "_quillo"

    def setUp(self):
        self.home = pathlib.Path(tempfile.mkdtemp(dir=self.stage))
        self.data = self.home / "tasks"

    # The program.

    def quillo(self, *words):
        """Runs the installed command with nothing in its environment but where its tasks are."""
        return run([self.prefix / "bin/quillo", *words], env={"QUILLO_DATA_DIR": str(self.data)}, cwd=self.home)

    def commands(self):
        return re.findall(r"^  ([a-z-]+)  +\S", self.quillo("help"), re.MULTILINE)

    def options(self, command):
        return {*re.findall(r"--[a-z-]+", self.quillo("help", command)), "--help"}

    def add_tasks(self):
        """Two open tasks, numbers 1 and 3, and a completed one between them."""
        for title in "Oldest", "Finished", NASTY_TITLE:
            self.quillo("add", title)
        self.quillo("done", "2")

    def keep_lists(self):
        """Has two earlier lists kept, the later of them with one task."""
        for title in "One", "Two":
            self.quillo("add", title)
        for _ in range(2):
            self.quillo("delete", "1")

    # The shells. Each answers what it offers as a list of (word, description).

    def environment(self, folder=None):
        """A small one, in which the installed command, or that in the folder, comes first."""
        return {
            "PATH": f"{folder or self.prefix / 'bin'}:/usr/bin:/bin",
            "HOME": str(self.home),
            "QUILLO_DATA_DIR": str(self.data),
            "LC_ALL": "C.UTF-8",
            "TERM": "dumb",
        }

    def stand_in(self, script):
        """The environment in which the script is the quillo command."""
        folder = self.home / "stand-in"
        folder.mkdir()
        (folder / "quillo").write_text(script)
        (folder / "quillo").chmod(0o755)
        return self.environment(folder)

    def complete(self, command, environment):
        done = subprocess.run(command, capture_output=True, text=True, timeout=60, stdin=subprocess.DEVNULL,
                              env=environment or self.environment(), cwd=self.home)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        return done.stdout

    def bash(self, *words, environment=None):
        offered = self.complete(["bash", "--norc", "--noprofile", "-c", COMPLETE_IN_BASH, "bash",
                                 str(self.bash_completion), "quillo", *words], environment)
        return [choice.partition(" ")[::2] for choice in offered.split("\0")[:-1]]

    def fish(self, line, environment=None):
        offered = self.complete(["fish", "--no-config", "-c", "source $argv[1]; complete -C $argv[2]",
                                 str(self.fish_completion), line], environment)
        return [choice.partition("\t")[::2] for choice in offered.splitlines()]

    def zsh(self, line, *expected, environment=None):
        """What is on the terminal after the line and the tabulator key were typed."""
        with Terminal(["zsh", "-f", "-i"], {**(environment or self.environment()), "PROMPT": "ready> "}) as terminal:
            terminal.wait_for("ready> ")
            # The folders of zsh are read once only: that takes seconds.
            terminal.type(f"cd; fpath=({self.zsh_completion.parent} $fpath); autoload -U compinit;"
                          f" compinit -u -d {self.stage}/zcompdump; print set''up\n")
            terminal.wait_for("setup", "ready> ")
            terminal.type(line + "\t")
            return terminal.wait_for(*expected)

    # The tests.

    def test_command_runs(self):
        self.assertEqual(self.quillo("version"), f"quillo {arguments.version}\n")
        self.quillo("add", "Call mom tomorrow at 9am")
        self.assertRegex(self.quillo("list"), r"^1  \[ \]  Call mom  .*9:00 AM\n$")

    def test_command_finds_what_asks_servers(self):
        self.quillo("model", "use", "http://127.0.0.1:1")
        self.assertIn("nobody answers there", self.quillo("model", "status"))

    def test_command_finds_what_keeps_in_step_through_servers(self):
        self.quillo("add", "task")
        with contextlib.closing(sqlite3.connect(self.data / "preferences.sqlite", isolation_level=None)) as preferences:
            place = ("Quillo.linux.sync.place", "string", "webdav http://127.0.0.1:1")
            preferences.execute("INSERT INTO preferences VALUES(?, ?, ?)", place)
        answer = subprocess.run([self.prefix / "bin/quillo", "sync", "now"], env={"QUILLO_DATA_DIR": str(self.data)},
                                capture_output=True, text=True, timeout=60)
        self.assertEqual((answer.returncode, answer.stderr), (1, "quillo: nobody answers there\n"))

    def test_documents_are_in_place(self):
        documents = self.prefix / "share/doc/quillo"
        self.assertIn("Quillo", (documents / "README.md").read_text())
        self.assertIn("Permission is hereby granted, free of charge", (documents / self.licence_name).read_text())

    def desktop_entry(self):
        """The groups of the desktop file."""
        entry = configparser.RawConfigParser(delimiters="=", comment_prefixes="#")
        entry.optionxform = str
        entry.read(self.desktop_file, encoding="utf-8")
        return entry

    @needs("desktop-file-validate")
    def test_desktop_file_is_valid(self):
        self.assertEqual(run(["desktop-file-validate", self.desktop_file]), "")

    def test_desktop_file_names_what_is_installed(self):
        entry = self.desktop_entry()
        main = entry["Desktop Entry"]
        actions = main["Actions"].rstrip(";").split(";")
        self.assertEqual(entry.sections(), ["Desktop Entry", *(f"Desktop Action {action}" for action in actions)])
        self.assertEqual(main["TryExec"], str(self.programs / "quillo-desktop"))
        self.assertTrue((self.prefix / "bin/quillo-desktop").exists())
        for group in entry.sections():
            with self.subTest(group):
                program, command = shlex.split(entry[group]["Exec"])
                self.assertEqual(program, str(self.programs / "quillo"))
                self.assertIn(command, self.commands())
                self.assertEqual(group, f"Desktop Action {command}" if command != "open" else "Desktop Entry")

    def test_session_bus_starts_the_desktop_program(self):
        self.assertEqual(self.desktop_entry()["Desktop Entry"]["DBusActivatable"], "true")
        service = (self.prefix / f"share/dbus-1/services/{IDENTIFIER}.service").read_text()
        self.assertEqual(service.splitlines()[:2], ["[D-BUS Service]", f"Name={IDENTIFIER}"])
        self.assertIn(f"Exec={self.programs / 'quillo-desktop'}", service)

    def test_icons_are_in_place(self):
        name = self.desktop_entry()["Desktop Entry"]["Icon"]
        for file in f"scalable/apps/{name}.svg", f"symbolic/apps/{name}-symbolic.svg":
            picture = xml.etree.ElementTree.parse(self.prefix / "share/icons/hicolor" / file).getroot()
            self.assertEqual(picture.tag, "{http://www.w3.org/2000/svg}svg")
            _, _, width, height = picture.get("viewBox").split()
            self.assertEqual(width, height)

    @needs("appstreamcli")
    def test_metainfo_is_valid(self):
        run(["appstreamcli", "validate", "--no-net", self.metainfo])

    def test_metainfo_is_of_this_program(self):
        component = xml.etree.ElementTree.parse(self.metainfo).getroot()
        self.assertEqual(component.findtext("id"), IDENTIFIER)
        self.assertEqual(component.findtext("launchable"), self.desktop_file.name)
        self.assertEqual(component.find("releases/release").get("version"), arguments.version)
        for program in component.findall("provides/binary"):
            self.assertTrue((self.prefix / "bin" / program.text).exists(), program.text)

    @needs("groff")
    def test_manual_page_renders(self):
        with gzip.open(self.prefix / "share/man/man1/quillo.1.gz") as page:
            shown = subprocess.run(["groff", "-mandoc", "-ww", "-Tutf8", "-rLL=80n", "-P-cbou"], input=page.read(),
                                   capture_output=True, timeout=60, env=self.environment())
        self.assertEqual((shown.returncode, shown.stderr), (0, b""))
        text = shown.stdout.decode()
        self.assertIn("quillo — to-do list", text)
        for command in self.commands():
            with self.subTest(command):
                self.assertRegex(text, rf"(?m)^     {command}\b")
                self.assertEqual([option for option in self.options(command) if option not in text], [])

    def test_bash_offers_commands_and_options(self):
        self.assertEqual(self.bash("cl"), [("clear-completed", "")])
        self.assertEqual([word for word, _ in self.bash("")], self.commands())
        self.assertEqual([word for word, _ in self.bash("help", "")], self.commands())
        for command in self.commands():
            with self.subTest(command):
                self.assertEqual({word for word, _ in self.bash(command, "--")}, self.options(command))

    def test_bash_offers_tasks(self):
        self.add_tasks()
        self.assertEqual(self.bash("done", ""), [("1", f" [ ]  {NASTY_LINE}"), ("3", " [ ]  Oldest")])
        self.assertEqual(self.bash("done", "3"), [("3", "")])
        self.assertEqual(self.bash("undone", ""), [("2", "")])
        for command in "edit", "delete":
            self.assertEqual([word for word, _ in self.bash(command, "")], ["1", "2", "3"])
        self.assertEqual([word for word, _ in self.bash("done", "--", "")], ["1", "3"])
        self.assertEqual(self.bash("done", "1", ""), [])
        self.assertEqual(self.bash("done", "--", "--"), [])
        self.assertEqual([word for word, _ in self.bash("remind", "")], ["1", "3"])
        self.assertFalse((self.home / "harm").exists())

    def test_bash_offers_earlier_lists(self):
        self.keep_lists()
        first, second = self.bash("restore", "")
        self.assertRegex(" ".join(first), r"^1  .*  1 task; gone since: One$")
        self.assertRegex(" ".join(second), r"^2  .*  2 tasks; gone since: Two, One$")
        self.assertEqual(self.bash("restore", "2"), [("2", "")])
        self.assertEqual(self.bash("restore", "1", ""), [])

    def test_bash_offers_formats_and_files(self):
        (self.home / "file with blanks.md").touch()
        (self.home / "folder").mkdir()
        formats = [("markdown", ""), ("json", "")]
        self.assertEqual(self.bash("export", ""), formats)
        self.assertEqual(self.bash("export", "j"), [("json", "")])
        self.assertEqual(self.bash("export", "json", ""), [])
        # Readline makes a word of its own of the = in "--output=file".
        for option in ["-o"], ["--output"], ["--output", "="]:
            self.assertEqual(sorted(self.bash("export", "json", *option, "")),
                             [("file", "with blanks.md"), ("folder", "")])
            self.assertEqual(self.bash("export", *option, "file", ""), formats)

    def test_bash_offers_what_to_do_about_other_computers(self):
        self.assertEqual(self.bash("sync", ""), [("status", ""), ("use", ""), ("off", ""), ("now", ""), ("forget", "")])
        self.assertEqual(self.bash("sync", "use", ""), [("folder", ""), ("webdav", "")])
        self.assertEqual(self.bash("sync", "use", "webdav", ""), [])
        self.assertEqual(self.bash("sync", "use", "--keep", ""), [("mine", ""), ("theirs", "")])
        self.assertEqual(self.bash("sync", "off", ""), [])

    def test_bash_offers_what_to_do_with_models(self):
        self.assertEqual(self.bash("model", ""), [("list", ""), ("use", ""), ("status", "")])
        self.assertEqual(self.bash("model", "use", ""), [("embedded", ""), ("none", "")])
        for line in ["model", "list", ""], ["model", "use", "none", ""]:
            self.assertEqual(self.bash(*line), [])

    def test_bash_only_looks_at_the_list(self):
        environment = self.stand_in(LOGGING_STAND_IN)
        for command in [*self.commands(), "nonsense"]:
            self.bash(command, "", environment=environment)
        self.assertEqual((self.home / "calls").read_text().split("\n"),
                         ["list", "list --done", "list --all", "list", "list --all", "restore", ""])

    def test_bash_is_silent_without_a_list(self):
        self.assertEqual(self.bash("done", "", environment=self.stand_in(FAILING_STAND_IN)), [])
        self.assertEqual(self.bash("done", "", environment={**self.environment(), "PATH": "/usr/bin:/bin"}), [])

    @needs("fish")
    def test_fish_offers_commands_and_options(self):
        self.assertEqual([word for word, _ in self.fish("quillo cl")], ["clear-completed"])
        self.assertEqual([word for word, _ in self.fish("quillo ")], self.commands())
        self.assertEqual([word for word, _ in self.fish("quillo help ")], self.commands())
        for command in self.commands():
            with self.subTest(command):
                self.assertEqual({word for word, _ in self.fish(f"quillo {command} --")}, self.options(command))

    @needs("fish")
    def test_fish_offers_tasks(self):
        self.add_tasks()
        self.assertEqual(self.fish("quillo done "), [("1", NASTY_LINE), ("3", "Oldest")])
        self.assertEqual(self.fish("quillo undone "), [("2", "Finished")])
        for command in "edit", "delete":
            self.assertEqual([word for word, _ in self.fish(f"quillo {command} ")], ["1", "2", "3"])
        self.assertEqual(self.fish("quillo done 1 "), [])
        self.assertFalse((self.home / "harm").exists())

    @needs("fish")
    def test_fish_offers_earlier_lists(self):
        self.keep_lists()
        first, second = self.fish("quillo restore ")
        self.assertRegex(" ".join(first), "^1 .*  1 task; gone since: One$")
        self.assertRegex(" ".join(second), "^2 .*  2 tasks; gone since: Two, One$")
        self.assertEqual(self.fish("quillo restore 1 "), [])

    @needs("fish")
    def test_fish_offers_formats_and_files(self):
        (self.home / "file.md").touch()
        formats = ["markdown", "json"]
        self.assertEqual([word for word, _ in self.fish("quillo export ")], sorted(formats))
        self.assertEqual(self.fish("quillo export json "), [])
        for option in "-o", "--output":
            self.assertIn("file.md", [word for word, _ in self.fish(f"quillo export json {option} f")])
            self.assertEqual([word for word, _ in self.fish(f"quillo export {option} file.md ")], sorted(formats))

    @needs("fish")
    def test_fish_offers_what_to_do_about_other_computers(self):
        self.assertEqual([word for word, _ in self.fish("quillo sync ")], ["status", "use", "off", "now", "forget"])
        self.assertEqual({"folder", "webdav"} - {word for word, _ in self.fish("quillo sync use ")}, set())
        self.assertEqual(self.fish("quillo sync off "), [])

    def test_fish_offers_what_to_do_with_models(self):
        self.assertEqual([word for word, _ in self.fish("quillo model ")], ["list", "use", "status"])
        self.assertEqual([word for word, _ in self.fish("quillo model use ")], ["embedded", "none"])
        self.assertEqual(self.fish("quillo model list "), [])

    @needs("fish")
    def test_fish_only_looks_at_the_list(self):
        environment = self.stand_in(LOGGING_STAND_IN)
        for command in [*self.commands(), "nonsense"]:
            self.fish(f"quillo {command} ", environment=environment)
        self.assertEqual(set((self.home / "calls").read_text().splitlines()),
                         {"list", "list --done", "list --all", "restore"})

    @needs("fish")
    def test_fish_is_silent_without_a_list(self):
        self.assertEqual(self.fish("quillo done ", environment=self.stand_in(FAILING_STAND_IN)), [])
        self.assertEqual(self.fish("quillo done ", environment={**self.environment(), "PATH": "/usr/bin:/bin"}), [])

    @needs("zsh")
    def test_zsh_offers_commands_and_options(self):
        run(["zsh", "-n", self.zsh_completion])
        self.zsh("quillo cl", "quillo clear-completed ")
        self.zsh("quillo ", *(f"\n{command} " for command in self.commands()))
        for command in self.commands():
            options = self.options(command)
            with self.subTest(command):
                if len(options) == 1:
                    self.zsh(f"quillo {command} --", f"quillo {command} --help")
                else:
                    self.zsh(f"quillo {command} --", *(f"\n{option} " for option in options))

    @needs("zsh")
    def test_zsh_offers_tasks(self):
        self.add_tasks()
        self.zsh("quillo done ", f"\n1  -- {NASTY_LINE}", "\n3  -- Oldest")
        self.zsh("quillo undone ", "quillo undone 2 ")
        for command in "edit", "delete":
            self.zsh(f"quillo {command} ", "\n1  -- ", "\n2  -- Finished", "\n3  -- Oldest")
        self.assertFalse((self.home / "harm").exists())

    @needs("zsh")
    def test_zsh_offers_earlier_lists(self):
        self.keep_lists()
        shown = self.zsh("quillo restore ", "\n1  -- ", "\n2  -- ", "2 tasks; gone since: Two, One")
        self.assertRegex(shown, r"\n1  -- .*  1 task; gone since: One\s")

    @needs("zsh")
    def test_zsh_offers_formats_and_files(self):
        (self.home / "file.md").touch()
        self.zsh("quillo export ", "\njson ", "\nmarkdown ")
        for option in "-o ", "--output=":
            self.zsh(f"quillo export json {option}f", f"quillo export json {option}file.md ")

    @needs("zsh")
    def test_zsh_offers_what_to_do_about_other_computers(self):
        self.zsh("quillo sync ", "\nforget ", "\nnow ", "\noff ", "\nstatus ", "\nuse ")

    def test_zsh_offers_what_to_do_with_models(self):
        self.zsh("quillo model ", "\nlist ", "\nstatus ", "\nuse ")
        self.zsh("quillo model use ", "\nembedded ", "none")

    @needs("zsh")
    def test_zsh_only_looks_at_the_list(self):
        environment = self.stand_in(LOGGING_STAND_IN)
        for command in "done", "undone", "edit", "remind", "delete", "restore":
            self.zsh(f"quillo {command} ", "\n20  -- Twenty", environment=environment)
        self.assertEqual(set((self.home / "calls").read_text().splitlines()),
                         {"list", "list --done", "list --all", "restore"})


class InstalledByCMake(Installed, unittest.TestCase):
    zsh_folder = "site-functions"
    licence_name = "LICENSE"

    @classmethod
    def install(cls):
        prefix = cls.stage / "prefix"
        cls.programs = prefix / "bin"
        run([arguments.cmake, "--install", arguments.build, "--prefix", prefix])
        return prefix


@needs("dpkg-shlibdeps")
@needs("dpkg-deb")
class InstalledByPackage(Installed, unittest.TestCase):
    zsh_folder = "vendor-completions"
    programs = pathlib.Path("/usr/bin")
    licence_name = "copyright"

    @classmethod
    def install(cls):
        packages = cls.stage / "packages"
        run([arguments.cpack, "-G", "DEB", "--config", arguments.build / "CPackConfig.cmake", "-B", packages])
        (cls.package,) = packages.glob("*.deb")
        run(["dpkg-deb", "-x", cls.package, cls.stage / "root"])
        return cls.stage / "root/usr"

    def field(self, name):
        return run(["dpkg-deb", "-f", self.package, name]).strip()

    def test_package_says_what_it_is(self):
        architecture = run(["dpkg", "--print-architecture"]).strip()
        self.assertEqual(self.package.name, f"quillo_{arguments.version}_{architecture}.deb")
        self.assertEqual(self.field("Section"), "utils")
        self.assertEqual(self.field("Priority"), "optional")
        self.assertEqual(self.field("Maintainer"), "The Quillo developers <developers@quillo.org>")
        self.assertRegex(self.field("Depends"), r"\blibcurl4.*\blibexpat1\b.*\blibicu\d+\b.*\blibqt6dbus6\b.*\blibsecret-1-0\b.*\blibsimdjson\d+\b")
        self.assertRegex(self.field("Depends"), r"\bqml6-module-qtquick\b")
        self.assertRegex(self.field("Description"), r"^small, fast to-do list .*\n Quillo keeps .*\n")

    def test_changelog_begins_with_this_version(self):
        with gzip.open(self.prefix / "share/doc/quillo/changelog.gz", "rt") as changelog:
            self.assertTrue(changelog.readline().startswith(f"quillo ({arguments.version}) "))


def main():
    global arguments
    parser = argparse.ArgumentParser()
    parser.add_argument("--cmake", required=True)
    parser.add_argument("--cpack", required=True)
    parser.add_argument("--build", type=pathlib.Path, required=True)
    parser.add_argument("--version", required=True)
    arguments, others = parser.parse_known_args()
    unittest.main(argv=[sys.argv[0], *others])


if __name__ == "__main__":
    main()
