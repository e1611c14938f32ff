#!/usr/bin/env bash
# Damaged save files, round by round. Usage: damaged_farms.sh OUT_DIR FARM.json [FROM [ROUNDS]]
# A failing round comes back with its number: damaged_farms.sh OUT_DIR FARM.json 16 1 for round 17.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
out=${1:?output folder}
base=$(realpath "${2:?a farm}")
rm -rf "$out"
mkdir -p "$out"
export XDG_DATA_HOME="$out/data"
log=$out/fuzz.log
timeout 3000 "$root/tools/godot" --headless --fixed-fps 30 --path "$root/project" \
    --script "$root/tests/fuzz/damaged_farms.gd" -- --play --save=fuzz "--base=$base" "--from=${3:-0}" \
    "--rounds=${4:-40}" >"$log" 2>&1 || {
    grep 'FUZZ.*FAILED' "$log" || tail -n 30 "$log"
    exit 1
}
# What the game itself has to say of a damaged farm is welcome; the engine must have no cause to complain.
if grep -nE '^(SCRIPT )?ERROR:' "$log" | grep -v 'ERROR: TILMARCH'; then
    echo "fuzz: engine errors, see $log"
    exit 1
fi
grep 'FUZZ rounds done' "$log"
