"""The processes of a component by kind: what they hold, and which of them are left when it has gone."""

import os
from dataclasses import dataclass
from pathlib import Path

MARK = "QUORLIN_SOAK_MARK"  # in the environment of everything that a component starts
# The kernel keeps 15 characters of a process's name.
KINDS = (
    "quorlin-pdf", "quorlin-pdf-office", "oosplash", "soffice.bin", "quorlin-pdf-print", "pdftops", "gs",
    "quorlin-pdf-merge",
)  # fmt: skip
VICTIMS = ("soffice.bin", "quorlin-pdf-office", "quorlin-pdf-print", "pdftops", "gs", "quorlin-pdf-merge")
NAME_BYTES = 15
BY_NAME = {kind[:NAME_BYTES]: kind for kind in KINDS}
PAGE = os.sysconf("SC_PAGESIZE")


@dataclass(frozen=True)
class Holding:
    """What one process holds: resident bytes, threads and open files."""

    pid: int
    kind: str
    memory: int
    threads: int
    files: int


def kind_of(pid):
    """None for a process of another kind, or one that is gone."""
    try:
        return BY_NAME.get(Path(f"/proc/{pid}/comm").read_text("utf-8").strip())
    except OSError:
        return None


def holding_of(pid):
    """None for a process of no kind that is followed, or one that is gone."""
    kind = kind_of(pid)
    try:
        fields = Path(f"/proc/{pid}/stat").read_text("ascii", "replace").rpartition(")")[2].split()
        if kind is None or fields[0] == "Z":
            return None
        files = len(os.listdir(f"/proc/{pid}/fd"))
    except OSError:
        return None
    return Holding(pid, kind, int(fields[21]) * PAGE, int(fields[17]), files)


def marked(mark):
    """The ids of all living processes that have the mark in their environment."""
    needle = f"{MARK}={mark}".encode("ascii")
    found = []
    for entry in Path("/proc").iterdir():
        try:
            if entry.name.isdigit() and needle in (entry / "environ").read_bytes().split(b"\0"):
                found.append(int(entry.name))
        except OSError:
            continue
    return found


def left_of(client):
    """The processes of a component that live on, as "pid name"."""
    pids = set(client.processes()) | set(marked(client.mark))
    return sorted(f"{pid} {name_of(pid)}" for pid in pids if pid != os.getpid() and lives(pid))


def lives(pid):
    try:
        return Path(f"/proc/{pid}/stat").read_bytes().rpartition(b")")[2].split()[0] != b"Z"
    except OSError:
        return False


def name_of(pid):
    try:
        return Path(f"/proc/{pid}/comm").read_text("utf-8", "replace").strip()
    except OSError:
        return "?"
