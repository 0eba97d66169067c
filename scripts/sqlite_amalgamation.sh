#!/usr/bin/env bash
# Makes SQLite's single-file form from the distribution's source package and prints the folder that has
# sqlite3.c and sqlite3.h. Done once for all presets. Needs: dpkg-dev, tclsh (tcl), make, a host C compiler.
set -euo pipefail
HERE=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
SOURCE=$("$HERE/source_packages.sh" sqlite3)
OUT=$SOURCE-amalgamation

exec 9>"$OUT.lock"
flock 9
if [ ! -f "$OUT/sqlite3.c" ]; then
    work=$OUT.part log=$OUT.log
    rm -rf "$work" && mkdir "$work"
    (cd "$work" && "$SOURCE/configure" --disable-tcl --disable-readline && make sqlite3.c) >"$log" 2>&1 || {
        printf "sqlite_amalgamation: it failed; the last lines of %s:\n%s\n" "$log" "$(tail -n 5 "$log")" >&2
        exit 1
    }
    mkdir -p "$OUT"
    # sqlite3.c comes last: its presence says that the folder is complete.
    cp "$work/sqlite3.h" "$OUT/"
    cp "$work/sqlite3.c" "$OUT/sqlite3.c.part"
    mv "$OUT/sqlite3.c.part" "$OUT/sqlite3.c"
    rm -rf "$work"
fi
printf '%s\n' "$OUT"
