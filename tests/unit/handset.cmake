# A radio of a few lines: starts, shows a window of the radio's class and writes down what reaches it.
add_executable(stand_in_radio handset/stand_in_radio.cpp)
target_link_libraries(stand_in_radio PRIVATE kora_host_flags kora_state user32 gdi32 kernel32)
target_link_options(stand_in_radio PRIVATE -municode -mwindows)

kora_test(test_handset
    SOURCES
        ../support/stick_client.cpp
        handset/antenna_test.cpp
        handset/art_picture_test.cpp
        handset/band_drawing_test.cpp
        handset/band_strip_test.cpp
        handset/band_test.cpp
        handset/booked_handset.cpp
        handset/canvas_test.cpp
        handset/channels_test.cpp
        handset/clock_test.cpp
        handset/command_line_test.cpp
        handset/handset_fixture.cpp
        handset/host_folder_test.cpp
        handset/install_test.cpp
        handset/layout_test.cpp
        handset/panel_focus_test.cpp
        handset/panel_keys_test.cpp
        handset/panel_texts_test.cpp
        handset/panel_window_test.cpp
        handset/phone_art_test.cpp
        handset/png_file_test.cpp
        handset/process_start_test.cpp
        handset/radio_test.cpp
        handset/registry_test.cpp
        handset/removal_test.cpp
        handset/schedule_test.cpp
        handset/screen_size_test.cpp
        handset/service_test.cpp
        handset/side_by_side_test.cpp
        handset/switches_test.cpp
        handset/tuner_log_test.cpp
        handset/values_test.cpp
    LIBS kora_command)
add_dependencies(test_handset stand_in_radio handset)
