"""A program under test, as its user meets it."""

import os
import re
import signal
import subprocess

from .waiting import SECONDS, Late, wait_until

# Lines on standard error that the environment causes and not the program.
EXPECTED_LINES = (
    # The toolkit's file dialog, when assistive tools look at it while it still reads its folder.
    re.compile(r"^QAccessibleTable::child: Invalid index at: "),
)
ROUNDING = 2  # pixels, where the screen is scaled
DIALOG_ROLES = ("dialog", "alert", "file chooser")


class Program:
    """A started program: its windows, its dialogs, its menus, what it says and how it ends."""

    def __init__(self, desktop, name, process):
        self.desktop, self.name, self._process = desktop, name, process
        self._screen = desktop.screen
        self._is_end_known = False

    @property
    def pid(self):
        return self._process.pid

    # What it shows

    @property
    def tree(self):
        """Its part of the assistive tools' tree; waits until there is one."""
        def offered():
            self._must_run()
            return self.desktop.bus.application(self.pid)
        return wait_until(offered, lambda: f"{self._process.args[0]} to offer its controls; it said {self.errors()}")

    def windows(self):
        """All its windows that can be seen, menus left out."""
        return [node for node in self.tree.children() if node.is_showing and node.role != "popup menu"]

    def window(self, title, seconds=SECONDS):
        """The controls of the window with this title."""
        return self._top_level(lambda node: node.name == title, f"window {title!r}", seconds)

    def managed(self, title, seconds=SECONDS):
        """The window with this title as the window manager knows it."""
        return self._screen.window(title, self.pid, seconds)

    def dialog(self, title=None, seconds=SECONDS, roles=DIALOG_ROLES):
        """The controls of the dialog, any one or that with the title; a message box has the role "alert"."""
        return Dialog(self, self._top_level(
            lambda node: node.role in roles and title in (None, node.name), f"dialog {title!r}", seconds))

    def has_dialog(self):
        return any(node.role in DIALOG_ROLES for node in self.windows())

    def _top_level(self, fits, what, seconds):
        def first():
            return next((node for node in self.tree.children()
                         if node.is_showing and fits(node) and self._is_placed(node)), None)
        return wait_until(first, lambda: f"{what} in:\n{self.tree.tree()}", seconds)

    def _is_placed(self, node):
        """Whether the program and the window manager agree where the window is: only then a click meets it."""
        place = node.extents
        frames = [window.frame for window in self._screen.windows(self.pid) if window.title == node.name]
        return not self._screen.has_manager() or any(
            all(abs(a - b) <= ROUNDING for a, b in zip(place, frame)) for frame in frames)

    # What its user does

    def click(self, node, button=1, count=1, at=None):
        """A real click into the middle of a control, or at a place in it."""
        x, y, width, height = node.extents
        right, down = at or (width // 2, height // 2)
        self._screen.click(x + right, y + down, button, count)

    def choose(self, combo, entry):
        """Opens a combo box with the mouse and clicks the entry."""
        self.click(combo)
        entries = combo.find("list").wait_for("showing")
        self.click(entries.find("list item", entry))
        combo.wait_for_name(entry)

    def menu(self):
        """The menu that is open, the innermost when there are several."""
        def last():
            menus = [node for node in self.desktop.bus.shown(self.tree.service) if node.role == "popup menu"]
            return menus[-1] if menus else None
        return wait_until(last, f"a menu of {self.name}")

    def open_menu(self, node, at=None):
        """Clicks with the right button; the menu."""
        self.click(node, button=3, at=at)
        return self.menu()

    def choose_entry(self, *path):
        """Clicks through the open menu and its submenus."""
        for step in path:
            menu = self._menu_with(step)
            self.click(next(entry for entry in menu.children() if entry.name == step))

    def _menu_with(self, name):
        def shown():
            menu = self.menu()
            return menu if name in [entry.name for entry in menu.children()] else None
        return wait_until(shown, lambda: f"menu entry {name!r} in:\n{self.menu().tree()}")

    # What it says and how it ends

    def output(self):
        return self._process.output.read_text("utf-8", "replace")

    def errors(self):
        """The lines on standard error that nothing explains."""
        lines = self._process.errors.read_text("utf-8", "replace").splitlines()
        return [line for line in lines if not any(pattern.search(line) for pattern in EXPECTED_LINES)]

    def is_running(self):
        return self._process.poll() is None

    def wait_for_end(self, seconds=SECONDS):
        """Its exit code; negative for a signal."""
        self._is_end_known = True
        try:
            return self._process.wait(seconds)
        except subprocess.TimeoutExpired as error:
            raise Late(f"{self._process.args[0]} still runs after {seconds:g} s") from error

    def end(self, seconds=SECONDS):
        """Asks it to end where it runs, and makes it when it does not."""
        if self.is_running():
            self.send_signal()
            try:
                self._process.wait(seconds)
            except subprocess.TimeoutExpired:
                self._process.kill()
                self._process.wait()

    def complaints(self):
        """What nobody expected: lines on standard error, and an end that no test asked for its way."""
        ended_well = self._is_end_known or self._process.returncode in (None, 0, -signal.SIGTERM)
        return self.errors() + ([] if ended_well else [f"ended with {self._process.returncode}"])

    def send_signal(self, number=signal.SIGTERM):
        os.kill(self.pid, number)

    def _must_run(self):
        if not self.is_running():
            raise Late(f"{self._process.args[0]} ended with {self._process.returncode}: {self.errors()}")


class Dialog:
    """A message box or a file dialog."""

    def __init__(self, program, node):
        self._program, self.node = program, node

    @property
    def title(self):
        return self.node.name

    @property
    def texts(self):
        """Every text in it."""
        return [text for text in self.node.names("label") if text]

    @property
    def buttons(self):
        return [button.name for button in self.node.find_all("push button")]

    def answer(self, button):
        """Clicks a button; returns when the dialog is gone."""
        self._program.click(self.node.find("push button", button))
        self.node.wait_gone()

    def accept_file(self, path, button):
        """Puts a path, or several in quotes, into the field for the name and clicks a button."""
        self.node.find("text").set_text(str(path))
        self.answer(button)
