"""Measures every document of a run and says what the whole run reached."""

from concurrent.futures import ProcessPoolExecutor
from dataclasses import asdict, dataclass, field

from .compare import TALLIES, Comparison, Tally, compare
from .pdffacts import read_facts
from .pdfobjects import UnreadablePdf
from .render import RenderError, page_differences

WORDS_IN_ALL = 99.5  # percent
WORDS_IN_EACH = 98.0  # percent
PROCESSES = 2


@dataclass
class Measured:
    """One document: compared, or with the reason why one side or both have nothing to compare."""

    label: str
    comparison: Comparison | None = None
    render: list = field(default_factory=list)
    render_error: str = ""
    direct_failure: str | None = None
    result_failure: str | None = None

    @property
    def worst_page(self):
        """(percent, page from 1) of the page that looks most different; None without pictures."""
        return max((percent, number) for number, percent in enumerate(self.render, 1)) if self.render else None

    def as_json(self):
        content = asdict(self)
        if self.comparison:
            content["comparison"]["words_kept_percent"] = self.comparison.tallies["words"].percent
            content["comparison"]["size_ratio"] = self.comparison.size_ratio
        return content


@dataclass(frozen=True)
class Task:
    """What is needed to measure one document; the stage folders are where its sides were made."""

    label: str
    direct: object
    result: object
    direct_stage: str | None
    result_stage: str | None
    render: bool


def measure(task):
    measured = Measured(task.label)
    direct = _facts_of(task.direct, task.direct_stage, measured, "direct_failure")
    result = _facts_of(task.result, task.result_stage, measured, "result_failure")
    if direct is None or result is None:
        return measured
    measured.comparison = compare(direct, result)
    if task.render:
        try:
            measured.render = page_differences(task.direct.pdf, task.result.pdf, min(measured.comparison.pages))
        except RenderError as error:
            measured.render_error = str(error)
    return measured


def _facts_of(outcome, stage_folder, measured, failure):
    if outcome.pdf is None:
        setattr(measured, failure, outcome.reason or "no output")
        return None
    try:
        return read_facts(outcome.pdf, stage_folder)
    except UnreadablePdf as error:
        setattr(measured, failure, f"unreadable output: {error}")
        return None


def measure_all(tasks):
    with ProcessPoolExecutor(PROCESSES) as pool:
        return list(pool.map(measure, tasks))


class Summary:
    """The totals over all documents that could be compared, and the list of those that could not."""

    def __init__(self, measured):
        self.compared = [item for item in measured if item.comparison]
        self.failed = [item for item in measured if item.result_failure and not item.direct_failure]
        self.failed_on_both = [item for item in measured if item.result_failure and item.direct_failure]
        self.only_result = [item for item in measured if item.direct_failure and not item.result_failure]
        self.tallies = {name: Tally() for name in TALLIES}
        for item in self.compared:
            for name in TALLIES:
                self.tallies[name].add(item.comparison.tallies[name])

    def documents_where(self, condition):
        return sum(1 for item in self.compared if condition(item.comparison))

    @property
    def least_words(self):
        """(percent, label) of the documents, the poorest first."""
        return sorted((item.comparison.tallies["words"].percent, item.label) for item in self.compared)

    @property
    def size_ratio(self):
        direct, result = (sum(item.comparison.bytes[side] for item in self.compared) for side in (0, 1))
        return result / direct if direct else None

    @property
    def render(self):
        """(mean over all pages, worst, its page, its document), in percent; None without pictures."""
        pages = [percent for item in self.compared for percent in item.render]
        if not pages:
            return None
        worst = max((*item.worst_page, item.label) for item in self.compared if item.render)
        return (sum(pages) / len(pages), *worst)

    def goals(self):
        """(what, reached, figures) for everything that has a figure to reach; nothing compared reaches nothing."""
        kept = self.tallies
        least = self.least_words[0] if self.compared else (0.0, "nothing compared")
        enough = kept["words"].percent >= WORDS_IN_ALL
        pages_off = self.documents_where(lambda c: not c.pages_equal)
        sizes_off = self.documents_where(lambda c: c.sizes_off)
        info_lost = sum(item.comparison.lost_title_author for item in self.compared)
        order_off = self.documents_where(lambda c: not c.bookmark_order_kept)
        goals = [
            ("every document converted", not self.failed, f"{len(self.failed)} failed"),
            ("pages equal", not pages_off, f"different in {pages_off} documents"),
            ("page sizes within 1 pt", not sizes_off, f"off in {sizes_off} documents"),
            (f"words kept ≥ {WORDS_IN_ALL} %", enough, kept_text(kept["words"])),
            (f"… ≥ {WORDS_IN_EACH:g} % in each document", least[0] >= WORDS_IN_EACH, "least {:.2f} % {}".format(*least)),
            ("external links kept", kept["external"].whole, kept_text(kept["external"])),
            ("internal links kept", kept["internal"].whole, kept_text(kept["internal"])),
            ("bookmarks kept", kept["bookmarks"].whole and not order_off, kept_text(kept["bookmarks"])),
            ("titles and authors kept", not info_lost, f"{info_lost} lost"),
            ("fonts embedded", kept["fonts"].whole, kept_text(kept["fonts"])),
        ]
        return [(what, reached and bool(self.compared), figures) for what, reached, figures in goals]

    def as_json(self):
        tallies = {name: {**asdict(tally), "percent": tally.percent} for name, tally in self.tallies.items()}
        goals = [{"goal": what, "reached": reached, "figures": figures} for what, reached, figures in self.goals()]
        return {
            "compared": len(self.compared),
            "failed": {item.label: item.result_failure for item in self.failed},
            "failed_on_both_sides": {item.label: item.result_failure for item in self.failed_on_both},
            "only_in_the_result": {item.label: item.direct_failure for item in self.only_result},
            "tallies": tallies,
            "size_ratio": self.size_ratio,
            "render": self.render,
            "goals": goals,
        }


def kept_text(tally):
    if not tally.total and not tally.added:
        return "none"
    added = f", {tally.added} added" if tally.added else ""
    return f"{tally.kept} of {tally.total} ({tally.percent:.3f} %){added}"
