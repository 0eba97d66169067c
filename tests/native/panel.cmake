# The panel's portable sources under the sanitizers, with the tests that Wine runs too.
set(panel_tests ${CMAKE_SOURCE_DIR}/tests/unit/panel)
set(panel_sources ${CMAKE_SOURCE_DIR}/handset/panel)
add_executable(native_panel
    ${panel_tests}/band_strip_test.cpp
    ${panel_tests}/canvas_test.cpp
    ${panel_tests}/png_file_test.cpp
    ${panel_tests}/tuner_log_test.cpp
    ${panel_sources}/band_strip.cpp
    ${panel_sources}/canvas.cpp
    ${panel_sources}/png_file.cpp
    ${panel_sources}/tuner_log.cpp)
target_include_directories(native_panel PRIVATE ${CMAKE_SOURCE_DIR})
target_compile_options(native_panel PRIVATE -O1)
target_link_libraries(native_panel PRIVATE fm_portable GTest::gmock_main)
add_test(NAME native_panel COMMAND native_panel)
set_tests_properties(native_panel PROPERTIES TIMEOUT 600)
