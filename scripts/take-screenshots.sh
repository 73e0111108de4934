#!/usr/bin/env bash
# Takes the pictures of docs/images: starts the desktop program on a display of its own, clicks through it as a user
# does, and photographs each window.
#
#   scripts/take-screenshots.sh [--quick] [DIRECTORY]      (without a word: docs/images)
#
# Needs the packages of "install-dependencies.sh build windows pictures". Takes about ten minutes, most of them for a
# chart of more than sixty samples; --quick leaves that one out. Measures a folder of its own under /tmp.
set -euo pipefail

root=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.." && pwd)
program=${GAUGELINE:-$root/build/release/Source/Programs/gaugeline}
quick=0
if [[ ${1:-} == --quick ]]; then
    quick=1
    shift
fi
mkdir -p -- "${1:-$root/docs/images}"
pictures=$(realpath -- "${1:-$root/docs/images}")

for tool in Xvfb openbox xdotool import python3; do
    command -v "$tool" >/dev/null || { echo "$0: $tool is missing (scripts/install-dependencies.sh pictures)" >&2 && exit 1; }
done
[[ -x $program ]] || { echo "$0: $program is missing; build it first (./test.sh)" >&2 && exit 1; }

# shellcheck source=scripts/own-display.sh
source "$root/scripts/own-display.sh"
media=$scratch/Media
mkdir "$media"

start_program() {
    (cd -- "$media" && exec "$program") &
    program_pid=$!
    children+=("$program_pid")
    wait_for "Quarn IO Gaugeline"
}

# wait_for TITLE: until a window with the title is on the display; the last one that came is the one meant.
wait_for() {
    window=$(timeout 20 xdotool search --sync --onlyvisible --name "^$1( — .*)?\$" | tail -n 1)
    [[ -n $window ]] || { echo "$0: no window is called $1" >&2 && exit 1; }
    xdotool windowactivate --sync "$window"
    sleep 0.4
}

# Where the middle of a pane is, from the left and from the bottom edge of its window: a menu bar is on top.
middle_of_pane() {
    python3 - "$root/Resources/Layouts/$1.xml" "$2" <<'PYTHON'
import sys
import xml.etree.ElementTree as ElementTree

def find(element, left, top):
    for child in element:
        x, y = left + int(child.get("left", 0)), top + int(child.get("top", 0))
        if child.get("id") == sys.argv[2]:
            return x + int(child.get("width")) // 2, y + int(child.get("height")) // 2
        found = find(child, x, y)
        if found:
            return found
    return None

window = ElementTree.parse(sys.argv[1]).getroot()
x, y = find(window, 0, 0)
print(x, int(window.get("height")) - y, y)
PYTHON
}

height_of_window() { xdotool getwindowgeometry "$window" | sed -n 's/.*Geometry: [0-9]*x//p'; }

# click LAYOUT PANE [FROM_THE_MIDDLE]: in a window of its first size, so far right of the pane's middle.
click() {
    local x from_bottom from_top
    read -r x from_bottom from_top < <(middle_of_pane "$1" "$2")
    if [[ $1 == 2128 ]]; then
        from_top=$(($(height_of_window) - from_bottom))
    fi
    xdotool mousemove --window "$window" "$((x + ${3:-0}))" "$from_top" click 1
    sleep 0.4
}

# The field of an edit-popup takes a click anywhere but at its arrow.
type_into() {
    click "$1" "$2"
    xdotool key ctrl+a
    xdotool type --delay 5 -- "$3"
}

# choose LAYOUT PANE FROM_THE_MIDDLE NUMBER: an item of a popup, whose arrow is that far right of its middle.
choose() {
    click "$1" "$2" "$3"
    xdotool key Home
    for _ in $(seq 2 "$4"); do
        xdotool key Down
    done
    xdotool key Return
    sleep 0.3
}

photograph() {
    sleep 0.6
    xdotool mousemove 1270 890
    import -window "$window" "$pictures/$1.png"
    echo "$1.png"
}

# Custom settings: read or write (1: writes, then reads; 2: writes; 3: reads), KB/s, minutes, path.
set_test() {
    local direction=$1 rate=$2 minutes=$3 path=$4
    wait_for "Quarn IO Gaugeline"
    click 2128 11
    wait_for "Settings"
    if (($(height_of_window) < 400)); then
        xdotool mousemove --window "$window" 220 234 click 1 # "Custom Test>>>", in the standard form
        sleep 0.4
    fi
    type_into 2129 200 "$path"
    type_into 2129 300 "$minutes"
    type_into 2129 700 "$rate"
    choose 2129 500 142 "$direction"
}

start_test() {
    wait_for "Quarn IO Gaugeline"
    click 2128 15
}

stop_test() {
    wait_for "Quarn IO Gaugeline"
    click 2128 16
    sleep 5
}

start_display
start_program
photograph main-idle

click 2128 11
wait_for "Settings"
photograph settings-standard
xdotool key Escape
sleep 0.5

set_test 1 4096 2 "$media"
photograph settings-custom
click 2129 12
wait_for "Log Files"
type_into 2134 8 "$media/output.log"
type_into 2134 9 "$media/errors.log"
photograph log-files
xdotool key Return
wait_for "Settings"
click 2129 14
start_test
sleep 26
wait_for "Quarn IO Gaugeline"
photograph main-writing
sleep 56
photograph main-reading
stop_test

click 2128 11
wait_for "Settings"
type_into 2129 200 " "
type_into 2129 300 "none"
xdotool key Return
sleep 0.6
window=$(xdotool getactivewindow)
photograph settings-alert
xdotool key Return
wait_for "Settings"
xdotool key Escape
sleep 0.5

set_test 1 4096 2 "$media/missing"
sleep 0.6
xdotool key Return
start_test
sleep 14
photograph main-alarm
stop_test

xdotool key F1
wait_for "About"
photograph about
xdotool key Return
sleep 0.5

set_test 2 16384 8 "$media"
xdotool key Return
if ((quick == 0)); then
    start_test
    sleep 402
    photograph main-chart
    stop_test
fi
wait_for "Quarn IO Gaugeline"
xdotool key ctrl+r # leaving while a test runs shows what is waited for
sleep 4
xdotool key ctrl+q
wait_for "Quitting"
photograph quitting
timeout 30 tail --pid="$program_pid" -f /dev/null || echo "$0: the program does not end" >&2
