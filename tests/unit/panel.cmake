# A radio of a few lines: starts, shows a window of the radio's class and writes down what reaches it.
add_executable(panel_stand_in panel/stand_in_radio.cpp)
target_link_libraries(panel_stand_in PRIVATE kora_host_flags kora_state user32 gdi32 kernel32)
target_link_options(panel_stand_in PRIVATE -municode -mwindows)

kora_test(test_panel
    SOURCES
        ../support/stick_client.cpp
        panel/antenna_test.cpp
        panel/band_strip_test.cpp
        panel/band_test.cpp
        panel/booked_handset.cpp
        panel/canvas_test.cpp
        panel/clock_test.cpp
        panel/command_line_test.cpp
        panel/handset_fixture.cpp
        panel/install_test.cpp
        panel/layout_test.cpp
        panel/panel_window_test.cpp
        panel/png_file_test.cpp
        panel/process_start_test.cpp
        panel/radio_test.cpp
        panel/registry_test.cpp
        panel/removal_test.cpp
        panel/schedule_test.cpp
        panel/service_test.cpp
        panel/side_by_side_test.cpp
        panel/switches_test.cpp
        panel/tuner_log_test.cpp
        panel/values_test.cpp
    LIBS kora_panel)
add_dependencies(test_panel panel_stand_in handset)
