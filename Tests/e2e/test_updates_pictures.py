"""Pictures of what windows show about updates. A person looks at them."""

from harness.case import PRIVATE, artefacts
from harness.pictures import PictureTest
from harness.settings import TITLE, SettingsWindow
from harness.updates import FEED, Release, Updates

NAMES = ("bees", "docs")


class UpdatesPicturesTest(PictureTest):
    trusts_test_authority = True

    def setUp(self):
        super().setUp()
        self.updates = Updates(self)
        self.settings = SettingsWindow(self.windows, self.hands)

    def start(self, automatic=None):
        values = {} if automatic is None else {"autoUpdate": int(automatic)}
        self.save_beforehand({"restoreTabs": 0, **values})
        self.start_with(*NAMES)

    def shoot_settings(self, name):
        self.settle()
        file = artefacts() / f"window-{name}.png"
        self.display.picture_of(self.hands.window(TITLE), file)
        self.assertGreater(file.stat().st_size, 10_000, f"the size of {file}")

    def test_the_question(self):
        self.start()
        self.windows.find("push button", "Ask me")
        self.shoot("update-question")

    def test_the_question_in_the_smallest_window(self):
        self.start()
        self.windows.find("push button", "Ask me")
        self.hands.resize(900, 560)
        self.shoot("update-question-900x560")

    def test_from_the_offer_to_the_restart(self):
        path = self.updates.offer(Release("1.2", 12))
        archive = self.updates.site.answers[path]
        gate = self.updates.site.gate()

        def late(handler):
            gate.wait()
            archive(handler)
        self.updates.site.answers[path] = late
        self.start(False)
        self.windows.find("push button", "Update")
        self.shoot("update-offered")
        self.windows.press("push button", "Update")
        self.windows.find_named("Downloading the update…")
        self.shoot("update-wheel")
        gate.set()
        self.windows.find("push button", "Restart to update")
        self.shoot("update-ready")
        self.open_private_window()
        self.shoot("update-ready-private", PRIVATE)
        self.app.app_action("openSettings")
        self.settings.wait_until_open()
        self.shoot_settings("settings-update-ready")

    def test_a_check_that_failed(self):
        self.updates.site.dropped(FEED)
        self.start(False)
        self.app.app_action("checkForUpdates")
        self.settings.wait_for_label("Couldn't reach updates.example. Check your connection and "
                                     "try again.")
        self.shoot_settings("settings-update-failed")


class LargeUpdatesPicturesTest(UpdatesPicturesTest):
    """The same where everything is twice as large."""

    environment = {"GDK_SCALE": "2"}

    def shoot(self, name, *arguments, **options):
        super().shoot(name + "-large", *arguments, **options)

    def shoot_settings(self, name):
        super().shoot_settings(name + "-large")
