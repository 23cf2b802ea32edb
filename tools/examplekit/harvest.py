"""The harvest of a year, a workbook with a chart."""

from .archive import HEADER, OFFICE, content_types, packed, properties, relations, top_relations
from .sheetkit import (CHART, DRAW, NAMES, bar_chart, cell, column, row, series, sheet, styles)

MONTHS = ["May", "June", "July", "August", "September", "October"]
CROPS = [
    ("Potatoes", [0, 12.5, 64, 118.5, 96, 31], "8C6A3C"),
    ("Tomatoes", [0, 3, 48.5, 92, 71.5, 6], "C8452F"),
    ("Beans", [0, 9.5, 41, 38, 17.5, 2], "5E8F4E"),
    ("Courgettes", [1.5, 22, 58, 49.5, 20, 1], "A9C25D"),
    ("Apples", [0, 0, 7, 44, 160.5, 143], "D9A441"),
    ("Berries", [4, 46.5, 52, 18, 9, 3.5], "7A4A86"),
]
SEEDS = [
    ("Broad bean “Early Bird”", 45731, 3.20, 0.93, "H 2"),
    ("Tomato “Old Brick”", 45719, 2.80, 0.88, "B 1"),
    ("Lettuce “Snail’s Regret”", 45748, 1.90, 0.97, "D 4"),
    ("Courgette “Long Enough”", 45762, 2.50, 0.91, "F 3"),
    ("Leek “Winter Flag”", 45707, 2.10, 0.84, "G 1"),
    ("Sunflower “Gatekeeper”", 45767, 1.20, 0.95, "K 1"),
]
TOMATO = [
    ("English", "tomato"), ("French", "tomate"), ("German", "Tomate, Paradeiser"),
    ("Spanish", "tomate, jitomate"), ("Polish", "pomidor"), ("Czech", "rajče"),
    ("Hungarian", "paradicsom"), ("Turkish", "domates"), ("Vietnamese", "cà chua"),
    ("Greek", "ντομάτα"), ("Russian", "помидор"), ("Ukrainian", "помідор"),
    ("Hebrew", "עגבנייה"), ("Arabic", "طماطم"),
]


def harvest_sheet():
    first, last = 4, 3 + len(CROPS)
    rows = [row(1, [cell("A1", "Harvest 2025", "title")], 32),
            row(2, [cell("A2", "Everything that was weighed at the shed, in kilograms.", "note")], 20)]
    head = [cell("A3", "Crop", "head")]
    head += [cell(f"{column(k)}3", month, "head_right") for k, month in enumerate(MONTHS, 1)]
    rows.append(row(3, head + [cell("H3", "Year", "head_right"), cell("I3", "Share", "head_right")], 22))
    total = sum(sum(values) for _, values, _ in CROPS)
    for number, (name, values, _) in enumerate(CROPS, first):
        cells = [cell(f"A{number}", name, "text")]
        cells += [cell(f"{column(k)}{number}", v, "kilo") for k, v in enumerate(values, 1)]
        cells.append(cell(f"H{number}", sum(values), "kilo", f"SUM(B{number}:G{number})"))
        cells.append(cell(f"I{number}", sum(values) / total, "share", f"H{number}/H${last + 1}"))
        rows.append(row(number, cells))
    sums = [cell(f"A{last + 1}", "Together", "total_text")]
    for k in range(1, 8):
        letter = column(k)
        value = total if k == 7 else sum(values[k - 1] for _, values, _ in CROPS)
        sums.append(cell(f"{letter}{last + 1}", value, "total", f"SUM({letter}{first}:{letter}{last})"))
    rows.append(row(last + 1, sums + [cell(f"I{last + 1}", None, "total_text")], 22))
    rows.append(row(last + 3, [cell(f"A{last + 3}", "What was sown stands on the sheet Seeds.", "link")]))
    return sheet([20] + [13] * 6 + [14, 11], rows, drawing="rId1",
                 links=[(f"A{last + 3}", "#Seeds!A1", "Seeds")])


def seeds_sheet():
    rows = [row(1, [cell("A1", "Seeds", "title")], 32),
            row(2, [cell("A2", "Bought together in February; prices for one packet.", "note")], 20)]
    names = ["Variety", "Bed", "Sown on", "Price", "Came up"]
    rows.append(row(3, [cell(f"{column(k)}3", name, "head" if k < 3 else "head_right")
                        for k, name in enumerate(names)], 22))
    for number, (name, day, price, share, bed) in enumerate(SEEDS, 4):
        rows.append(row(number, [
            cell(f"A{number}", name, "text"), cell(f"B{number}", bed, "text"),
            cell(f"C{number}", day, "date"), cell(f"D{number}", price, "money"),
            cell(f"E{number}", share, "share")]))
    end = 4 + len(SEEDS)
    price = sum(entry[2] for entry in SEEDS)
    mean = sum(entry[3] for entry in SEEDS) / len(SEEDS)
    rows.append(row(end, [
        cell(f"A{end}", "Together", "total_text"), cell(f"B{end}", None, "total_text"),
        cell(f"C{end}", None, "total_text"),
        cell(f"D{end}", round(price, 2), "total_money", f"SUM(D4:D{end - 1})"),
        cell(f"E{end}", round(mean, 6), "total_share", f"AVERAGE(E4:E{end - 1})")], 22))
    rows.append(row(end + 2, [cell(f"A{end + 2}", "How to save your own seed", "link")]))
    rows.append(row(end + 3, [cell(f"A{end + 3}", "Back to the harvest", "link")]))
    return sheet([34, 12, 22, 12, 14], rows, landscape=False, color="D9A441",
                 links=[(f"A{end + 2}", "rId1", "Seed saving"),
                        (f"A{end + 3}", "#'Harvest'!A1", "Harvest")])


def names_sheet():
    rows = [row(1, [cell("A1", "What we call a tomato", "title")], 32),
            row(3, [cell("A3", "Language", "head"), cell("B3", "Name", "head")], 22)]
    for number, (language, name) in enumerate(TOMATO, 4):
        look = "right_to_left" if language in ("Hebrew", "Arabic") else "text"
        rows.append(row(number, [cell(f"A{number}", language, "text"), cell(f"B{number}", name, look)]))
    return sheet([28, 44], rows, landscape=False, color="C8452F")


def chart():
    end = column(len(MONTHS))
    return bar_chart("Harvest by month, kilograms", [
        series(k, name, f"Harvest!$A${k + 4}", MONTHS, f"Harvest!$B$3:${end}$3", values,
               f"Harvest!$B${k + 4}:${end}${k + 4}", colour)
        for k, (name, values, colour) in enumerate(CROPS)])


def drawing():
    frame = (f'<xdr:graphicFrame macro=""><xdr:nvGraphicFramePr><xdr:cNvPr id="2" name="Chart 1" '
             'descr="Columns: the harvest of each month"/><xdr:cNvGraphicFramePr/>'
             '</xdr:nvGraphicFramePr><xdr:xfrm><a:off x="0" y="0"/><a:ext cx="0" cy="0"/></xdr:xfrm>'
             f'<a:graphic><a:graphicData uri="{CHART}"><c:chart xmlns:c="{CHART}" r:id="rId1"/>'
             "</a:graphicData></a:graphic></xdr:graphicFrame>")

    def corner(tag, col, line):
        return (f"<xdr:{tag}><xdr:col>{col}</xdr:col><xdr:colOff>0</xdr:colOff><xdr:row>{line}"
                f"</xdr:row><xdr:rowOff>0</xdr:rowOff></xdr:{tag}>")
    space = "http://schemas.openxmlformats.org/drawingml/2006/spreadsheetDrawing"
    return (f'{HEADER}<xdr:wsDr xmlns:xdr="{space}" xmlns:a="{DRAW}" '
            f'xmlns:r="{OFFICE}/relationships"><xdr:twoCellAnchor>{corner("from", 0, 13)}'
            f'{corner("to", 9, 28)}{frame}<xdr:clientData/></xdr:twoCellAnchor></xdr:wsDr>')


def workbook():
    names = ["Harvest", "Seeds", "Names"]
    sheets = "".join(f'<sheet name="{name}" sheetId="{k}" r:id="rId{k}"/>'
                     for k, name in enumerate(names, 1))
    return f"{HEADER}<workbook {NAMES}><sheets>{sheets}</sheets></workbook>"


def document():
    kind = "officedocument.spreadsheetml."
    parts = {
        "[Content_Types].xml": content_types({
            "xl/workbook.xml": kind + "sheet.main", "xl/styles.xml": kind + "styles",
            **{f"xl/worksheets/sheet{k}.xml": kind + "worksheet" for k in (1, 2, 3)},
            "xl/drawings/drawing1.xml": "officedocument.drawing",
            "xl/charts/chart1.xml": "officedocument.drawingml.chart",
            "docProps/core.xml": "package.core-properties"}),
        "_rels/.rels": top_relations("xl/workbook.xml"),
        "docProps/core.xml": properties("Harvest 2025", "What the beds gave", "garden, harvest"),
        "xl/workbook.xml": workbook(),
        "xl/_rels/workbook.xml.rels": relations(
            [(f"rId{k}", "worksheet", f"worksheets/sheet{k}.xml") for k in (1, 2, 3)] +
            [("rId4", "styles", "styles.xml")]),
        "xl/styles.xml": styles(),
        "xl/worksheets/sheet1.xml": harvest_sheet(),
        "xl/worksheets/sheet2.xml": seeds_sheet(),
        "xl/worksheets/sheet3.xml": names_sheet(),
        "xl/worksheets/_rels/sheet1.xml.rels": relations(
            [("rId1", "drawing", "../drawings/drawing1.xml")]),
        "xl/worksheets/_rels/sheet2.xml.rels": relations(
            [("rId1", "hyperlink", "https://example.org/thistlemere/seed-saving")]),
        "xl/drawings/drawing1.xml": drawing(),
        "xl/drawings/_rels/drawing1.xml.rels": relations([("rId1", "chart", "../charts/chart1.xml")]),
        "xl/charts/chart1.xml": chart(),
    }
    return packed(parts)
