#!/usr/bin/env python3
"""service.py FOLDER: a service for tests, over http and https, until its standard input ends.

The first line on standard output tells three ports: of http, of https, and one where connections come up and
nobody ever answers. The certificate is made in FOLDER as cert.pem.

An address is /MODE/PATH: PATH says what the answer is, MODE how it goes out (see Modes). PATH is
  api/v1/shaders/ID           the file FOLDER/shaders/ID.json, else an error object
  api/v1/shaders/query/TEXT   the file FOLDER/searches/TEXT up to its '&', else an error object
  media/a/NAME                the file FOLDER/media/NAME, else a page of status 404
  agent                       the user agent of the request
  requests                    the paths asked for so far, one a line
  anything else               itself
"""
import gzip
import http.server
import socket
import ssl
import subprocess
import sys
import threading
import urllib.parse
from pathlib import Path

folder = Path(sys.argv[1])
ports = {}
requests = []


def file_or(path, status, other):
    try:
        return 200, path.read_bytes()
    except OSError:
        return status, other


class Modes:
    """Each gets the handler, the status and the body."""

    def plain(h, status, body):
        h.send(status, body)

    def gzip(h, status, body):
        h.send(status, gzip.compress(body), "Content-Encoding: gzip")

    def corrupt(h, status, body):
        h.send(status, gzip.compress(body)[:-8] + b"checksum", "Content-Encoding: gzip")

    def trimmed(h, status, body):  # the stream ends early, the length is that of what comes
        h.send(status, gzip.compress(body)[:-12], "Content-Encoding: gzip")

    def foreign(h, status, body):
        h.send(status, body, "Content-Encoding: br")

    def closing(h, status, body):  # without a length; the end of the connection is the end
        h.send(status, body, "Connection: close", length=None)

    def cut(h, status, body):
        h.send(status, body[: len(body) // 2], length=len(body))
        h.close_connection = True

    def short(h, status, body):  # the length is less than what comes
        h.send(status, body, "Connection: close", length=len(body) - 2)

    def garbage(h, status, body):
        h.wfile.write(b"SSH-2.0-nothing of the web\r\n")
        h.close_connection = True

    def empty(h, status, body):
        h.send(200, b"")

    def page(h, status, body):
        h.send(503, b"<!DOCTYPE html><title>Just a moment...</title>")

    def refuse(h, status, body):
        h.send(200, b'{"Error":"Invalid key"}')

    def hang(h, status, body):
        h.wait_for_end()

    def pause(h, status, body):
        h.send(status, body[: len(body) // 2], length=len(body))
        h.wait_for_end()

    def drop(h, status, body):
        h.close_connection = True

    def endless(h, status, body):
        h.send(200, b"", length=None)
        while True:
            h.wfile.write(bytes(65536))

    def bomb(h, status, body):  # small on the way
        h.send(200, gzip.compress(bytes(4 << 20)), "Content-Encoding: gzip")

    def here(h, status, body):
        h.redirect("/plain/" + h.rest)

    def circle(h, status, body):
        h.redirect(h.path)

    def tofile(h, status, body):
        h.redirect("file:///etc/hostname")

    def toftp(h, status, body):
        h.redirect("ftp://127.0.0.1/x")

    def tohttp(h, status, body):
        h.redirect(f"http://127.0.0.1:{ports['http']}/plain/{h.rest}")

    def tohttps(h, status, body):
        h.redirect(f"https://127.0.0.1:{ports['https']}/plain/{h.rest}")

    def roundabout(h, status, body):  # to https and from there back
        h.redirect(f"https://127.0.0.1:{ports['https']}/tohttp/{h.rest}")


class Handler(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"

    def send(self, status, body, *headers, length=-1):
        self.send_response(status)
        for header in headers:
            self.send_header(*header.split(": "))
        if length is not None:
            self.send_header("Content-Length", str(len(body) if length < 0 else length))
        self.end_headers()
        self.wfile.write(body)
        self.wfile.flush()

    def redirect(self, to):
        self.send(302, b"moved", "Location: " + to)

    def wait_for_end(self):
        self.connection.recv(1)
        self.close_connection = True

    def answer(self):
        name = urllib.parse.unquote(self.rest.split("?")[0])
        for prefix, path in (
            ("api/v1/shaders/query/", lambda rest: folder / "searches" / rest.split("&")[0]),
            ("api/v1/shaders/", lambda rest: folder / "shaders" / (rest + ".json")),
        ):
            if name.startswith(prefix):
                return file_or(path(name[len(prefix):]), 200, b'{"Error":"Shader not found"}')
        if name.startswith("media/a/"):
            return file_or(folder / "media" / name[len("media/a/"):], 404, b"<html>404</html>")
        if name == "agent":
            return 200, self.headers["User-Agent"].encode()
        if name == "requests":
            return 200, "\n".join(requests).encode()
        return 200, name.encode()

    def do_GET(self):
        requests.append(self.path)
        _, mode, self.rest = self.path.split("/", 2)
        try:
            getattr(Modes, mode)(self, *self.answer())
        except OSError:
            self.close_connection = True  # the client has gone

    def log_message(self, *_):
        pass


class Server(http.server.ThreadingHTTPServer):
    daemon_threads = True

    def handle_error(self, *_):
        pass  # clients that go away in the middle


def serve(name, wrap):
    server = Server(("127.0.0.1", 0), Handler)
    server.socket = wrap(server.socket)
    ports[name] = server.server_address[1]
    threading.Thread(target=server.serve_forever, daemon=True).start()


key, certificate = folder / "key.pem", folder / "cert.pem"
subprocess.run(
    ["openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes", "-days", "2",
     "-subj", "/CN=localhost", "-addext", "subjectAltName=IP:127.0.0.1", "-keyout", key, "-out", certificate],
    check=True, stderr=subprocess.DEVNULL)
context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
context.load_cert_chain(certificate, key)
serve("http", lambda listener: listener)
# The handshake is left to the thread of the connection.
serve("https", lambda listener: context.wrap_socket(listener, server_side=True, do_handshake_on_connect=False))
silent = socket.create_server(("127.0.0.1", 0))
print(ports["http"], ports["https"], silent.getsockname()[1], flush=True)
sys.stdin.read()
