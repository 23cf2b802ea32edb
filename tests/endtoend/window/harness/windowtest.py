"""The base of all tests of windows."""

import sys
import unittest

from .desktop import Desktop
from .places import PICTURES


class WindowTest(unittest.TestCase):
    """Every test gets a desktop of its own. It fails when a program complained on standard error without being
    expected to, or left a process behind, and leaves a picture of the screen when it failed."""

    manager = "openbox"
    size = "1280x1024"
    environment = {}
    language = "C.UTF-8"

    def setUp(self):
        self.desktop = Desktop(self.size, self.manager, self.environment, self.language)
        self.desktop.__enter__()
        self.screen = self.desktop.screen
        self._programs = []
        self.addCleanup(self._end)

    def start(self, command, **options):
        """Starts a program whose standard error is watched; see `Desktop.start`."""
        program = self.desktop.start(command, **options)
        self._programs.append(program)
        return program

    def make(self, *names):
        """Documents below the home folder; their paths."""
        files = [self.desktop.home / name for name in names]
        for file in files:
            file.parent.mkdir(parents=True, exist_ok=True)
            file.write_text(f"This is {file.name}.\n", "utf-8")
        return files

    def expect_errors(self, program, *texts):
        """Checks that the program complained about exactly this, a part of each line; then it counts as explained."""
        lines = program.errors()
        self.assertEqual(len(lines), len(texts), lines)
        for line, text in zip(lines, texts):
            self.assertIn(text, line)
        self._programs.remove(program)

    def screenshot(self, name):
        return self.screen.screenshot(PICTURES / f"{name}.png")

    def _end(self):
        try:
            result = self._outcome.result
            has_failed = any(test is self for test, _ in [*result.failures, *result.errors])
            if has_failed and hasattr(self.desktop, "screen"):
                self._show_failure()
        finally:
            strays = self.desktop.end_programs()
            complaints = [f"{program.name}: {line}" for program in self._programs for line in program.complaints()]
            self.desktop.__exit__()
        self.assertEqual(complaints, [])
        self.assertEqual(strays, [], "processes that were left behind")

    def _show_failure(self):
        print(f"{self.id()}: the screen is in {self.screenshot(self.id())}", file=sys.stderr)


main = unittest.main
