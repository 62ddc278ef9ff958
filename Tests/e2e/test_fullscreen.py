"""A page that fills the screen says whose it is, and can always be left."""

from harness.case import BrowserTest
from harness.wait import until, until_equal

BLUE = (0x20, 0x40, 0x80)
ASKS = ("<style>html, body { background: #204080 }</style><script>document.onclick = () => "
        "document.documentElement.requestFullscreen();"
        "document.onkeydown = event => event.preventDefault();</script>")


class FullscreenTest(BrowserTest):
    def fill_the_screen(self):
        page = self.server.page("/film", body=ASKS)
        self.start_and_open(page)
        self.hands.click()
        until_equal(lambda: self.windows.nodes("list", "Tabs"), [], "the lists of tabs")

    def top(self):
        """The colour of a point at the left end of the notice, where there are no letters."""
        window = self.hands.window("Orvu")
        return self.display.color(window, self.hands.size()[0] // 2 - 150, 36)

    def wait_for_notice(self):
        until(lambda: max(self.top()) < 40, "the dark notice", self.top)

    def wait_until_gone(self):
        until_equal(self.top, BLUE, "the colour of the page where the notice was")

    def wait_until_left(self):
        until(lambda: self.windows.nodes("list", "Tabs"), "the list of tabs again")

    def test_a_notice_names_the_host_and_comes_again_at_the_top(self):
        self.fill_the_screen()

        self.wait_for_notice()
        self.picture("full-screen-notice")
        self.wait_until_gone()
        self.hands.hover((700, 300))
        # Places are told from within the window's frame, which is not there now.
        self.hands.hover((700, -3))
        self.wait_for_notice()
        self.hands.hover((700, 300))
        self.wait_until_gone()

    def test_escape_leaves_whatever_the_page_does_with_keys(self):
        self.fill_the_screen()

        self.hands.go_on("Escape")

        self.wait_until_left()

    def test_the_key_of_the_window_leaves_too(self):
        self.fill_the_screen()

        self.hands.go_on("F11")

        self.wait_until_left()

    def leave_for(self, script):
        """A page that fills the screen and goes elsewhere by a script; gives the other address."""
        self.server.page("/elsewhere")
        other = self.server.url("/elsewhere", "other.localhost")
        script = f"<script>const other = '{other}'; {script}</script>"
        page = self.server.page("/film", body=ASKS + script)
        self.start_and_open(page)
        self.hands.click()
        self.wait_for_visit(other)

    def test_a_page_of_another_host_does_not_get_the_screen(self):
        self.leave_for("document.onfullscreenchange = () => location = other")

        self.wait_until_left()

    def test_who_fills_the_screen_on_the_way_out_leaves_it_to_no_other(self):
        self.leave_for("document.addEventListener('click', () => location = other)")

        self.wait_until_left()
