"""The program in a made-up language with longer words: all is translated, and nothing is cut."""

import os
import unittest

from harness import language
from harness.case import BrowserTest
from harness.library import Library
from harness.settings import TITLE as SETTINGS
from harness.settings import SettingsWindow
from harness.wait import settled, until


def setUpModule():
    os.environ["ORVU_LANGUAGE"] = "made-up"
    unittest.addModuleCleanup(os.environ.pop, "ORVU_LANGUAGE")


class LanguageTest(BrowserTest):
    def assert_inside(self, window):
        """Everything that a window shows lies in it."""
        def outside():
            top = next(each for each in self.windows.all() if each.name == window)
            _, _, width, _ = top.box
            found = []
            for node in top.walk():
                if not node.name or node.role in ("frame", "scroll bar"):
                    continue
                left, _, wide, _ = settled(lambda node=node: node.box, (0, 0, 0, 0))
                if wide > 0 and (left < 0 or left + wide > width):
                    found.append((node, left, wide, width))
            return found
        until(lambda: outside() == [], f"everything within {window}", outside)

    def test_it_says_its_options_in_the_language(self):
        answer = self.app.run("--help").stdout

        self.assertTrue(answer.startswith(language.OPEN), answer)
        self.assertTrue(language.plain(answer).startswith("Usage: orvu [OPTION]"), answer)

    def test_a_text_that_is_not_translated_gives_itself_away(self):
        with self.assertRaises(AssertionError):
            language.read("Bookmark this page")
        with self.assertRaises(AssertionError):
            language.read("Search Wikipedia for “lamp”")
        self.assertEqual(language.read("A title of a page"), "A title of a page")
        self.assertEqual(language.read(language.strange("Bookmark this page")),
                         "Bookmark this page")

    def test_the_main_window_has_room_for_longer_words(self):
        self.start_and_open(self.server.page("/a", "A page"))
        self.hands.shrink()

        self.assert_inside("Orvu")

    def test_the_settings_have_room_for_longer_words(self):
        self.app.start()
        self.app.app_action("openSettings")
        SettingsWindow(self.windows, self.hands).wait_until_open()

        self.assert_inside(SETTINGS)

    def test_the_library_has_room_for_longer_words(self):
        self.app.start()
        self.hands.shrink()
        self.app.action("showHistory")
        Library(self.windows, self.hands).wait_until_open("History")

        self.assert_inside("Orvu")

    def test_the_question_about_a_page_that_asks_has_room_for_longer_words(self):
        self.app.start(self.server.page("/a", "A page", "<script>alert('a')</script>"))
        self.windows.find("push button", "OK")
        self.hands.shrink()

        self.assert_inside("Orvu")
