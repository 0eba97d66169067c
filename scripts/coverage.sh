# ./kora coverage: which lines and branches of the application the tests run. Sourced by kora after test.sh.

# coverage_report FOLDER: the shares of each application folder, and every line in FOLDER. A branch that only an
# exception takes is left out: the compiler makes one of every call.
coverage_report() {
    local folder filters=()
    for folder in shell tuner channels recording schedule skin; do filters+=(--filter "$folder/"); done
    mkdir -p "$1"
    (cd "$KORA_ROOT" && gcovr --root . "${filters[@]}" --object-directory build/coverage build/coverage \
        --gcov-executable x86_64-w64-mingw32-gcov-posix --exclude-throw-branches --exclude-unreachable-branches \
        --txt "$1/files.txt" --csv "$1/files.csv" --html-details "$1/index.html") >"$1/gcovr.log" 2>&1 ||
        fail "the counts could not be read; the last lines of $1/gcovr.log:
$(tail -n 5 "$1/gcovr.log")"
    awk -F, 'NR > 1 {
            split($1, part, "/"); folder = part[1]
            for (i = 0; i < 2; i++) { name = i ? "all" : folder; lines[name] += $2; hit[name] += $3; branches[name] += $5; taken[name] += $6 }
            if (!(folder in seen)) { seen[folder]; order[++n] = folder }
        }
        END {
            printf "%-10s %17s %20s\n", "folder", "lines", "branches"
            order[++n] = "all"
            for (i = 1; i <= n; i++) { f = order[i]; printf "%-10s %4d/%-4d %6.1f %% %5d/%-5d %6.1f %%\n", f, hit[f], lines[f],
                100 * hit[f] / lines[f], taken[f], branches[f], 100 * taken[f] / branches[f] }
        }' "$1/files.csv"
}

# counts_collect: lays what the lanes counted, added up, beside the objects, where gcovr looks for it.
counts_collect() {
    local lane counts sum=$KORA_ROOT/build/coverage log=$KORA_LANES_HOME/counts.log found=
    : >"$log"
    for ((lane = 1; lane <= KORA_LANES; lane++)); do
        counts=$KORA_LANES_HOME/lane-$lane/counts$sum
        [ -d "$counts" ] || continue
        if [ -z "$found" ]; then
            cp -r "$counts/." "$sum"
        else
            x86_64-w64-mingw32-gcov-tool-posix merge -o "$sum" "$sum" "$counts" >>"$log" 2>&1 || echo "profiling: failed" >>"$log"
        fi
        found=1
    done
    [ -n "$found" ] || fail "no test has counted anything"
    # It says so and goes on when a file cannot be read or written.
    ! grep -q '^profiling:' "$log" || fail "the lanes' counts could not be added up; see $log"
}

kora_coverage() {
    packages_need "${KORA_BUILD_PACKAGES[@]}" "${KORA_DISPLAY_PACKAGES[@]}" "${KORA_TEST_PACKAGES[@]}" "${KORA_COVERAGE_PACKAGES[@]}"
    local filter=${1:-.} failed=0 report=$KORA_HOME/coverage
    build_preset coverage application_tests
    find "$KORA_ROOT/build/coverage" -name "*.gcda" -delete
    rm -rf "$KORA_HOME"/test/lane-*/counts
    tests_prepare
    # Where a lane's programs write their counters; each lane puts its own folder there.
    export GCOV_PREFIX=Z:
    step "tests on the counting radio (some minutes)"
    GTEST_OUTPUT=xml:$(windows_path "$KORA_HOME/results/") run_tests coverage "$filter" -L application || failed=1
    printf '%d tests ran\n' "$(count_tests "$KORA_HOME/results" tests)"
    unset GCOV_PREFIX  # it would lead the adding astray
    counts_collect
    coverage_report "$report"
    [ $failed -eq 0 ] || fail "some tests failed; the shares are of what ran"
}
