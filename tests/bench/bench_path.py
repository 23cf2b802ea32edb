"""Makes the measuring modules importable, and gives every test a folder of its own."""

import sys
import tempfile
import unittest
from pathlib import Path

sys.dont_write_bytecode = True
BENCH = Path(__file__).resolve().parents[2] / "bench"
sys.path.insert(0, str(BENCH))


class FolderTest(unittest.TestCase):
    def setUp(self):
        holder = tempfile.TemporaryDirectory(prefix="bench-test-")
        self.addCleanup(holder.cleanup)
        self.folder = Path(holder.name).resolve()

    def script(self, name, text):
        """An executable Python program in the test's folder."""
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text("#!/usr/bin/env python3\n" + text, encoding="utf-8")
        path.chmod(0o755)
        return path
