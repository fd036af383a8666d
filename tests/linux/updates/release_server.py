#!/usr/bin/env python3
"""Serves a folder over HTTP on this machine, well and badly; prints its port.

usage: release_server.py FOLDER

    /NAME               a file of the folder
    /endless/NAME       goes on for ever, without saying how long it is
    /slow/NAME          sends a byte now and then
    /silent/NAME        sends half of the file and then nothing
    /cut/NAME           sends half of the file and hangs up
    /zipped/NAME        the file, compressed though nobody asked for it
    /missing/NAME       404, with a page
    /away/NAME          redirects to another machine, unprotected
    /moved/NAME         redirects to /NAME
    /loop/NAME          redirects to itself

".sig" behind any of these is served well. Ends with its input.
"""

import gzip
import http.server
import pathlib
import sys
import threading
import time

# Nobody's; see RFC 5737.
ELSEWHERE = "http://192.0.2.1/"
PAUSE_SECONDS = 0.1


class Handler(http.server.BaseHTTPRequestHandler):
    folder = pathlib.Path()

    def do_GET(self):
        manner, _, name = self.path.removeprefix("/").rpartition("/")
        path = self.folder / name
        if not path.is_file():
            self.send_error(404)
        elif not manner or name.endswith(".sig"):
            self.send(path.read_bytes())
        else:
            getattr(self, manner)(path)

    def begin(self, length=None):
        self.send_response(200)
        if length is not None:
            self.send_header("Content-Length", str(length))
        self.end_headers()

    def send(self, content):
        self.begin(len(content))
        self.wfile.write(content)

    def redirect(self, target):
        self.send_response(302)
        self.send_header("Location", target)
        self.end_headers()
        self.wfile.write(b"It is elsewhere.")

    def endless(self, path):
        self.begin()
        while True:
            self.wfile.write(path.read_bytes() + bytes(1 << 16))

    def slow(self, path):
        content = path.read_bytes()
        self.begin(len(content))
        for byte in content:
            self.wfile.write(bytes([byte]))
            time.sleep(PAUSE_SECONDS)

    def silent(self, path):
        self.half(path)
        time.sleep(3600)

    def cut(self, path):
        self.half(path)

    def half(self, path):
        content = path.read_bytes()
        self.begin(len(content))
        self.wfile.write(content[: len(content) // 2])

    def zipped(self, path):
        content = gzip.compress(path.read_bytes())
        self.send_response(200)
        self.send_header("Content-Encoding", "gzip")
        self.send_header("Content-Length", str(len(content)))
        self.end_headers()
        self.wfile.write(content)

    def missing(self, path):
        self.send_response(404)
        self.end_headers()
        self.wfile.write(path.read_bytes())

    def away(self, path):
        self.redirect(ELSEWHERE + path.name)

    def moved(self, path):
        self.redirect("/" + path.name)

    def loop(self, path):
        self.redirect("/loop/" + path.name)

    def log_message(self, *_):
        pass


class Server(http.server.ThreadingHTTPServer):
    daemon_threads = True

    def handle_error(self, *_):
        """Whoever asked has gone; that is what the tests are about."""


def serve(folder):
    """A server of the folder; its port is server_port. It serves until the process ends."""
    handler = type("FolderHandler", (Handler,), {"folder": pathlib.Path(folder)})
    server = Server(("127.0.0.1", 0), handler)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    return server


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    print(serve(sys.argv[1]).server_port, flush=True)
    sys.stdin.read()
