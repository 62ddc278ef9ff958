"""A display with a window manager, and a session bus, of this test process alone."""

import atexit
import hashlib
import os
import shutil
import subprocess
import tempfile

from . import process
from .wait import until

WIDTH, HEIGHT = 1920, 1200
MANAGERS = {"openbox": ["openbox"], "mutter": ["mutter", "--x11"]}


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
    """Xvfb, a window manager and a session bus, started at the first use and stopped with the
    tests. openbox is quick; mutter composites, so that shadows and round corners are seen."""

    _shared = {}

    @classmethod
    def shared(cls, manager="openbox", size=(WIDTH, HEIGHT)):
        key = manager, size
        if key not in cls._shared:
            cls._shared[key] = cls(*key)
            atexit.register(cls._shared[key].stop)
        return cls._shared[key]

    def __init__(self, manager, size):
        self._folder = tempfile.mkdtemp(prefix="orvu-display-")
        quiet = {"stdin": subprocess.DEVNULL, "stdout": subprocess.DEVNULL,
                 "stderr": subprocess.DEVNULL}
        self._server, number = _announced(
            ["Xvfb", "-displayfd", "{fd}", "-screen", "0", f"{size[0]}x{size[1]}x24", "-noreset",
             "-nolisten", "tcp"], **quiet)
        self.name = f":{number}"
        # This process itself talks to the display and to the bus as well.
        os.environ.update(self._environment())
        self._bus, self.bus_address = _announced(
            ["dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address={fd}"],
            **quiet)
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = self.bus_address
        self._manager = process.spawn(MANAGERS[manager], **quiet)
        until(self._is_managed, "the window manager")

    def environment(self):
        """What a program needs to run on this display."""
        return self._environment() | {"DBUS_SESSION_BUS_ADDRESS": self.bus_address}

    def picture(self, file):
        """Writes a picture of the whole display."""
        subprocess.run(["import", "-silent", "-window", "root", str(file)], check=False)

    def picture_of(self, window, file, beside=0):
        """Writes a picture of one window, its shadow included, and of so many points around."""
        answer = subprocess.run(["xdotool", "getwindowgeometry", "--shell", window],
                                capture_output=True, text=True, check=True)
        at = dict(line.split("=", 1) for line in answer.stdout.split())
        crop = (f"{int(at['WIDTH']) + 2 * beside}x{int(at['HEIGHT']) + 2 * beside}"
                f"+{int(at['X']) - beside}+{int(at['Y']) - beside}")
        subprocess.run(["import", "-silent", "-window", "root", "-crop", crop, "+repage",
                        str(file)], check=True)

    def digest(self):
        """A mark that changes with what is on the display."""
        answer = subprocess.run(["import", "-silent", "-window", "root", "rgb:-"],
                                capture_output=True, check=True)
        return hashlib.sha256(answer.stdout).hexdigest()

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
