"""The program that runs a model, alone: its walls, its answers, and files that mean it ill."""

import pathlib
import random
import struct
import tempfile
import time
import unittest

from harness import tiny_model
from harness.engine import (ASK, BROKE_OFF, CANCEL, CONTEXT, DESCRIBE, DESCRIPTION, FAILURE, PROCESSOR,
                            READY, REPLY, TOO_LONG, UNLOADABLE, Engine, description, failure,
                            libraries)
from harness.wait import until

ATTEMPTS = 16
LONG = "garden " * 1500


class EngineTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="orvu-model-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def model(self, **traits):
        file = self.folder / "model.gguf"
        tiny_model.make(file, **traits)
        return file

    def start(self, file, *arguments, **traits):
        engine = Engine(file, *arguments, **traits)
        self.addCleanup(engine.close)
        return engine

    def ready(self, file, *arguments):
        engine = self.start(file, *arguments)
        self.assertEqual(engine.hear(), (READY, 0, b""))
        return engine

    def described(self, file):
        """What a file is; None if that ended the process."""
        engine = self.ready(file)
        engine.tell(DESCRIBE)
        answer = engine.hear()
        engine.close()
        if answer is None:
            return None
        self.assertEqual(answer[0], DESCRIPTION, answer)
        return description(answer[2])

    def is_at_work(self, engine):
        """Whether it has used the processor since the last look."""
        stat = pathlib.Path(f"/proc/{engine.process.pid}/stat").read_text().rsplit(")", 1)[1]
        used = sum(map(int, stat.split()[11:13]))
        before, self.used = getattr(self, "used", used), used
        return used > before

    def wait_until_at_work(self, engine):
        until(lambda: self.is_at_work(engine), "the model to be at it", pause=0.02)


class WallsTest(EngineTest):
    def test_from_within_nothing_outside_can_be_reached(self):
        report = self.start(self.model(), "--probe").rest().splitlines()

        attempts = [line for line in report if line.endswith((": refused", ": possible"))]
        self.assertEqual(len(attempts), ATTEMPTS, report)
        self.assertEqual([line for line in attempts if not line.endswith(": refused")], [])
        for attempt in ("reach this machine", "internet socket", "local socket", "read a file",
                        "read a folder", "start a process", "be read by others"):
            self.assertIn(f"{attempt}: refused", attempts)
        self.assertIn("environment: empty", report)
        self.assertIn("descriptors: 4", report)  # the socket twice, nothing, and the model

    def test_others_can_not_look_into_it_and_it_is_kind_to_them(self):
        engine = self.ready(self.model())
        status = pathlib.Path(f"/proc/{engine.process.pid}/status").read_text()
        self.assertIn("NoNewPrivs:\t1", status)
        self.assertIn("Seccomp:\t2", status)
        stat = pathlib.Path(f"/proc/{engine.process.pid}/stat").read_text().rsplit(")", 1)[1]
        self.assertEqual(int(stat.split()[16]), 10)  # how nice it is
        limits = pathlib.Path(f"/proc/{engine.process.pid}/limits").read_text()
        for limit in ("Max file size             0 ", "Max core file size        0 "):
            self.assertIn(limit, limits)

    def test_without_a_file_it_does_not_begin(self):
        engine = self.start(None)
        self.assertIsNone(engine.hear())

    def test_it_ends_with_who_asked(self):
        engine = self.ready(self.model(mean_words=100_000))
        engine.tell(ASK, prompt="Well?")
        self.wait_until_at_work(engine)
        engine.socket.close()
        until(lambda: engine.process.poll() is not None, "the process to end")

    def test_it_ends_when_nobody_asks(self):
        engine = self.ready(self.model(), "--patience", "1")
        engine.tell(ASK, prompt="Well?")
        self.assertEqual(engine.hear()[0], REPLY)
        self.assertIsNone(engine.hear())
        self.assertEqual(engine.process.wait(), 0)

    def test_what_is_no_request_ends_it(self):
        for bytes_ in (b"GET / HTTP/1.1\r\nHost: x\r\n\r\n", bytes(20), b"\xFF" * 64,
                       struct.pack("<5I", 0x4F724D71, 1, ASK, 9, 8),
                       struct.pack("<5I", 0x4F724D71, 1, ASK, 0, 0xFFFFFFFF)):
            engine = self.ready(self.model())
            engine.socket.sendall(bytes_)
            self.assertIsNone(engine.hear(), bytes_)


class AnswersTest(EngineTest):
    def test_a_model_is_described(self):
        told = self.described(self.model(context=4096))
        self.assertEqual(told, {"answers": True, "name": "Orvu Tiny", "context": 4096,
                                "memory": 256})

    def test_one_question_after_the_other_is_answered(self):
        engine = self.ready(self.model())
        for number in range(2, 7):
            engine.tell(ASK, number, "Be brief.", f"What is page {number}?")
            kind, told, content = engine.hear()
            self.assertEqual((kind, told), (REPLY, number), content)
            self.assertTrue(content.decode().strip())
            self.assertNotIn(b"<|", content)

    def test_a_template_of_any_make_is_applied_and_thinks_no_more_than_it_must(self):
        # Only what runs templates knows loops with a counter and the switch.
        template = ("{%- for m in messages if m.content|length > 0 -%}[{{ loop.index }}|"
                    "{{ m.role|upper }}]{{ m.content | trim }}{%- endfor -%}"
                    "{%- if add_generation_prompt -%}[ANSWER]"
                    "{%- if enable_thinking is not defined or enable_thinking -%}<think>{%- endif -%}"
                    "{%- endif -%}")
        engine = self.ready(self.model(template=template, mean_words=10))
        engine.tell(ASK, 1, "Be brief.", "Well?")
        kind, _, content = engine.hear()
        self.assertEqual(kind, REPLY, content)

    def test_a_template_that_is_none_makes_no_chat_model(self):
        for template in ("{% for %}", "{{ undefined_function() }}", "{% raw %}"):
            told = self.described(self.model(template=template))
            self.assertTrue(told is None or not told["answers"], template)

    def test_a_template_without_end_ends_with_who_asked(self):
        template = "{% for a in range(9999999) %}{% for b in range(9999999) %}{% endfor %}{% endfor %}"
        engine = self.ready(self.model(template=template))
        engine.tell(DESCRIBE)
        self.wait_until_at_work(engine)
        engine.socket.close()
        until(lambda: engine.process.poll() is not None, "the process to end")

    def test_a_reply_without_end_is_a_failure(self):
        engine = self.ready(self.model(mean_words=10_000_000))
        engine.tell(ASK, prompt="Well?")
        kind, _, content = engine.hear(deadline=120)
        self.assertEqual((kind, failure(content)), (FAILURE, TOO_LONG))
        engine.tell(ASK, 2, prompt="And now?")
        self.assertEqual(engine.hear(deadline=120)[1], 2)

    def test_a_question_longer_than_the_context_is_a_failure(self):
        engine = self.ready(self.model(context=512))
        engine.tell(ASK, prompt=LONG)
        kind, _, content = engine.hear()
        self.assertEqual((kind, failure(content)), (FAILURE, CONTEXT))

    def test_told_to_stop_it_stops_at_once_and_answers_the_next_question(self):
        engine = self.ready(self.model(mean_words=10_000_000))
        for number in (1, 2, 3):
            engine.tell(ASK, number, prompt=LONG)
            self.wait_until_at_work(engine)
            begin = time.monotonic()
            engine.tell(CANCEL, number)
            kind, told, content = engine.hear()
            self.assertLess(time.monotonic() - begin, 1)
            self.assertEqual((kind, told, failure(content)), (FAILURE, number, BROKE_OFF))

    def test_a_second_question_before_the_answer_ends_it(self):
        engine = self.ready(self.model(mean_words=10_000_000))
        engine.tell(ASK, 1, prompt=LONG)
        engine.tell(ASK, 2, prompt="Well?")
        self.assertIsNone(engine.hear())


@unittest.skipUnless(libraries().exists(), "the engine is the system's own")
class ProcessorTest(EngineTest):
    def only(self, *names):
        """The engine's libraries, of those for kinds of processors only these."""
        folder = self.folder / "libraries"
        folder.mkdir()
        for file in libraries().glob("*.so"):
            if not file.name.startswith("libggml-cpu-") or file.name in names:
                (folder / file.name).symlink_to(file)
        return folder

    def test_an_old_processor_gets_a_slower_engine(self):
        engine = self.start(self.model(), libraries=self.only("libggml-cpu-x64.so"))
        self.assertEqual(engine.hear(), (READY, 0, b""))
        engine.tell(ASK, prompt="Well?")
        self.assertEqual(engine.hear()[0], REPLY)

    def test_where_there_is_none_for_the_processor_it_says_so(self):
        engine = self.start(self.model(), libraries=self.only())
        kind, number, content = engine.hear()
        self.assertEqual((kind, number, failure(content)), (FAILURE, 0, PROCESSOR))
        self.assertIsNone(engine.hear())


class HostileFilesTest(EngineTest):
    def check(self, content):
        """A file ends its own process at most, and never stands as a chat model by accident."""
        file = self.folder / "hostile.gguf"
        file.write_bytes(content)
        return self.described(file)

    def test_what_is_no_model_is_none(self):
        for content in (b"", b"GGUF", b"GGUF" + bytes(100), bytes(4096), b"\x7fELF" + bytes(5000),
                        b"GGUF" + struct.pack("<IQQ", 3, 1_000_000, 5) + bytes(5000),
                        b"GGUF" + struct.pack("<IQQ", 3, 2**63, 2**63) + bytes(5000)):
            self.assertEqual(self.check(content)["answers"], False, content[:40])

    def test_an_architecture_that_the_engine_does_not_know_is_no_chat_model(self):
        self.assertFalse(self.described(self.model(architecture="otter"))["answers"])

    def test_cut_anywhere_a_model_is_none_and_its_weights_are_never_believed(self):
        whole = self.model().read_bytes()
        for share in (0.01, 0.02, 0.05, 0.1, 0.5, 0.9, 0.99):
            cut = self.folder / "cut.gguf"
            cut.write_bytes(whole[:int(len(whole) * share)])
            engine = self.ready(cut)
            engine.tell(ASK, prompt="Well?")
            answer = engine.hear()
            if answer is not None:
                self.assertEqual((answer[0], failure(answer[2])), (FAILURE, UNLOADABLE), share)
            engine.close()

    def test_random_changes_of_the_head_have_a_clear_outcome(self):
        whole = self.model().read_bytes()
        head = whole.index(b"blk.1.ffn_down.weight") + 100
        numbers = random.Random(20261123)
        outcomes = set()
        for _ in range(60):
            content = bytearray(whole)
            for _ in range(numbers.choice((1, 3, 8))):
                content[numbers.randrange(head)] = numbers.randrange(256)
            told = self.check(bytes(content))
            outcomes.add(told and told["answers"])
        self.assertTrue(outcomes <= {None, True, False})
        self.assertIn(True, outcomes)
        self.assertIn(False, outcomes)

    def test_random_weights_have_a_clear_outcome(self):
        whole = bytearray(self.model(mean_words=5).read_bytes())
        numbers = random.Random(7)
        for _ in range(len(whole) // 16):
            whole[numbers.randrange(len(whole) // 2, len(whole))] = numbers.randrange(256)
        file = self.folder / "noise.gguf"
        file.write_bytes(whole)
        engine = self.ready(file)
        engine.tell(ASK, prompt="Well?")
        answer = engine.hear(deadline=120)
        self.assertTrue(answer is None or answer[0] in (REPLY, FAILURE), answer)


if __name__ == "__main__":
    unittest.main()
