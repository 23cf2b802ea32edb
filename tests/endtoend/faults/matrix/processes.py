"""Processes that carry a mark in their environment, and what they have open."""

import os
import re
import signal
from pathlib import Path

PIPE_NAME = re.compile(rb"pipe,name=([^;]+);")


class Processes:
    """All processes with a variable in their environment, wherever they went; zombies have none any more."""

    def __init__(self, variable, value):
        self._mark = f"{variable}={value}".encode()
        self._others = set()
        self.pipes = set()

    def living(self):
        """Id and name of the program of each."""
        found = {}
        pids = {entry for entry in os.listdir("/proc") if entry.isdigit()}
        self._others &= pids
        for pid in pids - self._others:
            command = self._command(pid)
            if command is not None:
                found[int(pid)] = os.path.basename(command.split(b"\0")[0]).decode("utf-8", "replace")
        return found

    def of(self, program):
        return [pid for pid, name in self.living().items() if name == program]

    def kill_all(self):
        """Kills them at one stroke: none is left to see the others go."""
        pids = sorted(self.living())
        for number in (signal.SIGSTOP, signal.SIGKILL):
            for pid in pids:
                send(pid, number)
        return pids

    def _command(self, pid):
        """The command line of a process with the mark."""
        folder = Path("/proc") / pid
        try:
            environment = (folder / "environ").read_bytes()
            if self._mark not in environment.split(b"\0"):
                # That of a process that is just becoming another program is empty for a moment.
                if environment:
                    self._others.add(pid)
                return None
            command = (folder / "cmdline").read_bytes()
        except OSError:
            return None
        self.pipes.update(name.decode() for name in PIPE_NAME.findall(command))
        return command


def send(pid, number):
    try:
        os.kill(pid, number)
    except ProcessLookupError:
        pass


def open_files(pid):
    """The names of all files that a process has open or mapped; what it has no right to see is not among them."""
    names = set()
    for kind in ("fd", "map_files"):
        folder = f"/proc/{pid}/{kind}/"
        try:
            names.update(_target(folder + entry) for entry in os.listdir(folder))
        except OSError:
            continue
    return names


def _target(link):
    try:
        return os.readlink(link)
    except OSError:
        return ""
