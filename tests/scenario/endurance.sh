#!/usr/bin/env bash
# The bot plays a farm in Arabic, without a text that has no row; what it saves every five minutes comes back unchanged
# from a second start.
# Usage: endurance.sh OUT_DIR [MINUTES [FARM.json]]; from an empty farm without a document. 120 minutes by default.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
out=${1:?output folder}
minutes=${2:-120}
start=${3:-}
rm -rf "$out"
mkdir -p "$out"
export XDG_DATA_HOME="$out/data"
user="$XDG_DATA_HOME/Tilmarch"
mkdir -p "$user"
[ -z "$start" ] || cp "$start" "$user/save_endurance.json"

run() { # LOG ARGUMENTS...
    local log=$1
    shift
    timeout 3000 "$root/tools/godot" --headless --fixed-fps 30 --path "$root/project" \
        --script "$root/tests/scenario/endurance.gd" -- --play --autoplay "$@" >"$log" 2>&1
}
fail() {
    echo "endurance: $1"
    grep ENDURANCE "$2" || tail -n 30 "$2"
    exit 1
}

run "$out/play.log" --save=endurance "--minutes=$minutes" --seed=1 --lang=ar --trmiss || fail "the farm was not played" "$out/play.log"
grep ENDURANCE "$out/play.log"
grep -q 'reached: dairy true, mill true, food true' "$out/play.log" || fail "the food land was not reached" "$out/play.log"
grep -qE 'factory [1-9]' "$out/play.log" || fail "no factory stands" "$out/play.log"
! grep TRMISS "$out/play.log" || fail "texts without an Arabic row" "$out/play.log"
rounds=$((minutes / 5))
for ((i = 1; i <= rounds; i++)); do
    [ -s "$user/round_$i.json" ] || fail "save $i is missing" "$out/play.log"
    cp "$user/round_$i.json" "$user/save_again.json"
    run "$out/again_$i.log" --save=again --again --pause || fail "save $i came back changed" "$out/again_$i.log"
done
for log in "$out"/*.log; do
    ! grep -nE '^(SCRIPT )?ERROR:' "$log" || fail "engine errors in $(basename "$log")" "$log"
done
echo "endurance: $rounds saves came back the same"
