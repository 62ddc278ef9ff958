"""What the desktop's portal does for the program: light and dark, files, addresses of others."""

import gi

gi.require_version("GLib", "2.0")
from gi.repository import GLib  # noqa: E402

from harness.browsers import Browsers, pages
from harness.case import BrowserTest
from harness.importing import ImportWindow
from harness.portal import APPEARANCE, SCHEME, USED, Portal, without_other_programs
from harness.wait import until, until_equal

NO_PREFERENCE, DARK, LIGHT = (GLib.Variant("u", each) for each in range(3))
# A page that tells at the start, and whenever that changes, how it is to look.
TELLS = """let count = 0;
const query = matchMedia('(prefers-color-scheme: dark)');
const tell = () => fetch(`/report/${query.matches ? 'dark' : 'light'}-${++count}`);
query.addEventListener('change', tell);
tell();"""


class PortalTest(BrowserTest):
    def setUp(self):
        super().setUp()
        self.portal = Portal(self.display.bus_address)
        self.addCleanup(self.portal.stop)


class AppearanceTest(PortalTest):
    def begin(self, scheme):
        self.portal.scheme = scheme
        self.app.start(self.server.script_page("/page", TELLS))
        self.assertEqual(self.portal.wait_until_asked("Read"), [APPEARANCE, SCHEME])

    def wait_for(self, *reports):
        """Waits for one of these."""
        until(lambda: set(reports) & set(self.server.reports()), f"the page to tell {reports}",
              self.server.reports)

    def test_pages_are_dark_where_that_is_preferred(self):
        self.begin(DARK)

        self.wait_for("dark-1", "dark-2")  # the page may have come before the answer

    def test_a_page_follows_while_the_preference_changes(self):
        self.begin(NO_PREFERENCE)
        self.wait_for("light-1")

        self.portal.tell(DARK)
        self.wait_for("dark-2")
        self.portal.tell(LIGHT)
        self.wait_for("light-3")
        self.portal.tell(DARK)
        self.wait_for("dark-4")
        self.portal.tell(NO_PREFERENCE)

        self.wait_for("light-5")

    def test_what_means_nothing_changes_nothing(self):
        self.begin(GLib.Variant("s", "dark"))
        self.wait_for("light-1")

        self.portal.tell(GLib.Variant("s", "dark"))
        self.portal.tell(GLib.Variant("u", 99))
        self.portal.tell(DARK, key="contrast")
        self.portal.tell(DARK)

        self.wait_for("dark-2")


class NoPortalTest(BrowserTest):
    def test_the_toolkit_decides(self):
        self.app.start(self.server.script_page("/page", TELLS))

        self.server.wait_for_report("light-1")


class SandboxedTest(PortalTest):
    """The program uses the portal wherever there is one, as it does in a sandbox."""

    environment = USED | without_other_programs()

    def test_the_portal_chooses_files(self):
        marked = pages("kept.example", 2)
        file = Browsers(self.home).export(marked)
        self.portal.chosen = [file.as_uri()]
        self.app.start()
        self.app.app_action("importBookmarks")
        importing = ImportWindow(self.windows, self.hands)
        importing.wait_until_open()

        importing.button("From a file…").press()

        title = self.portal.wait_until_asked("OpenFile")[1]
        self.assertEqual(title, "Choose a bookmarks file you exported from Firefox or another browser.")
        importing.wait_for_message("Added 2 bookmarks.")
        self.assertEqual(sorted(self.saved.bookmarks()), [url for url, _ in marked])

    def test_the_portal_opens_addresses_for_other_programs(self):
        self.start_and_open(self.server.page("/page"))

        self.app.action("openInDefaultBrowser")

        self.assertEqual(self.portal.wait_until_asked("OpenURI")[1], self.server.url("/page"))
