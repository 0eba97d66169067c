# What the stylus touches, under the sanitizers: the hit tests and their tables, with the tests that Wine runs too and
# a fuzzer. What they need of the platform is stood in for.
set(skin_tests ${CMAKE_SOURCE_DIR}/tests/unit/skin)
set(skin_sources ${CMAKE_SOURCE_DIR}/skin)
add_executable(native_skin
    skin/hit_fuzz_test.cpp
    skin/stand_ins/platform.cpp
    ${skin_tests}/hit_buttons_test.cpp
    ${skin_tests}/hit_slider_test.cpp
    ${skin_tests}/tables_test.cpp
    ${skin_sources}/hit_buttons.cpp
    ${skin_sources}/hit_slider.cpp
    ${skin_sources}/screen.cpp
    ${skin_sources}/skin_rows.cpp
    ${skin_sources}/skin_tables.cpp)
# The stand-ins come first: windows.h, and the tests' own window.
target_include_directories(native_skin PRIVATE skin/stand_ins ${CMAKE_SOURCE_DIR})
target_compile_options(native_skin PRIVATE -O1)
target_link_libraries(native_skin PRIVATE kora_flags GTest::gmock_main)
add_test(NAME native_skin COMMAND native_skin)
set_tests_properties(native_skin PROPERTIES TIMEOUT 600)
