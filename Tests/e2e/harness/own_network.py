"""A network of this test process alone, of which there is nothing but the loopback interface: all
ports are free, and the cable is out. Where the computer lets no process have one, tests go on in the
network that all share, and say so."""

import atexit
import ctypes
import fcntl
import os
import pathlib
import socket
import struct
import sys
import tempfile

NEW_MOUNTS, NEW_USER, NEW_NETWORK = 0x20000, 0x10000000, 0x40000000
RECURSIVE, PRIVATE = 0x4000, 0x40000
# Requests about an interface, as in <linux/sockios.h>.
READ_FLAGS, SET_FLAGS, UP, SET_ADDRESS, SET_MASK = 0x8913, 0x8914, 1, 0x8916, 0x891C
BIND = 0x1000
SOCKETS = "/tmp/.X11-unix"

_libc = ctypes.CDLL(None, use_errno=True)
_aliases = 0
_hosts = None  # the file that tells where hosts are
is_taken = False  # whether this process has a network of its own


def take():
    """Moves this process there, and all that it starts from now on. It must not have started
    anything before."""
    global is_taken
    try:
        _take_mounts()
        _take_network()
        is_taken = True
    except OSError as error:
        print(f"In the network of all: {error}", file=sys.stderr, flush=True)


def add_address(address):
    """Gives this computer one more address, of any network."""
    global _aliases
    _aliases += 1
    name = f"lo:{_aliases}".encode()
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as any_socket:
        for request, value in ((SET_ADDRESS, address), (SET_MASK, "255.255.255.255")):
            fcntl.ioctl(any_socket, request, struct.pack(
                "16sH2x4s8x", name, socket.AF_INET, socket.inet_aton(value)))


def name_hosts(addresses):
    """Lets these hosts, and no others, be found; `addresses` are (address, host), and one host may
    have several."""
    global _hosts
    if not _hosts:
        with tempfile.NamedTemporaryFile("w", suffix=".hosts", delete=False) as file:
            _hosts = file.name
        os.chmod(_hosts, 0o644)
        atexit.register(os.unlink, _hosts)
        _mount(_hosts, "/etc/hosts", None, BIND)
    lines = "".join(f"{address} {host}\n" for address, host in addresses)
    pathlib.Path(_hosts).write_text("127.0.0.1 localhost\n" + lines, encoding="ascii")


def _take_mounts():
    """Displays of other networks may have the number that is free in the own one, so their sockets
    get a folder of their own, too."""
    user, group = os.getuid(), os.getgid()
    _check("mounts of its own", _libc.unshare(NEW_MOUNTS | (0 if user == 0 else NEW_USER)))
    if user != 0:
        pathlib.Path("/proc/self/setgroups").write_text("deny", encoding="ascii")
        pathlib.Path("/proc/self/uid_map").write_text(f"{user} {user} 1", encoding="ascii")
        pathlib.Path("/proc/self/gid_map").write_text(f"{group} {group} 1", encoding="ascii")
    os.makedirs(SOCKETS, exist_ok=True)
    _mount("none", "/", None, RECURSIVE | PRIVATE)
    _mount("none", SOCKETS, "tmpfs", 0)


def _take_network():
    _check("a network of its own", _libc.unshare(NEW_NETWORK))
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as any_socket:
        flags = fcntl.ioctl(any_socket, READ_FLAGS, struct.pack("16sh22x", b"lo", 0))
        now = struct.unpack("16sh22x", flags)[1]
        fcntl.ioctl(any_socket, SET_FLAGS, struct.pack("16sh22x", b"lo", now | UP))


def _mount(source, target, kind, flags):
    _check(f"mounting {target}", _libc.mount(source.encode(), target.encode(),
                                             kind.encode() if kind else None, flags, None))


def _check(what, status):
    if status != 0:
        error = ctypes.get_errno()
        raise OSError(error, f"{what}: {os.strerror(error)}")
