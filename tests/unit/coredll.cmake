# COREDLL through its exported calls only, against the device's headers. COREDLL itself is linked as well, for
# the calls that it offers to the handset's other DLLs.
kora_test(test_coredll APP
    SOURCES
        coredll/clock_test.cpp
        coredll/display_size_test.cpp
        coredll/draw_text_test.cpp
        coredll/failing_memory_test.cpp
        coredll/files_test.cpp
        coredll/gdi_count_test.cpp
        coredll/handset_fixture.cpp
        coredll/list_scroll_bar_test.cpp
        coredll/menu_test.cpp
        coredll/message_box_test.cpp
        coredll/message_queue_test.cpp
        coredll/panel_stand_in.cpp
        coredll/power_test.cpp
        coredll/programs_test.cpp
        coredll/registry_test.cpp
        coredll/screen_test.cpp
        coredll/suspend_calls_test.cpp
        coredll/suspend_stress_test.cpp
        coredll/suspend_test.cpp
        coredll/system_font_test.cpp
        coredll/tap_and_hold_test.cpp
        coredll/thread_test.cpp
        coredll/timer_test.cpp
        coredll/top_bar_test.cpp
        coredll/trace_test.cpp
        coredll/transparent_image_test.cpp
        coredll/uncovering_test.cpp
        coredll/window_fault_test.cpp
        ${CMAKE_SOURCE_DIR}/tests/support/failing_memory.cpp
        ${CMAKE_SOURCE_DIR}/tests/support/process_counts.cpp
    LIBS COREDLL)
