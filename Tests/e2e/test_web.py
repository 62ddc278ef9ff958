"""Hosts of the outside world, played on loopback and reached over https."""

from harness.case import BrowserTest


class WebTest(BrowserTest):
    trusts_test_authority = True

    def type_address(self, text):
        self.app.action("editAddress")
        self.hands.type(text)
        self.hands.press("Return")

    def test_typed_words_load_a_page_of_results(self):
        google = self.proxy.site("www.google.com")
        google.page("/search", "What was found")
        self.app.start()

        self.type_address("two words")

        self.wait_for_visit("https://www.google.com/search?q=two%20words")
        self.wait_for_tabs("What was found")
        request = google.requests_for("/search")[0]
        self.assertEqual((request.method, request.host, request.path, request.query),
                         ("GET", "www.google.com", "/search", [("q", "two words")]))
        self.assertIn("AppleWebKit", request.headers["User-Agent"])


class DistrustTest(BrowserTest):
    def test_program_trusts_only_the_authorities_of_the_machine(self):
        impostor = self.proxy.site("example.org")
        impostor.page("/")
        self.app.start()

        self.app.action("editAddress")
        self.hands.type("example.org")
        self.hands.press("Return")
        self.proxy.wait_for("CONNECT example.org:443")
        self.windows.find("push button", "Reload (Ctrl+R)")

        self.assertEqual(impostor.requests, [])
        self.assertEqual(self.saved.visits(), [])
