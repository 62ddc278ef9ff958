"""What stands around search results: the strip, and the answer from a model server that the test plays.
The engines and the pages they lead to are played behind the proxy, and there is no other network."""

from harness import own_network

own_network.take()

from harness import results  # noqa: E402
from harness.case import PRIVATE, BrowserTest  # noqa: E402
from harness.direct import DirectSite  # noqa: E402
from harness.models import MISSING, ModelServer  # noqa: E402
from harness.results import BING, GOOGLE, HIDE, SEARCH, SHOW  # noqa: E402
from harness.settings import SettingsWindow  # noqa: E402
from harness.wait import until, until_equal  # noqa: E402

THINKING, DONE = "Read 4 results · on this computer", "From 4 results · on this computer"
REPLY = "Hold it at <b>fifteen</b> degrees [1][2]. See [more].\nNext: whetstones | - honing steel"
ANSWER = "Hold it at fifteen degrees 1 2. See [more]."
KINDS = ["All", "Images", "Videos", "News", "Shopping"]
SITES = ["Search Wikipedia", "Search YouTube"]
FIRST = "1: Sharpening with a whetstone, stones.example"


class SearchAnswersTest(BrowserTest):
    trusts_test_authority = True

    def setUp(self):
        super().setUp()
        self.results = results.Results(self.windows)
        self.found = results.knives()
        self.google = results.serve_results(self.proxy, self.found)

    def play_model(self):
        server = ModelServer()
        server.reply = REPLY
        self.addCleanup(server.stop)
        return server

    def start_with_results(self):
        self.start_and_open(SEARCH)
        self.results.wait_for_card()

    def start_with_answer(self):
        server = self.play_model()
        self.start_with_results()
        self.results.wait_for_words(ANSWER)
        return server

    def site_of(self, number):
        return self.proxy.site(self.found[number].host)

    def reading_of(self, number):
        """The requests for the page of a result, oldest first."""
        return self.site_of(number).requests_for(self.found[number].path)


class AnswerTest(SearchAnswersTest):
    def test_an_answer_stands_beside_the_results(self):
        server = self.start_with_answer()

        self.assertEqual(self.results.texts(),
                         ["Kesto", DONE, "how to sharpen knives", ANSWER, "ASK NEXT"])
        self.assertEqual(self.results.buttons(),
                         [HIDE, FIRST, "2: What a honing steel does, steel.example",
                          "3: How often to sharpen kitchen knives, kitchen.example",
                          "4: The right angle for every knife, angles.example",
                          "5: Knives and stones, shop.example", "whetstones", "honing steel"])
        question = server.wait_for_question()
        for words in ("Hold the blade at fifteen degrees.", "A steel takes no metal off.",
                      "Test the edge on a sheet of paper.", "[4] The right angle",
                      "Fifteen to twenty degrees.", "My question: how to sharpen knives"):
            self.assertIn(words, question)
        self.assertNotIn("Only three pages are read", question)

    def test_pages_are_read_without_a_trace(self):
        self.start_with_answer()

        for number in range(3):
            reading, = self.reading_of(number)
            self.assertIsNone(reading.headers.get("Cookie"))
            self.assertIsNone(reading.headers.get("Referer"))
            self.assertTrue(reading.headers["User-Agent"].startswith(
                "Mozilla/5.0 (Macintosh; Intel Mac OS X 10_15_7) AppleWebKit/605.1.15"))
        self.assertEqual(self.reading_of(3), [])
        self.assertEqual(self.saved.visited(), [SEARCH])
        self.app.action("newTab")
        self.open(self.found[0].address)
        self.assertIsNone(self.reading_of(0)[-1].headers.get("Cookie"))

    def test_while_it_thinks_the_sources_can_be_opened(self):
        server = self.play_model()
        gate = server.hold()
        self.start_with_results()
        self.results.wait_for_words(THINKING)

        self.assertEqual(len(self.results.buttons()), 6)
        self.results.press(FIRST)
        self.results.wait_for_no_card()
        self.results.wait_for_no_strip()
        until_equal(lambda: self.saved.visited()[-1], self.found[0].address, "the last visit")
        self.assertEqual(len(self.windows.tabs()), 2)
        gate.set()

    def test_a_proposed_search_is_asked_of_the_same_pages(self):
        server = self.start_with_answer()
        server.reply = "Buy a fine one."
        self.results.press("whetstones")

        self.results.wait_for_words("Buy a fine one.")
        self.assertEqual(self.results.texts(),
                         ["Kesto", DONE, "whetstones", "Buy a fine one."])
        self.assertEqual(len(self.results.buttons()), 6)
        self.assertIn("A steel takes no metal off.", server.questions()[-1])
        self.assertEqual(len(self.reading_of(0)), 1)
        self.assertEqual(self.google.asked("/search"), 1)

    def test_hidden_it_comes_back_and_begins_anew(self):
        server = self.start_with_answer()
        self.results.press(HIDE)
        self.results.wait_for_no_card()
        self.results.wait_for_links(*KINDS, "Maps", "Search DuckDuckGo", "Search Bing",
                                    "Search Ecosia", *SITES, SHOW)
        self.assertEqual(self.saved.value("searchAnswerOpen"), 0)

        self.results.find_link(SHOW).press()
        self.results.wait_for_words(ANSWER)
        self.assertEqual(len(server.questions()), 2)
        self.assertNotIn(SHOW, self.results.links())

    def test_hidden_in_one_window_it_is_hidden_in_all(self):
        self.start_with_answer()
        self.app.app_action("newWindow")
        until_equal(self.app.windows, [1, 2], "the windows")
        self.app.hand_over(SEARCH)
        self.results.press(HIDE)

        self.results.wait_for_no_card()

    def test_another_tab_and_back_begins_anew(self):
        server = self.start_with_answer()
        self.open(self.server.page("/other"))
        self.results.wait_for_no_strip()
        self.windows.press("push button", "results")

        self.results.wait_for_words(ANSWER)
        self.assertEqual(len(server.questions()), 2)
        self.assertEqual(self.google.asked("/search"), 1)

    def test_a_tab_behind_begins_none_until_it_is_seen(self):
        server = self.play_model()
        self.start_and_open(self.server.link_page("/link", SEARCH))
        self.hands.click(button=2)
        until_equal(lambda: self.saved.visited()[-1], SEARCH, "the last visit")
        self.open(self.server.page("/later"))  # so much later an answer would have begun
        self.assertEqual(server.paths(), [])

        self.windows.press("push button", "results")
        self.results.wait_for_words(ANSWER)

    def test_a_tab_that_closes_while_it_thinks_drops_its_question(self):
        server = self.play_model()
        server.hold()
        self.start_with_results()
        server.wait_for_question()
        self.app.action("closeTab")

        until(lambda: server.dropped() == 1, "the question to be dropped")

    def test_a_window_that_closes_while_it_thinks_drops_its_question(self):
        server = self.play_model()
        server.hold()
        self.start_with_results()
        server.wait_for_question()
        self.app.action("performClose")

        until(lambda: server.dropped() == 1, "the question to be dropped")

    def test_leaving_the_page_takes_both_away_and_coming_back_begins_anew(self):
        server = self.start_with_answer()
        page = self.server.page("/elsewhere")
        self.notch.go_to(page)
        self.results.wait_for_no_strip()
        self.results.wait_for_no_card()
        until(lambda: page in self.saved.visited(), "the other page", self.saved.visited)
        self.app.action("goBack")

        self.results.wait_for_words(ANSWER)
        self.assertEqual(len(server.questions()), 2)

    def test_two_pages_of_results_side_by_side_have_an_answer_each(self):
        server = self.start_with_answer()
        results.serve_results(self.proxy, self.found[:2], BING)
        server.replies = {"My question: blunt": "Of a blunt one."}
        self.open(f"https://{BING}/search?q=blunt")
        self.app.action("toggleSideBySide")

        until_equal(lambda: len(self.results.cards()), 2, "the number of answers")
        self.results.wait_for_words(ANSWER)
        self.results.wait_for_words("Of a blunt one.")

    def test_a_page_that_fills_the_screen_has_it_alone(self):
        # Nothing is below the pointer that leads elsewhere.
        body = "<div style='height:100vh'></div><div id=search>"
        body += "".join(result.markup() for result in self.found)
        self.google.script_page(
            "/search", "onclick = () => document.documentElement.requestFullscreen();"
            "onkeydown = () => fetch('/report/key')", body=f"{body}</div>")
        self.play_model()
        self.start_with_results()
        self.hands.click()
        self.results.wait_for_no_strip()
        self.results.wait_for_no_card()
        self.hands.go_on("Escape")

        self.results.wait_for_strip()
        self.results.wait_for_card()


class WithoutAnAnswerTest(SearchAnswersTest):
    def test_without_a_model_there_are_the_sources_and_one_sentence(self):
        self.start_with_results()
        self.results.wait_for_words(MISSING)

        self.assertEqual(self.results.texts(), ["Kesto", "Top results", MISSING])
        self.assertEqual(len(self.results.buttons()), 6)
        self.assertEqual([self.reading_of(number) for number in range(3)], [[], [], []])

    def test_a_model_that_goes_in_mid_answer_is_told_in_one_sentence(self):
        server = self.play_model()
        server.hold()
        self.start_with_results()
        server.wait_for_question()
        self.results.wait_for_words(THINKING)
        server.break_off()

        until(lambda: any(text.startswith("Kesto couldn't answer that. ")
                          for text in self.results.texts()), "the failure", self.results.texts)
        self.assertEqual(self.results.texts()[:2], ["Kesto", "Top results"])
        self.assertEqual(len(self.results.texts()), 3)
        self.assertEqual(len(self.results.buttons()), 6)

    def test_a_page_without_results_says_so(self):
        results.serve_results(self.proxy, [])
        self.start_with_results()
        self.results.wait_for_words("Kesto couldn't find results on this page.")
        self.assertEqual(self.results.buttons(), [HIDE])

    def test_switched_in_the_settings_it_goes_and_comes_at_once(self):
        self.start_with_results()
        self.app.app_action("openSettings")
        switch = SettingsWindow(self.windows, self.hands).switch(
            "Kesto answers beside search results")
        switch.press()
        self.results.wait_for_no_card()
        self.results.wait_for_strip()
        switch.press()
        self.results.wait_for_card()

    def test_results_that_come_late_are_read(self):
        body = "".join(result.markup() for result in self.found)
        self.google.script_page(
            "/search", "setTimeout(() => { document.querySelector('#search').innerHTML = "
            f"{body!r} }}, 1500)", body="<div id=search></div>")
        self.start_with_answer()

    def test_switched_off_there_is_the_strip_alone(self):
        server = self.play_model()
        self.save_beforehand({"searchAnswers": False})
        self.start_and_open(SEARCH)
        self.results.wait_for_links(*KINDS, "Maps", "Search DuckDuckGo", "Search Bing",
                                    "Search Ecosia", *SITES)

        self.assertEqual(self.results.cards(), [])
        self.assertEqual(server.paths(), [])
        self.assertEqual(self.reading_of(0), [])

    def test_a_private_window_has_the_strip_alone(self):
        server = self.play_model()
        self.app.start()
        self.open_private_window().go_to(SEARCH)
        private = results.Results(self.windows, PRIVATE)
        private.wait_for_links(*KINDS, "Maps", "Search DuckDuckGo", "Search Bing",
                               "Search Ecosia", *SITES)
        self.google.wait_for("/search")
        self.app.app_action("newWindow")  # so much later the page has long come
        until_equal(self.app.windows, [1, 2, 3], "the windows")

        self.assertEqual(private.cards(), [])
        self.assertEqual(server.paths(), [])
        self.assertEqual(self.reading_of(0), [])


class StripTest(SearchAnswersTest):
    def address(self):
        return self.saved.visited()[-1]

    def wait_for_address(self, address):
        until_equal(self.address, address, "the last visit")

    def test_kinds_of_a_search_open_in_the_same_tab(self):
        self.start_with_results()
        self.results.find_link("Images").press()

        self.wait_for_address(f"https://{GOOGLE}/search?q=how%20to%20sharpen%20knives&udm=2")
        until(lambda: self.results.find_link("Images").is_selected, "the kind to be marked")
        self.assertFalse(self.results.find_link("All").is_selected)
        self.assertEqual(len(self.windows.tabs()), 2)
        self.assertEqual(self.google.asked("/search"), 2)

    def test_the_same_search_on_another_engine(self):
        bing = results.serve_results(self.proxy, self.found, BING)
        self.start_with_results()
        self.results.find_link("Search Bing").press()

        self.wait_for_address(f"https://{BING}/search?q=how%20to%20sharpen%20knives")
        self.assertEqual(dict(bing.requests_for("/search")[0].query)["q"], "how to sharpen knives")
        self.results.wait_for_links("Maps", "Search Google", "Search DuckDuckGo", "Search Ecosia",
                                    *SITES)

    def test_it_is_used_by_key(self):
        self.play_model()
        self.start_with_results()
        self.results.wait_for_words(ANSWER)
        self.hands.go_on("F6")
        self.notch.wait_until_open()
        for _ in range(2):
            self.hands.go_on("F6")
        until(lambda: self.results.find_link("All").is_focused, "the strip to have the keyboard",
              self.windows.focused)
        self.hands.go_on("Tab")
        until(lambda: self.results.find_link("Images").is_focused, "the next link to have it",
              self.windows.focused)
        self.hands.go_on("F6")
        until(lambda: self.results.find(HIDE).is_focused, "the answer to have the keyboard",
              self.windows.focused)
        self.hands.go_on("Tab")
        for _ in range(3):
            if self.results.find(FIRST).is_focused:
                break
            self.hands.go_on("Tab")
        until(lambda: self.results.find(FIRST).is_focused, "the first source to have it",
              self.windows.focused)
        self.hands.go_on("Return")

        self.wait_for_address(self.found[0].address)

    def test_closed_by_key_the_page_has_the_keyboard(self):
        body = "".join(result.markup() for result in self.found)
        self.google.script_page(
            "/search", "addEventListener('keydown', event => fetch('/report/' + event.key))",
            body=f"<div id=search>{body}</div>")
        self.start_with_results()
        self.hands.go_on("shift+F6")
        until(lambda: self.results.find(HIDE).is_focused, "the answer to have the keyboard",
              self.windows.focused)
        self.hands.go_on("space")
        self.results.wait_for_no_card()
        self.hands.go_on("x")

        self.google.wait_for_report("x")


class WithoutAProxyTest(SearchAnswersTest):
    """Pages whose hosts the program looks up itself."""

    environment = {"no_proxy": ".example"}

    def setUp(self):
        if not own_network.is_taken:
            self.skipTest("needs a network of its own")
        super().setUp()
        self.named = []

    def stand(self, host, address, **how):
        site = DirectSite(host, address, **how)
        self.addCleanup(site.stop)
        site.page("/", body=f"It stands at {address}.")
        self.named.append((address, host))
        return site

    def question_about(self, *hosts):
        """What the model is asked after results of these hosts."""
        own_network.name_hosts(self.named)
        results.serve_results(
            self.proxy, [results.Result(host, host, "S", address=f"https://{host}/")
                         for host in hosts])
        return self.start_with_answer().wait_for_question()

    def test_hosts_of_the_world_are_read(self):
        self.stand("one.example", "93.184.216.1")
        self.stand("two.example", "151.101.1.2")
        question = self.question_about("one.example", "two.example")

        self.assertIn("It stands at 93.184.216.1.", question)
        self.assertIn("It stands at 151.101.1.2.", question)

    def test_hosts_around_this_computer_are_not_read(self):
        near = [self.stand("router.example", "192.168.1.1"), self.stand("nas.example", "10.0.0.7"),
                self.stand("meta.example", "169.254.169.254")]
        question = self.question_about("router.example", "nas.example", "meta.example")

        self.assertNotIn("It stands", question)
        self.assertEqual([site.asked("/") for site in near], [0, 0, 0])

    def test_of_a_host_that_is_near_and_far_the_far_one_is_read(self):
        near = self.stand("both.example", "192.168.1.2")
        self.stand("both.example", "93.184.216.2")
        question = self.question_about("both.example")

        self.assertIn("It stands at 93.184.216.2.", question)
        self.assertEqual(near.asked("/"), 0)

    def test_a_host_with_the_certificate_of_another_is_not_read(self):
        site = self.stand("three.example", "93.184.216.3", certified="four.example")
        question = self.question_about("three.example")

        self.assertNotIn("It stands", question)
        self.assertEqual(site.asked("/"), 0)


class HostileResultsTest(SearchAnswersTest):
    def start_with(self, *found):
        results.serve_results(self.proxy, found)
        return self.start_with_answer()

    def test_nothing_of_this_computer_is_read_for_a_page_of_the_world(self):
        self.server.page("/secret", body="A router's secret.")
        server = self.start_with(
            results.Result("one.example", "One", "S", address=self.server.url("/secret")),
            results.Result("two.example", "Two", "S",
                           address=self.server.url("/secret", host="2130706433")),
            results.Result("three.example", "Three", "S",
                           address=self.server.url("/secret", host="localhost")))

        self.assertEqual(self.server.asked("/secret"), 0)
        self.assertNotIn("secret.", server.wait_for_question())

    def test_a_redirect_to_this_computer_is_not_followed(self):
        self.server.page("/secret", body="A router's secret.")
        one = results.Result("one.example", "One", "S")
        two = results.Result("two.example", "Two", "S")
        results.serve_results(self.proxy, [one, two])
        self.proxy.site("one.example").redirect("/", self.server.url("/secret"))
        self.proxy.site("two.example").redirect("/", "file:///etc/passwd")
        server = self.start_with_answer()

        self.assertEqual(self.server.asked("/secret"), 0)
        self.assertNotIn("root:", server.wait_for_question())

    def test_a_redirect_of_the_world_is_followed(self):
        one = results.Result("one.example", "One", "S")
        self.proxy.site("two.example").page("/there", body="It stands there.")
        results.serve_results(self.proxy, [one])
        self.proxy.site("one.example").redirect("/", "https://two.example/there")
        server = self.start_with_answer()

        self.assertIn("It stands there.", server.wait_for_question())

    def test_a_page_that_never_comes_holds_nothing_up(self):
        one = results.Result("one.example", "One", "S")
        results.serve_results(self.proxy, [one, self.found[1]])
        _, gate = self.proxy.site("one.example").slow("/")
        server = self.start_with_answer()

        self.assertIn("A steel takes no metal off.", server.wait_for_question())
        gate.set()

    def test_what_is_no_page_is_not_read(self):
        one = results.Result("one.example", "One", "S")
        results.serve_results(self.proxy, [one])
        self.proxy.site("one.example").answers["/"] = lambda handler: handler.reply(
            200, "application/pdf", "A document.")
        server = self.start_with_answer()

        self.assertNotIn("A document.", server.wait_for_question())

    def test_what_a_model_says_is_shown_as_it_stands(self):
        server = self.play_model()
        server.reply = ("<i>See</i> http://one.example/ & **this** &lt;b&gt; [1]\n"
                        "Next: <b>bold</b> | javascript:alert(1)")
        self.start_with_results()

        self.results.wait_for_words("See http://one.example/ & **this** &lt;b&gt; 1")
        self.assertEqual(self.results.buttons()[-2:], ["bold", "javascript:alert(1)"])


