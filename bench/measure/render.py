"""How different the pages of two PDFs look: mean absolute difference of gray pictures."""

import subprocess
import tempfile
from operator import sub
from pathlib import Path

DOTS_PER_INCH = 50
PAGES_AT_ONCE = 40
SECONDS_PER_PAGE = 20


class RenderError(Exception):
    """A page could not be turned into a picture."""


def page_differences(direct, result, pages):
    """The difference of every page in percent of black to white; every picture point counts."""
    differences = []
    for first in range(1, pages + 1, PAGES_AT_ONCE):
        last = min(pages, first + PAGES_AT_ONCE - 1)
        with tempfile.TemporaryDirectory(prefix="bench-render-") as folder:
            sides = _render_both(direct, result, folder, first, last)
            differences += [picture_difference(a, b) for a, b in zip(*sides)]
    return differences


def _render_both(direct, result, folder, first, last):
    """Both sides are rendered at the same time; returns the paths of their pictures."""
    roots = [Path(folder) / "direct", Path(folder) / "result"]
    running = [_start(pdf, root, first, last) for pdf, root in zip((direct, result), roots)]
    codes = [_finish(process, SECONDS_PER_PAGE * (last - first + 1)) for process in running]
    if any(codes):
        raise RenderError(f"pdftoppm ended with {codes[0]} and {codes[1]}")
    sides = [sorted(Path(folder).glob(root.name + "-*.pgm"), key=_page_of) for root in roots]
    if any(len(side) != last - first + 1 for side in sides):
        raise RenderError(f"pdftoppm did not write all of the pages {first} to {last}")
    return sides


def _start(pdf, root, first, last):
    command = ["pdftoppm", "-cropbox", "-r", DOTS_PER_INCH, "-gray", "-f", first, "-l", last, pdf, root]
    return subprocess.Popen(
        [str(part) for part in command], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL
    )


def _finish(process, seconds):
    try:
        return process.wait(seconds)
    except subprocess.TimeoutExpired:
        process.kill()
        return process.wait()


def _page_of(path):
    return int(path.stem.rpartition("-")[2])


def picture_difference(first, second):
    """Of two PGM files. What one picture has and the other has not counts as fully different,
    except for a single row or column, which a rounded page size explains."""
    width_a, height_a, points_a = read_pgm(first)
    width_b, height_b, points_b = read_pgm(second)
    width, height = min(width_a, width_b), min(height_a, height_b)
    total = _difference_of(points_a, width_a, points_b, width_b, width, height)
    counted = width * height
    if abs(width_a - width_b) > 1 or abs(height_a - height_b) > 1:
        uncovered = max(width_a, width_b) * max(height_a, height_b) - counted
        total += 255 * uncovered
        counted += uncovered
    return 100.0 * total / (255 * counted)


def _difference_of(points_a, width_a, points_b, width_b, width, height):
    total = 0
    for row in range(height):
        a = points_a[row * width_a : row * width_a + width]
        b = points_b[row * width_b : row * width_b + width]
        if a != b:
            total += sum(map(abs, map(sub, a, b)))
    return total


def read_pgm(path):
    """(width, height, one byte per point) of a binary PGM with 256 grays."""
    data = Path(path).read_bytes()
    kind, width, height, white = data[:64].split(maxsplit=4)[:4]
    if kind != b"P5" or white != b"255":
        raise RenderError(f"not a picture of 256 grays: {path}")
    width, height = int(width), int(height)
    points = data[len(data) - width * height :]
    return width, height, points
