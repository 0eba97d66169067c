# Configures and builds. Sourced after common.sh and packages.sh.

# cmake_preset PRESET: configures once; later builds reconfigure by themselves.
cmake_preset() {
    [ -f "$KORA_ROOT/build/$1/build.ninja" ] && return 0
    step "configuring ($1)"
    mkdir -p "$KORA_ROOT/build"
    local log=$KORA_ROOT/build/configure-$1.log
    (cd "$KORA_ROOT" && cmake --preset "$1") >"$log" 2>&1 ||
        fail "configuring failed; the last lines of $log say why:
$(tail -n 15 "$log")"
}

# build_preset PRESET TARGET…: shows ninja's progress, and nothing when there is nothing to do.
build_preset() {
    local preset=$1
    shift
    cmake_preset "$preset"
    local note=
    [ -d "$KORA_ROOT/build/$preset/bin" ] || note=": the first time takes some minutes"
    step "building ($preset)$note"
    cmake --build "$KORA_ROOT/build/$preset" --target "$@" || fail "the build failed; the compiler's words are above"
}

# What is run from this tree: up to date, or at least there.
programs_ready() {
    packages_need "${KORA_BUILD_PACKAGES[@]}"
    build_preset release UI handset
}
programs_present() {
    packages_need "${KORA_BUILD_PACKAGES[@]}"
    [ -f "$KORA_BIN/handset.exe" ] || build_preset release UI handset
}

# The magnifier (magnifier.sh), which is this machine's own program. What is missing for it is installed here.
KORA_MAGNIFIER=$KORA_ROOT/build/magnifier/bin/kora-magnifier
magnifier_lacks() { :; }
magnifier_ready() {
    packages_need "${KORA_MAGNIFIER_PACKAGES[@]}"
    build_preset magnifier kora-magnifier
}

kora_build() {
    packages_need "${KORA_BUILD_PACKAGES[@]}" "${KORA_TEST_PACKAGES[@]}"
    build_preset release all
    magnifier_ready
}

kora_clean() {
    kora_stop_quietly
    rm -rf "$KORA_ROOT/build"
    # The whole folder goes only when it is the repository's own; another KORA_HOME may hold more than ours.
    rm -rf "$KORA_HOME/prefix" "$KORA_HOME/device"
    if [ "$KORA_HOME" = "$KORA_ROOT/out" ]; then rm -rf "$KORA_HOME"; fi
}
