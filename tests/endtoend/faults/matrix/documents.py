"""Documents that keep a stage busy for a second or so, all made here."""

OUTLINE = b"\n/Helvetica findfont 24 scalefont setfont\n"


def html(pages):
    """Pages of headings and paragraphs, for the office engine."""
    part = ("<p>Words of this <b>part</b> that fill a <i>line</i> or two, so that there is something to do for whoever "
            "has to lay them out.</p>")
    page = '<h2 style="page-break-before: {}">Part {}</h2>' + 4 * part
    body = "".join(page.format("always" if number else "auto", number) for number in range(pages))
    return f"<html><body>{body}</body></html>\n".encode()


def pdf(text, lines=1, pages=1):
    """Pages that share one content of a heading and so many lines."""
    content = b"BT /F1 24 Tf 72 700 Td (%s) Tj ET\n" % text.encode()
    content += b"".join(b"%d 72 m %d 600 l S\n" % (72 + line % 400, 72 + line * 7 % 400) for line in range(lines))
    page = (b"<< /Type /Page /Parent 2 0 R /MediaBox [0 0 595 842] /Contents 4 0 R "
            b"/Resources << /Font << /F1 3 0 R >> >> >>")
    kids = b" ".join(b"%d 0 R" % (5 + number) for number in range(pages))
    return _file([b"<< /Type /Catalog /Pages 2 0 R >>",
                  b"<< /Type /Pages /Count %d /Kids [%s] >>" % (pages, kids),
                  b"<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>",
                  b"<< /Length %d >>\nstream\n%sendstream" % (len(content), content), *[page] * pages])


def _file(objects):
    """A PDF of these objects; the first is the catalogue."""
    pieces, offsets, size = [b"%PDF-1.4\n"], [], 9
    for number, text in enumerate(objects, 1):
        offsets.append(size)
        pieces.append(b"%d 0 obj\n%s\nendobj\n" % (number, text))
        size += len(pieces[-1])
    table = b"".join(b"%010d 00000 n \n" % offset for offset in offsets)
    pieces.append(b"xref\n0 %d\n0000000000 65535 f \n%strailer\n<< /Size %d /Root 1 0 R >>\nstartxref\n%d\n%%%%EOF\n"
                  % (len(objects) + 1, table, len(objects) + 1, size))
    return b"".join(pieces)


def postscript(text, pages=1):
    page = b"1 1 %d { pop 72 700 moveto (%s) show showpage } for\n" % (pages, text.encode())
    return b"%!PS-Adobe-3.0" + OUTLINE + page


def slow_postscript(steps=30_000_000):
    """A page that is long in coming."""
    return b"%%!PS-Adobe-3.0\n1 1 %d { pop } for" % steps + OUTLINE + b"72 700 moveto (slow) show showpage\n"


def greedy_postscript():
    """Asks for memory without end."""
    return b"%!PS-Adobe-3.0\n/kept [] def { /kept [ kept 60000 string 10000 array ] def } loop\n"


def heavy_postscript(pieces=600):
    """A page whose PDF has so many pieces of 64 KB, which cannot be packed."""
    return (b"%%!PS-Adobe-3.0\n/s 65535 string def 0 1 65534 { s exch rand 8 idiv 255 and put } for\n"
            b"[/_objdef {ballast} /type /stream /OBJ pdfmark\n"
            b"%d { [{ballast} s /PUT pdfmark } repeat" % pieces + OUTLINE + b"72 700 moveto (heavy) show showpage\n")
