#!/usr/bin/env bash
# Fails when a source is not formatted as .clang-format says, and shows what is missing. With --fix, formats it instead.
set -euo pipefail

cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.."

mapfile -t sources < <(find Source Tests Benchmarks -type f \( -name '*.h' -o -name '*.cpp' \) | sort)
if ((${#sources[@]} == 0)); then
    echo "check-format: no sources found" >&2
    exit 1
fi
if [[ ${1:-} == --fix ]]; then
    exec clang-format -i "${sources[@]}"
fi

unformatted=0
for source in "${sources[@]}"; do
    if ! clang-format "$source" | diff -u --label "$source" --label "$source (formatted)" "$source" -; then
        unformatted=$((unformatted + 1))
    fi
done
if ((unformatted)); then
    echo "check-format: $unformatted of ${#sources[@]} files are not formatted; scripts/check-format.sh --fix does it" >&2
    exit 1
fi
echo "check-format: ${#sources[@]} files"
