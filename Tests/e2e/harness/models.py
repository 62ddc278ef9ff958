"""A server of language models, played on loopback: what it gets is kept, what it says is made up."""

import http.server
import json
import socket
import threading
import time

from . import engine
from .wait import until

PORT = 11434  # where such a server is looked for
NAME = "orvu-played:latest"

# What is said where neither a server nor a file is there; a file is of use only where a program to
# run it was built.
MISSING = ("Start Ollama or LM Studio so Kesto can answer, or put a model file (GGUF) into "
           "~/.local/share/Orvu/models; Orvu finds them by itself." if engine.installed().exists()
           else "Start Ollama or LM Studio so Kesto can answer; Orvu finds them by itself.")


class _Handler(http.server.BaseHTTPRequestHandler):
    def do_GET(self):
        self.server.owner.note(self, b"")
        answers = {
            "/api/version": {"version": "0.5.0"},
            "/api/tags": {"models": [_described(name) for name in self.server.owner.names]},
            "/api/ps": {"models": [_described(name) for name in self.server.owner.loaded]},
        }
        known = answers.get(self.path)
        self._reply(200 if known else 404, json.dumps(known or {"error": "unknown"}).encode())

    def do_POST(self):
        body = self.rfile.read(int(self.headers.get("Content-Length", "0")))
        self.server.owner.note(self, body)
        self.server.owner.answer(self, json.loads(body))

    def _reply(self, status, body):
        self.send_response(status)
        self.send_header("Content-Type", "application/json")
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body)

    def handle(self):
        try:
            super().handle()
        except ConnectionError:
            pass  # the program went away in the middle

    def log_message(self, *_):
        pass


def _described(name):
    return {"name": name, "model": name, "modified_at": "2026-01-01T00:00:00Z", "size": 1000,
            "details": {"family": "llama"}, "context_length": 16384,
            "expires_at": "2036-01-01T00:00:00Z"}


class _Listener(http.server.ThreadingHTTPServer):
    daemon_threads = True
    allow_reuse_address = True


class ModelServer:
    """Speaks as much of Ollama's interface as a question needs."""

    def __init__(self, names=(NAME,)):
        self.names = list(names)
        self.loaded = list(names)
        self.replies = {}
        self.reply = "An answer."
        self._lock = threading.Lock()
        self._requests = []
        self._arrivals = []
        self._gates = []
        self._connections = []
        self._dropped = 0
        self._server = _Listener(("127.0.0.1", PORT), _Handler)
        self._server.owner = self
        self._thread = threading.Thread(target=self._server.serve_forever, args=(0.05,),
                                        daemon=True)
        self._thread.start()

    def stop(self):
        for gate in self._gates:
            gate.set()
        self._server.shutdown()
        self._server.server_close()
        self._thread.join()

    def break_off(self):
        """Ends in the middle of what it says, and listens no more."""
        self._server.shutdown()
        self._server.server_close()
        with self._lock:
            for connection in self._connections:
                connection.shutdown(socket.SHUT_RDWR)

    # What it says.

    def hold(self):
        """From now on an answer waits in its middle until the returned event is set; at the test's
        end it is."""
        self._gates.append(threading.Event())
        return self._gates[-1]

    def answer(self, handler, request):
        """Streams the reply to a question, word by word."""
        question = request["messages"][-1]["content"]
        gate = self._gates[-1] if self._gates else None
        with self._lock:
            self._connections.append(handler.connection)
        reply = next((text for part, text in self.replies.items() if part in question), self.reply)
        handler.send_response(200)
        handler.send_header("Content-Type", "application/x-ndjson")
        handler.end_headers()
        pieces = reply.split(" ")
        for number, piece in enumerate(pieces):
            text = piece if number == 0 else f" {piece}"
            self._write(handler, {"message": {"role": "assistant", "content": text}, "done": False})
            if gate and number == 0 and not self._wait(handler, gate):
                return
        self._write(handler, {"message": {"role": "assistant", "content": ""}, "done": True,
                              "done_reason": "stop", "eval_count": len(pieces)})

    @staticmethod
    def _write(handler, line):
        handler.wfile.write(json.dumps(line).encode() + b"\n")
        handler.wfile.flush()

    def _wait(self, handler, gate):
        """Waits for the gate; whether the other end is still there then."""
        handler.connection.settimeout(0.05)
        while not gate.is_set():
            try:
                if handler.connection.recv(1) == b"":
                    with self._lock:
                        self._dropped += 1
                    return False
            except TimeoutError:
                continue
        handler.connection.settimeout(None)
        return True

    # What it got.

    def note(self, handler, body):
        with self._lock:
            self._requests.append((handler.path, str(handler.headers).encode() + body, body))
            if handler.path == "/api/chat":
                self._arrivals.append(time.monotonic())

    def received(self):
        """All bytes of all requests, but for their first lines."""
        with self._lock:
            return b"".join(data for _, data, _ in self._requests)

    def paths(self):
        with self._lock:
            return [path for path, _, _ in self._requests]

    def questions(self):
        """What was asked, oldest first: the prompts as the model reads them."""
        with self._lock:
            return [json.loads(body)["messages"][-1]["content"]
                    for path, _, body in self._requests if path == "/api/chat"]

    def arrivals(self):
        """When each question had come, in seconds of the steady clock."""
        with self._lock:
            return list(self._arrivals)

    def dropped(self):
        """How many questions were dropped while an answer waited."""
        with self._lock:
            return self._dropped

    def wait_for_question(self, count=1):
        until(lambda: len(self.questions()) >= count, f"{count} question(s)", self.paths)
        return self.questions()[-1]
