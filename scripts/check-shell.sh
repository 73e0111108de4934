#!/usr/bin/env bash
# Fails when shellcheck has something to say about a script.
set -euo pipefail

cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.."

mapfile -d '' -t scripts < <(
    find run.sh test.sh .ci scripts Tests Benchmarks -type f -print0 |
        xargs -0 awk 'FNR == 1 && /^#!.*sh$/ { printf "%s%c", FILENAME, 0 }' | sort -z
)
shellcheck -x "${scripts[@]}"
echo "check-shell: ${#scripts[@]} scripts"
