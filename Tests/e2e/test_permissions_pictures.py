"""Pictures of the badge, of the site's panel and of a page's question. A person looks at them."""

from harness.case import PRIVATE
from harness.pictures import PictureTest
from harness.site import INFO, SEARCH, capture_page


class PermissionsPicturesTest(PictureTest):
    trusts_test_authority = True
    has_test_devices = True

    def setUp(self):
        super().setUp()
        shop = self.proxy.site("www.shop.example")
        shop.page("/", "A shop")
        self.secure = shop.url("/")

    def test_badge_and_panel(self):
        self.start_with("docs")
        self.site.wait_for_badge(INFO)
        self.shoot("site-badge-insecure")
        self.site.open()
        self.shoot("site-panel-insecure", rest=False)
        self.hands.go_on("Escape")
        self.site.wait_until_closed()
        self.open(self.secure)
        self.shoot("site-badge-secure")
        self.site.open()
        self.site.choose("Camera", "Block")
        self.site.choose("Microphone", "Allow")
        self.shoot("site-panel-secure", rest=False)
        self.hands.go_on("Escape")
        self.site.wait_until_closed()
        self.app.action("newEmptyTab")
        self.site.wait_for_badge(SEARCH)
        self.shoot("site-badge-empty-tab")

    def test_private_window(self):
        self.start_with("docs")
        site = self.open_private_site(self.secure)
        site.wait_for_badge(INFO)
        site.open()
        self.shoot("site-panel-private", PRIVATE, rest=False)

    def test_question(self):
        self.start_with("docs")
        self.app.start_again(self.server.url(capture_page(self.server, "call", "both")))
        self.site.wait_for_question("“127.0.0.1” wants to use your camera and microphone")
        self.shoot("question")
        self.hands.resize(900, 560)
        self.shoot("question-900x560")

    def test_question_in_a_private_window(self):
        self.start_with("docs")
        site = self.open_private_site(self.server.url(capture_page(self.server, "call")))
        site.wait_for_question("“127.0.0.1” wants to use your camera")
        self.shoot("question-private", PRIVATE)
