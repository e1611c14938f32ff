#!/usr/bin/env bash
# Compares the goods and the money of one built farm with the camera on it and far away, and prints the table.
# Usage: watched.sh [SEEDS [MINUTES]]; without arguments 5 seeds of 20 minutes of game time, about 3 minutes of work.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
export TILMARCH_WATCH_SEEDS=${1:-5} TILMARCH_WATCH_MINUTES=${2:-20} TEST_TIMEOUT=1800
log=$(mktemp)
trap 'rm -f "$log"' EXIT
status=0
"$root/tests/engine/run" "$root/build/dev" watched_test.cpp >"$log" 2>&1 || status=$?
grep -E '^WATCHED|Failure|FAILED|PASSED|unexpected' "$log"
exit $status
