"""The three parts of the speed measurement; every time in seconds, memory in bytes."""

import re
import shutil
import time
from dataclasses import dataclass
from pathlib import Path

from .component import Component, ComponentError, fresh_copy
from .documents import extension
from .exporters import DirectExport, QuorlinConvert, read_report
from .memory import PeakMeter, settled_memory
from .table import median

WARM_SECONDS = 60
CONVERTED = re.compile("convert .* -> ")  # what the engine says of every document


@dataclass(frozen=True)
class BatchRun:
    """One side of one round; the count tells whether the time stands for the same work."""

    seconds: float
    converted: int
    ending: str


class Bench:
    """Holds what all parts use: the documents' copies, a work folder and both sides."""

    def __init__(self, documents, bin_folder, work, soffice="soffice"):
        self.documents = documents
        self._bin = Path(bin_folder)
        self._work = Path(work)
        self._direct = DirectExport(self._work, soffice)
        self._quorlin = QuorlinConvert(bin_folder)

    def warm_up(self, document):
        """Both sides once, unmeasured: the engine's profile exists and the files are cached."""
        self.run_direct([document])
        self.run_quorlin([document])

    def run_quorlin(self, documents, started=None, variables=None):
        folder, report = self._work / "quorlin-out", self._work / "report.json"
        report.unlink(missing_ok=True)
        finished, seconds = self._quorlin.run(documents, folder, report, started, variables)
        outcomes = read_report(report, documents, finished).values()
        converted = sum(1 for outcome in outcomes if outcome.pdf)
        shutil.rmtree(folder)
        return BatchRun(seconds, converted, "" if converted == len(documents) else finished.why())

    def run_direct(self, documents, started=None):
        folder = self._work / "direct-out"
        begin = time.monotonic()
        finished = self._direct.run(documents, folder, started)
        seconds = time.monotonic() - begin
        converted = sum(1 for line in finished.output.splitlines() if CONVERTED.match(line))
        failed = finished.errors.count("Please verify input parameters")  # nothing could be written
        shutil.rmtree(folder)
        return BatchRun(seconds, converted - failed, "" if converted == len(documents) else finished.why())

    def batch_round(self, number):
        """Both sides over all documents, the first one taking turns: (quorlin, direct)."""
        if number % 2:
            direct = self.run_direct(self.documents)
            return self.run_quorlin(self.documents), direct
        return self.run_quorlin(self.documents), self.run_direct(self.documents)

    def sandbox_round(self, number):
        """The batch with the sandbox and without, the first one taking turns: (with, without)."""
        without = {"QUORLIN_SANDBOX": "off"}
        if number % 2:
            unconfined = self.run_quorlin(self.documents, variables=without)
            return self.run_quorlin(self.documents), unconfined
        return self.run_quorlin(self.documents), self.run_quorlin(self.documents, variables=without)

    def warm_single(self, document, repeats, log):
        """[(seconds to PostScript, seconds to PDF)] of fresh copies with a warm engine."""
        times, folder = [], self._work / "singles"
        with Component(self._bin, log) as component:
            component.warm()
            component.convert(fresh_copy(document, folder, 0))
            for number in range(1, repeats + 1):
                printed, whole, made = component.convert(fresh_copy(document, folder, number))
                made.unlink()
                component.clear()
                times.append((printed, whole))
        return times

    def cold_single(self, staged, repeats):
        """Seconds of one engine process for the one document."""
        runs = [self.run_direct([staged]) for _ in range(repeats)]
        if any(run.converted != 1 for run in runs):
            raise ComponentError(f"the direct export of {staged.label} failed: {runs}")
        return [run.seconds for run in runs]

    def idle_memory(self, log):
        """(bytes, engines) when warm and with nothing to do; None when no engine came up."""
        with Component(self._bin, log) as component:
            component.warm()
            return settled_memory(component.pid, WARM_SECONDS)

    def peak_memory(self):
        """Of a whole batch: (quorlin, direct)."""
        return tuple(self._peak(run) for run in (self.run_quorlin, self.run_direct))

    def _peak(self, run):
        meter = PeakMeter()
        try:
            run(self.documents, meter.start)
        finally:
            peak = meter.finish()
        return peak


def ratio(ours, theirs):
    """Median of ours over median of theirs; None when there is nothing to divide."""
    return median(ours) / median(theirs) if ours and theirs else None


def smallest(documents):
    """The smallest text document, else the smallest of all."""
    texts = [document for document in documents if extension(document.staged) in ("docx", "odt", "doc", "rtf")]
    return min(texts or documents, key=lambda document: document.staged.stat().st_size)
