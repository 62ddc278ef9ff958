"""The first minute: the window that welcomes a person once."""

from harness.case import BrowserTest
from harness.importing import ImportWindow
from harness.wait import until, until_equal

TITLE = "Welcome to Orvu"
IMPORT, DEFAULT = "Choose a Browser…", "Make Orvu Your Default Browser"
NEXT, BACK, END = "Continue", "Back", "Start browsing"
WELCOME = ("A desktop browser where the address hangs from the top edge, and Kesto answers questions "
           "about the page on your computer.")


class FirstRunTest(BrowserTest):
    def setUp(self):
        super().setUp()
        self.app.is_welcomed = False

    def start(self, *arguments):
        self.app.start(*arguments)
        until(lambda: TITLE in self.windows.titles(), "the first run", self.windows.titles)

    def labels(self):
        return [node.name for node in self.windows.nodes("label", window=TITLE)]

    def buttons(self):
        return [node.name for node in self.windows.nodes("push button", window=TITLE)
                if node.name != "Close"]

    def press(self, name):
        self.windows.press("push button", name, TITLE)

    def wait_for_step(self, number, *buttons):
        self.windows.find_named(f"Step {number} of 3", TITLE)
        until_equal(self.buttons, list(buttons), "the buttons")

    def keys(self, *keys):
        self.hands.press(*keys, title=TITLE)

    def wait_until_gone(self):
        until(lambda: TITLE not in self.windows.titles(), "the end of the first run")

    def test_its_three_steps_say_what_they_have_to(self):
        self.start()
        self.wait_for_step(1, NEXT)
        self.assertEqual(self.labels()[:2], ["orvu", WELCOME])

        self.press(NEXT)
        self.wait_for_step(2, IMPORT, BACK, NEXT)
        until(lambda: self.labels()[:4] == [
            "Bring your web with you", "Nothing leaves this computer.",
            "Orvu can bring bookmarks and recent history from Chrome, Chromium, Brave, Edge, Firefox, "
            "GNOME Web and others.", IMPORT], "the offer to import", self.labels)
        self.press(NEXT)

        self.wait_for_step(3, DEFAULT, BACK, END)
        self.assertEqual(self.labels()[:2], [
            "Make Orvu your browser", "Links from mail, chat and other apps will open in Orvu. You "
            "can change that in the settings of your desktop."])

    def test_return_alone_leads_through_it_and_it_never_comes_again(self):
        self.start()

        self.keys("Return")
        self.wait_for_step(2, IMPORT, BACK, NEXT)
        self.keys("Return")
        self.wait_for_step(3, DEFAULT, BACK, END)
        self.assertIsNone(self.saved.value("onboarded"))
        self.keys("Return")

        self.wait_until_gone()
        self.assertEqual(self.saved.value("onboarded"), 1)
        self.app.quit()
        self.app.start()
        self.open(self.server.page("/page"))
        self.assertNotIn(TITLE, self.windows.titles())

    def test_a_click_leads_through_it_and_back(self):
        self.start()
        self.click(NEXT)
        self.wait_for_step(2, IMPORT, BACK, NEXT)
        self.click(NEXT)
        self.wait_for_step(3, DEFAULT, BACK, END)
        self.click(BACK)
        self.wait_for_step(2, IMPORT, BACK, NEXT)
        self.click(BACK)

        self.wait_for_step(1, NEXT)

    def click(self, name):
        self.hands.click(at=self.windows.find("push button", name, TITLE).middle, title=TITLE)

    def test_a_window_that_is_closed_comes_again_from_the_first_step(self):
        for way in ("Close", "Escape", "ctrl+w"):
            self.start()
            self.press(NEXT)
            self.wait_for_step(2, IMPORT, BACK, NEXT)
            if way == "Close":
                self.press(way)
            else:
                self.keys(way)
            self.wait_until_gone()
            self.assertIsNone(self.saved.value("onboarded"))
            self.app.quit()

        self.start()

        self.wait_for_step(1, NEXT)

    def test_the_import_stays_while_the_person_goes_on(self):
        self.start()
        self.press(NEXT)

        self.press(IMPORT)
        importing = ImportWindow(self.windows, self.hands)
        importing.wait_until_open()
        self.press(NEXT)
        self.wait_for_step(3, DEFAULT, BACK, END)
        self.press(END)

        self.wait_until_gone()
        self.assertTrue(importing.is_open())

    def test_it_becomes_the_default_browser_and_says_so(self):
        self.start()
        self.press(NEXT)
        self.wait_for_step(2, IMPORT, BACK, NEXT)
        self.press(NEXT)

        self.press(DEFAULT)

        until(lambda: "Links from other programs open in Orvu now." in self.labels(), "the words",
              self.labels)
        self.assertIn("x-scheme-handler/https=app.orvu.Orvu.desktop",
                      (self.home.config / "mimeapps.list").read_text())

    def test_links_and_a_second_start_reach_the_window_behind_it(self):
        self.start(self.server.page("/given"))
        self.server.wait_for("/given")

        self.open(self.server.page("/later"))

        self.wait_for_session(self.server.url("/given"), self.server.url("/later"))
        self.assertIn(TITLE, self.windows.titles())

    def test_the_keyboard_reaches_all_of_it(self):
        self.start()
        self.keys("Return")
        self.wait_for_step(2, IMPORT, BACK, NEXT)

        self.wait_for_focus_of(NEXT)
        self.keys("Tab")
        self.wait_for_focus_of(IMPORT)
        self.keys("Tab")
        self.wait_for_focus_of(BACK)
        self.keys("space")

        self.wait_for_step(1, NEXT)
        self.wait_for_focus_of(NEXT)

    def wait_for_focus_of(self, name):
        until_equal(lambda: [node.name for node in self.windows.focused(TITLE)], [name],
                    "what has the keyboard")

    def test_the_program_goes_on_without_it_and_quits_with_it(self):
        self.start()
        self.app.action("performClose")
        until_equal(self.windows.titles, [TITLE], "the windows")
        self.press("Close")
        until_equal(self.windows.titles, [], "the windows")
        self.app.check_runs()
        self.app.quit()
        self.start()

        self.app.quit()
