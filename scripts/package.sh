# ./kora package: a zip for desktop Windows with the programs as they are. Sourced by kora.

# windows_text FILE TARGET: with the line ends that Windows' own editors expect.
windows_text() { sed 's/$/\r/' "$1" >"$2"; }

kora_package() {
    local build=1 target=
    while [ $# -gt 0 ]; do
        case $1 in
            --no-build) build=0 ;;
            -*) fail "package: \"$1\" is not understood; a file name and --no-build are" ;;
            *) target=$1 ;;
        esac
        shift
    done
    [ $build -eq 0 ] || programs_ready
    packages_need "${KORA_PACKAGE_PACKAGES[@]}"
    . "$KORA_ROOT/scripts/install.sh"
    target=$(realpath -m "${target:-$KORA_HOME/kora-windows.zip}")
    mkdir -p "$(dirname "$target")"
    local stage text
    stage=$(mktemp -d)
    # shellcheck disable=SC2064
    trap "rm -rf '$stage'" EXIT
    programs_copy "$stage/Kora/programs"
    for text in "$KORA_ROOT"/packaging/windows/*; do
        windows_text "$text" "$stage/Kora/${text##*/}"
    done
    rm -f "$target"
    (cd "$stage" && zip -q -r -X "$target" Kora) || fail "the zip could not be written"
    step "packed: $target ($(($(stat -c %s "$target") / 1024)) KiB)"
}
