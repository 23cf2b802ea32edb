"""A real drag of files onto a control, from a program that stands in for a file manager."""

import itertools

from .waiting import SECONDS, always, wait_until

NUDGE = 24  # pixels, more than any toolkit takes for a shaking hand


class FileDrag:
    """A drag that is under way, step by step; use as a context manager. What was not dropped is abandoned."""

    def __init__(self, desktop, program_file, files):
        self._screen, self._desktop = desktop.screen, desktop
        self._command = [program_file, *files]
        self._to_and_fro = itertools.cycle((1, 2, 1, 0))

    def __enter__(self):
        self._source = self._desktop.start(self._command, "drag-source")
        window = self._source.managed("Files")
        window.move(0, 0)
        x, y, width, height = window.frame
        self._at = (x + width // 2, y + height // 2)
        self._screen.move_mouse(*self._at)
        self._screen.hold()
        self._is_held = True
        self._move((self._at[0] + NUDGE, self._at[1]))
        self._wait_told("begun", SECONDS)
        return self

    def __exit__(self, *_):
        if self._is_held:
            self._screen.key("Escape")
            self._screen.release()
        # The source stays, as a file manager does: the target fetches the files from it after the drop.

    def move_over(self, node, at=None):
        """Moves the pointer over a control, as a hand does."""
        x, y, width, height = node.extents
        right, down = at or (width // 2, height // 2)
        self._move((x + right, y + down))

    def wait_for_offer(self, action, seconds=SECONDS):
        """Waits until the target offers "copy", "move" or "link", which the cursor shows."""
        wait_until(lambda: self._offered() == action, lambda: f"{action}; told was {self.told()}", seconds)

    def check_refused(self, seconds=1):
        """Checks that the target goes on offering nothing."""
        always(lambda: self._offered() == "ignore", "nothing is offered", seconds)

    def _offered(self):
        """A hand is never quite still, and targets are asked only when the pointer moves."""
        self._screen.move_mouse(self._at[0] + next(self._to_and_fro), self._at[1])
        return self._last("over") or "ignore"

    def drop(self, seconds=SECONDS):
        """Lets go; what became of it: "copy", "move", "link" or "ignore"."""
        self._screen.release()
        self._is_held = False
        self._wait_told("done", seconds)
        return self._last("done")

    def told(self):
        return self._source.output().split("\n")

    def _move(self, end, steps=6):
        """In steps, since a target is first entered and then crossed."""
        begin = self._at
        for step in range(1, steps + 1):
            self._screen.move_mouse(*(a + (b - a) * step // steps for a, b in zip(begin, end)))
        self._at = end

    def _last(self, word):
        found = [line.split() for line in self.told() if line.startswith(word + " ")]
        return found[-1][1] if found and len(found[-1]) > 1 else None

    def _wait_told(self, word, seconds):
        wait_until(lambda: any(line.split()[:1] == [word] for line in self.told()),
                   lambda: f"{word!r} from the source of the drag; it told {self.told()}", seconds)
