"""Pictures of the notch in each of its states. A person looks at them."""

from harness.case import PRIVATE
from harness.pictures import PictureTest
from harness.suggestions import Suggestions
from harness.wait import until


class NotchPicturesTest(PictureTest):
    trusts_test_authority = True

    def setUp(self):
        super().setUp()
        self.service = Suggestions(self.proxy)
        self.service.suggest("be", "bee sting", "bees and flowers", "bedroom furniture", "berlin",
                             "best bread recipe without kneading and without a machine")
        self.service.suggest("weathr", "weather", "weather in lund")

    def write(self, text, row=None):
        self.notch.write(text)
        if row:
            self.notch.wait_for_row(row)

    def test_at_rest(self):
        self.start_with("docs", "bees")
        self.shoot("notch-rest")
        self.bookmark_page()
        self.shoot("notch-rest-bookmarked")
        self.hands.hover(self.notch.resting().middle)
        self.shoot("notch-rest-hovered", rest=False)
        self.app.action("newEmptyTab")
        self.shoot("notch-rest-empty-tab")

    def test_at_rest_while_a_page_loads(self):
        slow, _ = self.server.slow("/slow")
        self.start_with("docs")
        self.app.start_again(slow)
        self.server.wait_for("/slow")
        self.windows.find("push button", "Stop")
        self.shoot("notch-rest-loading")

    def test_open(self):
        self.start_with("docs", "weather", "bees")
        self.notch.open()
        self.shoot("notch-open-with-address")
        self.hands.go_on("Escape", "ctrl+t")
        self.notch.wait_until_open()
        self.shoot("notch-open-empty")
        self.hands.go_on("Escape")
        self.notch.open()
        self.shoot("notch-open-on-empty-tab")

    def test_candidates(self):
        self.start_with("bees", "docs", "bread", "weather")
        self.select(1)
        self.bookmark_page()
        self.select(4)
        self.write("be", "bee sting")
        self.shoot("notch-candidates")
        self.hands.go_on("Down", "Down", "Down")
        until(self.notch.chosen, "a chosen candidate")
        self.shoot("notch-candidate-chosen")
        row = self.windows.find("list item", self.notch.rows()[0])
        self.hands.hover(row.middle)
        self.shoot("notch-candidate-hovered", rest=False)
        self.hands.resize(900, 560)
        self.shoot("notch-candidates-900x560")
        self.hands.resize(2560, 1440)
        self.shoot("notch-candidates-2560x1440")

    def test_what_is_typed(self):
        self.start_with("docs", "bees")
        for name, text in {"site": "example.org", "bang": "!w dancing bees",
                           "ghost": "bee", "long": "a long question that does not end " * 6}.items():
            self.write(text)
            self.shoot(f"notch-typed-{name}")

    def test_right_to_left(self):
        self.start_with("docs")
        self.notch.open()
        self.notch.fields()[0].set_text("שלום עולם")
        self.notch.wait_for_button("Search “שלום עולם”")
        self.shoot("notch-typed-right-to-left")

    def test_correction(self):
        self.start_with("docs")
        self.write("weathr")
        self.windows.find_named("Did you mean")
        self.shoot("notch-did-you-mean")

    def test_suggestions_off(self):
        self.save_beforehand({"searchSuggestions": False})
        self.start_with("docs")
        self.write("be")
        self.shoot("notch-suggestions-off")

    def test_over_a_pair(self):
        self.start_with("docs", "bees")
        self.app.action("toggleSideBySide")
        self.write("be")
        self.shoot("notch-over-a-pair")

    def test_private_window(self):
        self.start_with("docs", "bees")
        notch = self.open_private_window()
        self.shoot("notch-private-rest", PRIVATE)
        notch.write("be")
        self.shoot("notch-private", PRIVATE)
