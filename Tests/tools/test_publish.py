"""The tool that makes releases: the application, its archive and what is signed of it."""

import fcntl
import hashlib
import importlib.machinery
import importlib.util
import io
import json
import os
import pathlib
import shutil
import signal
import subprocess
import tarfile
import tempfile
import time
import unittest

BUILD = pathlib.Path(os.environ["ORVU_BUILD"])
TOOL = pathlib.Path(os.environ["ORVU_SOURCE"]) / "tools/publish"
LOADER = importlib.machinery.SourceFileLoader("orvu_publish", str(TOOL))
publish = importlib.util.module_from_spec(importlib.util.spec_from_loader("orvu_publish", LOADER))
LOADER.exec_module(publish)

SIZES = [16, 22, 24, 32, 48, 64, 96, 128, 256, 512]
FILES = sorted([
    "bin/orvu", "bin/orvu-starter", "install", "libexec/orvu-image-decoder",
    "libexec/orvu-model", "release",
    "share/applications/app.orvu.Orvu.desktop", "share/doc/orvu/changelog.gz",
    "share/doc/orvu/copyright", "share/doc/orvu/licences/doto.txt",
    "share/doc/orvu/licences/jsonhpp",
    "share/doc/orvu/licences/llama.cpp",
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
        file.write_bytes(content.encode())

    def arguments(self, out=None, server="updates.example"):
        return ("archive", self.application, out or self.out, "--key", self.key, "--server", server,
                "--check", BUILD / "bin/orvu-release-check")

    def publish(self, out=None):
        return self.run_tool(*self.arguments(out))

    def assert_refused_archive(self, sentence):
        self.assert_refused(sentence, *self.arguments())
        self.assertFalse(self.out.exists())
        self.assertEqual(list(self.folder.glob(".publish-*")), [])

    def assert_refused_by_the_updater(self, sentence="The update isn't signed by Zarvo, so Orvu "
                                                     "didn't install it."):
        self.assert_refused_archive(f"No copy would take this update: {sentence}")

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
                      "version 1.2\nbuild twelve\nidentity app.orvu.Orvu\n",
                      "version 1.2\r\nbuild 12\r\nidentity app.orvu.Orvu\r\n",
                      "version 1.2?3\nbuild 12\nidentity app.orvu.Orvu\n",
                      "version 1.2/3\nbuild 12\nidentity app.orvu.Orvu\n",
                      "build 12\nversion 1.2\nidentity app.orvu.Orvu\n"):
            self.add("release", facts)
            self.assert_refused_archive("The file release doesn't say which release this is.")
        self.add("release", "version 1.2\nbuild 12\nidentity org.other\n")
        self.assert_refused_archive("The application says that it is org.other.")

    def test_a_server_is_a_plain_name(self):
        self.assert_refused("https://updates.example is no name of a host.",
                            *self.arguments(server="https://updates.example"))

    def test_folders_deeper_than_an_updater_goes_are_refused(self):
        self.add("/".join(["d"] * 33))
        self.assert_refused_by_the_updater()

    def test_a_longer_list_than_an_updater_reads_is_refused(self):
        folder = self.application / ("many" * 22)
        folder.mkdir()
        for number in range(17_000):
            (folder / f"{number:0>95}").touch()
        self.assert_refused_by_the_updater()

    def test_a_release_that_looks_like_a_bomb_is_refused(self):
        with open(self.application / "zeros", "wb") as file:
            file.truncate(40 << 20)
        self.assert_refused_by_the_updater("The update couldn't be unpacked.")

    def test_a_name_that_the_archive_cannot_hold_is_refused(self):
        self.add("n" * 160)
        self.assert_refused_archive(f"{'n' * 160} is too long a name.")

    def test_a_release_that_is_refused_leaves_the_published_one(self):
        self.publish()
        before = {file.name: file.read_bytes() for file in self.out.iterdir()}
        self.add("/".join(["d"] * 33))
        self.add("release", "version 1.3\nbuild 13\nidentity app.orvu.Orvu\n")

        self.assertEqual(self.publish().returncode, 1)

        self.assertEqual({file.name: file.read_bytes() for file in self.out.iterdir()}, before)

    def test_another_key_s_release_is_refused_by_the_check(self):
        self.publish()
        answer = subprocess.run([BUILD / "bin/orvu-release-check", self.out, "0" * 64,
                                 "updates.example"], capture_output=True, text=True, check=False)

        self.assertEqual((answer.returncode, answer.stderr), (
            1, "The update isn't signed by Zarvo, so Orvu didn't install it.\n"))

    def test_the_offer_appears_after_what_it_offers(self):
        self.publish()
        self.add("release", "version 1.3\nbuild 13\nidentity app.orvu.Orvu\n")
        # A folder in the place of the new signed text: what comes after it can't be put there.
        (self.out / "orvu-1.3-13.tar.gz.signed").mkdir()

        self.assertEqual(self.publish().returncode, 1)

        self.assertEqual(json.loads((self.out / "update.json").read_bytes())["build"], 12)

    def test_the_secret_never_lies_in_a_second_file(self):
        folder = self.folder / "temporary"
        folder.mkdir()
        program = self.folder / "bin/openssl"
        program.parent.mkdir()
        # Looks through what there is at each time that a key is used.
        program.write_text(f"#!/bin/sh\n"
                           f"cp -r {folder} {self.folder}/seen-$$\n"
                           f"exec {shutil.which('openssl')} \"$@\"\n")
        program.chmod(0o755)
        environment = {**os.environ, "TMPDIR": str(folder),
                       "PATH": f"{program.parent}:{os.environ['PATH']}"}

        subprocess.run([TOOL, *self.arguments()], env=environment, check=True)

        secret = bytes.fromhex(self.key.read_text())
        seen = [file for copy in self.folder.glob("seen-*") for file in copy.rglob("*")]
        self.assertTrue(seen)
        for file in seen:
            self.assertNotIn(secret, file.read_bytes(), file)

    def test_an_openssl_that_fails_is_told_in_a_sentence(self):
        program = self.folder / "bin/openssl"
        program.parent.mkdir()
        program.write_text("#!/bin/sh\necho no keys today >&2\nexit 1\n")
        program.chmod(0o755)

        answer = subprocess.run([TOOL, *self.arguments()], check=False, capture_output=True,
                                text=True, env={**os.environ, "PATH": f"{program.parent}:"
                                                                      f"{os.environ['PATH']}"})

        self.assertEqual((answer.returncode, answer.stderr),
                         (1, "publish: openssl: no keys today\n"))


class ApplicationTest(Folder):
    @classmethod
    def setUpClass(cls):
        cls.made = pathlib.Path(cls.enterClassContext(tempfile.TemporaryDirectory()))
        subprocess.run([TOOL, "application", BUILD, cls.made, "--build", "7"], check=True)
        cls.application = cls.made / "Orvu.app"

    def test_it_holds_just_what_it_should(self):
        files = sorted(path.relative_to(self.application).as_posix()
                       for path in self.application.rglob("*") if path.is_file())

        engine = [file for file in files if file.startswith("lib/orvu/lib")]
        self.assertEqual(sorted(set(files) - set(engine)), FILES)
        self.assertIn("lib/orvu/libggml-base.so", engine)

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
    COMMAND, ENTRY = ".local/bin/orvu", ".local/share/applications/app.orvu.Orvu.desktop"
    ICON = ".local/share/icons/hicolor/scalable/apps/app.orvu.Orvu.svg"
    APPLICATION = ".local/share/orvu-app"
    HOMES = ["home", "a home", "caf\u00e9", "what's $HOME", 'a "b" `c`', "a\\b", "a\\\\b \\$c",
             "100%", "50 %d of 'x'", "a=b c", "~a&b;c*d?(e)#"]

    def run_in(self, home, *command):
        return subprocess.run(command, text=True, check=False, capture_output=True, env={
            "HOME": str(home), "PATH": os.environ["PATH"], "LANG": "C.UTF-8"})

    def install(self, home, *arguments):
        return self.run_in(home, self.application / "install", *arguments)

    def home(self, name="home"):
        home = self.folder / name
        home.mkdir()
        return home

    def installed(self):
        home = self.home()
        self.assertEqual(self.install(home).returncode, 0)
        return home

    def files(self, home):
        return sorted(path.relative_to(home).as_posix() for path in home.rglob("*")
                      if path.is_file() or path.is_symlink())

    def assert_refused_for(self, home, path):
        before = self.files(home)

        answer = self.install(home)

        self.assertEqual((answer.returncode, answer.stderr), (
            1, f"{home / path} is there already, and isn't Orvu's. Nothing was installed.\n"))
        self.assertEqual(self.files(home), before)

    def test_it_goes_into_the_menu_and_starts_from_there(self):
        for name in self.HOMES:
            home = self.home(name)
            answer = self.install(home)
            self.assertEqual((answer.returncode, answer.stderr), (0, ""), name)

            valid = self.run_in(home, "desktop-file-validate", home / self.ENTRY)
            self.assertEqual((valid.returncode, valid.stdout), (0, ""), name)
            # In the starter's place: it notes what it was started with.
            starter = home / self.APPLICATION / "orvu-starter"
            starter.write_text('#!/bin/sh\nprintf "%s\\n" "$@" >"$HOME/draft"\n'
                               'mv "$HOME/draft" "$HOME/started"\n')
            started = self.run_in(home, "gio", "launch", home / self.ENTRY, "http://x.example/ a")
            self.assertEqual((started.returncode, started.stderr), (0, ""), name)
            self.wait_for(home / "started")
            self.assertEqual((home / "started").read_text().splitlines(), [
                "--start", str(home / self.APPLICATION), "http://x.example/ a"], name)

    def wait_for(self, file):
        end = time.monotonic() + 20
        while not file.exists():
            self.assertLess(time.monotonic(), end, file)
            time.sleep(0.01)

    def test_the_command_starts_the_program(self):
        home = self.home("what's a $HOME")
        self.install(home)

        started = self.run_in(home, home / self.COMMAND, "--version")

        self.assertRegex(started.stdout, "^Orvu [0-9]")

    def test_it_is_offered_for_addresses_of_the_web(self):
        home = self.installed()

        offered = self.run_in(home, "gio", "mime", "x-scheme-handler/https")
        self.assertIn("app.orvu.Orvu.desktop", offered.stdout)

        self.install(home, "--remove")
        offered = self.run_in(home, "gio", "mime", "x-scheme-handler/https")
        self.assertNotIn("app.orvu.Orvu.desktop", offered.stdout)

    def test_a_path_without_special_characters_stands_in_the_menu_without_quotes(self):
        for name in ("home", "caf\u00e9"):
            home = self.home(name)
            self.install(home)

            entry = (home / self.ENTRY).read_text()
            self.assertIn(f"\nExec={home}/.local/bin/orvu %U\n", entry)

    def test_nobody_else_may_write_where_it_lies(self):
        home = self.installed()

        for path in (home / self.APPLICATION).rglob("*"):
            self.assertEqual(path.stat().st_mode & 0o022, 0, path)

    def test_it_is_not_put_over_one_that_is_there(self):
        home = self.installed()
        before = self.files(home)

        answer = self.install(home)

        self.assertEqual(answer.returncode, 1)
        self.assertEqual(self.files(home), before)

    def test_nothing_of_the_person_s_is_written_over(self):
        for name, path in enumerate((self.COMMAND, self.ENTRY, self.ICON, self.APPLICATION)):
            home = self.home(f"home{name}")
            (home / path).parent.mkdir(parents=True)
            (home / path).write_text("mine")

            self.assert_refused_for(home, path)
            self.assertEqual((home / path).read_text(), "mine")

    def test_nothing_is_written_through_a_link(self):
        for name, path in enumerate((self.COMMAND, self.ENTRY, self.ICON, self.APPLICATION)):
            home = self.home(f"home{name}")
            (home / path).parent.mkdir(parents=True)
            (home / "other").mkdir()
            (home / path).symlink_to(home / "other/file")

            self.assert_refused_for(home, path)

    def test_one_that_broke_off_before_it_was_there_is_begun_again(self):
        home = self.home()
        (home / ".local/share/.orvu-app.new/Orvu.app/bin").mkdir(parents=True)

        self.assertEqual(self.install(home).returncode, 0)
        self.assertFalse((home / ".local/share/.orvu-app.new").exists())

    def test_what_one_that_broke_off_left_out_of_the_menu_is_added(self):
        home = self.installed()
        whole = self.files(home)
        for path in (self.COMMAND, self.ENTRY, self.ICON):
            (home / path).unlink()

        self.assertEqual(self.install(home).returncode, 0)
        self.assertEqual(self.files(home), whole)

    def test_killed_at_any_moment_it_is_completed_by_the_next(self):
        whole = self.files(self.installed())
        for number in range(30):
            home = self.home(f"killed{number}")
            installer = subprocess.Popen([self.application / "install"], env={
                "HOME": str(home), "PATH": os.environ["PATH"]}, stdout=subprocess.PIPE,
                start_new_session=True)
            time.sleep(number * 0.006)  # any moment will do
            os.killpg(installer.pid, signal.SIGKILL)
            installer.communicate()  # until the last of them has ended

            self.install(home)

            self.assertEqual([each for each in self.files(home) if not each.endswith(".orvu-new")],
                             whole, number)

    def test_removed_it_leaves_what_is_the_person_s(self):
        home = self.home()
        (home / ".config/Orvu").mkdir(parents=True)
        (home / ".config/Orvu/UserDefaults.sqlite").write_text("mine")
        self.install(home)

        self.assertEqual(self.install(home, "--remove").returncode, 0)

        self.assertEqual(self.files(home), [".config/Orvu/UserDefaults.sqlite"])

    def test_what_was_changed_since_is_not_removed(self):
        home = self.installed()
        for path in (self.COMMAND, self.ENTRY, self.ICON):
            (home / path).unlink()
            (home / path).write_text("mine")

        answer = self.install(home, "--remove")

        self.assertEqual(answer.returncode, 0)
        self.assertIn(f"{home / self.COMMAND} isn't as it was put there, and stays.\n", answer.stdout)
        self.assertEqual([path for path in self.files(home) if not path.endswith("mimeinfo.cache")],
                         sorted([self.COMMAND, self.ENTRY, self.ICON]))

    def test_an_entry_whose_addresses_the_desktop_wrote_anew_is_removed(self):
        home = self.installed()
        lines = (home / self.ENTRY).read_text().splitlines()
        lines = [line for line in lines if not line.startswith("MimeType=")]
        (home / self.ENTRY).write_text("\n".join([*lines, "MimeType=text/html;", ""]))

        answer = self.install(home, "--remove")

        self.assertEqual((answer.returncode, answer.stdout), (0, ""))
        self.assertEqual(self.files(home), [])

    def test_where_it_never_was_nothing_is_removed(self):
        home = self.home()
        (home / self.COMMAND).parent.mkdir(parents=True)
        (home / self.COMMAND).write_text("mine")

        answer = self.install(home, "--remove")

        self.assertEqual((answer.returncode, answer.stderr), (
            1, f"Orvu isn't installed in {home / self.APPLICATION}.\n"))
        self.assertEqual(self.files(home), [self.COMMAND])

    def test_one_that_runs_is_not_removed(self):
        home = self.installed()
        before = self.files(home)
        with open(home / self.APPLICATION / ".Orvu-update.running", "w", encoding="ascii") as lock:
            fcntl.flock(lock, fcntl.LOCK_EX)

            answer = self.install(home, "--remove")

        self.assertEqual((answer.returncode, answer.stderr),
                         (1, "Orvu is running. Close it first.\n"))
        self.assertEqual(self.files(home), sorted([*before,
                                                   f"{self.APPLICATION}/.Orvu-update.running"]))


if __name__ == "__main__":
    unittest.main()
