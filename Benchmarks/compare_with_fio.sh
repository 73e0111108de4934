#!/usr/bin/env bash
# Compares the throughput that gaugeline-cli measures with what fio measures, and fio with itself.
#
#   Benchmarks/compare_with_fio.sh [OPTION...] DIRECTORY
#
#     --pairs N        pairs for each direction (10)
#     --seconds N      seconds of each run (6)
#     --block-kb N     size of one transfer in KB (8192)
#     --file-mb N      size of the file in MB, a multiple of 4 (800)
#     --cached         through the file cache; without it, round the cache
#     --program PATH   the gaugeline-cli to measure (build/release/Source/Programs/gaugeline-cli)
#     --writes-only, --reads-only
#
# Prints for each pair the rates in MB/s, the ratio of gaugeline to fio, and the noise: the ratio of a second run of fio to
# the first. A difference between the two medians that is less than the spread of the noise is none.
#
# What makes it a comparison:
# - One transfer at a time, with the clock read around each: fio's psync engine with its latency clocks on.
# - Both rates are bytes by the measured time of the transfers, opening and closing files included; making the file that is
#   read is not.
# - Writes: each run begins without a file and writes it from its start to its limit again and again: the first pass
#   allocates it, the later ones overwrite it in place. For fio that is overwrite=0 and fallocate=none; neither flushes
#   at the end. Both reopen the file for each pass and write the same byte, so that storage which compresses gains
#   nothing on either side.
# - Reads: each run reads a new file that was written in full by blocks of 4 MB of the same byte, flushed and then left alone
#   for the same time, again and again from its start to its end. Both drop what the cache holds of it first unless the cache
#   is to be measured.
# - The runs of a pair change places from pair to pair, so that a storage that gets slower with time favours none.
set -euo pipefail

pairs=10 seconds=6 block_kb=8192 file_mb=800 direct=1 directions=(write read)
root=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.." && pwd)
program=$root/build/release/Source/Programs/gaugeline-cli

wrong_use() {
    echo "compare_with_fio.sh: $1; the head of the script explains its use" >&2
    exit 2
}
while (($# > 1)); do
    case "$1" in
        --pairs) pairs=$2 && shift 2 ;;
        --seconds) seconds=$2 && shift 2 ;;
        --block-kb) block_kb=$2 && shift 2 ;;
        --file-mb) file_mb=$2 && shift 2 ;;
        --program) program=$(realpath -- "$2") && shift 2 ;;
        --cached) direct=0 && shift ;;
        --writes-only) directions=(write) && shift ;;
        --reads-only) directions=(read) && shift ;;
        *) wrong_use "unknown option $1" ;;
    esac
done
[[ $# == 1 && -d $1 ]] || wrong_use "the last argument names no directory"
for number in "$pairs" "$seconds" "$block_kb" "$file_mb"; do
    [[ $number =~ ^[1-9][0-9]*$ ]] || wrong_use "'$number' is no positive number"
done
((file_mb % 4 == 0)) || wrong_use "the file is made by blocks of 4 MB"
((seconds < 60)) || wrong_use "a run lasts less than a minute"
for tool in fio python3; do
    command -v "$tool" >/dev/null || wrong_use "$tool is missing (scripts/install-dependencies.sh compare)"
done
[[ -x $program ]] || wrong_use "$program is not there; --program names another"

folder=$(mktemp -d -- "$1/compare-XXXXXX")
results=$(mktemp -d)
running=""
clean_up() {
    [[ -z $running ]] || kill -INT "$running" 2>/dev/null || true
    wait
    rm -rf -- "$folder" "$results"
}
trap clean_up EXIT

# json FILE EXPRESSION: evaluates it over the document `d`.
json() {
    python3 -c 'import json, sys; d = json.load(open(sys.argv[1])); print(eval(sys.argv[2]))' "$1" "$2"
}

run_fio() {
    fio --name=compare --filename="$folder/fio" --ioengine=psync --direct="$direct" --size="${file_mb}m" \
        --output-format=json --output="$results/fio.json" "$@" >/dev/null
}

# The rates are in MB/s.
fio_rate() {
    local direction=$1
    rm -f -- "$folder/fio"
    if [[ $direction == read ]]; then
        run_fio --rw=write --bs=4m --buffer_pattern=0x5b --fallocate=none --end_fsync=1
        sleep 1.1
    fi
    run_fio --rw="$direction" --bs="${block_kb}k" --buffer_pattern=0x1a --overwrite=0 --fallocate=none \
        --invalidate="$direct" --time_based --runtime="$seconds"
    json "$results/fio.json" "d['jobs'][0]['$direction']['io_bytes'] / d['jobs'][0]['$direction']['runtime'] * 1000 / 2**20"
    rm -f -- "$folder/fio"
}

# bytes_read PID: what the process has asked the system to read so far.
bytes_read() {
    sed -n 's/^rchar: //p' "/proc/$1/io" 2>/dev/null || echo 0
}

gaugeline_rate() {
    local direction=$1 options=(--quiet)
    ((direct)) || options+=(--cache)
    "$program" --path "$folder" --mode "${direction}s" --method mac --transfer-kb "$block_kb" --rate-kbps unlimited \
        --limit-mb "$file_mb" --minutes 1 --json "$results/gaugeline.json" "${options[@]}" >/dev/null 2>&1 &
    running=$!
    if [[ $direction == read ]]; then
        # Its time begins when it reads the file that it has made.
        while kill -0 "$running" 2>/dev/null && (($(bytes_read "$running") < block_kb * 1024)); do
            sleep 0.05
        done
    fi
    sleep "$seconds"
    kill -INT "$running" 2>/dev/null || true
    wait "$running" || true  # ends with the signal's status
    running=""
    json "$results/gaugeline.json" "d['${direction}s']['bytes'] / d['${direction}s']['seconds'] / 2**20"
}

declare -A rate
for direction in "${directions[@]}"; do
    printf '%ss of %d KB, file of %d MB, %d s each, %s\n' "$direction" "$block_kb" "$file_mb" "$seconds" \
        "$( ((direct)) && echo 'round the file cache' || echo 'through the file cache')"
    printf '%4s %12s %12s %12s %16s %12s\n' pair fio gaugeline 'fio again' gaugeline/fio fio/fio
    : >"$results/ratios"
    orders=("first gaugeline second" "gaugeline second first" "second first gaugeline")
    for ((pair = 1; pair <= pairs; ++pair)); do
        for run in ${orders[pair % 3]}; do
            if [[ $run == gaugeline ]]; then
                rate[$run]=$(gaugeline_rate "$direction")
            else
                rate[$run]=$(fio_rate "$direction")
            fi
        done
        printf '%s %s %s\n' "${rate[first]}" "${rate[gaugeline]}" "${rate[second]}" >>"$results/ratios"
        tail -n 1 "$results/ratios" | awk -v pair="$pair" \
            '{ printf "%4d %12.0f %12.0f %12.0f %16.3f %12.3f\n", pair, $1, $2, $3, $2 / $1, $3 / $1 }'
    done
    python3 - "$results/ratios" "$results/gaugeline.json" <<'PYTHON'
import json, statistics, sys

rows = [[float(word) for word in line.split()] for line in open(sys.argv[1])]
ours = [gaugeline / first for first, gaugeline, second in rows]
noise = [second / first for first, gaugeline, second in rows]
print(f"median {statistics.median(ours):50.3f} {statistics.median(noise):12.3f}")
print(f"range  {min(ours):42.3f} - {max(ours):.3f} {min(noise):5.3f} - {max(noise):.3f}")
cache = json.load(open(sys.argv[2]))["cache"]
print(f"File cache of gaugeline's runs: {cache['mode']}{', in memory only' if cache['volatile'] else ''}\n")
PYTHON
done
