# The receiver of what is on the air under the sanitizers: each stage against closed forms, and the whole.
include(${CMAKE_SOURCE_DIR}/cmake/kissfft.cmake)
include(${CMAKE_SOURCE_DIR}/cmake/libsoxr.cmake)
include(${CMAKE_SOURCE_DIR}/handset/fmdevice/sdr/portable.cmake)
add_library(sdr STATIC ${SDR_SOURCES})
target_include_directories(sdr PUBLIC ${CMAKE_SOURCE_DIR})
# Optimised, so that seconds of signal take seconds.
target_compile_options(sdr PUBLIC -O2)
target_link_libraries(sdr PUBLIC kora_flags PRIVATE kora_kissfft kora_soxr)

add_executable(test_sdr
    sdr/audio_filter_test.cpp
    sdr/band_scan_test.cpp
    sdr/channelizer_test.cpp
    sdr/clock_bridge_test.cpp
    sdr/discriminator_test.cpp
    sdr/fourier_test.cpp
    sdr/fm_signal.cpp
    sdr/iq_file_test.cpp
    sdr/kernels_test.cpp
    sdr/pilot_loop_test.cpp
    sdr/receiver_test.cpp
    sdr/rtl_tcp_protocol_test.cpp
    sdr/reception_test.cpp
    sdr/sample_form_test.cpp
    sdr/signal_meter_test.cpp
    sdr/tone_fit.cpp)
target_link_libraries(test_sdr PRIVATE sdr sdr_rds transmitter GTest::gmock_main)
add_test(NAME test_sdr COMMAND test_sdr)
set_tests_properties(test_sdr PROPERTIES TIMEOUT 600)
