"""Pictures of the first run. A person looks at them."""

from harness.case import artefacts
from harness.pictures import PictureTest
from harness.wait import until

TITLE = "Welcome to Orvu"


class FirstRunPicturesTest(PictureTest):
    def setUp(self):
        super().setUp()
        self.app.is_welcomed = False

    def shoot_step(self, name):
        self.hands.take(TITLE)
        self.settle()
        file = artefacts() / f"window-{name}.png"
        self.display.picture_of(self.hands.window(TITLE), file)
        self.assertGreater(file.stat().st_size, 8_000, f"the size of {file}")

    def test_its_steps(self):
        self.start_with("bees")
        until(lambda: TITLE in self.windows.titles(), "the first run", self.windows.titles)
        self.shoot_step("first-run-1")
        self.windows.press("push button", "Continue", TITLE)
        self.windows.find("push button", "Choose a Browser…", TITLE)
        self.shoot_step("first-run-2")
        self.windows.press("push button", "Continue", TITLE)
        self.windows.find("push button", "Start browsing", TITLE)
        self.windows.press("push button", "Make Orvu Your Default Browser", TITLE)
        self.shoot_step("first-run-3")


class LargeFirstRunPicturesTest(FirstRunPicturesTest):
    """The same where everything is twice as large."""

    environment = {"GDK_SCALE": "2"}

    def shoot_step(self, name):
        super().shoot_step(name + "-large")
