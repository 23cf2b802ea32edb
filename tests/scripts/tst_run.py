"""./run hands the documents to the right program, and its exit code back."""

import os
import shutil
import stat
import subprocess
import tempfile
import unittest
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[2]
TOOLS = ("bash", "env", "dirname", "readlink", "mkdir", "tail", "sed", "sort", "grep", "rm", "touch", "cp")


class Run(unittest.TestCase):
    def setUp(self):
        self.root = Path(tempfile.mkdtemp()).resolve() / "the project"
        self.addCleanup(shutil.rmtree, self.root.parent)
        shutil.copytree(PROJECT / "scripts", self.root / "scripts")
        shutil.copy(PROJECT / "run", self.root)
        (self.root / "examples").mkdir()
        (self.root / "examples/a letter.odt").touch()
        self.programs = self.root / "build/release/bin"
        self.tools = self.root / "tools"
        self.tools.mkdir()
        for name in TOOLS:
            (self.tools / name).symlink_to(shutil.which(name))
        self.fake(self.tools / "cmake", "echo cmake version 3.25.1")
        self.program("quorlin-convert")

    def fake(self, path, body):
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(f"#!/bin/bash\n{body}\n", encoding="utf-8")
        path.chmod(path.stat().st_mode | stat.S_IXUSR)

    def program(self, name, status=0):
        """A program that notes its name and arguments, each in brackets."""
        self.fake(self.programs / name, f'printf "[%s]" "{name}" "$@" >"{self.root}/called"; exit {status}')

    def run_it(self, *arguments, display="", start=None):
        environment = {"PATH": str(self.tools), "HOME": str(self.root), "DISPLAY": display}
        done = subprocess.run([start or self.root / "run", *arguments], env=environment, cwd=self.root / "examples",
                              capture_output=True, text=True, check=False)
        called = self.root / "called"
        return done.returncode, done.stdout, called.read_text(encoding="utf-8") if called.exists() else done.stderr

    def test_documents_are_converted_as_they_were_named(self):
        status, _, called = self.run_it("a letter.odt", "-b.odt")
        self.assertEqual((status, called), (0, "[quorlin-convert][--][a letter.odt][-b.odt]"))

    def test_without_documents_the_examples_are_converted_into_a_folder(self):
        status, output, called = self.run_it()
        results = self.root / "build/release/examples-pdf"
        self.assertEqual(status, 0)
        self.assertEqual(called, f"[quorlin-convert][-o][{results}][--][{self.root}/examples/a letter.odt]")
        self.assertIn(f"are in {results}", output)
        self.assertTrue(results.is_dir())

    def test_a_failure_of_the_conversion_is_handed_back(self):
        self.program("quorlin-convert", 3)
        self.assertEqual(self.run_it("a letter.odt")[0], 3)
        self.assertEqual(self.run_it()[0], 3)

    def test_a_window_is_shown_where_there_is_a_display(self):
        self.program("quorlin")
        self.assertEqual(self.run_it("a letter.odt", display=":7")[2], "[quorlin][a letter.odt]")

    def test_the_window_gets_copies_of_the_examples(self):
        self.program("quorlin")
        copy = self.root / "build/release/examples/a letter.odt"
        self.assertEqual(self.run_it(display=":7")[2], f"[quorlin][{copy}]")
        self.assertTrue(copy.is_file())

    def test_without_a_display_no_window_is_tried(self):
        self.program("quorlin")
        self.assertEqual(self.run_it("a letter.odt")[2], "[quorlin-convert][--][a letter.odt]")

    def test_a_link_to_the_command_works_too(self):
        link = self.root.parent / "linked"
        os.symlink(self.root / "run", link)
        self.assertEqual(self.run_it("a letter.odt", start=link)[2], "[quorlin-convert][--][a letter.odt]")

    def test_a_failed_build_stops(self):
        self.fake(self.tools / "cmake", '[ "$1" = --version ] && echo cmake version 3.25.1 || exit 9')
        status, _, error = self.run_it("a letter.odt")
        self.assertEqual(status, 1)
        self.assertIn("Failed: configure-release", error)


if __name__ == "__main__":
    unittest.main()
