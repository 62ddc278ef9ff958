"""Spelling is checked in the languages of the locale, and nowhere that a secret is typed."""

from harness.case import BrowserTest
from harness.wait import until

LEARN = "Learn Spelling"


class SpellingTest(BrowserTest):
    def show(self, field, name="field"):
        """Opens a page of one large field."""
        body = field.replace(">", " style='position:fixed;inset:0;width:100%;height:100%;"
                                  "font-size:80px;padding:0;border:0'>", 1)
        self.server.script_page(f"/{name}", "addEventListener('input', event => fetch('/report/"
                                "input-' + encodeURIComponent(event.target.value)));"
                                "addEventListener('focusin', () => fetch('/report/focus'));", body)
        url = self.server.url(f"/{name}")
        self.app.start(url)

    def type_in(self, text, title="Orvu"):
        """Types a text into the field, once the page has come."""
        def focused():
            self.hands.click(title=title)
            return "focus" in self.server.reports()
        until(focused, "the field to have the keyboard", pause=0.2)
        self.hands.type_on(text)
        self.server.wait_for_report(f"input-{text.replace(' ', '%20')}")

    def open_menu(self, title="Orvu"):
        """Opens the menu of the first word; gives the names of its lines."""
        self.hands.click(button=3, at=self.first_word(title), title=title)
        self.windows.find("menu item", "Select All")
        return [node.name for node in self.windows.nodes("menu item")]

    def first_word(self, title):
        box = self.windows.find("filler", "WebKitWebView", window=title).box
        return box[0] + 60, box[1] + box[3] // 2


class EnglishTest(SpellingTest):
    environment = {"LANGUAGE": "en_US:en"}

    def test_a_misspelt_word_is_corrected_from_its_menu(self):
        self.show("<input>")
        self.type_in("wrods end")

        self.assertIn("words", self.open_menu())
        self.windows.press("menu item", "words")

        self.server.wait_for_report("input-words%20end")

    def test_a_right_word_has_no_such_lines(self):
        self.show("<input>")
        self.type_in("words end")

        self.assertNotIn(LEARN, self.open_menu())

    def test_what_is_typed_as_a_password_is_not_checked(self):
        self.show("<input type=password>")
        self.type_in("wrods end")

        lines = self.open_menu()

        self.assertNotIn("words", lines)
        self.assertNotIn(LEARN, lines)

    def test_a_page_may_switch_it_off_for_a_field(self):
        self.show("<input spellcheck=false>")
        self.type_in("wrods end")

        self.assertNotIn("words", self.open_menu())


class NoLanguageTest(SpellingTest):
    environment = {"LANGUAGE": ""}

    def test_nothing_is_checked(self):
        self.show("<input>")
        self.type_in("wrods end")

        self.assertNotIn("words", self.open_menu())
