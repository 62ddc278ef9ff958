"""Processes that end with the test, whatever ends the test."""

import ctypes
import os
import select
import signal
import subprocess

_libc = ctypes.CDLL(None, use_errno=True)
_PR_SET_PDEATHSIG = 1
QUIET = {"stdin": subprocess.DEVNULL, "stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}


def _end_with_parent():
    _libc.prctl(_PR_SET_PDEATHSIG, signal.SIGKILL)


def spawn(arguments, **options):
    """Starts a program that is killed when this process ends."""
    return subprocess.Popen(arguments, preexec_fn=_end_with_parent, **options)


def announced(*arguments):
    """Starts a program that writes a line to a descriptor given by "{fd}"; gives both. The line is
    empty if it ended instead."""
    reader, writer = os.pipe()
    try:
        started = spawn([each.replace("{fd}", str(writer)) for each in arguments],
                        pass_fds=[writer], **QUIET)
    finally:
        os.close(writer)
    with os.fdopen(reader) as lines:
        return started, lines.readline().strip()


class Adopted:
    """A process that something else started, as if it were one of ours. How it ended isn't known:
    it counts as well."""

    def __init__(self, pid):
        self.pid = pid
        self.returncode = None
        self._handle = os.pidfd_open(pid)

    def poll(self):
        if self.returncode is None and select.select([self._handle], [], [], 0)[0]:
            self._ended()
        return self.returncode

    def wait(self, timeout=None):
        if self.returncode is None:
            if not select.select([self._handle], [], [], timeout)[0]:
                raise subprocess.TimeoutExpired(str(self.pid), timeout)
            self._ended()
        return self.returncode

    def send_signal(self, number):
        if self.poll() is None:
            signal.pidfd_send_signal(self._handle, number)

    def terminate(self):
        self.send_signal(signal.SIGTERM)

    def kill(self):
        self.send_signal(signal.SIGKILL)

    def _ended(self):
        self.returncode = 0
        os.close(self._handle)


def stop(process, deadline=10):
    """Ends a process that `spawn` started and waits for it."""
    if process.poll() is not None:
        return
    process.terminate()
    try:
        process.wait(deadline)
    except subprocess.TimeoutExpired:
        process.kill()
        process.wait()


def descendants(pid):
    """The ids and names of all processes below `pid`."""
    parents, names = {}, {}
    for entry in os.listdir("/proc"):
        if not entry.isdigit():
            continue
        try:
            with open(f"/proc/{entry}/stat", encoding="utf-8", errors="replace") as file:
                text = file.read()
        except OSError:
            continue
        name, rest = text[text.index("(") + 1:].rsplit(")", 1)
        state, parent = rest.split()[:2]
        if state not in "ZX":
            parents[int(entry)], names[int(entry)] = int(parent), name
    found, waiting = {}, [pid]
    while waiting:
        above = waiting.pop()
        for child, parent in parents.items():
            if parent == above and child not in found:
                found[child] = names[child]
                waiting.append(child)
    return found


def open_files(pid):
    """The names of the files that a process has open."""
    names = []
    try:
        for each in os.listdir(f"/proc/{pid}/fd"):
            names.append(os.readlink(f"/proc/{pid}/fd/{each}"))
    except OSError:
        pass  # it went, or closed one meanwhile
    return names


def resident(pid):
    """The memory that a process has, in bytes."""
    with open(f"/proc/{pid}/statm", encoding="ascii") as file:
        return int(file.read().split()[1]) * os.sysconf("SC_PAGE_SIZE")


def mapped(pid):
    """The names of what a process has mapped, each as often as it has."""
    with open(f"/proc/{pid}/maps", encoding="utf-8", errors="replace") as file:
        return [line.split()[5] for line in file if len(line.split()) > 5]
