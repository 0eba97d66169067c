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
fail() { printf 'kora: %s\n' "$*" >&2; exit 1; }
