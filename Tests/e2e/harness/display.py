"""A display with a window manager, and a session bus, of this test process alone."""

import atexit
import os
import pathlib
import shutil
import subprocess
import tempfile

from . import process, x11
from .screen import Screen
from .wait import until

WIDTH, HEIGHT = 1920, 1200
MANAGERS = {"openbox": ["openbox"], "mutter": ["mutter", "--x11"]}
SOCKETS = pathlib.Path("/tmp/.X11-unix")


def _x_server(size, folder):
    """Starts a server on a number that no other one has, with its points in a file of a folder;
    gives both."""
    for _ in range(5):
        server, number = process.announced("Xvfb", "-displayfd", "{fd}", "-screen",
                                           "0", f"{size[0]}x{size[1]}x24", "-noreset",
                                           "-nolisten", "tcp", "-fbdir", folder)
        # A server that had the number before and ends just now may take the new one's socket away.
        if number and (SOCKETS / f"X{number}").exists():
            return server, number
        process.stop(server)
    raise AssertionError("no display could be made")


class SessionDisplay:
    """A folder and a session bus for a display, which starts at the first use and is stopped with
    the tests."""

    _shared = {}

    @classmethod
    def shared(cls, **traits):
        key = cls, *sorted(traits.items())
        if key not in cls._shared:
            cls._shared[key] = cls(**traits)
            atexit.register(cls._shared[key].stop)
        # The tools of this process itself talk to the display and to the bus as well.
        os.environ.update(cls._shared[key].environment())
        return cls._shared[key]

    def __init__(self):
        self._folder = tempfile.mkdtemp(prefix="orvu-display-")
        self._processes = []
        self.bus_address = ""

    def environment(self):
        """What a program needs to run on this display."""
        return {"LIBGL_ALWAYS_SOFTWARE": "1", "XDG_RUNTIME_DIR": self._folder,
                "HOME": self._folder, "LANG": "C.UTF-8", "TZ": "UTC",
                "DBUS_SESSION_BUS_ADDRESS": self.bus_address}

    def _start_bus(self):
        os.environ.update(self.environment())
        bus, self.bus_address = process.announced("dbus-daemon", "--session", "--nofork",
                                                  "--nopidfile", "--print-address={fd}")
        if not self.bus_address:
            raise AssertionError(f"no session bus, status {bus.wait()}")
        self._processes.append(bus)
        os.environ.update(self.environment())

    def stop(self):
        for each in reversed(self._processes):
            process.stop(each)
        shutil.rmtree(self._folder, ignore_errors=True)

    def pointer(self):
        """Where the pointer is, in words; nothing if the display doesn't tell."""
        return ""


class Display(SessionDisplay):
    """Xvfb and a window manager. openbox is quick; mutter composites, so that shadows and round
    corners are seen."""

    def __init__(self, manager="openbox", size=(WIDTH, HEIGHT)):
        super().__init__()
        server, number = _x_server(size, self._folder)
        self._processes.append(server)
        self._screen = Screen(pathlib.Path(self._folder) / "Xvfb_screen0")
        self.name = f":{number}"
        self._start_bus()
        self._processes.append(process.spawn(MANAGERS[manager], **process.QUIET))
        # The first one of all, which may have to read its libraries from the disk.
        until(lambda: "window id" in x11.property_of("root", "_NET_SUPPORTING_WM_CHECK"),
              "the window manager", deadline=60)

    def environment(self):
        return super().environment() | {"DISPLAY": self.name, "GDK_BACKEND": "x11",
                                        "GSK_RENDERER": "cairo"}

    def pointer(self):
        return " ".join(x11.xdotool("getmouselocation"))

    def picture(self, file):
        """Writes a picture of the whole display, without its pointer."""
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
        return self._screen.color(left + right, top + down)

    def points(self, window):
        """The points that are seen where a window stands, with its width and height; none of one
        that went away, or hangs over the edge."""
        left, top, width, height = x11.geometry(window)
        points = self._screen.area(left, top, width, height)
        return (points, width, height) if points else (b"", 0, 0)

    def digest(self):
        """A mark that changes with what is on the display."""
        return self._screen.digest()

    def stop(self):
        self._screen.close()
        super().stop()
