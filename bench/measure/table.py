"""Aligned tables and the small things that reports have in common."""

import json
import statistics
import unicodedata
from pathlib import Path


def shown_width(cell):
    return sum(2 if unicodedata.east_asian_width(c) in "WF" else 1 for c in cell if not unicodedata.combining(c))


def aligned(header, rows):
    """Lines of a table: the first column to the left, the others to the right."""
    cells = [list(header), *[[str(cell) for cell in row] for row in rows]]
    widths = [max(shown_width(row[column]) for row in cells) for column in range(len(header))]
    lines = [_line(row, widths) for row in cells]
    return [lines[0], "-" * sum(widths, 2 * (len(widths) - 1)), *lines[1:]]


def _line(row, widths):
    return "  ".join(_padded(cell, width, at == 0) for at, (cell, width) in enumerate(zip(row, widths)))


def _padded(cell, width, left):
    space = " " * (width - shown_width(cell))
    return cell + space if left else space + cell


def shortened(label, limit=44):
    return label if len(label) <= limit else "…" + label[-(limit - 1) :]


def median(values):
    return statistics.median(values) if values else None


def write_json(path, content):
    Path(path).write_text(json.dumps(content, ensure_ascii=False, indent=2) + "\n", encoding="utf-8")
