"""Files to download, and what becomes of them: in the list and on the disk."""

import hashlib
import random
import re
import threading

from .case import BrowserTest
from .wait import until, until_equal

BUTTON = "Downloads"
MEGABYTE = 1 << 20


class Payload:
    """Bytes of any number, the same in each run, never held in memory as a whole."""

    def __init__(self, size, seed=1):
        self.size = size
        self._block = random.Random(seed).randbytes(MEGABYTE)

    def pieces(self, begin=0, end=None):
        """The bytes from one place to another, in pieces of at most a megabyte."""
        end = self.size if end is None else end
        while begin < end:
            number, at = divmod(begin, MEGABYTE)
            mark = number.to_bytes(8, "big")  # no two blocks are alike
            piece = (mark + self._block[8:])[at:at + end - begin]
            yield piece
            begin += len(piece)

    def digest(self):
        total = hashlib.sha256()
        for piece in self.pieces():
            total.update(piece)
        return total.hexdigest()


def digest_of(file):
    total = hashlib.sha256()
    with open(file, "rb") as stream:
        while piece := stream.read(MEGABYTE):
            total.update(piece)
    return total.hexdigest()


class Stream:
    """One answer of the server that stops in its middle until the test says how it goes on."""

    def __init__(self, gate):
        self.half_sent = threading.Event()
        self._gate = gate
        self._breaks = False

    def go_on(self):
        self._gate.set()

    def break_off(self):
        """Ends the connection without the rest."""
        self._breaks = True
        self._gate.set()

    def wait(self):
        """Whether the rest is to be sent."""
        self.half_sent.set()
        self._gate.wait()
        return not self._breaks


class Downloads:
    """The folder of downloads in one home, the list in the windows, and the server's files."""

    def __init__(self, test):
        self._server, self._windows, self._app = test.server, test.windows, test.app
        self._hands = test.hands
        self.folder = test.home.folder / "Downloads"

    # What the server has.

    def serve(self, path, payload, name=None, kind="application/octet-stream"):
        """A file as an attachment, or without a word on how to treat it; gives its address."""
        def answer(handler):
            self._head(handler, name, kind, [("Content-Length", str(payload.size))])
            for piece in payload.pieces():
                handler.wfile.write(piece)
        self._server.answers[path] = answer
        return self._server.url(path)

    def serve_halting(self, path, payload, name=None, kind="application/octet-stream"):
        """A file whose second half waits; gives its address and the stream to steer it."""
        stream = Stream(self._server.gate())

        def answer(handler):
            self._head(handler, name, kind, [("Content-Length", str(payload.size))])
            for piece in payload.pieces(0, payload.size // 2):
                handler.wfile.write(piece)
            handler.wfile.flush()
            if stream.wait():
                for piece in payload.pieces(payload.size // 2):
                    handler.wfile.write(piece)
            handler.close_connection = True
        self._server.answers[path] = answer
        return self._server.url(path), stream

    def serve_chunks(self, path, payload, name=None):
        """A file whose length nobody tells, and which halts in the middle of a chunk."""
        stream = Stream(self._server.gate())

        def answer(handler):
            handler.protocol_version = "HTTP/1.1"
            self._head(handler, name, "application/octet-stream",
                       [("Transfer-Encoding", "chunked"), ("Connection", "close")])
            pieces = list(payload.pieces())
            for piece in pieces[:-1]:
                handler.wfile.write(b"%x\r\n%b\r\n" % (len(piece), piece))
            last = pieces[-1]
            handler.wfile.write(b"%x\r\n%b" % (len(last), last[:len(last) // 2]))
            handler.wfile.flush()
            if stream.wait():
                handler.wfile.write(last[len(last) // 2:] + b"\r\n0\r\n\r\n")
            handler.close_connection = True
        self._server.answers[path] = answer
        return self._server.url(path), stream

    @staticmethod
    def _head(handler, name, kind, headers):
        handler.send_response(200)
        handler.send_header("Content-Type", kind)
        if name is not None:
            handler.send_header("Content-Disposition", f'attachment; filename="{name}"')
        for header in headers:
            handler.send_header(*header)
        handler.end_headers()

    # What lies on the disk.

    def files(self):
        """The names of all that lies in the folder, hidden ones too."""
        return sorted(each.name for each in self.folder.iterdir()) if self.folder.exists() else []

    def places(self):
        """The hidden folders of files under way."""
        return [name for name in self.files() if name.startswith(".orvu-download-")]

    def wait_for_files(self, *names):
        until_equal(self.files, sorted(names), "the files in the folder")

    # What the windows show.

    def is_shown(self, window=None):
        """Whether the button is there."""
        return bool(self._windows.nodes("push button", BUTTON, window))

    def open(self, window=None):
        """Opens the list, if it is closed."""
        if not self._windows.nodes("push button", "Clear Finished", window):
            self._windows.press("push button", BUTTON, window)
            self._windows.find("push button", "Clear Finished", window)

    def rows(self, window=None):
        """What the open list says, from the top."""
        return [item.name for found in self._windows.nodes("list", BUTTON, window)
                for item in found.walk() if item.role == "list item"]

    def wait_for_rows(self, *rows, window=None):
        self.open(window)
        until_equal(lambda: self.rows(window), list(rows), "the rows of the list")

    def wait_for_half(self, name, window=None):
        """Waits until the list tells of the half that came. The engine counts the last bytes only
        when more come."""
        self.open(window)
        half = re.compile(re.escape(name) + r", (4\d|50) %")
        until(lambda: any(half.fullmatch(row) for row in self.rows(window)),
              f"the half of {name!r}", lambda: self.rows(window))

    def wait_for_row(self, row, window=None):
        self.open(window)
        until(lambda: row in self.rows(window), f"a row {row!r}", lambda: self.rows(window))


class DownloadTest(BrowserTest):
    """A browser with what it downloads."""

    def setUp(self):
        super().setUp()
        self.downloads = Downloads(self)
        self.folder = self.downloads.folder
