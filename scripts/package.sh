# ./kora package: a zip for desktop Windows and a package for Debian, with the programs as they are. Sourced by kora.

. "$KORA_ROOT/scripts/install.sh"
. "$KORA_ROOT/scripts/package_deb.sh"

# windows_text FILE TARGET: with the line ends that Windows' own editors expect.
windows_text() { sed 's/$/\r/' "$1" >"$2"; }

# package_zip STAGE FILE
package_zip() {
    local text
    programs_copy "$1/Kora/programs"
    for text in "$KORA_ROOT"/packaging/windows/*; do
        windows_text "$text" "$1/Kora/${text##*/}"
    done
    documents_copy "$1/Kora/documents"
    rm -f "$2"
    (cd "$1" && zip -q -r -X "$2" Kora) || fail "the zip could not be written"
}

# package_make FILE: by the file's ending.
package_make() {
    local file stage kind=zip
    file=$(realpath -m "$1")
    case $file in
        *.deb) kind=deb ;;
        *.zip) ;;
        *) fail "package: \"$1\" is neither a .zip for Windows nor a .deb for Debian" ;;
    esac
    mkdir -p "$(dirname "$file")"
    stage=$(mktemp -d)
    ("package_$kind" "$stage" "$file") || { rm -rf "$stage"; exit 1; }
    rm -rf "$stage"
    step "packed: $file ($(($(stat -c %s "$file") / 1024)) KiB)"
}

kora_package() {
    local build=1 file files=()
    while [ $# -gt 0 ]; do
        case $1 in
            --no-build) build=0 ;;
            -*) fail "package: \"$1\" is not understood; file names and --no-build are" ;;
            *) files+=("$1") ;;
        esac
        shift
    done
    [ ${#files[@]} -gt 0 ] || files=("$KORA_HOME/kora-windows.zip" "$KORA_HOME/kora.deb")
    if [ $build -eq 1 ]; then
        programs_ready
        case " ${files[*]} " in *'.deb '*) magnifier_ready ;; esac
    fi
    packages_need "${KORA_PACKAGE_PACKAGES[@]}"
    for file in "${files[@]}"; do package_make "$file"; done
}
