"""The keys of a keyboard: which one gives a character, and what it does to the others."""

import ctypes
import ctypes.util

_xkb = ctypes.CDLL(ctypes.util.find_library("xkbcommon") or "libxkbcommon.so.0")
_POINTER, _NUMBER, _TEXT = ctypes.c_void_p, ctypes.c_uint32, ctypes.c_char_p
_AS_TEXT = 1
_DEPRESSED, _LATCHED, _LOCKED = 1, 2, 4
# How far the numbers of keys in a keymap stand above those of the kernel.
OFFSET = 8
NAMES = {"ctrl": "Control_L", "shift": "Shift_L", "alt": "Alt_L", "super": "Super_L"}


class _Rules(ctypes.Structure):
    _fields_ = [(name, _TEXT) for name in ("rules", "model", "layout", "variant", "options")]


def _function(name, result, *arguments):
    function = getattr(_xkb, name)
    function.restype, function.argtypes = result, arguments
    return function


_new_context = _function("xkb_context_new", _POINTER, ctypes.c_int)
_new_keymap = _function("xkb_keymap_new_from_names", _POINTER, _POINTER,
                        ctypes.POINTER(_Rules), ctypes.c_int)
_as_text = _function("xkb_keymap_get_as_string", _POINTER, _POINTER, ctypes.c_int)
_first_key = _function("xkb_keymap_min_keycode", _NUMBER, _POINTER)
_last_key = _function("xkb_keymap_max_keycode", _NUMBER, _POINTER)
_symbols = _function("xkb_keymap_key_get_syms_by_level", ctypes.c_int, _POINTER, _NUMBER, _NUMBER,
                     _NUMBER, ctypes.POINTER(ctypes.POINTER(_NUMBER)))
_symbol_named = _function("xkb_keysym_from_name", _NUMBER, _TEXT, ctypes.c_int)
_symbol_of = _function("xkb_utf32_to_keysym", _NUMBER, _NUMBER)
_new_state = _function("xkb_state_new", _POINTER, _POINTER)
_update_key = _function("xkb_state_update_key", ctypes.c_int, _POINTER, _NUMBER, ctypes.c_int)
_modifiers = _function("xkb_state_serialize_mods", _NUMBER, _POINTER, ctypes.c_int)


class Keymap:
    """A keyboard of a layout such as "us", with the state of its modifiers. It lives as long as
    this process."""

    def __init__(self, layout):
        rules = _Rules(b"evdev", b"pc105", layout.encode(), b"", b"")
        self._keymap = _new_keymap(_new_context(0), rules, 0)
        if not self._keymap:
            raise AssertionError(f"no keymap of the layout {layout!r}")
        self._state = _new_state(self._keymap)
        self.text = ctypes.string_at(_as_text(self._keymap, _AS_TEXT)) + b"\0"
        self._keys = {}
        for level in (0, 1):
            for key in range(_first_key(self._keymap), _last_key(self._keymap) + 1):
                for symbol in self._given_by(key, level):
                    self._keys.setdefault(symbol, (key - OFFSET, level == 1))

    def _given_by(self, key, level):
        found = ctypes.POINTER(_NUMBER)()
        count = _symbols(self._keymap, key, 0, level, found)
        return found[:count]

    def key_named(self, name):
        """The kernel's number of the key of that name, such as "t", "Return" or "ctrl", and
        whether it takes Shift."""
        return self._keys[_symbol_named(NAMES.get(name, name).encode(), 0)]

    def key_for(self, character):
        """The same for what gives a character."""
        return self._keys[_symbol_of(ord(character))]

    def move(self, key, down):
        """Notes that a key went down or up; gives the modifiers that are held, latched and
        locked from then on."""
        _update_key(self._state, key + OFFSET, down)
        return [_modifiers(self._state, which) for which in (_DEPRESSED, _LATCHED, _LOCKED)]
