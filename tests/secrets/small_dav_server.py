"""A small WebDAV server (RFC 4918) on this machine, over a folder: what keeping a list in step needs, and who asks for
it. Basic authentication where it has a user."""

import base64
import email.utils
import http.server
import pathlib
import threading
import urllib.parse
import xml.sax.saxutils


class DavServer:
    """Runs on a thread of its own, until stop()."""

    def __init__(self, folder, user=None, password=None, port=0):
        self.folder = pathlib.Path(folder)
        self.user, self.password = user, password
        self.requests = []  # (method, path, the user and the password that were sent, or None)
        server = self

        class Handler(http.server.BaseHTTPRequestHandler):
            protocol_version = "HTTP/1.1"

            def log_message(self, *_):
                pass

            def handle_one_request(self):
                try:
                    super().handle_one_request()
                except ConnectionError:
                    self.close_connection = True

            def allowed(self):
                given = self.headers.get("Authorization")
                pair = None
                if given and given.startswith("Basic "):
                    pair = tuple(base64.b64decode(given[6:]).decode().split(":", 1))
                server.requests.append((self.command, self.path, pair))
                if server.user is None or pair == (server.user, server.password):
                    return True
                self.answer(401, headers={"WWW-Authenticate": 'Basic realm="test", charset="UTF-8"'})
                return False

            def file(self):
                name = urllib.parse.unquote(urllib.parse.urlsplit(self.path).path).strip("/")
                return server.folder / name

            def answer(self, status, body=b"", headers=None):
                self.send_response(status)
                for name, value in (headers or {}).items():
                    self.send_header(name, value)
                self.send_header("Content-Length", str(len(body)))
                self.end_headers()
                self.wfile.write(body)

            def body(self):
                return self.rfile.read(int(self.headers.get("Content-Length", 0)))

            def do_PROPFIND(self):
                self.body()
                if not self.allowed():
                    return
                file = self.file()
                if not file.exists():
                    self.answer(404)
                    return
                found = [file]
                if file.is_dir() and self.headers.get("Depth") == "1":
                    found += sorted(file.iterdir())
                answers = "".join(server.entry(each) for each in found)
                document = f'<?xml version="1.0"?><D:multistatus xmlns:D="DAV:">{answers}</D:multistatus>'
                self.answer(207, document.encode(), {"Content-Type": "application/xml; charset=utf-8"})

            def do_GET(self):
                if not self.allowed():
                    return
                file = self.file()
                if not file.is_file():
                    self.answer(404)
                    return
                self.answer(200, file.read_bytes(), {"ETag": server.etag(file), "Content-Type": "application/json"})

            def do_PUT(self):
                body = self.body()
                if not self.allowed():
                    return
                file = self.file()
                if not file.parent.is_dir():
                    self.answer(409)
                    return
                existed = file.exists()
                temporary = file.with_name(f"~{threading.get_ident()}.tmp")
                temporary.write_bytes(body)
                temporary.rename(file)
                self.answer(204 if existed else 201, headers={"ETag": server.etag(file)})

            def do_MKCOL(self):
                self.body()
                if not self.allowed():
                    return
                file = self.file()
                if file.exists():
                    self.answer(405)
                elif not file.parent.is_dir():
                    self.answer(409)
                else:
                    file.mkdir()
                    self.answer(201)

        self.server = http.server.ThreadingHTTPServer(("127.0.0.1", port), Handler)
        self.server.daemon_threads = True
        self.port = self.server.server_address[1]
        self.url = f"http://127.0.0.1:{self.port}"
        self.thread = threading.Thread(target=self.server.serve_forever, kwargs={"poll_interval": 0.01}, daemon=True)
        self.thread.start()

    def stop(self):
        self.server.shutdown()
        self.server.server_close()
        self.thread.join()

    def etag(self, file):
        status = file.stat()
        return f'"{status.st_ino:x}-{status.st_mtime_ns:x}-{status.st_size:x}"'

    def entry(self, file):
        path = urllib.parse.quote("/" + str(file.relative_to(self.folder)).strip("."))
        status = file.stat()
        kind = "<D:collection/>" if file.is_dir() else ""
        properties = (
            f"<D:resourcetype>{kind}</D:resourcetype>"
            f"<D:getetag>{xml.sax.saxutils.escape(self.etag(file))}</D:getetag>"
            f"<D:getcontentlength>{status.st_size}</D:getcontentlength>"
            f"<D:getlastmodified>{email.utils.formatdate(status.st_mtime, usegmt=True)}</D:getlastmodified>"
        )
        return (
            f"<D:response><D:href>{path}{'/' if file.is_dir() else ''}</D:href><D:propstat><D:prop>{properties}</D:prop>"
            "<D:status>HTTP/1.1 200 OK</D:status></D:propstat></D:response>"
        )
