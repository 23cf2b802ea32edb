"""What people read: a line each minute, the tables at the end, the verdict."""

from collections import Counter

from ..table import aligned, shortened
from .growth import COMPONENT, LEAST_SECONDS, MEASURES, MEBIBYTE
from .ledger import SHARES, listed

SHARE_NAMES = {"own": "fault hit it", "job": "fault in its job", "none": "no fault near"}
TITLES = {
    "hangs": "hangs", "lost": "lost", "leftovers": "leftovers", "changed": "changed documents",
    "damaged": "damaged results", "breaches": "breaches of the protocol",
}  # fmt: skip
TEXT_WIDTH = 80


def interim(run):
    """One line, from another thread than the one that writes the ledger."""
    ledger, minutes, seconds = run.ledger, *divmod(int(run.seconds), 60)
    shares = ", ".join(f"{sum(ledger.reasons[share].values())} {SHARE_NAMES[share]}" for share in SHARES)
    problems = sum(map(len, ledger.problems.values()))
    return (f"{minutes:3}:{seconds:02}  {ledger.jobs} jobs, {ledger.done} done, {ledger.failed} failed ({shares}), "
            f"{sum(ledger.faults.values())} faults, longest {ledger.longest[0]:.1f} s, {problems} problems"
            f"{_component(run)}")  # fmt: skip


def _component(run):
    if COMPONENT not in run.record.kinds():
        return ""
    memory, threads, files = (run.record.series(COMPONENT, measure)[-1][1] for measure in MEASURES)
    return f"; {COMPONENT} {memory / MEBIBYTE:.1f} MiB, {threads:.0f} threads, {files:.0f} files"


def final(run):
    parts = [summary(run), reasons(run.ledger), costs(run.ledger), unsteady(run.ledger), holdings(run.record), verdict(run)]
    return "\n\n".join(part for part in parts if part)


def summary(run):
    ledger = run.ledger
    lines = [f"{run.seconds / 60:.1f} minutes: {ledger.jobs} jobs ({ledger.merges} with merging), "
             f"{ledger.done} documents done, {ledger.failed} failed, {ledger.checked} results checked",
             f"longest time of a document: {ledger.longest[0]:.1f} s ({ledger.longest[1]})"]  # fmt: skip
    if ledger.faults or ledger.missed:
        lines.append("faults: " + _counted(ledger.faults) + "; without effect: " + (_counted(ledger.missed) or "none"))
    if ledger.stopped:
        lines.append(f"stopped processes were ended after {max(ledger.stopped):.1f} s at the latest "
                     f"({len(ledger.stopped)} of them)")  # fmt: skip
    return "\n".join(lines)


def _counted(counter):
    return ", ".join(f"{name} {count}" for name, count in sorted(counter.items()))


def reasons(ledger):
    """Failures by reason and by whose fault they are."""
    names = sorted(set().union(*(ledger.reasons[share] for share in SHARES)))
    if not names:
        return ""
    rows = [[name, *(ledger.reasons[share][name] for share in SHARES)] for name in names]
    return "\n".join(aligned(["failed documents", *(SHARE_NAMES[share] for share in SHARES)], rows))


def costs(ledger):
    """What the faults cost the documents of the job that they did not hit themselves."""
    if not ledger.costs:
        return ""
    rows = []
    for fault in sorted(ledger.costs):
        done, anyway, rest = ledger.cost_of(fault)
        rows.append([fault, done, anyway, _counted(Counter(rest.values())) or "-"])
    return "\n".join(aligned(["the other documents of jobs with", "done", "failed anyway", "failed"], rows))


def unsteady(ledger):
    """Documents whose end differed although no fault was near."""
    rows = [
        f"  {label}: " + ", ".join(f"{reason or 'done'} {count}" for reason, count in ends.items())
        for label, ends in ledger.unsteady().items()
    ]
    return "\n".join(["different ends without a fault near:", *rows]) if rows else ""


def holdings(record):
    """First, median, last, most and slope of everything that each kind of process holds."""
    rows = []
    for kind, measures in record.trends().items():
        for measure, trend in measures.items():
            unit = MEBIBYTE if measure == "memory" else 1
            values = (trend.first, trend.median, trend.last, trend.most, trend.slope)
            if trend.most:
                rows.append([f"{kind} {measure}", *("-" if v is None else f"{v / unit:.1f}" for v in values)])
    head = ["of one process (memory in MiB)", "first", "median", "last", "most", "per hour"]
    return "\n".join(aligned(head, rows)) if rows else ""


def verdict(run):
    grows, unsaid = run.record.verdict()
    if grows:
        growth = "YES (" + ", ".join(grows) + ")"
    else:
        growth = "NO" if COMPONENT not in unsaid else f"not judged, needs {LEAST_SECONDS // 60} minutes of one component"
    judged_not = [kind for kind in unsaid if kind != COMPONENT]
    if judged_not and COMPONENT not in unsaid:
        growth += f" (too few samples: {', '.join(judged_not)})"
    problems = [f"{title}: {listed(run.ledger.problems[kind])}" for kind, title in TITLES.items()]
    return "\n".join([f"grows: {growth}", *problems])


def figures(run):
    trends = {
        kind: {measure: vars(trend) for measure, trend in measures.items()}
        for kind, measures in run.record.trends().items()
    }
    series = {
        kind: {measure: run.record.series(kind, measure) for measure in MEASURES} for kind in run.record.kinds()
    }
    grows, unsaid = run.record.verdict()
    return {"seconds": run.seconds, **run.ledger.figures(), "grows": grows, "not_judged": unsaid,
            "holdings": trends, "samples": series}  # fmt: skip


class Once:
    """The outcomes of a run that converts every document once."""

    def __init__(self):
        self._outcomes = []

    def add(self, job):
        self._outcomes += job.outcomes

    def text(self):
        failed = [one for one in self._outcomes if one.reason]
        done = len(self._outcomes) - len(failed)
        slowest = sorted(self._outcomes, key=lambda one: -one.seconds)[:5]
        lines = [f"{len(self._outcomes)} documents: {done} converted, {len(failed)} failed "
                 f"({_counted(Counter(one.reason for one in failed)) or 'none'})"]  # fmt: skip
        rows = [[shortened(one.label, 60), one.step, one.reason, f"{one.seconds:.1f}", one.text[:TEXT_WIDTH]]
                for one in failed]  # fmt: skip
        if rows:
            lines += ["", *aligned(["document", "step", "reason", "s", "text"], rows)]
        lines += ["", *aligned(["the slowest", "s"], [[one.label, f"{one.seconds:.1f}"] for one in slowest])]
        return "\n".join(lines) + "\n"

    def figures(self):
        return {"once": [vars(one) for one in self._outcomes]}
