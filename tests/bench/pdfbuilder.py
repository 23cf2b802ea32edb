"""Writes small PDFs for the tests, object by object."""

from dataclasses import dataclass, field


@dataclass
class Page:
    """One page: lines of text from its top, and whatever else goes into its dictionary."""

    lines: list = field(default_factory=list)
    box: tuple = (0, 0, 300, 400)
    extra: str = ""
    annotations: list = field(default_factory=list)
    transparent: bool = False
    left: int = 40


class PdfBuilder:
    """Numbers are given out as objects are added; `page_reference` is known beforehand."""

    def __init__(self, pages):
        self._pages = pages
        self._objects = {}
        self._catalog = ""
        self._info = ""
        self._next = 10 + 10 * len(pages)

    @staticmethod
    def page_reference(number):
        return f"{10 * number} 0 R"

    def add(self, body):
        self._objects[self._next] = body
        self._next += 1
        return f"{self._next - 1} 0 R"

    def replace(self, reference, body):
        self._objects[int(reference.split()[0])] = body

    def catalog(self, entries):
        self._catalog += " " + entries
        return self

    def info(self, entries):
        self._info += " " + entries
        return self

    def outline(self, first, last, count):
        root = self.add(f"<< /Type /Outlines /First {first} /Last {last} /Count {count} >>")
        return self.catalog(f"/Outlines {root}")

    def write(self, path):
        self._fixed_objects()
        for number, page in enumerate(self._pages, 1):
            self._page_objects(number, page)
        out, places = bytearray(b"%PDF-1.6\n"), {}
        for number in sorted(self._objects):
            places[number] = len(out)
            out += f"{number} 0 obj\n{self._objects[number]}\nendobj\n".encode("latin-1")
        path.write_bytes(bytes(out) + self._cross_references(places, len(out)))
        return path

    def _fixed_objects(self):
        kids = " ".join(self.page_reference(number) for number in range(1, len(self._pages) + 1))
        self._objects[1] = f"<< /Type /Catalog /Pages 2 0 R{self._catalog} >>"
        self._objects[2] = f"<< /Type /Pages /Kids [{kids}] /Count {len(self._pages)} >>"
        self._objects[3] = "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica /Encoding /WinAnsiEncoding >>"
        self._objects[4] = "<< /Type /ExtGState /ca 0.5 >>"
        self._objects[5] = f"<<{self._info} >>"

    def _page_objects(self, number, page):
        content = self._content(page)
        annotations = " ".join(self.add(annotation) for annotation in page.annotations)
        self._objects[10 * number] = (
            f"<< /Type /Page /Parent 2 0 R /MediaBox [{' '.join(map(str, page.box))}] {page.extra}"
            f" /Resources << /Font << /F 3 0 R >> /ExtGState << /G 4 0 R >> >>"
            f" /Contents {10 * number + 1} 0 R /Annots [{annotations}] >>"
        )
        self._objects[10 * number + 1] = f"<< /Length {len(content)} >>\nstream\n{content}\nendstream"

    @staticmethod
    def _content(page):
        parts = ["/G gs"] if page.transparent else []
        for at, line in enumerate(page.lines):
            parts.append(f"BT /F 12 Tf {page.left} {page.box[3] - 40 - 20 * at} Td ({line}) Tj ET")
        return "\n".join(parts)

    def _cross_references(self, places, start):
        lines = ["xref", "0 1", "0000000000 65535 f "]
        for number, place in sorted(places.items()):
            lines += [f"{number} 1", f"{place:010d} 00000 n "]
        size = max(places) + 1
        lines += [f"trailer << /Size {size} /Root 1 0 R /Info 5 0 R >>", "startxref", str(start), "%%EOF", ""]
        return "\n".join(lines).encode("latin-1")


def web_link(address, rect=(40, 340, 120, 356)):
    return f"<< /Type /Annot /Subtype /Link /Rect [{_numbers(rect)}] /A << /S /URI /URI ({address}) >> >>"


def page_link(destination, rect=(40, 300, 120, 316)):
    return f"<< /Type /Annot /Subtype /Link /Rect [{_numbers(rect)}] /Dest {destination} >>"


def action_link(destination, rect=(40, 300, 120, 316)):
    return f"<< /Type /Annot /Subtype /Link /Rect [{_numbers(rect)}] /A << /S /GoTo /D {destination} >> >>"


def _numbers(values):
    return " ".join(map(str, values))


def sample(pages=None, info="/Title (A title) /Author (An author)"):
    """A document with everything that is compared: words, links, bookmarks and properties."""
    second = PdfBuilder.page_reference(2)
    pages = pages or [
        Page(["First page words", "go somewhere"], annotations=[
            web_link("http://example.org/a"), page_link(f"[{second} /XYZ 40 300 0]"),
        ]),
        Page(["Second page here", "ends"]),
    ]  # fmt: skip
    builder = PdfBuilder(pages).info(info)
    chapter = builder.add(f"<< /Title (Chapter) /Dest [{PdfBuilder.page_reference(1)} /Fit] >>")
    builder.outline(chapter, chapter, 1)
    return builder
