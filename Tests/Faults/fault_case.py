"""What a fault case is, the expectations that it collects, and what every run has to keep whatever the fault."""

import hashlib
import re
import signal
import tempfile
from collections import namedtuple
from itertools import zip_longest
from pathlib import Path

from fault_volumes import FaultVolume, LoopVolume, MemoryVolume, Skipped
from program_run import DATE, ProgramRun
from window_run import WindowRun

TRANSFER = 256 * 1024
METHODS = ("mac", "posix")
PROGRAMS = ("headless", "window")
INCOMPLETE = " is not complete: its storage did not take all lines"
INTERRUPTED = 128 + signal.SIGINT

# A transfer each 250 ms, and a file of four transfers: a pass takes a second.
PACED = ("--transfer-kb", "256", "--rate-kbps", "1024", "--limit-mb", "1", "--minutes", "1")

# A person's own files, some of which look like the program's.
OWN_FILES = {"IOT0.tio": b"mine", "IOT1.tio.bak": b"also mine", "notes.txt": b"do not touch"}

Case = namedtuple("Case", "name expected method program minutes is_long function")
CASES = []


def case(name, expected, methods=METHODS, minutes=0.0, is_long=False, programs=PROGRAMS):
    """Registers a case: a function of a `Trial`. `minutes` orders the cases, those that last longest first."""
    def register(function):
        CASES.extend(Case(name, expected, method, program, minutes, is_long, function)
                     for program in programs for method in methods)
        return function
    return register


class Trial:
    """A case under way for one method and program: its folder and volumes, its run, and what it checked."""

    def __init__(self, entry: Case, program: Path, server: Path):
        self.method, self.is_window = entry.method, entry.program == "window"
        self.program, self._server = program, server
        self.checked, self.failures, self.notes = 0, [], []
        self._temporary = tempfile.TemporaryDirectory(prefix="gaugeline-faults-", ignore_cleanup_errors=True)
        self.folder = Path(self._temporary.name)
        # Volumes are known by the names of their mount points: no two cases at a time may use the same.
        title = "".join(c if c.isalnum() else "-" for c in f"{entry.name}-{entry.method}")
        self.volume_name = title[:40] + self.folder.name[-8:]
        self._volumes = []
        self.run = None
        self._own = {}

    def close(self):
        if self.run is not None and self.run.is_running():
            self.run.send(signal.SIGKILL)
        for volume in self._volumes:
            volume.close()
        if self.run is not None:
            self.run.close()
        self._temporary.cleanup()

    # --- Making things

    def fault_volume(self, *rules, suffix=""):
        volume = FaultVolume(self.folder, self.volume_name + suffix, self._server)
        self._volumes.append(volume)
        volume.set_rules(*rules)
        return volume

    def memory_volume(self, size_kb, suffix=""):
        self._volumes.append(MemoryVolume(self.folder, self.volume_name + suffix, size_kb))
        return self._volumes[-1]

    def loop_volume(self, size_mb):
        self._volumes.append(LoopVolume(self.folder, self.volume_name, size_mb))
        return self._volumes[-1]

    def add_own_files(self, folder: Path, **more):
        for name, content in {**OWN_FILES, **more}.items():
            (folder / name).write_bytes(content)
        self._own = snapshot(folder)

    def forget_own_file(self, name):
        """It was taken away on purpose."""
        del self._own[name]

    def start(self, path, mode, *more, wrapper=(), logs=None, pace=PACED):
        """`mode` is writes, reads or mixed; or shared, which reads the file that the path names."""
        kind = ("reads", "--shared-file") if mode == "shared" else (mode,)
        self.run = (WindowRun if self.is_window else ProgramRun)(
            self.program, self.folder / "files",
            ["--path", path, "--method", self.method, "--mode", *kind, *pace, *more], wrapper, logs)
        if self.is_window:
            self.run.start_test()
        return self.run

    # --- Expectations

    def equal(self, what, seen, wanted):
        self.checked += 1
        if seen != wanted:
            self.failures.append(f"{what}: wanted {shortened(wanted)}, saw {shortened(seen)}")

    def between(self, what, seen, low, high):
        self.checked += 1
        if not low <= seen <= high:
            self.failures.append(f"{what}: wanted {low} to {high}, saw {seen}")

    def reached(self, what, condition, seconds=30.0):
        """Waits until the running program has come to something."""
        self.equal(f"came to {what}", self.run.wait_until(condition, seconds), True)

    def check_end(self, status, folder: Path, left=(), told_left=(), closed=True, alerts=()):
        """The run has ended: what holds for every case. `status` and `told_left` are the headless program's,
        `alerts` parts of the window's."""
        run = self.run
        if self.is_window:
            self._check_window(alerts)
        else:
            self._check_document(status, told_left)
        self.equal("files left", sorted(set(snapshot(folder)) - set(self._own)), sorted(left))
        self.equal("own files", {name: seen for name, seen in snapshot(folder).items() if name in self._own}, self._own)
        for which, log in (("output log", run.output), ("error log", run.errors)):
            if closed:
                self.equal(f"opening banner of the {which}", log.is_opened, True)
                self.equal(f"closing banner of the {which}", log.is_closed, True)
                last = [message for message in log.messages if not re.match(f"{DATE} - measurement ", message)][-1:]
                self.equal(f"last message of the {which}", last, ["Test stopped"])

    def _check_document(self, status, told_left):
        run, document = self.run, self.run.document
        self.equal("exit status", run.status, status)
        self.equal("status in the JSON document", document.get("exitStatus"), status)
        self.equal("state in the JSON document", document.get("state"),
                   "interrupted" if status == INTERRUPTED else "completed")
        self.equal("scratch files told in the JSON document",
                   [path.get("native") for path in document.get("scratchFilesLeft", [{"native": "none"}])],
                   [str(path) for path in told_left])
        self.equal("JSON temporaries left", [path.name for path in run.folder.glob("*.new-*")], [])

    def _check_window(self, alerts):
        """It quits with 0 however it is asked to, and the readout of errors is red when it shows any."""
        run = self.run
        self.equal("exit status", run.status, 0)
        self.equal("alerts that should not be, or are missing",
                   [(seen, wanted) for seen, wanted in zip_longest(run.alerts, alerts, fillvalue="")
                    if not wanted or wanted not in seen], [])
        complaints = [line for line in run.stderr.splitlines() if not line.endswith(INCOMPLETE)]
        self.equal("complaints on standard error", complaints, [])
        if run.shown is not None:
            errors = run.shown["errors"]
            self.equal("colours of the errors", run.shown["color"],
                       "" if errors == "" else "normal" if errors == "0" else "alarm")

    def check_errors(self, lines):
        """The error log has these lines and no other but those that tell of the preparation and the end."""
        about_test = ("Preparing reader", "Finishing prepration", "Test stopped")
        self.equal("error lines", [m for m in self.run.errors.messages if not m.startswith(about_test)], list(lines))

    def check_counts(self, direction, transfers, size, errors, is_begun=True):
        """Unless a phase of the direction has begun, the window shows no counts."""
        wanted = (transfers, size, errors) if is_begun or not self.is_window else (None, None, None)
        untold = self.run.untold(direction)
        self.equal(f"transfers, bytes and errors of {direction}", self.run.results(direction),
                   tuple(None if number in untold else value for number, value in enumerate(wanted)))

    def check_bytes(self, seen, wanted):
        if not self.is_window:
            self.equal("bytes", seen, wanted)

    def check_verdict(self, wanted):
        if not self.is_window:
            self.equal("verdict", self.run.document.get("verdict"), wanted)

    def check_told(self, line):
        """The first error on standard error; in the window, the last one."""
        if self.is_window:
            self.equal("error told in the window", self.run.shown["error line"].startswith(f"{line} "), True)
        else:
            self.equal("error told on standard error", f"gaugeline-cli: {line} " in self.run.stderr, True)

    def check_incomplete_logs(self):
        """Both are told of on standard error."""
        told = [line for line in self.run.stderr.splitlines() if line.endswith(INCOMPLETE)]
        self.equal("logs that are told to be incomplete", len(told), 2)

    def summary(self):
        if self.run is None:
            return ""
        parts = [f"status {self.run.status}"]
        for direction, one in (("writes", "write"), ("reads", "read")):
            transfers, _, errors = self.run.results(direction)
            if transfers is not None:
                parts.append(f"{transfers} {one}{'' if transfers == 1 else 's'}")
            if errors is not None:
                parts[-1] += f", {errors} error{'' if errors == 1 else 's'}"
        verdict = None if self.is_window else self.run.document.get("verdict")
        if self.is_window and self.run.shown:
            parts.append(f"{self.run.shown['color'] or 'no'} colours of errors")
        return "; ".join([*parts, *([verdict] if verdict else []), *self.notes])


def snapshot(folder: Path):
    """Content, time and size of all files of a folder."""
    found = {}
    for path in filter(Path.is_file, folder.iterdir()):
        status = path.stat()
        found[path.name] = (hashlib.sha256(path.read_bytes()).hexdigest(), status.st_mtime_ns, status.st_size)
    return found


def shortened(value):
    text = repr(value)
    return text if len(text) <= 300 else text[:200] + " … " + text[-90:]


def run_case(entry: Case, program: Path, server: Path):
    """Answers (outcome, expectations checked, what was seen, failures)."""
    trial = None
    try:
        trial = Trial(entry, program, server)
        entry.function(trial)
        seen = trial.summary()
        if trial.checked == 0:
            trial.failures.append("the case checked nothing")
        failures = [f.replace(str(trial.folder), "…").replace(trial.volume_name, "Volume") for f in trial.failures]
        return ("FAILED" if failures else "passed"), trial.checked, seen, failures
    except Skipped as reason:
        return "skipped", 0, str(reason), []
    except Exception as error:  # a case that breaks off has not passed; the others go on
        return "FAILED", 0, "", [f"{type(error).__name__}: {error}"]
    finally:
        if trial is not None:
            trial.close()
