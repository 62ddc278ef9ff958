"""What every scenario stands on."""

import os
import pathlib
import unittest

from . import devices
from .a11y import Windows
from .app import App, Home
from .authority import Authority
from .display import Display
from .keys import Hands
from .notch import Notch
from .proxy import Proxy
from .server import Server
from .site import Site
from .wait import until, until_equal

PRIVATE = "Orvu — Private"
# The names of the buttons in the top bar.
BACK, FORWARD, RELOAD = "Back (Ctrl+[) — hover to rewind", "Forward (Ctrl+])", "Reload (Ctrl+R)"


def artefacts():
    """Where pictures go."""
    default = pathlib.Path(__file__).resolve().parents[3] / "build/release/artefacts"
    folder = pathlib.Path(os.environ.get("ORVU_ARTEFACTS", default))
    folder.mkdir(parents=True, exist_ok=True)
    return folder


class BrowserTest(unittest.TestCase):
    """A fresh home, a server and a program that is not started yet. A test that fails leaves a
    picture of the display."""

    display_traits = {}
    # Whether the program trusts the hosts that the test puts behind the proxy.
    trusts_test_authority = False
    # Whether pages find a made-up camera and microphone.
    has_test_devices = False
    # What the program finds in its environment besides.
    environment = {}

    def setUp(self):
        self.display = self.make_display()
        self.home = Home()
        self.addCleanup(self.home.remove)
        self.server = Server()
        self.addCleanup(self.server.stop)
        self.proxy = Proxy()
        self.addCleanup(self.proxy.stop)
        environment = dict(self.environment)
        if self.trusts_test_authority:
            environment |= Authority.shared().environment()
        if self.has_test_devices:
            environment = devices.added_to(environment)
        self.app = App(self.display, self.home, self.proxy, environment)
        self.addCleanup(self._check_complaints)
        self.addCleanup(self.app.stop)
        self.addCleanup(self._leave_picture)
        self.saved = self.home.saved
        self.windows = Windows(self.app)
        self.addCleanup(self.windows.close)
        self.hands = self.make_hands()
        self.notch = Notch(self.windows, self.hands)
        self.site = Site(self.windows, self.hands)

    def make_display(self):
        return Display.shared(**self.display_traits)

    def make_hands(self):
        return Hands(self.app)

    def run(self, result=None):
        self._result = result
        return super().run(result)

    def picture(self, name):
        """Leaves a picture of the display under a name."""
        self.display.picture(artefacts() / f"{name}.png")

    def _leave_picture(self):
        broken = self._result.failures + self._result.errors if self._result else []
        if any(test is self for test, _ in broken):
            self.picture(f"failed-{self.id()}")
            print(f"\nThe pointer: {self.display.pointer()}\n"
                  f"The program wrote:\n{self.app.errors()}")

    def _check_complaints(self):
        """A broken promise of ours to toolkit or engine is a failure, whatever it led to."""
        self.assertEqual(self.app.complaints(), [], "what the program's libraries complained of")

    # Ways to begin.

    def save_beforehand(self, values):
        """Leaves saved values, as a previous run of the program would have."""
        self.app.start()
        self.app.quit()
        self.saved.put(values)

    def start_and_open(self, *urls):
        """Starts the program with pages in tabs behind the empty one of every new window."""
        self.app.start()
        self.open(*urls)

    def start_with_only(self, *urls):
        """Starts the program with one tab for each page and no other; the first is in front."""
        self.start_and_open(*urls)
        self.app.action("selectTab1")
        self.app.action("closeTab")
        until_equal(lambda: len(self.windows.tabs()), len(urls), "the number of tabs")

    # Pages.

    def open(self, *urls):
        """Opens pages in tabs of the ordinary window, each when the previous one has come."""
        for url in urls:
            self._open(url)

    def _open(self, url):
        before = self.saved.visited().count(url)
        self.app.hand_over(url)
        # Not the last visit: tabs of a previous run may still be loading, too.
        until(lambda: self.saved.visited().count(url) > before, f"a visit to {url}",
              self.saved.visited)

    def open_private_window(self):
        """Opens one as the second window; gives its notch."""
        self.app.app_action("newPrivateWindow")
        until_equal(self.app.windows, [1, 2], "the windows")
        return Notch(self.windows, self.hands, PRIVATE)

    def open_private_site(self, url):
        """Opens a page in a new private window, the second one; gives what that shows of its
        site."""
        self.open_private_window().go_to(url)
        return Site(self.windows, self.hands, PRIVATE)

    def open_privately(self, url, title):
        """Opens a page of that title in a new private window, the second one."""
        self.open_private_window()
        self.type_address(url, PRIVATE)
        self.wait_for_tabs(title, window=PRIVATE)

    def type_address(self, text, title="Orvu"):
        """Enters a text in the window of that title, the first one or the private second one."""
        self.app.action("editAddress", window=2 if title == PRIVATE else 1)
        self.hands.type(text, title=title)
        self.hands.press("Return", title=title)

    def wait_until_loaded(self):
        """Waits until the page in front is not loading."""
        self.windows.find("push button", RELOAD)

    def wait_for_visit(self, url):
        """Waits until a visit to `url` is the last one saved."""
        until(lambda: self.saved.visited()[-1:] == [url], f"{url} as the last visit",
              self.saved.visited)

    def bookmark_page(self):
        self.windows.press("push button", "Bookmark this page")
        self.windows.find("push button", "Remove bookmark")

    # Tabs.

    def wait_for_session(self, *urls):
        until_equal(self.saved.session, list(urls), "the saved tabs")

    def wait_for_tabs(self, *titles, window=None):
        until_equal(lambda: self.windows.tabs(window), list(titles), "the list of tabs")

    def wait_for_selected(self, title, window=None):
        until_equal(lambda: self.windows.selected_tabs(window), [title], "the tab in front")

    # Controls.

    def click_on(self, role, name, button=1):
        """Clicks with the pointer on a thing of the ordinary window."""
        self.hands.click(button, at=self.windows.find(role, name).middle)

    def double_click_for_focus(self, place, name):
        """Clicks twice until what is called like that has the keyboard. On a busy display the two
        may come so late after each other that they are two clicks; `place` gives where."""
        for _ in range(5):
            self.hands.double_click(place())
            try:
                return until_equal(self.focus, [name], "what has the keyboard", deadline=4)
            except AssertionError:
                continue
        return self.wait_for_focus(name)

    def open_more_menu(self):
        self.windows.find("push button", "More")
        self.windows.nodes("push button", "More")[-1].press()
        self.windows.find("menu item", "Actual Size")

    def focus(self):
        """The names of what has the keyboard."""
        return [node.name for node in self.windows.focused()]

    def wait_for_focus(self, name):
        until_equal(self.focus, [name], "what has the keyboard")

    def go_by_key_to(self, name, key="Tab", most=30):
        """Presses a key until something has the keyboard."""
        for _ in range(most):
            if self.focus() == [name]:
                return
            previous = self.windows.focused()
            self.hands.go_on(key)
            until(lambda was=previous: self._has_moved(was), f"the keyboard to leave {previous}")
        self.wait_for_focus(name)

    def _has_moved(self, previous):
        now = self.windows.focused()
        return now and not any(each.is_same(was) for each in now for was in previous)
