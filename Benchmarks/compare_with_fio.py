#!/usr/bin/env python3
"""Compares what gaugeline-cli measures and costs with what fio does, and fio with itself, in one table.

    Benchmarks/compare_with_fio.py [OPTION...] DIRECTORY

Rates are in MB/s (2^20 bytes). Ratios are those of the medians over all rounds, in brackets the lowest and the highest
of a round. fio runs twice in each: what the second differs from the first is the noise, and a difference that is less
than this is none. What makes it a comparison:

- One transfer at a time, with the clock read around each: fio's psync engine with its latency clocks on.
- One file for all runs of a round: the scratch file of gaugeline-cli, which fio gets under a second name. In memory as
  on a disk, where a file lies decides more than who reads it: on a tmpfs two files differ by up to 20 %. It is there in
  full before anything is measured, so that writes overwrite it in place; both write one byte again and again, reopen
  the file for each pass, and, unless the cache is measured, drop what the cache holds of it first.
- The three of a round take turns: while one is measured for a fraction of a second, the others are stopped (SIGSTOP).
  What else the machine does, and storage that gets slower with time, meets all three alike.
- Bytes, processor time and memory are the kernel's counts during these turns, the same for both programs: starting,
  making the file and reporting are left out; opening and closing it for each pass are not.
- Paced transfers: a library that is loaded into both programs (WriteTimes.cpp) notes when each write begins.
"""

import argparse
import contextlib
import itertools
import json
import shutil
import statistics
import struct
import sys
import tempfile
import time
from collections import defaultdict
from pathlib import Path

from measured_run import MeasuredRun, Usage

ROOT = Path(__file__).resolve().parents[1]
WRITE_TIMES = ROOT / "build/release/Benchmarks/libgaugeline_write_times.so"
MB = 1 << 20
ORDERS = tuple(itertools.permutations(("fio", "gaugeline", "fio again")))
PACES = ((250, 1024, 4096), (10, 64, 6400))  # ms between transfers, KB of one, KB/s


def arguments():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("directory", type=Path)
    parser.add_argument("--rounds", type=int, default=7, help="with new processes and a new file (%(default)s)")
    parser.add_argument("--turns", type=int, default=12, help="of each program in a round (%(default)s)")
    parser.add_argument("--seconds", type=float, help="of a turn (0.3), or of a paced run (8)")
    parser.add_argument("--blocks", default="8192,1024,256", metavar="KB,...", help="transfer sizes (%(default)s)")
    parser.add_argument("--directions", default="write,read", help="(%(default)s)")
    parser.add_argument("--file-mb", type=int, default=800, help="a multiple of 8 (%(default)s)")
    parser.add_argument("--cached", action="store_true", help="through the file cache; without it, round the cache")
    parser.add_argument("--paced", action="store_true", help="paced transfers in the place of unlimited ones")
    parser.add_argument("--program", type=Path, default=ROOT / "build/release/Source/Programs/gaugeline-cli")
    options = parser.parse_args()
    if options.seconds is None:
        options.seconds = 8.0 if options.paced else 0.3
    if not options.directory.is_dir():
        parser.error(f"{options.directory} is no directory")
    if options.file_mb % 8 != 0 or min(options.rounds, options.turns) < 1 or not 0.1 <= options.seconds < 60:
        parser.error("the file's size is a multiple of 8 MB, there is one of all at least, and 0.1 to 60 seconds")
    if shutil.which("fio") is None:
        parser.error("fio is missing (scripts/install-dependencies.sh compare)")
    for file in (options.program, WRITE_TIMES):
        if not file.is_file():
            parser.error(f"{file} is not there; ./test.sh builds it")
    return options


class Comparison:
    """The runs of both programs in a folder of their own on the storage."""

    def __init__(self, options, folder, notes):
        self._options, self._folder, self._notes = options, folder, notes
        self.cache = ""

    def fio_words(self, name, file, *more):
        options = self._options
        return ["fio", f"--name={name}", f"--filename={file}", "--ioengine=psync",
                f"--direct={0 if options.cached else 1}", f"--size={options.file_mb}m", "--fallocate=none",
                "--output-format=json", f"--output={self._notes / 'fio.json'}", *more]

    def gaugeline_words(self, direction, block_kb, rate):
        options = self._options
        return [options.program, "--path", self._folder, "--mode", direction + "s", "--method", "mac", "--transfer-kb",
                str(block_kb), "--rate-kbps", str(rate), "--limit-mb", str(options.file_mb), "--minutes", "59",
                "--quiet", "--json", self._notes / "gaugeline.json", *(["--cache"] if options.cached else [])]

    def round(self, direction, block_kb):
        """Each program's usage in its turns on one file, by name."""
        with contextlib.ExitStack() as runs:
            ours = runs.enter_context(MeasuredRun(self.gaugeline_words(direction, block_kb, "unlimited"), direction))
            # A whole pass first: it allocates the file that is written.
            ours.wait_for_bytes(self._options.file_mb * MB + block_kb * 1024)
            ours.pause()
            file, = self._folder.glob("*.tio")
            names = {"gaugeline": ours}
            for name in ("fio", "fio again"):
                run = names[name] = runs.enter_context(self._fio(file, direction, block_kb))
                run.wait_for_bytes(block_kb * 1024)
                run.pause()
            used = self._take_turns(names)
            if (self._folder / "fio").stat().st_nlink != 2:
                raise RuntimeError("fio made a file of its own")
            (self._folder / "fio").unlink()
        document = json.loads((self._notes / "gaugeline.json").read_text())
        self.cache = document["cache"]["mode"] + (", in memory only" if document["cache"]["volatile"] else "")
        if document[direction + "s"]["errors"] != 0:
            raise RuntimeError(f"gaugeline-cli counted {document[direction + 's']['errors']} errors")
        return used

    def _fio(self, file, direction, block_kb):
        name = self._folder / "fio"
        if not name.exists():
            name.hardlink_to(file)
        return MeasuredRun(self.fio_words("compare", name, f"--rw={direction}", f"--bs={block_kb}k", "--overwrite=1",
                                          "--buffer_pattern=0x1a", f"--invalidate={0 if self._options.cached else 1}",
                                          "--time_based", "--runtime=3000"), direction)

    def _take_turns(self, runs):
        used = {name: Usage() for name in runs}
        for turn in range(self._options.turns):
            for name in ORDERS[turn % len(ORDERS)]:
                run = runs[name]
                run.resume()
                time.sleep(0.05)
                before = run.usage()
                time.sleep(self._options.seconds)
                used[name].add(run.usage().since(before))
                run.pause()
        return used

    def starts_of_paced_writes(self, program, pace):
        """Times in seconds at which the writes of the transfer's size began."""
        _, block_kb, rate = pace
        if program == "gaugeline":
            words = self.gaugeline_words("write", block_kb, rate)
        else:
            (self._folder / "fio").unlink(missing_ok=True)
            words = self.fio_words("paced", self._folder / "fio", "--overwrite=0", "--rw=write",
                                   f"--bs={block_kb}k", f"--rate={rate}k", "--time_based", "--runtime=60")
        times = self._notes / "times"
        times.unlink(missing_ok=True)
        with MeasuredRun(words, "write", {"LD_PRELOAD": WRITE_TIMES, "GAUGELINE_WRITE_TIMES": times,
                                          "GAUGELINE_WRITE_SIZE": str(block_kb * 1024)}):
            time.sleep(2 + self._options.seconds)
        return [nanoseconds / 1e9 for nanoseconds, in struct.iter_unpack("=Q", times.read_bytes())]


FIGURES = {
    "rate": lambda used: used.bytes_moved / used.at / MB,
    "cost": lambda used: used.cpu_seconds / used.bytes_moved * (1 << 30),
    "memory": lambda used: used.memory_kb / 1024,
}


def median(rounds, name, figure):
    return statistics.median(FIGURES[figure](used[name]) for used in rounds)


def ratio(rounds, name, figure):
    """Of a program to fio's first runs."""
    by_round = [FIGURES[figure](used[name]) / FIGURES[figure](used["fio"]) for used in rounds]
    middle = median(rounds, name, figure) / median(rounds, "fio", figure)
    return f"{middle:.3f} ({min(by_round):.2f} to {max(by_round):.2f})"


def compare_rates(comparison, options):
    print("| transfers | MB/s: fio | gaugeline | gaugeline/fio | fio/fio | s/GB: fio | gaugeline | gaugeline/fio "
          "| fio/fio | MB: fio | gaugeline |\n|---|---|---|---|---|---|---|---|---|---|---|", flush=True)
    for direction in options.directions.split(","):
        for block_kb in map(int, options.blocks.split(",")):
            rounds = [comparison.round(direction, block_kb) for _ in range(options.rounds)]
            fio, ours = ({figure: median(rounds, name, figure) for figure in FIGURES} for name in ("fio", "gaugeline"))
            print(f"| {direction}s of {block_kb} KB | {fio['rate']:.0f} | {ours['rate']:.0f} "
                  f"| {ratio(rounds, 'gaugeline', 'rate')} | {ratio(rounds, 'fio again', 'rate')} "
                  f"| {fio['cost']:.3f} | {ours['cost']:.3f} "
                  f"| {ratio(rounds, 'gaugeline', 'cost')} | {ratio(rounds, 'fio again', 'cost')} "
                  f"| {fio['memory']:.0f} | {ours['memory']:.0f} |", flush=True)
    print(f"\n{options.rounds} rounds of {options.turns} turns of {options.seconds:g} s, file of {options.file_mb} MB, "
          f"{'through' if options.cached else 'round'} the file cache; that of gaugeline's runs: {comparison.cache}")


def compare_paces(comparison, options):
    print("| paced writes | program | intervals | mean, ms | mean error, ms | median error, ms | jitter, ms | worst, ms |"
          "\n|---|---|---|---|---|---|---|---|", flush=True)
    for pace in PACES:
        intervals = defaultdict(list)
        for index in range(options.rounds):
            for name in ORDERS[index % len(ORDERS)]:
                starts = comparison.starts_of_paced_writes(name, pace)
                intervals[name] += [(after - before) * 1000 for before, after in zip(starts[2:], starts[3:])]
        for name, values in sorted(intervals.items()):
            errors = [abs(value - pace[0]) for value in values]
            print(f"| {pace[1]} KB each {pace[0]} ms | {name} | {len(values)} | {statistics.fmean(values):.3f} | "
                  f"{statistics.fmean(errors):.3f} | {statistics.median(errors):.3f} | {statistics.pstdev(values):.3f} "
                  f"| {max(errors):.2f} |", flush=True)


def main():
    options = arguments()
    with tempfile.TemporaryDirectory(dir=options.directory, prefix="compare-") as folder, \
            tempfile.TemporaryDirectory() as notes:
        comparison = Comparison(options, Path(folder).resolve(), Path(notes))
        (compare_paces if options.paced else compare_rates)(comparison, options)


if __name__ == "__main__":
    sys.exit(main())
