"""Certificates for hosts on loopback, from an authority that only a test's program trusts."""

import atexit
import os
import pathlib
import shutil
import ssl
import subprocess
import tempfile

# Stands in the program before GnuTLS, and makes it read the file of this authority.
LIBRARY = "liborvu-test-authority.so"

CONFIGURATION = """
[req]
prompt = no
distinguished_name = name
[name]
CN = {host}
[authority]
basicConstraints = critical, CA:TRUE
keyUsage = critical, keyCertSign
subjectKeyIdentifier = hash
[host]
basicConstraints = critical, CA:FALSE
subjectAltName = DNS:{host}
"""


def library(name):
    """The folder of a library that is loaded into the program."""
    default = pathlib.Path(__file__).resolve().parents[3] / "build/release/lib"
    folder = pathlib.Path(os.environ.get("ORVU_TEST_LIBRARIES", default))
    if not (folder / name).exists():
        raise AssertionError(f"{folder / name} is not built")
    return folder


class Authority:
    """Made when a test first needs it, and gone with the tests."""

    _shared = None

    @classmethod
    def shared(cls):
        if cls._shared is None:
            cls._shared = cls()
        return cls._shared

    def __init__(self):
        self._folder = pathlib.Path(tempfile.mkdtemp(prefix="orvu-authority-"))
        atexit.register(shutil.rmtree, self._folder, ignore_errors=True)
        self._contexts = {}
        self._make("authority", "Test authority")

    def environment(self):
        """What makes a program trust this authority, and no other."""
        # The sandbox of the page processes shows them what lies in LD_LIBRARY_PATH.
        return {"LD_LIBRARY_PATH": str(library(LIBRARY)), "LD_PRELOAD": LIBRARY,
                "ORVU_TEST_AUTHORITY": str(self._folder / "authority.pem")}

    def context(self, host):
        """What a server needs to be taken for that host."""
        if host not in self._contexts:
            self._make("host", host, "-CA", self._folder / "authority.pem",
                       "-CAkey", self._folder / "authority.key")
            context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
            context.load_cert_chain(self._folder / "host.pem", self._folder / "host.key")
            self._contexts[host] = context
        return self._contexts[host]

    def _make(self, kind, host, *signed_by):
        configuration = self._folder / "configuration"
        configuration.write_text(CONFIGURATION.format(host=host))
        subprocess.run(["openssl", "req", "-x509", "-config", configuration, "-extensions", kind,
                        "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes",
                        "-days", "2", "-keyout", self._folder / f"{kind}.key",
                        "-out", self._folder / f"{kind}.pem", *signed_by],
                       check=True, capture_output=True)
