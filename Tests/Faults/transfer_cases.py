"""Faults of single operations, made by the fault file system: failing, short, late and hanging ones."""

import errno
import time
from dataclasses import dataclass

from fault_case import INTERRUPTED, TRANSFER, case

SCRATCH = "IOT1.tio"  # IOT0.tio is taken by a file that is not the program's
CLIP = "clip.mov"
CLIP_MB = 1


def passes(trial, volume, name):
    """Openings of the data file for a phase that succeeded."""
    return sum(1 for o in volume.operations("open", name, "rw") if o.result >= 0)


def begin(trial, mode, *rules, more=(), **keywords):
    """A run on a fault volume with a person's own files, in one direction."""
    volume = trial.fault_volume(*rules)
    trial.add_own_files(volume.behind, **({CLIP: b"\x5b" * (CLIP_MB << 20)} if mode == "shared" else {}))
    trial.start(volume.place / CLIP if mode == "shared" else volume.place, mode, *more, **keywords)
    return volume


def subject(mode):
    """Direction, kind of transfer and name of the data file of a mode."""
    return ("reads", "read", CLIP) if mode == "shared" else ("writes", "write", SCRATCH)


def inexact_line(size):
    return f"Inexact number of bytes read, expected {TRANSFER} but read {size}, may affect performance calculations"


def check_against_trace(trial, volume, mode):
    """The program's counts are what the file system served; answers the number of errors."""
    direction, kind, name = subject(mode)
    served = volume.operations(kind, name)
    moved = [o.result for o in served if o.result > 0 or (o.result == 0 and kind == "write")]
    size = sum(moved)
    # The C library goes on after a short transfer until the whole one is done.
    transfers = len(moved) if trial.method == "mac" else size // TRANSFER
    errors = sum(1 for o in served + volume.operations("open", name, "rw") if o.result < 0)
    trial.check_counts(direction, transfers, size, errors)
    who = "Reader" if mode == "shared" else "Writer"
    trial.equal("lines of opened files", trial.run.output.count(f"{who} 0 opened file {volume.colon}{name}"),
                passes(trial, volume, name))
    ends = sum(1 for o in served if o.result == 0 and kind == "read")
    code = -39 if trial.method == "mac" else 0
    trial.equal("lines of file ends",
                trial.run.output.count(f"EOF detected reader 0 file {volume.colon}{name} err no ={code}"), ends)
    return errors


@dataclass(frozen=True)
class Fault:
    """A rule, the error line that it causes (by method), and whether the test then runs to its end."""
    name: str
    mode: str
    expected: str
    rule: str
    lines: dict
    times: int = 1
    passes: int = 3
    to_end: bool = False
    first: dict | None = None  # the number of the operation to hit, where the methods differ


EIO, EACCES = errno.EIO, errno.EACCES
FAULTS = (
    Fault("error on the third write", "writes", "the file ends and is opened again; one error and its line",
          f"write {SCRATCH} 3 3 error {EIO}",
          {"mac": "Error writing file {c} err no =5", "posix": "Error writing file {c} err no =0"}),
    Fault("error on the third write, to the end of the test", "writes",
          "one error, and the test goes on to its end; status 4",
          f"write {SCRATCH} 3 3 error {EIO}",
          {"mac": "Error writing file {c} err no =5", "posix": "Error writing file {c} err no =0"}, to_end=True),
    Fault("error on the third read", "shared", "the file ends and is opened again; one error and its line",
          f"read {CLIP} 3 3 error {EIO}",
          {"mac": "Error reading file {c} err no =5", "posix": "Error reading file {c} err no =0"}),
    Fault("error on the third read, to the end of the test", "shared", "one error, status 4",
          f"read {CLIP} 3 3 error {EIO}",
          {"mac": "Error reading file {c} err no =5", "posix": "Error reading file {c} err no =0"}, to_end=True),
    Fault("error on the second opening for writing", "writes", "one error and its line, then the test goes on",
          f"open {SCRATCH} 2 2 error {EACCES}",
          {"mac": "Error opening file {c} {n} err no 13", "posix": "Error opening file {c} err no -1"}),
    Fault("error on the second opening for reading", "shared", "one error and its line, then the test goes on",
          f"open {CLIP} {{}} {{}} error {EACCES}",
          {"mac": "Error opening file {c} err no 13", "posix": "Error opening file {c} err no -1"},
          first={"mac": 2, "posix": 3}),  # the C streams look first whether the file can be opened
    Fault("error on closing a written file", "writes", "closing is not judged: no error, no line",
          f"close {SCRATCH} 2 3 error {EIO}", {}, times=0),
    Fault("error on closing a read file", "shared", "closing is not judged: no error, no line",
          f"close {CLIP} 1 3 error {EIO}", {}, times=0),
)


def run_fault(trial, fault):
    _, kind, name = subject(fault.mode)
    first = (fault.first or {}).get(trial.method)
    volume = begin(trial, fault.mode, fault.rule.format(first, first))
    if fault.to_end:
        trial.run.end(90)
    else:
        trial.reached("the passes after the fault", lambda: passes(trial, volume, name) >= fault.passes)
        trial.run.interrupt()
    trial.check_end(4 if fault.to_end else INTERRUPTED, volume.behind)
    trial.equal("errors that the rule made", check_against_trace(trial, volume, fault.mode), fault.times)
    trial.equal("hits of the rule", sum(1 for k in ("open", "close", "read", "write")
                                        for o in volume.operations(k, name) if o.result < 0),
                fault.times or (2 if kind == "write" else 3))
    line = fault.lines.get(trial.method, "").format(c=f"{volume.colon}{name}", n=volume.place / name)
    trial.check_errors([line] * fault.times)
    if fault.times:
        trial.check_told(line)


for each in FAULTS:
    case(each.name, each.expected, minutes=1 if each.to_end else 0)(
        lambda trial, fault=each: run_fault(trial, fault))


@case("error on the third write of a test that reads as well",
      "counted for the writes; the window's alarm lasts as long as it shows them; status 4", minutes=1)
def error_before_reading(trial):
    volume = begin(trial, "mixed", f"write {SCRATCH} 3 3 error {EIO}")
    if trial.is_window:
        trial.reached("the alarm", lambda: trial.run.readouts("Errors") == [("1", "alarm")], 10)
    trial.run.end(90)
    trial.check_end(4, volume.behind)
    for direction, kind, name, errors in (("writes", "write", SCRATCH, 1), ("reads", "read", "IOT2.tio", 0)):
        moved = [o.result for o in volume.operations(kind, name) if o.result > 0]
        trial.check_counts(direction, len(moved), sum(moved), errors)
    trial.check_errors([f"Error writing file {volume.colon}{SCRATCH} err no ={5 if trial.method == 'mac' else 0}"])


@case("every write fails, to the end of the test", "an error and a line for each attempt; short, status 4", minutes=1)
def every_write_fails(trial):
    volume = begin(trial, "writes", f"write {SCRATCH} 1 0 error {EIO}")
    trial.run.end(90)
    trial.check_end(4, volume.behind)
    errors = check_against_trace(trial, volume, "writes")
    number = 5 if trial.method == "mac" else 0
    trial.check_errors([f"Error writing file {volume.colon}{SCRATCH} err no ={number}"] * errors)
    trial.check_verdict("short")
    trial.equal("attempts were made", errors > 100, True)


@case("no opening succeeds", "at most sixty attempts a second, each counted and logged")
def no_opening_succeeds(trial):
    volume = begin(trial, "writes", f"open {SCRATCH} 1 0 error {EACCES}")
    trial.reached("an attempt", lambda: volume.operations("open", SCRATCH, "rw"))
    first, began = len(volume.operations("open", SCRATCH, "rw")), time.monotonic()
    trial.reached("a hundred attempts", lambda: len(volume.operations("open", SCRATCH, "rw")) >= first + 100)
    took = time.monotonic() - began
    trial.run.interrupt()
    trial.check_end(INTERRUPTED, volume.behind)
    errors = check_against_trace(trial, volume, "writes")
    line = f"Error opening file {volume.colon}{SCRATCH} {volume.place / SCRATCH} err no 13"
    if trial.method == "posix":
        line = f"Error opening file {volume.colon}{SCRATCH} err no -1"
    trial.check_errors([line] * errors)
    trial.equal("a hundred attempts took 1.6 s at least", took > 1.6, True)


@case("no file can be created to write", "each attempt fails, is counted and logged; nothing is left")
def nothing_can_be_created(trial):
    volume = begin(trial, "writes", f"create * 1 0 error {EACCES}")
    # Long enough for the window to show the phase: it looks once a second.
    trial.reached("a hundred attempts", lambda: len(volume.operations("create", SCRATCH, "rw")) >= 100)
    trial.run.interrupt()
    trial.check_end(INTERRUPTED, volume.behind)
    # The first creation reserves the name; each further one is an opening that counts.
    errors = len(volume.operations("create", SCRATCH, "rw")) - 1
    trial.check_counts("writes", 0, 0, errors)
    line = f"Error opening file {volume.colon}{SCRATCH} {volume.place / SCRATCH} err no 13"
    if trial.method == "posix":
        line = f"Error opening file {volume.colon}{SCRATCH} err no -1"
    trial.check_errors([line] * errors)


# Reading from a new file: what can go wrong while it is made. The test ends at once then, as there is nothing to read.
PREPARATIONS = (
    ("no file can be created to read", "create * 1 0 error 13",
     "Error: could not create sample file for read test {c} err no {e}", {"mac": (1, 13), "posix": (1, -1)}),
    ("error on each write of the file to read", "write * 1 0 error 28",
     "Error writing sample data to file {c} for read test. err no ={e}", {"mac": (1, 28), "posix": (1, 0)}),
    # Earlier closings are those of reserving the name and, with mac, of making sure of the file.
    ("error on closing the file to read", "close * {} 0 error 5",
     "Error writing sample data to file {c} for read test. err no ={e}", {"mac": (3, 5), "posix": (2, 512)}),
)


def run_preparation(trial, rule, line, hits):
    first, number = hits[trial.method]
    volume = begin(trial, "reads", rule.format(first))
    trial.run.end(30)
    trial.check_end(4, volume.behind)
    trial.check_errors([line.format(c=f"{volume.colon}{SCRATCH}", e=number)])
    trial.check_counts("reads", 0, 0, 1, is_begun=False)
    trial.equal("reads that the file system saw", volume.operations("read", SCRATCH), [])
    trial.check_verdict("short")


for title, the_rule, the_line, the_hits in PREPARATIONS:
    case(title, "one error and its line; the read phase is skipped, the test ends with status 4")(
        lambda trial, rule=the_rule, line=the_line, hits=the_hits: run_preparation(trial, rule, line, hits))


def run_short(trial, mode, size):
    _, kind, name = subject(mode)
    volume = begin(trial, mode, f"{kind} {name} 2 2 short {size}")
    trial.reached("three passes", lambda: passes(trial, volume, name) >= 3)
    trial.run.interrupt()
    trial.check_end(INTERRUPTED, volume.behind)
    trial.equal("errors", check_against_trace(trial, volume, mode), 0)
    trial.equal("what the second transfer moved", volume.operations(kind, name)[1].result, size)
    inexact = [o.result for o in volume.operations(kind, name) if 0 < o.result < TRANSFER]
    if mode == "writes" or trial.method == "posix":
        inexact = []
    trial.check_errors(map(inexact_line, inexact))


for the_mode, the_size, outcome in (
        ("writes", 100000, "mac counts it with its bytes; C streams write the rest"),
        ("writes", 0, "mac counts a write of 0 bytes; C streams write on"),
        ("shared", 100000, "mac counts it and tells that it was inexact; C streams read the rest"),
        ("shared", 0, "the end of the file")):
    case(f"short {'read' if the_mode == 'shared' else 'write'} of {the_size} bytes", outcome)(
        lambda trial, mode=the_mode, size=the_size: run_short(trial, mode, size))


def check_threshold(trial, direction, seconds):
    """The window can set no threshold."""
    word = "Read" if direction == "reads" else "Write"
    for log in (trial.run.output, trial.run.errors):
        trial.equal("warnings of the threshold",
                    log.count(rf"WARNING: {word} Over Threshold reader 0 MS={seconds}[01]\d\d at time"), 1)
    document = trial.run.document
    trial.equal("transfers over the threshold", document.get("transfersOverThreshold"), 1)
    worst_us = (document.get(direction) or {}).get("late", {}).get("worstUs", 0)
    trial.between("worst lateness in us", worst_us, (seconds * 1000 - 250) * 1000, (seconds * 1000 - 50) * 1000)


def run_delay(trial, mode, seconds, to_end=False):
    direction, kind, name = subject(mode)
    volume = begin(trial, mode, f"{kind} {name} 3 3 delay {seconds * 1000}",
                   more=() if trial.is_window else ("--threshold-ms", "1500"))
    if to_end:
        trial.run.end(seconds + 70)
    else:
        trial.reached("three passes", lambda: passes(trial, volume, name) >= 3, seconds + 30)
        trial.run.interrupt()
    trial.check_end(1 if to_end else INTERRUPTED, volume.behind)
    trial.equal("errors", check_against_trace(trial, volume, mode), 0)
    if not trial.is_window:
        check_threshold(trial, direction, seconds)


case("a write takes 2 s", "counted as late and over the threshold, warned of once in both logs, no error")(
    lambda trial: run_delay(trial, "writes", 2))
case("a read takes 2 s", "counted as late and over the threshold, warned of once in both logs, no error")(
    lambda trial: run_delay(trial, "shared", 2))
case("a write takes 60 s", "the phase is over when it is back; counted, short, status 1", minutes=1, is_long=True)(
    lambda trial: run_delay(trial, "writes", 60, to_end=True))
