# The ground of the handset, under the sanitizers.
include(${CMAKE_SOURCE_DIR}/handset/base/portable.cmake)
add_executable(native_base
    base/antenna_text_test.cpp
    base/clock_moment_test.cpp
    base/device_path_test.cpp
    base/number_text_test.cpp
    ${BASE_PORTABLE_SOURCES})
target_include_directories(native_base PRIVATE ${CMAKE_SOURCE_DIR})
target_link_libraries(native_base PRIVATE kora_flags GTest::gmock_main)
add_test(NAME native_base COMMAND native_base)
