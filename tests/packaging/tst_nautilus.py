"""The extension of Nautilus: which entries it offers for which files, and what they start."""

import importlib.util
import json
import os
import shutil
import sys
import tempfile
import time
import types
import unittest
from pathlib import Path

from desktop_files import LINUX

try:
    import gi
    from gi.repository import Gio, GLib
except ImportError:
    print("SKIPPED: python3-gi is not installed", file=sys.stderr)
    sys.exit(0)

SECONDS = 20
STAND_IN = """#!/usr/bin/python3
import json, os, sys

# What the tests compile has no place in the package.
sys.dont_write_bytecode = True
with open({0!r} + ".part", "w") as file:
    json.dump(sys.argv[1:], file)
os.rename({0!r} + ".part", {0!r})
"""


class MenuItem:
    def __init__(self, **properties):
        self.properties, self.handler = properties, None

    def connect(self, signal, handler):
        assert signal == "activate"
        self.handler = handler

    def activate(self):
        self.handler(self)


class FileInfo:
    """A selected file, as Nautilus tells of it."""

    def __init__(self, uri, is_directory=False):
        self.location, self.directory = Gio.File.new_for_uri(uri), is_directory

    def get_name(self):
        return self.location.get_basename()

    def get_location(self):
        return self.location

    def get_uri_scheme(self):
        return self.location.get_uri_scheme()

    def is_directory(self):
        return self.directory


def load_extension():
    """The extension, with a stand-in for the part of Nautilus that it uses and without a display."""
    gi.require_version = lambda name, _version: None if name == "Nautilus" else fail(name)
    nautilus = types.ModuleType("gi.repository.Nautilus")
    nautilus.MenuItem, nautilus.MenuProvider = MenuItem, type("MenuProvider", (), {})
    sys.modules[nautilus.__name__] = nautilus
    spec = importlib.util.spec_from_file_location("extension", LINUX / "nautilus/quorlin_nautilus.py")
    extension = importlib.util.module_from_spec(spec)
    spec.loader.exec_module(extension)
    return extension


def fail(name):
    raise ValueError(f"Namespace {name} not available")


class Nautilus(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.extension = load_extension()

    def setUp(self):
        self.folder = Path(tempfile.mkdtemp()).resolve()
        self.addCleanup(shutil.rmtree, self.folder)
        self.addCleanup(os.environ.__setitem__, "PATH", os.environ["PATH"])
        os.environ["PATH"] = f"{self.folder}:{os.environ['PATH']}"
        self.started = self.folder / "started"
        self.program = self.folder / "quorlin"
        self.program.write_text(STAND_IN.format(str(self.started)), encoding="utf-8")
        self.program.chmod(0o755)

    def items_for(self, *files):
        return self.extension.QuorlinMenu().get_file_items(list(files))

    def names_for(self, *files):
        return [item.properties["name"].rpartition("::")[2] for item in self.items_for(*files)]

    def arguments(self):
        end = time.monotonic() + SECONDS
        while not self.started.exists():
            self.assertLess(time.monotonic(), end, "nothing was started")
            GLib.MainContext.default().iteration(False)
            time.sleep(0.01)
        return json.loads(self.started.read_text(encoding="utf-8"))

    def test_documents_are_converted_and_added(self):
        both = ["Convert", "Add"]
        self.assertEqual(self.names_for(FileInfo("file:///a.odt"), FileInfo("file:///B.DOCX")), both)

    def test_folders_are_only_added(self):
        sub = FileInfo("file:///sub", is_directory=True)
        self.assertEqual(self.names_for(sub), ["Add"])
        self.assertEqual(self.names_for(sub, FileInfo("file:///a.odt")), ["Add"])
        self.assertEqual(self.names_for(FileInfo("file:///sub.pdf", is_directory=True)), ["Add"])

    def test_other_files_get_no_entry(self):
        for name in ("script.py", "README", "backups", "odt"):
            self.assertEqual(self.names_for(FileInfo(f"file:///{name}")), [], name)
        self.assertEqual(self.names_for(FileInfo("file:///a.odt"), FileInfo("file:///b.zip")), [])
        self.assertEqual(self.names_for(), [])

    def test_files_elsewhere_get_no_entry(self):
        self.assertEqual(self.names_for(FileInfo("sftp://host/a.odt")), [])
        self.assertEqual(self.names_for(FileInfo("file:///a.odt"), FileInfo("trash:///b.odt")), [])

    def test_there_is_no_entry_without_the_program(self):
        self.program.unlink()
        os.environ["PATH"] = str(self.folder)
        self.assertEqual(self.names_for(FileInfo("file:///a.odt")), [])

    def test_all_files_come_in_one_start_under_their_own_names(self):
        names = ["plain.odt", " blank.odt", "a,b.odt", "it's \"so\".odt", "new\nline.odt", "-n.odt",
                 "100%20 %F.odt", "$HOME `x` \\b.odt", "Ünï ☃.odt"]
        paths = [str(self.folder / name) for name in names]
        convert, add = self.items_for(*[FileInfo(Path(path).as_uri()) for path in paths])
        convert.activate()
        self.assertEqual(self.arguments(), ["/p", *paths])
        self.started.unlink()
        add.activate()
        self.assertEqual(self.arguments(), ["/a", *paths])

    def test_a_program_that_cannot_be_started_does_not_harm_nautilus(self):
        item = self.items_for(FileInfo("file:///a.odt"))[0]
        self.program.unlink()
        os.environ["PATH"] = str(self.folder)
        item.activate()


if __name__ == "__main__":
    unittest.main(verbosity=2)
