# Pictures of the programs: drawings become bitmaps and icons of exact size when a program is built. A folder's list of them
# sets KORA_ART_SOURCE, where its drawings are, KORA_ART, where their pictures go, and an empty KORA_ART_FILES, which then
# holds what has to be there before the resources are compiled.
find_program(KORA_RSVG rsvg-convert REQUIRED)
find_program(KORA_CONVERT NAMES convert-im6.q16 convert REQUIRED)

# kora_drawing(NAME DRAWING [VARIABLE VALUE]…): NAME.svg, with the drawing's @VARIABLE@ marks replaced.
function(kora_drawing name drawing)
    while(ARGN)
        list(POP_FRONT ARGN variable value)
        set(${variable} ${value})
    endwhile()
    configure_file(${KORA_ART_SOURCE}/${drawing}.svg.in ${KORA_ART}/${name}.svg @ONLY)
endfunction()

# kora_bitmap(NAME DRAWING [VARIABLE VALUE]…): NAME.bmp, 24 bits, of the drawing's own size.
macro(kora_bitmap name drawing)
    kora_picture_file(${name} ${drawing} "-alpha;off;-type;TrueColor;BMP3:${name}.bmp" ${ARGN})
endmacro()

# kora_clear_bitmap(NAME DRAWING [VARIABLE VALUE]…): NAME.bmp, 32 bits, clear where nothing is drawn.
macro(kora_clear_bitmap name drawing)
    kora_picture_file(${name} ${drawing} "-alpha;on;-type;TrueColorMatte;BMP:${name}.bmp" ${ARGN})
endmacro()

function(kora_picture_file name drawing format)
    kora_drawing(${name} ${drawing} ${ARGN})
    add_custom_command(OUTPUT ${KORA_ART}/${name}.bmp
        COMMAND ${KORA_RSVG} -o ${name}.png ${name}.svg
        COMMAND ${KORA_CONVERT} ${name}.png ${format}
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
