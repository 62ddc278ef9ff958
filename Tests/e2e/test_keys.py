"""Keys reach the window even over a page that keeps every key for itself."""

from harness.case import PRIVATE, BrowserTest
from harness.wait import until, until_equal

SWALLOW = """
addEventListener('keydown', event => {
    event.preventDefault();
    event.stopImmediatePropagation();
    fetch('/report/key-' + encodeURIComponent(event.key));
}, true);
"""
TELLS_WIDTH = """
const tell = () => fetch(`/report/${document.title}-width-${innerWidth}`);
addEventListener('resize', tell);
addEventListener('scroll', () => fetch('/report/scrolled'), {once: true});
tell();
"""


class KeysTest(BrowserTest):
    def start_with(self, *names):
        """Starts with one greedy page for each name, and the focus in the last one."""
        self.urls = [self.server.script_page(f"/{name}", SWALLOW + TELLS_WIDTH) for name in names]
        self.start_with_only(*self.urls)
        self.app.action("selectTab9")
        self.wait_for_session(*self.urls)
        self.hands.click()
        self.hands.press("x")
        self.server.wait_for_report("key-x")

    def widths(self, name):
        return [int(each) for each in self.server.reports(f"{name}-width-")]

    def start_with_polite(self, name="polite", body=""):
        """Starts with a page that takes no key but tells its width."""
        url = self.server.script_page(f"/{name}", TELLS_WIDTH, body)
        self.start_with_only(url)
        until(lambda: self.widths(name), "the page's width")
        self.hands.click()
        return url

    def test_zoom_keys_make_the_page_larger_and_smaller(self):
        self.start_with_polite("greedy")
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

    def test_a_page_may_keep_find_zoom_and_back_for_itself_but_not_the_tabs(self):
        self.start_with("greedy")
        plain = self.widths("greedy")[-1]

        for keys, key in (("ctrl+equal", "%3D"), ("ctrl+f", "f"), ("ctrl+bracketleft", "%5B"),
                          ("F3", "F3"), ("F12", "F12"),
                          ("ctrl+p", "p")):
            self.hands.press(keys)
            self.server.wait_for_report(f"key-{key}")
        self.hands.press("ctrl+t")
        self.wait_for_tabs("greedy", "New tab")

        self.assertEqual(self.widths("greedy")[-1], plain)
        self.assertEqual(self.windows.nodes("text", "Find in page"), [])
        self.assertNotIn("key-t", self.server.reports())

    def test_the_wheel_with_control_zooms_and_without_it_scrolls(self):
        self.start_with_polite(body="<div style='height:9000px'>long</div>")
        plain = self.widths("polite")[-1]

        self.hands.click(button=4, holding="ctrl")
        until(lambda: abs(self.widths("polite")[-1] - plain / 1.1) <= 1, "a tenth larger",
              lambda: self.widths("polite"))
        self.hands.click(button=5, holding="ctrl")
        until(lambda: self.widths("polite")[-1] == plain, "the plain size",
              lambda: self.widths("polite"))
        self.assertEqual(self.server.reports("scrolled"), [])

        self.hands.click(button=5)
        self.server.wait_for_report("scrolled")
        self.assertEqual(self.widths("polite")[-1], plain)

    def test_the_side_buttons_of_the_mouse_go_back_and_forward(self):
        first, second = self.server.pages("/first", "/second")
        self.start_with_only(first)
        self.type_address(second)
        self.wait_for_visit(second)

        self.hands.click(button=8)
        self.notch.wait_for_address(first)
        self.hands.click(button=9)
        self.notch.wait_for_address(second)

    def test_the_notch_opens_with_the_address_and_empty(self):
        page = self.server.page("/page")
        self.start_with_only(page)

        self.hands.press("alt+d")
        self.notch.wait_until_open()
        until_equal(lambda: self.notch.fields()[0].text(), page, "the text of the notch")
        self.hands.press("Escape")
        self.notch.wait_until_closed()

        self.hands.press("ctrl+k")
        self.notch.wait_until_open()
        until_equal(lambda: self.notch.fields()[0].text(), "", "the text of the notch")

    def test_the_engines_inspector_opens_and_not_the_toolkits(self):
        self.start_with_polite()
        for keys in ("F12", "ctrl+shift+i"):
            self.hands.press(keys)
        until(lambda: len(self.app.page_processes()) > 1, "the inspector's process")
        self.hands.press("ctrl+shift+d")

        self.assertEqual([each for each in self.windows.titles() if each != "Orvu"], [])

    def test_the_menus_for_text_act_on_what_had_the_keyboard(self):
        url = self.server.page("/form", "form", "<textarea style='position:fixed;inset:0' "
                               "oninput='fetch(`/report/text-${value}`)' autofocus></textarea>")
        self.start_with_only(url)
        self.wait_until_loaded()
        self.hands.click()
        self.hands.press("a", "b")
        self.server.wait_for_report("text-ab")

        self.choose_in_edit_menu("Select All")
        self.hands.go_on("c")

        self.server.wait_for_report("text-c")
        self.choose_in_edit_menu("Undo")
        self.server.wait_for_report("text-ab")

    def test_a_line_of_the_menu_that_leads_the_keyboard_elsewhere_does(self):
        self.start_with_only(self.server.page("/page", "page"))
        self.wait_until_loaded()
        for title, focus in (("Find in Page…", "Find in page"), ("History", "Search history"),
                             ("New Tab", "Search, type a site, or ask Kesto")):
            self.open_more_menu()
            self.windows.press("menu item", title)
            self.windows.wait_until_gone("menu item", "Actual Size")
            self.wait_for_focus(focus)

    def choose_in_edit_menu(self, title):
        self.click_on("push button", "More")
        self.windows.find("menu item", "Actual Size")
        self.windows.press("menu item", "Edit")
        self.windows.press("menu item", title)
        self.windows.wait_until_gone("menu item", "Actual Size")

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
