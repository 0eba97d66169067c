# ./kora lint: static analysis of the sources and of these scripts. Sourced by kora.

KORA_LINT_PACKAGES=(clang-format cppcheck shellcheck)
KORA_DEEP_LINT_PACKAGES=(clang-tidy)

lint_layout() {
    (cd "$KORA_ROOT" && find channels device handset recording resources schedule shell skin tests tuner \
        \( -name "*.cpp" -o -name "*.h" \) -print0 | xargs -0 -n 64 -P "$(nproc)" clang-format --dry-run -Werror)
}

lint_sources() {
    # What was analysed before is looked at again only when it has changed.
    mkdir -p "$KORA_ROOT/build/lint"
    (cd "$KORA_ROOT" && cppcheck -q -j "$(nproc)" --cppcheck-build-dir=build/lint --error-exitcode=1 --std=c++17 --platform=win64 \
        --enable=warning,performance,portability --inline-suppr --suppressions-list=.cppcheck-suppressions --suppress=missingInclude \
        --library=windows -I. -Ihandset/include -D_WIN32 -DUNICODE -D_UNICODE \
        shell tuner channels recording schedule skin handset device)
}

# Names are shared among files that are sourced; paths to them are not constant.
lint_scripts() {
    (cd "$KORA_ROOT" && shellcheck -s bash -S warning -e SC1090,SC1091,SC2034,SC2154 \
        kora .ci/run scripts/*.sh scripts/wine-run packaging/linux/kora tests/install/*.sh tests/scripts/*.sh)
}

# lint_deep [FILE…]: clang-tidy, by .clang-tidy, on the radio's and the handset's sources as they are compiled for
# Windows. It reads the commands of the cross compiler; whose C++ headers these are, it has to be told.
lint_deep() {
    local headers files=("$@")
    headers=$(x86_64-w64-mingw32-g++-posix -print-file-name=include/c++)
    [ $# -gt 0 ] || mapfile -t files < <(cd "$KORA_ROOT" && find shell tuner channels recording schedule skin handset -name "*.cpp" | sort)
    (cd "$KORA_ROOT" && printf '%s\0' "${files[@]}" | xargs -0 -n 1 -P "$(nproc)" clang-tidy --quiet -p build/release \
        --header-filter="^$KORA_ROOT/(shell|tuner|channels|recording|schedule|skin|handset)/" \
        --extra-arg=--target=x86_64-w64-mingw32 --extra-arg-before=-std=gnu++17 --extra-arg=-nostdinc++ \
        --extra-arg="-isystem$headers" --extra-arg="-isystem$headers/x86_64-w64-mingw32" \
        2> >(grep -vE '^[0-9]+ warnings? generated' >&2))
}

kora_lint_deep() {
    packages_need "${KORA_BUILD_PACKAGES[@]}" "${KORA_DEEP_LINT_PACKAGES[@]}"
    cmake_preset release
    step "clang-tidy (some minutes for all; name files to look at these alone)"
    lint_deep "$@" || fail "something was found; it is named above"
    printf 'nothing found\n'
}

kora_lint() {
    local failed=0
    packages_need "${KORA_LINT_PACKAGES[@]}"
    step "layout of the sources"
    lint_layout || { failed=1; printf '"clang-format -i" on the files above mends it\n' >&2; }
    step "static analysis of the sources (half a minute; less when little has changed)"
    lint_sources || failed=1
    step "static analysis of the scripts"
    lint_scripts || failed=1
    [ $failed -eq 0 ] || fail "something was found; it is named above"
    printf 'nothing found\n'
}
