# ./kora mutants [FOLDER [COUNT [SEED]]]: what the tests would not notice. Sourced by kora after test.sh.
#
# One line of the application is changed at a time, in a copy: the file's object is compiled anew, the folder's test
# programs are linked with it and run, then those of the other folders, then the radio itself under the system tests.
# The tree and its build are not touched. What is known of a run stands in one file, so that a run that was broken off
# goes on where it stopped.

KORA_MUTANT_FOLDERS=(shell tuner channels recording schedule skin)
KORA_UNIT_PROGRAMS=(test_tuner test_channels test_shell test_settings test_skin test_schedule test_recording)
KORA_SYSTEM_PROGRAMS=(test_system test_system_recording test_system_schedule test_system_outside)
# Programs whose tests wait for seconds of the handset's clock (their CMake lists say so as well).
declare -A KORA_PROGRAM_RATE=([test_recording]=10)
# What the folder's own tests are, and which of the radio's tests come first.
declare -A KORA_OWN_PROGRAMS=([shell]='test_shell test_settings' [tuner]=test_tuner [channels]=test_channels
    [recording]=test_recording [schedule]=test_schedule [skin]=test_skin)
declare -A KORA_FIRST_SYSTEM=([recording]=test_system_recording [schedule]=test_system_schedule)
KORA_MUTANT_TIMEOUT_s=600

# own_first OWN ALL…: the own ones, then the others.
own_first() {
    local own=$1 name
    shift
    printf '%s\n' $own
    for name in "$@"; do
        case " $own " in *" $name "*) ;; *) echo "$name" ;; esac
    done
}

ninja_command() { ninja -C "$KORA_BUILD" -t commands "$1" | tail -n 1; }

# mutant_object SOURCE NUMBER OBJECT: compiles the changed source as the build does. Fails when it does not compile.
mutant_object() {
    local source=$1 folder=${1%%/*} changed=$3.cpp command
    "$KORA_MUTATE" apply "$source" "$2" >"$changed" || fail "$source has no change number $2"
    command=$(ninja_command "$folder/CMakeFiles/app_$folder.dir/${source#*/}.obj")
    command=${command%% -MD *}
    (cd "$KORA_BUILD" && eval "$command -Wno-error -w -o '$3' -c '$changed'") >"$3.log" 2>&1
}

# Without the time that the compiler writes into it.
same_object() { cmp -s -i 8 "$1" "$2"; }

# mutant_link TARGET SOURCE OBJECT PROGRAM: the target's link with this one object in the other's place.
mutant_link() {
    local folder=${2%%/*} object command
    object=$folder/CMakeFiles/app_$folder.dir/${2#*/}.obj
    command=$(ninja_command "$1")
    command=${command//" $object "/" $3 "}
    command=$(sed "s| -o bin/[A-Za-z_]*\.exe | -o $4 |; s| -Wl,--out-implib,[^ ]*||" <<<"$command")
    (cd "$KORA_BUILD" && eval "$command") >"$4.log" 2>&1 || fail "$1 could not be linked; see $4.log"
}

# A lane whose programs are all gone, its server ready for the next.
mutant_lane_clean() {
    wineserver_run -k 2>/dev/null || true
    wineserver_run --wait || true
    wineserver_run -p
}

# mutant_run PROGRAM FILTER: 0 passed; the first test that failed, or that ran when it ended, goes to standard output.
mutant_run() {
    local status=0 log=$KORA_HOME/mutant.log name surroundings=(GTEST_FILTER="$2" GTEST_FAIL_FAST=1)
    name=$(basename "$1" .exe)
    [ -z "${KORA_PROGRAM_RATE[$name]:-}" ] || surroundings+=(KORA_CLOCKRATE="${KORA_PROGRAM_RATE[$name]}")
    env "${surroundings[@]}" timeout -k 5 "$KORA_MUTANT_TIMEOUT_s" "$KORA_WINE" "$1" >"$log" 2>&1 </dev/null || status=$?
    [ $status -ne 0 ] || return 0
    mutant_lane_clean
    { grep -a '^\[  FAILED  \] ' "$log" || grep -a '^\[ RUN  ' "$log" | tail -n 1 || echo "x x x $name"; } |
        head -n 1 | sed 's/^\[[^]]*\] *//; s/[ ,(].*//' | tr -d '\r'
    return 1
}

# mutant_noticed PROGRAM: the test that notices, twice: what fails once may be the machine's doing.
mutant_noticed() {
    local test
    test=$(mutant_run "$1" '*') && return 1
    if [ -n "$test" ]; then mutant_run "$1" "$test" >/dev/null && return 1; fi
    echo "${test:-$(basename "$1" .exe)}"
}

# mutant_verdict SOURCE NUMBER: one word, and what noticed.
mutant_verdict() {
    local source=$1 folder=${1%%/*} bin=$KORA_HOME/bin object=$KORA_HOME/mutant.obj program test
    mutant_object "$source" "$2" "$object" || { echo 'no-code -'; return; }
    same_object "$object" "$KORA_BUILD/$folder/CMakeFiles/app_$folder.dir/${source#*/}.obj" && { echo 'same -'; return; }
    rm -rf "$bin"
    mkdir -p "$bin"
    # The handset beside it, as it is.
    cp -l "$KORA_BIN"/* "$bin" 2>/dev/null || cp "$KORA_BIN"/* "$bin"
    for program in $(own_first "${KORA_OWN_PROGRAMS[$folder]}" "${KORA_UNIT_PROGRAMS[@]}"); do
        rm "$bin/$program.exe"
        mutant_link "$program" "$source" "$object" "$bin/$program.exe"
        if test=$(mutant_noticed "$bin/$program.exe"); then echo "noticed $test"; return; fi
    done
    rm "$bin/UI.exe"
    mutant_link UI "$source" "$object" "$bin/UI.exe"
    for program in $(own_first "${KORA_FIRST_SYSTEM[$folder]:-test_system}" "${KORA_SYSTEM_PROGRAMS[@]}"); do
        if test=$(mutant_noticed "$bin/$program.exe"); then echo "noticed $test"; return; fi
    done
    echo 'unnoticed -'
}

# mutant_worker LANE LIST RESULTS: takes every KORA_LANES-th mutant of the list that has no verdict yet.
mutant_worker() {
    lane_use "$1"
    mkdir -p "$KORA_HOME"
    local source number line before after verdict turn=0
    while IFS=$'\t' read -r source number line before after <&3; do
        turn=$((turn + 1))
        [ $((turn % KORA_LANES)) -eq $(($1 - 1)) ] || continue
        grep -q "^[a-z-]* [^ ]* $source:$line #$number " "$3" && continue
        verdict=$(cd "$KORA_ROOT" && mutant_verdict "$source" "$number")
        # One write a line, from several workers.
        printf '%s %s:%s #%s %s => %s\n' "$verdict" "$source" "$line" "$number" "$before" "$after" >>"$3"
        printf '%s\n' "   $(wc -l <"$3") of $(wc -l <"$2"): $verdict $source:$line" >&2
    done 3<"$2"
}

mutant_report() {
    local results=$1 tried noticed
    noticed=$(grep -c '^noticed ' "$results" || true)
    tried=$(grep -cE '^(noticed|unnoticed) ' "$results" || true)
    grep '^unnoticed ' "$results" || true
    printf '%d changes: %d did not compile, %d made the same program, %d ran; %d of these were noticed (%s %%)\n' \
        "$(wc -l <"$results")" "$(grep -c '^no-code ' "$results" || true)" "$(grep -c '^same ' "$results" || true)" \
        "$tried" "$noticed" "$(awk -v n="$noticed" -v t="$tried" 'BEGIN { printf "%.1f", t ? 100 * n / t : 0 }')"
}

kora_mutants() {
    packages_need "${KORA_BUILD_PACKAGES[@]}" "${KORA_DISPLAY_PACKAGES[@]}" "${KORA_TEST_PACKAGES[@]}"
    local folder=${1:-all} count=${2:-30} seed=${3:-1} folders=("${KORA_MUTANT_FOLDERS[@]}") lane program test
    if [ "$folder" != all ]; then
        [ -n "${KORA_OWN_PROGRAMS[$folder]:-}" ] || fail "there is no folder \"$folder\" of the application; there are: all ${KORA_MUTANT_FOLDERS[*]}"
        folders=("$folder")
    fi
    case $count$seed in *[!0-9]*) fail "mutants wants a folder, a count and a seed: ./kora mutants tuner 30 1" ;; esac
    build_preset release UI handset "${KORA_UNIT_PROGRAMS[@]}" "${KORA_SYSTEM_PROGRAMS[@]}"
    build_preset native mutate
    KORA_MUTATE=$KORA_ROOT/build/native/bin/mutate
    [ -x "$KORA_MUTATE" ] || KORA_MUTATE=$(find "$KORA_ROOT/build/native" -name mutate -type f -perm -u+x | head -n 1)
    export KORA_HOME=$KORA_HOME/mutants KORA_HOSTSOUND=0
    local name
    name=$folder-$count-$seed-$(git -C "$KORA_ROOT" rev-parse --short HEAD)
    local list=$KORA_HOME/$name.list results=$KORA_HOME/$name.txt
    mkdir -p "$KORA_HOME"
    (cd "$KORA_ROOT" && find "${folders[@]}" -name '*.cpp' -print0 | sort -z | xargs -0 "$KORA_MUTATE" list) |
        shuf -n "$count" --random-source=<(yes "$seed") >"$list"
    touch "$results"
    trap lanes_close EXIT
    lanes_open "${KORA_MUTANT_LANES:-2}"
    if [ ! -f "$KORA_HOME/$name.passes" ]; then
        step "the tests on the radio as it is: a test that fails now would seem to notice everything"
        for program in "${KORA_UNIT_PROGRAMS[@]}" "${KORA_SYSTEM_PROGRAMS[@]}"; do
            test=$(lane_use 1; mutant_noticed "$KORA_BIN/$program.exe") && fail "$test fails on the radio as it is, in $program"
        done
        touch "$KORA_HOME/$name.passes"
    fi
    step "$(wc -l <"$list") changes of $(printf '%s ' "${folders[@]}")(seed $seed); verdicts in $results"
    for ((lane = 1; lane <= KORA_LANES; lane++)); do mutant_worker "$lane" "$list" "$results" & done
    wait
    mutant_report "$results"
}
