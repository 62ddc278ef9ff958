"""Saved values that nobody would write, and a database that is none."""

import json
import sqlite3

from harness.case import BrowserTest
from harness.wait import until

DOCUMENTS = ["orvuProfiles", "kestoSkills", "orvuSitePermissions", "browserVisits",
             "browserShelf", "browserSession", "browserGroups", "orvuBookmarks"]
SETTINGS = ["searchEngine", "searchSuggestions", "searchAnswers", "searchAnswerOpen",
            "restoreTabs", "blockTrackers", "kestoReadsPages", "narrowTabs", "autoUpdate",
            "readerSize", "readerTheme", "onboarded", "launchCount", "lastProfile",
            "showWhatsNewFor", "OrvuWindow"]
KEYS = DOCUMENTS + SETTINGS
ID = "01234567-89AB-CDEF-0123-456789ABCDEF"
DEEP = 200_000


def every(value):
    return {key: value for key in KEYS}


def documents(value):
    return {key: value for key in DOCUMENTS}


def blob(value):
    return json.dumps(value).encode()


class HostileValuesTest(BrowserTest):
    fresh_database = None

    def setUp(self):
        super().setUp()
        self.page = self.server.page("/page")
        if self.fresh_database is None:
            self.app.start()
            self.app.quit()
            type(self).fresh_database = self.saved.file.read_bytes()
        self.saved.file.parent.mkdir(exist_ok=True)
        self.saved.file.write_bytes(self.fresh_database)

    def is_saved(self):
        """Whether the page stands in the saved history and session. Hostile values may still
        stand there instead."""
        try:
            return self.saved.visited()[-1] == self.page and self.page in self.saved.session()
        except (TypeError, ValueError, LookupError, AttributeError, RecursionError):
            return False

    def check_works(self):
        """The program starts, shows its window, loads a page, and keeps what it then saves."""
        self.app.start()
        try:
            self.notch.resting()
            self.app.start_again(self.page)
            self.server.wait_for("/page")
            until(self.is_saved, "the page among the saved ones")
            until(lambda: "page" in self.windows.tabs(), "the page's tab", self.windows.tabs)
            self.app.quit()
        finally:
            if self.app.is_running():
                self.app.kill()

    def check_works_with(self, values):
        self.saved.put(values)
        self.check_works()

    def test_values_of_another_type(self):
        for value in (7, -2**63, 1.5e308, float("inf"), "text", None, b"", b"\x00"):
            with self.subTest(value=value):
                self.check_works_with(every(value))

    def test_documents_of_another_shape(self):
        for value in ({}, 1, [None], [[]], [{}], [{"url": 1, "pinned": "x"}]):
            with self.subTest(value=value):
                self.check_works_with(documents(blob(value)))

    def test_truncated_documents(self):
        whole = {
            "orvuProfiles": blob([{"id": ID, "name": "n", "icon": "i", "color": 1}]),
            "browserVisits": blob([{"id": ID, "url": self.page, "title": "t", "date": 1.5}]),
            "browserShelf": blob([{"id": ID, "url": self.page, "title": "t"}]),
            "browserSession": blob([{"url": self.page, "pinned": True, "group": ID}]),
            "browserGroups": blob([{"id": ID, "name": "n", "color": 1, "collapsed": False}]),
            "orvuBookmarks": blob([{"id": ID, "url": self.page, "title": "t", "date": 1.5}]),
        }
        for cut in (1, 40):
            with self.subTest(cut=cut):
                self.check_works_with({key: text[:-cut] for key, text in whole.items()})

    def test_deep_nesting(self):
        for text in ('{"a":' * DEEP + "1" + "}" * DEEP, "[" * DEEP):
            with self.subTest(text=text[:5]):
                self.check_works_with(documents(text.encode()))

    def test_text_that_is_no_text(self):
        bad = b'[{"id":"' + ID.encode() + b'","url":"http://\xff\xfe/\xc0\x80","title":"\xed\xa0' \
              b'\x80","name":"\xff","icon":"\xff","color":1,"date":1,"pinned":false}]'
        self.check_works_with(documents(bad) | {key: "\x00\x01\x7f" for key in SETTINGS})

    def test_numbers_out_of_all_bounds(self):
        big = 10**400
        text = json.dumps([{"id": ID, "url": self.page, "title": "t", "name": "n", "icon": "i",
                            "pinned": False, "collapsed": False, "color": big, "date": big}])
        color = blob([{"id": ID, "name": "n", "color": -2**63, "collapsed": True}])
        session = blob([{"url": self.page, "pinned": False, "group": ID}])
        date = blob([{"id": ID, "url": self.page, "title": "t", "date": 1.7e308}])
        self.check_works_with(documents(text.encode()))
        self.check_works_with({"browserGroups": color, "browserSession": session,
                               "browserVisits": date, "orvuBookmarks": date})

    def test_addresses_that_no_page_has(self):
        addresses = [["javascript:alert(1)", "about:blank", "unknown://x", "file:///dev/null",
                      "webkit://gpu", "http://" + "x" * 100_000 + "/"],
                     ["x"], ["http://"], ["http://\u202e\x00/"]]
        for urls in addresses:
            with self.subTest(urls=[url[:40] for url in urls]):
                self.check_works_with({
                    "browserSession": blob([{"url": url, "pinned": False} for url in urls]),
                    "browserVisits": blob([{"id": ID, "url": url, "title": "\x00", "date": 8e8}
                                           for url in urls]),
                    "browserShelf": blob([{"id": ID, "url": url, "title": "\x00"}
                                          for url in urls])})

    def test_settings_that_mean_nothing(self):
        self.check_works_with({"lastProfile": ID, "searchEngine": "none", "readerSize": -1e300,
                               "launchCount": 2**63 - 1, "OrvuWindow": "-5 x 99999999999999999999",
                               "restoreTabs": "perhaps", "narrowTabs": "YES"})

    def test_twenty_megabytes(self):
        visit = {"id": ID, "url": self.page, "title": "t" * 150, "date": 8.0e8}
        many = blob([visit] * 80_000)
        self.assertGreater(len(many), 20_000_000)
        self.check_works_with({"browserVisits": many, "browserSession": many, "orvuBookmarks": many,
                               "lastProfile": "x" * 20_000_000})
        self.check_works_with(documents(b"[" + b" " * 20_000_000))

    def test_damaged_database_is_set_aside(self):
        garbage = b"This is no database." * 1000
        file = self.saved.file
        for other in file.parent.glob(file.name + "*"):
            other.unlink()
        file.write_bytes(garbage)

        self.check_works()

        aside = [each.read_bytes() for each in file.parent.iterdir() if each != file]
        self.assertIn(garbage, aside)

    def test_database_with_another_table_works(self):
        self.saved.file.unlink()
        database = sqlite3.connect(self.saved.file)
        database.execute("CREATE TABLE defaults(other TEXT)")
        database.commit()
        database.close()

        self.check_works()

    def test_database_cut_in_the_middle_works(self):
        self.saved.put({"showWhatsNewFor": "x" * 100_000})
        content = self.saved.file.read_bytes()
        for other in self.saved.file.parent.glob(self.saved.file.name + "-*"):
            other.unlink()
        self.saved.file.write_bytes(content[:len(content) // 2 + 100])

        self.check_works()
