"""Quorlin's entries in the menu of Nautilus: convert documents to PDF, add documents and folders."""

import sys

import gi

gi.require_version("Nautilus", "4.0")
from gi.repository import Gio, GLib, GObject, Nautilus

try:
    gi.require_version("Gdk", "4.0")
    from gi.repository import Gdk
except (ImportError, ValueError):
    Gdk = None

EXTENSIONS = frozenset(
    "doc docx docm dot dotx dotm rtf odt ott fodt sxw txt html htm xhtml wpd "
    "xls xlsx xlsm xlsb xlt xltx xltm ods ots fods sxc csv "
    "ppt pptx pptm pps ppsx ppsm pot potx potm odp otp fodp sxi "
    "pdf ps eps prn "
    "png jpg jpeg gif bmp tif tiff svg wmf emf odg otg fodg".split())

CONVERT = {
    "en": "Convert to PDF with Quorlin",
    "de": "Mit Quorlin in PDF umwandeln",
    "fr": "Convertir en PDF avec Quorlin",
}
ADD = {
    "en": "Add to Quorlin",
    "de": "Zu Quorlin hinzufügen",
    "fr": "Ajouter à Quorlin",
}

ENTRY = """[Desktop Entry]
Type=Application
Name=Quorlin
Icon=quorlin
Exec=quorlin {option} %F
StartupNotify=true
StartupWMClass=quorlin
"""


def in_users_language(texts):
    for name in GLib.get_language_names():
        if name in texts:
            return texts[name]
    return texts["en"]


def is_document(file):
    _stem, point, extension = file.get_name().rpartition(".")
    return bool(point) and extension.lower() in EXTENSIONS and not file.is_directory()


def launch_context():
    """What lets the started program's window come to the front; None where that cannot be told."""
    display = Gdk.Display.get_default() if Gdk else None
    return display.get_app_launch_context() if display else None


def start(option, files):
    """Starts Quorlin once for all files."""
    entry = GLib.KeyFile()
    text = ENTRY.format(option=option).encode()
    entry.load_from_bytes(GLib.Bytes.new(text), GLib.KeyFileFlags.NONE)
    try:
        Gio.DesktopAppInfo.new_from_keyfile(entry).launch(files, launch_context())
    # The second when the program has gone since the menu was opened: there is no object then.
    except (GLib.Error, TypeError) as error:
        print(f"Quorlin cannot be started: {error}", file=sys.stderr)


def make_item(name, texts, option, files):
    item = Nautilus.MenuItem(name=f"Quorlin::{name}", label=in_users_language(texts), icon="quorlin")
    locations = [file.get_location() for file in files]
    item.connect("activate", lambda _item: start(option, locations))
    return item


class QuorlinMenu(GObject.GObject, Nautilus.MenuProvider):
    """The entries; only for local files, and "convert" not for whole folders."""

    def get_file_items(self, files):
        if not files or any(file.get_uri_scheme() != "file" for file in files):
            return []
        if not GLib.find_program_in_path("quorlin"):
            return []
        items = []
        if all(is_document(file) for file in files):
            items.append(make_item("Convert", CONVERT, "/p", files))
        if all(is_document(file) or file.is_directory() for file in files):
            items.append(make_item("Add", ADD, "/a", files))
        return items
