#!/usr/bin/env bash
# Goes through title, settings and farms in a real window on a virtual display with real pointer and key events.
# Usage: title_and_farms.sh OUT_DIR; the log and, after a failure, a picture are left there.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
out=${1:?output folder}
mkdir -p "$out"
export XDG_DATA_HOME="$out/data"
rm -rf "$XDG_DATA_HOME"
mkdir -p "$XDG_DATA_HOME"

if [ "${2:-}" != inside ]; then
    exec env -u DISPLAY -u WAYLAND_DISPLAY xvfb-run -a -s "-screen 0 320x640x24" "$0" "$out" inside
fi
log=$out/title.log
fail() {
    echo "title_and_farms: $1"
    tail -n 30 "$log"
    exit 1
}
timeout 150 "$root/tools/godot" --rendering-driver opengl3 --audio-driver Dummy --path "$root/project" --resolution 240x520 \
    --position 0,0 --script "$root/tests/scenario/title_and_farms.gd" -- --lang=en >"$log" 2>&1 || fail "the way was not gone"
grep -nE '^(SCRIPT )?ERROR:' "$log" && fail "engine errors"
grep 'TITLE ok' "$log"
