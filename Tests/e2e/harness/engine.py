"""The program that runs a model, spoken to as the browser does."""

import os
import pathlib
import select
import socket
import struct
import subprocess

from .app import program
from .wait import DEADLINE

NAME = "orvu-model"  # as the kernel knows it
READY, DESCRIPTION, REPLY, FAILURE = 1, 2, 3, 4
DESCRIBE, ASK, CANCEL = 1, 2, 3
REQUEST, ANSWER = 0x4F724D71, 0x4F724D61
# Numbers of failures.
BROKE_OFF, TOO_LONG, CONTEXT, UNLOADABLE, PROCESSOR = 6, 8, 10, 14, 16


def libraries():
    """Where the engine's libraries lie, if they were fetched."""
    return installed().parent.parent / "llama/libraries"


def installed():
    return pathlib.Path(program()).with_name(NAME)


class Engine:
    """One process of it; ended with the test."""

    def __init__(self, model=None, *arguments, libraries=None):
        ours, theirs = socket.socketpair()
        self.socket = ours
        file = os.open(model, os.O_RDONLY) if model else os.open("/dev/null", os.O_RDONLY)
        command = [str(installed()), "--own-namespaces", *arguments]
        # The shell moves the file to where the program expects it.
        self.process = subprocess.Popen(
            ["bash", "-c", f'exec "$@" 3<&{file}', "bash", *command], stdin=theirs, stdout=theirs,
            stderr=subprocess.DEVNULL, pass_fds=(file,),
            env={"LD_LIBRARY_PATH": str(libraries)} if libraries else {"LANG": "C"})
        theirs.close()
        os.close(file)
        self._bytes = b""

    def close(self):
        self.process.kill()
        self.process.wait()
        self.socket.close()

    def tell(self, kind, number=1, instructions="", prompt=""):
        head, body = instructions.encode(), prompt.encode()
        self.socket.sendall(struct.pack("<5I", REQUEST, number, kind, len(head),
                                        len(head) + len(body)) + head + body)

    def _receive(self):
        try:
            return self.socket.recv(65536)
        except ConnectionResetError:
            return b""  # it ended without having read all

    def _read(self, count, deadline):
        while len(self._bytes) < count:
            if not select.select([self.socket], [], [], deadline)[0]:
                raise AssertionError(f"the engine said nothing for {deadline:g} s")
            piece = self._receive()
            if not piece:
                return None
            self._bytes += piece
        piece, self._bytes = self._bytes[:count], self._bytes[count:]
        return piece

    def hear(self, deadline=DEADLINE):
        """(kind, number, content) of its next answer; None once it ended."""
        head = self._read(16, deadline)
        if head is None:
            return None
        magic, number, kind, length = struct.unpack("<4I", head)
        assert magic == ANSWER, head
        content = self._read(length, deadline)
        return kind, number, content

    def rest(self, deadline=DEADLINE):
        """All that it says until its end, as text."""
        text = self._bytes
        while True:
            if not select.select([self.socket], [], [], deadline)[0]:
                raise AssertionError(f"the engine didn't end within {deadline:g} s")
            piece = self._receive()
            if not piece:
                return text.decode()
            text += piece


def description(content):
    """What a description tells."""
    memory, longest, answers = struct.unpack("<QII", content[:16])
    return {"answers": bool(answers), "memory": memory, "context": longest,
            "name": content[16:].decode()}


def failure(content):
    return struct.unpack("<I", content)[0]
