"""What is stored survives damage and full disks, and what is deleted is gone."""

import json
import resource
import secrets
import shutil

from harness.case import BrowserTest
from harness.wait import until, until_equal

ID = "01234567-89AB-CDEF-0123-456789ABCDE{}"
FIRST_COPY = 90  # seconds; the program makes it half a minute after its start
# Where the database is cut, as parts of its length.
CUTS = (0.0, 0.2, 0.5, 0.8, 0.95)


def bookmark(number, url, title):
    return {"id": ID.format(number), "url": url, "title": title, "date": 8.0e8}


class StorageTest(BrowserTest):
    def beside(self, ending):
        return self.saved.file.with_name(self.saved.file.name + ending)

    def wait_for_older_copy(self):
        until(self.beside(".backup").exists, "the older copy", deadline=FIRST_COPY)

    def files_in_folder_with(self, text):
        """The files beside the database, and itself, in which a text stands."""
        return [file.name for file in self.saved.file.parent.iterdir()
                if file.is_file() and text.encode() in file.read_bytes()]

    def wait_until_nowhere(self, text):
        until_equal(lambda: self.files_in_folder_with(text), [], f"the files with {text}")

    def test_the_older_copy_has_nothing_private_and_loses_what_is_deleted(self):
        kept, marked, private = (f"{kind}{secrets.token_hex(8)}"
                                 for kind in ("Kept", "Marked", "Private"))
        page = self.server.page("/page", kept)
        hidden = self.server.url(self.server_path(private), f"{private.lower()}.localhost")
        self.save_beforehand({"orvuBookmarks": json.dumps([bookmark(0, page, marked)]).encode()})
        self.start_and_open(page)
        self.open_privately(hidden, private)

        self.wait_for_older_copy()

        for text in (kept, marked):
            self.assertIn(".backup", "".join(self.files_in_folder_with(text)))
        self.assertEqual(self.files_in_folder_with(private), [])
        self.assertEqual(self.files_in_folder_with(private.lower()), [])

        self.windows.press("push button", "Remove bookmark", "Orvu")

        self.wait_until_nowhere(marked)
        self.assertIn(".backup", "".join(self.files_in_folder_with(kept)))

    def server_path(self, title):
        path = f"/{secrets.token_hex(4)}"
        self.server.page(path, title)
        return path

    def everything(self):
        saved = self.saved
        return {"tabs": saved.session(), "groups": saved.grouped(), "shelf": saved.shelf(),
                "visits": saved.visited(), "bookmarks": saved.bookmarks()}

    def leave_everything(self):
        """Ends a run with something of each kind, and puts an older copy beside the database."""
        urls = self.server.pages("/one", "/two", "/three")
        self.start_with_only(*urls)
        self.bookmark_page()
        self.app.action("park")
        self.app.action("toggleGroup")
        self.app.quit()
        # Its text is longer than a page of the file.
        self.saved.put({"orvuBookmarks": json.dumps(
            [bookmark(number, url, "t" * 30_000) for number, url in enumerate(urls)]).encode()})
        shutil.copy(self.saved.file, self.beside(".backup"))
        return self.everything()

    def test_of_a_database_cut_short_everything_comes_back(self):
        everything = self.leave_everything()
        for kind, found in everything.items():
            self.assertTrue(found, kind)
        whole = self.saved.file.read_bytes()
        backup = self.beside(".backup").read_bytes()
        for cut in CUTS:
            with self.subTest(cut=cut):
                for file in self.saved.file.parent.glob(self.saved.file.name + "*"):
                    file.unlink()
                self.saved.file.write_bytes(whole[:int(len(whole) * cut)])
                self.beside(".backup").write_bytes(backup)

                self.app.start()
                self.wait_for_tabs_of(everything)
                self.app.quit()

                found = self.everything()
                # The pages that come back are visited once more.
                found["visits"] = found["visits"][:len(everything["visits"])]
                self.assertEqual(found, everything)

    def wait_for_tabs_of(self, everything):
        until(lambda: self.saved.session() == everything["tabs"], "the tabs", self.saved.session)

    def test_a_tab_parked_on_a_full_disk_is_there_after_the_next_write_with_space(self):
        one, two, three = self.server.pages("/one", "/two", "/three")
        self.app.start(restores_signals=False)
        self.open(one, two)
        # Past the limit the kernel refuses to write, as it does on a full disk.
        limit = self.beside("-wal").stat().st_size
        resource.prlimit(self.app.pid, resource.RLIMIT_FSIZE, (limit, resource.RLIM_INFINITY))
        self.app.action("park")
        self.wait_for_tabs("New tab", "one")
        self.assertEqual((self.saved.session(), self.saved.shelf()), ([one, two], []))
        resource.prlimit(self.app.pid, resource.RLIMIT_FSIZE,
                         (resource.RLIM_INFINITY, resource.RLIM_INFINITY))

        self.open(three)

        self.assertEqual((self.saved.session(), self.saved.shelf()), ([one, three], [two]))
        self.app.quit()
        self.app.start()
        self.wait_for_session(one, three)
        self.assertEqual(self.saved.shelf(), [two])
