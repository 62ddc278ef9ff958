"""What the program has saved, read beside it."""

import json
import sqlite3
from contextlib import closing


WORK = "11111111-2222-4333-8444-555555555555"
# The values of a person with two profiles.
TWO_PROFILES = {"orvuProfiles": json.dumps([
    {"id": "00000000-0000-0000-0000-00000000F00D", "name": "Personal", "icon": "person.fill",
     "color": 10},
    {"id": WORK, "name": "Work", "icon": "briefcase.fill", "color": 1}]).encode()}


# As the program makes them.
TABLES = """PRAGMA page_size=32768; PRAGMA journal_mode=WAL;
CREATE TABLE defaults (key TEXT PRIMARY KEY NOT NULL, value, checksum INTEGER);
PRAGMA user_version=1;"""
# Of somebody who has finished the first run.
WELCOMED = {"onboarded": 1}


class Saved:
    """The user defaults of one home. Reading never changes them."""

    def __init__(self, file):
        self.file = file

    def value(self, key):
        """The value under a key in the type in which it is stored; nothing if there is none."""
        if not self.file.exists():
            return None
        try:
            with closing(self._open("ro")) as database:
                row = database.execute("SELECT value FROM defaults WHERE key = ?",
                                       (key,)).fetchone()
        except sqlite3.OperationalError:
            return None  # not made yet
        return row[0] if row else None

    def document(self, key):
        """The JSON document under a key; one that does not parse fails the test."""
        value = self.value(key)
        return None if value is None else json.loads(bytes(value))

    def begin(self, values):
        """Makes them, where there are none yet."""
        if self.file.exists():
            return
        self.file.parent.mkdir(mode=0o700, exist_ok=True)
        with closing(sqlite3.connect(self.file)) as database:
            database.executescript(TABLES)
        self.file.chmod(0o600)
        self.put(values)

    def put(self, values):
        """Writes values while the program does not run."""
        with closing(self._open("rw")) as database:
            database.executemany("INSERT OR REPLACE INTO defaults(key, value) VALUES (?, ?)",
                                 values.items())
            database.commit()

    def _open(self, mode):
        return sqlite3.connect(f"file:{self.file}?mode={mode}", uri=True, timeout=10)

    # The documents in the words of the tests.

    def session(self):
        """The addresses of the saved tabs."""
        return [tab["url"] for tab in self.document("browserSession") or []]

    def pinned(self):
        return [tab["url"] for tab in self.document("browserSession") or [] if tab["pinned"]]

    def grouped(self):
        """The addresses of the tabs of each saved group, under the group's name."""
        tabs = self.document("browserSession") or []
        return {group["name"]: [tab["url"] for tab in tabs if tab.get("group") == group["id"]]
                for group in self.document("browserGroups") or []}

    def visits(self):
        """Address and title of each visit, oldest first."""
        return [(visit["url"], visit["title"]) for visit in self.document("browserVisits") or []]

    def visited(self):
        return [url for url, _ in self.visits()]

    def shelf(self):
        return [parked["url"] for parked in self.document("browserShelf") or []]

    def bookmarks(self):
        return [mark["url"] for mark in self.document("orvuBookmarks") or []]
