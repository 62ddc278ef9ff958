"""The assistant without any server and without any network: a model file on this computer, run by
the program's own engine."""

import json
import os
import pathlib
import signal

from harness import own_network

own_network.take()

from harness import engine, tiny_model  # noqa: E402
from harness.assistant import Assistant  # noqa: E402
from harness.case import PRIVATE, BrowserTest  # noqa: E402
from harness.models import MISSING, ModelServer  # noqa: E402
from harness.wait import until, until_equal  # noqa: E402

FAILED = "Kesto couldn't answer that. "
BROKE_OFF = FAILED + "The model stopped in the middle of its answer."
OLLAMA = "application/vnd.ollama.image.model"


class OwnModelTest(BrowserTest):
    def setUp(self):
        super().setUp()
        self.kesto = Assistant(self.windows, self.hands)
        self.models = self.home.data / "Orvu/models"
        self.known = self.home.cache / "Orvu/Models.json"

    def put_model(self, name="tiny.gguf", folder=None, **traits):
        file = (folder or self.models) / name
        file.parent.mkdir(parents=True, exist_ok=True)
        tiny_model.make(file, **traits)
        return file

    def begin(self):
        self.start_and_open(self.server.page("/garden", body="<p>" + "garden " * 100 + "</p>"))
        self.kesto.open()
        if list(self.models.glob("*")):
            until(self.known.exists, "all files to be known")

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

    def engines(self):
        """The processes that run models, those of bubblewrap left out."""
        found = []
        for stat in pathlib.Path("/proc").glob("[0-9]*/stat"):
            try:
                name = stat.read_text().split("(", 1)[1].rsplit(")", 1)[0]
                if name == engine.NAME and self.is_ours(int(stat.parent.name)):
                    found.append(int(stat.parent.name))
            except OSError:
                pass  # it has just ended
        return found

    def is_ours(self, pid):
        while pid > 1:
            if pid == self.app.pid:
                return True
            status = pathlib.Path(f"/proc/{pid}/status").read_text()
            pid = int(status.split("PPid:\t", 1)[1].split("\n", 1)[0])
        return False

    def wait_for_engine(self):
        """The process that answers, once it is shut in and at it."""
        def at_work():
            return [pid for pid in self.engines() if "Seccomp:\t2" in
                    pathlib.Path(f"/proc/{pid}/status").read_text()]
        return until(at_work, "a process that runs a model", pause=0.02)[0]

    def test_with_the_cable_out_a_question_is_answered_about_the_page(self):
        self.put_model()
        self.begin()

        answer = self.ask("What is it about?")

        self.assertFalse(answer.startswith(FAILED), answer)
        self.assertIn("garden", self.kesto.texts())  # among what was read
        self.assertEqual(self.kesto.nodes("image", "Kesto")[0].description(), "Orvu Tiny")
        self.assertFalse(self.ask("And then?").startswith(FAILED))

    def test_the_process_is_shut_in(self):
        self.put_model(mean_words=100_000)
        self.begin()
        self.kesto.ask("Well?")
        pid = self.wait_for_engine()

        status = pathlib.Path(f"/proc/{pid}/status").read_text()
        self.assertIn("NoNewPrivs:\t1", status)
        self.assertIn("Seccomp:\t2", status)
        for space in ("net", "mnt", "pid", "ipc"):
            self.assertNotEqual(os.readlink(f"/proc/{pid}/ns/{space}"),
                                os.readlink(f"/proc/{self.app.pid}/ns/{space}"), space)

    def test_a_model_that_comes_while_the_panel_is_open_is_found(self):
        self.begin()
        self.kesto.wait_for_words(MISSING)
        self.assertEqual(list(self.models.iterdir()), [])  # it is there to be filled

        self.put_model()

        self.kesto.wait_for_no_words(MISSING)
        self.assertFalse(self.ask("Well?").startswith(FAILED))

    def test_killed_in_the_middle_it_costs_one_sentence_and_the_next_question_works(self):
        file = self.put_model(mean_words=100_000)
        self.begin()
        self.kesto.ask("Well?")
        os.kill(self.wait_for_engine(), signal.SIGKILL)
        self.assertEqual(self.answer_to("Well?"), BROKE_OFF)

        tiny_model.make(file, 20)
        self.assertFalse(self.ask("And now?").startswith(FAILED))

    def test_idle_it_costs_nothing_and_with_the_browser_it_ends(self):
        self.put_model()
        self.begin()
        until_equal(self.engines, [], "the processes that run models")
        self.ask("Well?")
        self.assertEqual(len(self.engines()), 1)
        pid = self.engines()[0]
        before = self.processor_time(pid)
        self.ask("And?")
        self.assertEqual(self.engines(), [pid])
        self.assertGreaterEqual(self.processor_time(pid), before)

        self.app.kill()

        until(lambda: not pathlib.Path(f"/proc/{pid}").exists(), "the process to end")

    def processor_time(self, pid):
        stat = pathlib.Path(f"/proc/{pid}/stat").read_text().rsplit(")", 1)[1]
        return sum(map(int, stat.split()[11:13]))

    def test_a_question_that_nobody_wants_any_more_is_ended(self):
        self.put_model(mean_words=10_000_000)
        self.begin()
        self.app.app_action("newPrivateWindow")
        private = Assistant(self.windows, self.hands, PRIVATE)
        private.open()
        private.ask("Well?")
        pid = self.wait_for_engine()
        self.hands.press("ctrl+shift+w", title=PRIVATE)
        until(lambda: not private.panels(), "the window to go")

        def rests():
            if not pathlib.Path(f"/proc/{pid}").exists():
                return True
            before = self.processor_time(pid)
            return self.processor_time(pid) == before
        until(rests, "the model to rest", pause=0.3)

    def test_files_that_mean_ill_stand_beside_one_that_answers(self):
        self.put_model()
        (self.models / "a-nothing.gguf").write_bytes(b"")
        (self.models / "b-noise.gguf").write_bytes(os.urandom(1 << 16))
        whole = (self.models / "tiny.gguf").read_bytes()
        (self.models / "c-cut.gguf").write_bytes(whole[:len(whole) // 3])
        (self.models / "d-count.gguf").write_bytes(b"GGUF" + b"\x03\0\0\0" + b"\xFF" * 4096)
        os.mkfifo(self.models / "e-pipe.gguf")
        self.put_model("f-strange.gguf", architecture="otter")
        self.begin()

        self.assertFalse(self.ask("Well?").startswith(FAILED))
        # One of them has a whole head, so it is believed to be a model until it is read.
        known = {pathlib.Path(each["path"]).name: each["answers"]
                 for each in json.loads(self.known.read_text())}
        self.assertEqual(known.pop("tiny.gguf"), True)
        known.pop("c-cut.gguf")
        self.assertEqual(known, {"a-nothing.gguf": False, "b-noise.gguf": False,
                                 "d-count.gguf": False, "f-strange.gguf": False})

    def test_what_a_file_is_is_read_once(self):
        self.put_model()
        self.begin()
        self.ask("Well?")
        # Of when it was used nothing is said: a private window would leave that behind.
        until_equal(lambda: [(each["name"], each["turn"]) for each in
                             json.loads(self.known.read_text())], [("Orvu Tiny", 1)], "the list")
        written = self.known.stat().st_mtime_ns
        self.ask("And then?")
        self.assertEqual(self.known.stat().st_mtime_ns, written)

        self.known.write_text(self.known.read_text().replace("Orvu Tiny", "Remembered"))
        self.app.quit()
        self.app.start()
        self.kesto.open()

        until_equal(lambda: self.kesto.nodes("image", "Kesto")[0].description(), "Remembered",
                    "the model's name")

    def test_a_model_of_ollamas_store_is_found_by_its_name(self):
        store = self.home.folder / ".ollama/models"
        blob = "sha256-" + "a" * 64
        self.put_model(blob, folder=store / "blobs")
        manifest = store / "manifests/registry.ollama.ai/library/otter/1b"
        manifest.parent.mkdir(parents=True)
        manifest.write_text(json.dumps({"layers": [
            {"mediaType": OLLAMA, "digest": blob.replace("-", ":"), "size": 1}]}))
        self.begin()

        self.assertFalse(self.ask("Well?").startswith(FAILED))
        self.assertEqual(self.kesto.nodes("image", "Kesto")[0].description(), "otter:1b")

    def test_a_server_that_has_its_model_loaded_goes_first(self):
        self.put_model()
        server = ModelServer()
        self.addCleanup(server.stop)
        self.begin()

        self.kesto.ask("Well?")
        self.kesto.wait_for_words(server.reply)
        until_equal(self.engines, [], "the processes that run models")

    def test_a_server_that_would_have_to_load_its_model_goes_last(self):
        server = ModelServer()
        self.addCleanup(server.stop)
        server.loaded = []
        file = self.put_model()
        self.begin()
        self.assertNotIn(self.ask("Well?"), (server.reply, ""))
        self.assertFalse(self.kesto.texts()[-1].startswith(FAILED))

        file.unlink()
        self.hands.go_on("ctrl+j")
        self.kesto.wait_until_closed()
        self.kesto.open()
        self.kesto.ask("And now?")
        self.kesto.wait_for_words(server.reply)

    def test_a_server_that_goes_leaves_the_question_to_the_file(self):
        server = ModelServer()
        self.put_model()
        self.begin()
        server.stop()

        answer = self.ask("Well?")

        self.assertFalse(answer.startswith(FAILED), answer)
        self.assertNotEqual(answer, server.reply)
