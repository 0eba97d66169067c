# The antenna's front end without its threads, on what the transmitter sends, under the sanitizers.
include(${CMAKE_SOURCE_DIR}/handset/fmdevice/antenna/portable.cmake)
add_library(fm_antenna STATIC ${FM_ANTENNA_SOURCES})
target_include_directories(fm_antenna PUBLIC ${CMAKE_SOURCE_DIR})
target_compile_options(fm_antenna PUBLIC -O2)
target_link_libraries(fm_antenna PUBLIC kora_flags sdr sdr_rds fm_band)

add_executable(native_antenna
    antenna/air_receiver_test.cpp
    antenna/band_memory_test.cpp
    antenna/byte_ring_test.cpp
    antenna/clocked_sound_test.cpp
    antenna/gain_hold_test.cpp
    antenna/ether_radio.cpp
    antenna/retune_test.cpp
    antenna/sample_clock_test.cpp
    antenna/station_texts_test.cpp
    antenna/stereo_gone_test.cpp)
target_link_libraries(native_antenna PRIVATE fm_antenna ether transmitter GTest::gmock_main)
add_test(NAME native_antenna COMMAND native_antenna)
set_tests_properties(native_antenna PROPERTIES TIMEOUT 600)
