# ./kora mutants [FOLDER [COUNT [SEED]]]: what the tests would not notice. Sourced by kora after test.sh.
#
# One line of the application is changed at a time, in a copy: the file's object is compiled anew and the tests' programs
# are linked with it. The portable tests come first where they hold the file, then the folder's own, those that are named
# for the file before the others; what they do not notice goes on to the radio's own tests and to the other folders'. The
# tree and its build are not touched. What is known of a run stands in one file, so that a run that was broken off goes on
# where it stopped.

# For some tests of a program that takes minutes as a whole, on a machine with other work to do: whoever does not come to
# its end in time is run again and again, one test less each time.
KORA_MUTANT_TIMEOUT_s=${KORA_MUTANT_TIMEOUT_s:-1200}
KORA_MUTANT_FOLDERS=(shell tuner channels recording schedule skin)
KORA_UNIT_PROGRAMS=(test_tuner test_channels test_shell test_settings test_skin test_schedule test_recording)
KORA_SYSTEM_PROGRAMS=(test_system test_system_recording test_system_schedule test_system_outside)
# Programs whose tests wait for seconds of the handset's clock (their CMake lists say so as well).
declare -A KORA_PROGRAM_RATE=([test_recording]=10)
# What the folder's own tests are, and which of the radio's tests come first.
declare -A KORA_OWN_PROGRAMS=([shell]='test_shell test_settings' [tuner]=test_tuner [channels]=test_channels
    [recording]=test_recording [schedule]=test_schedule [skin]=test_skin)
declare -A KORA_NEAR_PROGRAM=([recording]=test_system_recording [schedule]=test_system_schedule)
declare -A KORA_NEAR_TESTS=(
    [shell]='menu power keys shut_down sleep_timer start_up foreground main_screen uncovered'
    [tuner]='stylus auto_scan scan_input scan_closes monitor telephone keys main_screen'
    [channels]='channel_dialog channel_list channel_popup group_dialog imports'
    [recording]='recording_files recording_locks recording_screen recording_targets'
    [schedule]='schedule booked_trouble booked_week'
    [skin]='stylus main_screen uncovered dark_display')

# own_first OWN ALL…: the own ones, then the others.
own_first() {
    local own=$1 name
    shift
    printf '%s\n' $own
    for name in "$@"; do
        case " $own " in *" $name "*) ;; *) echo "$name" ;; esac
    done
}

# suites_listed: what the programs say of themselves, a line for each suite in each source: the source, the suite.
suites_listed() {
    local program list=$KORA_HOME/suites.xml
    for program in "${KORA_UNIT_PROGRAMS[@]}" "${KORA_SYSTEM_PROGRAMS[@]}"; do
        "$KORA_WINE" "$KORA_BIN/$program.exe" --gtest_list_tests "--gtest_output=xml:$(windows_path "$list")" \
            >"$KORA_HOME/tests.log" 2>&1 </dev/null || fail "$program does not list its tests; see $KORA_HOME/tests.log"
        xmllint --xpath '//testsuite/@name | //testcase/@file' "$list" |
            awk -F'"' '$1 ~ /name=/ { suite = $2 } $1 ~ /file=/ { print $2 "\t" suite }'
    done | sort -u
}

# suites_of FILE…: a filter for the tests in these sources; nothing without one.
suites_of() {
    local file
    for file in "$@"; do
        awk -F'\t' -v file="$KORA_ROOT/${file#"$KORA_ROOT"/}" '$1 == file { print $2 ".*" }' "$KORA_SUITES"
    done | sort -u | paste -sd:
}

# tests_named_for SOURCE: of the folder's own tests those in files that carry the source's name or include its header.
tests_named_for() {
    local folder=${1%%/*} stem files=()
    stem=$(basename "$1" .cpp)
    mapfile -t files < <(cd "$KORA_ROOT" && for program in ${KORA_OWN_PROGRAMS[$folder]}; do
        find "tests/unit/${program#test_}" -name "$stem*_test.cpp"
        grep -lr --include='*_test.cpp' "\"$folder/$stem\.h\"" "tests/unit/${program#test_}" || true
    done | sort -u)
    suites_of "${files[@]}"
}

# radio_tests_named_for SOURCE: of the radio's own tests those in files whose name begins as the source's does.
radio_tests_named_for() {
    local stem name file files=()
    stem=$(basename "$1" .cpp)
    for file in "$KORA_ROOT"/tests/system/*_test.cpp; do
        name=$(basename "$file" _test.cpp)
        if [[ $stem = "$name"* || $name = "$stem"* ]]; then files+=("$file"); fi
    done
    suites_of "${files[@]}"
}

near_tests() {
    local name files=()
    for name in ${KORA_NEAR_TESTS[$1]}; do files+=("tests/system/${name}_test.cpp"); done
    suites_of "${files[@]}"
}

object_of() { echo "${1%%/*}/CMakeFiles/app_${1%%/*}.dir/${1#*/}.obj"; }
ninja_command() { ninja -C "$1" -t commands "$2" | tail -n 1; }

# compiled_as BUILD OBJECT SOURCE RESULT: compiles a source as the build does that object. Fails when it does not compile.
compiled_as() {
    local command
    command=$(ninja_command "$1" "$2")
    command=${command%% -MD *}
    (cd "$1" && eval "$command -Wno-error -w -o '$4' -c '$3'") >"$4.log" 2>&1
}

# Without the time that the compiler writes into it.
same_object() { cmp -s -i 8 "$1" "$2"; }

# linked_as BUILD TARGET OBJECT OTHER PROGRAM: the target's link with one object in the other's place. Fails when it does
# not link.
linked_as() {
    local command
    command=$(ninja_command "$1" "$2")
    command=${command//" $3 "/" $4 "}
    command=$(sed "s| -o [^ ]* | -o $5 |; s| -Wl,--out-implib,[^ ]*||" <<<"$command")
    rm -f "$5"
    (cd "$1" && eval "$command") >"$KORA_HOME/linker.log" 2>&1
}

mutant_link() { linked_as "$KORA_BUILD" "$1" "$(object_of "$2")" "$KORA_HOME/mutant/object.obj" "$3"; }

# failed_in LOG NAME: the first test that failed, or the one that ran when the program ended.
failed_in() {
    { grep -a '^\[  FAILED  \] ' "$1" || grep -a '^\[ RUN  ' "$1" | tail -n 1 || echo "$2"; } |
        head -n 1 | sed 's/^\[[^]]*\] *//; s/[ ,(].*//' | tr -d '\r'
}

# tests_run PROGRAM FILTER SECONDS: 0 when they passed; else the test that did not goes to standard output.
tests_run() {
    local status=0 log=$KORA_HOME/tests.log name surroundings=(GTEST_FILTER="$2" GTEST_FAIL_FAST=1)
    name=$(basename "$1" .exe)
    [ -z "${KORA_PROGRAM_RATE[$name]:-}" ] || surroundings+=(KORA_CLOCKRATE="${KORA_PROGRAM_RATE[$name]}")
    env "${surroundings[@]}" timeout -k 5 "$3" "$KORA_WINE" "$1" >"$log" 2>&1 </dev/null || status=$?
    [ $status -ne 0 ] || return 0
    # A radio that a test started, or a program that hangs, is not left to the next one.
    if [[ $name = test_system* ]] || ! grep -qa '^\[  FAILED  \] ' "$log"; then lane_clean; fi
    failed_in "$log" "$name"
    return 1
}

# baseline_of NAME: runs a program as it is, once in a run. What fails there is run again by itself; a test that passes in
# none of three times would seem to notice every change, and is left out by name.
baseline_of() {
    local name=$1 filter='*' left_out='' test began=$SECONDS
    local record=$KORA_BASELINE/$1
    [ ! -f "$record.seconds" ] || return 0
    until test=$(tests_run "$KORA_BIN/$name.exe" "$filter" 1800); do
        if ! tests_run "$KORA_BIN/$name.exe" "$test" 300 >/dev/null &&
            ! tests_run "$KORA_BIN/$name.exe" "$test" 300 >/dev/null; then
            left_out+=${left_out:+:}$test
            filter="*-$left_out"
        fi
        began=$SECONDS
    done
    printf '%s\n' "$left_out" >"$record.without"
    echo $((SECONDS - began)) >"$record.seconds"
}

# tests_notice PROGRAM FILTER: the test that notices; of a whole program ("*") none that its baseline has left out. It fails a second time and passes without the change: what fails once
# may be the machine's doing, and is then left out of the rest.
tests_notice() {
    local name filter without='' seconds=$KORA_MUTANT_TIMEOUT_s test
    name=$(basename "$1" .exe)
    if [ "$2" = '*' ] || [[ $name != test_system* ]]; then
        baseline_of "$name"
        without=$(cat "$KORA_BASELINE/$name.without")
        seconds=$(cat "$KORA_BASELINE/$name.seconds")
        [ "$2" = '*' ] && seconds=$((60 + 3 * seconds)) || seconds=$((45 + seconds))
    fi
    while :; do
        filter=$2${without:+-$without}
        test=$(tests_run "$1" "$filter" "$seconds") && return 1
        if ! tests_run "$1" "$test" 90 >/dev/null && tests_run "$KORA_BIN/$name.exe" "$test" 90 >/dev/null; then
            echo "$test"
            return 0
        fi
        without+=${without:+:}$test
    done
}

# linked_tests_notice SOURCE NAME FILTER: the same with the change in it.
linked_tests_notice() {
    local program=$KORA_HOME/bin/$2.exe
    if [ -z "${KORA_LINKED[$2]:-}" ]; then
        mutant_link "$2" "$1" "$program" || fail "$2 could not be linked; see $KORA_HOME/linker.log"
    fi
    KORA_LINKED[$2]=1
    tests_notice "$program" "$3"
}

# portable_tests_notice SOURCE: the tests under the sanitizers that compile the source themselves.
portable_tests_notice() {
    local object name program=$KORA_HOME/mutant/portable log=$KORA_HOME/tests.log
    for object in $(ninja -C "$KORA_NATIVE" -t targets all | sed -n "s|^\([^ ]*\.dir/__/__/$1\.o\): .*|\1|p"); do
        name=$(sed 's|.*/\([^/]*\)\.dir/__/__/.*|\1|' <<<"$object")
        # A name that the handset's headers have and these tests' own have not.
        compiled_as "$KORA_NATIVE" "$object" "$KORA_HOME/mutant/${1##*/}" "$program.o" || continue
        linked_as "$KORA_NATIVE" "tests/native/$name" "$object" "$program.o" "$program" ||
            fail "$name could not be linked; see $KORA_HOME/linker.log"
        if ! GTEST_FAIL_FAST=1 timeout -k 5 300 "$program" >"$log" 2>&1 </dev/null; then
            echo "$name:$(failed_in "$log" "$name")"
            return 0
        fi
    done
    return 1
}

own_tests_notice() {
    local program named
    if portable_tests_notice "$1"; then return 0; fi
    named=$(tests_named_for "$1")
    for program in ${KORA_OWN_PROGRAMS[${1%%/*}]}; do
        if [ -n "$named" ] && linked_tests_notice "$1" "$program" "$named"; then return 0; fi
    done
    for program in ${KORA_OWN_PROGRAMS[${1%%/*}]}; do
        if linked_tests_notice "$1" "$program" '*'; then return 0; fi
    done
    return 1
}

near_tests_notice() {
    local program named
    named=$(radio_tests_named_for "$1")
    if [ -n "$named" ]; then
        for program in "${KORA_SYSTEM_PROGRAMS[@]}"; do
            if tests_notice "$KORA_HOME/bin/$program.exe" "$named"; then return 0; fi
        done
    fi
    program=${KORA_NEAR_PROGRAM[${1%%/*}]:-test_system}
    tests_notice "$KORA_HOME/bin/$program.exe" "$(near_tests "${1%%/*}")"
}

other_tests_notice() {
    local program
    for program in "${KORA_UNIT_PROGRAMS[@]}"; do
        case " ${KORA_OWN_PROGRAMS[${1%%/*}]} " in *" $program "*) continue ;; esac
        if linked_tests_notice "$1" "$program" '*'; then return 0; fi
    done
    for program in "${KORA_SYSTEM_PROGRAMS[@]}"; do
        if tests_notice "$KORA_HOME/bin/$program.exe" '*'; then return 0; fi
    done
    return 1
}

# Where a change goes that a stage has not noticed, and what is said of it there.
declare -A KORA_AFTER_STAGE=([own]=left [near]=far [other]=unnoticed)

# mutant_verdict STAGE SOURCE NUMBER: one word, and what noticed.
mutant_verdict() {
    local stage=$1 source=$2 test
    declare -A KORA_LINKED=()
    rm -rf "${KORA_HOME:?}/mutant" "${KORA_HOME:?}/bin"
    mkdir -p "$KORA_HOME/mutant" "$KORA_HOME/bin"
    # Under its own name, for the name is in the object.
    "$KORA_MUTATE" apply "$source" "$3" >"$KORA_HOME/mutant/${source##*/}" || fail "$source has no change number $3"
    compiled_as "$KORA_BUILD" "$(object_of "$source")" "$KORA_HOME/mutant/${source##*/}" "$KORA_HOME/mutant/object.obj" ||
        { echo 'no-code -'; return; }
    same_object "$KORA_HOME/mutant/object.obj" "$KORA_BUILD/$(object_of "$source")" && { echo 'same -'; return; }
    # The handset beside it, as it is.
    cp -l "$KORA_BIN"/* "$KORA_HOME/bin" 2>/dev/null || cp "$KORA_BIN"/* "$KORA_HOME/bin"
    mutant_link UI "$source" "$KORA_HOME/bin/UI.exe" || { echo 'no-code -'; return; }
    if test=$("${stage}_tests_notice" "$source"); then echo "noticed $test"; else echo "${KORA_AFTER_STAGE[$stage]} -"; fi
}

# mutant_next LIST RESULTS CLAIMED FIRST SECOND THIRD: stage and change that nobody works at, the first stage before the
# second and that before the third.
mutant_next() {
    flock "$3.lock" awk -F'\t' -v order="$4 $5 $6" -v claimed="$3" '
        BEGIN { split(order, stages, " "); next_stage[""] = "own"; next_stage["left"] = "near"; next_stage["far"] = "other" }
        FILENAME == ARGV[1] { split($0, word, " "); verdict[word[3] " " word[4]] = word[1]; next }
        FILENAME == claimed { taken[$1 "\t" $2 "\t" $3] = 1; next }
        {
            stage = next_stage[verdict[$1 ":" $3 " #" $2]]
            if (stage != "" && !((stage "\t" $1 "\t" $2) in taken) && !(stage in found)) found[stage] = stage "\t" $0
        }
        END {
            for (i = 1; i <= 3; ++i) if (stages[i] in found) {
                print found[stages[i]]
                print found[stages[i]] >>claimed
                exit
            }
        }' "$2" "$3" "$1"
}

# mutant_worker LANE LIST RESULTS CLAIMED: the second lane takes what the folders' own tests have left, as it comes.
mutant_worker() {
    lane_use "$1"
    mkdir -p "$KORA_HOME"
    local stage source number line before after verdict order=(own near other)
    [ "$1" -ne 2 ] || order=(near own other)
    while IFS=$'\t' read -r stage source number line before after < <(mutant_next "$2" "$3" "$4" "${order[@]}"); do
        verdict=$(cd "$KORA_ROOT" && mutant_verdict "$stage" "$source" "$number")
        # One write a line, from several workers.
        printf '%s %s:%s #%s %s => %s\n' "$verdict" "$source" "$line" "$number" "$before" "$after" >>"$3"
        printf '   %s\n' "$verdict $source:$line #$number $before => $after" >&2
    done
}

# The last word on each change. What somebody looked at and found to change nothing may be written into the verdicts as
# "explained"; it stays among those that were not noticed.
mutant_report() {
    local last
    last=$(awk '{ last[$3 " " $4] = $0 } END { for (key in last) print last[key] }' "$1" | sort -k3)
    grep -E '^(left|far|unnoticed|explained) ' <<<"$last" || true
    awk -v wanted="$(wc -l <"$2")" '
        { n[$1]++ }
        END {
            open = n["left"] + n["far"]
            ran = n["noticed"] + n["unnoticed"] + n["explained"]
            printf "%d changes of %d: %d did not compile, %d made the same program, %d wait for more tests, ", NR, wanted, n["no-code"], n["same"], open
            printf "%d ran; %d of these were noticed (%.1f %%)\n", ran, n["noticed"], ran ? 100 * n["noticed"] / ran : 0
        }' <<<"$last"
    find "$KORA_BASELINE" -name '*.without' -size +1c -exec sh -c 'echo "left out, for it fails without a change: $(cat "$1")"' _ {} \;
}

# drawn COUNT SEED: so many of the lines read, in an order that hangs on the seed alone (Park and Miller's numbers).
drawn() {
    awk -v x="$(($2 + 1))" '
        BEGIN { for (i = 0; i < 20; ++i) x = x * 16807 % 2147483647 }
        { x = x * 16807 % 2147483647; print x "\t" $0 }' | sort -n | cut -f2- | head -n "$1" || true
}

kora_mutants() {
    packages_need "${KORA_BUILD_PACKAGES[@]}" "${KORA_DISPLAY_PACKAGES[@]}" "${KORA_TEST_PACKAGES[@]}"
    local folder=${1:-all} count=${2:-30} seed=${3:-1} folders=("${KORA_MUTANT_FOLDERS[@]}") lane
    if [ "$folder" != all ]; then
        [ -n "${KORA_OWN_PROGRAMS[$folder]:-}" ] || fail "there is no folder \"$folder\" of the application; there are: all ${KORA_MUTANT_FOLDERS[*]}"
        folders=("$folder")
    fi
    case $count$seed in *[!0-9]*) fail "mutants wants a folder, a count and a seed: ./kora mutants tuner 30 1" ;; esac
    build_preset release UI handset fmdevice capture channel_dump "${KORA_UNIT_PROGRAMS[@]}" "${KORA_SYSTEM_PROGRAMS[@]}"
    build_preset native mutate native_channels native_schedule native_skin native_tuner
    KORA_NATIVE=$KORA_ROOT/build/native
    KORA_MUTATE=$KORA_NATIVE/tests/native/mutate
    export KORA_HOME=$KORA_HOME/mutants KORA_HOSTSOUND=0
    local name
    name=$folder-$count-$seed-$(git -C "$KORA_ROOT" rev-parse --short HEAD)
    local list=$KORA_HOME/$name.list results=$KORA_HOME/$name.txt claimed=$KORA_HOME/$name.claimed
    KORA_BASELINE=$KORA_HOME/$name.baseline
    mkdir -p "$KORA_BASELINE"
    (cd "$KORA_ROOT" && find "${folders[@]}" -name '*.cpp' -print0 | sort -z | xargs -0 "$KORA_MUTATE" list) |
        drawn "$count" "$seed" >"$list"
    touch "$results"
    : >"$claimed"
    trap lanes_close EXIT
    lanes_open "${KORA_MUTANT_LANES:-2}"
    KORA_SUITES=$KORA_HOME/$name.suites
    (lane_use 1 && suites_listed) >"$KORA_SUITES"
    step "$(wc -l <"$list") changes of $(printf '%s ' "${folders[@]}")(seed $seed); verdicts in $results"
    for ((lane = 1; lane <= KORA_LANES; lane++)); do mutant_worker "$lane" "$list" "$results" "$claimed" & done
    wait
    mutant_report "$results" "$list"
}
