#!/usr/bin/env bash
# Which source packages are built: made-up ones, that an apt of the test's own has.
set -uo pipefail
SUITE=SourcePackages
WORK=$(mktemp -d)
KORA_LANES=
. "$(dirname "${BASH_SOURCE[0]}")/../install/checks.sh"
trap 'rm -rf "$WORK"' EXIT

# The package "pond" with one file, which says TEXT: package TEXT REVISION.
package() {
    rm -rf "$WORK/archive" && mkdir -p "$WORK/archive/pond-1.0/debian/source"
    (
        cd "$WORK/archive" || exit
        echo "$1" >pond-1.0/water
        tar --sort=name --mtime=@0 --owner=0 --group=0 --exclude=debian -czf pond_1.0.orig.tar.gz pond-1.0
        echo '3.0 (quilt)' >pond-1.0/debian/source/format
        printf 'Source: pond\nMaintainer: Nobody <nobody@example.org>\n\nPackage: pond\nArchitecture: all\nDescription: x\n' >pond-1.0/debian/control
        printf 'pond (1.0-%s) stable; urgency=low\n\n  * It is.\n\n -- Nobody <nobody@example.org>  Thu, 01 Jan 2026 00:00:00 +0000\n' "$2" >pond-1.0/debian/changelog
        dpkg-source -b pond-1.0 >/dev/null 2>&1
    )
}
# Those that are at hand now are the ones that were looked at.
look_at_it() { (cd "$WORK/archive" && sha256sum ./*.tar.* | sed 's, \./, ,') >"$WORK/sums"; }

mkdir "$WORK/bin"
cat >"$WORK/bin/apt-get" <<'TEXT'
#!/usr/bin/env bash
case "$*" in *' source '*) cp "$ARCHIVE"/pond_* . 2>&1 ;; esac
TEXT
chmod +x "$WORK/bin/apt-get"

# unpack: the folder that the script tells, and what it says besides.
unpack() {
    rm -rf "$WORK/sources"
    ARCHIVE=$WORK/archive KORA_SOURCES=$WORK/sources KORA_SOURCE_SUMS=$WORK/sums PATH=$WORK/bin:$PATH \
        "$KORA_TREE/scripts/source_packages.sh" pond >"$WORK/folder" 2>"$WORK/words"
}

says() { grep -q "$1" "$WORK/words"; }

looked_at() {
    package clear 1
    look_at_it
    unpack && same "$(<"$WORK/folder")" "$WORK/sources/pond" && grep -q clear "$WORK/sources/pond/water" &&
        same "$(<"$WORK/words")" ''
}

changed() {
    package clear 1
    look_at_it
    package muddy 1
    ! unpack && says 'pond_1.0.orig.tar.gz is not what it was' && [ ! -e "$WORK/sources/pond" ]
}

changed_by_the_distribution() {
    package clear 1
    look_at_it
    sed -i 's/^.*debian/0000 pond_1.0-1.debian/' "$WORK/sums"
    ! unpack && says 'pond_1.0-1.debian.tar.xz is not what it was'
}

mended() {
    package clear 1
    look_at_it
    package clear 2
    unpack && says 'pond_1.0-2.debian.tar.xz is another revision' && grep -q clear "$WORK/sources/pond/water"
}

other_version() {
    package clear 1
    look_at_it
    sed -i '/orig/d' "$WORK/sums"
    ! unpack && says 'another version is built here'
}

missing() {
    rm -rf "$WORK/archive"
    ! unpack && says 'sources could not be had' && [ ! -e "$WORK/sources/pond" ]
}

check APackageThatWasLookedAtIsUnpackedWithoutAWord looked_at
check AnArchiveThatWasChangedIsRefused changed
check ARevisionThatWasChangedAfterwardsIsRefused changed_by_the_distribution
check ALaterRevisionOfTheDistributionsIsTakenAndSaid mended
check AVersionThatNobodyLookedAtIsRefused other_version
check APackageThatCannotBeHadLeavesNothing missing
finish
