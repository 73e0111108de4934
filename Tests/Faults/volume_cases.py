"""Volumes that are full, turn read-only or vanish, and files that others change; and one test of sound storage."""

import errno
import time

from fault_case import INTERRUPTED, PACED, TRANSFER, case, snapshot
from fault_volumes import command, unmount
from transfer_cases import CLIP, SCRATCH, inexact_line, passes

LARGE_FILES = ("--transfer-kb", "256", "--rate-kbps", "1024", "--limit-mb", "4", "--minutes", "1")


@case("none: writes and reads of sound storage", "sustained, status 0, no error", minutes=1)
def sound_storage(trial):
    volume = trial.fault_volume()
    trial.add_own_files(volume.behind)
    # Large enough that the reading which finds a file's end costs little.
    trial.start(volume.place, "mixed", pace=("--transfer-kb", "256", "--rate-kbps", "1024", "--limit-mb", "32",
                                             "--minutes", "1"))
    trial.run.end(90)
    trial.check_end(0, volume.behind)
    written = [o.result for o in volume.operations("write", SCRATCH)]
    trial.check_counts("writes", len(written), sum(written), 0)
    read = [o.result for o in volume.operations("read", "IOT2.tio") if o.result > 0]
    trial.check_counts("reads", len(read), sum(read), 0)
    trial.check_errors([])
    trial.check_verdict("sustained")


@case("full volume while writing", "mac counts what fits, then an error each time the file is full; so do C streams")
def full_while_writing(trial):
    volume = trial.memory_volume(1500)
    trial.add_own_files(volume.place)
    space = volume.free_bytes()
    trial.start(volume.place, "writes", pace=LARGE_FILES)
    time.sleep(6)
    trial.run.interrupt()
    trial.check_end(INTERRUPTED, volume.place)
    transfers, size, errors = trial.run.results("writes")
    trial.between("errors, one each 1.75 s", errors, 2, 4)
    whole, rest = divmod(space, TRANSFER)
    if trial.method == "mac":
        line, in_pass, in_pass_bytes = f"err no ={errno.ENOSPC}", whole + 1, space
    else:
        line, in_pass, in_pass_bytes = f"err no ={rest}", whole, whole * TRANSFER
    begun = transfers - errors * in_pass
    trial.between("transfers of the pass under way", begun, 0, in_pass)
    trial.check_bytes(size, errors * in_pass_bytes + min(begun * TRANSFER, in_pass_bytes))
    trial.check_errors([f"Error writing file {volume.colon}{SCRATCH} {line}"] * errors)


@case("full volume while the file to read is made", "mac reads a file that is as large as the free space, and warns",
      methods=("mac",))
def shrunken_sample(trial):
    volume = trial.memory_volume(1500)
    trial.add_own_files(volume.place)
    space = volume.free_bytes()
    trial.start(volume.place, "reads", pace=LARGE_FILES)
    time.sleep(6)
    trial.run.interrupt()
    trial.check_end(INTERRUPTED, volume.place)
    transfers, size, errors = trial.run.results("reads")
    trial.equal("errors", errors, 0)
    ends = trial.run.output.count(f"EOF detected reader 0 file {volume.colon}{SCRATCH} err no =-39")
    whole, rest = divmod(space, TRANSFER)
    begun = transfers - ends * (whole + 1)
    trial.between("passes", ends, 1, 4)
    trial.check_bytes(size, ends * space + min(begun * TRANSFER, space))
    trial.check_errors([
        "Warning: not enough space on disk; read test file is smaller than maximum size requested. "
        f"Available space = (high 0 low {space}) bytes",
        *[inexact_line(rest)] * (ends + begun // (whole + 1))])


@case("hardly any space for the file to read",
      "the read phase is skipped: mac warns (status 1), C streams fail (status 4)")
def no_space_for_sample(trial):
    volume = trial.memory_volume(100)
    trial.add_own_files(volume.place)
    space = volume.free_bytes()
    trial.start(volume.place, "reads", pace=LARGE_FILES)
    trial.run.end(30)
    trial.check_end(1 if trial.method == "mac" else 4, volume.place)
    trial.check_counts("reads", 0, 0, 0 if trial.method == "mac" else 1, is_begun=False)
    trial.check_errors([
        "Warning: not enough space on disk; read test file is smaller than maximum size requested. "
        f"Available space = (high 0 low {space}) bytes" if trial.method == "mac" else
        f"Error writing sample data to file {volume.colon}{SCRATCH} for read test. err no =0"])


@case("full volume while reading", "no effect")
def full_while_reading(trial):
    volume = trial.memory_volume(2000)
    trial.add_own_files(volume.place, **{CLIP: b"\x5b" * (1 << 20)})
    trial.add_own_files(volume.place, filler=b"x" * volume.free_bytes())
    trial.equal("free space", volume.free_bytes(), 0)
    trial.start(volume.place / CLIP, "shared")
    time.sleep(4)
    trial.run.interrupt()
    trial.check_end(INTERRUPTED, volume.place)
    transfers, _, _ = trial.run.results("reads")
    trial.check_counts("reads", transfers, transfers * TRANSFER, 0)
    trial.between("transfers", transfers, 8, 24)
    trial.check_errors([])


@case("full volume of the logs", "the test goes on, exact in JSON; the logs stay empty, and that is told")
def full_log_volume(trial):
    logs = trial.memory_volume(16, suffix="logs")
    (logs.place / "filler").write_bytes(b"x" * logs.free_bytes())
    volume = trial.fault_volume()
    trial.add_own_files(volume.behind)
    trial.start(volume.place, "writes", logs=logs.place)
    trial.reached("three passes", lambda: passes(trial, volume, SCRATCH) >= 3)
    trial.run.interrupt()
    trial.check_end(INTERRUPTED, volume.behind, closed=False)
    written = [o.result for o in volume.operations("write", SCRATCH)]
    trial.check_counts("writes", len(written), sum(written), 0)
    trial.equal("texts of the logs", (trial.run.output.text, trial.run.errors.text), ("", ""))
    trial.check_incomplete_logs()


@case("volume turns read-only",
      "each further transfer or opening fails, is counted and logged; the file cannot be removed")
def turns_read_only(trial):
    volume = trial.loop_volume(24)
    trial.add_own_files(volume.place)
    trial.start(volume.place, "writes")
    time.sleep(2)
    volume.turn_read_only()
    time.sleep(1.5)
    trial.run.interrupt()
    trial.check_end(INTERRUPTED, volume.place, left=[SCRATCH], told_left=[volume.place / SCRATCH])
    transfers, size, errors = trial.run.results("writes")
    trial.check_bytes(size, transfers * TRANSFER)
    trial.between("transfers", transfers, 5, 9)
    trial.between("errors, sixty a second at the most", errors, 20, 60 * 2)
    name = f"{volume.colon}{SCRATCH}"
    opening = (f"Error opening file {name} {volume.place / SCRATCH} err no {errno.EROFS}" if trial.method == "mac" else
               f"Error opening file {name} err no -1")
    number = trial.run.errors.messages[0].rpartition("=")[2]
    in_transfer = trial.run.errors.messages[0].startswith("Error writing file")
    trial.check_errors([f"Error writing file {name} err no ={number}"] * in_transfer
                       + [opening] * (errors - in_transfer))


def check_absence(trial, line, seconds):
    """Openings failed for so long, were counted and logged, and then no more."""
    _, _, errors = trial.run.results("writes")
    trial.check_errors([line] * errors)
    trial.between("errors, sixty a second at the most", errors, 20, 60 * (seconds + 0.5))


ABSENCE = 2.5


@case("folder is missing", "openings fail, sixty a second at most; nothing is made", programs=("window",))
def folder_is_missing(trial):
    volume = trial.fault_volume()
    trial.add_own_files(volume.behind)
    trial.start(volume.place / "missing", "writes")
    time.sleep(ABSENCE)
    trial.run.interrupt()
    trial.check_end(0, volume.behind)
    trial.equal("folders", [path.name for path in volume.behind.iterdir() if path.is_dir()], [])
    reason = f"{volume.place / 'missing' / 'IOT0.tio'} err no {errno.ENOENT}" if trial.method == "mac" else "err no -1"
    check_absence(trial, f"Error opening file {volume.colon}missing:IOT0.tio {reason}", ABSENCE)


@case("folder vanishes and comes back", "openings fail meanwhile, sixty a second at most; then the test goes on")
def folder_vanishes(trial):
    volume = trial.fault_volume()
    folder, away = volume.behind / "folder", volume.behind / "away"
    folder.mkdir()
    trial.add_own_files(folder)
    name = f"folder/{SCRATCH}"
    trial.start(volume.place / "folder", "writes")
    trial.reached("the second pass", lambda: passes(trial, volume, name) >= 2)
    folder.rename(away)
    time.sleep(1 + ABSENCE)  # the pass under way goes on to its end
    before = passes(trial, volume, name)
    things = sorted(path.name for path in volume.behind.iterdir())
    away.rename(folder)
    trial.reached("two more passes", lambda: passes(trial, volume, name) >= before + 2)
    trial.run.interrupt()
    trial.equal("folders meanwhile", things, ["away"])
    trial.check_end(INTERRUPTED, folder)
    written = [o.result for o in volume.operations("write", name)]
    _, _, errors = trial.run.results("writes")
    trial.check_counts("writes", len(written), sum(written), errors)
    native = f" {volume.place / 'folder' / SCRATCH} err no {errno.ENOENT}" if trial.method == "mac" else " err no -1"
    check_absence(trial, f"Error opening file {volume.colon}folder:{SCRATCH}{native}", ABSENCE + 1)


@case("volume is unmounted and mounted again", "the same; nothing is written to the folder that it was mounted on")
def volume_vanishes(trial):
    volume = trial.memory_volume(8000)
    trial.start(volume.place, "writes")
    trial.reached("a file", lambda: (volume.place / "IOT0.tio").exists())
    time.sleep(1)
    unmount(volume.place)
    time.sleep(1 + ABSENCE)
    trial.equal("files where it was mounted", snapshot(volume.place), {})
    command("mount", "-t", "tmpfs", "-o", "size=8000k", "tmpfs", volume.place)
    time.sleep(2)
    trial.run.interrupt()
    trial.check_end(INTERRUPTED, volume.place)
    transfers, size, _ = trial.run.results("writes")
    trial.check_bytes(size, transfers * TRANSFER)
    # The native path is missing from the line: there is none while no volume has this name.
    native = f"  err no {errno.ENOENT}" if trial.method == "mac" else " err no -1"
    check_absence(trial, f"Error opening file {volume.colon}IOT0.tio{native}", ABSENCE + 1)
    unmount(volume.place)
    trial.equal("files where it was mounted", snapshot(volume.place), {})


@case("another volume of the same name is unmounted and mounted again", "the test goes on where it is")
def namesake_vanishes(trial):
    for parent in ("first", "second"):
        (trial.folder / parent).mkdir()
    trial.folder, home = trial.folder / "first", trial.folder
    other = trial.memory_volume(8000)
    trial.folder = home / "second"
    volume = trial.memory_volume(8000)
    trial.folder = home
    trial.add_own_files(volume.place)
    trial.start(volume.place, "writes")
    time.sleep(2)
    trial.equal("the scratch file is there", (volume.place / SCRATCH).exists(), True)
    unmount(other.place)
    time.sleep(1.5)
    command("mount", "-t", "tmpfs", "-o", "size=8000k", "tmpfs", other.place)
    (other.place / SCRATCH).write_bytes(b"another's")
    kept = snapshot(other.place)
    time.sleep(2)
    trial.run.interrupt()
    trial.equal("files of the other volume", snapshot(other.place), kept)
    trial.check_end(INTERRUPTED, volume.place)
    trial.check_errors([])


def start_reading(trial, megabytes):
    volume = trial.fault_volume()
    trial.add_own_files(volume.behind, **{CLIP: b"\x5b" * (megabytes << 20)})
    trial.start(volume.place / CLIP, "shared")
    trial.reached("the second read", lambda: len(volume.operations("read", CLIP)) >= 2)
    return volume


@case("another process truncates the file that is read",
      "the file ends where it ends now, on this pass and on the next")
def truncated_while_read(trial):
    length = 300_000
    volume = start_reading(trial, 4)
    with open(volume.behind / CLIP, "r+b") as clip:
        clip.truncate(length)
    trial.add_own_files(volume.behind, **{CLIP: b"\x5b" * length})
    trial.reached("the fourth pass", lambda: passes(trial, volume, CLIP) >= 4)
    trial.run.interrupt()
    trial.check_end(INTERRUPTED, volume.behind)
    moved = [o.result for o in volume.operations("read", CLIP) if o.result > 0]
    rest = length - TRANSFER
    is_inexact = [m for m in moved if m != TRANSFER]
    trial.equal("what partial reads moved", set(is_inexact), {rest})
    if trial.method == "mac":
        trial.check_counts("reads", len(moved), sum(moved), 0)
        trial.check_errors([inexact_line(rest)] * len(is_inexact))
        ends = {f"EOF detected reader 0 file {volume.colon}{CLIP} err no =-39"}
    else:
        trial.check_counts("reads", moved.count(TRANSFER), moved.count(TRANSFER) * TRANSFER, 0)
        trial.check_errors([])
        ends = {f"EOF detected reader 0 file {volume.colon}{CLIP} err no ={n}" for n in (0, rest)}
    trial.equal("lines of file ends", {m for m in trial.run.output.messages if m.startswith("EOF")}, ends)


@case("another process deletes the file that is read",
      "the pass goes on; further openings fail; the file is not made anew")
def deleted_while_read(trial):
    volume = start_reading(trial, 1)
    (volume.behind / CLIP).unlink()
    trial.reached("the end of the file", lambda: any(o.result == 0 for o in volume.operations("read", CLIP)))
    time.sleep(1)
    trial.run.interrupt()
    trial.forget_own_file(CLIP)
    trial.check_end(INTERRUPTED, volume.behind)
    moved = [o.result for o in volume.operations("read", CLIP) if o.result > 0]
    _, _, errors = trial.run.results("reads")
    trial.check_counts("reads", 4, 1 << 20, errors)
    trial.equal("bytes that the file system served", sum(moved), 1 << 20)
    trial.between("errors, sixty a second at the most", errors, 20, 60 * 2)
    number = errno.ENOENT if trial.method == "mac" else -1
    trial.check_errors([f"Error opening file {volume.colon}{CLIP} err no {number}"] * errors)


def run_crowded(trial, mode, count):
    folder = trial.folder / "crowded"
    folder.mkdir()
    trial.add_own_files(folder, **{f"IOT{number}.tio": b"taken" for number in range(count)})
    trial.start(folder, mode, pace=PACED)
    if count >= 13000:
        trial.run.end(30)
        trial.check_end(1, folder)
        for direction in {"writes": ("writes",), "reads": ("reads",), "mixed": ("writes", "reads")}[mode]:
            trial.check_counts(direction, 0, 0, 0, is_begun=False)
    else:
        trial.reached("the one name left", lambda: (folder / f"IOT{count}.tio").exists())
        time.sleep(2)
        trial.run.interrupt()
        trial.check_end(INTERRUPTED, folder)
        transfers, _, _ = trial.run.results(mode)
        trial.check_counts(mode, transfers, transfers * TRANSFER, 0)
        trial.between("transfers", transfers, 4, 12)
    trial.check_errors([])


for the_mode in ("writes", "reads", "mixed"):
    case(f"13,000 scratch files of others, {the_mode}",
         "no name is free: the test ends at once with nothing done, status 1")(
        lambda trial, mode=the_mode: run_crowded(trial, mode, 13000))
case("12,999 scratch files of others", "the one name left is taken")(lambda trial: run_crowded(trial, "writes", 12999))
