"""Keyboard and pointer, as a person's hands would use them."""

from . import language
from .wait import until
from .x11 import geometry, property_of, xdotool

SMALLEST = (900, 560)
# A place that is in the page, wherever the window's other parts stand.
PAGE = (760, 480)
# The frame that a window has where nothing composites, in points.
PLAIN_FRAME = 4
POPOVER_SHADOW_FALL = 6


def _frame(window):
    """How far the content of a window lies within what the display takes for it: the shadow, or
    the plain frame."""
    extents = property_of(window, "_GTK_FRAME_EXTENTS")
    if not extents:
        return PLAIN_FRAME, PLAIN_FRAME
    left, _, top, _ = (int(each) for each in extents.split(","))
    return left, top


def _move(window, at):
    """Puts the pointer over a place of the content."""
    left, top = _frame(window)
    xdotool("mousemove", "--window", window, at[0] + left, at[1] + top)


def minimise(window):
    """Takes a window off the display, as its button does."""
    xdotool("windowminimize", "--sync", window)


class Hands:
    """Keys and clicks for the windows of one program."""

    def __init__(self, app):
        self._app = app

    def windows(self, title):
        """The display's ids of the visible windows of that title."""
        return xdotool("search", "--onlyvisible", "--all", "--pid", self._app.pid,
                       "--name", f"^{language.shown(title)}$")

    def window(self, title="Orvu"):
        """The id of the newest visible window of that title. Its popovers are called like it,
        but are smaller."""
        def area(window):
            _, _, width, height = geometry(window)
            return width * height
        found = until(lambda: self.windows(title), f"a window {title!r} on the display")
        return max(reversed(found), key=area) if len(found) > 1 else found[0]

    def take(self, title="Orvu"):
        """Brings a window to the front, puts the pointer over its page, and gives its id."""
        window = self.window(title)
        xdotool("windowactivate", "--sync", window)
        until(lambda: xdotool("getactivewindow") == [window], f"window {title!r} at the front",
              lambda: xdotool("getactivewindow"))
        _move(window, PAGE)
        return window

    # Keys.

    def press(self, *keys, title="Orvu"):
        """Presses keys such as "ctrl+t" one after the other."""
        self.take(title)
        xdotool("key", *keys)

    def type(self, text, title="Orvu"):
        self.take(title)
        xdotool("type", "--delay", 8, text)

    def go_on(self, *keys):
        """Presses keys where the keyboard is, with the pointer left where it is."""
        xdotool("key", "--delay", 20, *keys)

    def type_on(self, text):
        """Types where the keyboard is, with the pointer left where it is."""
        xdotool("type", "--delay", 8, text)

    def enter_at_once(self, key, text):
        """Presses a key, types a text and presses Return, faster than anybody can."""
        xdotool("key", "--delay", 0, key, "type", "--delay", 0, "--args", 1, text,
                "key", "--delay", 0, "Return")

    # The pointer.

    def hover(self, at, title="Orvu"):
        _move(self.take(title), at)

    def click(self, button=1, holding=None, at=PAGE, title="Orvu"):
        """Clicks into the page, or at another place, with a key held down if one is named."""
        self.hover(at, title)
        held = ["keydown", holding] if holding else []
        freed = ["keyup", holding] if holding else []
        xdotool(*held, "click", button, *freed)

    def move_in(self, window, at):
        """Puts the pointer at a place within a window of the display, named by its number."""
        xdotool("mousemove", "--window", window, *at)

    def click_here(self):
        """Clicks where the pointer is."""
        xdotool("click", 1)

    def double_click(self, at, title="Orvu"):
        self.hover(at, title)
        xdotool("click", "--repeat", 2, "--delay", 20, 1)

    def drag(self, start, end, title="Orvu"):
        """Drags with the first button from one place in the window to another."""
        window = self.take(title)
        _move(window, start)
        xdotool("mousedown", 1)
        steps = 8
        for step in range(1, steps + 1):
            at = [round(a + (b - a) * step / steps) for a, b in zip(start, end)]
            _move(window, at)
        xdotool("mouseup", 1)

    def hover_in_popover(self, content, offset, title="Orvu"):
        """Puts the pointer at a place within what fills the one popover that is open. It is a
        window of its own on the display, whose place the accessibility tree doesn't tell.

        The toolkit knows one place of the pointer for a window and its popovers, and after a layout
        of the window takes the last one in the window for it, until the pointer moves again. A hand
        always moves on; who calls this does so until the program shows that it has seen it."""
        window = self.window(title)
        popover = until(lambda: [each for each in self.windows(title) if each != window],
                        "a popover on the display")[-1]
        _, _, outer_width, outer_height = geometry(popover)
        width, height = content.box[2:]
        # The shadow around it falls downwards.
        left = (outer_width - width) // 2
        top = (outer_height - height) // 2 - POPOVER_SHADOW_FALL
        xdotool("mousemove", "--window", popover, left + offset[0], top + offset[1])

    # The window as a whole.

    def resize(self, width, height, title="Orvu"):
        """Makes a window that large, as a drag at its edge does."""
        xdotool("windowsize", "--sync", self.take(title), width, height)

    def shrink(self, title="Orvu"):
        """Makes a window as small as it gets."""
        self.resize(*SMALLEST, title)
        until(lambda: self.size(title)[0] < SMALLEST[0] + 50, "the small window",
              lambda: self.size(title))

    def size(self, title="Orvu"):
        """Width and height of a window on the display."""
        return geometry(self.window(title))[2:]

    def rest(self, title="Orvu"):
        """Puts the pointer where it hovers over nothing."""
        window = self.window(title)
        _, _, width, height = geometry(window)
        xdotool("mousemove", "--window", window, width // 2, height - 4)
