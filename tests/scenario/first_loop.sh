#!/usr/bin/env bash
# Plays the first loop in a real window on a virtual display with real key events, quits, starts again and compares.
# Usage: first_loop.sh OUT_DIR; pictures and logs are left there.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
out=${1:?output folder}
mkdir -p "$out"
export XDG_DATA_HOME="$out/data"
rm -rf "$XDG_DATA_HOME"
mkdir -p "$XDG_DATA_HOME"

if [ "${2:-}" != inside ]; then
    exec env -u DISPLAY -u WAYLAND_DISPLAY xvfb-run -a -s "-screen 0 540x960x24" "$0" "$out" inside
fi

run() { # LOG ARGUMENTS...
    local log=$1
    shift
    timeout 900 "$root/tools/godot" --rendering-driver opengl3 --audio-driver Dummy --path "$root/project" \
        --resolution 270x480 --script "$root/tests/scenario/first_loop.gd" -- --play --lang=en "$@" >"$log" 2>&1
}

fail() {
    echo "first_loop: $1"
    tail -n 30 "$2"
    exit 1
}

run "$out/first.log" --first || fail "the first session failed" "$out/first.log"
# Paused after the build: what is compared is what came back, not what happened since.
run "$out/second.log" --second --pause || fail "the second session failed" "$out/second.log"
for log in "$out/first.log" "$out/second.log"; do
    grep -nE '^(SCRIPT )?ERROR:' "$log" && fail "engine errors in $(basename "$log")" "$log"
done
grep -q 'TILMARCH bought coop_a lv1' "$out/first.log" || fail "coop_a was not bought" "$out/first.log"
grep 'LOOP' "$out/first.log" "$out/second.log"
