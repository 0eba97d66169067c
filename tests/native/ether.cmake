# The simulated ether under the sanitizers, heard with the receiver.
include(${CMAKE_SOURCE_DIR}/handset/ether/portable.cmake)
add_library(ether STATIC ${ETHER_SOURCES})
target_include_directories(ether PUBLIC ${CMAKE_SOURCE_DIR})
target_compile_options(ether PRIVATE -O2)
target_link_libraries(ether PUBLIC kora_flags fm_band transmitter PRIVATE kora_kissfft)

add_executable(test_ether
    ether/air_test.cpp
    ether/command_test.cpp
    ether/stream_test.cpp
    sdr/tone_fit.cpp)
target_compile_options(test_ether PRIVATE -O2)
target_link_libraries(test_ether PRIVATE ether sdr sdr_rds GTest::gmock_main)
add_test(NAME test_ether COMMAND test_ether)
set_tests_properties(test_ether PROPERTIES TIMEOUT 300)
