"""Pages that ask for the camera and the microphone."""

from harness.case import BrowserTest
from harness.server import TELLS_KEYS
from harness.site import ALLOW, REFUSE, capture_page
from harness.wait import until, until_equal

KEPT = "orvuSitePermissions"
CAMERA = "“127.0.0.1” wants to use your camera"
BOTH = "“127.0.0.1” wants to use your camera and microphone"


class PermissionsTest(BrowserTest):
    has_test_devices = True

    def url(self, name, wants="camera", host="127.0.0.1"):
        return self.server.url(capture_page(self.server, name, wants), host)

    def open_asking(self, name, wants="camera"):
        """Starts the program with a page that asks."""
        self.start_and_open(self.url(name, wants))
        self.site.wait_for_question(BOTH if wants == "both" else CAMERA)

    def choose(self, kind, choice):
        self.site.open()
        self.site.choose(kind, choice)
        self.hands.go_on("Escape")
        self.site.wait_until_closed()

    def reports(self, name):
        """What that page told, sorted."""
        return sorted(self.server.reports(f"{name}-"))

    def wait_for(self, name, *reports):
        until_equal(lambda: self.reports(name), sorted(reports), f"what {name} reports")

    # The question.

    def test_a_page_that_is_allowed_once_gets_both_and_nothing_is_saved(self):
        self.open_asking("call", "both")

        self.site.answer(ALLOW)

        self.wait_for("call", "got-audio", "got-video")
        self.assertIsNone(self.saved.document(KEPT))

    def test_a_refused_page_is_not_heard_again_until_it_is_loaded_anew(self):
        self.open_asking("call")
        self.site.answer(REFUSE)
        self.wait_for("call", "NotAllowedError")

        self.hands.click()

        self.wait_for("call", "NotAllowedError", "NotAllowedError")
        self.assertEqual(self.site.questions(), [])
        self.app.action("reload")
        self.site.wait_for_question(CAMERA)

    def test_escape_dismisses_the_question_and_the_page_may_ask_again(self):
        self.open_asking("call")
        self.hands.press("Escape")
        self.site.wait_for_question()
        self.wait_for("call", "NotAllowedError")

        self.hands.click()

        self.site.wait_for_question(CAMERA)

    def test_the_question_is_answered_by_key(self):
        self.open_asking("call")
        self.windows.find("push button", ALLOW)
        until(lambda: self.windows.find("push button", ALLOW).is_sensitive, "a button that wakes")
        self.hands.press("shift+F6")
        self.wait_for_focus(REFUSE)
        self.hands.go_on("Tab")
        self.wait_for_focus(ALLOW)

        self.hands.go_on("Return")

        self.wait_for("call", "got-video")

    def test_the_question_leaves_the_keyboard_with_the_page(self):
        self.app.start()
        name = capture_page(self.server, "form")
        self.server.script_page("/typing", TELLS_KEYS
                                + f"document.querySelector('iframe').src = '{name}'",
                                "<iframe allow='camera'></iframe>")
        self.open(self.server.url("/typing"))
        self.site.wait_for_question(CAMERA)

        self.hands.type("x")

        self.server.wait_for_report("key-x")
        self.assertEqual(self.site.questions(), [CAMERA])

    def test_the_question_goes_when_the_page_goes(self):
        self.open_asking("call")

        self.notch.go_to(self.server.page("/next"))

        self.site.wait_for_question()

    def test_the_question_of_a_tab_in_the_background_waits_with_its_tab(self):
        self.open_asking("call")

        self.app.action("newEmptyTab")
        self.site.wait_for_question()
        self.app.action("selectTab2")
        self.site.wait_for_question(CAMERA)
        self.site.answer(ALLOW)

        self.wait_for("call", "got-video")

    def test_the_question_stands_over_its_own_page_of_a_pair(self):
        self.start_and_open(self.server.page("/quiet"), self.url("call"))
        self.site.wait_for_question(CAMERA)

        self.app.action("toggleSideBySide")
        self.windows.find("separator", "Resize the two pages")
        self.site.wait_for_question(CAMERA)
        self.site.answer(ALLOW)

        self.wait_for("call", "got-video")

    # The choices.

    def test_an_allowed_site_is_not_asked_about(self):
        self.start_and_open(self.server.page("/page"))
        self.choose("Camera", "Allow")

        self.open(self.url("call"))

        self.wait_for("call", "got-video")
        self.assertEqual(self.site.questions(), [])

    def test_a_blocked_site_is_denied_also_after_a_restart_and_asks_again_after_ask(self):
        self.start_and_open(self.server.page("/page"))
        self.choose("Camera", "Block")
        self.open(self.url("call"))
        self.wait_for("call", "NotAllowedError")
        self.app.quit()

        self.start_and_open(self.url("again"))
        self.wait_for("again", "NotAllowedError")
        self.assertEqual(self.site.questions(), [])
        self.choose("Camera", "Ask")
        self.hands.click()

        self.site.wait_for_question(CAMERA)

    def test_one_blocked_kind_denies_both(self):
        self.start_and_open(self.server.page("/page"))
        self.choose("Microphone", "Block")
        self.choose("Camera", "Allow")

        self.open(self.url("call", "both"))

        self.wait_for("call", "NotAllowedError")

    def test_a_block_ends_what_is_captured_in_all_windows_at_once(self):
        self.open_asking("one", "both")
        self.site.answer(ALLOW)
        self.wait_for("one", "got-audio", "got-video")
        private = self.open_private_site(self.url("two"))
        private.wait_for_question(CAMERA)
        private.answer(ALLOW)
        self.wait_for("two", "got-video")
        self.hands.take()

        self.choose("Camera", "Block")

        self.wait_for("one", "ended-video", "got-audio", "got-video")
        self.wait_for("two", "ended-video", "got-video")

    def test_a_choice_of_a_private_window_leaves_others_alone(self):
        self.open_asking("one")
        private = self.open_private_site(self.url("two"))
        private.wait_for_question(CAMERA)

        private.open()
        private.choose("Camera", "Allow")

        self.wait_for("two", "got-video")
        self.assertEqual(self.reports("one"), [])
        self.assertEqual(self.site.questions(), [CAMERA])
        self.assertIsNone(self.saved.document(KEPT))

    def test_a_choice_made_while_a_page_asks_answers_it(self):
        self.open_asking("call")

        self.choose("Camera", "Allow")

        self.wait_for("call", "got-video")
        self.assertEqual(self.site.questions(), [])
