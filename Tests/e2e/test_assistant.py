"""The assistant's panel, with a model server that the test plays and no other network."""

import os

from harness import own_network

own_network.take()

from harness.assistant import BUTTON, PANEL, PROMPT, Assistant  # noqa: E402
from harness.case import PRIVATE, BrowserTest  # noqa: E402
from harness.models import MISSING, ModelServer, NAME  # noqa: E402
from harness.wait import until, until_equal  # noqa: E402

NO_SERVER = "Kesto couldn't answer that. There is no model server on this computer."


class AssistantTest(BrowserTest):
    def setUp(self):
        super().setUp()
        self.kesto = Assistant(self.windows, self.hands)

    def play_model(self):
        server = ModelServer()
        self.addCleanup(server.stop)
        return server

    def tale(self, path, words):
        """A page with a text, under its path as its title; gives its address."""
        return self.server.page(path, body=f"<p>{words}</p>")


class PanelTest(AssistantTest):
    def test_it_opens_and_closes_by_key_and_the_page_has_the_keyboard_then(self):
        page = self.server.script_page(
            "/page", "addEventListener('keydown', event => fetch('/report/' + event.key))")
        self.start_and_open(page)

        self.kesto.open()
        self.assertTrue(self.windows.find("push button", BUTTON).is_pressed)
        self.hands.go_on("ctrl+j")
        self.kesto.wait_until_closed()

        self.hands.go_on("x")
        self.server.wait_for_report("x")

    def test_it_opens_and_closes_by_pointer(self):
        self.start_and_open(self.server.page("/page"))

        self.click_on("push button", BUTTON)
        self.kesto.wait_until_open()
        self.click_on("push button", "Close Kesto")
        self.kesto.wait_until_closed()
        self.click_on("push button", BUTTON)
        self.kesto.wait_until_open()
        self.click_on("push button", BUTTON)
        self.kesto.wait_until_closed()

    def test_escape_in_its_field_closes_what_covers_pages_and_not_the_panel(self):
        self.start_and_open(self.server.page("/page"))
        self.app.action("find")
        self.windows.find("text", "Find in page")
        self.kesto.open()

        self.hands.go_on("Escape")

        until(lambda: not self.windows.nodes("text", "Find in page"), "the search bar to close")
        self.assertTrue(self.kesto.panels())

    def test_the_keyboard_goes_to_it_and_on_with_the_other_areas(self):
        self.start_and_open(self.server.page("/page"))
        self.kesto.open()

        self.hands.go_on("F6")
        self.notch.wait_until_open()
        self.hands.go_on("shift+F6")

        self.kesto.wait_until_open()

    def test_a_page_that_fills_the_screen_covers_it_and_it_comes_back(self):
        self.start_and_open(self.server.script_page(
            "/film", "onclick = () => document.documentElement.requestFullscreen()"))
        self.kesto.open()
        self.hands.type_on("half a quest")
        self.hands.click()
        self.kesto.wait_until_closed()

        self.hands.go_on("Escape")

        self.kesto.wait_for_text("half a quest")

    def test_it_fits_into_the_smallest_window(self):
        self.start_and_open(self.server.page("/page"))
        self.hands.shrink()
        self.kesto.open()
        self.kesto.write("/")
        self.kesto.find("push button", "New skill")

        panel = self.kesto.panels()[0].box
        frame = self.windows.find("frame", "Orvu").box
        self.assertEqual(panel[2], 360)
        self.assertLessEqual(panel[0] + panel[2], frame[2])
        self.assertLessEqual(panel[1] + panel[3], frame[3])

    def test_without_a_server_it_says_so_until_one_is_there(self):
        self.start_and_open(self.server.page("/page"))
        self.kesto.open()
        self.kesto.wait_for_words(MISSING)

        server = self.play_model()
        self.kesto.wait_for_no_words(MISSING)

        self.kesto.ask("Hello?")
        self.kesto.wait_for_words(server.reply)

    def test_a_page_that_changes_all_the_time_does_not_put_off_the_next_look(self):
        self.start_and_open(self.server.script_page(
            "/clock", "setInterval(() => document.title = Date.now(), 50)"))
        self.kesto.open()
        self.kesto.wait_for_words(MISSING)

        self.play_model()

        self.kesto.wait_for_no_words(MISSING)

    def test_closed_it_asks_nobody_anything(self):
        server = self.play_model()
        self.start_and_open(self.server.page("/page"))
        self.notch.go_to(self.server.page("/other"))
        self.wait_for_visit(self.server.url("/other"))

        self.assertEqual(server.paths(), [])


class QuestionTest(AssistantTest):
    def test_a_page_is_read_for_a_question_and_named_with_the_answer(self):
        server = self.play_model()
        server.reply = "Bees dance."
        self.start_and_open(self.tale("/bees", "Bees dance on the comb."))
        self.kesto.open()

        self.kesto.ask("How do bees talk?")

        self.kesto.wait_for_words("Bees dance.")
        self.assertEqual(self.kesto.texts()[-4:],
                         ["How do bees talk?", "Bees dance.", "READ", "bees"])
        asked = server.wait_for_question()
        self.assertIn("Bees dance on the comb.", asked)
        self.assertIn("My question: How do bees talk?", asked)
        self.kesto.wait_for_text("")
        self.assertEqual(self.kesto.nodes("image", "Kesto")[0].description(), NAME)

    def test_reopened_it_greets(self):
        self.play_model()
        self.start_and_open(self.tale("/bees", "Bees dance."))
        self.kesto.open()
        self.kesto.ask("Well?")
        self.kesto.wait_for_words("An answer.")

        self.hands.go_on("ctrl+j")
        self.kesto.wait_until_closed()
        self.kesto.open()

        until(lambda: any("I can read “bees”" in text for text in self.kesto.texts()),
              "the greeting", self.kesto.texts)
        self.assertNotIn("An answer.", self.kesto.texts())

    def test_the_greeting_leaves_a_page_s_own_words_as_they_are(self):
        title = "Speed up this Mac with ⌘T"
        self.start_and_open(self.server.page("/own", title))

        self.kesto.open()

        until(lambda: any(f"I can read “{title}”" in text and text.endswith("on this computer.")
                          for text in self.kesto.texts()), "the greeting", self.kesto.texts)

    def test_the_notch_hands_its_question_over_by_key(self):
        server = self.play_model()
        self.start_and_open(self.tale("/bees", "Bees dance."))
        self.notch.write("what do bees do")

        self.hands.go_on("ctrl+Return")

        self.kesto.wait_for_words("An answer.")
        self.kesto.wait_for_words("what do bees do")
        self.assertIn("My question: what do bees do", server.questions()[0])
        self.notch.wait_until_closed()

    def test_the_notch_hands_its_question_over_by_pointer(self):
        self.play_model()
        self.start_and_open(self.tale("/bees", "Bees dance."))
        self.notch.write("what do bees do")

        self.hands.click(at=self.windows.find_named("Ask Kesto “what do bees do”").middle)

        self.kesto.wait_for_words("An answer.")
        self.kesto.wait_for_words("what do bees do")

    def test_the_new_tab_page_hands_its_question_over(self):
        server = self.play_model()
        self.app.start()
        self.wait_for_focus("Search, type a site, or ask Kesto")
        self.assertFalse(self.windows.find("push button", "Ask Kesto").is_sensitive)
        self.hands.type("seven times thirteen")

        self.windows.press("push button", "Ask Kesto")

        self.kesto.wait_for_words("An answer.")
        self.assertEqual(server.questions(), ["seven times thirteen"])

    def test_what_the_model_says_is_text_and_nothing_else(self):
        server = self.play_model()
        server.reply = (f"<b>bold</b> <a href='{self.server.url('/lured')}'>here</a> &amp; "
                        f"![x]({self.server.url('/lured')}) [go]({self.server.url('/lured')})")
        self.start_and_open(self.tale("/bees", "Bees dance."))
        self.kesto.open()

        self.kesto.ask("Well?")

        self.kesto.wait_for_words(server.reply)
        self.hands.click(at=self.kesto.find("label", server.reply).middle)
        self.assertEqual(self.server.asked("/lured"), 0)
        self.assertEqual(len(self.windows.tabs()), 2)

    def main_thread(self):
        """Seconds of the processor that the program's main thread had so far."""
        with open(f"/proc/{self.app.pid}/task/{self.app.pid}/stat", encoding="ascii") as facts:
            user, system = facts.read().rsplit(")", 1)[1].split()[11:13]
        return (int(user) + int(system)) / os.sysconf("SC_CLK_TCK")

    def test_a_long_answer_does_not_hold_the_window_up(self):
        server = self.play_model()
        # About as long as an answer may be, which is told in words.
        server.reply = "\n".join(["Honeybees " * 20] * 195)
        self.start_and_open(self.tale("/bees", "Bees dance."))
        self.kesto.open()
        before = self.main_thread()

        self.kesto.ask("Well?")

        self.kesto.wait_for_words("READ")
        self.assertGreater(len(server.reply), 38_000)
        self.assertLess(self.main_thread() - before, 2.5)

    def test_the_answer_can_be_copied(self):
        server = self.play_model()
        server.reply = "Bees dance on the comb."
        self.start_and_open(self.tale("/bees", "Bees dance."))
        self.kesto.open()
        self.kesto.ask("Well?")
        self.kesto.wait_for_words(server.reply)

        self.hands.click(at=self.kesto.find("label", server.reply).middle)
        self.hands.go_on("ctrl+a", "ctrl+c")
        self.hands.click(at=self.kesto.find("text", PROMPT).middle)
        self.hands.go_on("ctrl+v")

        self.kesto.wait_for_text(server.reply)

    def test_a_server_that_is_killed_in_mid_answer_costs_one_sentence(self):
        server = self.play_model()
        server.hold()
        self.start_and_open(self.tale("/bees", "Bees dance."))
        self.kesto.open()
        self.kesto.ask("Well?")
        server.wait_for_question()
        self.kesto.find("status bar", "Thinking")

        server.break_off()

        until(lambda: any(text.startswith("Kesto couldn't answer that. ")
                          for text in self.kesto.texts()), "one sentence", self.kesto.texts)
        self.assertFalse(self.kesto.nodes("status bar", "Thinking"))
        self.kesto.ask("And now?")
        until(lambda: NO_SERVER in self.kesto.texts(), "what is missing", self.kesto.texts)

    def test_another_question_drops_the_first_at_the_server(self):
        server = self.play_model()
        gate = server.hold()
        self.start_and_open(self.tale("/bees", "Bees dance."))
        self.kesto.open()
        self.kesto.ask("First?")
        server.wait_for_question()

        self.kesto.ask("Second?")
        server.wait_for_question(2)
        until_equal(server.dropped, 1, "questions that were dropped")
        gate.set()

        self.kesto.wait_for_words("An answer.")
        self.assertIn("Second?", self.kesto.texts())

    def wait_for_windows_to_see(self, count):
        until_equal(lambda: len(self.hands.windows("Orvu")), count, "windows on the display")

    def test_a_window_may_close_while_it_thinks(self):
        server = self.play_model()
        gate = server.hold()
        self.start_and_open(self.tale("/bees", "Bees dance."))
        self.app.app_action("newWindow")
        self.wait_for_windows_to_see(2)
        self.kesto.open()
        self.kesto.ask("Well?")
        server.wait_for_question()

        self.app.action("performClose", window=2)
        self.wait_for_windows_to_see(1)
        gate.set()

        self.kesto.open()
        self.kesto.ask("And again?")
        self.kesto.wait_for_words("An answer.")
        self.app.check_runs()

    def test_a_page_that_hangs_goes_without_its_text(self):
        server = self.play_model()
        self.start_and_open(self.server.script_page(
            "/hangs", "addEventListener('keydown', () => { for (;;); })"))
        self.hands.press("x")
        self.kesto.open()

        self.kesto.ask("Well?")

        self.kesto.wait_for_words("An answer.")
        self.assertIn('"title":"hangs"', server.questions()[0])
        self.assertIn('"text":""', server.questions()[0])


class MentionTest(AssistantTest):
    def setUp(self):
        super().setUp()
        self.model = self.play_model()
        self.start_with_only(self.tale("/bees", "Bees dance."), self.tale("/rain", "It rains."),
                             self.tale("/bread", "Rye bread."))
        self.kesto.open()

    def pages(self):
        """The titles of the pages that were sent with the last question, in their order."""
        question = self.model.wait_for_question()
        return [part.split('"')[0] for part in question.split('"title":"')[1:]]

    def test_a_tab_is_brought_in_by_key_and_goes_with_one_question(self):
        self.kesto.write("@ra")
        self.kesto.wait_for_rows("rain 127.0.0.1")
        self.hands.go_on("Return")
        self.kesto.wait_for_text("")
        self.kesto.wait_for_rows("Remove rain")
        self.kesto.ask("Which is wet?")

        self.kesto.wait_for_words("An answer.")
        self.assertEqual(self.pages(), ["bees", "rain"])
        self.kesto.wait_for_rows()

        self.kesto.ask("And now?")
        self.model.wait_for_question(2)
        self.assertEqual(self.pages(), ["bees"])

    def test_the_rows_are_reached_with_the_arrows(self):
        self.kesto.write("look at @")
        self.kesto.wait_for_rows("rain 127.0.0.1", "bread 127.0.0.1")

        self.hands.go_on("Up")
        self.wait_for_focus("bread 127.0.0.1")
        self.hands.go_on("Up")
        self.wait_for_focus("rain 127.0.0.1")
        self.hands.go_on("Down", "Down")
        self.kesto.wait_until_open()
        self.hands.go_on("Up", "Return")

        self.kesto.wait_for_rows("Remove bread")
        self.kesto.wait_for_text("look at ")
        self.kesto.wait_until_open()

    def test_a_tab_is_brought_in_and_taken_out_by_pointer(self):
        self.kesto.write("@")
        self.click_on("push button", "rain 127.0.0.1")
        self.kesto.wait_for_rows("Remove rain")

        self.click_on("push button", "Remove rain")

        self.kesto.wait_for_rows()
        self.kesto.ask("Well?")
        self.kesto.wait_for_words("An answer.")
        self.assertEqual(self.pages(), ["bees"])

    def test_nothing_that_matches_is_said(self):
        self.kesto.write("@nothing")

        self.kesto.wait_for_words("No other open tabs match")

    def test_of_a_pair_both_pages_go_the_active_one_first(self):
        self.app.action("toggleSideBySide")
        self.hands.click(at=self.kesto.find("text", PROMPT).middle)

        self.kesto.ask("Compare")

        self.kesto.wait_for_words("An answer.")
        self.assertEqual(len(self.pages()), 2)
        self.assertEqual(self.pages()[0], self.windows.selected_tabs()[0])

    def test_a_tab_that_has_not_loaded_yet_is_read(self):
        self.app.quit()
        self.app.start()
        self.kesto.open()
        self.kesto.write("@127")  # it has no title yet
        self.hands.go_on("Return")
        self.kesto.wait_for_text("")

        self.kesto.ask("Which is wet?")

        self.kesto.wait_for_words("An answer.")
        self.assertIn("It rains.", self.model.questions()[-1])

    def test_a_tab_that_closes_drops_out(self):
        self.kesto.write("@ra")
        self.hands.go_on("Return")
        self.kesto.wait_for_rows("Remove rain")

        self.app.action("selectTab2")
        self.app.action("closeTab")

        self.kesto.wait_for_rows()


class SkillTest(AssistantTest):
    def setUp(self):
        super().setUp()
        self.model = self.play_model()
        self.start_and_open(self.tale("/bees", "Bees dance."))
        self.kesto.open()

    def make_skill(self, name, instruction):
        self.kesto.write("/")
        self.kesto.press("push button", "New skill")
        self.wait_for_focus("name")
        self.hands.type_on(name)
        self.hands.go_on("Tab")
        self.hands.type_on(instruction)
        until(lambda: self.kesto.find("push button", "Save Skill").is_sensitive, "a skill to save")
        self.hands.go_on("Tab", "Tab", "Return")
        self.kesto.wait_for_text("")
        self.kesto.wait_until_open()

    def test_the_first_that_matches_runs_with_return(self):
        self.kesto.write("/su")
        self.hands.go_on("Return")

        self.kesto.wait_for_words("/sum · Sum up the page in three short lines.")
        self.kesto.wait_for_words("An answer.")
        self.assertIn("My question: Sum up the page in three short lines.",
                      self.model.questions()[0])

    def test_the_greeting_runs_one_by_pointer(self):
        self.click_on("push button", "/sum Sum up the page in three short lines.")

        self.kesto.wait_for_words("/sum · Sum up the page in three short lines.")
        self.kesto.wait_for_words("An answer.")

    def test_what_matches_none_is_a_question(self):
        self.kesto.ask("/xy")

        self.kesto.wait_for_words("An answer.")
        self.assertIn("My question: /xy", self.model.questions()[0])

    def test_one_is_made_kept_run_and_deleted(self):
        self.make_skill("letter", "Draft a letter.")
        self.app.quit()
        self.app.start()
        self.kesto.open()
        self.kesto.write("/let")
        self.kesto.wait_for_rows("/letter Draft a letter.", "New skill")
        self.kesto.wait_for_words("yours")
        self.hands.go_on("Return")
        self.kesto.wait_for_words("/letter · Draft a letter.")

        self.kesto.write("/let")
        self.hands.go_on("Up", "Up")
        self.wait_for_focus("/letter Draft a letter.")
        self.hands.go_on("Menu")
        self.windows.press("menu item", "Delete Skill")

        until(lambda: "/letter Draft a letter." not in self.kesto.buttons(), "the skill to go",
              self.kesto.buttons)
        self.assertEqual(self.saved.document("kestoSkills"), [])

    def test_escape_leaves_the_form(self):
        self.kesto.write("/")
        self.kesto.press("push button", "New skill")
        self.wait_for_focus("name")

        self.hands.go_on("Escape")

        self.kesto.wait_until_open()
        until(lambda: "name" not in [node.name for node in self.kesto.nodes("text")],
              "the form to close")
        self.assertTrue(self.kesto.panels())

    def test_more_than_there_is_room_for_can_be_reached(self):
        for number in range(12):
            self.make_skill(f"own{number}", "Do it.")
        self.kesto.write("/")
        self.kesto.find("push button", "/own11 Do it.")

        panel = self.kesto.panels()[0].box
        self.assertLessEqual(panel[1] + panel[3], self.windows.find("frame", "Orvu").box[3])
        self.hands.go_on("Up", "Up")
        self.wait_for_focus("/own11 Do it.")


class SecrecyTest(AssistantTest):
    """What must not leave the window leaves it over no road."""

    SECRET, TITLE = "quixotic-walnut", "zephyr-title"

    def setUp(self):
        super().setUp()
        self.model = self.play_model()
        self.page = self.server.page("/secret-path", self.TITLE, f"<p>{self.SECRET}</p>")
        self.other = self.server.page("/secret-other", f"other {self.TITLE}",
                                      f"<p>{self.SECRET}</p>")

    def ask_over_all_roads(self, window, title):
        """Asks from the panel, by a skill, with a mention, of a pair and from the notch."""
        kesto = Assistant(self.windows, self.hands, title)
        notch = self.notch if title != PRIVATE else type(self.notch)(self.windows, self.hands,
                                                                     PRIVATE)
        kesto.open()
        kesto.ask("From the panel?")
        self.model.wait_for_question(1)
        kesto.write("/sum")
        self.hands.go_on("Return")
        self.model.wait_for_question(2)
        kesto.write("@ot")
        self.hands.go_on("Return")
        if title != PRIVATE:
            kesto.wait_for_text("")
            self.hands.type_on("and?")
            self.hands.go_on("Return")
        self.model.wait_for_question(3)
        self.app.action("toggleSideBySide", window=window)
        self.hands.click(at=kesto.fields()[0].middle, title=title)
        kesto.ask("Of the pair?")
        self.model.wait_for_question(4)
        notch.write("From the notch")
        self.hands.go_on("ctrl+Return")
        self.model.wait_for_question(5)

    def assert_nothing_left(self):
        received = self.model.received()
        for secret in (self.SECRET, self.TITLE, "secret-path", "secret-other", "127.0.0.1:" +
                       self.page.split(":")[2].split("/")[0]):
            self.assertEqual(received.count(secret.encode()), 0, secret)

    def test_pages_of_a_private_window_are_never_sent(self):
        self.app.start()
        self.open_privately(self.page, self.TITLE)
        self.app.action("newEmptyTab", window=2)
        self.type_address(self.other, PRIVATE)
        self.wait_for_tabs(self.TITLE, f"other {self.TITLE}", window=PRIVATE)

        self.ask_over_all_roads(2, PRIVATE)

        self.assert_nothing_left()
        self.assertIn(b"From the panel?", self.model.received())

    def test_with_reading_switched_off_no_page_is_sent(self):
        self.save_beforehand({"kestoReadsPages": 0})
        self.start_with_only(self.page, self.other)

        self.ask_over_all_roads(1, "Orvu")

        self.assert_nothing_left()
        self.assertIn(b"From the panel?", self.model.received())
        self.assertNotIn("READ", self.kesto.texts())

    def test_with_reading_switched_on_they_are(self):
        self.start_with_only(self.page, self.other)

        self.ask_over_all_roads(1, "Orvu")

        self.assertGreater(self.model.received().count(self.SECRET.encode()), 4)

    def test_a_question_tells_the_program_by_nothing(self):
        self.start_with_only(self.page)
        self.kesto.open()
        self.kesto.ask("Well?")
        self.model.wait_for_question()

        for word in (b"user-agent", b"cookie", b"accept-language", b"orvu/", b"referer"):
            self.assertNotIn(word, self.model.received().lower())


class SeveralWindowsTest(AssistantTest):
    def test_a_pages_panel_goes_with_the_profile_and_all_windows_share_one_assistant(self):
        server = self.play_model()
        self.start_and_open(self.tale("/bees", "Bees dance."))
        self.kesto.open()
        gate = server.hold()
        self.kesto.ask("Well?")
        server.wait_for_question()
        self.open_private_window()
        other = Assistant(self.windows, self.hands, PRIVATE)
        other.open()
        self.assertIn(PANEL, [node.name for node in other.panels()])

        other.ask("Instead?")
        server.wait_for_question(2)
        until_equal(server.dropped, 1, "questions that were dropped")
        gate.set()

        other.wait_for_words("An answer.")
