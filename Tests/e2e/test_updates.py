"""Updates: a release is found, fetched, checked and put in the place of the one that runs."""

import os

from harness.case import PRIVATE, BrowserTest
from harness.dialogs import STAY, Dialogs, form_page
from harness.images import png
from harness.process import descendants, open_files
from harness.settings import TITLE, SettingsWindow
from harness.updates import FEED, HOST, NOTES, STRANGE, Release, Updates, programs
from harness.wait import until, until_equal

UPDATE, WHEEL, RESTART = "Update", "Downloading the update…", "Restart to update"
QUESTION = "Keep Orvu up to date?"
ALONE, ASK = "Update automatically", "Ask me"
UNREACHABLE = f"Couldn't reach {HOST}. Check your connection and try again."
OLD, NEW = ("1.0", 10), ("1.2", 12)


class UpdatesTest(BrowserTest):
    trusts_test_authority = True

    def setUp(self):
        super().setUp()
        self.updates = Updates(self)
        self.settings = SettingsWindow(self.windows, self.hands)

    def start(self, automatic=None, *urls):
        """Starts the program for the second time, as that of somebody who decided so."""
        self.save_beforehand({} if automatic is None else {"autoUpdate": int(automatic)})
        self.start_with_only(*urls or [self.server.page("/only")])

    def offer(self):
        return self.updates.offer(Release(*NEW))

    def check(self):
        self.app.app_action("checkForUpdates")

    def check_alone(self):
        """The same, after the check that comes by itself, which would take away what it says."""
        self.updates.site.wait_for(FEED)
        self.check()

    def make_ready(self):
        self.offer()
        self.check()
        self.windows.find("push button", RESTART)

    def wait_for_line(self, line):
        until(lambda: line in self.settings.labels(), f"the line {line!r}", self.settings.labels)

    def wait_for_copies(self, *names):
        until_equal(lambda: [each for each in self.updates.copies() if each.endswith(".app")],
                    sorted(names), "the copies of the program")

    # From the offer to the new program.

    def test_a_release_is_offered_fetched_and_run_with_all_tabs(self):
        pages = self.server.pages("/one", "/two")
        self.offer()
        self.start(False, *pages)
        self.windows.press("push button", UPDATE)
        self.windows.find("push button", RESTART)
        self.assertEqual(self.updates.installed(), OLD)

        self.windows.press("push button", RESTART)
        self.app.adopt()

        self.assertEqual(self.updates.installed(), NEW)
        self.assertEqual(os.readlink(f"/proc/{self.app.pid}/exe"),
                         str(self.updates.application / "bin/orvu"))
        self.wait_for_tabs("one", "two", "What is new")
        self.wait_for_selected("What is new")
        self.wait_for_copies("Orvu.app")
        self.app.app_action("openSettings")
        self.wait_for_line("Orvu 1.2")

    def test_the_notes_open_once(self):
        self.make_ready_for_quit()
        self.app.quit()
        self.app.start()
        self.updates.site.wait_for(NOTES)
        self.wait_for_selected("What is new")
        self.app.action("closeTab")
        self.wait_for_tabs("only")
        self.app.quit()
        self.updates.site.forget()

        self.app.start()
        self.updates.site.wait_for(FEED)  # long after the notes would be asked for

        self.assertEqual(self.updates.site.asked(NOTES), 0)

    def make_ready_for_quit(self):
        self.start(True)
        self.make_ready()

    def test_what_may_come_by_itself_comes_at_the_end(self):
        self.make_ready_for_quit()

        self.app.quit()

        until_equal(self.updates.installed, NEW, "the installed copy")
        self.app.start()
        self.assertEqual(os.readlink(f"/proc/{self.app.pid}/exe"),
                         str(self.updates.application / "bin/orvu"))
        self.wait_for_copies("Orvu.app")

    def test_who_wants_to_be_asked_is_not_updated_at_the_end(self):
        self.start(False)
        self.make_ready()

        self.app.quit()
        self.app.start()

        self.assertEqual(self.updates.installed(), OLD)
        self.assertIsNone(self.saved.value("showWhatsNewFor"))

    def test_a_page_that_asks_keeps_the_update_waiting(self):
        self.start(False, self.server.url(form_page(self.server, "form")))
        self.hands.press("x")
        self.server.wait_for_report("form-x")
        self.make_ready()

        self.windows.press("push button", RESTART)
        Dialogs(self.windows, self.hands).press(STAY)

        self.windows.find("push button", RESTART)
        self.app.check_runs()
        self.assertEqual(self.updates.installed(), OLD)

    def test_it_is_found_in_the_background_and_fetched_only_if_that_is_wanted(self):
        archive = self.offer()
        self.start(True)

        self.windows.find("push button", RESTART)

        self.assertEqual([request.path for request in self.updates.site.requests],
                         [FEED, archive, f"{archive}.signed"])

    # What is asked, and where.

    def test_the_question_comes_at_the_second_start_and_not_into_private_windows(self):
        self.app.start()
        self.open_private_window()
        self.updates.site.wait_for(FEED)  # later than the question would come
        self.assertEqual(self.windows.nodes("push button", ASK), [])
        self.app.quit()

        self.app.start()
        self.open_private_window()

        self.windows.find("push button", ASK)
        self.assertEqual(self.windows.nodes("push button", ASK, PRIVATE), [])

    def test_the_answer_in_one_window_hides_the_question_there_alone(self):
        self.start()
        self.app.app_action("newWindow")
        until(lambda: len(self.windows.nodes("push button", ASK)) == 2, "the question twice")

        self.windows.nodes("push button", ASK)[0].press()

        until_equal(lambda: len(self.windows.nodes("push button", ASK)), 1, "the questions")
        self.assertEqual(self.saved.value("autoUpdate"), 0)
        self.windows.press("push button", ALONE)
        until(lambda: not self.windows.nodes("push button", ALONE), "no question")
        self.assertEqual(self.saved.value("autoUpdate"), 1)

    def test_the_question_is_answered_by_key(self):
        self.start()
        self.windows.find("push button", ASK)

        self.go_by_key_to(ALONE, "F6")
        self.hands.go_on("Tab")
        self.wait_for_focus(ASK)
        self.hands.go_on("space")

        until(lambda: not self.windows.nodes("push button", ASK), "no question")
        self.assertEqual(self.saved.value("autoUpdate"), 0)

    def test_yes_looks_for_an_update_and_fetches_it(self):
        self.offer()
        self.start()

        self.windows.press("push button", ALONE)

        self.windows.find("push button", RESTART)

    def test_a_private_window_alone_shows_the_update_too(self):
        self.start(False)
        self.open_private_window()
        self.app.action("performClose")
        until_equal(self.windows.titles, [PRIVATE], "the windows")
        self.make_ready()

        self.windows.nodes("push button", RESTART, PRIVATE)[0].press()
        self.app.adopt()

        self.assertEqual(self.updates.installed(), NEW)

    # What comes of a check.

    def test_the_settings_tell_what_a_check_comes_to(self):
        self.start(False)
        self.check_alone()
        self.wait_for_line(UNREACHABLE)
        self.updates.offer(Release("1.0", 10))

        self.settings.press("Check Now")

        self.wait_for_line("Orvu is up to date.")

    def test_the_keyboard_stays_at_the_button_that_checks(self):
        self.updates.offer(Release("1.0", 10))
        self.start(False)
        self.app.app_action("openSettings")
        self.settings.wait_until_open()
        self.hands.press("Tab", title=TITLE)
        self.go_by_key_to("Check Now")

        self.hands.go_on("space")

        self.wait_for_line("Orvu is up to date.")
        self.wait_for_focus("Check Now")

    def test_what_another_key_signed_is_refused_and_leaves_nothing(self):
        self.start(False)
        before = self.updates.snapshot()
        self.updates.offer(Release(*NEW), secret=STRANGE)

        self.check_alone()

        self.wait_for_line("The update isn't signed by Zarvo, so Orvu didn't install it.")
        until_equal(self.updates.snapshot, before, "the folder of the program")

    def test_an_older_release_is_no_update_whatever_the_server_says(self):
        self.updates.offer(Release("1.2", 9), claimed=12)
        self.start(False)

        self.check_alone()

        self.wait_for_line("The update isn't signed by Zarvo, so Orvu didn't install it.")
        self.assertEqual(self.updates.installed(), OLD)

    def test_a_redirect_is_not_followed(self):
        elsewhere = self.proxy.site("elsewhere.example")
        self.offer()
        elsewhere.answers[FEED] = self.updates.site.answers[FEED]
        self.updates.site.redirect(FEED, elsewhere.url(FEED))
        self.start(False)

        self.check_alone()

        self.wait_for_line(UNREACHABLE)
        self.assertEqual(elsewhere.requests, [])

    def test_a_manifest_without_an_end_is_none(self):
        stopped = []

        def pour(handler):
            handler.send_response(200)
            handler.end_headers()
            try:
                while True:
                    handler.wfile.write(b" " * 65536)
            except OSError:
                stopped.append(True)  # nobody listens any more
        self.updates.site.answers[FEED] = pour
        self.start(False)

        self.check_alone()

        self.wait_for_line(UNREACHABLE)
        until(lambda: stopped, "an end of the listening")

    def test_an_archive_that_breaks_off_is_refused_and_leaves_nothing(self):
        path = self.offer()
        whole = self.updates.site.answers[path]

        def half(handler):
            handler.reply = lambda status, kind, body: self.break_off(handler, body)
            whole(handler)
        self.updates.site.answers[path] = half
        self.start(False)
        self.windows.find("push button", UPDATE)  # the check of each start is over
        before = self.updates.snapshot()

        self.check()

        self.wait_for_line(f"The download didn't match what {HOST} published.")
        until_equal(self.updates.snapshot, before, "the folder of the program")

    @staticmethod
    def break_off(handler, body):
        handler.send_response(200)
        handler.send_header("Content-Length", str(len(body)))
        handler.end_headers()
        handler.wfile.write(body[:len(body) // 2])
        handler.close_connection = True

    def test_a_copy_that_the_system_keeps_current_asks_for_nothing(self):
        self.app.command = [str(programs() / "orvu-release-1.0")]
        self.start()

        self.check()

        self.wait_for_line("Updates of Orvu come with the system's; ask the administrator of this "
                           "computer.")
        self.assertEqual(self.updates.site.requests, [])

    # What goes out, and what goes wrong.

    def test_requests_tell_nothing_of_who_asks(self):
        self.start(False)
        self.make_ready()

        for request in self.updates.site.requests:
            self.assertEqual(request.query, [])
            self.assertEqual(request.headers.items(), [
                ("Cache-Control", "no-cache"), ("User-Agent", "Orvu"),
                ("Connection", "Keep-Alive"), ("Host", HOST)])

    def test_a_program_goes_on_after_its_folder_was_exchanged(self):
        self.start(False)
        self.updates.exchange(Release(*NEW))

        self.server.answers["/icon.png"] = lambda handler: handler.reply(
            200, "image/png", png(32))
        self.server.page("/after", body="<link rel=icon href=/icon.png>")
        self.open(self.server.url("/after", "www.after.localhost"))

        until(lambda: list(self.home.folder.rglob("Favicons/after.localhost.png")), "its icon")
        self.wait_for_tabs("only", "after")
        self.assertEqual(self.updates.installed(), NEW)

    def test_what_the_program_starts_does_not_count_as_a_running_copy(self):
        self.start(False)

        holders = [pid for pid in (self.app.pid, *descendants(self.app.pid))
                   if any(name.endswith("/.Orvu-update.running") for name in open_files(pid))]

        self.assertEqual(holders, [self.app.pid])

    def test_a_release_that_shows_no_window_is_taken_back_and_not_offered_again(self):
        broken = Release(*NEW, program=b"#!/bin/sh\nexit 1\n")
        self.updates.offer(broken)
        self.start(True)
        self.check()
        self.windows.find("push button", RESTART)
        self.app.quit()
        until_equal(self.updates.installed, NEW, "the installed copy")
        for _ in range(2):
            self.assertEqual(self.app.run().returncode, 1)
        self.updates.site.forget()

        self.app.start()

        self.assertEqual(self.updates.installed(), OLD)
        self.updates.site.wait_for(FEED)
        self.check()
        self.wait_for_line("Orvu is up to date.")
        self.assertEqual(set(self.updates.site.asked_paths()), {FEED})


class StrangeServerTest(BrowserTest):
    """The program trusts nobody whom the test could vouch for."""

    def test_a_server_without_a_certificate_for_its_name_is_not_reached(self):
        updates = Updates(self)
        updates.offer(Release(*NEW))
        self.app.start()
        self.proxy.wait_for(f"CONNECT {HOST}:443")  # the check of each start

        self.app.app_action("checkForUpdates")

        SettingsWindow(self.windows, self.hands).wait_for_label(UNREACHABLE)
        self.assertEqual(updates.site.requests, [])
