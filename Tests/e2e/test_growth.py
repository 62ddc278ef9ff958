"""What a long day leaves behind in the program: next to nothing."""

from harness import process
from harness.case import PRIVATE, BrowserTest
from harness.wait import until, until_equal

MIB = 2**20
# One page after the other in the same tab, each with a picture's worth of text.
PAGES = 107
CHAIN = f"""
const next = Number(location.search.slice(1)) + 1;
onload = () => {{ if (next < {PAGES}) setTimeout(() => location.href = '?' + next); }};
document.body.append('words '.repeat(5000));
"""

# Tells when the page was painted after it had been hidden.
SHOWN = """
let shows = 0;
document.onvisibilitychange = () => {
    const name = `/report/shown-${document.title}-${++shows}`;
    if (!document.hidden) requestAnimationFrame(() => requestAnimationFrame(() => fetch(name)));
};
fetch('/report/ready-' + document.title);
"""


class GrowthTest(BrowserTest):
    def memory(self):
        return process.resident(self.app.pid) / MIB

    def test_a_hundred_pages_in_one_tab_leave_the_program_small(self):
        self.start_with_only(self.server.script_page("/chain", CHAIN))
        first = self.memory()

        until(lambda: self.server.asked("/chain") >= PAGES, f"{PAGES} pages",
              lambda: self.server.asked("/chain"), deadline=120)
        self.wait_until_loaded()

        self.assertLess(self.memory() - first, 65)

    def frame_buffers(self):
        """How many the program shares with its pages."""
        return process.mapped(self.app.pid).count("/memfd:WebKitSharedMemory")

    def test_tabs_that_are_shown_in_turn_do_not_gather_frame_buffers(self):
        self.start_with_only(self.server.script_page("/one", SHOWN, "<h1>one</h1>"),
                             self.server.script_page("/two", SHOWN, "<h1>two</h1>"))
        until(lambda: sorted(self.server.reports("ready-")) == ["one", "two"], "the pages to run",
              lambda: self.server.reports())
        self.wait_for_selected("one")

        for _ in range(15):
            for number, title in ((2, "two"), (1, "one")):
                self.server.forget()
                self.app.action(f"selectTab{number}")
                until(lambda wanted=title: self.server.reports(f"shown-{wanted}-"),
                      "the page to be painted")

        # A page has up to three, and one may be on its way.
        self.assertLessEqual(self.frame_buffers(), 8)

    def open_and_close_tabs(self, rounds):
        together = 10
        for _ in range(rounds):
            self.server.forget()
            urls = self.server.pages(*[f"/page{number}" for number in range(together)])
            self.app.hand_over(*urls)
            self.server.wait_for(*[f"/page{number}" for number in range(together)])
            for _ in urls:
                self.app.action("closeTab")
            self.wait_for_tabs("first")

    def test_tabs_that_were_opened_and_closed_leave_nothing(self):
        self.start_with_only(self.server.page("/first"))
        self.open_and_close_tabs(2)
        first = self.memory()

        self.open_and_close_tabs(20)

        self.assertLess(self.memory() - first, 40)
        self.assertLessEqual(self.frame_buffers(), 3)
        until_equal(lambda: len(self.app.page_processes()), 1, "the processes of pages")

    def open_and_close_windows(self, action, titles, count):
        for _ in range(count):
            self.app.app_action(action)
            until_equal(self.windows.titles, titles, "the windows")
            self.app.action("performClose", window=self.app.windows()[-1])
            until_equal(self.windows.titles, ["Orvu"], "the windows")

    def test_windows_that_were_opened_and_closed_leave_nothing(self):
        self.start_with_only(self.server.page("/page"))
        self.open_and_close_windows("newWindow", ["Orvu", "Orvu"], 3)
        self.open_and_close_windows("newPrivateWindow", ["Orvu", PRIVATE], 3)
        first = self.memory()

        self.open_and_close_windows("newWindow", ["Orvu", "Orvu"], 30)
        self.open_and_close_windows("newPrivateWindow", ["Orvu", PRIVATE], 30)

        self.assertLess(self.memory() - first, 30)
        until_equal(lambda: len(self.app.page_processes()), 1, "the processes of pages")
