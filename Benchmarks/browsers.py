"""Browsers that are measured: ours and others, each in a home of its own, and what they need."""

import json
import os
import pathlib
import shutil
import sqlite3
import subprocess
import sys
import tempfile
import time
import uuid

ROOT = pathlib.Path(__file__).resolve().parent.parent
BIN = ROOT / "build" / "release" / "bin"
sys.path.insert(0, str(ROOT / "Tests/e2e"))
from harness.saved import WELCOMED, Saved  # noqa: E402


def tree(root):
    """The process ids of a process and all its descendants."""
    parents = {}
    for entry in pathlib.Path("/proc").iterdir():
        if entry.name.isdigit():
            try:
                stat = (entry / "stat").read_text()
            except OSError:
                continue
            parents[int(entry.name)] = int(stat.rsplit(")", 1)[1].split()[1])
    found = {root}
    while True:
        more = {p for p, parent in parents.items() if parent in found} - found
        if not more:
            return found
        found |= more


def pss(root):
    """Proportional set size of a process tree, in MiB."""
    total = 0
    for process in tree(root):
        try:
            for line in open(f"/proc/{process}/smaps_rollup", encoding="ascii"):
                if line.startswith("Pss:"):
                    total += int(line.split()[1])
        except OSError:
            pass
    return total / 1024


def settled(root):
    """The memory of a process tree once it no longer changes much."""
    last = pss(root)
    deadline = time.monotonic() + 20
    while time.monotonic() < deadline:
        time.sleep(1)
        now = pss(root)
        if abs(now - last) < 0.5:
            return now
        last = now
    return last


class Program:
    """A program with a home of its own."""

    def __init__(self, name, *command):
        self.name, self.command = name, command
        self.home = tempfile.mkdtemp(prefix="orvu-bench-")
        self.starts = {}  # by the number of saved tabs: milliseconds
        self.process = None

    def environment(self):
        return {name: value for name, value in os.environ.items() if name != "GSK_RENDERER"} | {
            "HOME": self.home, "XDG_CONFIG_HOME": self.home + "/config",
            "XDG_DATA_HOME": self.home + "/data", "XDG_CACHE_HOME": self.home + "/cache"}

    def arguments(self, _tabs, addresses):
        return addresses

    def spawn(self, arguments):
        self.process = subprocess.Popen([*self.command, *arguments], env=self.environment(),
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def start(self, pages, tabs, addresses):
        """Starts it with so many saved tabs, which may have to be left to it; comes back when the
        page in front was painted. Milliseconds."""
        arguments = self.arguments(tabs, addresses)
        pages.forget()
        begin = time.monotonic()
        self.spawn(arguments)
        pages.wait(lambda: pages.painted_at, f"{self.name} to paint its page")
        return (pages.painted_at - begin) * 1000

    def stop(self):
        ids = tree(self.process.pid)
        self.process.terminate()
        try:
            self.process.wait(20)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()
        # Its pages' processes end a moment later; they would slow down the next start.
        deadline = time.monotonic() + 5
        while time.monotonic() < deadline and any(os.path.exists(f"/proc/{each}") for each in ids):
            time.sleep(0.05)
        time.sleep(0.3)

    def remove(self):
        shutil.rmtree(self.home, ignore_errors=True)


class Browser(Program):
    """Ours, which takes saved tabs from its settings."""

    def welcome(self):
        """Lets the first run be over; false if it was already."""
        file = self.home + "/config/Orvu/UserDefaults.sqlite"
        if os.path.exists(file):
            return False
        os.makedirs(self.home + "/config", exist_ok=True)
        Saved(pathlib.Path(file)).begin(WELCOMED)
        return True

    def arguments(self, tabs, addresses):
        file = self.home + "/config/Orvu/UserDefaults.sqlite"
        if self.welcome():
            return addresses[:1]
        saved = addresses if tabs else []
        self.store(file, "browserSession", [{"url": each, "pinned": False} for each in saved])
        self.store(file, "browserShelf", [])
        return [] if tabs else addresses[:1]

    @staticmethod
    def store(file, key, records):
        with sqlite3.connect(file) as database:
            database.execute("INSERT OR REPLACE INTO defaults (key, value) VALUES (?, ?)",
                             (key, json.dumps(records).encode()))

    def park(self, addresses):
        self.store(self.home + "/config/Orvu/UserDefaults.sqlite", "browserShelf",
                   [{"id": str(uuid.uuid4()).upper(), "url": each, "title": "A parked page"}
                    for each in addresses])


def peers():
    """The other browsers that are installed."""
    found = []
    chromium = shutil.which("chromium")
    if chromium:
        flags = ["--no-first-run", "--no-default-browser-check", "--password-store=basic"]
        found.append(Program("Chromium", chromium, *flags, *(["--no-sandbox"] * (not os.getuid()))))
    firefox = shutil.which("firefox") or shutil.which("firefox-esr")
    if firefox:
        found.append(Program("Firefox", firefox, "--no-remote", "--new-instance"))
    web = shutil.which("epiphany") or shutil.which("epiphany-browser")
    if web:
        found.append(Program("GNOME Web", web))
    return found


