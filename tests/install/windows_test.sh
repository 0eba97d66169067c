#!/usr/bin/env bash
# Unpacks the zip for Windows in a Wine that has never seen the radio, lets it live there, and removes it again.
# usage: windows_test.sh FOLDER-OF-PROGRAMS
set -uo pipefail
KORA_PROGRAMS=$1 SUITE=PackageForWindows
WORK=$(mktemp -d)
USER_HOME=$WORK/home
. "$(dirname "${BASH_SOURCE[0]}")/checks.sh"
PREFIX=$WORK/prefix FOLDER="$WORK/prefix/drive_c/Meine Programme"
wine() {
    as_user WINEPREFIX="$PREFIX" WINEARCH=win64 WINEDEBUG=-all KORA_TUNERLOG='\tuner.log' \
        WINEDLLOVERRIDES='mscoree,mshtml,winedbg.exe,winemenubuilder.exe=' "$KORA_WINE" "$@"
}
server() { WINEPREFIX=$PREFIX "$(dirname "$KORA_WINE")/wineserver" "$@"; }
clean_up() {
    server -k 2>/dev/null
    rm -rf "$WORK"
}
trap clean_up EXIT

# Everything that a 64-bit Windows has in its system folder and that the programs may lean on.
SYSTEM_DLLS=' ADVAPI32 COMCTL32 COMDLG32 GDI32 KERNEL32 MSIMG32 MSVCRT NTDLL OLE32 OLEAUT32 PSAPI SHELL32 USER32 WINMM WS2_32 QUARTZ '
wanted_dlls() { x86_64-w64-mingw32-objdump -p "$1" | sed -n 's/^\tDLL Name: //p; s/.*Forwarder RVA -- \(.*\)\.[^.]*$/\1/p' | sort -u; }
only_system_dlls() {
    local file dll fault=0
    for file in "$FOLDER"/Kora/programs/*.exe "$FOLDER"/Kora/programs/*.dll; do
        for dll in $(wanted_dlls "$file"); do
            dll=${dll%.dll}
            case $SYSTEM_DLLS in *" ${dll^^} "*) continue ;; esac
            [ -f "$FOLDER/Kora/programs/$dll.dll" ] || { echo "${file##*/} wants $dll"; fault=1; }
        done
    done
    return $fault
}
same_programs() {
    local file
    for file in "$FOLDER"/Kora/programs/*; do cmp "$file" "$KORA_PROGRAMS/${file##*/}" || return 1; done
}
# Notepad of older Windows shows text without carriage returns as one line; its batch interpreter stumbles over it.
windows_line_ends() {
    local file
    for file in "$FOLDER"/Kora/*.*; do [ "$(grep -c $'\r$' "$file")" -eq "$(wc -l <"$file")" ] || { echo "$file"; return 1; }; done
}
documents_are_there() {
    local name
    for name in LICENSE THIRD-PARTY.md guide.md notices/sqlite3.txt notices/opencore-amr.txt notices/libsoxr.txt notices/libsoxr-parts.txt \
        notices/kissfft.txt notices/nlohmann-json.txt notices/gcc-mingw-w64.txt notices/mingw-w64.txt notices/GPL-3.txt pictures/listening.png; do
        [ -s "$FOLDER/Kora/documents/$name" ] || { echo "$name"; return 1; }
    done
}
files() { (cd "$PREFIX" && find drive_c ! -path '*/Temp/*' ! -path 'drive_c/Meine Programme' | sort); }
# Without the times of writing; the server writes them when it ends.
registry() { server --wait; sed 's/^\(\[.*\]\) [0-9]*$/\1/; /^#time=/d; /^;; All keys/d' "$PREFIX/user.reg"; }
command_file() { (cd / && wine cmd /c "C:\\Meine Programme\\Kora\\$1" "${@:2}"); }
handset() { wine "C:\\Meine Programme\\Kora\\programs\\handset.exe" "$@"; }
device() { find "$PREFIX/drive_c/users" -type d -path '*/Kora Handset/device' -print -quit; }
radio_runs() { handset status | grep -q '^Radio *running'; }
radio_starts() { command_file 'Start Kora.cmd' --no-pause && wait_for 60 radio_runs; }
channels_filled() { [ -s "$(device)/KORA.vol" ]; }
tuned() { grep -q '^SetChannel 9850 -> 0' "$(device)/tuner.log"; }
# Typed once: a radio that is said to run has its window, and its window takes keys.
type_frequency() { handset key 9 8 5 && wait_for 20 tuned; }
closes() { handset stop && ! radio_runs; }
removes() { command_file 'Uninstall Kora.cmd' --all && wait_for 30 test ! -e "$FOLDER/Kora"; }

mkdir -p "$USER_HOME"
copy_tree "$WORK/tree"
wine wineboot --init >/dev/null 2>&1
server --wait
# A console opened once, so that what Wine writes down for the first one is there before and after.
wine cmd /c start /min /wait cmd /c exit >/dev/null 2>&1 </dev/null
registry_before=$(registry)
files_before=$(files)
check IsPacked as_user "$WORK/tree/kora" package --no-build "$WORK/kora.zip"
mkdir -p "$FOLDER"
check Unpacks unzip -q "$WORK/kora.zip" -d "$FOLDER"
check HasTheProgramsAsTheyWereBuilt same_programs
check WantsNothingThatWindowsLacks only_system_dlls
check TheLicencesAndTheGuideAreInIt documents_are_there
check ItsTextsHaveTheLineEndsOfWindows windows_line_ends
check StartsByItsCommandFile radio_starts
check ANewPhoneHasItsChannelLists channels_filled
check TypedDigitsTune type_frequency
check TheRadioCloses closes
check RemovesItself removes
check LeavesNoFile same "$files_before" "$(files)"
check LeavesTheRegistryAsItWas same "$registry_before" "$(registry)"
finish
