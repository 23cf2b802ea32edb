"""The verbs of a file manager's menu: "/p" converts at once, "/a" and "/n" do not; alone and while the program runs."""

import subprocess
import sys
from pathlib import Path

sys.dont_write_bytecode = True
sys.path.insert(0, str(Path(__file__).resolve().parent))

from harness.hardship import copy_example, stopped, truncated_document  # noqa: E402
from harness.mainwindow import JOB_SECONDS, MainWindow  # noqa: E402
from harness.places import PROGRAMS  # noqa: E402
from harness.waiting import always, wait_until  # noqa: E402
from harness.windowtest import WindowTest, main  # noqa: E402

LETTER, LABELS = "Grüße aus Thistlemere.odt", "Seed labels.ps"
HANDED_OVER_SECONDS = 20.0
# Several times what a job waits for further requests.
A_WHILE = 1.5
MANY = 100


class RightClickTest(WindowTest):
    def labels(self, *names):
        """Copies of a document that is converted quickly."""
        first = copy_example(LABELS, self.desktop.folder)
        documents = [self.desktop.home / name for name in names]
        for document in documents:
            document.hardlink_to(first)
        return documents

    def hand_over(self, *arguments):
        """What a file manager's menu runs; it must end by itself and well."""
        second = self.start([PROGRAMS / "quorlin", *arguments])
        self.assertEqual(second.wait_for_end(HANDED_OVER_SECONDS), 0)

    def wait_for_results(self, window, *documents):
        """Until these documents have their results and the window is idle."""
        results = [document.with_suffix(".pdf") for document in documents]
        wait_until(lambda: all(result.exists() for result in results) and not window.is_working(),
                   lambda: f"{results} in:\n{window.program.tree.tree()}", JOB_SECONDS)
        for result in results:
            self.assertTrue(result.read_bytes().startswith(b"%PDF-"), result)

    def check_nothing_begins(self, window):
        always(lambda: not window.is_working(), "the window is idle", A_WHILE)

    def files(self):
        return sorted(path.name for path in self.desktop.home.iterdir())

    def end(self, window):
        self.assertEqual(window.close(), 0)
        self.assertEqual(list(self.desktop.temporary.iterdir()), [])


class Convert(RightClickTest):
    def test_the_first_start_converts(self):
        letter = copy_example(LETTER, self.desktop.home)
        window = MainWindow(self, "/p", LETTER)
        self.wait_for_results(window, letter)
        self.assertEqual(window.documents(), [LETTER])
        self.assertEqual(self.files(), [LETTER, letter.with_suffix(".pdf").name])
        self.check_nothing_begins(window)
        self.end(window)

    def test_the_next_one_converts_only_its_own_documents_and_shows_them_instead(self):
        one, two, three = self.labels("one.ps", "two.ps", "three.ps")
        window = MainWindow(self)
        self.hand_over("/p", one)
        self.wait_for_results(window, one)
        one.with_suffix(".pdf").unlink()
        managed = window.minimise()
        self.hand_over("/p", two, three.as_uri())
        self.wait_for_results(window, two, three)
        self.assertFalse(managed.is_minimised)
        window.wait_for_documents("two.ps", "three.ps")
        self.assertFalse(one.with_suffix(".pdf").exists())
        self.end(window)

    def test_names_with_commas_are_converted_at_the_start_and_while_it_runs(self):
        one, two = self.labels("labels, first.ps", "100 %, #2?.ps")
        window = MainWindow(self, "/p", one)
        self.wait_for_results(window, one)
        self.hand_over("/p", two.as_uri())
        self.wait_for_results(window, two)
        window.wait_for_documents(two.name)
        self.end(window)

    def test_what_the_user_has_gathered_is_not_converted(self):
        mine, one = self.labels("mine.ps", "one.ps")
        window = MainWindow(self, mine)
        window.wait_for_documents("mine.ps")
        self.hand_over("/p", one)
        window.wait_for_documents("mine.ps", "one.ps")
        self.check_nothing_begins(window)
        self.assertEqual(self.files(), ["mine.ps", "one.ps"])
        wait_until(lambda: window.managed.is_active, "the window to be in front")
        window.convert()
        self.wait_for_results(window, mine, one)
        self.end(window)

    def test_what_comes_during_a_job_is_converted_after_it(self):
        one, two, three, mine = self.labels("one.ps", "two.ps", "three.ps", "mine.ps")
        window = MainWindow(self)
        with stopped(self.desktop, "quorlin-pdf"):
            self.hand_over("/p", one)
            wait_until(window.is_working, "a job to begin")
            self.hand_over("/p", two)
            self.hand_over("/a", mine)
            self.hand_over("/p", three)
            self.assertEqual(window.documents(), ["one.ps"])
        self.wait_for_results(window, one, two, three)
        window.wait_for_documents("two.ps", "three.ps", "mine.ps")
        self.check_nothing_begins(window)
        self.assertFalse(mine.with_suffix(".pdf").exists())
        self.end(window)

    def test_a_start_for_each_document_converts_them_all(self):
        documents = self.labels(*(f"{number}.ps" for number in range(8)))
        window = MainWindow(self)
        starts = [self.start([PROGRAMS / "quorlin", "/p", document]) for document in documents]
        for start in starts:
            self.assertEqual(start.wait_for_end(HANDED_OVER_SECONDS), 0)
        self.wait_for_results(window, *documents)
        self.end(window)

    def test_a_failed_job_does_not_keep_the_next_one_from_its_documents(self):
        broken = truncated_document(self.desktop.home / "broken.docx")
        [one] = self.labels("one.ps")
        window = MainWindow(self, "/p", broken)
        for _ in range(2):
            window.program.dialog("Error", JOB_SECONDS).answer("OK")
        window.wait_until_idle()
        self.assertEqual(window.documents(), ["broken.docx"])
        self.hand_over("/p", one)
        self.wait_for_results(window, one)
        self.assertEqual(window.documents(), ["one.ps"])
        self.end(window)

    def test_a_refused_document_is_told_before_the_others_are_converted(self):
        [one] = self.labels("one.ps")
        no_postscript, program = self.desktop.home / "no.ps", self.desktop.home / "tool.exe"
        for file in (no_postscript, program):
            file.write_text("not to be converted", "ascii")
        window = MainWindow(self)
        self.hand_over("/p", program)
        self.check_nothing_begins(window)
        self.assertEqual((window.documents(), window.program.has_dialog()), ([], False))
        self.hand_over("/p", one, no_postscript, program)
        box = window.program.dialog()
        self.assertIn(str(no_postscript), " ".join(box.texts))
        self.check_nothing_begins(window)
        box.answer("OK")
        self.wait_for_results(window, one)
        self.assertEqual(window.documents(), ["one.ps"])
        self.end(window)


class LongSelection(RightClickTest):
    def make_many(self):
        """Their names do not go into one text of the hand-off."""
        return self.labels(*(f"{number:03} {' '.join(['long name'] * 10)}.ps" for number in range(MANY)))

    def test_all_documents_arrive(self):
        documents = self.make_many()
        window = MainWindow(self)
        self.hand_over("/a", *documents)
        window.wait_for_documents(*(document.name for document in documents))
        self.check_nothing_begins(window)
        self.end(window)

    def test_all_documents_become_one_job(self):
        documents = self.make_many()
        window = MainWindow(self)
        window.set_option("Merge files")
        self.hand_over("/p", *documents)
        dialog = window.program.dialog("Save file", JOB_SECONDS)
        self.screen.key("ctrl+a")
        self.screen.type("all")
        self.screen.key("Return")
        dialog.node.wait_gone()
        window.wait_until_idle()
        self.assertEqual(len(window.documents()), MANY)
        self.check_nothing_begins(window)
        self.assertFalse(window.program.has_dialog())
        result = self.desktop.home / "all.pdf"
        text = subprocess.run(["pdftotext", result, "-"], check=True, capture_output=True, timeout=60).stdout.decode()
        self.assertEqual(text.count("Seed labels"), MANY)
        self.end(window)


class OtherVerbs(RightClickTest):
    def test_new_shows_an_empty_window_or_the_one_that_is_there(self):
        window = MainWindow(self, "/n")
        self.assertEqual(window.documents(), [])
        managed = window.minimise()
        self.hand_over("/n")
        wait_until(lambda: not managed.is_minimised and managed.is_active, "the window to come back")
        managed = window.minimise()
        self.hand_over("/p")
        wait_until(lambda: not managed.is_minimised and managed.is_active, "the window to come back")
        self.assertEqual(self.screen.windows(), [managed])
        self.check_nothing_begins(window)
        self.assertEqual((window.documents(), window.program.has_dialog()), ([], False))
        self.end(window)

    def test_add_adds(self):
        one, two = self.labels("one.ps", "two.ps")
        window = MainWindow(self, "/a", one)
        window.wait_for_documents("one.ps")
        self.hand_over("/a", two)
        window.wait_for_documents("one.ps", "two.ps")
        self.check_nothing_begins(window)
        self.end(window)


if __name__ == "__main__":
    main()
