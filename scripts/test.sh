# ./kora test: builds and runs every test. Sourced by kora.

. "$KORA_ROOT/scripts/lanes.sh"
. "$KORA_ROOT/scripts/device.sh"

# run_tests PRESET FILTER [CTEST'S ARGUMENTS…]: every program whose name matches, or the tests of all programs whose name
# does. What each program counted is left as XML in KORA_HOME/results.
run_tests() {
    local preset=$1 filter=$2 program=.
    shift 2
    if ctest --test-dir "$KORA_ROOT/build/$preset" -N -R "$filter" "$@" 2>/dev/null | grep -q '^Total Tests: 0'; then
        export GTEST_FILTER="*$filter*"
    else
        program=$filter
        unset GTEST_FILTER
    fi
    ctest --test-dir "$KORA_ROOT/build/$preset" --output-on-failure -j 2 -R "$program" "$@"
}

# count_tests FOLDER ATTRIBUTE: summed over the results that lie there.
count_tests() {
    # A program that a test started as its own child counts there; its file has a number at its end.
    find "$1" -name "*.xml" ! -name "*_[0-9]*.xml" -exec xmllint --recover --xpath "number(/testsuites/@$2)" {} \; 2>/dev/null |
        awk '{ n += $1 } END { print n + 0 }'
}

# The tests that failed or were broken off, of the results that lie in FOLDER.
count_bad_tests() {
    echo $(($(count_tests "$1" failures) + $(count_tests "$1" errors)))
}

# programs_broken_off PRESET: those of the last run that failed and left no count behind.
programs_broken_off() {
    local name
    while IFS=: read -r _ name; do
        [ -s "$KORA_HOME/results/$name.xml" ] && continue
        # The checks in scripts count under names of their own.
        case $name in *_script | test_install_*) ;; *) echo "$name" ;; esac
    done <"$KORA_ROOT/build/$1/Testing/Temporary/LastTestsFailed.log"
}

# Suite.Test of every test of this run, by the results; of one with parameters as its source names it.
tests_that_ran() {
    local run='//testcase[@status="run"]'
    find "$KORA_HOME/results" -name "*.xml" -exec xmllint --recover --xpath "$run/@classname | $run/@name" {} \; 2>/dev/null | awk -F'"' '
        $1 ~ /classname=/ { suite = $2; sub(/^.*\//, "", suite); print suite "." name }
        $1 ~ /[^s]name=/ { name = $2; sub(/\/.*/, "", name) }'
}

# promises_ran: after a whole run every test that docs/promises.md counts on is one that ran.
promises_ran() {
    local missing
    missing=$(comm -23 <(sed -n 's/.*| \(`[^|]*`\) |$/\1/p' "$KORA_ROOT/docs/promises.md" |
        grep -o '[A-Za-z0-9_]*\.[A-Za-z0-9_]*' | sort -u) <(tests_that_ran | sort -u))
    [ -z "$missing" ] || fail "docs/promises.md counts on tests that did not run: $missing"
}

# A handset and a display of the tests' own: windows of a running radio would get in their way.
tests_prepare() {
    export KORA_HOME=$KORA_HOME/test
    rm -rf "$KORA_HOME/results"
    mkdir -p "$KORA_HOME/results"
    trap lanes_close EXIT
    step "making two handsets for the tests"
    lanes_open 2
    # A machine without loudspeakers would have its sound library complain in every trace.
    export KORA_HOSTSOUND=0
}

kora_test() {
    packages_need "${KORA_BUILD_PACKAGES[@]}" "${KORA_DISPLAY_PACKAGES[@]}" "${KORA_TEST_PACKAGES[@]}" "${KORA_DEVICE_PACKAGES[@]}"
    local filter=${1:-.} failed=0 broken=
    build_preset release all
    build_preset device32 all
    build_preset device all
    build_preset native all
    magnifier_ready
    tests_prepare

    step "tests of the portable code (AddressSanitizer, UBSan)"
    GTEST_OUTPUT=xml:$KORA_HOME/results/ run_tests native "$filter" || { failed=1; broken+=" $(programs_broken_off native)"; }
    step "tests of the radio and the handset (some minutes)"
    GTEST_OUTPUT=xml:$(windows_path "$KORA_HOME/results/") run_tests release "$filter" || { failed=1; broken+=" $(programs_broken_off release)"; }

    local all bad
    all=$(count_tests "$KORA_HOME/results" tests)
    bad=$(count_bad_tests "$KORA_HOME/results")
    printf '%d passed, %d failed\n' $((all - bad)) "$bad"
    # shellcheck disable=SC2086
    [ -z "${broken// /}" ] || printf 'broken off before it had counted: %s\n' $broken
    [ "$all" -gt 0 ] || fail "no test has a name that matches \"$filter\""
    [ $failed -eq 0 ] || fail "some tests failed; their words are above"
    [ "$filter" != . ] || promises_ran
}
