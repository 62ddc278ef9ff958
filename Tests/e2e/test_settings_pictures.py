"""Pictures of the settings, and of the profiles with their sheet. A person looks at them."""

import json

from harness.case import artefacts
from harness.pictures import PictureTest
from harness.profiles import NEW, Profiles
from harness.settings import TITLE, SettingsWindow
from harness.wait import until

SKILLS = json.dumps([
    {"id": f"11111111-2222-4333-8444-00000000000{number}", "name": name, "instruction": text,
     "builtIn": False} for number, (name, text) in enumerate([
         ("short", "Answer in five words."),
         ("kind", "Say it so that nobody could be hurt by it, and thank whoever asked for having "
                  "thought of asking before it was too late for all of us to do better.")])
]).encode()
PROFILES = [("00000000-0000-0000-0000-00000000F00D", "Personal", "person.fill", 10),
            ("11111111-2222-4333-8444-555555555555", "Work", "briefcase.fill", 1),
            ("11111111-2222-4333-8444-555555555556", "Studio", "paintpalette.fill", 4)]


def stored(rows, *keys):
    return json.dumps([dict(zip(keys, row)) for row in rows]).encode()


class ProfilePictureTest(PictureTest):
    def setUp(self):
        super().setUp()
        self.profiles = Profiles(self.windows, self.hands)
        self.settings = SettingsWindow(self.windows, self.hands)

    def with_profiles(self, count):
        self.save_beforehand({"orvuProfiles": stored(PROFILES[:count], "id", "name", "icon",
                                                     "color")})

    def shoot_settings(self, name):
        self.settle()
        self.display.picture_of(self.hands.window(TITLE), artefacts() / f"window-{name}.png")


class SettingsPicturesTest(ProfilePictureTest):
    def test_settings(self):
        self.save_beforehand({"kestoSkills": SKILLS})
        self.start_with("bees")
        self.hands.press("ctrl+comma")
        self.settings.wait_until_open()
        self.shoot_settings("settings")
        self.go_by_key_to("Narrow tab column in new windows", most=40)
        self.shoot_settings("settings-foot")

    def test_profiles(self):
        self.with_profiles(3)
        self.start_with("bees", "bread")
        self.profiles.wait_until_shown("Personal")
        self.shoot("profiles")
        self.windows.press("push button", "Narrow tabs")
        self.windows.find("push button", "Show tab titles")
        self.shoot("profiles-narrow")
        self.windows.press("push button", "Show tab titles")
        heights = [lambda name=name: self.profiles.tile(name).box[1]
                   for name in ("Personal", "Work")]
        until(lambda: heights[0]() == heights[1](), "the tiles side by side")
        self.profiles.open_menu("Work")
        self.shoot("profile-menu", beside=60, rest=False)
        self.profiles.choose("Delete Work…")
        self.profiles.button("Cancel")
        self.shoot("profile-delete")
        self.hands.go_on("Escape")
        self.profiles.wait_until_closed()
        self.hands.press("alt+3")
        self.profiles.wait_until_shown("Studio")
        self.shoot("profile-studio")

    def test_sheet(self):
        self.with_profiles(2)
        self.start_with("bees")
        self.windows.press("push button", NEW)
        self.wait_for_focus("Name")
        self.shoot("profile-sheet")
        self.hands.type_on("Weekend")
        self.windows.find("text", "Find an icon").set_text("sea")
        self.shoot("profile-sheet-search")
        self.hands.resize(900, 560)
        self.shoot("profile-sheet-900x560")


class LargePicturesTest(ProfilePictureTest):
    """The same where everything is twice as large."""

    environment = {"GDK_SCALE": "2"}

    def test_settings(self):
        self.start_with("bees")
        self.app.app_action("openSettings")
        self.settings.wait_until_open()
        self.shoot_settings("settings-large")

    def test_profiles(self):
        self.with_profiles(3)
        self.start_with("bees")
        self.profiles.wait_until_shown("Personal")
        self.windows.press("push button", NEW)
        self.profiles.wait_for_sheet(NEW)
        self.shoot("profile-sheet-large", rest=False)
