#!/usr/bin/env bash
# Measures what the desktop program costs, on a display of its own: the time from its start to its painted window, its
# processor time while idle, and beside the program without a window during the same paced test, and its memory.
#
#   Benchmarks/measure_window.sh [DIRECTORY]      the storage to test (a new folder under /tmp)
#
# Needs the packages of "install-dependencies.sh build windows pictures". Takes about three minutes. Processor time is in
# per cent of one processor. Wanted: a window within 0.5 s, idle under 1 %, during the test under 3 % more than without a
# window.
set -euo pipefail

root=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.." && pwd)
programs=$root/build/release/Source/Programs
# shellcheck source=scripts/own-display.sh
source "$root/scripts/own-display.sh"
place=$(realpath -- "${1:-$scratch}")
seconds=55

# The processor time of a process so far, in ticks of 10 ms.
ticks() { awk '{ print $14 + $15 }' "/proc/$1/stat"; }

# percent_of PID SECONDS: its share of one processor during the time.
percent_of() {
    local before after
    before=$(ticks "$1")
    sleep "$2"
    after=$(ticks "$1")
    awk -v used=$((after - before)) -v seconds="$2" 'BEGIN { printf "%.2f", used / seconds }'
}

memory_of() { awk '/^VmRSS/ { print int($2 / 1024) }' "/proc/$1/status"; }

# Starts the window and prints two times in milliseconds: it was painted after the first and by the second. Looking at a
# pixel takes a while, so there is no telling more exactly.
start_window() {
    local began looked
    began=$(date +%s%3N)
    (cd -- "$place" && exec "$programs/gaugeline" 2>/dev/null) &
    window_pid=$!
    children+=("$window_pid")
    until window=$(xdotool search --onlyvisible --name '^Quarn IO Gaugeline$' 2>/dev/null | tail -n 1) && [[ -n $window ]]; do
        :
    done
    looked=$(date +%s%3N)
    until [[ $(import -window "$window" -crop 1x1+12+300 -depth 8 txt:- 2>/dev/null | tail -n 1) == *"#"*[1-9A-F]* ]]; do
        looked=$(date +%s%3N)
    done
    echo "$((looked - began)) to $(($(date +%s%3N) - began))"
}

paced=(--mode reads --transfer-kb 1024 --rate-kbps 4096 --limit-mb 100 --minutes 2)

start_display
start_window >"$scratch/cold"
xdotool key ctrl+q
wait "$window_pid"
start_window >"$scratch/warm"
printf 'start to painted window   %s ms; again %s ms\n' "$(<"$scratch/cold")" "$(<"$scratch/warm")"
sleep 2
printf 'idle                      %s %%, %s MB\n' "$(percent_of "$window_pid" 20)" "$(memory_of "$window_pid")"

# The window's first test is the same as that of the options: "Profile-A Reads".
xdotool key ctrl+r
sleep 5
printf 'paced test, window        %s %%\n' "$(percent_of "$window_pid" "$seconds")"
printf 'memory after it           %s MB\n' "$(memory_of "$window_pid")"
xdotool key ctrl+q
timeout 20 tail --pid="$window_pid" -f /dev/null

"$programs/gaugeline-cli" --path "$place" "${paced[@]}" --quiet >/dev/null 2>&1 &
headless=$!
children+=("$headless")
sleep 5
printf 'paced test, no window     %s %%\n' "$(percent_of "$headless" "$seconds")"
kill -INT "$headless"
wait "$headless" || true
