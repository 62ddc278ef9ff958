"""Waiting for conditions. Nothing in these tests waits for a time."""

import time

DEADLINE = 20.0
FIRST_PAUSE, LONGEST_PAUSE = 0.01, 0.1


class Gone(Exception):
    """What was looked at went away meanwhile."""


def settled(read, default):
    """`read()`, or `default` where what it looks at went away meanwhile."""
    try:
        return read()
    except Gone:
        return default


def until(condition, what, saw=None, deadline=DEADLINE, pause=None):
    """Calls `condition` until it gives something true, and returns that. It may look at things
    that go away.

    `what` says in words what is waited for; `saw` is a value, or a function that tells what there
    was instead when the deadline passed. Between two calls pass `pause` seconds; without it they
    come in ever longer pauses, so that a long wait costs others little.
    """
    end = time.monotonic() + deadline
    growing = FIRST_PAUSE
    while True:
        result = settled(condition, None)
        if result:
            return result
        if time.monotonic() > end:
            seen = settled(saw, "what went away") if callable(saw) else saw
            raise AssertionError(f"waited {deadline:g} s for {what}; saw {seen!r}")
        time.sleep(pause or growing)
        growing = min(growing * 1.4, LONGEST_PAUSE)


def until_equal(read, wanted, what, deadline=DEADLINE):
    """Calls `read` until it gives `wanted`."""
    until(lambda: read() == wanted, f"{what} to be {wanted!r}", read, deadline)
