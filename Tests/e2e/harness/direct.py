"""Hosts of the outside world that are reached without the proxy: in a network of the test's own this
computer has their addresses."""

import socketserver

from . import own_network
from .authority import Authority
from .loopback import Listening
from .server import Handler, Pages


class _Connection(socketserver.BaseRequestHandler):
    def handle(self):
        site = self.server.owner
        site.connections += 1
        try:
            context = Authority.shared().context(site.certified)
            with context.wrap_socket(self.request, server_side=True) as encrypted:
                Handler(encrypted, self.client_address, site)
        except OSError:
            pass  # the program went away, or did not trust us


class _Listener(socketserver.ThreadingTCPServer):
    allow_reuse_address = True
    daemon_threads = True
    block_on_close = False


class DirectSite(Pages):
    """A host that is reached over https at an address."""

    def __init__(self, host, address, certified=None):
        """`certified` is the host that its certificate is for, if that is another."""
        super().__init__()
        self.host, self.certified = host, certified or host
        self.connections = 0
        own_network.add_address(address)
        self._listening = Listening(_Listener, _Connection, self, (address, 443))

    def stop(self):
        self.open_gates()
        self._listening.stop()

    def url(self, path):
        return f"https://{self.host}{path}"
