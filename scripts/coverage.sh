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

kora_coverage() {
    packages_need "${KORA_BUILD_PACKAGES[@]}" "${KORA_DISPLAY_PACKAGES[@]}" "${KORA_TEST_PACKAGES[@]}" "${KORA_COVERAGE_PACKAGES[@]}"
    local filter=${1:-.} failed=0 report=$KORA_HOME/coverage
    build_preset coverage all
    find "$KORA_ROOT/build/coverage" -name "*.gcda" -delete
    tests_prepare
    # The counters know their file by its path on this machine; under Wine that lies on drive Z.
    export GCOV_PREFIX=Z:
    step "tests on the counting radio (a quarter of an hour)"
    run_tests coverage "$filter" || failed=1
    coverage_report "$report"
    [ $failed -eq 0 ] || fail "some tests failed; the shares are of what ran"
}
