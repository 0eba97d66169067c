# The skin: painting, hit tests, dispatcher; and the owners that every folder of the application uses.

# skin_test_image(ID WIDTHxHEIGHT): ID.bmp, a pattern that differs by id, with a magenta block in one corner.
set(SKIN_TEST_IMAGES ${CMAKE_CURRENT_BINARY_DIR}/skin_images)
file(MAKE_DIRECTORY ${SKIN_TEST_IMAGES})
find_program(KORA_CONVERT convert REQUIRED)
set(skin_test_bitmaps)
function(skin_test_image id size)
    set(image ${SKIN_TEST_IMAGES}/${id}.bmp)
    math(EXPR red "${id} * 37 % 256")
    math(EXPR green "${id} * 91 % 256")
    add_custom_command(OUTPUT ${image}
        COMMAND ${KORA_CONVERT} -size ${size} "gradient:rgb(${red},${green},20)-rgb(${green},${red},120)"
            -fill "#FF00FF" -draw "rectangle 0,0 5,3" -type TrueColor BMP3:${image}
        VERBATIM)
    set(skin_test_bitmaps ${skin_test_bitmaps} ${image} PARENT_SCOPE)
endfunction()

foreach(id RANGE 186 200)
    if(NOT id EQUAL 187)
        math(EXPR width "${id} - 150")
        skin_test_image(${id} ${width}x20)
    endif()
endforeach()
skin_test_image(1186 50x20)
skin_test_image(1188 52x20)
foreach(id RANGE 211 216)
    skin_test_image(${id} 24x11)
    skin_test_image(1${id} 49x22)
endforeach()
foreach(id RANGE 217 227)
    skin_test_image(${id} 159x14)
endforeach()
set_source_files_properties(skin/skin_test.rc PROPERTIES OBJECT_DEPENDS "${skin_test_bitmaps}")

kora_test(test_skin APP
    SOURCES
        skin/access_test.cpp
        skin/asked_fonts.cpp
        skin/background_test.cpp
        skin/buttons_test.cpp
        skin/dispatch_test.cpp
        skin/empty_client_test.cpp
        skin/hit_buttons_test.cpp
        skin/hit_slider_test.cpp
        skin/dial_test.cpp
        skin/indicators_test.cpp
        skin/leak_test.cpp
        skin/load_test.cpp
        skin/owned_test.cpp
        skin/picture.cpp
        skin/shown_texts_test.cpp
        skin/skin_on_screen.cpp
        skin/skin_test.rc
        skin/slider_test.cpp
        skin/tables_test.cpp
        skin/text_test.cpp
    LIBS app_skin)
target_compile_options(test_skin PRIVATE $<$<COMPILE_LANGUAGE:RC>:-I${SKIN_TEST_IMAGES}>)
# The fonts that are asked for go through the tests, which note them and pass them on.
target_link_options(test_skin PRIVATE -Wl,--wrap=__imp_CreateFontIndirectW)
