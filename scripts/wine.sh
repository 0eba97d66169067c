# One handset's Wine: its prefix lies in KORA_HOME. Sourced after common.sh.

# Where it lies: Debian puts it beside no path, others below lib64 or on the path, its makers below /opt. One that
# KORA_WINE names comes before all. Without any it will be where Debian's package puts it.
KORA_WINE_PLACES=(/usr/lib/wine/wine64 /usr/lib/wine-development/wine64 /usr/lib64/wine/wine64 wine64
    /opt/wine-stable/bin/wine64 /opt/wine-staging/bin/wine64 /opt/wine-devel/bin/wine64 wine)
wine_find() {
    local place
    for place in "${KORA_WINE_PLACES[@]}"; do
        command -v "$place" && return 0
    done
    printf '%s\n' "${KORA_WINE_PLACES[0]}"
}
KORA_WINE=${KORA_WINE:-$(wine_find)}
export WINEPREFIX=${KORA_WINEPREFIX:-$KORA_HOME/prefix}
# No add-on downloads, no debugger that waits for a person after a crash, no entries in the desktop's menus.
export WINEDLLOVERRIDES='mscoree,mshtml,winedbg.exe,winemenubuilder.exe='
export WINEDEBUG=${WINEDEBUG:--all}
export WINEARCH=win64

# Beside the loader, or on the path.
wineserver_run() {
    local server
    server=$(dirname "$KORA_WINE")/wineserver
    [ -x "$server" ] || server=wineserver
    "$server" "$@"
}

# wine_start PROGRAM ARGS…: output goes where the caller says; never into a pipe that a Wine service would
# keep open for ever.
wine_start() { "$KORA_WINE" "$@"; }

windows_path() { printf 'Z:%s' "${1//\//\\}"; }

# wine_virtual_desktop WIDTHxHEIGHT: every window of this prefix lies on a desktop of Wine's own. Without a window
# manager, as on a virtual display, Wine would wait two seconds for one whenever a window goes.
wine_virtual_desktop() {
    local record=$WINEPREFIX/.kora-desktop
    [ "$(cat "$record" 2>/dev/null)" = "$1" ] && return 0
    wine_start reg add 'HKCU\Software\Wine\Explorer' /v Desktop /d Kora /f >"$KORA_HOME/wine-desktop.log" 2>&1 &&
        wine_start reg add 'HKCU\Software\Wine\Explorer\Desktops' /v Kora /d "$1" /f >>"$KORA_HOME/wine-desktop.log" 2>&1 ||
        fail "Wine's desktop could not be set; see $KORA_HOME/wine-desktop.log"
    echo "$1" >"$record"
}

# Takes that back: on a user's display each program shows its windows where it was started, and a desktop that all
# of them belong to would not go with the last of its windows.
wine_no_virtual_desktop() {
    [ -f "$WINEPREFIX/.kora-desktop" ] || return 0
    wine_start reg delete 'HKCU\Software\Wine\Explorer' /v Desktop /f >"$KORA_HOME/wine-desktop.log" 2>&1 ||
        fail "Wine's desktop could not be put away; see $KORA_HOME/wine-desktop.log"
    rm "$WINEPREFIX/.kora-desktop"
}

# wine_font: the device's font, where the distribution has it in a package of its own. Wine does not look there by itself
# when its loader is called by its own path; it reads the folder when the first program of a prefix starts.
KORA_FONTS=/usr/share/wine/fonts
wine_font() {
    local font folder=$WINEPREFIX/drive_c/windows/Fonts
    for font in "$KORA_FONTS"/tahoma*.ttf; do
        if [ -f "$font" ] && [ ! -e "$folder/${font##*/}" ]; then
            mkdir -p "$folder"
            ln -sf "$font" "$folder/${font##*/}"
        fi
    done
}

# The colours of the host's controls, so that they go with the phone: what lies behind it, what is selected (Wine's own
# blue is too light for its white texts), and the titles of boxes.
KORA_COLOURS=('Background=44 50 54' 'Hilight=62 86 14' 'MenuHilight=62 86 14' 'HilightText=255 255 255'
    'ActiveTitle=17 19 18' 'GradientActiveTitle=17 19 18' 'TitleText=255 255 255')
wine_colours() {
    local record=$WINEPREFIX/.kora-colours file=$WINEPREFIX/kora-colours.reg colour
    [ "$(cat "$record" 2>/dev/null)" = "${KORA_COLOURS[*]}" ] && return 0
    {
        printf 'REGEDIT4\n\n[HKEY_CURRENT_USER\\Control Panel\\Colors]\n'
        for colour in "${KORA_COLOURS[@]}"; do printf '"%s"="%s"\n' "${colour%%=*}" "${colour#*=}"; done
    } >"$file"
    # Without them the phone works as well.
    wine_start reg import "$(windows_path "$file")" >>"$KORA_HOME/wineboot.log" 2>&1 && echo "${KORA_COLOURS[*]}" >"$record" || true
    rm -f "$file"
}

# A prefix takes some seconds to make; done once.
wine_prefix() {
    if [ -f "$WINEPREFIX/.kora-ready" ]; then
        wine_font
        wine_colours
        return 0
    fi
    local lock
    mkdir -p "$KORA_HOME"
    exec {lock}>"$KORA_HOME/prefix.lock"
    flock "$lock"
    # Another call has made it meanwhile?
    [ -f "$WINEPREFIX/.kora-ready" ] || wine_prefix_make {lock}>&-
    exec {lock}>&-
}
wine_prefix_make() {
    step "making a Wine prefix in $WINEPREFIX (some seconds, once)"
    mkdir -p "$WINEPREFIX"
    wine_start wineboot --init >"$KORA_HOME/wineboot.log" 2>&1 || fail "Wine could not make its prefix; see $KORA_HOME/wineboot.log"
    wine_colours
    wineserver_run --wait || true
    wine_font
    touch "$WINEPREFIX/.kora-ready"
}
