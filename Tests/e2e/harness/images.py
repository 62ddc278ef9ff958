"""Images that servers give."""

import struct
import zlib


def png(side):
    """A PNG of one colour."""
    def chunk(name, content):
        data = name + content
        return struct.pack(">I", len(content)) + data + struct.pack(">I", zlib.crc32(data))
    rows = (b"\0" + b"\x33\x66\xcc\xff" * side) * side
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", side, side, 8, 6, 0, 0, 0))
            + chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b""))
