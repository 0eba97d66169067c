kora_test(test_capture
    SOURCES
        capture/builder_test.cpp
        capture/capture_pin_test.cpp
        capture/class_test.cpp
        capture/clock_test.cpp
        capture/cut_off_test.cpp
        capture/encoder_test.cpp
        capture/file_sink_test.cpp
        capture/filter_test.cpp
        capture/fixture.cpp
        capture/host_tool.cpp
        capture/recorded_sound.cpp
        capture/recording_rig.cpp
        capture/recording_test.cpp
        capture/stream_control_test.cpp
    LIBS kora_panel kora_state fmdevice strmiids uuid ole32 kernel32 advapi32 COREDLL)
add_dependencies(test_capture capture)
