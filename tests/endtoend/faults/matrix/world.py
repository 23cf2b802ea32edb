"""A user's world for one row: home, documents, results, and the programs that run there."""

import hashlib
import json
import os
import re
import shutil
import signal
import subprocess
import tempfile
import time
import uuid
from contextlib import suppress
from pathlib import Path

from . import documents
from .places import PROGRAMS, SHARED_FOLDER, SUPPORT
from .processes import Processes, open_files, send

MARK = "QUORLIN_TEST_MARK"
CATCH_SECONDS = 40.0  # the engine's first start on a busy machine included
JOB_SECONDS = 90.0
END_SECONDS = 10.0
PERIOD = 0.002
LOOKS = 20
# The administrator's right to write everywhere is given up; the user stays the same.
RIGHTS = "-dac_override,-dac_read_search"
AS_ORDINARY_USER = () if os.geteuid() else ("setpriv", f"--bounding-set={RIGHTS}", f"--inh-caps={RIGHTS}", "--")


class Late(AssertionError):
    """What was waited for did not come."""


def wait_until(condition, what, seconds=END_SECONDS):
    deadline = time.monotonic() + seconds
    while not (found := condition()):
        if time.monotonic() > deadline:
            raise Late(f"not within {seconds:g} s: {what}")
        time.sleep(PERIOD)
    return found


def catch(processes, program, opens, goes_on, complaint):
    """Waits until a program has a file open whose path matches, and stops it there; its process id."""
    pattern = re.compile(opens)
    deadline = time.monotonic() + CATCH_SECONDS
    while time.monotonic() < deadline and goes_on():
        pids = processes.of(program)
        # To look at all processes takes long; those that are known are looked at more often.
        for _ in range(LOOKS if pids else 1):
            for pid in pids:
                if has_open(pid, pattern) and _hold(pid, pattern):
                    return pid
            time.sleep(PERIOD)
    raise Late(f"{program} was not seen with {opens} open; {complaint()}")


def has_open(pid, pattern):
    return any(pattern.search(name) for name in open_files(pid))


def _hold(pid, pattern):
    """Stops a process, unless it has gone on meanwhile."""
    send(pid, signal.SIGSTOP)
    if has_open(pid, pattern):
        return True
    send(pid, signal.SIGCONT)
    return False


class World:
    """Nothing in it is known to anybody else; `close` ends and removes all of it."""

    def __init__(self):
        self.folder = Path(tempfile.mkdtemp(prefix="qf-", dir=SHARED_FOLDER))
        for name in ("home", "cache", "temporary", "documents", "out", "reports"):
            (self.folder / name).mkdir(mode=0o700)
        self.home, self.cache, self.temporary = (self.folder / name for name in ("home", "cache", "temporary"))
        self.documents, self.out = self.folder / "documents", self.folder / "out"
        mark = uuid.uuid4().hex
        self.processes = Processes(MARK, mark)
        self.environment = {
            "PATH": os.environ.get("PATH", "/usr/bin:/bin"), "LANG": "C.UTF-8", MARK: mark, "HOME": str(self.home),
            "XDG_CACHE_HOME": str(self.cache), "TMPDIR": str(self.temporary),
            **{name: os.environ[name] for name in ("ASAN_OPTIONS", "QUORLIN_SANDBOX") if name in os.environ}}
        self.programs = PROGRAMS
        self.tool = None
        self._files = {}
        self._runs = 0

    def close(self):
        try:
            wait_until(lambda: not self.processes.kill_all(), "the end of all processes")
        finally:
            if self.tool:
                self.tool.wait()
            self.unlock()
            shutil.rmtree(self.folder, ignore_errors=True)

    # The user's files

    def write(self, name, content):
        """A file below the documents' folder that must stay as it is."""
        file = self.documents / name
        file.write_bytes(content)
        self.note(file)
        return file

    def note(self, file):
        """From now on a file must stay as it is now, or as absent."""
        self._files[file] = sum_of(file)

    def changed_files(self):
        return [str(file) for file, before in self._files.items() if sum_of(file) != before]

    def earlier_result(self, name):
        """A whole PDF of an earlier run under the name of a result."""
        (self.out / name).write_bytes(documents.pdf("an earlier run", pages=7))
        self.note(self.out / name)

    def unlock(self):
        """Lets every folder be written again."""
        for folder in (self.home, self.temporary, self.documents, self.out):
            for parent, _, _ in os.walk(folder):
                # Programs that are about to end remove theirs meanwhile.
                with suppress(FileNotFoundError):
                    os.chmod(parent, 0o700)

    # The installation

    def install(self, **replaced):
        """An installation in which programs ("-" written as "_") are replaced by those that are named; those that do
        not belong to it come first in PATH."""
        self.programs, foreign = self.folder / "programs", self.folder / "path"
        self.programs.mkdir()
        foreign.mkdir()
        replaced = {name.replace("_", "-"): SUPPORT / stand_in for name, stand_in in replaced.items()}
        for entry in PROGRAMS.iterdir():
            source = replaced.pop(entry.name, entry)
            if entry.is_dir() or not entry.name.startswith("quorlin-"):
                (self.programs / entry.name).symlink_to(source)
            else:
                shutil.copy2(source, self.programs / entry.name)
        for name, stand_in in replaced.items():
            shutil.copy2(stand_in, foreign / name)
        self.environment["PATH"] = f"{foreign}:{self.environment['PATH']}"

    # Runs of the tool

    def start(self, *arguments, under=()):
        self._runs += 1
        report, errors = self._log("json"), self._log("err")
        command = [*under, self.programs / "quorlin-convert", "--json", report, *arguments]
        with open(errors, "wb") as file:
            self.tool = subprocess.Popen(list(map(str, command)), env=self.environment, cwd=self.documents,
                                         stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=file,
                                         start_new_session=True)
        self._began = time.monotonic()

    def catch(self, program, opens):
        """The process of a program as soon as it has a file open whose path matches, stopped."""
        return catch(self.processes, program, opens, lambda: self.tool.poll() is None, self.errors)

    def finish(self, meanwhile=lambda: None):
        """Waits for the end of the tool; what it reported."""
        deadline = time.monotonic() + JOB_SECONDS
        while self.tool.poll() is None:
            if time.monotonic() > deadline:
                raise Late(f"the tool still runs; {self.errors()}")
            meanwhile()
            time.sleep(PERIOD)
        self.seconds = time.monotonic() - self._began
        try:
            report = json.loads(self._log("json").read_bytes())
        except (OSError, ValueError):
            return []
        return report["documents"]

    def errors(self):
        return self._log("err").read_text("utf-8", "replace")

    def _log(self, kind):
        return self.folder / "reports" / f"{self._runs}.{kind}"

    # What is left

    def leftovers(self):
        """Everything that should not be there: processes, temporary files, names of sockets."""
        try:
            wait_until(lambda: not self.processes.living(), "the end of all processes")
        except Late:
            pass
        left = [f"process {name}" for name in self.processes.living().values()]
        for folder in (self.home, self.cache, self.temporary, self.documents, self.out):
            left += [str(path) for path in folder.rglob("*") if path not in self._files and not _is_plain_folder(path, folder)]
        for pipe in self.processes.pipes:
            left += map(str, SHARED_FOLDER.glob(f"OSL_PIPE_*_{pipe}"))
        return sorted(left)


def pages_of(file):
    """The number of pages that a reader finds in a whole PDF; 0 when it is none."""
    content = file.read_bytes()
    told = subprocess.run(["pdfinfo", file], capture_output=True, text=True, check=False)
    pages = re.search(r"^Pages: +(\d+)$", told.stdout, re.MULTILINE)
    is_whole = content.startswith(b"%PDF-") and b"%%EOF" in content[-64:] and not told.stderr
    return int(pages[1]) if pages and is_whole else 0


def _is_plain_folder(path, top):
    """Folders stay where programs keep what they know of a user."""
    return path.is_dir() and top.name in ("cache", "home")


def sum_of(file):
    """What tells one content from another; nothing for a file that is not there."""
    return hashlib.sha256(file.read_bytes()).hexdigest() if file.exists() else None
