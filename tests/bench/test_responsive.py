"""bench/responsive measures real windows, and notices one that does not answer."""

import json
import os
import signal
import subprocess
import sys
import unittest
from pathlib import Path

from bench_path import BENCH, FolderTest

BUILD = Path(os.environ.get("QUORLIN_BUILD_DIR", BENCH.parent / "build/release")).absolute()
os.environ["QUORLIN_BUILD_DIR"] = str(BUILD)

from measure.responsive import Phase, ResponsiveError, measured, windows  # noqa: E402

LIMIT = 120


class Responsive(FolderTest):
    def run_command(self, *arguments):
        return subprocess.run([sys.executable, BENCH / "responsive", *arguments], capture_output=True, text=True,
                              timeout=LIMIT, check=False)

    def test_all_parts_are_measured(self):
        documents = self.folder / "documents"
        documents.mkdir()
        (documents / "one.ps").write_bytes(b"%!PS-Adobe-3.0\nshowpage\n")
        (documents / "faulty.ps").write_bytes(b"%!PS-Adobe-3.0\n1 0 div\n")
        told = self.folder / "told.json"
        done = self.run_command("--build", BUILD, "--count", "40", "--json", told, documents)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        phases = json.loads(told.read_text("utf-8"))
        self.assertEqual([phase["name"] for phase in phases],
                         ["job of 2 documents", "40 documents handed over in a folder", "40 documents dropped"])
        self.assertEqual([len(phase["messages"]) > 0 for phase in phases], [True, False, False])
        for phase in phases:
            self.assertIn(phase["name"], done.stdout)
            self.assertTrue(phase["ours"] and phase["peers"])

    def test_a_window_that_does_not_answer_for_a_while_is_noticed(self):
        phase = Phase("frozen")
        with windows() as (_, program, peer):
            program.tree.wait_for("showing")
            with measured(phase, program, peer):
                program.send_signal(signal.SIGSTOP)
                subprocess.run(["sleep", "0.4"], check=True)
                program.send_signal(signal.SIGCONT)
        self.assertGreater(max(phase.ours), 0.3)

    def test_a_window_that_ends_is_told(self):
        with self.assertRaisesRegex(ResponsiveError, "does not answer"), windows() as (_, program, peer):
            program.tree.wait_for("showing")
            with measured(Phase("ended"), program, peer):
                program.send_signal(signal.SIGKILL)
                program.wait_for_end()

    def test_missing_programs_are_told(self):
        done = self.run_command("--build", self.folder)
        self.assertEqual(done.returncode, 2)
        self.assertIn("no program", done.stderr)


if __name__ == "__main__":
    unittest.main()
