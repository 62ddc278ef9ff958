"""Menus, panels and lists on a Wayland display, where only the compositor knows their places."""

from harness.case import PRIVATE
from harness.site import INFO
from harness.sway import SIZE
from harness.wait import until, until_equal
from harness.wayland_case import WaylandTest

LIST = ("<select style='position:fixed;left:40px;top:40px;font-size:30px' "
        "onchange=\"fetch('/report/chosen-' + value)\"><option>ant<option>bee<option>cat</select>")
MIDDLE = (760, 480)


class PopoversTest(WaylandTest):
    def start_blue(self, *names, body=""):
        self.start_with_only(*(self.filled_page(f"/{name}", body) for name in names))
        self.wait_for_blue()

    def open_menu(self):
        self.click_on("push button", "More")
        self.windows.find("menu item", "Actual Size")
        return self.popover()

    def test_the_menu_of_the_bar_stands_below_its_button_and_goes_by_key_and_click(self):
        self.start_blue("one")
        button = self.windows.nodes("push button", "More")[-1].middle
        right, below = self.hands.on_display(button)

        for close in (lambda: self.hands.go_on("Escape"), self.hands.click):
            left, top, width, height = self.open_menu()
            self.picture_at_rest("menu")
            self.assertTrue(left < right, "the menu begins left of its button")
            self.assertTrue(top - below < 40, f"{top} hangs at the button, {below}")
            self.assertTrue(left >= 0 and left + width <= SIZE[0] and top + height <= SIZE[1],
                            "all of it is on the display")
            close()
            self.wait_for_no_popover()

    def test_the_menu_opens_and_chooses_by_key(self):
        self.start_blue("one")

        self.hands.press("ctrl+l")
        self.notch.wait_until_open()
        self.hands.go_on("F6")
        self.go_by_key_to("More", key="shift+Tab")
        self.hands.go_on("Return")
        self.popover()
        self.hands.go_on("Down", "Return")

        until_equal(self.windows.titles, ["Orvu", PRIVATE], "the windows")

    def test_the_menu_chooses_by_pointer(self):
        self.start_blue("one")

        self.open_menu()
        self.click_in_popover("menu item", "New Private Window")

        until_equal(self.windows.titles, ["Orvu", PRIVATE], "the windows")
        self.windows.wait_until_gone("menu item", "Actual Size")

    def test_a_submenu_opens_by_pointer(self):
        self.start_blue("one")

        self.open_menu()
        self.click_in_popover("menu item", "View")

        self.windows.find("menu item", "Enter Full Screen")
        self.picture_at_rest("submenu")
        self.hands.go_on("Escape")
        self.wait_for_no_popover()

    def test_a_tabs_menu_opens_at_the_pointer_and_by_key(self):
        self.start_blue("one", "two")

        self.click_on("push button", "one", button=3)
        self.windows.find("menu item", "Close Tab")
        self.picture_at_rest("tab-menu")
        self.hands.go_on("Escape")
        self.windows.wait_until_gone("menu item", "Close Tab")
        self.focus_list("one")
        self.hands.go_on("shift+F10")
        self.windows.find("menu item", "Close Tab")
        self.hands.go_on("Up", "Return")

        self.wait_for_tabs("two")

    def focus_list(self, first):
        self.hands.press("ctrl+l")
        self.notch.wait_until_open()
        self.hands.go_on("F6")
        self.wait_for_focus("New tab")
        self.go_by_key_to(first, most=6)

    def test_a_pages_menu_opens_at_the_pointer_and_chooses(self):
        target = self.server.page("/target")
        self.start_blue("one", body=f"<a href='{target}' style='position:fixed;inset:0'></a>")

        self.hands.click(3)
        left, top, _, _ = self.popover()
        pointer = self.hands.on_display(MIDDLE)
        self.picture_at_rest("page-menu")
        self.assertTrue(0 <= left - pointer[0] < 20 and 0 <= top - pointer[1] < 20,
                        f"{left, top} is beside {pointer}")
        self.click_in_popover("menu item", "Open in New Tab")

        self.wait_for_tabs("one", "target")

    def test_a_pages_choice_opens_below_itself_and_takes_keys(self):
        self.start_blue("one", body=LIST)
        left, top, _, _ = self.page_area()

        self.hands.click_on_display((left + 80, top + 60))
        until(lambda: self.display.white_box((left, top + 100, 400, 200)), "the list below it")
        self.picture_at_rest("choice")
        self.hands.go_on("Down", "Return")

        self.server.wait_for_report("chosen-bee")

    def test_the_sites_panel_takes_the_pointer_and_goes_by_key_and_click(self):
        self.start_blue("one")

        self.click_on("push button", INFO)
        self.site.wait_until_open()
        self.click_in_popover("push button", "Camera: Block")
        self.site.wait_for_choice("Camera", "Block")
        self.picture_at_rest("site-panel")
        self.hands.go_on("Escape")
        self.site.wait_until_closed()
        self.wait_for_no_popover()
        self.click_on("push button", INFO)
        self.popover()
        self.hands.click(at=(1000, 700))

        self.site.wait_until_closed()
