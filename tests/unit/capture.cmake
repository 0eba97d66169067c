kora_test(test_capture
    SOURCES
        capture/builder_test.cpp
        capture/capture_pin_test.cpp
        capture/class_test.cpp
        capture/clock_test.cpp
        capture/cut_off_test.cpp
        capture/encoder_test.cpp
        capture/failing_memory_test.cpp
        capture/file_sink_test.cpp
        capture/filter_test.cpp
        capture/left_handles_test.cpp
        capture/fixture.cpp
        capture/recorded_sound.cpp
        capture/recording_rig.cpp
        capture/recording_test.cpp
        capture/stream_control_test.cpp
        ../support/failing_memory.cpp
    LIBS kora_setup kora_amrnb test_support fmdevice strmiids uuid ole32 kernel32 advapi32 COREDLL)
add_dependencies(test_capture capture)

# Recordings of minutes, on a clock that makes seconds of them.
kora_test(test_long_recording
    SOURCES
        capture/fixture.cpp
        capture/long_recording_test.cpp
        capture/recorded_sound.cpp
        capture/recording_rig.cpp
    LIBS kora_setup test_support fmdevice strmiids uuid ole32 kernel32 advapi32 COREDLL)
add_dependencies(test_long_recording capture)
set_tests_properties(test_long_recording PROPERTIES ENVIRONMENT KORA_CLOCKRATE=30)
