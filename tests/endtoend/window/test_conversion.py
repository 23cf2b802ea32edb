"""A conversion, from the documents dropped onto the window to the results that are shown."""

import shutil
import sys
from pathlib import Path

sys.dont_write_bytecode = True
sys.path.insert(0, str(Path(__file__).resolve().parent))

from harness.mainwindow import JOB_SECONDS, MainWindow  # noqa: E402
from harness.places import EXAMPLES  # noqa: E402
from harness.waiting import wait_until  # noqa: E402
from harness.windowtest import WindowTest, main  # noqa: E402

NAMES = ("Grüße aus Thistlemere.odt", "Thistlemere Handbook.docx")


class Conversion(WindowTest):
    def test_dropped_documents_are_converted_and_the_results_shown(self):
        documents = [Path(shutil.copy(EXAMPLES / name, self.desktop.home)) for name in NAMES]
        window = MainWindow(self)
        window.drop(*documents)
        window.wait_for_documents(*NAMES)
        window.set_option("Show result file")
        window.convert()
        results = [str(document.with_suffix(".pdf")) for document in documents]
        wait_until(lambda: self.desktop.opened() == results, lambda: f"{results}; {self.desktop.opened()} was opened",
                   JOB_SECONDS)
        window.wait_until_idle()
        for result in map(Path, results):
            self.assertTrue(result.read_bytes().startswith(b"%PDF-"))
        self.assertEqual(sorted(path.name for path in self.desktop.home.iterdir()),
                         sorted([*NAMES, *(Path(result).name for result in results)]))
        self.assertEqual(window.close(), 0)
        self.assertEqual(list(self.desktop.temporary.iterdir()), [])


if __name__ == "__main__":
    main()
