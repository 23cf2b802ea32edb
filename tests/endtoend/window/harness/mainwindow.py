"""The main window of `quorlin`, by what its user does with it."""

from .places import PROGRAMS
from .waiting import wait_until

TITLE = "Quorlin"
JOB_SECONDS = 180.0  # the engine's first start on a busy machine included


class MainWindow:
    """Starts the program and waits for its window. `test` is a `WindowTest`, `arguments` the command line."""

    def __init__(self, test, *arguments, **options):
        self.desktop = test.desktop
        self.program = test.start([PROGRAMS / "quorlin", *arguments], **options)
        self.node = self.program.window(TITLE)
        self.list = self.node.find("list")  # the only one: that of the combo box shows only when it is open

    @property
    def managed(self):
        """The window as the window manager knows it."""
        return self.program.managed(TITLE)

    def button(self, name):
        """One of "Convert", "Close", "Help", "Minimise", "To the top", …"""
        return self.node.find("push button", name)

    def option(self, name):
        """The check box "Send result by e-mail", "Show result file" or "Merge files"."""
        return self.node.find("check box", name)

    def set_option(self, name, is_on=True):
        option = self.option(name)
        if option.is_checked != is_on:
            self.program.click(option)
        option.wait_for("checked" if is_on else "-checked")

    @property
    def quality(self):
        return self.node.find("combo box").name

    def choose_quality(self, name):
        self.program.choose(self.node.find("combo box"), name)

    def documents(self):
        """The names in the list, in its order."""
        return self.list.names("list item")

    def wait_for_documents(self, *names):
        wait_until(lambda: self.documents() == list(names), lambda: f"{names}; there are {self.documents()}")

    def drop(self, *files):
        """Drags files onto the list and lets go."""
        with self.desktop.drag(files) as drag:
            drag.move_over(self.list)
            drag.wait_for_offer("copy")
            drag.drop()

    def open_menu(self):
        """The application's menu, as a right click on the title opens it."""
        return self.program.open_menu(self.node.find("label", TITLE))

    def choose_in_menu(self, *path):
        """Such as "Language", "deutsch"; names are in the language of the window."""
        self.open_menu()
        self.program.choose_entry(*path)

    def minimise(self):
        """Presses "Minimise"; returns when the window manager has done it and the program knows."""
        managed = self.managed
        self.program.click(self.button("Minimise"))
        # The toolkit takes the name of a minimised window away. Restored before, the program would not notice.
        self.node.wait_for_name("")
        wait_until(lambda: managed.is_minimised, "the window to be minimised")
        return managed

    def is_working(self):
        return self.node.has("progress bar", "Progress")

    def convert(self):
        """Presses "Convert" and waits until the job has begun; it may be over by then."""
        bar, bus = self.node.find("progress bar", "Progress", showing=False), self.desktop.bus
        before = bus.times_shown(bar)
        self.program.click(self.button("Convert"))
        wait_until(lambda: self.is_working() or bus.times_shown(bar) > before,
                   lambda: f"a job to begin in:\n{self.node.tree()}")

    def wait_until_idle(self, seconds=JOB_SECONDS):
        wait_until(lambda: not self.is_working(), lambda: f"the end of the job in:\n{self.program.tree.tree()}",
                   seconds)

    def close(self):
        """Closes the window through the window manager; the program's exit code."""
        self.managed.ask_to_close()
        return self.program.wait_for_end()
