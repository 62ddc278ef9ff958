"""Profiles keep their tabs, history and sign-ins apart."""

from harness.case import PRIVATE, BrowserTest
from harness.saved import TWO_PROFILES, WORK
from harness.wait import until, until_equal

# Tells what it finds of its own in three kinds of storage, and leaves it there. It tells its name
# with it: pages that come back with a profile tell once more.
STORES = """
(async () => {
    const databases = (await indexedDB.databases()).map(each => each.name);
    const found = [localStorage.getItem('mine'), databases.includes('mine'),
                   await caches.has('mine')].map(each => each ? 'mine' : 'none');
    localStorage.setItem('mine', 'mine');
    await new Promise(done => indexedDB.open('mine').onsuccess = done);
    await caches.open('mine');
    fetch('/report' + location.pathname + '-' + found.join('-'));
})();
"""


class ProfilesTest(BrowserTest):
    def setUp(self):
        super().setUp()
        self.save_beforehand(TWO_PROFILES)

    def work_session(self):
        return [tab["url"] for tab in self.saved.document(f"browserSession.{WORK}") or []]

    def test_window_changes_over_to_another_profile_and_back(self):
        personal, work = self.server.page("/personal"), self.server.page("/work")
        self.app.start(personal)
        self.wait_for_visit(personal)

        self.hands.press("alt+2")
        self.wait_for_tabs("New tab")
        self.app.start_again(work)
        until_equal(self.work_session, [work], "the tabs saved for the other profile")
        self.picture("other-profile")
        self.hands.press("alt+1")

        self.wait_for_tabs("personal")
        self.assertEqual(self.saved.session(), [personal])
        self.assertEqual(self.saved.visited(), [personal])

    def test_profile_chosen_last_opens_at_the_next_start(self):
        work = self.server.page("/work")
        self.app.start()
        self.hands.press("alt+2")
        until_equal(lambda: self.saved.value("lastProfile"), WORK, "the profile chosen last")
        self.app.start_again(work)
        until_equal(self.work_session, [work], "the tabs saved for the other profile")
        self.app.quit()

        self.app.start()

        self.wait_for_tabs("work")

    def test_profiles_do_not_share_cookies(self):
        page = self.server.page("/cookie", headers=[("Set-Cookie", "taste=vanilla; Max-Age=999")])
        asked = self.server.page("/asked")
        self.app.start(page)
        self.wait_for_visit(page)

        self.hands.press("alt+2")
        self.wait_for_tabs("New tab")
        self.app.start_again(asked)
        self.server.wait_for("/asked")

        self.assertEqual(self.server.cookies_for("/asked"), [None])
        self.hands.press("alt+1")
        self.app.start_again(asked)
        self.wait_for_visit(asked)
        self.assertEqual(self.server.cookies_for("/asked"), [None, "taste=vanilla"])

    def test_profiles_do_not_share_what_pages_store_nor_what_was_fetched(self):
        def keep(handler):
            handler.send_response(200)
            handler.send_header("Content-Type", "text/css")
            handler.send_header("Content-Length", "0")
            handler.send_header("Cache-Control", "max-age=999")
            handler.end_headers()
        self.server.answers["/kept"] = keep

        def visit(name, found, fetches):
            page = self.server.script_page(f"/{name}", STORES,
                                           "<link rel=stylesheet href=/kept>")
            self.app.hand_over(page)
            until_equal(lambda: self.server.reports(f"{name}-"), [found], "what the page found")
            self.assertEqual(self.server.asked("/kept"), fetches)

        self.app.start()
        visit("first", "none-none-none", 1)
        visit("again", "mine-mine-mine", 1)
        self.hands.press("alt+2")
        self.wait_for_tabs("New tab")
        visit("elsewhere", "none-none-none", 2)
        self.hands.press("alt+1")
        visit("back", "mine-mine-mine", 2)

    def test_a_private_window_that_takes_a_profile_looks_like_any_other(self):
        """Its ground is dark as long as it is private, and so is what is written on it."""
        self.app.start()
        self.open_private_window()
        bar = (300, 30)  # in the top bar, where nothing stands

        def brightness():
            return max(self.display.color(self.hands.window(PRIVATE), *bar))
        until(lambda: brightness() < 90, "a dark window", brightness)
        self.hands.press("alt+2", title=PRIVATE)

        until(lambda: brightness() > 200, "a light window", brightness)
        self.picture("private-window-with-a-profile")

    def test_a_key_changes_over_while_the_keyboard_is_in_the_assistants_field(self):
        self.start_and_open(self.server.page("/a", "A page"))
        for number in (2, 1) * 3:
            self.hands.go_on("ctrl+j")
            self.windows.find("push button", "Close Kesto")
            until(lambda: any(node.role == "text" for node in self.windows.focused()),
                  "the keyboard in the panel", self.windows.focused)

            self.hands.go_on(f"alt+{number}")

            self.windows.wait_until_gone("push button", "Close Kesto")
            self.app.check_runs()

    def test_ninth_place_without_a_profile_does_nothing(self):
        page = self.server.page("/page")
        self.app.start(page)
        self.wait_for_visit(page)

        self.hands.press("alt+9")
        self.hands.press("ctrl+t")

        self.wait_for_tabs("New tab", "page", "New tab")
        self.assertIsNone(self.saved.value("lastProfile"))
