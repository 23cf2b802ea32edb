"""The membership form, a PDF of two pages with bookmarks, links and transparency."""

import zlib

from .pictures import PHOTO, leaf_samples, meadow_jpeg

GREEN, DARK, GREY, LINK = "0.25 0.42 0.23", "0.14 0.26 0.12", "0.36 0.40 0.35", "0.11 0.37 0.55"


def encoded(words):
    """A PDF string for the page's fonts."""
    plain = words.replace("\\", "\\\\").replace("(", "\\(").replace(")", "\\)")
    return b"(" + plain.encode("cp1252") + b")"


def named(words):
    """A PDF string for bookmarks and properties."""
    return "<" + (b"\xfe\xff" + words.encode("utf-16-be")).hex() + ">"


class Pdf:
    """Objects with numbers, in the order in which they are added."""

    def __init__(self):
        self.objects = []

    def add(self, content):
        self.objects.append(content.encode("cp1252") if isinstance(content, str) else content)
        return len(self.objects)

    def stream(self, head, data, packed=True):
        if packed:
            data, head = zlib.compress(data, 9), head + " /Filter /FlateDecode"
        return self.add(f"<< {head} /Length {len(data)} >>\nstream\n".encode() + data +
                        b"\nendstream")

    def written(self, root, info):
        out, places = bytearray(b"%PDF-1.5\n%\xe2\xe3\xcf\xd3\n"), []
        for number, content in enumerate(self.objects, 1):
            places.append(len(out))
            out += f"{number} 0 obj\n".encode() + content + b"\nendobj\n"
        start = len(out)
        table = "".join(f"{place:010} 00000 n \n" for place in places)
        size = len(places) + 1
        out += (f"xref\n0 {size}\n0000000000 65535 f \n{table}trailer\n<< /Size {size} "
                f"/Root {root} 0 R /Info {info} 0 R >>\nstartxref\n{start}\n%%EOF\n").encode()
        return bytes(out)


class Page:
    """The drawing of a page, in points from its lower left corner."""

    def __init__(self):
        self.parts = []

    def raw(self, code):
        self.parts.append(code.encode())

    def text(self, x, y, words, size=11, font="F1", colour=DARK):
        self.parts.append(f"BT {colour} rg /{font} {size} Tf {x} {y} Td ".encode() +
                          encoded(words) + b" Tj ET")

    def field(self, y, label, x=60, width=475):
        self.text(x, y - 11, label, 9, "F1", GREY)
        self.raw(f"{GREY} RG 0.6 w {x} {y} m {x + width} {y} l S")

    def bytes(self):
        return b"\n".join(self.parts)


FIELDS = [("Name", 60, 300), ("Born on", 380, 155), ("Street and number", 60, 475),
          ("Postal code, town", 60, 300), ("Telephone", 380, 155), ("Electronic mail", 60, 475)]
RULES = [
    ("The garden", ["Members share the beds, the tools and the harvest of the orchard.",
                    "The gate is open from sunrise to sunset, for everyone."]),
    ("The fee", ["The yearly fee is 24, for children nothing. Whoever cannot pay it digs.",
                 "It is due on the first of March."]),
    ("Leaving", ["A letter is enough, at any time. The last cake is on us."]),
]


def first_page():
    page = Page()
    page.raw("q 0 545 596 297 re W n 596 0 0 372.5 0 470 cm /Meadow Do Q")
    page.raw("q /Soft gs 0.14 0.26 0.12 rg 0 620 596 110 re f Q")
    page.text(60, 682, "Become a member", 34, "F2", "1 1 1")
    page.text(60, 650, "Thistlemere Garden Association · Société des jardins · Gartenverein", 12,
              "F1", "1 1 1")
    page.raw("q 150 0 0 150 420 560 cm /Leaf Do Q")
    page.text(60, 505, "Please fill in, sign, and put it into the box at the shed.", 12, "F3")
    y = 470
    for label, x, width in FIELDS:
        if x == 60:
            y -= 42
        page.field(y, label, x, width)
    page.text(60, y - 45, "I would like to have", 12, "F2", GREEN)
    for k, words in enumerate(["a bed in the sun", "a bed in the shade", "a bench"]):
        page.raw(f"{GREEN} RG 1 w {60 + k * 160} {y - 74} 11 11 re S")
        page.text(78 + k * 160, y - 72, words)
    page.field(70, "Date and signature")
    page.text(60, 40, "What you agree to stands on the second page.", 10, "F1", LINK)
    return page


def second_page():
    page = Page()
    page.text(60, 770, "What we agree on", 26, "F2", GREEN)
    y, marks = 730, []
    for title, lines in RULES:
        marks.append((title, y + 22))
        page.text(60, y, title, 15, "F2")
        for words in lines:
            y -= 22
            page.text(60, y, words)
        y -= 44
    page.text(60, y, "The whole handbook: example.org/thistlemere", 11, "F1", LINK)
    for k, (colour, size) in enumerate([("0.42 0.60 0.23", 150), ("0.85 0.64 0.25", 120),
                                        ("0.78 0.27 0.18", 95)]):
        x, low, r = 230 + k * 85, 150 + k % 2 * 50, size / 2
        c = r * .5523
        page.raw(f"q /Light gs {colour} rg {x - r} {low} m {x - r} {low + c} {x - c} {low + r} {x} "
                 f"{low + r} c {x + c} {low + r} {x + r} {low + c} {x + r} {low} c {x + r} {low - c} "
                 f"{x + c} {low - r} {x} {low - r} c {x - c} {low - r} {x - r} {low - c} {x - r} {low} "
                 "c f Q")
    return page, marks, y


def pictures(pdf):
    size, colours, cover = leaf_samples(240)
    head = f"/Type /XObject /Subtype /Image /Width {size} /Height {size} /BitsPerComponent 8"
    mask = pdf.stream(f"{head} /ColorSpace /DeviceGray", cover)
    leaf = pdf.stream(f"{head} /ColorSpace /DeviceRGB /SMask {mask} 0 R", colours)
    width, height = PHOTO
    meadow = pdf.stream(f"/Type /XObject /Subtype /Image /Width {width} /Height {height} "
                        "/BitsPerComponent 8 /ColorSpace /DeviceRGB /Filter /DCTDecode", meadow_jpeg(), False)
    return leaf, meadow


def resources(pdf):
    fonts = [pdf.add(f"<< /Type /Font /Subtype /Type1 /BaseFont /{name} "
                     "/Encoding /WinAnsiEncoding >>")
             for name in ("Helvetica", "Helvetica-Bold", "Times-Italic")]
    leaf, meadow = pictures(pdf)
    listed = " ".join(f"/F{k} {number} 0 R" for k, number in enumerate(fonts, 1))
    return pdf.add(f"<< /Font << {listed} >> /XObject << /Leaf {leaf} 0 R /Meadow {meadow} 0 R >> "
                   "/ExtGState << /Soft << /ca 0.62 >> /Light << /ca 0.5 /BM /Multiply >> >> >>")


def bookmarks(pdf, pages, marks):
    """The tree of bookmarks; the number of its root."""
    root = len(pdf.objects) + 1
    form, rules, first = root + 1, root + 2, root + 3
    last = first + len(marks) - 1

    def entry(title, target, links):
        return pdf.add(f"<< /Title {named(title)} /Dest [{target}] {links} >>")
    pdf.add(f"<< /Type /Outlines /First {form} 0 R /Last {rules} 0 R /Count {2 + len(marks)} >>")
    entry("Beitrittserklärung · Membership form", f"{pages[0]} 0 R /Fit",
          f"/Parent {root} 0 R /Next {rules} 0 R")
    entry("What we agree on", f"{pages[1]} 0 R /Fit", f"/Parent {root} 0 R /Prev {form} 0 R "
          f"/First {first} 0 R /Last {last} 0 R /Count {len(marks)}")
    for k, (title, y) in enumerate(marks):
        near = (f" /Prev {first + k - 1} 0 R" if k else "") + (
            f" /Next {first + k + 1} 0 R" if first + k < last else "")
        entry(title, f"{pages[1]} 0 R /XYZ 60 {y} null", f"/Parent {rules} 0 R{near}")
    return root


def document():
    pdf = Pdf()
    shared = resources(pdf)
    second, marks, low = second_page()
    drawn = [pdf.stream("", page.bytes()) for page in (first_page(), second)]
    tree = len(pdf.objects) + 3
    pages = [tree - 2, tree - 1]
    links = [f"/Rect [58 34 300 54] /Border [0 0 0] /Dest [{pages[1]} 0 R /XYZ 0 842 null]",
             f"/Rect [58 {low - 6} 300 {low + 14}] /Border [0 0 0] "
             "/A << /S /URI /URI (https://example.org/thistlemere) >>"]
    for code, link in zip(drawn, links):
        pdf.add(f"<< /Type /Page /Parent {tree} 0 R /MediaBox [0 0 595 842] /Contents {code} 0 R "
                f"/Resources {shared} 0 R /Group << /S /Transparency /CS /DeviceRGB >> "
                f"/Annots [<< /Type /Annot /Subtype /Link {link} >>] >>")
    pdf.add(f"<< /Type /Pages /Count 2 /Kids [{pages[0]} 0 R {pages[1]} 0 R] >>")
    outline = bookmarks(pdf, pages, marks)
    info = pdf.add(f"<< /Title {named('Become a member')} "
                   f"/Author {named('Thistlemere Garden Association')} >>")
    root = pdf.add(f"<< /Type /Catalog /Pages {tree} 0 R /Outlines {outline} 0 R "
                   "/PageMode /UseOutlines /Lang (en-GB) >>")
    return pdf.written(root, info)
