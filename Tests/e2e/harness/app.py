"""The program: its home, its life, and its actions over the session bus."""

import os
import pathlib
import re
import shutil
import signal
import subprocess
import tempfile

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

from . import process
from .saved import Saved
from .wait import DEADLINE, until

ID = "app.orvu.Orvu"
PATH = "/app/orvu/Orvu"
WINDOWS = PATH + "/window"
PAGE_PROCESS = "WebKitWebProces"  # as the kernel cuts it


def program():
    """The program under test."""
    default = pathlib.Path(__file__).resolve().parents[3] / "build/release/bin/orvu"
    return os.environ.get("ORVU_PROGRAM", str(default))


class Home:
    """All folders of one user, empty at first."""

    def __init__(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="orvu-home-"))
        self.config = self.folder / "config"
        self.data = self.folder / "data"
        self.cache = self.folder / "cache"
        self.runtime = self.folder / "run"
        for each in (self.config, self.data, self.cache, self.runtime):
            each.mkdir(mode=0o700)
        self.saved = Saved(self.config / "Orvu/UserDefaults.sqlite")

    def environment(self):
        return {"HOME": str(self.folder), "XDG_CONFIG_HOME": str(self.config),
                "XDG_DATA_HOME": str(self.data), "XDG_CACHE_HOME": str(self.cache),
                "XDG_RUNTIME_DIR": str(self.runtime)}

    def remove(self):
        shutil.rmtree(self.folder, ignore_errors=True)


class App:
    """One program that can be started, ended and started again in the same home."""

    def __init__(self, display, home, proxy, extra_environment=()):
        self.home = home
        self.process = None
        self._errors = None
        self._environment = os.environ | display.environment() | home.environment() \
            | proxy.environment() | dict(extra_environment)
        self._bus = Gio.DBusConnection.new_for_address_sync(
            display.bus_address,
            Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
            | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)

    @property
    def pid(self):
        return self.process.pid

    # Life.

    def start(self, *arguments, window=True, restores_signals=True):
        """Starts the program; comes back when its first window takes actions. A Python program
        ignores some signals, such as that of a file that becomes too large; the program does the
        same unless they are restored for it."""
        until(lambda: not self._is_on_bus(), "the former program to leave the bus")
        self._close_errors()
        self._errors = tempfile.TemporaryFile()
        self.process = process.spawn([program(), *arguments], env=self._environment,
                                     stdin=subprocess.DEVNULL, stdout=self._errors,
                                     stderr=self._errors, restore_signals=restores_signals)
        if window:
            until(lambda: self.windows() or not self.is_running(), "the first window",
                  self.errors)
            self.check_runs()
        return self

    def start_again(self, *arguments):
        """Starts a second program beside the first, which hands over and ends."""
        second = subprocess.run([program(), *arguments], env=self._environment, timeout=DEADLINE,
                                stdin=subprocess.DEVNULL, capture_output=True, check=False)
        if second.returncode != 0:
            raise AssertionError(f"a second start with {[each[:80] for each in arguments]} ended "
                                 f"with {second.returncode}: {second.stderr!r}")

    def is_running(self):
        return self.process is not None and self.process.poll() is None

    def check_runs(self):
        if not self.is_running():
            raise AssertionError(f"the program ended with {self.process.returncode}: "
                                 f"{self.errors()}")

    def errors(self):
        """What the program wrote to its error output."""
        if self._errors is None:
            return ""
        size = os.fstat(self._errors.fileno()).st_size
        return os.pread(self._errors.fileno(), size, 0).decode(errors="replace")

    def quit(self):
        """Ends the program as its menu does."""
        try:
            self.app_action("terminate")
        except GLib.Error:
            pass  # it may be gone before it can answer
        self.wait_for_end(0)

    def wait_for_end(self, status):
        until(lambda: not self.is_running(), "the program to end", self.errors)
        if self.process.returncode != status:
            raise AssertionError(f"the program ended with {self.process.returncode}: "
                                 f"{self.errors()}")

    def kill(self):
        """Ends the program with no chance to do anything."""
        self.process.send_signal(signal.SIGKILL)
        self.process.wait()

    def stop(self):
        if self.process is not None:
            process.stop(self.process)
        self._close_errors()
        self._bus.close_sync(None)

    def _close_errors(self):
        if self._errors is not None:
            self._errors.close()
            self._errors = None

    # Actions.

    def app_action(self, name):
        self._activate(PATH, name)

    def action(self, name, window=1):
        """Runs an action of a window; it has run when this comes back."""
        self._activate(f"{WINDOWS}/{window}", name)

    def actions(self, window=1):
        answer = self._call(f"{WINDOWS}/{window}", "org.gtk.Actions", "List", None)
        return answer.unpack()[0]

    def windows(self):
        """The numbers of the open windows."""
        if not self._is_on_bus():
            return []
        try:
            answer = self._call(WINDOWS, "org.freedesktop.DBus.Introspectable", "Introspect", None)
        except GLib.Error:
            return []
        return sorted(int(each) for each in re.findall(r'<node name="(\d+)"', answer.unpack()[0]))

    def _activate(self, path, name):
        self._call(path, "org.gtk.Actions", "Activate",
                   GLib.Variant("(sava{sv})", (name, [], {})))

    def _call(self, path, interface, method, arguments, name=ID):
        return self._bus.call_sync(name, path, interface, method, arguments, None,
                                   Gio.DBusCallFlags.NO_AUTO_START, int(DEADLINE * 1000), None)

    def _is_on_bus(self):
        answer = self._call("/org/freedesktop/DBus", "org.freedesktop.DBus", "NameHasOwner",
                            GLib.Variant("(s)", (ID,)), "org.freedesktop.DBus")
        return answer.unpack()[0]

    # Processes of pages.

    def page_processes(self):
        """The ids of the processes that hold pages."""
        below = process.descendants(self.pid)
        return sorted(pid for pid, name in below.items() if name == PAGE_PROCESS)

    def kill_page_processes(self):
        for pid in self.page_processes():
            try:
                os.kill(pid, signal.SIGKILL)
            except ProcessLookupError:
                pass  # it left by itself
