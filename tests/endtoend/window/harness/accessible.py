"""The tree of controls as a screen reader is given it: AT-SPI, asked over D-Bus.

Nothing is cached, so that an answer is always the program's present state, and every question has a time limit, so
that a window that hangs is noticed as such.
"""

from collections import Counter

from gi.repository import Gio, GLib

from .waiting import SECONDS, Gone, Late, wait_until

CALL_MILLISECONDS = 10000
PREFIX = "org.a11y.atspi."
ROOT = ("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root")

# In the order of their numbers.
ROLES = """invalid/accelerator label/alert/animation/arrow/calendar/canvas/check box/check menu item/color chooser/
column header/combo box/date editor/desktop icon/desktop frame/dial/dialog/directory pane/drawing area/file chooser/
filler/focus traversable/font chooser/frame/glass pane/html container/icon/image/internal frame/label/layered pane/
list/list item/menu/menu bar/menu item/option pane/page tab/page tab list/panel/password text/popup menu/progress bar/
push button/radio button/radio menu item/root pane/row header/scroll bar/scroll pane/separator/slider/spin button/
split pane/status bar/table/table cell/table column header/table row header/tearoff menu item/terminal/text/
toggle button/tool bar/tool tip/tree/tree table/unknown/viewport/window/extended/header/footer/paragraph/ruler/
application/autocomplete/editbar/embedded/entry/chart/caption/document frame/heading/page/section/redundant object/
form/link""".replace("\n", "").split("/")
STATES = """invalid active armed busy checked collapsed defunct editable enabled expandable expanded focusable focused
has-tooltip horizontal iconified modal multi-line multiselectable opaque pressed resizable selectable selected
sensitive showing single-line stale transient vertical visible manages-descendants indeterminate required truncated
animated invalid-entry supports-autocompletion selectable-text is-default visited checkable has-popup
read-only""".split()


class Bus:
    """The connection on which programs offer their controls.

    `scale` is how many pixels a length of 1 takes on the screen: the toolkit tells places in its own lengths.
    """

    def __init__(self, address, scale=1.0):
        self.scale = scale
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        self._connection = Gio.DBusConnection.new_for_address_sync(address, flags, None, None)
        self._connection.set_exit_on_close(False)
        self._shown = []
        self._times_shown = Counter()

    def watch(self):
        """From now on remembers what appears. Menus are announced so and not found in any other way."""
        self._connection.signal_subscribe(None, PREFIX + "Event.Object", "StateChanged", None, "showing",
                                          Gio.DBusSignalFlags.NONE, self._note_shown)
        self.call("org.a11y.atspi.Registry", "/org/a11y/atspi/registry", "org.a11y.atspi.Registry", "RegisterEvent",
                  GLib.Variant("(sass)", ("object:state-changed:showing", [], "")))

    def shown(self, service):
        """What a program announced and still shows, the latest last."""
        while GLib.MainContext.default().iteration(False):
            pass
        nodes = [node for node in self._shown if node.service == service]
        return [node for node in nodes if not node.is_gone()]

    def times_shown(self, node):
        """How often it has appeared since the beginning, however briefly."""
        while GLib.MainContext.default().iteration(False):
            pass
        return self._times_shown[node]

    def _note_shown(self, _connection, service, path, _interface, _signal, details):
        node = Node(self, service, path)
        self._shown = [other for other in self._shown if other != node]
        if details.unpack()[1]:
            self._shown.append(node)
            self._times_shown[node] += 1

    def close(self):
        if not self._connection.is_closed():
            self._connection.close_sync(None)

    def call(self, service, path, interface, method, arguments=None):
        """The unpacked answer; `Gone` when the object or its program is not there, `Late` when it is silent."""
        try:
            answer = self._connection.call_sync(service, path, interface, method, arguments, None,
                                                Gio.DBusCallFlags.NONE, CALL_MILLISECONDS, None)
        except GLib.Error as error:
            if error.matches(Gio.io_error_quark(), Gio.IOErrorEnum.TIMED_OUT):
                raise Late(f"{service} does not answer {method}") from error
            raise Gone(f"{method}: {error.message}") from error
        return answer.unpack()

    def has_registry(self):
        """Starts the registry where it does not run."""
        Node(self, *ROOT).children()
        return True

    def pid_of(self, service):
        bus = ("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus")
        return self.call(*bus, "GetConnectionUnixProcessID", GLib.Variant("(s)", (service,)))[0]

    def application(self, pid):
        """The tree of the program with this process id; `Gone` when it offers none."""
        for program in Node(self, *ROOT).children():
            try:
                if self.pid_of(program.service) == pid:
                    return program
            except Gone:
                continue  # one that is just ending
        raise Gone(f"process {pid} offers no controls")


class Node:
    """One control, window, list entry or menu entry."""

    def __init__(self, bus, service, path):
        self._bus = bus
        self.service = service
        self.path = path

    def __eq__(self, other):
        return isinstance(other, Node) and (self.service, self.path) == (other.service, other.path)

    def __hash__(self):
        return hash((self.service, self.path))

    def __repr__(self):
        try:
            return f"{self.role} {self.name!r}"
        except Gone:
            return "something gone"

    # What it is

    @property
    def name(self):
        return self._property("Accessible", "Name")

    @property
    def description(self):
        return self._property("Accessible", "Description")

    @property
    def role(self):
        number = self._call("Accessible", "GetRole")[0]
        return ROLES[number] if number < len(ROLES) else str(number)

    @property
    def states(self):
        low, high = self._call("Accessible", "GetState")[0]
        return {name for bit, name in enumerate(STATES) if (high << 32 | low) >> bit & 1}

    @property
    def is_showing(self):
        return "showing" in self.states

    @property
    def is_enabled(self):
        return "enabled" in self.states

    @property
    def is_checked(self):
        return "checked" in self.states

    @property
    def is_focused(self):
        return "focused" in self.states

    @property
    def is_selected(self):
        return "selected" in self.states

    @property
    def extents(self):
        """(x, y, width, height) on the screen, in pixels."""
        lengths = self._call("Component", "GetExtents", GLib.Variant("(u)", (0,)))[0]
        return tuple(round(length * self._bus.scale) for length in lengths)

    @property
    def value(self):
        """Of a progress bar or the like."""
        return self._property("Value", "CurrentValue")

    @property
    def text(self):
        """What stands in a field."""
        return self._call("Text", "GetText", GLib.Variant("(ii)", (0, -1)))[0]

    # What is in it

    @property
    def parent(self):
        return Node(self._bus, *self._property("Accessible", "Parent"))

    @property
    def child_count(self):
        return self._property("Accessible", "ChildCount")

    def children(self):
        return [Node(self._bus, *found) for found in self._call("Accessible", "GetChildren")[0]]

    def descendants(self):
        """Everything below, depth first; what disappears meanwhile is left out."""
        try:
            children = self.children()
        except Gone:
            return
        for child in children:
            yield child
            yield from child.descendants()

    def find_all(self, role=None, name=None, showing=True):
        """All with this role and this name below; only what can be seen, unless told otherwise."""
        return [node for node in self.descendants() if node._fits(role, name, showing)]

    def find(self, role=None, name=None, showing=True, seconds=SECONDS):
        """The only one; waits for it. Two that fit are an error."""
        def only():
            found = self.find_all(role, name, showing)
            if len(found) > 1:
                raise AssertionError(f"{len(found)} fit {role} {name!r} in:\n{self.tree()}")
            return found[0] if found else None
        return wait_until(only, lambda: f"{role} {name!r} in:\n{self.tree()}", seconds)

    def has(self, role=None, name=None, showing=True):
        """Whether there is one now."""
        return bool(self.find_all(role, name, showing))

    def names(self, role):
        """Of everything below with this role, in its order, scrolled out of sight or not."""
        return [node.name for node in self.find_all(role, showing=False)]

    def tree(self, depth=0):
        """Everything below as indented lines, for people."""
        lines = [f"{'  ' * depth}{self!r} [{' '.join(sorted(self._states_or_none()))}]"]
        try:
            lines += [child.tree(depth + 1) for child in self.children()]
        except Gone:
            pass
        return "\n".join(lines)

    # What can be done with it

    @property
    def actions(self):
        return [action[0] for action in self._call("Action", "GetActions")[0]]

    def do(self, action):
        """Does what the control offers under this name, as assistive tools would."""
        names = self.actions
        if action not in names:
            raise AssertionError(f"{self!r} offers {names}, not {action!r}")
        if not self._call("Action", "DoAction", GLib.Variant("(i)", (names.index(action),)))[0]:
            raise AssertionError(f"{self!r} refused {action!r}")

    def press(self):
        """Presses, toggles or opens without the mouse."""
        offered = self.actions
        for action in ("Press", "Toggle", "ShowMenu", "SetFocus"):
            if action in offered:
                return self.do(action)
        raise AssertionError(f"{self!r} cannot be pressed; it offers {offered}")

    def set_focus(self):
        self.do("SetFocus")

    def set_text(self, text):
        """Replaces what stands in a field, without the keyboard."""
        if not self._call("EditableText", "SetTextContents", GLib.Variant("(s)", (text,)))[0]:
            raise AssertionError(f"{self!r} does not take {text!r}")

    # Waiting

    def wait_for(self, *states, seconds=SECONDS):
        """Waits until it has all these states; "-checked" means not to have that one."""
        def fits():
            now = self.states
            return all((state.lstrip("-") in now) != state.startswith("-") for state in states)
        wait_until(fits, lambda: f"{states} of {self!r}, it is {sorted(self._states_or_none())}", seconds)
        return self

    def wait_for_name(self, name, seconds=SECONDS):
        wait_until(lambda: self.name == name, lambda: f"{self!r} to be named {name!r}", seconds)
        return self

    def wait_gone(self, seconds=SECONDS):
        wait_until(self.is_gone, lambda: f"{self!r} to go away", seconds)

    def is_gone(self):
        try:
            return not self.is_showing
        except Gone:
            return True

    def _fits(self, role, name, showing):
        try:
            return ((role is None or self.role == role) and (name is None or self.name == name)
                    and (not showing or self.is_showing))
        except Gone:
            return False

    def _states_or_none(self):
        try:
            return self.states
        except Gone:
            return set()

    def _call(self, interface, method, arguments=None):
        return self._bus.call(self.service, self.path, PREFIX + interface, method, arguments)

    def _property(self, interface, name):
        wanted = GLib.Variant("(ss)", (PREFIX + interface, name))
        return self._bus.call(self.service, self.path, "org.freedesktop.DBus.Properties", "Get", wanted)[0]
