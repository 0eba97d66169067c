# ./kora test: builds and runs every test. Sourced by kora.

# run_tests PRESET FILTER: every program whose name matches, or the tests of all programs whose name does. What each
# program counted is left as XML in KORA_HOME/results.
run_tests() {
    local preset=$1 filter=$2 program=.
    if ctest --test-dir "$KORA_ROOT/build/$preset" -N -R "$filter" 2>/dev/null | grep -q '^Total Tests: 0'; then
        export GTEST_FILTER="*$filter*"
    else
        program=$filter
        unset GTEST_FILTER
    fi
    # The programs of the handset share one screen, so only the portable ones run side by side.
    local jobs=1
    [ "$preset" = native ] && jobs=2
    ctest --test-dir "$KORA_ROOT/build/$preset" --output-on-failure -j "$jobs" -R "$program"
}

# count_tests ATTRIBUTE: summed over the results.
count_tests() {
    # A program that a test started as its own child counts there; its file has a number at its end.
    find "$KORA_HOME/results" -name "*.xml" ! -name "*_[0-9]*.xml" -exec cat {} + | sed -n "s/^<testsuites .* *$1=\"\([0-9]*\)\".*/\1/p" | awk '{ n += $1 } END { print n + 0 }'
}

kora_test() {
    packages_need "${KORA_BUILD_PACKAGES[@]}" "${KORA_DISPLAY_PACKAGES[@]}" "${KORA_TEST_PACKAGES[@]}"
    local filter=${1:-.} failed=0
    # The tests have a handset and a display of their own: windows of a running radio would get in their way.
    export KORA_HOME=$KORA_HOME/test
    export WINEPREFIX=$KORA_HOME/prefix
    rm -rf "$KORA_HOME/results"
    mkdir -p "$KORA_HOME/results"
    build_preset release all
    build_preset device32 all
    build_preset native all
    unset DISPLAY
    trap 'wineserver_run -k 2>/dev/null || true; display_stop' EXIT
    display_virtual 1024x768
    wine_prefix
    wine_virtual_desktop 1024x768
    # A machine without loudspeakers would have its sound library complain in every trace.
    export KORA_HOSTSOUND=0
    # One server for the whole run: a cold start costs seconds, a warm one a tenth. One that still lingers would
    # refuse it.
    wineserver_run --wait || true
    wineserver_run -p

    step "tests of the portable code (AddressSanitizer, UBSan)"
    GTEST_OUTPUT=xml:$KORA_HOME/results/ run_tests native "$filter" || failed=1
    step "tests of the radio and the handset (some minutes)"
    GTEST_OUTPUT=xml:$(windows_path "$KORA_HOME/results/") run_tests release "$filter" || failed=1

    local all bad
    all=$(count_tests tests)
    bad=$(($(count_tests failures) + $(count_tests errors)))
    printf '%d passed, %d failed\n' $((all - bad)) "$bad"
    [ "$all" -gt 0 ] || fail "no test has a name that matches \"$filter\""
    [ $failed -eq 0 ] || fail "some tests failed; their words are above"
}
