"""The portal of a desktop, played on the session bus."""

import atexit
import functools
import pathlib
import shutil
import tempfile
import threading

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

from .bus import Bus
from .wait import until

NAME, PATH = "org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop"
SETTINGS, FILES, OPENING, NETWORK, PROXIES = (
    f"org.freedesktop.portal.{each}"
    for each in ("Settings", "FileChooser", "OpenURI", "NetworkMonitor", "ProxyResolver"))
APPEARANCE, SCHEME = "org.freedesktop.appearance", "color-scheme"
# What makes a program use it that is not in a sandbox: its libraries for files, and its toolkit.
USED = {"GTK_USE_PORTAL": "1", "GDK_DEBUG": "portals"}


@functools.cache
def without_other_programs():
    """An environment in which the machine's programs can't be seen, as from within a sandbox: its
    data, all but the entries of programs."""
    data = pathlib.Path(tempfile.mkdtemp(prefix="orvu-data-"))
    atexit.register(shutil.rmtree, data, ignore_errors=True)
    for each in pathlib.Path("/usr/share").iterdir():
        if each.name != "applications":
            (data / each.name).symlink_to(each)
    return {"XDG_DATA_DIRS": str(data)}


def _method_of(name, arguments, answer):
    return (f"<method name='{name}'>"
            + "".join(f"<arg type='{each}' direction='in'/>" for each in arguments)
            + f"<arg type='{answer}' direction='out'/></method>")


def _interface(name, *content):
    return (f"<interface name='{name}'>{''.join(content)}"
            "<property name='version' type='u' access='read'/></interface>")


DESCRIPTION = "<node>" + "".join((
    _interface(SETTINGS, _method_of("Read", ("s", "s"), "v")),
    _interface(FILES, _method_of("OpenFile", ("s", "s", "a{sv}"), "o")),
    _interface(OPENING, _method_of("OpenURI", ("s", "s", "a{sv}"), "o")),
    _interface(NETWORK, _method_of("GetStatus", (), "a{sv}"), _method_of("GetAvailable", (), "b"),
               _method_of("GetMetered", (), "b"), _method_of("GetConnectivity", (), "u")),
    _interface(PROXIES, _method_of("Lookup", ("s",), "as")))) + "</node>"
# A network that is there and needs no proxy. Who asks for it ends where there is no answer.
CONNECTED = {
    "GetAvailable": GLib.Variant("(b)", (True,)), "GetMetered": GLib.Variant("(b)", (False,)),
    "GetConnectivity": GLib.Variant("(u)", (4,)),
    "GetStatus": GLib.Variant("(a{sv})", ({
        "available": GLib.Variant("b", True), "metered": GLib.Variant("b", False),
        "connectivity": GLib.Variant("u", 4)},)),
    "Lookup": GLib.Variant("(as)", (["direct://"],))}


class Portal:
    """Answers what a test set, in a thread of its own, and notes what it was asked for."""

    def __init__(self, address):
        self.asked = []
        self.scheme = GLib.Variant("u", 0)
        self.chosen = []  # addresses of files
        self._address = address
        self._loop = None
        self._bus = None
        self._ready = threading.Event()
        self._thread = threading.Thread(target=self._serve, daemon=True)
        self._thread.start()
        self._ready.wait()

    def _serve(self):
        context = GLib.MainContext()
        context.push_thread_default()
        self._bus = Bus(self._address)
        for interface in Gio.DBusNodeInfo.new_for_xml(DESCRIPTION).interfaces:
            self._bus.connection.register_object(
                PATH, interface, self._called, lambda *_: GLib.Variant("u", 3), None)
        self._bus.take_name(NAME)
        self._loop = GLib.MainLoop(context)
        self._ready.set()
        self._loop.run()
        self._bus.close()
        context.pop_thread_default()

    def _called(self, _bus, sender, _path, _interface, method, arguments, invocation):
        if method in CONNECTED:
            return invocation.return_value(CONNECTED[method])
        words = arguments.unpack()
        self.asked.append((method, *words))
        if method == "Read":
            # Wrapped twice, as this method is known for.
            answer = GLib.Variant("v", self.scheme)
            return invocation.return_value(GLib.Variant("(v)", (answer,)))
        request = f"{PATH}/request/{sender[1:].replace('.', '_')}/{words[2]['handle_token']}"
        invocation.return_value(GLib.Variant("(o)", (request,)))
        answer = GLib.Variant("(ua{sv})", (0, {"uris": GLib.Variant("as", self.chosen)}))
        return self._emit(sender, request, "org.freedesktop.portal.Request", "Response", answer)

    def tell(self, value, key=SCHEME):
        """Says that a setting of the appearance is another now."""
        self._emit(None, PATH, SETTINGS, "SettingChanged",
                   GLib.Variant("(ssv)", (APPEARANCE, key, value)))

    def _emit(self, receiver, path, interface, signal, content):
        self._bus.connection.emit_signal(receiver, path, interface, signal, content)
        self._bus.connection.flush_sync(None)

    def wait_until_asked(self, method):
        """Gives the words of the first call of that method."""
        def calls():
            return [words for name, *words in self.asked if name == method]
        return until(calls, f"a call of {method}", lambda: self.asked)[0]

    def stop(self):
        self._loop.quit()
        self._thread.join()
