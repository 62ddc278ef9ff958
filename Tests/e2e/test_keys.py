"""Keys reach the window even over a page that keeps every key for itself."""

from harness.case import PRIVATE, BrowserTest
from harness.wait import until, until_equal

SWALLOW = """
addEventListener('keydown', event => {
    event.preventDefault();
    event.stopImmediatePropagation();
    fetch('/report/key-' + encodeURIComponent(event.key));
}, true);
const tell = () => fetch(`/report/${document.title}-width-${innerWidth}`);
addEventListener('resize', tell);
tell();
"""


class KeysTest(BrowserTest):
    def start_with(self, *names):
        """Starts with one greedy page for each name, and the focus in the last one."""
        self.urls = [self.server.script_page(f"/{name}", SWALLOW) for name in names]
        self.start_with_only(*self.urls)
        self.app.action("selectTab9")
        self.wait_for_session(*self.urls)
        self.hands.click()
        self.hands.press("x")
        self.server.wait_for_report("key-x")

    def widths(self, name):
        return [int(each) for each in self.server.reports(f"{name}-width-")]

    def test_zoom_keys_make_the_page_larger_and_smaller(self):
        self.start_with("greedy")
        plain = self.widths("greedy")[-1]

        self.hands.press("ctrl+equal")
        until(lambda: abs(self.widths("greedy")[-1] - plain / 1.1) <= 1, "a tenth larger",
              lambda: self.widths("greedy"))
        self.hands.press("ctrl+0")
        until(lambda: self.widths("greedy")[-1] == plain, "the plain size",
              lambda: self.widths("greedy"))
        self.hands.press("ctrl+minus")
        until(lambda: abs(self.widths("greedy")[-1] - plain / 0.9) <= 1, "a tenth smaller",
              lambda: self.widths("greedy"))

        self.assertEqual([key for key in self.server.reports("key-")
                          if key not in ("x", "Control")], [])

    def test_digits_select_tabs(self):
        self.start_with("a", "b", "c")

        for key, name in (("ctrl+1", "a"), ("ctrl+2", "b"), ("ctrl+9", "c"), ("ctrl+1", "a")):
            self.hands.press(key)
            self.wait_for_selected(name)

        self.hands.press("ctrl+5")
        self.hands.press("ctrl+2")
        self.wait_for_selected("b")

    def test_tabs_close_and_come_back(self):
        self.start_with("a", "b")

        self.hands.press("ctrl+w")
        self.wait_for_session(self.urls[0])
        self.hands.press("ctrl+shift+t")

        self.wait_for_session(*self.urls)
        self.wait_for_selected("b")

    def test_keys_of_the_window_work_over_the_page(self):
        self.start_with("a")

        self.hands.press("ctrl+d")
        until_equal(self.saved.bookmarks, self.urls, "the bookmarks")
        self.hands.press("ctrl+r")
        self.server.wait_for("/a", times=2)
        self.hands.press("F5")
        self.server.wait_for("/a", times=3)
        self.hands.press("ctrl+t")
        self.wait_for_tabs("a", "New tab")
        self.hands.press("ctrl+shift+n")
        until_equal(self.windows.titles, ["Orvu", PRIVATE], "the windows")
        self.hands.press("ctrl+shift+w", title=PRIVATE)
        until_equal(self.windows.titles, ["Orvu"], "the windows")
