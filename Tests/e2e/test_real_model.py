"""The assistant with a real model server behind it: its engine, its tokenizer, its chat template.
What its model says means nothing, so what is held is that it is shown, and what it was asked with."""

from harness import own_network

own_network.take()

from harness import results  # noqa: E402
from harness.assistant import Assistant  # noqa: E402
from harness.case import BrowserTest  # noqa: E402
from harness.real_model import RealModelServer  # noqa: E402
from harness.results import SEARCH  # noqa: E402
from harness.wait import until  # noqa: E402

DONE = "From 4 results · on this computer"
FAILED = "Kesto couldn't answer that. "
LEAST = 500  # tokens by which a question about that page is longer


class RealModelTest(BrowserTest):
    trusts_test_authority = True

    def setUp(self):
        super().setUp()
        self.kesto = Assistant(self.windows, self.hands)

    def run_model(self, **traits):
        server = RealModelServer(**traits)
        self.addCleanup(server.stop)
        return server

    def answer_to(self, question):
        """What stands below a question, once there is something."""
        def below():
            texts = self.kesto.texts()
            if question not in texts:
                return ""
            after = texts[texts.index(question) + 1:]
            return after[0] if after and after[0] not in ("Thinking", "") else ""
        return until(below, "an answer", self.kesto.texts, deadline=60)

    def ask(self, question):
        self.kesto.ask(question)
        return self.answer_to(question)

    def long_page(self, path):
        return self.server.page(path, body=("<p>" + "garden " * 100 + "</p>") * 9)

    def test_it_answers_about_the_page_whose_text_goes_along(self):
        server = self.run_model()
        self.start_and_open(self.server.page("/empty"))
        self.kesto.open()
        self.assertFalse(self.ask("What is it about?").startswith(FAILED))
        without = server.prompt_tokens()

        self.open(self.long_page("/garden"))
        self.app.action("selectTab9")
        self.hands.go_on("ctrl+j")
        self.kesto.wait_until_closed()
        self.kesto.open()
        answer = self.ask("What is it about?")

        self.assertFalse(answer.startswith(FAILED), answer)
        self.assertIn("garden", self.kesto.texts())  # among what was read
        until(lambda: server.prompt_tokens() - without > LEAST, "the text of the page at the model",
              lambda: server.prompt_tokens() - without)
        self.assertTrue(self.kesto.nodes("image", "Kesto")[0].description())

    def test_a_skill_runs_and_a_second_question_goes_on(self):
        self.run_model()
        self.start_and_open(self.long_page("/garden"))
        self.kesto.open()
        self.kesto.write("/sum")
        self.hands.go_on("Return")
        answer = self.answer_to("/sum · Sum up the page in three short lines.")
        self.assertFalse(answer.startswith(FAILED), answer)

        answer = self.ask("And then?")

        self.assertFalse(answer.startswith(FAILED), answer)

    def test_an_answer_stands_beside_results(self):
        self.run_model()
        found = results.knives()
        results.serve_results(self.proxy, found)
        shown = results.Results(self.windows)
        self.start_and_open(SEARCH)
        shown.wait_for_card()

        until(lambda: DONE in shown.texts(), "the end of the answer", shown.texts, deadline=60)
        texts = shown.texts()
        self.assertGreater(len(texts[texts.index(DONE) + 2]), 0, texts)

    def test_killed_while_it_answers_it_costs_one_sentence(self):
        server = self.run_model(mean_words=100_000)
        self.start_and_open(self.long_page("/garden"))
        self.kesto.open()
        self.kesto.ask("Well?")
        until(server.is_answering, "the model to be at it", pause=0.01)
        server.kill()

        self.assertTrue(self.answer_to("Well?").startswith(FAILED))
        self.assertFalse(self.kesto.nodes("status bar", "Thinking"))
