"""A letter in several languages, an OpenDocument text."""

from xml.sax.saxutils import escape

from .archive import packed
from .pictures import leaf_png, lights_jpeg

OASIS = "urn:oasis:names:tc:opendocument:xmlns:"
COMPATIBLE = "xsl-fo-compatible:1.0", "svg-compatible:1.0"
PLAIN = "office", "style", "text", "table", "meta", "manifest"
SPACES = " ".join([f'xmlns:{name}="{OASIS}{name}:1.0"' for name in PLAIN] +
                  [f'xmlns:draw="{OASIS}drawing:1.0"', f'xmlns:fo="{OASIS}{COMPATIBLE[0]}"',
                   f'xmlns:svg="{OASIS}{COMPATIBLE[1]}"', 'xmlns:xlink="http://www.w3.org/1999/xlink"',
                   'xmlns:dc="http://purl.org/dc/elements/1.1/"'])
TOP = '<?xml version="1.0" encoding="UTF-8"?>\n'
KIND = "application/vnd.oasis.opendocument.text"

GREETINGS = [
    ("Deutsch", "Liebe Freundinnen und Freunde,",
     "die Kraniche sind durch, die Äpfel gepresst, und im Schuppen stehen siebenundvierzig Flaschen "
     "Saft. Wer noch keine hat, hole sie bitte vor dem ersten Frost ab. Die Gießkannen sind gezählt: "
     "Es fehlen drei, und eine ist uns zugelaufen."),
    ("Français", "Chers amis,",
     "les haies sont taillées et la mare a retrouvé son niveau. Merci à celles et ceux qui ont porté "
     "l’eau tout l’été : sans vous, ni fèves, ni framboises. Rendez-vous à la fête d’hiver, où l’on "
     "mangera la soupe de potiron des beaux jours passés."),
    ("Polski", "Drodzy przyjaciele,",
     "jabłonie już śpią, a jeże znalazły swój stos gałęzi przy płocie. Prosimy, nie ruszajcie go do "
     "kwietnia. Nasiona wymieniamy w trzecią sobotę stycznia; kto ma fasolę po babci, niech ją "
     "przyniesie."),
    ("Ελληνικά", "Αγαπητοί φίλοι,",
     "ο κήπος ξεκουράζεται, αλλά εμείς όχι: επισκευάζουμε τον φράχτη και διαβάζουμε καταλόγους "
     "σπόρων. Η ελιά στη γλάστρα πέρασε μέσα. Σας περιμένουμε με ζεστό τσάι."),
    ("Українська", "Дорогі друзі,",
     "часник посаджено, лійки пораховано, їжаки сплять. Навесні ми знову відкриємо хвіртку на "
     "світанку. Приходьте з дітьми: для них є окремі грядки."),
    ("Tiếng Việt", "Các bạn thân mến,",
     "khu vườn đã ngủ yên dưới lớp lá. Những hạt giống rau muống và tía tô được cất trong tủ khô. "
     "Mùa xuân tới, chúng ta lại gặp nhau bên bờ ao."),
    ("עברית", "חברים יקרים,",
     "הגן נח עכשיו, והשער נסגר עם השקיעה. הביאו איתכם זרעים, סיפורים ועוגה. באביב ניפגש שוב ליד "
     "הברכה."),
    ("العربية", "أصدقاءنا الأعزاء،",
     "الحديقة نائمة الآن، والبوابة تُغلق عند الغروب. أحضروا معكم البذور والحكايات والكعك. نلتقي في "
     "الربيع قرب البركة."),
]
RIGHT_TO_LEFT = {"עברית", "العربية"}
RIGHT = 'style:writing-mode="rl-tb" fo:text-align="right"'


def paragraph(content, style):
    return f'<text:p text:style-name="{style}">{content}</text:p>'


def heading(content, level, mark, style=""):
    style = style or f"Heading_20_{level}"
    return (f'<text:h text:style-name="{style}" text:outline-level="{level}">'
            f'<text:bookmark text:name="{mark}"/>{content}</text:h>')


def link(content, target):
    return (f'<text:a xlink:type="simple" xlink:href="{target}" text:style-name="Link">'
            f"{content}</text:a>")


def picture(name, path, width, height, anchor="as-char", style="Inline", place=""):
    return (f'<draw:frame draw:style-name="{style}" draw:name="{name}" text:anchor-type="{anchor}" '
            f'svg:width="{width}cm" svg:height="{height}cm" {place}><draw:image '
            f'xlink:href="{path}" xlink:type="simple" xlink:show="embed" xlink:actuate="onLoad"/>'
            f"<svg:title>{name}</svg:title></draw:frame>")


def look(name, family, parent="", para="", run="", more=""):
    above = f' style:parent-style-name="{parent}"' if parent else ""
    display = f' style:display-name="{name.replace("_20_", " ")}"'
    return (f'<style:style style:name="{name}"{display} style:family="{family}"{above}{more}>'
            + (f"<style:paragraph-properties {para}/>" if para else "")
            + (f"<style:text-properties {run}/>" if run else "") + "</style:style>")


def font(name, size, colour="", bold=False):
    lines = [f'{part}="{name}"' for part in ("style:font-name", "fo:font-family")]
    lines += ['style:font-family-complex="DejaVu Sans"', f'fo:font-size="{size}pt"',
              f'style:font-size-complex="{size}pt"']
    if colour:
        lines.append(f'fo:color="#{colour}"')
    if bold:
        lines.append('fo:font-weight="bold" style:font-weight-complex="bold"')
    return " ".join(lines[1:])


def page_layout():
    rule = 'fo:border-top="0.5pt solid #3f6b3a" fo:padding-top="0.2cm"'
    return ('<style:page-layout style:name="A4"><style:page-layout-properties fo:page-width="21cm" '
            'fo:page-height="29.7cm" style:print-orientation="portrait" fo:margin="2.2cm"/>'
            f'<style:footer-style><style:header-footer-properties fo:min-height="0.8cm" {rule} '
            'fo:margin-top="0.5cm"/></style:footer-style></style:page-layout>')


def styles():
    keep = 'fo:keep-with-next="always" '
    named = "".join([
        look("Standard", "paragraph", run=font("Liberation Serif", 11)),
        look("Text", "paragraph", "Standard", 'fo:margin-bottom="0.22cm" fo:line-height="122%"'),
        look("Right_20_text", "paragraph", "Text", RIGHT, font("DejaVu Sans", 11)),
        look("Address", "paragraph", "Text", keep + 'fo:margin-bottom="0.1cm"',
             'fo:font-style="italic"'),
        look("Right_20_address", "paragraph", "Address", RIGHT, font("DejaVu Sans", 11)),
        look("Right_20_heading", "paragraph", "Heading_20_2", RIGHT,
             font("DejaVu Sans", 13, "5c665a", True)),
        look("Lead", "paragraph", "Standard", 'fo:margin-bottom="0.6cm" fo:line-height="140%"',
             font("Liberation Serif", 14, "24421f")),
        look("Big", "paragraph", "Standard", 'fo:margin-bottom="0.1cm"',
             font("Liberation Sans", 30, "3f6b3a", True)),
        look("Entry", "paragraph", "Standard", 'fo:margin-bottom="0.1cm"', font("Liberation Sans", 10)),
        look("Small", "paragraph", "Standard", "", font("Liberation Sans", 9, "5c665a")),
        look("Cell", "paragraph", "Standard", "", font("Liberation Sans", 10)),
        look("Head", "paragraph", "Standard", "", font("Liberation Sans", 10, "ffffff", True)),
        look("Heading_20_1", "paragraph", "Standard",
             keep + 'fo:margin-top="0.5cm" fo:margin-bottom="0.15cm"',
             font("Liberation Sans", 17, "24421f", True), ' style:default-outline-level="1"'),
        look("Heading_20_2", "paragraph", "Standard",
             keep + 'fo:margin-top="0.25cm" fo:margin-bottom="0.08cm"',
             font("Liberation Sans", 13, "5c665a", True), ' style:default-outline-level="2"'),
        look("Link", "text", run='fo:color="#1b5e8c" style:text-underline-style="solid"')])
    foot = paragraph("Thistlemere Garden Association · <text:page-number>1</text:page-number>", "Small")
    return (f'{TOP}<office:document-styles {SPACES} office:version="1.3"><office:styles>{named}'
            f"</office:styles><office:automatic-styles>{page_layout()}</office:automatic-styles>"
            '<office:master-styles><style:master-page style:name="Standard" '
            f'style:page-layout-name="A4"><style:footer>{foot}</style:footer></style:master-page>'
            "</office:master-styles></office:document-styles>")


def automatic_styles():
    def graphic(name, properties):
        return (f'<style:style style:name="{name}" style:family="graphic"><style:graphic-properties '
                f"{properties}/></style:style>")

    def cell(name, properties):
        return (f'<style:style style:name="{name}" style:family="table-cell">'
                f'<style:table-cell-properties fo:padding="0.12cm" {properties}/></style:style>')
    columns = "".join(f'<style:style style:name="C{k}" style:family="table-column">'
                      f'<style:table-column-properties style:column-width="{w}cm"/></style:style>'
                      for k, w in ((1, 4.2), (2, 12)))
    return "".join([
        graphic("Inline", 'style:vertical-pos="middle" style:vertical-rel="line"'),
        graphic("Corner", 'style:wrap="run-through" style:run-through="background" '
                          'style:horizontal-pos="from-left" style:horizontal-rel="page" '
                          'style:vertical-pos="from-top" style:vertical-rel="page"'),
        graphic("Veil", 'draw:fill="solid" draw:fill-color="#d9a441" draw:opacity="35%" '
                        'draw:stroke="none" style:wrap="run-through" style:run-through="background" '
                        'style:horizontal-pos="from-left" style:horizontal-rel="page" '
                        'style:vertical-pos="from-top" style:vertical-rel="page"'),
        '<style:style style:name="T" style:family="table"><style:table-properties '
        'style:width="16.2cm" table:align="left" fo:margin-top="0.2cm"/></style:style>', columns,
        cell("Top", 'fo:background-color="#3f6b3a"'),
        cell("Row", 'fo:border-bottom="0.5pt solid #b9cdb2"')])


def circle(x, y, size):
    return (f'<draw:ellipse draw:style-name="Veil" text:anchor-type="paragraph" svg:x="{x}cm" '
            f'svg:y="{y}cm" svg:width="{size}cm" svg:height="{size}cm" draw:z-index="0"/>')


def dates():
    rows = [("When", "What"), ("Saturday, 6 December", "Lantern walk, from the gate at five"),
            ("Saturday, 17 January", "Seed exchange in the shed"),
            ("Sunday, 15 February", "Workshop: how to sharpen a scythe"),
            ("Saturday, 25 April", "Spring fair")]
    lines = []
    for number, cells in enumerate(rows):
        kind, style = ("Top", "Head") if number == 0 else ("Row", "Cell")
        inner = "".join(f'<table:table-cell table:style-name="{kind}" office:value-type="string">'
                        f"{paragraph(words, style)}</table:table-cell>" for words in cells)
        lines.append(f"<table:table-row>{inner}</table:table-row>")
    return ('<table:table table:name="Dates" table:style-name="T">'
            '<table:table-column table:style-name="C1"/><table:table-column table:style-name="C2"/>'
            f"{''.join(lines)}</table:table>")


def greetings():
    parts = []
    for number, (language, address, words) in enumerate(GREETINGS, 1):
        right = language in RIGHT_TO_LEFT
        parts += [heading(language, 2, f"part{number}", "Right_20_heading" if right else ""),
                  paragraph(address, "Right_20_address" if right else "Address"),
                  paragraph(words, "Right_20_text" if right else "Text")]
    return "".join(parts)


def body():
    drawn = circle(15.2, -1.6, 8) + circle(18.2, 3.6, 4.4)
    leaf = picture("A leaf", "Pictures/leaf.png", 4.2, 4.2, "paragraph", "Corner",
                   'svg:x="15.6cm" svg:y="1.2cm"')
    entries = [paragraph(link(escape(language), f"#part{number}"), "Entry")
               for number, (language, _, _) in enumerate(GREETINGS, 1)]
    note = ('<text:note text:id="n1" text:note-class="footnote"><text:note-citation>1'
            "</text:note-citation><text:note-body>" +
            paragraph("<text:s/>Soup, bread and blankets are there; bring a cup.", "Small") +
            "</text:note-body></text:note>")
    return "".join([
        paragraph(drawn + leaf + "Grüße aus", "Big"), paragraph("Thistlemere", "Big"),
        paragraph("Winter letter 2025", "Lead"),
        *entries,
        heading("What comes next", 1, "dates"), dates(),
        paragraph("", "Text"),
        paragraph(f"We meet by the fire, in every weather.{note} Whoever cannot come finds pictures "
                  f"on {link('our pages', 'https://example.org/thistlemere/letters')}.", "Text"),
        paragraph(picture("Evening light", "Pictures/lights.jpg", 11.1, 7.4), "Text"),
        heading("Eight letters", 1, "letters"), greetings()])


def meta():
    return (f'{TOP}<office:document-meta {SPACES} office:version="1.3"><office:meta>'
            "<dc:title>Grüße aus Thistlemere</dc:title><dc:subject>Winter letter 2025</dc:subject>"
            "<meta:initial-creator>Thistlemere Garden Association</meta:initial-creator>"
            "<dc:creator>Thistlemere Garden Association</dc:creator>"
            "<meta:keyword>garden</meta:keyword><dc:date>2025-03-01T09:00:00</dc:date>"
            "</office:meta></office:document-meta>")


def manifest():
    files = {"/": KIND, "content.xml": "text/xml", "styles.xml": "text/xml", "meta.xml": "text/xml",
             "Pictures/leaf.png": "image/png", "Pictures/lights.jpg": "image/jpeg"}
    lines = "".join(f'<manifest:file-entry manifest:full-path="{name}" manifest:media-type="{kind}"/>'
                    for name, kind in files.items())
    return (f'{TOP}<manifest:manifest xmlns:manifest="{OASIS}manifest:1.0" '
            f'manifest:version="1.3">{lines}</manifest:manifest>')


def document():
    content = (f'{TOP}<office:document-content {SPACES} office:version="1.3">'
               f"<office:automatic-styles>{automatic_styles()}</office:automatic-styles>"
               f"<office:body><office:text>{body()}</office:text></office:body>"
               "</office:document-content>")
    return packed({"mimetype": KIND, "content.xml": content, "styles.xml": styles(),
                   "meta.xml": meta(), "META-INF/manifest.xml": manifest(),
                   "Pictures/leaf.png": leaf_png(), "Pictures/lights.jpg": lights_jpeg()}, "mimetype")
