"""What goes wrong: documents, results, the component, the installation and the settings. Each is told clearly, and the
program works on, or ends and leaves nothing."""

import sqlite3
import sys
from contextlib import closing
from pathlib import Path

sys.dont_write_bytecode = True
sys.path.insert(0, str(Path(__file__).resolve().parent))

from harness.hardship import (  # noqa: E402
    AS_ORDINARY_USER, Starting, copy_example, endless_document, files_left, installation, kill, office_pipes,
    pipes_left, process_of, script, settings_file, small_disk, truncated_document)
from harness.mainwindow import JOB_SECONDS, MainWindow  # noqa: E402
from harness.places import PROGRAMS  # noqa: E402
from harness.settings import Settings  # noqa: E402
from harness.waiting import always, wait_until  # noqa: E402
from harness.windowtest import WindowTest, main  # noqa: E402

PDF, POSTSCRIPT = "Membership.pdf", "Seed labels.ps"
PRINT_FAILED = "An error occurred while printing."
CONVERT_FAILED = "An error occurred during the conversion."
# What stands below the messages.
DAMAGED = "The document is damaged or not what its name says."
NOT_FOUND = "There is no such file."
NOT_READABLE = "The file may not be read."
NOT_ALLOWED = "The result may not be written."
NO_ROOM = "There is no room on the disk."
ENGINE_FAILED = "The converter failed on this document."
# What a user may wait until a program has ended that was busy.
END_SECONDS = 10


def cannot_print(document):
    return f"Cannot print the file {document}."


class FailureTest(WindowTest):
    def open_with(self, *documents, **options):
        """The window with these documents in its list."""
        window = MainWindow(Starting(self, **options), *documents)
        window.wait_for_documents(*(Path(document).name for document in documents))
        return window

    def answer_errors(self, window, *messages):
        """The message boxes come in this order and no others, and then the window is idle. Each is a text and the
        reasons that stand below it, by the names of documents or in sentences."""
        for text, *reasons in messages:
            box = window.program.dialog("Error", JOB_SECONDS)
            self.assertEqual((box.texts[0], len(box.texts)), (text, 2))
            for reason in reasons:
                self.assertIn(reason, box.texts[1])
            box.answer("OK")
        window.wait_until_idle()
        self.assertFalse(window.program.has_dialog())

    def remove(self, window, name):
        before = window.documents()
        window.program.click(window.list.find("list item", name))
        self.screen.key("Delete")
        window.wait_for_documents(*(other for other in before if other != name))

    def convert_all(self, window, *results):
        """A job without any message, and its results."""
        window.convert()
        wait_until(lambda: not window.is_working() and all(result.exists() for result in results),
                   lambda: f"{results} in:\n{window.program.tree.tree()}", JOB_SECONDS)
        for result in results:
            self.assertTrue(result.read_bytes().startswith(b"%PDF-"), result)

    def end_without_traces(self, window, *files):
        """Closes the window; only these files may be left."""
        self.assertEqual(window.close(), 0)
        self.check_no_traces(*files)

    def check_no_traces(self, *files):
        wait_until(lambda: not self.desktop.strangers(), "the end of all processes", END_SECONDS)
        self.assertEqual(files_left(self.desktop, *files), [])


class Documents(FailureTest):
    def test_a_document_that_fails_is_named_and_the_next_job_works(self):
        home = self.desktop.home
        documents = [copy_example(PDF, home), truncated_document(home / "broken.docx"), copy_example(POSTSCRIPT, home)]
        window = self.open_with(*documents)
        window.convert()
        self.answer_errors(window, (cannot_print(documents[1]), DAMAGED), (PRINT_FAILED, f"broken.docx: {DAMAGED}"))
        self.remove(window, "broken.docx")
        # The result of a PDF must not have the name of the PDF itself.
        results = [home / "Membership (2).pdf", home / "Seed labels.pdf"]
        self.convert_all(window, *results)
        self.end_without_traces(window, *documents, *results)

    def test_documents_that_vanished_or_may_not_be_read_are_named(self):
        good, vanished, locked = (copy_example(PDF, self.desktop.home).rename(self.desktop.home / name)
                                  for name in ("good.pdf", "vanished.pdf", "locked.pdf"))
        window = self.open_with(good, vanished, locked, under=AS_ORDINARY_USER)
        vanished.unlink()
        locked.chmod(0)
        window.convert()
        self.answer_errors(window, (cannot_print(vanished), NOT_FOUND), (cannot_print(locked), NOT_READABLE),
                           (PRINT_FAILED, f"vanished.pdf: {NOT_FOUND}", f"locked.pdf: {NOT_READABLE}"))
        self.end_without_traces(window, good, locked)

    def test_a_folder_that_cannot_be_written_is_left_for_the_documents_folder(self):
        folder = self.desktop.home / "closed"
        folder.mkdir()
        document = copy_example(POSTSCRIPT, folder)
        folder.chmod(0o500)
        window = self.open_with(document, under=AS_ORDINARY_USER)
        result = self.desktop.home / "Seed labels.pdf"
        self.convert_all(window, result)
        self.end_without_traces(window, document, result)

    def test_nowhere_to_write_is_told(self):
        document = copy_example(PDF, self.desktop.home)
        self.desktop.home.chmod(0o500)
        window = self.open_with(document, under=AS_ORDINARY_USER)
        window.convert()
        self.answer_errors(window, (cannot_print(document), NOT_ALLOWED), (PRINT_FAILED, f"{PDF}: {NOT_ALLOWED}"))
        self.end_without_traces(window, document)


class FullDisk(FailureTest):
    def convert_on_disk(self, name, kilobytes, *messages, complaints=()):
        with small_disk(self, self.desktop.home / "disk", kilobytes) as disk:
            document = copy_example(name, disk)
            content = document.read_bytes()
            window = self.open_with(document)
            window.convert()
            self.answer_errors(window, *((message.format(document=document), NO_ROOM) for message in messages))
            self.end_without_traces(window, document)
            self.assertEqual(document.read_bytes(), content)
            self.expect_errors(window.program, *complaints)

    def test_a_disk_without_room_for_the_printed_document_is_told(self):
        self.convert_on_disk(PDF, 128, cannot_print("{document}"), PRINT_FAILED)

    def test_a_disk_without_room_for_the_result_is_told(self):
        self.convert_on_disk(POSTSCRIPT, 8, CONVERT_FAILED)

    def test_a_disk_with_room_for_the_result_but_not_for_its_copy_is_told(self):
        # 4 for the document, 28 for the result.
        self.convert_on_disk(POSTSCRIPT, 48, f"Cannot copy the result to {self.desktop.home}/disk/Seed labels.pdf.",
                             complaints=["no room for the copy"])


class Ending(FailureTest):
    def working_window(self):
        document = endless_document(self.desktop.home / "endless.ps")
        window = self.open_with(document)
        window.set_option("Merge files")
        window.convert()
        window.node.find("label", "Converting documents…")
        return window, document

    def test_a_window_that_works_cannot_be_closed_but_the_program_can_be_ended(self):
        window, document = self.working_window()
        pipes = office_pipes(self.desktop)
        window.managed.ask_to_close()
        always(lambda: window.program.is_running() and window.is_working(), "the window works on", 0.5)
        self.end_from_outside(window, document)
        self.assertEqual(pipes_left(pipes), [])
        settings = Settings(self.desktop.config).all()
        # What was started with documents has none pending.
        self.assertEqual([settings[name] for name in ("MergeOption", "File", "Run")], ["true", "", "0"])

    def end_from_outside(self, window, *files):
        window.program.send_signal()
        self.assertEqual(window.program.wait_for_end(END_SECONDS), 0)
        self.check_no_traces(*files)

    def test_a_program_that_shows_a_message_can_be_ended(self):
        document = truncated_document(self.desktop.home / "broken.docx")
        window = self.open_with(document)
        window.convert()
        window.program.dialog("Error", JOB_SECONDS)
        self.end_from_outside(window, document)

    def test_a_program_that_asks_for_a_name_can_be_ended(self):
        documents = [copy_example(PDF, self.desktop.home), copy_example(POSTSCRIPT, self.desktop.home)]
        window = self.open_with(*documents)
        window.set_option("Merge files")
        window.convert()
        window.program.dialog(seconds=JOB_SECONDS)
        self.end_from_outside(window, *documents)

    def test_a_component_that_dies_is_told_and_the_next_job_works(self):
        window, document = self.working_window()
        kill(process_of(self.desktop, "quorlin-pdf"))
        self.answer_errors(window, (CONVERT_FAILED, f"endless.ps: {ENGINE_FAILED}"))
        document.unlink()
        copy_example(POSTSCRIPT, document.parent).rename(document)
        result = document.with_suffix(".pdf")
        self.convert_all(window, result)
        self.end_without_traces(window, document, result)


class Installation(FailureTest):
    def expect_refusal(self, program, text):
        """A message and the end; nothing is converted, no window comes."""
        started = self.start([program])
        box = started.dialog("Error")
        self.assertIn(text, box.texts)
        self.assertEqual([window.name for window in started.windows()], ["Error"])
        # The program may be gone before it could say that its box is.
        started.click(box.node.find("push button", "OK"))
        self.assertEqual(started.wait_for_end(), 1)

    def test_a_program_without_its_settings_does_not_start(self):
        for name in ("Quorlin.ini", "Settings"):
            with self.subTest(name):
                program = installation(self.desktop.folder / f"without {name}", without=[name])
                self.expect_refusal(program, "Quorlin V2 is corrupted, reinstall the product.")
        self.assertFalse(settings_file(self.desktop).exists())

    def test_a_program_without_a_component_that_can_be_started_ends(self):
        for kind in ("no file", "not executable"):
            with self.subTest(kind):
                program = installation(self.desktop.folder / kind, without=["quorlin-pdf"])
                if kind == "not executable":
                    (program.parent / "quorlin-pdf").write_bytes((PROGRAMS / "quorlin-pdf").read_bytes())
                self.expect_refusal(program, "Can't found the PDF library : the program will shut down")

    def test_a_component_that_ends_at_once_is_told_and_may_be_mended_meanwhile(self):
        document = copy_example(POSTSCRIPT, self.desktop.home)
        program = installation(self.desktop.folder / "faulty", without=["quorlin-pdf"])
        component = program.parent / "quorlin-pdf"
        script(component, "exit 3")
        window = self.open_with(document, program=program)
        window.convert()
        self.answer_errors(window, (PRINT_FAILED, f"{POSTSCRIPT}: {ENGINE_FAILED}"))
        component.unlink()
        component.symlink_to(PROGRAMS / "quorlin-pdf")
        result = self.desktop.home / "Seed labels.pdf"
        self.convert_all(window, result)
        self.end_without_traces(window, document, result)

    def test_damaged_texts_and_a_damaged_skin_are_told_and_the_program_works_without_them(self):
        document = copy_example(POSTSCRIPT, self.desktop.home)
        program = installation(self.desktop.folder / "damaged", copies=["language", "skins"])
        texts = program.parent / "language/english.slg"
        texts.write_bytes(texts.read_bytes().replace(b"TextOptShow", b"TextOptNone"))
        (program.parent / "skins/Varnex/Main.png").write_bytes(b"no picture")
        started = Starting(self, program).start(["quorlin", document])
        for text in ("The language file english.slg is corrupted", "The skin files Varnex are corrupted"):
            box = started.dialog("Error")
            self.assertIn(text, box.texts)
            box.answer("OK")
        node = started.window("Quorlin")
        wait_until(lambda: document.name in node.names("list item"), "the document")
        started.click(node.find("push button", "Convert"))
        result = self.desktop.home / "Seed labels.pdf"
        wait_until(result.exists, "the result", JOB_SECONDS)
        wait_until(lambda: not node.has("progress bar"), "the end of the job")
        started.managed("Quorlin").ask_to_close()
        self.assertEqual(started.wait_for_end(), 0)
        self.check_no_traces(document, result)
        self.expect_errors(started, "english.slg: [TEXT] TextOptShow is missing",
                           "Varnex/Info.ssk: Main in [FormMain] lacks its picture")

    def test_a_program_that_shows_a_message_before_its_window_can_be_ended(self):
        program = installation(self.desktop.folder / "damaged", copies=["language"])
        (program.parent / "language/english.slg").write_bytes(b"")
        started = Starting(self, program).start(["quorlin"])
        started.dialog("Error")
        started.send_signal()
        self.assertEqual(started.wait_for_end(END_SECONDS), 0)
        self.check_no_traces()
        self.expect_errors(started, "english.slg: ")


class SettingsFile(FailureTest):
    def test_a_damaged_file_is_set_aside_and_settings_are_remembered_again(self):
        file = settings_file(self.desktop)
        file.parent.mkdir()
        file.write_bytes(b"SQLite format 3\0" + bytes(range(256)) * 20)
        content = file.read_bytes()
        window = self.open_with()
        window.set_option("Merge files")
        self.end_without_traces(window)
        self.expect_errors(window.program, "were set aside as")
        self.assertEqual(Settings(self.desktop.config).all()["MergeOption"], "true")
        self.assertEqual(file.with_name("registry.db.damaged-1").read_bytes(), content)

    def test_a_file_that_somebody_else_locks_does_not_keep_the_user_waiting(self):
        first = self.open_with()
        first.set_option("Merge files")
        self.assertEqual(first.close(), 0)
        with closing(sqlite3.connect(settings_file(self.desktop), isolation_level=None)) as other:
            other.execute("BEGIN EXCLUSIVE")
            window = self.open_with()
            # What cannot be read counts as not there.
            self.assertFalse(window.option("Merge files").is_checked)
            window.set_option("Show result file")
            managed = window.managed
            managed.ask_to_close()
            managed.wait_gone(1)
            other.execute("ROLLBACK")
        self.assertEqual(window.program.wait_for_end(), 0)
        self.assertEqual(Settings(self.desktop.config).all()["ShowOption"], "true")

    def test_a_folder_that_cannot_be_written_hinders_nothing(self):
        self.desktop.config.chmod(0o500)
        document = copy_example(POSTSCRIPT, self.desktop.home)
        window = self.open_with(document, under=AS_ORDINARY_USER)
        result = self.desktop.home / "Seed labels.pdf"
        self.convert_all(window, result)
        self.end_without_traces(window, document, result)
        self.assertEqual(list(self.desktop.config.iterdir()), [])


if __name__ == "__main__":
    main()
