"""Workers that need more memory than they may have: the document that asks for it fails with that reason, nothing else
does, and nothing is left. The limit is a job's, and the tool has no option for it: the component is driven directly.

There is no row for delivering: results are copied in small pieces, by no worker.
"""

import sys
import unittest
from pathlib import Path

sys.dont_write_bytecode = True
sys.path.insert(0, str(Path(__file__).resolve().parent))

from matrix import documents  # noqa: E402
from matrix.component import Component  # noqa: E402
from matrix.world import World  # noqa: E402

OUT_OF_MEMORY = "out-of-memory"
ROWS = []


class Memory(unittest.TestCase):
    def setUp(self):
        self.world = World()
        self.addCleanup(self.world.close)
        self.component = Component(self.world)

    def tearDown(self):
        """The next job works, and all that is left are the documents."""
        next_file = self.world.write("next.ps", documents.postscript("next"))
        reasons, outputs = self.component.distil([next_file])
        self.assertEqual((reasons, len(outputs)), ([], 1))
        self.assertEqual(self.component.close(), 0)
        self.assertEqual(self.world.changed_files(), [])
        self.assertEqual(self.world.leftovers(), [])

    def check(self, part, result, stage):
        reasons, outputs = result
        ROWS.append((stage, part, ", ".join(sorted(set(reasons))) or "converted"))
        self.assertEqual(set(reasons), {OUT_OF_MEMORY})
        self.assertFalse(any(Path(output).exists() for output in outputs), outputs)

    def test_printing_by_the_office_engine(self):
        page = self.world.write("long.html", documents.html(300))
        self.check("office engine", self.component.job("print", [page], {"memory": 20}), "printing")

    def test_printing_of_a_pdf(self):
        large = self.world.write("large.pdf", documents.pdf("large", lines=100, pages=20_000))
        self.check("quorlin-pdf-print", self.component.job("print", [large], {"memory": 10}), "printing")

    def test_distilling_in_a_process_of_its_own(self):
        greedy = self.world.write("greedy.ps", documents.greedy_postscript())
        self.check("gs of its own", self.component.distil([greedy], {"memory": 200}), "distilling")

    def test_distilling_in_a_warm_process(self):
        page = self.world.write("long.html", documents.html(250))
        reasons, printed = self.component.job("print", [page])
        self.assertEqual(reasons, [])
        self.check("warm gs", self.component.distil(printed, {"memory": 3}), "distilling")

    def test_merging(self):
        pages = [self.world.write(f"{name}.pdf", documents.pdf(name, pages=20_000)) for name in ("one", "two")]
        self.check("quorlin-pdf-merge", self.component.job("merge", pages, {"memory": 10}), "merging")


def tearDownModule():
    if "-v" in sys.argv:
        for stage, part, result in ROWS:
            print(f"| worker out of memory | {stage} | {part} | {result} |", file=sys.stderr)


if __name__ == "__main__":
    unittest.main()
