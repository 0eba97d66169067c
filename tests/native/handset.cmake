# The portable sources of handset.exe under the sanitizers, with the tests that Wine runs too.
set(handset_tests ${CMAKE_SOURCE_DIR}/tests/unit/handset)
add_executable(native_handset
    ${handset_tests}/art_picture_test.cpp
    ${handset_tests}/band_strip_test.cpp
    ${handset_tests}/canvas_test.cpp
    ${handset_tests}/png_file_test.cpp
    ${handset_tests}/tuner_log_test.cpp
    ${CMAKE_SOURCE_DIR}/handset/phone/art_picture.cpp
    ${CMAKE_SOURCE_DIR}/handset/phone/band_strip.cpp
    ${CMAKE_SOURCE_DIR}/handset/phone/canvas.cpp
    ${CMAKE_SOURCE_DIR}/handset/phone/png_file.cpp
    ${CMAKE_SOURCE_DIR}/handset/tour/tuner_log.cpp)
target_include_directories(native_handset PRIVATE ${CMAKE_SOURCE_DIR})
target_compile_options(native_handset PRIVATE -O1)
target_link_libraries(native_handset PRIVATE fm_band GTest::gmock_main)
add_test(NAME native_handset COMMAND native_handset)
set_tests_properties(native_handset PROPERTIES TIMEOUT 600)
