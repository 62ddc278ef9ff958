"""What the engine puts over a page for its fields: lists, calendars, dialogs, bubbles and menus. Each
is used by key and by pointer, and its states are seen, on light and on dark."""

import datetime
import itertools

from harness.case import PRIVATE, BrowserTest, artefacts
from harness.keys import PLAIN_FRAME
from harness.pixels import Box, Pixels, contrast
from harness.wait import until
from harness.x11 import xdotool

# The colour of what is chosen, and the rings of today, on light and on dark.
CHOSEN = (31, 111, 209)
RINGS = {"Orvu": CHOSEN, PRIVATE: (92, 178, 255)}
GROUNDS = {"Orvu": (255, 255, 255), PRIVATE: (38, 35, 50)}

TEXT, STATE, HOVER = 4.5, 3, 1.2  # how far these stand out at least

LEFT, HEIGHT = 40, 34
STYLE = (f"<style>body > * {{ position: fixed; left: {LEFT}px; width: 300px; height: {HEIGHT}px; "
         "box-sizing: border-box; margin: 0 }</style>")
REPORTS = ("for (const kind of ['input', 'change', 'invalid'])"
           "  addEventListener(kind, event => fetch('/report/' + kind + '-' +"
           "    encodeURIComponent(event.target.value)), true);"
           "addEventListener('mousemove', () => fetch('/report/moved'), {once: true});"
           "addEventListener('mousedown', event =>"
           "  fetch(`/report/at-${event.clientX}-${event.clientY}`), {once: true});")


class PageWidgets:
    """What all of these do in the window of a title."""

    title = "Orvu"

    @property
    def ground(self):
        return GROUNDS[self.title]

    def panel(self, pixels):
        """The part of a popover that isn't its shadow."""
        return pixels.extent(self.ground)

    def show(self, field, top=60):
        """Opens a page with one field and finds out where that stands in the window."""
        body = STYLE + field.replace(">", f" style='top:{top}px'>", 1)
        self.server.script_page("/field", REPORTS, body)
        url = self.server.url("/field")
        if self.title == PRIVATE:
            self.app.start()
            self.open_privately(url, "field")
        else:
            self.app.start(url)
        self.origin = self._origin()
        self.field_top = top
        self.windows_before = self.hands.windows("Orvu.*")

    def _origin(self):
        """Where the page begins in the window: it tells where in it a click comes."""
        steps = itertools.count()

        def listens():
            self.hands.hover((690 + next(steps) % 2, 400), self.title)
            return "moved" in self.server.reports()
        until(listens, "the page to hear the pointer")
        self.hands.click(at=(700, 400), title=self.title)
        told = until(lambda: [each for each in self.server.reports() if each.startswith("at-")],
                     "the page to tell where it was clicked")
        _, x, y = told[0].split("-")
        return 700 - int(x), 400 - int(y)

    def place(self, x, y):
        """A place of the field in the window."""
        return self.origin[0] + LEFT + x, self.origin[1] + self.field_top + y

    def click_field(self, x=150, y=HEIGHT // 2, button=1):
        self.hands.click(button, at=self.place(x, y), title=self.title)

    # What stands over the page.

    def over_the_page(self):
        """The display's numbers of what has come over the windows since the page was opened."""
        return [each for each in self.hands.windows("Orvu.*") if each not in self.windows_before]

    def popover(self):
        return until(self.over_the_page, "something over the page")[-1]

    def wait_until_closed(self):
        until(lambda: not self.over_the_page(), "nothing over the page", self.over_the_page)

    def seen(self, judge, what, pointer=None, key=None):
        """Looks at the popover until `judge` finds in its pixels what it looks for. A hand that
        points at something is never quite still; one at the keys goes on pressing."""
        window = self.popover()
        last = []

        def look():
            if pointer:
                last.append(1)
                self.hands.move_in(window, (pointer[0] + len(last) % 2, pointer[1]))
            if key:
                self.hands.go_on(key)
            return judge(Pixels(self.display, window))
        return until(look, what, lambda: self.keep(window), pause=0.1)

    def resting_panel(self):
        """The box of what is over the page, once it is drawn whole."""
        boxes = []

        def rests(now):
            boxes.append(self.panel(now))
            return boxes[-3:] == [boxes[-1]] * 3 and boxes[-1]
        return self.seen(rests, "something over the page at rest")

    def keep(self, window):
        file = artefacts() / f"widget-{self.id()}.png"
        self.display.picture_of(window, file)
        return file

    def chosen(self, pixels, least=600):
        """The box of the row or day that is chosen, if one is."""
        return pixels.largest(CHOSEN, least)

    def assert_text(self, pixels, box, what):
        self.assertGreaterEqual(pixels.text_contrast(box), TEXT, what)

    def assert_chosen_stands_out(self, pixels, row):
        """A chosen row is told from the ground, and both can be read."""
        self.assertEqual(pixels.ground(row), CHOSEN)
        self.assert_text(pixels, row, "the chosen row")
        self.assertGreaterEqual(contrast(CHOSEN, self.ground), STATE)

    def wait_for_value(self, value):
        self.server.wait_for_report(f"change-{value}")

    SELECT = ("<select><option>Apple<option selected>Birch<option>Cedar<option disabled>Damson"
              "<option>Elder</select>")

    SUGGESTIONS = ("<input list=trees><datalist id=trees style='display:none'><option value=Lilac>"
                   "<option value=Linden><option value=Oak></datalist>")

    def date_beside_today(self):
        """A day of this month that stands right above or below today in a calendar, and how many
        rows today is below it."""
        today = datetime.date.today()
        week = datetime.timedelta(days=7)
        return (today + week, -1) if (today + week).month == today.month else (today - week, 1)

    def open_calendar(self, day):
        self.show(f"<input type=date value={day.isoformat()}>")
        self.click_field(281)
        return self.seen(lambda now: self.chosen(now, 300), "the chosen day")

    def dialog(self, name):
        """The display's number of the engine's dialog of that name."""
        return until(lambda: xdotool("search", "--onlyvisible", "--all", "--pid", self.app.pid,
                                     "--name", f"^{name}$"), f"the dialog {name!r}")[-1]

    def is_open(self, name):
        return bool(xdotool("search", "--onlyvisible", "--all", "--pid", self.app.pid, "--name",
                            f"^{name}$"))

    def wait_until_dialog_is_gone(self, name):
        until(lambda: not self.is_open(name), "no dialog")

    def click_in(self, dialog, role, name):
        """Clicks on a thing of a dialog, which stands within a plain frame."""
        x, y = self.windows.find(role, name).middle
        self.hands.move_in(dialog, (x + PLAIN_FRAME, y + PLAIN_FRAME))
        self.hands.click_here()

    def open_colors(self):
        self.show("<input type=color value=#336699>")
        self.click_field()
        dialog = self.dialog("Select Color")
        self.windows.find("push button", "_Select Select")
        until(lambda: xdotool("getactivewindow") == [dialog], "the dialog at the front")
        return dialog

    def open_files(self):
        file = self.home.folder / "a-letter.txt"
        file.write_text("Good morning")
        self.show("<input type=file>")
        self.click_field(40)
        dialog = self.dialog("Select File")
        self.windows.find("push button", "_Cancel Cancel")
        until(lambda: xdotool("getactivewindow") == [dialog], "the dialog at the front")
        return dialog, file

    def wait_for_file(self):
        until(lambda: [each for each in self.server.reports()
                       if each.startswith("change-") and each.endswith("a-letter.txt")], "the file",
              self.server.reports)
        self.wait_until_dialog_is_gone("Select File")

    def highlighted(self, pixels):
        """The line of a menu whose ground is told from the menu's, if there is just one."""
        panel = self.panel(pixels)
        if not panel:
            return None

        def is_lit(y):
            ground = pixels.ground(Box(panel.middle[0], y, panel.right - 16, y + 1))
            return HOVER <= contrast(ground, self.ground) < 4
        runs = [list(run) for lit, run in itertools.groupby(range(panel.top, panel.bottom), is_lit)
                if lit]
        lines = [run for run in runs if len(run) > 9]  # not those between the groups
        if len(lines) != 1:
            return None
        return Box(panel.left + 16, lines[0][0], panel.right - 16, lines[0][-1] + 1)


class Looks(PageWidgets):
    """Each state of each widget is seen."""

    def test_a_list_is_chosen_from_by_key(self):
        self.show(self.SELECT)

        self.click_field()
        row = self.seen(self.chosen, "the chosen row")
        pixels = Pixels(self.display, self.popover())
        self.assert_chosen_stands_out(pixels, row)
        plain = row.moved(0, -row.height).shrunk(2)
        self.assertEqual(pixels.ground(plain), self.ground)
        self.assert_text(pixels, plain, "a plain row")
        self.assert_text(pixels, row.moved(0, 2 * row.height).shrunk(2), "a row out of use")
        self.hands.go_on("Down")
        below = self.seen(lambda now: (box := self.chosen(now)) and box.top > row.top and box,
                          "the row below to be chosen")
        self.assertEqual(below.height, row.height)
        self.hands.go_on("Return")

        self.wait_for_value("Cedar")
        self.wait_until_closed()

    def test_a_suggestion_is_taken_by_key(self):
        self.show(self.SUGGESTIONS)

        self.click_field(60)
        self.hands.type_on("Li")
        self.popover()
        self.hands.go_on("Down")
        first = self.seen(self.chosen, "the chosen row")
        self.assert_chosen_stands_out(Pixels(self.display, self.popover()), first)
        self.hands.go_on("Down")
        self.seen(lambda now: (box := self.chosen(now)) and box.top > first.top, "the next row")
        self.hands.go_on("Return")

        self.server.wait_for_report("input-Linden")
        self.wait_until_closed()

    def test_a_calendar_tells_chosen_hovered_and_today(self):
        day, down = self.date_beside_today()
        box = self.open_calendar(day)

        pixels = Pixels(self.display, self.popover())
        ring = RINGS[self.title]
        today = box.moved(0, down * box.height)
        beside = box.moved(box.width if box.left < pixels.width // 2 else -box.width, 0)
        self.assertGreater(pixels.count(ring, today), 40, "a ring around today")
        self.assertEqual(pixels.count(ring, beside.shrunk(1)), 0, "no ring around another day")
        self.assertGreaterEqual(contrast(ring, self.ground), STATE)
        self.assert_text(pixels, today.shrunk(3), "today")
        self.assert_chosen_stands_out(pixels, box)
        self.assert_text(pixels, beside.shrunk(3), "a plain day")
        plain = pixels.ground(beside.shrunk(3))
        self.seen(lambda now: contrast(now.ground(beside.shrunk(3)), plain) >= HOVER,
                  "the hovered day to be told from others", pointer=beside.middle)
        self.hands.go_on("Escape")
        self.wait_until_closed()

    def test_a_bubble_says_what_is_missing(self):
        self.show("<form action=/sent><input required><button style='margin-left:20px'>Send"
                  "</button></form>")

        self.hands.go_on("Tab", "Return")
        self.seen(lambda now: (box := self.panel(now)) and now.ground(box) == self.ground
                  and now.text_contrast(box.shrunk(6)) >= TEXT, "words that can be read")
        self.server.wait_for_report("invalid-")

        self.assertNotIn("/sent", [each.path for each in self.server.requests])

    def test_a_menu_tells_the_one_line_of_pointer_or_key(self):
        self.show("<input value=words>")

        self.click_field(30, button=3)
        panel = self.resting_panel()
        x, y = panel.middle[0], panel.bottom - 20
        line = self.seen(lambda now: (box := self.highlighted(now)) and box.top <= y < box.bottom
                         and box, "the hovered line to be told", pointer=(x, y))
        pixels = Pixels(self.display, self.popover())
        self.assert_text(pixels, line, "the hovered line")
        self.seen(lambda now: (box := self.highlighted(now)) and box.bottom <= line.top,
                  "another line by key, and that one alone", key="Down")
        self.hands.go_on("Escape")
        self.wait_until_closed()


class Uses(PageWidgets):
    """Each widget gives the page what is chosen."""

    def test_a_list_opens_by_key_and_escape_leaves_it(self):
        self.show(self.SELECT)

        self.hands.go_on("Tab", "space")
        row = self.seen(self.chosen, "the chosen row")
        self.hands.go_on("Up")
        self.seen(lambda now: (box := self.chosen(now)) and box.top < row.top, "the row above")
        self.hands.go_on("Escape")
        self.wait_until_closed()

        self.assertNotIn("change-Apple", self.server.reports())

    def test_a_list_is_chosen_from_by_pointer(self):
        self.show(self.SELECT)

        self.click_field()
        row = self.seen(self.chosen, "the chosen row")
        above = row.moved(0, -row.height).middle
        self.seen(lambda now: (box := self.chosen(now)) and box.top < row.top,
                  "the row under the pointer to be chosen", pointer=above)
        self.hands.click_here()

        self.wait_for_value("Apple")
        self.wait_until_closed()

    def test_a_row_out_of_use_is_not_chosen(self):
        self.show(self.SELECT)

        self.click_field()
        row = self.seen(self.chosen, "the chosen row")
        self.hands.move_in(self.popover(), row.moved(0, 2 * row.height).middle)
        self.hands.click_here()
        self.seen(lambda now: now.width, "the list to stay")
        self.hands.go_on("Escape")
        self.wait_until_closed()

        self.assertNotIn("change-Damson", self.server.reports())

    def test_a_suggestion_is_taken_by_pointer(self):
        self.show(self.SUGGESTIONS)

        self.click_field(60)
        self.hands.type_on("Li")
        self.popover()
        self.hands.go_on("Down")
        row = self.seen(self.chosen, "the chosen row")
        below = row.moved(0, row.height)
        self.seen(lambda now: contrast(now.ground(below.shrunk(2)), self.ground) >= HOVER,
                  "the row under the pointer to be told from others", pointer=below.middle)
        self.hands.click_here()

        self.server.wait_for_report("input-Linden")
        self.wait_until_closed()

    def test_a_day_is_chosen_by_pointer(self):
        box = self.open_calendar(datetime.date(2024, 5, 15))
        next_day = box.moved(box.width, 0)

        self.seen(lambda now: self.chosen(now, 300), "the calendar", pointer=next_day.middle)
        self.hands.click_here()

        self.wait_for_value("2024-05-16")

    def test_a_day_is_chosen_by_key(self):
        self.open_calendar(datetime.date(2024, 5, 15))
        before = Pixels(self.display, self.popover())

        self.hands.go_on("Down", "Down")
        self.seen(lambda now: now.width and now.colors(now.all) != before.colors(before.all),
                  "the day that has the keyboard to be marked")
        self.hands.go_on("space")

        self.wait_for_value("2024-05-05")

    def test_a_color_is_chosen_by_key(self):
        self.open_colors()

        self.hands.go_on("Up", "space", "alt+s")

        until(lambda: [each for each in self.server.reports() if each.startswith("change-%23")],
              "a colour", self.server.reports)
        self.wait_until_dialog_is_gone("Select Color")

    def test_a_color_is_chosen_by_pointer(self):
        dialog = self.open_colors()

        self.click_in(dialog, "radio button", "Red")

        def taken():
            if self.is_open("Select Color"):
                self.click_in(dialog, "push button", "_Select Select")
            return not self.is_open("Select Color")
        until(taken, "the dialog to take the colour", pause=1)

        self.wait_for_value("%23e01b24")

    def test_a_file_is_chosen_by_key(self):
        _, file = self.open_files()

        self.hands.type_on(str(file))
        self.hands.go_on("Return")

        self.wait_for_file()

    def test_a_file_is_chosen_by_pointer(self):
        dialog, _ = self.open_files()

        def opened():
            self.click_in(dialog, "label", "Home")
            # It is the first one below the head of the list.
            head = self.windows.find("label", "Name")
            x, y = head.middle
            self.hands.move_in(dialog, (x + PLAIN_FRAME, y + PLAIN_FRAME + 18))
            self.hands.click_here()
            self.click_in(dialog, "push button", "_Open Open")
            return not self.is_open("Select File")
        until(opened, "the dialog to take the file", pause=0.5)
        self.wait_for_file()

    def test_no_file_is_chosen_after_cancel(self):
        dialog, _ = self.open_files()

        self.click_in(dialog, "push button", "_Cancel Cancel")

        self.wait_until_dialog_is_gone("Select File")
        self.assertFalse([each for each in self.server.reports() if each.startswith("change-")])

    def test_a_menu_acts_by_key(self):
        self.show("<input value=words>")

        self.click_field(30, button=3)
        self.popover()
        self.hands.go_on("Up", "Up", "Return")  # select all, the last but one
        self.wait_until_closed()

        def is_replaced():
            # The keyboard is back in the page a moment after the menu is out of sight.
            self.hands.type_on("x")
            return "input-x" in self.server.reports()
        until(is_replaced, "the words to give way to what is typed", self.server.reports, pause=0.5)


class LightTest(Looks, Uses, BrowserTest):
    pass


class DarkTest(Looks, Uses, BrowserTest):
    title = PRIVATE


class DarkDesktopTest(Looks, BrowserTest):
    """The windows keep their own colours where all else is dark."""
    environment = {"GTK_THEME": "Adwaita:dark"}


class LightDesktopTest(Looks, BrowserTest):
    """A private window stays dark where all else has strong contrasts on light."""
    environment = {"GTK_THEME": "Default-hc"}
    title = PRIVATE
