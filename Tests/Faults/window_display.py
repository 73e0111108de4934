"""A display of its own with keyboard, mouse and pixels, and what a window on it tells assistive programs."""

import atexit
import os
import shutil
import subprocess
import tempfile
import threading
import time
from collections import namedtuple

from fault_volumes import Skipped, require_tool

# Bits of an accessible thing's state.
ACTIVE, CHECKED, ENABLED, EXPANDED = 1, 4, 8, 10

Box = namedtuple("Box", "x y width height")

PREFIX = "org.a11y.atspi"
ROOT = "/org/a11y/atspi/accessible/root"

# Segments of a readout's cell that are lit: top, upper left and right, middle, lower left and right, bottom.
DIGITS = {"1110111": "0", "0010010": "1", "1011101": "2", "1011011": "3", "0111010": "4", "1101011": "5",
          "1101111": "6", "1010010": "7", "1111111": "8", "1111011": "9", "0001000": "-"}
SEGMENT_MIDDLES = ((5, 3), (1, 7), (10, 7), (5, 12), (1, 18), (10, 18), (5, 22))
CELL_ADVANCE = 14
LIT = {b"\x00\xff\x00": "normal", b"\xff\x00\x00": "alarm"}
UNLIT = (b"\x00\x40\x00", b"\x55\x42\x42")


def wait_for(condition, seconds):
    """Whether the condition came true in time."""
    end = time.monotonic() + seconds
    while not condition():
        if time.monotonic() > end:
            return bool(condition())
        time.sleep(0.03)
    return True


class AccessibilityBus:
    """The message bus on which windows tell what they show; one for all displays of a script."""

    _lock = threading.Lock()
    _instance = None

    def __init__(self):
        try:
            from gi.repository import Gio, GLib
        except ImportError as missing:
            raise Skipped("needs python3-gi, for the Python that runs this") from missing
        for tool in ("Xvfb", "openbox", "xdotool", "import", "dbus-daemon"):
            require_tool(tool)
        self.Error, self._variant, self._bus_type = GLib.Error, GLib.Variant, Gio.DBusConnection
        self._flags = (Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION)
        self._folder = tempfile.mkdtemp(prefix="gaugeline-bus-")
        self.environment = {**os.environ, "XDG_RUNTIME_DIR": self._folder, "HOME": self._folder, "LC_ALL": "C.UTF-8",
                            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}
        self._daemon = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address=1"],
                                        stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True,
                                        env=self.environment)
        atexit.register(self._end)
        address = self._daemon.stdout.readline().strip()
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = address
        self._connection = self._connect(address)
        try:
            address, = self.call("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress")
        except self.Error as error:
            raise Skipped("needs at-spi2-core") from error
        self._connection = self._connect(address)

    @classmethod
    def shared(cls):
        with cls._lock:
            cls._instance = cls._instance or cls()
            return cls._instance

    def _connect(self, address):
        return self._bus_type.new_for_address_sync(address, self._flags, None, None)

    def _end(self):
        self._daemon.terminate()
        self._daemon.wait()
        shutil.rmtree(self._folder, ignore_errors=True)

    def call(self, owner, path, interface, method, signature="()", *values):
        reply = self._connection.call_sync(owner, path, interface, method, self._variant(signature, values), None, 0,
                                           10_000, None)
        return reply.unpack()

    def owner_with_pid(self, pid):
        """The name on the bus of a process; none while it has not come there."""
        bus = "org.freedesktop.DBus"
        for owner in self.call(bus, "/", bus, "ListNames")[0]:
            try:
                if self.call(bus, "/", bus, "GetConnectionUnixProcessID", "(s)", owner)[0] == pid:
                    return owner
            except self.Error:
                pass  # it has left
        return None


class AccessibleProgram:
    """The windows of a process as assistive programs see them. A thing in them is known by its path."""

    def __init__(self, bus: AccessibilityBus, pid):
        """`pid` answers the process; under a wrapper it may not be there at once."""
        self._bus, self._pid, self._owner = bus, pid, None

    def _ask(self, path, interface, method, signature="()", *values):
        self._owner = self._owner or self._bus.owner_with_pid(self._pid())
        if self._owner is None:
            raise self._bus.Error("the process is not on the bus")
        return self._bus.call(self._owner, path, interface, method, signature, *values)

    def _property(self, path, interface, name):
        return self._ask(path, "org.freedesktop.DBus.Properties", "Get", "(ss)", f"{PREFIX}.{interface}", name)[0]

    def name(self, path):
        return self._property(path, "Accessible", "Name")

    def children(self, path):
        return [child for _, child in self._ask(path, f"{PREFIX}.Accessible", "GetChildren")[0]]

    def has(self, path, state):
        return bool(self._ask(path, f"{PREFIX}.Accessible", "GetState")[0][0] >> state & 1)

    def text(self, path):
        return self._ask(path, f"{PREFIX}.Text", "GetText", "(ii)", 0, -1)[0]

    def box(self, path):
        return Box(*self._ask(path, f"{PREFIX}.Component", "GetExtents", "(u)", 0)[0])

    def role(self, path):
        return self._ask(path, f"{PREFIX}.Accessible", "GetRoleName")[0]

    def window(self, title, role=None):
        """None when there is no window whose title begins so, of that role; nor while the program is not there."""
        try:
            return next((path for path in self.children(ROOT)
                         if self.name(path).startswith(title) and role in (None, self.role(path))), None)
        except self._bus.Error:
            return None

    def texts(self, path):
        """The names of all things in one."""
        return [text for child in self.children(path) for text in (self.name(child), *self.texts(child)) if text]

    def find(self, path, name, role):
        """The last thing of a role ("label", "text", ...) called so or "so: and what it shows"; a caption of the same
        name comes before what it captions."""
        found = None
        for child in self.children(path):
            child_role, child_name = self.role(child), self.name(child)
            if child_role == role and (child_name == name or child_name.startswith(f"{name}: ")):
                found = child
            elif child_role not in ("list", "menu bar"):
                found = self.find(child, name, role) or found
        return found


class Display:
    """A virtual screen with a window manager, to press keys on, to click at and to look at."""

    _lock = threading.Lock()

    def __init__(self, bus: AccessibilityBus):
        self._processes = []
        with self._lock:
            self._open(bus)

    def _open(self, bus):
        server = self._start(["Xvfb", "-displayfd", "1", "-screen", "0", "1280x900x24", "-nolisten", "tcp", "-noreset"],
                             bus.environment, subprocess.PIPE)
        with server.stdout as answer:
            self.environment = {**bus.environment, "DISPLAY": f":{answer.readline().decode().strip()}"}
        self._start(["openbox"], self.environment, subprocess.DEVNULL)
        if not wait_for(self._is_managed, 30):
            self.close()
            raise RuntimeError("no window manager came")

    def _start(self, words, environment, output):
        self._processes.append(subprocess.Popen(words, env=environment, stdout=output, stderr=subprocess.DEVNULL))
        return self._processes[-1]

    def _is_managed(self):
        """A window that comes before its manager may never be shown."""
        asked = subprocess.run(["xdotool", "get_num_desktops"], env=self.environment, capture_output=True)
        return asked.returncode == 0

    def lose(self):
        """The server goes as when it crashes, and with it every connection."""
        self._processes[0].kill()

    def close(self):
        for process in reversed(self._processes):
            process.terminate()
            process.wait()

    def press(self, *keys):
        subprocess.run(["xdotool", "key", "--clearmodifiers", *keys], env=self.environment, check=True)

    def type(self, text):
        subprocess.run(["xdotool", "type", "--delay", "4", "--", text], env=self.environment, check=True)

    def click(self, x, y):
        subprocess.run(["xdotool", "mousemove", str(x), str(y), "click", "1"], env=self.environment, check=True)

    def pixels(self, box: Box):
        """The colours of a part of the screen, three bytes a pixel, as a function of x and y in it."""
        place = f"{box.width}x{box.height}+{box.x}+{box.y}"
        raw = subprocess.run(["import", "-window", "root", "-crop", place, "-depth", "8", "rgb:-"],
                             env=self.environment, check=True, capture_output=True).stdout
        return lambda x, y: raw[3 * (y * box.width + x):][:3]


def read_digits(pixel, box: Box):
    """What a seven-segment readout shows, and whether in "normal" or "alarm" colours; two empty texts when nothing.
    Times and numbers with a point are not read."""
    is_segment = [any(pixel(x, y) in LIT or pixel(x, y) in UNLIT for y in range(box.height)) for x in range(box.width)]
    shown, colors = "", set()
    start = is_segment.index(True) if True in is_segment else box.width
    for cell in range(start, box.width - CELL_ADVANCE, CELL_ADVANCE):
        if not is_segment[cell]:
            break
        lit = [LIT.get(pixel(cell + x, y)) for x, y in SEGMENT_MIDDLES]
        colors |= set(filter(None, lit))
        shown += DIGITS.get("".join(str(int(color is not None)) for color in lit), "?")
    return shown, "".join(sorted(colors))
