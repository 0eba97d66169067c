# The ground of the handset, under the sanitizers.
include(${CMAKE_SOURCE_DIR}/handset/base/portable.cmake)
add_library(kora_base_portable STATIC ${BASE_PORTABLE_SOURCES})
target_include_directories(kora_base_portable PUBLIC ${CMAKE_SOURCE_DIR})
target_compile_options(kora_base_portable PRIVATE -O1)
target_link_libraries(kora_base_portable PUBLIC kora_flags)
target_compile_features(kora_base_portable PRIVATE cxx_std_20)

add_executable(native_base
    base/antenna_text_test.cpp
    base/calendar_test.cpp
    base/clock_moment_test.cpp
    base/device_path_test.cpp
    base/number_text_test.cpp
    base/utf8_test.cpp)
target_link_libraries(native_base PRIVATE kora_base_portable GTest::gmock_main)
add_test(NAME native_base COMMAND native_base)
