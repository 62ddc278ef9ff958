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
from .wait import until, until_equal

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

    def setUp(self):
        self.display = Display.shared(**self.display_traits)
        self.home = Home()
        self.addCleanup(self.home.remove)
        self.server = Server()
        self.addCleanup(self.server.stop)
        self.proxy = Proxy()
        self.addCleanup(self.proxy.stop)
        environment = Authority.shared().environment() if self.trusts_test_authority else {}
        if self.has_test_devices:
            environment = devices.added_to(environment)
        self.app = App(self.display, self.home, self.proxy, environment)
        self.addCleanup(self.app.stop)
        self.addCleanup(self._leave_picture)
        self.saved = self.home.saved
        self.windows = Windows(self.app)
        self.hands = Hands(self.app)
        self.notch = Notch(self.windows, self.hands)

    def run(self, result=None):
        self._result = result
        return super().run(result)

    def picture(self, name):
        """Leaves a picture of the display under a name."""
        self.display.picture(artefacts() / f"{name}.png")

    def _leave_picture(self):
        broken = self._result.failures + self._result.errors if self._result else []
        if any(test is self for test, _ in broken):
            self.picture(f"failed-{self.id().rsplit('.', 1)[-1]}")
            print(f"\nThe program wrote:\n{self.app.errors()}")

    # What many scenarios do.

    def open(self, *urls):
        """Opens pages in tabs of the ordinary window, each when the former one has come."""
        for url in urls:
            self.app.start_again(url)
            self.wait_for_visit(url)

    def wait_for_visit(self, url):
        """Waits until a visit to `url` is the last one saved."""
        until(lambda: self.saved.visited()[-1:] == [url], f"{url} as the last visit",
              self.saved.visited)

    def wait_for_session(self, *urls):
        until_equal(self.saved.session, list(urls), "the saved tabs")

    def wait_for_tabs(self, *titles, window=None):
        until_equal(lambda: self.windows.tabs(window), list(titles), "the list of tabs")

    def wait_for_selected(self, title, window=None):
        until_equal(lambda: self.windows.selected_tabs(window), [title], "the tab in front")
