"""Profiles are made, changed, switched to and deleted at the foot of the column."""

import json

from harness.case import PRIVATE, BrowserTest
from harness.profiles import CANCEL, DELETE, GOES, NEW, Profiles
from harness.saved import TWO_PROFILES, WORK
from harness.wait import until, until_equal

ICONS = 102


class ProfilesEditingTest(BrowserTest):
    def setUp(self):
        super().setUp()
        self.profiles = Profiles(self.windows, self.hands)

    def stored(self):
        return [(each["name"], each["icon"], each["color"])
                for each in self.saved.document("orvuProfiles") or []]

    def start_with_two(self):
        self.save_beforehand(TWO_PROFILES)
        self.app.start()
        self.profiles.wait_for_tiles("Personal (Alt+1)", "Work (Alt+2)")

    def open_sheet(self):
        self.windows.press("push button", NEW)
        self.profiles.wait_for_sheet(NEW)
        self.wait_for_focus("Name")

    # Making one.

    def test_a_new_profile_is_made_by_key_and_entered_at_once(self):
        self.app.start()
        self.open_sheet()
        self.hands.type_on(" Night shift ")
        self.profiles.button("Create Night shift")
        self.hands.go_on("Tab", "Right", "Right", "Tab")
        self.wait_for_focus("Find an icon")
        self.hands.type_on("MOON")
        until_equal(self.profiles.count, ["1 TO CHOOSE FROM"], "how many symbols there are")
        self.hands.go_on("Tab", "space", "Return")

        self.profiles.wait_for_tiles("Personal (Alt+1)", "Night shift (Alt+2)")
        self.profiles.wait_until_closed()
        self.profiles.wait_until_shown("Night shift")
        name, icon, color = self.stored()[1]
        self.assertEqual((name, icon), ("Night shift", "moon.stars.fill"))
        self.assertEqual(color, 9)
        self.assertEqual(self.saved.value("lastProfile"),
                         self.saved.document("orvuProfiles")[1]["id"])

    def test_a_nameless_one_is_called_new_profile(self):
        self.app.start()
        self.open_sheet()
        self.profiles.button("Create Profile")
        self.hands.type_on("  ")
        self.profiles.button("Create Profile").press()

        self.profiles.wait_for_tiles("Personal (Alt+1)", "New profile (Alt+2)")
        self.assertEqual(self.stored()[1], ("New profile", "briefcase.fill", 7))

    def test_escape_makes_none_and_gives_the_keyboard_back(self):
        page = self.server.script_page("/page", "onkeydown = event => fetch('/report/' + event.key)")
        self.start_and_open(page)
        self.open_sheet()
        self.hands.type_on("Nobody")
        self.hands.go_on("Escape")
        self.profiles.wait_until_closed()

        self.assertEqual(self.stored(), [])
        self.hands.go_on("x")
        self.server.wait_for_report("x")

    def test_the_window_waits_under_the_sheet(self):
        self.start_and_open(self.server.page("/page"))
        self.open_sheet()
        self.hands.go_on("ctrl+t", "ctrl+l", "ctrl+w", "alt+1")
        self.hands.type_on("still here")
        self.profiles.button("Create still here")

        self.assertEqual(self.windows.tabs(), ["New tab", "page"])
        self.hands.go_on("Escape")
        self.profiles.wait_until_closed()
        self.hands.go_on("ctrl+t")
        self.wait_for_tabs("New tab", "page", "New tab")

    def test_a_search_that_finds_nothing_says_so(self):
        self.app.start()
        self.open_sheet()
        self.assertEqual(len(self.profiles.icons()), ICONS)
        self.windows.find("text", "Find an icon").set_text("private lock")
        until_equal(self.profiles.icons, ["private lock secure"], "the symbols")
        self.windows.find("text", "Find an icon").set_text("private cake")
        until_equal(self.profiles.count, ["0 TO CHOOSE FROM"], "how many symbols there are")
        self.assertEqual(self.profiles.icons(), [])

    # Changing one.

    def test_a_changed_profile_shows_at_once_in_every_window_of_it(self):
        self.start_with_two()
        self.app.app_action("newWindow")
        until_equal(self.app.windows, [1, 2], "the windows")

        def grounds():
            return {self.display.color(window, 300, 12) for window in self.hands.windows("Orvu")}
        before = grounds()
        self.assertEqual(len(before), 1)
        self.profiles.open_menu("Personal")
        until_equal(self.profiles.menu, ["Edit Personal…"], "the menu of a profile")
        self.profiles.choose("Edit Personal…")
        self.profiles.wait_for_sheet("Edit profile")
        self.assertEqual(self.windows.find("text", "Name").text(), "Personal")
        self.windows.find("text", "Name").set_text("Home")
        self.hands.go_on("Tab", "Home", "Return")

        until_equal(self.stored, [("Home", "person.fill", 0), ("Work", "briefcase.fill", 1)],
                    "the profiles")
        until_equal(self.profiles.tiles, ["Switch to Home (Alt+1)", "Switch to Work (Alt+2)"] * 2,
                    "the profiles of both windows")
        until(lambda: len(grounds()) == 1 and grounds() != before, "both windows in the new colour",
              grounds)

    # Switching.

    def test_a_click_on_a_tile_changes_the_window_over(self):
        self.start_with_two()
        self.profiles.wait_until_shown("Personal")
        self.hands.click(at=self.profiles.tile("Work").middle)

        self.profiles.wait_until_shown("Work")
        self.assertEqual(self.saved.value("lastProfile"), WORK)

    def test_a_private_window_has_no_profiles(self):
        self.start_with_two()
        self.open_private_window()

        self.windows.find("push button", "Narrow tabs", PRIVATE)
        self.assertEqual(Profiles(self.windows, self.hands, PRIVATE).tiles(), [])
        self.assertEqual(self.windows.nodes("push button", NEW, PRIVATE), [])

    def test_many_profiles_can_all_be_reached(self):
        self.save_beforehand({"orvuProfiles": self.many(12)})
        self.app.start()
        until_equal(lambda: len(self.profiles.tiles()), 12, "the profiles")
        self.assertNotIn("(Alt", self.profiles.tiles()[9])
        self.go_by_key_to("Switch to P11", most=60)
        self.hands.go_on("space")
        self.profiles.wait_until_shown("P11")
        self.windows.press("push button", "Narrow tabs")
        self.windows.find("push button", "Show tab titles")
        self.go_by_key_to("Switch to P10", most=60)
        self.hands.go_on("space")
        self.profiles.wait_until_shown("P10")

    # By key alone.

    def test_a_profile_is_changed_shown_and_deleted_by_key_alone(self):
        self.start_with_two()
        self.go_by_key_to("Switch to Work (Alt+2)")
        self.hands.go_on("Menu")
        until_equal(self.profiles.menu, ["Edit Work…", "Delete Work…"], "the menu of a profile")
        self.hands.go_on("Return")
        self.profiles.wait_for_sheet("Edit profile")
        self.wait_for_focus("Name")
        self.hands.go_on("ctrl+a")
        self.hands.type_on("Sea")
        self.hands.go_on("Tab", "End", "Tab")
        self.hands.type_on("boat")
        until_equal(self.profiles.count, ["1 TO CHOOSE FROM"], "how many symbols there are")
        self.hands.go_on("Tab", "space", "Tab")
        self.wait_for_focus(CANCEL)
        self.hands.go_on("Tab", "Return")
        until_equal(self.stored, [("Personal", "person.fill", 10), ("Sea", "sailboat.fill", 11)],
                    "the profiles")
        self.profiles.wait_until_closed()

        self.go_by_key_to("Switch to Sea (Alt+2)")
        self.hands.go_on("Return")
        self.profiles.wait_until_shown("Sea")
        self.go_by_key_to("Switch to Sea (Alt+2)")
        self.hands.go_on("shift+F10")
        until_equal(self.profiles.menu, ["Edit Sea…", "Delete Sea…"], "the menu of a profile")
        self.hands.go_on("Down", "Return")
        self.profiles.wait_for_sheet(f"Delete “Sea”? {GOES}")
        self.wait_for_focus(CANCEL)
        self.hands.go_on("Tab")
        self.wait_for_focus(DELETE)
        self.hands.go_on("Return")

        self.profiles.wait_for_tiles("Personal (Alt+1)")
        self.profiles.wait_until_shown("Personal")

    # Deleting one.

    def test_deleting_asks_and_cancel_keeps_it(self):
        self.start_with_two()
        self.profiles.open_menu("Work")
        until_equal(self.profiles.menu, ["Edit Work…", "Delete Work…"], "the menu of a profile")
        self.profiles.choose("Delete Work…")
        self.profiles.wait_for_sheet(f"Delete “Work”? {GOES}")
        self.wait_for_focus(CANCEL)
        self.hands.go_on("Return")

        self.profiles.wait_until_closed()
        self.profiles.wait_for_tiles("Personal (Alt+1)", "Work (Alt+2)")
        self.assertEqual(len(self.stored()), 2)

    def test_a_deleted_profile_leaves_nothing_behind(self):
        canary = "zebrafinch"
        page = self.server.script_page(
            f"/{canary}-page",
            f"document.cookie = '{canary}=1; Max-Age=9999'; localStorage.{canary} = 1;"
            f"indexedDB.open('{canary}').onsuccess = () => fetch('/report/kept')")
        parked = self.server.page(f"/{canary}-parked")
        self.start_with_two()
        self.hands.press("alt+2")
        self.profiles.wait_until_shown("Work")
        self.app.start_again(page)
        self.server.wait_for_report("kept")
        self.app.action("toggleBookmark")
        until(lambda: self.saved.document(f"orvuBookmarks.{WORK}"), "a bookmark")
        self.app.start_again(parked)
        until(lambda: len(self.saved.document(f"browserVisits.{WORK}") or []) == 2, "two visits")
        self.app.action("newGroup")
        until(lambda: self.saved.document(f"browserGroups.{WORK}"), "a group")
        self.app.action("park")
        until(lambda: self.saved.document(f"browserShelf.{WORK}"), "a parked tab")
        self.assertNotEqual(self.home.files_with(f"{canary}-page"), [])

        self.profiles.open_menu("Work")
        self.profiles.choose("Delete Work…")
        self.profiles.wait_for_sheet(f"Delete “Work”? {GOES}")
        self.profiles.button(DELETE).press()
        self.profiles.wait_for_tiles("Personal (Alt+1)")
        self.profiles.wait_until_shown("Personal")
        self.app.quit()
        self.app.start()
        # The engine leaves an empty folder, which a later start tidies up.
        until_equal(lambda: self.home.files_with(WORK), [], "what is left of the profile", deadline=40)
        self.app.quit()

        def left():
            # Site permissions and icons belong to all profiles and stay.
            return [name for name in self.home.files_with(canary) if "/Favicons/" not in name]
        self.assertEqual(left(), [])

    def test_the_other_window_of_a_deleted_profile_stays_usable_and_saves_nothing(self):
        self.start_with_two()
        self.hands.press("alt+2")
        self.profiles.wait_until_shown("Work")
        self.app.app_action("newWindow")
        until_equal(self.app.windows, [1, 2], "the windows")
        until_equal(lambda: len(self.profiles.shown()), 2, "two windows with that profile")
        self.profiles.open_menu("Work")
        self.profiles.choose("Delete Work…")
        self.profiles.button(DELETE).press()
        until_equal(self.profiles.tiles, ["Switch to Personal (Alt+1)"] * 2, "the profiles")

        pages = self.server.pages("/in-the-newest", "/in-the-other")
        self.app.start_again(pages[0])
        until(lambda: "in-the-newest" in self.windows.tabs(), "the page", self.windows.tabs)
        self.app.action("performClose", window=2)
        until_equal(self.app.windows, [1], "the windows")
        self.app.start_again(pages[1])
        until(lambda: "in-the-other" in self.windows.tabs(), "the page", self.windows.tabs)
        # One of the two went over to the personal profile.
        until(lambda: len(self.saved.visited()) == 1, "the visit of the personal profile",
              self.saved.visited)
        self.assertIn(self.saved.visited()[0], pages)
        self.assertIsNone(self.saved.value(f"browserVisits.{WORK}"))
        self.app.quit()
        self.app.start()
        until_equal(lambda: self.home.files_with(WORK), [], "what is left of the profile", deadline=40)

    def many(self, count):
        """So many profiles, as they are stored."""
        first = json.loads(TWO_PROFILES["orvuProfiles"])[0]
        return json.dumps([first] + [
            {"id": f"11111111-2222-4333-8444-{number:012}", "name": f"P{number}",
             "icon": "star.fill", "color": number % 12} for number in range(1, count)]).encode()
