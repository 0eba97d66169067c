# The phone's pictures, made of the drawings in art/. Each is a resource of the program by its name (phone_art.cpp).
include(${CMAKE_SOURCE_DIR}/cmake/art.cmake)

set(KORA_ART_SOURCE ${CMAKE_CURRENT_SOURCE_DIR}/art)
set(KORA_ART ${CMAKE_CURRENT_BINARY_DIR}/art)
set(KORA_ART_FILES)
set(KORA_PHONE_RC)
macro(phone_picture name drawing)
    kora_clear_bitmap(${name} ${drawing} ${ARGN})
    string(APPEND KORA_PHONE_RC "${name} RCDATA \"${name}.bmp\"\n")
endmacro()

foreach(name desk body glass key_up key_down pad knob close focus band tuned)
    phone_picture(${name} ${name})
endforeach()
phone_picture(speaker speaker WIDTH 60 HEIGHT 6 INNER_WIDTH 58 INNER_HEIGHT 4)
phone_picture(speaker_turned speaker WIDTH 6 HEIGHT 60 INNER_WIDTH 4 INNER_HEIGHT 58)

# Clockwise from upright, in degrees.
foreach(arrow up:0 right:90 down:180 left:270)
    string(REPLACE ":" ";" arrow ${arrow})
    list(GET arrow 0 side)
    list(GET arrow 1 turn)
    phone_picture(arrow_${side} arrow TURN ${turn} COLOUR \#f1f1ed GLOW 0)
    phone_picture(arrow_${side}_lit arrow TURN ${turn} COLOUR \#b4ec3c GLOW 1)
endforeach()
phone_picture(return_up return INNER \#858b95 OUTER \#4a4e56 GLEAM .45 GLOW .35)
phone_picture(return_down return INNER \#17181b OUTER \#33363c GLEAM .05 GLOW 1)

# The phone turned with what is printed on it: its top lies on the left.
phone_picture(soft_sign soft_sign TURN 0)
phone_picture(soft_sign_turned soft_sign TURN -90)
phone_picture(call_sign receiver_sign TURN -135 COLOUR \#84d83c)
phone_picture(call_sign_turned receiver_sign TURN -225 COLOUR \#84d83c)
phone_picture(end_sign receiver_sign TURN 0 COLOUR \#ff5a51)
phone_picture(end_sign_turned receiver_sign TURN -90 COLOUR \#ff5a51)

set(OFF UPPER \#a9a398 MIDDLE \#bdb8ae LOWER \#c9c4bb KNOB 12.5)
set(ON UPPER \#709f10 MIDDLE \#84b81b LOWER \#97cc29 KNOB 29.5)
phone_picture(toggle_off toggle ${OFF} PRESSED 0)
phone_picture(toggle_off_down toggle ${OFF} PRESSED 1)
phone_picture(toggle_on toggle ${ON} PRESSED 0)
phone_picture(toggle_on_down toggle ${ON} PRESSED 1)

phone_picture(button_up button UPPER \#ffffff LOWER \#f0ede8 EDGE \#c5c0b6 SHADOW .4 GLEAM .9)
phone_picture(button_down button UPPER \#d6d2ca LOWER \#e6e3dd EDGE \#b0aa9e SHADOW 0 GLEAM 0)
phone_picture(button_lit button UPPER \#9dd22d LOWER \#7bab15 EDGE \#638b10 SHADOW .4 GLEAM .45)
phone_picture(track track UPPER \#aba599 LOWER \#cdc8be)
phone_picture(track_lit track UPPER \#6f9c11 LOWER \#97cc29)

file(CONFIGURE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/phone_art.rc CONTENT "${KORA_PHONE_RC}")
