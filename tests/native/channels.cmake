# Frequencies as they are typed, under the sanitizers.
add_executable(native_channels
    channels/frequency_fuzz_test.cpp
    channels/frequency_input_test.cpp
    ${CMAKE_SOURCE_DIR}/channels/frequency_input.cpp
    ${CMAKE_SOURCE_DIR}/tuner/frequency.cpp)
target_include_directories(native_channels PRIVATE platform ${CMAKE_SOURCE_DIR})
target_compile_options(native_channels PRIVATE -O1)
target_link_libraries(native_channels PRIVATE kora_flags GTest::gmock_main)
add_test(NAME native_channels COMMAND native_channels)
