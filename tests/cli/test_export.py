"""The list as a document: `quillo export`, to standard output and into files."""

import json
import os
import resource
import signal
import stat
import subprocess
import sys
import unittest

from quillo_command import ITEMS, CommandTest, stored_task
from small_disk import fill, mount_small_disk, needs_small_disk

MARCH_5_2026_AT_15 = 1_772_719_200  # in Berlin


def mode(path):
    return stat.S_IMODE(os.stat(path).st_mode)


class Markdown(CommandTest):
    def export(self, **environment):
        return self.done("export", "markdown", environment=environment).output

    def test_is_a_checklist(self):
        self.quillo.put_items(
            stored_task(1, "Call the bank", due=MARCH_5_2026_AT_15), stored_task(2, "Send invoice", done=True)
        )
        self.assertEqual(
            self.export(),
            "# Quillo Export\n"
            "\n"
            "- [ ] Call the bank  *(Mar 5, 2026 at 3:00 PM)*\n"
            "- [x] Send invoice\n",
        )

    def test_of_an_empty_list_is_its_title(self):
        self.assertEqual(self.export(), "# Quillo Export\n\n")
        self.assertFalse(self.quillo.folder.exists())

    def test_a_done_task_keeps_its_date(self):
        self.quillo.put_items(stored_task(1, "Send invoice", done=True, due=MARCH_5_2026_AT_15))
        self.assertIn("\n- [x] Send invoice  *(Mar 5, 2026 at 3:00 PM)*\n", self.export())

    def test_titles_are_written_as_they_are(self):
        titles = ["*bold* _it_ [x](y) # `c` \\", "<b>&amp;", "two\nlines", "\x1b[31mred\x1b[0m", "漢字 🙂", " a  b "]
        self.quillo.put_items(*(stored_task(n, title) for n, title in enumerate(titles)))
        self.assertEqual(self.export(), "# Quillo Export\n\n" + "".join(f"- [ ] {title}\n" for title in titles))

    def test_a_terminal_does_not_obey_titles(self):
        self.quillo.put_items(stored_task(1, "\x1b[31mred\x1b[0m \u009b2J \u202ereversed"), stored_task(2, "plain"))
        answer = self.quillo.on_terminal("export", "markdown")
        self.assertEqual((answer.code, answer.errors), (0, ""))
        self.assert_fit_for_terminals(answer.output)
        self.assertEqual(answer.lines[:2], ["# Quillo Export", ""])
        self.assertEqual(answer.lines[3:], ["- [ ] plain"])

    def test_dates_are_those_of_the_users_locale_and_zone(self):
        self.quillo.put_items(stored_task(1, "task", due=MARCH_5_2026_AT_15))
        for environment, date in (
            ({"LC_ALL": "en_US.UTF-8"}, "Mar 5, 2026 at 3:00 PM"),
            ({"LC_ALL": "en_GB.UTF-8"}, "5 Mar 2026 at 15:00"),
            ({"LC_ALL": "de_DE.UTF-8"}, "05.03.2026 um 15:00"),
            ({"LC_ALL": "fr_FR.UTF-8"}, "5 mars 2026 à 15:00"),
            ({"LC_ALL": "ar_EG.UTF-8"}, "٠٥\u200f/٠٣\u200f/٢٠٢٦ في ٣:٠٠ م"),
            ({"TZ": "America/New_York"}, "Mar 5, 2026 at 9:00 AM"),
            ({"TZ": "Asia/Tokyo"}, "Mar 5, 2026 at 11:00 PM"),
        ):
            with self.subTest(environment):
                document = self.export(**environment)
                self.assertEqual(document, f"# Quillo Export\n\n- [ ] task  *({date})*\n")


class Json(CommandTest):
    def test_reads_back_equal_through_another_program(self):
        titles = ["plain", 'quoted " \\ /', "漢字 🙂", "\x1b\x00\x1f\x7f", "two\nlines", "e\u0301 \u2028"]
        self.quillo.put_items(
            *(
                {
                    **stored_task(
                        n,
                        f"{titles[n % len(titles)]} {n}",
                        done=n % 3 == 0,
                        due=MARCH_5_2026_AT_15 + n * 61.7 if n % 2 else None,
                    ),
                    **({"notificationID": f"quillo.{n}"} if n % 5 == 0 else {}),
                }
                for n in range(10_000)
            )
        )
        document = self.done("export", "json").output
        tool = subprocess.run(
            [sys.executable, "-m", "json.tool"], input=document.encode(), capture_output=True, check=True
        )
        listed = self.quillo.tasks()
        self.assertEqual([task.pop("number") for task in listed], list(range(1, 10_001)))
        self.assertTrue(json.loads(tool.stdout) == listed)

    def test_holds_each_task_whole(self):
        self.quillo.put_items(
            {**stored_task(1, "open", due=MARCH_5_2026_AT_15), "notificationID": "quillo.1"},
            stored_task(2, "finished", done=True),
        )
        answer = self.done("export", "json")
        self.assertEqual(
            answer.json,
            [
                {
                    "createdAt": "2025-02-23T10:40:01Z",
                    "dueDate": "2026-03-05T14:00:00Z",
                    "id": "00000001-0000-4000-8000-000000000000",
                    "isDone": False,
                    "notificationID": "quillo.1",
                    "title": "open",
                },
                {
                    "completedAt": "2025-02-24T14:26:42Z",
                    "createdAt": "2025-02-23T10:40:02Z",
                    "id": "00000002-0000-4000-8000-000000000000",
                    "isDone": True,
                    "title": "finished",
                },
            ],
        )
        # Sorted keys, two blanks a level: the text itself, not only its meaning.
        self.assertEqual(answer.output, json.dumps(answer.json, indent=2) + "\n")

    def test_of_an_empty_list_is_an_empty_array(self):
        self.assertEqual(self.done("export", "json").output, "[]\n")

    def test_is_the_same_everywhere(self):
        self.quillo.put_items(stored_task(1, "task", due=MARCH_5_2026_AT_15))
        expected = self.done("export", "json").output
        for environment in ({"LC_ALL": "ar_EG.UTF-8"}, {"TZ": "Asia/Tokyo"}):
            self.assertEqual(self.done("export", "json", environment=environment).output, expected)


class IntoFiles(CommandTest):
    def setUp(self):
        super().setUp()
        self.quillo.put_items(stored_task(1, "Call the bank", due=MARCH_5_2026_AT_15))
        self.documents = {format: self.done("export", format).output for format in ("markdown", "json")}
        self.place = self.folder / "place"
        self.place.mkdir()
        self.file = self.place / "list"

    def export(self, format="markdown", file=None, **options):
        """Exports into the file, without a word."""
        self.assertEqual(self.done("export", format, "-o", file or self.file, **options).output, "")

    def assert_exported(self, path, format="markdown"):
        self.assertEqual(path.read_text(), self.documents[format])

    def assert_nothing_else(self, *names):
        """There is nothing in the folder but these: no temporary file above all."""
        self.assertEqual(sorted(path.name for path in self.place.iterdir()), sorted(names))

    def test_holds_what_would_be_printed(self):
        for format in self.documents:
            self.export(format)
            self.assert_exported(self.file, format)
        self.assert_nothing_else("list")

    def test_the_option_may_be_written_in_all_the_usual_ways(self):
        for number, words in enumerate(
            (
                ["export", "json", "-o", "{}"],
                ["export", "json", "-o{}"],
                ["export", "json", "-o={}"],
                ["export", "-o", "{}", "json"],
                ["export", "json", "--output", "{}"],
                ["export", "json", "--output={}"],
                ["export", "--output={}", "--", "json"],
            )
        ):
            name = f"file{number}"
            self.done(*(word.format(name) for word in words), cwd=self.place)
            self.assert_exported(self.place / name, "json")

    def test_a_hyphen_is_standard_output(self):
        self.assertEqual(self.done("export", "json", "-o", "-", cwd=self.place).output, self.documents["json"])
        self.assert_nothing_else()

    def test_names_are_bytes(self):
        for name in (b"caf\xe9", b"-x", b"with blank", "漢字".encode(), b"a=b", b"n" * 255):
            with self.subTest(name):
                file = os.fsencode(self.place) + b"/" + name
                self.done("export", "json", b"-o" + file)
                self.assertEqual(os.listdir(os.fsencode(self.place)), [name])
                os.unlink(file)

    def test_a_new_file_has_the_mode_of_any_new_file(self):
        for mask in (0o022, 0o077, 0o002):
            self.export(preexec_fn=lambda mask=mask: os.umask(mask))
            self.assertEqual(mode(self.file), 0o666 & ~mask)
            self.file.unlink()

    def test_a_file_that_is_there_keeps_its_mode(self):
        for before in (0o600, 0o644, 0o640, 0o666):
            self.file.write_text("old and longer than what is going to be there" * 100)
            self.file.chmod(before)
            self.export(preexec_fn=lambda: os.umask(0o077))
            self.assert_exported(self.file)
            self.assertEqual(mode(self.file), before)

    def test_nobody_ever_sees_half_of_it(self):
        """Who has the old file open keeps reading the old one, to its end."""
        self.file.write_text("old")
        with open(self.file) as opened:
            self.export()
            self.assertEqual(opened.read(), "old")
        self.assert_exported(self.file)

    def test_a_link_stays_and_the_file_behind_it_is_written(self):
        behind = self.folder / "behind"
        behind.mkdir()
        target = behind / "target"
        for destination in (target, "../behind/target"):
            for exists in (True, False):
                with self.subTest(destination=destination, exists=exists):
                    if exists:
                        target.write_text("old")
                    (self.place / "second").symlink_to(destination)
                    self.file.symlink_to("second")
                    self.export()
                    self.assertEqual(os.readlink(self.file), "second")
                    self.assertEqual(os.readlink(self.place / "second"), str(destination))
                    self.assertFalse(target.is_symlink())
                    self.assert_exported(target)
                    self.assertEqual(list(behind.iterdir()), [target])
                    for path in (target, self.file, self.place / "second"):
                        path.unlink()

    def test_links_in_a_circle_are_refused(self):
        self.file.symlink_to("list")
        self.assert_refused(self.quillo("export", "json", "-o", self.file), 1)
        self.assertEqual(os.readlink(self.file), "list")

    def test_a_pipe_is_written_to(self):
        os.mkfifo(self.file)
        process = self.quillo.start("export", "markdown", "-o", self.file)
        with open(self.file) as pipe:
            self.assertEqual(pipe.read(), self.documents["markdown"])
        self.assertEqual(process.communicate(timeout=60), (b"", b""))
        self.assertEqual(process.returncode, 0)
        self.assertTrue(stat.S_ISFIFO(self.file.stat().st_mode))
        self.assert_nothing_else("list")

    def test_what_leads_to_standard_output_is_written_to(self):
        for name in ("/dev/stdout", "/dev/fd/1", "/proc/self/fd/1"):
            self.assertEqual(self.done("export", "json", "-o", name).output, self.documents["json"])

    def test_a_full_device_is_an_error(self):
        answer = self.quillo("export", "json", "-o", "/dev/full")
        self.assert_refused(answer, 1)
        self.assertIn("/dev/full", answer.errors)
        self.assertTrue(stat.S_ISCHR(os.stat("/dev/full").st_mode))

    def test_where_nothing_can_be_written(self):
        for file in (
            self.place / "missing/list",
            self.place,
            f"{self.place}/",
            f"{self.file}/",
            "",
            self.place / ("n" * 256),
            "/proc/quillo",
        ):
            with self.subTest(file):
                answer = self.quillo("export", "json", "-o", file)
                self.assert_refused(answer, 1)
                self.assertIn(str(file), answer.errors)
                self.assert_nothing_else()

    def test_a_folder_that_may_not_be_written_to(self):
        self.file.write_text("old")
        self.place.chmod(0o500)
        for file in (self.file, self.place / "new"):
            self.assert_refused(self.quillo("export", "json", "-o", file, as_user=True), 1)
        self.assertEqual(self.file.read_text(), "old")
        self.assert_nothing_else("list")

    def test_a_file_that_may_not_be_written_to(self):
        self.file.write_text("old")
        self.file.chmod(0o400)
        self.assert_refused(self.quillo("export", "json", "-o", self.file, as_user=True), 1)
        self.assertEqual((self.file.read_text(), mode(self.file)), ("old", 0o400))
        self.assert_nothing_else("list")

    def test_what_cannot_be_written_whole_is_not_written_at_all(self):
        self.quillo.put_items(*(stored_task(n, "t" * 1000) for n in range(200)))

        def limit_files():
            signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
            resource.setrlimit(resource.RLIMIT_FSIZE, (100_000, 100_000))

        for names in ([], ["list"]):
            for name in names:
                (self.place / name).write_text("old")
            self.assert_refused(self.quillo("export", "json", "-o", self.file, preexec_fn=limit_files), 1)
            self.assert_nothing_else(*names)
        self.assertEqual(self.file.read_text(), "old")

    @needs_small_disk
    def test_a_full_disk_keeps_what_was_there(self):
        disk = self.folder / "disk"
        mount_small_disk(self, disk)
        file = disk / "list"
        file.write_text("old")
        self.quillo.put_items(*(stored_task(n, "t" * 1000) for n in range(50)))
        for room in (0, 4096, 20_000):
            fill(disk / "filler", room)
            answer = self.quillo("export", "json", "-o", file)
            self.assert_refused(answer, 1)
            self.assertIn("space", answer.errors)
            self.assertEqual(file.read_text(), "old")
            self.assertEqual(sorted(path.name for path in disk.iterdir()), ["filler", "list"])


class Looking(CommandTest):
    def test_changes_nothing(self):
        self.quillo.put_items(stored_task(1, "task"))
        before = self.quillo.files()
        for format in ("markdown", "json"):
            self.done("export", format)
        self.assertEqual(self.quillo.files(), before)

    def test_needs_only_to_read(self):
        self.done("add", "task")
        self.quillo.let_go()
        self.quillo.database.chmod(0o400)
        self.quillo.folder.chmod(0o500)
        self.assertEqual(self.done("export", "markdown", as_user=True).output, "# Quillo Export\n\n- [ ] task\n")

    def test_a_list_that_cannot_be_read_does_not_replace_a_good_document(self):
        self.done("add", "task")
        target = self.quillo.folder.parent / "tasks.json"
        self.done("export", "json", "-o", str(target))
        good = target.read_bytes()
        self.quillo.put(ITEMS, "data", b"[{broken")
        for output in ([], ["-o", str(target)]):
            answer = self.quillo("export", "json", *output)
            self.assertEqual((answer.code, answer.output), (1, ""))
            self.assert_one_line(answer.errors)
        self.assertEqual(target.read_bytes(), good)


if __name__ == "__main__":
    unittest.main()
