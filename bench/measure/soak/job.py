"""One job: documents copied, printed, distilled, perhaps merged, delivered, cleared and looked after."""

import shutil

from .client import Died
from .faults import Injector
from .ledger import DIED, Outcome
from .processes import holding_of, name_of
from .steps import clear, run_step, seconds_of
from .stock import faults_of, looks_whole

CHECK_EVERY = 10


class Job:
    """Runs once. Afterwards `outcomes` has one entry for each document, `usable` tells of the component."""

    def __init__(self, client, place, folder, fault, ledger, options):
        self._client, self._place, self.folder = client, place, folder
        self._fault, self._ledger, self._options = fault, ledger, options
        self._ends = {}
        self._seconds = {}
        self.outcomes = []
        self.usable = True

    def run(self, limits, merge, dice):
        with Injector(self._fault, self._client, self.folder, dice):
            results = self._convert(limits, merge)
        if self.usable and not self._client.killed:
            self._deliver(results)
            self._clear(limits)
        self._conclude(merge)

    def _convert(self, limits, merge):
        """{position: final file} after all steps."""
        files = {at: str(copy.path) for at, copy in enumerate(self.folder.copies)}
        files = self._step("print", files, limits, printer="Soak")
        files = self._step("distil", files, limits, options=str(self._options))
        return self._step("merge", files, limits, bookmarks=True) if merge else files

    def _step(self, kind, files, limits, options=None, **members):
        """Runs one step for the files that are left; returns those that came through."""
        if not files or not self.usable:
            return {}
        also = {"options": options} if options else {}
        documents = [{"file": file, **also} for file in files.values()]
        step = run_step(self._client, kind, documents, limits, **members)
        self._look_at(step)
        through, seconds = {}, seconds_of(step, limits)
        for order, position in enumerate(files):
            self._seconds[position] = self._seconds.get(position, 0) + seconds[order]
            reason, text = self._end_of(step, order)
            if reason:
                self._ends[position] = (reason, text, kind)
            else:
                through[position] = step.output(order)
        return through

    def _end_of(self, step, order):
        if step.ending != "complete":
            return ("hung" if step.ending == "hung" else DIED), step.ending
        return step.failures.get(order, ("", ""))

    def _look_at(self, step):
        if step.ending == "complete":
            kind, breaches = "breaches", step.breaches
        else:
            self.usable = False
            kind = "hangs" if step.ending == "hung" else "lost"
            breaches = [] if self._client.killed else [f"{text} [{self._state()}]" for text in step.breaches]
        for text in breaches:
            self._ledger.problem(kind, f"{self.folder.path.name} ({self._told_fault()}): {text}")

    def _told_fault(self):
        return self._fault.told() if self._fault and self._fault.happened else "no fault"

    def _state(self):
        """The component's processes at this moment."""
        pids = self._client.processes()
        return ", ".join(f"{pid} {name_of(pid)}" for pid in pids if holding_of(pid)) or "no process"

    def _deliver(self, results):
        """Copies the final results as a driver does, each file once."""
        for file in sorted(set(results.values())):
            target = self._place.results / "result.pdf"
            try:
                shutil.copyfile(file, target)
            except OSError as error:
                self._ledger.problem("lost", f"{self.folder.path.name} ({self._told_fault()}): {file}: {error}")
                continue
            self._check(file, target)
            target.unlink()

    def _check(self, file, pdf):
        self._ledger.checked += 1
        wrong = "" if looks_whole(pdf) else "not a whole PDF"
        if not wrong and self._ledger.checked % CHECK_EVERY == 0:
            wrong = faults_of(pdf)
        if wrong:
            self._ledger.problem("damaged", f"{file} ({self._told_fault()}): {wrong}")

    def _clear(self, limits):
        try:
            step = clear(self._client, limits)
        except Died as death:
            self.usable = False
            self._ledger.problem("lost", f"{self.folder.path.name}: {death}")
            return
        self._look_at(step)

    def _conclude(self, merge):
        """What each document came to, and whose fault a failure is."""
        whole = ("", "", "") if not self._client.killed else (DIED, "", "")
        for position, copy in enumerate(self.folder.copies):
            reason, text, step = self._ends.get(position, whole)
            share = "own" if copy.touched else "none"
            if not copy.touched and self._fault and self._fault.happened and self._fault.whole_job:
                share = "job"
            elif not copy.touched and self._fault and self._fault.happened and merge and step == "merge":
                share = "job"
            self.outcomes.append(Outcome(copy.label, reason, text, step, self._seconds.get(position, 0), share))
