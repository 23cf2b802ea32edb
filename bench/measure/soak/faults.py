"""The faults: what can be done to a job, when it is done, and to whom."""

import os
import random
import signal
import threading
import time
from dataclasses import dataclass, field, replace

from .processes import VICTIMS, kind_of, lives

# Of the worker and its children, of documents, of folders, of the component, of the job itself.
KINDS = ("kill", "stop", "remove", "truncate", "readonly", "garbage", "limits", "crash")
WEIGHTS = {"kill": 6, "stop": 3, "remove": 2, "truncate": 2, "readonly": 2, "garbage": 3, "limits": 2, "crash": 1}
STOP_STALL = 10
LOOK_SECONDS = 0.02
SECONDS_EACH = 0.25  # what a document takes with warm engines
GARBAGE_NAMES = ("docx", "doc", "xlsx", "xls", "pptx", "ppt", "odt", "rtf", "pdf", "png", "emf", "html")


@dataclass
class Fault:
    """One fault. `whole_job` tells whether it may cost documents that it does not touch itself."""

    kind: str
    victim: str = ""  # kill and stop: the kind of process
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
        """The next job's fault, or None. A crash that is the only kind may always come."""
        may_crash = may_crash or self._kinds == ["crash"]
        kinds = [kind for kind in self._kinds if may_crash or kind != "crash"]
        if not kinds or self.random.random() >= self._rate:
            return None
        kind = self.random.choices(kinds, [self._weights[kind] for kind in kinds])[0]
        return Fault(kind, self.random.choice(VICTIMS) if kind in ("kill", "stop") else "")

    def limits(self, fault, usual):
        if fault and fault.kind == "limits":
            stall, total = self.random.choice([0.05, 0.5, 2]), self.random.choice([0.1, 1, 5])
            tiny = replace(usual, stall=stall, total=total)
            fault.detail, fault.happened = f"stall {tiny.stall} s, total {tiny.total} s", True
            return tiny
        if fault and fault.kind == "stop":
            return replace(usual, stall=min(STOP_STALL, usual.stall))
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
        self._usual_seconds = SECONDS_EACH * len(job_folder.copies)
        self._over = threading.Event()
        self._error = None
        self._thread = threading.Thread(target=self._act, daemon=True)

    def __enter__(self):
        if self._fault and hasattr(self, f"_{self._fault.kind}"):
            self._thread.start()
        return self

    def __exit__(self, *_):
        self._over.set()
        if self._thread.ident:
            self._thread.join()
        if self._error:
            raise self._error

    def _act(self):
        try:
            if not self._over.wait(self._random.uniform(0, self._usual_seconds)):
                getattr(self, f"_{self._fault.kind}")()
        except Exception as error:  # noqa: BLE001 - raised again where the job is run
            self._error = error

    def _victim(self, kind):
        """A process of the component that is of this kind, as soon as there is one; None at the job's end."""
        while not self._over.wait(LOOK_SECONDS):
            found = [pid for pid in self._client.processes() if pid != self._client.pid and kind_of(pid) == kind]
            if found:
                return self._random.choice(found)
        return None

    def _signal(self, number):
        """Sends it to one process that descends from the component; returns its id."""
        pid = self._victim(self._fault.victim)
        if pid is None:
            return None
        try:
            os.kill(pid, number)
        except ProcessLookupError:
            return None
        self._happen(self._fault.victim)
        return pid

    def _happen(self, detail):
        self._fault.detail, self._fault.happened = detail, True

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
            try:
                os.kill(pid, signal.SIGCONT)
            except ProcessLookupError:
                pass  # the component has just ended it

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
        self._over.wait(self._random.uniform(0, 2 * self._usual_seconds))
        self._folder.path.chmod(0o755)
