"""Where the list is kept, in what form, and what happens when the disk or another program does not play along."""

import concurrent.futures
import fcntl
import json
import os
import re
import resource
import signal
import stat
import subprocess
import time
import unittest

from quillo_command import (
    APPLICATION_ID,
    ITEMS,
    NEW_TABLE,
    PATIENCE_SECONDS,
    SECONDS_FROM_1970_TO_2001,
    STAMP,
    CommandTest,
    program,
    stored_task,
    without_desktop_program,
)
from small_disk import fill, mount_small_disk, needs_small_disk

KEPT_BACKUPS = 10
COMPANIONS = {"preferences.sqlite-wal", "preferences.sqlite-shm"}

needs_the_lock = without_desktop_program("the lock is the desktop program's")
needs_no_running_program = without_desktop_program("a desktop program that runs has the files open already")
finds_damage = without_desktop_program("the desktop program finds the damage, and says so itself, when it starts")
fails_to_write = without_desktop_program("the desktop program keeps what it could not write and tries again")


def mode(path):
    return stat.S_IMODE(os.stat(path).st_mode)


class DataFolder(CommandTest):
    def add_under(self, expected, environment, **options):
        """Adds a task and checks that the folder it went to is the expected one."""
        self.done("add", "task", environment=environment, **options)
        self.assertTrue((expected / "preferences.sqlite").is_file())

    def test_is_where_the_first_of_the_variables_says(self):
        home, shared = self.folder / "home", self.folder / "shared"
        for environment, expected in (
            ({"QUILLO_DATA_DIR": str(self.folder / "a"), "XDG_DATA_HOME": str(shared)}, self.folder / "a"),
            ({"QUILLO_DATA_DIR": None, "XDG_DATA_HOME": str(shared)}, shared / "quillo"),
            ({"QUILLO_DATA_DIR": "", "XDG_DATA_HOME": str(shared / "b")}, shared / "b" / "quillo"),
            ({"QUILLO_DATA_DIR": None, "XDG_DATA_HOME": None, "HOME": str(home)}, home / ".local/share/quillo"),
            ({"QUILLO_DATA_DIR": None, "XDG_DATA_HOME": "", "HOME": str(home / "b")}, home / "b/.local/share/quillo"),
            (
                {"QUILLO_DATA_DIR": None, "XDG_DATA_HOME": "relative", "HOME": str(home / "c")},
                home / "c/.local/share/quillo",
            ),
        ):
            with self.subTest(environment):
                self.add_under(expected, environment, cwd=self.folder)
        self.assertFalse((self.folder / "relative").exists())

    def test_may_be_named_from_the_current_folder(self):
        self.add_under(self.folder / "here/below", {"QUILLO_DATA_DIR": "here/below"}, cwd=self.folder)

    def test_may_have_any_name(self):
        for name in ("with blank", "100%", "a?b#c", "ünïcödé 🙂", "quote'\"", "mode=memory&x", ":memory:", "-x"):
            with self.subTest(name):
                quillo = self.make_quillo(name)
                self.assertEqual(quillo("add", "--", name).code, 0)
                self.assertEqual([task["title"] for task in quillo.tasks()], [name])
                self.assertTrue((self.folder / name / "preferences.sqlite").is_file())

    def test_may_be_reached_through_a_link(self):
        (self.folder / "real").mkdir()
        self.quillo.folder.symlink_to(self.folder / "real")
        self.done("add", "task")
        self.assertEqual(self.quillo.titles(), ["task"])
        self.assertTrue((self.folder / "real/preferences.sqlite").is_file())

    def test_everything_in_it_is_for_the_user_alone(self):
        anybody = {"preexec_fn": lambda: os.umask(0)}
        quillo = self.make_quillo("new/data")
        for words in (["add", "a"], ["add", "b"], ["done", "1"], ["clear-completed"], ["list"]):
            quillo(*words, **anybody)
        paths = [self.folder / "new", quillo.folder, *quillo.folder.rglob("*")]
        self.assertGreaterEqual(len(paths), 6)
        for path in paths:
            self.assertEqual(mode(path), 0o700 if path.is_dir() else 0o600, path)

    def test_others_are_shut_out_of_a_file_made_by_hand(self):
        self.quillo.put_items(stored_task(1, "a"))
        self.quillo.database.chmod(0o644)
        self.done("done", "1")
        self.assertEqual(mode(self.quillo.database), 0o600)

    def test_only_looking_makes_nothing(self):
        for words in (
            ["list"],
            ["list", "--all", "--json"],
            ["list", "--done"],
            ["export", "markdown"],
            ["stats"],
            ["restore"],
            ["quit"],
        ):
            self.done(*words)
        self.assertEqual(list(self.folder.iterdir()), [])

    def test_a_folder_that_cannot_be_made_is_an_error(self):
        (self.folder / "file").write_text("no folder")
        for folder in (self.folder / "file", self.folder / "file/below", self.folder / ("x" * 300), "/proc/quillo"):
            with self.subTest(folder):
                self.assert_refused(self.quillo("add", "x", environment={"QUILLO_DATA_DIR": str(folder)}), 1)


class StoredForm(CommandTest):
    def test_is_the_documented_table(self):
        self.done("add", "task")
        connection = self.quillo.connect()
        ask = lambda sql: connection.execute(sql).fetchall()  # noqa: E731
        self.assertEqual(ask("PRAGMA application_id"), [(APPLICATION_ID,)])
        self.assertEqual(ask("PRAGMA user_version"), [(1,)])
        self.assertEqual(ask("PRAGMA journal_mode"), [("wal",)])
        self.assertEqual(ask("PRAGMA integrity_check"), [("ok",)])
        self.assertEqual(ask("SELECT sql FROM sqlite_schema WHERE type = 'table'"), [(NEW_TABLE,)])
        self.assertEqual(
            ask("SELECT key, type, typeof(value) FROM preferences WHERE key LIKE 'Quillo.items%' ORDER BY key"),
            [(ITEMS, "data", "blob"), (STAMP, "double", "real")],
        )
        connection.close()
        header = self.quillo.database.read_bytes()[:72]
        self.assertEqual((header[:16], header[68:72]), (b"SQLite format 3\0", b"QLLO"))

    def test_the_list_is_compact_json_with_its_keys_in_order(self):
        self.done("add", "plain")
        self.done("add", "due in 3 days")
        self.done("done", "1")
        self.done("add", '"quoted" \\ / é 🙂\ntwo')
        number, identifier = r"\d{9}(\.\d+)?", "[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{12}"
        due = number.replace(r"(\.\d+)?", r"(\.0)?")
        self.assertRegex(
            self.quillo.stored_bytes().decode(),
            rf'\A\[\{{"id":"{identifier}","title":"\\"quoted\\" \\\\ / é 🙂\\ntwo","isDone":false,'
            rf'"createdAt":{number}\}},'
            rf'\{{"id":"{identifier}","title":"due","isDone":true,"dueDate":{due},'
            rf'"createdAt":{number},"completedAt":{number},"notificationID":"quillo\.{identifier}"\}},'
            rf'\{{"id":"{identifier}","title":"plain","isDone":false,"createdAt":{number}\}}\]\Z',
        )

    def test_times_count_from_2001_and_the_stamp_from_1970(self):
        before = time.time()
        self.done("add", "task in 2 hours")
        self.done("done", "1")
        after = time.time()
        (task,) = self.quillo.stored_items()
        for key in ("createdAt", "completedAt"):
            self.assertTrue(before - 0.001 <= task[key] + SECONDS_FROM_1970_TO_2001 <= after + 0.001, key)
        self.assertLess(task["createdAt"], task["completedAt"])
        due = task["dueDate"] + SECONDS_FROM_1970_TO_2001
        self.assertTrue(before + 7200 - 60 < due <= after + 7200)
        self.assertTrue(before - 0.001 <= self.quillo.stamp() <= after + 0.001)

    def test_the_last_done_task_gone_leaves_an_empty_array(self):
        self.done("add", "task")
        self.done("delete", "1")
        self.assertEqual(self.quillo.stored_bytes(), b"[]")

    def test_every_change_takes_a_new_stamp(self):
        stamps = []
        for words in (["add", "a"], ["add", "b"], ["done", "1"], ["undone", "1"], ["edit", "1", "c"], ["delete", "1"]):
            self.done(*words)
            stamps.append(self.quillo.stamp())
        self.assertEqual(stamps, sorted(set(stamps)))

    def test_what_somebody_else_wrote_is_read_and_kept_to_the_last_bit(self):
        times = [762_000_000.1234567, 0.1, 1e-9, -62_135_596_799.5, 5e-324, 816_898_697.4440651, 0.30000000000000004]
        items = [
            {
                "notificationID": f"quillo.{n}",
                "completedAt": at,
                "createdAt": at,
                "title": f"task {n}",
                "isDone": True,
                "id": f"0000000{n}-aaaa-4bbb-8ccc-dddddddddddd",
                "dueDate": at,
                "later": {"unknown": [1, 2, {"a": None}]},
            }
            for n, at in enumerate(times)
        ]
        items.append({**stored_task(9, "open"), "dueDate": None, "completedAt": None, "notificationID": None})
        self.quillo.put_items(*items)
        self.done("done", str(len(items)))
        stored = self.quillo.stored_items()
        self.assertEqual(len(stored), len(items))
        for before, after in zip(items[:-1], stored):
            before = {**before, "id": before["id"].upper()}
            del before["later"]
            self.assertEqual(after, before)

    def test_preferences_that_the_command_does_not_know_stay(self):
        self.done("add", "a")
        rows = {
            "Quillo.iCloudSync": ("boolean", 0),
            "Quillo.linux.count": ("integer", 5),
            "Quillo.linux.future": ("string", "ü"),
            "Quillo.linux.bytes": ("data", b"{}"),
            "Somebody.else": ("unheard of", 1.5),
        }
        for key, (word, value) in rows.items():
            self.quillo.put(key, word, value)
        for words in (["add", "b"], ["done", "1"], ["delete", "1"]):
            self.done(*words)
        self.assertEqual({**self.quillo.preferences(), **rows}, self.quillo.preferences())

    def test_nothing_in_a_foreign_file_is_run(self):
        self.done("add", "a")
        connection = self.quillo.connect()
        connection.execute("CREATE TABLE victim(x)")
        for event in ("INSERT", "UPDATE", "DELETE"):
            connection.execute(
                f"CREATE TRIGGER on_{event} AFTER {event} ON preferences BEGIN INSERT INTO victim VALUES(1); END"
            )
        connection.close()
        self.done("add", "b")
        connection = self.quillo.connect()
        self.assertEqual(connection.execute("SELECT count(*) FROM victim").fetchall(), [(0,)])
        connection.close()


class Locked(CommandTest):
    CHANGES = (
        ["add", "x"],
        ["done", "1"],
        ["edit", "1", "x"],
        ["delete", "1"],
        ["clear-completed"],
        ["remind", "1", "tomorrow"],
        ["restore", "1"],
    )

    def setUp(self):
        super().setUp()
        self.done("add", "task")

    def hold_lock(self):
        lock = open(self.quillo.lock, "r+b")  # noqa: SIM115
        self.addCleanup(lock.close)
        fcntl.flock(lock, fcntl.LOCK_EX)
        return lock

    @needs_the_lock
    def test_changes_give_up_after_two_seconds(self):
        self.hold_lock()
        before = self.quillo.files()

        def run(words):
            started = time.monotonic()
            return self.quillo(*words), time.monotonic() - started

        with concurrent.futures.ThreadPoolExecutor(len(self.CHANGES)) as executor:
            for words, (answer, seconds) in zip(self.CHANGES, executor.map(run, self.CHANGES)):
                with self.subTest(words):
                    self.assert_refused(answer, 1)
                    self.assertTrue(1.9 <= seconds < 5, seconds)
        self.assertEqual(self.quillo.files(), before)

    @needs_the_lock
    def test_the_holder_is_named(self):
        process = self.quillo.start("parse", "--jsonl", stdin=subprocess.PIPE)
        try:
            lock = self.hold_lock()
            lock.write(b"%d\n" % process.pid)
            lock.flush()
            self.assertIn(str(process.pid), self.quillo("add", "x").errors)
        finally:
            process.communicate(timeout=PATIENCE_SECONDS)

    @needs_the_lock
    def test_a_lock_file_with_anything_in_it_is_no_obstacle(self):
        for content in (b"", b"-1\n", b"9" * 1000, b"\x00\xff\n\x1b[31m"):
            self.quillo.lock.write_bytes(content)
            self.done("add", "x")
            self.quillo.lock.write_bytes(content)
            with open(self.quillo.lock, "rb") as lock:
                fcntl.flock(lock, fcntl.LOCK_EX)
                self.assert_refused(self.quillo("add", "x"), 1)

    @needs_the_lock
    def test_changes_wait_for_a_holder_that_lets_go(self):
        lock = self.hold_lock()
        process = self.quillo.start("add", "patient")
        time.sleep(1)
        self.assertIsNone(process.poll())
        fcntl.flock(lock, fcntl.LOCK_UN)
        output, errors = process.communicate(timeout=PATIENCE_SECONDS)
        self.assertEqual((process.returncode, output, errors), (0, b"patient\n", b""))

    def test_looking_waits_for_nobody(self):
        self.hold_lock()
        started = time.monotonic()
        self.assertEqual(self.done("list").output, "1  [ ]  task\n")
        self.assertLess(time.monotonic() - started, 1.5)

    @fails_to_write
    def test_a_database_that_another_program_writes_is_left_alone(self):
        connection = self.quillo.connect()
        connection.execute("BEGIN IMMEDIATE")
        connection.execute("INSERT INTO preferences VALUES('new', 'string', 'x')")
        self.assert_refused(self.quillo("add", "x"), 1)
        self.assertEqual(self.done("list").output, "1  [ ]  task\n")
        connection.execute("ROLLBACK")
        connection.close()
        self.done("add", "y")
        self.assertEqual(self.quillo.titles(), ["y", "task"])
        self.assertEqual(list(self.quillo.folder.glob("*damaged*")), [])

    def test_a_database_that_another_program_reads_can_be_changed(self):
        connection = self.quillo.connect()
        connection.execute("BEGIN")
        connection.execute("SELECT * FROM preferences").fetchall()
        self.done("add", "x")
        self.assertEqual(self.quillo.titles(), ["x", "task"])
        connection.close()

    def test_many_at_once_lose_nothing(self):
        count = 20

        def add(number):
            # So many may have to wait for one another for longer than each is patient.
            while (answer := self.quillo("add", f"parallel{number}")).code != 0:
                self.assert_refused(answer, 1)
                self.assertIn("in use", answer.errors)
            return answer.output

        with concurrent.futures.ThreadPoolExecutor(count) as executor:
            printed = list(executor.map(add, range(count)))
        self.assertEqual(printed, [f"parallel{number}\n" for number in range(count)])
        self.assertEqual(sorted(self.quillo.titles()), sorted(["task"] + [f"parallel{n}" for n in range(count)]))

    def test_two_at_once_both_succeed(self):
        for _ in range(10):
            processes = [self.quillo.start("add", "pair") for _ in range(2)]
            for process in processes:
                self.assertEqual(process.communicate(timeout=PATIENCE_SECONDS), (b"pair\n", b""))
                self.assertEqual(process.returncode, 0)
        self.assertEqual(self.quillo.titles(), ["pair"] * 20 + ["task"])

    def test_whoever_looks_meanwhile_sees_whole_lists(self):
        self.quillo.put_items(*(stored_task(n, f"t{n}") for n in range(1000)))
        stop = time.monotonic() + 2
        process = subprocess.Popen(
            ["sh", "-c", 'while :; do "$0" done 1; "$0" undone 1; done', program()],
            env=self.quillo.environment,
            stdout=subprocess.DEVNULL,
            start_new_session=True,
        )
        try:
            seen = set()
            while time.monotonic() < stop or len(seen) < 2:
                self.assertLess(time.monotonic(), stop + PATIENCE_SECONDS)
                tasks = self.quillo.tasks()
                self.assertEqual(len(tasks), 1000)
                seen.add(tasks[0]["isDone"])
        finally:
            os.killpg(process.pid, signal.SIGKILL)
            process.wait()


class Damaged(CommandTest):
    def setUp(self):
        super().setUp()
        for title in ("one", "two", "three"):
            self.done("add", title)

    def moved_aside(self):
        """{file name after "preferences.damaged-<time>": content}"""
        return {
            re.fullmatch(r"preferences\.damaged-\d{8}T\d{6}\.\d{3}Z(.*)", name).group(1): content
            for name, content in self.quillo.files().items()
            if name.startswith("preferences.damaged")
        }

    def copies_of_values(self):
        return {
            re.fullmatch(r"damaged-\d{8}T\d{6}\.\d{3}Z-(.*)", name).group(1): content
            for name, content in self.quillo.files().items()
            if name.startswith("damaged-")
        }

    def values_kept_in_the_file(self):
        return [value for key, (_, value) in self.quillo.preferences().items() if key.startswith("Quillo.linux.unread-")]

    @finds_damage
    def test_a_file_that_is_none_of_sqlites_is_moved_aside_whole(self):
        content = self.quillo.database.read_bytes()
        for damage in (
            b"This is no database. " * 100,
            os.urandom(50_000),
            content[: len(content) // 3],
            b"x" + content[1:],
            content[:100] + b"\xff" * (len(content) - 100),
        ):
            with self.subTest(damage[:30]):
                for name in list(self.quillo.files()):
                    (self.quillo.folder / name).unlink()
                self.quillo.database.write_bytes(damage)
                answer = self.quillo("add", "after")
                self.assertEqual((answer.code, answer.output), (0, "after\n"))
                self.assert_one_line(answer.errors)
                self.assertEqual(self.moved_aside(), {"": damage})
                self.assertEqual(self.quillo.titles(), ["after"])

    def test_its_log_goes_with_it(self):
        connection = self.quillo.connect()
        connection.execute("PRAGMA wal_autocheckpoint=0")
        connection.execute("INSERT INTO preferences VALUES('new', 'string', 'x')")
        wal = (self.quillo.folder / "preferences.sqlite-wal").read_bytes()
        connection.close()
        self.assertGreater(len(wal), 0)
        self.quillo.database.write_bytes(b"damage" * 1000)
        (self.quillo.folder / "preferences.sqlite-wal").write_bytes(wal)
        self.assertEqual(self.quillo("add", "after").code, 0)
        aside = self.moved_aside()
        aside.pop("-shm", None)  # Only an index, made anew whenever it is needed.
        self.assertEqual(aside, {"": b"damage" * 1000, "-wal": wal})

    def test_damage_twice_keeps_both(self):
        for damage in (b"first" * 1000, b"second" * 1000):
            self.quillo.database.write_bytes(damage)
            self.assertEqual(self.quillo("add", "after").code, 0)
        kept = [c for n, c in self.quillo.files().items() if n.startswith("preferences.damaged")]
        self.assertEqual(sorted(kept), [b"first" * 1000, b"second" * 1000])

    def test_looking_at_a_damaged_file_moves_nothing(self):
        self.quillo.database.write_bytes(b"damage" * 1000)
        before = self.quillo.files()
        self.assert_refused(self.quillo("list"), 1)
        self.assertEqual(self.quillo.files(), before)

    @finds_damage
    def test_a_list_that_cannot_be_decoded_is_copied_before_the_first_save_over_it(self):
        good = self.quillo.stored_bytes()
        for damage in (
            b"",
            b"[{broken",
            b"{}",
            b"null",
            good[:-1],
            good + b"x",
            good.replace(b'"isDone":false', b'"isDone":"no"', 1),
            good.replace(b'"createdAt"', b'"created"', 1),
            b"\x00" * 100_000,
            b"[" * 100_000,
        ):
            with self.subTest(damage[:30]):
                for name in self.quillo.files():
                    if name.startswith("damaged-"):
                        (self.quillo.folder / name).unlink()
                self.quillo.put(ITEMS, "data", damage)
                self.assertEqual(self.quillo("list").code, 0)
                self.assertEqual((self.copies_of_values(), self.quillo.stored_bytes()), ({}, damage))

                answer = self.quillo("add", "after")
                self.assertEqual((answer.code, answer.output), (0, "after\n"))
                self.assertRegex(answer.errors, r"\A(quillo: .+\n){2}\Z")
                self.assertIn(str(self.quillo.folder / "damaged-"), answer.errors)  # says where the list is now
                self.assertEqual(self.copies_of_values(), {ITEMS: damage})
                self.done("add", "later")
                self.assertEqual(self.copies_of_values(), {ITEMS: damage})
                self.assertEqual(self.quillo.titles(), ["later", "after"])

    def test_a_list_of_another_type_is_not_lost_either(self):
        good = self.quillo.stored_bytes()
        for word, value in (
            ("data", good.decode()),
            ("string", good.decode()),
            ("string", good),
            ("integer", good),
            ("unheard of", good),
        ):
            with self.subTest(word=word, kind=type(value)):
                for name in self.quillo.files():
                    if name.startswith("damaged-"):
                        (self.quillo.folder / name).unlink()
                self.quillo.put(ITEMS, word, value)
                self.assertEqual(self.quillo("add", "after").code, 0)
                self.assertEqual(self.quillo.titles(), ["after"])
                kept = [*self.copies_of_values().values(), *self.values_kept_in_the_file()]
                self.assertIn(good, [value.encode() if isinstance(value, str) else value for value in kept])

    @finds_damage
    def test_a_refusal_says_that_a_file_was_moved_aside(self):
        self.quillo.database.write_bytes(b"This is no database. " * 100)
        answer = self.quillo("done", "1")
        self.assert_refused(answer, 1)
        self.assertIn("preferences.damaged-", answer.errors)

    def test_a_refusal_on_a_damaged_list_is_one_line_that_does_not_call_it_empty(self):
        self.quillo.put(ITEMS, "data", b"[{broken")
        before = self.quillo.files()
        answer = self.quillo("done", "1")
        self.assertNotIn("empty", answer.errors)
        self.assert_refused(answer, 1)
        self.assertEqual(self.quillo.files(), before)

    @finds_damage
    def test_a_stamp_of_another_type_harms_nothing(self):
        for word, value in (("double", "text"), ("string", "text"), ("integer", 5), ("double", None)):
            self.quillo.put(STAMP, word, value)
            self.done("list")
        answer = self.quillo("add", "four")
        self.assertEqual(answer.code, 0)
        self.assert_one_line(answer.errors)  # that the old value is kept
        self.assertEqual(self.quillo.titles(), ["four", "three", "two", "one"])
        self.assertEqual(self.quillo.preferences()[STAMP][0], "double")

    def test_two_tasks_with_one_identifier_do_no_harm(self):
        self.quillo.put_items(stored_task(1, "a"), stored_task(1, "b"), stored_task(2, "c"))
        self.done("add", "d")
        self.assertEqual(self.quillo("done", "00000001-0000").code, 0)
        done = {task["title"] for task in self.quillo.tasks() if task["isDone"]}
        self.assertEqual(done, {"a"})

    def test_a_newer_file_is_refused_untouched(self):
        connection = self.quillo.connect()
        connection.execute("PRAGMA user_version=2")
        connection.execute("PRAGMA journal_mode=DELETE")
        connection.close()
        self.assert_left_alone()

    def test_a_file_of_another_program_is_refused_untouched(self):
        connection = self.quillo.connect()
        connection.execute("PRAGMA application_id=1")
        connection.execute("PRAGMA journal_mode=DELETE")
        connection.close()
        self.assert_left_alone()

    def assert_left_alone(self):
        before = self.quillo.files()
        for words in (
            ["list"],
            ["add", "x"],
            ["done", "1"],
            ["delete", "1"],
            ["clear-completed"],
            ["remind", "1", "tomorrow"],
            ["restore", "1"],
            ["export", "json"],
            ["stats"],
        ):
            with self.subTest(words):
                self.assert_refused(self.quillo(*words), 1)
                self.assertEqual(self.quillo.files(), before)


@needs_no_running_program
class ReadOnly(CommandTest):
    def setUp(self):
        super().setUp()
        self.done("add", "task")

    def assert_readable_only(self):
        before = self.quillo.files()
        self.assertEqual(self.done("list", as_user=True).output, "1  [ ]  task\n")
        for words in (["add", "x"], ["done", "1"], ["edit", "1", "x"], ["delete", "1"]):
            with self.subTest(words):
                self.assert_refused(self.quillo(*words, as_user=True), 1)
        self.assertEqual(self.done("list", as_user=True).output, "1  [ ]  task\n")
        self.assertEqual(self.quillo.files(), before)

    def test_a_folder(self):
        self.quillo.folder.chmod(0o500)
        self.assert_readable_only()

    def test_a_folder_and_what_is_in_it(self):
        for path in (self.quillo.lock, self.quillo.database):
            path.chmod(0o400)
        self.quillo.folder.chmod(0o500)
        self.assert_readable_only()

    def test_a_file(self):
        self.quillo.database.chmod(0o400)
        self.assert_readable_only()

    def test_a_folder_without_a_lock_file(self):
        self.quillo.lock.unlink()
        self.quillo.folder.chmod(0o500)
        self.assert_readable_only()

    def test_a_folder_that_may_not_be_entered(self):
        self.quillo.folder.chmod(0)
        for words in (["list"], ["add", "x"]):
            self.assert_refused(self.quillo(*words, as_user=True), 1)
        self.quillo.folder.chmod(0o700)
        self.assertEqual(self.quillo.titles(), ["task"])

    def test_a_file_that_may_not_be_read_is_not_taken_for_damaged(self):
        self.quillo.database.chmod(0)
        for words in (["list"], ["add", "x"]):
            self.assert_refused(self.quillo(*words, as_user=True), 1)
        self.quillo.database.chmod(0o600)
        self.assertEqual(self.quillo.titles(), ["task"])
        self.assertEqual(set(self.quillo.files()) - COMPANIONS, {"preferences.lock", "preferences.sqlite"})

    def test_a_folder_where_none_can_be_made(self):
        self.folder.chmod(0o500)
        elsewhere = {"QUILLO_DATA_DIR": str(self.folder / "elsewhere")}
        self.assert_refused(self.quillo("add", "x", as_user=True, environment=elsewhere), 1)
        self.assertEqual(self.done("list", as_user=True, environment=elsewhere).output, "")


@fails_to_write
class FullDisk(CommandTest):
    def test_a_limit_on_the_size_of_files(self):
        """Whatever the place at which writing fails, it is said once, and the list stays as it was."""
        titles = ["task"]
        self.done("add", "task")
        refusals = 0
        for size in (0, 1, 4096, 16_384, 24_576, 32_768, 40_000, 49_152, 60_000, 70_000, 90_000, 120_000, 400_000):

            def limit_files(size=size):
                signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
                resource.setrlimit(resource.RLIMIT_FSIZE, (size, size))

            title = f"{size}" + "x" * 30_000
            with self.subTest(size):
                answer = self.quillo("add", title, preexec_fn=limit_files)
                if answer.code == 0:
                    titles.insert(0, title)
                else:
                    self.assert_refused(answer, 1)
                    refusals += 1
            self.assertEqual(self.quillo.titles(), titles)
        self.assertGreater(refusals, 2)
        self.done("add", "afterwards")
        self.assertEqual(self.quillo.titles(), ["afterwards", *titles])

    @needs_small_disk
    def test_a_disk_without_room(self):
        mount_small_disk(self, self.quillo.folder)
        self.done("add", "task")
        before = self.quillo.preferences()
        filler = self.quillo.folder / "filler"
        for room in (0, 4096, 8192, 20_000, 40_000):
            with self.subTest(room=room):
                fill(filler, room)
                for words in (["add", "x" * 30_000], ["edit", "1", "x" * 30_000]):
                    answer = self.quillo(*words)
                    self.assert_refused(answer, 1)
                    self.assertIn("full", answer.errors)
                    self.assertEqual(self.done("list").output, "1  [ ]  task\n")
        filler.unlink()
        self.assertEqual(self.quillo.preferences(), before)
        self.done("add", "afterwards")
        self.assertEqual(self.quillo.titles(), ["afterwards", "task"])

    @needs_small_disk
    def test_a_disk_without_room_for_the_first_task(self):
        mount_small_disk(self, self.quillo.folder)
        filler = self.quillo.folder / "filler"
        fill(filler, 0)
        self.assert_refused(self.quillo("add", "task"), 1)
        self.assertEqual(self.done("list").output, "")
        filler.unlink()
        self.done("add", "task")
        self.assertEqual(self.quillo.titles(), ["task"])

    @needs_small_disk
    def test_without_room_for_a_backup_nothing_is_deleted_unnoticed(self):
        mount_small_disk(self, self.quillo.folder)
        self.done("add", "x" * 40_000)
        self.done("add", "task")
        filler = self.quillo.folder / "filler"
        fill(filler, 60_000)
        answer = self.quillo("delete", "2")
        if answer.code == 0:
            self.assert_one_line(answer.errors)  # that there is no backup
            self.assertEqual(self.quillo.titles(), ["task"])
        else:
            self.assert_refused(answer, 1)
            self.assertEqual(len(self.quillo.titles()), 2)
        for name, content in self.quillo.files().items():
            if name.startswith("backups/"):
                json.loads(content)


class BackupFiles(CommandTest):
    def backups(self):
        """Their contents, oldest first."""
        folder = self.quillo.folder / "backups"
        paths = sorted(folder.iterdir()) if folder.is_dir() else []
        for path in paths:
            self.assertRegex(path.name, r"\A\d{8}T\d{6}\.\d{3}Z\.json\Z")
        return [json.loads(path.read_bytes()) for path in paths]

    def test_the_list_as_it_was_before_each_deletion(self):
        self.quillo.put_items(
            stored_task(1, "a", due=1e9), stored_task(2, "b", done=True), stored_task(3, "c", done=True)
        )
        first = self.quillo.stored_items()
        self.done("delete", "1")
        second = self.quillo.stored_items()
        self.assertEqual(self.backups(), [first])
        self.done("clear-completed")
        self.assertEqual(self.backups(), [first, second])

    def test_what_deletes_nothing_makes_none(self):
        for words in (["add", "a"], ["done", "1"], ["undone", "1"], ["edit", "1", "b"], ["clear-completed"], ["list"]):
            self.done(*words)
        self.assertEqual(self.quillo("delete", "5").code, 1)
        self.assertEqual(self.backups(), [])

    def test_the_last_ten_are_kept(self):
        self.quillo.put_items(*(stored_task(n, f"t{n}", done=n > 20) for n in range(25)))
        before = []
        for words in [["delete", "1"]] * 8 + [["clear-completed"]] + [["delete", "2"]] * 5:
            before.append(self.quillo.stored_items())
            self.done(*words)
        self.assertEqual(self.backups(), before[-KEPT_BACKUPS:])

    def test_other_files_in_their_folder_stay(self):
        folder = self.quillo.folder / "backups"
        folder.mkdir(parents=True)
        others = {"notes.txt": "mine", "20250101T000000.000Z.json.bak": "mine", "old.json": "mine"}
        for name, content in others.items():
            (folder / name).write_text(content)
        self.quillo.put_items(*(stored_task(n, f"t{n}") for n in range(13)))
        for _ in range(12):
            self.done("delete", "1")
        for name, content in others.items():
            self.assertEqual((folder / name).read_text(), content)
        self.assertEqual(len(list(folder.iterdir())), KEPT_BACKUPS + len(others))


if __name__ == "__main__":
    unittest.main()
