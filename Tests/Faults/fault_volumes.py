"""Volumes that the fault tests make: a fault file system over a folder, small memory volumes, loop volumes."""

import os
import shutil
import signal
import subprocess
import time
from collections import namedtuple
from pathlib import Path

Operation = namedtuple("Operation", "kind name offset size result flags")


class Skipped(Exception):
    """The case cannot run on this machine; the text says why."""


def require_root():
    if os.geteuid() != 0:
        raise Skipped("needs root, to mount")


def require_tool(name):
    if shutil.which(name) is None:
        raise Skipped(f"needs {name}")


def command(*words):
    """Runs a command that has to succeed; its complaint becomes the reason for skipping the case."""
    done = subprocess.run(words, capture_output=True, text=True)
    if done.returncode != 0:
        raise Skipped(f"{words[0]} does not work here: {done.stderr.strip().splitlines()[-1:]}")


def unmount(place):
    if os.path.ismount(place):
        subprocess.run(["umount", "--lazy", place] if os.geteuid() == 0 else ["fusermount3", "-uz", place],
                       capture_output=True)


class FaultVolume:
    """A mount of the fault file system. `place` is where the program sees it, `behind` the folder itself."""

    def __init__(self, folder: Path, name: str, server: Path):
        if not server.is_file():
            raise Skipped("the fault file system is not built (needs libfuse3-dev)")
        if not os.access("/dev/fuse", os.R_OK | os.W_OK):
            raise Skipped("needs /dev/fuse")
        self.place, self.behind = folder / name, folder / f"{name}.behind"
        self.colon = f"{name}:"
        self._rules, self._trace = folder / f"{name}.rules", folder / f"{name}.trace"
        for made in (self.place, self.behind):
            made.mkdir()
        with open(folder / f"{name}.server", "w", encoding="utf-8") as complaints:
            self._server = subprocess.Popen([server, self.behind, self.place, self._rules, self._trace],
                                            stdin=subprocess.DEVNULL, stdout=complaints, stderr=complaints)
        end = time.monotonic() + 10
        while not os.path.ismount(self.place):
            if self._server.poll() is not None or time.monotonic() > end:
                raise Skipped("a FUSE file system cannot be mounted here")
            time.sleep(0.02)

    def set_rules(self, *rules):
        """Puts rules in force at once and starts all counts anew; without any, hung operations go on."""
        fresh = self._rules.with_suffix(".new")
        fresh.write_text("".join(rule + "\n" for rule in rules), encoding="utf-8")
        fresh.replace(self._rules)

    def operations(self, kind, name, flags=""):
        """What the file system served, in order, of one kind on one name; `flags` has to be among its flags."""
        found = []
        for line in self._trace.read_text(encoding="utf-8").splitlines() if self._trace.exists() else []:
            words = line.split(" ")
            if len(words) == 6 and words[:2] == [kind, name] and flags in words[5]:
                found.append(Operation(kind, name, *map(int, words[2:5]), words[5]))
        return found

    def close(self):
        self.set_rules()
        unmount(self.place)
        try:
            self._server.wait(5)
        except subprocess.TimeoutExpired:
            self._server.send_signal(signal.SIGKILL)
            self._server.wait()


class MemoryVolume:
    """A small tmpfs."""

    def __init__(self, folder: Path, name: str, size_kb: int):
        require_root()
        self.place, self.colon = folder / name, f"{name}:"
        self.behind = self.place
        self.place.mkdir()
        command("mount", "-t", "tmpfs", "-o", f"size={size_kb}k", "tmpfs", self.place)

    def free_bytes(self):
        space = os.statvfs(self.place)
        return space.f_bavail * space.f_frsize

    def close(self):
        unmount(self.place)


class LoopVolume:
    """An ext4 volume in a file."""

    def __init__(self, folder: Path, name: str, size_mb: int):
        require_root()
        require_tool("mkfs.ext4")
        image = folder / f"{name}.image"
        with open(image, "wb") as file:
            file.truncate(size_mb << 20)
        self.place, self.colon = folder / name, f"{name}:"
        self.behind = self.place
        self.place.mkdir()
        command("mkfs.ext4", "-q", image)
        command("mount", "-o", "loop,errors=remount-ro", image, self.place)

    def turn_read_only(self):
        """As the kernel does it when it finds the volume damaged: at once, under open files."""
        command("mount", "-o", "remount,abort", self.place)

    def close(self):
        unmount(self.place)
