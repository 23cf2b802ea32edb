"""How long a program takes until its window is painted, and what memory it has then, seen from outside."""

import os
import select
import subprocess
import tempfile
import time
from contextlib import contextmanager
from dataclasses import dataclass
from pathlib import Path

from Xlib import X
from Xlib.display import Display
from Xlib.error import XError
from Xlib.ext import damage

from .processes import end_all
from .processtree import ProcessTree

SERVER_SECONDS = 15
PAINT_SECONDS = 30
SETTLE_SECONDS = 30
END_SECONDS = 10
LEAST_SIDE = 100  # pixels; toolkits have tiny windows of their own that nobody sees
QUIET_SECONDS = 0.3
QUIET_CPU = 0.005  # seconds of the processor's time in that while: a timer now and then is rest
PERIOD = 0.01
LOOK_SECONDS = 0.2  # how often a program that shows nothing is looked after


class StartupError(Exception):
    """A window did not come, or a program did not behave; the text says what."""


@dataclass(frozen=True)
class Start:
    """One start: seconds until the first paint, seconds of processor time until rest, and bytes then."""

    paint: float
    cpu: float
    rss: int
    pss: int


@contextmanager
def display_server(size="1280x1024"):
    """A display of its own without a window manager; its name."""
    reading, writing = os.pipe()
    command = ["Xvfb", "-displayfd", str(writing), "-screen", "0", f"{size}x24", "-nolisten", "tcp", "-noreset"]
    server = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                              pass_fds=[writing], start_new_session=True)  # fmt: skip
    os.close(writing)
    try:
        ready, _, _ = select.select([reading], [], [], SERVER_SECONDS)
        name = os.read(reading, 16).decode("ascii").strip() if ready else ""
        if not name:
            raise StartupError("Xvfb does not start")
        yield f":{name}"
    finally:
        os.close(reading)
        _end(server)


class Watcher:
    """Sees the first paint of a program's window."""

    def __init__(self, display):
        self._display = Display(display)
        if not self._display.has_extension("DAMAGE"):
            raise StartupError("the display tells nothing about damage")
        self._display.damage_query_version()
        self._display.set_error_handler(lambda *_: None)  # windows that are gone already
        self._display.screen().root.change_attributes(event_mask=X.SubstructureNotifyMask)
        self._display.sync()
        self._pid_atom = self._display.intern_atom("_NET_WM_PID")

    def close(self):
        self._display.close()

    def wait_for_paint(self, process):
        """The moment (time.monotonic) when something can be seen in a window of the process.

        Showing a window damages it too, before the program has drawn anything: it is black then.
        """
        deadline = time.monotonic() + PAINT_SECONDS
        while time.monotonic() < deadline:
            event = self._next(process)
            if event is None:
                continue
            if event.type == X.CreateNotify:
                event.window.damage_create(damage.DamageReportRawRectangles)
                self._display.flush()
            elif event.type == self._display.extension_event.DamageNotify and self._shows_something(event, process.pid):
                return time.monotonic()
        raise StartupError(f"no window of process {process.pid} was painted within {PAINT_SECONDS} s")

    def _next(self, process):
        """Nothing after a while without any event."""
        if not self._display.pending_events():
            ready, _, _ = select.select([self._display.fileno()], [], [], LOOK_SECONDS)
            if not ready and process.poll() is not None:
                raise StartupError(f"process {process.pid} is gone, with {process.returncode}")
            if not ready or not self._display.pending_events():
                return None
        return self._display.next_event()

    def _shows_something(self, event, pid):
        size = event.drawable_geometry
        if min(size.width, size.height) < LEAST_SIDE:
            return False
        window = self._display.create_resource_object("window", getattr(event.drawable, "id", event.drawable))
        try:
            found = window.get_full_property(self._pid_atom, X.AnyPropertyType)
            if found is None or list(found.value) != [pid]:
                return False
            return any(self._has_colour(window, size.width, size.height * part // 4) for part in (1, 2, 3))
        except XError:
            return False  # a window that is gone already, or not yet shown

    @staticmethod
    def _has_colour(window, width, row):
        pixels = window.get_image(0, row, width, 1, X.ZPixmap, 0x00FFFFFF).data
        return any(pixels[at] for at in range(len(pixels)) if at % 4 != 3)


def measure(command, display):
    """Starts the program for a user without any settings, measures and ends it."""
    with tempfile.TemporaryDirectory(prefix="bench-startup-") as folder:
        environment, watcher = _environment(Path(folder), display), Watcher(display)
        begin = time.monotonic()
        process = subprocess.Popen([str(part) for part in command], env=environment, stdin=subprocess.DEVNULL,
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, start_new_session=True,
                                   cwd=folder)  # fmt: skip
        try:
            painted = watcher.wait_for_paint(process)
            cpu = settled_cpu(process.pid)
            return Start(painted - begin, cpu, *memory(process.pid))
        finally:
            watcher.close()
            _end(process)


def _environment(folder, display):
    """Nothing of the user's own; no bus, so that nothing is started on the side."""
    names = {"HOME": "home", "XDG_CONFIG_HOME": "config", "XDG_CONFIG_DIRS": "machine", "XDG_CACHE_HOME": "cache",
             "XDG_DATA_HOME": "data", "XDG_RUNTIME_DIR": "runtime", "TMPDIR": "temporary"}  # fmt: skip
    for name in names.values():
        (folder / name).mkdir(mode=0o700)
    return {
        **{variable: str(folder / name) for variable, name in names.items()},
        "PATH": os.environ.get("PATH", "/usr/bin:/bin"), "LANG": "C.UTF-8", "DISPLAY": display,
        "QT_QPA_PLATFORM": "xcb", "DBUS_SESSION_BUS_ADDRESS": "disabled:",
    }  # fmt: skip


def settled_cpu(pid):
    """The processor's time that the process has used, in seconds, once it rests."""
    deadline = time.monotonic() + SETTLE_SECONDS
    reference, since = cpu_time(pid), time.monotonic()
    while time.monotonic() < deadline:
        time.sleep(PERIOD)
        now = cpu_time(pid)
        if now - reference > QUIET_CPU:
            reference, since = now, time.monotonic()
        elif time.monotonic() - since >= QUIET_SECONDS:
            return now
    raise StartupError(f"process {pid} does not come to rest within {SETTLE_SECONDS} s")


def cpu_time(pid):
    """Of all threads, in seconds."""
    try:
        return time.clock_gettime(~pid << 3 | 2)
    except OSError as error:
        raise StartupError(f"process {pid} is gone") from error


def memory(pid):
    """(resident, proportional) set size of one process in bytes."""
    try:
        lines = Path(f"/proc/{pid}/smaps_rollup").read_text("ascii").splitlines()
    except OSError as error:
        raise StartupError(f"process {pid} is gone") from error
    found = {line.split(":")[0]: line.split()[1] for line in lines[1:]}
    return int(found["Rss"]) * 1024, int(found["Pss"]) * 1024


def _end(process):
    """Asks the program to end, waits for all that it started, then ends what is left."""
    tree = ProcessTree(process.pid)
    tree.update()
    if process.poll() is None:
        process.terminate()
    deadline = time.monotonic() + END_SECONDS
    while time.monotonic() < deadline and (process.poll() is None or tree.update()):
        time.sleep(PERIOD)
    end_all(process)
