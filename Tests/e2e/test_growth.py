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
