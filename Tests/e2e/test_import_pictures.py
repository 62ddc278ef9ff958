"""Pictures of the window in which another browser's data are brought over. A person looks at them."""

from harness.browsers import Browsers, pages
from harness.case import artefacts
from harness.importing import TITLE, ImportWindow
from harness.pictures import PictureTest

MANY = {"google-chrome/Default": "Chrome", "BraveSoftware/Brave-Browser/Default": "Brave",
        "microsoft-edge/Default": "Edge", "chromium/Default": "Chromium",
        "vivaldi/Default": "Vivaldi", "opera": "Opera"}


class ImportPicturesTest(PictureTest):
    def setUp(self):
        super().setUp()
        self.browsers = Browsers(self.home)
        self.importing = ImportWindow(self.windows, self.hands)

    def open_window(self):
        self.start_with("bees")
        self.app.app_action("importBookmarks")
        self.importing.wait_until_open()

    def shoot_import(self, name):
        self.settle()
        file = artefacts() / f"window-{name}.png"
        self.display.picture_of(self.hands.window(TITLE), file)
        self.assert_drawn(file)

    def assert_drawn(self, file):
        self.assertGreater(file.stat().st_size, 10_000, f"the size of {file}")

    def test_two_browsers_and_an_outcome(self):
        self.browsers.add_chromium(pages("a.example", 2), pages("b.example", 3))
        self.browsers.add_firefox(pages("c.example", 2))
        self.install_icon("firefox")
        self.open_window()
        self.shoot_import("import")
        self.hands.press("Return", title=TITLE)
        self.importing.wait_for_message("Brought over 2 new bookmarks and 3 visits from Chrome.")
        self.shoot_import("import-done")

    def install_icon(self, name):
        """A program of that name stands in the menu of the desktop."""
        picture = self.home.data / f"{name}.svg"
        picture.write_text('<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 44 44"><circle '
                           'cx="22" cy="22" r="20" fill="#e8590c"/></svg>')
        entries = self.home.data / "applications"
        entries.mkdir(parents=True, exist_ok=True)
        (entries / f"{name}.desktop").write_text(
            f"[Desktop Entry]\nType=Application\nName={name}\nExec=/bin/true\nIcon={picture}\n")

    def test_many_browsers(self):
        for folder in MANY:
            self.browsers.add_chromium(pages("a.example", 1), folder=folder)
        self.open_window()
        self.shoot_import("import-many")

    def test_no_browser(self):
        self.open_window()
        self.shoot_import("import-none")

    def test_files_that_are_refused(self):
        folder = self.browsers.add_chromium(pages("a.example", 2))
        (folder / "History").write_bytes(b"")
        self.open_window()
        self.hands.press("Return", title=TITLE)
        self.importing.wait_for_message(
            "The system didn't let Orvu read Chrome's data. Give Orvu leave to read its folder, "
            "then import again.")
        self.shoot_import("import-refused")


class LargeImportPicturesTest(ImportPicturesTest):
    """The same where everything is twice as large."""

    environment = {"GDK_SCALE": "2"}

    def shoot_import(self, name):
        super().shoot_import(name + "-large")
