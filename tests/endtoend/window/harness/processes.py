"""Processes that belong to one desktop, wherever they went."""

import os
import signal
import subprocess
import time
from pathlib import Path

MARK = "QUORLIN_TEST_DESKTOP"
END_SECONDS = 5.0


class Processes:
    """Starts programs, each in a session of its own, and ends whatever carries the desktop's mark.

    Every process inherits the mark with its environment, also one that left its session and lost its parent.
    """

    def __init__(self, mark, folder):
        self._mark = f"{MARK}={mark}".encode()
        self._folder = folder
        self._started = []

    def start(self, name, command, environment, **options):
        """Standard output and standard error go to the files NAME.out and NAME.err."""
        number = len(self._started)
        files = {kind: self._folder / f"{number:02}-{name}.{kind}" for kind in ("out", "err")}
        with open(files["out"], "wb") as output, open(files["err"], "wb") as errors:
            options = {"stdin": subprocess.DEVNULL, "stdout": output, "stderr": errors, **options}
            process = subprocess.Popen([str(part) for part in command], env=environment,
                                       start_new_session=True, **options)
        process.output, process.errors = files["out"], files["err"]
        self._started.append(process)
        return process

    def living(self):
        """Ids of all processes with the mark, zombies left out."""
        return [pid for pid in _all_pids() if self._has_mark(pid)]

    def end(self, process, seconds=END_SECONDS):
        """Asks the process to end, then makes it; its exit code."""
        if process.poll() is None:
            process.terminate()
        try:
            return process.wait(seconds)
        except subprocess.TimeoutExpired:
            process.kill()
            return process.wait()

    def end_all(self):
        """Ends everything, the last started first."""
        for process in reversed(self._started):
            self.end(process)
        deadline = time.monotonic() + END_SECONDS
        while (left := self.living()) and time.monotonic() < deadline:
            for pid in left:
                _kill(pid)
            time.sleep(0.01)

    def _has_mark(self, pid):
        try:
            # The environment of a zombie is empty.
            return self._mark in Path(f"/proc/{pid}/environ").read_bytes().split(b"\0")
        except OSError:
            return False


def command_of(pid):
    """The command line of a process, or nothing when it is gone."""
    try:
        return Path(f"/proc/{pid}/cmdline").read_bytes().replace(b"\0", b" ").decode("utf-8", "replace").strip()
    except OSError:
        return ""


def _all_pids():
    return [int(entry.name) for entry in Path("/proc").iterdir() if entry.name.isdigit()]


def _kill(pid):
    try:
        os.kill(pid, signal.SIGKILL)
    except ProcessLookupError:
        pass
