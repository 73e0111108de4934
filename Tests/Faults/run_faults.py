#!/usr/bin/env python3
"""Runs both programs on storage that fails, and checks what they count, write, show and leave behind.

    Tests/Faults/run_faults.py [--window [only]] [--programs FOLDER] [--file-system PATH] [--long] [--only TEXT]
                               [--method METHOD] [--retry] [--write-table FILE]

Without --window only gaugeline-cli runs. Exit status 0 when no case failed; a case that cannot run here is skipped,
with the reason. Volumes are mounted in temporary folders, which needs root for some of the cases and /dev/fuse for
most. Each window has a display of its own, and is driven by its keys and read off its pixels and by what it tells
assistive programs: that needs Xvfb, openbox, xdotool, ImageMagick, at-spi2-core, dbus and python3-gi.
"""

import argparse
import os
import platform
import sys
import time
from collections import Counter
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

import hang_cases  # noqa: F401  (each of these registers its cases)
import transfer_cases  # noqa: F401
import volume_cases  # noqa: F401
from fault_case import CASES, PROGRAMS, run_case

ROOT = Path(__file__).resolve().parents[2]
BINARIES = {"headless": "gaugeline-cli", "window": "gaugeline"}

INTRODUCTION = """# What happens when the storage fails

The faults below are made on purpose while a test runs, in `gaugeline-cli` (headless) and in the desktop program
(window), and what happens is compared with what should happen: exit status, transfers, bytes and errors (against what
the faulty storage itself has served), the lines of both logs with their opening and closing banners, the JSON document,
the files left behind, and the files of others beside them.

`Tests/Faults/run_faults.py --window --write-table` made this page. Single operations fail through a small file system
of the tests' own (`FaultFileSystem.cpp`), seeks and the switching of O_DIRECT through `strace`, which makes the system
call fail (the kernel accepts the switch on a FUSE file without asking its file system); full, vanishing and read-only
volumes are real ones: tmpfs, and ext4 on a loop device. Tests are paced, 256 KB each 250 ms, and mostly ended by SIGINT
(status 130) once they have met their fault; the rest run to their end. The verdicts are those of such short tests, in
which reading the end of a small file costs a large part of the time. `mac` and `posix` are the two file methods.

The window is on a display of its own. The settings are made with its mouse and keyboard, Ctrl+R starts the test and
Ctrl+. stops it where a signal ends the headless one. Transfers and errors are then read off the pixels of the
readouts, which show no bytes, and only those of the direction that came last; the errors have to be red exactly when
there are any. With Ctrl+Q (`mac`) or SIGTERM (`posix`) the program then quits, always with status 0. A test that comes
to no phase leaves the readouts empty (no colours); its error is in the log. No alert may come that is not expected,
and nothing on standard error but the names of logs that lost lines. What the window cannot do is not in the list for
it: it has no threshold for slow transfers, writes no JSON, and waits for a transfer that hangs.

Signals at random moments are sent by `Tests/Faults/ask_to_end.py`, with `--window` to the desktop program: SIGINT,
SIGTERM and SIGHUP, some of them before the window is there or while its settings are typed, have to leave closed logs
and no scratch file, and so has a display that is gone; after SIGKILL the next start has to work beside the files left.
Its results are not in the table.
"""


def arguments():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--programs", type=Path, default=ROOT / "build/release/Source/Programs", metavar="FOLDER",
                        help="where gaugeline-cli and gaugeline are")
    parser.add_argument("--window", nargs="?", choices=("also", "only"), const="also",
                        help="with the cases of the desktop program, or these alone")
    parser.add_argument("--file-system", type=Path,
                        default=ROOT / "build/release/Tests/Faults/gaugeline_fault_file_system")
    parser.add_argument("--parallel", type=int, default=8, help="cases at a time; they sleep mostly")
    parser.add_argument("--windows", type=int, default=3, help="windows at a time")
    parser.add_argument("--long", action="store_true", help="with the cases that take more than a minute and a half")
    parser.add_argument("--only", default="", metavar="TEXT", help="cases whose name contains this")
    parser.add_argument("--method", choices=("mac", "posix"), help="cases of this method")
    parser.add_argument("--retry", action="store_true",
                        help="run a failed case once more, alone: for machines with much else to do")
    parser.add_argument("--write-table", type=Path, metavar="FILE")
    return parser.parse_args()


def write_table(path, rows):
    lines = [INTRODUCTION]
    counts = Counter(result[0] for _, result in rows)
    lines.append(f"Taken on Linux {platform.release().split('-')[0]}: {counts['passed']} of {len(rows)} cases passed, "
                 f"{counts['skipped']} could not run, {counts['FAILED']} failed; "
                 f"{sum(result[1] for _, result in rows)} expectations were checked.\n")
    lines += ["| case | method | program | expected | seen | outcome |", "|---|---|---|---|---|---|"]
    for entry, (outcome, _, seen, failures) in rows:
        cells = (entry.name, entry.method, entry.program, entry.expected, "; ".join([seen, *failures]), outcome)
        lines.append("| " + " | ".join(cell.replace("|", "\\|") for cell in cells) + " |")
    path.write_text("\n".join(lines) + "\n", encoding="utf-8")


def chosen_cases(options):
    programs = {None: ("headless",), "also": PROGRAMS, "only": ("window",)}[options.window]
    return [entry for entry in CASES if options.only in entry.name and options.method in (None, entry.method)
            and entry.program in programs and (options.long or not entry.is_long)]


def run_all(chosen, options):
    """The results by case. The headless ones first: windows need the processors, and these the time."""
    def run(entry):
        result = run_case(entry, (options.programs / BINARIES[entry.program]).resolve(), options.file_system.resolve())
        outcome, checked, seen, failures = result
        lines = [f"{outcome:7}  {entry.program:8}  {entry.method:5}  {entry.name}  ({checked} checks; {seen})",
                 *failures]
        sys.stdout.write("\n           ".join(lines) + "\n")
        sys.stdout.flush()
        return result

    results = {}
    for program, at_a_time in (("headless", options.parallel), ("window", options.windows)):
        longest_first = sorted((entry for entry in chosen if entry.program == program),
                               key=lambda entry: -entry.minutes)
        with ThreadPoolExecutor(at_a_time) as workers:
            results |= dict(zip(longest_first, workers.map(run, longest_first)))
    if options.retry:
        for entry in [entry for entry in chosen if results[entry][0] == "FAILED"]:
            print("once more, alone:", entry.name)
            results[entry] = run(entry)
    return results


def main():
    options = arguments()
    chosen = chosen_cases(options)
    if not chosen:
        sys.exit(f"run_faults: no case is named like '{options.only}'")
    for program in {entry.program for entry in chosen}:
        if not (options.programs / BINARIES[program]).is_file():
            sys.exit(f"run_faults: {options.programs / BINARIES[program]} is not there; build it or give --programs")
    began = time.monotonic()
    results = run_all(chosen, options)
    rows = [(entry, results[entry]) for entry in chosen]
    if options.write_table:
        write_table(options.write_table, rows)
    counts = Counter(result[0] for _, result in rows)
    print(f"\n{counts['passed']} passed, {counts['skipped']} skipped, {counts['FAILED']} failed, "
          f"{sum(result[1] for _, result in rows)} checks, {time.monotonic() - began:.0f} s")
    sys.exit(1 if counts["FAILED"] else 0)


if __name__ == "__main__":
    os.environ["LC_ALL"] = "C"
    main()
