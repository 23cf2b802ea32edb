"""What tests of failures need: other installations, fewer rights, small disks, and what a program left behind."""

import os
import re
import shutil
import signal
import subprocess
from contextlib import contextmanager
from pathlib import Path

from .places import EXAMPLES, PROGRAMS
from .processes import command_of
from .waiting import wait_until

# The administrator's right to read and write everything is given up; the user stays the same, since the buses and the
# program's own folders know their user.
RIGHTS = "-dac_override,-dac_read_search"
AS_ORDINARY_USER = () if os.geteuid() else ("setpriv", f"--bounding-set={RIGHTS}", f"--inh-caps={RIGHTS}", "--")
SHARED_FOLDER = Path("/tmp")


class Starting:
    """Takes a test's place where `MainWindow` wants one, and starts another program, or starts it in another way."""

    def __init__(self, test, program=PROGRAMS / "quorlin", under=()):
        self.desktop = test.desktop
        self._test, self._program, self._under = test, program, under

    def start(self, command, **options):
        return self._test.start([*self._under, self._program, *command[1:]], name="quorlin", **options)


# Documents

def copy_example(name, folder):
    return Path(shutil.copy(EXAMPLES / name, folder))


def truncated_document(file):
    file.write_bytes((EXAMPLES / "Thistlemere Handbook.docx").read_bytes()[:3000])
    return file


def endless_document(file):
    """Keeps the component working as long as it may."""
    file.write_bytes(b"%!PS-Adobe-3.0\n{ } loop\nshowpage\n")
    return file


# The installation

def installation(folder, without=(), copies=()):
    """A copy of the built programs, of links where nothing is to be changed; the program in it.

    `without` names what is left out, `copies` what a test wants to change.
    """
    folder.mkdir()
    for entry in PROGRAMS.iterdir():
        if entry.name in without:
            continue
        # Where the program lies is known from its file, links followed.
        if entry.name == "quorlin" or entry.name in copies:
            copy = shutil.copytree if entry.is_dir() else shutil.copy2
            copy(entry, folder / entry.name)
        else:
            (folder / entry.name).symlink_to(entry)
    return folder / "quorlin"


def script(file, text):
    """Replaces a file by an executable script."""
    file.unlink(missing_ok=True)
    file.write_text(f"#!/bin/sh\n{text}\n", "ascii")
    file.chmod(0o755)


@contextmanager
def small_disk(test, folder, kilobytes):
    """A file system of so many kilobytes; skips the test where this user may not mount one."""
    folder.mkdir()
    mounted = subprocess.run(["mount", "-t", "tmpfs", "-o", f"size={kilobytes}k,mode=0700", "quorlin-test", folder],
                             capture_output=True, text=True, check=False)
    if mounted.returncode:
        test.skipTest(f"This user may not mount a small disk: {mounted.stderr.strip()}")
    try:
        yield folder
    finally:
        subprocess.run(["umount", "--lazy", folder], check=True)


# Settings

def settings_file(desktop):
    return desktop.config / "quorlin/registry.db"


# Processes and what is left of them

def process_of(desktop, program):
    """The id of the one process of this program on the desktop, or nothing."""
    found = [pid for pid in desktop.strangers() if Path(command_of(pid).split(" ")[0]).name == program]
    return found[0] if len(found) == 1 else None


@contextmanager
def stopped(desktop, program):
    """Keeps the one process of this program, which is waited for, from working."""
    pid = wait_until(lambda: process_of(desktop, program), program)
    os.kill(pid, signal.SIGSTOP)
    try:
        yield
    finally:
        os.kill(pid, signal.SIGCONT)


def kill(pid):
    os.kill(pid, signal.SIGKILL)


def office_pipes(desktop):
    """Waits for an office engine; the names under which engines are talked to."""
    def names():
        return re.findall(r"pipe,name=([^;]+);", " ".join(map(command_of, desktop.strangers())))
    return wait_until(names, "an office engine")


def pipes_left(names):
    """Those that are still in the folder that all programs share."""
    return [path for name in names for path in SHARED_FOLDER.glob(f"OSL_PIPE_*_{name}")]


def files_left(desktop, *known):
    """What lies in the user's folders beside the known files."""
    folders = (desktop.home, desktop.temporary, desktop.folder / "cache/quorlin")
    found = {path for folder in folders for path in folder.rglob("*") if not path.is_dir()}
    return sorted(str(path) for path in found - set(map(Path, known)))
