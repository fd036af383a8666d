"""What tests of commands with the option --jsonl have in common."""

import json

from quillo_command import CommandTest


def ask(process, request):
    """Sends one line to a running command and returns its answer."""
    line = request if isinstance(request, bytes) else json.dumps(request).encode()
    process.stdin.write(line + b"\n")
    process.stdin.flush()
    return json.loads(process.stdout.readline())


class JsonLinesTest(CommandTest):
    command = None

    def lines(self, *requests, code=0, errors="", options=(), **more):
        """The answers to the requests: dictionaries, or lines as bytes. `errors` may be None: whatever was said."""
        text = b"".join(r if isinstance(r, bytes) else json.dumps(r).encode() + b"\n" for r in requests)
        answer = self.quillo(self.command, "--jsonl", *options, text=text, **more)
        self.assertEqual((answer.code, answer.errors), (code, answer.errors if errors is None else errors))
        self.assertTrue(answer.output == "" or answer.output.endswith("\n"))
        return [json.loads(line) for line in answer.output.split("\n")[:-1]]

    def refusals(self, *requests):
        """Checks that every request gets an error object; returns their ids."""
        answers = self.lines(*requests, code=1)
        self.assertEqual(len(answers), len(requests))
        for request, answer in zip(requests, answers):
            self.assertEqual(list(answer), ["id", "error"], request)
            self.assertIsInstance(answer["error"], str)
            self.assertNotEqual(answer["error"], "")
        return [answer["id"] for answer in answers]
