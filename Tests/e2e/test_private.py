"""A private window leaves nothing behind."""

import secrets

from harness.case import BrowserTest
from harness.wait import until_equal


class PrivateWindowTest(BrowserTest):
    def secret_page(self, kind):
        """A page of a host, a title and a cookie that exist nowhere else; its address and these."""
        host = f"x.{kind}-{secrets.token_hex(8)}.localhost"
        title, cookie = f"Title{secrets.token_hex(8)}", f"Cookie{secrets.token_hex(8)}"
        path = f"/{kind}"
        self.server.page(path, title, f"<script>localStorage.kept = '{cookie}';"
                         f"fetch('/report/{kind}')</script>",
                         [("Set-Cookie", f"kept={cookie}; Max-Age=86400")])
        return self.server.url(path, host), [host, title, cookie]

    def test_nothing_of_a_private_window_is_found_after_the_end(self):
        ordinary_url, ordinary = self.secret_page("ordinary")
        private_url, private = self.secret_page("private")
        self.start_and_open(ordinary_url)
        self.open_privately(private_url, private[1])
        self.server.wait_for_report("private")
        self.picture("private-window")
        for action in ("togglePin", "toggleGroup", "park", "closeTab"):
            self.app.action(action, window=2)

        self.app.action("performClose", window=2)
        until_equal(self.app.windows, [1], "the windows")
        self.app.quit()

        self.assertEqual({text: self.home.files_with(text) for text in private},
                         {text: [] for text in private})
        for text in ordinary:
            self.assertNotEqual(self.home.files_with(text), [], f"the search finds no {text}")

    def test_private_windows_do_not_know_the_cookies_of_others(self):
        url, ordinary = self.secret_page("ordinary")
        self.start_and_open(url)
        self.server.forget()

        self.open_privately(url, ordinary[1])

        self.assertEqual(self.server.cookies_for("/ordinary"), [None])
