"""The maker of updates and the server that gives them, and a copy of the program that takes them."""

import pathlib
import shutil

from . import app as program_under_test
from .maker import publish

HOST = "updates.example"
FEED, NOTES = "/orvu/update.json", "/orvu/whats-new/"
# The secret half of the key that the programs of the tests trust, and another.
SECRET, STRANGE = b"k" * 32, b"x" * 32


def programs():
    """The folder of the programs that were built."""
    return pathlib.Path(program_under_test.program()).resolve().parent


class Release(publish.Release):
    """One release of the program."""

    def __init__(self, version, build, program=None):
        folder = programs()
        super().__init__({
            "bin/orvu": program or (folder / f"orvu-release-{version}").read_bytes(),
            "bin/orvu-starter": (folder / "orvu-starter-for-tests").read_bytes(),
            "libexec/orvu-image-decoder": (folder / "orvu-image-decoder").read_bytes(),
            "release": f"version {version}\nbuild {build}\nidentity {publish.IDENTITY}\n".encode()})

    def place(self, application):
        """Writes it as an installation does."""
        for path, content in self.files.items():
            file = application / path
            file.parent.mkdir(parents=True, exist_ok=True)
            file.write_bytes(content)
            file.chmod(self.mode(path))


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
        path = f"/orvu/{release.name()}"
        self.serve(path, archive)
        self.serve(f"{path}.signed", release.signed_text(archive, publish.Key(secret)))
        manifest = release.manifest(HOST, archive)
        if claimed:
            manifest = manifest.replace(f'"build": {release.build}'.encode(),
                                        f'"build": {claimed}'.encode())
        self.serve(FEED, manifest)
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
        return {str(file.relative_to(self.folder)): (file.stat().st_mode,
                                                      publish.hash_of(file.read_bytes()))
                for file in self.folder.rglob("*") if file.is_file() and file.stat().st_size > 0}
