"""Pages of results in the shapes of four engines, under the engines' own names: what the card lists of
each. What each lists stands beside it."""

import json
import pathlib
from urllib.parse import urlsplit

from harness import own_network

own_network.take()

from harness import results  # noqa: E402
from harness.case import BrowserTest  # noqa: E402
from harness.wait import until, until_equal  # noqa: E402

CORPUS = pathlib.Path(__file__).resolve().parents[1] / "engine/results-corpus"
ENGINES = {"google": ("www.google.com", "/search"), "bing": ("www.bing.com", "/search"),
           "duckduckgo": ("duckduckgo.com", "/"), "ecosia": ("www.ecosia.org", "/search")}
LISTED = 5
NOTHING = "Kesto couldn't find results on this page."


def site_of(result):
    """Whose page a result is, as the card says."""
    title, address, _, shown = result
    host = urlsplit(shown).hostname if shown and "://" in shown else urlsplit(address).hostname
    return host.replace("www.", "")


class SearchPagesTest(BrowserTest):
    trusts_test_authority = True

    def setUp(self):
        super().setUp()
        self.results = results.Results(self.windows)

    def expected(self, page, host):
        found = json.loads(page.with_suffix(".expected.json").read_text(encoding="utf-8"))
        absolute = [(title, f"https://{host}{address}" if address.startswith("/") else address,
                     snippet, shown) for title, address, snippet, shown in found]
        return [f"{number}: {result[0]}, {site_of(result)}"
                for number, result in enumerate(absolute[:LISTED], 1)]

    def check(self, engine):
        host, path = ENGINES[engine]
        site = self.proxy.site(host)
        pages = sorted(CORPUS.glob(f"{engine}-*.html"))
        self.assertGreaterEqual(len(pages), 6)
        self.app.start()
        for number, page in enumerate(pages):
            body = page.read_bytes()
            site.answers[path] = lambda handler, body=body: handler.reply(200, "text/html", body)
            with self.subTest(page.stem):
                self.app.hand_over(f"https://{host}{path}?q=page+{number}")
                self.results.wait_for_card()
                expected = self.expected(page, host)
                if expected:
                    until_equal(lambda: self.results.buttons()[1:], expected, "the sources")
                else:
                    until(lambda: NOTHING in self.results.texts(), "nothing to be found",
                          self.results.texts)
                    self.assertEqual(self.results.buttons(), [results.HIDE])
                self.app.action("closeTab")
                self.results.wait_for_no_card()

    def test_google(self):
        self.check("google")

    def test_bing(self):
        self.check("bing")

    def test_duckduckgo(self):
        self.check("duckduckgo")

    def test_ecosia(self):
        self.check("ecosia")
