"""What a person types, and where it leads."""

from harness.case import BrowserTest

# What the open notch asks for by itself: the icons of its chips and of the engine, and suggestions.
# Over results the strip asks for the icons of the other engines.
BESIDE = {"wikipedia.org", "youtube.com", "maps.apple.com", "github.com", "google.com",
          "suggestqueries.google.com", "ac.ecosia.org", "duckduckgo.com", "bing.com", "ecosia.org"}

class TypedTextTest(BrowserTest):
    def check_leads_to(self, text, host, address):
        """Typed text asks the host for its page, and the tab then has the address."""
        self.app.start()

        self.type_address(text)
        self.proxy.wait_for(f"CONNECT {host}:443")
        self.hands.press("ctrl+t")

        self.wait_for_session(address)
        icons = host.removeprefix("www.")
        self.assertEqual(self.hosts_asked() - BESIDE, {host, icons} - BESIDE)

    def hosts_asked(self):
        return {request.removeprefix("CONNECT ").removesuffix(":443")
                for request in self.proxy.asked()}

    def test_full_address_loads_its_page(self):
        page = self.server.page("/full", "A full address")
        self.app.start()

        self.type_address(page)

        self.wait_for_visit(page)
        self.wait_for_tabs("A full address")
        self.assertEqual(self.saved.visits(), [(page, "A full address")])
        self.assertEqual(self.hosts_asked() - BESIDE, set())
        self.picture("typed-address")

    def test_address_of_the_page_stands_in_the_field(self):
        page = self.server.page("/shown")
        self.start_and_open(page)

        self.app.action("editAddress")

        self.notch.wait_for_text(page)

    def test_bare_site_loads_over_https(self):
        self.check_leads_to("example.org", "example.org", "https://example.org/")

    def test_words_are_searched_with_the_first_engine(self):
        self.check_leads_to("two words", "www.google.com",
                            "https://www.google.com/search?q=two%20words")

    def test_bang_searches_its_own_site(self):
        self.check_leads_to("!w cats & dogs", "en.wikipedia.org",
                            "https://en.wikipedia.org/w/index.php?search=cats%20%26%20dogs")

    def test_words_are_searched_with_the_chosen_engine(self):
        self.save_beforehand({"searchEngine": "ecosia"})

        self.check_leads_to("word", "www.ecosia.org", "https://www.ecosia.org/search?q=word")
