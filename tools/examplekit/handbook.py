"""The association's handbook, a word-processing document."""

from .archive import HEADER, content_types, packed, properties, relations, top_relations
from .languages import SENTENCES
from .pictures import leaf_png, lights_jpeg, meadow_jpeg
from .wordkit import (NAMES, anchored, cell, footnotes, heading, item, link, note, panel, paragraph,
                      picture, picture_graphic, section, table, text)
from .wordstyles import footer, numbering, styles

CONTENTS = [
    (1, "The garden", "garden", 3), (2, "How to find us", "find", 3),
    (2, "The beds", "beds", 3), (2, "The tool shed", "shed", 4),
    (2, "The pond", "pond", 4),
    (1, "The year in the garden", "year", 5),
    (1, "Living together", "together", 6), (2, "What we agreed on", "rules", 6),
    (2, "Compost", "compost", 6), (3, "What goes on the heap", "heap", 6),
    (1, "One garden, many languages", "languages", 7),
]

NOTES = [
    "The brook has been dry only once since the association was founded, in the summer of 2018.",
    "A member is anyone who has signed the form and paid the yearly fee of 24.",
    "Lime leaves rot slowly; shred them or give them a heap of their own.",
]

YEAR = [
    ("Month", "In the beds", "Under glass", "Together", "Look out for"),
    ("January", "Rest", "Clean the panes", "Seed exchange, third Saturday", "Hazel catkins"),
    ("February", "Prune currants", "Sow leeks and celeriac", "Workshop: sharpening tools", "Snowdrops"),
    ("March", "Broad beans, onions", "Tomatoes, peppers", "Digging day", "First brimstones"),
    ("April", "Carrots, peas, chard", "Courgettes", "Spring fair", "Swallows"),
    ("May", "Beans after the 15th", "Harden off", "Plant swap", "Late frost"),
    ("June", "Leeks, kale", "Cucumbers", "Midsummer supper", "Fireflies"),
    ("July", "Water in the evening", "Air by day", "Open gate for schools", "Blight on tomatoes"),
    ("August", "Lettuce for autumn", "Harvest", "Jam afternoon", "Wasps in the plums"),
    ("September", "Lamb’s lettuce, spinach", "Clear out", "Harvest supper", "Spiders’ webs"),
    ("October", "Garlic, tulips", "Winter salads", "Cider press", "Cranes"),
    ("November", "Mulch with leaves", "Check the heating mat", "General meeting", "First hard frost"),
    ("December", "Rest", "Rest", "Lantern walk", "Mistletoe in the limes"),
]


def cover():
    photo = anchored(picture_graphic("rIdMeadow", 1, "Meadow at dusk", 29.7 * 1.6, 29.7), 1,
                     "Hills before an evening sky", (0, 0), (21, 13.125), behind=1)
    words = (paragraph("Handbook", "Title") +
             paragraph("Thistlemere Garden Association, season 2025", "Subtitle"))
    shade = anchored(panel((21, 4.2), "24421F", 62, words), 2, "The title of the handbook",
                     (0, 8.925), (21, 4.2))
    leaf = anchored(picture_graphic("rIdLeaf", 3, "Leaf", 5, 5), 3, "The association’s leaf",
                    (14.6, 11.2), (5, 5))
    gap = '<w:spacing w:before="8600" w:after="0"/>'
    return (f'<w:p><w:pPr><w:pStyle w:val="BodyText"/>{gap}</w:pPr>{photo}{shade}{leaf}</w:p>' +
            paragraph("“Whoever plants a lime tree sits in the shade of patience.”", "Quote") +
            paragraph("For everyone who digs, sows, waters, weeds, or simply sits on the bench by "
                      "the pond: what we have, how we share it, and when there is cake.") +
            section(cover=True))


def contents():
    begin = ('<w:r><w:fldChar w:fldCharType="begin"/></w:r><w:r><w:instrText xml:space="preserve">'
             ' TOC \\o "1-3" \\h \\z \\u </w:instrText></w:r>'
             '<w:r><w:fldChar w:fldCharType="separate"/></w:r>')
    end = '<w:p><w:r><w:fldChar w:fldCharType="end"/></w:r></w:p>'
    lines = []
    for number, (level, title, mark, page) in enumerate(CONTENTS):
        entry = (f'<w:hyperlink w:anchor="{mark}" w:history="1">{text(title)}<w:r><w:tab/></w:r>'
                 f"{text(str(page))}</w:hyperlink>")
        lines.append(f'<w:p><w:pPr><w:pStyle w:val="TOC{level}"/></w:pPr>'
                     f'{begin if number == 0 else ""}{entry}</w:p>')
    return paragraph("Contents", "TOCHeading") + "".join(lines) + end


def page_break():
    return '<w:p><w:r><w:br w:type="page"/></w:r></w:p>'


def page_break_before(block):
    return block.replace("</w:pPr>", "<w:pageBreakBefore/></w:pPr>", 1)


def the_garden():
    lead = '<w:spacing w:before="240" w:after="40"/>'
    return "".join([
        heading(1, "The garden", "garden"),
        paragraph(text("Thistlemere lies on a south-facing slope between the old lime avenue and "
                       "the brook.") + note(1) +
                  text(" Forty-two plots, a meadow, an orchard of nineteen trees and one very deep "
                       "pond belong to all ") + text("members", b=True) + note(2) +
                  text(" together; there are no fences inside.")),
        heading(2, "How to find us", "find"),
        paragraph(text("Take the number 7 to the terminus and follow the leaf signs. The gate is "
                       "open from sunrise to sunset. Maps and opening days are on ") +
                  link("our pages", "rIdPages") + text(", questions are answered by ") +
                  link("the gardeners’ desk", "rIdMail") + text(".")),
        heading(2, "The beds", "beds"),
        paragraph("Every bed has a letter and a number. The letter tells what it is good for:"),
        item("*A to C:* sunny and dry, for herbs, onions and everything that came from the south", 1),
        item("*D to H:* good loam, for vegetables", 1),
        item("D and E rest every third year under clover", 1, 1),
        item("F to H are watered from the brook", 1, 1),
        item("*K:* the children’s beds, where weeds are allowed", 1),
        paragraph(picture("rIdLights", 4, "Evening light between the leaves of the orchard",
                          14.1, 9.4), "BodyText", "<w:keepNext/>" + lead),
        paragraph("Evening light in the orchard, seen from bed H 4.", "Caption"),
        page_break_before(heading(2, "The tool shed", "shed")),
        paragraph(text("The shed stands behind the third lime tree. Take what you need, clean it, "
                       "bring it back on the same day and write your name on the board. Broken "
                       "things go on the red shelf, not back on the hook. What we agreed on "
                       "otherwise stands under ") + link("Living together", "#together") +
                  text(".")),
        table([3300, 1500, 1700, 2790], [
            ("Tool", "Pieces", "Hook", "Please note"),
            ("Spade, border spade", "9", "1 to 9", "Oil the handles in autumn"),
            ("Digging fork", "6", "10 to 15", "Number 12 is bent, but a good friend"),
            ("Rake", "5", "16 to 20", "Teeth to the wall"),
            ("Wheelbarrow", "4", "outside", "Tyres: 2.0 bar"),
            ("Scythe", "2", "in the loft", "Only after the course in May"),
        ], aligns=["left", "right", "left", "left"]),
        heading(2, "The pond", "pond"),
        paragraph("The pond is two and a half metres deep. It cools the orchard, feeds the "
                  "dragonflies and drowns every year at least one watering can."),
        item("Children go to the pond with somebody who can swim.", 1),
        item("No fish, please: they eat the newts.", 1),
        item("The ice does not bear. It never has.", 1),
        paragraph("“The best bench is the one by the pond, and it is always taken.”", "Quote"),
    ])


def the_year():
    return (heading(1, "The year in the garden", "year") +
            paragraph("Everything in this table is a habit, not a law. The weather decides.") +
            table([1800, 3150, 2900, 3300, 3080], YEAR))


def together():
    return "".join([
        heading(1, "Living together", "together"),
        paragraph("Forty-two plots, sixty-eight people, thirteen languages, three opinions about "
                  "slugs: it works because we talk to each other."),
        heading(2, "What we agreed on", "rules"),
        item("The gate is closed by whoever leaves last.", 2),
        item("Water is shared.", 2),
        item("The pump runs from six to nine in the morning and in the evening.", 2, 1),
        item("In dry weeks the beds with seedlings come first.", 2, 1),
        item("Nothing is sprayed that one would not drink.", 2),
        item("Who harvests elsewhere has asked before.", 2),
        item("The general meeting in November decides everything else.", 2),
        heading(2, "Compost", "compost"),
        paragraph(text("Three heaps stand beside the shed (see ") + link("The tool shed", "#shed") +
                  text("): one is being filled, one ripens, one is taken from. A sign on each says "
                       "which is which; it is moved on the first of March.")),
        heading(3, "What goes on the heap", "heap"),
        paragraph(text("Cut plants, kitchen scraps without cooked food, coffee with its filter, "
                       "straw, and leaves except those of the limes.") + note(3) +
                  text(" What does not: thistles in seed, glossy paper, and anything called "
                       "compostable on its packing.")),
        table([4645, 4645], [
            ("Brown, half of the heap", "Green, the other half"),
            ("Straw, dry leaves, twigs cut short", "Lawn cuttings, in thin layers"),
            ("Cardboard without print", "Kitchen scraps, under a cover of straw"),
            ("Wood shavings", "Nettles before they flower"),
        ]),
    ])


def sentence_row(name, code, direction, sentence, fill):
    rtl = direction == "rtl"
    marks = {"font": "DejaVu Sans", "rtl": True} if rtl else {}
    extra = "<w:bidi/>" if rtl else ""
    words = paragraph(text(sentence, lang=code, **marks), "TableText", extra)
    return ("<w:tr><w:trPr><w:cantSplit/></w:trPr>" + cell(name, 2600, fill) +
            cell(words, 6690, fill) + "</w:tr>")


def languages():
    lines = table([2600, 6690], [("Language", "The garden is open to everyone.")])
    lines = lines.removesuffix("</w:tbl>") + "".join(
        sentence_row(*entry, "EEF4EA" if number % 2 else "")
        for number, entry in enumerate(SENTENCES)) + "</w:tbl>"
    return (heading(1, "One garden, many languages", "languages") +
            paragraph("The sign at the gate says it in every language that somebody among us speaks "
                      "at home. When you bring a new one, bring a brush too.") + lines +
            paragraph() +
            paragraph(text("Back to ") + link("the first chapter", "#garden") + text(" or to ") +
                      link("our pages", "rIdPages") + text(".")))


def body():
    return "".join([cover(), contents(), page_break(), the_garden(), section(), the_year(),
                    section(landscape=True), together(), page_break(), languages(),
                    section(last=True)])


def document():
    parts = {
        "[Content_Types].xml": content_types({
            "word/document.xml": "officedocument.wordprocessingml.document.main",
            "word/styles.xml": "officedocument.wordprocessingml.styles",
            "word/numbering.xml": "officedocument.wordprocessingml.numbering",
            "word/footnotes.xml": "officedocument.wordprocessingml.footnotes",
            "word/footer1.xml": "officedocument.wordprocessingml.footer",
            "docProps/core.xml": "package.core-properties"}),
        "_rels/.rels": top_relations("word/document.xml"),
        "docProps/core.xml": properties("Thistlemere Handbook", "Season 2025",
                                        "garden, handbook, compost"),
        "word/document.xml": f"{HEADER}<w:document {NAMES}><w:body>{body()}</w:body></w:document>",
        "word/styles.xml": styles(),
        "word/numbering.xml": numbering(),
        "word/footnotes.xml": footnotes(NOTES),
        "word/footer1.xml": footer(),
        "word/media/meadow.jpg": meadow_jpeg(),
        "word/media/lights.jpg": lights_jpeg(),
        "word/media/leaf.png": leaf_png(),
        "word/_rels/document.xml.rels": relations([
            ("rId1", "styles", "styles.xml"), ("rId2", "numbering", "numbering.xml"),
            ("rId3", "footnotes", "footnotes.xml"), ("rIdFooter", "footer", "footer1.xml"),
            ("rIdMeadow", "image", "media/meadow.jpg"), ("rIdLights", "image", "media/lights.jpg"),
            ("rIdLeaf", "image", "media/leaf.png"),
            ("rIdPages", "hyperlink", "https://example.org/thistlemere"),
            ("rIdMail", "hyperlink", "mailto:desk@example.org")]),
    }
    return packed(parts)
