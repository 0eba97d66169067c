# Frequency texts, typed digits and the command line, under the sanitizers.
add_executable(native_tuner
    tuner/command_options_fuzz_test.cpp
    tuner/command_options_test.cpp
    tuner/digit_machine_test.cpp
    tuner/frequency_test.cpp
    ${CMAKE_SOURCE_DIR}/schedule/command_options.cpp
    ${CMAKE_SOURCE_DIR}/tuner/digit_machine.cpp
    ${CMAKE_SOURCE_DIR}/tuner/frequency.cpp)
target_include_directories(native_tuner PRIVATE platform ${CMAKE_SOURCE_DIR})
# A hundred million steps are walked.
target_compile_options(native_tuner PRIVATE -O1)
target_link_libraries(native_tuner PRIVATE kora_flags GTest::gmock_main)
add_test(NAME native_tuner COMMAND native_tuner)
set_tests_properties(native_tuner PROPERTIES TIMEOUT 600)
