"""Every fault in the middle of every stage, with the real programs: the right reason, no half file under a final name,
documents as they were, nothing left after the next start, and a next job that works.

`-v` prints the matrix: fault, stage, where, what became of the documents. `-k hung` runs the rows of one fault,
`Merging` those of one stage.
"""

import sys
import unittest
from contextlib import ExitStack
from pathlib import Path

sys.dont_write_bytecode = True
sys.path.insert(0, str(Path(__file__).resolve().parent))

from matrix import damage, documents, mounts  # noqa: E402
from matrix.places import PROGRAMS  # noqa: E402
from matrix.processes import send  # noqa: E402
from matrix.rows import CONVERTED, FAULTS, NO_REPORT, ROWS, SENSELESS, missing  # noqa: E402
from matrix.stages import STAGES  # noqa: E402
from matrix.world import AS_ORDINARY_USER, Late, World, pages_of  # noqa: E402

CONTINUE, STOP = 18, 19
# Two tries of a document that stands still for six seconds each, on a busy machine.
HUNG_SECONDS = 40
TRIES = 4
RESULTS = {}


class RowTest(unittest.TestCase):
    """One row: a job that is caught in its middle and damaged, its end, and the next job in the same world."""

    def run_row(self, row):
        """Once more when a busy machine lets the moment pass: then nothing was damaged, and nothing was tested."""
        for tries_left in reversed(range(TRIES)):
            try:
                return self.try_row(row)
            except Late:
                if not tries_left:
                    raise

    def try_row(self, row):
        if row.disks and not mounts.may_mount():
            self.skipTest("This user may not mount a small disk.")
        with ExitStack() as stack:
            world = World()
            stack.callback(world.close)
            for name, kilobytes in row.disks.items():
                stack.enter_context(mounts.small_disk(getattr(world, name), kilobytes))
            self.prepare(world, row)
            self.damaged_job(world, row)
            self.check_results(world, row)
            self.repair(world)
            self.check_next_job(world)
            self.assertEqual(world.changed_files(), [])
            self.assertEqual(world.leftovers(), [])

    def prepare(self, world, row):
        for name, content in row.moment.documents.items():
            world.write(name, content())
        world.earlier_result(row.moment.result)
        if row.has_clock:
            damage.prepare_clock(world)
        if row.replaced:
            world.install(**row.replaced)

    def damaged_job(self, world, row):
        """Runs the job with its damage and compares what is reported of each document."""
        under = AS_ORDINARY_USER if row.is_ordinary_user else ()
        world.start(*row.limits, *row.moment.arguments(world.out), under=under)
        if not row.replaced:
            pid = world.catch(row.moment.program, row.moment.opens)
            row.damage(world, pid)
            if not row.keeps_stopped:
                send(pid, CONTINUE)
        reported = world.finish(lambda: self.keep_stopped(world, row))
        reasons = [document.get("reason", document["status"]) for document in reported]
        RESULTS[row] = (", ".join(sorted(set(reasons))) or NO_REPORT, world.seconds)
        self.assertEqual(len(reasons), 0 if row.expected == NO_REPORT else len(row.moment.documents))
        self.assertEqual([reason for reason in reasons if reason not in row.reasons], [], world.errors())
        self.check_told(world, reported)
        if row.expected == "too-long":
            self.assertLess(world.seconds, HUNG_SECONDS)

    @staticmethod
    def keep_stopped(world, row):
        if row.keeps_stopped:
            for pid in world.processes.of(row.keeps_stopped):
                send(pid, STOP)

    def check_told(self, world, reported):
        """Each failure comes with a sentence for people, in the report and on standard error."""
        for document in reported:
            if document["status"] == "failed":
                self.assertIn(f"{Path(document['input']).name}: {document['text']}", world.errors())

    def check_results(self, world, row):
        """Under a final name there is a whole new PDF, or what was there before."""
        result = world.out / row.moment.result
        if row.expected == CONVERTED:
            self.assertEqual(pages_of(result), row.moment.pages)
            world.note(result)
        self.assertEqual(world.changed_files(), [])

    @staticmethod
    def repair(world):
        """What was wrong with the machine is put right."""
        world.unlock()
        for folder in (world.temporary, world.documents, world.out):
            (folder / "filler").unlink(missing_ok=True)
        world.environment.pop("LD_PRELOAD", None)

    def check_next_job(self, world):
        world.programs = PROGRAMS
        world.environment["PATH"] = world.environment["PATH"].removeprefix(f"{world.folder / 'path'}:")
        world.write("next.ps", documents.postscript("next"))
        world.start("next.ps")
        reported = world.finish()
        self.assertEqual([document["status"] for document in reported], [CONVERTED], world.errors())
        result = world.documents / "next.pdf"
        self.assertEqual(pages_of(result), 1)
        world.note(result)


class Matrix(unittest.TestCase):
    def test_every_cell_is_tested_or_said_to_make_no_sense(self):
        self.assertEqual(missing(), [])


def _add_tests():
    for stage in STAGES:
        tests = {}
        for row in (row for row in ROWS if row.stage == stage):
            name = f"test_{row.fault} {row.place}".replace(" ", "_").replace("-", "_").replace(",", "")
            assert name not in tests, name
            tests[name] = lambda self, row=row: self.run_row(row)
            tests[name].__doc__ = f"{row.fault}, {stage} ({row.place}): {row.expected}"
        globals()[stage.capitalize()] = type(stage.capitalize(), (RowTest,), tests)


def tearDownModule():
    if "-v" in sys.argv:
        _print_matrix()


def _print_matrix():
    print("\n| fault | stage | in the middle of | the documents | seconds |\n| --- | --- | --- | --- | --- |",
          file=sys.stderr)
    for fault in FAULTS:
        for stage in STAGES:
            for row, (result, seconds) in RESULTS.items():
                if (row.fault, row.stage) == (fault, stage):
                    print(f"| {fault} | {stage} | {row.place} | {result} | {seconds:.1f} |", file=sys.stderr)
            if (fault, stage) in SENSELESS:
                print(f"| {fault} | {stage} | - | {SENSELESS[fault, stage]} | |", file=sys.stderr)


_add_tests()
del RowTest

if __name__ == "__main__":
    mounts.enter()
    unittest.main()
