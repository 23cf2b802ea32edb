"""One job of the component, watched: what came of each document, when, and whether it hung."""

import time
from dataclasses import dataclass, field

from .client import Died

START_SECONDS = 60  # what a worker may take to start, whatever the limits


@dataclass(frozen=True)
class Limits:
    """The limits of a job, in seconds. `at_once` is 0 where the component shall decide.

    `slack` is what a loaded machine, copies and the starts of workers may take besides.
    """

    stall: float = 30
    total: float = 120
    at_once: int = 0
    slack: float = 30

    def request(self):
        told = {"stall": self.stall, "total": self.total}
        return {**told, "atOnce": self.at_once} if self.at_once else told

    @property
    def quiet(self):
        """The longest time without a report: a document may stall, and stall again in its second try."""
        return 2 * self.stall + self.slack

    def longest(self, documents):
        """The longest time of a step, all documents being worked on one after the other, twice."""
        return documents * 2 * (self.total + min(self.stall, START_SECONDS)) + self.slack


@dataclass
class Step:
    """What a step reported. Positions count from 0, times are seconds from its begin."""

    kind: str
    count: int
    outputs: list = field(default_factory=list)
    failures: dict = field(default_factory=dict)
    told: dict = field(default_factory=dict)
    states: list = field(default_factory=list)
    seconds: float = 0
    ending: str = ""  # complete, hung or died
    breaches: list = field(default_factory=list)

    def output(self, position):
        """The document's file; nothing when it failed or the step did not end."""
        if position in self.failures or position >= len(self.outputs):
            return None
        return self.outputs[position]

    def breach(self, text):
        self.breaches.append(f"{self.kind}: {text}")


def run_step(client, kind, documents, limits, clock=time.monotonic, **members):
    """Runs one job of the component to its end, or to the time at which it counts as hung."""
    step = Step(kind, len(documents))
    begin = heard = clock()
    number = client.next_job()
    try:
        client.send({"type": kind, "job": number, "documents": documents, "limits": limits.request(), **members})
        while not step.ending:
            wait = min(heard + limits.quiet, begin + limits.longest(len(documents))) - clock()
            came = client.next(wait) if wait > 0 else None
            if came is None:
                return _hung(step, clock() - begin, clock() - heard)
            heard = came[0]
            _take(step, number, came[1], heard - begin)
    except Died as death:
        step.ending = "died"
        step.breach(str(death))
    step.seconds = clock() - begin
    return step


def _hung(step, seconds, silent):
    step.ending = "hung"
    step.seconds = seconds
    step.breach(f"hung: {seconds:.1f} s after its begin, silent for {silent:.1f} s")
    return step


def _take(step, number, report, when):
    kind = report.get("type")
    if kind == "error":
        return step.breach(f"error: {report.get('text')}")
    if report.get("job") != number:
        return step.breach(f"a report of job {report.get('job')}: {kind}")
    if kind == "failure":
        step.failures[report["index"] - 1] = (report["reason"], report["text"])
        step.told.setdefault(report["index"] - 1, when)
    elif kind == "output":
        step.told[report["index"] - 1] = when
    elif kind == "state":
        step.states.append(when)
    elif kind == "complete":
        _conclude(step, report)
    return None


def _conclude(step, report):
    step.ending = "complete"
    step.outputs = report["outputs"]
    if len(step.outputs) != step.count:
        step.breach(f"{len(step.outputs)} outputs for {step.count} documents")
    if step.count and report["success"] != (len(step.failures) < step.count):
        step.breach(f"success is {report['success']} with {len(step.failures)} of {step.count} failed")


def clear(client, limits):
    """Clears every step, and waits until that is done: an empty job is answered after it."""
    for step in ("print", "distil", "merge"):
        client.send({"type": "clear", "step": step})
    return run_step(client, "print", [], limits, printer="Soak")


def seconds_of(step, limits):
    """Seconds of each document: its own when they were worked on one after the other, else those from the
    step's begin to its report, or to the step's end."""
    if limits.at_once == 1 and len(step.states) >= step.count:
        return _turns(step)
    return [step.told.get(position, step.seconds) for position in range(step.count)]


def _turns(step):
    """The n-th state report tells when the n-th document's turn begins, the next one when it ends.

    Second tries come when all have had their first one: such a document's report comes after the last turn's
    begin, and what was waited for it since the report before is added. The last document's own turn is
    counted with the first of them, so that both are upper bounds.
    """
    begins, seconds, last = step.states[: step.count], [], 0.0
    for position, begin in enumerate(begins):
        told = step.told.get(position, step.seconds)
        is_last = position + 1 == step.count
        first = (max(told, begin) if is_last else begins[position + 1]) - begin
        waited = 0 if is_last else max(0, told - max(last, begins[-1]))
        seconds.append(first + waited)
        last = told
    return seconds
