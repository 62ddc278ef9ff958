"""A Wayland display: sway without a screen, with devices of the test's own."""

import json
import os
import pathlib
import subprocess

from . import process
from .display import SessionDisplay
from .wait import until
from .wayland_input import Devices

SIZE = (1600, 1000)
POINT = 3  # bytes in a picture
WHITE = b"\xff" * POINT * 6
SOCKET = "wayland-1"  # the compositor's own choice
# Windows stand at their own size, as on most desktops, and only a click or a command gives one
# the keyboard.
CONFIGURATION = """
xwayland disable
output HEADLESS-1 resolution {}x{} position 0 0
default_border none
default_floating_border none
focus_follows_mouse no
focus_on_window_activation focus
for_window [app_id=".*"] floating enable
"""


class SwayDisplay(SessionDisplay):
    """The compositor. It gives each window's place, and composites: shadows and round corners are
    seen."""

    def __init__(self):
        super().__init__()
        folder = pathlib.Path(self._folder)
        self.socket = folder / SOCKET
        self._control = folder / "control"
        os.environ.pop("DISPLAY", None)
        self._start_bus()
        configuration = folder / "configuration"
        configuration.write_text(CONFIGURATION.format(*SIZE))
        headless = {"WLR_BACKENDS": "headless", "WLR_LIBINPUT_NO_DEVICES": "1",
                    "WLR_RENDERER": "pixman"}
        without_display = {name: value for name, value in os.environ.items()
                           if name != "WAYLAND_DISPLAY"}
        sway = process.spawn(["sway", "-c", str(configuration)],
                             env=without_display | headless, **process.QUIET)
        self._processes.append(sway)
        until(lambda: self._control.exists() and self.socket.exists() or sway.poll() is not None,
              "the compositor", deadline=60)
        if sway.poll() is not None:
            raise AssertionError(f"the compositor ended with {sway.returncode}")
        self.devices = Devices(self.socket, SIZE)

    def environment(self):
        return super().environment() | {"GDK_BACKEND": "wayland", "SWAYSOCK": str(self._control),
                                        "WAYLAND_DISPLAY": SOCKET}

    def join(self, folder):
        """Lets programs whose folder for sockets is another one find the display. They get no
        path, for the engine's sandbox knows such sockets by names alone."""
        (folder / SOCKET).symlink_to(self.socket)

    def stop(self):
        self.devices.close()
        super().stop()

    # Windows.

    def command(self, words):
        """Lets the compositor do something."""
        self._ask(words)

    def windows(self, pid):
        """What the compositor tells of a program's windows, the oldest first."""
        found = [each for each in _below(self._ask("-t", "get_tree")) if each.get("pid") == pid]
        return sorted(found, key=lambda each: each["id"])

    @staticmethod
    def _ask(*words):
        answer = subprocess.run(["swaymsg", "-r", *words], capture_output=True, text=True,
                                check=True)
        return json.loads(answer.stdout)

    # Pictures.

    def picture(self, file):
        """Writes a picture of the whole display."""
        file.write_bytes(self.image())

    @staticmethod
    def image(kind="png", area=None):
        """A picture of the display, or of an area: left, top, width and height."""
        cut = ["-g", "{},{} {}x{}".format(*area)] if area else []
        return subprocess.run(["grim", *cut, "-t", kind, "-"], capture_output=True,
                              check=True).stdout

    def white_box(self, area):
        """The box around what is white in an area, single points and thin lines apart: left, top,
        width and height. Nothing if nothing is."""
        left, top, width, height = area
        picture = self.image("ppm", area)
        row = POINT * width
        start = len(picture) - row * height
        rows = [picture[begin:begin + row] for begin in range(start, len(picture), row)]
        lines = [line for line, each in enumerate(rows) if WHITE in each]
        if not lines:
            return None
        first = min(-(-rows[line].find(WHITE) // POINT) for line in lines)
        last = max((rows[line].rfind(WHITE) + len(WHITE)) // POINT for line in lines)
        return left + first, top + lines[0], last - first, lines[-1] + 1 - lines[0]

    def settle(self):
        """Waits until the display has shown the same picture twice."""
        seen = []

        def same():
            seen.append(self.image("ppm"))
            return len(seen) > 1 and seen[-2] == seen[-1]
        until(same, "the display to come to rest", pause=0.1)

    def color(self, left, top):
        """The red, green and blue, from 0 to 255, of a point of the display."""
        return tuple(self.image("ppm", (left, top, 1, 1))[-3:])


def _below(node):
    yield node
    for child in node["nodes"] + node["floating_nodes"]:
        yield from _below(child)
