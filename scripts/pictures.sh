# ./kora pictures: draws the pictures of the documents anew, from the radio as it is. Sourced by kora.

KORA_PICTURE_PACKAGES=(xdotool imagemagick optipng)
PICTURE_DESKTOP=760x760

# The screen's digest; a picture is taken when it has stood still for a moment. Some things never do (a text that
# runs), hence the limit.
screen_digest() { import -silent -window root rgb:- | md5sum; }
settle() {
    local before now _
    before=$(screen_digest)
    for _ in {1..12}; do
        sleep 0.25
        now=$(screen_digest)
        [ "$now" = "$before" ] && return 0
        before=$now
    done
}

# picture NAME [GEOMETRY]: of the display, or of another part of the screen.
picture() {
    settle
    import -silent -window root -crop "${2:-$DISPLAY_SIZE+0+0}" +repage "$SHOTS/$1.png"
}

# join NAME SHOT…: several side by side as one picture of the documents.
join() {
    local name=$1
    shift
    convert "${@/#/$SHOTS/}" -bordercolor '#8b9aa3' -border 1 -bordercolor white -border 6 -background white -gravity north \
        +append +dither -colors 250 -strip "png8:$PICTURES/$name.png"
    optipng -quiet -o5 "$PICTURES/$name.png"
}

handset_do() { handset_exe "$@" >>"$KORA_HOME/pictures.log" 2>&1 </dev/null || fail "handset $* failed; see $KORA_HOME/pictures.log"; }
tap() { xdotool mousemove "$1" "$2" click "${3:-1}"; settle; }
# What has to be there before the next key comes, or that key would go to what was there before.
until_changed() {
    local before deadline=$((SECONDS + 20))
    before=$(screen_digest)
    "$@"
    while [ $SECONDS -lt $deadline ] && [ "$(screen_digest)" = "$before" ]; do sleep 0.1; done
    settle
}
menu() { until_changed handset_do softkey "$1"; }
# choose SIDE NUMBER: opens that soft key's menu and what its entry of that number opens.
choose() {
    local entry
    menu "$1"
    for ((entry = 0; entry < $2; entry++)); do handset_do key down; done
    settle
    until_changed handset_do key return
}
# A touch beside every menu closes one; where the name stands it does nothing else.
put_away() { tap 120 60; }
# The scan's way through the band, from the number that the tuner leaves in the state.
until_tuned_past() {
    local channel deadline=$((SECONDS + 20))
    while [ $SECONDS -lt $deadline ]; do
        channel=$(wine_start reg query 'HKCU\Software\Kora Handset' /v TunedChannel 2>/dev/null </dev/null | sed -n 's/.*REG_DWORD *\(0x[0-9a-f]*\).*/\1/p')
        [ $((channel)) -le "$1" ] || return 0
    done
}
radio_on() { handset_do start; settle; }
radio_off() { handset_do stop; }
turn() {
    handset_do orientation "$1"
    DISPLAY_SIZE=240x320
    [ "$1" = landscape ] && DISPLAY_SIZE=320x240
    settle
}
press() { handset_do key "$@"; settle; }
tune() { press "$@"; sleep 5; }  # the digits' two seconds, and those in which RDS comes

kora_pictures() {
    packages_need "${KORA_BUILD_PACKAGES[@]}" "${KORA_DISPLAY_PACKAGES[@]}" "${KORA_PICTURE_PACKAGES[@]}"
    export KORA_HOME=$KORA_HOME/pictures
    export WINEPREFIX=$KORA_HOME/prefix
    unset DISPLAY
    trap 'kora_stop_quietly' EXIT
    KORA_DESKTOP=$PICTURE_DESKTOP
    programs_ready
    handset_stage
    # A new phone each time: its lists and settings are what the pictures show.
    rm -rf "$KORA_HOME/device"
    wine_start reg delete 'HKCU\Software\Kora Handset' /f >"$KORA_HOME/pictures.log" 2>&1 || true
    handset_do install "$(windows_path "$KORA_HOME/device")"
    favourites_once
    SHOTS=$KORA_HOME/shots PICTURES=$KORA_ROOT/docs/pictures
    mkdir -p "$SHOTS"
    local chapter chapters=("$@")
    # The phone before the schedule: it would make the recording that is booked there.
    [ $# -gt 0 ] || chapters=(listening menus channels recording phone schedule settings rds messages antenna scan)
    for chapter in "${chapters[@]}"; do
        step "pictures: $chapter"
        turn portrait
        "pictures_$chapter"
        radio_off
    done
    turn portrait
}

pictures_listening() {
    radio_on
    tune 9 8 5
    picture listening
    turn landscape
    picture listening-flat
    join listening listening.png listening-flat.png
}

pictures_menus() {
    radio_on
    tune 9 8 5
    menu left; picture menu-left; put_away
    choose right 3; picture menu-right; put_away
    join menus menu-left.png menu-right.png
}

pictures_channels() {
    radio_on
    tune 9 2 3
    choose left 2; picture channel-add; menu right
    choose left 1; picture channel-lists; menu right
    tap 60 152 3; picture channel-menu; put_away
    join channels channel-menu.png channel-add.png channel-lists.png
}

# Last, for it fills the list.
pictures_scan() {
    radio_on
    tune 8 8 5
    choose left 3; picture scan-question
    handset_do key return
    until_tuned_past 9500
    import -silent -window root -crop "$DISPLAY_SIZE+0+0" +repage "$SHOTS/scan.png"
    join scan scan-question.png scan.png
}

pictures_recording() {
    radio_on
    tune 8 8 5
    tap 28 277
    sleep 3
    picture recording
    tap 28 277; picture recording-saved
    press return
    join recording recording.png recording-saved.png
}

pictures_schedule() {
    radio_on
    tune 8 8 5
    choose right 2
    tap 158 67; xdotool key Up; tap 60 120; picture schedule
    turn landscape; picture schedule-flat
    join schedule schedule.png schedule-flat.png
}

pictures_settings() {
    radio_on
    choose right 1; picture settings
    turn landscape; picture settings-flat
    join settings settings.png settings-flat.png
}

pictures_rds() {
    radio_on
    tune 9 8 5
    tap 203 249; picture rds; menu left
    tap 172 249; tap 60 275; sleep 2; picture frequencies
    join rds rds.png frequencies.png
}

# The radio's settings, as `handset reg` names their key.
settings_key() {
    sed -n 's/^inline constexpr wchar_t kTunerKey\[\] = L"\(.*\)";$/\1/p' "$KORA_ROOT/handset/include/tuner_slots.h" |
        sed 's/\\\\/\\/g'
}

pictures_messages() {
    local settings
    settings=$(settings_key)
    handset_do reg set "$settings" EnableMute dword 1
    radio_on
    tune 9 0 1
    picture weak
    handset_do reg set "$settings" EnableMute dword 0
    radio_off
    handset_do headset off
    radio_on
    picture no-headset 240x110+0+118
    handset_do key return
    handset_do headset on
    join messages weak.png no-headset.png
}

# Real signals, of a good station and of a weak one; their texts take their time.
pictures_antenna() {
    handset_do antenna ether
    radio_on
    tune 9 8 5; sleep 8
    picture antenna
    tune 9 1 6; sleep 8
    picture antenna-weak
    radio_off
    handset_do antenna band
    join antenna antenna.png antenna-weak.png
}

# The phone around the display, upright and on its side.
pictures_phone() {
    (exec "$KORA_WINE" "$KORA_BIN/handset.exe" panel >>"$KORA_HOME/pictures.log" 2>&1 </dev/null) &
    local panel=$!
    settle
    radio_on
    tune 8 8 5
    picture handset $PICTURE_DESKTOP+0+0
    turn landscape
    picture handset-flat $PICTURE_DESKTOP+0+0
    handset_do stop
    mogrify -fuzz 1% -trim +repage "$SHOTS/handset.png" "$SHOTS/handset-flat.png"
    join handset handset.png
    join handset-flat handset-flat.png
    kill "$panel"
    wait "$panel" || true
}
