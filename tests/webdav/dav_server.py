"""Plays WebDAV servers on this machine, with all their moods.

Below /good it keeps files in memory as such a server should; the other parts are in STATUSES, LISTINGS and PARTS. Each
part is a place of its own: http://127.0.0.1:PORT/good. Who asks below /password is "me" with the password "secret",
unless it is given another one; below /digest too, in that way of proving it.

Run as a program, it prints its port, and then what happens as one JSON object a line: {"method", "path",
"authorization"} for a request, {"gone": path} where the asker went away before the answer was out. It ends with its
standard input. Options: --slow SECONDS, which the slow part takes; --tls, with a certificate that nobody trusts.
"""

import argparse
import base64
import email.utils
import hashlib
import http.server
import json
import pathlib
import re
import select
import socket
import ssl
import subprocess
import sys
import tempfile
import threading
from xml.sax.saxutils import escape

SLOW_SECONDS = 10
DRIP_SECONDS = 0.05  # a byte
STATUSES = {
    "forbidden": (403, {}),
    "broken": (500, {}),
    "static": (405, {}),
    "old": (501, {}),
    "often": (429, {"Retry-After": "7"}),
    "busy": (503, {"Retry-After": "7"}),
    "strange": (299, {}),
    "patient": (503, {"Retry-After": "1000000"}),
}
# Only storing fails.
STORING = {"locked": 423, "full": 507, "too-large": 413, "read-only": 403, "accepted": 202}
# Only taking away does.
REMOVING = {"missing": 404, "gone": 410, "removed-later": 202, "removed-a-page": 200, "kept": 403, "no-delete": 405,
            "kept-locked": 423, "kept-busy": 503, "kept-in-part": 207}  # fmt: skip
# What the listing tells of a file.
LISTINGS = {
    "no-etag": ("length", "modified"),
    "no-date": ("etag", "length"),
    "bare": (),
}
EVERYTHING = ("etag", "length", "modified")
USER, PASSWORD, REALM, NONCE = "me", "secret", "quillo", "0123456789"
LAUGHS = """<?xml version="1.0"?><!DOCTYPE x [<!ENTITY a "ha"><!ENTITY b "&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;">
<!ENTITY c "&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;">]><D:multistatus xmlns:D="DAV:"><D:response><D:href>&c;</D:href>
</D:response></D:multistatus>"""
PAGE = b"<!DOCTYPE html><html><body>Please log in.</body></html>"


def basic(user, password):
    """How the head of a request says who asks."""
    return "Basic " + base64.b64encode(f"{user}:{password}".encode()).decode()


class Place:
    """What is kept below one part."""

    def __init__(self):
        self.folders = {""}
        self.files = {}  # path: (bytes, etag)
        self.stored = 0

    def store(self, path, body):
        self.stored += 1
        self.files[path] = (body, f'"{self.stored}"')


class Handler(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"

    def log_message(self, *_):
        pass

    def play(self):
        body = self.rfile.read(int(self.headers.get("Content-Length", 0)))
        self.server.note(
            {"method": self.command, "path": self.path, "authorization": self.headers.get("Authorization", "")}
        )
        _, self.part, path = (self.path + "/").split("/", 2)
        path = path.strip("/")
        if self.part in STATUSES:
            status, headers = STATUSES[self.part]
            self.answer(b"", status, **headers)
        elif self.part in STORING and self.command == "PUT":
            self.answer(b"", STORING[self.part])
        elif self.part in REMOVING and self.command == "DELETE":
            self.answer(PAGE if REMOVING[self.part] == 200 else b"", REMOVING[self.part], "text/html")
        elif self.part in PARTS:
            PARTS[self.part](self, path, body)
        else:
            self.serve(path, body)

    do_GET = do_PUT = do_DELETE = do_MKCOL = do_PROPFIND = play

    def serve(self, path, body):
        place = self.server.place(self.part)
        with self.server.lock:
            if self.command == "MKCOL":
                self.answer(b"", *self.make_folder(place, path))
            elif self.command == "PUT":
                if path.rpartition("/")[0] not in place.folders:
                    self.answer(b"", 409)
                else:
                    there = path in place.files
                    place.store(path, body)
                    self.answer(b"", 204 if there else 201)
            elif self.command == "PROPFIND":
                if path in place.folders:
                    self.answer(self.listing(place, path), 207, "application/xml; charset=utf-8")
                else:
                    self.answer(b"", 404)
            elif path not in place.files:
                self.answer(b"", 404)
            elif self.command == "DELETE":
                del place.files[path]
                self.answer(b"", 204)
            else:
                content, etag = place.files[path]
                shown = {} if self.part == "no-etag" else {"ETag": etag}
                if shown and self.headers.get("If-None-Match") == etag:
                    self.answer(b"", 304, **shown)
                else:
                    self.answer(content, kind="application/json", **shown)

    @staticmethod
    def make_folder(place, path):
        if path in place.folders:
            return (405,)
        if path.rpartition("/")[0] not in place.folders:
            return (409,)
        place.folders.add(path)
        return (201,)

    def listing(self, place, folder):
        told = LISTINGS.get(self.part, EVERYTHING)
        parts = [f'<D:response><D:href>/{self.part}/{folder}/</D:href><D:propstat><D:prop><D:resourcetype>'
                 "<D:collection/></D:resourcetype></D:prop><D:status>HTTP/1.1 200 OK</D:status></D:propstat></D:response>"]
        for path, (content, etag) in place.files.items():
            if path.rpartition("/")[0] != folder:
                continue
            if self.part == "weak":
                etag = f"W/{etag}" if self.server.count % 2 else etag
            values = {
                "etag": f"<D:getetag>{escape(etag)}</D:getetag>",
                "length": f"<D:getcontentlength>{len(content)}</D:getcontentlength>",
                "modified": f"<D:getlastmodified>{email.utils.formatdate(0, usegmt=True)}</D:getlastmodified>",
            }
            parts.append(
                f"<D:response><D:href>/{self.part}/{path}</D:href><D:propstat><D:prop>"
                + "".join(values[name] for name in told)
                + "</D:prop><D:status>HTTP/1.1 200 OK</D:status></D:propstat></D:response>"
            )
        self.server.count += 1
        return ('<?xml version="1.0" encoding="utf-8"?><D:multistatus xmlns:D="DAV:">'
                + "".join(parts) + "</D:multistatus>").encode()

    def answer(self, body, status=200, kind="text/plain", **headers):
        self.send_response(status)
        self.send_header("Content-Type", kind)
        if status not in (204, 304):
            self.send_header("Content-Length", str(len(body)))
        for name, value in headers.items():
            self.send_header(name.replace("_", "-"), value)
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

    def want_password(self, path, body):
        if self.headers.get("Authorization") == basic(USER, self.server.password):
            self.serve(path, body)
        else:
            self.answer(b"", 401, WWW_Authenticate=f'Basic realm="{REALM}", charset="UTF-8"')

    def want_digest(self, path, body):
        said = dict(re.findall(r'(\w+)="?([^",]*)"?', self.headers.get("Authorization", "")))

        def hashed(*parts):
            return hashlib.md5(":".join(parts).encode()).hexdigest()

        right = said.get("response") and said["response"] == hashed(
            hashed(USER, REALM, self.server.password), NONCE, said["nc"], said["cnonce"], "auth", hashed(self.command, self.path)
        )
        if right:
            self.serve(path, body)
        else:
            self.answer(b"", 401, WWW_Authenticate=f'Digest realm="{REALM}", qop="auth", nonce="{NONCE}", algorithm=MD5')

    def be_a_web_page(self, path, body):
        self.answer(PAGE, kind="text/html; charset=utf-8")

    def show_pages_for_files(self, path, body):
        if self.command == "GET":
            self.be_a_web_page(path, body)
        else:
            self.serve(path, body)

    def tear(self, path, body):
        """Gives half of a file as if that was all, every other time."""
        place = self.server.place(self.part)
        place.torn = not getattr(place, "torn", False)
        if self.command == "GET" and path in place.files and place.torn:
            content, etag = place.files[path]
            self.answer(content[: len(content) // 2], kind="application/json", ETag=etag)
        else:
            self.serve(path, body)

    def break_off(self, path, body):
        if self.command == "GET":
            self.cut()
        else:
            self.serve(path, body)

    def cut(self):
        self.send_response(200)
        self.send_header("Content-Length", "1000")
        self.end_headers()
        self.send(b'{"format":1,')
        self.close_connection = True

    def hang_up(self, path, body):
        self.close_connection = True

    def store_half(self, path, body):
        """Breaks off while it stores something, the first time."""
        place = self.server.place(self.part)
        if self.command == "PUT" and not place.stored:
            place.store(path, body[: len(body) // 2])
            self.cut()
        else:
            self.serve(path, body)

    def store_silently(self, path, body):
        """Stores it all, and breaks off before it says so, the first time."""
        place = self.server.place(self.part)
        if self.command == "PUT" and not place.stored:
            place.store(path, body)
            self.cut()
        else:
            self.serve(path, body)

    def say_late_what_is_stored(self, path, body):
        if self.command == "PUT":
            self.server.place(self.part).store(path, body)
            self.is_left(self.server.slow_seconds)
        else:
            self.serve(path, body)

    def lead_on(self, path, body):
        self.answer(b"", 308, Location=f"/good/{path}" + ("/" if self.path.endswith("/") else ""))

    def lead_elsewhere(self, path, body):
        self.answer(b"", 307, Location=f"http://localhost:{self.server.server_port}/good/{path}")

    def lead_in_circles(self, path, body):
        self.answer(b"", 302, Location=self.path)

    def take_long(self, path, body):
        if not self.is_left(self.server.slow_seconds):
            self.serve(path, body)

    def drip(self, path, body):
        self.send_response(207)
        self.send_header("Content-Type", "application/xml")
        self.send_header("Content-Length", "100000")
        self.end_headers()
        while self.send(b" ") and not self.is_left(DRIP_SECONDS):
            pass

    def be_endless(self, path, body):
        self.send_response(207 if self.command == "PROPFIND" else 200)
        self.send_header("Content-Type", "application/xml")
        self.send_header("Transfer-Encoding", "chunked")
        self.end_headers()
        while self.send(b"10000\r\n" + b" " * 0x10000 + b"\r\n"):
            pass

    def have_an_endless_head(self, path, body):
        self.send_response_only(207)
        self.flush_headers()
        while self.send(b"X-More: " + b"x" * 1000 + b"\r\n"):
            pass

    def laugh(self, path, body):
        if self.command == "PROPFIND":
            self.answer(LAUGHS.encode(), 207, "application/xml")
        else:
            self.serve(path, body)

    def speak_no_xml(self, path, body):
        if self.command == "PROPFIND":
            self.answer(b"<D:multistatus", 207, "application/xml")
        else:
            self.serve(path, body)


PARTS = {
    "password": Handler.want_password,
    "digest": Handler.want_digest,
    "web-page": Handler.be_a_web_page,
    "pages-for-files": Handler.show_pages_for_files,
    "torn": Handler.tear,
    "cut": Handler.break_off,
    "closed": Handler.hang_up,
    "half-stored": Handler.store_half,
    "stored-silently": Handler.store_silently,
    "stored-late": Handler.say_late_what_is_stored,
    "redirect": Handler.lead_on,
    "elsewhere": Handler.lead_elsewhere,
    "circle": Handler.lead_in_circles,
    "slow": Handler.take_long,
    "drip": Handler.drip,
    "endless": Handler.be_endless,
    "endless-head": Handler.have_an_endless_head,
    "laughs": Handler.laugh,
    "no-xml": Handler.speak_no_xml,
}


def untrusted_context():
    with tempfile.TemporaryDirectory() as folder:
        file = pathlib.Path(folder) / "both.pem"
        subprocess.run(
            ["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2", "-subj", "/CN=127.0.0.1",
             "-keyout", file, "-out", file.with_suffix(".crt")],
            check=True, capture_output=True,
        )  # fmt: skip
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(file.with_suffix(".crt"), file)
    return context


class DavServer(http.server.ThreadingHTTPServer):
    """Serves from when it is made, on a port that is free; `events` are what the program would print."""

    daemon_threads = True
    request_queue_size = 64

    def __init__(self, tell=None, slow_seconds=SLOW_SECONDS, tls=False, password=PASSWORD):
        super().__init__(("127.0.0.1", 0), Handler)
        self.scheme = "https" if tls else "http"
        if tls:
            self.socket = untrusted_context().wrap_socket(self.socket, server_side=True)
        self.places = {}
        self.events = []
        self.count = 0
        self.tell = tell
        self.slow_seconds = slow_seconds
        self.password = password
        self.lock = threading.RLock()
        threading.Thread(target=self.serve_forever, kwargs={"poll_interval": 0.05}, daemon=True).start()

    def handle_error(self, *_):
        pass  # Who asks may go away at any time.

    def place(self, part):
        with self.lock:
            return self.places.setdefault(part, Place())

    def note(self, event):
        with self.lock:
            self.events.append(event)
            if self.tell:
                self.tell(event)

    def address(self, part):
        return f"{self.scheme}://127.0.0.1:{self.server_port}/{part}"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--slow", type=float, default=SLOW_SECONDS)
    parser.add_argument("--tls", action="store_true")
    options = parser.parse_args()
    server = DavServer(lambda event: print(json.dumps(event), flush=True), options.slow, options.tls)
    print(server.server_port, flush=True)
    sys.stdin.read()


if __name__ == "__main__":
    main()
