"""Tests of windows: the programs on a display of their own, met as assistive tools and hands meet them.

A test is a file test_SUBJECT.py beside this folder, named in CMakeLists.txt (`foreach(subject …)`):

    import sys
    from pathlib import Path

    sys.dont_write_bytecode = True
    sys.path.insert(0, str(Path(__file__).resolve().parent))

    from harness.mainwindow import MainWindow
    from harness.windowtest import WindowTest, main

    class Options(WindowTest):
        def test_an_option_can_be_ticked(self):
            window = MainWindow(self)                          # starts quorlin, waits for its window
            merge = window.option("Merge files")               # found by role and name, as a screen reader says them
            window.program.click(merge)                        # the real mouse; merge.press() goes without it
            merge.wait_for("checked")                          # "-checked" waits for the opposite
            self.assertEqual(window.documents(), [])
            self.assertEqual(window.close(), 0)                # through the window manager; the exit code

    if __name__ == "__main__":
        main()

Run one by hand with `QUORLIN_BUILD_DIR=build/release /usr/bin/python3 tests/endtoend/window/test_SUBJECT.py [-v]
[Class.test]`, or `ctest -R window_`. `print(window.program.tree.tree())` shows everything a screen reader sees;
test_conversion.py is a whole example.

- `MainWindow` (mainwindow.py): the window of `quorlin` by what its user does. Several may be started; arguments are
  the command line. A second start that hands over and ends is `self.start([PROGRAMS / "quorlin", …]).wait_for_end()`.
- `WindowTest` (windowtest.py) gives each test a `Desktop` (desktop.py): display, window manager, buses, and a user
  whose home, settings (`config`, `machine`), cache, runtime and temporary folder lie in `desktop.folder`.
  `desktop.opened()` has what was handed to the system to open, links included. `language` (the locale) and
  `environment` are attributes of the class.
- A test fails when a program wrote a line to standard error that is neither in `EXPECTED_LINES` (program.py: what the
  environment causes) nor given to `expect_errors`, when it crashed, or when it left a process behind. A test that
  expects a certain end calls `wait_for_end`.
- `Program` (program.py): windows, dialogs (`dialog().texts`, `.answer("OK")`, `.accept_file(path, "Open")`), menus
  (`open_menu(control)`, `choose_entry("Language", "deutsch")`), `choose(combo, entry)`, standard error, the end.
- `Node` (accessible.py): one control. Role, name, states, value, text, extents are asked anew each time.
- `Screen` and `ManagedWindow` (screen.py): mouse, keyboard, pictures; moving, minimising, closing.
- `desktop.drag(files)` (dragging.py): a real drag, to be moved over a control and dropped, as `MainWindow.drop` does.
- `Responsiveness` (responsiveness.py): how long a window kept its user waiting meanwhile.
- Wait for states (waiting.py: `wait_until`, `always`), never for a time.
"""
