# shellcheck shell=bash
# For scripts that show windows: a folder that goes with the script, and a display of its own with a window manager.
# To be sourced; what the script starts beside goes into the array `children`, which is ended with the script.

scratch=$(mktemp -d)
children=()
clean_up() {
    kill "${children[@]}" 2>/dev/null || true
    wait 2>/dev/null || true
    rm -rf -- "$scratch"
}
trap clean_up EXIT

start_display() {
    local fifo=$scratch/display number
    mkfifo "$fifo"
    Xvfb -displayfd 3 -screen 0 1280x900x24 3>"$fifo" >/dev/null 2>&1 &
    children+=($!)
    read -r number <"$fifo"
    export DISPLAY=:$number
    openbox >/dev/null 2>&1 &
    children+=($!)
    sleep 1
}
