"""Windows come and go; the program stays."""

import configparser
import os

from harness.app import ID
from harness.case import PRIVATE, BrowserTest
from harness.process import descendants
from harness.wait import until, until_equal


class LifecycleTest(BrowserTest):
    def test_closing_the_last_tab_leaves_an_empty_one(self):
        page = self.server.page("/page")
        self.start_and_open(page)

        self.app.action("closeTab")
        self.wait_for_tabs("New tab")
        self.app.action("closeTab")

        self.wait_for_tabs("New tab")
        self.assertEqual(self.app.windows(), [1])
        self.assertEqual(self.saved.session(), [])

    def test_closing_the_last_window_leaves_the_program(self):
        page = self.server.page("/page")
        self.start_and_open(page)

        self.app.action("performClose")
        until_equal(self.app.windows, [], "the windows")
        until_equal(self.app.page_processes, [], "the page processes")
        self.app.check_runs()
        self.app.start_again()

        until_equal(lambda: len(self.app.windows()), 1, "the number of windows")
        self.server.wait_for("/page", times=2)
        self.wait_for_selected("page")
        self.assertEqual(self.saved.session(), [page])

    def test_new_windows_stand_beside_each_other(self):
        self.app.start()

        self.app.app_action("newWindow")
        self.app.app_action("newPrivateWindow")

        until_equal(self.windows.titles, ["Orvu", "Orvu", PRIVATE], "the windows")
        self.picture("three-windows")

    def test_window_that_opens_alone_keeps_its_size(self):
        self.app.start()
        self.hands.resize(1111, 777)
        until(lambda: self.saved.value("OrvuWindow"), "the saved size")
        saved = until(lambda: self.saved.value("OrvuWindow") != "1280 820" and
                      self.saved.value("OrvuWindow"), "another size to be saved")
        size = self.hands.size()
        self.app.quit()

        self.app.start()

        until_equal(self.hands.size, size, "the window's size")
        self.assertEqual(self.saved.value("OrvuWindow"), saved)

    def test_a_size_changed_right_before_the_end_is_kept(self):
        self.app.start()
        self.hands.resize(1111, 777)
        size = self.hands.size()
        self.app.quit()

        self.app.start()

        until_equal(self.hands.size, size, "the window's size")

    def test_tells_its_version_and_its_options_without_a_window(self):
        for arguments, words in ((["--version"], "Orvu "), (["--help"], "Usage: orvu"),
                                 (["-h", "https://a.example/"], "Usage: orvu")):
            answer = self.app.run(*arguments)

            self.assertEqual((answer.returncode, answer.stderr), (0, ""), arguments)
            self.assertTrue(answer.stdout.startswith(words), answer.stdout)

    def test_what_cannot_be_opened_is_said_in_one_sentence(self):
        for argument in ("--verison", "ftp://a.example/", "mailto://x", "javascript://x"):
            answer = self.app.run(argument)

            self.assertEqual(answer.stderr, f"Orvu can't open “{argument}”.\n")
            self.assertEqual((answer.returncode, answer.stdout), (2, ""), argument)

    def test_a_running_program_says_the_same_and_opens_the_rest(self):
        page = self.server.page("/page")
        self.app.start()

        answer = self.app.run("ftp://a.example/", page, "/etc/hostname")

        self.assertEqual(answer.returncode, 2)
        self.assertEqual(answer.stderr, "Orvu can't open “ftp://a.example/”.\n"
                         "Orvu can't open “/etc/hostname”.\n")
        self.wait_for_visit(page)
        self.app.check_runs()

    def test_private_window_keeps_no_size(self):
        self.app.start()
        self.open_private_window()
        before = self.saved.value("OrvuWindow")

        self.hands.resize(1000, 700, title=PRIVATE)
        self.app.quit()

        self.assertEqual(self.saved.value("OrvuWindow"), before)

    def test_page_that_filled_the_screen_gives_the_window_back_when_it_goes(self):
        other = self.server.page("/other")
        page = self.server.page("/film", body="<script>document.onclick = () => "
                                "document.documentElement.requestFullscreen()</script>")
        self.start_and_open(other, page)

        for leave in ("selectTab2", "closeTab"):
            self.app.action("selectTab3")
            self.wait_for_selected("film")
            self.hands.click()
            until_equal(lambda: self.windows.nodes("list", "Tabs"), [], "the lists of tabs")
            self.app.action(leave)
            until(lambda: self.windows.nodes("list", "Tabs"), "the list of tabs again")
            self.wait_for_selected("other")

    def test_nothing_is_left_running_after_the_end(self):
        page = self.server.page("/page")
        self.start_and_open(page)
        below = descendants(self.app.pid)
        self.assertNotEqual(below, {})

        self.app.quit()

        until(lambda: not any(os.path.exists(f"/proc/{pid}") for pid in below),
              "all processes to end",
              lambda: [name for pid, name in below.items() if os.path.exists(f"/proc/{pid}")])

    def test_ends_when_its_display_ends_it_softly(self):
        self.app.start()

        self.hands.press("ctrl+q")

        self.app.wait_for_end(0)

    def test_becomes_the_default_browser(self):
        self.app.start()

        self.app.app_action("makeDefaultBrowser")

        file = self.home.config / "mimeapps.list"
        until(file.exists, f"{file.name} in the home")
        chosen = configparser.ConfigParser(delimiters=["="])
        chosen.read(file)
        self.assertEqual({scheme: chosen["Default Applications"].get(f"x-scheme-handler/{scheme}")
                          for scheme in ("http", "https")},
                         {scheme: f"{ID}.desktop" for scheme in ("http", "https")})

    def test_window_can_be_minimised_zoomed_and_made_full(self):
        self.app.start()
        self.hands.take()

        self.app.action("performMiniaturize")
        until_equal(lambda: self.hands.windows("Orvu"), [], "the windows on the display")
        self.app.start_again()
        until(lambda: self.hands.windows("Orvu"), "the window on the display again")
        self.assertEqual(self.app.windows(), [1])

        self.app.action("performMiniaturize")
        until_equal(lambda: self.hands.windows("Orvu"), [], "the windows on the display")
        self.app.start_again(self.server.page("/link"))
        until(lambda: self.hands.windows("Orvu"), "the window on the display again")
        self.wait_for_visit(self.server.url("/link"))
        self.assertEqual(self.app.windows(), [1])

        for action in ("performZoom", "performZoom", "toggleFullScreen", "toggleFullScreen"):
            self.app.action(action)
        self.app.check_runs()
