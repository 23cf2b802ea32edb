"""Pieces of a workbook: cells, styles and a chart."""

from xml.sax.saxutils import escape

from .archive import HEADER, OFFICE

MAIN = "http://schemas.openxmlformats.org/spreadsheetml/2006/main"
CHART = "http://schemas.openxmlformats.org/drawingml/2006/chart"
DRAW = "http://schemas.openxmlformats.org/drawingml/2006/main"
NAMES = f'xmlns="{MAIN}" xmlns:r="{OFFICE}/relationships"'

# The cell styles by name; the position in this list is the number that a cell carries.
LOOKS = ["plain", "title", "head", "head_right", "text", "kilo", "total_text", "total", "share",
         "money", "link", "note", "date", "right_to_left", "total_money", "total_share"]


def fonts():
    def font(size, colour, *marks):
        return (f'<font>{"".join(f"<{mark}/>" for mark in marks)}<sz val="{size}"/>'
                f'<color rgb="FF{colour}"/><name val="Liberation Sans"/><family val="2"/></font>')
    return [font(10, "202020"), font(20, "3F6B3A", "b"), font(10, "FFFFFF", "b"),
            font(10, "24421F", "b"), font(10, "1B5E8C", "u"), font(9, "5C665A", "i")]


def fills():
    solid = '<fill><patternFill patternType="solid"><fgColor rgb="FF{}"/></patternFill></fill>'
    return ['<fill><patternFill patternType="none"/></fill>',
            '<fill><patternFill patternType="gray125"/></fill>',
            solid.format("3F6B3A"), solid.format("EEF4EA")]


def borders():
    line = '<{0} style="thin"><color rgb="FFB9CDB2"/></{0}>'
    return ["<border/>", f"<border><left/><right/><top/>{line.format('bottom')}</border>",
            f"<border><left/><right/>{line.format('top')}{line.format('bottom')}</border>"]


def listed(tag, entries):
    return f'<{tag} count="{len(entries)}">{"".join(entries)}</{tag}>'


def formats():
    def look(number=0, font=0, fill=0, border=0, align="general", more=""):
        return (f'<xf numFmtId="{number}" fontId="{font}" fillId="{fill}" borderId="{border}" '
                f'xfId="0" applyNumberFormat="1" applyFont="1" applyFill="1" applyBorder="1" '
                f'applyAlignment="1"><alignment horizontal="{align}" vertical="center"{more}/></xf>')
    return [look(), look(font=1), look(font=2, fill=2), look(font=2, fill=2, align="right"),
            look(border=1), look(164, border=1), look(font=3, fill=3, border=2),
            look(164, 3, 3, 2), look(166, border=1), look(165, border=1), look(font=4), look(font=5),
            look(167, border=1, align="left"), look(border=1, align="right", more=' readingOrder="2"'),
            look(165, 3, 3, 2), look(166, 3, 3, 2)]


def styles():
    numbers = ['<numFmt numFmtId="164" formatCode="#,##0.0&quot; kg&quot;"/>',
               '<numFmt numFmtId="165" formatCode="#,##0.00"/>',
               '<numFmt numFmtId="166" formatCode="0.0%"/>',
               '<numFmt numFmtId="167" formatCode="d\\ mmmm\\ yyyy"/>']
    base = ['<xf numFmtId="0" fontId="0" fillId="0" borderId="0"/>']
    parts = [listed("numFmts", numbers), listed("fonts", fonts()), listed("fills", fills()),
             listed("borders", borders()), listed("cellStyleXfs", base),
             listed("cellXfs", formats()),
             listed("cellStyles", ['<cellStyle name="Normal" xfId="0" builtinId="0"/>'])]
    return f"{HEADER}<styleSheet {NAMES}>{''.join(parts)}</styleSheet>"


def column(number):
    return chr(ord("A") + number)


def cell(place, value, look="plain", formula=""):
    style = LOOKS.index(look)
    if formula:
        return f'<c r="{place}" s="{style}"><f>{escape(formula)}</f><v>{value}</v></c>'
    if value is None:
        return f'<c r="{place}" s="{style}"/>'
    if isinstance(value, str):
        return (f'<c r="{place}" s="{style}" t="inlineStr"><is><t xml:space="preserve">'
                f"{escape(value)}</t></is></c>")
    return f'<c r="{place}" s="{style}"><v>{value}</v></c>'


def row(number, cells, height=18):
    return f'<row r="{number}" ht="{height}" customHeight="1">{"".join(cells)}</row>'


def sheet(widths, rows, links=(), merged=(), landscape=True, drawing="", color="3F6B3A"):
    """A sheet on one page of A4 in width; each link is (cell, id or "#Sheet!A1", words)."""
    columns = "".join(f'<col min="{k}" max="{k}" width="{w}" customWidth="1"/>'
                      for k, w in enumerate(widths, 1))
    merges = listed("mergeCells", [f'<mergeCell ref="{m}"/>' for m in merged]) if merged else ""
    targets = "".join(
        f'<hyperlink ref="{place}" ' +
        (f'location="{escape(to[1:])}"' if to.startswith("#") else f'r:id="{to}"') +
        f' display="{escape(words)}"/>' for place, to, words in links)
    direction = "landscape" if landscape else "portrait"
    return (f'{HEADER}<worksheet {NAMES}><sheetPr><tabColor rgb="FF{color}"/>'
            '<pageSetUpPr fitToPage="1"/></sheetPr><sheetViews><sheetView showGridLines="0" '
            f'workbookViewId="0"/></sheetViews><sheetFormatPr defaultRowHeight="15"/>'
            f"<cols>{columns}</cols><sheetData>{''.join(rows)}</sheetData>{merges}"
            f"{f'<hyperlinks>{targets}</hyperlinks>' if targets else ''}"
            '<printOptions horizontalCentered="1"/>'
            '<pageMargins left="0.6" right="0.6" top="0.7" bottom="0.7" header="0.3" footer="0.3"/>'
            f'<pageSetup paperSize="9" orientation="{direction}" fitToWidth="1" fitToHeight="0"/>'
            "<headerFooter><oddFooter>&amp;L&amp;9Thistlemere Garden Association"
            "&amp;R&amp;9&amp;A, page &amp;P of &amp;N</oddFooter></headerFooter>"
            f'{f"""<drawing r:id="{drawing}"/>""" if drawing else ""}</worksheet>')


def series(number, name, name_ref, labels, labels_ref, values, values_ref, colour):
    points = "".join(f'<c:pt idx="{k}"><c:v>{escape(str(v))}</c:v></c:pt>'
                     for k, v in enumerate(labels))
    figures = "".join(f'<c:pt idx="{k}"><c:v>{v}</c:v></c:pt>' for k, v in enumerate(values))
    return (f'<c:ser><c:idx val="{number}"/><c:order val="{number}"/><c:tx><c:strRef><c:f>{name_ref}'
            f'</c:f><c:strCache><c:ptCount val="1"/><c:pt idx="0"><c:v>{escape(name)}</c:v></c:pt>'
            f'</c:strCache></c:strRef></c:tx><c:spPr><a:solidFill><a:srgbClr val="{colour}"/>'
            f'</a:solidFill></c:spPr><c:cat><c:strRef><c:f>{labels_ref}</c:f><c:strCache>'
            f'<c:ptCount val="{len(labels)}"/>{points}</c:strCache></c:strRef></c:cat><c:val>'
            f'<c:numRef><c:f>{values_ref}</c:f><c:numCache><c:formatCode>General</c:formatCode>'
            f'<c:ptCount val="{len(values)}"/>{figures}</c:numCache></c:numRef></c:val></c:ser>')


def axis(kind, key, other, place, size):
    grid = ('<c:majorGridlines><c:spPr><a:ln w="6350"><a:solidFill><a:srgbClr val="DDE6D9"/>'
            "</a:solidFill></a:ln></c:spPr></c:majorGridlines>" if kind == "valAx" else "")
    words = ('<c:txPr><a:bodyPr/><a:p><a:pPr><a:defRPr '
             f'sz="{size}"/></a:pPr>'
             '<a:endParaRPr lang="en-GB"/></a:p></c:txPr>')
    return (f'<c:{kind}><c:axId val="{key}"/><c:scaling><c:orientation val="minMax"/></c:scaling>'
            f'<c:delete val="0"/><c:axPos val="{place}"/>{grid}<c:numFmt formatCode="General" '
            'sourceLinked="0"/><c:majorTickMark val="none"/><c:minorTickMark val="none"/>'
            f'<c:tickLblPos val="nextTo"/>{words}<c:crossAx val="{other}"/>'
            f'<c:crosses val="autoZero"/></c:{kind}>')


def bar_chart(title, all_series, stacked=True, size=900):
    """Columns with a title above and a legend below; `size` of the letters in 1/100 point."""
    large = size + 300
    grouping, overlap = ("stacked", 100) if stacked else ("clustered", 0)
    letters = (f'<c:txPr><a:bodyPr/><a:p><a:pPr><a:defRPr sz="{size}"/></a:pPr>'
               '<a:endParaRPr lang="en-GB"/></a:p></c:txPr>')
    words = (f'<a:p><a:pPr><a:defRPr sz="{large}" b="1"/></a:pPr><a:r><a:rPr lang="en-GB" '
             f'sz="{large}" b="1"/><a:t>{escape(title)}</a:t></a:r></a:p>')
    return (f'{HEADER}<c:chartSpace xmlns:c="{CHART}" xmlns:a="{DRAW}"><c:chart><c:title><c:tx>'
            f'<c:rich><a:bodyPr/>{words}</c:rich></c:tx><c:overlay val="0"/></c:title>'
            '<c:autoTitleDeleted val="0"/><c:plotArea><c:layout/><c:barChart>'
            f'<c:barDir val="col"/><c:grouping val="{grouping}"/><c:varyColors val="0"/>'
            f"{''.join(all_series)}"
            f'<c:gapWidth val="60"/><c:overlap val="{overlap}"/><c:axId val="111"/><c:axId val="112"/>'
            f"</c:barChart>{axis('catAx', 111, 112, 'b', size)}"
            f"{axis('valAx', 112, 111, 'l', size)}"
            '</c:plotArea><c:legend><c:legendPos val="b"/><c:overlay val="0"/>'
            f"{letters}</c:legend>"
            '<c:plotVisOnly val="1"/></c:chart></c:chartSpace>')
