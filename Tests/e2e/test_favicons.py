"""Icons of sites, as they come to stand on the disk."""

import os
import signal
import struct
import subprocess

from harness.case import BrowserTest
from harness.images import png
from harness.wait import until, until_equal


def flicker():
    """A GIF of 16 by 16 whose first frame is red and whose second is blue."""
    frames = b"".join(
        b"\x21\xf9\x04\x00\x05\x00\x00\x00\x2c\0\0\0\0\x10\0\x10\0\0" + pixels(color)
        for color in (0, 1))
    head = b"GIF89a\x10\0\x10\0\x80\0\0" + b"\xff\x00\x00\x00\x00\xff"
    return head + b"\x21\xff\x0bNETSCAPE2.0\x03\x01\0\0\0" + frames + b"\x3b"


def pixels(color):
    """256 pixels of one colour as GIF data, without compression: a clear code every 2 pixels."""
    bits = []
    for _ in range(128):
        bits += [4, color, color]
    bits.append(5)
    value = sum(code << (3 * place) for place, code in enumerate(bits))
    data = value.to_bytes((3 * len(bits) + 7) // 8, "little")
    blocks = [data[at:at + 255] for at in range(0, len(data), 255)]
    return b"\x02" + b"".join(bytes([len(each)]) + each for each in blocks) + b"\0"


class FaviconsTest(BrowserTest):
    def page_with_icon(self, name, side=32):
        """A page of a host of its own that declares an icon; gives its address."""
        self.server.answers[f"/{name}.png"] = lambda handler: handler.reply(
            200, "image/png", png(side), [("Set-Cookie", "icon=met; Max-Age=999")])
        self.server.page(f"/{name}", name, f"<link rel=icon href=/{name}.png>")
        return self.server.url(f"/{name}", f"www.{name}.localhost")

    def icons(self):
        """The names of all files that have to do with icons, wherever they are."""
        return sorted(file.name for file in self.home.folder.rglob("Favicons/*"))

    def test_the_icon_of_a_page_is_kept_under_the_name_of_its_site(self):
        self.app.start()

        self.open(self.page_with_icon("kept"))

        until_equal(self.icons, ["kept.localhost.png"], "the icons on the disk")
        file = next(self.home.folder.rglob("Favicons/*.png"))
        self.assertEqual(file.parent.parent.name, "Orvu")
        self.assertEqual(struct.unpack(">II", file.read_bytes()[16:24]), (32, 32))
        self.assertEqual(file.stat().st_mode & 0o077, 0)

    def test_the_decoder_of_icons_goes_when_it_has_nothing_to_do(self):
        self.app.start()
        self.assertEqual(self.app.decoders(), [])

        self.open(self.page_with_icon("first"))

        until_equal(self.icons, ["first.localhost.png"], "the icons on the disk")
        self.assertEqual(len(self.app.decoders()), 1)
        until_equal(self.app.decoders, [], "the decoders")
        self.open(self.page_with_icon("second"))
        until(lambda: "second.localhost.png" in self.icons(), "the second icon", self.icons)

    def test_a_decoder_that_is_killed_takes_nothing_along(self):
        self.app.start()
        self.open(self.page_with_icon("first"))
        until_equal(self.icons, ["first.localhost.png"], "the icons on the disk")

        for pid in self.app.decoders():
            os.kill(pid, signal.SIGKILL)
        self.open(self.page_with_icon("second"))

        until(lambda: "second.localhost.png" in self.icons(), "the second icon", self.icons)
        self.app.check_runs()

    def test_the_decoder_ends_with_a_program_that_is_killed(self):
        self.app.start()
        self.open(self.page_with_icon("first"))
        until_equal(self.icons, ["first.localhost.png"], "the icons on the disk")
        decoders = self.app.decoders()
        self.assertEqual(len(decoders), 1)

        self.app.kill()

        until(lambda: not any(os.path.exists(f"/proc/{pid}") for pid in decoders),
              "the decoder to end", decoders)

    def test_requests_for_icons_carry_no_cookie(self):
        self.app.start()
        url = self.page_with_icon("twice")

        self.open(url)
        self.server.wait_for("/twice.png")
        self.app.start_again(url + "?again")
        self.server.wait_for("/twice.png", times=2)

        self.assertEqual(self.server.cookies_for("/twice.png"), [None, None])

    def test_a_private_window_leaves_no_icon(self):
        self.app.start()
        url = self.page_with_icon("private")
        self.open_privately(url, "private")
        self.server.wait_for("/private.png")

        # An icon that is asked for later has reached the disk: so would have the private one.
        self.open(self.page_with_icon("ordinary"))
        until(lambda: "ordinary.localhost.png" in self.icons(), "the other icon", self.icons)
        self.app.quit()

        self.assertEqual(self.icons(), ["ordinary.localhost.png"])

    def test_the_program_ends_while_a_server_keeps_an_icon_back(self):
        self.app.start()
        _, gate = self.server.slow("/never.png")
        self.server.page("/late", "late", "<link rel=icon href=/never.png>")
        self.open(self.server.url("/late", "late.localhost"))
        self.server.wait_for("/never.png")

        self.app.quit()

        gate.set()
        self.assertEqual(self.icons(), [])

    def test_an_animated_icon_stands_still_at_its_first_frame(self):
        self.server.answers["/moving.gif"] = lambda handler: handler.reply(
            200, "image/gif", flicker())
        self.server.page("/moving", "moving", "<link rel=icon href=/moving.gif>")
        self.app.start()

        self.open(self.server.url("/moving", "moving.localhost"))

        until_equal(self.icons, ["moving.localhost.png"], "the icons on the disk")
        file = next(self.home.folder.rglob("Favicons/*.png"))
        answer = subprocess.run(["identify", "-format", "%w %[fx:255*u.p{8,8}.r] %[fx:255*u.p{8,8}.b]",
                                 str(file)], capture_output=True, text=True, check=True)
        self.assertEqual(answer.stdout, "16 255 0")

    def test_an_icon_that_never_ends_is_given_up_and_the_next_one_taken(self):
        sent = []

        def endless(handler):
            handler.send_response(200)
            handler.send_header("Content-Type", "image/png")
            handler.end_headers()
            handler.wfile.write(png(32)[:-12])
            try:
                for _ in range(1000):
                    handler.wfile.write(b"\0" * 100_000)
                sent.append("everything")
            except OSError:
                sent.append("until the program hung up")
        self.server.answers["/endless.png"] = endless
        self.server.answers["/favicon.ico"] = lambda handler: handler.reply(
            200, "image/png", png(16))
        self.server.page("/long", "long", "<link rel=icon href=/endless.png>")
        self.app.start()

        self.open(self.server.url("/long", "long.localhost"))

        until_equal(self.icons, ["long.localhost.png"], "the icons on the disk")
        until_equal(lambda: sorted(set(sent)), ["until the program hung up"], "what was sent")
