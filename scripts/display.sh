# A display to draw on: the user's own, or a virtual one that lives as long as the handset. Sourced.

# display_virtual WIDTHxHEIGHT: starts Xvfb for this KORA_HOME unless it runs, and exports DISPLAY.
display_virtual() {
    local record=$KORA_HOME/display number
    mkdir -p "$KORA_HOME"
    if [ -f "$record" ] && kill -0 "$(cut -d' ' -f2 "$record")" 2>/dev/null; then
        DISPLAY=:$(cut -d' ' -f1 "$record")
    else
        packages_need "${KORA_DISPLAY_PACKAGES[@]}"
        rm -f "$record.number"
        # In a session of its own, or it would go with the shell that started it.
        setsid Xvfb -displayfd 3 -screen 0 "${1:-1024x768}x24" -nolisten tcp -noreset 3>"$record.number" >"$KORA_HOME/xvfb.log" 2>&1 &
        local pid=$! deadline=$((SECONDS + 20))
        until [ -s "$record.number" ]; do
            kill -0 "$pid" 2>/dev/null || fail "the virtual display did not start; see $KORA_HOME/xvfb.log"
            [ $SECONDS -lt $deadline ] || fail "the virtual display gave no number in 20 s; see $KORA_HOME/xvfb.log"
            sleep 0.05
        done
        number=$(tr -d '\n' <"$record.number")
        echo "$number $pid" >"$record"
        rm -f "$record.number"
        DISPLAY=:$number
    fi
    export DISPLAY
}

# display_picture FILE: of the handset's own desktop on the virtual display, else of the whole screen.
display_picture() {
    local record=$KORA_HOME/display
    if [ -f "$record" ] && [ "$DISPLAY" = ":$(cut -d' ' -f1 "$record")" ]; then
        # Without such a desktop the program would wait for somebody to point at a window.
        timeout 5 import -silent -window 'Kora - Wine Desktop' "$1" 2>/dev/null && return 0
    fi
    import -silent -window root "$1"
}

display_stop() {
    local record=$KORA_HOME/display
    [ -f "$record" ] || return 0
    kill "$(cut -d' ' -f2 "$record")" 2>/dev/null || true
    rm -f "$record"
}
