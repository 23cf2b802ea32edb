"""Reports of the program are what docs/convert-report.schema.json says, and nothing else is.

QUORLIN_PROGRAM and QUORLIN_FAKE_COMPONENT name the tool and the fake component.
"""

import copy
import json
import os
import shutil
import signal
import subprocess
import tempfile
import time
import unittest
from pathlib import Path

import jsonschema

PROJECT = Path(__file__).resolve().parents[3]
SCHEMA = json.loads((PROJECT / "docs/convert-report.schema.json").read_text())
INI = "[Printer]\nName = Test PDF\n[JobOptions]\nDefault = Default.joboptions\n"


def faults(report):
    """What the schema finds wrong with a report."""
    return [error.message for error in jsonschema.Draft202012Validator(SCHEMA).iter_errors(report)]


class ReportSchema(unittest.TestCase):
    def setUp(self):
        self.folder = Path(tempfile.mkdtemp()).resolve()
        self.addCleanup(shutil.rmtree, self.folder)
        programs = self.folder / "programs"
        (programs / "Settings").mkdir(parents=True)
        (programs / "Settings/Default.joboptions").write_text("text")
        (programs / "Quorlin.ini").write_text(INI)
        self.tool = programs / "quorlin-convert"
        shutil.copy(os.environ["QUORLIN_PROGRAM"], self.tool)
        shutil.copy(os.environ["QUORLIN_FAKE_COMPONENT"], programs / "quorlin-pdf")

    def write(self, *names):
        for name in names:
            (self.folder / name).parent.mkdir(exist_ok=True)
            (self.folder / name).write_text("text")

    def report(self, *arguments, code):
        """Runs the tool, checks its report and gives it back."""
        run = subprocess.run([self.tool, "--json", "-", *arguments], cwd=self.folder, timeout=60,
                             stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False)
        self.assertEqual(run.returncode, code, run.stderr)
        return self.checked(json.loads(run.stdout))

    def checked(self, report):
        self.assertEqual(faults(report), [])
        totals = report["totals"]
        self.assertEqual(len(report["documents"]), totals["documents"])
        self.assertEqual(totals["converted"] + totals["failed"] + totals.get("planned", 0),
                         totals["documents"])
        return report

    def test_the_schema_is_one(self):
        jsonschema.Draft202012Validator.check_schema(SCHEMA)

    def test_the_schema_knows_every_reason_of_the_program(self):
        source = (PROJECT / "src/component/protocol/Reason.cpp").read_text()
        words = [line.split('"')[1] for line in source.splitlines() if "Entry{Reason::" in line]
        self.assertEqual(set(words) - {"none"}, set(SCHEMA["$defs"]["reason"]["enum"]))

    def test_every_reason_of_the_component_reaches_the_report(self):
        pairs = [entry["properties"] for entry in SCHEMA["$defs"]["reasonAndCode"]["oneOf"]]
        codes = {pair["reason"]["const"]: pair["code"]["const"] for pair in pairs}
        names = [f"because-{word}-.txt" for word in codes]
        self.write(*names)
        report = self.report(*names, code=1)
        self.assertEqual({document["reason"]: document["code"] for document in report["documents"]},
                         codes)
        self.assertEqual([document["detail"] for document in report["documents"]],
                         [f"it is {word}" for word in codes])

    def test_a_success(self):
        self.write("a.txt", "sub/b.txt")
        report = self.report("a.txt", "sub", code=0)
        self.assertEqual(report["totals"]["converted"], 2)

    def test_failures_of_all_steps(self):
        self.write("a.txt", "fail.txt", "protected.txt", "undistillable.txt", "b.xyz")
        report = self.report("a.txt", "fail.txt", "protected.txt", "undistillable.txt", "b.xyz",
                             "none.txt", code=1)
        self.assertEqual(report["totals"]["failed"], 5)

    def test_a_component_that_is_missing(self):
        (self.folder / "programs/quorlin-pdf").unlink()
        self.write("a.txt")
        self.report("a.txt", code=1)

    def test_a_merge(self):
        self.write("a.txt", "b.txt")
        report = self.report("-m", "all.pdf", "a.txt", "b.txt", code=0)
        self.assertEqual(report["merged"], str(self.folder / "all.pdf"))

    def test_a_merge_that_fails(self):
        self.write("a.txt", "unmergeable.txt")
        report = self.report("-m", "all.pdf", "a.txt", "unmergeable.txt", code=1)
        self.assertIsNone(report["merged"])

    def test_a_dry_run(self):
        self.write("a.txt")
        report = self.report("-n", "a.txt", "none.txt", code=1)
        self.assertEqual([document["status"] for document in report["documents"]],
                         ["planned", "failed"])

    def test_a_dry_run_of_a_merge(self):
        self.write("a.txt", "b.txt")
        report = self.report("-n", "-m", "all.pdf", "a.txt", "b.txt", code=0)
        self.assertEqual(report["merged"], report["documents"][1]["output"])

    def test_results_that_may_not_be_written(self):
        self.write("a.txt", "b.xyz", "file")
        report = self.report("-o", "file/sub", "a.txt", "b.xyz", code=1)
        self.assertEqual([document["reason"] for document in report["documents"]],
                         ["not-allowed", "unknown-format"])
        (self.folder / "all.pdf").write_text("locked")
        (self.folder / "all.pdf").chmod(0o444)
        report = self.report("-m", "all.pdf", "a.txt", code=1)
        self.assertEqual(report["documents"][0]["reason"], "not-allowed")

    def test_a_run_without_documents(self):
        (self.folder / "empty").mkdir()
        self.assertEqual(self.report("empty", code=1)["documents"], [])
        self.assertTrue(self.report("-n", "empty", code=1)["dryRun"])

    def test_a_run_that_was_interrupted(self):
        self.write("a.txt", "dawdle.txt")
        tool = subprocess.Popen([self.tool, "--json", "-", "a.txt", "dawdle.txt"], cwd=self.folder,
                                stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        deadline = time.monotonic() + 30
        while not (self.folder / "a.ps~").exists() and time.monotonic() < deadline:
            time.sleep(0.02)
        tool.send_signal(signal.SIGTERM)
        output, _ = tool.communicate(timeout=30)
        self.assertEqual(tool.returncode, 143)
        report = self.checked(json.loads(output))
        self.assertEqual({document["reason"] for document in report["documents"]}, {"cancelled"})

    def test_names_that_are_not_utf8(self):
        report = self.report(b"\xff.txt", code=1)
        self.assertEqual(report["documents"][0]["input"], str(self.folder / "\ufffd.txt"))

    def test_what_is_no_report_is_refused(self):
        self.write("a.txt", "fail.txt")
        real = self.report("-m", "all.pdf", "a.txt", "fail.txt", code=1)
        for what, change in changes():
            with self.subTest(what):
                changed = copy.deepcopy(real)
                change(changed)
                self.assertNotEqual(faults(changed), [])

    def test_what_is_no_report_of_a_dry_run_is_refused(self):
        self.write("a.txt")
        real = self.report("-n", "a.txt", "none.txt", code=1)
        for what, change in changes_of_a_dry_run():
            with self.subTest(what):
                changed = copy.deepcopy(real)
                change(changed)
                self.assertNotEqual(faults(changed), [])


SENTENCES = ("text", "advice", "detail")


def places():
    """Every object in a report of a merge with one result and one failure, and its members."""
    yield (), ("report", "version", "quality", "documents", "totals")
    yield ("totals",), ("documents", "converted", "failed", "seconds")
    yield ("documents", 0), ("input", "output", "seconds", "status")
    yield ("documents", 1), ("input", "output", "seconds", "status", "reason", "code", "text", "advice")


def changes():
    """Changes that make a report something else, each with its name."""
    def at(report, path):
        for step in path:
            report = report[step]
        return report

    def setter(path, member, value):
        return lambda report: at(report, path).__setitem__(member, value)

    for path, members in places():
        yield f"{path} with an unknown member", setter(path, "more", 1)
        for member in members:
            yield (f"{path} without {member}",
                   lambda report, path=path, member=member: at(report, path).pop(member))
            for value in (True, {"a": 1}, -1, "no/such\nword" if member not in SENTENCES else 1):
                if not (member in ("quality", "version") and isinstance(value, str)):
                    yield f"{path}.{member} as {value!r}", setter(path, member, value)
    yield "a failure with a result", setter(("documents", 1), "output", "/a.pdf")
    yield "a result with a reason", setter(("documents", 0), "reason", "empty")
    yield "a result with a detail", setter(("documents", 0), "detail", "it is empty")
    yield "a detail that says nothing", setter(("documents", 1), "detail", "")
    yield "the number of another reason", setter(("documents", 1), "code", 42)
    yield "a result without a file", setter(("documents", 0), "output", None)
    yield "a plan without a dry run", setter(("documents", 0), "status", "planned")
    yield "planned without a dry run", setter(("totals",), "planned", 1)
    yield "a dry run that converted", setter((), "dryRun", True)
    yield "a merged file that is none", setter((), "merged", 1)
    yield "another version", setter((), "report", 2)


def changes_of_a_dry_run():
    yield "not told as such", lambda report: report.pop("dryRun")
    yield "told as none", lambda report: report.update(dryRun=False)
    yield "no number of plans", lambda report: report["totals"].pop("planned")
    yield "a converted document", lambda report: report["totals"].update(converted=1)
    yield "a result", lambda report: report["documents"][0].update(status="converted")
    yield "a plan with a reason", lambda report: report["documents"][0].update(reason="empty")


if __name__ == "__main__":
    unittest.main()
