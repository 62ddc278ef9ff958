"""Files that a page has downloaded unasked."""

from harness.case import PRIVATE
from harness.downloads import DownloadTest
from harness.pictures import PictureTest
from harness.site import ALLOW, REFUSE
from harness.wait import until

QUESTION = "“127.0.0.1” wants to download more files"

# Has files downloaded that the page makes itself, each in a turn and a frame of its own: in one
# frame the engine drops a click when the next one comes before it looked at it.
SAVES = """
const save = name => {
    const frame = document.createElement('iframe');
    frame.hidden = true;
    document.body.append(frame);
    const link = frame.contentDocument.createElement('a');
    frame.contentDocument.body.append(link);
    link.href = URL.createObjectURL(new Blob(['content of ' + name]));
    link.download = name;
    link.click();
};
const saveAll = async (count, pause) => {
    for (let i = 0; i < count; i++) {
        save(i + '.txt');
        await new Promise(done => setTimeout(done, pause));
    }
    fetch('/report/done');
};
"""


def names(count):
    return [f"{i}.txt" for i in range(count)]


def saving_page(pages, count=4, begin="onload"):
    return pages.script_page("/saves", f"{SAVES} {begin} = () => saveAll({count}, 30);")


class UnaskedDownloadsTest(DownloadTest):
    def start_saving(self, count=4):
        self.start_and_open(saving_page(self.server, count))
        self.site.wait_for_question(QUESTION)
        self.server.wait_for_report("done")

    def test_the_first_is_saved_and_the_others_when_they_are_allowed(self):
        self.start_saving()
        self.downloads.wait_for_files("0.txt")

        self.site.answer(ALLOW)

        self.downloads.wait_for_files(*names(4))
        self.assertEqual((self.folder / "3.txt").read_text(), "content of 3.txt")

    def test_refused_ones_leave_nothing_and_the_page_is_not_heard_again(self):
        self.server.script_page("/saves", f"{SAVES} onload = () => saveAll(3, 30);"
                                "onkeydown = () => saveAll(3, 1500);")
        self.start_and_open(self.server.url("/saves"))
        self.site.wait_for_question(QUESTION)
        self.site.answer(REFUSE)
        self.server.wait_for_report("done")

        self.hands.press("x")

        until(lambda: self.server.reports().count("done") == 2, "the end of the page's downloads")
        self.assertEqual(self.site.questions(), [])
        # A key is good for one.
        self.downloads.wait_for_files("0.txt", "0 2.txt")

    def test_a_click_on_a_file_asks_nothing(self):
        link = ("<a href='/file' download=clicked.txt style='position:fixed;inset:0;"
                "font-size:40px'>file</a>")
        self.server.page("/file", "file")
        self.server.page("/page", body=link)
        self.start_and_open(self.server.url("/page"))

        for count, file in enumerate(("clicked.txt", "clicked 2.txt", "clicked 3.txt"), 1):
            self.hands.click()
            until(lambda wanted=file: wanted in self.downloads.files(), f"{file!r} in the folder")
            self.assertEqual(len(self.downloads.files()), count)

        self.assertEqual(self.site.questions(), [])

    def test_many_of_one_click_ask(self):
        self.start_and_open(saving_page(self.server, 4, "onclick"))

        self.hands.click()
        self.site.wait_for_question(QUESTION)
        self.site.answer(ALLOW)

        self.downloads.wait_for_files(*names(4))

    def test_the_question_is_answered_by_key(self):
        self.start_saving()
        until(lambda: self.windows.find("push button", ALLOW).is_sensitive, "a button that wakes")
        self.hands.press("shift+F6")
        self.wait_for_focus(REFUSE)
        self.hands.go_on("Tab")
        self.wait_for_focus(ALLOW)

        self.hands.go_on("Return")

        self.site.wait_for_question()
        self.downloads.wait_for_files(*names(4))

    def test_escape_drops_what_waits(self):
        self.start_saving()

        self.hands.press("Escape")

        self.site.wait_for_question()
        self.downloads.wait_for_files("0.txt")

    def test_the_end_of_the_tab_drops_what_waits(self):
        self.start_saving()

        self.app.action("closeTab")

        self.site.wait_for_question()
        self.downloads.wait_for_files("0.txt")
        self.app.check_runs()

    def test_the_question_waits_in_its_tab(self):
        self.start_saving()

        self.app.action("newTab")
        self.site.wait_for_question()
        self.app.action("selectTab2")

        self.site.wait_for_question(QUESTION)

    def test_the_window_answers_while_a_page_floods_it(self):
        self.server.script_page("/saves", f"{SAVES} onload = () => saveAll(130, 0);")
        self.start_and_open(self.server.url("/saves"))
        self.site.wait_for_question(QUESTION)

        self.app.action("newEmptyTab")
        self.wait_for_tabs("New tab", "saves", "New tab")
        self.site.wait_for_question()
        self.app.action("selectTab2")
        self.server.wait_for_report("done")
        self.site.wait_for_question(QUESTION)
        self.site.answer(ALLOW)

        until(lambda: len(self.downloads.files()) >= 101, "the files that were kept")


class UnaskedDownloadsPicturesTest(PictureTest):
    def test_question(self):
        self.start_with("docs")
        self.app.start_again(saving_page(self.server))
        self.site.wait_for_question(QUESTION)
        self.server.wait_for_report("done")
        self.shoot("download-question")
        self.hands.resize(900, 560)
        self.shoot("download-question-900x560")

    def test_question_in_a_private_window(self):
        self.start_with("docs")
        site = self.open_private_site(saving_page(self.server))
        site.wait_for_question(QUESTION)
        self.server.wait_for_report("done")
        self.shoot("download-question-private", PRIVATE)
