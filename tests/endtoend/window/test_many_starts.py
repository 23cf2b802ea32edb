"""Many starts at once, as of a user who has opened fifty documents in a file manager."""

import collections
import sys
from pathlib import Path

sys.dont_write_bytecode = True
sys.path.insert(0, str(Path(__file__).resolve().parent))

from harness.hardship import copy_example  # noqa: E402
from harness.mainwindow import TITLE, MainWindow  # noqa: E402
from harness.places import PROGRAMS  # noqa: E402
from harness.waiting import wait_until  # noqa: E402
from harness.windowtest import WindowTest, main  # noqa: E402

MANY = 50
# Two cores that start fifty programs need a while.
SECONDS = 60


class ManyStarts(WindowTest):
    def start_many(self):
        """Each with a document of its own; their programs and the names of the documents."""
        first = copy_example("Seed labels.ps", self.desktop.home)
        documents = [self.desktop.home / f"{number}.ps" for number in range(MANY)]
        for document in documents:
            document.hardlink_to(first)
        first.unlink()
        return [self.start([PROGRAMS / "quorlin", document]) for document in documents], \
            [document.name for document in documents]

    def wait_for_each_once(self, documents, names):
        wait_until(lambda: len(documents()) >= len(names), lambda: f"{MANY} documents; there are {documents()}", SECONDS)
        self.assertEqual(collections.Counter(documents()), collections.Counter(names))

    def test_many_starts_beside_a_window_all_hand_over(self):
        window = MainWindow(self)
        programs, names = self.start_many()
        for program in programs:
            self.assertEqual(program.wait_for_end(SECONDS), 0)
        self.wait_for_each_once(window.documents, names)
        self.assertEqual([managed.title for managed in self.screen.windows()], [TITLE])
        self.assertEqual(window.close(), 0)

    def test_many_starts_without_a_window_make_one(self):
        programs, names = self.start_many()

        def running():
            return [program for program in programs if program.is_running()]
        wait_until(lambda: len(running()) == 1, lambda: f"one to be left; there are {len(running())}", SECONDS)
        [program] = running()
        node = program.window(TITLE).find("list")
        self.wait_for_each_once(lambda: node.names("list item"), names)
        self.assertEqual([managed.title for managed in self.screen.windows()], [TITLE])
        for other in programs:
            if other is not program:
                self.assertEqual(other.wait_for_end(), 0)
        program.managed(TITLE).ask_to_close()
        self.assertEqual(program.wait_for_end(), 0)


if __name__ == "__main__":
    main()
