#!/usr/bin/env bash
# Fails when a header below Source/ does not compile alone, or not when it is included twice. What its own source includes
# first is compiled alone with that source, by each build without precompiled headers.
set -euo pipefail

cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.."

check_header() {
    local header=$1 flags=()
    local source=${header%.h}.cpp
    if ! grep -qx '#pragma once' "$header"; then
        echo "$header has no #pragma once" >&2
        return 1
    fi
    if [[ -f $source ]] && grep -m 1 '^#include' "$source" | grep -qF "\"${header#Source/}\""; then
        return 0
    fi
    if [[ $header == Source/Framework/UI/* || $header == Source/GUI/* ]]; then
        read -r -a flags <<<"$(pkg-config --cflags Qt6Widgets) -fPIC"
    fi
    if ! printf '#include "%s"\n' "${header#Source/}" "${header#Source/}" |
        g++ -std=c++20 -Wall -Wextra -Werror -ISource "${flags[@]}" -fsyntax-only -x c++ -; then
        echo "$header does not compile alone" >&2
        return 1
    fi
}
export -f check_header

# The windows' headers need Qt's; where the windows are not built it need not be there.
folders=(Source)
if ! pkg-config --exists Qt6Widgets; then
    echo "check-headers: no Qt here, the windows' headers are left out"
    folders=(Source -not -path 'Source/Framework/UI/*' -not -path 'Source/GUI/*' -not -path '*/CIOTester.h')
fi
mapfile -d '' -t headers < <(find "${folders[@]}" -type f -name '*.h' -print0 | sort -z)
if ((${#headers[@]} == 0)); then
    echo "check-headers: no headers found" >&2
    exit 1
fi
# shellcheck disable=SC2016 # expanded by the shell that xargs starts
printf '%s\0' "${headers[@]}" | xargs -0 -n 1 -P "$(nproc)" bash -c 'check_header "$1"' check_header
echo "check-headers: ${#headers[@]} headers"
