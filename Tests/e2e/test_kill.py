"""The program is killed at random moments and has lost nothing that was done."""

import os
import random
import signal
import sqlite3
import threading
from contextlib import closing

from gi.repository import GLib

from harness.case import BrowserTest
from harness.wait import until

ROUNDS = 50
SEED = 20240229
MANY_TABS = 3


class Model:
    """What the window must hold after each action."""

    def __init__(self, tabs, shelf):
        """Takes address, pin and group's name of each saved tab, as at the program's start."""
        self.tabs = [list(tab) for tab in tabs] or [[None, False, None]]
        self.shelf = list(shelf)
        self.closed = []
        plain = [index for index, tab in enumerate(self.tabs) if not tab[1]]
        self.active = plain[0] if plain else 0

    def copy(self):
        other = Model([], [])
        other.tabs = [list(tab) for tab in self.tabs]
        other.shelf, other.closed, other.active = list(self.shelf), list(self.closed), self.active
        return other

    def saved(self):
        tabs = [tuple(tab) for tab in self.tabs if tab[0]]
        return {"tabs": tabs, "shelf": list(self.shelf)}

    def after(self, action):
        """The state after an action; None if it would do nothing."""
        new = self.copy()
        return new if getattr(new, "_" + action)() is not False else None

    def appended(self, url):
        new = self.copy()
        new.tabs.append([url, False, None])
        new.active = len(new.tabs) - 1
        return new

    def _closeTab(self):
        if len(self.tabs) == 1:
            return False
        url = self.tabs.pop(self.active)[0]
        if url:
            self.closed.append(url)
        self.active = min(self.active, len(self.tabs) - 1)
        return True

    def _reopenClosed(self):
        if not self.closed:
            return False
        self.tabs.append([self.closed.pop(), False, None])
        self.active = len(self.tabs) - 1
        return True

    def _park(self):
        url = self.tabs[self.active][0]
        if not url:
            return False
        self.shelf.insert(0, url)
        return self._closeTab()

    def _unpark(self):
        if not self.shelf:
            return False
        self.tabs.append([self.shelf.pop(0), False, None])
        self.active = len(self.tabs) - 1
        return True

    def _togglePin(self):
        front = self.tabs[self.active]
        front[1] = not front[1]
        self.tabs.sort(key=lambda tab: not tab[1])
        self.active = next(i for i, tab in enumerate(self.tabs) if tab is front)
        return True

    def _toggleGroup(self):
        front = self.tabs[self.active]
        if not front[0]:
            return False
        if front[2]:
            front[2] = None
        else:
            front[2] = front[0].split("//")[1].split(":")[0]
            front[1] = False
        return True


ACTIONS = ["closeTab", "closeTab", "reopenClosed", "park", "park", "unpark", "togglePin",
           "toggleGroup"]


class KillTest(BrowserTest):
    def saved_state(self):
        """The saved tabs and shelf in the model's words. Fails on anything unreadable."""
        groups = {each["id"]: each["name"] for each in self.saved.document("browserGroups") or []}
        tabs = [(tab["url"], tab["pinned"], groups.get(tab.get("group")))
                for tab in self.saved.document("browserSession") or []]
        return {"tabs": tabs, "shelf": self.saved.shelf()}

    def start_and_check(self, url, number):
        """Starts with one more page, and checks that all saved ones come back; gives the model."""
        before = self.saved_state()
        model = Model(before["tabs"], before["shelf"]).appended(url)
        visits = self.saved.visits()
        self.server.forget()

        self.app.start(url)

        until(lambda: self.saved_state() == model.saved(), f"round {number}: {model.saved()}",
              self.saved_state)
        for tab_url, _, _ in model.saved()["tabs"]:
            self.server.wait_for("/" + tab_url.rsplit("/", 1)[-1])
        self.assertEqual(self.saved.visits()[:len(visits)], visits)
        return model

    def act_until_killed(self, model, dice):
        """Runs random actions until the program is gone; gives the states before and after the
        action that was the last."""
        while True:
            action = dice.choice(ACTIONS)
            new = model.after(action)
            if new is None or len(new.tabs) > max(MANY_TABS, len(model.tabs)):
                continue
            try:
                self.app.action(action)
            except GLib.Error:
                return model, new
            self.assertEqual(self.saved_state(), new.saved(), f"after {action}")
            model = new

    def check_has_lost_nothing(self, before, after, visits):
        # The last action is there as a whole or not at all.
        self.assertIn(self.saved_state(), [before.saved(), after.saved()])
        self.assertEqual(self.saved.visits()[:len(visits)], visits)
        with closing(sqlite3.connect(f"file:{self.saved.file}?mode=ro", uri=True)) as database:
            self.assertEqual(database.execute("PRAGMA integrity_check").fetchall(), [("ok",)])

    def test_nothing_done_is_lost_when_the_program_is_killed(self):
        dice = random.Random(SEED)
        urls = []
        for number in range(ROUNDS):
            path = f"/p{number}"
            self.server.page(path)
            urls.append(self.server.url(path, f"h{number}.localhost"))

        for number, url in enumerate(urls):
            with self.subTest(round=number):
                model = self.start_and_check(url, number)
                visits = self.saved.visits()
                killer = threading.Timer(dice.uniform(0.0, 0.3), os.kill,
                                         (self.app.pid, signal.SIGKILL))
                killer.start()
                before, after = self.act_until_killed(model, dice)
                killer.join()
                self.app.process.wait()
                self.check_has_lost_nothing(before, after, visits)
