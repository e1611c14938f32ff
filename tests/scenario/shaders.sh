#!/usr/bin/env bash
# Draws every shader once on a virtual display. Usage: shaders.sh OUT_DIR; the log is left there.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
out=${1:?output folder}
mkdir -p "$out/data"
log="$out/shaders.log"
status=0
XDG_DATA_HOME="$out/data" timeout --kill-after=10 200 "$root/tools/godot" --virtual-display=320x240 --resolution 160x120 \
    --path "$root/project" --script "$root/tests/scenario/shaders.gd" >"$log" 2>&1 || status=$?
if [ $status -ne 0 ] || grep -nE '^(SCRIPT |SHADER )?ERROR' "$log"; then
    echo "shaders: failed with status $status"
    tail -n 40 "$log"
    exit 1
fi
grep 'SHADERS drawn' "$log"
