"""Pieces of a presentation: shapes, texts, pictures, tables, and the parts every deck needs."""

from xml.sax.saxutils import escape

from .archive import HEADER, OFFICE

DRAW = "http://schemas.openxmlformats.org/drawingml/2006/main"
MAIN = "http://schemas.openxmlformats.org/presentationml/2006/main"
NAMES = f'xmlns:a="{DRAW}" xmlns:r="{OFFICE}/relationships" xmlns:p="{MAIN}"'
WIDTH, HEIGHT = 33.867, 19.05
EMU = 360000


def box(x, y, width, height):
    return (f'<a:xfrm><a:off x="{int(x * EMU)}" y="{int(y * EMU)}"/>'
            f'<a:ext cx="{int(width * EMU)}" cy="{int(height * EMU)}"/></a:xfrm>')


def solid(colour, alpha=100):
    through = f'<a:alpha val="{alpha * 1000}"/>' if alpha < 100 else ""
    return f'<a:solidFill><a:srgbClr val="{colour}">{through}</a:srgbClr></a:solidFill>'


def gradient(first, last, angle=90):
    stops = "".join(f'<a:gs pos="{place}"><a:srgbClr val="{colour}"/></a:gs>'
                    for place, colour in ((0, first), (100000, last)))
    return (f'<a:gradFill><a:gsLst>{stops}</a:gsLst><a:lin ang="{angle * 60000}" scaled="0"/>'
            "</a:gradFill>")


def line(content, size=20, colour="2B3A28", bold=False, link="", bullet="", align="l", level=0,
         rtl=False, lang="en-GB"):
    """A paragraph. `link` is the id of a relationship; "slide:" in front of it leads to a slide."""
    action = ""
    if link.startswith("slide:"):
        action = f'<a:hlinkClick r:id="{link[6:]}" action="ppaction://hlinksldjump"/>'
    elif link:
        action = f'<a:hlinkClick r:id="{link}"/>'
    font = "DejaVu Sans" if rtl else "Liberation Sans"
    mark = (f'<a:buClr><a:srgbClr val="6A9A3B"/></a:buClr><a:buChar char="{bullet}"/>' if bullet
            else "<a:buNone/>")
    indent = f'marL="{int((level + 1) * .8 * EMU)}" indent="-{int(.8 * EMU)}" ' if bullet else ""
    return (f'<a:p><a:pPr {indent}algn="{align}" rtl="{int(rtl)}"><a:spcAft><a:spcPts val="600"/>'
            f'</a:spcAft>{mark}</a:pPr><a:r><a:rPr lang="{lang}" sz="{size * 100}" b="{int(bold)}">'
            f'{solid(colour)}<a:latin typeface="{font}"/><a:cs typeface="DejaVu Sans"/>{action}'
            f"</a:rPr><a:t>{escape(content)}</a:t></a:r></a:p>")


def shape(number, name, place, fill="", lines="", form="rect", anchor="t", kind="", inset=0.25):
    """A shape or a box of text; `kind` names the placeholder it fills (title, subTitle, body)."""
    holder = f'<p:nvPr><p:ph type="{kind}"/></p:nvPr>' if kind else "<p:nvPr/>"
    space = int(inset * EMU)
    words = (f'<p:txBody><a:bodyPr wrap="square" lIns="{space}" tIns="{space}" rIns="{space}" '
             f'bIns="{space}" anchor="{anchor}"><a:normAutofit/></a:bodyPr><a:lstStyle/>'
             f"{lines or '<a:p/>'}</p:txBody>")
    return (f'<p:sp><p:nvSpPr><p:cNvPr id="{number}" name="{escape(name)}"/><p:cNvSpPr/>{holder}'
            f'</p:nvSpPr><p:spPr>{box(*place)}<a:prstGeom prst="{form}"><a:avLst/></a:prstGeom>'
            f"{fill or '<a:noFill/>'}<a:ln><a:noFill/></a:ln></p:spPr>{words}</p:sp>")


def picture(number, name, key, place, crop=""):
    return (f'<p:pic><p:nvPicPr><p:cNvPr id="{number}" name="Picture {number}" '
            f'descr="{escape(name)}"/><p:cNvPicPr/><p:nvPr/></p:nvPicPr><p:blipFill>'
            f'<a:blip r:embed="{key}"/>{crop}<a:stretch><a:fillRect/></a:stretch></p:blipFill>'
            f'<p:spPr>{box(*place)}<a:prstGeom prst="rect"><a:avLst/></a:prstGeom></p:spPr></p:pic>')


def frame(number, name, place, uri, content):
    where = box(*place).replace("a:xfrm", "p:xfrm")
    return (f'<p:graphicFrame><p:nvGraphicFramePr><p:cNvPr id="{number}" name="{escape(name)}"/>'
            f"<p:cNvGraphicFramePr/><p:nvPr/></p:nvGraphicFramePr>{where}"
            f'<a:graphic><a:graphicData uri="{uri}">{content}</a:graphicData></a:graphic>'
            "</p:graphicFrame>")


def table(number, place, widths, rows):
    grid = "".join(f'<a:gridCol w="{int(width * EMU)}"/>' for width in widths)
    height = int(place[3] / len(rows) * EMU)
    lines = []
    for k, cells in enumerate(rows):
        colour, fill = ("FFFFFF", "3F6B3A") if k == 0 else ("2B3A28", "EEF4EA" if k % 2 else "FFFFFF")
        inner = "".join(
            f"<a:tc><a:txBody><a:bodyPr/><a:lstStyle/>{line(text, 16, colour, k == 0)}</a:txBody>"
            f'<a:tcPr anchor="ctr" marT="90000" marB="0">{solid(fill)}</a:tcPr></a:tc>'
            for text in cells)
        lines.append(f'<a:tr h="{height}">{inner}</a:tr>')
    content = (f'<a:tbl><a:tblPr firstRow="1" bandRow="1"/><a:tblGrid>{grid}</a:tblGrid>'
               f"{''.join(lines)}</a:tbl>")
    return frame(number, "Table", place, DRAW.replace("main", "table"), content)


TREE = ('<p:nvGrpSpPr><p:cNvPr id="1" name=""/><p:cNvGrpSpPr/><p:nvPr/></p:nvGrpSpPr><p:grpSpPr>'
        '<a:xfrm><a:off x="0" y="0"/><a:ext cx="0" cy="0"/><a:chOff x="0" y="0"/>'
        '<a:chExt cx="0" cy="0"/></a:xfrm></p:grpSpPr>')


def slide(shapes, background=""):
    back = f"<p:bg><p:bgPr>{background}<a:effectLst/></p:bgPr></p:bg>" if background else ""
    return (f"{HEADER}<p:sld {NAMES}><p:cSld>{back}<p:spTree>{TREE}{''.join(shapes)}</p:spTree>"
            "</p:cSld><p:clrMapOvr><a:masterClrMapping/></p:clrMapOvr></p:sld>")


def layout():
    return (f'{HEADER}<p:sldLayout {NAMES} type="titleOnly"><p:cSld name="Title only"><p:spTree>'
            f"{TREE}{shape(2, 'Title', (2, 1.2, 29.8, 2.4), kind='title')}</p:spTree></p:cSld>"
            "<p:clrMapOvr><a:masterClrMapping/></p:clrMapOvr></p:sldLayout>")


def master():
    colours = ('bg1="lt1" tx1="dk1" bg2="lt2" tx2="dk2" accent1="accent1" accent2="accent2" '
               'accent3="accent3" accent4="accent4" accent5="accent5" accent6="accent6" '
               'hlink="hlink" folHlink="folHlink"')
    back = f"<p:bg><p:bgPr>{solid('FBFCF8')}<a:effectLst/></p:bgPr></p:bg>"
    return (f"{HEADER}<p:sldMaster {NAMES}><p:cSld>{back}<p:spTree>{TREE}"
            f"{shape(2, 'Title', (2, 1.2, 29.8, 2.4), kind='title')}</p:spTree></p:cSld>"
            f'<p:clrMap {colours}/><p:sldLayoutIdLst><p:sldLayoutId id="2147483649" r:id="rId1"/>'
            "</p:sldLayoutIdLst><p:txStyles><p:titleStyle/><p:bodyStyle/><p:otherStyle/>"
            "</p:txStyles></p:sldMaster>")


def theme():
    shades = {"dk1": "1F2A1C", "lt1": "FFFFFF", "dk2": "24421F", "lt2": "EEF4EA",
              "accent1": "3F6B3A", "accent2": "D9A441", "accent3": "C8452F", "accent4": "7A4A86",
              "accent5": "2F7E8C", "accent6": "A9C25D", "hlink": "1B5E8C", "folHlink": "5A4A7A"}
    colours = "".join(f'<a:{k}><a:srgbClr val="{v}"/></a:{k}>' for k, v in shades.items())
    font = '<a:latin typeface="Liberation Sans"/><a:ea typeface=""/><a:cs typeface="DejaVu Sans"/>'
    fill = '<a:solidFill><a:schemeClr val="phClr"/></a:solidFill>'
    edge = f'<a:ln w="9525">{fill}</a:ln>'
    plain = "<a:effectStyle><a:effectLst/></a:effectStyle>"
    return (f'{HEADER}<a:theme xmlns:a="{DRAW}" name="Thistlemere"><a:themeElements>'
            f'<a:clrScheme name="Thistlemere">{colours}</a:clrScheme>'
            f'<a:fontScheme name="Thistlemere"><a:majorFont>{font}</a:majorFont>'
            f"<a:minorFont>{font}</a:minorFont></a:fontScheme>"
            f'<a:fmtScheme name="Thistlemere"><a:fillStyleLst>{fill * 3}</a:fillStyleLst>'
            f"<a:lnStyleLst>{edge * 3}</a:lnStyleLst><a:effectStyleLst>{plain * 3}"
            f"</a:effectStyleLst><a:bgFillStyleLst>{fill * 3}</a:bgFillStyleLst></a:fmtScheme>"
            "</a:themeElements></a:theme>")


def presentation(count):
    slides = "".join(f'<p:sldId id="{256 + k}" r:id="rId{k}"/>' for k in range(1, count + 1))
    return (f'{HEADER}<p:presentation {NAMES}><p:sldMasterIdLst><p:sldMasterId id="2147483648" '
            f'r:id="rIdMaster"/></p:sldMasterIdLst><p:sldIdLst>{slides}</p:sldIdLst>'
            f'<p:sldSz cx="{int(WIDTH * EMU)}" cy="{int(HEIGHT * EMU)}"/>'
            '<p:notesSz cx="6858000" cy="9144000"/></p:presentation>')
