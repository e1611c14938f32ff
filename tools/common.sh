# Shared by the commands of this folder: where things are, and how to say what happens. Sourced, never run.
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cache="${XDG_CACHE_HOME:-$HOME/.cache}/tilmarch"
engine_home="$cache/engine"    # holds one folder for each fetched engine and the link `current`
engine_prefix="$engine_home/current"
tool=$(basename "$0")

say() { printf '\033[1m%s:\033[0m %s\n' "$tool" "$*"; }

# die WHAT [WHAT TO DO]: says what failed and how to go on, then stops the command.
die() {
    printf '\n\033[31m%s: failed:\033[0m %s\n' "$tool" "$1" >&2
    [ -n "${2:-}" ] && printf '%s: what to do: %s\n' "$tool" "$2" >&2
    exit 1
}

# quietly LOG COMMAND...: runs a command with its output in LOG and shows the end of it when the command fails.
quietly() {
    local log=$1
    shift
    mkdir -p "$(dirname "$log")"
    "$@" >"$log" 2>&1 && return 0
    tail -n 25 "$log" >&2
    return 1
}

as_root() {
    if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi
}
