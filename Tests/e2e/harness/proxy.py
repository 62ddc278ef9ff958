"""The proxy through which everything that is not loopback has to go. Nothing leaves the machine:
hosts that a test has put here are answered, all others wait."""

import socketserver
import threading

from .authority import Authority
from .loopback import Listening
from .server import Handler, Pages
from .wait import until


class Site(Pages):
    """A host of the outside world, reached over https."""

    def __init__(self, host):
        super().__init__()
        self.host = host
        self._context = Authority.shared().context(host)

    def url(self, path):
        return f"https://{self.host}{path}"

    def answer(self, connection, address):
        """Speaks with a program that believes to have reached the host."""
        with self._context.wrap_socket(connection, server_side=True) as encrypted:
            Handler(encrypted, address, self)


class _Connection(socketserver.StreamRequestHandler):
    def handle(self):
        try:
            words = self._head()
            if len(words) < 2:
                return
            site = self.server.owner.record(words[0], words[1])
            if site:
                self.wfile.write(b"HTTP/1.1 200 Connected\r\n\r\n")
                site.answer(self.connection, self.client_address)
            else:
                self.server.owner.released.wait()
        except OSError:
            pass  # the program went away, or did not trust us

    def _head(self):
        """The words of the first line; the rest of the head is read and dropped."""
        words = self.rfile.readline().decode("latin-1").split()
        while self.rfile.readline().strip():
            pass
        return words


class _Listener(socketserver.ThreadingTCPServer):
    allow_reuse_address = True
    daemon_threads = True
    block_on_close = False


class Proxy:
    """Records what is asked of it. Hosts without a site here are left waiting until `release`."""

    def __init__(self):
        self.released = threading.Event()
        self._asked = []
        self._sites = {}
        self._lock = threading.Lock()
        self._listening = Listening(_Listener, _Connection, self)

    def stop(self):
        self.release()
        self._listening.stop()

    def environment(self):
        address = f"http://127.0.0.1:{self._listening.port}"
        return {"http_proxy": address, "https_proxy": address, "all_proxy": address,
                "no_proxy": "127.0.0.1,localhost,.localhost"}

    def site(self, host):
        """The site of that host, which is answered over https from now on."""
        with self._lock:
            if host not in self._sites:
                self._sites[host] = Site(host)
            return self._sites[host]

    def record(self, method, target):
        """Notes what was asked for, and gives the site that answers it, if there is one."""
        with self._lock:
            self._asked.append(f"{method} {target}")
            host, _, port = target.rpartition(":")
            return self._sites.get(host) if (method, port) == ("CONNECT", "443") else None

    def asked(self):
        """What was asked for, each once, in the order of the first time."""
        with self._lock:
            return list(dict.fromkeys(self._asked))

    def record_of(self, beginning):
        """Everything that was asked for whose address begins so, as often as it was."""
        with self._lock:
            return [each for each in self._asked
                    if each.split(" ", 1)[1].startswith(beginning)]

    def release(self):
        """Ends all waiting requests, without an answer."""
        self.released.set()
        for site in self._sites.values():
            site.open_gates()

    def wait_for(self, request):
        until(lambda: request in self.asked(), f"{request!r} at the proxy", self.asked)
