"""Hosts of the outside world, played on loopback and reached over https."""

from harness.case import BrowserTest
from harness.suggestions import results_page


class WebTest(BrowserTest):
    trusts_test_authority = True

    def test_typed_words_load_a_page_of_results(self):
        google = results_page(self.proxy, "What was found")
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

        self.type_address("example.org")
        self.proxy.wait_for("CONNECT example.org:443")
        self.wait_until_loaded()

        self.assertEqual(impostor.requests, [])
        self.assertEqual(self.saved.visits(), [])
