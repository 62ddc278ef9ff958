"""Pictures of the assistant in each of its states. A person looks at them."""

from harness import own_network

own_network.take()

from harness.assistant import Assistant  # noqa: E402
from harness.case import PRIVATE  # noqa: E402
from harness.models import ModelServer  # noqa: E402
from harness.pictures import PictureTest  # noqa: E402
from harness.wait import until  # noqa: E402

ANSWER = ("Bees tell one another where the flowers are by dancing. The angle of the dance against "
          "gravity is the angle of flight against the sun, and the longer a forager shakes, the "
          "further the way.\n\nThe forecast says nothing about bees.")


class AssistantPicturesTest(PictureTest):
    def setUp(self):
        super().setUp()
        self.kesto = Assistant(self.windows, self.hands)

    def play_model(self):
        server = ModelServer()
        server.reply = ANSWER
        self.addCleanup(server.stop)
        return server

    def test_button(self):
        self.start_with("bees")
        self.shoot("assistant-button")
        self.open_private_window()
        self.shoot("assistant-button-private", title=PRIVATE)

    def test_greeting_without_a_model(self):
        self.start_with("bees")
        self.kesto.open()
        until(lambda: any("Ollama" in text for text in self.kesto.texts()), "what is missing",
              self.kesto.texts)
        self.shoot("assistant-missing")

    def test_conversation(self):
        server = self.play_model()
        self.start_with("bees", "weather", "docs")
        self.kesto.open()
        self.shoot("assistant-greeting")
        gate = server.hold()
        self.kesto.ask("How do bees find the way?")
        self.kesto.wait_for_words("How do bees find the way?")
        server.wait_for_question()
        self.shoot("assistant-thinking")
        gate.set()
        self.kesto.wait_for_words("READ")
        self.shoot("assistant-answer")
        self.hands.resize(900, 560)
        self.shoot("assistant-answer-900x560")
        self.hands.resize(1280, 800)
        server.stop()
        self.kesto.ask("And now?")
        until(lambda: any(text.startswith("Kesto couldn't") or "Ollama" in text
                          for text in self.kesto.texts()), "a failure", self.kesto.texts)
        self.shoot("assistant-failure")

    def test_menus(self):
        self.play_model()
        self.start_with("bees", "weather", "docs", "forum")
        self.kesto.open()
        self.kesto.write("/")
        self.shoot("assistant-skills")
        self.kesto.press("push button", "New skill")
        self.wait_for_focus("name")
        self.shoot("assistant-skill-form")
        self.hands.type_on("letter")
        self.hands.go_on("Tab")
        self.hands.type_on("Draft a short, friendly reply in the language of the page.")
        self.shoot("assistant-skill-form-filled")
        self.kesto.press("push button", "Save Skill")
        self.kesto.wait_for_text("")
        self.wait_for_focus("Ask, @ a tab, or / for skills")
        self.kesto.write("/l")
        self.shoot("assistant-skills-own")
        self.hands.go_on("ctrl+a", "BackSpace")
        self.kesto.write("@")
        self.shoot("assistant-mentions")
        self.hands.go_on("Return")
        self.kesto.wait_for_text("")
        self.kesto.write("@")
        self.hands.go_on("Return")
        self.kesto.wait_for_text("")
        self.kesto.write("Which of them is about food?")
        self.shoot("assistant-mentioned")
        self.hands.go_on("ctrl+a", "BackSpace")
        self.kesto.write("@nothing like it")
        self.shoot("assistant-mentions-none")
        self.hands.resize(900, 560)
        self.hands.go_on("ctrl+a", "BackSpace")
        self.kesto.write("/")
        self.shoot("assistant-skills-900x560")

    def test_private(self):
        server = self.play_model()
        server.reply = "Ninety-one."
        self.start_with("bees")
        self.open_private_window()
        kesto = Assistant(self.windows, self.hands, PRIVATE)
        kesto.open()
        self.shoot("assistant-private", title=PRIVATE)
        kesto.ask("What is seven times thirteen?")
        kesto.wait_for_words("Ninety-one.")
        self.shoot("assistant-private-answer", title=PRIVATE)

    def test_right_to_left_and_long_words(self):
        server = self.play_model()
        server.reply = "النحل يرقص ليخبر عن مكان الزهور. " + "Wort" * 40
        self.start_with("bees")
        self.kesto.open()
        self.hands.type_on("W" * 60)
        self.hands.go_on("Return")
        self.kesto.wait_for_words("READ")
        self.shoot("assistant-right-to-left")

    def test_new_tab_page(self):
        self.play_model()
        self.start_with("bees")
        self.app.action("newEmptyTab")
        self.windows.find("push button", "Ask Kesto")
        self.shoot("assistant-new-tab")
