"""Pieces of a word-processing document: paragraphs, lists, tables, pictures, notes."""

from xml.sax.saxutils import escape

from .archive import HEADER, OFFICE

MAIN = "http://schemas.openxmlformats.org/wordprocessingml/2006/main"
DRAWING = "http://schemas.openxmlformats.org/drawingml/2006"
SHAPES = "http://schemas.microsoft.com/office/word/2010/wordprocessingShape"
NAMES = (f'xmlns:w="{MAIN}" xmlns:r="{OFFICE}/relationships" xmlns:a="{DRAWING}/main" '
         f'xmlns:wp="{DRAWING}/wordprocessingDrawing" xmlns:pic="{DRAWING}/picture" '
         f'xmlns:wps="{SHAPES}"')
EMU = 360000


def text(content, style="", **marks):
    """A run of text; marks: b, i, color, font, cs (complex script), rtl, lang, size in half points."""
    parts = [f'<w:rStyle w:val="{style}"/>'] if style else []
    if "font" in marks:
        font = marks["font"]
        parts.append(f'<w:rFonts w:ascii="{font}" w:hAnsi="{font}" w:cs="{font}"/>')
    parts += [f"<w:{mark}/>" for mark in ("b", "i") if marks.get(mark)]
    if "color" in marks:
        parts.append(f'<w:color w:val="{marks["color"]}"/>')
    if "size" in marks:
        parts.append(f'<w:sz w:val="{marks["size"]}"/><w:szCs w:val="{marks["size"]}"/>')
    if marks.get("rtl"):
        parts.append("<w:rtl/>")
    if "lang" in marks:
        key = "bidi" if marks.get("rtl") else "val"
        parts.append(f'<w:lang w:{key}="{marks["lang"]}"/>')
    look = f"<w:rPr>{''.join(parts)}</w:rPr>" if parts else ""
    return f'<w:r>{look}<w:t xml:space="preserve">{escape(content)}</w:t></w:r>'


def runs(content):
    """Ready-made runs, or plain text in which *stars* make bold."""
    if content.startswith("<"):
        return content
    pieces = []
    for number, part in enumerate(content.split("*")):
        if part:
            pieces.append(text(part, **({"b": True} if number % 2 else {})))
    return "".join(pieces)


def paragraph(content="", style="BodyText", extra=""):
    look = f'<w:pPr><w:pStyle w:val="{style}"/>{extra}</w:pPr>'
    return f"<w:p>{look}{runs(content) if content else ''}</w:p>"


def heading(level, content, mark):
    """A heading with a bookmark of the name `mark`."""
    number = sum(ord(c) * k for k, c in enumerate(mark, 1))
    return (f'<w:p><w:pPr><w:pStyle w:val="Heading{level}"/></w:pPr>'
            f'<w:bookmarkStart w:id="{number}" w:name="{mark}"/>{text(content)}'
            f'<w:bookmarkEnd w:id="{number}"/></w:p>')


def item(content, kind, level=0):
    """An entry of a list; kind 1 has bullets, kind 2 numbers."""
    extra = f'<w:numPr><w:ilvl w:val="{level}"/><w:numId w:val="{kind}"/></w:numPr>'
    return paragraph(content, "ListParagraph", extra)


def link(content, target, **marks):
    """A link: "#name" leads to a bookmark, anything else is the id of a relationship."""
    where = f'w:anchor="{target[1:]}"' if target.startswith("#") else f'r:id="{target}"'
    return f"<w:hyperlink {where}>{text(content, 'Hyperlink', **marks)}</w:hyperlink>"


def note(number):
    return (f'<w:r><w:rPr><w:rStyle w:val="FootnoteReference"/></w:rPr>'
            f'<w:footnoteReference w:id="{number}"/></w:r>')


def footnotes(contents):
    """The part with the notes, numbered from 1."""
    rule = ('<w:footnote w:type="separator" w:id="-1"><w:p><w:r><w:separator/></w:r></w:p>'
            '</w:footnote><w:footnote w:type="continuationSeparator" w:id="0"><w:p><w:r>'
            "<w:continuationSeparator/></w:r></w:p></w:footnote>")
    mark = '<w:r><w:rPr><w:rStyle w:val="FootnoteReference"/></w:rPr><w:footnoteRef/></w:r>'
    notes = "".join(
        f'<w:footnote w:id="{number}"><w:p><w:pPr><w:pStyle w:val="FootnoteText"/></w:pPr>{mark}'
        f"{text(' ' + content)}</w:p></w:footnote>" for number, content in enumerate(contents, 1))
    return f"{HEADER}<w:footnotes {NAMES}>{rule}{notes}</w:footnotes>"


def cell(content, width, fill="", style="TableText", align="left"):
    shade = f'<w:shd w:val="clear" w:color="auto" w:fill="{fill}"/>' if fill else ""
    body = content if content.startswith("<w:p>") else paragraph(
        content, style, f'<w:jc w:val="{align}"/>' if align != "left" else "")
    return (f'<w:tc><w:tcPr><w:tcW w:w="{width}" w:type="dxa"/>{shade}<w:vAlign w:val="center"/>'
            f"</w:tcPr>{body}</w:tc>")


def table(widths, rows, head_fill="3F6B3A", band="EEF4EA", aligns=None):
    """A table whose first row is its head, repeated on every page."""
    aligns = aligns or ["left"] * len(widths)
    grid = "".join(f'<w:gridCol w:w="{width}"/>' for width in widths)
    lines = []
    for number, row in enumerate(rows):
        fill = head_fill if number == 0 else (band if number % 2 == 0 else "")
        style = "TableHead" if number == 0 else "TableText"
        head = "<w:tblHeader/>" if number == 0 else ""
        cells = "".join(cell(c, w, fill, style, a) for c, w, a in zip(row, widths, aligns))
        lines.append(f"<w:tr><w:trPr><w:cantSplit/>{head}</w:trPr>{cells}</w:tr>")
    edge = '<w:{0} w:val="single" w:sz="4" w:space="0" w:color="B9CDB2"/>'
    borders = "".join(edge.format(side) for side in ("top", "bottom", "insideH"))
    inner = ('<w:tblCellMar><w:top w:w="50" w:type="dxa"/><w:left w:w="110" w:type="dxa"/>'
             '<w:bottom w:w="50" w:type="dxa"/><w:right w:w="110" w:type="dxa"/></w:tblCellMar>')
    return (f'<w:tbl><w:tblPr><w:tblW w:w="{sum(widths)}" w:type="dxa"/><w:tblBorders>{borders}'
            f'</w:tblBorders><w:tblLayout w:type="fixed"/>{inner}</w:tblPr>'
            f"<w:tblGrid>{grid}</w:tblGrid>{''.join(lines)}</w:tbl>")


def picture_graphic(key, number, name, width, height):
    size = f'cx="{int(width * EMU)}" cy="{int(height * EMU)}"'
    return (f'<a:graphic><a:graphicData uri="{DRAWING}/picture"><pic:pic><pic:nvPicPr>'
            f'<pic:cNvPr id="{number}" name="{name}"/><pic:cNvPicPr/></pic:nvPicPr><pic:blipFill>'
            f'<a:blip r:embed="{key}"/><a:stretch><a:fillRect/></a:stretch></pic:blipFill>'
            f'<pic:spPr><a:xfrm><a:off x="0" y="0"/><a:ext {size}/></a:xfrm>'
            '<a:prstGeom prst="rect"><a:avLst/></a:prstGeom></pic:spPr></pic:pic>'
            "</a:graphicData></a:graphic>")


def picture(key, number, name, width, height):
    """A picture in the line, sizes in centimetres; `name` is read aloud."""
    return (f'<w:r><w:drawing><wp:inline distT="0" distB="0" distL="0" distR="0">'
            f'<wp:extent cx="{int(width * EMU)}" cy="{int(height * EMU)}"/>'
            f'<wp:docPr id="{number}" name="Picture {number}" descr="{escape(name)}"/>'
            f"{picture_graphic(key, number, escape(name), width, height)}"
            "</wp:inline></w:drawing></w:r>")


def anchored(graphic, number, name, place, size, wrap="<wp:wrapNone/>", behind=0):
    """A drawing at `place` on the page with `size`, both in centimetres."""
    (x, y), (width, height) = place, size
    return (f'<w:r><w:drawing><wp:anchor distT="0" distB="0" distL="180000" distR="0" '
            f'simplePos="0" relativeHeight="{number}" behindDoc="{behind}" locked="0" '
            'layoutInCell="1" allowOverlap="1"><wp:simplePos x="0" y="0"/>'
            f'<wp:positionH relativeFrom="page"><wp:posOffset>{int(x * EMU)}</wp:posOffset>'
            f'</wp:positionH><wp:positionV relativeFrom="page"><wp:posOffset>{int(y * EMU)}'
            f'</wp:posOffset></wp:positionV><wp:extent cx="{int(width * EMU)}" '
            f'cy="{int(height * EMU)}"/>{wrap}<wp:docPr id="{number}" name="Shape {number}" '
            f'descr="{escape(name)}"/>{graphic}</wp:anchor></w:drawing></w:r>')


def panel(size, colour, alpha, content=""):
    """A rectangle of a colour that lets `100 - alpha` percent through, with text in it."""
    width, height = size
    box = f"<wps:txbx><w:txbxContent>{content}</w:txbxContent></wps:txbx>" if content else ""
    return (f'<a:graphic><a:graphicData uri="{SHAPES}"><wps:wsp><wps:cNvSpPr/><wps:spPr><a:xfrm>'
            f'<a:off x="0" y="0"/><a:ext cx="{int(width * EMU)}" cy="{int(height * EMU)}"/>'
            '</a:xfrm><a:prstGeom prst="rect"><a:avLst/></a:prstGeom><a:solidFill>'
            f'<a:srgbClr val="{colour}"><a:alpha val="{alpha * 1000}"/></a:srgbClr></a:solidFill>'
            f'<a:ln><a:noFill/></a:ln></wps:spPr>{box}<wps:bodyPr lIns="360000" rIns="360000" '
            'anchor="ctr"/></wps:wsp></a:graphicData></a:graphic>')


def section(landscape=False, last=False, cover=False):
    """The end of a section with its page size; the last one closes the document."""
    size = 'w:w="16838" w:h="11906" w:orient="landscape"' if landscape else 'w:w="11906" w:h="16838"'
    foot = "" if cover else '<w:footerReference w:type="default" r:id="rIdFooter"/>'
    look = (f'<w:sectPr>{foot}<w:type w:val="nextPage"/><w:pgSz {size}/>'
            '<w:pgMar w:top="1418" w:right="1304" w:bottom="1304" w:left="1304" w:header="709" '
            'w:footer="624" w:gutter="0"/></w:sectPr>')
    return look if last else f'<w:p><w:pPr><w:pStyle w:val="BodyText"/>{look}</w:pPr></w:p>'
