"""Downloads: from a page, a link or a typed address to the list and to the disk."""

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio  # noqa: E402

from harness import process
from harness.bus import Bus, turn
from harness.case import PRIVATE
from harness.downloads import BUTTON, MEGABYTE, DownloadTest, Payload, digest_of
from harness.site import ALLOW
from harness.wait import until, until_equal


class FileManager:
    """A file manager on the session bus, which writes down what it is to show."""

    NAME = "org.freedesktop.FileManager1"
    INTERFACE = """<node><interface name='org.freedesktop.FileManager1'><method name='ShowItems'>
        <arg type='as' direction='in'/><arg type='s' direction='in'/></method></interface></node>"""

    def __init__(self, address):
        self.shown = []
        self._bus = Bus(address)
        node = Gio.DBusNodeInfo.new_for_xml(self.INTERFACE)
        self._bus.connection.register_object("/org/freedesktop/FileManager1", node.interfaces[0],
                                             self._called, None, None)
        self._bus.take_name(self.NAME)

    def _called(self, _bus, _sender, _path, _interface, _method, arguments, invocation):
        self.shown += arguments.unpack()[0]
        invocation.return_value(None)

    def wait_for(self, *uris):
        def shown():
            turn()
            return self.shown
        until_equal(shown, list(uris), "the files shown")

    def stop(self):
        self._bus.close()


class DownloadsTest(DownloadTest):
    def start_with_link(self, href, attributes=""):
        """A program that shows a page which is one large link; gives the page's address."""
        page = self.server.link_page("/links", href, attributes)
        self.start_and_open(page)
        return page

    def test_an_attachment_is_saved_byte_for_byte_and_the_page_stays(self):
        payload = Payload(3 * MEGABYTE + 17)
        self.downloads.serve("/file", payload, "report.pdf", "application/pdf")
        page = self.start_with_link("/file")
        self.assertFalse(self.downloads.is_shown())

        self.hands.click()
        self.downloads.wait_for_rows("report.pdf, Done")

        self.downloads.wait_for_files("report.pdf")
        self.assertEqual(digest_of(self.folder / "report.pdf"), payload.digest())
        self.assertEqual(self.saved.session(), [page])
        self.assertEqual(self.saved.visited(), [page])

    def test_a_link_may_name_its_file(self):
        payload = Payload(1000)
        self.downloads.serve("/file", payload, kind="text/html")
        self.start_with_link("/file", "download='notes: today.html'")

        self.hands.click()
        self.downloads.wait_for_rows("notes_ today.html, Done")

        self.assertEqual(digest_of(self.folder / "notes_ today.html"), payload.digest())

    def test_what_the_engine_cannot_show_is_saved(self):
        payload = Payload(100_000)
        self.downloads.serve("/archive.zip", payload, kind="application/zip")
        self.start_with_link("/archive.zip")

        self.hands.click()
        self.downloads.wait_for_rows("archive.zip, Done")

        self.assertEqual(digest_of(self.folder / "archive.zip"), payload.digest())

    def test_a_typed_address_of_a_file_is_saved_and_the_tab_stays_new(self):
        url = self.downloads.serve("/file", Payload(1000), "typed.bin")
        self.app.start()

        self.notch.go_to(url)
        self.downloads.wait_for_rows("typed.bin, Done")

        self.wait_for_tabs("New tab")
        self.assertEqual(self.saved.visited(), [])

    def test_a_tab_opened_for_a_file_alone_is_an_empty_tab(self):
        self.downloads.serve("/file", Payload(1000), "elsewhere.bin")
        self.start_with_link("/file", "target=_blank")

        self.hands.click()
        self.downloads.wait_for_rows("elsewhere.bin, Done")

        self.wait_for_tabs("New tab", "links", "New tab")

    def test_the_next_start_does_not_fetch_the_file_again(self):
        self.app.start(self.downloads.serve("/file", Payload(1000), "once.bin"))
        self.downloads.wait_for_rows("once.bin, Done")
        until_equal(self.saved.session, [], "the saved tabs")
        self.app.quit()

        other = self.server.page("/other")
        self.start_and_open(other)

        self.assertEqual(self.server.asked("/file"), 1)
        self.assertEqual(self.downloads.files(), ["once.bin"])

    def test_without_a_length_the_row_stays_at_nothing_until_the_end(self):
        payload = Payload(2 * MEGABYTE + 5)
        url, stream = self.downloads.serve_chunks("/file", payload, "chunks.bin")
        self.app.start(url)
        self.downloads.wait_for_rows("chunks.bin, 0 %")

        stream.go_on()

        self.downloads.wait_for_rows("chunks.bin, Done")
        self.assertEqual(digest_of(self.folder / "chunks.bin"), payload.digest())

    def test_while_it_runs_no_file_bears_the_name(self):
        payload = Payload(4 * MEGABYTE)
        url, stream = self.downloads.serve_halting("/file", payload, "slow.bin")
        self.app.start(url)

        self.downloads.wait_for_half("slow.bin")
        self.assertEqual(len(self.downloads.places()), 1)
        self.assertEqual(self.downloads.files(), self.downloads.places())
        stream.go_on()

        self.downloads.wait_for_rows("slow.bin, Done")
        self.downloads.wait_for_files("slow.bin")
        self.assertEqual(digest_of(self.folder / "slow.bin"), payload.digest())

    def test_a_cancelled_one_leaves_nothing_and_never_failed(self):
        url, stream = self.downloads.serve_halting("/file", Payload(4 * MEGABYTE), "slow.bin")
        self.app.start(url)
        self.downloads.wait_for_half("slow.bin")

        self.windows.press("push button", "Cancel download")
        self.downloads.wait_for_rows("slow.bin, Cancelled")
        stream.break_off()

        self.downloads.wait_for_files()
        self.downloads.wait_for_rows("slow.bin, Cancelled")
        self.assertEqual(self.windows.nodes("push button", "Cancel download"), [])
        self.assertEqual(self.windows.nodes("push button", "Show in Files"), [])

    def test_clear_finished_keeps_what_runs_and_then_hides_the_button(self):
        url, stream = self.downloads.serve_halting("/slow", Payload(4 * MEGABYTE), "slow.bin")
        done = self.downloads.serve("/done", Payload(1000), "done.bin")
        self.app.start(url)
        self.downloads.wait_for_half("slow.bin")
        self.app.start_again(done)
        self.downloads.wait_for_row("done.bin, Done")

        self.windows.press("push button", "Clear Finished")
        until_equal(lambda: len(self.downloads.rows()), 1, "the number of rows")
        self.downloads.wait_for_half("slow.bin")
        stream.go_on()
        self.downloads.wait_for_rows("slow.bin, Done")
        self.windows.press("push button", "Clear Finished")

        until(lambda: not self.downloads.is_shown(), "the button to go")
        self.downloads.wait_for_files("done.bin", "slow.bin")

    def test_every_window_has_the_same_list(self):
        url = self.downloads.serve("/file", Payload(1000), "shared.bin")
        self.app.start(url)
        self.downloads.wait_for_row("shared.bin, Done")
        self.app.app_action("newPrivateWindow")

        self.downloads.wait_for_rows("shared.bin, Done", window=PRIVATE)
        self.windows.press("push button", "Clear Finished", PRIVATE)

        until(lambda: not self.downloads.is_shown("Orvu"), "the button of the other window to go")

    def test_it_goes_on_when_its_tab_is_closed(self):
        payload = Payload(4 * MEGABYTE)
        self.server.page("/other")
        url, stream = self.downloads.serve_halting("/file", payload, "slow.bin")
        self.start_with_link("/file")
        self.open(self.server.url("/other"))
        self.app.action("selectTab2")
        self.hands.click()
        self.downloads.wait_for_half("slow.bin")
        self.hands.press("Escape")

        self.app.action("closeTab")
        self.wait_for_tabs("New tab", "other")
        stream.go_on()

        self.downloads.wait_for_rows("slow.bin, Done")
        self.assertEqual(digest_of(self.folder / "slow.bin"), payload.digest())

    def test_it_goes_on_when_its_private_window_is_closed(self):
        payload = Payload(4 * MEGABYTE)
        url, stream = self.downloads.serve_halting("/file", payload, "slow.bin")
        self.app.start()
        self.open_private_window().go_to(url)
        self.downloads.wait_for_half("slow.bin", PRIVATE)

        self.app.action("performClose", window=2)
        until_equal(self.windows.titles, ["Orvu"], "the windows")
        stream.go_on()

        self.downloads.wait_for_rows("slow.bin, Done")
        self.assertEqual(digest_of(self.folder / "slow.bin"), payload.digest())

    def test_two_at_once_of_one_name_become_two_files(self):
        one, two = Payload(4 * MEGABYTE, 1), Payload(2 * MEGABYTE, 2)
        first, first_stream = self.downloads.serve_halting("/one", one, "same.tar.gz")
        second, second_stream = self.downloads.serve_halting("/two", two, "same.tar.gz")
        self.app.start(first)
        self.downloads.wait_for_half("same.tar.gz")
        self.app.start_again(second)
        self.downloads.wait_for_half("same.tar 2.gz")

        second_stream.go_on()
        self.downloads.wait_for_row("same.tar 2.gz, Done")
        first_stream.go_on()

        self.downloads.wait_for_rows("same.tar 2.gz, Done", "same.tar.gz, Done")
        self.downloads.wait_for_files("same.tar 2.gz", "same.tar.gz")
        self.assertEqual(digest_of(self.folder / "same.tar.gz"), one.digest())
        self.assertEqual(digest_of(self.folder / "same.tar 2.gz"), two.digest())

    def test_a_file_is_shown_in_the_file_manager(self):
        manager = FileManager(self.display.bus_address)
        self.addCleanup(manager.stop)
        url = self.downloads.serve("/file", Payload(1000), "a b.bin")
        self.app.start(url)
        self.downloads.wait_for_rows("a b.bin, Done")

        self.windows.press("push button", "Show in Files")

        manager.wait_for(f"file://{self.folder}/a%20b.bin")

    def test_without_a_file_manager_nothing_happens_to_the_program(self):
        url = self.downloads.serve("/file", Payload(1000), "file.bin")
        self.app.start(url)
        self.downloads.wait_for_rows("file.bin, Done")

        self.windows.press("push button", "Show in Files")
        self.windows.press("push button", "Clear Finished")

        until(lambda: not self.downloads.is_shown(), "the button to go")
        self.app.check_runs()

    def test_the_list_is_worked_with_the_keyboard_alone(self):
        url, _ = self.downloads.serve_halting("/file", Payload(4 * MEGABYTE), "slow.bin")
        self.app.start(url)
        self.click_on("push button", BUTTON)
        self.downloads.wait_for_half("slow.bin")
        self.wait_for_focus("Cancel download")

        self.hands.go_on("Return")
        self.downloads.wait_for_rows("slow.bin, Cancelled")
        self.wait_for_focus("Clear Finished")
        self.hands.go_on("Escape")
        until(lambda: not self.downloads.rows(), "the list to close")
        self.assertTrue(self.downloads.is_shown())

    def test_the_button_is_reached_and_pressed_by_key(self):
        self.app.start(self.downloads.serve("/file", Payload(1000), "file.bin"))
        self.windows.find("push button", BUTTON)
        self.hands.take()

        self.hands.go_on("F6", "Escape")
        self.go_by_key_to(BUTTON)
        self.hands.go_on("Return")

        until_equal(self.downloads.rows, ["file.bin, Done"], "the rows of the list")
        self.wait_for_focus("Show in Files")
        self.hands.go_on("Escape")
        until(lambda: not self.downloads.rows(), "the list to close")
        self.wait_for_focus(BUTTON)

    def test_the_bar_of_a_row_tells_its_value(self):
        _, stream = self.downloads.serve_halting("/file", Payload(4 * MEGABYTE), "slow.bin")
        self.app.start(self.server.url("/file"))
        self.downloads.wait_for_half("slow.bin")

        bar = self.windows.find("progress bar", "Progress of slow.bin")

        self.assertGreater(bar.value, 0.4)
        self.assertLessEqual(bar.value, 0.5)
        stream.go_on()

    def test_the_notch_makes_room_for_the_button(self):
        url = self.downloads.serve("/file", Payload(1000), "file.bin")
        self.app.start()
        self.hands.shrink()
        self.app.start_again(url)
        until(self.downloads.is_shown, "the button")

        def gap():
            button = self.windows.find("push button", BUTTON)
            notch = self.notch.resting()
            return button.box[0] - (notch.box[0] + notch.box[2])
        until(lambda: gap() >= 0, "the notch to end before the button", gap)

    def test_a_long_list_scrolls(self):
        count = 14
        # In frames of their own: in one, a click that comes too soon takes the place of another.
        page = self.server.script_page("/many", f"""let i = 0;
            const clicking = setInterval(() => {{
                const frame = document.createElement('iframe');
                document.body.append(frame);
                const link = frame.contentDocument.createElement('a');
                link.href = URL.createObjectURL(new Blob(['file ' + i]));
                link.download = 'file-' + i + '.txt';
                link.click();
                if (++i === {count}) clearInterval(clicking);
            }}, 200);""")
        self.app.start(page)
        until(self.downloads.is_shown, "the button")
        wanted = sorted(f"file-{number}.txt" for number in range(count))
        self.site.answer(ALLOW)  # more than one, unasked
        self.downloads.wait_for_files(*wanted)
        self.downloads.open()
        until_equal(lambda: sorted(self.downloads.rows()), [f"{name}, Done" for name in wanted],
                    "the rows of the list")

        clear = self.windows.find("push button", "Clear Finished")
        heads = self.windows.nodes("list", BUTTON)[0].box
        self.assertGreater(heads[3], 420)
        self.assertLess(clear.box[1], 560)
        for number in range(count):
            self.assertEqual((self.folder / f"file-{number}.txt").read_text(), f"file {number}")

    def test_quitting_asks_and_then_ends_it_and_leaves_nothing(self):
        url, _ = self.downloads.serve_halting("/file", Payload(4 * MEGABYTE), "slow.bin")
        self.app.start(url)
        self.downloads.wait_for_half("slow.bin")

        self.app.app_action("terminate")
        self.windows.press("push button", "Quit")
        self.app.wait_for_end(0)

        self.downloads.wait_for_files()

    def test_a_download_that_is_kept_keeps_the_program(self):
        url, stream = self.downloads.serve_halting("/file", Payload(4 * MEGABYTE), "slow.bin")
        self.app.start(url)
        self.downloads.wait_for_half("slow.bin")
        self.app.app_action("terminate")
        self.windows.find("label", "A download is still running. Quitting ends it.")

        self.windows.press("push button", "Cancel")
        self.windows.wait_until_gone("push button", "Quit")
        stream.go_on()

        self.downloads.wait_for_row("slow.bin, Done")
        self.app.quit()

    def test_the_list_is_empty_at_each_start(self):
        url = self.downloads.serve("/file", Payload(1000), "file.bin")
        self.app.start(url)
        self.downloads.wait_for_row("file.bin, Done")
        self.app.quit()

        self.app.start()

        self.assertFalse(self.downloads.is_shown())
        self.downloads.wait_for_files("file.bin")

    def test_a_large_file_takes_no_memory(self):
        payload = Payload(200 * MEGABYTE)
        url, stream = self.downloads.serve_halting("/file", payload, "large.bin")
        small = self.downloads.serve("/small", Payload(1000), "small.bin")
        self.app.start(small)
        self.downloads.wait_for_row("small.bin, Done")
        before = self.resident()

        self.app.start_again(url)
        self.downloads.wait_for_half("large.bin")
        middle = self.resident()
        stream.go_on()
        self.downloads.wait_for_row("large.bin, Done")

        after = self.resident()
        for name, most in before.items():
            grown = max(middle[name], after[name]) - most
            self.assertLess(grown, 40 * MEGABYTE, f"{name} grew: {before} {middle} {after}")
        self.assertEqual(digest_of(self.folder / "large.bin"), payload.digest())

    def resident(self):
        """The memory, in bytes, of the program and of the process that fetches."""
        processes = {"orvu": self.app.pid, "fetcher": self.app.fetcher()}
        return {name: process.resident(pid) for name, pid in processes.items()}
