"""Plays a language-model server on this machine: one that speaks as OpenAI's does, with all its moods.

Below /good it answers as it should, below /ollama and /llama as those servers do; the other parts are in PARTS and
STATUSES. Each part is a base address of its own: http://127.0.0.1:PORT/good.

Run as a program, perhaps with the seconds that the slow part takes, it prints its port, and then what happens as one JSON object a line: {"method", "path", "body"} for a
request, {"gone": path} where the asker went away before the answer was out. It ends with its standard input.
"""

import http.server
import json
import select
import socket
import sys
import threading

TODO = {
    "kind": "TOMORROW",
    "amount": 0,
    "month": 0,
    "day": 0,
    "hasTime": True,
    "hour": 9,
    "minute": 0,
    "title": "Call mom",
}
SLOW_SECONDS = 10
DRIP_SECONDS = 0.05  # a byte; nobody waits until such an answer is whole
STATUSES = {"unauthorized": 401, "missing": 404, "broken": 500, "loading": 503}
OWNERS = {"ollama": "library", "llama": "llamacpp"}


def chat(content, **message):
    """The answer to a chat, of which the model has said this."""
    said = {"role": "assistant", "content": content, **message}
    return {"object": "chat.completion", "choices": [{"index": 0, "finish_reason": "stop", "message": said}]}


def encoded(value):
    return json.dumps(value).encode()


# What the model says.
SAYINGS = {
    "good": TODO,
    "ollama": TODO,
    "llama": TODO,
    "unknown-bucket": {**TODO, "kind": "NEXT_WEEK"},
    "none": {**TODO, "kind": "NONE", "hasTime": False, "hour": 0, "title": "Fix the market page"},
    "missing-field": {name: value for name, value in TODO.items() if name != "hour"},
}


class Handler(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"

    def log_message(self, *_):
        pass

    def do_GET(self):
        self.play(None)

    def do_POST(self):
        self.play(json.loads(self.rfile.read(int(self.headers["Content-Length"]))))

    def play(self, body):
        self.server.note({"method": self.command, "path": self.path, "body": body})
        _, part, path = self.path.split("/", 2)
        if part in STATUSES:
            self.answer(encoded({"error": {"message": part}}), status=STATUSES[part])
        elif part in SAYINGS:
            self.answer_well(part, path)
        elif part in PARTS:
            PARTS[part](self)
        else:
            self.answer(encoded({"error": "no such part"}), status=404)

    def answer_well(self, part, path):
        if path == "v1/models":
            models = [{"id": name, "owned_by": OWNERS.get(part, "someone")} for name in self.server.models]
            self.answer(encoded({"object": "list", "data": models}))
        elif path == "v1/chat/completions":
            self.answer(encoded(chat(json.dumps(SAYINGS[part]))))
        elif part == "ollama" and path == "api/version":
            self.answer(encoded({"version": "0.12.0"}))
        elif part == "ollama" and path == "api/chat":
            self.answer(encoded({"message": {"role": "assistant", "content": ""}, "done_reason": "load", "done": True}))
        else:
            self.answer(encoded({"error": "not found"}), status=404)

    def answer(self, body, status=200, kind="application/json; charset=utf-8", **headers):
        self.send_response(status)
        self.send_header("Content-Type", kind)
        self.send_header("Content-Length", str(len(body)))
        for name, value in headers.items():
            self.send_header(name, value)
        self.end_headers()
        self.send(body)

    def send(self, data):
        """Whether somebody still reads."""
        try:
            self.wfile.write(data)
            return True
        except OSError:
            self.close_connection = True
            self.server.note({"gone": self.path})
            return False

    def is_left(self, seconds):
        """Waits so long, or until whoever asked goes away; tells which."""
        readable, _, _ = select.select([self.connection], [], [], seconds)
        try:
            left = bool(readable) and not self.connection.recv(1, socket.MSG_PEEK)
        except OSError:
            left = True
        if left:
            self.close_connection = True
            self.server.note({"gone": self.path})
        return left

    # The parts.

    def say_prose(self):
        self.answer(encoded(chat("Sure! Here is your task:\n" + json.dumps(TODO))))

    def be_huge(self):
        self.answer(encoded(chat("x" * (1 << 20))))

    def be_endless(self):
        self.send_response(200)
        self.send_header("Content-Type", "application/json")
        self.send_header("Transfer-Encoding", "chunked")
        self.end_headers()
        while self.send(b"1000\r\n" + b" " * 0x1000 + b"\r\n"):
            pass

    def have_an_endless_head(self):
        self.send_response_only(200)
        self.flush_headers()
        while self.send(b"X-More: " + b"x" * 1000 + b"\r\n"):
            pass

    def drip(self):
        body = encoded(chat(json.dumps(TODO)))
        self.send_response(200)
        self.send_header("Content-Type", "application/json")
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        for at in range(len(body)):
            if not self.send(body[at : at + 1]) or self.is_left(DRIP_SECONDS):
                return

    def hang_up(self):
        self.close_connection = True

    def hang_up_half_way(self):
        self.send_response(200)
        self.send_header("Content-Type", "application/json")
        self.send_header("Content-Length", "1000")
        self.end_headers()
        self.send(b'{"choices":')
        self.close_connection = True

    def lead_elsewhere(self):
        self.answer(b"", status=307, Location=self.path.replace("/redirect/", "/good/"))

    def be_a_web_page(self):
        self.answer(encoded(chat(json.dumps(TODO))), kind="text/html")

    def take_long(self):
        if not self.is_left(self.server.slow_seconds):
            self.answer(encoded(chat(json.dumps(TODO))))

    def have_no_model(self):
        self.answer(encoded({"object": "list", "data": []}))

    def speak_no_json(self):
        self.answer(b"{]")


PARTS = {
    "prose": Handler.say_prose,
    "huge": Handler.be_huge,
    "endless": Handler.be_endless,
    "endless-head": Handler.have_an_endless_head,
    "drip": Handler.drip,
    "closed": Handler.hang_up,
    "half": Handler.hang_up_half_way,
    "redirect": Handler.lead_elsewhere,
    "web-page": Handler.be_a_web_page,
    "slow": Handler.take_long,
    "no-model": Handler.have_no_model,
    "no-json": Handler.speak_no_json,
}


class ChatServer(http.server.ThreadingHTTPServer):
    """Serves from when it is made, on a port that is free; `events` are what the program would print."""

    daemon_threads = True
    request_queue_size = 64

    def __init__(self, models=("first", "second"), tell=None, slow_seconds=SLOW_SECONDS):
        super().__init__(("127.0.0.1", 0), Handler)
        self.models = models
        self.events = []
        self.tell = tell
        self.slow_seconds = slow_seconds
        self.lock = threading.Lock()
        threading.Thread(target=self.serve_forever, kwargs={"poll_interval": 0.05}, daemon=True).start()

    def handle_error(self, *_):
        pass  # Who asks may go away at any time.

    def note(self, event):
        with self.lock:
            self.events.append(event)
            if self.tell:
                self.tell(event)

    def address(self, part):
        return f"http://127.0.0.1:{self.server_port}/{part}"

    def requests(self, path):
        """The bodies of the requests that were sent there."""
        with self.lock:
            return [event["body"] for event in self.events if event.get("path") == path]


def main():
    slow_seconds = float(sys.argv[1]) if len(sys.argv) > 1 else SLOW_SECONDS
    server = ChatServer(tell=lambda event: print(json.dumps(event), flush=True), slow_seconds=slow_seconds)
    print(server.server_port, flush=True)
    sys.stdin.read()


if __name__ == "__main__":
    main()
