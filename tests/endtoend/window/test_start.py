"""How the program starts: with documents and without, alone and while it runs already."""

import re
import sys
from pathlib import Path

sys.dont_write_bytecode = True
sys.path.insert(0, str(Path(__file__).resolve().parent))

from harness.mainwindow import MainWindow  # noqa: E402
from harness.places import PROGRAMS, SUPPORT  # noqa: E402
from harness.settings import Settings  # noqa: E402
from harness.waiting import wait_until  # noqa: E402
from harness.windowtest import WindowTest, main  # noqa: E402

HANDED_OVER_SECONDS = 10.0


class Start(WindowTest):
    def setUp(self):
        super().setUp()
        self.settings = Settings(self.desktop.config)

    def hand_over(self, *arguments):
        """A second start, which must end by itself and well."""
        second = self.start([PROGRAMS / "quorlin", *arguments])
        self.assertEqual(second.wait_for_end(HANDED_OVER_SECONDS), 0)

    def is_mark_of(self, program):
        """Whether other starts find this one: it holds the lock on the file by which they meet."""
        held = {(int(pid), int(inode)) for pid, inode in
                re.findall(r"FLOCK\s+ADVISORY\s+WRITE\s+(\d+)\s+\w+:\w+:(\d+)", Path("/proc/locks").read_text())}
        files = {path.stat().st_ino for path in self.desktop.runtime.rglob("*") if path.is_file()}
        return any(pid == program.pid and inode in files for pid, inode in held)

    def test_documents_and_folders_of_the_command_line_are_listed_in_order(self):
        self.make("letter to all.txt", "batch/page 10.txt", "batch/page 2.txt", "batch/annex/page 1.txt",
                  "batch/annex/deep/page 0.txt", "batch/zebra.txt", "batch/tool.exe", "alone.exe", "last.txt")
        window = MainWindow(self, self.desktop.home / "letter to all.txt", "batch", "alone.exe",
                            (self.desktop.home / "last.txt").as_uri())
        window.wait_for_documents("letter to all.txt", "page 2.txt", "page 10.txt", "zebra.txt", "page 1.txt",
                                  "page 0.txt", "last.txt")
        self.assertEqual(window.close(), 0)
        self.assertEqual((self.settings.all()["File"], self.settings.all()["Run"]), ("", "0"))

    def test_without_documents_the_window_is_empty_and_nothing_of_other_starts_is_touched(self):
        window = MainWindow(self)
        self.assertTrue(window.list.is_focused)
        self.assertEqual(window.documents(), [])
        self.assertEqual(window.close(), 0)
        self.assertEqual({"File", "Run"} & set(self.settings.all()), set())
        self.assertEqual(self.settings.all()["Language"], "english")

    def test_another_start_gives_its_documents_to_the_window_and_ends(self):
        one, two, three, four = self.make("one.txt", "two.txt", "more/three.txt", "four.txt")
        window = MainWindow(self, one)
        window.wait_for_documents("one.txt")
        managed = window.minimise()
        self.hand_over(two, three.parent)
        window.wait_for_documents("one.txt", "two.txt", "three.txt")
        wait_until(lambda: not managed.is_minimised and managed.is_active, "the window to come back")
        self.assertEqual(self.screen.windows(), [managed])

        other = self.start([SUPPORT / "sample-window"]).managed("Sample")
        other.move(*managed.frame[:2])
        other.activate()
        self.hand_over(four)
        window.wait_for_documents("one.txt", "two.txt", "three.txt", "four.txt")
        wait_until(lambda: managed.is_active, "the window to come to the front")
        self.assertEqual(self.screen.stacking()[-1], managed)

    def test_another_start_without_documents_opens_a_second_window_that_takes_over(self):
        one, two = self.make("one.txt", "two.txt")
        first = MainWindow(self)
        second = MainWindow(self)
        self.assertNotEqual(first.managed.frame[:2], second.managed.frame[:2])
        self.hand_over(one)
        first.wait_for_documents("one.txt")
        self.assertEqual(first.close(), 0)
        wait_until(lambda: self.is_mark_of(second.program), "the second window to take the place of the first")
        self.hand_over(two)
        second.wait_for_documents("two.txt")
        self.assertTrue(second.managed.is_active)
        self.assertEqual(second.close(), 0)

    def test_documents_that_another_program_left_are_taken_and_the_note_is_cleared(self):
        one, two = self.make("one.txt", "two.txt")
        self.settings.write(File=f"{one},{two}")
        window = MainWindow(self)
        window.wait_for_documents("one.txt", "two.txt")
        self.assertEqual(self.settings.all()["File"], "")
        self.assertEqual(window.close(), 0)


if __name__ == "__main__":
    main()
