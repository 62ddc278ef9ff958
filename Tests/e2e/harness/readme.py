"""The keys as the README lists them for people."""

import pathlib
import re

README = pathlib.Path(__file__).resolve().parents[3] / "README.md"
# What the display calls keys, and what a page's script does, where it isn't their label.
_ON_DISPLAY = {"[": "bracketleft", "]": "bracketright", "=": "equal", "-": "minus",
               ",": "comma", "Page Down": "Next", "Page Up": "Prior"}
_IN_PAGE = {"[": "BracketLeft", "]": "BracketRight", "=": "Equal", "-": "Minus",
            ",": "Comma", "Left": "ArrowLeft", "Right": "ArrowRight"}


class Key:
    """A key with those held down, such as "Ctrl+Shift+T"."""

    def __init__(self, label):
        self.label = label
        *self._held, self._last = label.split("+")

    def __repr__(self):
        return self.label

    @property
    def stroke(self):
        """As the hands press it."""
        last = self._last.lower() if len(self._last) == 1 else self._last
        return "+".join([*map(str.lower, self._held), _ON_DISPLAY.get(self._last, last)])

    @property
    def code(self):
        """What `KeyboardEvent.code` says of it."""
        if self._last.isdigit():
            return f"Digit{self._last}"
        plain = f"Key{self._last}" if len(self._last) == 1 else self._last.replace(" ", "")
        return _IN_PAGE.get(self._last, plain)


def commands():
    """The keys of each command, under what the list says that they do."""
    table = README.read_text(encoding="utf-8").split("\n## Keys\n\n")[1].split("\n\n")[0]
    rows = [re.fullmatch(r"\| (.+) \| (.+) \|", line) for line in table.splitlines()]
    return {row[2]: [Key(label) for label in row[1].replace(" … ", ", ").split(", ")]
            for row in rows if row}
