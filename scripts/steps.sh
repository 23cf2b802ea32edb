# shellcheck shell=bash disable=SC2154
# Shared by the commands of the project: saying what happens, keeping logs, telling what failed.
# Expects $root, the folder of the project.

logs="$root/build/logs"

say() { printf '%s\n' "$@"; }

complain() { printf '%s\n' "$@" >&2; }

die() {
    complain "$@"
    exit 1
}

# logged NAME ADVICE COMMAND…: runs the command with its output in build/logs/NAME.log.
# When it fails, the end of the log, its path and the advice are shown.
logged() {
    local name=$1 advice=$2 log="$logs/$1.log" status=0
    shift 2
    mkdir -p -- "$logs"
    "$@" >"$log" 2>&1 </dev/null || status=$?
    [ "$status" -ne 0 ] || return 0
    tail -n 40 -- "$log" >&2 || true
    complain "" "Failed: $name (exit code $status). The whole output is in $log" "$advice"
    return 1
}

stage_lines=()
stages_failed=0

# stage TEXT COMMAND…: runs one part of a longer run and remembers how it ended.
stage() {
    local text=$1 began=$SECONDS verdict=passed
    shift
    say "" "== $text"
    "$@" || verdict=FAILED
    [ "$verdict" = passed ] || stages_failed=$((stages_failed + 1))
    stage_lines+=("$(printf '%-7s %5d s  %s' "$verdict" $((SECONDS - began)) "$text")")
    [ "$verdict" = passed ]
}

# Prints one line for each stage; false when one of them failed.
summary() {
    say "" "== Summary" "${stage_lines[@]}"
    [ "$stages_failed" -eq 0 ]
}

# File names in any script need a UTF-8 locale; a bare machine has none set.
use_utf8() {
    case ${LC_ALL:-${LC_CTYPE:-${LANG:-}}} in
        *.[Uu][Tt][Ff]-8* | *.[Uu][Tt][Ff]8*) ;;
        *) export LC_ALL=C.UTF-8 ;;
    esac
}
