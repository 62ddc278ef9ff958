"""A web server on loopback with pages made up by the test."""

import http.server
import threading
from urllib.parse import parse_qsl, urlsplit

from .loopback import Listening
from .wait import until

# Scripts that tell what reaches a page.
TELLS_KEYS = "addEventListener('keydown', event => fetch('/report/key-' + event.key));"
TELLS_CLICKS = "addEventListener('click', () => fetch('/report/click'));"


class Request:
    """One request as it came in."""

    def __init__(self, handler):
        self.method = handler.command
        self.target = handler.path
        self.path = urlsplit(handler.path).path
        self.query = parse_qsl(urlsplit(handler.path).query, keep_blank_values=True)
        self.host = handler.headers.get("Host", "")
        self.headers = handler.headers

    def __repr__(self):
        return f"{self.method} {self.host}{self.target}"


class Handler(http.server.BaseHTTPRequestHandler):
    """Answers what comes over one connection; its `server` is a `Pages`."""

    def do_GET(self):
        self.request_read = Request(self)
        path = self.request_read.path
        answer = self.server.note(self.request_read)
        if answer:
            answer(self)
        elif path.startswith("/report/"):
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


class Pages:
    """What a host has under its paths; every request is recorded. Paths below /report/ are for
    what a page's own script wants to tell the test."""

    def __init__(self):
        self.requests = []
        self.answers = {}
        self.lock = threading.Lock()
        self._gates = []

    def note(self, request):
        """Records a request, and gives what answers it: a function that takes the handler."""
        with self.lock:
            self.requests.append(request)
            return self.answers.get(request.path)

    def gate(self):
        """An event for which answers can wait; at the test's end it is set."""
        self._gates.append(threading.Event())
        return self._gates[-1]

    def open_gates(self):
        for gate in self._gates:
            gate.set()

    def url(self, path):
        """The address of a path."""
        raise NotImplementedError

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
        gate = self.gate()

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

    def requests_for(self, path):
        """The requests for one path, oldest first."""
        with self.lock:
            return [request for request in self.requests if request.path == path]

    def cookies_for(self, path):
        """The cookies that came with each request for a path; nothing for one without."""
        return [request.headers.get("Cookie") for request in self.requests_for(path)]

    def asked_paths(self):
        with self.lock:
            return [request.path for request in self.requests]

    def reports(self, beginning=""):
        """What follows that beginning in what pages told, oldest first."""
        beginning = f"/report/{beginning}"
        with self.lock:
            return [request.target.removeprefix(beginning) for request in self.requests
                    if request.target.startswith(beginning)]

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


class _Listener(http.server.ThreadingHTTPServer):
    daemon_threads = True
    request_queue_size = 128

    def finish_request(self, request, client_address):
        Handler(request, client_address, self.owner)


class Server(Pages):
    """Pages on a port of its own."""

    def __init__(self):
        super().__init__()
        self._listening = Listening(_Listener, Handler, self)

    def stop(self):
        self.open_gates()
        self._listening.stop()

    def url(self, path, host="127.0.0.1"):
        return f"http://{host}:{self._listening.port}{path}"
