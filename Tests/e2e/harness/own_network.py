"""A network of this test process alone, of which there is nothing but the loopback interface: all
ports are free, and the cable is out. Where the computer lets no process have one, tests go on in the
network that all share, and say so."""

import ctypes
import fcntl
import os
import pathlib
import socket
import struct
import sys

NEW_MOUNTS, NEW_USER, NEW_NETWORK = 0x20000, 0x10000000, 0x40000000
RECURSIVE, PRIVATE = 0x4000, 0x40000
READ_FLAGS, SET_FLAGS, UP = 0x8913, 0x8914, 1  # requests about an interface, as in <linux/sockios.h>
SOCKETS = "/tmp/.X11-unix"

_libc = ctypes.CDLL(None, use_errno=True)


def take():
    """Moves this process there, and all that it starts from now on. It must not have started
    anything before."""
    try:
        _take_mounts()
        _take_network()
    except OSError as error:
        print(f"In the network of all: {error}", file=sys.stderr, flush=True)


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
