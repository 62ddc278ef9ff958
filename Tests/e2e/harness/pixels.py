"""What is seen of a window: its colours, how far they are from one another, and their areas."""

import collections
import re


def luminance(color):
    """The relative luminance of a colour, from 0 for black to 1 for white."""
    def linear(value):
        value /= 255
        return value / 12.92 if value <= 0.03928 else ((value + 0.055) / 1.055) ** 2.4
    red, green, blue = map(linear, color)
    return 0.2126 * red + 0.7152 * green + 0.0722 * blue


def contrast(one, other):
    """From 1 for the same to 21 for black on white."""
    darker, lighter = sorted(map(luminance, (one, other)))
    return (lighter + 0.05) / (darker + 0.05)


class Box(collections.namedtuple("Box", "left top right bottom")):
    """An area; right and bottom are the first that are not in it."""

    @property
    def width(self):
        return self.right - self.left

    @property
    def height(self):
        return self.bottom - self.top

    @property
    def middle(self):
        return (self.left + self.right) // 2, (self.top + self.bottom) // 2

    def moved(self, right, down):
        return Box(self.left + right, self.top + down, self.right + right, self.bottom + down)

    def shrunk(self, by):
        return Box(self.left + by, self.top + by, self.right - by, self.bottom - by)


class Pixels:
    """What a display shows just now where a window stands."""

    def __init__(self, display, window):
        self._data, self.width, self.height = display.points(window)

    @property
    def all(self):
        return Box(0, 0, self.width, self.height)

    def at(self, x, y):
        place = 4 * (y * self.width + x)
        return tuple(reversed(self._data[place:place + 3]))

    def _line(self, y, left, right):
        return self._data[4 * (y * self.width + left):4 * (y * self.width + right)]

    def colors(self, box):
        """The colours of an area with the number of their points, the most frequent ones first."""
        left, right = max(box.left, 0), min(box.right, self.width)
        points = collections.Counter()
        for y in range(max(box.top, 0), min(box.bottom, self.height)):
            points.update(memoryview(self._line(y, left, right)).cast("I"))
        colors = collections.Counter()
        for point, count in points.items():
            colors[point >> 16 & 255, point >> 8 & 255, point & 255] += count
        return colors.most_common()

    def ground(self, box):
        """What most of an area shows, or black where there is none."""
        return next(iter(self.colors(box)), ((0, 0, 0), 0))[0]

    def count(self, color, box):
        """How many points of an area are of just this colour."""
        return dict(self.colors(box)).get(color, 0)

    def text_contrast(self, box):
        """How far what is written in an area stands out from its ground."""
        ground = self.ground(box)
        return max((contrast(ground, color) for color, _ in self.colors(box)), default=1)

    def points(self, color):
        """The places of just this colour."""
        wanted = re.compile(b"(?=" + re.escape(bytes(reversed(color))) + b")")
        places = (match.start() // 4 for match in wanted.finditer(self._data)
                  if match.start() % 4 == 0)
        return {(place % self.width, place // self.width) for place in places}

    def extent(self, color):
        """The smallest box around all points of just this colour; nothing if there are none."""
        return _around(self.points(color))

    def largest(self, color, least):
        """The box of the most points of just this colour that hang together, if so many do."""
        left, largest = self.points(color), []
        while left:
            edge, seen = [left.pop()], []
            while edge:
                x, y = edge.pop()
                seen.append((x, y))
                for beside in ((x + 1, y), (x - 1, y), (x, y + 1), (x, y - 1)):
                    if beside in left:
                        left.remove(beside)
                        edge.append(beside)
            largest = max(largest, seen, key=len)
        return _around(largest) if len(largest) >= least else None


def _around(points):
    if not points:
        return None
    columns, rows = zip(*points)
    return Box(min(columns), min(rows), max(columns) + 1, max(rows) + 1)
