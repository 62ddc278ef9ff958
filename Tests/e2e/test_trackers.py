"""Well-known trackers are blocked where other sites ask for them."""

from harness.case import PRIVATE, BrowserTest
from harness.wait import until

LISTED = "www.google-analytics.com"


def asking(url):
    """A script that asks for something and reports when that has ended."""
    return (f"fetch('{url}', {{mode: 'no-cors'}}).catch(() => 0)"
            f".finally(() => fetch('/report/done-' + document.title))")


class TrackersTest(BrowserTest):
    trusts_test_authority = True

    def setUp(self):
        super().setUp()
        self.tracker = self.proxy.site(LISTED)
        self.tracker.page("/collect")

    def visit_asking_page(self, name):
        url = self.server.script_page(f"/{name}", asking(self.tracker.url("/collect")))
        self.app.start_again(url)
        self.server.wait_for_report(f"done-{name}")

    def test_a_page_of_another_site_can_not_reach_one(self):
        self.app.start()

        self.visit_asking_page("first")
        self.visit_asking_page("second")

        self.assertEqual(self.tracker.requests, [])

    def test_its_own_page_opens(self):
        self.app.start()

        self.app.start_again(self.tracker.url("/collect"))

        self.wait_for_visit(self.tracker.url("/collect"))

    def test_private_windows_are_protected_as_well(self):
        self.app.start()
        self.open_private_window()
        url = self.server.script_page("/hidden", asking(self.tracker.url("/collect")))

        self.type_address(url, PRIVATE)

        self.server.wait_for_report("done-hidden")
        self.assertEqual(self.tracker.requests, [])

    def test_switched_off_it_holds_for_windows_opened_afterwards(self):
        self.save_beforehand({"blockTrackers": 0})
        self.app.start()

        self.visit_asking_page("unprotected")

        until(lambda: self.tracker.asked("/collect") == 1, "the request to the tracker",
              lambda: self.tracker.requests)

    def test_restored_pages_of_a_cold_start_are_protected_from_the_first_request_on(self):
        url = self.server.script_page("/restored", asking(self.tracker.url("/collect")))
        self.app.start(url)
        self.wait_for_visit(url)

        for start in range(1, 6):
            self.app.quit()
            self.server.forget()
            self.app.start()
            self.server.wait_for_report("done-restored")

            self.assertEqual(self.tracker.requests, [], f"after start {start}")
