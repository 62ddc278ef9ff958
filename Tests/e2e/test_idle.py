"""A window that nobody sees wakes up for nothing."""

import time

from harness import keys
from harness.case import BrowserTest
from harness.wait import until

LOOKED_AT = 3.0  # seconds; what is measured is an amount for a time, not a condition
ALLOWED = 5  # turns of the main thread that others may cause meanwhile: the display, the bus


class IdleTest(BrowserTest):
    def turns(self):
        """How often the program's main thread went to sleep so far."""
        with open(f"/proc/{self.app.pid}/task/{self.app.pid}/status", encoding="ascii") as status:
            return sum(int(line.split()[1]) for line in status if "ctxt_switches" in line)

    def wait_for_rest(self):
        def rests():
            before = self.turns()
            time.sleep(0.5)
            return self.turns() == before
        until(rests, "a program that rests", self.turns)

    def check_rests(self, what):
        self.wait_for_rest()
        before = self.turns()
        time.sleep(LOOKED_AT)
        self.assertLessEqual(self.turns() - before, ALLOWED, what)

    def test_page_at_rest_wakes_nobody(self):
        self.start_and_open(self.server.page("/still"))

        self.check_rests("turns with a still page in a window that is seen")

    def test_twenty_pages_at_rest_wake_nobody_and_ask_for_nothing(self):
        urls = self.server.pages(*[f"/still{number}" for number in range(20)])
        self.app.start(*urls)
        self.server.wait_for(*[f"/still{number}" for number in range(20)])
        self.wait_for_tabs("New tab", *[f"still{number}" for number in range(20)])
        self.wait_for_rest()
        asked = len(self.server.asked_paths())

        self.check_rests("turns with twenty still pages")

        self.assertEqual(len(self.server.asked_paths()), asked)

    def test_minimised_window_stops_its_face(self):
        self.app.start()
        before = self.turns()
        until(lambda: self.turns() > before + 20, "a face that moves", self.turns)

        keys.minimise(self.hands.window())

        self.check_rests("turns with a face in a minimised window")
