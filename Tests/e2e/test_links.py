"""Addresses from other programs."""

from harness.case import PRIVATE, BrowserTest
from harness.wait import until, until_equal


class LinksTest(BrowserTest):
    def test_address_opens_at_the_start_behind_the_restored_tabs(self):
        first, second = self.server.pages("/first", "/second")
        self.app.start(first)
        self.wait_for_visit(first)
        self.app.quit()

        self.app.start(second)

        self.wait_for_session(first, second)
        self.wait_for_selected("second")

    def test_address_opens_in_the_running_window(self):
        first, second = self.server.pages("/first", "/second")
        self.start_and_open(first)

        self.app.start_again(second + "?query=1#fragment")

        self.wait_for_visit(second + "?query=1#fragment")
        self.assertEqual(self.app.windows(), [1])
        self.assertEqual(self.saved.session(), [first, second + "?query=1#fragment"])
        self.wait_for_selected("second")

    def test_several_addresses_open_in_their_order(self):
        urls = self.server.pages("/one", "/two", "/three")
        self.app.start()

        self.app.start_again(*urls)

        self.wait_for_session(*urls)
        self.wait_for_selected("three")

    def test_address_never_opens_in_a_private_window(self):
        page = self.server.page("/page")
        self.app.start()
        self.app.app_action("newPrivateWindow")
        self.app.action("performClose", window=1)
        until_equal(self.app.windows, [2], "the windows")

        self.app.start_again(page)

        self.wait_for_visit(page)
        until_equal(self.windows.titles, ["Orvu", PRIVATE], "the windows")
        self.wait_for_tabs("New tab", "page", window="Orvu")
        self.assertEqual(self.windows.tabs(PRIVATE), ["New tab"])

    def test_files_from_other_programs_are_not_opened(self):
        file = self.home.folder / "page.html"
        file.write_text("<title>file</title>", encoding="utf-8")
        page = self.server.page("/page")
        self.app.start()

        for argument in (file.as_uri(), str(file)):
            answer = self.app.run(argument)
            self.assertEqual((answer.returncode, answer.stderr),
                             (2, f"Orvu can't open “{argument}”.\n"))

        self.open(page)
        self.wait_for_tabs("New tab", "page")
        self.assertEqual(self.app.windows(), [1])

    def test_start_without_an_address_opens_no_second_window(self):
        self.app.start()

        self.app.start_again()

        self.assertEqual(self.app.windows(), [1])

    def test_hostile_addresses_never_end_the_program(self):
        page = self.server.page("/page")
        hostile = [
            page + "?" + "x" * 100_000, "x" * 100_000, "http://" + "x" * 100_000 + ".localhost/",
            page + "?\x01\x02\x1b[31m\r\n\t\x7f", "http://\x01/", "\x01", " ", "", "://", "http://",
            "https://[::1", "http://127.0.0.1:99999999/", "http://%00/", "http://user:pass@/",
            "javascript:alert(1)", "javascript://x/%0aalert(1)", "data:text/html,<h1>x</h1>",
            "data://text/html,x", "unknown:thing", "unknown://thing", "about:crash",
            "webkit://gpu", "blob://x/y", "resource://x/y", "ftp://127.0.0.1/", "-x", "--",
            "--help-x",
            "http://\udcff\udcfe/", "\udcff", "http://xn--zzzzzzzzzz/", "http://\u202e\u0000"[:-1],
            "HTTP://127.0.0.1:1/", "http:127.0.0.1", "file:///dev/zero", "/dev/zero", "!w ", "%s%n",
        ]
        self.app.start()

        for address in hostile:
            with self.subTest(address=address[:80]):
                answer = self.app.run(address)
                self.assertIn((answer.returncode, answer.stderr.count("\n")), ((0, 0), (2, 1)))
                self.app.check_runs()

        self.open(page)
        self.app.check_runs()
        self.assertEqual(self.app.windows(), [1])

    def test_hostile_addresses_at_the_start_never_end_the_program(self):
        page = self.server.page("/page")
        self.app.start("http://" + "x" * 100_000, "javascript:alert(1)", "http://\x01/",
                       "data:text/html,x", "unknown://thing", "\udcff")

        self.open(page)

        until(lambda: page in self.saved.session(), "the page among the tabs", self.saved.session)
