"""What is done to a job in its middle. Each takes the world and the process that was caught, which is stopped."""

import os
import signal
import subprocess
import time

from .places import CLOCK_LIBRARY
from .processes import send
from .world import wait_until

DAY = 24 * 60 * 60


def nothing(_world, _pid):
    """The fault was there from the beginning."""


def kill(program):
    """Kills all processes of a program."""
    def strike(world, _pid):
        pids = world.processes.of(program)
        assert pids, f"{program} does not run"
        for pid in pids:
            send(pid, signal.SIGKILL)
    return strike


def kill_everything(world, _pid):
    assert world.processes.kill_all()


def fill(name):
    """Fills the disk that is mounted over a folder of the world."""
    def strike(world, _pid):
        with open(getattr(world, name) / "filler", "wb", buffering=0) as file:
            try:
                while file.write(bytes(4096)):
                    pass
            except OSError:
                return
    return strike


def lock(name):
    """Makes a folder of the world, and what is in it, read-only."""
    def strike(world, _pid):
        top = getattr(world, name)
        folders = [parent for parent, _, _ in os.walk(top)] if name == "temporary" else [top]
        for folder in folders:
            os.chmod(folder, 0o500)
    return strike


def truncate(pattern):
    def strike(world, _pid):
        for file in _files(world, pattern):
            os.truncate(file, file.stat().st_size // 2)
            _note(world, file)
    return strike


def remove(pattern):
    def strike(world, _pid):
        for file in _files(world, pattern):
            file.unlink()
            _note(world, file)
    return strike


def overwrite(pattern):
    """Other bytes in the same place, as a program that saves carelessly does."""
    def strike(world, _pid):
        for file in _files(world, pattern):
            with open(file, "r+b") as open_file:
                open_file.write(b"\0 something else \n" * (file.stat().st_size // 18 + 1))
            _note(world, file)
    return strike


def _note(world, file):
    """What the user did to a document stays; what lies there for a while goes in any case."""
    if not file.name.endswith("~"):
        world.note(file)


def _files(world, pattern):
    found = list(world.documents.glob(pattern))
    assert found, f"there is no {pattern}"
    return found


def set_clock_back(world, _pid):
    """By a day, for all programs of the world at once; files of today are of the future from then on."""
    sign = world.environment["QUORLIN_TEST_CLOCK"]
    open(sign, "x").close()
    told = subprocess.run(["date", "+%s"], env=world.environment, capture_output=True, check=True)
    assert abs(time.time() - DAY - int(told.stdout)) < 100, told
    for file in (file for file in world.documents.iterdir() if not file.name.endswith("~")):
        os.utime(file, (time.time() - DAY, time.time() - DAY))


def prepare_clock(world):
    world.environment["LD_PRELOAD"] = str(CLOCK_LIBRARY)
    world.environment["QUORLIN_TEST_CLOCK"] = str(world.folder / "clock-is-back")


def both(first, second):
    def strike(world, pid):
        first(world, pid)
        second(world, pid)
    return strike


