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
clean_up() {
    WINEPREFIX=$HANDSET/prefix /usr/lib/wine/wineserver -k 2>/dev/null
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
# Keys are taken once the radio's window is there, a moment after its process.
type_frequency() { : >"$HANDSET/device/tuner.log" && wait_for 20 kora handset key 9 8 5 && wait_for 20 tuned; }
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
