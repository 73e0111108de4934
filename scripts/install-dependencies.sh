#!/usr/bin/env bash
# Installs the Debian packages that a task needs and that are missing.
#
#   scripts/install-dependencies.sh [GROUP...]      build (the default), windows, tests, checks, compare, pictures,
#                                                   faults, fuzzing, all
#
# Asks nothing and changes nothing when all packages are there. Exit status: 0 when they are, 1 when they are not and
# could not be installed, 2 for an unknown group.
set -euo pipefail

build=(g++ cmake ninja-build libcli11-dev nlohmann-json3-dev)
windows=(qt6-base-dev fonts-dejavu-core)
tests=(libgtest-dev libgmock-dev libbenchmark-dev)
checks=(clang-format clang-tidy clang shellcheck)
compare=(fio)
pictures=(xvfb xdotool imagemagick openbox)
faults=(libfuse3-dev fuse3 strace pkg-config xvfb openbox xdotool imagemagick at-spi2-core dbus python3-gi)
fuzzing=(clang libclang-rt-dev)

wanted=()
for group in "${@:-build}"; do
    case "$group" in
        build) wanted+=("${build[@]}") ;;
        windows) wanted+=("${windows[@]}") ;;
        tests) wanted+=("${tests[@]}") ;;
        checks) wanted+=("${checks[@]}") ;;
        compare) wanted+=("${compare[@]}") ;;
        pictures) wanted+=("${pictures[@]}") ;;
        faults) wanted+=("${faults[@]}") ;;
        fuzzing) wanted+=("${fuzzing[@]}") ;;
        all)
            wanted+=("${build[@]}" "${windows[@]}" "${tests[@]}" "${checks[@]}" "${compare[@]}" "${pictures[@]}"
                "${faults[@]}" "${fuzzing[@]}")
            ;;
        *)
            echo "$0: unknown group '$group'; the head of the script names them" >&2
            exit 2
            ;;
    esac
done

if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
    echo "This is not a Debian system; taking these packages' counterparts as installed: ${wanted[*]}" >&2
    exit 0
fi

missing=()
for package in "${wanted[@]}"; do
    if ! dpkg-query -W -f='${db:Status-Status}\n' "$package" 2>/dev/null | grep -qx installed; then
        missing+=("$package")
    fi
done
if ((${#missing[@]} == 0)); then
    exit 0
fi

as_root=()
if ((EUID != 0)); then
    if ! command -v sudo >/dev/null; then
        echo "These packages are missing, and there is no sudo to install them with: ${missing[*]}" >&2
        echo "Install them as root by hand:  apt-get install ${missing[*]}" >&2
        exit 1
    fi
    as_root=(sudo)
fi
as_root+=(env DEBIAN_FRONTEND=noninteractive)

echo "Installing: ${missing[*]}" >&2
log=$(mktemp)
trap 'rm -f "$log"' EXIT
# A failed update need not matter: the lists that are there may do. What counts is whether the packages install.
"${as_root[@]}" apt-get -qq update >"$log" 2>&1 || true
if ! "${as_root[@]}" apt-get -qq install --yes --no-install-recommends "${missing[@]}" >>"$log" 2>&1; then
    cat "$log" >&2
    echo "These packages could not be installed: ${missing[*]}" >&2
    echo "Install them by hand:  sudo apt-get install ${missing[*]}" >&2
    exit 1
fi
