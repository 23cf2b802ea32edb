"""What the tests of the desktop's files share: reading them, and the system's database of types."""

import configparser
import functools
import xml.etree.ElementTree as ElementTree
from pathlib import Path

from commands import PROJECT, accepted_extensions

LINUX = PROJECT / "packaging/linux"
DATABASE = Path("/usr/share/mime/packages/freedesktop.org.xml")
LANGUAGES = ("", "[de]", "[fr]")

# Others than documents whose names end in the same way.
NAMESAKES = {"text/vnd.graphviz", "text/x-gettext-translation-template"}
# PostScript for a printer is known by its content only.
WITHOUT_TYPE = {"prn"}


def group_of(path, name="Desktop Entry"):
    """The keys and values of one group of an entry; the keys keep their case."""
    parser = configparser.RawConfigParser(delimiters=("=",), comment_prefixes=("#",), strict=True)
    parser.optionxform = str
    parser.read_string(path.read_text(encoding="utf-8"))
    return dict(parser[name])


def listed(value, separator=";"):
    """The members of a list, which must not name any twice."""
    members = [member for member in value.split(separator) if member]
    assert len(members) == len(set(members)), f"named twice in {value}"
    return set(members)


class MimeDatabase:
    """The types that the system knows, with the ends of names and the types they are built on."""

    def __init__(self, path=DATABASE):
        self.parents, self._of_extension = {}, {}
        for element in ElementTree.parse(path).getroot():
            name = element.get("type")
            self.parents[name] = {found.get("type") for found in element.iterfind("{*}sub-class-of")}
            if not self.parents[name] and name.startswith("text/") and name != "text/plain":
                self.parents[name] = {"text/plain"}
            for glob in element.iterfind("{*}glob"):
                self._of_extension.setdefault(glob.get("pattern").lower(), set()).add(name)

    def of_extension(self, extension):
        return self._of_extension.get(f"*.{extension}", set()) - NAMESAKES

    def ancestors(self, name):
        """The types that it is built on, near and far."""
        found, waiting = set(), {name}
        while waiting:
            near = self.parents.get(waiting.pop(), set()) - found
            found |= near
            waiting |= near
        return found


@functools.cache
def mime_database():
    return MimeDatabase()


def accepted_types():
    """The types of all extensions that the component takes."""
    return set().union(*map(mime_database().of_extension, accepted_extensions()))
