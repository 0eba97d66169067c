# The transmitter's sources under the sanitizers, for the tests of the receiver too.
include(${CMAKE_SOURCE_DIR}/handset/transmitter/portable.cmake)
add_library(transmitter STATIC ${TRANSMITTER_SOURCES})
target_include_directories(transmitter PUBLIC ${CMAKE_SOURCE_DIR})
# Optimised: a second of air is a million samples.
target_compile_options(transmitter PRIVATE -O2)
target_link_libraries(transmitter PUBLIC kora_flags kora_base_portable)

add_executable(test_transmitter
    transmitter/biphase_test.cpp
    transmitter/group_test.cpp
    transmitter/multiplex_test.cpp
    transmitter/path_test.cpp
    transmitter/programme_test.cpp
    transmitter/station_texts_test.cpp
    transmitter/transmitter_test.cpp)
target_compile_options(test_transmitter PRIVATE -O2)
target_link_libraries(test_transmitter PRIVATE transmitter GTest::gmock_main)
add_test(NAME test_transmitter COMMAND test_transmitter)
set_tests_properties(test_transmitter PROPERTIES TIMEOUT 600)
