"""Clicks in pages, answers of servers, and what of it becomes tabs and visits."""

from harness.case import BrowserTest


class NavigationTest(BrowserTest):
    def check_stays_beside(self, page, new):
        """The page stays in front; the new one stands in a tab behind it."""
        self.wait_for_visit(self.server.url(new))
        self.assertEqual(self.saved.session(), [page, self.server.url(new)])
        self.wait_for_selected(page.rsplit("/", 1)[-1])

    def start_at_link(self):
        """Starts at a page that is one large link to /target; gives its address."""
        self.server.page("/target")
        page = self.server.link_page("/links", "/target")
        self.start_and_open(page)
        return page

    def test_click_follows_a_link_in_its_tab(self):
        self.start_at_link()

        self.hands.click()

        self.wait_for_visit(self.server.url("/target"))
        self.assertEqual(self.saved.session(), [self.server.url("/target")])

    def test_control_click_opens_a_tab_behind(self):
        page = self.start_at_link()

        self.hands.click(holding="ctrl")

        self.check_stays_beside(page, "/target")

    def test_middle_click_opens_a_tab_behind(self):
        page = self.start_at_link()

        self.hands.click(button=2)

        self.check_stays_beside(page, "/target")

    def test_links_for_new_windows_open_tabs_however_quickly_they_follow(self):
        self.server.pages("/one", "/two")
        halves = "".join(
            f"<a href='{href}' target={target} style='position:fixed;left:0;right:0;{place}:0;"
            "height:50%'>x</a>" for href, target, place in
            [("/one", "_blank", "top"), ("/two", "named", "bottom")])
        page = self.server.page("/links", body=halves)
        self.start_and_open(page)

        self.hands.click(at=(760, 200))
        self.hands.click(at=(760, 700))

        self.server.wait_for("/one", "/two")
        self.wait_for_session(page, self.server.url("/one"), self.server.url("/two"))
        self.wait_for_selected("links")

    def test_second_scripted_window_within_three_seconds_is_dropped(self):
        self.server.pages("/one", "/two")
        page = self.server.script_page(
            "/scripted", "onclick = () => { const first = window.open('/one');"
            "const second = window.open('/two'); fetch(`/report/${first}-${second}`) }")
        self.start_and_open(page)

        self.hands.click()

        self.server.wait_for_report("null-null")
        self.check_stays_beside(page, "/one")
        self.assertEqual(self.server.asked("/two"), 0)

    def test_script_may_open_a_window_without_a_click(self):
        self.server.pages("/one")
        page = self.server.script_page("/scripted", "onload = () => window.open('/one')")
        self.app.start()

        self.app.start_again(page)

        self.server.wait_for("/one")
        self.wait_for_session(page, self.server.url("/one"))

    def test_attachment_leaves_the_page_where_it_is(self):
        self.server.attachment("/file", "notes.html")
        page = self.server.link_page("/links", "/file")
        self.start_and_open(page)

        self.hands.click()
        self.server.wait_for("/file")
        self.wait_until_loaded()
        self.app.action("newTab")

        self.assertEqual(self.saved.session(), [page])
        self.assertEqual(self.saved.visited(), [page])

    def test_failed_load_leaves_the_former_page(self):
        self.server.dropped("/dropped")
        page = self.server.link_page("/links", "/dropped")
        self.start_and_open(page)

        self.hands.click()
        self.server.wait_for("/dropped")
        self.wait_until_loaded()
        self.app.action("reload")

        self.server.wait_for("/links", times=2)
        self.app.action("newTab")
        self.assertEqual(self.saved.session(), [page])
        self.assertEqual(self.saved.visited(), [page])

    def test_stopped_load_leaves_no_visit(self):
        slow, gate = self.server.slow("/slow")
        other = self.server.page("/other")
        self.app.start()
        self.app.start_again(slow)
        self.server.wait_for("/slow")

        self.windows.press("push button", "Stop")
        self.wait_until_loaded()
        gate.set()

        self.open(other)
        self.assertEqual(self.saved.visited(), [other])

    def test_redirect_leaves_only_its_end(self):
        self.server.redirect("/first", "/second")
        self.server.redirect("/second", "/end")
        end = self.server.page("/end", "The end")
        self.app.start()

        self.app.start_again(self.server.url("/first"))

        self.wait_for_visit(end)
        self.assertEqual(self.saved.visits(), [(end, "The end")])
        self.assertEqual(self.saved.session(), [end])

    def test_change_within_the_document_is_no_visit(self):
        page = self.server.script_page(
            "/document", "onclick = () => { history.pushState({}, '', '/pushed');"
            "fetch('/report/pushed') }")
        self.start_and_open(page)

        self.hands.click()
        self.server.wait_for_report("pushed")

        self.notch.wait_for_address(self.server.url("/pushed"))
        self.app.action("newTab")
        self.assertEqual(self.saved.session(), [self.server.url("/pushed")])
        self.assertEqual(self.saved.visited(), [page])

    def test_reload_asks_again_and_is_no_visit(self):
        page = self.server.page("/page")
        self.start_and_open(page)

        self.app.action("reload")

        self.server.wait_for("/page", times=2)
        self.wait_until_loaded()
        self.assertEqual(self.saved.visited(), [page])

    def test_back_and_forward_are_visits(self):
        page, target = self.start_at_link(), self.server.url("/target")
        self.hands.click()
        self.wait_for_visit(target)

        self.app.action("goBack")
        self.wait_for_visit(page)
        self.app.action("goForward")
        self.wait_for_visit(target)

        self.assertEqual(self.saved.visited(), [page, target, page, target])
