# One handset: set up, started, stopped. Sourced after build.sh and display.sh.

handset_exe() { wine_start "$KORA_BIN/handset.exe" "$@"; }

# The programs of the handset, built and laid on the device.
handset_ready() {
    packages_need "${KORA_BUILD_PACKAGES[@]}"
    build_preset release UI handset
    display_any
    wine_prefix
    handset_exe install "$(windows_path "$KORA_HOME/device")" >"$KORA_HOME/handset-install.log" 2>&1 ||
        fail "the handset could not be set up:
$(cat "$KORA_HOME/handset-install.log")"
}

# The user's display when there is one, else the virtual one.
display_any() {
    if [ -n "${DISPLAY:-}" ]; then return 0; fi
    display_virtual 1024x768
}

kora_start() {
    handset_ready
    # The device takes one command line, not words: they are joined by blanks, as a scheduled start gives it.
    handset_exe start "$*" >"$KORA_HOME/console.log" 2>"$KORA_HOME/trace.log" ||
        fail "the radio did not start; $KORA_HOME/trace.log says more"
}

kora_stop() {
    display_any
    handset_exe stop >"$KORA_HOME/stop.log" 2>&1 || fail "the radio did not stop:
$(cat "$KORA_HOME/stop.log")"
    display_stop
}

kora_stop_quietly() { [ -x "$KORA_WINE" ] && [ -d "$WINEPREFIX" ] && wineserver_run -k 2>/dev/null; display_stop; return 0; }

kora_handset() {
    packages_need "${KORA_BUILD_PACKAGES[@]}"
    [ -f "$KORA_BIN/handset.exe" ] || build_preset release UI handset
    display_any
    wine_prefix
    local status=0
    # Through files: a Wine service started by the call would hold a pipe open for ever.
    handset_exe "$@" >"$KORA_HOME/handset.out" 2>"$KORA_HOME/handset.err" || status=$?
    cat "$KORA_HOME/handset.out"
    cat "$KORA_HOME/handset.err" >&2
    return $status
}

kora_shot() {
    [ $# -eq 1 ] || fail "shot wants one file name, such as out/screen.png"
    display_any
    import -silent -window root "$1" || fail "no picture could be taken of display $DISPLAY"
}
