"""A web server on loopback with pages made up by the test."""

import http.server
import threading
from urllib.parse import urlsplit

from .wait import until


class Request:
    """One request as it came in."""

    def __init__(self, handler):
        self.method = handler.command
        self.target = handler.path
        self.path = urlsplit(handler.path).path
        self.host = handler.headers.get("Host", "")
        self.headers = dict(handler.headers)

    def __repr__(self):
        return f"{self.method} {self.host}{self.target}"


class _Handler(http.server.BaseHTTPRequestHandler):
    def do_GET(self):
        server = self.server.owner
        request = Request(self)
        with server.lock:
            server.requests.append(request)
            answer = server.answers.get(request.path)
        if answer:
            answer(self)
        elif request.path.startswith("/report/"):
            self.reply(204)
        else:
            self.reply(404, "text/plain", "There is no such page.")

    do_POST = do_GET

    def reply(self, status, kind=None, body="", headers=()):
        data = body.encode() if isinstance(body, str) else body
        self.send_response(status)
        if kind:
            self.send_header("Content-Type", kind)
        self.send_header("Content-Length", str(len(data)))
        self.send_header("Cache-Control", "no-store")
        for name, value in headers:
            self.send_header(name, value)
        self.end_headers()
        self.wfile.write(data)

    def handle(self):
        try:
            super().handle()
        except (ConnectionError, ValueError):
            pass  # the program went away in the middle

    def log_message(self, *_):
        pass


class _Listener(http.server.ThreadingHTTPServer):
    daemon_threads = True
    request_queue_size = 128


class Server:
    """Pages under paths; every request is recorded. Paths below /report/ are for what a page's
    own script wants to tell the test."""

    def __init__(self):
        self.requests = []
        self.answers = {}
        self.lock = threading.Lock()
        self._gates = []
        self._server = _Listener(("127.0.0.1", 0), _Handler)
        self._server.owner = self
        self.port = self._server.server_address[1]
        self._thread = threading.Thread(target=self._server.serve_forever, args=(0.05,),
                                        daemon=True)
        self._thread.start()

    def stop(self):
        for gate in self._gates:
            gate.set()
        self._server.shutdown()
        self._server.server_close()
        self._thread.join()

    def url(self, path, host="127.0.0.1"):
        return f"http://{host}:{self.port}{path}"

    # The pages.

    def page(self, path, title=None, body="", headers=()):
        """A page with a title, which is its path's last part unless given; gives its address."""
        title = path.rsplit("/", 1)[-1] if title is None else title
        text = (f"<!doctype html><meta charset=utf-8><title>{title}</title>"
                f"<body style='margin:0'>{body or f'<h1>{title}</h1>'}")
        self.answers[path] = lambda handler: handler.reply(200, "text/html", text, headers)
        return self.url(path)

    def pages(self, *paths):
        return [self.page(path) for path in paths]

    def link_page(self, path, href, attributes=""):
        """A page that is one large link."""
        link = (f"<a href='{href}' {attributes} style='position:fixed;inset:0;"
                f"background:#cde;font-size:40px'>{href}</a>")
        return self.page(path, body=link)

    def script_page(self, path, script, body=""):
        return self.page(path, body=f"{body}<script>{script}</script>")

    def redirect(self, path, to):
        self.answers[path] = lambda handler: handler.reply(302, headers=[("Location", to)])
        return self.url(path)

    def attachment(self, path, name):
        headers = [("Content-Disposition", f"Attachment; filename={name}")]
        self.answers[path] = lambda handler: handler.reply(200, "text/html", "saved", headers)
        return self.url(path)

    def dropped(self, path):
        """A request to it ends without an answer."""
        def answer(handler):
            handler.close_connection = True
        self.answers[path] = answer
        return self.url(path)

    def slow(self, path):
        """A page that comes when the returned event is set; gives address and event."""
        gate = threading.Event()
        self._gates.append(gate)

        def answer(handler):
            gate.wait()
            handler.reply(200, "text/html", f"<title>{path.rsplit('/', 1)[-1]}</title>late")
        self.answers[path] = answer
        return self.url(path), gate

    # What was asked for.

    def asked(self, path):
        """How often the path was asked for."""
        with self.lock:
            return sum(request.path == path for request in self.requests)

    def asked_paths(self):
        with self.lock:
            return [request.path for request in self.requests]

    def reports(self):
        """What pages told, oldest first."""
        with self.lock:
            return [request.target.removeprefix("/report/") for request in self.requests
                    if request.path.startswith("/report/")]

    def forget(self):
        """Drops the record of the requests so far."""
        with self.lock:
            self.requests.clear()

    def wait_for(self, *paths, times=1):
        for path in paths:
            until(lambda wanted=path: self.asked(wanted) >= times,
                  f"{times} request(s) for {path}", self.asked_paths)

    def wait_for_report(self, report):
        until(lambda: report in self.reports(), f"a page's report {report!r}", self.reports)
