"""Suggestions from search engines: what is shown, and what is never sent."""

from harness.case import BrowserTest
from harness.suggestions import Suggestions, results_page
from harness.wait import until, until_equal


class SuggestionsTest(BrowserTest):
    trusts_test_authority = True

    def setUp(self):
        super().setUp()
        self.service = Suggestions(self.proxy)
        self.google = results_page(self.proxy)

    def start_with(self, **settings):
        """Starts with settings that were chosen before."""
        self.save_beforehand(settings)
        self.app.start()

    def test_suggestions_stand_in_the_order_of_the_engine(self):
        self.service.suggest("exam", "example", "examples of", "exam", "taking an exam")
        self.app.start()

        self.notch.write("exam")

        self.notch.wait_for_rows("example", "examples of", "taking an exam")
        request = self.service.requests()[-1]
        self.assertEqual((request.method, request.host, request.query),
                         ("GET", "suggestqueries.google.com", [("client", "firefox"), ("q", "exam")]))

    def test_suggestion_is_searched(self):
        self.service.suggest("exam", "example", "examples of")
        self.app.start()
        self.notch.write("exam")

        self.notch.choose("examples of")
        self.hands.go_on("Return")

        self.wait_for_visit("https://www.google.com/search?q=examples%20of")
        self.notch.wait_until_closed()

    def test_tab_completes_with_the_first_suggestion(self):
        self.service.suggest("exam", "exam results", "example")
        self.app.start()
        self.notch.write("exam")
        self.notch.wait_for_rows("exam results", "example")

        self.hands.go_on("Tab")

        self.notch.wait_for_text("exam results")

    def test_mistyped_word_is_put_right_by_a_button(self):
        self.service.suggest("exmaples", "examples", "examples of")
        self.app.start()
        self.notch.write("exmaples")

        self.hands.click(at=self.windows.find_named("Did you mean").middle)

        self.notch.wait_for_text("examples")
        self.assertTrue(self.notch.is_open())
        until(lambda: not [name for name in self.notch.buttons() if "Did you mean" in name],
              "the offer to go", self.notch.buttons)
        self.notch.wait_for_button("Search “examples”")

    def test_each_engine_is_asked_in_its_own_way(self):
        items = {"duckduckgo": [("type", "list"), ("q", "a & b")], "bing": [("query", "a & b")],
                 "ecosia": [("type", "list"), ("q", "a & b")]}
        names = {"duckduckgo": "DuckDuckGo", "bing": "Bing", "ecosia": "Ecosia"}
        for engine, query in items.items():
            with self.subTest(engine):
                service = Suggestions(self.proxy, engine)
                service.suggest("a & b", "an answer")
                self.start_with(searchEngine=engine)

                self.notch.write("a & b")

                self.notch.wait_for_rows("an answer")
                self.assertIn(f"Suggestions from {names[engine]}", self.notch.labels())
                self.assertEqual(service.requests()[-1].query, query)
                self.app.quit()
        self.assertEqual(self.service.asked(), [])

    def test_switched_off_nothing_is_sent(self):
        self.start_with(searchSuggestions=False)

        self.notch.write("exam")

        until(lambda: "Suggestions are off" in self.notch.labels(), "the footer",
              self.notch.labels)
        self.check_nothing_was_sent()

    def check_nothing_was_sent(self):
        """Sends a later request of the same kind, by which the previous would have come."""
        self.hands.go_on("Return")
        self.wait_for_visit("https://www.google.com/search?q=exam")
        self.assertEqual(self.service.asked(), [])
        self.assertNotIn("CONNECT suggestqueries.google.com:443", self.proxy.asked())

    def test_private_texts_are_not_sent(self):
        self.app.start()
        for text in ("me@example.org", "4111 1111 1111 1111", "example.org", "http is this",
                     "x" * 121):
            self.notch.write(text)
        self.notch.write("plain words")

        self.service.wait_for("plain words")

        sent = self.service.asked()
        for secret in ("example.org", "1111 1111", "http ", "x" * 121):
            self.assertEqual([text for text in sent if secret in text], [])

    def test_broken_answers_leave_the_list_of_searches_empty_and_the_notch_sane(self):
        self.service.suggest_as_bytes("latin", '["latin", ["latin größe"]]'.encode("latin-1"))
        self.app.start()
        for number, body in enumerate((b"", b"<html>", b"[", b'["x", [1]]', b"{}", b"\x00" * 9)):
            self.service.suggest_as_bytes(f"broken {number}", body)
            self.notch.write(f"broken {number}")
            self.service.wait_for(f"broken {number}")
            until_equal(self.notch.rows, [], "the candidates")

        self.notch.write("latin")

        self.notch.wait_for_rows("latin größe")

    def test_answer_that_never_comes_keeps_the_list(self):
        self.service.suggest("exam", "example", "exam results")
        self.service.suggest_late("examp", "examplary")
        self.app.start()
        self.notch.write("exam")
        self.notch.wait_for_rows("example", "exam results")

        self.hands.type_on("p")
        self.service.wait_for("examp")

        self.assertEqual(self.notch.rows(), ["example", "exam results"])

    def test_late_answer_of_a_former_text_is_dropped(self):
        late = self.service.suggest_late("exa", "exaggerate")
        self.service.suggest("exam", "example")
        self.app.start()
        self.notch.write("exa")
        self.service.wait_for("exa")
        self.hands.type_on("m")
        self.notch.wait_for_rows("example")

        late.set()
        self.notch.write("other")
        self.service.wait_for("other")

        self.assertNotIn("exaggerate", self.notch.rows())

    def test_return_does_not_wait_for_an_answer_and_goes_where_was_typed(self):
        late = self.service.suggest_late("exam", "exam results")
        self.app.start()
        self.notch.write("exam")
        self.service.wait_for("exam")

        self.hands.go_on("Return")
        late.set()

        self.wait_for_visit("https://www.google.com/search?q=exam")
        self.assertEqual(self.saved.visited(), ["https://www.google.com/search?q=exam"])

    def test_no_cookie_is_ever_sent_though_pages_of_the_host_have_one(self):
        service = Suggestions(self.proxy, "duckduckgo")
        service.site.page("/", "Results", headers=[("Set-Cookie", "who=you; Max-Age=9999; Path=/")])
        self.start_with(searchEngine="duckduckgo")
        self.notch.go_to("one")
        self.wait_for_visit("https://duckduckgo.com/?q=one")
        self.notch.go_to("two")
        self.wait_for_visit("https://duckduckgo.com/?q=two")
        self.assertEqual(service.site.requests_for("/")[-1].headers["Cookie"], "who=you")

        self.notch.write("three")

        service.wait_for("three")
        self.assertGreater(len(service.requests()), 0)
        self.assertEqual([request for request in service.requests()
                          if request.headers["Cookie"] or request.headers["Authorization"]], [])

    def test_cookies_of_the_service_are_not_kept(self):
        self.service.site.answers[self.service.path] = lambda handler: handler.reply(
            200, "text/javascript", "[]", [("Set-Cookie", "who=you; Max-Age=9999")])
        self.app.start()
        self.notch.write("one")
        self.service.wait_for("one")

        self.notch.write("two")

        self.service.wait_for("two")
        self.assertEqual([request for request in self.service.requests()
                          if request.headers["Cookie"]], [])

    def test_private_window_asks_for_nothing_and_has_no_footer(self):
        self.service.suggest("exam", "example")
        self.app.start()
        notch = self.open_private_window()

        notch.write("exam")
        notch.wait_for_button("Ask Kesto “exam”")

        self.assertNotIn("Wikipedia", notch.buttons())
        self.assertEqual([label for label in notch.labels() if "Suggestions" in label], [])
        self.hands.go_on("Return")
        self.google.wait_for("/search")
        self.assertEqual(self.service.asked(), [])
        self.assertNotIn("CONNECT suggestqueries.google.com:443", self.proxy.asked())


class FastTypingTest(BrowserTest):
    trusts_test_authority = True

    WORDS = ["one", "exam", "weather", "bees and maps", "knife sharpening", "x", "rye bread",
             "ex", "exa", "departures", "on", "trains to lund", "a b c d", "example org",
             "zebra"] * 3

    def test_fast_typing_and_return_go_where_was_typed(self):
        google = results_page(self.proxy)
        service = Suggestions(self.proxy)
        for word in self.WORDS:
            for end in range(1, len(word) + 1):
                service.suggest_after(0.03, word[:end], f"{word[:end]} elsewhere", "elsewhere")
        self.app.start()
        self.hands.take()

        for word in self.WORDS:
            self.hands.enter_at_once("ctrl+l", word)
            address = "https://www.google.com/search?q=" + word.replace(" ", "%20")
            self.wait_for_visit(address)

        searched = [dict(request.query)["q"] for request in google.requests_for("/search")]
        self.assertEqual(searched, self.WORDS)
