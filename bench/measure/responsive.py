"""How long the window's thread leaves its user waiting, while a job runs and while many documents arrive."""

import shutil
import sys
from contextlib import contextmanager
from dataclasses import dataclass, field
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "tests/endtoend/window"))

from harness.desktop import Desktop  # noqa: E402
from harness.places import PROGRAMS, SUPPORT  # noqa: E402
from harness.responsiveness import Responsiveness  # noqa: E402
from harness.waiting import Gone, Late, wait_until  # noqa: E402

JOB_SECONDS = 3600
LIST_SECONDS = 120
ANSWERS_AFTER = 60


class ResponsiveError(Exception):
    """A window did not do what was to be measured; the text says what."""


@dataclass
class Phase:
    """What happened meanwhile, and seconds that each answer took: of our window, and of an idle one beside it."""

    name: str
    ours: list = field(default_factory=list)
    peers: list = field(default_factory=list)
    messages: list = field(default_factory=list)


@contextmanager
def windows():
    """A desktop with the program's window and one that has nothing to do."""
    with Desktop() as desktop:
        program = desktop.start([PROGRAMS / "quorlin"])
        peer = desktop.start([SUPPORT / "sample-window"])
        peer.managed("Sample").move(0, 0)
        try:
            yield desktop, program, peer
        except (Late, Gone) as error:
            raise ResponsiveError(str(error)) from error
        finally:
            desktop.end_programs()


@contextmanager
def measured(phase, program, peer):
    with Responsiveness(program) as ours, Responsiveness(peer) as peers:
        yield
        # What has arrived is still to be laid out and painted.
        count = len(ours.waits)
        wait_until(lambda: len(ours.waits) >= count + ANSWERS_AFTER or ours.has_failed, "more answers", LIST_SECONDS)
    if ours.has_failed or peers.has_failed:
        raise ResponsiveError(f"{phase.name}: a window does not answer any more")
    phase.ours, phase.peers = ours.waits, peers.waits


def list_of(program):
    return program.window("Quorlin").find("list")


def wait_for_count(documents, count):
    wait_until(lambda: documents.child_count >= count, lambda: f"{count} documents; there are {documents.child_count}",
               LIST_SECONDS)


def hand_over(desktop, folder):
    """A second start with a folder, as from a file manager."""
    if desktop.start([PROGRAMS / "quorlin", folder], "second").wait_for_end() != 0:
        raise ResponsiveError("a second start failed")


def job(folder):
    """A job over a copy of the documents in a folder, from the click to the last result."""
    phase = Phase("job")
    with windows() as (desktop, program, peer):
        documents = list_of(program)
        copy = shutil.copytree(folder, desktop.home / "documents")
        hand_over(desktop, copy)
        wait_until(lambda: documents.child_count, "a document in the list", LIST_SECONDS)
        window = program.window("Quorlin")
        bar = window.find("progress bar", showing=False)
        with measured(phase, program, peer):
            program.click(window.find("push button", "Convert"))
            wait_until(lambda: bar.is_showing, "the begin of the job", LIST_SECONDS)
            wait_until(lambda: _has_ended(program, bar, phase), "the end of the job", JOB_SECONDS)
        phase.name = f"job of {documents.child_count} documents"
    return phase


def _has_ended(program, bar, phase):
    if program.has_dialog():
        box = program.dialog()
        phase.messages += box.texts
        box.answer("OK")
    return not bar.is_showing


def make_documents(folder, count):
    """Small ones of a kind that is looked into before it is taken."""
    folder.mkdir()
    for number in range(count):
        (folder / f"{number:05}.ps").write_bytes(b"%!PS-Adobe-3.0\nshowpage\n")
    return folder


def arrival(count, is_drop):
    """So many documents come in a folder that another start hands over, or by a drop of each of them."""
    phase = Phase(f"{count} documents {'dropped' if is_drop else 'handed over in a folder'}")
    with windows() as (desktop, program, peer):
        documents = list_of(program)
        folder = make_documents(desktop.home / "many", count)
        with measured(phase, program, peer):
            if is_drop:
                _drop(desktop, documents, sorted(folder.iterdir()))
            else:
                hand_over(desktop, folder)
            wait_for_count(documents, count)
    return phase


def _drop(desktop, documents, files):
    with desktop.drag(files) as drag:
        drag.move_over(documents)
        drag.wait_for_offer("copy")
        drag.drop()
