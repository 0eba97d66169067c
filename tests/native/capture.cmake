# The recording filters' portable sources under the sanitizers; the files that they write are opened by ffprobe and
# decoded by ffmpeg.
include(${CMAKE_SOURCE_DIR}/cmake/libsoxr.cmake)
include(${CMAKE_SOURCE_DIR}/cmake/opencore_amrnb.cmake)
include(${CMAKE_SOURCE_DIR}/handset/capture/portable.cmake)
add_library(capture_portable STATIC ${CAPTURE_PORTABLE_SOURCES} ${RECORDING_FACTS_SOURCES})
target_include_directories(capture_portable PUBLIC ${CMAKE_SOURCE_DIR})
target_compile_options(capture_portable PRIVATE -O2)
target_link_libraries(capture_portable PUBLIC kora_flags kora_sound kora_amrnb kora_soxr)

add_executable(test_capture_portable
    capture/amr_encoder_test.cpp
    capture/amr_file_test.cpp
    capture/media_probe.cpp
    capture/recording_facts_test.cpp
    capture/recording_tags_test.cpp
    capture/resampler_test.cpp
    capture/stream_control_test.cpp
    capture/tone.cpp
    capture/wav_writer_test.cpp
    ../support/sound_file.cpp)
target_link_libraries(test_capture_portable PRIVATE capture_portable GTest::gmock_main)
add_test(NAME test_capture_portable COMMAND test_capture_portable)
set_tests_properties(test_capture_portable PROPERTIES TIMEOUT 300)
