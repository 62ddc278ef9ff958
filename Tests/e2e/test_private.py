"""A private window leaves nothing behind."""

import secrets

from harness.case import BrowserTest
from harness.wait import until, until_equal

PRIVATE = "Orvu — Private"


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

    def found(self, text):
        """The files of the home, and their names, in which the text stands in some encoding."""
        forms = [text.encode(encoding) for encoding in ("utf-8", "utf-16-le", "utf-16-be")]
        names = []
        for file in self.home.folder.rglob("*"):
            content = str(file).encode() + (file.read_bytes() if file.is_file() else b"")
            if any(form in content for form in forms):
                names.append(str(file.relative_to(self.home.folder)))
        return names

    def open_in_private_window(self, url, title):
        self.app.app_action("newPrivateWindow")
        until_equal(self.app.windows, [1, 2], "the windows")
        self.app.action("editAddress", window=2)
        self.hands.type(url, title=PRIVATE)
        self.hands.press("Return", title=PRIVATE)
        until(lambda: title in self.windows.tabs(PRIVATE), f"a private tab {title!r}",
              lambda: self.windows.tabs(PRIVATE))

    def test_nothing_of_a_private_window_is_found_after_the_end(self):
        ordinary_url, ordinary = self.secret_page("ordinary")
        private_url, private = self.secret_page("private")
        self.app.start()
        self.open(ordinary_url)
        self.open_in_private_window(private_url, private[1])
        self.server.wait_for_report("private")
        self.picture("private-window")
        for action in ("togglePin", "toggleGroup", "park", "closeTab"):
            self.app.action(action, window=2)

        self.app.action("performClose", window=2)
        until_equal(self.app.windows, [1], "the windows")
        self.app.quit()

        self.assertEqual({text: self.found(text) for text in private},
                         {text: [] for text in private})
        for text in ordinary:
            self.assertNotEqual(self.found(text), [], f"the search finds no {text}")

    def test_private_windows_do_not_know_the_cookies_of_others(self):
        url, ordinary = self.secret_page("ordinary")
        self.app.start()
        self.open(url)
        self.server.forget()

        self.open_in_private_window(url, ordinary[1])

        sent = [request.headers.get("Cookie") for request in self.server.requests
                if request.path == "/ordinary"]
        self.assertEqual(sent, [None])
