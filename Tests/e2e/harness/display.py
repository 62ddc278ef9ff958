"""A display with a window manager, and a session bus, of this test process alone."""

import atexit
import os
import shutil
import subprocess
import tempfile

from . import process
from .wait import until

WIDTH, HEIGHT = 1920, 1200


def _announced(arguments, **options):
    """Starts a program that writes a line to a descriptor given by "{fd}"; gives both."""
    reader, writer = os.pipe()
    try:
        started = process.spawn([each.replace("{fd}", str(writer)) for each in arguments],
                                pass_fds=[writer], **options)
    finally:
        os.close(writer)
    with os.fdopen(reader) as lines:
        line = lines.readline().strip()
    if not line:
        raise AssertionError(f"{arguments[0]} did not start, status {started.poll()}")
    return started, line


class Display:
    """Xvfb, openbox and a session bus, started at the first use and stopped with the tests."""

    _shared = None

    @classmethod
    def shared(cls):
        if cls._shared is None:
            cls._shared = cls()
            atexit.register(cls._shared.stop)
        return cls._shared

    def __init__(self):
        self._folder = tempfile.mkdtemp(prefix="orvu-display-")
        quiet = {"stdin": subprocess.DEVNULL, "stdout": subprocess.DEVNULL,
                 "stderr": subprocess.DEVNULL}
        self._server, number = _announced(
            ["Xvfb", "-displayfd", "{fd}", "-screen", "0", f"{WIDTH}x{HEIGHT}x24", "-noreset",
             "-nolisten", "tcp"], **quiet)
        self.name = f":{number}"
        # This process itself talks to the display and to the bus as well.
        os.environ.update(self._environment())
        self._bus, self.bus_address = _announced(
            ["dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address={fd}"],
            **quiet)
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = self.bus_address
        self._manager = process.spawn(["openbox"], **quiet)
        until(self._is_managed, "the window manager")

    def environment(self):
        """What a program needs to run on this display."""
        return self._environment() | {"DBUS_SESSION_BUS_ADDRESS": self.bus_address}

    def picture(self, file):
        """Writes a picture of the whole display."""
        subprocess.run(["import", "-silent", "-window", "root", str(file)], check=False)

    def stop(self):
        for each in (self._manager, self._bus, self._server):
            process.stop(each)
        shutil.rmtree(self._folder, ignore_errors=True)

    def _environment(self):
        return {"DISPLAY": self.name, "GDK_BACKEND": "x11", "GSK_RENDERER": "cairo",
                "LIBGL_ALWAYS_SOFTWARE": "1", "XDG_RUNTIME_DIR": self._folder,
                "HOME": self._folder, "LANG": "C.UTF-8", "TZ": "UTC"}

    @staticmethod
    def _is_managed():
        answer = subprocess.run(["xprop", "-root", "_NET_SUPPORTING_WM_CHECK"],
                                capture_output=True, text=True, check=False)
        return "window id" in answer.stdout
