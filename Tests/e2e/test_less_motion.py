"""The desktop's wish for less motion: pages learn of it, and what is the program's own stands still."""

from harness.case import BrowserTest
from harness.desktop_settings import DesktopSettings
from harness.wait import until

# A page that looks otherwise where less motion is wished, and tells so at the start and whenever
# that changes.
STYLED = """<style>p { color: green }
@media (prefers-reduced-motion: reduce) { p { color: red } }</style><p>A line"""
TELLS = """let count = 0;
const query = matchMedia('(prefers-reduced-motion: reduce)');
const tell = () => fetch(`/report/NAME-${query.matches ? 'less' : 'all'}-${++count}`);
query.addEventListener('change', tell);
tell();"""


class LessMotionTest(BrowserTest):
    def wish(self, animations):
        """The desktop lets things move, or not."""
        self.desktop.change(animations=animations, caret_blinks=False)

    def begin_with(self, animations):
        self.desktop = DesktopSettings(self.display, self.home.folder, animations=animations,
                                       caret_blinks=False)
        self.addCleanup(self.desktop.stop)

    def teller(self, name):
        self.server.script_page(f"/{name}", TELLS.replace("NAME", name), STYLED)
        return self.server.url(f"/{name}")

    def test_a_page_learns_of_the_wish_and_of_its_changes(self):
        self.begin_with(animations=False)
        self.app.start(self.teller("page"))
        self.server.wait_for_report("page-less-1")

        self.wish(animations=True)
        self.server.wait_for_report("page-all-2")
        self.wish(animations=False)

        self.server.wait_for_report("page-less-3")

    def test_so_do_pages_of_private_windows_and_those_behind_when_they_are_shown(self):
        self.begin_with(animations=True)
        self.start_and_open(self.teller("behind"), self.server.page("/front"))
        self.open_privately(self.teller("private"), "private")
        self.server.wait_for_report("behind-all-1")
        self.server.wait_for_report("private-all-1")

        self.wish(animations=False)

        self.server.wait_for_report("private-less-2")
        self.app.action("selectTab2")
        self.server.wait_for_report("behind-less-2")

    def test_a_saved_setting_of_the_toolkit_counts_as_well(self):
        settings = self.home.config / "gtk-4.0/settings.ini"
        settings.parent.mkdir()
        settings.write_text("[Settings]\ngtk-enable-animations=false\n")

        self.app.start(self.teller("page"))

        self.server.wait_for_report("page-less-1")

    def test_a_load_that_goes_on_stands_still_from_the_change_on_and_moves_again_after(self):
        self.begin_with(animations=True)
        slow, _ = self.server.slow("/slow")
        self.app.start()
        self.app.hand_over(slow)
        self.server.wait_for("/slow")
        self.hands.take()
        self.hands.rest()
        self.wait_until_it_moves()

        self.wish(animations=False)
        self.wait_until_it_stands_still()
        self.wish(animations=True)

        self.wait_until_it_moves()

    def looks(self, count):
        return [self.display.digest() for _ in range(count)]

    def wait_until_it_moves(self):
        until(lambda: len(set(self.looks(8))) >= 4, "pictures that are not the same")

    def wait_until_it_stands_still(self):
        until(lambda: len(set(self.looks(12))) == 1, "one picture all the time")
