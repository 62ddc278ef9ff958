"""What goes wrong with downloads: never half a file under a name, never another file replaced."""

import os
import resource
import shutil
import signal

from harness.downloads import MEGABYTE, DownloadTest, Payload, digest_of
from harness.wait import until, until_equal


class DownloadFaultsTest(DownloadTest):
    def start_halting(self, size=4 * MEGABYTE, name="slow.bin", **options):
        """A program whose one download stands at its half; gives the stream."""
        _, stream = self.downloads.serve_halting("/file", Payload(size), name)
        page = self.server.link_page("/links", "/file")
        self.app.start(**options)
        self.open(page)
        self.hands.click()
        self.downloads.wait_for_half(name)
        return stream

    def check_still_works(self):
        """The program lives and can download."""
        payload = Payload(100_000, 9)
        self.app.start_again(self.downloads.serve("/after", payload, "after.bin"))
        self.downloads.wait_for_row("after.bin, Done")
        self.assertEqual(digest_of(self.folder / "after.bin"), payload.digest())

    def test_a_connection_that_breaks_off_is_a_failure(self):
        self.start_halting().break_off()

        self.downloads.wait_for_rows("slow.bin, Couldn't finish")
        self.downloads.wait_for_files()
        self.assertEqual(self.windows.nodes("push button", "Cancel download"), [])
        self.check_still_works()

    def test_chunks_that_break_off_are_a_failure(self):
        url, stream = self.downloads.serve_chunks("/file", Payload(2 * MEGABYTE), "chunks.bin")
        self.app.start(url)
        self.downloads.wait_for_rows("chunks.bin, 0 %")

        stream.break_off()

        self.downloads.wait_for_rows("chunks.bin, Couldn't finish")
        self.downloads.wait_for_files()

    def test_a_link_that_the_server_does_not_know_is_a_failure(self):
        page = self.server.link_page("/links", "/missing", "download='a.bin'")
        self.start_and_open(page)

        self.hands.click()

        self.downloads.wait_for_row("a.bin, Couldn't finish")
        self.downloads.wait_for_files()
        self.assertEqual(self.saved.session(), [page])

    def test_a_full_disk_is_a_failure_that_leaves_nothing(self):
        # Past the limit the kernel refuses to write, as it does on a full disk.
        stream = self.start_halting(restores_signals=False)
        limit = 3 * MEGABYTE
        resource.prlimit(self.app.fetcher(), resource.RLIMIT_FSIZE, (limit, limit))

        stream.go_on()

        self.downloads.wait_for_rows("slow.bin, Couldn't finish")
        self.downloads.wait_for_files()
        self.check_still_works()

    def test_the_end_of_the_fetching_process_is_a_failure_that_leaves_nothing(self):
        self.start_halting()

        os.kill(self.app.fetcher(), signal.SIGKILL)

        self.downloads.wait_for_rows("slow.bin, Couldn't finish")
        self.downloads.wait_for_files()
        self.check_still_works()

    def test_a_missing_folder_is_made(self):
        self.assertFalse(self.folder.exists())
        self.app.start()

        self.check_still_works()

    def test_where_no_folder_can_be_made_the_download_fails(self):
        self.folder.write_text("a file of the person's")
        self.app.start(self.downloads.serve("/file", Payload(1000), "file.bin"))

        self.downloads.wait_for_rows("Download, Couldn't finish")

        self.assertEqual(self.folder.read_text(), "a file of the person's")
        self.folder.unlink()
        self.check_still_works()

    def test_a_folder_that_goes_in_the_middle_is_a_failure(self):
        stream = self.start_halting()
        shutil.rmtree(self.folder)

        stream.go_on()

        self.downloads.wait_for_rows("slow.bin, Couldn't finish")
        self.check_still_works()
        self.downloads.wait_for_files("after.bin")

    def test_a_half_file_that_the_person_deletes_is_a_failure(self):
        stream = self.start_halting()
        for half in self.folder.glob(".orvu-download-*/*"):
            half.unlink()

        stream.go_on()

        self.downloads.wait_for_rows("slow.bin, Couldn't finish")
        self.downloads.wait_for_files()

    def test_an_existing_file_is_never_replaced(self):
        self.folder.mkdir()
        mine = {"file.bin": "mine", "file.bin.wkdownload": "mine too", "file 2.bin": "and this"}
        for name, text in mine.items():
            (self.folder / name).write_text(text)
        payload = Payload(100_000)

        self.app.start(self.downloads.serve("/file", payload, "file.bin"))

        self.downloads.wait_for_rows("file 3.bin, Done")
        self.downloads.wait_for_files(*mine, "file 3.bin")
        self.assertEqual(digest_of(self.folder / "file 3.bin"), payload.digest())
        for name, text in mine.items():
            self.assertEqual((self.folder / name).read_text(), text)

    def test_a_file_that_comes_in_the_middle_keeps_its_name(self):
        stream = self.start_halting()
        (self.folder / "slow.bin").write_text("mine")

        stream.go_on()

        self.downloads.wait_for_rows("slow 2.bin, Done")
        self.downloads.wait_for_files("slow.bin", "slow 2.bin")
        self.assertEqual((self.folder / "slow.bin").read_text(), "mine")
        self.assertEqual(digest_of(self.folder / "slow 2.bin"), Payload(4 * MEGABYTE).digest())

    def test_a_killed_program_leaves_nothing_under_the_name_and_the_next_one_tidies_up(self):
        self.start_halting()
        (self.folder / "mine.wkdownload").write_text("mine")

        self.app.kill()
        left = self.downloads.places()
        self.assertEqual(len(left), 1)
        self.assertEqual(self.downloads.files(), sorted([*left, "mine.wkdownload"]))

        self.app.start()
        until_equal(self.downloads.files, ["mine.wkdownload"], "the files in the folder")

    def test_a_hostile_name_stays_in_the_folder(self):
        names = ["../../../evil.bin", "..%2F..%2Fevil", ".bashrc", "a:b.bin", "x" * 400 + ".bin"]
        self.app.start()
        for number, name in enumerate(names):
            self.app.start_again(self.downloads.serve(f"/{number}", Payload(10, number), name))
            until(lambda wanted=number + 1: len(self.finished()) == wanted, f"file {name!r}",
                  self.finished)

        self.assertEqual([path.name for path in self.home.folder.rglob("*evil*")
                          if path.parent != self.folder], [])
        for name in self.downloads.files():
            self.assertFalse(name.startswith("."), name)
            self.assertLessEqual(len(name.encode()), 255)

    def finished(self):
        self.downloads.open()
        return [row for row in self.downloads.rows() if row.endswith(", Done")]
