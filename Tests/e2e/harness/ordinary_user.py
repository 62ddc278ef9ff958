"""The user of the tests that must not run as root: a person who has no rights over the machine."""

import atexit
import os
import pathlib
import pwd
import shutil
import subprocess
import sys
import tempfile

from .app import program
from .case import artefacts

NAME = "nobody"
DECODER = "orvu-image-decoder"
PROBE = pathlib.Path(__file__).resolve().parents[3] / "tools/sandbox-probe"
NO_SANDBOX = "WEBKIT_DISABLE_SANDBOX_THIS_IS_DANGEROUS"


class OrdinaryUser:
    """This process from the first use on, for good: root's becomes one of `NAME`, another one
    stays as it is."""

    _shared = None

    @classmethod
    def shared(cls):
        if cls._shared is None:
            cls._shared = cls()
        return cls._shared

    def __init__(self):
        folder = artefacts() / "wayland"
        folder.mkdir(exist_ok=True)
        # Open from now on, for a checkout may stand where only root comes.
        self._artefacts = os.open(folder, os.O_DIRECTORY)
        probe = PROBE.read_text()
        if os.geteuid() == 0:
            self._become(pwd.getpwnam(NAME))
        self.has_sandbox = self._find_sandbox(probe)

    def _become(self, user):
        place = pathlib.Path(tempfile.mkdtemp(prefix="orvu-program-"))
        for name in ("orvu", DECODER):
            shutil.copy(pathlib.Path(program()).parent / name, place)
        os.environ["ORVU_PROGRAM"] = str(place / "orvu")
        for each in (place, *place.iterdir(), self._artefacts):
            os.chown(each, user.pw_uid, user.pw_gid)
        os.setgroups([])
        os.setresgid(user.pw_gid, user.pw_gid, user.pw_gid)
        os.setresuid(user.pw_uid, user.pw_uid, user.pw_uid)
        atexit.register(shutil.rmtree, place, ignore_errors=True)

    @staticmethod
    def _find_sandbox(probe):
        """Whether this user's pages get a sandbox. The script says it in a line where they don't,
        and has a variable set for the programs that are started from now on."""
        os.environ.pop(NO_SANDBOX, None)  # root may have got another answer
        script = f'{probe}\nprintf "%s" "${{{NO_SANDBOX}:-}}"'
        answer = subprocess.run(["bash", "-c", script], stdout=subprocess.PIPE, text=True,
                                check=True).stdout
        if answer:
            os.environ[NO_SANDBOX] = answer
        print(f"User {os.geteuid()}, pages {'without' if answer else 'in'} a sandbox.",
              file=sys.stderr)
        return not answer

    def leave(self, name, content):
        """Writes a file among the artefacts."""
        def opener(path, flags):
            return os.open(path, flags, 0o644, dir_fd=self._artefacts)
        with open(name, "wb", opener=opener) as file:
            file.write(content)
