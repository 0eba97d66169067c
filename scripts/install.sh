# ./kora install: lays the built programs into a prefix of the machine. Sourced by kora.

. "$KORA_ROOT/scripts/notices.sh"

KORA_PROGRAM_FILES=(UI.exe COREDLL.dll AYGSHELL.dll COMMCTRL.dll COMMDLG.dll fmdevice.dll capture.dll handset.exe band.ini)
KORA_LAUNCHER_SCRIPTS=(antenna common packages wine display handset magnifier run uninstall)
KORA_ICON_SIZES=(16 24 32 48 64 128 256)

# programs_copy FOLDER: all that a handset is made of, as it was built.
programs_copy() {
    local file
    mkdir -p "$1"
    for file in "${KORA_PROGRAM_FILES[@]}"; do
        [ -f "$KORA_BIN/$file" ] || fail "$KORA_BIN/$file is missing; \`./kora build\` makes it"
        install -m 644 "$KORA_BIN/$file" "$1/$file"
    done
}

# magnifier_copy FOLDER: beside the programs of the handset, which are the same on every machine, and without symbols.
magnifier_copy() {
    [ -f "$KORA_MAGNIFIER" ] || fail "$KORA_MAGNIFIER is missing; \`./kora build\` makes it"
    mkdir -p "$1"
    install -s -m 755 "$KORA_MAGNIFIER" "$1/kora-magnifier"
}

# documents_copy FOLDER: the guide with its pictures, and the licences.
documents_copy() {
    mkdir -p "$1/pictures"
    install -m 644 "$KORA_ROOT/docs/guide.md" "$1/guide.md"
    install -m 644 "$KORA_ROOT"/docs/pictures/*.png "$1/pictures/"
    notices_copy "$1"
}

# A path as one word of a desktop entry's Exec line.
exec_word() {
    local word=${1//\\/\\\\}
    word=${word//\"/\\\"} word=${word//\`/\\\`} word=${word//\$/\\\$} word=${word//%/%%}
    # The entry's own strings take a backslash as the beginning of an escape once more.
    printf '"%s"' "${word//\\/\\\\}"
}

# install_tree STAGE PREFIX: what will lie in PREFIX, laid out in STAGE.
install_tree() {
    local stage=$1 prefix=$2 size script entry
    local icons=$stage/share/icons/hicolor drawing=$KORA_ROOT/resources/art/app_icon.svg.in
    programs_copy "$stage/share/kora/programs"
    magnifier_copy "$stage/lib/kora"
    mkdir -p "$stage/bin" "$stage/share/kora/scripts" "$stage/share/applications" "$icons/scalable/apps"
    install -m 755 "$KORA_ROOT/packaging/linux/kora" "$stage/share/kora/kora"
    ln -s ../share/kora/kora "$stage/bin/kora"
    for script in "${KORA_LAUNCHER_SCRIPTS[@]}"; do
        install -m 644 "$KORA_ROOT/scripts/$script.sh" "$stage/share/kora/scripts/$script.sh"
    done
    documents_copy "$stage/share/doc/kora"
    mkdir -p "$stage/share/man/man1" "$stage/share/bash-completion/completions"
    gzip -9 -n -c "$KORA_ROOT/packaging/linux/kora.1" >"$stage/share/man/man1/kora.1.gz"
    install -m 644 "$KORA_ROOT/packaging/linux/kora.bash" "$stage/share/bash-completion/completions/kora"
    install -m 644 "$drawing" "$icons/scalable/apps/kora.svg"
    for size in "${KORA_ICON_SIZES[@]}"; do
        mkdir -p "$icons/${size}x$size/apps"
        rsvg-convert -w "$size" -h "$size" -o "$icons/${size}x$size/apps/kora.png" "$drawing"
    done
    entry=$(<"$KORA_ROOT/packaging/linux/kora.desktop.in")
    printf '%s\n' "${entry/@EXEC@/"$(exec_word "$prefix/share/kora/kora")"}" >"$stage/share/applications/kora.desktop"
}

# install_record STAGE PREFIX: writes down which files and which new folders PREFIX receives, a folder after what it
# holds; what an earlier installation made is ours as well.
install_record() {
    local stage=$1 prefix=$2 record=share/kora/installed path
    {
        (cd "$stage" && find . -mindepth 1 ! -type d -printf '%P\n' && echo "$record")
        (cd "$stage" && find . -depth -mindepth 1 -type d -printf '%P/\n') | while read -r path; do
            if [ ! -d "$prefix/$path" ] || grep -qxF "$path" "$prefix/$record" 2>/dev/null; then echo "$path"; fi
        done
        if [ ! -d "$prefix" ] || grep -qxF ./ "$prefix/$record" 2>/dev/null; then echo ./; fi
    } >"$stage/$record"
}

kora_install() {
    local prefix=$HOME/.local build=1
    while [ $# -gt 0 ]; do
        case $1 in
            --prefix) [ $# -gt 1 ] || fail "--prefix wants a folder"; prefix=$2; shift 2 ;;
            --prefix=*) prefix=${1#*=}; shift ;;
            --no-build) build=0; shift ;;
            *) fail "install: \"$1\" is not understood; --prefix DIR and --no-build are" ;;
        esac
    done
    prefix=$(realpath -ms "$prefix")
    if [ $build -eq 1 ]; then
        programs_ready
        magnifier_ready
    fi
    packages_need "${KORA_RUN_PACKAGES[@]}" librsvg2-bin
    . "$KORA_ROOT/scripts/uninstall.sh"
    local stage
    umask 022
    stage=$(mktemp -d)
    # shellcheck disable=SC2064
    trap "rm -rf '$stage'" EXIT
    install_tree "$stage" "$prefix"
    install_record "$stage" "$prefix"
    mkdir -p "$prefix" 2>/dev/null && [ -w "$prefix" ] || fail "$prefix cannot be written; --prefix names another folder"
    # Not the folders' own rights: those that are there belong to somebody else.
    cp -r --no-preserve=mode,ownership --remove-destination --no-dereference "$stage/." "$prefix/"
    chmod 755 "$prefix/share/kora/kora" "$prefix/lib/kora/kora-magnifier"
    desktop_caches "$prefix"
    step "installed in $prefix"
    case :$PATH: in
        *:"$prefix/bin":*) printf 'Start it with "kora" or from the menu of the desktop; "kora uninstall" removes it.\n' ;;
        *) printf 'Start it with %s or from the menu of the desktop; "%s uninstall" removes it.\n' "$prefix/bin/kora" "$prefix/bin/kora" ;;
    esac
}

# ./kora uninstall [--prefix DIR] [--all]: as the installed program does it itself.
kora_uninstall_installed() {
    local prefix=$HOME/.local rest=()
    while [ $# -gt 0 ]; do
        case $1 in
            --prefix) [ $# -gt 1 ] || fail "--prefix wants a folder"; prefix=$2; shift 2 ;;
            --prefix=*) prefix=${1#*=}; shift ;;
            *) rest+=("$1"); shift ;;
        esac
    done
    prefix=$(realpath -ms "$prefix")
    [ -x "$prefix/share/kora/kora" ] || fail "Kora is not installed in $prefix"
    # The handset of this tree is another one.
    exec env -u KORA_HOME -u WINEPREFIX "$prefix/share/kora/kora" uninstall "${rest[@]}"
}
