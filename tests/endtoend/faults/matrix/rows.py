"""The matrix: what becomes of the documents when a fault strikes in the middle of a stage."""

from dataclasses import dataclass, field
from typing import Callable

from . import damage, stages
from .stages import (
    DELIVERING, DISTILLING, DISTILLING_PRINTED, DISTILLING_WARM, EXPORTING, MERGING, PREPARING, PRINTING, Moment)

CONVERTED = "converted"
NO_REPORT = "no report"  # there is nobody left to write it
ANY_FAILURE = "not-allowed or no-room or engine-failed"
# Long enough for an engine's start where a process is to be caught at work.
STALL, SHORT_STALL = ("--stall", "6"), ("--stall", "3")

FAULTS = ("worker killed", "worker hung", "worker out of memory", "worker answers garbage", "worker writes nothing",
          "working folder full", "result folder full", "folder read-only", "working folder read-only",
          "source changed", "source truncated", "source removed", "clock set back", "component killed", "tool killed",
          "window killed", "everything killed")


@dataclass(frozen=True, eq=False)
class Row:
    fault: str
    moment: Moment
    damage: Callable
    expected: str
    part: str = ""
    limits: tuple = ()
    keeps_stopped: str = ""  # a program that is stopped whenever it starts anew
    replaced: dict = field(default_factory=dict)  # stand-ins for programs; nothing is caught then
    disks: dict = field(default_factory=dict)  # kilobytes of small disks over folders of the world
    is_ordinary_user: bool = False
    has_clock: bool = False

    @property
    def reasons(self):
        """What may become of each document."""
        return self.expected.split(" or ")

    @property
    def stage(self):
        return self.moment.stage

    @property
    def place(self):
        return self.part or self.moment.part


def _killed():
    yield Row("worker killed", EXPORTING, damage.kill("soffice.bin"), CONVERTED)
    yield Row("worker killed", EXPORTING, damage.kill("quorlin-pdf-office"), CONVERTED, "quorlin-pdf-office")
    yield Row("worker killed", PRINTING, damage.kill("pdftops"), CONVERTED)
    yield Row("worker killed", PREPARING, damage.kill("quorlin-pdf-print"), CONVERTED)
    yield Row("worker killed", DISTILLING, damage.kill("gs"), CONVERTED)
    yield Row("worker killed", DISTILLING_PRINTED, damage.kill("gs"), CONVERTED)
    yield Row("worker killed", DISTILLING_WARM, damage.kill("gs"), CONVERTED)
    yield Row("worker killed", MERGING, damage.kill("quorlin-pdf-merge"), CONVERTED)


def _hung():
    for moment in (EXPORTING, PRINTING, PREPARING, DISTILLING, DISTILLING_WARM, MERGING):
        yield Row("worker hung", moment, damage.nothing, "too-long", limits=STALL, keeps_stopped=moment.program)


def _faulty():
    """Programs that never do their work; those of the workers and those that workers run."""
    garbage, empty = "faulty-program-garbage", "faulty-program-empty"
    for moment, program, of_garbage, of_nothing in (
            (EXPORTING, "quorlin-pdf-office", "too-long", "engine-failed"),
            (PREPARING, "quorlin-pdf-print", "too-long", "engine-failed"),
            (PRINTING, "pdftops", "too-long", "damaged"),
            (DISTILLING, "gs", "too-long", "engine-failed"),
            (DISTILLING_WARM, "gs", "too-long", "engine-failed"),
            (MERGING, "quorlin-pdf-merge", "too-long", "engine-failed")):
        name = program.replace("-", "_")
        limits = STALL if moment is DISTILLING_WARM else SHORT_STALL
        yield Row("worker answers garbage", moment, damage.nothing, of_garbage, limits=limits, replaced={name: garbage})
        yield Row("worker writes nothing", moment, damage.nothing, of_nothing, replaced={name: empty})


def _full():
    for moment in (EXPORTING, PRINTING, DISTILLING, DISTILLING_WARM, MERGING):
        yield Row("working folder full", moment, damage.fill("temporary"), "no-room", disks={"temporary": 60_000})
    # Where results of the next stage are put beside the documents.
    for moment in (EXPORTING, PRINTING, DISTILLING, MERGING):
        yield Row("result folder full", moment, damage.fill("documents"), "no-room", disks={"documents": 20_000})
    yield Row("working folder full", DELIVERING, damage.fill("temporary"), CONVERTED, disks={"temporary": 120_000})
    yield Row("result folder full", DELIVERING, damage.fill("out"), "no-room", disks={"out": 60_000})


def _read_only():
    for moment in (EXPORTING, PRINTING, DISTILLING, DISTILLING_WARM, MERGING):
        yield Row("folder read-only", moment, damage.lock("documents"), "not-allowed", is_ordinary_user=True)
    yield Row("folder read-only", DELIVERING, damage.lock("out"), "not-allowed", is_ordinary_user=True)
    # Which step meets it first depends on how far the worker has come; one that has all its files open does not.
    for moment, expected in ((EXPORTING, ANY_FAILURE), (PRINTING, ANY_FAILURE), (DISTILLING, CONVERTED),
                             (DISTILLING_WARM, ANY_FAILURE), (MERGING, "not-allowed"), (DELIVERING, CONVERTED)):
        yield Row("working folder read-only", moment, damage.lock("temporary"), expected, is_ordinary_user=True)


def _source():
    """A document is worked on as a copy. What lies beside it for the next stage is not."""
    for fault, strike, printed, joined, delivered in (
            ("source changed", damage.overwrite, "damaged", "damaged or engine-failed", "engine-failed"),
            ("source truncated", damage.truncate, "engine-failed", "damaged or engine-failed", "engine-failed"),
            ("source removed", damage.remove, CONVERTED, CONVERTED, CONVERTED)):
        for moment, pattern in ((EXPORTING, "*.html"), (PRINTING, "*.pdf"), (DISTILLING, "*.ps")):
            yield Row(fault, moment, strike(pattern), CONVERTED)
        yield Row(fault, DISTILLING_PRINTED, strike("*.ps~"), printed, "gs, of what was printed")
        yield Row(fault, DISTILLING_WARM, strike("*.ps~"), printed, "warm gs, of what was printed")
        yield Row(fault, MERGING, strike("*.pdf~"), joined)
        yield Row(fault, DELIVERING, strike("*.pdf~"), delivered)


def _clock():
    for moment in (EXPORTING, PRINTING, DISTILLING, DISTILLING_WARM, MERGING, DELIVERING):
        yield Row("clock set back", moment, damage.set_clock_back, CONVERTED, has_clock=True)
    for moment in (EXPORTING, DISTILLING, MERGING):
        yield Row("clock set back", moment, damage.set_clock_back, "too-long", f"{moment.program} hung", limits=STALL,
                  keeps_stopped=moment.program, has_clock=True)


def _ended():
    for moment in (EXPORTING, PRINTING, DISTILLING, MERGING, DELIVERING):
        is_over = moment is DELIVERING
        yield Row("component killed", moment, damage.kill("quorlin-pdf"), CONVERTED if is_over else "engine-failed")
        yield Row("tool killed", moment, damage.kill("quorlin-convert"), NO_REPORT)
        yield Row("everything killed", moment, damage.kill_everything, NO_REPORT)


ROWS = [row for rows in (_killed, _hung, _faulty, _full, _read_only, _source, _clock, _ended) for row in rows()]

NO_WORKER = "results are delivered by the program that asked for them; no worker has anything to do then"
ELSEWHERE = {
    "window killed": "test_window.py",
    "worker out of memory": "test_memory.py",
}
SENSELESS = {(fault, "delivering"): NO_WORKER for fault in (
    "worker killed", "worker hung", "worker out of memory", "worker answers garbage", "worker writes nothing")}


def missing():
    """Cells that are neither tested nor said to make no sense."""
    tested = {(row.fault, row.stage) for row in ROWS}
    return [(fault, stage) for fault in FAULTS for stage in stages.STAGES
            if fault not in ELSEWHERE and ((fault, stage) in tested) == ((fault, stage) in SENSELESS)]
