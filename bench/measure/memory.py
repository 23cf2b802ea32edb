"""Resident memory of a process and everything it started (proportional set size, in bytes)."""

import threading
import time
from pathlib import Path

from .processtree import ProcessTree

PERIOD = 0.05  # seconds
SETTLED_SECONDS = 2.0
SETTLED_SHARE = 0.01
ENGINE_PROCESS = "soffice.bin"


def memory_of(pids):
    return sum(proportional_set_size(pid) for pid in pids)


def proportional_set_size(pid):
    """0 for a process that is gone."""
    try:
        for line in Path(f"/proc/{pid}/smaps_rollup").read_text("ascii").splitlines():
            if line.startswith("Pss:"):
                return int(line.split()[1]) * 1024
    except OSError:
        pass
    return 0


def names(pids):
    """The names of the processes that still live."""
    found = []
    for pid in pids:
        try:
            found.append(Path(f"/proc/{pid}/comm").read_text("utf-8").strip())
        except OSError:
            continue
    return found


def engines_running():
    """How many office engines run on the machine, whoever started them."""
    return names(entry.name for entry in Path("/proc").iterdir() if entry.name.isdigit()).count(ENGINE_PROCESS)


class PeakMeter:
    """Samples a process tree in a thread of its own until it is stopped."""

    def __init__(self):
        self.peak = 0
        self._stop = threading.Event()
        self._thread = None

    def start(self, pid):
        self._thread = threading.Thread(target=self._sample, args=(ProcessTree(pid),))
        self._thread.start()

    def finish(self):
        self._stop.set()
        if self._thread:
            self._thread.join()
        return self.peak

    def _sample(self, tree):
        while not self._stop.is_set():
            self.peak = max(self.peak, memory_of(tree.update()))
            self._stop.wait(PERIOD)


def settled_memory(pid, seconds, wanted_name=ENGINE_PROCESS):
    """(bytes, processes of that name) once one such process runs and nothing has changed for a while.

    None when this does not happen in time.
    """
    tree, deadline = ProcessTree(pid), time.monotonic() + seconds
    reference, since = 0, time.monotonic()
    while time.monotonic() < deadline:
        pids = tree.update()
        now, wanted = memory_of(pids), names(pids).count(wanted_name)
        if not wanted or abs(now - reference) > SETTLED_SHARE * now:
            reference, since = now, time.monotonic()
        elif time.monotonic() - since >= SETTLED_SECONDS:
            return now, wanted
        time.sleep(PERIOD)
    return None
