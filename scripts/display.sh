# A display to draw on: the user's own, or a virtual one that lives as long as the handset. Sourced.

# display_process: number, process and the process's start of the virtual display that this handset has; fails when it
# has none that runs.
display_process() {
    local number pid start
    [ -f "$KORA_HOME/display" ] && read -r number pid start <"$KORA_HOME/display" && process_is "$pid" "$start" &&
        printf '%s %s\n' "$number" "$pid"
}

# display_magnified: the name of the one that is shown enlarged; fails when none is.
display_magnified() {
    local number pid start
    [ -f "$KORA_HOME/magnified/display" ] && read -r number pid start <"$KORA_HOME/magnified/display" &&
        process_is "$pid" "$start" && printf ':%s\n' "$number"
}

# display_virtual WIDTHxHEIGHT: starts Xvfb for this KORA_HOME unless it runs, and exports DISPLAY.
display_virtual() {
    local record=$KORA_HOME/display number lock
    mkdir -p "$KORA_HOME"
    # Calls at the same time share one display.
    exec {lock}>"$KORA_HOME/display.lock"
    flock "$lock"
    if number=$(display_process); then
        DISPLAY=:${number% *}
    else
        packages_need "${KORA_DISPLAY_PACKAGES[@]}"
        rm -f "$record.number"
        # In a session of its own, or it would go with the shell that started it.
        setsid Xvfb -displayfd 3 -screen 0 "${1:-1024x768}x24" -nolisten tcp -noreset 3>"$record.number" >"$KORA_HOME/xvfb.log" 2>&1 {lock}>&- &
        local pid=$! deadline=$((SECONDS + 20))
        until [ -s "$record.number" ]; do
            kill -0 "$pid" 2>/dev/null || fail "the virtual display did not start; see $KORA_HOME/xvfb.log"
            [ $SECONDS -lt $deadline ] || fail "the virtual display gave no number in 20 s; see $KORA_HOME/xvfb.log"
            sleep 0.05
        done
        number=$(tr -d '\n' <"$record.number")
        echo "$number $pid $(process_start "$pid")" >"$record"
        rm -f "$record.number"
        DISPLAY=:$number
    fi
    exec {lock}>&-
    export DISPLAY
}

# display_picture FILE: of the handset's own desktop on the virtual display, else of the whole screen.
display_picture() {
    local number
    if number=$(display_process) && [ "$DISPLAY" = ":${number% *}" ]; then
        # Without such a desktop the program would wait for somebody to point at a window.
        timeout 5 import -silent -window 'Kora - Wine Desktop' "$1" 2>/dev/null && return 0
    fi
    import -silent -window root "$1"
}

display_stop() {
    local number
    if number=$(display_process); then kill "${number#* }" 2>/dev/null || true; fi
    rm -f "$KORA_HOME/display"
}
