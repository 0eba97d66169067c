#!/usr/bin/env bash
# Packs the radio for Debian, looks at the package as the distribution's tools do, and lets it live unpacked.
# usage: debian_test.sh FOLDER-OF-PROGRAMS
set -uo pipefail
KORA_PROGRAMS=$1 SUITE=PackageForDebian
WORK=$(mktemp -d)
USER_HOME=$WORK/home
. "$(dirname "${BASH_SOURCE[0]}")/checks.sh"
DEB=$WORK/kora.deb ROOT=$WORK/root HANDSET=$USER_HOME/.local/share/kora-handset
kora() { as_user KORA_TUNERLOG='\tuner.log' "$ROOT/usr/bin/kora" "$@"; }
clean_up() {
    WINEPREFIX=$HANDSET/prefix "$(dirname "$KORA_WINE")/wineserver" -k 2>/dev/null
    rm -rf "$WORK"
}
trap clean_up EXIT

field() { dpkg-deb -f "$DEB" "$1"; }
version_of_the_program() {
    same "$(field Version)" "$(sed -n 's/^FILEVERSION \([0-9]*\), \([0-9]*\), \([0-9]*\).*/\1.\2.\3/p' "$KORA_TREE/resources/ui.rc")"
}
# All that an installed radio asks for when it starts.
depends_on_what_it_needs() {
    local name
    . "$KORA_TREE/scripts/packages.sh"
    for name in "${KORA_RUN_PACKAGES[@]}"; do
        grep -qE "(^|, )$name(,|$)" <<<"$(field Depends)" || { echo "$name is missing"; return 1; }
    done
}
# named_in FIELD: the packages there, one a line.
named_in() { field "$1" | tr ',' '\n' | awk '{ print $1 }'; }
libraries_of_the_magnifier() { objdump -p "$ROOT/usr/lib/kora/kora-magnifier" | sed -n 's/^  NEEDED *//p'; }
magnifiers_libraries_come_with_it() {
    local library
    for library in $(libraries_of_the_magnifier); do
        dpkg -S "*/$library" | cut -d: -f1 | grep -qxFf <(named_in Depends) || { echo "$library is missing"; return 1; }
    done
    libraries_of_the_magnifier | grep -qx 'libxcb-xtest\.so\.0' && named_in Recommends | grep -qx xvfb
}
everything_belongs_to_root() { ! dpkg-deb -c "$DEB" | grep -v ' root/root '; }
nobody_else_may_write() { ! dpkg-deb -c "$DEB" | grep -E '^.(.{4}w|.{7}w)' | grep -v '^l'; }
sums_fit() { (cd "$ROOT" && md5sum --quiet -c "$WORK/control/md5sums") && same "$(cd "$ROOT" && find usr -type f | wc -l)" "$(wc -l <"$WORK/control/md5sums")"; }
nothing_names_the_tree() { ! grep -rlF "$WORK/tree" "$ROOT" "$WORK/control"; }
# Whose code is in the programs, and each text.
licences_are_there() {
    local doc=$ROOT/usr/share/doc/kora name
    grep -q 'Permission is hereby granted' "$doc/copyright" || return 1
    for name in sqlite3 opencore-amr libsoxr libsoxr-parts kissfft nlohmann-json gcc-mingw-w64 mingw-w64; do
        grep -q "| $name |" "$doc/copyright" && [ -s "$doc/notices/$name.txt" ] || { echo "$name"; return 1; }
    done
}
guide_has_its_pictures() {
    local picture
    for picture in $(grep -o 'pictures/[a-z-]*\.png' "$ROOT/usr/share/doc/kora/guide.md"); do
        [ -s "$ROOT/usr/share/doc/kora/$picture" ] || { echo "$picture"; return 1; }
    done
}
manual_names_every_verb() {
    local verb text
    text=$(zcat "$ROOT/usr/share/man/man1/kora.1.gz")
    for verb in $(kora help | sed -n 's/^  \([a-z][a-z]*\) .*/\1/p'); do
        grep -q "^\.It Cm $verb" <<<"$text" || { echo "$verb"; return 1; }
    done
}
manual_names_every_option() {
    local option text
    text=$(zcat "$ROOT/usr/share/man/man1/kora.1.gz")
    for option in $(kora help | grep -o -- '--[a-z]*' | sort -u); do
        [ "$option" = --help ] || grep -q "Fl -${option#--}\b" <<<"$text" || { echo "$option"; return 1; }
    done
}
# completed WORD…: what is offered for the last of them.
completed() (
    . "$ROOT/usr/share/bash-completion/completions/kora"
    COMP_WORDS=(kora "$@") COMP_CWORD=$#
    _kora
    printf '%s\n' "${COMPREPLY[@]}" | sort
)
completion_knows_every_verb() {
    same "$({ kora help | sed -n 's/^  \([a-z][a-z]*\) .*/\1/p'; echo help; } | sort)" "$(completed '')" &&
        same "$(kora handset --help | tr -d '\r' | sed -n 's/^  \([a-z]*\)  .*\$ handset .*/\1/p' | sort)" "$(completed handset '')" &&
        same $'off\non' "$(completed handset headset o)"
}
completion_knows_what_run_takes() {
    same $'--antenna\n--size' "$(completed run '')" && same $'1\n2\n3\nauto' "$(completed run --size '')" &&
        same --antenna "$(completed run --size 2 --a)" && same ether "$(completed run --size 2 --antenna e)"
}
tuned() { grep -q '^SetChannel 9850 -> 0' "$HANDSET/device/tuner.log"; }
type_frequency() { kora handset key 9 8 5 && wait_for 20 tuned; }
radio_runs() { kora handset status | grep -q '^Radio *running'; }
starts() { kora start && wait_for 60 radio_runs; }

mkdir -p "$USER_HOME"
copy_tree "$WORK/tree"
check IsPacked as_user "$WORK/tree/kora" package --no-build "$DEB"
check Unpacks dpkg-deb -x "$DEB" "$ROOT"
dpkg-deb -e "$DEB" "$WORK/control"
check HasTheVersionOfTheProgram version_of_the_program
check DependsOnWhatARadioNeeds depends_on_what_it_needs
check DependsOnTheLibrariesOfItsMagnifier magnifiers_libraries_come_with_it
check EverythingBelongsToRoot everything_belongs_to_root
check NobodyElseMayWriteIt nobody_else_may_write
check ItsSumsFit sums_fit
check NothingNamesTheTreeItCameFrom nothing_names_the_tree
check TheMenuEntryIsValid desktop-file-validate "$ROOT/usr/share/applications/kora.desktop"
check TheLicencesOfAllThatIsInsideAreThere licences_are_there
check TheGuideHasItsPictures guide_has_its_pictures
check TheManualNamesEveryVerb manual_names_every_verb
check TheManualNamesEveryOption manual_names_every_option
check TheDistributionsOwnCheckerFindsNothing lintian --allow-root --fail-on error,warning "$DEB"
check ItStarts starts
check TheCompletionKnowsEveryVerb completion_knows_every_verb
check TheCompletionKnowsWhatRunTakes completion_knows_what_run_takes
check TypedDigitsTune type_frequency
check TheRadioCloses kora stop
finish
