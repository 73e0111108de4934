#!/usr/bin/env python3
"""Compares what gaugeline-cli measures and costs with what fio does, and fio with itself, in one table.

    Benchmarks/compare_with_fio.py [OPTION...] DIRECTORY

Rates are in MB/s (2^20 bytes). A difference between two medians that is less than the spread of fio against itself is
none. What makes it a comparison:

- One transfer at a time, with the clock read around each: fio's psync engine with its latency clocks on.
- Both rates are bytes by the time of the phase, opening and closing files included; making the file that is read is not.
- Writes: each run begins without a file and writes it from its start to its limit again and again: the first pass
  allocates it, the later ones overwrite it in place. For fio that is overwrite=0 and fallocate=none; neither flushes at
  the end. Both reopen the file for each pass and write the same byte, so that storage which compresses gains nothing on
  either side.
- Reads: each run reads a new file that was written in full by blocks of 4 MB of the same byte, flushed and then left
  alone for the same time, again and again. Both drop what the cache holds of it first unless the cache is measured.
- The runs of a round change places from round to round, so that storage which gets slower with time favours none.
- Processor time by bytes, and memory, are those of the kernel's counts in the middle of each run, the same for both
  programs: starting and reporting are left out.
- Paced transfers: a library that is loaded into both programs (WriteTimes.cpp) notes when each write begins.
"""

import argparse
import json
import shutil
import signal
import statistics
import struct
import subprocess
import sys
import tempfile
import time
from collections import defaultdict
from pathlib import Path

from measured_run import MeasuredRun

ROOT = Path(__file__).resolve().parents[1]
WRITE_TIMES = ROOT / "build/release/Benchmarks/libgaugeline_write_times.so"
MB = 1 << 20
ORDERS = (("fio", "gaugeline", "fio again"), ("gaugeline", "fio again", "fio"), ("fio again", "fio", "gaugeline"))
PACES = ((250, 1024, 4096), (10, 64, 6400))  # ms between transfers, KB of one, KB/s


def arguments():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("directory", type=Path)
    parser.add_argument("--rounds", type=int, default=10, help="runs of each program for a row (%(default)s)")
    parser.add_argument("--seconds", type=float, default=4.0, help="of each run, below 60 (%(default)s)")
    parser.add_argument("--blocks", default="8192,1024,256", metavar="KB,...", help="transfer sizes (%(default)s)")
    parser.add_argument("--directions", default="write,read", help="(%(default)s)")
    parser.add_argument("--file-mb", type=int, default=800, help="a multiple of 8 (%(default)s)")
    parser.add_argument("--cached", action="store_true", help="through the file cache; without it, round the cache")
    parser.add_argument("--paced", action="store_true", help="paced transfers in the place of unlimited ones")
    parser.add_argument("--program", type=Path, default=ROOT / "build/release/Source/Programs/gaugeline-cli")
    options = parser.parse_args()
    if not options.directory.is_dir():
        parser.error(f"{options.directory} is no directory")
    if options.file_mb % 8 != 0 or options.rounds < 1 or not 2 <= options.seconds < 60:
        parser.error("the file's size is a multiple of 8 MB, there is a round at least, and 2 to 60 seconds")
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

    def fio_words(self, name, *more):
        options = self._options
        return ["fio", f"--name={name}", f"--filename={self._folder / 'fio'}", "--ioengine=psync",
                f"--direct={0 if options.cached else 1}", f"--size={options.file_mb}m", "--overwrite=0",
                "--fallocate=none", "--output-format=json", f"--output={self._notes / 'fio.json'}", *more]

    def gaugeline_words(self, direction, block_kb, rate):
        options = self._options
        return [options.program, "--path", self._folder, "--mode", direction + "s", "--method", "mac", "--transfer-kb",
                str(block_kb), "--rate-kbps", str(rate), "--limit-mb", str(options.file_mb), "--minutes", "1",
                "--quiet", "--json", self._notes / "gaugeline.json", *(["--cache"] if options.cached else [])]

    def fio(self, direction, block_kb):
        """(MB/s, processor seconds by GB, memory in MB)"""
        options = self._options
        (self._folder / "fio").unlink(missing_ok=True)
        if direction == "read":
            subprocess.run(self.fio_words("make", "--rw=write", "--bs=4m", "--buffer_pattern=0x5b", "--end_fsync=1"),
                           check=True, stdout=subprocess.DEVNULL)
            time.sleep(1.1)
        run = MeasuredRun(self.fio_words("compare", f"--rw={direction}", f"--bs={block_kb}k", "--buffer_pattern=0x1a",
                                         f"--invalidate={0 if options.cached else 1}", "--time_based",
                                         f"--runtime={options.seconds}"), direction)
        used = self._middle_of(run, block_kb)
        if run.end() != 0:
            raise RuntimeError("fio failed")
        (self._folder / "fio").unlink()
        figures = json.loads((self._notes / "fio.json").read_text())["jobs"][0][direction]
        return figures["io_bytes"] / figures["runtime"] * 1000 / MB, *used

    def gaugeline(self, direction, block_kb):
        run = MeasuredRun(self.gaugeline_words(direction, block_kb, "unlimited"), direction)
        used = self._middle_of(run, block_kb)
        time.sleep(0.2)
        run.end(signal.SIGINT)
        document = json.loads((self._notes / "gaugeline.json").read_text())
        self.cache = document["cache"]["mode"] + (", in memory only" if document["cache"]["volatile"] else "")
        figures = document[direction + "s"]
        if figures["errors"] != 0:
            raise RuntimeError(f"gaugeline-cli counted {figures['errors']} errors")
        return figures["bytes"] / figures["seconds"] / MB, *used

    def _middle_of(self, run, block_kb):
        run.wait_for_bytes(block_kb * 1024)
        time.sleep(0.5)
        before = run.usage()
        time.sleep(self._options.seconds - 0.8)
        used = run.usage().since(before)
        return used.cpu_seconds / used.bytes_moved * (1 << 30), used.memory_kb / 1024

    def starts_of_paced_writes(self, program, pace):
        """Times in seconds at which the writes of the transfer's size began."""
        _, block_kb, rate = pace
        if program == "gaugeline":
            words = self.gaugeline_words("write", block_kb, rate)
        else:
            (self._folder / "fio").unlink(missing_ok=True)
            words = self.fio_words("paced", "--rw=write", f"--bs={block_kb}k", f"--rate={rate}k", "--time_based",
                                   "--runtime=60")
        times = self._notes / "times"
        times.unlink(missing_ok=True)
        run = MeasuredRun(words, "write", {"LD_PRELOAD": WRITE_TIMES, "GAUGELINE_WRITE_TIMES": times,
                                           "GAUGELINE_WRITE_SIZE": str(block_kb * 1024)})
        time.sleep(2 + self._options.seconds)
        run.end(signal.SIGINT)
        return [nanoseconds / 1e9 for nanoseconds, in struct.iter_unpack("=Q", times.read_bytes())]


def spread(values):
    return f"{statistics.median(values):.3f} ({min(values):.2f} to {max(values):.2f})"


def compare_rates(comparison, options):
    print("| transfers | fio MB/s | gaugeline MB/s | gaugeline/fio | fio/fio | s/GB fio | s/GB gaugeline | MB fio "
          "| MB gaugeline |\n|---|---|---|---|---|---|---|---|---|", flush=True)
    for direction in options.directions.split(","):
        for block_kb in map(int, options.blocks.split(",")):
            seen = defaultdict(list)
            for index in range(options.rounds):
                for name in ORDERS[index % 3]:
                    run = comparison.gaugeline if name == "gaugeline" else comparison.fio
                    seen[name].append(run(direction, block_kb))
            rates = {name: [values[0] for values in rows] for name, rows in seen.items()}
            middle = {name: [statistics.median(column) for column in zip(*rows)] for name, rows in seen.items()}
            ours = [mine / first for mine, first in zip(rates["gaugeline"], rates["fio"])]
            noise = [second / first for second, first in zip(rates["fio again"], rates["fio"])]
            print(f"| {direction}s of {block_kb} KB | {middle['fio'][0]:.0f} | {middle['gaugeline'][0]:.0f} | "
                  f"{spread(ours)} | {spread(noise)} | {middle['fio'][1]:.3f} | {middle['gaugeline'][1]:.3f} | "
                  f"{middle['fio'][2]:.0f} | {middle['gaugeline'][2]:.0f} |", flush=True)
    print(f"\n{options.rounds} rounds of {options.seconds:g} s, file of {options.file_mb} MB, "
          f"{'through' if options.cached else 'round'} the file cache; that of gaugeline's runs: {comparison.cache}")


def compare_paces(comparison, options):
    print("| paced writes | program | intervals | mean, ms | mean error, ms | median error, ms | jitter, ms | worst, ms |"
          "\n|---|---|---|---|---|---|---|---|", flush=True)
    for pace in PACES:
        intervals = defaultdict(list)
        for index in range(options.rounds):
            for name in ORDERS[index % 3]:
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
