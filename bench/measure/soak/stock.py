"""The documents: read-only originals, the copies of one job, and what must be true of them afterwards."""

import hashlib
import os
import shutil
import subprocess
from dataclasses import dataclass
from pathlib import Path

from ..documents import OFFICE, PDF, UsageError, extension

POSTSCRIPT = frozenset(["ps", "eps", "prn"])
CHECK_SECONDS = 60
TAIL_BYTES = 1024


@dataclass(frozen=True)
class Original:
    label: str
    path: Path
    digest: str


def digest_of(path):
    return hashlib.sha256(Path(path).read_bytes()).hexdigest()


def stock_of(folder):
    """Every document below the folder, sorted."""
    folder = Path(folder).resolve()
    if not folder.is_dir():
        raise UsageError(f"no such folder: {folder}")
    taken = OFFICE | PDF | POSTSCRIPT
    paths = [path for path in sorted(folder.rglob("*")) if path.is_file() and extension(path) in taken]
    if not paths:
        raise UsageError(f"no documents in {folder}")
    return [Original(str(path.relative_to(folder)), path, digest_of(path)) for path in paths]


def changed(originals):
    """The labels of originals that are not any more what they were."""
    return [one.label for one in originals if not one.path.is_file() or digest_of(one.path) != one.digest]


@dataclass
class Copy:
    """A document of one job. `digest` is what it must have afterwards, None once it was removed."""

    label: str
    path: Path
    digest: str | None
    touched: str = ""


class JobFolder:
    """A fresh folder with the documents of one job."""

    def __init__(self, parent, number, user):
        self.path = Path(parent) / f"job{number}"
        self._user = user
        self.path.mkdir()
        user.own(self.path)
        self.copies = []

    def add(self, original):
        self._put(original.label, original.path.name, original.path.read_bytes())

    def add_content(self, label, name, content):
        """A document made for the job."""
        self._put(label, name, content)
        self.copies[-1].touched = label

    def _put(self, label, name, content):
        target, number = self.path / name, 2
        while target.exists():
            target, number = self.path / f"{number}-{name}", number + 1
        target.write_bytes(content)
        target.chmod(0o444)
        self._user.own(target)
        self.copies.append(Copy(label, target, hashlib.sha256(content).hexdigest()))

    @staticmethod
    def digest_now(copy):
        return digest_of(copy.path)

    def problems(self):
        """What lies here that should not, is missing, or has changed."""
        wanted = {copy.path.name: copy.digest for copy in self.copies if copy.digest is not None}
        found = {name for name in os.listdir(self.path)}
        left = [f"{self.path.name}/{name}" for name in sorted(found - wanted.keys())]
        lost = [name for name in wanted if name not in found or digest_of(self.path / name) != wanted[name]]
        return left, [f"{self.path.name}/{name}" for name in sorted(lost)]

    def remove(self):
        self.path.chmod(0o755)
        shutil.rmtree(self.path)


def looks_whole(pdf):
    """Begins and ends like a PDF."""
    try:
        with open(pdf, "rb") as file:
            head = file.read(5)
            file.seek(max(0, os.path.getsize(pdf) - TAIL_BYTES))
            return head == b"%PDF-" and b"%%EOF" in file.read()
    except OSError:
        return False


def faults_of(pdf):
    """What qpdf and pdfinfo find wrong with a PDF; nothing when it is sound."""
    for command in (["qpdf", "--check", str(pdf)], ["pdfinfo", str(pdf)]):
        try:
            done = subprocess.run(command, capture_output=True, timeout=CHECK_SECONDS, check=False)
        except subprocess.TimeoutExpired:
            return f"{command[0]} did not end"
        # qpdf ends with 3 for what it can put up with.
        if done.returncode not in ((0, 3) if command[0] == "qpdf" else (0,)):
            return f"{command[0]}: {(done.stderr or done.stdout).decode('utf-8', 'replace').strip()[-200:]}"
    return ""
