"""Message buses: that of the session, and the one that assistive programs use."""

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

from .wait import DEADLINE

NAME, PATH, INTERFACE = "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus"


class Bus:
    """A connection to one bus."""

    def __init__(self, address):
        self.connection = Gio.DBusConnection.new_for_address_sync(
            address, Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
            | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)

    def close(self):
        self.connection.close_sync(None)

    def call(self, name, path, interface, method, signature="()", *arguments):
        """Calls a method and gives its one answer, or a tuple of them; GLib.Error if it fails. No
        service is started for it."""
        answer = self.connection.call_sync(
            name, path, interface, method, GLib.Variant(signature, arguments), None,
            Gio.DBusCallFlags.NO_AUTO_START, int(DEADLINE * 1000), None).unpack()
        return answer[0] if len(answer) == 1 else answer

    def has_name(self, name):
        """Whether a program on the bus has that name."""
        return self.call(NAME, PATH, INTERFACE, "NameHasOwner", "(s)", name)

    def take_name(self, name):
        self.call(NAME, PATH, INTERFACE, "RequestName", "(su)", name, 0)

    def process(self, name):
        """The id of the process that has a name."""
        return self.call(NAME, PATH, INTERFACE, "GetConnectionUnixProcessID", "(s)", name)


def turn():
    """Lets what came over the buses happen, such as calls of what this process offers there."""
    context = GLib.MainContext.default()
    while context.pending():
        context.iteration(False)
