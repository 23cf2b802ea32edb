"""A conversion, from the documents dropped onto the window to the results that are shown."""

import shutil
import subprocess
import sys
from pathlib import Path

sys.dont_write_bytecode = True
sys.path.insert(0, str(Path(__file__).resolve().parent))

from harness.hardship import stopped  # noqa: E402
from harness.mainwindow import JOB_SECONDS, MainWindow  # noqa: E402
from harness.places import EXAMPLES  # noqa: E402
from harness.waiting import wait_until  # noqa: E402
from harness.windowtest import WindowTest, main  # noqa: E402

NAMES = ("Grüße aus Thistlemere.odt", "Thistlemere Handbook.docx")
WORDS = {"Grüße aus Thistlemere": "Winter letter 2025", "Thistlemere Handbook": "Thistlemere"}
LABELS, FORM = "Seed labels.ps", "Membership.pdf"


def text_of(result):
    return subprocess.run(["pdftotext", result, "-"], check=True, capture_output=True, timeout=60).stdout.decode()


class ConversionTest(WindowTest):
    def copy(self, *names):
        return [Path(shutil.copy(EXAMPLES / name, self.desktop.home)) for name in names]

    def open(self, *names):
        """The window with copies of these examples in its list."""
        documents = self.copy(*names)
        self.window = MainWindow(self, *documents)
        self.window.wait_for_documents(*names)
        return self.window, documents

    def files(self):
        return {path.name for path in self.desktop.home.iterdir()}

    def convert_to(self, result):
        """Has the documents converted; the bytes of the result, which is taken away."""
        self.window.program.click(self.window.button("Convert"))
        wait_until(result.exists, lambda: f"{result} in:\n{self.window.program.tree.tree()}", JOB_SECONDS)
        self.window.wait_until_idle()
        content = result.read_bytes()
        result.unlink()
        return content


class Conversion(ConversionTest):
    def test_dropped_documents_are_converted_and_the_results_shown(self):
        documents = self.copy(*NAMES)
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
            self.assertIn(WORDS[result.stem], text_of(result))
        self.assertEqual(self.files(), {*NAMES, *(Path(result).name for result in results)})
        self.assertEqual(window.close(), 0)
        self.assertEqual(list(self.desktop.temporary.iterdir()), [])

    def test_one_document_is_not_merged_and_not_opened_unless_asked(self):
        window, (document,) = self.open(LABELS)
        window.set_option("Merge files")
        window.program.click(window.button("Convert"))
        result = document.with_suffix(".pdf")
        wait_until(result.exists, lambda: f"a result in:\n{window.program.tree.tree()}", JOB_SECONDS)
        window.wait_until_idle()
        self.assertIn("Seed labels", text_of(result))
        self.assertEqual(window.documents(), [LABELS])
        self.assertEqual(window.close(), 0)
        self.assertEqual(self.desktop.opened(), [])

    def test_the_quality_that_was_chosen_is_used(self):
        window, (document,) = self.open("Meadow.png")
        sizes = {}
        for quality in ("High", "Low", "Medium"):
            window.choose_quality(quality)
            sizes[quality] = len(self.convert_to(document.with_suffix(".pdf")))
        self.assertTrue(sizes["Low"] < sizes["Medium"] < sizes["High"], sizes)

    def test_nothing_can_be_done_while_it_works(self):
        window, _ = self.open(LABELS)
        with stopped(self.desktop, "quorlin-pdf"):
            window.convert()
            window.managed.ask_to_close()
            self.screen.key("Delete", "alt+m", "Insert", "F1")
            window.program.click(window.node.find("label", "Quorlin"), button=3)
            with self.desktop.drag(["--text", "something to wait for"]):
                pass
            enabled = {node.name: node.is_enabled for node in window.node.find_all()
                       if node.role in ("push button", "check box", "combo box", "list")}
            self.assertEqual((len(enabled), set(enabled.values())), (13, {False}), enabled)
            self.assertEqual(window.node.find("progress bar").value, 0)
            self.assertTrue(window.node.has("label", "Printing documents…"))
            menus = [node for node in self.desktop.bus.shown(window.program.tree.service) if node.role == "popup menu"]
            self.assertEqual((menus, window.program.has_dialog()), ([], False))
        window.wait_until_idle()
        self.assertEqual(window.documents(), [LABELS])
        self.assertFalse(window.option("Merge files").is_checked)
        self.assertEqual(self.desktop.opened(), [])
        self.assertEqual(self.files(), {LABELS, "Seed labels.pdf"})
        self.assertEqual(window.close(), 0)


class Merge(ConversionTest):
    def setUp(self):
        super().setUp()
        self.open(LABELS, FORM)
        self.before = self.files()
        self.window.set_option("Merge files")

    def merge(self):
        """Has the documents merged; the dialog that asks for a name."""
        self.window.program.click(self.window.button("Convert"))
        return self.window.program.dialog("Save file", JOB_SECONDS)

    def name(self, dialog, name):
        """Types a name in place of the proposed one and asks to save."""
        dialog.node.find("text").wait_for("focused")
        self.screen.key("ctrl+a")
        self.screen.type(name)
        dialog.node.find("text").wait_for("focused")
        self.screen.key("Return")

    def check_merged(self, result):
        text = text_of(result)
        self.assertIn("Seed labels", text)
        self.assertIn("Become a member", text)
        self.assertLess(text.index("Seed labels"), text.index("Become a member"))

    def test_the_result_gets_the_name_that_is_typed_and_is_opened(self):
        self.window.set_option("Show result file")
        dialog = self.merge()
        self.assertEqual(dialog.node.find("text").text, "Seed labels.pdf")
        self.name(dialog, "both together")
        dialog.node.wait_gone()
        self.window.wait_until_idle()
        result = self.desktop.home / "both together.pdf"
        self.check_merged(result)
        self.assertEqual(self.files(), self.before | {result.name})
        wait_until(self.desktop.opened, "the result to be opened")
        self.assertEqual(self.window.close(), 0)
        self.assertEqual(self.desktop.opened(), [str(result)])
        self.assertEqual(list(self.desktop.temporary.iterdir()), [])

    def test_a_cancelled_dialog_delivers_nothing_and_a_file_is_replaced_only_when_that_is_wished(self):
        dialog = self.merge()
        self.screen.key("Escape")
        dialog.node.wait_gone()
        self.window.wait_until_idle()
        self.assertEqual(self.files(), self.before)

        there = self.desktop.home / "there.pdf"
        there.write_text("of the user")
        dialog = self.merge()
        for answer in ("No", "Yes"):
            self.assertEqual(there.read_text("latin-1"), "of the user")
            self.name(dialog, "there")
            question = self.window.program.dialog("Save file", roles=["alert"])
            self.assertIn("already exists", " ".join(question.texts))
            question.answer(answer)
        dialog.node.wait_gone()
        self.window.wait_until_idle()
        self.check_merged(there)
        self.assertEqual(self.files(), self.before | {there.name})
        self.assertEqual(self.window.close(), 0)
        self.assertEqual((self.desktop.opened(), list(self.desktop.temporary.iterdir())), ([], []))


if __name__ == "__main__":
    main()
