# The face's pictures, made of the drawings in art/.
include(${CMAKE_SOURCE_DIR}/cmake/art.cmake)

set(KORA_ART_SOURCE ${CMAKE_CURRENT_SOURCE_DIR}/art)
set(KORA_ART ${CMAKE_CURRENT_BINARY_DIR}/art)
set(KORA_ART_FILES)
# The parts stand in many drawings; a change of theirs configures those again, and only what changed is built.
foreach(part PARTS FACE_PORTRAIT FACE_LANDSCAPE)
    string(TOLOWER ${part} file)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${KORA_ART_SOURCE}/${file}.svg.inc)
    file(READ ${KORA_ART_SOURCE}/${file}.svg.inc ${part})
endforeach()

# kora_bars(RESULT LIT COUNT LIT_COLOUR UNLIT_COLOUR): the variables BAR_1 … BAR_COUNT of a row of bars.
function(kora_bars result lit count lit_colour unlit_colour)
    set(variables)
    foreach(bar RANGE 1 ${count})
        if(bar GREATER lit)
            list(APPEND variables BAR_${bar} ${unlit_colour})
        else()
            list(APPEND variables BAR_${bar} ${lit_colour})
        endif()
    endforeach()
    set(${result} ${variables} PARENT_SCOPE)
endfunction()

foreach(face background_portrait background_landscape background_wide_portrait background_wide_landscape
        list_background record output mute thumb)
    kora_bitmap(${face} ${face})
endforeach()
kora_bitmap(keys_pressed keys KEY_FACE down KEY_CLASS down)
kora_bitmap(keys_disabled keys KEY_FACE off KEY_CLASS off)

foreach(level RANGE 0 5)
    kora_bars(bars ${level} 5 \#8dc21f \#44515a)
    kora_bitmap(signal_${level} signal ${bars})
    kora_bitmap(signal_wide_${level} signal_wide ${bars})
endforeach()
# Colours that an image list of sixteen colours has.
foreach(level RANGE 0 6)
    kora_bars(bars ${level} 6 \#008000 \#c0c0c0)
    kora_icon(signal_icon_${level} signal_icon 16 ${bars})
endforeach()
foreach(level RANGE 0 10)
    math(EXPR needle "${level} * 156 / 10")
    math(EXPR passed "${level} * 159 / 10")
    kora_bitmap(scan_progress_${level} scan_progress NEEDLE ${needle} PASSED ${passed})
endforeach()
kora_icon(app_icon app_icon "16;32;48")
