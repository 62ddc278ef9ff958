"""Pictures of the badge, of the site's panel and of a page's question. A person looks at them."""

from harness.case import PRIVATE
from harness.pictures import PictureTest
from harness.site import ALLOW, INFO, SEARCH, capture_page


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

    def test_dots_of_what_is_captured(self):
        self.start_with("docs", "bees", "forum", "weather")
        self.app.start_again(self.server.url(capture_page(self.server, "call", "both")))
        self.site.wait_for_question("“127.0.0.1” wants to use your camera and microphone")
        self.site.answer(ALLOW)
        self.server.wait_for_report("call-got-video")
        self.shoot("capture-in-front")
        self.app.action("selectTab1")
        self.shoot("capture-in-the-background")
        self.app.action("selectTab9")
        self.app.action("toggleGroup")
        self.app.action("selectTab1")
        header = self.windows.find("push button", "127.0.0.1 group, 1 tabs")
        for color in range(6):
            self.hands.click(button=3, at=header.middle)
            self.windows.press("menu item", "Change Colour")
            self.shoot(f"capture-in-a-group-{color}")
        header.press()
        self.shoot("capture-in-a-collapsed-group")
        self.windows.press("push button", "Narrow tabs")
        self.shoot("capture-in-a-collapsed-group-narrow")
        header.press()
        self.shoot("capture-narrow")
        self.app.action("selectTab9")
        self.app.action("togglePin")
        self.shoot("capture-tile-narrow")
        self.windows.press("push button", "Show tab titles")
        self.shoot("capture-tile")
        self.app.action("toggleSideBySide")
        self.shoot("capture-pair")

    def test_dots_in_a_private_window(self):
        self.start_with("docs")
        site = self.open_private_site(self.server.url(capture_page(self.server, "call")))
        site.wait_for_question("“127.0.0.1” wants to use your camera")
        site.answer(ALLOW)
        self.server.wait_for_report("call-got-video")
        self.shoot("capture-private", PRIVATE)
        self.app.action("togglePin", window=2)
        self.shoot("capture-private-tile", PRIVATE)

    def test_what_is_refused(self):
        self.start_with("docs")
        self.server.script_page("/asks",
                                "navigator.geolocation.getCurrentPosition(() => {}, () => "
                                "navigator.mediaDevices.enumerateDevices().then("
                                "() => fetch('/report/asked')))")
        self.open(self.server.url("/asks"))
        self.server.wait_for_report("asked")
        self.site.open()
        self.shoot("site-panel-refused", rest=False)
        self.hands.go_on("Escape")
        self.site.wait_until_closed()
        self.server.forget()
        site = self.open_private_site(self.server.url("/asks"))
        self.server.wait_for_report("asked")
        site.open()
        self.shoot("site-panel-refused-private", PRIVATE, rest=False)
