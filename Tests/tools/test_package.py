"""The Debian package: what is in it, what it asks for, and whether the distribution's own checks take
it."""

import os
import pathlib
import subprocess
import tempfile
import unittest

BUILD = pathlib.Path(os.environ["ORVU_BUILD"])
SIZES = [16, 22, 24, 32, 48, 64, 96, 128, 256, 512]
ICON = "./usr/share/icons/hicolor/{0}x{0}/apps/app.orvu.Orvu.png"
FILES = sorted([
    "./usr/bin/orvu",
    "./usr/libexec/orvu-image-decoder",
    "./usr/libexec/orvu-model",
    "./usr/share/applications/app.orvu.Orvu.desktop",
    "./usr/share/doc/orvu/changelog.gz",
    "./usr/share/doc/orvu/copyright",
    "./usr/share/doc/orvu/licences/doto.txt",
    "./usr/share/doc/orvu/licences/jsonhpp",
    "./usr/share/doc/orvu/licences/llama.cpp",
    "./usr/share/doc/orvu/licences/phosphor-icons.txt",
    "./usr/share/icons/hicolor/scalable/apps/app.orvu.Orvu.svg",
    "./usr/share/man/man1/orvu.1.gz",
    "./usr/share/metainfo/app.orvu.Orvu.metainfo.xml",
    *(ICON.format(size) for size in SIZES)])
PROGRAMS = ("bin/orvu", "libexec/orvu-image-decoder", "libexec/orvu-model")
# The engine of models, one library for each kind of processor among it.
ENGINE = "./usr/lib/orvu/lib"
# Some of what it must ask for: what it links, and what it runs or reads.
NEEDED = {"libgtk-4-1", "libwebkitgtk-6.0-4", "libgtkmm-4.0-0", "libsqlite3-0", "libsoup-3.0-0",
          "bubblewrap", "ca-certificates", "glib-networking", "librsvg2-common"}


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


class PackageTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory(prefix="orvu-package-")
        cls.addClassCleanup(cls.folder.cleanup)
        folder = pathlib.Path(cls.folder.name)
        subprocess.run(["cpack", "--config", str(BUILD / "CPackConfig.cmake"), "-B", str(folder)],
                       check=True, capture_output=True)
        cls.package = str(next(folder.glob("*.deb")))
        cls.root = folder / "root"
        subprocess.run(["dpkg-deb", "--extract", cls.package, str(cls.root)], check=True)

    def field(self, name):
        return output("dpkg-deb", "--field", self.package, name).strip()

    def lines(self):
        return [line.split(maxsplit=5) for line in
                output("dpkg-deb", "--contents", self.package).splitlines()]

    def test_it_holds_just_what_it_should(self):
        names = sorted(name for *_, name in self.lines() if not name.endswith("/"))
        self.assertEqual([name for name in names if not name.startswith(ENGINE)], FILES)
        engine = [name.removeprefix(ENGINE) for name in names if name.startswith(ENGINE)]
        self.assertTrue(all(name.startswith(("llama", "ggml")) for name in engine), engine)
        for needed in ("ggml-base.so", "ggml-cpu-x64.so", "ggml-cpu-haswell.so"):
            self.assertIn(needed, engine)

    def test_all_of_it_is_root_s_and_nobody_else_may_write(self):
        for mode, owner, *_, name in self.lines():
            self.assertEqual(owner, "root/root", name)
            program = name.removeprefix("./usr/") in PROGRAMS
            wanted = "rwxr-xr-x" if name.endswith("/") or program else "rw-r--r--"
            self.assertEqual(mode[1:], wanted, name)

    def test_it_asks_for_what_it_links_and_runs(self):
        asked = {each.split()[0] for each in self.field("Depends").split(", ")}
        self.assertLessEqual(NEEDED, asked)
        self.assertFalse({name for name in asked if name.endswith("-dev")})

    def test_it_is_small(self):
        self.assertLess(int(self.field("Installed-Size")), 40_000)
        self.assertLess(os.path.getsize(self.package), 8_000_000)

    def test_the_program_in_it_runs_and_says_its_version(self):
        said = output(str(self.root / "usr/bin/orvu"), "--version").split()
        self.assertEqual(said[0], "Orvu")
        self.assertEqual(said[1], self.field("Version").split("-")[0])

    def test_the_engine_in_it_finds_its_libraries_and_shuts_itself_in(self):
        said = output(str(self.root / "usr/libexec/orvu-model"), "--own-namespaces", "--probe")
        self.assertEqual(said.count(": refused"), 16, said)

    def test_programs_have_no_symbols_for_the_debugger(self):
        for name in PROGRAMS:
            self.assertNotIn(".symtab", output("objdump", "-h", str(self.root / "usr" / name)))

    def test_the_distribution_s_checks_take_it(self):
        answer = subprocess.run(["lintian", "--fail-on", "error", self.package],
                                capture_output=True, text=True, check=False)
        self.assertEqual(answer.returncode, 0, answer.stdout + answer.stderr)

    def test_its_entry_in_the_menu_names_a_program_without_quotes(self):
        """Not every program that opens links knows quotes there."""
        entry = (self.root / "usr/share/applications/app.orvu.Orvu.desktop").read_text()
        self.assertIn("\nExec=orvu %U\n", entry)

    def test_the_desktop_s_checks_take_its_entries(self):
        share = self.root / "usr/share"
        output("desktop-file-validate", str(share / "applications/app.orvu.Orvu.desktop"))
        output("appstreamcli", "validate", "--no-net",
               str(share / "metainfo/app.orvu.Orvu.metainfo.xml"))

    def test_the_manual_is_written_well(self):
        page = self.root / "usr/share/man/man1/orvu.1.gz"
        answer = subprocess.run(["man", "--warnings", "--local-file", str(page)], check=True,
                                capture_output=True, text=True, env=os.environ | {"LANG": "C.UTF-8"})
        self.assertEqual(answer.stderr, "")
        for option in ("--help", "--version"):
            self.assertIn(option, answer.stdout)
