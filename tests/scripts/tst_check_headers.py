"""scripts/check-headers finds a header that leans on what others include before it."""

import json
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[2]
LEANING = "#pragma once\n\nstd::string text();\n"
WHOLE = "#pragma once\n\n#include <string>\n\nstd::string text();\n"


class CheckHeaders(unittest.TestCase):
    def setUp(self):
        self.root = Path(tempfile.mkdtemp()).resolve()
        self.addCleanup(shutil.rmtree, self.root)
        (self.root / "src").mkdir()
        (self.root / "build").mkdir()
        self.write("Main.cpp", "int main() { return 0; }\n")

    def write(self, name, text):
        (self.root / "src" / name).write_text(text, encoding="utf-8")

    def check(self):
        source = str(self.root / "src/Main.cpp")
        entry = {"directory": str(self.root / "build"), "file": source,
                 "command": f"c++ -Wall -Werror -I{self.root}/src -o Main.o -c {source}"}
        (self.root / "build/compile_commands.json").write_text(json.dumps([entry]), encoding="utf-8")
        done = subprocess.run([sys.executable, PROJECT / "scripts/check-headers", self.root / "build", self.root],
                              capture_output=True, text=True, check=False)
        return done.returncode, done.stdout + done.stderr

    def test_a_header_that_needs_others_before_it_is_refused(self):
        self.write("Text.h", LEANING)
        status, output = self.check()
        self.assertEqual(status, 1, output)
        self.assertIn("Text.h does not compile alone", output)

    def test_a_whole_header_passes(self):
        self.write("Text.h", WHOLE)
        status, output = self.check()
        self.assertEqual(status, 0, output)
        self.assertIn("1 headers, 1 compiled alone, 0 failed", output)

    def test_a_header_included_first_by_its_source_is_proven_by_the_build(self):
        self.write("Main.h", WHOLE)
        self.write("Main.cpp", '#include "Main.h"\n\nint main() { return 0; }\n')
        status, output = self.check()
        self.assertEqual(status, 0, output)
        self.assertIn("1 headers, 0 compiled alone", output)

    def test_no_header_at_all_does_not_pass_for_good(self):
        self.assertEqual(self.check()[0], 1)


if __name__ == "__main__":
    unittest.main()
