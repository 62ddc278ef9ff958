"""Keyboard and pointer on a Wayland display."""

import itertools

from .keys import PAGE
from .wait import until

# How far the pointer goes with a button down, in points, before the toolkit sees a drag.
DRAG_START = 10


class WaylandHands:
    """Keys and clicks for the windows of one program."""

    def __init__(self, app, display):
        self._app = app
        self._display = display
        self._keyboard = display.devices.keyboard
        self._pointer = display.devices.pointer

    # Windows.

    def windows(self, title):
        """What the compositor tells of the windows of that title."""
        return [each for each in self._display.windows(self._app.pid) if each["name"] == title]

    def window(self, title="Orvu"):
        """What it tells of the newest window of that title."""
        return until(lambda: self.windows(title), f"a window {title!r} on the display")[-1]

    def has_keyboard(self, title="Orvu"):
        return any(each["focused"] for each in self.windows(title))

    def take(self, title="Orvu"):
        """Brings a window to the front and gives it the keyboard."""
        self._display.command(f"[con_id={self.window(title)['id']}] focus")
        until(lambda: self.has_keyboard(title), f"window {title!r} at the front")

    def area(self, title="Orvu"):
        """Left, top, width and height of a window's content on the display."""
        place = self.window(title)["rect"]
        return place["x"], place["y"], place["width"], place["height"]

    def size(self, title="Orvu"):
        return self.area(title)[2:]

    def on_display(self, at, title="Orvu"):
        """Where a place of a window's content is on the display."""
        left, top, _, _ = self.area(title)
        return left + at[0], top + at[1]

    # Keys.

    def press(self, *keys, title="Orvu"):
        """Presses keys such as "ctrl+t" one after the other."""
        self.take(title)
        self.go_on(*keys)

    def type(self, text, title="Orvu"):
        self.take(title)
        self.type_on(text)

    def go_on(self, *keys):
        """Presses keys where the keyboard is."""
        for each in keys:
            self._keyboard.press(each)

    def type_on(self, text):
        self._keyboard.type(text)

    # The pointer.

    def hover(self, at, title="Orvu"):
        self._pointer.move(*self.on_display(at, title))

    def click(self, button=1, holding=None, at=PAGE, title="Orvu"):
        """Clicks at a place in the window in front, with a key held down if one is named."""
        self.hover(at, title)
        if holding:
            self._keyboard.hold(holding)
        self._pointer.click(button)
        if holding:
            self._keyboard.free(holding)

    def double_click(self, at, title="Orvu"):
        self.hover(at, title)
        self._pointer.click()
        self._pointer.click()

    def click_on_display(self, at, button=1):
        """Clicks at a place of the display, whatever stands there."""
        self._pointer.move(*at)
        self._pointer.click(button)

    def in_popover(self, place, content, part):
        """Where a part of what fills a popover is on the display, for the popover's own place
        there. The accessibility tree tells of popovers where they are not."""
        left, top, width, height = place
        padding = (width - content.box[2]) // 2
        inner_left, inner_top = left + padding, top + height - padding - content.box[3]
        part_left, part_top, part_width, part_height = part.box
        return (inner_left + part_left - content.box[0] + part_width // 2,
                inner_top + part_top - content.box[1] + part_height // 2)

    def drag_window(self, at, by, title="Orvu"):
        """Drags a window along by a place of its content, and then so far to the right and down
        from where it was when it began to follow; gives its area there. Only the compositor moves
        windows, when the program has asked for it."""
        place = self.on_display(at, title)
        before = self.area(title)
        self._pointer.move(*place)
        self._pointer.hold()
        steps = itertools.count(1)

        def is_taken():
            self._pointer.move(place[0] + DRAG_START + next(steps), place[1])
            return self.area(title) != before
        until(is_taken, f"{title!r} to follow the pointer")
        taken = place[0] + DRAG_START + next(steps), place[1]
        self._pointer.move(*taken)
        start = self.area(title)
        self._pointer.move(taken[0] + by[0], taken[1] + by[1])
        self._pointer.free()
        return start
