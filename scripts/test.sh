# ./kora test: builds and runs every test. Sourced by kora.

kora_test() {
    packages_need "${KORA_BUILD_PACKAGES[@]}" "${KORA_DISPLAY_PACKAGES[@]}" "${KORA_TEST_PACKAGES[@]}"
    local filter=${1:-.}
    # Tests have a display of their own: windows of a running radio would get in their way.
    KORA_HOME=$KORA_HOME/test
    export KORA_HOME WINEPREFIX=$KORA_HOME/prefix
    mkdir -p "$KORA_HOME"
    build_preset release all
    build_preset device32 all
    build_preset native all
    unset DISPLAY
    trap 'wineserver_run -k 2>/dev/null; display_stop' EXIT
    display_virtual 1024x768
    wine_prefix
    wine_virtual_desktop 1024x768
    # A machine without loudspeakers would have its sound library complain in every trace.
    export KORA_HOSTSOUND=0
    # One server for the whole run: a cold start costs seconds, a warm one a tenth.
    wineserver_run -p
    local failed=0
    step "tests of the portable code (AddressSanitizer, UBSan)"
    ctest --test-dir "$KORA_ROOT/build/native" --output-on-failure --no-tests=ignore -R "$filter" -j2 || failed=1
    step "tests of the radio and the handset"
    ctest --test-dir "$KORA_ROOT/build/release" --output-on-failure --no-tests=ignore -R "$filter" || failed=1
    [ $failed -eq 0 ] || fail "some tests failed; their words are above"
}
