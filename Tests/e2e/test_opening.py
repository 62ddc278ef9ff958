"""What pages open in new tabs, and what the target's server is told of them."""

from harness.case import BrowserTest
from harness.wait import until

PAGE, SAME, OTHER = "www.one.localhost", "files.one.localhost", "www.two.localhost"
ALL, NOT_STRICT = {"strict", "lax", "plain"}, {"lax", "plain"}


class OpeningTest(BrowserTest):
    def setUp(self):
        super().setUp()
        cookies = ["strict=1; SameSite=Strict", "lax=1; SameSite=Lax", "plain=1"]
        self.server.page("/cookies", headers=[("Set-Cookie", each) for each in cookies])
        self.server.page("/target")

    def at(self, host, path="/target"):
        return self.server.url(path, host)

    def start_at_link(self, host, attributes=""):
        """Starts with cookies of a host, at a page that is one large link to it."""
        self.server.link_page("/links", self.at(host), attributes)
        self.start_and_open(self.at(host, "/cookies"), self.at(PAGE, "/links"))

    def check_told(self, cookies, referrer, site):
        self.server.wait_for("/target")
        headers = self.server.requests_for("/target")[0].headers
        told = {each.split("=")[0] for each in headers.get("Cookie", "").split("; ") if each}
        self.assertEqual((told, headers.get("Referer"), headers.get("Sec-Fetch-Site")),
                         (cookies, referrer, site))
        self.wait_for_tabs("New tab", "cookies", "links", "target")
        self.assertEqual(self.saved.visited()[-1].split("/")[-1], "target")

    def check_followed_in_the_pages_name(self):
        self.check_told(NOT_STRICT, self.at(PAGE, "/"), "cross-site")
        self.check_cannot_go_back()

    def test_a_link_with_a_target_is_followed_in_the_pages_name(self):
        self.start_at_link(OTHER, "target=_blank")

        self.hands.click()

        self.check_followed_in_the_pages_name()

    def test_a_control_click_is_followed_in_the_pages_name(self):
        self.start_at_link(OTHER)

        self.hands.click(holding="ctrl")

        self.check_followed_in_the_pages_name()

    def test_a_middle_click_is_followed_in_the_pages_name(self):
        self.start_at_link(OTHER)

        self.hands.click(button=2)

        self.check_followed_in_the_pages_name()

    def check_cannot_go_back(self):
        self.app.action("selectTab4")
        self.wait_for_selected("target")
        until(lambda: not self.windows.find_named("Back (").is_sensitive,
              "a Back that leads nowhere")

    def test_a_link_to_the_same_site_gets_all_cookies(self):
        self.start_at_link(SAME, "target=_blank")

        self.hands.click()

        self.check_told(ALL, self.at(PAGE, "/"), "same-site")

    def test_a_link_that_tells_nothing_is_nobodys(self):
        self.start_at_link(SAME, "target=_blank rel=noreferrer")

        self.hands.click()

        self.check_told(NOT_STRICT, None, "cross-site")

    def open_from_menu(self):
        self.hands.click(button=3)
        self.windows.press("menu item", "Open in New Tab")

    def test_the_menu_of_a_link_opens_it_in_the_pages_name(self):
        self.start_at_link(OTHER)

        self.open_from_menu()

        self.check_told(NOT_STRICT, self.at(PAGE, "/"), "cross-site")

    def test_the_menu_of_a_link_within_a_site_takes_all_cookies(self):
        self.start_at_link(SAME)

        self.open_from_menu()

        self.check_told(ALL, self.at(PAGE, "/"), "same-site")

    def test_the_menu_of_a_link_in_a_frame_is_not_the_pages(self):
        self.server.link_page("/framed", self.at(PAGE))
        self.server.page("/links", body=f"<iframe src='{self.at(OTHER, '/framed')}' style='"
                         "position:fixed;inset:0;width:100%;height:100%'></iframe>")
        self.start_and_open(self.at(PAGE, "/cookies"), self.at(PAGE, "/links"))
        self.server.wait_for("/framed")

        self.open_from_menu()

        self.check_told(NOT_STRICT, None, "cross-site")

    def test_an_address_that_is_typed_is_the_persons_own(self):
        self.start_at_link(OTHER)
        self.app.action("newTab")

        self.type_address(self.at(OTHER))

        self.check_told(ALL, None, "none")
