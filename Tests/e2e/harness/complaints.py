"""What the program's libraries complain of on its error output."""

import re

# GLib's form: (orvu:12): Gtk-CRITICAL **: 10:00:00.000: gtk_widget_x: assertion 'Y' failed
_COMPLAINT = re.compile(r"-(CRITICAL|ERROR) \*\*|: assertion '.*' failed|Assertion `.*' failed")

# Those that are the libraries' own fault, each with what leads to it.
KNOWN = ()

# What a page's process may say whose browser was killed, and with it the road to the bus.
_ORPHANS = re.compile(r"^\(process:\d+\): GLib-GIO-CRITICAL .*: The connection is closed$")


def of(text, killed=False):
    """The lines of a program's output that are complaints, but for the known ones.

    Of a program that was killed, those that its page processes make of that are none.
    """
    return [line for line in text.splitlines()
            if _COMPLAINT.search(line) and not any(known in line for known, _ in KNOWN)
            and not (killed and _ORPHANS.search(line))]
