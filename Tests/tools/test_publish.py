"""The tool that makes releases: the application, its archive and what is signed of it."""

import hashlib
import importlib.machinery
import importlib.util
import io
import json
import os
import pathlib
import shutil
import subprocess
import tarfile
import tempfile
import unittest

BUILD = pathlib.Path(os.environ["ORVU_BUILD"])
TOOL = pathlib.Path(os.environ["ORVU_SOURCE"]) / "tools/publish"
LOADER = importlib.machinery.SourceFileLoader("orvu_publish", str(TOOL))
publish = importlib.util.module_from_spec(importlib.util.spec_from_loader("orvu_publish", LOADER))
LOADER.exec_module(publish)

SIZES = [16, 22, 24, 32, 48, 64, 96, 128, 256, 512]
FILES = sorted([
    "bin/orvu", "bin/orvu-starter", "install", "libexec/orvu-image-decoder", "release",
    "share/applications/app.orvu.Orvu.desktop", "share/doc/orvu/changelog.gz",
    "share/doc/orvu/copyright", "share/doc/orvu/licences/doto.txt",
    "share/doc/orvu/licences/phosphor-icons.txt",
    "share/icons/hicolor/scalable/apps/app.orvu.Orvu.svg", "share/man/man1/orvu.1.gz",
    "share/metainfo/app.orvu.Orvu.metainfo.xml",
    *(f"share/icons/hicolor/{size}x{size}/apps/app.orvu.Orvu.png" for size in SIZES)])


class Folder(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.key = self.folder / "key"

    def run_tool(self, *arguments):
        return subprocess.run([TOOL, *arguments], capture_output=True, text=True, check=False)

    def make_key(self):
        return self.run_tool("key", self.key).stdout.strip()

    def assert_refused(self, sentence, *arguments):
        answer = self.run_tool(*arguments)
        self.assertEqual(answer.returncode, 1)
        self.assertEqual(answer.stderr, f"publish: {sentence}\n")


class KeyTest(Folder):
    def test_a_key_is_its_owner_s_alone_and_tells_its_public_half(self):
        public = self.make_key()

        self.assertEqual(self.key.stat().st_mode & 0o777, 0o600)
        self.assertRegex(public, "^[0-9a-f]{64}$")
        self.assertEqual(self.run_tool("public", self.key).stdout.strip(), public)

    def test_no_key_is_written_over(self):
        self.make_key()
        before = self.key.read_bytes()

        self.assert_refused(f"{self.key} is there already.", "key", self.key)
        self.assertEqual(self.key.read_bytes(), before)

    def test_a_key_that_others_read_signs_nothing(self):
        self.make_key()
        self.key.chmod(0o640)

        self.assert_refused(f"{self.key} can be read by others; nobody should trust what it signs.",
                            "public", self.key)

    def test_what_holds_no_key_is_none(self):
        self.key.write_text("not a key")
        self.key.chmod(0o600)

        self.assert_refused(f"{self.key} holds no key.", "public", self.key)


class ArchiveTest(Folder):
    def setUp(self):
        super().setUp()
        self.application = self.folder / "Orvu.app"
        for name, content in (("bin/orvu", "program"), ("bin/orvu-starter", "starter"),
                              ("release", "version 1.2\nbuild 12\nidentity app.orvu.Orvu\n")):
            self.add(name, content)
        self.out = self.folder / "out"
        self.public = self.make_key()

    def add(self, name, content=""):
        file = self.application / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(content)

    def publish(self, out=None):
        return self.run_tool("archive", self.application, out or self.out, "--key", self.key,
                             "--server", "updates.example")

    def assert_refused_archive(self, sentence):
        self.assert_refused(sentence, "archive", self.application, self.out, "--key", self.key,
                            "--server", "updates.example")
        self.assertFalse(self.out.exists())

    def test_the_archive_holds_the_application_with_plain_modes_and_no_traces(self):
        self.assertEqual(self.publish().returncode, 0)

        with tarfile.open(self.out / "orvu-1.2-12.tar.gz") as archive:
            members = archive.getmembers()
        self.assertEqual([(each.name, oct(each.mode)) for each in members],
                         [("Orvu.app/bin/orvu", "0o755"), ("Orvu.app/bin/orvu-starter", "0o755"),
                          ("Orvu.app/release", "0o644")])
        self.assertEqual({(each.uid, each.gid, each.uname, each.mtime) for each in members},
                         {(0, 0, "", 0)})

    def test_the_same_application_gives_the_same_bytes(self):
        self.publish()
        other = self.folder / "other"
        os.utime(self.application / "bin/orvu", (1, 1))
        (self.application / "bin/orvu").chmod(0o600)

        self.publish(other)

        for file in self.out.iterdir():
            self.assertEqual(file.read_bytes(), (other / file.name).read_bytes(), file.name)

    def test_the_manifest_names_the_archive_by_its_hash(self):
        self.publish()

        manifest = json.loads((self.out / "update.json").read_bytes())
        archive = (self.out / "orvu-1.2-12.tar.gz").read_bytes()
        self.assertEqual(manifest, {
            "version": "1.2", "build": 12,
            "url": "https://updates.example/orvu/orvu-1.2-12.tar.gz",
            "sha256": hashlib.sha256(archive).hexdigest()})

    def test_the_signature_is_the_key_s(self):
        self.publish()
        text, _, signature = (self.out / "orvu-1.2-12.tar.gz.signed").read_bytes().rpartition(
            b"signature ")
        files = {"key": publish.PUBLIC_HEAD + bytes.fromhex(self.public), "text": text,
                 "signature": bytes.fromhex(signature.decode().strip())}
        for name, content in files.items():
            (self.folder / f"{name}.bin").write_bytes(content)

        answer = subprocess.run(
            ["openssl", "pkeyutl", "-verify", "-rawin", "-pubin", "-keyform", "DER", "-inkey",
             "key.bin", "-in", "text.bin", "-sigfile", "signature.bin"],
            cwd=self.folder, capture_output=True, text=True, check=False)

        self.assertEqual(answer.stdout.strip(), "Signature Verified Successfully")

    def test_links_and_pipes_are_refused(self):
        (self.application / "link").symlink_to("bin/orvu")
        self.assert_refused_archive("link is neither a file nor a folder.")
        (self.application / "link").unlink()
        os.mkfifo(self.application / "pipe")
        self.assert_refused_archive("pipe is neither a file nor a folder.")

    def test_names_that_are_not_the_same_everywhere_are_refused(self):
        self.add("BIN/other")
        self.assert_refused_archive("bin is there in two spellings.")
        shutil.rmtree(self.application / "BIN")
        for name in ("caf\u00e9", "a\\b", " a", "a\nb"):
            self.add(name)
            self.assert_refused_archive(f"{name!r} is no plain name.")
            (self.application / name).unlink()

    def test_what_is_no_whole_application_is_refused(self):
        (self.application / "bin/orvu-starter").unlink()
        self.assert_refused_archive("bin/orvu-starter is missing.")

    def test_a_release_that_doesnt_say_which_it_is_is_refused(self):
        for facts in ("", "version 1.2\nbuild 0\nidentity app.orvu.Orvu\n", "version 1.2\n",
                      "version 1.2\nbuild twelve\nidentity app.orvu.Orvu\n"):
            self.add("release", facts)
            self.assert_refused_archive("The file release doesn't say which release this is.")
        self.add("release", "version 1.2\nbuild 12\nidentity org.other\n")
        self.assert_refused_archive("The application says that it is org.other.")

    def test_a_server_is_a_plain_name(self):
        self.assert_refused("https://updates.example is no name of a host.", "archive",
                            self.application, self.out, "--key", self.key, "--server",
                            "https://updates.example")


class ApplicationTest(Folder):
    @classmethod
    def setUpClass(cls):
        cls.made = pathlib.Path(cls.enterClassContext(tempfile.TemporaryDirectory()))
        subprocess.run([TOOL, "application", BUILD, cls.made, "--build", "7"], check=True)
        cls.application = cls.made / "Orvu.app"

    def test_it_holds_just_what_it_should(self):
        files = sorted(path.relative_to(self.application).as_posix()
                       for path in self.application.rglob("*") if path.is_file())

        self.assertEqual(files, FILES)

    def test_it_says_which_build_of_which_version_it_is(self):
        version = subprocess.run([self.application / "bin/orvu", "--version"], check=True,
                                 capture_output=True, text=True).stdout.split()[1]

        self.assertEqual((self.application / "release").read_text(),
                         f"version {version}\nbuild 7\nidentity app.orvu.Orvu\n")

    def test_it_can_be_packed_and_unpacked(self):
        release = publish.Release.read(self.application)
        with tarfile.open(fileobj=io.BytesIO(release.archive())) as archive:
            archive.extractall(self.folder)

        self.assertEqual(publish.Release.read(self.folder / "Orvu.app").files, release.files)


class InstallTest(Folder):
    """The installer in the application, in homes of all kinds."""

    setUpClass = ApplicationTest.__dict__["setUpClass"]

    def install(self, home, *arguments):
        return subprocess.run([self.application / "install", *arguments], text=True, check=False,
                              env={"HOME": str(home), "PATH": os.environ["PATH"]},
                              capture_output=True)

    def home(self, name="home"):
        home = self.folder / name
        home.mkdir()
        return home

    def files(self, home):
        return sorted(path.relative_to(home).as_posix() for path in home.rglob("*")
                      if path.is_file())

    def test_it_goes_into_the_menu_and_starts(self):
        for name in ("home", "a home", "what's $HOME", 'a "b" `c` %d'):
            home = self.home(name)
            answer = self.install(home)
            self.assertEqual((answer.returncode, answer.stderr), (0, ""))

            entry = home / ".local/share/applications/app.orvu.Orvu.desktop"
            valid = subprocess.run(["desktop-file-validate", entry], capture_output=True, text=True,
                                   check=False)
            self.assertEqual((valid.returncode, valid.stdout), (0, ""))
            started = subprocess.run([home / ".local/bin/orvu", "--version"], capture_output=True,
                                     text=True, check=True)
            self.assertRegex(started.stdout, "^Orvu [0-9]")
            self.assertTrue((home / ".local/share/orvu-app/Orvu.app/release").exists())

    def test_a_plain_path_stands_in_the_menu_without_quotes(self):
        home = self.home()
        self.install(home)

        entry = (home / ".local/share/applications/app.orvu.Orvu.desktop").read_text()
        self.assertIn(f"\nExec={home}/.local/bin/orvu %U\n", entry)

    def test_nobody_else_may_write_where_it_lies(self):
        home = self.home()
        self.install(home)

        for path in (home / ".local/share/orvu-app").rglob("*"):
            self.assertEqual(path.stat().st_mode & 0o022, 0, path)

    def test_it_is_not_put_over_one_that_is_there(self):
        home = self.home()
        self.install(home)
        before = self.files(home)

        answer = self.install(home)

        self.assertEqual(answer.returncode, 1)
        self.assertEqual(self.files(home), before)

    def test_removed_it_leaves_what_is_the_person_s(self):
        home = self.home()
        (home / ".config/Orvu").mkdir(parents=True)
        (home / ".config/Orvu/UserDefaults.sqlite").write_text("mine")
        self.install(home)

        self.assertEqual(self.install(home, "--remove").returncode, 0)

        self.assertEqual(self.files(home), [".config/Orvu/UserDefaults.sqlite"])


if __name__ == "__main__":
    unittest.main()
