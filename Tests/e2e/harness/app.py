"""The program: its home, its life, and its actions over the session bus."""

import os
import pathlib
import re
import shutil
import signal
import subprocess
import tempfile

import gi

gi.require_version("GLib", "2.0")
from gi.repository import GLib  # noqa: E402

from . import complaints, language, process, traces
from .bus import Bus
from .saved import WELCOMED, Saved
from .wait import DEADLINE, until

ID = "app.orvu.Orvu"
PATH = "/app/orvu/Orvu"
WINDOWS = PATH + "/window"
CRASHES = [-each for each in (signal.SIGSEGV, signal.SIGABRT, signal.SIGTRAP, signal.SIGBUS,
                              signal.SIGILL, signal.SIGFPE)]
# As the kernel cuts them.
PAGE_PROCESS, FETCHER, DECODER = "WebKitWebProces", "WebKitNetworkPr", "orvu-image-deco"


def program():
    """The program under test."""
    default = pathlib.Path(__file__).resolve().parents[3] / "build/release/bin/orvu"
    given = os.environ.get("ORVU_PROGRAM", str(default))
    return language.shared_program(given) if language.is_on() else given


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

    def files_with(self, text):
        """The files, and folders by their names, in which a text stands in some encoding, or a
        hash of it."""
        forms = list(traces.forms(text))
        names = []
        for file in self.folder.rglob("*"):
            content = str(file).encode() + (file.read_bytes() if file.is_file() else b"")
            if any(form in content for form in forms):
                names.append(str(file.relative_to(self.folder)))
        return names

    def remove(self):
        shutil.rmtree(self.folder, ignore_errors=True)


class App:
    """One program that can be started, ended and started again in the same home."""

    def __init__(self, display, home, proxy, extra_environment=()):
        self.home = home
        self.is_welcomed = True  # the first run is over, so that its window doesn't come
        self.process = None
        self.command = [program()]  # what starts it
        self._errors = None
        self._complaints = []
        self.environment = os.environ | display.environment() | home.environment() \
            | proxy.environment() | (language.environment() if language.is_on() else {}) \
            | dict(extra_environment)
        self._bus = Bus(display.bus_address)

    @property
    def pid(self):
        return self.process.pid

    # Life.

    def start(self, *arguments, window=True, restores_signals=True):
        """Starts the program; comes back when its first window takes actions. A Python program
        ignores some signals, such as that of a file that becomes too large; the program does the
        same unless they are restored for it."""
        until(lambda: not self._bus.has_name(ID), "the previous program to leave the bus")
        if self.is_welcomed and self.process is None:
            self.home.saved.begin(WELCOMED)
        self._close_errors()
        self._errors = tempfile.TemporaryFile()
        self.process = process.spawn([*self.command, *arguments], env=self.environment,
                                     stdin=subprocess.DEVNULL, stdout=self._errors,
                                     stderr=self._errors, restore_signals=restores_signals)
        if window:
            until(lambda: self.windows() or not self.is_running(), "the first window",
                  self.errors)
            self.check_runs()
        return self

    def start_again(self, *arguments):
        """Starts a second program beside the first, which hands over and ends."""
        second = self.run(*arguments)
        if second.returncode != 0:
            raise AssertionError(f"a second start with {[each[:80] for each in arguments]} ended "
                                 f"with {second.returncode}: {second.stderr!r}")

    def run(self, *arguments):
        """A start that ends by itself, as one beside a running program does."""
        return subprocess.run([*self.command, *arguments], env=self.environment, timeout=DEADLINE,
                              stdin=subprocess.DEVNULL, capture_output=True, text=True, check=False)

    def hand_over(self, *arguments):
        """What a second start tells the program before it ends, without the time that it takes."""
        words = [GLib.Variant.new_bytestring(os.fsencode(each)) for each in (program(), *arguments)]
        status = self._bus.call(ID, PATH, "org.gtk.Application", "CommandLine", "(oaaya{sv})",
                                PATH, words, {"cwd": GLib.Variant.new_bytestring(os.getcwdb())})
        if status != 0:
            raise AssertionError(f"{arguments} handed over were answered with {status}")

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

    def complaints(self):
        """What toolkit and engine complained of in all its runs, but for what is known."""
        return self._complaints + self._complaints_of_run()

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

    def adopt(self):
        """Takes the program that started itself anew, after this one ended, for its own."""
        old = self.pid
        self.wait_for_end(0)
        until(lambda: self._bus.has_name(ID), "the program to come back")
        pid = self._bus.process(ID)
        if pid == old:
            raise AssertionError("the program is still the same")
        self.process = process.Adopted(pid)
        until(self.windows, "its first window")

    def kill(self):
        """Ends the program with no chance to do anything."""
        self.process.send_signal(signal.SIGKILL)
        self.process.wait()

    def stop(self):
        if self.process is not None:
            process.stop(self.process)
        self._close_errors()
        self._bus.close()

    def _close_errors(self):
        if self._errors is not None:
            self._complaints += self._complaints_of_run()
            self._errors.close()
            self._errors = None

    def _complaints_of_run(self):
        if self._errors is None:
            return []
        status = self.process.poll()
        crash = [f"the program ended with {status}"] if status in CRASHES else []
        return crash + complaints.of(self.errors(), status == -signal.SIGKILL)

    # Actions.

    def app_action(self, name):
        self._activate(PATH, name)

    def action(self, name, window=1):
        """Runs an action of a window; it has run when this comes back."""
        self._activate(f"{WINDOWS}/{window}", name)

    def windows(self):
        """The numbers of the open windows."""
        if not self._bus.has_name(ID):
            return []
        try:
            answer = self._bus.call(ID, WINDOWS, "org.freedesktop.DBus.Introspectable",
                                    "Introspect")
        except GLib.Error:
            return []
        return sorted(int(each) for each in re.findall(r'<node name="(\d+)"', answer))

    def _activate(self, path, name):
        self._bus.call(ID, path, "org.gtk.Actions", "Activate", "(sava{sv})", name, [], {})

    def accessibility_address(self):
        """The bus on which assistive programs find the windows, once the program has it made."""
        return self._bus.call("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress")

    # Processes of pages.

    def page_processes(self):
        """The ids of the processes that hold pages."""
        return self._below(PAGE_PROCESS)

    def fetcher(self):
        """The process that fetches and writes for all pages."""
        found = self._below(FETCHER)
        if len(found) != 1:
            raise AssertionError(f"{len(found)} processes fetch")
        return found[0]

    def decoders(self):
        """The processes that read the pictures of icons."""
        return self._below(DECODER)

    def kill_page_processes(self):
        for pid in self.page_processes():
            try:
                os.kill(pid, signal.SIGKILL)
            except ProcessLookupError:
                pass  # it left by itself

    def _below(self, name):
        return sorted(pid for pid, its in process.descendants(self.pid).items() if its == name)
