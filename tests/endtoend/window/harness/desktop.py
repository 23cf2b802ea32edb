"""A desktop of its own for one test: display, window manager, session bus, assistive tools' bus, user."""

import os
import shlex
import shutil
import tempfile
from pathlib import Path

from gi.repository import Gio, GLib

from .accessible import Bus
from .dragging import FileDrag
from .places import SUPPORT
from .processes import MARK, Processes, command_of
from .program import Program
from .screen import Screen
from .waiting import SECONDS, Late, wait_until

SESSION_BUS = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:path={runtime}/bus</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
"""
OPENBOX = """<?xml version="1.0" encoding="UTF-8"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><focusNew>yes</focusNew><followMouse>no</followMouse><raiseOnFocus>yes</raiseOnFocus></focus>
  <placement><policy>Smart</policy><center>yes</center></placement>
  <desktops><number>1</number></desktops>
  <keyboard>
    <keybind key="A-F4"><action name="Close"/></keybind>
    <keybind key="A-Tab"><action name="NextWindow"/></keybind>
  </keyboard>
  <mouse>
    <context name="Client">
      <mousebind button="Left" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
      <mousebind button="Right" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
    </context>
    <context name="Titlebar">
      <mousebind button="Left" action="Drag"><action name="Move"/></mousebind>
    </context>
  </mouse>
</openbox_config>
"""
# Notes each thing that it was asked to open, one a line.
OPENER = """#!/bin/sh
printf '%s\\n' "$*" >>"{note}"
"""
# By the file with settings and the file that tells that a manager is ready, where it can tell.
MANAGERS = {
    "openbox": lambda config, ready: ["openbox", "--sm-disable", "--config-file", config,
                                      "--startup", f"touch {shlex.quote(str(ready))}"],  # fmt: skip
    "icewm": lambda config, ready: ["icewm", "--no-configure"],
}
LAUNCHER = "/usr/libexec/at-spi-bus-launcher"
KEPT_VARIABLES = ("PATH", "ASAN_OPTIONS", "UBSAN_OPTIONS")


class Desktop:
    """Use as a context manager. Nothing of the user's own desktop is seen, nothing stays behind.

    `manager` is "openbox", "icewm" or None; `environment` adds to what programs get.
    """

    def __init__(self, size="1280x1024", manager="openbox", environment=None, language="C.UTF-8"):
        self._size, self._manager, self._extra, self._language = size, manager, environment or {}, language
        self._programs = []

    def __enter__(self):
        self.folder = Path(tempfile.mkdtemp(prefix="qd-", dir="/tmp"))
        try:
            self._make_folders()
            self._processes = Processes(self.folder.name, self.log)
            self.environment = self._make_environment()
            self._start_display()
            self._start_buses()
            self._start_manager()
            self._own = set(self._processes.living())
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        for name in ("bus", "screen"):
            if hasattr(self, name):
                getattr(self, name).close()
        if hasattr(self, "_processes"):
            self._processes.end_all()
        shutil.rmtree(self.folder, ignore_errors=True)

    def start(self, command, name=None, environment=None, folder=None):
        """Starts a program on this desktop; see `Program`."""
        name = name or Path(str(command[0])).name
        process = self._processes.start(name, command, {**self.environment, **(environment or {})},
                                        cwd=folder or self.home)
        program = Program(self, name, process)
        self._programs.append(program)
        return program

    def end_programs(self, seconds=SECONDS):
        """Asks every program to end; the command lines of what still runs after a while."""
        for program in self._programs:
            program.end()
        try:
            wait_until(self._is_empty, "no process of a program", seconds)
        except Late:
            pass
        return sorted(map(command_of, self.strangers()))

    def strangers(self):
        """Ids of all processes that do not belong to the desktop itself."""
        return sorted(set(self._processes.living()) - self._own)

    def drag(self, files):
        """Begins to drag these files, paths or addresses; see `FileDrag`."""
        return FileDrag(self, SUPPORT / "drag-source", files)

    def opened(self):
        """What programs asked the system to open, in order."""
        return self._note.read_text("utf-8").splitlines() if self._note.exists() else []

    def accessibility_address(self):
        """Where programs offer their controls, or nothing yet."""
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        try:
            session = Gio.DBusConnection.new_for_address_sync(
                self.environment["DBUS_SESSION_BUS_ADDRESS"], flags, None, None)
            session.set_exit_on_close(False)
            answer = session.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None, None,
                                       Gio.DBusCallFlags.NONE, int(SECONDS * 1000), None)
            session.close_sync(None)
        except GLib.Error:
            return None
        return answer.unpack()[0]

    def _is_empty(self):
        # Asked more than once: a process that is just becoming another program cannot be seen for a moment.
        return not any(self.strangers() for _ in range(3))

    def _make_folders(self):
        for name in ("home", "config", "machine", "cache", "data", "runtime", "log", "bin", "temporary"):
            (self.folder / name).mkdir(mode=0o700)
        self.home, self.config, self.machine = (self.folder / name for name in ("home", "config", "machine"))
        self.runtime, self.log, self.temporary = (self.folder / name for name in ("runtime", "log", "temporary"))
        self._note = self.folder / "opened"
        opener = self.folder / "bin/xdg-open"
        opener.write_text(OPENER.format(note=self._note), "utf-8")
        opener.chmod(0o755)

    def _make_environment(self):
        kept = {name: os.environ[name] for name in KEPT_VARIABLES if name in os.environ}
        kept["PATH"] = f"{self.folder / 'bin'}:{kept.get('PATH', '/usr/bin:/bin')}"
        return {
            **kept, MARK: self.folder.name, "HOME": str(self.home), "LANG": self._language,
            "TMPDIR": str(self.temporary), "XDG_RUNTIME_DIR": str(self.runtime), "XDG_CONFIG_HOME": str(self.config),
            "XDG_CONFIG_DIRS": str(self.machine), "XDG_CACHE_HOME": str(self.folder / "cache"),
            "XDG_DATA_HOME": str(self.folder / "data"), "GSETTINGS_BACKEND": "memory",
            "DBUS_SESSION_BUS_ADDRESS": f"unix:path={self.runtime / 'bus'}", "QT_QPA_PLATFORM": "xcb",
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1", **self._extra,
        }

    def _start_display(self):
        reading, writing = os.pipe()
        try:
            command = ["Xvfb", "-displayfd", writing, "-screen", "0", f"{self._size}x24", "-nolisten", "tcp",
                       "-noreset", "-dpi", "96"]
            server = self._processes.start("Xvfb", command, self.environment, pass_fds=[writing])
        finally:
            os.close(writing)
        os.set_blocking(reading, False)
        with open(reading, "rb", buffering=0) as pipe:
            self.environment["DISPLAY"] = f":{self._read_line(pipe, server)}"
        self._server = server
        self.screen = Screen(self.environment["DISPLAY"], self.environment)

    def end_display(self):
        """Takes the display away from all programs, as a session that breaks does. No window can be met any more."""
        self.screen.close()
        del self.screen
        self._processes.end(self._server)

    def _read_line(self, pipe, process):
        line = bytearray()

        def is_whole():
            self._must_live(process)
            line.extend(pipe.read(64) or b"")
            return line.endswith(b"\n")
        wait_until(is_whole, "Xvfb to name its display")
        return line.decode("ascii").strip()

    def _start_buses(self):
        config = self.folder / "session.conf"
        config.write_text(SESSION_BUS.format(runtime=self.runtime), "utf-8")
        daemon = self._processes.start("dbus-daemon", ["dbus-daemon", "--nofork", f"--config-file={config}"],
                                       self.environment)
        self._wait_for(daemon, (self.runtime / "bus").exists, "the session bus")
        command = [LAUNCHER, "--launch-immediately", "--a11y=1", "--screen-reader=1"]
        launcher = self._processes.start("at-spi", command, self.environment)
        address = self._wait_for(launcher, self.accessibility_address, "the assistive tools' bus")
        self.bus = Bus(address, float(self.environment.get("QT_SCALE_FACTOR", 1)))
        self._wait_for(launcher, self.bus.has_registry, "the registry of programs with controls")
        self.bus.watch()

    def _start_manager(self):
        if self._manager is None:
            return
        config = self.folder / "manager.xml"
        config.write_text(OPENBOX, "utf-8")
        ready = self.folder / "manager-is-ready"
        command = MANAGERS[self._manager](config, ready)
        manager = self._processes.start(self._manager, command, self.environment)
        self._wait_for(manager, self.screen.has_manager, "the window manager")
        # It says that it is there before it takes windows: one that comes in between may never be shown.
        if str(ready) in command[-1]:
            self._wait_for(manager, ready.exists, "the window manager to be ready")

    def _wait_for(self, process, condition, what):
        def happened():
            self._must_live(process)
            return condition()
        return wait_until(happened, what)

    def _must_live(self, process):
        if process.poll() is not None:
            raise Late(f"{process.args[0]} ended with {process.returncode}: "
                       f"{process.errors.read_text('utf-8', 'replace')}")
