#!/usr/bin/env bash
# Installs the radio for a user of this machine, lets it live without the tree it came from, and removes it again.
# usage: linux_test.sh FOLDER-OF-PROGRAMS
set -uo pipefail
KORA_PROGRAMS=$1 SUITE=InstallOnLinux
WORK=$(mktemp -d)
# A blank and a quote, as people have them in paths.
USER_HOME="$WORK/home of Ada's"
. "$(dirname "${BASH_SOURCE[0]}")/checks.sh"
SHARE="$USER_HOME/.local/share" HANDSET="$USER_HOME/.local/share/kora-handset"
RECORDING="$HANDSET/device/My Documents/My Music/Kora One1.amr"
kora() { as_user KORA_TUNERLOG='\tuner.log' "$USER_HOME/.local/bin/kora" "$@"; }
HUNG=
clean_up() {
    [ -z "$HUNG" ] || kill -CONT "$HUNG" 2>/dev/null
    WINEPREFIX=$HANDSET/prefix "$(dirname "$KORA_WINE")/wineserver" -k 2>/dev/null
    rm -rf "$WORK"
}
trap clean_up EXIT

# What the user has, and what Wine keeps outside of it.
listing() { { (cd "$USER_HOME" && find .); ls -A "/tmp/.wine-$(id -u)" 2>/dev/null; } | sort; }
install_radio() { as_user "$WORK/tree/kora" install --no-build; }
icons_fit() {
    local size
    for size in 16 24 32 48 64 128 256; do
        same "$size $size" "$(identify -format '%w %h' "$SHARE/icons/hicolor/${size}x$size/apps/kora.png")" || return 1
    done
    rsvg-convert -o "$WORK/icon.png" "$SHARE/icons/hicolor/scalable/apps/kora.svg"
}
# The Exec line as a desktop reads it, escapes of the entry's strings and then quotes; the handset stays open.
open_from_menu() {
    local line
    line=$(sed -n 's/^Exec=//p' "$SHARE/applications/kora.desktop")
    line=${line//\\\\/\\}
    eval "as_user KORA_TUNERLOG='\\tuner.log' ${line//%%/%}" >"$WORK/menu.log" 2>&1 </dev/null &
    wait_for 120 radio_runs || { cat "$WORK/menu.log"; return 1; }
}
radio_runs() { [ -f "$HANDSET/device/tuner.log" ] && kora handset status | grep -q '^Radio *running'; }
nothing_names_the_tree() { ! grep -rlF "$WORK/tree" "$USER_HOME/.local/bin" "$SHARE/kora" "$SHARE/applications"; }
tuned() { grep -q '^SetChannel 9850 -> 0' "$HANDSET/device/tuner.log"; }
# Typed once: a radio that is said to run has its window, and its window takes keys.
type_frequency() { : >"$HANDSET/device/tuner.log" && kora handset key 9 8 5 && wait_for 20 tuned; }
radio_process() { kora handset status | sed -n 's/^Radio *running, process //p' | tr -d '\r'; }
trace() { cat "$HANDSET/trace.log"; }
# Without a word about sound from the tests: what the host has, or has not, is the launcher's affair.
start_alone() { as_user env -u KORA_HOSTSOUND KORA_TUNERLOG='\tuner.log' "$USER_HOME/.local/bin/kora" start && radio_runs; }
nothing_of_sound_cards() { ! trace | grep -aiE 'alsa|snd_|cards?\.pcm|pulse'; }
second_start_shows_the_first() {
    local first
    first=$(radio_process)
    kora start && trace | grep -aq 'FM is exist' && same "$first" "$(radio_process)"
}
booked_start_takes_its_place() {
    local first
    first=$(radio_process)
    : >"$HANDSET/device/tuner.log"
    kora start -Rec -Channel 9850 && trace | grep -aq 'FM: Program Terminated' && tuned && [ "$first" != "$(radio_process)" ]
}
# A radio that is stopped in its tracks closes for nobody.
hung_radio_is_named() {
    local said
    HUNG=$(pgrep -f "$(basename "$WORK").*UI\.exe") && kill -STOP "$HUNG" || return 1
    said=$(kora stop 2>&1) && { echo "it says that it stopped: $said"; return 1; }
    grep -qF 'kora stop --force' <<<"$said" || { echo "it says not what to do: $said"; return 1; }
}
hung_radio_is_ended() { kora stop --force && wait_for 10 radio_is_gone; }
radio_is_gone() { kora handset status | grep -q '^Radio *not running'; }
keep_recording() {
    local said
    said=$(kora uninstall) || return 1
    grep -qF "$(dirname "$RECORDING")" <<<"$said" || { echo "it says not where: $said"; return 1; }
    same "$before" "$(listing | grep -vF ./.local/share/kora-handset)" &&
        same "$RECORDING" "$(find "$HANDSET" ! -type d)" && same sound "$(<"$RECORDING")"
}

mkdir -p "$USER_HOME/.local/share/icons/hicolor"
copy_tree "$WORK/tree"
before=$(listing)
check InstallsWithoutARoot install_radio
check TheDesktopEntryIsValid desktop-file-validate "$SHARE/applications/kora.desktop"
check TheIconsHaveTheirSizes icons_fit
mv "$WORK/tree" "$WORK/away"
check NothingNamesTheTreeItCameFrom nothing_names_the_tree
check TheMenuEntryOpensTheHandsetWithoutTheTree open_from_menu
check TypedDigitsTune type_frequency
check TheRadioCloses kora stop
check NoRadioIsLeft radio_is_gone
check ItStartsAlone start_alone
check TheTraceHoldsNothingOfSoundCards nothing_of_sound_cards
check ASecondStartShowsTheFirst second_start_shows_the_first
check ABookedStartTakesItsPlace booked_start_takes_its_place
check WhatHelpsAgainstAHungRadioIsSaid hung_radio_is_named
check AHungRadioIsEndedByForce hung_radio_is_ended
mkdir -p "$(dirname "$RECORDING")" && printf sound >"$RECORDING"
check UninstallingKeepsRecordingsAndNothingElse keep_recording
mv "$WORK/away" "$WORK/tree"
check InstallsAgain install_radio
check InstallsOverItself install_radio
check UninstallingAllSucceeds as_user "$WORK/tree/kora" uninstall --all
check UninstallingAllLeavesNothing same "$before" "$(listing)"
check InstallsInAnotherPrefix as_user "$WORK/tree/kora" install --no-build --prefix "$WORK/new prefix"
check UninstallsFromAnotherPrefix as_user "$WORK/tree/kora" uninstall --prefix "$WORK/new prefix"
check AnotherPrefixIsGone test ! -e "$WORK/new prefix"
finish
