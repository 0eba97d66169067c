# ./kora device: the phone's own UI.exe. Sourced by kora.

# clang and lld for the processor, its arithmetic and exceptions from the ARM compiler's packages, headers from mingw's,
# and what reads the result.
KORA_DEVICE_PACKAGES=(cmake ninja-build clang lld llvm gcc-arm-none-eabi libstdc++-arm-none-eabi-newlib
    g++-mingw-w64-x86-64-posix g++ gawk librsvg2-bin imagemagick gcab file)
# The phone's loader maps the code at once; it is to stay small.
KORA_DEVICE_MOST_CODE=$((128 * 1024))

# device_imports PROGRAM: "DLL: FUNCTION …", a DLL a line.
device_imports() {
    llvm-readobj --coff-imports "$1" |
        awk '/^  Name: / { if (line) print line; line = $2 ":" } /^  Symbol: / { line = line " " $2 } END { print line }'
}

# device_report PROGRAM: what it is, how large, and what it asks of the phone.
device_report() {
    local dll rest all=0 dlls=0
    file -b "$1"
    llvm-readobj --sections "$1" | awk '
        /^    Name: / { name = $2 }
        /^    VirtualSize: / { printf "%-9s %9d bytes\n", name, strtonum($2) }'
    while read -r dll rest; do
        set -- $rest
        all=$((all + $#))
        dlls=$((dlls + 1))
        printf '\n%s %d functions\n' "$dll" $#
        printf '%s\n' "$rest" | fold -s -w 110 | sed 's/^/  /'
    done < <(device_imports "$1")
    printf '\n%d functions of %d DLLs; whether a phone has these by name is not known:' "$all" "$dlls"
    printf ' %s\n' "$(tr '\n' ' ' <"$KORA_ROOT/tests/data/device-exports/shell-helpers.txt")"
}

kora_device() {
    packages_need "${KORA_DEVICE_PACKAGES[@]}"
    local program=$KORA_ROOT/build/device/UI.exe folder=$KORA_HOME/device-build code
    build_preset device all
    mkdir -p "$folder"
    cp "$program" "$KORA_ROOT/build/device/Kora.cab" "$folder/"
    device_report "$program" >"$folder/report.txt"
    code=$(awk '$1 == ".text" { print $2 }' "$folder/report.txt")
    [ "$code" -le "$KORA_DEVICE_MOST_CODE" ] ||
        fail "the program has $code bytes of code; more than $KORA_DEVICE_MOST_CODE are too many"
    sed -n '1,/^$/p' "$folder/report.txt"
    step "the phone's UI.exe, Kora.cab and report.txt are in $folder; the program has not been on a phone (docs/device.md says what is known)"
}
