#!/usr/bin/env python3
"""A small HTTP server on 127.0.0.1 for the [WEBSOURCE] tests.

Prints the port it listens on as its first line, then serves until killed. Events the
tests look for (a request that the client gave up) are appended to the log file named
by the first argument.
"""
import http.server
import socketserver
import sys

LOG = sys.argv[1]

PAGES = {
    "/utf8": (200, "text/html; charset=utf-8", "<p>Grüße aus Köln – 5 €</p>".encode("utf-8")),
    "/latin1": (200, "text/plain; charset=ISO-8859-1", b"caf\xe9 cr\xe8me \x93quoted\x94"),
    "/cp1252": (200, "Text/Plain; Charset=\"windows-1252\"", b"\x80 10 \x96 na\xefve"),
    "/plain": (200, "text/plain", "déjà vu".encode("utf-8")),
    "/binary": (200, "application/octet-stream", bytes(range(256)) * 64),
    "/missing": (404, "text/html", b"<h1>Not here</h1>"),
    "/empty": (200, "text/html", b""),
}

REDIRECTS = {
    "/moved": "/hop",
    "/hop": "/utf8",
    "/loop": "/loop",
}


def log(line):
    with open(LOG, "a", encoding="utf-8") as f:
        f.write(line + "\n")


class Handler(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"

    def log_message(self, *args):
        pass

    def do_GET(self):
        path = self.path.split("?")[0]
        if path == "/hang":
            log("hang accepted")
            # Never answer; wait until the client closes the connection.
            while self.rfile.read(1):
                pass
            log("hang closed")
            self.close_connection = True
            return
        if path in REDIRECTS:
            self.send_response(302)
            self.send_header("Location", REDIRECTS[path])
            self.send_header("Content-Length", "0")
            self.end_headers()
            return
        status, content_type, body = PAGES.get(path, (404, "text/plain", b"no such page"))
        self.send_response(status)
        self.send_header("Content-Type", content_type)
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body)


class Server(socketserver.ThreadingMixIn, http.server.HTTPServer):
    daemon_threads = True


server = Server(("127.0.0.1", 0), Handler)
print(server.server_address[1], flush=True)
server.serve_forever()
