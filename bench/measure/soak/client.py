"""One long-lived component and its pipe; every report keeps the time at which it came."""

import json
import os
import pwd
import queue
import shutil
import signal
import subprocess
import tempfile
import threading
import time
import uuid
from dataclasses import dataclass
from pathlib import Path

from ..processes import end_all
from ..processtree import ProcessTree
from .processes import MARK, marked

PROTOCOL = 1
START_SECONDS = 60
END_SECONDS = 30


@dataclass(frozen=True)
class User:
    """Whom the component runs as; `None` in `uid` is whoever runs this."""

    uid: int | None = None
    gid: int | None = None

    @staticmethod
    def chosen(name):
        """The user of that name; without one, an ordinary user in place of root."""
        if os.geteuid() != 0:
            return User()
        entry = pwd.getpwnam(name or "nobody")
        return User() if entry.pw_uid == 0 else User(entry.pw_uid, entry.pw_gid)

    @property
    def heeds_permissions(self):
        return self.uid is not None or os.geteuid() != 0

    def own(self, path):
        if self.uid is not None:
            os.chown(path, self.uid, self.gid)


class Place:
    """The folders of one run: the component's own ones are `tmp`, `home` and `cache`."""

    def __init__(self, user, parent=None):
        self.user = user
        self.root = Path(tempfile.mkdtemp(prefix="bench-soak-", dir=parent)).resolve()
        self.root.chmod(0o755)
        for name in ("tmp", "home", "cache", "runtime", "jobs", "results"):
            folder = self.root / name
            folder.mkdir(mode=0o700)
            user.own(folder)
            setattr(self, name, folder)

    def environment(self, mark):
        return {
            **os.environ,
            "HOME": str(self.home),
            "TMPDIR": str(self.tmp),
            "XDG_CACHE_HOME": str(self.cache),
            "XDG_CONFIG_HOME": str(self.home / ".config"),
            "XDG_DATA_HOME": str(self.home / ".local"),
            "XDG_RUNTIME_DIR": str(self.runtime),
            MARK: mark,
        }

    def remove(self):
        shutil.rmtree(self.root)


class Died(Exception):
    """The component is gone."""


class Client:
    """A running component. `ever` has the ids of all that it started, `mark` is in their environment."""

    def __init__(self, program, place, log):
        self.mark = uuid.uuid4().hex
        self.started = time.monotonic()
        self.killed = False
        self._job = 0
        self._reports = queue.Queue()
        user = place.user
        who = {} if user.uid is None else {"user": user.uid, "group": user.gid, "extra_groups": []}
        self._process = subprocess.Popen(
            [str(program)], stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=log,
            start_new_session=True, env=place.environment(self.mark), cwd=place.home, **who,
        )  # fmt: skip
        self._tree, self._lock = ProcessTree(self._process.pid), threading.Lock()
        self.ever = set()
        self._listener = threading.Thread(target=self._listen, daemon=True)
        self._listener.start()
        self._expect_greeting()

    @property
    def pid(self):
        return self._process.pid

    def processes(self):
        """The ids of the component and of everything it started, as far as they live."""
        with self._lock:
            pids = self._tree.update()
            self.ever.update(pids)
        return pids

    def next_job(self):
        self._job += 1
        return self._job

    def send(self, request):
        try:
            self._process.stdin.write(json.dumps(request).encode("utf-8") + b"\n")
            self._process.stdin.flush()
        except OSError as error:
            raise Died(str(error)) from error

    def next(self, seconds):
        """(time, report), or None when none came for so long. Raises Died at the end of the pipe."""
        try:
            when, line = self._reports.get(timeout=max(seconds, 0))
        except queue.Empty:
            return None
        if line is None:
            raise Died(f"ended with {self._process.wait()}")
        return when, json.loads(line)

    def kill(self):
        """As a machine would that runs out of memory; what it started must end by itself."""
        self.killed = True
        self.processes()
        os.kill(self.pid, signal.SIGKILL)

    def end(self):
        """Ends it as a driver does. Returns the exit code, None when it did not end."""
        self._close_input()
        try:
            return self._process.wait(END_SECONDS)
        except subprocess.TimeoutExpired:
            return None

    def destroy(self):
        """Ends whatever is left of it, orphans too, and reaps it."""
        left = set(self.processes()) | set(marked(self.mark))
        end_all(self._process)
        for pid in left:
            _kill(pid)
        self._close_input()
        self._listener.join()
        self._process.stdout.close()

    def reap(self):
        """After its death: frees the pipes without touching its children."""
        self._process.wait()
        self._close_input()

    def _close_input(self):
        try:
            self._process.stdin.close()
        except OSError:
            pass  # it has gone before it read everything

    def _listen(self):
        for line in self._process.stdout:
            self._reports.put((time.monotonic(), line))
        self._reports.put((time.monotonic(), None))

    def _expect_greeting(self):
        came = self.next(START_SECONDS)
        if not came or came[1].get("type") != "hello" or came[1].get("protocol") != PROTOCOL:
            self.destroy()
            raise Died(f"not the greeting expected: {came}")


def _kill(pid):
    try:
        os.kill(pid, signal.SIGKILL)
    except ProcessLookupError:
        pass  # it has ended meanwhile
