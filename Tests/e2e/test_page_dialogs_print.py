"""Printing: a dialog that holds nothing up."""

from harness.case import BrowserTest
from harness.wait import until, until_equal


class PrintTest(BrowserTest):
    def dialogs(self):
        return self.hands.windows("Print")

    def wait_for_dialog(self):
        until(self.dialogs, "the dialog for printing")

    def wait_until_gone(self):
        until_equal(self.dialogs, [], "the dialogs for printing")

    def printing_page(self):
        return self.server.script_page("/page", "setTimeout(() => { print();"
                                       "fetch('/report/after'); }, 50);")

    def test_the_key_prints_the_page(self):
        self.start_and_open(self.server.page("/page"))

        self.hands.press("ctrl+p")
        self.wait_for_dialog()
        self.hands.press("Escape", title="Print")

        self.wait_until_gone()

    def test_quitting_ends_the_dialog_and_the_program(self):
        self.app.start(self.printing_page())
        self.wait_for_dialog()

        self.app.quit()

    def test_the_dialog_of_a_page_holds_nothing_up(self):
        self.app.start(self.printing_page())
        self.wait_for_dialog()

        self.server.wait_for_report("after")
        self.app.action("reload")
        self.server.wait_for("/page", times=2)

    def test_a_tab_goes_with_its_dialog(self):
        self.app.start(self.printing_page())
        self.wait_for_dialog()

        self.app.action("closeTab")

        self.wait_for_tabs("New tab")
        self.wait_until_gone()

    def test_another_tab_in_front_ends_the_dialog(self):
        self.app.start(self.printing_page())
        self.wait_for_dialog()

        self.app.action("newEmptyTab")

        self.wait_until_gone()

    def test_a_page_in_the_background_cannot_print(self):
        self.server.script_page("/late", "addEventListener('visibilitychange', () => setTimeout("
                                "() => { print(); fetch('/report/printed'); }, 50));")
        self.start_and_open(self.server.url("/late"))

        self.app.action("newEmptyTab")

        self.server.wait_for_report("printed")
        self.assertEqual(self.dialogs(), [])

    def test_a_page_that_prints_without_end_is_heard_once(self):
        self.server.script_page("/loop", "setInterval(() => { print(); fetch('/report/again'); },"
                                "100);")
        self.app.start(self.server.url("/loop"))
        self.wait_for_dialog()
        self.hands.press("Escape", title="Print")
        self.wait_until_gone()
        self.server.forget()

        self.server.wait_for("/report/again", times=5)

        self.assertEqual(self.dialogs(), [])
