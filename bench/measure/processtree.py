"""A process and everything it started, found in /proc."""

from pathlib import Path


class ProcessTree:
    """Follows a process and its descendants; one that was seen once stays, whoever adopts it."""

    def __init__(self, root):
        self._known = {}
        self._remember(root)

    def update(self):
        """The ids of all that live now."""
        self._known = {pid: start for pid, start in self._known.items() if _start_time(pid) == start}
        parents = _parents()
        grown = True
        while grown:
            new = [pid for pid, parent in parents.items() if parent in self._known and pid not in self._known]
            grown = any([self._remember(pid) for pid in new])
        return list(self._known)

    def _remember(self, pid):
        start = _start_time(pid)
        if start is not None:
            self._known[pid] = start
        return start is not None


def _parents():
    fields = ((int(entry.name), _stat(entry.name)) for entry in Path("/proc").iterdir() if entry.name.isdigit())
    return {pid: int(stat[1]) for pid, stat in fields if stat}


def _start_time(pid):
    stat = _stat(pid)
    return stat[19] if stat and stat[0] != "Z" else None


def _stat(pid):
    """The fields after the name: state, parent, …"""
    try:
        return Path(f"/proc/{pid}/stat").read_bytes().rpartition(b")")[2].decode("ascii").split()
    except OSError:
        return None
