"""A real server of language models, with a model that was made for the test."""

import http.client
import json
import os
import pathlib
import tempfile

from . import process, tiny_model
from .wait import until

PORT = 8080  # where such a server is looked for


def program():
    """The server that the build made."""
    return os.environ["ORVU_TEST_MODEL_SERVER"]


class RealModelServer:
    """llama.cpp's own server on loopback. Its model says words that hang on the question and mean
    nothing."""

    def __init__(self, mean_words=30):
        self._folder = tempfile.TemporaryDirectory(prefix="orvu-model-")
        file = pathlib.Path(self._folder.name) / "tiny.gguf"
        tiny_model.make(file, mean_words)
        self.process = process.spawn(
            [program(), "-m", str(file), "--host", "127.0.0.1", "--port", str(PORT), "-t", "1",
             "-c", "8192", "-np", "1", "--offline", "--no-ui", "--metrics"], **process.QUIET)
        until(self._is_ready, "the model server to be ready", pause=0.1, deadline=60)

    def stop(self):
        process.stop(self.process)
        self._folder.cleanup()

    def kill(self):
        self.process.kill()
        self.process.wait()

    def _get(self, path):
        connection = http.client.HTTPConnection("127.0.0.1", PORT, timeout=20)
        try:
            connection.request("GET", path)
            answer = connection.getresponse()
            return answer.status, answer.read().decode()
        finally:
            connection.close()

    def _is_ready(self):
        if self.process.poll() is not None:
            raise AssertionError(f"the model server ended with {self.process.returncode}")
        try:
            return self._get("/health")[0] == 200
        except OSError:
            return False

    def prompt_tokens(self):
        """How many tokens it was asked with so far."""
        lines = [line.split() for line in self._get("/metrics")[1].splitlines()
                 if line.startswith("llamacpp:prompt_tokens_total ")]
        return int(float(lines[0][1]))

    def is_answering(self):
        return any(slot["is_processing"] for slot in json.loads(self._get("/slots")[1]))
