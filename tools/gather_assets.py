#!/usr/bin/python3
"""Gathers the symbols and the display font into the files of a resource.

    gather_assets.py SYMBOLS_CSV OWN_SYMBOLS NODE_MODULES OUT

SYMBOLS_CSV tells which icons the program uses. An icon comes from the folder OWN_SYMBOLS, or else
from the icon package below NODE_MODULES. OUT receives the files, the packages' licences and
`assets.gresource.xml`. It needs nothing but Python itself.
"""

import csv
import pathlib
import shutil
import struct
import sys
import zlib

PREFIX = "/app/orvu/Orvu"
ICONS = "@phosphor-icons/core"
FONT = "@fontsource/doto"
FONTS = {"doto-latin-400-normal.woff": "Doto.ttf", "doto-latin-900-normal.woff": "DotoBlack.ttf"}
LICENCES = {ICONS: "phosphor-icons.txt", FONT: "doto.txt"}

WOFF_HEADER = struct.Struct(">4sIIHHI")  # the head of a file, as far as it matters here
WOFF_HEADER_SIZE = 44
WOFF_ENTRY = struct.Struct(">4sIIII")
SFNT_HEADER = struct.Struct(">IHHHH")
SFNT_ENTRY = struct.Struct(">4sIII")
LARGEST_TABLE = 16 * 1024 * 1024


class AssetError(Exception):
    """Something that the resource needs is missing or damaged."""


def unpacked_font(woff):
    """The TrueType font in the bytes of a WOFF file of version 1."""
    if len(woff) < WOFF_HEADER_SIZE:
        raise AssetError("shorter than the header of a WOFF file")
    signature, flavor, length, count, _, _ = WOFF_HEADER.unpack_from(woff)
    if signature != b"wOFF":
        raise AssetError("not a WOFF file")
    if length != len(woff):
        raise AssetError(f"{len(woff)} bytes long instead of {length}")
    if count == 0 or WOFF_HEADER_SIZE + count * WOFF_ENTRY.size > length:
        raise AssetError(f"no room for its {count} tables")
    return sfnt(flavor, sorted(tables(woff, count)))


def tables(woff, count):
    """Each table as (tag, checksum, bytes)."""
    for i in range(count):
        entry = WOFF_ENTRY.unpack_from(woff, WOFF_HEADER_SIZE + i * WOFF_ENTRY.size)
        tag, offset, packed_length, full_length, checksum = entry
        packed = woff[offset:offset + packed_length]
        if len(packed) != packed_length or full_length > LARGEST_TABLE:
            raise AssetError(f"table {tag!r} lies outside the file")
        yield tag, checksum, unpacked_table(tag, packed, full_length)


def unpacked_table(tag, packed, full_length):
    if len(packed) >= full_length:
        table = packed
    else:
        unpacker = zlib.decompressobj()
        try:
            table = unpacker.decompress(packed, full_length + 1)
        except zlib.error as error:
            raise AssetError(f"table {tag!r} is damaged: {error}") from error
    if len(table) != full_length:
        raise AssetError(f"table {tag!r} is {len(table)} bytes long instead of {full_length}")
    return table


def sfnt(flavor, sorted_tables):
    """A font file of these tables. Each begins at a multiple of four bytes."""
    count = len(sorted_tables)
    selector = count.bit_length() - 1
    search_range = 16 << selector
    font = SFNT_HEADER.pack(flavor, count, search_range, selector, 16 * count - search_range)
    offset = SFNT_HEADER.size + count * SFNT_ENTRY.size
    body = b""
    for tag, checksum, table in sorted_tables:
        font += SFNT_ENTRY.pack(tag, checksum, offset + len(body), len(table))
        body += table + bytes(-len(table) % 4)
    return font + body


def stems(symbols_csv):
    """The icons that the table names, each once."""
    with open(symbols_csv, encoding="utf-8", newline="") as file:
        return sorted({row["icon"] for row in csv.DictReader(file)})


def icon_file(stem, own_symbols, icons):
    weight = stem.rsplit("-", 1)[-1]
    places = [own_symbols / f"{stem}.svg", icons / "assets" / weight / f"{stem}.svg"]
    for place in places:
        if place.is_file():
            return place
    raise AssetError(f"no icon {stem}: neither {places[0]} nor {places[1]} is there")


def copied(source, target):
    if not source.is_file():
        raise AssetError(f"{source} is missing")
    target.parent.mkdir(parents=True, exist_ok=True)
    shutil.copyfile(source, target)


def gather(symbols_csv, own_symbols, node_modules, out):
    """Fills `out` and returns the resource's files, as paths below it."""
    names = []
    for stem in stems(symbols_csv):
        names.append(f"icons/scalable/actions/{stem}-symbolic.svg")
        copied(icon_file(stem, own_symbols, node_modules / ICONS), out / names[-1])
    for woff, font in FONTS.items():
        source = node_modules / FONT / "files" / woff
        names.append(f"fonts/{font}")
        try:
            bytes_of_font = unpacked_font(source.read_bytes())
        except (AssetError, OSError) as error:
            raise AssetError(f"{source}: {error}") from error
        (out / "fonts").mkdir(parents=True, exist_ok=True)
        (out / names[-1]).write_bytes(bytes_of_font)
    for package, licence in LICENCES.items():
        names.append(f"licences/{licence}")
        copied(node_modules / package / "LICENSE", out / names[-1])
    return names


def resource_xml(names):
    lines = ['<?xml version="1.0" encoding="UTF-8"?>', "<gresources>",
             f'  <gresource prefix="{PREFIX}">']
    for name in names:
        # Fonts are read in place, which only uncompressed bytes allow.
        squeezed = "" if name.endswith(".ttf") else ' compressed="true"'
        lines.append(f"    <file{squeezed}>{name}</file>")
    return "\n".join([*lines, "  </gresource>", "</gresources>", ""])


def main():
    if len(sys.argv) != 5:
        sys.exit(__doc__)
    symbols_csv, own_symbols, node_modules, out = map(pathlib.Path, sys.argv[1:])
    try:
        names = gather(symbols_csv, own_symbols, node_modules, out)
    except AssetError as error:
        sys.exit(f"gather_assets: {error}")
    # Last, since the build takes it as the sign that all is there.
    (out / "assets.gresource.xml").write_text(resource_xml(names), encoding="utf-8")


if __name__ == "__main__":
    main()
