"""Waiting for conditions. Nothing in these tests waits for a time."""

import time

DEADLINE = 20.0
PAUSE = 0.02


def until(condition, what, saw=None, deadline=DEADLINE, pause=PAUSE):
    """Calls `condition` until it gives something true, and returns that.

    `what` says in words what is waited for; `saw` is a value, or a function that tells what there
    was instead when the deadline passed.
    """
    end = time.monotonic() + deadline
    while True:
        result = condition()
        if result:
            return result
        if time.monotonic() > end:
            seen = saw() if callable(saw) else saw
            raise AssertionError(f"waited {deadline:g} s for {what}; saw {seen!r}")
        time.sleep(pause)


def until_equal(read, wanted, what, deadline=DEADLINE):
    """Calls `read` until it gives `wanted`."""
    until(lambda: read() == wanted, f"{what} to be {wanted!r}", read, deadline)
