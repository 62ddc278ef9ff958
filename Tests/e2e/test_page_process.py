"""The processes that hold pages: their sudden end, and their end with their tabs."""

from harness.case import BrowserTest
from harness.wait import until, until_equal


class PageProcessTest(BrowserTest):
    def test_page_comes_back_once_after_its_process_was_killed(self):
        page, other = self.server.pages("/page", "/other")
        self.start_and_open(page)

        self.app.kill_page_processes()
        self.server.wait_for("/page", times=2)
        self.wait_until_loaded()
        until(self.app.page_processes, "a new page process")

        killed = self.app.page_processes()
        self.app.kill_page_processes()
        until(lambda: not set(killed) & set(self.app.page_processes()), "the end of the process")
        self.open(other)
        self.assertEqual(self.saved.session(), [page, other])
        self.assertEqual(self.server.asked("/page"), 2)
        # Its title went with the process; the site stands in for it.
        self.wait_for_tabs("New tab", "127.0.0.1", "other")

        self.app.action("selectTab2")
        self.app.action("reload")
        self.server.wait_for("/page", times=3)

    def test_closed_and_parked_tabs_leave_no_process(self):
        urls = self.server.pages("/a", "/b", "/c")
        self.start_and_open(*urls)
        count = lambda: len(self.app.page_processes())
        until_equal(count, 3, "the number of page processes")

        self.app.action("closeTab")
        until_equal(count, 2, "the number of page processes")
        self.app.action("park")
        until_equal(count, 1, "the number of page processes")
        self.app.action("closeTab")
        until_equal(count, 0, "the number of page processes")

        self.assertEqual(self.saved.session(), [])
        self.assertEqual(self.saved.shelf(), [urls[1]])
