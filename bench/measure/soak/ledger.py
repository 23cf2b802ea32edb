"""What happened in a run: counts, times and everything that must not happen."""

from collections import Counter, defaultdict
from dataclasses import dataclass

# Whose the fault of a failure is: a fault hit the document, its job, or neither.
SHARES = ("own", "job", "none")
SHOWN = 12
DIED = "component-died"


@dataclass(frozen=True)
class Outcome:
    """What became of one document in one job; no reason when it was delivered."""

    label: str
    reason: str = ""
    text: str = ""
    step: str = ""
    seconds: float = 0.0
    share: str = "none"


class Ledger:
    """`problems` has a list for each kind of thing that must not happen; each is told at once."""

    PROBLEMS = ("hangs", "lost", "leftovers", "changed", "damaged", "breaches")

    def __init__(self, tell=lambda line: None):
        self._tell = tell
        self.jobs = self.merges = self.clean_jobs = self.checked = 0
        self.done = self.failed = 0
        self.longest = (0.0, "")
        self.faults, self.missed = Counter(), Counter()
        self.reasons = {share: Counter() for share in SHARES}
        self.costs = defaultdict(Counter)
        self.untouched = defaultdict(Counter)
        self.texts = {}
        self.stopped = []
        self.problems = {kind: [] for kind in self.PROBLEMS}

    def note_job(self, fault, outcomes, merged):
        self.jobs += 1
        self.merges += merged
        if fault and fault.happened:
            self.faults[fault.kind] += 1
            if fault.seconds is not None:
                self.stopped.append(fault.seconds)
            self._note_cost(fault, outcomes)
        elif fault:
            self.missed[fault.kind] += 1
        for outcome in outcomes:
            self._note(outcome)

    def _note_cost(self, fault, outcomes):
        """Documents of the job by what came of them; those that a fault hit itself apart."""
        costs = self.costs[f"{fault.kind} {fault.victim}".strip()]
        costs.update((outcome.label, outcome.reason) for outcome in outcomes if outcome.share != "own")

    def cost_of(self, fault):
        """(done, failed as they also do without a fault, {label: reason} of the rest) beside one kind of fault."""
        done = anyway = 0
        rest = {}
        for (label, reason), count in self.costs[fault].items():
            if not reason:
                done += count
            elif self.untouched.get(label, {}).get(reason):
                anyway += count
            else:
                rest[label] = reason
        return done, anyway, rest

    def _note(self, outcome):
        self.longest = max(self.longest, (outcome.seconds, outcome.label))
        if outcome.reason:
            self.failed += 1
            self.reasons[outcome.share][outcome.reason] += 1
        else:
            self.done += 1
        if outcome.share == "none":
            self.untouched[outcome.label][outcome.reason] += 1
            if outcome.reason:
                self.texts[outcome.label] = outcome.text

    def problem(self, kind, text):
        self.problems[kind].append(text)
        self._tell(f"  {kind}: {text}")

    def unsteady(self):
        """Documents that had different ends although no fault was near: {label: {reason: count}}."""
        return {label: dict(ends) for label, ends in sorted(self.untouched.items()) if len(ends) > 1}

    def passed(self):
        return not any(self.problems.values())

    def figures(self):
        return {
            "jobs": self.jobs, "merges": self.merges, "done": self.done, "failed": self.failed,
            "results_checked": self.checked, "longest": {"seconds": self.longest[0], "document": self.longest[1]},
            "faults": dict(self.faults), "faults_without_effect": dict(self.missed),
            "ends_beside_faults": {fault: self.cost_of(fault) for fault in sorted(self.costs)},
            "stopped_until_killed": self.stopped,
            "reasons": {share: dict(counter) for share, counter in self.reasons.items()},
            "untouched": {label: dict(ends) for label, ends in sorted(self.untouched.items())},
            "unsteady": self.unsteady(), "problems": self.problems,
        }  # fmt: skip


def listed(items):
    """One line: how many, and the first of them."""
    if not items:
        return "none"
    more = f" … and {len(items) - SHOWN} more" if len(items) > SHOWN else ""
    return f"{len(items)}: " + "; ".join(items[:SHOWN]) + more
