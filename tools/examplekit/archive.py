"""Zip files that come out the same every time."""

import io
import zipfile

EPOCH = (2025, 3, 1, 9, 0, 0)


def packed(parts, stored_first=None):
    """The bytes of a zip file with `parts` (name to str or bytes).

    `stored_first` names the part that has to stand first and uncompressed.
    """
    names = sorted(parts, key=lambda name: (name != stored_first, name != "[Content_Types].xml"))
    buffer = io.BytesIO()
    with zipfile.ZipFile(buffer, "w") as archive:
        for name in names:
            entry = zipfile.ZipInfo(name, EPOCH)
            entry.external_attr = 0o644 << 16
            entry.create_system = 3
            method = zipfile.ZIP_STORED if name == stored_first else zipfile.ZIP_DEFLATED
            data = parts[name]
            archive.writestr(entry, data.encode() if isinstance(data, str) else data, method, 9)
    return buffer.getvalue()


HEADER = '<?xml version="1.0" encoding="UTF-8" standalone="yes"?>\n'
PACKAGE = "http://schemas.openxmlformats.org/package/2006"
OFFICE = "http://schemas.openxmlformats.org/officeDocument/2006"
KINDS = OFFICE + "/relationships"


def relations(entries):
    """A part of relationships; each entry is (id, kind, target), an address counts as external."""
    lines = []
    for key, kind, target in entries:
        mode = ' TargetMode="External"' if target.startswith(("https:", "mailto:")) else ""
        full = kind if ":" in kind else f"{KINDS}/{kind}"
        lines.append(f'<Relationship Id="{key}" Type="{full}" Target="{target}"{mode}/>')
    return f'{HEADER}<Relationships xmlns="{PACKAGE}/relationships">{"".join(lines)}</Relationships>'


def content_types(overrides):
    """The list of the parts' types; `overrides` maps a part's name to its type."""
    defaults = {"rels": "application/vnd.openxmlformats-package.relationships+xml",
                "xml": "application/xml", "png": "image/png", "jpg": "image/jpeg"}
    lines = [f'<Default Extension="{k}" ContentType="{v}"/>' for k, v in defaults.items()]
    base = "application/vnd.openxmlformats-"
    lines += [f'<Override PartName="/{k}" ContentType="{base}{v}+xml"/>' for k, v in overrides.items()]
    return f'{HEADER}<Types xmlns="{PACKAGE}/content-types">{"".join(lines)}</Types>'


def properties(title, subject, keywords):
    """The document's title, subject, author and keywords."""
    date = "2025-03-01T09:00:00Z"
    return (f'{HEADER}<cp:coreProperties xmlns:cp="{PACKAGE}/metadata/core-properties" '
            'xmlns:dc="http://purl.org/dc/elements/1.1/" xmlns:dcterms="http://purl.org/dc/terms/" '
            'xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance">'
            f"<dc:title>{title}</dc:title><dc:subject>{subject}</dc:subject>"
            f"<dc:creator>Thistlemere Garden Association</dc:creator>"
            f"<cp:keywords>{keywords}</cp:keywords>"
            f'<dcterms:created xsi:type="dcterms:W3CDTF">{date}</dcterms:created>'
            f'<dcterms:modified xsi:type="dcterms:W3CDTF">{date}</dcterms:modified>'
            "</cp:coreProperties>")


def top_relations(document):
    """The package's own relationships: the document and its properties."""
    return relations([("rId1", "officeDocument", document),
                      ("rId2", PACKAGE + "/relationships/metadata/core-properties",
                       "docProps/core.xml")])
