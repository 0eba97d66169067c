# Lanes: handsets of the tests' own that work side by side, each with a folder, a Wine prefix and a display.
# Sourced after packages.sh, wine.sh and display.sh.

# lane_use NUMBER: this shell works in that lane from here on.
lane_use() {
    export KORA_HOME=$KORA_LANES_HOME/lane-$1 DISPLAY=
    export WINEPREFIX=$KORA_HOME/prefix
    # What a counting program writes down (see coverage.sh): in a folder of the lane's own, so that no lock has to hold
    # between two Wines.
    if [ -n "${GCOV_PREFIX:-}" ]; then export GCOV_PREFIX=Z:$KORA_HOME/counts; fi
    if [ -f "$KORA_HOME/display" ]; then DISPLAY=:$(cut -d' ' -f1 "$KORA_HOME/display"); fi
}

lane_display() { display_virtual 1024x768; }

# lane_owns PROCESS SERVER: whether it belongs to this lane, whose display's server runs as SERVER or, without one, no
# longer. A server that was ended by force leaves its number to whoever comes next, so a display by that name alone is
# no sign: the process was started for the lane's folder, or when the display was the lane's already.
lane_owns() {
    local words=/proc/$1/environ began
    grep -qzxF "DISPLAY=$DISPLAY" "$words" 2>/dev/null || return 1
    # The folder itself, and not one that has its path in a root of that process's own.
    if grep -qzxF "KORA_HOME=$KORA_HOME" "$words" 2>/dev/null && [ "/proc/$1/root$KORA_HOME" -ef "$KORA_HOME" ]; then return 0; fi
    began=$(process_start "$1")
    [ -n "$2" ] && [ -n "$began" ] && [ "$began" -ge "$(process_start "$2")" ]
}

# Ends all that runs on this lane's Wine or display, and gives it its display and its server again: one for the whole
# run, since a cold start costs seconds and a warm one a tenth.
lane_clean() {
    local process server
    wineserver_run -k 2>/dev/null || true
    wineserver_run --wait || true
    server=$(display_process) || true
    server=${server#* }
    for process in /proc/[0-9]*; do
        process=${process#/proc/}
        # What this shell started by now has the display as well; the shell itself was started without. The display's
        # server may have been started under the name of the one before it.
        if [ "$process" != "$BASHPID" ] && [ "$process" != "$server" ] && [ -n "$DISPLAY" ] && lane_owns "$process" "$server"; then
            kill -9 "$process" 2>/dev/null || true
        fi
    done
    rm -f "$KORA_HOME/busy"
    lane_display 9>&-
    wineserver_run -p >/dev/null 2>&1 </dev/null 9>&-
}

# lanes_open COUNT: makes them ready, below KORA_HOME.
lanes_open() {
    export KORA_LANES=$1 KORA_LANES_HOME=$KORA_HOME
    local lane
    for ((lane = 1; lane <= KORA_LANES; lane++)); do
        (
            lane_use "$lane"
            mkdir -p "$KORA_HOME"
            lane_display
            wine_prefix
            wine_virtual_desktop 1024x768
            # A broken-off run may have left something.
            lane_clean
        )
    done
}

lanes_close() {
    local lane
    for ((lane = 1; lane <= ${KORA_LANES:-0}; lane++)); do
        (
            lane_use "$lane"
            wineserver_run -k 2>/dev/null || true
            display_stop
        )
    done
}

# lane_take: waits for a lane that nobody works in and goes there; lane_free says that the work is done. The lane is free
# when descriptor 9 is closed: a Wine service that a program leaves behind must not inherit it. Whoever was ended before it
# was done, as by its time limit, has left what it had started.
lane_take() {
    local lane
    while :; do
        for ((lane = 1; lane <= KORA_LANES; lane++)); do
            exec 9>"$KORA_LANES_HOME/lane-$lane.lock"
            if flock -n 9; then
                lane_use "$lane"
                if [ -f "$KORA_HOME/busy" ] || ! display_process >/dev/null; then lane_clean; fi
                : >"$KORA_HOME/busy"
                return 0
            fi
        done
        sleep 0.1
    done
}

lane_free() { rm -f "$KORA_HOME/busy"; }
