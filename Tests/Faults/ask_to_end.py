#!/usr/bin/env python3
"""Asks a running test to end by signals at random moments, and looks at what it leaves.

    Tests/Faults/ask_to_end.py [--window] [--programs FOLDER] [--times N] [--seed N] [--parallel N]

After SIGINT, SIGTERM or SIGHUP, both logs have to end with their closing banner, no scratch file may be left and
the exit status is 128 + the signal's number; 0 for the window. The same goes for a window whose display is gone, as
when a session or a connection breaks off; its status is 1. Some ends come so early that the test, or the window, may
not be there; the program then may as well be ended in the usual way, but leaves no scratch file either. After SIGKILL
(a tenth as often), the next start has to work beside the files left, and leave them alone. Looping tests of both file
methods, of writes that turn to reads after half a minute and of reads, for which a file is made first.
"""

import argparse
import functools
import itertools
import random
import signal
import sys
import tempfile
import threading
import time
from collections import Counter
from concurrent.futures import ThreadPoolExecutor
from contextlib import contextmanager
from pathlib import Path

from fault_case import METHODS, snapshot
from program_run import ProgramRun
from window_run import WindowRun

ROOT = Path(__file__).resolve().parents[2]
SIGNALS = (signal.SIGINT, signal.SIGTERM, signal.SIGHUP)
DISPLAY_GONE = None  # in the place of a signal
PACE = ("--transfer-kb", "64", "--rate-kbps", "2048", "--limit-mb", "1", "--minutes", "1", "--loop")

# (share of the moments, mode, from, to), in seconds since the first scratch file; in the window, which takes up to two
# seconds to begin, since its start key. For "early", since the start of the program: the window may not be there, or
# its settings may just be typed. Half a minute after its start a mixed test removes its file, makes another and turns
# to reading it.
MOMENTS = {
    False: ((0.1, "early", 0.0, 0.05), (0.35, "mixed", 0.0, 3.0), (0.35, "reads", 0.0, 4.0),
            (0.2, "mixed", 29.0, 34.0)),
    True: ((0.1, "early", 0.0, 0.8), (0.15, "early", 0.8, 7.0), (0.25, "mixed", 0.0, 5.0), (0.3, "reads", 0.0, 6.0),
           (0.2, "mixed", 30.0, 36.0))}
COMES_UP = 2.0  # seconds, by which a program has come so far that it takes signals


def scratch_files(folder):
    return {name: seen for name, seen in snapshot(folder).items() if name.endswith(".tio")}


def launched(program, folder, method, mode):
    is_window = program.name == "gaugeline"
    return (WindowRun if is_window else ProgramRun)(
        program, folder / "files", ["--path", folder / "test", "--method", method, "--mode", mode, *PACE])


@contextmanager
def started(program, folder, method, mode, waits_for_file=True):
    """A run whose test has been started, and a scratch file of its own there if asked for. A window whose mode is
    "early" has just been started itself."""
    before = set(scratch_files(folder / "test"))
    run = launched(program, folder, method, "mixed" if mode == "early" else mode)
    try:
        if isinstance(run, WindowRun) and mode != "early":
            run.apply_settings()
            run.press_start()
        if waits_for_file and not run.wait_until(lambda: set(names(folder)) - before, 10):
            raise RuntimeError("no scratch file was made")
        yield run
    finally:
        run.close()


def names(folder):
    return [path.name for path in (folder / "test").glob("IOT*.tio")]


def type_settings(run):
    """Until a signal comes in between, which takes the windows away, and then the process."""
    try:
        run.apply_settings()
    except Exception:
        if not run.wait_until(lambda: not run.is_running(), 10):
            raise


def problems_after_end(run, folder, number, kept, is_early=False, may_be_killed=False):
    found = []
    is_window = isinstance(run, WindowRun)
    status = run.wait(30)
    usual = (1, -signal.SIGABRT) if number is DISPLAY_GONE else (-number,)
    if scratch_files(folder / "test") != kept:
        found.append(f"scratch files {sorted(names(folder))}, of which {sorted(kept)} were there before")
    if may_be_killed and status in usual:
        return found
    if status != (usual[0] if number is DISPLAY_GONE else 0 if is_window else 128 + number):
        found.append(f"exit status {status}")
    for which, log in (("output log", run.output), ("error log", run.errors)):
        if not log.is_closed and not (is_window and is_early and log.text == ""):
            found.append(f"the {which} has no closing banner")
    if not is_window and run.document.get("state") != "interrupted":
        found.append(f"state {run.document.get('state')} in the JSON document")
    return found


def ask(program, method, mode, moment, number):
    """One test and one signal; answers the problems."""
    with tempfile.TemporaryDirectory(prefix="gaugeline-asked-") as place:
        folder = Path(place)
        (folder / "test").mkdir()
        waits_for_file = mode != "early" and (number == signal.SIGKILL or program.name != "gaugeline")
        with started(program, folder, method, mode, waits_for_file) as run:
            end = run.lose_display if number is DISPLAY_GONE else functools.partial(run.send, number)
            asks = threading.Timer(moment, end)
            asks.start()
            if mode == "early" and isinstance(run, WindowRun):
                type_settings(run)
            asks.join()
            if number != signal.SIGKILL:
                is_early = mode == "early"
                return problems_after_end(run, folder, number, {}, is_early, is_early and moment < COMES_UP)
            run.wait(20)
        left = scratch_files(folder / "test")
        with started(program, folder, method, "mixed") as again:
            time.sleep(0.5)
            again.send(signal.SIGINT)
            found = problems_after_end(again, folder, signal.SIGINT, left)
            return found + ([] if again.output.count("Writer 0 opened file .*") else ["the next start wrote nothing"])


def plan(times, seed, is_window):
    """(method, mode, moment, signal) of each run."""
    chance = random.Random(seed)
    moments = MOMENTS[is_window]
    signals = itertools.cycle((DISPLAY_GONE, *SIGNALS) if is_window else SIGNALS)
    for index in range(times + times // 10):
        _, mode, low, high = chance.choices(moments, weights=[moment[0] for moment in moments])[0]
        if index >= times and mode == "early":
            _, mode, low, high = moments[1]
        yield chance.choice(METHODS), mode, chance.uniform(low, high), next(signals) if index < times else signal.SIGKILL


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--window", action="store_true", help="the desktop program, each on a display of its own")
    parser.add_argument("--programs", type=Path, default=ROOT / "build/release/Source/Programs", metavar="FOLDER")
    parser.add_argument("--times", type=int, default=200)
    parser.add_argument("--seed", type=int, default=random.randrange(1 << 32))
    parser.add_argument("--parallel", type=int, help="runs at a time: 8, or 3 windows")
    options = parser.parse_args()
    signal.signal(signal.SIGHUP, lambda *_: None)  # under nohup, the programs would inherit that it is ignored
    print(f"seed {options.seed}", flush=True)
    program = (options.programs / ("gaugeline" if options.window else "gaugeline-cli")).resolve()
    runs = sorted(plan(options.times, options.seed, options.window), key=lambda run: -run[2])
    began = time.monotonic()

    def one(run):
        method, mode, moment, number = run
        name = "display gone" if number is DISPLAY_GONE else signal.Signals(number).name
        try:
            found = ask(program, method, mode, moment, number)
        except Exception as error:  # the other runs go on
            found = [f"{type(error).__name__}: {error}"]
        for problem in found:
            print(f"FAILED  {method}, {mode}, {name} after {moment:.3f} s: {problem}", flush=True)
        return name, not found

    with ThreadPoolExecutor(options.parallel or (3 if options.window else 8)) as workers:
        results = Counter(workers.map(one, runs))
    for name in sorted({name for name, _ in results}):
        print(f"{name}: {results[name, True]} as they should be, {results[name, False]} not")
    failed = sum(count for (_, is_well), count in results.items() if not is_well)
    print(f"{len(runs)} runs, {failed} failed, {time.monotonic() - began:.0f} s")
    sys.exit(1 if failed or not runs else 0)


if __name__ == "__main__":
    main()
