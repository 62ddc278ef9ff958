"""The badge at the head of the notch and the panel that it opens."""

from harness.case import BrowserTest
from harness.saved import TWO_PROFILES
from harness.site import CLEAR, CLEARED, INFO, SEARCH
from harness.wait import until, until_equal

KEPT = "orvuSitePermissions"


class SiteInfoTest(BrowserTest):
    trusts_test_authority = True

    def open_secure(self, host="www.shop.example"):
        shop = self.proxy.site(host)
        shop.page("/", "Shop")
        self.open(shop.url("/"))
        return shop

    def clear(self):
        self.site.open()
        self.windows.press("push button", CLEAR)
        self.windows.find("push button", CLEARED)

    # The badge.

    def test_the_badge_of_an_empty_tab_searches_and_opens_the_notch(self):
        self.app.start()
        badge = self.site.wait_for_badge(SEARCH)

        self.hands.click(at=badge.middle)

        self.notch.wait_until_open()
        self.assertFalse(self.site.is_open())

    def test_a_click_on_the_badge_of_a_page_opens_the_panel_and_not_the_notch(self):
        self.start_and_open(self.server.page("/page"))

        self.site.open()

        self.assertFalse(self.notch.is_open())

    def test_the_badge_is_reached_and_the_panel_closed_by_key(self):
        self.start_and_open(self.server.page("/page"))
        self.notch.resting()
        self.hands.press("F6")  # from the page to the bar: the open notch
        self.notch.wait_until_open()
        self.hands.go_on("Escape")
        self.notch.wait_until_closed()
        self.hands.press("shift+F6")
        self.go_by_key_to(INFO, "shift+Tab")

        self.hands.go_on("Return")
        self.site.wait_until_open()
        self.wait_for_focus("Camera: Ask")
        self.hands.go_on("Tab")
        self.wait_for_focus("Camera: Allow")
        self.hands.go_on("space")
        self.site.wait_for_choice("Camera", "Allow")
        self.hands.go_on("Escape")

        self.site.wait_until_closed()
        self.wait_for_focus(INFO)
        self.hands.go_on("space")
        self.site.wait_until_open()

    # The panel.

    def test_the_panel_of_a_page_over_http(self):
        self.start_and_open(self.server.page("/page"))

        self.site.open()

        self.assertEqual(self.site.texts(), [
            "127.0.0.1", "Connection isn't secure", "Tracker protection is on",
            "Well-known third-party trackers can't load here.", "PERMISSIONS",
            "Camera", "Ask", "Allow", "Block", "Microphone", "Ask", "Allow", "Block", CLEAR])
        for kind in ("Camera", "Microphone"):
            self.assertEqual(self.site.chosen(kind), ["Ask"])

    def test_the_panel_of_a_page_over_https_names_the_host_without_www(self):
        self.app.start()
        self.open_secure()

        self.site.open()

        self.assertEqual(self.site.texts()[:2], ["shop.example", "Connection is secure"])

    def test_a_choice_is_saved_at_once_under_the_host_without_www_for_all_profiles(self):
        self.app.start()
        self.open_secure()
        self.site.open()

        self.site.choose("Camera", "Block")
        self.site.choose("Microphone", "Allow")
        self.site.choose("Camera", "Ask")

        self.assertEqual(self.saved.document(KEPT), {"shop.example|camera": "ask",
                                                     "shop.example|microphone": "allow"})

    def test_choices_survive_a_restart(self):
        self.start_and_open(self.server.page("/page"))
        self.site.open()
        self.site.choose("Camera", "Block")
        self.app.quit()

        self.start_and_open(self.server.page("/again"))
        self.site.open()

        self.site.wait_for_choice("Camera", "Block")

    def test_a_choice_of_a_private_window_is_not_written_and_counts_there(self):
        page = self.server.page("/page", "Page")
        self.start_and_open(page)
        private = self.open_private_site(page)
        private.open()

        private.choose("Camera", "Block")

        self.assertIsNone(self.saved.document(KEPT))
        self.hands.go_on("Escape")
        private.wait_until_closed()
        self.hands.take()
        self.site.open()
        self.assertEqual(self.site.chosen("Camera"), ["Ask"])

    def test_the_panel_follows_its_tab_and_closes_with_it(self):
        self.start_and_open(*self.server.pages("/one"))
        self.open_secure()
        self.site.open()

        self.app.action("goBack")  # this tab has nowhere to go
        self.assertTrue(self.site.is_open())
        self.app.action("selectTab2")

        self.site.wait_until_closed()

    def test_the_panel_makes_way_for_the_notch(self):
        self.start_and_open(self.server.page("/page"))
        self.site.open()

        self.app.action("editAddress")

        self.site.wait_until_closed()
        self.notch.wait_until_open()

    # Clearing.

    def cookie_page(self, path, host):
        """A page that brings a cookie and reports what it finds when it is loaded anew."""
        self.server.page(path, path[1:], f"<script>fetch('/report{path}-' + "
                         "(localStorage.kept || 'none')); localStorage.kept = 'value'</script>",
                         [("Set-Cookie", f"kept={path[1:]}; Max-Age=86400")])
        return self.server.url(path, host)

    def test_clearing_removes_what_this_site_stored_and_loads_the_page_anew(self):
        here = self.cookie_page("/here", "127.0.0.1")
        other = self.cookie_page("/other", "localhost")
        self.start_and_open(other, here)
        self.server.wait_for_report("here-none")

        self.clear()

        self.server.wait_for("/here", times=2)
        until_equal(lambda: self.server.cookies_for("/here"), [None, None],
                    "the cookies that were sent")
        until(lambda: self.server.reports().count("here-none") == 2, "an empty storage",
              self.server.reports)
        self.app.start_again(other)
        self.server.wait_for("/other", times=2)
        self.assertEqual(self.server.cookies_for("/other"), [None, "kept=other"])
        self.server.wait_for_report("other-value")

    def test_profiles_share_choices_but_not_what_is_cleared(self):
        page = self.cookie_page("/page", "127.0.0.1")
        self.save_beforehand(TWO_PROFILES)
        self.start_and_open(page)
        self.hands.press("alt+2")
        self.wait_for_tabs("New tab")
        self.notch.go_to(page)
        self.server.wait_for("/page", times=2)
        self.site.open()
        self.site.choose("Camera", "Block")
        self.windows.press("push button", CLEAR)
        self.server.wait_for("/page", times=3)

        self.hands.go_on("Escape")
        self.site.wait_until_closed()
        self.hands.press("alt+1")
        self.server.wait_for("/page", times=4)
        self.site.open()

        self.site.wait_for_choice("Camera", "Block")
        self.assertEqual(self.server.cookies_for("/page"), [None, None, None, "kept=page"])

    def test_a_page_without_a_host_can_clear_nothing(self):
        page = self.home.folder / "page.html"
        page.write_text("<title>File</title>")
        kept = self.cookie_page("/kept", "127.0.0.1")
        self.start_and_open(kept)
        self.notch.go_to(page.as_uri())
        self.notch.wait_for_address(page.as_uri())

        self.site.open()

        self.assertFalse(self.windows.find("push button", CLEAR).is_sensitive)
        self.assertEqual(self.site.texts()[0], "Connection isn't secure")
