"""The first paint is that of the right window and not before it, and memory that of the one process."""

import subprocess
import sys
import unittest

from bench_path import BENCH, FolderTest

from measure import startup
from measure.startup import StartupError, display_server, measure

MEBIBYTE = 1024 * 1024
# Waits before it shows its window, again before it draws in it, and then keeps on working.
WINDOW = """
import time
from Xlib import X
from Xlib.display import Display
display = Display()
screen = display.screen()
{before}
window = screen.root.create_window(0, 0, {size}, {size}, 0, screen.root_depth)
window.change_property(display.intern_atom("_NET_WM_PID"), display.intern_atom("CARDINAL"), 32, [{pid}])
window.map()
display.sync()
time.sleep({pause})
window.fill_rectangle(window.create_gc(foreground=0x00FF00), 0, 0, {size}, {size})
display.sync()
held = bytearray(b"x" * ({mebibytes} << 20))
begin = time.process_time()
while time.process_time() < begin + {work}:
    pass
{after}
time.sleep(60)
"""


class StartupTest(FolderTest):
    def measure(self, **changes):
        facts = {"before": "", "after": "", "size": 200, "pid": "__import__('os').getpid()", "pause": 0, "work": 0,
                 "mebibytes": 0, **changes}
        program = self.folder / "window.py"
        program.write_text(WINDOW.format(**facts), encoding="utf-8")
        with display_server() as display:
            return measure([sys.executable, program], display)

    def shorten(self, **limits):
        for name, value in limits.items():
            self.addCleanup(setattr, startup, name, getattr(startup, name))
            setattr(startup, name, value)

    def test_the_first_paint_is_waited_for_and_not_the_showing(self):
        self.assertGreater(self.measure(pause=3).paint, 3)
        self.assertLess(self.measure().paint, 3)

    def test_work_after_the_first_paint_is_not_part_of_its_time(self):
        start = self.measure(work=3)
        self.assertLess(start.paint, 3)
        self.assertGreater(start.cpu, 3)

    def test_memory_is_that_of_the_process_and_not_of_its_children(self):
        child = "import subprocess, sys; subprocess.Popen([sys.executable, '-c', " \
                "'held = bytearray(b\"x\" * (80 << 20)); __import__(\"time\").sleep(60)'])"
        least = self.measure()
        held = self.measure(mebibytes=40, before=child)
        for member in ("rss", "pss"):
            self.assertAlmostEqual((getattr(held, member) - getattr(least, member)) / MEBIBYTE, 40, delta=4)

    def test_windows_of_others_and_tiny_ones_do_not_count(self):
        self.shorten(PAINT_SECONDS=1)
        for changes in ({"pid": 1}, {"size": 3}):
            with self.assertRaisesRegex(StartupError, "no window"):
                self.measure(**changes)

    def test_a_program_that_never_rests_is_told(self):
        self.shorten(SETTLE_SECONDS=1)
        with self.assertRaisesRegex(StartupError, "does not come to rest"):
            self.measure(work=30)

    def test_a_program_that_dies_is_told(self):
        for when in ("before", "after"):
            with self.assertRaisesRegex(StartupError, "is gone"):
                self.measure(**{when: "raise SystemExit"})


class CommandTest(FolderTest):
    def run_it(self, *arguments):
        done = subprocess.run([sys.executable, BENCH / "startup", *arguments], capture_output=True, text=True,
                              timeout=120, check=False)
        return done.returncode, done.stdout, done.stderr

    def test_both_sides_are_measured_and_their_ratio_told(self):
        program = self.folder / "window"
        facts = {"before": "", "after": "", "size": 200, "pid": "__import__('os').getpid()", "pause": 0, "work": 0,
                 "mebibytes": 0}
        program.write_text(f"#!{sys.executable}\n" + WINDOW.format(**facts), encoding="utf-8")
        program.chmod(0o755)
        status, output, errors = self.run_it("--rounds", "1", "--peer", str(program), str(program))
        self.assertEqual((status, errors), (0, ""))
        lines = output.splitlines()
        self.assertIn("1 starts of window and of window (peer)", lines[0])
        self.assertEqual(lines[1].split(), ["paint", "ms", "cpu", "ms", "rss", "MiB", "pss", "MiB"])
        self.assertRegex(lines[-1], r"ratio( +\d\.\d\d){4}")

    def test_a_program_that_is_not_there_is_wrong_use(self):
        status, _, errors = self.run_it(str(self.folder / "nothing"))
        self.assertEqual(status, 2)
        self.assertIn("no program", errors)


if __name__ == "__main__":
    unittest.main()
