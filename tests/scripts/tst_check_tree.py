"""Every rule of scripts/check-tree finds the file that breaks it, and a good tree passes."""

import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[2]
HEADER = "#pragma once\n\nint answer();\n"
SOURCE = '#include "component/protocol/Answer.h"\n\nint answer()\n{\n    return 42;\n}\n'


class CheckTree(unittest.TestCase):
    def setUp(self):
        self.root = Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.root)
        shutil.copy(PROJECT / ".clang-format", self.root)
        self.write("src/component/protocol/Answer.h", HEADER)
        self.write("src/component/protocol/Answer.cpp", SOURCE)

    def write(self, name, text):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(text if isinstance(text, bytes) else text.encode("utf-8"))

    def check(self):
        done = subprocess.run([sys.executable, PROJECT / "scripts/check-tree", self.root],
                              capture_output=True, text=True, check=False)
        self.assertEqual(done.stderr, "")
        return done.returncode, done.stdout

    def assert_refused(self, name, text, complaint):
        self.write(name, text)
        status, output = self.check()
        self.assertEqual(status, 1, output)
        self.assertIn(complaint, output)
        self.assertIn(name, output)

    def assert_taken(self, name, text):
        self.write(name, text)
        status, output = self.check()
        self.assertEqual(status, 0, output)

    def test_a_good_tree_passes(self):
        status, output = self.check()
        self.assertEqual(status, 0, output)
        self.assertIn("0 problems", output)

    def test_an_empty_tree_does_not_pass_for_good(self):
        shutil.rmtree(self.root / "src")
        (self.root / ".clang-format").unlink()
        self.assertEqual(self.check()[0], 1)

    def test_asking_for_the_system_is_refused(self):
        for condition in ("#ifdef Q_OS_LINUX", "#if defined(_WIN32)", "#ifndef __linux__",
                          "#if 1 && defined(__APPLE__)"):
            with self.subTest(condition):
                self.assert_refused("src/tool/A.cpp", f"{condition}\n#endif\n", "asks for the system")

    def test_a_system_header_outside_a_seam_is_refused(self):
        for header in ("unistd.h", "sys/types.h", "signal.h", "csignal", "fcntl.h", "linux/landlock.h"):
            with self.subTest(header):
                self.assert_refused("src/tool/A.cpp", f"#include <{header}>\n", "source of one system")
                self.assert_refused("tests/unit/A.cpp", f"#include <{header}>\n", "source of one system")

    def test_a_system_header_in_a_seam_is_taken(self):
        self.write("src/tool/Seam.h", HEADER)
        self.assert_taken("src/tool/Seam_linux.cpp", '#include "tool/Seam.h"\n\n#include <unistd.h>\n')

    def test_a_seam_without_its_header_is_refused(self):
        self.assert_refused("src/tool/Seam_linux.cpp", "#include <unistd.h>\n", "has no Seam.h beside it")

    def test_a_system_path_outside_a_seam_is_refused(self):
        self.assert_refused("src/tool/A.cpp", 'const char *path = "/proc/self/exe";\n', "path of the system")

    def test_an_include_against_the_order_is_refused(self):
        for folder, include in (("convert", "component/supervisor/Job.h"),
                                ("component/protocol", "component/backends/worker/Loop.h"),
                                ("component/backends/office", "component/backends/merge/Merge.h"),
                                ("tool", "ui/frmMain.h"), ("convert", "../tool/Tool.h"),
                                ("tool", "Near.h"), ("tool", "tests/support/Files.h")):
            with self.subTest(f"{folder} -> {include}"):
                self.assert_refused(f"src/{folder}/A.cpp", f'#include "{include}"\n', "may not include")
                (self.root / f"src/{folder}/A.cpp").unlink()

    def test_an_include_along_the_order_is_taken(self):
        self.assert_taken("src/convert/A.cpp", '#include "component/protocol/Answer.h"\n')

    def test_a_folder_without_a_place_is_refused(self):
        self.assert_refused("src/attic/A.cpp", "int a;\n", "has no place")

    def test_another_header_before_the_own_one_is_refused(self):
        self.assert_refused("src/component/protocol/Answer.cpp", "#include <vector>\n\n" + SOURCE,
                            "first include must be its own Answer.h")

    def test_the_own_header_of_a_system_source_comes_first_too(self):
        self.write("src/tool/Seam.h", HEADER)
        self.assert_refused("src/tool/Seam_linux.cpp", '#include <vector>\n\n#include "tool/Seam.h"\n',
                            "first include must be its own Seam.h")

    def test_a_header_that_can_be_read_twice_is_refused(self):
        self.assert_refused("src/tool/A.h", "int a();\n", "#pragma once")

    def test_a_giant_source_is_refused_and_a_large_one_noted(self):
        self.write("src/tool/A.cpp", "int a();\n" * 401)
        status, output = self.check()
        self.assertEqual(status, 0, output)
        self.assertIn("note: src/tool/A.cpp has 401 lines", output)
        self.assert_refused("src/tool/A.cpp", "int a();\n" * 601, "divide it")

    def test_a_large_header_is_noted(self):
        self.write("src/tool/A.h", "#pragma once\n" + "int a();\n" * 150)
        self.assertIn("note: src/tool/A.h has 151 lines", self.check()[1])

    def test_a_path_of_one_machine_is_refused(self):
        for folder in ("home/me", "root", "Users"):
            with self.subTest(folder):
                self.assert_refused("README.md", f"See /{folder}/notes for more.\n", "path of one machine")

    def test_an_address_in_the_build_is_refused(self):
        for line in ("set(SOURCE https" + "://example.org/x.tar.gz)", "execute_process(COMMAND cu" + "rl x)"):
            with self.subTest(line):
                self.assert_refused("CMakeLists.txt", line + "\n", "fetch nothing by address")

    @unittest.skipUnless(shutil.which("clang-format"), "clang-format is not installed")
    def test_unformatted_code_is_refused(self):
        self.assert_refused("src/tool/A.cpp", "int  a( ) ;\n", "not formatted")

    def test_text_that_is_not_clean_is_refused(self):
        for text, complaint in (("int a;", "no line end"), ("int a; \n", "white space"),
                                ("int a;\r\n", "white space"), (b"// \xff\n", "not UTF-8")):
            with self.subTest(complaint):
                self.assert_refused("src/tool/A.cpp", text, complaint)

    def test_a_broken_shell_script_is_refused(self):
        self.assert_refused("scripts/broken.sh", "if true; then\n", "broken.sh:1:")
        self.assert_refused("run", "#!/usr/bin/env bash\nif true; then\n", "run:1:")

    @unittest.skipUnless(shutil.which("shellcheck"), "shellcheck is not installed")
    def test_a_careless_shell_script_is_refused(self):
        self.assert_refused("scripts/careless.sh", "#!/usr/bin/env bash\nrm $1/*\n", "SC2086")

    def test_a_broken_python_script_is_refused(self):
        self.assert_refused("scripts/broken", "#!/usr/bin/env python3\ndef f(:\n", "is not Python")

    def test_the_order_of_the_folders_has_no_circle(self):
        names = {"__name__": "check_tree", "__file__": str(PROJECT / "scripts/check-tree")}
        exec((PROJECT / "scripts/check-tree").read_text(encoding="utf-8"), names)
        layers, done = names["LAYERS"], set()
        while len(done) < len(layers):
            free = {folder for folder in layers if folder not in done and layers[folder] <= done}
            self.assertTrue(free, f"a circle among {sorted(set(layers) - done)}")
            done |= free


if __name__ == "__main__":
    unittest.main()
