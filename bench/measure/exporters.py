"""The two ways of turning documents into PDF that are held against each other."""

import json
import shutil
import time
from collections import Counter
from dataclasses import dataclass
from pathlib import Path

from . import processes
from .documents import waves

STAGE_NOTE = "stage.txt"


@dataclass(frozen=True)
class Outcome:
    """What became of one document: a PDF, or the reason why there is none."""

    pdf: Path | None
    reason: str = ""


class DirectExport:
    """The office engine's own export: one process for as many documents as their names allow."""

    def __init__(self, work, program="soffice", seconds_each=60):
        self._work = Path(work)
        self._program = program
        self._seconds_each = seconds_each

    def command(self, documents, folder):
        profile = (self._work / "profile").absolute()
        return [
            self._program, "--headless", f"-env:UserInstallation=file://{profile}",
            "--convert-to", "pdf", "--outdir", folder, *[document.staged for document in documents],
        ]  # fmt: skip

    def run(self, documents, folder, started=None):
        """One process for all of `documents`; later ones overwrite earlier ones of the same name."""
        folder.mkdir(parents=True, exist_ok=True)
        timeout = 60 + self._seconds_each * len(documents)
        return processes.run(self.command(documents, folder), timeout, started)

    def export(self, documents, target):
        """Label → Outcome. A PDF is its own reference. What a batch left out is tried alone."""
        outcomes = {}
        for document in documents:
            if document.is_pdf:
                outcomes[document.label] = _keep(document.staged, document, target)
        for wave in waves([document for document in documents if not document.is_pdf]):
            outcomes.update(self._export_wave(wave, target))
        return outcomes

    def _export_wave(self, wave, target):
        folder = self._work / "direct-out"
        self.run(wave, folder)
        outcomes = {document.label: _take(folder, document, target) for document in wave}
        for document in wave:
            if outcomes[document.label].pdf is None:
                finished = self.run([document], folder)
                outcomes[document.label] = _take(folder, document, target, finished.why())
        shutil.rmtree(folder)
        return outcomes


def _take(folder, document, target, reason=""):
    made = folder / (document.staged.stem + ".pdf")
    if not made.is_file() or made.stat().st_size == 0:
        return Outcome(None, reason)
    outcome = _keep(made, document, target)
    made.unlink()
    return outcome


def _keep(made, document, target):
    kept = document.output_in(target)
    kept.parent.mkdir(parents=True, exist_ok=True)
    shutil.copyfile(made, kept)
    return Outcome(kept)


def write_stage_note(target, stage_folder):
    """Remembers where the documents lay, since links to other files carry that path."""
    Path(target).mkdir(parents=True, exist_ok=True)
    (Path(target) / STAGE_NOTE).write_text(f"{stage_folder}\n", encoding="utf-8")


def read_stage_note(target):
    note = Path(target) / STAGE_NOTE
    return note.read_text(encoding="utf-8").strip() if note.is_file() else None


def earlier_export(documents, folder):
    """Label → Outcome from a folder kept before, or from a flat folder of `name.pdf`."""
    stems = Counter(document.staged.stem for document in documents)
    outcomes = {}
    for document in documents:
        stem = document.staged.stem
        places = [document.staged] if document.is_pdf else [document.output_in(folder)]
        places += [Path(folder) / (stem + ".pdf")] if stems[stem] == 1 else []
        found = next((place for place in places if place.is_file()), None)
        outcomes[document.label] = Outcome(found, "" if found else "not in the earlier export")
    return outcomes


class QuorlinConvert:
    """`quorlin-convert` of a folder of built programs."""

    def __init__(self, bin_folder, quality="Default", seconds_each=120):
        self._program = Path(bin_folder).absolute() / "quorlin-convert"
        self._quality = quality
        self._seconds_each = seconds_each

    def run(self, documents, folder, report, started=None, variables=None):
        """One process for all of `documents`, with more environment variables if given; returns how it ended and
        the seconds it took."""
        folder.mkdir(parents=True, exist_ok=True)
        command = [self._program, "-q", self._quality, "-o", folder, "--json", report]
        command += [document.staged for document in documents]
        begin = time.monotonic()
        finished = processes.run(command, 60 + self._seconds_each * len(documents), started, variables)
        return finished, time.monotonic() - begin

    def convert(self, documents, work, target):
        """Label → Outcome; every group of names has an output folder of its own."""
        outcomes = {}
        for wave in waves(documents):
            folder, report = Path(work) / "result-out", Path(work) / "report.json"
            finished, _ = self.run(wave, folder, report)
            made = read_report(report, wave, finished)
            for document in wave:
                outcome = made[document.label]
                outcomes[document.label] = _keep(outcome.pdf, document, target) if outcome.pdf else outcome
            shutil.rmtree(folder)
            report.unlink(missing_ok=True)
        return outcomes


def read_report(report, documents, finished):
    """Label → Outcome as the report tells; a PDF counts only when it is there and not empty."""
    try:
        entries = json.loads(Path(report).read_text(encoding="utf-8"))["documents"]
        by_input = {str(entry["input"]): entry for entry in entries}
    except (OSError, ValueError, KeyError, TypeError) as error:
        reason = f"no usable report ({type(error).__name__}), {finished.why()}"
        return {document.label: Outcome(None, reason) for document in documents}
    return {document.label: _reported(by_input.get(str(document.staged))) for document in documents}


def _reported(entry):
    if entry is None:
        return Outcome(None, "not in the report")
    output = entry.get("output")
    if output and Path(output).is_file() and Path(output).stat().st_size > 0:
        return Outcome(Path(output))
    reason = ": ".join(part for part in (entry.get("reason"), entry.get("detail") or entry.get("text")) if part)
    return Outcome(None, reason or f"status {entry.get('status')!r}, but no output")
