#!/usr/bin/env bash
# source_packages.sh NAME: unpacks the distribution's source package NAME into build/sources/NAME and prints that folder.
# Its archives have to be those of source_packages.sums, so that every machine builds the same; of the distribution's own
# changes to it another revision is taken as well, and said, since it is there to mend something. Done once for all
# presets; the machine's own package lists stay as they are. Called by CMake.
# Needs: dpkg-dev, ca-certificates; deb entries in /etc/apt (their addresses, suites and keys are used).
set -euo pipefail
ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
SOURCES=${KORA_SOURCES:-$ROOT/build/sources}
SUMS=${KORA_SOURCE_SUMS:-$ROOT/scripts/source_packages.sums}

fail() { printf 'source_packages: %s\n' "$*" >&2; exit 1; }

# Writes the machine's own enabled "deb" entries as "deb-src" entries, in the one-line form.
deb_src_list() {
    local file
    for file in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
        [ -f "$file" ] && sed -n 's/^[[:space:]]*deb[[:space:]]/deb-src /p' "$file"
    done
    for file in /etc/apt/sources.list.d/*.sources; do
        [ -f "$file" ] && awk '
            function value(line) { sub(/^[^:]*:[[:space:]]*/, "", line); return line }
            function flush_entry(   i, j, n, m, u, s, options) {
                if (types ~ /(^| )deb( |$)/ && enabled !~ /^(no|false|0|off)$/ && inline_key == 0) {
                    options = key == "" ? "" : "[signed-by=" key "] "
                    n = split(uris, u, " "); m = split(suites, s, " ")
                    for (i = 1; i <= n; i++) for (j = 1; j <= m; j++)
                        print "deb-src " options u[i] " " s[j] " " components
                }
                types = uris = suites = components = key = enabled = ""; inline_key = 0
            }
            /^#/ { next }
            /^[[:space:]]*$/ { flush_entry(); next }
            tolower($1) == "types:" { types = value($0) }
            tolower($1) == "uris:" { uris = value($0) }
            tolower($1) == "suites:" { suites = value($0) }
            tolower($1) == "components:" { components = value($0) }
            tolower($1) == "enabled:" { enabled = tolower(value($0)) }
            tolower($1) == "signed-by:" { key = value($0); if (key == "" || key ~ /^-----/) inline_key = 1 }
            END { flush_entry() }' "$file"
    done
    true
}

# apt with lists, state and sources of our own; the proxy, certificates and credentials stay the machine's.
own_apt() {
    apt-get -q -o Dir::Etc::sourcelist="$SOURCES/apt/sources.list" -o Dir::Etc::sourceparts=- \
        -o Dir::State::lists="$SOURCES/apt/lists" -o Dir::Cache="$SOURCES/apt/cache" \
        -o APT::Get::List-Cleanup=0 -o APT::Sandbox::User=root -o Acquire::Languages=none "$@"
}

# verify: the archives of the package that lies in this folder.
verify() {
    local file sum
    for file in *.tar.*; do
        sum=$(awk -v file="$file" '$2 == file { print $1 }' "$SUMS")
        if [ -z "$sum" ]; then
            case $file in
                *.debian.tar.*) printf '%s is another revision than the one that was looked at\n' "$file" >"$SOURCES/$1.note" ;;
                *) fail "$file is what the distribution has; another version is built here, by $SUMS" ;;
            esac
        elif ! sha256sum --quiet --check - <<<"$sum  $file"; then
            fail "$file is not what it was when it was looked at, by $SUMS"
        fi
    done
}

fetch() {
    local name=$1 work=$SOURCES/$1.part
    command -v dpkg-source >/dev/null || fail "the package dpkg-dev is missing"
    mkdir -p "$SOURCES/apt/lists/partial" "$SOURCES/apt/cache/archives/partial"
    deb_src_list >"$SOURCES/apt/sources.list"
    [ -s "$SOURCES/apt/sources.list" ] || fail "no deb entry in /etc/apt to derive the source entries from"
    rm -rf "$work" "$SOURCES/$name.note" && mkdir "$work"
    cd "$work" || fail "there is no $work"
    own_apt update && own_apt source --download-only "$name" || fail "the distribution's sources could not be had"
    verify "$name"
    dpkg-source -x ./*.dsc unpacked || fail "$name could not be unpacked"
    mv unpacked "$SOURCES/$name"
    cd "$SOURCES" || exit
    rm -rf "$work" "$SOURCES/apt"
}

[ $# -eq 1 ] || fail "usage: source_packages.sh NAME"
mkdir -p "$SOURCES"
# Two configurations may ask at the same time: one fetches, the other finds it there.
exec 9>"$SOURCES/$1.lock"
flock 9
if [ ! -d "$SOURCES/$1" ]; then
    # In a shell of its own, so that its last words are told below.
    (fetch "$1") >"$SOURCES/$1.log" 2>&1 || fail "fetching $1 failed; the last lines of $SOURCES/$1.log:
$(tail -n 5 "$SOURCES/$1.log")"
    [ ! -f "$SOURCES/$1.note" ] || printf 'source_packages: %s\n' "$(<"$SOURCES/$1.note")" >&2
fi
printf '%s\n' "$SOURCES/$1"
