#!/usr/bin/env bash
# Feeds the readers of paths, files, layouts, settings and options with inputs that nobody thought of.
#
#   scripts/run-fuzzers.sh [SECONDS]      for so long each (30), two at a time
#
# Each begins with the inputs in Tests/Fuzz/corpus. What it finds, and a log of each, is in build/fuzz/findings. Exit
# status: 0 when nothing was found, 1 when something was, 2 for wrong use.
set -euo pipefail

cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.."
seconds=${1:-30}
if (($# > 1)) || [[ ! $seconds =~ ^[1-9][0-9]*$ ]]; then
    echo "usage: scripts/run-fuzzers.sh [SECONDS]" >&2
    exit 2
fi

cmake --preset fuzz
cmake --build --preset fuzz

findings=build/fuzz/findings
rm -rf "$findings"
mkdir -p "$findings"
scratch=$(mktemp -d)
trap 'rm -rf -- "$scratch"' EXIT

# Leaks are left to the tests with AddressSanitizer: the font library keeps what it allocates, and the search is not
# possible everywhere. One that grows meets the limit of the memory.
export ASAN_OPTIONS=detect_leaks=0 TMPDIR=$scratch
export seconds findings scratch

# shellcheck disable=SC2317 # called by the shells that xargs starts
fuzz() {
    local name=$1 log=$findings/$1.log options=()
    if [[ -f Tests/Fuzz/$name.dict ]]; then
        options+=("-dict=Tests/Fuzz/$name.dict")
    fi
    cp -r "Tests/Fuzz/corpus/$name" "$scratch/$name"
    if ! "build/fuzz/Tests/Fuzz/gaugeline_fuzz_$name" "${options[@]}" -max_total_time="$seconds" -max_len=4096 \
        -timeout=5 -rss_limit_mb=2048 -print_final_stats=1 -artifact_prefix="$findings/$name-" \
        "$scratch/$name" >"$log" 2>&1; then
        grep -aE -A 12 'does not hold|ERROR|runtime error' "$log" | head -n 40 >&2
        echo "$name: FOUND something; the input and the log are in $findings" >&2
        return 1
    fi
    echo "$name: $(awk '/number_of_executed_units/ { print $2 }' "$log") executions," \
        "$(grep -aoE 'cov: [0-9]+' "$log" | tail -n 1 | cut -d ' ' -f 2) edges covered"
}
export -f fuzz

found=0
# shellcheck disable=SC2016 # expanded by those shells
find Tests/Fuzz/corpus -mindepth 1 -maxdepth 1 -type d -printf '%f\0' | sort -z |
    xargs -0 -n 1 -P 2 bash -euo pipefail -c 'fuzz "$1"' fuzz || found=1
exit "$found"
