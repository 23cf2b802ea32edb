"""The report of `bench/fidelity`: a line per document, the goals, every deviation."""

from .fidelity import kept_text
from .table import aligned, shortened

HEADER = "document pages sizes words% +words ext.links int.links bookmarks info fonts size× worst".split()


def table_lines(summary):
    return aligned(HEADER, [_row(item) for item in summary.compared])


def _row(item):
    comparison, kept = item.comparison, item.comparison.tallies
    return [
        shortened(item.label),
        comparison.pages[1] if comparison.pages_equal else "{1}/{0}".format(*comparison.pages),
        f"{comparison.sizes_off} off" if comparison.sizes_off else "=",
        f"{kept['words'].percent:.2f}",
        kept["words"].added,
        *(_fraction(kept[name]) for name in ("external", "internal", "bookmarks", "info", "fonts")),
        f"{comparison.size_ratio:.2f}",
        "error" if item.render_error else f"{item.worst_page[0]:.2f}" if item.render else "-",
    ]


def _fraction(tally):
    if not tally.total and not tally.added:
        return "-"
    return f"{tally.kept}/{tally.total}" + (f"+{tally.added}" if tally.added else "")


def report_lines(summary):
    """Everything that stands below the table."""
    lines = ["", "Goals"]
    for what, reached, figures in summary.goals():
        lines.append(f"  {'reached' if reached else 'MISSED':<8} {what:<28} {figures}")
    lines += ["", "Further figures", *_further(summary)]
    lines += ["", "Poorest in words", *(f"  {percent:7.2f} %  {label}" for percent, label in summary.least_words[:5])]
    lines += _listed("Failed", [(item.label, item.result_failure) for item in summary.failed])
    both = [(item.label, item.result_failure) for item in summary.failed_on_both]
    lines += _listed("Failed, as the direct export does", both)
    only_result = [(item.label, item.direct_failure) for item in summary.only_result]
    lines += _listed("Converted, though the direct export fails", only_result)
    return lines + _deviations(summary)


def _further(summary):
    kept = summary.tallies
    pages = sum(item.comparison.pages[0] for item in summary.compared)
    unicode_less = sum(item.comparison.fonts_without_unicode for item in summary.compared)
    lines = [
        f"  documents compared       {len(summary.compared)}, with {pages} pages",
        f"  characters kept          {kept_text(kept['characters'])}",
        f"  link rectangles in place {kept_text(kept['rects'])}",
        f"  link targets' heights    {kept_text(kept['tops'])}",
        f"  info fields kept         {kept_text(kept['info'])}",
        f"  fonts without Unicode    {unicode_less}",
    ]
    if summary.size_ratio is not None:
        lines.append(f"  size of all results      {summary.size_ratio:.3f} × the direct export")
    if summary.render:
        mean, worst, page, label = summary.render
        lines.append(f"  rendered difference      mean {mean:.3f} % over all pages")
        lines.append(f"                           worst {worst:.2f} %, page {page} of {label}")
    return lines


def _listed(title, entries):
    if not entries:
        return []
    return ["", f"{title} ({len(entries)})", *(f"  {label}: {reason}" for label, reason in entries)]


def _deviations(summary):
    lines = []
    for item in summary.compared:
        found = [*item.comparison.deviations, *([item.render_error] if item.render_error else [])]
        if found:
            lines += [f"  {item.label}", *(f"    {deviation}" for deviation in found)]
    return ["", "Deviations", *(lines or ["  none"])]
