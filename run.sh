#!/usr/bin/env bash
# Builds the program where that is needed, and runs it.
#
#   ./run.sh              opens the window; where there is no display, measures the current directory without one: one
#                         minute of unlimited writes, with both logs left in it
#   ./run.sh ARGUMENT...  runs gaugeline-cli, the program without a window, with exactly these arguments
#
# Works from any directory. The exit status is that of the program.
set -euo pipefail

root=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
if (($# == 0)) && [[ -n ${DISPLAY:-}${WAYLAND_DISPLAY:-} ]]; then
    name=gaugeline
    packages=(build windows)
else
    name=gaugeline-cli
    packages=(build)
fi
program=$root/build/release/Source/Programs/$name

configure_and_build() {
    # A folder that test.sh has configured keeps its tests; a new one is spared them and their packages, and without a
    # window to open also what windows are made of.
    local options=()
    if [[ ! -f $root/build/release/CMakeCache.txt ]]; then
        options=(-DBUILD_TESTING=OFF -DGAUGELINE_WINDOWS=OFF)
    fi
    if [[ $name == gaugeline ]]; then
        options+=(-DGAUGELINE_WINDOWS=ON)
    fi
    cd -- "$root" &&
        cmake --preset release "${options[@]}" &&
        cmake --build --preset release --target "$name"
}

# Standard output belongs to the program's results: what the build has to say goes to standard error, and it says
# nothing unless it fails.
build() {
    if [[ ! -x $program ]]; then
        echo "Building $name; this takes a minute or two the first time." >&2
    fi
    local output
    if ! output=$(configure_and_build 2>&1); then
        printf '%s\n' "$output" "run.sh: the build failed" >&2
        return 1
    fi
}

# Runs the program in a process group of its own and hands each signal on once. A signal typed at the terminal would
# otherwise reach it twice, and a second interrupt means to give up at once.
run_to_the_end() {
    set -m
    "$program" "$@" &
    local child=$! signal
    set +m
    for signal in INT TERM HUP USR1; do
        # shellcheck disable=SC2064 # the names of now are meant
        trap "kill -$signal $child 2>/dev/null || true" "$signal"
    done
    # A signal ends a wait early; only when the program is gone is the status its own.
    wait "$child" || true
    while kill -0 "$child" 2>/dev/null; do
        wait "$child" || true
    done
    wait "$child"
}

measure_current_directory() {
    local output_log=$PWD/gaugeline-output.log error_log=$PWD/gaugeline-errors.log status=0
    run_to_the_end --path "$PWD" --mode writes --transfer-kb 8192 --rate-kbps unlimited --limit-mb 800 --minutes 1 \
        --output-log "$output_log" --error-log "$error_log" || status=$?
    echo
    echo "Output log: $output_log"
    echo "Error log:  $error_log"
    return "$status"
}

"$root/scripts/install-dependencies.sh" "${packages[@]}"
build
if (($# > 0)) || [[ $name == gaugeline ]]; then
    exec "$program" "$@"
fi
echo "There is no display to open the window on: measuring the current directory without it." >&2
measure_current_directory
