"""The means of these tests must themselves be right: tried on windows of which everything is known."""

import os
import struct
import sys
import unittest
import zlib
from pathlib import Path

sys.dont_write_bytecode = True
sys.path.insert(0, str(Path(__file__).resolve().parent))

from harness.desktop import Desktop  # noqa: E402
from harness.places import PROGRAMS, SUPPORT  # noqa: E402
from harness.processes import command_of  # noqa: E402
from harness.responsiveness import Responsiveness  # noqa: E402
from harness.waiting import Gone, Late, always, wait_until  # noqa: E402
from harness.windowtest import WindowTest, main  # noqa: E402


class SkinnedWindow(WindowTest):
    def setUp(self):
        super().setUp()
        self.program = self.start([PROGRAMS / "quorlin-skin"])
        self.window = self.program.window("Quorlin")

    def test_every_control_has_the_role_and_the_name_that_a_screen_reader_says(self):
        wanted = {
            ("list", "Documents"), ("combo box", "Default"),
            *(("push button", name) for name in ("Help", "Minimise", "Close", "To the top", "Up", "Down",
                                                 "To the bottom", "Convert")),
            *(("check box", name) for name in ("Send result by e-mail", "Show result file", "Merge files")),
        }
        shown = {(node.role, node.name) for node in self.window.find_all()}
        self.assertEqual(wanted - shown, set())

    def test_the_entries_of_a_list_are_read_in_its_order_also_those_out_of_sight(self):
        names = self.window.find("list", "Documents").names("list item")
        self.assertEqual((len(names), names[0], names[-1]), (12, "Thistlemere Handbook.docx",
                                                            "Letter to the council.doc"))

    def test_a_check_box_is_ticked_with_the_mouse_and_without(self):
        merge = self.window.find("check box", "Merge files")
        self.program.click(merge)
        merge.wait_for("checked")
        merge.press()
        merge.wait_for("-checked")

    def test_an_entry_of_a_combo_box_is_chosen_with_the_mouse(self):
        self.program.choose(self.window.find("combo box"), "High")
        self.assertEqual(self.window.find("combo box").name, "High")

    def test_the_keyboard_moves_the_focus(self):
        self.program.managed("Quorlin").activate()
        self.window.find("check box", "Show result file").set_focus()
        self.window.find("check box", "Show result file").wait_for("focused")
        self.screen.key("Tab")
        self.window.find("check box", "Merge files").wait_for("focused")

    def test_the_window_manager_moves_minimises_and_closes_the_window(self):
        managed = self.program.managed("Quorlin")
        managed.move(40, 50)
        self.assertEqual(managed.frame[:2], (40, 50))
        x, y, *_ = self.window.find("push button", "Convert").extents
        self.assertTrue(40 < x < 40 + managed.frame[2] and 50 < y < 50 + managed.frame[3])
        managed.minimise()
        self.program.managed("About Quorlin").ask_to_close()
        managed.activate()
        self.assertFalse(managed.is_minimised)
        managed.ask_to_close()
        self.assertEqual(self.program.wait_for_end(), 0)

    def test_a_picture_of_the_screen_shows_the_window(self):
        managed = self.program.managed("Quorlin")
        managed.activate()
        wait_until(lambda: len(set(colours(managed.grab()[2]))) > 100, "a window with many colours")
        width, height, pixels = read_png(managed.screenshot(self.desktop.folder / "window.png"))
        self.assertEqual((width, height), managed.frame[2:])
        self.assertGreater(len(set(colours(pixels))), 100)


class LargeWindow(WindowTest):
    environment = {"QT_SCALE_FACTOR": "1.5"}

    def test_the_mouse_meets_controls_on_a_scaled_screen(self):
        program = self.start([PROGRAMS / "quorlin-skin"])
        merge = program.window("Quorlin").find("check box", "Merge files")
        program.click(merge)
        merge.wait_for("checked")


class SampleWindow(WindowTest):
    def setUp(self):
        super().setUp()
        self.program = self.start([SUPPORT / "sample-window"])
        self.window = self.program.window("Sample")
        self.list = self.window.find("list", "Things")

    def wait_for_list(self, *names):
        wait_until(lambda: self.list.names("list item") == list(names), lambda: f"{names} in:\n{self.list.tree()}")

    def test_a_message_box_is_read_and_answered(self):
        for answer, noted in (("Yes", ["yes"]), ("No", ["yes", "no"])):
            self.program.click(self.window.find("push button", "Ask"))
            box = self.program.dialog("A question")
            self.assertIn("Shall it be?", box.texts)
            self.assertEqual(set(box.buttons), {"Yes", "No"})
            box.answer(answer)
            self.wait_for_list(*noted)
        self.assertFalse(self.program.has_dialog())

    def test_files_are_chosen_in_a_file_dialog(self):
        for name in ("one", "two words"):
            (self.desktop.home / name).touch()
        self.program.click(self.window.find("push button", "Open"))
        self.program.dialog("Choose").accept_file(f'"{self.desktop.home}/one" "{self.desktop.home}/two words"', "Open")
        self.wait_for_list(f"{self.desktop.home}/one", f"{self.desktop.home}/two words")

    def test_entries_of_menus_within_menus_are_chosen(self):
        menu = self.program.open_menu(self.window.find("progress bar"))
        self.assertEqual([entry.name for entry in menu.children()], ["Colours", "Nothing"])
        self.assertFalse(menu.children()[1].is_enabled)
        self.program.choose_entry("Colours")
        self.assertEqual([(entry.name, entry.is_checked) for entry in self.program.menu().children()],
                         [("Red", False), ("Blue", True)])
        self.program.choose_entry("Blue")
        self.wait_for_list("Blue")

    def test_a_menu_goes_away_with_escape(self):
        menu = self.program.open_menu(self.window.find("progress bar"))
        self.screen.key("Escape")
        menu.wait_gone()

    def test_files_are_dragged_onto_a_list(self):
        files = [self.desktop.home / "a letter.odt", self.desktop.home / "Grüße.odt"]
        with self.desktop.drag(files) as drag:
            drag.move_over(self.list)
            drag.wait_for_offer("copy")
            self.assertEqual(drag.drop(), "copy")
        self.wait_for_list(*map(str, files))

    def test_what_a_list_does_not_take_is_not_dropped(self):
        with self.desktop.drag(["https://example.org/letter.odt"]) as drag:
            drag.move_over(self.list)
            drag.check_refused()
            self.assertEqual(drag.drop(), "ignore")
        self.assertEqual(self.list.names("list item"), [])

    def test_the_value_of_a_progress_bar_is_read(self):
        self.assertEqual(self.window.find("progress bar", "Done").value, 40)

    def test_what_is_typed_arrives(self):
        self.program.click(self.window.find("push button", "Open"))
        field = self.program.dialog("Choose").node.find("text").wait_for("focused")
        self.screen.type("/tmp/Ä_b~")
        wait_until(lambda: field.text == "/tmp/Ä_b~", lambda: f"what was typed; there is {field.text!r}")
        self.screen.key("ctrl+a", "BackSpace")
        wait_until(lambda: field.text == "", "an empty field")

    def test_a_complaint_on_standard_error_is_noticed(self):
        self.program.click(self.window.find("push button", "Complain"))
        wait_until(self.program.errors, "the complaint")
        self.assertEqual(self.program.complaints(), ["a complaint"])
        self.expect_errors(self.program, "a complaint")

    def test_a_crash_is_noticed(self):
        self.program.click(self.window.find("push button", "Crash"))
        wait_until(lambda: not self.program.is_running(), "the end")
        self.assertEqual(self.program.complaints(), ["ended with -6"])
        self.assertEqual(self.program.wait_for_end(), -6)
        with self.assertRaises(Late):
            self.program.window("Sample", seconds=0.5)

    def test_a_window_that_keeps_its_user_waiting_is_noticed(self):
        with Responsiveness(self.program) as quick:
            wait_until(lambda: quick.answers > 20, "some answers")
        with Responsiveness(self.program) as slow:
            self.program.click(self.window.find("push button", "Freeze"))
            wait_until(lambda: slow.longest > 0.35, "the longest wait")
        self.assertLess(quick.longest, 0.35)
        self.assertFalse(slow.has_failed)


class TheDesktop(WindowTest):
    def test_what_is_opened_is_noted(self):
        for target in ("/tmp/a b.pdf", "https://example.org/"):
            self.assertEqual(self.start(["xdg-open", target]).wait_for_end(), 0)
        self.assertEqual(self.desktop.opened(), ["/tmp/a b.pdf", "https://example.org/"])

    def test_a_process_that_was_left_behind_is_noticed_and_ended(self):
        self.start(["sh", "-c", "setsid sleep 61 & exit 0"]).wait_for_end()
        wait_until(lambda: [command_of(pid) for pid in self.desktop.strangers()] == ["sleep 61"], "the process")
        self.assertEqual(self.desktop.end_programs(seconds=0.2), ["sleep 61"])
        [stray] = self.desktop.strangers()
        os.kill(stray, 9)
        wait_until(lambda: not command_of(stray), "the end of the process")

    def test_two_desktops_do_not_see_each_other(self):
        self.start([SUPPORT / "sample-window"]).window("Sample")
        with Desktop() as other:
            self.assertEqual(other.screen.windows(), [])
            program = other.start([SUPPORT / "sample-window"])
            program.window("Sample")
            self.assertEqual(len(other.screen.windows()), 1)
            self.assertEqual(len(self.screen.windows()), 1)


class Leftovers(unittest.TestCase):
    def test_nothing_is_left_of_a_desktop(self):
        with Desktop() as desktop:
            folder, display, pids = desktop.folder, desktop.environment["DISPLAY"], desktop._processes.living()
            self.assertGreaterEqual(len(pids), 5)
        self.assertFalse(folder.exists())
        self.assertFalse(Path(f"/tmp/.X{display[1:]}-lock").exists())
        self.assertEqual([pid for pid in pids if command_of(pid)], [])

    def test_a_desktop_that_cannot_start_says_why_and_leaves_nothing(self):
        desktop = Desktop(size="wide")
        with self.assertRaisesRegex(Late, "Xvfb ended"), desktop:
            pass
        self.assertFalse(desktop.folder.exists())


class IceWm(WindowTest):
    manager = "icewm"

    def test_another_window_manager_does_as_well(self):
        program = self.start([PROGRAMS / "quorlin-skin"])
        managed = program.managed("Quorlin")
        managed.move(30, 40)
        managed.minimise()
        managed.activate()


class Waiting(unittest.TestCase):
    def test_a_state_that_never_comes_is_told(self):
        with self.assertRaisesRegex(Late, "the moon"):
            wait_until(lambda: False, "the moon", 0.05)

    def test_what_is_gone_is_asked_again(self):
        answers = iter([Gone(), Gone(), 5])

        def ask():
            answer = next(answers)
            if isinstance(answer, Gone):
                raise answer
            return answer
        self.assertEqual(wait_until(ask, "five"), 5)

    def test_a_state_that_ends_too_early_is_told(self):
        answers = iter([True, True, False])
        with self.assertRaisesRegex(AssertionError, "peace"):
            always(lambda: next(answers), "peace", 5)


def colours(pixels):
    return (pixels[at:at + 3] for at in range(0, len(pixels), 3))


def read_png(file):
    """(width, height, pixels) of a picture as the screen saves it."""
    data = file.read_bytes()
    width, height = struct.unpack(">II", data[16:24])
    length = struct.unpack(">I", data[33:37])[0]
    rows = zlib.decompress(data[41:41 + length])
    stride = 3 * width + 1
    return width, height, b"".join(rows[at + 1:at + stride] for at in range(0, len(rows), stride))


if __name__ == "__main__":
    main()
