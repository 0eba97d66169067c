# ./kora test --ether [NAME]: the system tests of the radio once more, with the simulated ether as the antenna of every
# handset. Sourced by kora after test.sh.

# left_to_band FILE…: the tests of these results that need the simulated band, each with its reason.
left_to_band() {
    local file count number test line=$'\n'
    for file in "$@"; do
        count=$(xmllint --xpath 'count(//testcase[@result="skipped"])' "$file")
        for ((number = 1; number <= count; number++)); do
            test="(//testcase[@result='skipped'])[$number]"
            # The message is the place in the source, and below it the reason.
            printf '  %s\n' "$(xmllint --xpath "concat($test/@classname, '.', $test/@name, ': ', substring-before(
                concat(substring-after($test/skipped/@message, '$line'), '$line'), '$line'))" "$file")"
        done
    done | sort
}

kora_test_ether() {
    packages_need "${KORA_BUILD_PACKAGES[@]}" "${KORA_DISPLAY_PACKAGES[@]}" "${KORA_TEST_PACKAGES[@]}"
    local filter=${1:-.} failed=0 all bad left results=$KORA_ROOT/build/release/ether
    build_preset release test_programs
    # Handsets of its own, so that another run of tests may go on beside it.
    export KORA_HOME=$KORA_HOME/ether
    tests_prepare
    rm -rf "$results"
    step "tests of the radio on the simulated ether"
    run_tests release "$filter" -C Ether -L '^ether$' || failed=1
    [ -d "$results" ] || fail "no test has a name that matches \"$filter\""
    all=$(count_tests "$results" tests)
    bad=$(count_bad_tests "$results")
    left=$(left_to_band "$results"/*.xml)
    if [ -n "$left" ]; then printf 'left to the simulated band, and why:\n%s\n' "$left"; fi
    left=$(printf '%s' "$left" | grep -c . || true)
    printf '%d passed, %d failed, %d left to the simulated band (ether)\n' $((all - bad - left)) "$bad" "$left"
    [ "$all" -gt 0 ] || fail "no test has a name that matches \"$filter\""
    [ $failed -eq 0 ] || fail "some tests failed; their words are above"
}
