#!/usr/bin/env bash
# The window that shows a virtual display enlarged: on a display of the test's own, with another one to be shown.
set -uo pipefail
SUITE=Magnifier
WORK=$(mktemp -d)
KORA_LANES=
. "$(dirname "${BASH_SOURCE[0]}")/../install/checks.sh"
KORA_ROOT=$KORA_TREE
export KORA_HOME=$WORK/home
mkdir -p "$KORA_HOME"
. "$KORA_TREE/scripts/common.sh"
. "$KORA_TREE/scripts/packages.sh"
. "$KORA_TREE/scripts/build.sh"
. "$KORA_TREE/scripts/display.sh"
. "$KORA_TREE/scripts/magnifier.sh"
set +e
KORA_DESKTOP=300x200
clean_up() {
    magnifier_close
    [ -z "${OWN_SERVER:-}" ] || kill "$OWN_SERVER" 2>/dev/null
    [ -z "${LISTENER:-}" ] || kill "$LISTENER" 2>/dev/null
    wait 2>/dev/null
    rm -rf "$WORK"
}
trap clean_up EXIT

own_display 1000x700x24

shown_is_the_picture_enlarged() {
    import -silent -window root "$WORK/small.png" && on_own import -silent -window root "$WORK/all.png" || return 1
    convert "$WORK/small.png" -filter point -resize "${1}00%" +repage "$WORK/wanted.png"
    convert "$WORK/all.png" -crop "$((300 * $1))x$((200 * $1))+0+0" +repage "$WORK/seen.png"
    compare -metric AE "$WORK/wanted.png" "$WORK/seen.png" null:
}
heard() { grep -A 3 "$1" "$WORK/heard" | grep -q "$2"; }
each_pixel_is_a_square_of_whole_pixels() {
    # A picture in which no two neighbours are alike.
    convert -size 300x200 plasma:red-blue -depth 8 "$WORK/pattern.png" && display -window root "$WORK/pattern.png"
    wait_for 20 shown_is_the_picture_enlarged "$1" && [ "$(identify -format %k "$WORK/small.png")" -gt 1000 ]
}
a_touch_arrives_where_it_was_made() {
    xev -geometry 300x200+0+0 -event button -event keyboard >"$WORK/heard" 2>&1 &
    LISTENER=$!
    wait_for 20 eval 'xwininfo -name "Event Tester" | grep -q IsViewable' || return 1
    # Once more where the window was not there yet.
    wait_for 20 eval 'on_own xdotool mousemove $((120 * '"$1"' + 1)) $((70 * '"$1"')) click 1; heard "ButtonRelease" "root:(120,70)"'
}
a_key_arrives_as_what_it_is() {
    wait_for 20 eval 'on_own xdotool key F2; heard "KeyRelease" "keysym 0xffbf, F2"' &&
        wait_for 20 eval 'on_own xdotool key 7; heard "KeyRelease" "keysym 0x37, 7"'
}
it_ends_with_the_display_that_it_shows() {
    kill "$MAGNIFIED"
    wait_for 20 eval '! kill -0 "$MAGNIFIER"'
}
room_decides_unless_it_was_said() {
    export DISPLAY=$OWN_DISPLAY
    same 2 "$(magnifier_size)" && same 3 "$(magnifier_size 3)" && same 3 "$(magnifier_size)" && same 2 "$(magnifier_size auto)" &&
        same 1 "$(KORA_DESKTOP=760x760 magnifier_size)" && same 1 "$(DISPLAY=:99999 magnifier_size)" || return 1
    if (magnifier_size 4); then return 1; fi
}
what_is_missing_refuses_what_is_said_and_nothing_else() (
    magnifier_lacks() { printf 'xvfb\nlibxcb1\n'; }
    local said
    same 3 "$(magnifier_lacks() { :; }; magnifier_size 3)" && said=$(magnifier_size 2 2>&1) && return 1
    same 'kora: the phone cannot be shown 2 times as large without these packages: xvfb libxcb1' "$said" &&
        same 3 "$(<"$KORA_HOME/size")" && same 1 "$(magnifier_size)" && same 1 "$(magnifier_size 1)" && same 1 "$(magnifier_size auto)" &&
        same '' "$(KORA_DESKTOP=760x760 magnifier_size 2>&1 >/dev/null)"
)
a_display_with_fewer_colours_shows_the_own_size_alone() {
    kill "$OWN_SERVER"
    own_display 1000x700x16 && same 1 "$(KORA_DESKTOP=300x300 on_own magnifier_size auto)" || return 1
    echo 2 >"$KORA_HOME/size"
    same 1 "$(on_own magnifier_size)" && same 2 "$(<"$KORA_HOME/size")" &&
        same 'kora: the phone cannot be shown 3 times as large on a display of 16 bits of colour; it takes 24' \
            "$(on_own magnifier_size 3 2>&1)" && same 2 "$(<"$KORA_HOME/size")"
}

for size in 2 3; do
    export DISPLAY=$OWN_DISPLAY
    magnifier_open $size >"$WORK/opened" 2>&1
    check "EachPixelIsASquareOfWholePixels/$size" each_pixel_is_a_square_of_whole_pixels $size
    check "ATouchArrivesWhereItWasMade/$size" a_touch_arrives_where_it_was_made $size
    check "AKeyArrivesAsWhatItIs/$size" a_key_arrives_as_what_it_is
    check "ItEndsWithTheDisplayThatItShows/$size" it_ends_with_the_display_that_it_shows
    magnifier_close
done
check RoomDecidesUnlessItWasSaid room_decides_unless_it_was_said
check WhatIsMissingRefusesTheSizeThatIsSaidAndNoOther what_is_missing_refuses_what_is_said_and_nothing_else
check ADisplayWithFewerColoursShowsTheOwnSizeAlone a_display_with_fewer_colours_shows_the_own_size_alone
finish
