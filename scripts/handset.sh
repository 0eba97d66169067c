# One handset: set up, started, stopped. Sourced after build.sh and display.sh.

handset_exe() { wine_start "$KORA_BIN/handset.exe" "$@"; }

# handset_said ARGS…: what it says, in SAID, and its result. Through a file of this call alone: a Wine service that it was
# the first to need would hold a pipe open for ever, and calls at the same time must not mix.
handset_said() {
    local file status=0
    file=$(mktemp "$KORA_HOME/handset.XXXXXX")
    handset_exe "$@" >"$file" 2>&1 || status=$?
    SAID=$(tr -d '\r' <"$file")
    rm -f "$file"
    return $status
}

# The programs of the handset, built and laid on the device; with --unless-running not under a radio that runs.
handset_ready() {
    programs_ready
    handset_stage
    handset_said install "$@" "$(windows_path "$KORA_HOME/device")" || fail "the handset could not be set up:
$SAID"
}

# The first time, the channel lists are filled with the preset favourites, as a phone does when it is new.
favourites_once() {
    [ -e "$KORA_HOME/device/KORA.vol" ] && return 0
    step "filling the channel lists with the preset favourites (once)"
    local log=$KORA_HOME/favourites.log
    handset_exe favourites >"$log" 2>&1 || fail "the channel lists could not be filled; $log says more"
}

# Just large enough for the phone and its switches.
KORA_DESKTOP=${KORA_DESKTOP:-760x760}
# The display under it has room for the desktop of a phone with a large screen.
KORA_DISPLAY=${KORA_DISPLAY:-1600x1280}

# The one on which the handset stands enlarged; the user's display when there is one, else the virtual one.
display_any() {
    local magnified
    if magnified=$(display_magnified); then export DISPLAY=$magnified; fi
    [ -n "${DISPLAY:-}" ] || display_virtual "$KORA_DISPLAY"
}

# Whether the host has anything to play sound on, a sound server or a card. Asked to play without, its sound library
# would write into the radio's trace that it has none.
host_plays() {
    [ -n "${PULSE_SERVER:-}" ] || [ -S "${XDG_RUNTIME_DIR:-/run/user/$(id -u)}/pulse/native" ] ||
        [ -e "$HOME/.asoundrc" ] || [ -e /etc/asound.conf ] || grep -qs playback /proc/asound/pcm
}

# A display and a Wine prefix to stand on.
handset_stage() {
    local had_display=${DISPLAY:-}
    display_any
    wine_prefix
    if [ -n "$had_display" ]; then
        wine_no_virtual_desktop
        host_plays || export KORA_HOSTSOUND=${KORA_HOSTSOUND:-0}
    else
        wine_virtual_desktop "$KORA_DESKTOP"
        export KORA_HOSTSOUND=0
    fi
}

# The service that starts booked programs, without a window; it and what it starts write to the same logs.
service_start() {
    setsid "$KORA_WINE" "$KORA_BIN/handset.exe" service >>"$KORA_HOME/console.log" 2>>"$KORA_HOME/trace.log" </dev/null &
}

# While a radio runs another start does what it does on the device: the first one comes to the front, and a booked one
# takes its place.
kora_start() {
    handset_ready --unless-running
    local installed=$SAID
    [ "$*" = Kora.vol ] || favourites_once
    # Appended to, so that programs that write at the same time do not write over one another. Those of a radio that
    # runs go on.
    case $installed in
        *'the radio is running'*) ;;
        *)
            : >"$KORA_HOME/console.log"
            : >"$KORA_HOME/trace.log"
            ;;
    esac
    service_start
    # The device takes one command line, not words: they are joined by blanks, as a scheduled start gives it.
    handset_exe start "$*" >>"$KORA_HOME/console.log" 2>>"$KORA_HOME/trace.log" ||
        fail "the radio did not start; $KORA_HOME/trace.log says more"
}

# With --force what does not close is ended, if need be with everything of this handset.
kora_stop() {
    case "$*" in '' | --force) ;; *) fail "stop: \"$*\" is not understood; --force is" ;; esac
    handset_stage
    if [ "${1:-}" = --force ]; then
        timeout 60 "$KORA_WINE" "$KORA_BIN/handset.exe" stop --force >/dev/null 2>&1 || {
            step "the radio could not be ended alone: its Wine is ended with all that runs in it"
            kora_stop_quietly
            return
        }
    else
        handset_said stop ||
            fail "the radio did not stop; \`kora stop --force\` ends it as it is, and what it has recorded plays up to there:
$SAID"
    fi
    handset_said ether stop || fail "the ether did not stop:
$SAID"
    handset_said service stop --unless-booked || fail "the service did not stop:
$SAID"
    case $SAID in
        *'goes on'*) step "recordings are booked: the service goes on; \`./kora handset service stop\` ends it" ;;
        *) display_stop ;;
    esac
}

# Also when nothing runs, which Wine's server calls a failure.
kora_stop_quietly() {
    if [ -x "$KORA_WINE" ] && [ -d "$WINEPREFIX" ]; then wineserver_run -k 2>/dev/null || true; fi
    display_stop
}

kora_handset() {
    programs_present
    handset_stage
    local status=0 words
    words=$(mktemp -d "$KORA_HOME/handset.XXXXXX")
    # Through files of this call alone, as handset_said has them.
    handset_exe "$@" >"$words/out" 2>"$words/err" || status=$?
    cat "$words/out"
    cat "$words/err" >&2
    rm -rf "$words"
    return $status
}

kora_shot() {
    [ $# -eq 1 ] || fail "shot wants one file name, such as out/screen.png"
    display_any
    display_picture "$1" || fail "no picture could be taken of display $DISPLAY"
}
