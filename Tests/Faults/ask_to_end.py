#!/usr/bin/env python3
"""Asks a running test to end by signals at random moments, and looks at what it leaves.

    Tests/Faults/ask_to_end.py [--program PATH] [--times N] [--seed N] [--parallel N]

After SIGINT, SIGTERM or SIGHUP, both logs have to end with their closing banner, no scratch file may be left and
the exit status is 128 + the signal's number. Some of the signals come so early that the test may not have begun; the
program then may as well be ended in the usual way, but leaves no scratch file either. After SIGKILL (a tenth as
often), the next start has to work beside the files left, and leave them alone. Looping tests of both file methods, of
writes that turn to reads after half a minute and of reads, for which a file is made first.
"""

import argparse
import itertools
import random
import signal
import sys
import tempfile
import time
from collections import Counter
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

from fault_case import METHODS, snapshot
from program_run import ProgramRun

ROOT = Path(__file__).resolve().parents[2]
SIGNALS = (signal.SIGINT, signal.SIGTERM, signal.SIGHUP)
PACE = ("--transfer-kb", "64", "--rate-kbps", "2048", "--limit-mb", "1", "--minutes", "1", "--loop")

# (share of the moments, mode, from, to), in seconds since the first scratch file; or since the start for "early".
# Half a minute after its start a mixed test removes its file, makes another and turns to reading it.
MOMENTS = ((0.1, "early", 0.0, 0.05), (0.35, "mixed", 0.0, 3.0), (0.35, "reads", 0.0, 4.0), (0.2, "mixed", 29.0, 34.0))


def scratch_files(folder):
    return {name: seen for name, seen in snapshot(folder).items() if name.endswith(".tio")}


def started(program, folder, method, mode, waits_for_file=True):
    """A run, and a scratch file of its own there if asked for."""
    before = set(scratch_files(folder / "test"))
    run = ProgramRun(program, folder / "files", ["--path", folder / "test", "--method", method, "--mode", mode, *PACE])
    if waits_for_file and not run.wait_until(lambda: set(names(folder)) - before, 10):
        raise RuntimeError("no scratch file was made")
    return run


def names(folder):
    return [path.name for path in (folder / "test").glob("IOT*.tio")]


def problems_after_end(run, folder, number, is_early, kept):
    found = []
    status = run.end(20)
    if is_early and status == -number:
        return [] if scratch_files(folder / "test") == kept else ["scratch files changed"]
    if status != 128 + number:
        found.append(f"exit status {status} after signal {number}")
    if scratch_files(folder / "test") != kept:
        found.append(f"scratch files {sorted(names(folder))}, of which {sorted(kept)} were there before")
    for which, log in (("output log", run.output), ("error log", run.errors)):
        if not log.is_closed:
            found.append(f"the {which} has no closing banner")
    if run.document.get("state") != "interrupted":
        found.append(f"state {run.document.get('state')} in the JSON document")
    return found


def ask(program, method, mode, moment, number):
    """One test and one signal; answers the problems."""
    is_early = mode == "early"
    with tempfile.TemporaryDirectory(prefix="gaugeline-asked-") as place:
        folder = Path(place)
        (folder / "test").mkdir()
        run = started(program, folder, method, "mixed" if is_early else mode, not is_early)
        time.sleep(moment)
        run.send(number)
        if number != signal.SIGKILL:
            return problems_after_end(run, folder, number, is_early, {})
        run.end(20)
        left = scratch_files(folder / "test")
        again = started(program, folder, method, "mixed")
        time.sleep(0.5)
        again.send(signal.SIGINT)
        found = problems_after_end(again, folder, signal.SIGINT, False, left)
        transfers, _, _ = again.results("writes")
        return found + ([] if transfers else ["the next start made no transfer"])


def plan(times, seed):
    """(method, mode, moment, signal) of each run."""
    chance = random.Random(seed)
    methods = itertools.cycle(METHODS)
    signals = itertools.cycle(SIGNALS)
    for index in range(times + times // 10):
        _, mode, low, high = chance.choices(MOMENTS, weights=[moment[0] for moment in MOMENTS])[0]
        if index >= times and mode == "early":
            _, mode, low, high = MOMENTS[1]
        yield next(methods), mode, chance.uniform(low, high), next(signals) if index < times else signal.SIGKILL


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--program", type=Path, default=ROOT / "build/release/Source/Programs/gaugeline-cli")
    parser.add_argument("--times", type=int, default=200)
    parser.add_argument("--seed", type=int, default=random.randrange(1 << 32))
    parser.add_argument("--parallel", type=int, default=8)
    options = parser.parse_args()
    signal.signal(signal.SIGHUP, lambda *_: None)  # under nohup, the programs would inherit that it is ignored
    print(f"seed {options.seed}", flush=True)
    runs = sorted(plan(options.times, options.seed), key=lambda run: -run[2])
    began = time.monotonic()

    def one(run):
        method, mode, moment, number = run
        name = signal.Signals(number).name
        try:
            found = ask(options.program.resolve(), method, mode, moment, number)
        except Exception as error:  # the other runs go on
            found = [f"{type(error).__name__}: {error}"]
        for problem in found:
            print(f"FAILED  {method}, {mode}, {name} after {moment:.3f} s: {problem}", flush=True)
        return name, not found

    with ThreadPoolExecutor(options.parallel) as workers:
        results = Counter(workers.map(one, runs))
    for name in sorted({name for name, _ in results}):
        print(f"{name}: {results[name, True]} as they should be, {results[name, False]} not")
    failed = sum(count for (_, is_well), count in results.items() if not is_well)
    print(f"{len(runs)} runs, {failed} failed, {time.monotonic() - began:.0f} s")
    sys.exit(1 if failed or not runs else 0)


if __name__ == "__main__":
    main()
