"""A program under measurement: its processor time, memory and bytes while it transfers, as the kernel counts them."""

import contextlib
import os
import signal
import subprocess
import time
from dataclasses import dataclass
from pathlib import Path


@dataclass
class Usage:
    """Counted from the start of the process, over its children too: fio transfers in one."""

    at: float = 0.0
    cpu_seconds: float = 0.0
    bytes_moved: int = 0
    memory_kb: int = 0  # proportional set size: shared pages are divided among those that share them

    def since(self, earlier):
        return Usage(self.at - earlier.at, self.cpu_seconds - earlier.cpu_seconds,
                     self.bytes_moved - earlier.bytes_moved, self.memory_kb)

    def add(self, more):
        self.at += more.at
        self.cpu_seconds += more.cpu_seconds
        self.bytes_moved += more.bytes_moved
        self.memory_kb = more.memory_kb


def first_number(path, beginning):
    for line in path.read_text(encoding="ascii").splitlines():
        if line.startswith(beginning):
            return int(line.split()[1])
    return 0


class MeasuredRun:
    """A process and its children; in a `with`, it is interrupted at the end."""

    def __init__(self, words, direction, environment=None):
        self._words, self._counter = words, "rchar:" if direction == "read" else "wchar:"
        # In a session of its own, as fio puts its jobs: where others want the processor, it is shared out by sessions.
        self.process = subprocess.Popen(words, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                        start_new_session=True, env={**os.environ, **(environment or {})})

    def usage(self):
        """What it has used so far; a process that ends meanwhile counts with what could be read of it."""
        found = Usage(time.monotonic())
        for pid in self._processes(self.process.pid):
            try:
                place = Path(f"/proc/{pid}")
                found.bytes_moved += first_number(place / "io", self._counter)
                found.memory_kb += first_number(place / "smaps_rollup", "Pss:")
                for task in (place / "task").iterdir():
                    found.cpu_seconds += int((task / "schedstat").read_text(encoding="ascii").split()[0]) / 1e9
            except (FileNotFoundError, ProcessLookupError):
                pass
        return found

    def _processes(self, pid):
        yield pid
        for task in Path(f"/proc/{pid}/task").glob("*/children"):
            for child in task.read_text(encoding="ascii").split():
                yield from self._processes(int(child))

    def wait_for_bytes(self, count, seconds=600.0):
        end = time.monotonic() + seconds
        while self.usage().bytes_moved < count:
            if self.process.poll() is not None or time.monotonic() > end:
                raise RuntimeError(f"{' '.join(map(str, self._words))} transfers nothing")
            time.sleep(0.02)

    def pause(self):
        self._signal_all(signal.SIGSTOP)
        end = time.monotonic() + 60.0  # a transfer in the kernel is still made
        while any(self._state(pid) not in "TZX" for pid in self._processes(self.process.pid)):
            if self.process.poll() is not None or time.monotonic() > end:
                raise RuntimeError(f"{' '.join(map(str, self._words))} cannot be paused")
            time.sleep(0.001)

    def resume(self):
        self._signal_all(signal.SIGCONT)

    def _signal_all(self, number):
        for pid in list(self._processes(self.process.pid)):
            with contextlib.suppress(ProcessLookupError):
                os.kill(pid, number)

    @staticmethod
    def _state(pid):
        try:
            return Path(f"/proc/{pid}/stat").read_text(encoding="ascii").rpartition(") ")[2][0]
        except FileNotFoundError:
            return "X"

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.send_signal(signal.SIGINT)
        self.resume()
        try:
            self.process.wait(60)
        except subprocess.TimeoutExpired:
            self.process.kill()
            raise
