"""One run of the desktop program on a display of its own: settings by keyboard and mouse, results off the screen."""

import re
import signal
from pathlib import Path

from program_run import Run
from window_display import ACTIVE, CHECKED, ENABLED, EXPANDED, AccessibilityBus, AccessibleProgram, Box, Display
from window_display import read_digits, wait_for

MAIN = "Quarn IO Gaugeline"
WORKER_THREAD = "io-worker"
FIELDS = {"--path": "Path to test", "--minutes": "Duration in minutes", "--transfer-kb": "Transfer size in KB",
          "--rate-kbps": "Transfer rate in KB a second", "--limit-mb": "File size limit in MB"}
BOXES = {"--loop": "Repeat the test until it is stopped", "--shared-file": "The path names a file to read"}
POPUPS = {"--method": ("Access method", {"auto": "Automatically Select", "mac": "MAC File API",
                                         "self-test": "Self-Test", "posix": "Posix-Test"}),
          "--mode": ("Read or write", {"mixed": "Writes, then Reads (Sequentially)", "writes": "Writes Only",
                                       "reads": "Reads Only"})}


class WindowRun(Run):
    """The window, with the settings that options of the headless program stand for. `start_test` begins the test."""

    def __init__(self, program: Path, files: Path, arguments, wrapper=(), logs: Path | None = None):
        super().__init__(files, logs)
        self.alerts, self.shown = [], None
        bus = AccessibilityBus.shared()
        self._display = Display(bus)
        try:
            self.launch([program], wrapper, self._display.environment)
        except BaseException:
            self._display.close()
            raise
        words = [str(word) for word in arguments]
        self._options = {word: following for word, following in zip(words, [*words[1:], ""]) if word[:2] == "--"}
        self._is_quit_by_key = self._options.get("--method") == "mac"
        self._accessible = AccessibleProgram(bus, self.pid)
        self._panes = {}

    def close(self):
        super().close()
        self._display.close()

    def lose_display(self):
        self._display.lose()

    # --- Doing things as a person does

    def start_test(self):
        """Returns when the worker has begun its test, or when the test is over again."""
        self.apply_settings()
        self.press_start()
        self._expect("the start of the test", lambda: self._has_worker() or self.is_idle() or self._alert(), 30)
        self._dismiss_alerts()

    def _come_to_main_window(self):
        self._expect("the main window", lambda: self.window(MAIN), 30)
        self._expect("the keyboard", lambda: self._is_active(MAIN), 30)

    def press_start(self):
        self._expect("the keyboard", lambda: self._is_active(MAIN), 30)
        self.pane("Settings", "push button")  # looked up while there is time
        self._display.press("ctrl+r")
        self._expect("a test under way", lambda: not self.is_idle(), 10)

    def press_stop(self):
        self._display.press("ctrl+period")

    def press_quit(self):
        """In one of the ways that there are: the key, or the signal of a session that ends."""
        self._display.press("ctrl+q") if self._is_quit_by_key else self.send(signal.SIGTERM)

    def apply_settings(self):
        self._come_to_main_window()
        self._display.press("ctrl+comma")
        settings = self._opened("Settings")
        form = self._accessible.find(settings, "Custom Test>>>", "push button")
        if form:
            self._click(form)
        for option, field in FIELDS.items():
            if option in self._options:
                self._enter(settings, field, self._options[option])
        for option, (field, items) in POPUPS.items():
            self._choose(settings, field, list(items.values()), items[self._options[option]])
        for option, box in BOXES.items():
            self._tick(settings, box, option in self._options)
        self._click(self._accessible.find(settings, "Log Files...", "push button"))
        logs = self._opened("Log Files")
        self._enter(logs, "Output log", self._paths["output"])
        self._enter(logs, "Error log", self._paths["errors"])
        self._confirm(logs, "Log Files")
        self._dismiss_alerts()
        self._confirm(settings, "Settings")

    def _confirm(self, window, title):
        self._click(self._accessible.find(window, "OK", "push button"))
        self._expect(f"closed {title}", lambda: not self.window(title), 10)

    def _click(self, path):
        box = self._accessible.box(path)
        self._display.click(box.x + box.width // 2, box.y + box.height // 2)

    def _enter(self, window, field, text):
        path = self._accessible.find(window, field, "text")

        def is_entered():
            self._click(path)
            self._display.press("ctrl+a")
            self._display.type(str(text))
            return wait_for(lambda: self._accessible.text(path) == str(text), 3)

        self._expect(f"{text} in {field}", is_entered, 20)

    def _choose(self, window, field, items, item):
        """By its arrow, which is the part of a popup that its field leaves free."""
        text = self._accessible.find(window, field, "text")
        box = self._accessible.box(text)
        group = self._accessible.find(window, field, "label")
        popup = self._accessible.children(group)[0]

        def is_chosen():
            if not self._accessible.has(popup, EXPANDED):
                self._display.click(box.x + box.width + 10, box.y + box.height // 2)
            if not wait_for(lambda: self._accessible.has(popup, EXPANDED), 3):
                return False
            self._display.press("Home", *["Down"] * items.index(item), "Return")
            return wait_for(lambda: self._accessible.text(text) == item
                            and not self._accessible.has(popup, EXPANDED), 3)

        self._expect(f"{item} in {field}", is_chosen, 20)

    def _tick(self, window, box, is_wanted):
        path = self._accessible.find(window, box, "check box")
        if self._accessible.has(path, CHECKED) != is_wanted:
            self._click(path)
        self._expect(f"{box}: {is_wanted}", lambda: self._accessible.has(path, CHECKED) == is_wanted, 5)

    # --- Looking

    def _expect(self, what, condition, seconds):
        if not self.wait_until(condition, seconds):
            raise RuntimeError(f"the window did not come to: {what}" + ("" if self.is_running() else " (it has ended)"))

    def window(self, title):
        return self._accessible.window(title)

    def _is_active(self, title):
        window = self.window(title)
        return window is not None and self._accessible.has(window, ACTIVE)

    def _opened(self, title):
        self._expect(f"the window {title}", lambda: self._is_active(title), 10)
        return self.window(title)

    def pane(self, name, role="label"):
        """A pane of the main window."""
        if name not in self._panes:
            self._panes[name] = self._accessible.find(self.window(MAIN), name, role)
        return self._panes[name]

    def text(self, name):
        """What a text pane of the main window shows."""
        return self._accessible.name(self.pane(name)).partition(": ")[2]

    def is_idle(self):
        """No test is under way: the settings can be opened."""
        return self._accessible.has(self.pane("Settings", "push button"), ENABLED)

    def can_stop(self):
        return self._accessible.has(self.pane("Stop the test", "push button"), ENABLED)

    def _has_worker(self):
        names = []
        for file in Path(f"/proc/{self.pid()}/task").glob("*/comm"):
            try:
                names.append(file.read_text(encoding="utf-8").strip())
            except OSError:
                pass  # a thread that has ended
        return WORKER_THREAD in names

    def _alert(self):
        """An alert has the title of the window that it is about."""
        return self._accessible.window("", "alert message")

    def _dismiss_alerts(self):
        while (alert := self._alert()) is not None:
            self.alerts.append("; ".join(self._accessible.texts(alert)))
            self._click(self._accessible.find(alert, "OK", "push button"))
            self._expect("a closed alert", lambda known=alert: self._alert() != known, 10)

    def readouts(self, *names):
        """What readouts of the main window show, and their colours."""
        boxes = [self._accessible.box(self.pane(name)) for name in names]
        whole = Box(0, 0, max(b.x + b.width for b in boxes), max(b.y + b.height for b in boxes))
        pixel = self._display.pixels(whole)
        return [read_digits(lambda x, y, left=box.x, top=box.y: pixel(left + x, top + y), box) for box in boxes]

    def color_of(self, name):
        """Of the middle of a pane."""
        box = self._accessible.box(self.pane(name))
        return self._display.pixels(box)(box.width // 2, box.height // 2)

    def _is_painted_idle(self):
        box = self._accessible.box(self.pane("Settings", "push button"))
        pixel = self._display.pixels(box)
        return any(min(pixel(x, box.height // 2)) > 190 for x in range(4, box.width - 4))  # bright letters

    def _read(self):
        """The window's last words, once it has painted them."""
        names = "Transfers", "Errors"
        self._expect("the painted end", self._is_painted_idle, 10)
        self._expect("readouts at rest", lambda: self.readouts(*names) == self.readouts(*names), 10)
        (transfers, _), (errors, color) = self.readouts(*names)
        return {"phase": self.text("Phase"), "transfers": transfers, "errors": errors, "color": color,
                "error line": self.text("Last error")}

    # --- Ending

    def end(self, seconds=30.0):
        """The test comes to its end by itself; then the window is read and quits."""
        if self.wait_until(self.is_idle, seconds):
            self._dismiss_alerts()
            self.shown = self._read()
            self.press_quit()
        return self.wait(10)

    def interrupt(self, seconds=30.0):
        self.press_stop()
        return self.end(seconds)

    def _shows(self, direction):
        return (self.shown or {}).get("phase") == {"writes": "(Writing)", "reads": "(Reading)"}[direction]

    def untold(self, direction):
        """Bytes; and errors of a direction that it no longer shows."""
        return (1,) if self._shows(direction) else (1, 2)

    def results(self, direction):
        """Transfers, nothing and errors as shown at the end; for the other direction, transfers of the log's last
        measurement. What is not shown is None."""
        if self._shows(direction):
            return self._number("transfers"), None, self._number("errors")
        found = re.findall(f"{direction[0].upper()}Qy=([0-9]+)", self.output.text)
        return (int(found[-1]) if found else None), None, None

    def _number(self, name):
        return int(self.shown[name]) if self.shown[name].isdigit() else None
