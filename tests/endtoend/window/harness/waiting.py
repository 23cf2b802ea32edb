"""Waiting for a state with a deadline; nothing here sleeps for a fixed time."""

import time

SECONDS = 15.0  # what a window may take on a busy machine
PERIOD = 0.02


class Late(AssertionError):
    """A state that was waited for did not come."""


class Gone(Exception):
    """What was asked for is no longer there, or not yet."""


def wait_until(condition, what, seconds=SECONDS):
    """What `condition` returned as soon as that counts as true; `Late` when it never does.

    A condition that finds something `Gone` is asked again. `what` may be a function that is called for
    the complaint.
    """
    deadline = time.monotonic() + seconds
    while True:
        found = _asked(condition)
        if found:
            return found
        if time.monotonic() > deadline:
            raise Late(f"not within {seconds:g} s: {what() if callable(what) else what}")
        time.sleep(PERIOD)


def always(condition, what, seconds):
    """Checks that `condition` holds all the time; for what must not happen."""
    deadline = time.monotonic() + seconds
    while time.monotonic() < deadline:
        if not condition():
            raise AssertionError(f"held no longer: {what}")
        time.sleep(PERIOD)


def _asked(condition):
    try:
        return condition()
    except Gone:
        return None
