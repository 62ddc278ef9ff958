"""What a virtual display shows, read from the file in which it keeps its points."""

import hashlib
import mmap
import struct

HEADER = struct.Struct(">25I")  # as a dump of the X tool "xwd" begins
HEADER_SIZE, WIDTH, HEIGHT, LINE, COLORS = 0, 4, 5, 12, 19  # places in it
COLOR_SIZE = 12  # bytes of each entry of the table behind it


class Screen:
    """The points of a display, four bytes each: blue, green, red, and one that means nothing."""

    def __init__(self, file):
        with open(file, "rb") as opened:
            self._memory = mmap.mmap(opened.fileno(), 0, prot=mmap.PROT_READ)
        header = HEADER.unpack(self._memory[:HEADER.size])
        self._width, self._height, self._line = header[WIDTH], header[HEIGHT], header[LINE]
        self._start = header[HEADER_SIZE] + header[COLORS] * COLOR_SIZE

    def area(self, left, top, width, height):
        """The points of an area, line by line; none of one that hangs over the edge."""
        if min(left, top) < 0 or left + width > self._width or top + height > self._height:
            return b""
        starts = (self._start + (top + line) * self._line + 4 * left for line in range(height))
        return b"".join(self._memory[start:start + 4 * width] for start in starts)

    def color(self, left, top):
        """The red, green and blue, from 0 to 255, of a point; black beside the display."""
        blue, green, red, _ = self.area(left, top, 1, 1) or bytes(4)
        return red, green, blue

    def digest(self):
        """A mark that changes with what is shown."""
        return hashlib.blake2b(memoryview(self._memory)[self._start:]).hexdigest()

    def close(self):
        self._memory.close()
