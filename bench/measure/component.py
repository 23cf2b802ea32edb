"""Drives `quorlin-pdf` over its pipe, as the window does."""

import json
import queue
import shutil
import subprocess
import threading
import time
from pathlib import Path

from .processes import end_all

PROTOCOL = 1
ANSWER_SECONDS = 300


class ComponentError(Exception):
    """The component failed, was silent for too long or spoke another language."""


class Component:
    """One running component; use as a context manager. Its standard error goes to `log`."""

    def __init__(self, bin_folder, log):
        self._program = Path(bin_folder).absolute() / "quorlin-pdf"
        self._options = Path(bin_folder).absolute() / "Settings" / "Default.joboptions"
        self._log = log
        self._reports = queue.Queue()
        self._job = 0

    def __enter__(self):
        self._process = subprocess.Popen(
            [str(self._program)],
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
            stderr=self._log,
            start_new_session=True,
        )
        self._listener = threading.Thread(target=self._listen, daemon=True)
        self._listener.start()
        try:
            self._expect_greeting()
        except ComponentError:
            self._end()
            raise
        return self

    def __exit__(self, *_):
        self._close_input()
        try:
            self._process.wait(30)
        except subprocess.TimeoutExpired:
            pass
        self._end()

    def _close_input(self):
        try:
            self._process.stdin.close()
        except OSError:
            pass  # what was not read any more is lost with the component

    def _end(self):
        end_all(self._process)
        self._close_input()
        self._listener.join()
        self._process.stdout.close()

    @property
    def pid(self):
        return self._process.pid

    def warm(self):
        self._send({"type": "warm"})

    def convert(self, document):
        """Prints and distils one document; returns (seconds to PostScript, seconds to PDF, the PDF)."""
        begin = time.monotonic()
        printed = self._run("print", {"file": str(document)}, printer="Bench")
        halfway = time.monotonic()
        made = self._run("distil", {"file": printed, "options": str(self._options)})
        end = time.monotonic()
        if not Path(made).is_file():
            raise ComponentError(f"no output for {document}")
        return halfway - begin, end - begin, Path(made)

    def clear(self):
        for step in ("print", "distil"):
            self._send({"type": "clear", "step": step})

    def _run(self, kind, document, **members):
        self._job += 1
        self._send({"type": kind, "job": self._job, "documents": [document], **members})
        while True:
            report = self._next()
            if report.get("type") in ("failure", "error"):
                raise ComponentError(f"{kind}: {report.get('reason', 'error')}: {report.get('text')}")
            if report.get("type") == "complete" and report.get("job") == self._job:
                return self._only_output(kind, report)

    def _only_output(self, kind, report):
        if not report.get("success") or len(report.get("outputs", [])) != 1:
            raise ComponentError(f"{kind}: {report}")
        return report["outputs"][0]

    def _send(self, request):
        try:
            self._process.stdin.write(json.dumps(request).encode("utf-8") + b"\n")
            self._process.stdin.flush()
        except OSError as error:
            raise ComponentError(f"the component is gone: {error}") from error

    def _listen(self):
        for line in self._process.stdout:
            self._reports.put(line)
        self._reports.put(None)

    def _next(self):
        try:
            line = self._reports.get(timeout=ANSWER_SECONDS)
        except queue.Empty as error:
            raise ComponentError(f"no report for {ANSWER_SECONDS} s") from error
        if line is None:
            raise ComponentError(f"the component ended with {self._process.wait()}")
        try:
            return json.loads(line)
        except ValueError as error:
            raise ComponentError(f"not a report: {line[:200]!r}") from error

    def _expect_greeting(self):
        greeting = self._next()
        if greeting.get("type") != "hello" or greeting.get("protocol") != PROTOCOL:
            raise ComponentError(f"not the greeting expected: {greeting}")


def fresh_copy(document, folder, number):
    """A copy that was never converted before, in a folder of its own."""
    target = Path(folder) / str(number) / f"copy{number}{document.suffix}"
    target.parent.mkdir(parents=True)
    shutil.copyfile(document, target)
    return target
