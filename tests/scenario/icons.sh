#!/usr/bin/env bash
# Lets the interface's pictures of goods and things be rendered on a virtual display and looks at each one. Leaves
# sheets of them, icons_*.png, and the log. Usage: icons.sh OUT_DIR
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
out=${1:?output folder}
mkdir -p "$out/data"
log="$out/icons.log"
status=0
XDG_DATA_HOME="$out/data" timeout --kill-after=10 250 "$root/tools/godot" --virtual-display=320x240 --resolution 160x120 \
    --path "$root/project" --script "$root/tests/scenario/icons.gd" -- "--into=$out" >"$log" 2>&1 || status=$?
if [ $status -ne 0 ] || grep -nE '^(SCRIPT |SHADER )?ERROR|came out empty|leaked' "$log" ||
    [ "$(grep -c 'no picture of item_unicorn' "$log")" != 1 ]; then
    echo "icons: failed with status $status"
    tail -n 40 "$log"
    exit 1
fi
grep 'ICONS taken' "$log"
