#!/usr/bin/env bash
# Fails when an include below Source/ runs up a floor, when headers include each other in a circle, or when a library
# is used on a floor that must do without it.
#
# Exceptions stand in scripts/check-layers-exceptions.txt, one a line: "File.cpp -> Other.h" for an include, "circle
# A.h B.h" for a circle, as this script prints them. One that is no longer needed fails too, so the list only shrinks.
set -euo pipefail

cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.."

find Source -type f \( -name '*.h' -o -name '*.cpp' \) | LC_ALL=C sort |
    awk -v exceptions_file=scripts/check-layers-exceptions.txt -f scripts/check-layers.awk
