#!/usr/bin/env bash
# Installs the radio for a user whose display has very many pixels, looks at the phone there, and removes it again.
# usage: enlarged_test.sh FOLDER-OF-PROGRAMS
set -uo pipefail
KORA_PROGRAMS=$1 SUITE=InstalledEnlarged
WORK=$(mktemp -d)
# A blank and a quote, as people have them in paths.
USER_HOME="$WORK/home of Ada's"
KORA_LANES=
. "$(dirname "${BASH_SOURCE[0]}")/checks.sh"
HANDSET="$USER_HOME/.local/share/kora-handset"
kora() { as_user PATH="$WORK/bin" "$USER_HOME/.local/bin/kora" "$@"; }
clean_up() {
    WINEPREFIX=$HANDSET/prefix "$(dirname "$KORA_WINE")/wineserver" -k 2>/dev/null
    wait_for 10 no_phone_is_left || phone_processes | xargs -r kill -9
    [ -z "${OWN_SERVER:-}" ] || kill "$OWN_SERVER" 2>/dev/null
    wait 2>/dev/null
    rm -rf "$WORK"
}
trap clean_up EXIT

listing() { (cd "$USER_HOME" && find . | sort); }
install_radio() { as_user "$WORK/tree/kora" install --no-build; }

# What opens the phone, and what shows it enlarged.
phone_processes() { pgrep -f "$(basename "$WORK")/.*(/kora run|kora-magnifier :|/magnified)"; }
no_phone_is_left() { ! phone_processes; }
# The first time another one runs before it, which fills the channel lists.
radio_runs() { grep -q '^== starting the handset' "$WORK/run.log" && kora handset status | grep -q '^Radio *running'; }
# open_phone WORD…: as in a terminal that stays open.
open_phone() {
    kora run "$@" >"$WORK/run.log" 2>&1 </dev/null &
    wait_for 120 radio_runs || { cat "$WORK/run.log"; return 1; }
}
close_phone() { pkill -TERM -f "$(basename "$WORK")/.*/kora run" && wait_for 60 no_phone_is_left; }

# The window of that name, in pixels.
sides_of() { xwininfo -name "$1" 2>/dev/null | awk '/^ *(Width|Height):/ { printf "%s ", $2 }'; }
# What the window shows is the phone, of which this is a picture, with each pixel a square.
window_is_the_phone_enlarged() {
    local phone
    phone=:$(cut -d' ' -f1 "$HANDSET/magnified/display") && DISPLAY=$phone import -silent -window root "$WORK/phone.png" &&
        import -silent -window 'Kora handset' "$WORK/seen.png" || return 1
    convert "$WORK/phone.png" -filter point -resize "${1}00%" +repage "$WORK/wanted.png"
    compare -metric AE "$WORK/wanted.png" "$WORK/seen.png" null: 2>/dev/null && [ "$(identify -format %k "$WORK/seen.png")" -gt 500 ]
}
phone_is_seen_enlarged() {
    wait_for 60 eval '[ "$(sides_of "Kora handset")" = "$((760 * '"$1"')) $((760 * '"$1"')) " ]' && wait_for 60 window_is_the_phone_enlarged "$1"
}
opens_as_large_as_there_is_room() { open_phone && phone_is_seen_enlarged 2; }
opens_three_times_as_large() { open_phone --size 3 && phone_is_seen_enlarged 3; }
opens_as_large_as_the_last_time() { open_phone && phone_is_seen_enlarged 3; }

# A machine without these programs.
host_without() {
    rm -rf "${WORK:?}/bin"
    mkdir "$WORK/bin"
    ln -s /usr/bin/* "$WORK/bin/"
    (cd "$WORK/bin" && rm "$@")
}
# refused_for PACKAGE: and what was chosen before is so still.
refused_for() {
    local said
    said=$(as_user PATH="$WORK/bin" timeout 30 "$USER_HOME/.local/bin/kora" run --size 2 2>&1) && { echo "it opens"; return 1; }
    same "kora: the phone cannot be shown 2 times as large without these packages: $1" "$said" && same 3 "$(<"$HANDSET/size")"
}
without_the_display_server_it_says_so() { host_without Xvfb xmessage && refused_for xvfb; }
# As the system tells of a library that is not there.
without_a_library_it_says_so() {
    host_without ldd xmessage
    printf '#!/bin/sh\nprintf "\\tlibxcb.so.1 => /lib/libxcb.so.1 (0x0)\\n\\tlibxcb-xtest.so.0 => not found\\n"\n' >"$WORK/bin/ldd"
    chmod +x "$WORK/bin/ldd"
    refused_for libxcb-xtest0
}
auto_without_it_is_its_own_size() {
    host_without Xvfb xmessage
    open_phone --size auto && wait_for 60 eval '[ "$(sides_of "Kora - Wine desktop")" = "760 760 " ]' && ! pgrep -f "$(basename "$WORK").*kora-magnifier :" &&
        grep -qF 'the phone is shown in its own size; it cannot be shown larger without these packages: xvfb' "$WORK/run.log"
}
uninstalls_under_the_open_phone() {
    host_without xmessage
    open_phone --size 2 && phone_is_seen_enlarged 2 && kora uninstall --all && wait_for 60 no_phone_is_left &&
        same '' "$(sides_of 'Kora handset')"
}

mkdir -p "$USER_HOME"
copy_tree "$WORK/tree"
own_display 2400x2350x24
export DISPLAY=$OWN_DISPLAY
before=$(listing)
# Nobody is there to put a message away.
host_without xmessage
check Installs install_radio
mv "$WORK/tree" "$WORK/away"
check OpensAsLargeAsTheDisplayHasRoomFor opens_as_large_as_there_is_room
check EndsWithItsWindowAndItsDisplay close_phone
check OpensAsLargeAsItIsTold opens_three_times_as_large
check EndsAgain close_phone
check StaysThatLargeForTheNextTime opens_as_large_as_the_last_time
check EndsOnceMore close_phone
check WithoutTheDisplaysServerAGivenSizeNamesItsPackage without_the_display_server_it_says_so
check WithoutALibraryAGivenSizeNamesItsPackage without_a_library_it_says_so
check WithoutTheDisplaysServerItOpensInItsOwnSize auto_without_it_is_its_own_size
check EndsInItsOwnSize close_phone
check IsRemovedWhileItIsShownTwoTimesAsLarge uninstalls_under_the_open_phone
check LeavesNothing same "$before" "$(listing)"
finish
