"""What pops up over the window and goes again: menus, panels, lists of pages, tooltips. The harness
fails a test in which the toolkit complained."""

import time

from harness.case import BACK, BrowserTest
from harness.downloads import Downloads, Payload
from harness.site import INFO
from harness.wait import until, until_equal

SELECT = ("<select style='position:fixed;left:0;top:0;width:900px;height:300px;font-size:30px' "
          "onchange=\"fetch('/report/chosen-' + value)\"><option>a<option>b<option>c</select>")
TOOLTIP_TIME = 1.0  # seconds; the toolkit shows one after half of that


class PopupsTest(BrowserTest):
    def popups(self):
        """What of the program lies over its window on the display."""
        return set(self.hands.windows("Orvu")) - {self.hands.window()}

    def wait_for_popups(self, count):
        until_equal(lambda: len(self.popups()), count, "the number of popups")

    def open_pages(self, *names):
        self.start_with_only(*(self.server.page(f"/{name}") for name in names))

    # Opening and closing.

    def test_a_press_beside_the_time_line_closes_it_and_reaches_the_page(self):
        self.server.page("/a")
        self.start_with_only(self.server.url("/a"), self.server.script_page(
            "/clicks", "onclick = () => fetch('/report/click')") or self.server.url("/clicks"))
        self.app.action("selectTab9")

        for times in range(1, 4):
            self.hands.hover(self.windows.find("push button", BACK).middle)
            self.windows.find("panel", "Rewind today")
            self.hands.click()

            self.windows.wait_until_gone("panel", "Rewind today")
            until_equal(lambda: len(self.server.reports("click")), times, "the page's clicks")

    def test_panels_and_menus_come_and_go_by_click_and_key(self):
        self.open_pages("one", "two")
        for role, name, inside in (("push button", INFO, ("push button", "Camera: Ask")),
                                   ("push button", "More", ("menu item", "Actual Size")),
                                   ("push button", "Shelf", ("label", None))):
            for close in (lambda: self.hands.go_on("Escape"), self.hands.click):
                self.click_on(role, name)
                self.wait_for_popups(1)
                until(lambda what=inside: self.windows.nodes(*what), f"{name} to open")
                close()
                self.wait_for_popups(0)

    def test_context_menus_come_and_go_by_click_and_key(self):
        self.open_pages("one", "two")
        for close in (lambda: self.hands.go_on("Escape"), self.hands.click,
                      lambda: self.windows.press("menu item", "Pin Tab"),
                      lambda: self.windows.press("menu item", "Unpin Tab")):
            self.click_on("push button", "one", button=3)
            self.windows.find("menu item", "Close Tab")
            close()
            until(lambda: not self.windows.nodes("menu item", "Close Tab"), "the menu to go")
        self.app.action("toggleGroup")
        header = self.windows.find_named("group, 1 tabs")
        self.hands.click(button=3, at=header.middle)
        self.windows.press("menu item", "Close Group")
        self.windows.wait_until_gone("menu item", "Close Group")

    def test_the_list_of_a_pages_choice_comes_and_goes_by_click_and_key(self):
        self.start_with_only(self.server.page("/choice", body=SELECT))
        place = (400, 200)

        for close in (lambda: self.hands.go_on("Escape"),
                      lambda: self.hands.click(at=(900, 700))):
            self.hands.click(at=place)
            self.wait_for_popups(1)
            close()
            self.wait_for_popups(0)
        self.hands.click(at=place)
        self.wait_for_popups(1)
        self.hands.go_on("Down", "Return")

        self.wait_for_popups(0)
        self.server.wait_for_report("chosen-b")

    def test_a_pages_own_menu_comes_and_goes(self):
        self.open_pages("one", "two")

        for _ in range(2):
            self.hands.click(button=3)
            self.wait_for_popups(1)
            self.hands.go_on("Escape")
            self.wait_for_popups(0)

    def test_a_tab_may_go_while_its_page_shows_a_list(self):
        self.start_with_only(self.server.page("/one"), self.server.page("/choice", body=SELECT))
        self.app.action("selectTab9")
        self.hands.click(at=(400, 200))
        self.wait_for_popups(1)

        self.app.action("closeTab")

        self.wait_for_popups(0)
        self.wait_for_tabs("one")

    # Tooltips.

    def hover_until_tooltip(self, button):
        """Waits for the tooltip of a button; gives what it is on the display."""
        self.hands.hover(button.middle)
        return until(self.popups, f"the tooltip of {button}")

    def check_tooltip_stays_away(self, button, name):
        """With the tooltip there, a click opens something, and from then on nothing else lies over
        the window, wherever the pointer goes."""
        tooltip = self.hover_until_tooltip(button)
        self.hands.click_here()
        self.wait_for_popups(1)
        popover = self.popups()
        if popover == tooltip:
            popover = until(lambda: self.popups() - tooltip, f"what {name} opens")
        window = self.hands.window()
        left, top = button.middle
        end = time.monotonic() + TOOLTIP_TIME
        step = 0
        while time.monotonic() < end:
            step += 1
            if step % 2:
                self.hands.move_in(window, (left + 4 + step % 3, top + 5))
            else:
                self.hands.move_in(next(iter(popover)), (60 + step % 3, 40))
            self.assertLessEqual(self.popups(), popover)
        self.picture(f"no-tooltip-{name}")
        self.hands.go_on("Escape")
        self.wait_for_popups(0)

    def test_no_tooltip_lies_over_what_a_button_opened(self):
        self.open_pages("one", "two")
        for name in (INFO, "More", "Shelf"):
            with self.subTest(name):
                self.check_tooltip_stays_away(self.windows.find("push button", name), name)

    def test_the_tooltip_of_the_downloads_stays_away_from_their_list(self):
        downloads = Downloads(self)
        downloads.serve("/file", Payload(10), "file.bin")
        self.open_pages("one")
        self.app.hand_over(self.server.url("/file"))
        button = self.windows.find("push button", "Downloads")

        self.check_tooltip_stays_away(button, "Downloads")

    def test_a_button_has_its_tooltip_again_when_its_popover_has_gone(self):
        self.open_pages("one", "two")
        button = self.windows.find("push button", INFO)
        self.hover_until_tooltip(button)
        self.hands.click_here()
        self.site.wait_until_open()
        self.hands.go_on("Escape")
        self.wait_for_popups(0)
        self.hands.hover((900, 700))

        self.hover_until_tooltip(button)
