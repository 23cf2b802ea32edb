"""The component, driven by a test itself: limits that the tool has no option for."""

import json
import subprocess
import threading

from .places import PROGRAMS
from .world import JOB_SECONDS

OPTIONS = PROGRAMS / "Settings/Default.joboptions"


class Component:
    """Started in a world; ends when it is closed."""

    def __init__(self, world):
        self._process = subprocess.Popen([PROGRAMS / "quorlin-pdf"], env=world.environment, cwd=world.documents,
                                         stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                                         start_new_session=True)
        # A reader of lines cannot be given a deadline; a process that ends ends it.
        self._watch = threading.Timer(JOB_SECONDS, self._process.kill)
        self._watch.start()
        self._jobs = 0

    def job(self, step, files, limits=None, options=None):
        """Runs one job. Returns the reasons of failures, in order, and the outputs that are there."""
        self._jobs += 1
        documents = [{"file": str(file), **(options or {})} for file in files]
        self._send({"type": step, "job": self._jobs, "documents": documents, "limits": limits or {}})
        reasons = []
        for line in self._process.stdout:
            report = json.loads(line)
            if report["type"] == "failure":
                reasons.append(report["reason"])
            if report["type"] == "complete":
                return reasons, [output for output in report["outputs"] if output]
        raise AssertionError("the component ended in the middle of a job")

    def distil(self, files, limits=None):
        return self.job("distil", files, limits, {"options": str(OPTIONS)})

    def _send(self, request):
        self._process.stdin.write(json.dumps(request).encode() + b"\n")
        self._process.stdin.flush()

    def close(self):
        self._process.stdin.close()
        code = self._process.wait(JOB_SECONDS)
        self._process.stdout.close()
        self._watch.cancel()
        return code
