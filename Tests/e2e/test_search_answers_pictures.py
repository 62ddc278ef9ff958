"""Pictures of what stands around search results, in each state. A person looks at them."""

from harness import own_network

own_network.take()

from harness import results  # noqa: E402
from harness.case import PRIVATE  # noqa: E402
from harness.models import MISSING, ModelServer  # noqa: E402
from harness.pictures import PictureTest  # noqa: E402

ANSWER = ("Soak the stone and hold the blade at fifteen degrees to it [1]. A honing steel only "
          "straightens the edge and takes no metal off [2][1]. Twice a year will do for a kitchen "
          "knife [3].\nNext: which whetstone to buy | how to use a honing steel | "
          "how to test whether a knife is sharp enough for tomatoes")


class SearchAnswersPicturesTest(PictureTest):
    trusts_test_authority = True

    def setUp(self):
        super().setUp()
        self.results = results.Results(self.windows)
        results.serve_results(self.proxy, results.knives())

    def play_model(self):
        server = ModelServer()
        server.reply = ANSWER
        self.addCleanup(server.stop)
        return server

    def start_with_results(self):
        self.start_with("bees")
        self.open(results.SEARCH)
        self.results.wait_for_card()

    def wait_until_done(self):
        self.results.wait_for_words("ASK NEXT")

    def test_phases(self):
        server = self.play_model()
        gate = server.hold()
        self.start_with_results()
        server.wait_for_question()
        self.results.wait_for_words("Read 4 results · on this computer")
        self.shoot("answer-thinking")
        gate.set()
        self.wait_until_done()
        self.shoot("answer-done")
        self.hands.resize(900, 560)
        self.shoot("answer-done-900x560")
        self.hands.resize(1280, 800)
        self.results.press(results.HIDE)
        self.results.wait_for_no_card()
        self.shoot("answer-hidden")

    def test_without_a_model(self):
        self.start_with_results()
        self.results.wait_for_words(MISSING)
        self.shoot("answer-without-model")

    def test_without_results(self):
        self.play_model()
        results.serve_results(self.proxy, [])
        self.start_with_results()
        self.results.wait_for_words("Kesto couldn't find results on this page.")
        self.shoot("answer-without-results")

    def test_pair(self):
        self.play_model()
        results.serve_results(self.proxy, results.knives(), results.BING)
        self.start_with_results()
        self.wait_until_done()
        self.open(f"https://{results.BING}/search?q=how+to+sharpen+knives")
        self.wait_until_done()
        self.app.action("toggleSideBySide")
        self.windows.find("push button", "Close side by side")
        self.wait_until_done()
        self.shoot("answer-pair")

    def test_private(self):
        self.start_with("bees")
        self.open_private_window().go_to(results.SEARCH)
        results.Results(self.windows, PRIVATE).wait_for_strip()
        self.shoot("answer-private", title=PRIVATE)

    def test_right_to_left(self):
        server = self.play_model()
        server.reply = ("اشحذ السكين على حجر مبلل بزاوية خمس عشرة درجة [1]. الفولاذ يقوّم الحافة فقط [2].\n"
                        "Next: أي حجر أشتري | كيف أستخدم الفولاذ")
        found = results.knives()
        found[0].title, found[1].title = "شحذ السكاكين بالحجر", "ما الذي يفعله الفولاذ"
        results.serve_results(self.proxy, found)
        self.start_with_results()
        self.wait_until_done()
        self.shoot("answer-right-to-left")
