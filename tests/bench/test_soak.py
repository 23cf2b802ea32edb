"""That the soak notices what must not happen, and finds nothing where nothing is wrong."""

import json
import os
import signal
import subprocess
import sys
import time
import unittest
from pathlib import Path

from bench_path import BENCH, FolderTest
from pdfbuilder import sample

from measure.soak.client import Died, Place, User
from measure.soak.faults import KINDS, Dice, Fault, Injector
from measure.soak.growth import COMPONENT, MEBIBYTE, Record
from measure.soak.ledger import DIED, Ledger, Outcome
from measure.soak.processes import MARK, Holding, kind_of, left_of, lives, marked
from measure.soak.run import Run
from measure.soak.steps import Limits, Step, run_step, seconds_of
from measure.soak.stock import JobFolder, changed, digest_of, faults_of, looks_whole, stock_of

BUILD = Path(os.environ.get("QUORLIN_BUILD_DIR", BENCH.parent / "build/release"))
QUICK = Limits(stall=0.1, total=2, slack=0.5)

# A component whose sins are in the documents' names.
STAND_IN = """
import json, os, pathlib, subprocess, sys, time
PDF = pathlib.Path({pdf!r}).read_bytes()
work = pathlib.Path(os.environ["TMPDIR"]) / ("quorlin-work-%d" % os.getpid())
if "messy-start" not in os.environ.get("SIN", ""):
    for old in work.parent.glob("quorlin-work-*"):
        old.rmdir()
work.mkdir()
made = []
def say(**report):
    print(json.dumps(report), flush=True)
def sin(file, job):
    path = pathlib.Path(file)
    if "hang" in path.name:
        time.sleep(60)
    if "die" in path.name:
        sys.exit(3)
    if "spoil" in path.name:
        path.chmod(0o600); path.write_bytes(b"spoilt")
    if "litter" in path.name:
        (path.parent / "litter~").write_bytes(b"x")
    if "temporary" in path.name:
        (work.parent / "strange").write_bytes(b"x")
    if "orphan" in path.name:
        subprocess.Popen(["sleep", "60"], start_new_session=True)
    if "complain" in path.name:
        say(type="error", text="no such thing")
def handle(kind, job, documents):
    say(type="start", job=job)
    outputs, failed = [], 0
    for index, document in enumerate(documents, 1):
        file = document["file"]
        say(type="state", job=job, state=file)
        if kind == "print":
            sin(file, job)
        output = file + "~"
        outputs.append(output)
        if "refuse" in file and kind == "print":
            failed += 1
            say(type="failure", job=job, index=index, reason="damaged", text="Cannot be read")
        elif not ("lose" in file and kind == "distil"):
            pathlib.Path(output).write_bytes(b"broken" if "broken" in file else PDF)
            made.append(output)
        if kind == "print":
            say(type="output", job=job, index=index, file=output)
    say(type="complete", job=job, success=failed < len(documents) or not documents, duration=0, outputs=outputs)
say(type="hello", protocol=1, component="stand-in", version="0")
for line in sys.stdin:
    request = json.loads(line)
    if request["type"] in ("print", "distil", "merge"):
        handle(request["type"], request["job"], request["documents"])
    elif request["type"] == "clear":
        for name in made:
            pathlib.Path(name).unlink(missing_ok=True)
        made.clear()
work.rmdir()
"""


class RunTest(FolderTest):
    """One job of the stand-in for each document that is named."""

    def run_over(self, *names, dice=None, crash=False):
        pdf = sample().write(self.folder / "made.pdf")
        program = self.script("bin/quorlin-pdf", STAND_IN.format(pdf=str(pdf)))
        stock = self.folder / "stock"
        stock.mkdir()
        for name in names:
            (stock / name).write_bytes(name.encode())
        place = Place(User(), self.folder)
        run = Run(program, self.folder / "none.joboptions", stock_of(stock), place, subprocess.DEVNULL)
        self.addCleanup(run.abandon)
        run.start()
        for original in stock_of(stock):
            folder = run._new_folder()
            folder.add(original)
            fault = Fault("crash") if crash else None
            run._run_job(folder, fault, QUICK, False, dice or Dice(1, [], 0))
        self.before_end(run)
        run.finish()
        return run.ledger

    def before_end(self, run):
        """For tests that do something in between."""

    def only_problem(self, ledger, kind):
        found = {name: texts for name, texts in ledger.problems.items() if texts}
        self.assertEqual(list(found), [kind], found)
        return " ".join(found[kind])

    def test_documents_come_through_and_failures_are_counted_with_their_reasons(self):
        ledger = self.run_over("a.odt", "b.docx", "refuse.odt")
        self.assertTrue(ledger.passed(), ledger.problems)
        self.assertEqual((ledger.jobs, ledger.done, ledger.failed), (3, 2, 1))
        self.assertEqual(ledger.reasons["none"], {"damaged": 1})
        self.assertEqual(ledger.checked, 2)

    def test_a_hang_is_noticed_and_the_next_job_has_another_component(self):
        ledger = self.run_over("a-hang.odt", "b.odt")
        self.assertIn("silent", self.only_problem(ledger, "hangs"))
        self.assertEqual((ledger.done, ledger.reasons["none"]["hung"]), (1, 1))

    def test_a_component_that_dies_by_itself_is_a_loss(self):
        ledger = self.run_over("a-die.odt", "b.odt")
        self.assertIn("ended with 3", self.only_problem(ledger, "lost"))
        self.assertEqual((ledger.done, ledger.reasons["none"][DIED]), (1, 1))

    def test_a_result_that_is_not_there_is_a_loss(self):
        self.assertIn("lose.odt", self.only_problem(self.run_over("lose.odt"), "lost"))

    def test_a_broken_result_is_noticed(self):
        self.assertIn("not a whole PDF", self.only_problem(self.run_over("broken.odt"), "damaged"))

    def test_a_file_beside_the_documents_is_a_leftover(self):
        self.assertIn("litter~", self.only_problem(self.run_over("litter.odt"), "leftovers"))

    def test_a_strange_temporary_file_is_a_leftover_told_once(self):
        told = self.only_problem(self.run_over("temporary.odt", "z.odt"), "leftovers")
        self.assertEqual(told.count("tmp/strange"), 1)

    def test_a_process_that_stays_is_a_leftover(self):
        self.assertIn("sleep", self.only_problem(self.run_over("orphan.odt"), "leftovers"))

    def test_a_changed_document_is_noticed(self):
        self.assertIn("spoil.odt", self.only_problem(self.run_over("spoil.odt"), "changed"))

    def test_a_changed_original_is_noticed(self):
        self.before_end = lambda run: (self.folder / "stock/a.odt").write_bytes(b"other")
        self.assertEqual(self.only_problem(self.run_over("a.odt"), "changed"), "a.odt")

    def test_an_error_without_a_cause_breaks_the_protocol(self):
        self.assertIn("no such thing", self.only_problem(self.run_over("complain.odt"), "breaches"))

    def test_a_killed_component_is_no_problem_when_its_successor_tidies_up(self):
        ledger = self.run_over("a.odt", "b.odt", crash=True)
        self.assertTrue(ledger.passed(), ledger.problems)
        self.assertEqual(ledger.faults["crash"] + ledger.missed["crash"], 2)

    def test_what_a_killed_component_left_is_noticed(self):
        os.environ["SIN"] = "messy-start"
        self.addCleanup(os.environ.pop, "SIN")
        self.before_end = lambda run: (run._client.kill(), run._start_anew(), run._look_after(run._new_folder()))
        self.assertIn("quorlin-work-", self.only_problem(self.run_over("a.odt"), "leftovers"))


class Script:
    """A client whose reports come at given times of a clock that only waiting moves."""

    def __init__(self, *reports):
        self._reports, self.now = list(reports), 0.0

    def clock(self):
        return self.now

    def next_job(self):
        return 1

    def send(self, request):
        pass

    def next(self, seconds):
        if self._reports and self._reports[0][0] <= self.now + seconds:
            self.now, report = self._reports.pop(0)
            if report is None:
                raise Died("gone")
            return self.now, {"job": 1, **report}
        self.now += seconds
        return None


def complete(when, outputs, success=True):
    return when, {"type": "complete", "success": success, "outputs": outputs}


class StepTest(unittest.TestCase):
    LIMITS = Limits(stall=10, total=20, slack=5)

    def run_script(self, *reports, documents=2):
        script = Script(*reports)
        return run_step(script, "print", [{"file": "/d/a"}] * documents, self.LIMITS, clock=script.clock)

    def test_silence_beyond_two_stalls_is_a_hang(self):
        step = self.run_script((1, {"type": "start"}))
        self.assertEqual((step.ending, step.seconds), ("hung", 26))

    def test_reports_without_end_are_a_hang_too(self):
        step = self.run_script(*((at, {"type": "progress", "percent": 1}) for at in range(200)), documents=1)
        self.assertEqual(step.ending, "hung")
        self.assertEqual(step.seconds, self.LIMITS.longest(1))

    def test_an_answer_in_time_is_none(self):
        step = self.run_script((1, {"type": "start"}), complete(25, ["a~", "b~"]))
        self.assertEqual((step.ending, step.seconds, step.breaches), ("complete", 25, []))

    def test_a_failed_document_has_no_output(self):
        failure = {"type": "failure", "index": 2, "reason": "damaged", "text": "…"}
        step = self.run_script((1, failure), complete(2, ["a~", "b~"]))
        self.assertEqual((step.output(0), step.output(1)), ("a~", None))

    def test_a_missing_output_and_a_wrong_success_are_breaches(self):
        step = self.run_script(complete(1, ["a~"], success=False))
        self.assertEqual(len(step.breaches), 2)

    def test_death_ends_the_step(self):
        self.assertEqual(self.run_script((3, None)).ending, "died")

    def test_documents_one_after_the_other_have_times_of_their_own(self):
        step = Step("print", 3, told={0: 1, 1: 9, 2: 9}, states=[0, 1, 4], seconds=9)
        self.assertEqual(seconds_of(step, Limits(at_once=1)), [1, 3 + 5, 5])
        self.assertEqual(seconds_of(step, Limits()), [1, 9, 9])


class GrowthTest(unittest.TestCase):
    def verdict(self, *series, kind=COMPONENT, minutes=30):
        """`series` are functions of the minute: memory in MiB, threads, files."""
        record = Record()
        for step in range(minutes * 4):
            memory, threads, files = (one(step / 4) for one in series)
            record.add(step * 15, [Holding(1, kind, int(memory * MEBIBYTE), threads, files)], True)
        return record.verdict()

    FLAT = (lambda minute: 20, lambda minute: 3, lambda minute: 19)

    def test_what_stays_the_same_does_not_grow(self):
        self.assertEqual(self.verdict(*self.FLAT), ([], []))

    def test_a_leak_of_memory_is_noticed(self):
        grows, _ = self.verdict(lambda minute: 20 + minute, *self.FLAT[1:])
        self.assertEqual(grows, ["quorlin-pdf memory +20.0 MiB"])

    def test_files_and_threads_that_stay_open_are_noticed(self):
        grows, _ = self.verdict(self.FLAT[0], lambda minute: 3 + minute, lambda minute: 19 + minute)
        self.assertEqual([text.split(" +")[0] for text in grows], ["quorlin-pdf threads", "quorlin-pdf files"])

    def test_an_engine_that_is_replaced_again_and_again_does_not_grow(self):
        self.assertEqual(self.verdict(lambda minute: 200 + 30 * (minute % 5), *self.FLAT[1:], kind="soffice.bin")[0], [])

    def test_engines_that_begin_larger_each_time_grow(self):
        self.assertTrue(self.verdict(lambda minute: 200 + 15 * minute, *self.FLAT[1:], kind="soffice.bin")[0])

    def test_too_short_a_time_is_not_judged(self):
        self.assertEqual(self.verdict(lambda minute: 20 + 9 * minute, *self.FLAT[1:], minutes=8), ([], [COMPONENT]))

    def test_the_component_is_judged_in_its_longest_life_and_at_rest(self):
        record = Record()
        for life, base in enumerate((20, 200)):
            record.new_component()
            for step in range(120 - 60 * life):
                holding = Holding(1, COMPONENT, base * MEBIBYTE, 3, 19)
                record.add(life * 2000 + step * 15, [holding], True)
                record.add(life * 2000 + step * 15 + 1, [Holding(1, COMPONENT, step << 30, 99, 99)], False)
        self.assertEqual(record.verdict(), ([], []))
        self.assertEqual(len(record.series(COMPONENT, "memory")), 120)


class FaultTest(FolderTest):
    def job_folder(self):
        folder = JobFolder(self.folder, 1, User())
        folder.add_content("a", "a.odt", b"0123456789")
        folder.copies[0].touched = ""
        return folder

    def test_one_seed_makes_the_same_choices(self):
        first, second = Dice(7, KINDS, 0.5), Dice(7, KINDS, 0.5)
        self.assertEqual([first.fault() for _ in range(50)], [second.fault() for _ in range(50)])

    def test_no_rate_and_no_kind_mean_no_fault(self):
        for dice in (Dice(1, KINDS, 0), Dice(1, [], 1)):
            self.assertEqual({dice.fault() for _ in range(50)}, {None})

    def test_a_crash_comes_only_when_it_may(self):
        dice = Dice(1, ["kill", "crash"], 1)
        self.assertEqual({dice.fault(may_crash=False).kind for _ in range(50)}, {"kill"})

    def test_a_truncated_document_is_what_it_should_be_now(self):
        folder = self.job_folder()
        injector = Injector(Fault("truncate"), None, folder, Dice(1, [], 0))
        injector._truncate()
        self.assertLess(folder.copies[0].path.stat().st_size, 10)
        self.assertEqual(folder.problems(), ([], []))

    def test_a_removed_document_is_not_missed(self):
        folder = self.job_folder()
        Injector(Fault("remove"), None, folder, Dice(1, [], 0))._remove()
        self.assertEqual(folder.problems(), ([], []))
        self.assertEqual(folder.copies[0].touched, "remove")

    def test_a_stranger_and_a_missing_document_are_told(self):
        folder = self.job_folder()
        (folder.path / "a.pdf~").write_bytes(b"x")
        folder.copies[0].path.unlink()
        self.assertEqual(folder.problems(), (["job1/a.pdf~"], ["job1/a.odt"]))

    def test_only_processes_of_the_component_are_hit(self):
        """The victim has the name of an engine, and so has a process that is not the component's."""
        engines = [subprocess.Popen(["bash", "-c", "printf gs > /proc/$$/comm; read line"], stdin=subprocess.PIPE)
                   for _ in range(2)]  # fmt: skip
        for engine in engines:
            self.addCleanup(engine.wait)
            self.addCleanup(engine.kill)
            self.addCleanup(engine.stdin.close)
            self.await_name(engine.pid, "gs")
        fault = Fault("kill", "gs")
        injector = Injector(fault, FakeClient([engines[0].pid]), self.job_folder(), Dice(1, [], 0))
        self.assertEqual(injector._signal(signal.SIGKILL), engines[0].pid)
        self.assertEqual(fault.told(), "kill gs")
        engines[0].wait(10)
        self.assertIsNone(engines[1].poll())

    def await_name(self, pid, name):
        deadline = time.monotonic() + 10
        while kind_of(pid) != name and time.monotonic() < deadline:
            time.sleep(0.01)
        self.assertEqual(kind_of(pid), name)

    def test_a_marked_process_is_found_whoever_adopted_it(self):
        environment = {**os.environ, MARK: "abc123"}
        process = subprocess.Popen(["sleep", "60"], env=environment)
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        deadline = time.monotonic() + 10
        while process.pid not in marked("abc123") and time.monotonic() < deadline:
            time.sleep(0.01)
        self.assertEqual(marked("abc123"), [process.pid])
        self.assertTrue(lives(process.pid))
        self.assertEqual(left_of(FakeClient([], "abc123")), [f"{process.pid} sleep"])


class FakeClient:
    def __init__(self, pids, mark="none"):
        self._pids, self.mark, self.pid = pids, mark, 0

    def processes(self):
        return self._pids


class LedgerTest(FolderTest):
    def test_a_document_with_two_ends_and_no_fault_is_unsteady(self):
        ledger = Ledger()
        ends = [Outcome("a"), Outcome("a", "damaged"), Outcome("b"), Outcome("b", "too-long", share="job")]
        ledger.note_job(None, ends, False)
        self.assertEqual(ledger.unsteady(), {"a": {"": 1, "damaged": 1}})
        self.assertEqual(ledger.reasons["job"], {"too-long": 1})

    def test_what_a_fault_costs_the_other_documents_is_told_apart(self):
        ledger = Ledger()
        ends = [Outcome("a", share="job"), Outcome("b", "too-long", share="job"), Outcome("c", "damaged", share="own")]
        ledger.note_job(Fault("stop", "gs", happened=True), ends, False)
        ledger.note_job(Fault("kill", "gs"), [Outcome("a", "damaged", share="none")], False)
        self.assertEqual(ledger.cost_of("stop gs"), (1, 0, {"b": "too-long"}))
        ledger.note_job(None, [Outcome("b", "too-long")], False)
        self.assertEqual(ledger.cost_of("stop gs"), (1, 1, {}))
        self.assertEqual((ledger.faults, ledger.missed), ({"stop": 1}, {"kill": 1}))

    def test_each_kind_of_problem_fails_the_run(self):
        for kind in Ledger.PROBLEMS:
            ledger = Ledger()
            ledger.problem(kind, "something")
            self.assertFalse(ledger.passed())

    def test_originals_are_compared_by_content(self):
        (self.folder / "a.odt").write_bytes(b"a")
        stock = stock_of(self.folder)
        self.assertEqual(changed(stock), [])
        (self.folder / "a.odt").write_bytes(b"b")
        self.assertEqual(changed(stock), ["a.odt"])
        self.assertNotEqual(stock[0].digest, digest_of(stock[0].path))

    def test_half_a_pdf_is_not_whole(self):
        pdf = sample().write(self.folder / "a.pdf")
        self.assertTrue(looks_whole(pdf))
        self.assertEqual(faults_of(pdf), "")
        pdf.write_bytes(pdf.read_bytes()[:300])
        self.assertFalse(looks_whole(pdf))
        self.assertTrue(faults_of(pdf))


@unittest.skipUnless((BUILD / "bin/quorlin-pdf").is_file(), f"no quorlin-pdf in {BUILD}/bin")
class CommandTest(FolderTest):
    """The component itself, over the examples, for seconds."""

    def soak(self, *options):
        figures = self.folder / "figures.json"
        command = [sys.executable, BENCH / "soak", BENCH.parent / "examples", "--bin", BUILD / "bin",
                   "--user", "root", "--json", figures, *options]  # fmt: skip
        done = subprocess.run(command, capture_output=True, text=True, timeout=150, check=False)
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
        return json.loads(figures.read_text(encoding="utf-8")), done.stdout

    def test_every_example_converts_once(self):
        figures, text = self.soak("--once")
        self.assertEqual((figures["done"], figures["failed"]), (7, 0))
        self.assertIn("7 documents: 7 converted", text)

    def test_nothing_is_lost_or_left_whatever_happens(self):
        kinds = "kill,remove,truncate,garbage,limits,crash"
        figures, text = self.soak("--minutes", "0.3", "--faults", "1", "--kinds", kinds, "--seed", "5")
        self.assertGreaterEqual(figures["jobs"], 1)
        self.assertTrue(figures["faults"])
        self.assertIn("hangs: none", text)

    def test_a_wrong_kind_is_refused(self):
        command = [sys.executable, BENCH / "soak", self.folder, "--kinds", "kill,earthquake"]
        done = subprocess.run(command, capture_output=True, text=True, timeout=30, check=False)
        self.assertEqual(done.returncode, 2)
        self.assertIn("earthquake", done.stderr)


if __name__ == "__main__":
    unittest.main()
