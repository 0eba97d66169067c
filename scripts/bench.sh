# ./kora bench: the table of measurements. Sourced by kora.

kora_bench() {
    # The files that are left are looked at with these.
    [ "${1:-}" != --faults ] || packages_need "${KORA_TEST_PACKAGES[@]}"
    handset_ready
    build_preset release kora_bench
    step "measuring (about four minutes; a soak of 100 hours takes as long as the machine needs for its rounds;
24 hours of faults take a quarter of an hour)"
    local status=0
    wine_start "$KORA_BIN/kora_bench.exe" "$@" >"$KORA_HOME/bench.txt" 2>"$KORA_HOME/bench.log" || status=$?
    cat "$KORA_HOME/bench.txt"
    [ $status -eq 0 ] || fail "the measurement failed; $KORA_HOME/bench.log says more"
}
