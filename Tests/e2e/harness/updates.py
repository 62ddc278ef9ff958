"""The maker of updates and the server that gives them, and a copy of the program that takes them."""

import gzip
import hashlib
import io
import json
import pathlib
import shutil
import subprocess
import tarfile
import tempfile

from . import app as program_under_test

HOST = "updates.example"
IDENTITY = "app.orvu.Orvu"
FEED, NOTES = "/orvu/update.json", "/orvu/whats-new/"
# Ed25519 in the form in which openssl reads a secret key of 32 bytes.
KEY_HEAD = bytes.fromhex("302e020100300506032b657004220420")
SECRET = b"k" * 32


def programs():
    """The folder of the programs that were built."""
    return pathlib.Path(program_under_test.program()).resolve().parent


def hash_of(data):
    return hashlib.sha256(data).hexdigest()


def sign(text, secret=SECRET):
    """The signature of a text, in hexadecimal."""
    with tempfile.TemporaryDirectory() as folder:
        key, message = pathlib.Path(folder, "key"), pathlib.Path(folder, "message")
        key.write_bytes(KEY_HEAD + secret)
        message.write_bytes(text)
        return subprocess.run(["openssl", "pkeyutl", "-sign", "-rawin", "-keyform", "DER",
                               "-inkey", key, "-in", message],
                              check=True, capture_output=True).stdout.hex()


class Release:
    """One release of the program: its files, by their paths below its folder."""

    def __init__(self, version, build, program=None):
        self.version, self.build = version, build
        folder = programs()
        self.files = {
            "bin/orvu": program or (folder / f"orvu-release-{version}").read_bytes(),
            "bin/orvu-image-decoder": (folder / "orvu-image-decoder").read_bytes(),
            "bin/orvu-starter": (folder / "orvu-starter-for-tests").read_bytes(),
            "release": f"version {version}\nbuild {build}\nidentity {IDENTITY}\n".encode()}

    def place(self, application):
        """Writes it as an installation does."""
        for path, content in self.files.items():
            file = application / path
            file.parent.mkdir(parents=True, exist_ok=True)
            file.write_bytes(content)
            file.chmod(self._mode(path))

    @staticmethod
    def _mode(path):
        return 0o755 if path.startswith("bin/") else 0o644

    def archive(self):
        """The archive of it, and what is signed of it."""
        packed = io.BytesIO()
        with gzip.GzipFile(fileobj=packed, mode="wb", compresslevel=1, mtime=0) as stream, \
                tarfile.open(fileobj=stream, mode="w", format=tarfile.USTAR_FORMAT) as tar:
            for path, content in sorted(self.files.items()):
                member = tarfile.TarInfo(f"Orvu.app/{path}")
                member.size, member.mode = len(content), self._mode(path)
                tar.addfile(member, io.BytesIO(content))
        return packed.getvalue()

    def signed_text(self, archive, secret=SECRET):
        lines = [f"{self._mode(path):o} {len(content)} {hash_of(content)} {path}\n"
                 for path, content in sorted(self.files.items())]
        text = (f"orvu-update 1\nidentity {IDENTITY}\nversion {self.version}\n"
                f"build {self.build}\narchive {len(archive)} {hash_of(archive)}\n"
                f"files {len(lines)}\n" + "".join(lines)).encode()
        return text + f"signature {sign(text, secret)}\n".encode()


class Updates:
    """The server of a test, and a copy of the program in a folder of its person's."""

    def __init__(self, test, version="1.0", build=10):
        self.site = test.proxy.site(HOST)
        self.site.page(NOTES, "What is new")
        # A folder with a blank, of which no part may get lost.
        self.folder = test.home.folder / "my programs"
        self.folder.mkdir(mode=0o755)
        self.application = self.folder / "Orvu.app"
        Release(version, build).place(self.application)
        self.starter = test.home.folder / "orvu-starter"
        shutil.copy(programs() / "orvu-starter-for-tests", self.starter)
        test.app.command = [str(self.starter), "--start", str(self.folder)]

    def offer(self, release, secret=SECRET, claimed=None):
        """Puts a release on the server, which may claim that it is another build; gives the path of
        its archive."""
        archive = release.archive()
        path = f"/orvu/orvu-{release.version}-{release.build}.tar.gz"
        self.serve(path, archive)
        self.serve(f"{path}.signed", release.signed_text(archive, secret))
        self.serve(FEED, json.dumps({
            "version": release.version, "build": claimed or release.build, "url": self.site.url(path),
            "sha256": hash_of(archive)}).encode())
        return path

    def serve(self, path, content):
        self.site.answers[path] = lambda handler: handler.reply(200, "text/plain", content)

    def exchange(self, release):
        """Puts another release into the place of the one that runs, as an administrator may."""
        aside = self.folder / "aside"
        release.place(aside)
        self.application.rename(self.folder / "before")
        aside.rename(self.application)

    def installed(self):
        """The version and build of the copy that would be started next."""
        words = dict(line.split(" ", 1) for line in
                     (self.application / "release").read_text().splitlines())
        return words["version"], int(words["build"])

    def copies(self):
        """What lies in the folder of the application."""
        return sorted(each.name for each in self.folder.iterdir()
                      if not each.name.endswith(".lock"))

    def snapshot(self):
        """All files of the folder, with what is in them."""
        return {str(file.relative_to(self.folder)): (file.stat().st_mode, hash_of(file.read_bytes()))
                for file in self.folder.rglob("*") if file.is_file() and file.stat().st_size > 0}
