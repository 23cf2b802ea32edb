"""How long a window leaves its user waiting."""

import threading
import time

from .accessible import Bus
from .waiting import Gone, Late

PERIOD = 0.005  # seconds between two questions


class Responsiveness:
    """Asks a window something small again and again; the window's own thread has to answer.

    Use as a context manager; afterwards `waits` has the time that each answer took, in seconds, `longest` the longest
    of them, and `answers` how many there were. What the machine was busy with counts as well.
    """

    def __init__(self, program):
        tree = program.tree
        self._bus = Bus(program.desktop.accessibility_address())
        self._question = (tree.service, tree.path, "org.a11y.atspi.Accessible", "GetRole")
        self._stop = threading.Event()
        self._thread = threading.Thread(target=self._ask, daemon=True)
        self.waits, self.answers, self.has_failed = [], 0, False

    @property
    def longest(self):
        return max(self.waits, default=0.0)

    def __enter__(self):
        self._thread.start()
        return self

    def __exit__(self, *_):
        self._stop.set()
        self._thread.join()
        self._bus.close()

    def _ask(self):
        while not self._stop.wait(PERIOD):
            begin = time.monotonic()
            try:
                self._bus.call(*self._question)
                self.answers += 1
            except (Gone, Late):
                self.has_failed = True
                return
            finally:
                self.waits.append(time.monotonic() - begin)
