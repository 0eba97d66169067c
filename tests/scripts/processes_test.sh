#!/usr/bin/env bash
# What the scripts start and end, with programs of the test's own instead of Wine and the display's.
set -uo pipefail
SUITE=Processes
WORK=$(mktemp -d)
KORA_LANES=
. "$(dirname "${BASH_SOURCE[0]}")/../install/checks.sh"
clean_up() {
    local file
    for file in "$WORK"/*/*.pid; do [ ! -f "$file" ] || kill -9 "$(<"$file")" 2>/dev/null; done
    wait 2>/dev/null
    rm -rf "$WORK"
}
trap clean_up EXIT

# A home, a display server and a Wine that nothing was done to yet. The Wine runs what it is given and knows the handset's
# words; its server writes down what it is told. What stays running writes its number down.
COUNT=0
export HERE KORA_TREE
fresh() {
    COUNT=$((COUNT + 1))
    HERE=$WORK/$COUNT
    mkdir -p "$HERE/home/prefix" "$HERE/bin"
    : >"$HERE/home/prefix/.kora-ready"
    : >"$HERE/server.calls"
    cat >"$HERE/bin/Xvfb" <<'TEXT'
#!/usr/bin/env bash
echo $$ >>"$HERE/displays"
echo $$ >"$HERE/display-$$.pid"
echo $((500 + $(grep -c . "$HERE/displays"))) >&3
exec sleep 100 3>&-
TEXT
    cat >"$HERE/bin/wine64" <<'TEXT'
#!/usr/bin/env bash
[ "$(basename "$1")" = handset.exe ] && shift
case $1 in
    explorer | tour) echo $$ >"$HERE/$1.pid"; [ ! -f "$HERE/short" ] || exit 0; exec sleep 100 ;;
    say) echo "$2 begins"; sleep 0.3; echo "$2 ends"; echo "$2 complains" >&2 ;;
    service) [ ! -f "$HERE/booked" ] || echo 'programs are booked; the service goes on' ;;
    /*) exec "$@" ;;
esac
TEXT
    cat >"$HERE/bin/wineserver" <<'TEXT'
#!/usr/bin/env bash
echo "$*" >>"$HERE/server.calls"
[ "$*" != -k ] || for file in "$HERE"/{explorer,tour}.pid; do [ ! -f "$file" ] || kill "$(<"$file")"; done
TEXT
    chmod +x "$HERE"/bin/*
}

# script COMMANDS: in a shell with the scripts of a handset.
script() {
    KORA_ROOT=$KORA_TREE KORA_HOME=$HERE/home KORA_WINE=$HERE/bin/wine64 PATH=$HERE/bin:$PATH DISPLAY="${SHOWN:-}" bash -c '
        for part in common packages wine display build handset run lanes; do . "$KORA_ROOT/scripts/$part.sh"; done
        packages_need() { :; }
        programs_ready() { :; }
        programs_present() { :; }
        favourites_once() { :; }
        wine_virtual_desktop() { :; }
        '"$1"
}
is_gone() { ! kill -0 "$(<"$1")" 2>/dev/null || grep -q '^[0-9]* (.*) Z' "/proc/$(<"$1")/stat"; }

a_process_is_known_by_its_start() {
    fresh
    sleep 100 &
    echo $! >"$HERE/other.pid"
    script "process_is $! \$(process_start $!) && ! process_is $! 1 && ! process_is $! '' && ! process_is 0 0"
}
a_display_is_shared_by_the_calls_of_a_home() {
    fresh
    script 'display_virtual; echo "$DISPLAY"' >"$HERE/first" && script 'display_virtual; echo "$DISPLAY"' >"$HERE/second" &&
        same :501 "$(<"$HERE/first")" && same :501 "$(<"$HERE/second")"
}
calls_at_once_start_one_display() {
    local call calls=()
    fresh
    for call in 1 2 3 4; do
        script 'display_virtual' &
        calls+=($!)
    done
    wait "${calls[@]}"
    same 1 "$(grep -c . "$HERE/displays")"
}
# As after a start of the machine: the number in the record is some other program's by now.
a_stranger_is_no_display_and_is_not_ended() {
    fresh
    sleep 100 &
    echo $! >"$HERE/other.pid"
    echo "77 $! 1" >"$HERE/home/display"
    script 'display_stop' && kill -0 "$(<"$HERE/other.pid")" && [ ! -f "$HERE/home/display" ] || return 1
    echo "77 $(<"$HERE/other.pid") 1" >"$HERE/home/display"
    script 'display_virtual; echo "$DISPLAY"' >"$HERE/said" && same :501 "$(<"$HERE/said")"
}
a_display_is_ended_with_its_handset() {
    fresh
    script 'display_virtual; display_stop' && wait_for 10 is_gone "$HERE"/display-*.pid
}
calls_at_once_keep_their_words_apart() {
    local call calls=()
    fresh
    for call in one two three; do
        script "kora_handset say $call" >"$HERE/$call.out" 2>"$HERE/$call.err" &
        calls+=($!)
    done
    wait "${calls[@]}"
    for call in one two three; do
        same "$call begins"$'\n'"$call ends" "$(<"$HERE/$call.out")" && same "$call complains" "$(<"$HERE/$call.err")" || return 1
    done
    same '' "$(find "$HERE/home" -name 'handset.*')"
}
# A lane with the display :501.
fresh_lane() {
    fresh
    mkdir -p "$HERE/home/lane-1/prefix"
    : >"$HERE/home/lane-1/prefix/.kora-ready"
    script 'lanes_open 1'
    : >"$HERE/server.calls"
}
# in_lane PROGRAM: as the test runner starts it.
in_lane() {
    env KORA_LANES=1 KORA_LANES_HOME="$HERE/home" KORA_HOME="$HERE/home" KORA_WINE="$HERE/bin/wine64" PATH="$HERE/bin:$PATH" \
        "$KORA_TREE/scripts/wine-run" "$@"
}
# left NAME SETTING…: a program of these surroundings that goes on.
left() {
    env "${@:2}" sleep 100 &
    echo $! >"$HERE/$1.pid"
}
# As a test that ran into its limit leaves its lane.
use_lane_next() { : >"$HERE/home/lane-1/busy" && in_lane /bin/true; }
display_is_killed() { kill -9 "$(<"$(echo "$HERE"/display-*.pid)")" && wait_for 10 is_gone "$HERE"/display-*.pid; }
# A test that ran into its limit: its runner is killed and what it has started is left.
the_next_in_a_lane_finds_nothing_of_one_that_was_killed() {
    fresh_lane
    printf '#!/usr/bin/env bash\necho $$ >"$HERE/test.pid"\nsetsid sleep 100 &\necho $! >"$HERE/left.pid"\n: >"$HERE/ready"\nwait\n' >"$HERE/bin/hangs"
    declare -f is_gone >"$HERE/is_gone"
    printf '#!/usr/bin/env bash\n. "$HERE/is_gone"\nis_gone "$HERE/left.pid" || echo "still there"\necho "ran"\n' >"$HERE/bin/looks"
    chmod +x "$HERE/bin/hangs" "$HERE/bin/looks"
    # Not through a function, whose shell would be killed in the runner's place.
    env KORA_LANES=1 KORA_LANES_HOME="$HERE/home" KORA_HOME="$HERE/home" KORA_WINE="$HERE/bin/wine64" \
        "$KORA_TREE/scripts/wine-run" "$HERE/bin/hangs" &
    local runner=$!
    wait_for 10 test -f "$HERE/ready" && kill -9 "$runner"
    wait "$runner" 2>/dev/null
    in_lane "$HERE/bin/looks" >"$HERE/said"
    in_lane "$HERE/bin/looks" >>"$HERE/said"
    same ran$'\n'ran "$(<"$HERE/said")" && wait_for 10 is_gone "$HERE/left.pid" && is_gone "$HERE/test.pid" &&
        same '-k --wait -p' "$(tr '\n' ' ' <"$HERE/server.calls" | sed 's/ $//')" && same 1 "$(grep -c . "$HERE/displays")"
}
# An installed radio's, whose folder is its user's.
what_was_started_on_the_lanes_display_is_ended_whatever_its_folder() {
    fresh_lane
    left radio DISPLAY=:501 KORA_HOME="$HERE/ada"
    use_lane_next && wait_for 10 is_gone "$HERE/radio.pid"
}
# The number of a display that was ended by force is given to the next one that is started, whoever that is.
a_handset_that_got_the_number_of_a_lanes_ended_display_is_left_alone() {
    fresh_lane
    left own DISPLAY=:501 KORA_HOME="$HERE/home/lane-1"
    display_is_killed
    left stranger DISPLAY=:501 KORA_HOME="$HERE/ada"
    use_lane_next && wait_for 10 is_gone "$HERE/own.pid" && ! is_gone "$HERE/stranger.pid"
}
a_handset_that_had_the_number_before_the_lanes_display_is_left_alone() {
    fresh
    left stranger DISPLAY=:501 KORA_HOME="$HERE/ada"
    mkdir -p "$HERE/home/lane-1/prefix" && : >"$HERE/home/lane-1/prefix/.kora-ready"
    script 'lanes_open 1' && use_lane_next && ! is_gone "$HERE/stranger.pid"
}
a_lane_whose_display_was_ended_gets_another_one() {
    fresh_lane
    display_is_killed
    printf '#!/usr/bin/env bash\necho "$DISPLAY"\n' >"$HERE/bin/says"
    chmod +x "$HERE/bin/says"
    same :502 "$(in_lane "$HERE/bin/says")" && same :502 "$(in_lane "$HERE/bin/says")" && same 2 "$(grep -c . "$HERE/displays")"
}
# After a start of the machine the record is an old one, and the first display has the first number again.
a_lane_does_not_end_the_display_that_it_has_just_started() {
    fresh
    mkdir -p "$HERE/home/lane-1/prefix" && : >"$HERE/home/lane-1/prefix/.kora-ready"
    echo '501 1 1' >"$HERE/home/lane-1/display"
    script 'lanes_open 1' && same "501 $(<"$HERE/displays")" "$(cut -d' ' -f1,2 "$HERE/home/lane-1/display")" &&
        ! is_gone "$HERE"/display-*.pid
}
# One that was shown enlarged.
a_folder_of_the_users_choice_goes_with_its_handset() {
    fresh
    mkdir "$HERE/home/magnified"
    echo 2 | tee "$HERE/home/size" "$HERE/home/magnified/display" >"$HERE/home/xvfb.log"
    script '. "$KORA_ROOT/scripts/uninstall.sh"; KORA_DEFAULT_HOME=$HERE/usual; handset_remove 1' && same '' "$(ls -A "$HERE/home" 2>/dev/null)"
}
# run_then SIGNAL WHAT: `./kora run`, ended as from a terminal once WHAT runs.
run_then() {
    # A script's children ignore Ctrl-C from the start, a terminal's do not.
    env --default-signal=INT setsid bash -c "$(declare -f script); trap : INT TERM; script kora_run" >"$HERE/said" 2>&1 &
    local run=$!
    wait_for 10 test -s "$HERE/$2.pid" || return 1
    kill "-$1" -- -"$run"
    wait "$run"
    local status=$?
    same 130 $status && wait_for 10 is_gone "$HERE/$2.pid" && grep -qx -- -k "$HERE/server.calls"
}
ctrl_c_ends_the_tour_and_its_display() {
    local signal
    for signal in INT TERM; do
        fresh
        SHOWN='' run_then $signal tour && wait_for 10 is_gone "$HERE"/display-*.pid || return 1
    done
}
ctrl_c_ends_the_handset_on_a_display() {
    fresh
    SHOWN=:77 run_then INT explorer
}
ctrl_c_lets_a_service_with_bookings_go_on() {
    fresh
    : >"$HERE/booked"
    SHOWN=:77 run_then INT explorer && wait_for 10 grep 'goes on' "$HERE/home/console.log"
}
wine_is_found_where_it_lies() {
    fresh
    KORA_ROOT=$KORA_TREE KORA_HOME=$HERE/home KORA_WINE='' PATH=$HERE/bin:$PATH bash -c '
        . "$KORA_ROOT/scripts/common.sh"
        . "$KORA_ROOT/scripts/wine.sh"
        KORA_WINE_PLACES=(/nowhere/wine64 wine64 wine)
        [ "$(wine_find)" = "$HERE/bin/wine64" ] || { wine_find; exit 1; }
        KORA_WINE=$(wine_find)
        wineserver_run -p && grep -qx -- -p "$HERE/server.calls" || exit 1
        # A loader without its server beside it: that on the path.
        mkdir "$HERE/loader" && mv "$HERE/bin/wine64" "$HERE/loader/wine64"
        KORA_WINE_PLACES=(/nowhere/wine64 "$HERE/loader/wine64")
        KORA_WINE=$(wine_find)
        wineserver_run -w && grep -qx -- -w "$HERE/server.calls" || exit 1
        KORA_WINE_PLACES=(/nowhere/wine64 nowine)
        [ "$(wine_find)" = /nowhere/wine64 ]
    '
}

check AProcessIsKnownByItsNumberAndItsStart a_process_is_known_by_its_start
check ADisplayIsSharedByTheCallsOfAHome a_display_is_shared_by_the_calls_of_a_home
check CallsAtOnceStartOneDisplay calls_at_once_start_one_display
check AStrangerWithARecordedNumberIsNoDisplayAndIsNotEnded a_stranger_is_no_display_and_is_not_ended
check ADisplayIsEndedWithItsHandset a_display_is_ended_with_its_handset
check CallsAtOnceKeepTheirWordsApart calls_at_once_keep_their_words_apart
check TheNextInALaneFindsNothingOfOneThatWasKilled the_next_in_a_lane_finds_nothing_of_one_that_was_killed
check WhatWasStartedOnTheLanesDisplayIsEndedWhateverItsFolder what_was_started_on_the_lanes_display_is_ended_whatever_its_folder
check AHandsetThatGotTheNumberOfALanesEndedDisplayIsLeftAlone a_handset_that_got_the_number_of_a_lanes_ended_display_is_left_alone
check AHandsetThatHadTheNumberBeforeTheLanesDisplayIsLeftAlone a_handset_that_had_the_number_before_the_lanes_display_is_left_alone
check ALaneWhoseDisplayWasEndedGetsAnotherOne a_lane_whose_display_was_ended_gets_another_one
check ALaneDoesNotEndTheDisplayThatItHasJustStarted a_lane_does_not_end_the_display_that_it_has_just_started
check AFolderOfTheUsersChoiceGoesWithItsHandset a_folder_of_the_users_choice_goes_with_its_handset
check CtrlCEndsTheTourAndItsDisplay ctrl_c_ends_the_tour_and_its_display
check CtrlCEndsTheHandsetOnADisplay ctrl_c_ends_the_handset_on_a_display
check CtrlCLetsAServiceWithBookingsGoOn ctrl_c_lets_a_service_with_bookings_go_on
check WineIsFoundWhereItLies wine_is_found_where_it_lies
finish
