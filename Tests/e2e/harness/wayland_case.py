"""What tests on a Wayland display stand on."""

from .case import BrowserTest
from .ordinary_user import OrdinaryUser
from .sway import SIZE, SwayDisplay
from .wait import until, until_equal
from .wayland_hands import WaylandHands

# What a page is filled with, so that all over it is seen.
BLUE = (0x20, 0x40, 0x80)
NEAR_CORNER = (1240, 780)
FILLED = "<style>html { background: #204080; color: white; font: 30px sans-serif }</style>"


class WaylandTest(BrowserTest):
    """A program of an ordinary user on a Wayland display. The process of the tests becomes that
    user's for good, so such tests stand in files of their own."""

    @classmethod
    def setUpClass(cls):
        cls.user = OrdinaryUser.shared()

    def setUp(self):
        super().setUp()
        self.display.join(self.home.runtime)
        # Out of the way: the pointer is in every picture.
        self.display.devices.pointer.move(0, SIZE[1] - 1)

    def make_display(self):
        return SwayDisplay.shared()

    def make_hands(self):
        return WaylandHands(self.app, self.display)

    def picture(self, name):
        self.user.leave(f"{name}.png", self.display.image())

    def picture_at_rest(self, name):
        """Leaves a picture of the display as soon as nothing moves on it."""
        self.display.settle()
        self.picture(name)

    # What is seen.

    def filled_page(self, path, body="", script=""):
        """A page that is all blue, but for its body; gives its address."""
        return self.server.script_page(path, script, FILLED + body)

    def start_filled(self, path="/page", body="", script=""):
        """Starts with a filled page alone, and waits until it is seen."""
        self.start_with_only(self.filled_page(path, body, script))
        self.wait_for_blue()

    def wait_for_blue(self, title="Orvu"):
        """Waits until a filled page is painted: its first picture may come seconds after its
        load."""
        self.wait_for_color(NEAR_CORNER, BLUE, title)

    def color(self, at, title="Orvu"):
        """The colour of a place in a window."""
        return self.display.color(*self.hands.on_display(at, title))

    def wait_for_color(self, at, color, title="Orvu"):
        until_equal(lambda: self.color(at, title), color, f"the colour at {at} of {title!r}",
                    deadline=60)

    def page_area(self, title="Orvu"):
        """Where the page is on the display."""
        card = self.page_card(title)
        return *self.hands.on_display(card[:2], title), *card[2:]

    def page_card(self, title="Orvu"):
        return until(lambda: self.windows.nodes("filler", "WebKitWebView", title),
                     "the page in the window")[0].box

    # Popovers.

    def popover(self):
        """The place on the display of the white popover over a blue page, as soon as it is shown
        and rests; what lies above the page is left out."""
        seen = []

        def rests():
            seen.append(self.display.white_box(self.page_area()))
            return len(seen) > 1 and seen[-1] and seen[-2] == seen[-1]
        until(rests, "a popover on the display", lambda: seen[-1])
        return seen[-1]

    def wait_for_no_popover(self):
        until(lambda: not self.display.white_box(self.page_area()), "the popover to go",
              lambda: self.display.white_box(self.page_area()))

    def click_in_popover(self, role, name):
        """Clicks with the pointer on a thing in the popover that is open."""
        self.hands.click_on_display(self.place_in_popover(role, name))

    def place_in_popover(self, role, name):
        part = self.windows.find(role, name)
        content = self.windows.find("filler", "GtkPopoverContent")
        return self.hands.in_popover(self.popover(), content, part)
