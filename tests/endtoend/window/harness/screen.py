"""The screen: windows as the window manager knows them, mouse, keyboard and pictures."""

import struct
import subprocess
import zlib
from pathlib import Path

from Xlib import X, Xatom
from Xlib.display import Display
from Xlib.error import BadDrawable, BadMatch, BadWindow
from Xlib.protocol.event import ClientMessage

from .waiting import SECONDS, Gone, wait_until

XDOTOOL_SECONDS = 60
ICONIC = 3
FROM_A_PAGER = 2


class Screen:
    """One display and its window manager."""

    def __init__(self, name, environment):
        self._display = Display(name)
        self._display.set_error_handler(lambda *_: None)
        self._root = self._display.screen().root
        self._environment = environment

    def close(self):
        self._display.close()

    @property
    def size(self):
        geometry = self._root.get_geometry()
        return geometry.width, geometry.height

    # Windows

    def has_manager(self):
        return bool(self._values(self._root, "_NET_SUPPORTING_WM_CHECK"))

    def windows(self, pid=None):
        """The managed windows, or those of one process, oldest first."""
        found = [ManagedWindow(self, number) for number in self._values(self._root, "_NET_CLIENT_LIST")]
        return [window for window in found if pid is None or window.pid == pid]

    def stacking(self):
        """The managed windows from the lowest to the one in front."""
        return [ManagedWindow(self, number) for number in self._values(self._root, "_NET_CLIENT_LIST_STACKING")]

    def window(self, title, pid=None, seconds=SECONDS):
        """The managed window with this title; waits for it."""
        def first():
            return next((window for window in self.windows(pid) if window.title == title), None)
        return wait_until(first, lambda: f"window {title!r} among {[w.title for w in self.windows(pid)]}", seconds)

    def active(self):
        """The window that gets what is typed, or nothing."""
        numbers = self._values(self._root, "_NET_ACTIVE_WINDOW")
        return ManagedWindow(self, numbers[0]) if numbers and numbers[0] else None

    # Mouse and keyboard

    def move_mouse(self, x, y):
        self._xdotool("mousemove", "--sync", x, y)

    def click(self, x, y, button=1, count=1):
        """A real click; the buttons are 1 left, 2 middle, 3 right."""
        self._xdotool("mousemove", x, y, "click", "--repeat", count, "--delay", 50, button)

    def hold(self, button=1):
        self._xdotool("mousedown", button)

    def release(self, button=1):
        self._xdotool("mouseup", button)

    def drag(self, begin, end, steps=8):
        """Presses the left button, moves and lets go."""
        self.move_mouse(*begin)
        self.hold()
        for step in range(1, steps + 1):
            self.move_mouse(*(a + (b - a) * step // steps for a, b in zip(begin, end)))
        self.release()

    def key(self, *names):
        """Types keys by their names, such as "Tab", "ctrl+a", "alt+F4"."""
        self._xdotool("key", "--delay", 20, *names)

    def type(self, text):
        for character in text:
            self._give_key(character)
        self._xdotool("type", "--delay", 10, "--", text)

    def _give_key(self, character):
        """Characters that the keyboard lacks get a key of their own, for good: a key that is taken back at once has
        often lost its meaning before the program learns of it."""
        wanted = ord(character) if ord(character) < 0x100 else 0x1000000 | ord(character)
        if self._display.keysym_to_keycode(wanted):
            return
        first, count = self._display.display.info.min_keycode, 248
        mapping = self._display.get_keyboard_mapping(first, count)
        free = [first + at for at, symbols in enumerate(mapping) if not any(symbols)]
        self._display.change_keyboard_mapping(free[-1], [(wanted, wanted)])
        self._display.sync()
        # The answer to the change comes as an event that renews what this connection knows.
        while self._display.pending_events():
            event = self._display.next_event()
            if event.type == X.MappingNotify:
                self._display.refresh_keyboard_mapping(event)

    def _xdotool(self, *arguments):
        subprocess.run(["xdotool", *map(str, arguments)], env=self._environment, check=True, stdin=subprocess.DEVNULL,
                       timeout=XDOTOOL_SECONDS)

    # Pictures

    def grab(self, x=0, y=0, width=None, height=None):
        """(width, height, red green blue bytes) of a part of the screen; the whole one by default."""
        full_width, full_height = self.size
        left, top = max(x, 0), max(y, 0)
        right, bottom = min(x + (width or full_width), full_width), min(y + (height or full_height), full_height)
        if right <= left or bottom <= top:
            raise AssertionError(f"{width} × {height} at {x}, {y} is not on the screen")
        data = self._root.get_image(left, top, right - left, bottom - top, X.ZPixmap, 0xFFFFFFFF).data
        pixels = bytearray((right - left) * (bottom - top) * 3)
        for target, source in enumerate((2, 1, 0)):
            pixels[target::3] = data[source::4]
        return right - left, bottom - top, bytes(pixels)

    def screenshot(self, file, x=0, y=0, width=None, height=None):
        """Saves a part of the screen as PNG."""
        file = Path(file)
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_bytes(_png(*self.grab(x, y, width, height)))
        return file

    # For the windows

    def values(self, number, name):
        return self._values(self._object(number), name)

    def text(self, number, name):
        found = self._object(number).get_full_property(self._atom(name), X.AnyPropertyType)
        if found is None:
            return ""
        return found.value if isinstance(found.value, str) else found.value.decode("utf-8", "replace")

    def atom_names(self, numbers):
        return {self._display.get_atom_name(number) for number in numbers}

    def frame(self, number):
        window = self._object(number)
        try:
            geometry = window.get_geometry()
            corner = self._root.translate_coords(window, 0, 0)
        except (BadWindow, BadDrawable, BadMatch) as error:
            raise Gone(f"window {number:#x}") from error
        return -corner.x if corner.x > 0x7FFF else corner.x, corner.y, geometry.width, geometry.height

    def send(self, number, message, *data):
        """A message to the window manager about a window."""
        data = (list(data) + [0] * 5)[:5]
        event = ClientMessage(window=self._object(number), client_type=self._atom(message), data=(32, data))
        self._root.send_event(event, event_mask=X.SubstructureRedirectMask | X.SubstructureNotifyMask)
        self._display.sync()

    def _object(self, number):
        return self._display.create_resource_object("window", number)

    def _atom(self, name):
        return self._display.intern_atom(name)

    def _values(self, window, name):
        try:
            found = window.get_full_property(self._atom(name), X.AnyPropertyType)
        except (BadWindow, BadDrawable) as error:
            raise Gone(name) from error
        return list(found.value) if found is not None and found.property_type != Xatom.STRING else []


class ManagedWindow:
    """A window through the eyes of the window manager."""

    def __init__(self, screen, number):
        self._screen = screen
        self.number = number

    def __eq__(self, other):
        return isinstance(other, ManagedWindow) and self.number == other.number

    def __hash__(self):
        return hash(self.number)

    @property
    def pid(self):
        return next(iter(self._screen.values(self.number, "_NET_WM_PID")), None)

    @property
    def title(self):
        return self._screen.text(self.number, "_NET_WM_NAME")

    @property
    def frame(self):
        """(x, y, width, height) on the screen, without what the window manager draws around."""
        return self._screen.frame(self.number)

    @property
    def is_minimised(self):
        return self._screen.values(self.number, "WM_STATE")[:1] == [ICONIC]

    @property
    def is_active(self):
        return self._screen.active() == self

    @property
    def states(self):
        """Such as "_NET_WM_STATE_SKIP_TASKBAR"."""
        return self._screen.atom_names(self._screen.values(self.number, "_NET_WM_STATE"))

    def move(self, x, y):
        """As the keyboard of the window manager would; waits until it is there."""
        self._screen.send(self.number, "_NET_MOVERESIZE_WINDOW", FROM_A_PAGER << 12 | 3 << 8 | 10, x, y)
        wait_until(lambda: self.frame[:2] == (x, y), lambda: f"the window at {x}, {y}; it is at {self.frame}")

    def activate(self):
        self._screen.send(self.number, "_NET_ACTIVE_WINDOW", FROM_A_PAGER)
        wait_until(lambda: self.is_active, "the window to be the active one")

    def minimise(self):
        self._screen.send(self.number, "WM_CHANGE_STATE", ICONIC)
        wait_until(lambda: self.is_minimised, "the window to be minimised")

    def ask_to_close(self):
        """What the window manager does when its close button is pressed; the window may refuse."""
        self._screen.send(self.number, "_NET_CLOSE_WINDOW", 0, FROM_A_PAGER)

    def is_there(self):
        return self in self._screen.windows()

    def wait_gone(self, seconds=SECONDS):
        wait_until(lambda: not self.is_there(), lambda: f"window {self.title!r} to go away", seconds)

    def grab(self):
        return self._screen.grab(*self.frame)

    def screenshot(self, file):
        return self._screen.screenshot(file, *self.frame)


def _png(width, height, pixels):
    rows = b"".join(b"\0" + pixels[at:at + 3 * width] for at in range(0, len(pixels), 3 * width))
    head = struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)
    return b"\x89PNG\r\n\x1a\n" + _chunk(b"IHDR", head) + _chunk(b"IDAT", zlib.compress(rows)) + _chunk(b"IEND", b"")


def _chunk(kind, data):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
