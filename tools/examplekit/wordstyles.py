"""The styles, lists and footer of the handbook."""

from .archive import HEADER
from .wordkit import NAMES, text

GREEN, DARK, GREY = "3F6B3A", "24421F", "5C665A"
SANS, SERIF = "Liberation Sans", "Liberation Serif"


def style(key, name, base="Normal", look="", run="", kind="paragraph"):
    after = f'<w:basedOn w:val="{base}"/>' if base else ""
    quick = "<w:qFormat/>" if kind == "paragraph" else ""
    para = f"<w:pPr>{look}</w:pPr>" if look else ""
    first = ' w:default="1"' if key == "Normal" else ""
    return (f'<w:style w:type="{kind}"{first} w:styleId="{key}"><w:name w:val="{name}"/>{after}'
            f"{quick}{para}<w:rPr>{run}</w:rPr></w:style>")


def font(name, size, colour="", bold=False, italic=False):
    return (f'<w:rFonts w:ascii="{name}" w:hAnsi="{name}" w:cs="DejaVu Sans"/>'
            + ("<w:b/><w:bCs/>" if bold else "") + ("<w:i/><w:iCs/>" if italic else "")
            + (f'<w:color w:val="{colour}"/>' if colour else "")
            + f'<w:sz w:val="{size}"/><w:szCs w:val="{size}"/>')


def space(before, after, line=0, more=""):
    tall = f' w:line="{line}" w:lineRule="auto"' if line else ""
    return f'{more}<w:spacing w:before="{before}" w:after="{after}"{tall}/>'


def contents_style(level):
    tabs = '<w:tabs><w:tab w:val="right" w:leader="dot" w:pos="9298"/></w:tabs>'
    indent = f'<w:ind w:left="{(level - 1) * 340}"/>'
    return style(f"TOC{level}", f"toc {level}", "Normal",
                 tabs + '<w:spacing w:before="60" w:after="40"/>' + indent,
                 "<w:b/>" if level == 1 else "")


def styles():
    keep = "<w:keepNext/><w:keepLines/>"
    level = '<w:outlineLvl w:val="{}"/>'
    parts = [
        style("Normal", "Normal", "", "", font(SERIF, 22) + '<w:lang w:val="en-GB"/>'),
        style("BodyText", "Body Text", look=space(0, 140, 288)),
        style("Title", "Title", look=space(0, 80), run=font(SANS, 64, "FFFFFF", True)),
        style("Subtitle", "Subtitle", look=space(0, 0), run=font(SANS, 26, "EAF3E4")),
        style("Heading1", "heading 1", look=space(0, 200, 0, keep) + level.format(0),
              run=font(SANS, 40, GREEN, True)),
        style("Heading2", "heading 2", look=space(280, 100, 0, keep) + level.format(1),
              run=font(SANS, 28, DARK, True)),
        style("Heading3", "heading 3", look=space(200, 80, 0, keep) + level.format(2),
              run=font(SANS, 23, GREY, True)),
        style("TOCHeading", "TOC Heading", look=space(0, 240), run=font(SANS, 40, GREEN, True)),
        contents_style(1), contents_style(2), contents_style(3),
        style("ListParagraph", "List Paragraph", look=space(0, 70, 276)),
        style("Caption", "caption", look=space(80, 220), run=font(SANS, 18, GREY, italic=True)),
        style("TableText", "Table Text", look=space(0, 0), run=font(SANS, 19)),
        style("TableHead", "Table Head", look=space(0, 0), run=font(SANS, 19, "FFFFFF", True)),
        style("Quote", "Quote", look='<w:pBdr><w:left w:val="single" w:sz="24" w:space="12" '
              f'w:color="{GREEN}"/></w:pBdr>' + space(160, 200, 288) + '<w:ind w:left="400"/>',
              run=font(SERIF, 24, DARK, italic=True)),
        style("Footer", "footer", look=space(0, 0), run=font(SANS, 17, GREY)),
        style("FootnoteText", "footnote text", look=space(0, 40), run=font(SERIF, 18)),
        style("FootnoteReference", "footnote reference", "", "",
              '<w:vertAlign w:val="superscript"/>', "character"),
        style("Hyperlink", "Hyperlink", "", "",
              '<w:color w:val="1B5E8C"/><w:u w:val="single"/>', "character"),
    ]
    return f"{HEADER}<w:styles {NAMES}>{''.join(parts)}</w:styles>"


def list_levels(marks, formats):
    lines = []
    for level, (mark, kind) in enumerate(zip(marks, formats)):
        left = 400 + level * 400
        lines.append(f'<w:lvl w:ilvl="{level}"><w:start w:val="1"/><w:numFmt w:val="{kind}"/>'
                     f'<w:lvlText w:val="{mark}"/><w:lvlJc w:val="left"/><w:pPr>'
                     f'<w:ind w:left="{left}" w:hanging="400"/></w:pPr><w:rPr>'
                     f'<w:rFonts w:ascii="{SANS}" w:hAnsi="{SANS}"/>'
                     f'<w:color w:val="{GREEN}"/></w:rPr></w:lvl>')
    return "".join(lines)


def numbering():
    bullets = list_levels(["•", "–", "•"], ["bullet"] * 3)
    numbers = list_levels(["%1.", "%2)", "%3."], ["decimal", "lowerLetter", "lowerRoman"])
    kinds = "".join(f'<w:abstractNum w:abstractNumId="{key}"><w:multiLevelType '
                    f'w:val="multilevel"/>{levels}</w:abstractNum>'
                    for key, levels in ((1, bullets), (2, numbers)))
    uses = "".join(f'<w:num w:numId="{key}"><w:abstractNumId w:val="{key}"/></w:num>'
                   for key in (1, 2))
    return f"{HEADER}<w:numbering {NAMES}>{kinds}{uses}</w:numbering>"


def footer():
    field = "".join(f"<w:r>{part}</w:r>" for part in (
        '<w:fldChar w:fldCharType="begin"/>', "<w:instrText> PAGE </w:instrText>",
        '<w:fldChar w:fldCharType="separate"/>', "<w:t>1</w:t>",
        '<w:fldChar w:fldCharType="end"/>'))
    rule = f'<w:pBdr><w:top w:val="single" w:sz="6" w:space="6" w:color="{GREEN}"/></w:pBdr>'
    tab = '<w:jc w:val="right"/>'
    return (f'{HEADER}<w:ftr {NAMES}><w:p><w:pPr><w:pStyle w:val="Footer"/>{rule}{tab}</w:pPr>'
            f"{text('Thistlemere Garden Association  ·  ')}{field}</w:p></w:ftr>")
