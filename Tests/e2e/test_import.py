"""Bringing bookmarks and history over from another browser."""

import hashlib

from harness.browsers import Browsers, pages
from harness.case import BrowserTest
from harness.importing import TITLE, ImportWindow
from harness.notch import Notch
from harness.profiles import Profiles
from harness.saved import TWO_PROFILES, WORK
from harness.settings import SettingsWindow
from harness.wait import until, until_equal

DONE = "Brought over 2 new bookmarks and 3 visits from Chrome."
AGAIN = "Everything from Chrome is already in Orvu."
FOOT = "Passwords stay in your old browser or password manager. Orvu never reads them."


def fingerprints(folder):
    """All that is to be seen of the files in a folder."""
    return {file.name: (file.stat().st_mtime_ns, file.stat().st_size,
                        hashlib.sha256(file.read_bytes()).hexdigest())
            for file in folder.iterdir()}


class ImportTest(BrowserTest):
    def setUp(self):
        super().setUp()
        self.browsers = Browsers(self.home)
        self.importing = ImportWindow(self.windows, self.hands)

    def add_chrome(self):
        return self.browsers.add_chromium(pages("marked.example", 2), pages("seen.example", 3))

    def add_firefox(self):
        return self.browsers.add_firefox(pages("fox.example", 1), pages("den.example", 2))

    def open_window(self):
        self.app.app_action("importBookmarks")
        self.importing.wait_until_open()

    def start(self):
        self.app.start()
        self.open_window()

    def keys(self, *keys):
        self.hands.press(*keys, title=TITLE)

    def wait_for_bookmarks(self, *pages_):
        until_equal(self.saved.bookmarks, [url for url, _ in pages_], "the saved bookmarks")

    def wait_for_picked(self, name):
        until_equal(self.importing.picked, [name], "the browser that is picked")

    # What it says.

    def test_the_browsers_of_this_home_are_listed_and_the_first_is_picked(self):
        self.add_firefox()
        self.add_chrome()
        self.start()

        until_equal(self.importing.rows, ["Chrome, Found", "Firefox, Found"], "the rows")
        self.wait_for_picked("Chrome")
        self.assertEqual(self.importing.choices(), {"Bookmarks": True, "History": True})
        labels = self.importing.labels()
        self.assertIn("Bring your web with you", labels)
        self.assertIn("Orvu found these browsers on this computer. Pick one, choose what to bring, "
                      "and it lands in Bookmarks and History.", labels)
        self.assertIn("The last 30 days, so suggestions know where you go", labels)
        self.assertIn(FOOT, labels)

    def test_without_another_browser_a_file_can_be_brought(self):
        self.start()

        self.importing.wait_for_message(
            "Orvu didn't find another browser on this computer. You can still bring an exported "
            "bookmarks file.")
        self.assertFalse(self.importing.button("Import").is_sensitive)
        self.assertTrue(self.importing.button("From a file…").is_sensitive)

    def test_it_opens_from_the_settings_too_and_begins_afresh(self):
        self.add_chrome()
        self.start()
        self.keys("Return")
        self.importing.wait_for_message(DONE)
        self.keys("Escape")
        self.importing.wait_until_closed()

        self.hands.press("ctrl+comma")
        SettingsWindow(self.windows, self.hands).press(TITLE + "…")
        self.importing.wait_until_open()
        self.assertNotIn(DONE, self.importing.labels())

    # Importing.

    def test_by_pointer_both_are_brought_and_nothing_of_the_other_browser_changes(self):
        folder = self.add_chrome()
        before = fingerprints(folder)
        self.start()
        self.hands.click(at=self.importing.button("Import from Chrome").middle, title=TITLE)

        self.importing.wait_for_message(DONE)
        self.wait_for_bookmarks(*pages("marked.example", 2))
        self.assertEqual(sorted(self.saved.visited()),
                         [url for url, _ in pages("seen.example", 3)])
        self.assertEqual(fingerprints(folder), before)
        self.assertEqual([path.name for path in self.home.cache.rglob("OrvuImport*")], [])
        self.hands.click(at=self.importing.button("Import from Chrome").middle, title=TITLE)
        self.importing.wait_for_message(AGAIN)

    def test_by_key_alone_another_browser_without_its_history_is_brought(self):
        self.add_chrome()
        self.add_firefox()
        self.start()
        self.go_to("Chrome, Found")
        self.keys("Down")
        self.wait_for_picked("Firefox")
        self.go_to("History")
        self.keys("space")
        until_equal(lambda: self.importing.choices()["History"], False, "the choice of history")
        self.keys("Return")

        self.importing.wait_for_message("Brought over 1 new bookmark from Firefox.")
        self.wait_for_bookmarks(*pages("fox.example", 1))
        self.assertEqual(self.saved.visits() or [], [])

    def go_to(self, name):
        """Gives the keyboard to what is called like that, by the key Tab."""
        for _ in range(20):
            if name in [node.name for node in self.windows.focused(TITLE)]:
                return
            self.keys("Tab")
        self.fail(f"the keyboard never comes to {name}")

    def test_with_both_choices_off_nothing_can_be_imported(self):
        self.add_chrome()
        self.start()
        for name in ("Bookmarks", "History"):
            self.click_choice(name)
        until(lambda: not self.importing.button("Import from Chrome").is_sensitive,
              "the button to be off")
        self.keys("Return")
        self.click_choice("Bookmarks")
        until(lambda: self.importing.button("Import from Chrome").is_sensitive,
              "the button to be on")

        self.assertEqual(self.saved.bookmarks(), [])

    def click_choice(self, name):
        was = self.importing.choices()[name]
        self.hands.click(at=self.windows.find("check box", name, TITLE).middle, title=TITLE)
        until_equal(lambda: self.importing.choices()[name], not was, f"the choice of {name}")

    def test_what_came_is_offered_in_all_windows_of_the_profile(self):
        self.add_chrome()
        self.app.start()
        self.app.app_action("newWindow")
        until_equal(self.app.windows, [1, 2], "the windows")
        self.open_window()
        self.keys("Return")
        self.importing.wait_for_message(DONE)
        self.keys("Escape")
        for number in (1, 2):
            self.app.action("editAddress", window=number)
            notch = Notch(self.windows, self.hands)
            notch.wait_until_open()
            self.hands.type_on("seen.example 1")
            until(lambda notch=notch: [row for row in notch.rows()
                                       if row.startswith("seen.example 1,")], "the visit")
            self.app.action("performClose", window=number)
            until(lambda number=number: number not in self.app.windows(), "the window to close")

    def test_a_window_closed_at_once_brings_everything_all_the_same(self):
        many = pages("many.example", 2000)
        self.browsers.add_chromium(many, pages("seen.example", 4000))
        self.start()
        self.keys("Return", "Escape")

        self.importing.wait_until_closed()
        self.wait_for_bookmarks(*many)
        until_equal(lambda: len(self.saved.visits() or []), 4000, "the saved visits")

    def test_it_lands_in_the_profile_of_the_window_in_front(self):
        self.add_chrome()
        self.save_beforehand({**TWO_PROFILES, "lastProfile": WORK})
        self.start()
        self.importing.wait_for_message(
            "Orvu found these browsers on this computer. Pick one, choose what to bring, and it "
            "lands in your Work profile.")
        self.keys("Return")
        self.importing.wait_for_message(DONE)

        marks = self.saved.document(f"orvuBookmarks.{WORK.upper()}")
        self.assertEqual([mark["url"] for mark in marks],
                         [url for url, _ in pages("marked.example", 2)])
        self.assertEqual(self.saved.bookmarks(), [])

    def test_it_goes_with_its_profile(self):
        self.add_chrome()
        self.save_beforehand({**TWO_PROFILES, "lastProfile": WORK})
        self.start()
        profiles = Profiles(self.windows, self.hands)
        profiles.open_menu("Work")
        profiles.choose("Delete Work…")
        profiles.button("Delete").press()

        self.importing.wait_until_closed()

    # What goes wrong.

    def test_files_that_the_system_hides_are_named_with_their_folder(self):
        folder = self.add_chrome()
        (folder / "History").write_bytes(b"")
        self.start()
        self.keys("Return")

        self.importing.wait_for_message(
            "The system didn't let Orvu read Chrome's data. Give Orvu leave to read its folder, "
            "then import again.")
        self.assertIn(f"Chrome keeps its data in {folder}. See to it that you may read that "
                      "folder, and Orvu too where it runs in a sandbox of its own. Or export the "
                      "bookmarks there, and use “From a file…”.", self.importing.labels())
        self.assertEqual(self.saved.bookmarks(), [])

    def test_files_of_rubbish_bring_nothing_and_end_nothing(self):
        folder = self.add_chrome()
        for name in ("History", "Bookmarks"):
            (folder / name).write_bytes(bytes(range(256)) * 400)
        self.start()
        self.keys("Return")

        self.importing.wait_for_message(AGAIN)
        self.app.check_runs()

    # From a file.

    def choose_file(self, file):
        self.windows.press("push button", "From a file…", TITLE)
        title = "Choose a bookmarks file you exported from Firefox or another browser."
        until(lambda: title in self.windows.titles(), "the panel", self.windows.titles)
        # The panel takes a path that is typed.
        self.hands.type(str(file), title=title)
        self.hands.go_on("Return")
        until(lambda: title not in self.windows.titles(), "the panel to go")

    def test_an_exported_file_is_brought(self):
        file = self.browsers.export(pages("kept.example", 3))
        self.start()
        self.choose_file(file)

        self.importing.wait_for_message("Added 3 bookmarks.")
        self.wait_for_bookmarks(*pages("kept.example", 3))
        self.choose_file(file)
        self.importing.wait_for_message("No new bookmarks in that file.")
