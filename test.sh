#!/usr/bin/env bash
# Builds everything and runs all tests. Arguments go to ctest: ./test.sh -L Platform -j 2
#
# The windows are tested without a display. Works from any directory. The exit status is 0 when all tests passed.
set -euo pipefail

root=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
cd -- "$root"

scripts/install-dependencies.sh build windows tests
cmake --preset release -DBUILD_TESTING=ON -DGAUGELINE_WINDOWS=ON
cmake --build --preset release
ctest --preset release "$@"
