"""The whole run: job after job, the component started anew when it was killed, and what is left at the end."""

import os
import threading
import time
from pathlib import Path

from .client import Client
from .faults import Dice
from .growth import Record
from .job import Job
from .ledger import Ledger
from .processes import Holding, holding_of, left_of
from .steps import Limits, run_step
from .stock import JobFolder, changed

MOST_DOCUMENTS = 12
MERGE_SHARE = 0.25
SAMPLE_SECONDS = 2.0
GONE_SECONDS = 5.0
# The component is killed in the last part only, so that one lives as long as possible before.
CRASHES_FROM = 5 / 6
SOCKETS = Path("/tmp")  # where the office engine has its pipes, whatever TMPDIR says


class Run:
    """One run over a stock of originals. `tell` takes lines for people as things go wrong."""

    def __init__(self, program, options, originals, place, log, tell=lambda line: None):
        self._program, self._options, self._originals = program, options, originals
        self._place, self._log = place, log
        self.ledger, self.record = Ledger(tell), Record()
        self._numbers = iter(range(1, 1 << 31))
        self._seen = set()
        self._sockets = self._engine_sockets()
        self._begin = time.monotonic()
        self._sampling = threading.Lock()
        self._client = None

    @property
    def seconds(self):
        return time.monotonic() - self._begin

    def start(self):
        client = Client(self._program, self._place, self._log)
        with self._sampling:
            self._client = client
            self.record.new_component()
        client.send({"type": "warm"})

    def soak(self, minutes, dice, usual, every_minute):
        """Random jobs for so long; `every_minute` is called each minute."""
        with Sampler(self), Ticker(every_minute):
            while self.seconds < minutes * 60:
                late = self.seconds > minutes * 60 * CRASHES_FROM
                self._random_job(dice, usual, late)

    def _random_job(self, dice, usual, may_crash):
        fault = dice.fault(may_crash)
        if fault and fault.kind == "readonly" and not self._place.user.heeds_permissions:
            fault = None
        folder = self._new_folder()
        for original in dice.random.choices(self._originals, k=dice.random.randint(1, MOST_DOCUMENTS)):
            folder.add(original)
        if fault and fault.kind == "garbage":
            fault.happened = True
            for _ in range(dice.random.randint(1, 3)):
                folder.add_content(*dice.garbage(self._originals))
        limits, merge = dice.limits(fault, usual), dice.random.random() < MERGE_SHARE
        merge = merge or (fault is not None and fault.victim == "quorlin-pdf-merge")
        self._run_job(folder, fault, limits, merge, dice)

    def once(self, limits, told):
        """Every document once, in jobs of twelve, without faults; `told` gets each job's outcomes."""
        dice = Dice(0, [], 0)
        with Sampler(self):
            for begin in range(0, len(self._originals), MOST_DOCUMENTS):
                folder = self._new_folder()
                for original in self._originals[begin : begin + MOST_DOCUMENTS]:
                    folder.add(original)
                told(self._run_job(folder, None, limits, False, dice))

    def _new_folder(self):
        return JobFolder(self._place.jobs, next(self._numbers), self._place.user)

    def _run_job(self, folder, fault, limits, merge, dice):
        job = Job(self._client, self._place, folder, fault, self.ledger, self._options)
        job.run(limits, merge, dice)
        self.ledger.note_job(fault, job.outcomes, merge)
        if self._client.killed or not job.usable:
            self._start_anew()
        else:
            self.sample(at_rest=True)
        self._look_after(folder)
        return job

    def _start_anew(self):
        """After a kill, everything that the old one left must go by itself, at the next start at the latest."""
        old = self._client
        if old.killed:
            old.reap()
            self._await_gone(old, "after the kill of quorlin-pdf")
        old.destroy()
        self.start()
        # The engine that is asked for in advance would not change anything, but answers show that it listens.
        run_step(self._client, "print", [], Limits(), printer="Soak")

    def _await_gone(self, client, when):
        deadline = time.monotonic() + GONE_SECONDS
        while (left := left_of(client)) and time.monotonic() < deadline:
            time.sleep(0.05)
        for process in left:
            self.ledger.problem("leftovers", f"process {process} {when}")

    def _look_after(self, folder):
        """Nothing but what was there before may lie anywhere, except the component's one working folder."""
        left, lost = folder.problems()
        for name in left:
            self.ledger.problem("leftovers", name)
        for name in lost:
            self.ledger.problem("changed", f"copy {name}")
        for name in self._strangers(working_folders=1):
            self.ledger.problem("leftovers", f"{name} after {folder.path.name}")
        folder.remove()

    def _strangers(self, working_folders):
        """New things in the folders for temporary files, for results that find no place, and for journals."""
        work = sorted(self._place.tmp.glob("quorlin-work-*"), key=os.path.getmtime)
        found = {*self._place.tmp.iterdir()} - {*work[len(work) - working_folders :]}
        found |= {path for path in self._place.home.iterdir() if not path.name.startswith(".")}
        found |= {path for path in self._place.home.iterdir() if path.name.endswith("~")}
        journals = sorted(self._place.cache.glob("quorlin/journal/*.journal"), key=os.path.getmtime)
        found |= {*journals[: max(0, len(journals) - working_folders)]}
        new = sorted(str(path.relative_to(self._place.root)) for path in found - self._seen)
        self._seen |= found
        return new

    def sample(self, at_rest):
        with self._sampling:
            if self._client is None:
                return
            holdings = [holding for pid in self._client.processes() if (holding := holding_of(pid))]
            if at_rest:
                holdings += [folder_holding("work folder", self._place.tmp),
                             folder_holding("journal", self._place.cache / "quorlin")]  # fmt: skip
            self.record.add(self.seconds, holdings, at_rest)

    def finish(self):
        """Ends the component as a driver does and looks for what is left."""
        with self._sampling:
            client, self._client = self._client, None
        client.processes()
        code = client.end()
        if code != 0:
            self.ledger.problem("hangs" if code is None else "lost", f"the end of the component: {code}")
        self._await_gone(client, "after the end")
        client.destroy()
        for name in self._strangers(working_folders=0):
            self.ledger.problem("leftovers", f"{name} after the end")
        if sockets := self._engine_sockets() - self._sockets:
            self.ledger.problem("leftovers", f"{len(sockets)} sockets like {SOCKETS / min(sockets)}")
        for label in changed(self._originals):
            self.ledger.problem("changed", label)

    def _engine_sockets(self):
        """The office engine's pipes of the component's user."""
        uid = os.geteuid() if self._place.user.uid is None else self._place.user.uid
        return {path.name for path in SOCKETS.glob(f"OSL_PIPE_{uid}_*")}

    def abandon(self):
        """After an interruption: ends what runs."""
        with self._sampling:
            client, self._client = self._client, None
        if client:
            client.processes()
            client.destroy()


class Ticker:
    """Calls something again and again on a thread of its own. A context manager."""

    def __init__(self, action, seconds=60.0):
        self._action, self._seconds = action, seconds
        self._over = threading.Event()
        self._thread = threading.Thread(target=self._tick, daemon=True)

    def __enter__(self):
        self._thread.start()

    def __exit__(self, *_):
        self._over.set()
        self._thread.join()

    def _tick(self):
        while not self._over.wait(self._seconds):
            self._action()


class Sampler(Ticker):
    """Samples the processes while jobs run."""

    def __init__(self, run):
        super().__init__(lambda: run.sample(at_rest=False), SAMPLE_SECONDS)


def folder_holding(kind, folder):
    """Bytes and files below a folder, in the form of a process's holding."""
    sizes = []
    for current, _, names in os.walk(folder):
        for name in names:
            try:
                sizes.append(os.lstat(os.path.join(current, name)).st_size)
            except OSError:
                continue  # an engine has files that come and go
    return Holding(0, kind, sum(sizes), 0, len(sizes))

