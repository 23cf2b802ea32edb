"""Whether what a process holds grows over the run, and what counts as growing."""

import statistics
from collections import defaultdict
from dataclasses import dataclass

HOUR = 3600
LEAST_SECONDS = 10 * 60
LEAST_SAMPLES = 30
LEAST_SLOPE_SECONDS = 3 * 60
MOST_POINTS = 150
MEBIBYTE = 1024 * 1024
COMPONENT = "quorlin-pdf"
FOLDER = "work folder"
# Growth is the median of the last third of the samples less that of the first third.
#
# The component is looked at between jobs, when everything is cleared: what it holds then should stay the
# same for ever. 8 MiB is what an allocator keeps back after its largest job; a leak of 4 KiB for each of
# the 3,000 documents of an hour is more. Files and threads that stay open would run out within days.
#
# The workers grow with their documents and are replaced, an engine after 200: a third of an hour sees
# several whole lives, so that the thirds can be compared. Half as much again would mean that new ones
# begin larger, or that they are not replaced any more.
ALLOWED = {
    COMPONENT: {"memory": (8 * MEBIBYTE, 0.0), "threads": (4, 0.0), "files": (4, 0.0)},
    FOLDER: {"memory": (64 * MEBIBYTE, 0.0), "threads": (0, 0.0), "files": (50, 0.0)},
    "": {"memory": (32 * MEBIBYTE, 0.5), "threads": (8, 0.5), "files": (16, 0.5)},
}
MEASURES = ("memory", "threads", "files")


@dataclass(frozen=True)
class Trend:
    """First, median, last and largest value, and the change for each hour; that only when it can be told."""

    first: float
    median: float
    last: float
    most: float
    slope: float | None


def trend_of(samples):
    """Of [(seconds, value)]; the slope is the median of the slopes of all pairs (Theil and Sen)."""
    values = [value for _, value in samples]
    return Trend(values[0], statistics.median(values), values[-1], max(values), _slope(samples))


def _slope(samples):
    if samples[-1][0] - samples[0][0] < LEAST_SLOPE_SECONDS:
        return None
    points = samples[:: max(1, len(samples) // MOST_POINTS)]
    slopes = [
        (later[1] - earlier[1]) / (later[0] - earlier[0])
        for at, earlier in enumerate(points)
        for later in points[at + 1 :]
        if later[0] > earlier[0]
    ]
    return statistics.median(slopes) * HOUR


def judged(samples):
    """Whether there are enough samples over enough time to judge."""
    return len(samples) >= LEAST_SAMPLES and samples[-1][0] - samples[0][0] >= LEAST_SECONDS


def growth_of(kind, measure, samples):
    """How much the last third is above the first, when that is more than allowed; else None."""
    third = len(samples) // 3
    early, late = (statistics.median(value for _, value in part) for part in (samples[:third], samples[-third:]))
    amount, share = ALLOWED.get(kind, ALLOWED[""])[measure]
    return late - early if late - early > amount + share * early else None


class Record:
    """Samples of all processes of a run, by kind and by life of the component."""

    def __init__(self):
        self._samples = defaultdict(lambda: defaultdict(list))
        self._life = 0

    def new_component(self):
        self._life += 1

    def add(self, seconds, holdings, at_rest):
        """`holdings` as of processes.Holding; of each kind the mean of its processes counts."""
        kinds = defaultdict(list)
        for holding in holdings:
            kinds[holding.kind].append(holding)
        for kind, members in kinds.items():
            # While it works the component holds what the job needs: that is no growth.
            if kind not in (COMPONENT, FOLDER) or at_rest:
                means = {name: statistics.mean(getattr(one, name) for one in members) for name in MEASURES}
                self._samples[kind][self._life].append((seconds, means, len(members)))

    def kinds(self):
        return sorted(self._samples)

    def series(self, kind, measure):
        """[(seconds, value)]: of the component its longest life, of the others the whole run."""
        lives = self._samples[kind].values()
        if kind in (COMPONENT, FOLDER):
            lives = [max(lives, key=lambda life: life[-1][0] - life[0][0])]
        return [(seconds, means[measure]) for life in lives for seconds, means, _ in life]

    def most_at_once(self, kind):
        return max(count for life in self._samples[kind].values() for _, _, count in life)

    def trends(self):
        """{kind: {measure: Trend}}"""
        return {
            kind: {measure: trend_of(self.series(kind, measure)) for measure in MEASURES} for kind in self.kinds()
        }

    def verdict(self):
        """(what grows, why nothing could be said): both empty when nothing grows."""
        grows, unsaid = [], []
        for kind in self.kinds():
            if not judged(self.series(kind, "memory")):
                unsaid.append(kind)
                continue
            for measure in MEASURES:
                amount = growth_of(kind, measure, self.series(kind, measure))
                if amount is not None:
                    grows.append(f"{kind} {measure} +{_shown(measure, amount)}")
        return grows, unsaid


def _shown(measure, amount):
    return f"{amount / MEBIBYTE:.1f} MiB" if measure == "memory" else f"{amount:.0f}"
