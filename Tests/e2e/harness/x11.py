"""The tools of the display."""

import subprocess


def xdotool(*arguments):
    """The words of its answer; none if it failed."""
    return subprocess.run(["xdotool", *map(str, arguments)], capture_output=True, text=True,
                          check=False).stdout.split()


def geometry(window):
    """Left, top, width and height of a window on the display; all 0 if it is gone."""
    facts = dict(line.split("=", 1) for line in xdotool("getwindowgeometry", "--shell", window))
    return tuple(int(facts.get(name, 0)) for name in ("X", "Y", "WIDTH", "HEIGHT"))


def property_of(window, name):
    """What a window, or "root", has under a name, as text; nothing if it has none."""
    which = ["-root"] if window == "root" else ["-id", window]
    answer = subprocess.run(["xprop", *which, name], capture_output=True, text=True, check=False)
    return answer.stdout.partition(") = ")[2] or answer.stdout.partition("): ")[2]
