#!/usr/bin/env bash
# Fails when clang-tidy finds something, or when a source is in no target and would escape both it and the compiler.
#
#   scripts/check-tidy.sh [FILE or FOLDER...]      checks these sources only (Source Tests Benchmarks)
#
# Takes the compile commands from the build folder of the release preset, or from GAUGELINE_BUILD_DIR.
set -euo pipefail

cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.."
build=${GAUGELINE_BUILD_DIR:-build/release}

if [[ ! -f $build/compile_commands.json ]]; then
    echo "check-tidy: $build has no compile commands; run ./test.sh first" >&2
    exit 1
fi

if (($# == 0)); then
    set -- Source Tests Benchmarks
fi
# The longest first, so that no processor is left with one long file at the end.
mapfile -t sources < <(find "$@" -type f -name '*.cpp' -printf '%s %p\n' | sort -rn | cut -d ' ' -f 2-)
if ((${#sources[@]} == 0)); then
    echo "check-tidy: no sources found" >&2
    exit 1
fi

# What the build leaves out (windows without Qt) is not looked at, but every source has to be named to CMake somewhere.
listed=$(find Source Tests Benchmarks -name CMakeLists.txt -exec grep -hoE '[A-Za-z0-9_-]+\.cpp' {} +)
checked=()
unlisted=0
for source in "${sources[@]}"; do
    if grep -qF "\"file\": \"$PWD/$source\"" "$build/compile_commands.json"; then
        checked+=("$source")
    elif ! grep -qxF "${source##*/}" <<<"$listed"; then
        echo "check-tidy: $source is in no CMakeLists.txt" >&2
        unlisted=1
    fi
done
if ((unlisted)); then
    exit 1
fi
if ((${#checked[@]} == 0)); then
    echo "check-tidy: none of the sources is built in $build" >&2
    exit 1
fi

# The note about suppressed warnings of system headers is dropped; it would hide the real ones.
printf '%s\0' "${checked[@]}" |
    xargs -0 -n 1 -P "$(nproc)" clang-tidy -p "$build" --quiet 2> >(grep -v 'warnings\? generated\.$' >&2)
echo "check-tidy: ${#checked[@]} of ${#sources[@]} files"
