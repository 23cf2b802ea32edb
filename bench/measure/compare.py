"""Holds the facts of a result against those of the direct export of the same document."""

from collections import Counter, defaultdict
from dataclasses import dataclass, field

SIZE_TOLERANCE = 1.0  # points
RECT_TOLERANCE = 2.0  # points
SHOWN = 8  # examples in one deviation


@dataclass
class Tally:
    """How many of the reference's things are in the result, and how many only there."""

    total: int = 0
    kept: int = 0
    added: int = 0

    def add(self, other):
        self.total += other.total
        self.kept += other.kept
        self.added += other.added

    @property
    def whole(self):
        return self.kept == self.total

    @property
    def percent(self):
        return 100.0 * self.kept / self.total if self.total else 100.0


TALLIES = ("words", "characters", "external", "internal", "rects", "tops", "bookmarks", "info", "fonts")


@dataclass
class Comparison:
    """One document's tallies and everything about it that is not as in the direct export."""

    pages: tuple
    sizes_off: int
    bytes: tuple
    tallies: dict
    lost_title_author: int
    bookmark_order_kept: bool
    dead_links: tuple
    fonts_without_unicode: int
    deviations: list = field(default_factory=list)

    @property
    def pages_equal(self):
        return self.pages[0] == self.pages[1]

    @property
    def size_ratio(self):
        return self.bytes[1] / self.bytes[0]


def compare(direct, result):
    """Compares two `Facts`; `direct` is the reference."""
    deviations = []
    tallies = {
        "words": count(direct.words, result.words),
        "characters": count(direct.characters, result.characters),
        "fonts": embedded_fonts(result, deviations),
        "info": compare_info(direct.info, result.info, deviations),
        "bookmarks": count(Counter(direct.bookmarks), Counter(result.bookmarks)),
        **compare_links(direct.links, result.links, deviations),
    }
    order_kept = compare_bookmarks(direct.bookmarks, result.bookmarks, deviations)
    note_lost(deviations, "words", direct.words, result.words)
    return Comparison(
        pages=(len(direct.page_sizes), len(result.page_sizes)),
        sizes_off=compare_pages(direct.page_sizes, result.page_sizes, deviations),
        bytes=(direct.size_bytes, result.size_bytes),
        tallies=tallies,
        lost_title_author=sum(
            1 for name in ("Title", "Author") if direct.info[name] and direct.info[name] != result.info[name]
        ),
        bookmark_order_kept=order_kept,
        dead_links=(direct.dead_links, result.dead_links),
        fonts_without_unicode=sum(1 for font in result.fonts if not font.has_unicode),
        deviations=deviations,
    )


def count(reference, result):
    kept = (reference & result).total()
    return Tally(reference.total(), kept, result.total() - kept)


def note_lost(deviations, kind, reference, result):
    for verb, missing in (("lost", reference - result), ("added", result - reference)):
        if missing:
            examples = ", ".join(str(item) for item in sorted(missing, key=str)[:SHOWN])
            more = " …" if len(missing) > SHOWN else ""
            deviations.append(f"{kind} {verb}: {missing.total()} of {reference.total()}: {examples}{more}")


def compare_pages(direct, result, deviations):
    """The number of pages whose size differs, among those that both sides have."""
    if len(direct) != len(result):
        deviations.append(f"pages: {len(direct)} directly, {len(result)} in the result")
    off = [
        (number, reference, size)
        for number, (reference, size) in enumerate(zip(direct, result), 1)
        if any(abs(a - b) > SIZE_TOLERANCE for a, b in zip(reference, size))
    ]
    for number, reference, size in off[:SHOWN]:
        deviations.append(f"page {number}: size {_size(reference)} pt directly, {_size(size)} pt in the result")
    if len(off) > SHOWN:
        deviations.append(f"… page sizes differ on {len(off)} pages")
    return len(off)


def _size(size):
    return f"{size[0]:.2f} × {size[1]:.2f}"


def embedded_fonts(result, deviations):
    missing = sorted(font.name for font in result.fonts if not font.embedded)
    if missing:
        deviations.append(f"fonts not embedded: {', '.join(missing)}")
    return Tally(len(result.fonts), len(result.fonts) - len(missing))


def compare_info(direct, result, deviations):
    tally = Tally()
    for name, value in direct.items():
        if value:
            tally.add(Tally(1, int(result[name] == value)))
        elif result[name]:
            tally.add(Tally(0, 0, 1))
        if result[name] != value:
            deviations.append(f"{name.lower()}: {value!r} directly, {result[name]!r} in the result")
    return tally


def compare_bookmarks(direct, result, deviations):
    """True when the bookmarks that both sides have stand in the same order."""
    note_lost(deviations, "bookmarks", _described(direct), _described(result))
    both = Counter(direct) & Counter(result)
    kept = [[mark for mark in marks if mark in both] for marks in (direct, result)]
    if Counter(direct) == Counter(result) and kept[0] != kept[1]:
        deviations.append("bookmarks: all there, in another order")
        return False
    return True


def _described(bookmarks):
    return Counter(
        f"[level {mark.level} {mark.title!r} → {mark.address or f'page {mark.page}'}]" for mark in bookmarks
    )


def compare_links(direct, result, deviations):
    """Links count as kept by source page and address, or by source page and target page."""
    tallies = {"rects": Tally(), "tops": Tally()}
    for kind, key, wanted in (
        ("external", _external_key, lambda link: link.address is not None),
        ("internal", _internal_key, lambda link: link.target is not None),
    ):
        sides = [_grouped(filter(wanted, links), key) for links in (direct, result)]
        counters = [Counter({name: len(links) for name, links in side.items()}) for side in sides]
        tallies[kind] = count(*counters)
        note_lost(deviations, f"{kind} links", *counters)
        _place_kept(sides, tallies)
    for kind, words in (("rects", "link rectangles"), ("tops", "heights of internal targets")):
        moved = tallies[kind].total - tallies[kind].kept
        if moved:
            deviations.append(f"{words} off by more than {RECT_TOLERANCE:g} pt: {moved} of {tallies[kind].total}")
    return tallies


def _external_key(link):
    return f"[page {link.page} → {link.address}]"


def _internal_key(link):
    return f"[page {link.page} → page {link.target.page}]"


def _grouped(links, key):
    groups = defaultdict(list)
    for link in links:
        groups[key(link)].append(link)
    return groups


def _place_kept(sides, tallies):
    """Of the links that were kept: how many lie, and lead, where they did."""
    direct, result = sides
    for key in direct.keys() & result.keys():
        kept = min(len(direct[key]), len(result[key]))
        rects = _pairs(direct[key], result[key], lambda link: link.rect)
        tallies["rects"].add(Tally(kept, rects))
        if direct[key][0].target is not None:
            tops = _pairs(direct[key], result[key], lambda link: (link.target.top,))
            tallies["tops"].add(Tally(kept, tops))


def _pairs(direct, result, values):
    """How many of `direct` find a partner of their own in `result`, all values being near."""
    free = [values(link) for link in result]
    found = 0
    for link in direct:
        partner = next((other for other in free if _near(values(link), other)), None)
        if partner is not None:
            free.remove(partner)
            found += 1
    return found


def _near(first, second):
    return all(
        a is b if a is None or b is None else abs(a - b) <= RECT_TOLERANCE for a, b in zip(first, second)
    )
