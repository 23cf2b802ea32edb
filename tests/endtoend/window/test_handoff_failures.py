"""The hand-off of documents to the program that runs already, when something is in its way."""

import collections
import hashlib
import os
import signal
import socket
import struct
import sys
import threading
import time
from contextlib import ExitStack, contextmanager
from pathlib import Path

sys.dont_write_bytecode = True
sys.path.insert(0, str(Path(__file__).resolve().parent))

from harness.hardship import (  # noqa: E402
    AS_ORDINARY_USER, Starting, copy_example, files_left, office_pipes, pipes_left)
from harness.mainwindow import MainWindow  # noqa: E402
from harness.places import PROGRAMS  # noqa: E402
from harness.responsiveness import Responsiveness  # noqa: E402
from harness.waiting import wait_until  # noqa: E402
from harness.windowtest import WindowTest, main  # noqa: E402

QUORLIN = PROGRAMS / "quorlin"
MANY, HELD = 1000, 400
# Fewer than are held: whoever keeps them all has none left for a document.
FILE_LIMIT = ("prlimit", "--nofile=350:", "--")
# The sender gives up after 2 s.
HANDOFF_SECONDS = 3.5
# One that can be seen to hang, whatever the machine is busy with.
LONGEST_WAIT = 1.0


def head(count, kind=1, version=1):
    """The beginning of a frame with so many bytes."""
    return b"QRLN" + struct.pack("<HHII", version, kind, 3, count)


class HandoffTest(WindowTest):
    def document(self, number):
        return copy_example("Seed labels.ps", self.desktop.home).rename(self.desktop.home / f"{number}.ps")

    def hand_over(self, document, under=(), complaints=()):
        """A second start, which must end by itself and soon."""
        begin = time.monotonic()
        second = self.start([*under, QUORLIN, document], name="second")
        self.assertEqual(second.wait_for_end(), 0)
        self.assertLess(time.monotonic() - begin, HANDOFF_SECONDS)
        self.expect_errors(second, *complaints)

    def socket_name(self):
        """Where the program listens; one for each screen."""
        return f"instance-{hashlib.sha1(f'x11 {self.screen_name}'.encode()).hexdigest()[:16]}.socket"

    @property
    def screen_name(self):
        return self.desktop.environment["DISPLAY"]


class Garbage(HandoffTest):
    def connect(self):
        connection = socket.socket(socket.AF_UNIX)
        connection.settimeout(5)
        try:
            connection.connect(str(self.desktop.runtime / "quorlin" / self.socket_name()))
        except BlockingIOError:
            connection.close()
            raise
        return connection

    def connect_when_possible(self):
        """Also where others wait already, as many as the system lets."""
        def tried():
            try:
                return self.connect()
            except BlockingIOError:
                return None
        return wait_until(tried, "a place among those who wait")

    def send(self, data):
        with self.connect_when_possible() as connection:
            connection.sendall(data)

    @contextmanager
    def endless_stream(self, beginning, block):
        """Sends as much as it may, again and again; ends with the context."""
        is_over, refused = threading.Event(), []

        def stream():
            while not is_over.is_set():
                try:
                    with self.connect() as connection:
                        connection.sendall(beginning)
                        while not is_over.is_set():
                            connection.sendall(block)
                except (BlockingIOError, BrokenPipeError, ConnectionResetError) as error:
                    refused.append(error)
        thread = threading.Thread(target=stream)
        thread.start()
        try:
            yield
        finally:
            is_over.set()
            thread.join()
        self.assertGreater(len(refused), 10)

    def test_a_second_start_gets_through_all_kinds_of_garbage(self):
        window = MainWindow(Starting(self, under=FILE_LIMIT))
        held = collections.deque()
        with ExitStack() as streams, Responsiveness(window.program) as meanwhile:
            for data in (os.urandom(100), b"", b"Q", head(10)[:-1], head(10) + b"half", head(0), head(1 << 31),
                         head(5, kind=9) + b"1234\0", head(5, version=9) + b"1234\0", head(3) + b"\xff\xfe\0"):
                self.send(data)
            for number in range(MANY):
                held.append(streams.enter_context(self.connect_when_possible()))
                held[-1].sendall((b"", b"QRL", head(100) + b"half")[number % 3])
                if len(held) > HELD:
                    held.popleft().close()
            streams.enter_context(self.endless_stream(b"QRLN", b"garbage " * 1000))
            streams.enter_context(self.endless_stream(head(6145), b"text" * 1000))
            document = self.document(1)
            self.hand_over(document)
            window.wait_for_documents(document.name)
        self.assertFalse(meanwhile.has_failed)
        self.assertLess(meanwhile.longest, LONGEST_WAIT)
        self.assertEqual(window.close(), 0)


class Stale(HandoffTest):
    def test_what_a_killed_program_leaves_is_no_program(self):
        window = MainWindow(self, self.document("first"))
        pipes = office_pipes(self.desktop)
        window.program.send_signal(signal.SIGKILL)
        self.assertEqual(window.program.wait_for_end(), -signal.SIGKILL)
        wait_until(lambda: not self.desktop.strangers(), "the end of the component and its workers")
        self.assertTrue((self.desktop.runtime / "quorlin" / self.socket_name()).exists())
        self.assertEqual(files_left(self.desktop, self.desktop.home / "first.ps"), [])
        self.assertEqual(pipes_left(pipes), [])
        second = MainWindow(self, self.document("second"))
        second.wait_for_documents("second.ps")
        self.hand_over(self.document("third"))
        second.wait_for_documents("second.ps", "third.ps")
        self.assertEqual(second.close(), 0)


class Frozen(HandoffTest):
    def test_a_second_start_does_not_wait_for_a_frozen_program_and_its_document_is_not_lost(self):
        window = MainWindow(self)
        window.program.send_signal(signal.SIGSTOP)
        try:
            self.hand_over(self.document("frozen"))
        finally:
            window.program.send_signal(signal.SIGCONT)
        window.wait_for_documents("frozen.ps")
        self.assertEqual(window.close(), 0)


class RuntimeFolder(HandoffTest):
    def check_handoff(self, under, complaint):
        elsewhere = Path(f"/tmp/quorlin-{os.geteuid()}")
        lock = elsewhere / self.socket_name().replace(".socket", ".lock")
        self.addCleanup(lock.unlink, missing_ok=True)
        window = MainWindow(Starting(self, under=under), self.document("first"))
        self.hand_over(self.document("second"), under, [complaint])
        window.wait_for_documents("first.ps", "second.ps")
        self.assertTrue(lock.exists())
        self.assertFalse((self.desktop.runtime / "quorlin").exists())
        self.assertEqual(window.close(), 0)
        self.assertFalse((elsewhere / self.socket_name()).exists())
        self.expect_errors(window.program, complaint)

    # The complaints are the toolkit's.

    def test_programs_meet_without_a_runtime_folder(self):
        self.check_handoff(("env", "-u", "XDG_RUNTIME_DIR"), "QStandardPaths: XDG_RUNTIME_DIR not set")

    def test_programs_meet_when_the_runtime_folder_cannot_be_written(self):
        self.desktop.runtime.chmod(0o500)
        self.check_handoff(AS_ORDINARY_USER, "QStandardPaths: wrong permissions on runtime directory")


if __name__ == "__main__":
    main()
