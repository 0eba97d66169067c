# ./kora screens [FOLDER]: a picture of every screen, dialog, menu and box, in each shape of the display. Sourced by kora
# after test.sh: the test that looks at all of them takes the pictures.

# One sheet a shape, and a page with all pictures.
screens_index() {
    local folder=$1 shape picture
    for shape in Portrait Landscape WidePortrait WideLandscape Panel; do
        compgen -G "$folder/*.$shape.png" >/dev/null || continue
        montage -font "$KORA_FONTS/tahoma.ttf" -label '%t' "$folder"/*."$shape".png -tile 8x -geometry '240x>+4+4' "$folder/sheet-$shape.png"
    done
    {
        echo '<!DOCTYPE html><meta charset="utf-8"><title>The screens of the radio</title>'
        for picture in "$folder"/*.*.png; do
            picture=${picture##*/}
            printf '<figure style="display:inline-block"><img src="%s" alt=""><figcaption>%s</figcaption></figure>\n' \
                "$picture" "${picture%.png}"
        done
    } >"$folder/index.html"
}

kora_screens() {
    local folder=${1:-$KORA_HOME/screens} failed=0
    packages_need "${KORA_BUILD_PACKAGES[@]}" "${KORA_DISPLAY_PACKAGES[@]}" "${KORA_TEST_PACKAGES[@]}" imagemagick
    mkdir -p "$folder"
    folder=$(cd "$folder" && pwd)
    rm -f "$folder"/*.*.png "$folder"/sheet-*.png
    build_preset release test_system_screens
    # Handsets of its own: a run of the tests may be under way.
    export KORA_HOME=$KORA_HOME/pictures
    tests_prepare
    step "every screen, dialog, menu and box (some minutes)"
    KORA_SHAPES=all KORA_SCREEN_PICTURES=$(windows_path "$folder") run_tests release '^test_system_screens$' || failed=1
    screens_index "$folder"
    echo "$(find "$folder" -name '*.*.png' | wc -l) pictures, and index.html, in $folder"
    [ $failed -eq 0 ] || fail "not every screen is as it should be, or could be reached; see above"
}
