"""Holds tools/gather_assets.py to what it says, on packages made up for the test."""

import pathlib
import random
import struct
import sys
import tempfile
import unittest
import zlib

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tools"))

import gather_assets  # noqa: E402  (the folder has to be known first)
from gather_assets import AssetError, unpacked_font  # noqa: E402

HEADER_SIZE = 44


def woff(tables, count=None, length=None, signature=b"wOFF"):
    """A WOFF file of these tables, packed where that makes them smaller."""
    entries, body = b"", b""
    start = HEADER_SIZE + 20 * len(tables)
    for tag, table in tables.items():
        packed = min(zlib.compress(table), table, key=len)
        entries += struct.pack(">4sIIII", tag, start + len(body), len(packed), len(table), 7)
        body += packed + bytes(-len(packed) % 4)
    length = start + len(body) if length is None else length
    header = struct.pack(">4sIIHHI", signature, 0x00010000, length, count or len(tables), 0, 0)
    return header.ljust(HEADER_SIZE, b"\0") + entries + body


def tables_of(font):
    """The tables of a TrueType file, in the order of its directory."""
    count = struct.unpack_from(">H", font, 4)[0]
    entries = [struct.unpack_from(">4sIII", font, 12 + 16 * i) for i in range(count)]
    return {tag: font[offset:offset + length] for tag, _, offset, length in entries}


class UnpackedFont(unittest.TestCase):
    tables = {b"glyf": b"outline " * 50, b"head": b"\x01\x02\x03", b"cmap": b"abcd"}

    def test_each_table_comes_out_as_it_went_in(self):
        self.assertEqual(tables_of(unpacked_font(woff(self.tables))), self.tables)

    def test_the_directory_is_sorted_and_the_tables_aligned(self):
        font = unpacked_font(woff(self.tables))

        self.assertEqual(list(tables_of(font)), [b"cmap", b"glyf", b"head"])
        offsets = [struct.unpack_from(">I", font, 12 + 16 * i + 8)[0] for i in range(3)]
        self.assertEqual([offset % 4 for offset in offsets], [0, 0, 0])

    def test_the_head_tells_the_count_and_its_powers_of_two(self):
        font = unpacked_font(woff(self.tables))

        self.assertEqual(struct.unpack_from(">IHHHH", font), (0x00010000, 3, 32, 1, 16))

    def test_a_file_of_another_kind_is_refused(self):
        for other in (b"", b"wOFF", woff(self.tables, signature=b"wOF2")):
            self.assertRaises(AssetError, unpacked_font, other)

    def test_a_file_cut_short_anywhere_is_refused(self):
        whole = woff(self.tables)
        for size in range(len(whole)):
            self.assertRaises(AssetError, unpacked_font, whole[:size])

    def test_a_table_beyond_the_file_is_refused(self):
        damaged = bytearray(woff(self.tables))
        struct.pack_into(">I", damaged, HEADER_SIZE + 4, 1 << 30)
        self.assertRaises(AssetError, unpacked_font, bytes(damaged))

    def test_more_tables_than_there_is_room_for_are_refused(self):
        self.assertRaises(AssetError, unpacked_font, woff(self.tables, count=60000))

    def test_a_table_of_another_length_than_told_is_refused(self):
        for length in (10, 401, 1 << 31):
            damaged = bytearray(woff(self.tables))
            struct.pack_into(">I", damaged, HEADER_SIZE + 12, length)
            self.assertRaises(AssetError, unpacked_font, bytes(damaged))

    def test_any_damage_gives_a_font_or_a_clear_refusal(self):
        chance = random.Random(11)
        whole = woff(self.tables)
        for _ in range(2000):
            damaged = bytearray(whole)
            for _ in range(chance.randint(1, 4)):
                damaged[chance.randrange(len(damaged))] = chance.randrange(256)
            try:
                self.assertIsInstance(unpacked_font(bytes(damaged)), bytes)
            except AssetError as error:
                self.assertTrue(str(error))


class Gather(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)
        self.write("symbols.csv", "symbol,icon\nplus,plus-bold\ncross,plus-bold\nours,ours-fill\n")
        self.write("own/ours-fill.svg", "<svg ours>")
        self.write("packages/@phosphor-icons/core/assets/bold/plus-bold.svg", "<svg plus>")
        self.write("packages/@phosphor-icons/core/LICENSE", "icons")
        self.write("packages/@fontsource/doto/LICENSE", "font")
        for weight in (400, 900):
            self.write(f"packages/@fontsource/doto/files/doto-latin-{weight}-normal.woff",
                       woff(UnpackedFont.tables))

    def write(self, name, content):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content if isinstance(content, bytes) else content.encode())

    def gather(self):
        return gather_assets.gather(self.root / "symbols.csv", self.root / "own",
                                    self.root / "packages", self.root / "out")

    def test_an_icon_of_two_symbols_is_gathered_once(self):
        names = self.gather()

        self.assertEqual(names.count("icons/scalable/actions/plus-bold-symbolic.svg"), 1)
        for name in names:
            self.assertTrue((self.root / "out" / name).is_file(), name)

    def test_an_icon_of_ours_goes_before_the_packages(self):
        self.write("packages/@phosphor-icons/core/assets/fill/ours-fill.svg", "<svg theirs>")

        self.gather()

        drawn = self.root / "out/icons/scalable/actions/ours-fill-symbolic.svg"
        self.assertEqual(drawn.read_text(), "<svg ours>")

    def test_what_is_missing_is_named(self):
        for name in ("own/ours-fill.svg", "packages/@phosphor-icons/core/LICENSE",
                     "packages/@fontsource/doto/files/doto-latin-900-normal.woff"):
            with self.subTest(name):
                kept = (self.root / name).read_bytes()
                (self.root / name).unlink()
                with self.assertRaisesRegex(AssetError, pathlib.Path(name).stem):
                    self.gather()
                self.write(name, kept)

    def test_the_resource_lists_each_file(self):
        xml = gather_assets.resource_xml(["fonts/Doto.ttf", "licences/doto.txt"])

        self.assertIn("<file>fonts/Doto.ttf</file>", xml)
        self.assertIn('<file compressed="true">licences/doto.txt</file>', xml)


if __name__ == "__main__":
    unittest.main()
