# The handset enlarged: it stands on a virtual display, which a window of the user's own shows larger. Sourced by run.sh.

# The sides of KORA_DESKTOP, in pixels.
magnifier_side() { local w=${KORA_DESKTOP%x*} h=${KORA_DESKTOP#*x}; echo $((w > h ? w : h)); }

# As large as the user's display has room for, with some for its own bars.
magnifier_room() {
    local side size
    side=$(xwininfo -root 2>/dev/null | awk '
        /^ *(Width|Height):/ { if (!least || $2 < least) least = $2 }
        END { print least + 0 }' || true)
    size=$((side * 95 / 100 / $(magnifier_side)))
    echo $((size > 3 ? 3 : size < 1 ? 1 : size))
}

# What the present display lacks to show the handset enlarged, as the end of a sentence; nothing when nothing does.
magnifier_wants() {
    local packages depth
    packages=$(magnifier_lacks)
    [ -z "$packages" ] || { echo "without these packages: ${packages//$'\n'/ }"; return; }
    depth=$(xwininfo -root 2>/dev/null | awk '/^ *Depth:/ { print $2 }' || true)
    [ "$depth" = 24 ] || echo "on a display of ${depth:-unknown} bits of colour; it takes 24"
}

# magnifier_size [SIZE]: how many times as large the handset is shown. What is given stays for the next time; without it, and
# when nothing was ever given, the room decides. What is lacking refuses what is given, and nothing else.
magnifier_size() {
    local record=$KORA_HOME/size given=${1:-} size lacking=''
    case $given in
        1 | 2 | 3) size=$given ;;
        auto) size=$(magnifier_room) ;;
        '') size=$(grep -sx '[123]' "$record") || size=$(magnifier_room) ;;
        *) fail "--size wants 1, 2, 3 or auto" ;;
    esac
    [ "$size" = 1 ] || lacking=$(magnifier_wants)
    if [ -n "$lacking" ]; then
        case $given in
            2 | 3) fail "the phone cannot be shown $given times as large $lacking" ;;
        esac
        step "the phone is shown in its own size; it cannot be shown larger $lacking"
        size=1
    fi
    case $given in
        1 | 2 | 3) mkdir -p "$KORA_HOME" && echo "$given" >"$record" ;;
        auto) rm -f "$record" ;;
    esac
    echo "$size"
}

# magnifier_open SIZE: a virtual display as large as the handset's desktop, shown SIZE times as large on the present one.
# From here on DISPLAY is the virtual one. MAGNIFIER is the process whose window shows it.
magnifier_open() {
    magnifier_ready
    local folder=$KORA_HOME/magnified number deadline=$((SECONDS + 20))
    mkdir -p "$folder"
    rm -f "$folder"/*
    setsid Xvfb -displayfd 3 -screen 0 "${KORA_DESKTOP}x24" -fbdir "$folder" -nolisten tcp -noreset -nocursor 3>"$folder/number" >"$KORA_HOME/xvfb.log" 2>&1 &
    MAGNIFIED=$!
    until [ -s "$folder/number" ]; do
        kill -0 "$MAGNIFIED" 2>/dev/null && [ $SECONDS -lt $deadline ] || fail "the virtual display did not start; see $KORA_HOME/xvfb.log"
        sleep 0.05
    done
    number=$(tr -d '\n' <"$folder/number")
    "$KORA_MAGNIFIER" ":$number" "$folder/Xvfb_screen0" "$1" &
    MAGNIFIER=$!
    # For whoever asks for the handset's display meanwhile (display.sh).
    echo "$number $MAGNIFIED $(process_start "$MAGNIFIED")" >"$KORA_HOME/magnified/display"
    export DISPLAY=:$number
}

magnifier_close() {
    [ -z "${MAGNIFIER:-}" ] || kill "$MAGNIFIER" 2>/dev/null || true
    [ -z "${MAGNIFIED:-}" ] || kill "$MAGNIFIED" 2>/dev/null || true
    MAGNIFIER='' MAGNIFIED=''
}
