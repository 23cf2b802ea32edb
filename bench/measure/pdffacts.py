"""What a PDF holds, as far as two PDFs of one document are held against each other."""

import os
import subprocess
from collections import Counter
from dataclasses import dataclass
from urllib.parse import quote

from .pdfobjects import PdfObjects, UnreadablePdf, is_name, is_string, text

TOOL_SECONDS = 300
INFO_FIELDS = ("Title", "Author", "Subject", "Keywords")
NEUTRAL_BASE = "file:///(documents)/"


@dataclass(frozen=True)
class Target:
    """A place in the document: page from 1 and height above the page's lower edge, in points."""

    page: int
    top: float | None


@dataclass(frozen=True)
class Link:
    """A link's page from 1, its rectangle on the visible page in points, and where it leads."""

    page: int
    rect: tuple
    address: str | None
    target: Target | None


@dataclass(frozen=True)
class Bookmark:
    level: int
    title: str
    page: int | None
    address: str | None


@dataclass(frozen=True)
class Font:
    name: str
    embedded: bool
    has_unicode: bool


@dataclass
class Facts:
    """Everything that is compared. Sizes are those of the visible page, in points."""

    size_bytes: int
    page_sizes: list
    words: Counter
    characters: Counter
    links: list
    dead_links: int
    bookmarks: list
    info: dict
    fonts: list


def read_facts(path, stage_folder=None):
    """Reads a PDF. Links to files below `stage_folder` are told from a neutral folder."""
    objects = PdfObjects(path)
    places = Places(objects, stage_folder)
    words = Counter(page_text(path).split())
    links, dead = read_links(objects, places)
    return Facts(
        size_bytes=os.path.getsize(path),
        page_sizes=[page.size for page in places.pages],
        words=words,
        characters=count_characters(words),
        links=links,
        dead_links=dead,
        bookmarks=read_bookmarks(objects, places),
        info={field: text(objects.get(objects.info.get("/" + field))) for field in INFO_FIELDS},
        fonts=read_fonts(path),
    )


def count_characters(words):
    characters = Counter()
    for word, count in words.items():
        for character in word:
            characters[character] += count
    return characters


class PageView:
    """A page as a reader sees it: crop box and rotation turn its own points into visible ones."""

    def __init__(self, objects, page):
        media = _numbers(objects, objects.inherited(page, "/MediaBox")) or [0, 0, 612, 792]
        crop = _numbers(objects, objects.inherited(page, "/CropBox")) or media
        media, crop = _ordered(media), _ordered(crop)
        box = [max(media[0], crop[0]), max(media[1], crop[1]), min(media[2], crop[2]), min(media[3], crop[3])]
        self._left, self._bottom = box[0], box[1]
        self._width, self._height = box[2] - box[0], box[3] - box[1]
        rotation = objects.inherited(page, "/Rotate")
        self._rotation = int(rotation) % 360 if isinstance(rotation, (int, float)) else 0
        unit = objects.get(page.get("/UserUnit"))
        self._unit = unit if isinstance(unit, (int, float)) and unit > 0 else 1

    @property
    def size(self):
        width, height = self._width * self._unit, self._height * self._unit
        return (height, width) if self._rotation in (90, 270) else (width, height)

    def visible(self, x, y):
        x, y = (x - self._left) * self._unit, (y - self._bottom) * self._unit
        width, height = self._width * self._unit, self._height * self._unit
        turned = {90: (y, width - x), 180: (width - x, height - y), 270: (height - y, x)}
        return turned.get(self._rotation, (x, y))

    def visible_rect(self, rect):
        return tuple(_ordered([*self.visible(rect[0], rect[1]), *self.visible(rect[2], rect[3])]))


def _numbers(objects, value, count=4):
    values = [objects.get(item) for item in objects.array(value)][:count]
    whole = len(values) == count and all(isinstance(item, (int, float)) for item in values)
    return [float(item) for item in values] if whole else None


def _ordered(box):
    return [min(box[0], box[2]), min(box[1], box[3]), max(box[0], box[2]), max(box[1], box[3])]


class Places:
    """Resolves destinations and actions: explicit, named in the dictionary or in the name tree."""

    def __init__(self, objects, stage_folder=None):
        self._objects = objects
        self._base = f"file://{quote(str(stage_folder))}/" if stage_folder else None
        self.pages = [PageView(objects, page) for page in objects.pages]
        self._named = {name[1:]: value for name, value in objects.dictionary(objects.catalog.get("/Dests")).items()}
        names = objects.dictionary(objects.catalog.get("/Names"))
        self._collect(names.get("/Dests"), set())

    def _collect(self, node, seen):
        if isinstance(node, str) and node in seen:
            return
        seen.add(node if isinstance(node, str) else id(node))
        branch = self._objects.dictionary(node)
        names = self._objects.array(branch.get("/Names"))
        for key, value in zip(names[0::2], names[1::2]):
            self._named.setdefault(text(self._objects.get(key)), value)
        for kid in self._objects.array(branch.get("/Kids")):
            self._collect(kid, seen)

    def target(self, destination):
        destination = self._objects.get(destination)
        for _ in range(8):
            if isinstance(destination, dict):
                destination = self._objects.get(destination.get("/D"))
            elif is_string(destination):
                destination = self._objects.get(self._named.get(text(destination)))
            elif is_name(destination):
                destination = self._objects.get(self._named.get(destination[1:]))
        return self._explicit(destination) if isinstance(destination, list) and destination else None

    def _explicit(self, destination):
        number = self._objects.page_number(destination[0])
        if number is None:
            return None
        kind = destination[1] if len(destination) > 1 else "/Fit"
        values = [self._objects.get(item) for item in destination[2:]]
        position = {"/XYZ": (0, 1), "/FitH": (None, 0), "/FitBH": (None, 0), "/FitR": (0, 3)}.get(kind, (None, None))
        left, top = (_item(values, index) for index in position)
        height = None if top is None else self.pages[number].visible(left or 0, top)[1]
        return Target(number + 1, height)

    def where(self, holder):
        """(address, target) of a link or bookmark; at most one of them is not None."""
        if holder.get("/Dest") is not None:
            return None, self.target(holder.get("/Dest"))
        action = self._objects.dictionary(holder.get("/A"))
        kind = self._objects.get(action.get("/S"))
        if kind == "/GoTo":
            return None, self.target(action.get("/D"))
        if kind == "/URI":
            return self._neutral(text(self._objects.get(action.get("/URI")))), None
        if kind in ("/Launch", "/GoToR"):
            return self._neutral(f"{kind[1:]} {self._file(action)}"), None
        return None, None

    def _file(self, action):
        file = self._objects.get(action.get("/F"))
        if isinstance(file, dict):
            file = self._objects.get(file.get("/UF")) or self._objects.get(file.get("/F"))
        return text(file)

    def _neutral(self, address):
        return address.replace(self._base, NEUTRAL_BASE) if self._base else address


def _item(values, index):
    if index is None or index >= len(values) or not isinstance(values[index], (int, float)):
        return None
    return float(values[index])


def read_links(objects, places):
    """The links of all pages that lead somewhere, and the number of those that do not."""
    links, dead = [], 0
    for number, page in enumerate(objects.pages):
        for reference in objects.array(page.get("/Annots")):
            annotation = objects.dictionary(reference)
            rect = _numbers(objects, annotation.get("/Rect"))
            if objects.get(annotation.get("/Subtype")) != "/Link" or rect is None:
                continue
            address, target = places.where(annotation)
            if address is None and target is None:
                dead += 1
            else:
                links.append(Link(number + 1, places.pages[number].visible_rect(rect), address, target))
    return links, dead


def read_bookmarks(objects, places):
    """The outline in reading order, levels from 1."""
    outline = objects.dictionary(objects.catalog.get("/Outlines"))
    bookmarks, seen = [], set()
    pending = [(outline.get("/First"), 1)]
    while pending:
        reference, level = pending.pop()
        entry = objects.dictionary(reference)
        if not entry or reference in seen:
            continue
        seen.add(reference)
        address, target = places.where(entry)
        title = text(objects.get(entry.get("/Title")))
        bookmarks.append(Bookmark(level, title, target.page if target else None, address))
        pending += [(entry.get("/Next"), level), (entry.get("/First"), level + 1)]
    return bookmarks


def page_text(path):
    """All text in the tool's own order; nothing is normalised."""
    return _tool_output(["pdftotext", "-enc", "UTF-8", str(path), "-"])


def read_fonts(path):
    """The fonts in use; the columns are counted from the right, since names may be longer."""
    fonts = []
    for line in _tool_output(["pdffonts", str(path)]).splitlines()[2:]:
        fields = line.split()
        if len(fields) >= 7:
            fonts.append(Font(fields[0], fields[-5] == "yes", fields[-3] == "yes"))
    return fonts


def _tool_output(command):
    try:
        done = subprocess.run(command, capture_output=True, timeout=TOOL_SECONDS, check=False)
    except subprocess.TimeoutExpired as error:
        raise UnreadablePdf(f"{command[0]} took too long") from error
    if done.returncode != 0:
        said = done.stderr.decode("utf-8", "replace").strip().splitlines()
        raise UnreadablePdf(f"{command[0]}: {said[-1] if said else f'exit code {done.returncode}'}")
    return done.stdout.decode("utf-8", "replace")
