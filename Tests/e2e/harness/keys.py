"""Keyboard and pointer, as a person's hands would use them."""

import subprocess

from .wait import until

# A place that is in the page, wherever the window's other parts stand.
PAGE = (760, 480)


# The frame that a window has where nothing composites, in points.
PLAIN_FRAME = 4
POPOVER_SHADOW_FALL = 6


def _frame(window):
    """How far the content of a window lies within what the display takes for it: the shadow, or
    the plain frame."""
    answer = subprocess.run(["xprop", "-id", window, "_GTK_FRAME_EXTENTS"], capture_output=True,
                            text=True, check=False).stdout
    if "=" not in answer:
        return PLAIN_FRAME, PLAIN_FRAME
    left, _, top, _ = (int(each) for each in answer.split("=")[1].split(","))
    return left, top


def _move(window, at):
    """Puts the pointer over a place of the content."""
    left, top = _frame(window)
    _xdotool("mousemove", "--window", window, at[0] + left, at[1] + top)


def _xdotool(*arguments):
    answer = subprocess.run(["xdotool", *map(str, arguments)], capture_output=True, text=True,
                            check=False)
    return answer.stdout.split()


def minimise(window):
    """Takes a window off the display, as its button does."""
    _xdotool("windowminimize", "--sync", window)


class Hands:
    """Keys and clicks for the windows of one program."""

    def __init__(self, app):
        self._app = app

    def windows(self, title):
        """The display's ids of the visible windows of that title."""
        return _xdotool("search", "--onlyvisible", "--all", "--pid", self._app.pid,
                        "--name", f"^{title}$")

    def window(self, title="Orvu"):
        """The id of the newest visible window of that title. Its popovers are called like it,
        but are smaller."""
        found = until(lambda: self.windows(title), f"a window {title!r} on the display")
        return max(reversed(found), key=self._area) if len(found) > 1 else found[0]

    @staticmethod
    def _area(window):
        lines = _xdotool("getwindowgeometry", "--shell", window)
        facts = dict(line.split("=", 1) for line in lines)
        return int(facts.get("WIDTH", 0)) * int(facts.get("HEIGHT", 0))

    def take(self, title="Orvu"):
        """Brings a window to the front, puts the pointer over its page, and gives its id."""
        window = self.window(title)
        _xdotool("windowactivate", "--sync", window)
        until(lambda: _xdotool("getactivewindow") == [window], f"window {title!r} at the front",
              lambda: _xdotool("getactivewindow"))
        _move(window, PAGE)
        return window

    def press(self, *keys, title="Orvu"):
        """Presses keys such as "ctrl+t" one after the other."""
        self.take(title)
        _xdotool("key", *keys)

    def type(self, text, title="Orvu"):
        self.take(title)
        _xdotool("type", "--delay", 8, text)

    def go_on(self, *keys):
        """Presses keys where the keyboard is, with the pointer left where it is."""
        _xdotool("key", "--delay", 20, *keys)

    def type_on(self, text):
        """Types where the keyboard is, with the pointer left where it is."""
        _xdotool("type", "--delay", 8, text)

    def enter_at_once(self, key, text):
        """Presses a key, types a text and presses Return, faster than anybody can."""
        _xdotool("key", "--delay", 0, key, "type", "--delay", 0, "--args", 1, text,
                 "key", "--delay", 0, "Return")

    def point(self, at, title="Orvu"):
        """Moves the pointer to a place in the window."""
        _xdotool("mousemove", "--window", self.take(title), *at)

    def click_twice(self, at, title="Orvu"):
        self.point(at, title)
        _xdotool("click", "--repeat", 2, "--delay", 60, 1)

    def click(self, button=1, holding=None, at=PAGE, title="Orvu"):
        """Clicks into the page, or at another place, with a key held down if one is named."""
        window = self.take(title)
        _move(window, at)
        held = ["keydown", holding] if holding else []
        freed = ["keyup", holding] if holding else []
        _xdotool(*held, "click", button, *freed)

    def drag(self, start, end, title="Orvu"):
        """Drags with the first button from one place in the window to another."""
        window = self.take(title)
        _move(window, start)
        _xdotool("mousedown", 1)
        steps = 8
        for step in range(1, steps + 1):
            at = [round(a + (b - a) * step / steps) for a, b in zip(start, end)]
            _move(window, at)
        _xdotool("mouseup", 1)

    def double_click(self, at, title="Orvu"):
        window = self.take(title)
        _move(window, at)
        _xdotool("click", "--repeat", 2, "--delay", 60, 1)

    def hover(self, at, title="Orvu"):
        _move(self.take(title), at)

    def click_in_popover(self, content, offset, title="Orvu"):
        """Clicks at a place within what fills the one popover that is open. It is a window of its
        own on the display, whose place the accessibility tree doesn't tell."""
        window = self.window(title)
        popover = until(lambda: [each for each in self.windows(title) if each != window],
                        "a popover on the display")[-1]
        lines = _xdotool("getwindowgeometry", "--shell", popover)
        facts = dict(line.split("=", 1) for line in lines)
        width, height = content.box[2:]
        # The shadow around it falls downwards.
        left = (int(facts["WIDTH"]) - width) // 2
        top = (int(facts["HEIGHT"]) - height) // 2 - POPOVER_SHADOW_FALL
        _xdotool("mousemove", "--window", popover, left + offset[0], top + offset[1], "click", 1)

    def resize(self, width, height, title="Orvu"):
        """Makes a window that large, as a drag at its edge does."""
        _xdotool("windowsize", "--sync", self.take(title), width, height)

    def size(self, title="Orvu"):
        """Width and height of a window on the display."""
        lines = _xdotool("getwindowgeometry", "--shell", self.window(title))
        facts = dict(line.split("=", 1) for line in lines)
        return int(facts["WIDTH"]), int(facts["HEIGHT"])

    def rest(self, title="Orvu"):
        """Puts the pointer where it hovers over nothing."""
        window = self.window(title)
        width, height = self.size(title)
        _xdotool("mousemove", "--window", window, width // 2, height - 4)
