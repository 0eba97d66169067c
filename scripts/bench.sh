# ./kora bench: the table of measurements. Sourced by kora.

# kora_bench_reception [--quick]: the receiver in software; the table and its curves are kept in KORA_HOME.
kora_bench_reception() {
    packages_need "${KORA_RECEPTION_PACKAGES[@]}"
    build_preset bench reception_bench
    mkdir -p "$KORA_HOME/reception"
    step "measuring reception (some ten minutes on two cores; a minute or two with --quick)"
    local status=0
    "$KORA_ROOT/build/bench/tests/bench/reception/reception_bench" --curves "$KORA_HOME/reception" "$@" \
        >"$KORA_HOME/reception/table.txt" || status=$?
    cat "$KORA_HOME/reception/table.txt"
    [ $status -eq 0 ] || fail "a demand was missed, or the measurement failed; the table is in $KORA_HOME/reception"
}

kora_bench() {
    if [ "${1:-}" = --reception ]; then
        shift
        kora_bench_reception "$@"
        return
    fi
    # The files that are left are looked at with these.
    [ "${1:-}" != --faults ] || packages_need "${KORA_TEST_PACKAGES[@]}"
    handset_ready
    build_preset release kora_bench
    step "measuring (some fifteen minutes, eight of them the ether; a soak of 100 hours takes as long as the machine needs
for its rounds; 24 hours of faults take a quarter of an hour; --ether hour an hour more, --ether retunes three)"
    local status=0
    wine_start "$KORA_BIN/kora_bench.exe" "$@" >"$KORA_HOME/bench.txt" 2>"$KORA_HOME/bench.log" || status=$?
    cat "$KORA_HOME/bench.txt"
    [ $status -ne 3 ] || fail "a demand was missed"
    [ $status -eq 0 ] || fail "the measurement failed; $KORA_HOME/bench.log says more"
}
