# Removes an installed Kora and its handset. Sourced by the installed launcher, and by install.sh for the caches.

# desktop_caches PREFIX: the desktop's own indexes are brought up to date where there are any, and none is made.
desktop_caches() {
    local icons=$1/share/icons/hicolor applications=$1/share/applications
    if [ -f "$icons/icon-theme.cache" ] && command -v gtk-update-icon-cache >/dev/null; then
        gtk-update-icon-cache -q -f -t "$icons" 2>/dev/null || true
    fi
    if [ -f "$applications/mimeinfo.cache" ] && command -v update-desktop-database >/dev/null; then
        update-desktop-database -q "$applications" 2>/dev/null || true
    fi
}

# Sound files anywhere on the device, and whatever else lies where users keep things.
list_recordings() {
    [ -d "$KORA_HOME/device" ] || return 0
    (cd "$KORA_HOME" && find device -type f \( -iname '*.amr' -o -iname '*.wav' -o -path 'device/My Documents/*' \
        -o -path 'device/Storage Card/*' \) -print0)
}

# The folder in which Wine's server kept its lock for this prefix.
wine_server_folder() {
    printf '/tmp/.wine-%d/server-%x-%x' "$(id -u)" "$(stat -c %d "$WINEPREFIX")" "$(stat -c %i "$WINEPREFIX")"
}

handset_end() {
    [ -d "$WINEPREFIX" ] || return 0
    if [ -x "$KORA_WINE" ] && [ -f "$WINEPREFIX/.kora-ready" ]; then
        [ -n "${DISPLAY:-}" ] || [ ! -f "$KORA_HOME/display" ] || display_virtual
        # A radio that records closes its file; whatever else still runs ends with Wine's server.
        timeout 60 "$KORA_WINE" "$KORA_BIN/handset.exe" stop >/dev/null 2>&1 </dev/null || true
        wineserver_run -k 2>/dev/null || true
        wineserver_run --wait 2>/dev/null || true
    fi
    local server
    server=$(wine_server_folder)
    rm -rf "$server"
    rmdir "$(dirname "$server")" 2>/dev/null || true
}

# remove_whole PATH…: also while a program that was killed a moment ago ends its last write there.
remove_whole() {
    local tries
    for tries in {1..50}; do
        rm -rf "$@" 2>/dev/null && return
        sleep 0.1
    done
    rm -rf "$@"
}

# handset_remove ALL: the handset's files; with ALL=0 the recordings stay where they are.
handset_remove() {
    local kept=$KORA_HOME.kept
    handset_end
    display_stop
    [ -d "$KORA_HOME" ] || return 0
    # What an uninstallation that was broken off had put aside is kept as well.
    if [ "$1" -eq 0 ] && [ -n "$(list_recordings | tr -d '\0')" ]; then
        local file
        while IFS= read -r -d '' file; do
            mkdir -p "$kept/$(dirname "$file")" && mv "$KORA_HOME/$file" "$kept/$file" ||
                fail "$KORA_HOME/$file could not be moved; nothing was removed"
        done < <(list_recordings)
    fi
    # Another folder than the usual one may hold more than ours.
    remove_whole "$KORA_HOME/prefix" "$KORA_HOME/device" "$KORA_HOME/cache"
    if [ "$KORA_HOME" = "$KORA_DEFAULT_HOME" ]; then
        remove_whole "$KORA_HOME"
    else
        (cd "$KORA_HOME" && rm -rf ./*.log ./*.lock handset.?????? display size magnified)
        rmdir --ignore-fail-on-non-empty "$KORA_HOME"
    fi
    if [ -d "$kept" ]; then
        mkdir -p "$KORA_HOME"
        cp -al "$kept/." "$KORA_HOME/" && rm -rf "$kept"
        printf 'Your recordings were kept; they lie in\n'
        (cd "$KORA_HOME" && find device -type f -printf '  %h\n') | sort -u | sed "s|^  |  $KORA_HOME/|"
        printf 'Remove %s when you no longer want them.\n' "$KORA_HOME"
    fi
}

# What install_record wrote down, and nothing else; a folder only when nobody put anything into it.
programs_remove() {
    local record=$KORA_ROOT/installed path prefix=$KORA_PREFIX
    [ -f "$record" ] || fail "$record is missing: it is not known what was installed"
    local paths
    mapfile -t paths <"$record"
    for path in "${paths[@]}"; do
        case $path in
            ./) rmdir --ignore-fail-on-non-empty "$prefix" ;;
            */) rmdir --ignore-fail-on-non-empty "$prefix/$path" 2>/dev/null || true ;;
            *) rm -f "$prefix/$path" ;;
        esac
    done
    desktop_caches "$prefix"
}

kora_uninstall() {
    local all=0
    case ${1:-} in
        --all) all=1 ;;
        '') ;;
        *) fail "uninstall: \"$1\" is not understood; --all is" ;;
    esac
    handset_remove $all
    if [ ! -f "$KORA_ROOT/installed" ] && dpkg-query -S "$KORA_ROOT/kora" >/dev/null 2>&1; then
        step 'your handset is removed; "sudo apt remove kora" removes the programs'
    elif [ -w "$KORA_ROOT" ]; then
        programs_remove
        step "Kora is removed"
    else
        step "your handset is removed; the programs in $KORA_PREFIX belong to somebody else and stay"
    fi
}
