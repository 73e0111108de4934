#!/usr/bin/env python3
"""Runs gaugeline-cli on storage that fails, and checks exit status, counts, logs, JSON and what is left behind.

    Tests/Faults/run_faults.py [--program PATH] [--file-system PATH] [--long] [--only TEXT] [--write-table FILE]

Exit status 0 when no case failed; a case that cannot run here is skipped, with the reason. Volumes are mounted in
temporary folders, which needs root for some of the cases and /dev/fuse for most.
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
from fault_case import CASES, run_case

ROOT = Path(__file__).resolve().parents[2]

INTRODUCTION = """# What happens when the storage fails

The faults below are made on purpose while `gaugeline-cli` runs, and what it does is compared with what it should do:
exit status, transfers, bytes and errors (against what the faulty storage itself has served), the lines of both logs
with their opening and closing banners, the JSON document, the files left behind, and the files of others beside them.

`Tests/Faults/run_faults.py --write-table` made this page. Single operations fail through a small file system of the
tests' own (`FaultFileSystem.cpp`), seeks and the switching of O_DIRECT through `strace`, which makes the system call
fail (the kernel accepts the switch on a FUSE file without asking its file system); full, vanishing and read-only
volumes are real ones: tmpfs, and ext4 on a loop device. Tests are paced, 256 KB each 250 ms, and mostly ended by SIGINT
(status 130) once they have met their fault; the rest run to their end. The verdicts are those of such short tests, in
which reading the end of a small file costs a large part of the time. `mac` and `posix` are the two file methods.
"""


def arguments():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--program", type=Path, default=ROOT / "build/release/Source/Programs/gaugeline-cli")
    parser.add_argument("--file-system", type=Path,
                        default=ROOT / "build/release/Tests/Faults/gaugeline_fault_file_system")
    parser.add_argument("--parallel", type=int, default=8, help="cases at a time; they sleep mostly")
    parser.add_argument("--long", action="store_true", help="with the cases that take more than a minute and a half")
    parser.add_argument("--only", default="", metavar="TEXT", help="cases whose name contains this")
    parser.add_argument("--method", choices=("mac", "posix"), help="cases of this method")
    parser.add_argument("--write-table", type=Path, metavar="FILE")
    return parser.parse_args()


def write_table(path, rows):
    lines = [INTRODUCTION]
    counts = Counter(result[0] for _, result in rows)
    lines.append(f"Taken on Linux {platform.release().split('-')[0]}: {counts['passed']} of {len(rows)} cases passed, "
                 f"{counts['skipped']} could not run, {counts['FAILED']} failed; "
                 f"{sum(result[1] for _, result in rows)} expectations were checked.\n")
    lines += ["| case | method | expected | seen | outcome |", "|---|---|---|---|---|"]
    for (_, name, expected, method, _, _), (outcome, _, seen, failures) in rows:
        cells = (name, method, expected, "; ".join([seen, *failures]) if failures else seen, outcome)
        lines.append("| " + " | ".join(cell.replace("|", "\\|") for cell in cells) + " |")
    path.write_text("\n".join(lines) + "\n", encoding="utf-8")


def main():
    options = arguments()
    if not options.program.is_file():
        sys.exit(f"run_faults: {options.program} is not there; build the program or give --program")
    chosen = [entry for entry in CASES if options.only in entry[1] and options.method in (None, entry[3])
              and (options.long or not entry[4])]
    if not chosen:
        sys.exit(f"run_faults: no case is named like '{options.only}'")
    began = time.monotonic()
    longest_first = sorted(chosen, key=lambda entry: -entry[0])

    def run(entry):
        result = run_case(entry, options.program.resolve(), options.file_system.resolve())
        outcome, checked, seen, failures = result
        lines = [f"{outcome:7}  {entry[3]:5}  {entry[1]}  ({checked} checks; {seen})", *failures]
        sys.stdout.write("\n           ".join(lines) + "\n")
        sys.stdout.flush()
        return result

    with ThreadPoolExecutor(options.parallel) as workers:
        results = dict(zip(map(id, longest_first), workers.map(run, longest_first)))
    rows = [(entry, results[id(entry)]) for entry in chosen]
    if options.write_table:
        write_table(options.write_table, rows)
    counts = Counter(result[0] for _, result in rows)
    print(f"\n{counts['passed']} passed, {counts['skipped']} skipped, {counts['FAILED']} failed, "
          f"{sum(result[1] for _, result in rows)} checks, {time.monotonic() - began:.0f} s")
    sys.exit(1 if counts["FAILED"] else 0)


if __name__ == "__main__":
    os.environ["LC_ALL"] = "C"
    main()
