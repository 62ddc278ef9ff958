"""Other browsers of the person, whose data can be imported: their files, as they write them."""

import json
import sqlite3
import time
from contextlib import closing

MICROSECONDS = 1_000_000
SINCE_1601 = 11_644_473_600  # seconds from there to 1970


def pages(host, count):
    """So many addresses with titles."""
    return [(f"https://{host}/{number}", f"{host} {number}") for number in range(count)]


class Browsers:
    """Makes them in a home."""

    def __init__(self, home):
        self._home = home

    def add_chromium(self, bookmarks=(), visits=(), folder="google-chrome/Default"):
        """One of Chromium's family; `folder` is below that of configurations."""
        profile = self._home.config / folder
        profile.mkdir(parents=True)
        nodes = [{"type": "url", "name": title, "url": url} for url, title in bookmarks]
        roots = {"bookmark_bar": {"type": "folder", "name": "Bar", "children": nodes}}
        (profile / "Bookmarks").write_text(json.dumps({"roots": roots}))
        with closing(sqlite3.connect(profile / "History")) as database, database:
            database.execute(
                "CREATE TABLE urls(id INTEGER PRIMARY KEY AUTOINCREMENT, url LONGVARCHAR, title "
                "LONGVARCHAR, visit_count INTEGER DEFAULT 0 NOT NULL, typed_count INTEGER DEFAULT "
                "0 NOT NULL, last_visit_time INTEGER NOT NULL, hidden INTEGER DEFAULT 0 NOT NULL)")
            now = int((time.time() + SINCE_1601 - 3600) * MICROSECONDS)
            database.executemany(
                "INSERT INTO urls(url, title, last_visit_time) VALUES(?, ?, ?)",
                [(url, title, now - number * MICROSECONDS)
                 for number, (url, title) in enumerate(visits)])
        return profile

    def add_firefox(self, bookmarks=(), visits=(), folder="mozilla/firefox/abcd.default-esr"):
        profile = self._home.config / folder
        profile.mkdir(parents=True)
        with closing(sqlite3.connect(profile / "places.sqlite")) as database, database:
            database.execute(
                "CREATE TABLE moz_places(id INTEGER PRIMARY KEY, url LONGVARCHAR, title "
                "LONGVARCHAR, hidden INTEGER DEFAULT 0 NOT NULL, last_visit_date INTEGER)")
            database.execute(
                "CREATE TABLE moz_bookmarks(id INTEGER PRIMARY KEY, type INTEGER, fk INTEGER, "
                "parent INTEGER, position INTEGER, title LONGVARCHAR)")
            now = int((time.time() - 3600) * MICROSECONDS)
            for url, title in visits:
                database.execute("INSERT INTO moz_places(url, title, last_visit_date) "
                                 "VALUES(?, ?, ?)", (url, title, now))
            for url, title in bookmarks:
                place = database.execute("INSERT INTO moz_places(url, title) VALUES(?, ?)",
                                         (url, title)).lastrowid
                database.execute("INSERT INTO moz_bookmarks(type, fk, title) VALUES(1, ?, ?)",
                                 (place, title))
        return profile

    def export(self, bookmarks, name="bookmarks.html"):
        """A file of bookmarks, as browsers export it."""
        file = self._home.folder / name
        lines = [f'<DT><A HREF="{url}">{title}</A>' for url, title in bookmarks]
        file.write_text("<!DOCTYPE NETSCAPE-Bookmark-file-1>\n<DL><p>\n" + "\n".join(lines)
                        + "\n</DL><p>\n")
        return file
