# ./kora run: the handset with the radio on it, or the guided tour. Sourced by kora.

. "$KORA_ROOT/scripts/antenna.sh"
. "$KORA_ROOT/scripts/magnifier.sh"

# Picture requests of the tour: it prints "picture NAME", and waits until the file is there.
tour_pictures() {
    local folder=$1 log=$2 done_list=" " name
    while kill -0 "$3" 2>/dev/null; do
        while read -r _ name; do
            case $done_list in *" $name "*) continue ;; esac
            display_picture "$folder/.$name.png" && mv "$folder/.$name.png" "$folder/$name.png"
            done_list="$done_list$name "
        done < <(grep -a '^picture ' "$log" | tr -d '\r')
        sleep 0.1
    done
}

run_tour() {
    local log=$KORA_HOME/tour.log status=0
    step "no display: a guided tour of the radio, pictures and sound in $KORA_HOME"
    rm -f "$KORA_HOME"/tour-*.png
    : >"$log"
    handset_exe tour "$(windows_path "$KORA_HOME")" >"$log" 2>"$KORA_HOME/trace.log" &
    local tour=$!
    tour_pictures "$KORA_HOME" "$log" "$tour" &
    local pictures=$!
    # Not in the foreground, where it would keep a signal waiting.
    { tail -n +1 -f --pid="$tour" "$log" | grep -av '^picture \|^sound: ' || true; } &
    local words=$!
    wait "$tour" || status=$?
    wait "$pictures" "$words" || true
    display_stop
    [ $status -eq 0 ] || fail "the tour ended early; $KORA_HOME/trace.log says more"
    step "what was shown and heard:"
    ls "$KORA_HOME"/tour-*.png "$KORA_HOME/tour.wav"
}

# Ctrl-C, a closed terminal or an end by the system: what this run has started ends with it. A service that has bookings
# goes on. The same when the window that shows the handset enlarged is closed: run_broken_off RESULT.
run_broken_off() {
    trap '' INT TERM HUP
    trap - EXIT
    step "ending the handset"
    antenna_end
    # The radio closes a recording; then the panel and whatever else is left of this Wine goes.
    timeout 30 "$KORA_WINE" "$KORA_BIN/handset.exe" stop >/dev/null 2>&1 </dev/null || true
    handset_said service stop --unless-booked || true
    local booked=
    case $SAID in *'goes on'*) booked=1 ;; esac
    kora_stop_quietly
    magnifier_close
    if [ -n "$booked" ]; then
        unset DISPLAY
        handset_stage
        service_start
    fi
    exit "${1:-130}"
}

run_end() {
    antenna_end
    magnifier_close
}

kora_run() {
    local had_display=${DISPLAY:-} antenna='' size=''
    while [ $# -gt 0 ]; do
        case $1 in
            --antenna) [ $# -gt 1 ] || fail '--antenna wants one: band, ether, stick, rtl_tcp:HOST:PORT or file:PATH'; antenna=$2; shift 2 ;;
            --antenna=?*) antenna=${1#*=}; shift ;;
            --size) [ $# -gt 1 ] || fail '--size wants 1, 2, 3 or auto'; size=$2; shift 2 ;;
            --size=?*) size=${1#*=}; shift ;;
            *) fail "run: \"$1\" is not understood; --antenna WHAT and --size N are" ;;
        esac
    done
    if [ -n "$had_display" ]; then size=$(magnifier_size "$size") || exit 1; fi
    handset_ready
    favourites_once
    trap run_end EXIT
    trap run_broken_off INT TERM HUP
    antenna_begin "$antenna"
    if [ -z "$had_display" ]; then
        packages_need "${KORA_DISPLAY_PACKAGES[@]}"
        run_tour
        return
    fi
    [ "$size" = 1 ] || magnifier_open "$size"
    step "starting the handset; close its window, or press Ctrl-C here, to end"
    # A desktop of its own keeps the phone and the radio's windows together, whatever the window manager does.
    wine_start explorer "/desktop=Kora,$KORA_DESKTOP" "$(windows_path "$KORA_BIN/handset.exe")" panel --with-radio \
        >"$KORA_HOME/console.log" 2>"$KORA_HOME/trace.log" &
    local phone=$!
    [ -n "${MAGNIFIER:-}" ] || { wait $phone; return; }
    wait -n $phone "$MAGNIFIER" || true
    # The window was closed, and not the phone in it.
    if kill -0 $phone 2>/dev/null; then run_broken_off 0; fi
}
