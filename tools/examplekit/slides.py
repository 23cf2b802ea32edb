"""The spring fair, a presentation."""

from .archive import content_types, packed, properties, relations, top_relations
from .languages import SENTENCES
from .pictures import leaf_png, lights_jpeg, meadow_jpeg
from .sheetkit import CHART, bar_chart, series
from .slidekit import (frame, gradient, layout, line, master, picture, presentation, shape, slide,
                       solid, table, theme, HEIGHT, WIDTH)

GREEN, DARK, SUN = "3F6B3A", "24421F", "D9A441"
BULLET = "•"


def title(content, colour=DARK):
    return shape(2, "Title", (2, 1.1, 29.8, 2.2), lines=line(content, 36, colour, True),
                 anchor="ctr", kind="title")


def ribbon():
    return shape(90, "Ribbon", (0, 3.3, 2 + 6.5, .14), solid(SUN))


def opening():
    band = shape(4, "Band", (0, 10.4, WIDTH, 6.2), solid(DARK, 62))
    head = shape(2, "Title", (2, 10.7, 24, 3.1), kind="title", anchor="b",
                 lines=line("Spring fair at Thistlemere", 48, "FFFFFF", True))
    below = shape(3, "Subtitle", (2, 13.8, 24, 2), kind="subTitle",
                  lines=line("Saturday, 26 April 2025, from ten o’clock until dusk", 22, "EAF3E4"))
    # The picture is a little flatter than the slide is wide; its lower edge is left out.
    crop = '<a:srcRect t="4000" b="6000"/>'
    return slide([picture(5, "Hills before an evening sky", "rIdMeadow", (0, 0, WIDTH, HEIGHT), crop),
                  band, head, below, picture(6, "A leaf", "rIdLeaf", (25.4, 9.6, 7.2, 7.2))])


def agenda():
    entries = [("Who we are", "slide:rIdS3"), ("What there is to buy", "slide:rIdS4"),
               ("What the beds gave last year", "slide:rIdS5"),
               ("Everybody is welcome", "slide:rIdS6")]
    lines = "".join(line(words, 24, GREEN, link=target, bullet=BULLET) for words, target in entries)
    circles = [shape(20 + k, "Circle", place, solid(colour, 55), form="ellipse")
               for k, (place, colour) in enumerate([
                   ((21.0, 5.2, 8, 8), "6A9A3B"), ((24.6, 8.6, 7, 7), SUN),
                   ((19.6, 9.8, 6, 6), "C8452F")])]
    return slide([title("Today"), ribbon(), shape(3, "Agenda", (2, 4.6, 16, 10), lines=lines)] + circles)


def who_we_are():
    lines = "".join([
        line("Forty-two plots between the lime avenue and the brook", bullet=BULLET),
        line("Sixty-eight members, the youngest is four weeks old", bullet=BULLET),
        line("Nineteen fruit trees", bullet=BULLET),
        line("eleven apples, five plums, three pears", 18, bullet="–", level=1),
        line("One pond, two and a half metres deep", bullet=BULLET),
        line("More on our pages", colour="1B5E8C", link="rIdPages", bullet=BULLET)])
    return slide([title("Who we are"), ribbon(), shape(3, "Text", (2, 4.6, 16.4, 12), lines=lines),
                  picture(4, "Evening light between leaves", "rIdLights", (19.4, 4.9, 12.4, 8.267)),
                  shape(5, "Caption", (19.4, 13.3, 12.4, 1.2),
                        lines=line("The orchard at seven in the evening", 14, "5C665A"))])


def stalls():
    rows = [("Stall", "What", "From"), ("Lime gate", "Seedlings, herbs in pots", "10:00"),
            ("Shed", "Tools, sharpened while you wait", "11:00"),
            ("Pond", "Cake, coffee, elderflower lemonade", "11:30"),
            ("Orchard", "Grafting for beginners", "14:00"), ("Meadow", "Music until dusk", "17:00")]
    note = shape(5, "Note", (2, 14.6, 29.8, 1.8), solid(SUN, 30), form="roundRect", anchor="ctr",
                 lines=line("What is left at dusk goes to whoever helps to clear up.", 20, align="ctr"))
    return slide([title("What there is to buy"), ribbon(),
                  table(4, (2, 4.6, 29.8, 9), [7, 17.3, 5.5], rows), note])


def last_year():
    content = f'<c:chart xmlns:c="{CHART}" r:id="rIdChart"/>'
    return slide([title("What the beds gave last year"), ribbon(),
                  frame(4, "Chart", (2, 4.2, 29.8, 13), CHART, content)])


def welcome():
    cards = [shape(3, "Text", (2, 3.9, 29.8, 1.4),
                   lines=line("The garden is open to everyone", 22, "FFFFFF", align="ctr"))]
    chosen = [entry for entry in SENTENCES if entry[0] != "English"]
    for k, (_, code, direction, sentence) in enumerate(chosen):
        place = (2 + k % 2 * 15.1, 5.7 + k // 2 * 1.75, 14.7, 1.45)
        words = line(sentence, 17, "FFFFFF", align="ctr", rtl=direction == "rtl", lang=code)
        cards.append(shape(10 + k, f"Card {k + 1}", place, solid("FFFFFF", 22), words, "roundRect",
                           "ctr", inset=.1))
    back = shape(40, "Back", (11.6, 16.7, 10.6, 1.4), solid("FFFFFF", 82), form="roundRect",
                 anchor="ctr", lines=line("Back to the programme", 18, GREEN, link="slide:rIdS2", align="ctr"))
    return slide([title("Everybody is welcome", "FFFFFF")] + cards + [back],
                 gradient("2F6B52", "7FA33A", 60))


def chart():
    crops, years = ["Potatoes", "Tomatoes", "Apples", "Berries"], [
        ("2023", [266, 198, 301, 120], "A9C25D"), ("2024", [322, 221, 354.5, 133], GREEN)]
    return bar_chart("Kilograms", [
        series(k, name, f"Sheet1!${'BC'[k]}$1", crops, "Sheet1!$A$2:$A$5", values,
               f"Sheet1!${'BC'[k]}$2:${'BC'[k]}$5", colour)
        for k, (name, values, colour) in enumerate(years)], stacked=False, size=1600)


def slide_relations(number):
    entries = [("rIdLayout", "slideLayout", "../slideLayouts/slideLayout1.xml")]
    entries += [(f"rIdS{k}", "slide", f"slide{k}.xml") for k in range(2, 7) if k != number]
    extra = {1: [("rIdMeadow", "image", "../media/meadow.jpg"),
                 ("rIdLeaf", "image", "../media/leaf.png")],
             3: [("rIdLights", "image", "../media/lights.jpg"),
                 ("rIdPages", "hyperlink", "https://example.org/thistlemere")],
             5: [("rIdChart", "chart", "../charts/chart1.xml")]}
    return relations(entries + extra.get(number, []))


def document():
    decks = [opening(), agenda(), who_we_are(), stalls(), last_year(), welcome()]
    kind = "officedocument.presentationml."
    numbers = range(1, len(decks) + 1)
    parts = {
        "[Content_Types].xml": content_types({
            "ppt/presentation.xml": kind + "presentation.main",
            "ppt/slideMasters/slideMaster1.xml": kind + "slideMaster",
            "ppt/slideLayouts/slideLayout1.xml": kind + "slideLayout",
            **{f"ppt/slides/slide{k}.xml": kind + "slide" for k in numbers},
            "ppt/theme/theme1.xml": "officedocument.theme",
            "ppt/charts/chart1.xml": "officedocument.drawingml.chart",
            "docProps/core.xml": "package.core-properties"}),
        "_rels/.rels": top_relations("ppt/presentation.xml"),
        "docProps/core.xml": properties("Spring fair at Thistlemere", "26 April 2025", "garden, fair"),
        "ppt/presentation.xml": presentation(len(decks)),
        "ppt/_rels/presentation.xml.rels": relations(
            [("rIdMaster", "slideMaster", "slideMasters/slideMaster1.xml"),
             ("rIdTheme", "theme", "theme/theme1.xml")] +
            [(f"rId{k}", "slide", f"slides/slide{k}.xml") for k in numbers]),
        "ppt/slideMasters/slideMaster1.xml": master(),
        "ppt/slideMasters/_rels/slideMaster1.xml.rels": relations(
            [("rId1", "slideLayout", "../slideLayouts/slideLayout1.xml"),
             ("rId2", "theme", "../theme/theme1.xml")]),
        "ppt/slideLayouts/slideLayout1.xml": layout(),
        "ppt/slideLayouts/_rels/slideLayout1.xml.rels": relations(
            [("rId1", "slideMaster", "../slideMasters/slideMaster1.xml")]),
        "ppt/theme/theme1.xml": theme(),
        "ppt/charts/chart1.xml": chart(),
        "ppt/media/meadow.jpg": meadow_jpeg(), "ppt/media/lights.jpg": lights_jpeg(),
        "ppt/media/leaf.png": leaf_png(),
        **{f"ppt/slides/slide{k}.xml": deck for k, deck in enumerate(decks, 1)},
        **{f"ppt/slides/_rels/slide{k}.xml.rels": slide_relations(k) for k in numbers},
    }
    return packed(parts)
