# The face's pictures: drawings in art/ become bitmaps and icons of exact size when the program is built.
find_program(KORA_RSVG rsvg-convert REQUIRED)
find_program(KORA_CONVERT NAMES convert-im6.q16 convert REQUIRED)

set(KORA_ART_SOURCE ${CMAKE_CURRENT_SOURCE_DIR}/art)
set(KORA_ART ${CMAKE_CURRENT_BINARY_DIR}/art)
set(KORA_ART_FILES)
# The parts stand in many drawings; a change of theirs configures those again, and only what changed is built.
foreach(part PARTS FACE_PORTRAIT FACE_LANDSCAPE)
    string(TOLOWER ${part} file)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${KORA_ART_SOURCE}/${file}.svg.inc)
    file(READ ${KORA_ART_SOURCE}/${file}.svg.inc ${part})
endforeach()

# kora_bitmap(NAME DRAWING [VARIABLE VALUE]…): NAME.bmp, 24 bits, of the drawing's own size, with the drawing's
# @VARIABLE@ marks replaced.
function(kora_bitmap name drawing)
    kora_drawing(${name} ${drawing} ${ARGN})
    add_custom_command(OUTPUT ${KORA_ART}/${name}.bmp
        COMMAND ${KORA_RSVG} -o ${name}.png ${name}.svg
        COMMAND ${KORA_CONVERT} ${name}.png -alpha off -type TrueColor BMP3:${name}.bmp
        DEPENDS ${KORA_ART}/${name}.svg WORKING_DIRECTORY ${KORA_ART} VERBATIM)
    set(KORA_ART_FILES ${KORA_ART_FILES} ${KORA_ART}/${name}.bmp PARENT_SCOPE)
endfunction()

# kora_icon(NAME DRAWING SIZES [VARIABLE VALUE]…): NAME.ico with one picture a size.
function(kora_icon name drawing sizes)
    kora_drawing(${name} ${drawing} ${ARGN})
    set(commands)
    set(pictures)
    foreach(size IN LISTS sizes)
        list(APPEND commands COMMAND ${KORA_RSVG} -w ${size} -h ${size} -o ${name}_${size}.png ${name}.svg)
        list(APPEND pictures ${name}_${size}.png)
    endforeach()
    add_custom_command(OUTPUT ${KORA_ART}/${name}.ico
        ${commands}
        COMMAND ${KORA_CONVERT} ${pictures} ${name}.ico
        DEPENDS ${KORA_ART}/${name}.svg WORKING_DIRECTORY ${KORA_ART} VERBATIM)
    set(KORA_ART_FILES ${KORA_ART_FILES} ${KORA_ART}/${name}.ico PARENT_SCOPE)
endfunction()

function(kora_drawing name drawing)
    while(ARGN)
        list(POP_FRONT ARGN variable value)
        set(${variable} ${value})
    endwhile()
    configure_file(${KORA_ART_SOURCE}/${drawing}.svg.in ${KORA_ART}/${name}.svg @ONLY)
endfunction()

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
