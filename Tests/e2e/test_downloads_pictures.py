"""Pictures of the list of downloads."""

from harness.case import PRIVATE
from harness.downloads import MEGABYTE, DownloadTest, Payload


class DownloadPicturesTest(DownloadTest):
    display_traits = {"manager": "mutter"}

    def test_pictures_of_the_list(self):
        downloads = self.downloads
        running, _ = downloads.serve_halting("/run", Payload(4 * MEGABYTE), "Holiday pictures.zip")
        broken, stream = downloads.serve_halting("/cut", Payload(4 * MEGABYTE), "talk.mp4")
        self.app.start(downloads.serve("/done", Payload(9000), "Annual report 2026.pdf"))
        downloads.wait_for_row("Annual report 2026.pdf, Done")
        self.picture("downloads-done")
        self.app.start_again(broken)
        downloads.wait_for_half("talk.mp4")
        stream.break_off()
        downloads.wait_for_row("talk.mp4, Couldn't finish")
        self.app.start_again(downloads.serve_halting("/stop", Payload(4 * MEGABYTE), "x" * 90)[0])
        downloads.wait_for_half("x" * 90)
        self.windows.press("push button", "Cancel download")
        self.app.start_again(running)
        downloads.wait_for_half("Holiday pictures.zip")
        self.picture("downloads-light")

        self.app.app_action("newPrivateWindow")
        downloads.wait_for_half("Holiday pictures.zip", PRIVATE)
        self.picture("downloads-private")
