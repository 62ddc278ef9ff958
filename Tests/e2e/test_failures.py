"""What is said, and can be done, when a load brings no page."""

import os

from harness.case import PRIVATE, BrowserTest
from harness.server import Server
from harness.wait import until, until_equal

REFUSED = "Couldn't open 127.0.0.1: it refused the connection."
UNTRUSTED = "Couldn't open bank.example: nobody known vouches for its certificate."
TWICE = "This page ended unexpectedly, twice."
PROGRAM = """[Desktop Entry]
Type=Application
Name=Letters
Exec=touch {mark}
MimeType=x-scheme-handler/mailto;
"""


class FailureTest(BrowserTest):
    def notices(self, window="Orvu"):
        """The lines that stand over pages."""
        return [node.name for node in self.windows.nodes(window=window)
                if node.role in ("alert", "notification") and node.name]

    def wait_for_notice(self, *texts, window="Orvu"):
        until_equal(lambda: self.notices(window), list(texts), "the lines over the pages")

    def press(self, name, title="Orvu"):
        """Clicks on a button of the line as soon as it can be pressed."""
        def button():
            found = [node for node in self.windows.nodes("push button", name, title)
                     if node.is_sensitive]
            return found[0] if found else None
        self.hands.click(at=until(button, f"a button {name!r}").middle, title=title)

    def nobody(self, path="/nobody"):
        """An address at which nobody listens."""
        gone = Server()
        url = gone.url(path)
        gone.stop()
        return url


class FailuresTest(FailureTest):
    def test_a_load_that_fails_is_said_over_the_page_that_stays(self):
        page, other = self.server.pages("/page", "/other")
        self.start_with_only(page)

        self.type_address(self.nobody())

        self.wait_for_notice(REFUSED)
        self.notch.wait_for_address(page)
        self.wait_for_session(page)
        self.picture("failure")
        self.type_address(other)
        self.wait_for_visit(other)
        self.wait_for_notice()

    def test_try_again_loads_what_failed(self):
        page = self.server.page("/page")
        late = self.server.dropped("/late")
        self.start_with_only(page)
        self.type_address(late)
        self.wait_for_notice("Couldn't open 127.0.0.1: the connection broke off.")

        self.server.page("/late")
        self.press("Try Again")

        self.wait_for_visit(late)
        self.wait_for_notice()

    def test_edit_opens_the_notch_with_the_address_that_failed(self):
        self.start_with_only(self.server.page("/page"))
        nobody = self.nobody()
        self.type_address(nobody)
        self.wait_for_notice(REFUSED)

        self.press("Edit")

        self.notch.wait_until_open()
        until_equal(lambda: self.notch.fields()[0].text(), nobody, "the text of the notch")

    def test_the_line_can_be_reached_and_closed_by_key(self):
        self.start_with_only(self.server.page("/page"))
        self.type_address(self.nobody())
        self.wait_for_notice(REFUSED)

        self.hands.press("F6")
        self.go_by_key_to("Edit", key="F6", most=6)
        self.go_by_key_to("Close")
        self.hands.go_on("space")

        self.wait_for_notice()

    def test_a_tab_that_never_showed_a_page_says_so_too_and_each_tab_for_itself(self):
        page = self.server.page("/page")
        nobody = self.nobody()
        self.app.start(page)
        self.wait_for_visit(page)
        self.app.hand_over(nobody)
        self.wait_for_notice(REFUSED)

        self.app.action("selectTab2")
        self.wait_for_notice()
        self.app.action("selectTab3")
        self.wait_for_notice(REFUSED)

    def test_escape_stops_a_load(self):
        page = self.server.page("/page")
        slow, _ = self.server.slow("/slow")
        self.start_with_only(page)
        self.type_address(slow)
        self.windows.find("push button", "Stop")

        self.hands.press("Escape")

        self.wait_until_loaded()
        self.notch.wait_for_address(page)
        self.wait_for_notice()

    def test_escape_that_the_page_takes_stops_nothing(self):
        page = self.server.script_page(
            "/page", "addEventListener('keydown', event => { event.preventDefault();"
                     "document.title = 'took' })")
        slow, gate = self.server.slow("/slow")
        self.start_with_only(page)
        self.hands.click()
        self.type_address(slow)
        self.windows.find("push button", "Stop")

        self.hands.press("Escape")
        self.wait_for_tabs("took")
        gate.set()

        self.wait_for_visit(slow)

    def test_a_page_whose_process_ends_twice_is_said_and_comes_back(self):
        page = self.server.page("/page")
        self.start_with_only(page)
        for time in (1, 2):
            self.app.kill_page_processes()
            if time == 1:
                self.server.wait_for("/page", times=2)
                self.wait_until_loaded()
                until(self.app.page_processes, "a new page process")
        self.wait_for_notice(TWICE)

        self.press("Reload")

        self.server.wait_for("/page", times=3)
        self.wait_for_notice()

    def test_in_a_private_window_it_is_said_in_dark(self):
        self.app.start()
        notch = self.open_private_window()
        self.type_address(self.nobody(), PRIVATE)

        self.wait_for_notice(REFUSED, window=PRIVATE)
        notch.resting()
        self.picture("failure-private")


class OtherProgramsTest(FailureTest):
    def setUp(self):
        super().setUp()
        self.mark = self.home.folder / "opened"
        programs = self.home.data / "applications"
        programs.mkdir(parents=True)
        (programs / "letters.desktop").write_text(PROGRAM.format(mark=self.mark))
        (self.home.config / "mimeapps.list").write_text(
            "[Default Applications]\nx-scheme-handler/mailto=letters.desktop\n")

    def test_an_address_of_another_program_opens_there_when_the_person_says_so(self):
        page = self.server.link_page("/page", "mailto:ada@site.example")
        self.start_with_only(page)

        self.hands.click()
        self.wait_for_notice("mailto:ada@site.example opens in another program.")
        self.assertFalse(self.mark.exists())
        self.press("Open with Letters")

        until(self.mark.exists, "the other program")
        self.wait_for_notice()

    def test_an_address_that_no_program_opens_is_said(self):
        self.start_with_only(self.server.link_page("/page", "made-up:thing"))

        self.hands.click()

        self.wait_for_notice(
            "Couldn't open made-up:thing: no program here opens such addresses.")


class CertificatesTest(FailureTest):
    """The program knows nothing of the authority that vouches for the site."""

    def setUp(self):
        super().setUp()
        self.bank = self.proxy.site("bank.example")
        self.account = self.bank.page("/account")
        self.page = self.server.page("/page")

    def test_a_certificate_is_taken_behind_a_second_press_and_never_secure(self):
        self.start_with_only(self.page)
        self.type_address(self.account)
        self.wait_for_notice(UNTRUSTED)

        self.press("Open Anyway…")
        until(lambda: "Somebody else may pass for bank.example" in "".join(self.notices()),
              "what the risk is", self.notices)
        self.assertEqual(self.bank.asked("/account"), 0)
        self.press("Open Anyway")

        self.wait_for_visit(self.account)
        self.wait_for_notice()
        self.site.open()
        self.assertIn("Connection isn't secure", self.site.texts())
        self.picture("failure-certificate-taken")

    def test_what_was_taken_counts_for_that_host_and_that_run_alone(self):
        other = self.proxy.site("other.example").page("/other")
        self.start_with_only(self.page)
        self.type_address(self.account)
        self.press("Open Anyway…")
        self.press("Open Anyway")
        self.wait_for_visit(self.account)

        self.type_address(other)
        self.wait_for_notice(UNTRUSTED.replace("bank", "other"))

        self.app.quit()
        self.app.start()
        self.wait_for_notice(UNTRUSTED)
        self.assertEqual(self.bank.asked("/account"), 1)
