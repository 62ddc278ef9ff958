"""The window of the settings: what stands in it, and that each of them is felt at once."""

import json

from harness.case import BrowserTest
from harness.saved import TWO_PROFILES, WORK
from harness.settings import OFF, SWITCHES, TITLE, SettingsWindow
from harness.wait import until, until_equal

ENGINES = {"Google": "google", "DuckDuckGo": "duckduckgo", "Bing": "bing", "Ecosia": "ecosia"}
NO_SKILLS = "Your skills appear here. Type / in the Kesto panel and choose New skill."
TEXTS = [
    "Orvu Settings",
    "General", "Default browser", "Make Orvu Your Default Browser",
    "Reopen your tabs when Orvu starts",
    "Bookmarks and history", "Import from Another Browser…",
    "Updates", "Update Orvu automatically", "Orvu 0.1.0",
    "Updates of Orvu come with the system's; ask the administrator of this computer.", "Check Now",
    "Search", "Search engine", *ENGINES, "Show search suggestions as you type",
    "What you type goes to your search engine to suggest searches. Never from private windows.",
    "Kesto answers beside search results",
    "Type !w, !yt, !m, !d, !gh or !i before a search to send it somewhere else.",
    "Privacy", "Block well-known trackers", "Applies to windows you open after changing it.",
    "Clear History…", "Clear All Website Data…",
    "Kesto", "Let Kesto read pages when you ask",
    "Answers are worked out on this computer with a model that runs here. Private windows never "
    "share pages.",
    NO_SKILLS,
    "Tabs", "Narrow tab column in new windows",
]
SKILLS = json.dumps([{"id": "11111111-2222-4333-8444-00000000000" + str(number), "name": name,
                      "instruction": text, "builtIn": False}
                     for number, (name, text) in enumerate([
                         ("short", "Answer in five words."), ("loud", "Answer in capitals.")])])


class SettingsTest(BrowserTest):
    def setUp(self):
        super().setUp()
        self.settings = SettingsWindow(self.windows, self.hands)

    def open_settings(self):
        self.hands.press("ctrl+comma")
        self.settings.wait_until_open()

    def keys(self, *keys):
        self.hands.press(*keys, title=TITLE)

    # The window.

    def test_it_says_what_there_is_to_choose(self):
        self.app.start()
        self.open_settings()

        until_equal(self.settings.labels, TEXTS, "what is written in the settings")
        self.assertEqual(self.settings.switches(),
                         {name: key not in OFF for name, key in SWITCHES.items()})
        self.assertEqual(self.settings.engine(), ["Google"])
        self.assertEqual(self.saved.value("searchEngine"), None)

    def test_there_is_one_and_it_comes_to_the_front(self):
        self.app.start()
        self.open_settings()
        self.hands.take("Orvu")
        self.app.app_action("openSettings")

        until_equal(self.windows.titles, ["Orvu", TITLE], "the windows")
        until_equal(lambda: [top.name for top in self.windows.all() if top.is_active], [TITLE],
                    "the window in front")

    def test_keys_close_it_and_it_comes_back_as_it_was(self):
        self.app.start()
        for key in ("Escape", "ctrl+w", "ctrl+shift+w"):
            self.open_settings()
            self.settings.press("Clear History…")
            self.settings.wait_for_label("History cleared")
            self.keys(key)
            self.settings.wait_until_closed()
        self.open_settings()
        self.settings.wait_for_label("History cleared")
        self.settings.press("Close")
        self.settings.wait_until_closed()
        self.app.check_runs()

    def test_it_serves_without_any_other_window(self):
        self.app.start()
        self.open_settings()
        self.app.action("performClose")
        until_equal(self.app.windows, [], "the windows of pages")
        self.keys("ctrl+n")
        until_equal(lambda: len(self.app.windows()), 1, "a window")

    # Switches.

    def test_every_switch_is_written_at_once_and_by_key(self):
        self.app.start()
        self.open_settings()
        for name, key in SWITCHES.items():
            self.go_by_key_to(name, most=40)
            self.keys("space")
            until_equal(lambda key=key: self.saved.value(key), int(key in OFF), f"the value of {key}")
            self.keys("space")
            until_equal(lambda key=key: self.saved.value(key), int(key not in OFF),
                        f"the value of {key}")

    def test_a_row_can_be_clicked_anywhere(self):
        self.app.start()
        self.open_settings()
        name = "Reopen your tabs when Orvu starts"
        label = [node for node in self.settings.nodes("label", name)][0]
        self.hands.click(at=label.middle, title=TITLE)
        until_equal(lambda: self.saved.value("restoreTabs"), 0, "the value")
        self.hands.click(at=self.settings.switch(name).middle, title=TITLE)
        until_equal(lambda: self.saved.value("restoreTabs"), 1, "the value")

    def test_the_search_engine_is_chosen_by_pointer_and_by_key(self):
        self.app.start()
        self.open_settings()
        for name, value in reversed(ENGINES.items()):
            self.settings.choose_engine(name)
            until_equal(lambda: self.saved.value("searchEngine"), value, "the search engine")
            until_equal(self.settings.engine, [name], "the engine that is shown")
        self.go_by_key_to("Search engine: Bing", most=40)
        self.keys("space")
        until_equal(lambda: self.saved.value("searchEngine"), "bing", "the search engine")

    def test_a_new_window_has_the_narrow_column(self):
        self.app.start()
        self.open_settings()
        self.settings.switch("Narrow tab column in new windows").press()
        until_equal(lambda: self.saved.value("narrowTabs"), 1, "the value")
        self.windows.find("push button", "Narrow tabs")
        self.app.app_action("newWindow")

        self.windows.find("push button", "Show tab titles")
        self.windows.find("push button", "Narrow tabs")

    # Clearing.

    def test_history_of_all_open_windows_is_cleared(self):
        self.save_beforehand(TWO_PROFILES)
        home, work = self.server.page("/home"), self.server.page("/work")
        self.app.start(home)
        self.wait_for_visit(home)
        self.hands.press("alt+2")
        until_equal(lambda: self.saved.value("lastProfile"), WORK, "the profile of the window")
        self.app.start_again(work)
        key = f"browserVisits.{WORK}"
        until(lambda: self.saved.document(key), "a visit")
        self.open_settings()
        self.settings.press("Clear History…")

        self.settings.wait_for_label("History cleared")
        until_equal(lambda: self.saved.document(key) or [], [], "the visits of the open window")
        self.assertEqual(self.saved.visits(), [])

    def test_website_data_of_the_personal_profile_is_cleared_and_no_other(self):
        self.save_beforehand(TWO_PROFILES)
        page = self.server.page("/cookie", headers=[("Set-Cookie", "taste=vanilla; Max-Age=999")])
        asked = self.server.page("/asked")
        self.app.start(page)
        self.wait_for_visit(page)
        self.hands.press("alt+2")
        self.wait_for_tabs("New tab")
        self.app.start_again(page)
        until(lambda: self.saved.document(f"browserVisits.{WORK}"), "a visit")
        self.open_settings()
        self.settings.press("Clear All Website Data…")
        self.settings.wait_for_label("Cookies and website data cleared")

        self.server.page("/cookie")  # whose tab comes back
        self.app.start_again(asked)
        self.server.wait_for("/asked")
        self.assertEqual(self.server.cookies_for("/asked"), ["taste=vanilla"])
        self.hands.press("alt+1")
        self.wait_for_tabs("cookie")
        self.app.start_again(asked)
        self.wait_for_visit(asked)
        self.assertEqual(self.server.cookies_for("/asked"), ["taste=vanilla", None])

    # Skills.

    def test_skills_are_listed_and_go_at_once(self):
        self.save_beforehand({"kestoSkills": SKILLS.encode()})
        self.app.start()
        self.open_settings()
        self.settings.wait_for_label("/short")
        self.settings.wait_for_label("Answer in capitals.")
        self.assertNotIn(NO_SKILLS, self.settings.labels())
        self.go_by_key_to("Delete /short", most=40)
        self.keys("space")

        self.settings.wait_for_no_label("/short")
        self.wait_for_focus("Delete /loud")
        self.keys("space")
        self.settings.wait_for_label(NO_SKILLS)
        self.assertEqual(self.saved.document("kestoSkills"), [])
