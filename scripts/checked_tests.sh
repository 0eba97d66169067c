# ./kora test --heap|--trap [NAME]: the tests of the radio and the handset in surroundings that notice more than a
# result that is wrong. Sourced by kora after test.sh.

# Wine's marks behind each block and in each freed one (FLG_HEAP_ENABLE_TAIL_CHECK, …FREE_CHECK). Its own look at them,
# at all of a heap with every call, makes a dialog take seconds; tests/checked/heap_watch.cpp looks instead.
KORA_HEAP_FLAGS=0x30
KORA_HEAP_SETTING='HKLM\System\CurrentControlSet\Control\Session Manager'

# What is built, what Wine says aloud, which of its words fail a test, which tests are none of such a run (as ctest
# takes it), and the deliberate mistakes by which the run proves that it would notice.
checked_heap() {
    KORA_PRESET=release WINEDEBUG='-all,err+heap' KORA_COMPLAINT=':err:heap:'
    LEFT_OUT=(-E '^test_install') DAMAGES=(overrun overrun-living underrun freed freed-twice)
    KORA_COMPANION=$(windows_path "$KORA_ROOT/build/release/checked/heap_watch.dll")
    export KORA_COMPANION
}
checked_trap() {
    KORA_PRESET=debug WINEDEBUG='-all,warn+seh' KORA_COMPLAINT='code=c000001d|ILLEGAL_INSTRUCTION'
    LEFT_OUT=() DAMAGES=(overflow shift)
}

heap_checks_on() {
    local lane
    for ((lane = 1; lane <= KORA_LANES; lane++)); do
        (
            lane_use "$lane"
            # The first program of a session starts before the system's keys are there, and so without the checks.
            wine_start reg add "$KORA_HEAP_SETTING" /v GlobalFlag /t REG_DWORD /d $KORA_HEAP_FLAGS /f >"$KORA_HOME/heap.log" 2>&1 </dev/null
        ) || fail "Wine's heap checks could not be switched on; see heap.log in the folders below $KORA_HOME"
    done
}

notices_damage() {
    local program damage
    for program in damage damage_device; do
        for damage in "${DAMAGES[@]}"; do
            "$KORA_ROOT/scripts/wine-run" "$KORA_ROOT/build/$KORA_PRESET/bin/$program.exe" "$damage" >"$KORA_HOME/damage.log" 2>&1 || true
            grep -aqE "$KORA_COMPLAINT" "$KORA_HOME/damage.log" ||
                fail "this run would miss mistakes: \"$program $damage\" went unnoticed"
        done
    done
}

kora_test_checked() {
    local mode=$1 filter=${2:-.} failed=0 all bad
    packages_need "${KORA_BUILD_PACKAGES[@]}" "${KORA_DISPLAY_PACKAGES[@]}" "${KORA_TEST_PACKAGES[@]}"
    "checked_$mode"
    build_preset "$KORA_PRESET" test_programs damage damage_device heap_watch
    magnifier_ready
    # Handsets of its own: what is switched on there is not for other runs.
    export KORA_HOME=$KORA_HOME/checked-$mode
    tests_prepare
    [ "$mode" != heap ] || heap_checks_on
    export WINEDEBUG KORA_COMPLAINT
    notices_damage
    step "tests of the radio and the handset under closer watch ($mode)"
    GTEST_OUTPUT=xml:$(windows_path "$KORA_HOME/results/") run_tests "$KORA_PRESET" "$filter" "${LEFT_OUT[@]}" || failed=1
    all=$(count_tests "$KORA_HOME/results" tests)
    bad=$(count_bad_tests "$KORA_HOME/results")
    printf '%d passed, %d failed (%s)\n' $((all - bad)) "$bad" "$mode"
    [ "$all" -gt 0 ] || fail "no test has a name that matches \"$filter\""
    [ $failed -eq 0 ] || fail "some tests failed; their words are above"
}
