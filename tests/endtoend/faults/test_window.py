"""The window and all its workers killed in the middle of every stage: no process stays, whole results stay whole, and
the next window works in the same place and leaves nothing else there."""

import re
import sys
from pathlib import Path

sys.dont_write_bytecode = True
sys.path[:0] = [str(Path(__file__).resolve().parent), str(Path(__file__).resolve().parents[1] / "window")]

from harness.hardship import files_left, pipes_left  # noqa: E402
from harness.mainwindow import JOB_SECONDS, MainWindow  # noqa: E402
from harness.processes import MARK  # noqa: E402
from harness.waiting import wait_until  # noqa: E402
from harness.windowtest import WindowTest, main  # noqa: E402
from matrix import documents  # noqa: E402
from matrix.processes import Processes, send  # noqa: E402
from matrix.stages import DISTILLING, EXPORTING, MERGING, PRINTING, Moment  # noqa: E402
from matrix.world import catch, pages_of, sum_of  # noqa: E402

KILLED, CONTINUE = -9, 18
END_SECONDS = 10
WINDOW, EVERYTHING = "window killed", "everything killed"
# The window's copy has a name of its own until it is whole.
DELIVERING = Moment("delivering", "quorlin", "quorlin", r"/\.quorlin-[0-9a-f]+\.part",
                    {"heavy.ps": lambda: documents.heavy_postscript(600)}, "heavy.pdf", 1)
ROWS = []


class Killed(WindowTest):
    def run_row(self, fault, moment):
        self.processes = Processes(MARK, self.desktop.folder.name)
        files = self.user_files(moment)
        before = {file: sum_of(file) for file in files}
        window = self.start_job(moment)
        pid = self.catch(window, moment)
        self.strike(fault, window, pid)
        self.assertEqual(window.program.wait_for_end(), KILLED)
        wait_until(lambda: not self.desktop.strangers(), "the end of all processes", END_SECONDS)
        self.assertEqual({file: sum_of(file) for file in files}, before)
        self.next_window(files)
        self.assertEqual(files_left(self.desktop, *files), [])
        self.assertEqual(pipes_left(self.processes.pipes), [])
        self.assertEqual({file: sum_of(file) for file in before}, before)
        ROWS.append((fault, moment.stage, moment.part))

    def user_files(self, moment):
        """The documents, and a result of an earlier run."""
        home = self.desktop.home
        for name, content in moment.documents.items():
            (home / name).write_bytes(content())
        (home / moment.result).write_bytes(documents.pdf("an earlier run"))
        return [home / name for name in (*moment.documents, moment.result)]

    def start_job(self, moment):
        names = list(moment.documents)
        window = MainWindow(self, *(self.desktop.home / name for name in names))
        window.wait_for_documents(*names)
        if moment.is_merge:
            window.set_option("Merge files")
        window.program.click(window.button("Convert"))
        return window

    def catch(self, window, moment):
        return catch(self.processes, moment.program, moment.opens, window.program.is_running, window.program.errors)

    def strike(self, fault, window, pid):
        if fault == EVERYTHING:
            for victim in self.desktop.strangers():
                send(victim, 9)
        else:
            window.program.send_signal(9)
            send(pid, CONTINUE)

    def next_window(self, files):
        """Another window converts in the same folder."""
        document = self.desktop.home / "next.ps"
        document.write_bytes(documents.postscript("next"))
        window = MainWindow(self, document)
        window.wait_for_documents(document.name)
        window.convert()
        result = document.with_suffix(".pdf")
        wait_until(lambda: result.exists() and not window.is_working(), "the next result", JOB_SECONDS)
        self.assertEqual(pages_of(result), 1)
        self.assertEqual(window.close(), 0)
        wait_until(lambda: not self.desktop.strangers(), "the end of all processes", END_SECONDS)
        files += [document, result]


def _add_tests():
    for fault in (WINDOW, EVERYTHING):
        for moment in (EXPORTING, PRINTING, DISTILLING, MERGING, DELIVERING):
            name = re.sub(r"\W+", "_", f"test_{fault} {moment.stage} {moment.part}")
            test = lambda self, fault=fault, moment=moment: self.run_row(fault, moment)  # noqa: E731
            test.__doc__ = f"{fault}, {moment.stage} ({moment.part}): cleaned up by the next start"
            setattr(Killed, name, test)


def tearDownModule():
    if "-v" in sys.argv:
        for fault, stage, part in ROWS:
            print(f"| {fault} | {stage} | {part} | unchanged, cleaned up by the next start |", file=sys.stderr)


_add_tests()

if __name__ == "__main__":
    main()
