"""Light and dark, as the desktop's portal tells what its person prefers."""

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

from harness.bus import Bus, turn
from harness.case import BrowserTest
from harness.wait import until

NO_PREFERENCE, DARK, LIGHT = range(3)
# A page that tells at the start, and whenever that changes, how it is to look.
TELLS = """let count = 0;
const query = matchMedia('(prefers-color-scheme: dark)');
const tell = () => fetch(`/report/${query.matches ? 'dark' : 'light'}-${++count}`);
query.addEventListener('change', tell);
tell();"""


class Portal:
    """A portal on the session bus, with what it was asked for."""

    NAME, PATH = "org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop"
    SETTINGS = "org.freedesktop.portal.Settings"
    APPEARANCE, SCHEME = "org.freedesktop.appearance", "color-scheme"
    INTERFACE = f"""<node><interface name='{SETTINGS}'><method name='Read'>
        <arg type='s' direction='in'/><arg type='s' direction='in'/><arg type='v' direction='out'/>
        </method></interface></node>"""

    def __init__(self, address, answer):
        self.asked = []
        self._answer = answer
        self._bus = Bus(address)
        node = Gio.DBusNodeInfo.new_for_xml(self.INTERFACE)
        self._bus.connection.register_object(self.PATH, node.interfaces[0], self._called, None,
                                             None)
        self._bus.take_name(self.NAME)

    def _called(self, _bus, _sender, _path, _interface, _method, arguments, invocation):
        self.asked.append(arguments.unpack())
        # Wrapped twice, as this method is known for.
        invocation.return_value(GLib.Variant("(v)", (GLib.Variant("v", self._answer),)))

    def tell(self, value, key=SCHEME):
        self._bus.connection.emit_signal(
            None, self.PATH, self.SETTINGS, "SettingChanged",
            GLib.Variant("(ssv)", (self.APPEARANCE, key, value)))
        self._bus.connection.flush_sync(None)

    def stop(self):
        self._bus.close()


class AppearanceTest(BrowserTest):
    def begin(self, answer):
        self.portal = Portal(self.display.bus_address, answer)
        self.addCleanup(self.portal.stop)
        self.app.start(self.server.script_page("/page", TELLS))

    def wait_for(self, report):
        def told():
            turn()
            return report in self.server.reports()
        until(told, f"the page's {report!r}", self.server.reports)

    def wait_until_asked(self):
        def asked():
            turn()
            return self.portal.asked
        until(asked, "a question to the portal")

    def test_pages_are_dark_where_that_is_preferred(self):
        self.begin(GLib.Variant("u", DARK))
        self.wait_until_asked()

        self.wait_until_told("dark-1")

        self.assertEqual(self.portal.asked, [(Portal.APPEARANCE, Portal.SCHEME)])

    def wait_until_told(self, report):
        """The page may have come before the portal's answer: then it hears of a change."""
        def told():
            turn()
            return {report, report.replace("1", "2")} & set(self.server.reports())
        until(told, "the page to be told", self.server.reports)

    def test_a_page_follows_while_the_preference_changes(self):
        self.begin(GLib.Variant("u", NO_PREFERENCE))
        self.wait_until_asked()
        self.wait_for("light-1")

        self.portal.tell(GLib.Variant("u", DARK))
        self.wait_for("dark-2")
        self.portal.tell(GLib.Variant("u", LIGHT))
        self.wait_for("light-3")
        self.portal.tell(GLib.Variant("u", DARK))
        self.wait_for("dark-4")
        self.portal.tell(GLib.Variant("u", NO_PREFERENCE))

        self.wait_for("light-5")

    def test_what_means_nothing_changes_nothing(self):
        self.begin(GLib.Variant("s", "dark"))
        self.wait_until_asked()
        self.wait_for("light-1")

        self.portal.tell(GLib.Variant("s", "dark"))
        self.portal.tell(GLib.Variant("u", 99))
        self.portal.tell(GLib.Variant("u", DARK), key="contrast")
        self.portal.tell(GLib.Variant("u", DARK))

        self.wait_for("dark-2")

    def test_no_portal_is_no_trouble(self):
        self.app.start(self.server.script_page("/page", TELLS))

        self.wait_for("light-1")
