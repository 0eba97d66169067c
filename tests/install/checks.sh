# Words of the installation tests: one check a line, counted, and left as XML where the other tests leave theirs.
# Sourced with SUITE set; expects to run from CTest, with a display.
KORA_TREE=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
KORA_WINE=$(KORA_ROOT=$KORA_TREE KORA_HOME=/ bash -c '. "$KORA_ROOT/scripts/common.sh" && . "$KORA_ROOT/scripts/wine.sh" && printf %s "$KORA_WINE"')
CHECKS=0 FAILURES=0

# Chosen by the names of tests: these are not single ones.
case ${GTEST_FILTER:-*} in '*' | *"$SUITE"*) ;; *) exit 0 ;; esac

# A display of the tests' own, which nobody else uses meanwhile.
if [ -n "${KORA_LANES:-}" ]; then
    KORA_ROOT=$KORA_TREE
    for part in common packages wine display lanes; do . "$KORA_TREE/scripts/$part.sh"; done
    set +e
    lane_take
fi

# check SENTENCE COMMAND…: the command's words are shown when it fails.
check() {
    local sentence=$1 said status=0
    CASES+="<testcase name=\"$sentence\" classname=\"$SUITE\" status=\"run\"/>"
    shift
    said=$WORK/said
    "$@" >"$said" 2>&1 </dev/null || status=$?
    CHECKS=$((CHECKS + 1))
    if [ $status -eq 0 ]; then
        printf '[       OK ] %s.%s\n' "$SUITE" "$sentence"
        return
    fi
    FAILURES=$((FAILURES + 1))
    cat "$said"
    printf '[  FAILED  ] %s.%s\n' "$SUITE" "$sentence"
}

# wait_for SECONDS COMMAND…: until it succeeds.
wait_for() {
    local deadline=$((SECONDS + $1))
    shift
    until "$@" >/dev/null 2>&1; do
        [ $SECONDS -lt $deadline ] || { echo "in vain: $*"; return 1; }
        sleep 0.1
    done
}

same() { [ "$1" = "$2" ] || { diff <(printf '%s\n' "$1") <(printf '%s\n' "$2"); return 1; }; }

# A user's surroundings, without anything of ours.
as_user() { env -i HOME="$USER_HOME" PATH="$PATH" DISPLAY="$DISPLAY" LANG=C.UTF-8 KORA_HOSTSOUND=0 "$@" 9>&-; }

# own_display SIDES: a display of WIDTHxHEIGHTxDEPTH that nobody else uses: its name in OWN_DISPLAY, its process in OWN_SERVER.
own_display() {
    Xvfb -displayfd 3 -screen 0 "$1" -nolisten tcp -noreset -nocursor 3>"$WORK/own-display" 2>"$WORK/own-display.log" &
    OWN_SERVER=$!
    wait_for 20 test -s "$WORK/own-display" || { cat "$WORK/own-display.log"; exit 1; }
    OWN_DISPLAY=:$(tr -d '\n' <"$WORK/own-display")
    rm "$WORK/own-display"
}
on_own() { DISPLAY=$OWN_DISPLAY "$@"; }

# The programs and what installs them, as a tree of its own that can be taken away.
copy_tree() {
    mkdir -p "$1/build/release/bin" "$1/build/magnifier/bin" "$1/resources" "$1/docs"
    cp -r "$KORA_TREE"/{kora,scripts,packaging,LICENSE,THIRD-PARTY.md} "$1/"
    cp -r "$KORA_TREE/resources/art" "$KORA_TREE/resources/ui.rc" "$1/resources/"
    cp -r "$KORA_TREE/docs/guide.md" "$KORA_TREE/docs/pictures" "$1/docs/"
    ln -s "$KORA_TREE/build/sources" "$1/build/sources"
    cp "$KORA_PROGRAMS"/*.dll "$KORA_PROGRAMS"/UI.exe "$KORA_PROGRAMS"/handset.exe "$KORA_PROGRAMS"/band.ini "$1/build/release/bin/"
    cp "$KORA_TREE/build/magnifier/bin/kora-magnifier" "$1/build/magnifier/bin/"
}

finish() {
    [ -z "${KORA_LANES:-}" ] || lane_free
    local out=${GTEST_OUTPUT:-}
    out=${out#xml:}
    # The programs under Wine are given a Windows path; here it is the machine's own.
    out=${out#Z:} out=${out//\\//}
    [ -z "$out" ] || printf '<testsuites tests="%d" failures="%d" errors="0">\n%s\n</testsuites>\n' $CHECKS $FAILURES "${CASES:-}" >"$out$SUITE.xml"
    printf '%d checks, %d failed\n' $CHECKS $FAILURES
    exit $((FAILURES > 0))
}
