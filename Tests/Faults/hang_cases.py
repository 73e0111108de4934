"""Transfers that hang, direct transfers that are refused, failing seeks, and scratch files that cannot be removed."""

import errno
import signal
import time

from fault_case import INTERRUPTED, case
from fault_volumes import require_tool
from transfer_cases import CLIP, SCRATCH, begin, check_against_trace, passes, subject

# What hangs, in which mode, and the rule's number of the operation by method: the first openings of a scratch file are
# those that reserve its name and make it.
HANGS = (
    ("a write", "writes", "write", {"mac": 3, "posix": 3}),
    ("a read", "shared", "read", {"mac": 3, "posix": 3}),
    ("an opening for writing", "writes", "open", {"mac": 2, "posix": 2}),
    ("a write of the preparation", "reads", "write", {"mac": 2, "posix": 3}),
)


def start_hang(trial, mode, kind, number, is_deaf=False):
    name = CLIP if mode == "shared" else SCRATCH
    volume = begin(trial, mode, f"{kind} {name} {number} {number} hang {int(is_deaf)}")
    trial.reached("the hang", lambda: volume.operations("hang", name))
    return volume, name


def quit_at_once(trial, volume, name, told, is_deaf):
    """Two interrupts; the logs, the document and the list of files have to be complete while the transfer hangs."""
    run = trial.run
    run.send(signal.SIGINT)
    trial.reached("the note that it waits", lambda: "stopping after SIGINT; waiting for the transfer" in run.stderr, 5)
    trial.equal("runs on while the transfer hangs", run.is_running(), True)
    trial.equal("state in the JSON document meanwhile", run.document.get("state"), "running")
    run.send(signal.SIGINT)
    if is_deaf:
        # The kernel keeps the process until the transfer is back; the program itself has finished.
        trial.equal("logs closed while the transfer hangs",
                    run.wait_until(lambda: run.output.is_closed and run.errors.is_closed, 5), True)
        trial.equal("state in the JSON document then", run.document.get("state"), "interrupted")
        volume.set_rules()
    run.end(5)
    trial.check_end(INTERRUPTED, volume.behind, left=[name] if told else [], told_left=told)
    for path in told:
        trial.equal("left file told", f"left behind: {volume.colon}{name} ({path})" in run.stderr, True)


def run_hang(trial, mode, kind, number, is_deaf=False):
    volume, name = start_hang(trial, mode, kind, number[trial.method], is_deaf)
    told = [] if mode == "shared" else [volume.place / name]
    quit_at_once(trial, volume, name, told, is_deaf)


for title, the_mode, the_kind, the_number in HANGS:
    case(f"{title} hangs; SIGINT twice", "ends at once; logs and JSON complete, the scratch file is named",
         programs=("headless",))(
        lambda trial, mode=the_mode, kind=the_kind, number=the_number: run_hang(trial, mode, kind, number))
    if the_kind != "open":
        case(f"{title} hangs so that the process cannot be killed; SIGINT twice",
             "all is written at once; the process goes when the kernel lets it", programs=("headless",))(
            lambda trial, mode=the_mode, kind=the_kind, number=the_number: run_hang(trial, mode, kind, number, True))


    case(f"{title} hangs; quit", programs=("window",),
         expected="the window answers and tells what it waits for; all is tidy once the transfer is back")(
        lambda trial, mode=the_mode, kind=the_kind, number=the_number: quit_while_it_hangs(trial, mode, kind, number))


def check_waiting(trial):
    """A second and a half after it was asked to stop, the window still answers, and the test has not ended."""
    time.sleep(1.5)
    trial.equal("idle and stoppable while the transfer hangs", (trial.run.is_idle(), trial.run.can_stop()),
                (False, False))
    colors = set()
    trial.reached("a blinking lamp", lambda: colors.add(trial.run.color_of("Activity")) or len(colors) > 1, 5)


def quit_while_it_hangs(trial, mode, kind, number):
    volume, name = start_hang(trial, mode, kind, number[trial.method])
    run = trial.run
    run.press_quit()
    trial.reached("the window that tells what is waited for", lambda: run.window("Quitting"))
    check_waiting(trial)
    run.send(signal.SIGINT)  # the wait goes on
    time.sleep(0.5)
    trial.equal("runs on after a second request", run.is_running(), True)
    trial.equal("the file is there", (volume.behind / name).exists(), True)
    volume.set_rules()
    run.wait(20)
    trial.check_end(0, volume.behind)
    trial.check_errors([])


def ask_once(trial):
    """One request to stop that cannot be met yet."""
    if trial.is_window:
        trial.run.press_stop()
        check_waiting(trial)
    else:
        trial.run.send(signal.SIGINT)
        trial.reached("the note that it waits", lambda: "stopping after SIGINT" in trial.run.stderr, 5)


def run_short_hang(trial, mode):
    _, kind, _ = subject(mode)
    volume, name = start_hang(trial, mode, kind, 3)
    ask_once(trial)
    volume.set_rules()
    trial.run.end(10)
    trial.check_end(INTERRUPTED, volume.behind)
    trial.equal("errors", check_against_trace(trial, volume, mode), 0)
    trial.equal("transfers", len(volume.operations(kind, name)), 3)


for the_mode, title in (("writes", "a write"), ("shared", "a read")):
    case(f"{title} hangs; SIGINT once, or Stop; it comes back", "the transfer is counted, the files are removed")(
        lambda trial, mode=the_mode: run_short_hang(trial, mode))


def check_cache(trial, mode, reason):
    if not trial.is_window:
        cache = trial.run.document.get("cache", {})
        trial.equal("cache mode and reason", (cache.get("mode"), cache.get("reason")), (mode, reason))
    line = f"File cache: {mode}" + (f" ({reason})" if reason else "") + ", reader 0"
    trial.equal("lines on the file cache", [m for m in trial.run.output.messages if m.startswith("File cache")], [line])


def run_direct(trial, mode, rules, reason, wrapper=()):
    _, kind, name = subject(mode)
    volume = begin(trial, mode, *rules, wrapper=wrapper)
    trial.reached("three passes", lambda: passes(trial, volume, name) >= 3)
    trial.run.interrupt()
    trial.check_end(INTERRUPTED, volume.behind)
    served = volume.operations(kind, name)
    refused = [o for o in served if o.result == -errno.EINVAL]
    direct = [o for o in served if "direct" in o.flags and o.result > 0]
    moved = [o.result for o in served if o.result > 0]
    trial.check_counts("reads" if mode == "shared" else "writes", len(moved), sum(moved), 0)
    trial.check_errors([])
    trial.equal("refused transfers, one for each pass", len(refused),
                passes(trial, volume, name) if "refused a direct" in (reason or "") else 0)
    trial.equal("direct transfers were made", bool(direct), reason is None)
    trial.equal("openings with O_DIRECT", volume.operations("open", name, "direct"), [])
    check_cache(trial, "dropped after use" if reason else "bypassed", reason)


EINVAL = errno.EINVAL
case("O_DIRECT refused at open", "no effect: files are never opened with it; bypassed", methods=("mac",))(
    lambda trial: run_direct(trial, "writes", [f"direct-open * 1 0 error {EINVAL}"], None))
for the_mode, the_kind in (("writes", "write"), ("shared", "read")):
    case(f"O_DIRECT refused at each {the_kind}", f"each {the_kind} is made again without; told once; no error",
         methods=("mac",))(
        lambda trial, mode=the_mode, kind=the_kind:
        run_direct(trial, mode, [f"direct-{kind} * 1 0 error {EINVAL}"], f"the file system refused a direct {kind}"))


def injecting(trial, call, selection, error):
    """strace before the program, which makes a system call fail; and how often it did."""
    require_tool("strace")
    log = trial.folder / "strace.txt"
    wrapper = ("strace", "-f", "-qq", "-o", log, "-e", f"trace={call}", "-e", "signal=none", "-e",
               f"inject={call}:error={error}:{selection}", "-P", trial.folder / trial.volume_name / SCRATCH)
    return wrapper, lambda: [line for line in log.read_text(encoding="utf-8").splitlines() if "(INJECTED)" in line]


@case("O_DIRECT refused at the switch", "cached transfers that are dropped afterwards; told once; no error",
      methods=("mac",))
def direct_refused_at_switch(trial):
    # Of each file's two calls, the first asks for the flags. A FUSE file system is never asked about the second.
    wrapper, injected = injecting(trial, "fcntl", "when=2+2", "EINVAL")
    run_direct(trial, "writes", [], "the file system refused direct transfers", wrapper)
    trial.equal("injections were switches", [line for line in injected() if "F_SETFL" not in line], [])
    trial.between("injections", len(injected()), 3, 1000)


@case("error on the second seek", "the file stands at its start anyway: no error, exact counts")
def second_seek_fails(trial):
    wrapper, injected = injecting(trial, "lseek", "when=2", "EIO")
    volume = begin(trial, "writes", wrapper=wrapper)
    trial.reached("three passes", lambda: passes(trial, volume, SCRATCH) >= 3)
    trial.run.interrupt()
    trial.check_end(INTERRUPTED, volume.behind)
    trial.equal("injected errors", len(injected()), 1)
    trial.equal("errors", check_against_trace(trial, volume, "writes"), 0)
    trial.check_errors([])


@case("error on each seek of the preparation",
      "mac writes its one block at the start; C streams give up the file, status 4")
def preparation_cannot_seek(trial):
    wrapper, injected = injecting(trial, "lseek", "when=1+", "EIO")
    volume = begin(trial, "reads", wrapper=wrapper)
    if trial.method == "mac":
        trial.reached("five reads", lambda: len(volume.operations("read", SCRATCH)) >= 5)
        trial.run.interrupt()
        trial.check_end(INTERRUPTED, volume.behind)
        trial.check_errors([])
        moved = [o.result for o in volume.operations("read", SCRATCH) if o.result > 0]
        trial.check_counts("reads", len(moved), sum(moved), 0)
    else:
        trial.run.end(30)
        trial.check_end(4, volume.behind)
        trial.check_errors([f"Error writing sample data to file {volume.colon}{SCRATCH} for read test. err no =0"])
        trial.check_counts("reads", 0, 0, 1, is_begun=False)
    trial.between("injected errors", len(injected()), 2, 1000)


@case("a scratch file cannot be removed", "it stays, the test ends as it would")
def file_cannot_be_removed(trial):
    volume = begin(trial, "writes", f"unlink {SCRATCH} 1 0 error 13")
    trial.reached("two passes", lambda: passes(trial, volume, SCRATCH) >= 2)
    trial.run.interrupt()
    trial.check_end(INTERRUPTED, volume.behind, left=[SCRATCH], told_left=[volume.place / SCRATCH])
    trial.equal("errors", check_against_trace(trial, volume, "writes"), 0)
    trial.equal("attempts to remove it", [o.result for o in volume.operations("unlink", SCRATCH)], [-13])


def three_passes_with_logs(trial, rule, complaint=None):
    """Both logs on a volume with the rule; the complaint of an alert for each."""
    volume = trial.fault_volume()
    logs = trial.fault_volume(rule, suffix="logs")
    trial.add_own_files(volume.behind)
    trial.start(volume.place, "writes", logs=logs.place)
    trial.reached("three passes", lambda: passes(trial, volume, SCRATCH) >= 3)
    trial.run.interrupt()
    names = ("errors.log", "output.log") if complaint else ()
    trial.check_end(INTERRUPTED, volume.behind, closed=False,
                    alerts=[f"{logs.colon}{name}: {complaint}" for name in names])
    moved = [o.result for o in volume.operations("write", SCRATCH)]
    trial.check_counts("writes", len(moved), sum(moved), 0)
    return logs


@case("a write to the logs fails", "the test goes on, exact in JSON; both logs keep what they had, and that is told")
def logs_become_unwritable(trial):
    logs = three_passes_with_logs(trial, "write *.log 1 0 error 5")
    trial.equal("refused log writes", bool(logs.operations("write", "output.log")), True)
    trial.check_incomplete_logs()


case("the logs cannot be opened", "told for each; the test runs without them", programs=("window",))(
    lambda trial: three_passes_with_logs(trial, "create *.log 1 0 error 13", "Permission denied"))
