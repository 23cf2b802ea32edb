"""The faults: what can be done to a job, when it is done, and to whom."""

import os
import random
import signal
import threading
import time
from dataclasses import dataclass, field

from .processes import VICTIMS, kind_of, lives
from .steps import Limits

# Of the worker and its children, of documents, of folders, of the component, of the job itself.
KINDS = ("kill", "stop", "remove", "truncate", "readonly", "garbage", "limits", "crash")
WEIGHTS = {"kill": 6, "stop": 3, "remove": 2, "truncate": 2, "readonly": 2, "garbage": 3, "limits": 2, "crash": 1}
STOP_STALL = 10
LOOK_SECONDS = 0.02
LATEST_SECONDS = 4.0
GARBAGE_NAMES = ("docx", "doc", "xlsx", "xls", "pptx", "ppt", "odt", "rtf", "pdf", "png", "emf", "html")


@dataclass
class Fault:
    """One fault. `whole_job` tells whether it may cost documents that it does not touch itself."""

    kind: str
    detail: str = ""
    happened: bool = False
    seconds: float | None = None  # stop: until the process was gone
    touched: list = field(default_factory=list)

    @property
    def whole_job(self):
        return self.kind in ("kill", "stop", "readonly", "limits", "crash")

    def told(self):
        return f"{self.kind} {self.detail}".strip()


class Dice:
    """Chooses, from one seed, what each job is and what happens to it."""

    def __init__(self, seed, kinds, rate, weights=None):
        self.random = random.Random(seed)
        self._kinds = list(kinds)
        self._rate = rate
        self._weights = weights or WEIGHTS

    def fault(self, may_crash=True):
        """The next job's fault, or None."""
        kinds = [kind for kind in self._kinds if may_crash or kind != "crash"]
        if not kinds or self.random.random() >= self._rate:
            return None
        return Fault(self.random.choices(kinds, [self._weights[kind] for kind in kinds])[0])

    def limits(self, fault, usual):
        if fault and fault.kind == "limits":
            tiny = Limits(stall=self.random.choice([0.05, 0.5, 2]), total=self.random.choice([0.1, 1, 5]))
            fault.detail, fault.happened = f"stall {tiny.stall} s, total {tiny.total} s", True
            return tiny
        if fault and fault.kind == "stop":
            return Limits(stall=min(STOP_STALL, usual.stall), total=usual.total)
        return usual

    def garbage(self, originals):
        """(label, name, content) of a document that is none."""
        number = self.random.randrange(1 << 32)
        if self.random.random() < 0.5:
            content = self.random.randbytes(self.random.choice([1, 100, 5000, 200_000]))
            name = f"noise-{number:08x}.{self.random.choice(GARBAGE_NAMES)}"
            return f"({name})", name, content
        original = self.random.choice(originals)
        content = original.path.read_bytes()
        name = f"cut-{number:08x}-{original.path.name}"
        return f"({name})", name, content[: self.random.randrange(1, max(2, len(content)))]


class Injector:
    """Lets one fault happen to a running job, on a thread of its own. Use as a context manager."""

    def __init__(self, fault, client, job_folder, dice):
        self._fault, self._client, self._folder = fault, client, job_folder
        self._random = random.Random(dice.random.random())
        self._over = threading.Event()
        self._stopped = None
        self._thread = threading.Thread(target=self._act, daemon=True)

    def __enter__(self):
        if self._fault and hasattr(self, f"_{self._fault.kind}"):
            self._thread.start()
        return self

    def __exit__(self, *_):
        self._over.set()
        if self._thread.ident:
            self._thread.join()

    def _act(self):
        if not self._over.wait(self._random.uniform(0, LATEST_SECONDS)):
            getattr(self, f"_{self._fault.kind}")()

    def _victim(self, kinds):
        """(pid, kind) of a process of the component, as soon as there is one; None at the job's end."""
        while not self._over.wait(LOOK_SECONDS):
            found = [(pid, kind_of(pid)) for pid in self._client.processes() if pid != self._client.pid]
            found = [one for one in found if one[1] in kinds]
            if found:
                return self._random.choice(found)
        return None

    def _signal(self, number):
        """Sends it to one process that descends from the component; returns its id."""
        victim = self._victim([self._random.choice(VICTIMS)])
        if victim is None or not self._happen(victim[1]):
            return None
        try:
            os.kill(victim[0], number)
        except ProcessLookupError:
            self._fault.happened = False
            return None
        return victim[0]

    def _happen(self, detail):
        self._fault.detail, self._fault.happened = detail, True
        return True

    def _kill(self):
        self._signal(signal.SIGKILL)

    def _stop(self):
        """A worker that nobody has work for stays stopped until the job's end, and then goes on."""
        pid, begin = self._signal(signal.SIGSTOP), time.monotonic()
        while pid and lives(pid):
            if self._over.wait(LOOK_SECONDS):
                self._go_on(pid)
                return
        if pid:
            self._fault.seconds = time.monotonic() - begin

    def _go_on(self, pid):
        if pid in self._client.processes():
            self._fault.detail += ", idle"
            os.kill(pid, signal.SIGCONT)

    def _crash(self):
        self._happen("quorlin-pdf")
        self._client.kill()

    def _document(self):
        copy = self._random.choice(self._folder.copies)
        copy.touched = self._fault.kind
        self._fault.touched.append(copy.label)
        self._happen(copy.label)
        return copy

    def _remove(self):
        copy = self._document()
        copy.digest = None
        copy.path.unlink()

    def _truncate(self):
        copy = self._document()
        length = self._random.randrange(copy.path.stat().st_size)
        os.truncate(copy.path, length)
        copy.digest = self._folder.digest_now(copy)

    def _readonly(self):
        """Until some moment of the job, or to its end."""
        self._happen("folder")
        self._folder.path.chmod(0o555)
        self._over.wait(self._random.uniform(0.1, 2 * LATEST_SECONDS))
        self._folder.path.chmod(0o755)
