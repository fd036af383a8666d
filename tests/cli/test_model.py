"""Which language model is asked: what there is to choose from, choosing, and how the chosen one fares.

The servers are chat_server.py's, on ports that are free. What runs at the usual addresses of this machine is not ours:
it may be there or not.
"""

import time
import unittest

from language_models import LanguageModelTest
from quillo_command import desktop_program

LANGUAGE_MODEL = "Quillo.linux.languageModel"


class ModelTest(LanguageModelTest):
    models = ("small:1b", "large\x1b[31m")

    def chosen(self):
        return self.quillo.preferences().get(LANGUAGE_MODEL)

    def candidates(self, **environment):
        return self.done("model", "list", "--json", environment=environment).json

    def status(self, **environment):
        return self.done("model", "status", "--json", environment=environment).json


class Use(ModelTest):
    def test_is_kept(self):
        for words, text in (
            (["none"], "none"),
            (["embedded"], "embedded"),
            (["http://127.0.0.1:8080"], "http://127.0.0.1:8080"),
            (["localhost:8080/v1/", "my small model"], "http://localhost:8080 my small model"),
            (["http://[::1]:1234", "größer"], "http://[::1]:1234 größer"),
            (["--schema-in-prompt", "http://127.0.0.1"], "--schema-in-prompt http://127.0.0.1"),
            (["http://127.0.0.1", "--schema-in-prompt", "m"], "--schema-in-prompt http://127.0.0.1 m"),
        ):
            with self.subTest(words):
                self.assertEqual(self.choose(*words), [text])
                self.assertEqual(self.chosen(), ("string", text))

    def test_leaves_the_list_alone(self):
        self.done("add", "task")
        before = self.quillo.stored_bytes()
        self.choose("none")
        self.assertEqual(self.quillo.stored_bytes(), before)

    def test_says_where_texts_will_go(self):
        address, warning = self.choose("http://192.0.2.1:8080")
        self.assertEqual(address, "http://192.0.2.1:8080")
        self.assertRegex(warning, "not on this machine: texts of tasks will be sent there, for everybody")
        address, warning = self.choose("https://models.example.org/v1", "m")
        self.assertEqual(address, "https://models.example.org m")
        self.assertTrue(warning.endswith("will be sent there."), warning)

    def test_asks_nobody(self):
        self.choose(self.server.address("slow"))
        self.assertEqual(self.server.events, [])

    @unittest.skipUnless(desktop_program(), "needs the desktop program")
    def test_is_refused_by_the_desktop_program_in_the_same_words(self):
        self.quillo.hold()
        with self.quillo.holder.connect() as connection:
            connection.sendall(b'{"command":"use-model","choice":"embeded","tz":"UTC","locale":"en_US"}\n')
            answer = connection.recv(65536).decode()
        self.assertRegex(answer, r'\{"error":".*embeded.* is no address of a server')
        self.assertIsNone(self.chosen() if self.quillo.folder.exists() else None)

    @unittest.skipUnless(desktop_program(), "needs the desktop program")
    def test_is_there_for_the_next_desktop_program(self):
        self.choose("http://127.0.0.1:1", "m")
        self.quillo.let_go()
        self.quillo.hold()
        self.assertEqual(self.status()["choice"], "http://127.0.0.1:1 m")


class List(ModelTest):
    def test_begins_with_what_needs_no_server(self):
        self.assertEqual(
            self.candidates()[:2],
            [{"choice": "embedded", "chosen": True}, {"choice": "none", "chosen": False}],
        )
        self.assertEqual(self.done("model", "list").lines[:2], ["[x] embedded", "[ ] none"])
        self.choose("none")
        self.assertEqual(self.done("model", "list").lines[:2], ["[ ] embedded", "[x] none"])

    def test_finds_ollama_where_the_environment_says(self):
        host = self.server.address("ollama")
        found = [candidate for candidate in self.candidates(OLLAMA_HOST=host) if candidate.get("address") == host]
        self.assertEqual([candidate["model"] for candidate in found], list(self.server.models))
        self.assertEqual(
            found[0],
            {
                "choice": f"{host} small:1b",
                "chosen": False,
                "address": host,
                "model": "small:1b",
                "problem": None,
            },
        )

    def test_finds_the_chosen_one_wherever_it_is(self):
        address = self.server.address("good")
        self.choose(address, "small:1b")
        self.assertIn(f"[x] {address} small:1b", self.done("model", "list").lines)
        self.choose("--schema-in-prompt", address, "small:1b")
        self.assertIn(f"[x] --schema-in-prompt {address} small:1b", self.done("model", "list").lines)
        self.choose(address)
        lines = self.done("model", "list").lines
        self.assertIn(f"[x] {address}", lines)
        self.assertIn(f"[ ] {address} small:1b", lines)
        self.choose(address, "small")
        self.assertIn(f"[x] {address} small (it has no such model)", self.done("model", "list").lines)

    def test_says_why_the_chosen_one_does_not_answer(self):
        for part, why in (
            ("loading", "it is busy, or still loading its model"),
            ("unauthorized", "it wants a key"),
            ("no-model", "it has no model"),
            ("no-json", "its list of models cannot be read"),
        ):
            self.choose(self.server.address(part))
            self.assertIn(f"[x] {self.server.address(part)} ({why})", self.done("model", "list").lines)

    def test_names_of_servers_cannot_drive_a_terminal(self):
        host = self.server.address("good")
        output = self.done("model", "list", environment={"OLLAMA_HOST": host}).output
        self.assertIn(f"{host} large", output)
        self.assert_fit_for_terminals(output)

    def test_takes_a_second_or_so(self):
        self.choose(self.server.address("slow"))
        before = time.monotonic()
        lines = self.done("model", "list", environment={"OLLAMA_HOST": self.server.address("slow") + "/2"}).lines
        self.assertLess(time.monotonic() - before, 5)
        self.assertIn(f"[x] {self.server.address('slow')} (it does not answer in time)", lines)

    def test_asks_only_which_models_there_are(self):
        self.candidates(OLLAMA_HOST=self.server.address("ollama"))
        self.assertEqual([event["path"] for event in self.server.events], ["/ollama/v1/models"])


class Status(ModelTest):
    def test_of_what_needs_no_server(self):
        embedded = {"choice": "embedded", "source": "default", "reachable": True, "model": None, "problem": None}
        self.assertEqual(self.status(), embedded)
        self.assertEqual(self.done("model", "status").lines, ["choice          embedded", "chosen by       default"])
        self.choose("embedded")
        self.assertEqual(self.status(), {**embedded, "source": "preferences"})
        self.choose("none")
        self.assertEqual(self.status(), {**embedded, "choice": "none", "source": "preferences", "reachable": False})

    def test_names_the_model_that_answers(self):
        address = self.server.address("good")
        self.choose(address)
        self.assertEqual(
            self.done("model", "status").lines,
            [
                f"choice          {address}",
                "chosen by       quillo model use",
                "reachable       yes",
                "model           small:1b",
            ],
        )
        self.choose(address, "small:1b")
        self.assertEqual(
            self.status(),
            {
                "choice": f"{address} small:1b",
                "source": "preferences",
                "reachable": True,
                "model": "small:1b",
                "problem": None,
            },
        )

    def test_takes_a_name_without_a_tag_for_the_latest(self):
        self.server.models = ("small:latest",)
        self.choose(self.server.address("ollama"), "small")
        self.assertEqual((self.status()["model"], self.status()["problem"]), ("small", None))

    def test_says_why_none_answers(self):
        for part, why in (
            ("loading", "it is busy, or still loading its model"),
            ("slow", "it does not answer in time"),
            ("closed", "it breaks off the connection"),
            ("redirect", "it answers with the HTTP status 307"),
            ("huge", "it answers more than can be read"),
        ):
            with self.subTest(part):
                self.choose(self.server.address(part))
                status = self.status()
                self.assertEqual((status["model"], status["reachable"]), (None, False))
                self.assertTrue(status["problem"].startswith(why), status)
        self.choose(self.server.address("good"), "another")
        self.assertEqual(self.status()["problem"], 'it has no model "another"')
        self.assertEqual(self.status()["reachable"], True)

    def test_is_that_of_the_environment_for_a_run(self):
        self.choose("none")
        address = self.server.address("good")
        self.assertEqual(self.status(QUILLO_LANGUAGE_MODEL=address)["model"], "small:1b")
        self.assertEqual(self.status(QUILLO_LANGUAGE_MODEL=address)["source"], "environment")
        self.assertEqual(self.status(QUILLO_LANGUAGE_MODEL="embedded")["choice"], "embedded")
        self.assertEqual(self.status(QUILLO_LANGUAGE_MODEL="")["source"], "preferences")
        self.assertEqual(self.chosen(), ("string", "none"))

    def test_an_environment_that_cannot_be_read_means_none(self):
        answer = self.quillo("model", "status", "--json", environment={"QUILLO_LANGUAGE_MODEL": "gpt\x1b[31m"})
        self.assertEqual((answer.code, answer.json["choice"]), (0, "none"))
        self.assert_one_line(answer.errors)
        self.assertIn("QUILLO_LANGUAGE_MODEL", answer.errors)

    def test_a_choice_that_cannot_be_read_means_the_embedded_one(self):
        for word, value in (("string", "nonsense"), ("integer", 7)):
            self.quillo.put(LANGUAGE_MODEL, word, value)
            self.assertEqual(self.status()["choice"], "embedded")


if __name__ == "__main__":
    unittest.main()
