"""A display with a window manager, and a session bus, of this test process alone."""

import atexit
import hashlib
import os
import pathlib
import shutil
import subprocess
import tempfile

from . import process, x11
from .wait import until

WIDTH, HEIGHT = 1920, 1200
MANAGERS = {"openbox": ["openbox"], "mutter": ["mutter", "--x11"]}
SOCKETS = pathlib.Path("/tmp/.X11-unix")
QUIET = {"stdin": subprocess.DEVNULL, "stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}


def _announced(*arguments):
    """Starts a program that writes a line to a descriptor given by "{fd}"; gives both. The line is
    empty if it ended instead."""
    reader, writer = os.pipe()
    try:
        started = process.spawn([each.replace("{fd}", str(writer)) for each in arguments],
                                pass_fds=[writer], **QUIET)
    finally:
        os.close(writer)
    with os.fdopen(reader) as lines:
        return started, lines.readline().strip()


def _x_server(size):
    """Starts a server on a number that no other one has; gives both."""
    for _ in range(5):
        server, number = _announced("Xvfb", "-displayfd", "{fd}", "-screen", "0",
                                    f"{size[0]}x{size[1]}x24", "-noreset", "-nolisten", "tcp")
        # A server that had the number before and ends just now may take the new one's socket away.
        if number and (SOCKETS / f"X{number}").exists():
            return server, number
        process.stop(server)
    raise AssertionError("no display could be made")


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
        # The tools of this process itself talk to the display and to the bus as well.
        os.environ.update(cls._shared[key].environment())
        return cls._shared[key]

    def __init__(self, manager, size):
        self._folder = tempfile.mkdtemp(prefix="orvu-display-")
        self._server, number = _x_server(size)
        self.name = f":{number}"
        self.bus_address = ""
        os.environ.update(self.environment())
        self._bus, self.bus_address = _announced("dbus-daemon", "--session", "--nofork",
                                                 "--nopidfile", "--print-address={fd}")
        if not self.bus_address:
            raise AssertionError(f"no session bus, status {self._bus.wait()}")
        os.environ.update(self.environment())
        self._manager = process.spawn(MANAGERS[manager], **QUIET)
        # The first one of all, which may have to read its libraries from the disk.
        until(lambda: "window id" in x11.property_of("root", "_NET_SUPPORTING_WM_CHECK"),
              "the window manager", deadline=60)

    def environment(self):
        """What a program needs to run on this display."""
        return {"DISPLAY": self.name, "GDK_BACKEND": "x11", "GSK_RENDERER": "cairo",
                "LIBGL_ALWAYS_SOFTWARE": "1", "XDG_RUNTIME_DIR": self._folder,
                "HOME": self._folder, "LANG": "C.UTF-8", "TZ": "UTC",
                "DBUS_SESSION_BUS_ADDRESS": self.bus_address}

    def picture(self, file):
        """Writes a picture of the whole display."""
        subprocess.run(["import", "-silent", "-window", "root", str(file)], check=False)

    def picture_of(self, window, file, beside=0):
        """Writes a picture of one window, its shadow included, and of so many points around."""
        left, top, width, height = x11.geometry(window)
        crop = f"{width + 2 * beside}x{height + 2 * beside}+{left - beside}+{top - beside}"
        subprocess.run(["import", "-silent", "-window", "root", "-crop", crop, "+repage",
                        str(file)], check=True)

    def color(self, window, right, down):
        """The red, green and blue, from 0 to 255, of a point so far from a window's corner."""
        left, top, _, _ = x11.geometry(window)
        answer = subprocess.run(["import", "-silent", "-window", "root", "-depth", "8", "-crop",
                                 f"1x1+{left + right}+{top + down}", "rgb:-"],
                                capture_output=True, check=True)
        return tuple(answer.stdout[:3])

    def digest(self):
        """A mark that changes with what is on the display."""
        answer = subprocess.run(["import", "-silent", "-window", "root", "rgb:-"],
                                capture_output=True, check=True)
        return hashlib.sha256(answer.stdout).hexdigest()

    def stop(self):
        for each in (self._manager, self._bus, self._server):
            process.stop(each)
        shutil.rmtree(self._folder, ignore_errors=True)
