"""The display goes away: the program ends with all that it started, and leaves nothing for its next start. Or there
is none from the beginning."""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

sys.dont_write_bytecode = True
sys.path.insert(0, str(Path(__file__).resolve().parent))

from harness.desktop import Desktop  # noqa: E402
from harness.hardship import copy_example, endless_document, files_left, office_pipes, pipes_left  # noqa: E402
from harness.mainwindow import JOB_SECONDS, TITLE, MainWindow  # noqa: E402
from harness.places import PROGRAMS  # noqa: E402
from harness.waiting import wait_until  # noqa: E402
from harness.windowtest import WindowTest, main  # noqa: E402

# A user logs in again no sooner.
END_SECONDS = 8
# What makes the user of the next session the same.
USER = ("HOME", "TMPDIR", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME", "XDG_CONFIG_DIRS", "XDG_CACHE_HOME", "XDG_DATA_HOME")


class MissingDisplay(unittest.TestCase):
    def check_start(self, program, **display):
        with tempfile.TemporaryDirectory() as folder:
            environment = {"PATH": "/usr/bin:/bin", "HOME": folder, "XDG_RUNTIME_DIR": folder, **display}
            done = subprocess.run([PROGRAMS / program], env=environment, cwd=folder, capture_output=True, text=True,
                                  timeout=END_SECONDS, check=False)
        self.assertEqual(done.returncode, 1, done.stderr)
        self.assertIn("There is no display that can be reached. quorlin-convert works without one.", done.stderr)

    def test_a_program_without_a_display_says_so_and_ends(self):
        for program in ("quorlin", "quorlin-skin"):
            with self.subTest(program):
                self.check_start(program)

    def test_so_does_one_whose_display_cannot_be_reached(self):
        self.check_start("quorlin", DISPLAY="nowhere.invalid:7")


class LostDisplay(WindowTest):
    def lose_display(self, window, *documents):
        pipes = office_pipes(self.desktop)
        self.desktop.end_display()
        self.assertEqual(window.program.wait_for_end(END_SECONDS), 1)
        wait_until(lambda: not self.desktop.strangers(), "the end of the component and its workers", END_SECONDS)
        self.assertEqual(files_left(self.desktop, *documents), [])
        self.assertEqual(pipes_left(pipes), [])
        # The toolkit's: that it ends, and sometimes what another library meets while it does.
        complaints = ("The X11 connection broke", "XIO:", "requests")
        self.assertIn(len(window.program.errors()), (1, 3), window.program.errors())
        self.expect_errors(window.program, *complaints[:len(window.program.errors())])

    def check_next_start(self):
        document = copy_example("Seed labels.ps", self.desktop.home)
        with Desktop() as session:
            user = {name: self.desktop.environment[name] for name in USER}
            program = session.start([PROGRAMS / "quorlin", document], environment=user)
            node = program.window(TITLE)
            node.find("list item", document.name)
            program.click(node.find("push button", "Convert"))
            wait_until(document.with_suffix(".pdf").exists, "the result", JOB_SECONDS)
            wait_until(lambda: not node.has("progress bar"), "the end of the job")
            program.managed(TITLE).ask_to_close()
            self.assertEqual(program.wait_for_end(), 0)
            self.assertEqual(program.complaints(), [])
            self.assertEqual(session.end_programs(), [])

    def test_an_idle_program_ends_with_its_display(self):
        self.lose_display(MainWindow(self))
        self.check_next_start()

    def test_a_program_that_works_ends_with_its_display(self):
        document = endless_document(self.desktop.home / "endless.ps")
        window = MainWindow(self, document)
        window.wait_for_documents(document.name)
        window.convert()
        window.node.find("label", "Converting documents…")
        self.lose_display(window, document)
        self.check_next_start()


if __name__ == "__main__":
    main()
