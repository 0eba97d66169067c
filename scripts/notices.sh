# The licences that travel with the built programs. Sourced by kora.

# Where each text lies: NAME FILE. The sources are those that the programs were built from.
notice_texts() {
    local sources=${KORA_SOURCES:-$KORA_ROOT/build/sources} doc=/usr/share/doc
    cat <<TEXT
sqlite3 $sources/sqlite3/LICENSE.md
opencore-amr $sources/opencore-amr/LICENSE
libsoxr $sources/libsoxr/LICENCE
libsoxr-LGPL-2.1 $sources/libsoxr/COPYING.LGPL
libsoxr-parts $sources/libsoxr/debian/copyright
kissfft $sources/kissfft/COPYING
kissfft-BSD-3-Clause $sources/kissfft/LICENSES/BSD-3-Clause
nlohmann-json $doc/nlohmann-json3-dev/copyright
gcc-mingw-w64 $doc/gcc-mingw-w64-base/copyright
GPL-3 /usr/share/common-licenses/GPL-3
mingw-w64 $doc/mingw-w64-common/copyright
TEXT
}

# notices_copy FOLDER: our own licence, what else is inside, and each text of it.
notices_copy() {
    local name file
    mkdir -p "$1/notices"
    install -m 644 "$KORA_ROOT/LICENSE" "$KORA_ROOT/THIRD-PARTY.md" "$1/"
    while read -r name file; do
        [ -s "$file" ] || fail "$file is missing; \`./kora build\` fetches the sources that it is a part of"
        install -m 644 "$file" "$1/notices/$name.txt"
    done < <(notice_texts)
}
