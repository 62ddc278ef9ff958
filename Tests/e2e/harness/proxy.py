"""The proxy through which everything that is not loopback would have to go. Nothing passes."""

import socketserver
import threading

from .wait import until


class _Handler(socketserver.StreamRequestHandler):
    def handle(self):
        try:
            words = self.rfile.readline().decode("latin-1").split()
        except ConnectionError:
            return
        if len(words) >= 2:
            self.server.owner.record(words[0], words[1])
            self.server.owner.released.wait()


class _Listener(socketserver.ThreadingTCPServer):
    allow_reuse_address = True
    daemon_threads = True
    block_on_close = False


class Proxy:
    """Records what is asked of it and leaves each request waiting until `release`."""

    def __init__(self):
        self.released = threading.Event()
        self._asked = []
        self._lock = threading.Lock()
        self._server = _Listener(("127.0.0.1", 0), _Handler)
        self._server.owner = self
        self.port = self._server.server_address[1]
        self._thread = threading.Thread(target=self._server.serve_forever, args=(0.05,),
                                        daemon=True)
        self._thread.start()

    def stop(self):
        self.release()
        self._server.shutdown()
        self._server.server_close()
        self._thread.join()

    def environment(self):
        address = f"http://127.0.0.1:{self.port}"
        return {"http_proxy": address, "https_proxy": address, "all_proxy": address,
                "no_proxy": "127.0.0.1,localhost,.localhost"}

    def record(self, method, target):
        with self._lock:
            self._asked.append(f"{method} {target}")

    def asked(self):
        """What was asked for, each once, in the order of the first time."""
        with self._lock:
            return list(dict.fromkeys(self._asked))

    def release(self):
        """Ends all waiting requests, without an answer."""
        self.released.set()

    def wait_for(self, request):
        until(lambda: request in self.asked(), f"{request!r} at the proxy", self.asked)
