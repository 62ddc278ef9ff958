"""Servers on ports of loopback that are free, each in a thread of its own."""

import threading


class Listening:
    """A server of the standard library's kind that listens until it is stopped."""

    def __init__(self, kind, handler, owner, at=("127.0.0.1", 0)):
        """`owner` is what the handlers find as their server's owner."""
        self._server = kind(at, handler)
        self._server.owner = owner
        self.port = self._server.server_address[1]
        self._thread = threading.Thread(target=self._server.serve_forever, args=(0.05,),
                                        daemon=True)
        self._thread.start()

    def stop(self):
        self._server.shutdown()
        self._server.server_close()
        self._thread.join()
