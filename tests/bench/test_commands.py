"""Staging, both sides' runs and the whole command, with stand-ins for the programs."""

import json
import shutil
import subprocess
import sys
import unittest

from bench_path import BENCH, FolderTest
from pdfbuilder import sample

from measure.documents import OFFICE, PDF, UsageError, stage, waves
from measure.exporters import DirectExport, QuorlinConvert, earlier_export

# Writes a PDF for every document that does not ask for a crash; a crash ends the whole batch.
OFFICE_STAND_IN = """
import pathlib, shutil, sys
folder = pathlib.Path(sys.argv[sys.argv.index("--outdir") + 1])
with open({log!r}, "a") as log:
    log.write(" ".join(pathlib.Path(name).name for name in sys.argv[sys.argv.index("--outdir") + 2:]) + "\\n")
for name in sys.argv[sys.argv.index("--outdir") + 2:]:
    if "crash" in pathlib.Path(name).read_text():
        sys.exit("crashed")
    (folder / (pathlib.Path(name).stem + ".pdf")).write_bytes(pathlib.Path({pdf!r}).read_bytes() + name.encode())
"""

TOOL_STAND_IN = """
import argparse, json, pathlib
parser = argparse.ArgumentParser()
for option in ("-q", "-o", "--json"):
    parser.add_argument(option)
parser.add_argument("documents", nargs="+")
given = parser.parse_args()
entries = []
for name in given.documents:
    output = pathlib.Path(given.o) / (pathlib.Path(name).stem + ".pdf")
    entry = {{"input": name, "output": str(output), "status": "done", "reason": "", "text": "", "seconds": 0.1}}
    if "refuse" in pathlib.Path(name).read_text():
        entry.update(output="", status="failed", reason="damaged", text="Cannot be read")
    else:
        output.write_bytes(pathlib.Path({pdf!r}).read_bytes())
    entries.append(entry)
pathlib.Path(given.json).write_text(json.dumps({{"documents": entries}}))
"""


class CommandTest(FolderTest):
    def setUp(self):
        super().setUp()
        self.source = self.folder / "given"
        self.log = self.folder / "office.log"
        pdf = sample().write(self.folder / "made.pdf")
        self.office = self.script("office", OFFICE_STAND_IN.format(pdf=str(pdf), log=str(self.log)))
        self.script("bin/quorlin-convert", TOOL_STAND_IN.format(pdf=str(pdf)))

    def given(self, **contents):
        """Documents by name, "__" standing for the dot."""
        for name, content in contents.items():
            path = self.source / name.replace("__", ".")
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(content)

    def staged(self):
        return stage([str(self.source)], self.folder / "stage", OFFICE | PDF)

    def content_of_source(self):
        return {str(path): path.stat().st_mtime_ns for path in self.source.rglob("*")}


class StagingTest(CommandTest):
    def test_only_documents_are_taken_and_other_files_stay_beside_them(self):
        self.given(a__docx="a", notes__xyz="n", **{"sub/b__pdf": "b"})
        documents = self.staged()
        self.assertEqual([document.label for document in documents], ["given/a.docx", "given/sub/b.pdf"])
        self.assertEqual((documents[0].staged.parent / "notes.xyz").read_text(), "n")

    def test_two_folders_of_one_name_are_kept_apart(self):
        for parent in ("x", "y"):
            (self.folder / parent / "same").mkdir(parents=True)
            (self.folder / parent / "same" / "a.odt").write_text(parent)
        folders = [str(self.folder / parent / "same") for parent in ("x", "y")]
        documents = stage(folders, self.folder / "stage", OFFICE)
        self.assertEqual([document.staged.read_text() for document in documents], ["x", "y"])

    def test_nothing_to_measure_is_wrong_use(self):
        self.source.mkdir()
        with self.assertRaises(UsageError):
            self.staged()
        with self.assertRaises(UsageError):
            stage([str(self.folder / "missing")], self.folder / "stage", OFFICE)

    def test_equal_base_names_come_into_different_waves(self):
        self.given(a__doc="", a__docx="", b__odt="", **{"sub/a__odt": ""})
        groups = [[document.label for document in wave] for wave in waves(self.staged())]
        self.assertEqual(groups, [["given/a.doc", "given/b.odt"], ["given/a.docx"], ["given/sub/a.odt"]])


class ExportTest(CommandTest):
    def export(self):
        work = self.folder / "work"
        return DirectExport(work, str(self.office)).export(self.staged(), self.folder / "kept")

    def test_documents_of_one_base_name_keep_their_own_results(self):
        self.given(a__doc="", a__docx="")
        for label, outcome in self.export().items():
            self.assertTrue(outcome.pdf.read_bytes().endswith(label.encode()), label)

    def test_a_crash_costs_only_its_own_document(self):
        self.given(a__odt="", b__odt="crash", c__odt="")
        outcomes = self.export()
        self.assertIsNone(outcomes["given/b.odt"].pdf)
        self.assertIn("crashed", outcomes["given/b.odt"].reason)
        self.assertIsNotNone(outcomes["given/c.odt"].pdf)
        self.assertEqual(self.log.read_text().splitlines(), ["a.odt b.odt c.odt", "b.odt", "c.odt"])

    def test_a_pdf_is_its_own_reference(self):
        self.given(p__pdf="as it is")
        self.assertEqual(self.export()["given/p.pdf"].pdf.read_text(), "as it is")
        self.assertFalse(self.log.exists())

    def test_an_earlier_export_is_found_again(self):
        self.given(a__doc="", a__docx="", b__odt="crash")
        self.export()
        shutil.rmtree(self.folder / "stage")
        found = earlier_export(self.staged(), self.folder / "kept")
        self.assertEqual([label for label, outcome in found.items() if outcome.pdf], ["given/a.doc", "given/a.docx"])

    def test_the_tool_s_reasons_are_taken_over(self):
        self.given(a__odt="", b__odt="refuse")
        outcomes = QuorlinConvert(self.folder / "bin").convert(self.staged(), self.folder, self.folder / "kept")
        self.assertIsNotNone(outcomes["given/a.odt"].pdf)
        self.assertEqual(outcomes["given/b.odt"].reason, "damaged: Cannot be read")

    def test_a_tool_without_a_report_fails_every_document(self):
        self.given(a__odt="")
        self.script("bin/quorlin-convert", "import sys\nsys.exit('no such option')\n")
        outcomes = QuorlinConvert(self.folder / "bin").convert(self.staged(), self.folder, self.folder / "kept")
        self.assertIn("no such option", outcomes["given/a.odt"].reason)


class FidelityTest(CommandTest):
    def setUp(self):
        super().setUp()
        missing = [tool for tool in ("qpdf", "pdftotext", "pdffonts", "pdftoppm") if not shutil.which(tool)]
        if missing:
            self.skipTest(f"not installed: {', '.join(missing)}")

    def fidelity(self, *arguments):
        command = [sys.executable, BENCH / "fidelity", "--bin", self.folder / "bin", "--soffice", self.office]
        command = [str(part) for part in (*command, *arguments)]
        return subprocess.run(command, capture_output=True, text=True, check=False)

    def test_wrong_use_gives_two(self):
        self.assertEqual(self.fidelity().returncode, 2)
        self.assertEqual(self.fidelity(self.folder / "missing").returncode, 2)

    def test_a_whole_run_measures_and_leaves_the_folder_alone(self):
        self.given(a__odt="", a__docx="", b__odt="crash refuse", c__odt="refuse", d__odt="crash")
        before, report = self.content_of_source(), self.folder / "report.json"
        done = self.fidelity("--json", report, "--keep", self.folder / "keep", self.source)
        self.assertEqual((done.returncode, self.content_of_source()), (0, before), done.stderr)
        summary = json.loads(report.read_text())["summary"]
        self.assertEqual(summary["compared"], 2)
        self.assertEqual(summary["failed"], {"given/c.odt": "damaged: Cannot be read"})
        self.assertEqual(list(summary["failed_on_both_sides"]), ["given/b.odt"])
        self.assertEqual(list(summary["only_in_the_result"]), ["given/d.odt"])
        self.assertEqual(summary["tallies"]["words"]["percent"], 100.0)
        self.assertEqual(summary["render"][:2], [0.0, 0.0])
        self.assertTrue((self.folder / "keep/result/given/a.docx.pdf").is_file())

    def test_goals_are_missed_when_nothing_could_be_compared(self):
        self.given(a__odt="crash refuse")
        report = self.folder / "report.json"
        self.fidelity("--json", report, self.source)
        self.assertFalse(any(goal["reached"] for goal in json.loads(report.read_text())["summary"]["goals"]))


if __name__ == "__main__":
    unittest.main()
