"""Running another program with a time limit that holds for its children too."""

import os
import signal
import subprocess
import tempfile
from dataclasses import dataclass

from .processtree import ProcessTree


@dataclass(frozen=True)
class Finished:
    """How a program ended; `code` is None when its time ran out."""

    code: int | None
    output: str
    errors: str

    def why(self):
        """One line for people: how it ended and the last thing it said."""
        ending = "time ran out" if self.code is None else f"exit code {self.code}"
        lines = (self.errors or self.output).strip().splitlines()
        return f"{ending}: {lines[-1]}" if lines else ending


def run(command, timeout, started=None, variables=None):
    """Runs `command` in a process group of its own and ends it, and all it started, when its time is up.

    `started` is called with the process's id as soon as there is one. `variables` are added to its environment.
    """
    with tempfile.TemporaryFile() as output, tempfile.TemporaryFile() as errors:
        process = subprocess.Popen(
            [str(part) for part in command],
            stdin=subprocess.DEVNULL,
            stdout=output,
            stderr=errors,
            start_new_session=True,
            env={**os.environ, **(variables or {})},
        )
        if started:
            started(process.pid)
        code = _wait(process, timeout)
        return Finished(code, _content(output), _content(errors))


def _wait(process, timeout):
    try:
        return process.wait(timeout)
    except subprocess.TimeoutExpired:
        return None
    finally:
        end_all(process)


def end_all(process):
    """Kills what is left of the group that `process` leads and of its descendants, and reaps it."""
    descendants = ProcessTree(process.pid).update()
    _kill(os.killpg, process.pid)
    for pid in descendants:
        _kill(os.kill, pid)
    process.wait()


def _kill(kill, number):
    try:
        kill(number, signal.SIGKILL)
    except ProcessLookupError:
        pass


def _content(file):
    file.seek(0)
    return file.read().decode("utf-8", "replace")
