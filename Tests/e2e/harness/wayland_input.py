"""A keyboard and a pointer for a Wayland compositor, as devices that it takes for real ones."""

import os
import socket
import struct
import time

from .keymap import Keymap

_WORD = 4
_DISPLAY, _REGISTRY = 1, 2
_PRESSED = 1
_XKB_TEXT = 1
# The kernel's numbers of the buttons that X11 counts from 1.
BUTTONS = {1: 0x110, 2: 0x112, 3: 0x111, 8: 0x113, 9: 0x114}
# What X11 takes for buttons of the wheel: upwards and downwards.
WHEEL = {4: -1, 5: 1}
_WHEEL_STEP = 15
_FIXED = 256


class _Wire:
    """A connection to the compositor that speaks the few words that the devices need."""

    def __init__(self, path):
        self._socket = socket.socket(socket.AF_UNIX)
        self._socket.connect(str(path))
        self._last = _REGISTRY
        self._globals = {}
        self._unread = b""
        self.send(_DISPLAY, 1, "I", _REGISTRY)
        self.wait()

    def close(self):
        self._socket.close()

    def new(self):
        """The number of one more object, to be used before the next one is asked for."""
        self._last += 1
        return self._last

    def send(self, target, what, signature="", *arguments, descriptors=()):
        """Sends a request of whole numbers: "I" from 0, "i" of either sign."""
        body = struct.pack("=" + signature, *arguments)
        head = struct.pack("=II", target, (2 * _WORD + len(body)) << 16 | what)
        socket.send_fds(self._socket, [head + body], list(descriptors))

    def bind(self, interface):
        """What the compositor offers under that name."""
        if interface not in self._globals:
            raise AssertionError(f"the compositor has no {interface}")
        name = interface.encode() + b"\0"
        size = len(name)
        number = self.new()
        self.send(_REGISTRY, 0, f"II{size + -size % _WORD}sII", self._globals[interface], size,
                  name, 1, number)
        return number

    def make(self, manager, seat):
        """A device of a seat."""
        maker, device = self.bind(manager), self.new()
        self.send(maker, 0, "II", seat, device)
        return device

    def wait(self):
        """Waits until the compositor has done all that was sent."""
        mark = self.new()
        self.send(_DISPLAY, 0, "I", mark)
        self.answer_of(mark)

    def answer_of(self, number):
        """Waits for an event of an object; gives its content."""
        while True:
            source, body = self._read()
            if source == number:
                return body

    def _read(self):
        """Takes one event; gives the number of the object that it came from, and its content."""
        source, size = struct.unpack("=II", self._take(2 * _WORD))
        what = size & 0xFFFF
        body = self._take((size >> 16) - 2 * _WORD)
        if (source, what) == (_DISPLAY, 0):
            raise AssertionError(f"the compositor refuses: {body!r}")
        if (source, what) == (_REGISTRY, 0):
            self._globals[_text(body[_WORD:])] = struct.unpack_from("=I", body)[0]
        return source, body

    def _take(self, count):
        while len(self._unread) < count:
            more = self._socket.recv(4096)
            if not more:
                raise AssertionError("the compositor went away")
            self._unread += more
        taken, self._unread = self._unread[:count], self._unread[count:]
        return taken


def _text(content):
    """The text at the beginning of what an event says."""
    length = struct.unpack_from("=I", content)[0]
    return content[_WORD:_WORD + length - 1].decode()


def _now():
    return int(time.monotonic() * 1000) & 0xFFFFFFFF


class Keyboard:
    """Sends what a real keyboard does: keys by their place, Shift and Control among them, and a
    whole keymap that says what they mean."""

    def __init__(self, wire, seat, layout="us"):
        self._wire = wire
        self._keymap = Keymap(layout)
        self._number = wire.make("zwp_virtual_keyboard_manager_v1", seat)
        text = self._keymap.text
        file = os.memfd_create("keymap")
        os.write(file, text)
        wire.send(self._number, 0, "II", _XKB_TEXT, len(text), descriptors=[file])
        os.close(file)
        wire.wait()

    def press(self, keys):
        """Presses one key, with others held down, such as "ctrl+shift+n"."""
        *held, last = keys.split("+")
        key, shifted = self._keymap.key_named(last)
        holding = [self._keymap.key_named(each)[0] for each in held]
        self._tap(key, holding, shifted)

    def type(self, text):
        for character in text:
            key, shifted = self._keymap.key_for(character)
            self._tap(key, [], shifted)

    def hold(self, name):
        self._move(self._keymap.key_named(name)[0], True)
        self._wire.wait()

    def free(self, name):
        self._move(self._keymap.key_named(name)[0], False)
        self._wire.wait()

    def _tap(self, key, holding, shifted):
        shift = self._keymap.key_named("shift")[0]
        if shifted and shift not in holding:
            holding = [*holding, shift]
        for each in (*holding, key):
            self._move(each, True)
        for each in (key, *reversed(holding)):
            self._move(each, False)
        self._wire.wait()

    def _move(self, key, down):
        self._wire.send(self._number, 1, "III", _now(), key, down)
        modifiers = self._keymap.move(key, down)
        self._wire.send(self._number, 2, "IIII", *modifiers, 0)


class Pointer:
    """A pointer on a display of a size."""

    def __init__(self, wire, seat, size):
        self._wire = wire
        self._size = size
        self._number = wire.make("zwlr_virtual_pointer_manager_v1", seat)
        wire.wait()

    def move(self, left, top):
        """Puts it at a place of the display."""
        self._wire.send(self._number, 1, "IIIII", _now(), left, top, *self._size)
        self._end()

    def click(self, button=1):
        """Presses and frees a button, or turns the wheel by one step: numbers as on X11."""
        if button in WHEEL:
            self._turn(WHEEL[button])
            return
        self.hold(button)
        self.free(button)

    def hold(self, button=1):
        self._button(button, _PRESSED)

    def free(self, button=1):
        self._button(button, 0)

    def _button(self, button, state):
        self._wire.send(self._number, 2, "III", _now(), BUTTONS[button], state)
        self._end()

    def _turn(self, steps):
        self._wire.send(self._number, 5, "I", 0)
        self._wire.send(self._number, 7, "IIii", _now(), 0, steps * _WHEEL_STEP * _FIXED, steps)
        self._end()

    def _end(self):
        self._wire.send(self._number, 4)
        self._wire.wait()


class Devices:
    """One keyboard and one pointer, for as long as the display stands."""

    def __init__(self, path, size):
        self._wire = _Wire(path)
        seat = self._wire.bind("wl_seat")
        self.keyboard = Keyboard(self._wire, seat)
        self.pointer = Pointer(self._wire, seat, size)

    def activation_token(self):
        """What a program gives another one that it starts, to let its window come to the front."""
        activation, token = self._wire.bind("xdg_activation_v1"), self._wire.new()
        self._wire.send(activation, 1, "I", token)
        self._wire.send(token, 3)
        return _text(self._wire.answer_of(token))

    def close(self):
        self._wire.close()
