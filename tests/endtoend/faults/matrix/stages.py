"""Jobs that can be caught in the middle of a stage."""

from dataclasses import dataclass

from . import documents

STAGES = ("printing", "distilling", "merging", "delivering")
LONG_PAGES, LARGE_PAGES, MANY_PAGES = 250, 4, 3000


@dataclass(frozen=True, eq=False)
class Moment:
    """The middle of a stage: which program then has which file open, and the job that leads there.

    `documents` are functions of contents by name, `result` is the name of what the job makes, of so many pages.
    """

    stage: str
    part: str
    program: str
    opens: str
    documents: dict
    result: str
    pages: int
    is_merge: bool = False

    def arguments(self, out):
        if self.is_merge:
            return ["-m", out / self.result, *self.documents]
        return ["-o", out, *self.documents]


def _long_page():
    return documents.html(LONG_PAGES)


def _large_pdf():
    return documents.pdf("large", lines=40_000, pages=LARGE_PAGES)


def _many_pages():
    return documents.postscript("page", pages=MANY_PAGES)


LONG = {"long.html": _long_page}
LARGE = {"large.pdf": _large_pdf}
# A PDF's result must not have the name of the PDF itself.
LARGE_RESULT = "large (2).pdf"

EXPORTING = Moment("printing", "office engine", "soffice.bin", r"/long\.html$", LONG, "long.pdf", LONG_PAGES)
PRINTING = Moment("printing", "pdftops", "pdftops", r"/temporary/.*\.pdf$", LARGE, LARGE_RESULT, LARGE_PAGES)
PREPARING = Moment("printing", "quorlin-pdf-print", "quorlin-pdf-print", r"\.ps$", LARGE, LARGE_RESULT, LARGE_PAGES)
DISTILLING = Moment("distilling", "gs of its own", "gs", r"/temporary/.*\.ps$",
                    {"slow.ps": documents.slow_postscript}, "slow.pdf", 1)
DISTILLING_PRINTED = Moment("distilling", "gs, of a PDF", "gs", r"/temporary/.*\.ps$", LARGE, LARGE_RESULT, LARGE_PAGES)
DISTILLING_WARM = Moment("distilling", "warm gs", "gs", r"/temporary/.*\.ps$", LONG, "long.pdf", LONG_PAGES)
MERGING = Moment("merging", "quorlin-pdf-merge", "quorlin-pdf-merge", r"/temporary/.*merged\.pdf|~$",
                 {"one.ps": _many_pages, "two.ps": _many_pages}, "all.pdf", 2 * MANY_PAGES, is_merge=True)
DELIVERING = Moment("delivering", "quorlin-convert", "quorlin-convert", r"/out/",
                    {"heavy.ps": documents.heavy_postscript}, "heavy.pdf", 1)
