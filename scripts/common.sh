# Names and small helpers that every script shares. Sourced; expects KORA_ROOT.
set -euo pipefail

KORA_HOME=${KORA_HOME:-$KORA_ROOT/out}
case $KORA_HOME in /*) ;; *) KORA_HOME=$PWD/$KORA_HOME ;; esac
export KORA_HOME
KORA_BUILD=$KORA_ROOT/build/release
KORA_BIN=$KORA_BUILD/bin

# Bold on a terminal; a file gets the words alone.
step() {
    if [ -t 2 ]; then printf '\033[1m== %s\033[0m\n' "$*" >&2; else printf '== %s\n' "$*" >&2; fi
}
# process_start PID: when it began, in the kernel's ticks; nothing when it is gone. The kernel gives a process's number to
# another one some day, the two together never.
process_start() {
    local stat
    stat=$(cat "/proc/$1/stat" 2>/dev/null) || return 0
    # Behind the name, which may hold anything: the state, and the start as the twentieth.
    read -ra stat <<<"${stat##*) }"
    [ "${stat[0]}" = Z ] || printf '%s\n' "${stat[19]}"
}
# process_is PID START: that one still runs.
process_is() { [ -n "${1:-}" ] && [ -n "${2:-}" ] && [ "$(process_start "$1")" = "$2" ]; }

fail() { printf 'kora: %s\n' "$*" >&2; exit 1; }
