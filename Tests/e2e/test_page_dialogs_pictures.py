"""Pictures of the dialogs of pages. A person looks at them."""

from harness.case import PRIVATE
from harness.dialogs import (ASKS, LEAVES, OK, SAYS, SILENCE, STAY, WANTS_PASSWORD, Dialogs,
                             form_page)
from harness.pictures import PictureTest

HOST = "meadow.localhost"
LOST = "What you typed here may be lost."
REALM = "It says: “Beekeepers' room” What you enter goes over the network unencrypted."
BODY = ("<main style='font:17px/1.5 Inter;max-width:640px;margin:60px auto'><h1>The meadow</h1>"
        "<p>Bees dance to tell one another where the flowers are.</main>")


class PageDialogsPicturesTest(PictureTest):
    def setUp(self):
        super().setUp()
        self.dialogs = Dialogs(self.windows, self.hands)
        def locked(handler):
            handler.reply(401, "text/html", "out",
                          [("WWW-Authenticate", 'Basic realm="Beekeepers\' room"')])
        self.server.answers["/locked"] = locked

    def script(self, name, script):
        self.server.script_page(f"/{name}", f"setTimeout(() => {{ {script} }}, 100)", BODY)
        return self.server.url(f"/{name}", HOST)

    def confirm(self):
        return self.script("confirm", "confirm('The hive is full. Move the young queen and half of"
                                      " her sisters to the new one?')")

    def prompt(self):
        return self.script("prompt", "prompt('What is the new hive called?', 'Clover House')")

    def alert(self):
        return self.script("alert", "for (const day of ['Monday', 'Tuesday', 'Wednesday'])"
                                    "alert(`The meadow is mown on ${day}.`)")

    def long(self):
        return self.script("long", r"alert('A line of many.\n'.repeat(400))")

    def open_dialog(self, url, caption, text, dialogs=None, notch=None):
        (notch or self.notch).go_to(url)
        (dialogs or self.dialogs).wait_for(HOST, caption, text)

    def test_light(self):
        self.start_with("bees")
        self.open_dialog(self.confirm(), ASKS, "The hive is full. Move the young queen and half of "
                                               "her sisters to the new one?")
        self.dialogs.button(OK)
        self.shoot("dialog-confirm")
        self.hands.resize(900, 560)
        self.shoot("dialog-confirm-900x560")
        self.hands.resize(1280, 820)
        self.open_dialog(self.prompt(), ASKS, "What is the new hive called?")
        self.dialogs.button(OK)
        self.shoot("dialog-prompt")
        self.notch.go_to(self.alert())
        for day in ("Monday", "Tuesday"):
            self.dialogs.wait_for(HOST, SAYS, f"The meadow is mown on {day}.")
            self.dialogs.press(OK)
        self.dialogs.wait_for(HOST, SAYS, "The meadow is mown on Wednesday.")
        self.dialogs.button(OK)
        self.assertIn(SILENCE, self.dialogs.buttons())
        self.shoot("dialog-alert-third")

    def test_long_text(self):
        self.start_with("bees")
        self.notch.go_to(self.long())
        self.dialogs.button(OK)
        self.shoot("dialog-long")

    def test_sign_in(self):
        self.start_with("bees")
        self.open_dialog(self.server.url("/locked", HOST), WANTS_PASSWORD, REALM)
        self.dialogs.button("Sign In")
        self.shoot("dialog-sign-in")

    def test_leaving_and_the_pair(self):
        self.start_with("docs")
        self.open(self.server.url(form_page(self.server, "form"), HOST))
        self.hands.click()
        self.hands.type_on("a")
        self.server.wait_for_report("form-a")
        self.app.action("reload")
        self.dialogs.wait_for(HOST, LEAVES, LOST)
        self.dialogs.button("Leave")
        self.shoot("dialog-leave")
        self.app.action("toggleSideBySide")
        self.windows.find("separator", "Resize the two pages")
        self.dialogs.button(STAY)
        self.shoot("dialog-pair")

    def test_private(self):
        self.start_with("docs")
        notch = self.open_private_window()
        dialogs = Dialogs(self.windows, self.hands, PRIVATE)
        self.open_dialog(self.prompt(), ASKS, "What is the new hive called?", dialogs, notch)
        dialogs.button(OK)
        self.shoot("dialog-private-prompt", PRIVATE)
        self.open_dialog(self.server.url("/locked", HOST), WANTS_PASSWORD, REALM, dialogs, notch)
        dialogs.button("Sign In")
        self.shoot("dialog-private-sign-in", PRIVATE)
        self.open_dialog(self.confirm(), ASKS, "The hive is full. Move the young queen and half of "
                                               "her sisters to the new one?", dialogs, notch)
        dialogs.button(OK)
        self.shoot("dialog-private-confirm", PRIVATE)
