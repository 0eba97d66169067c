# The shell: what the window procedure and the end of the program do, on a window of the test's own.
kora_test(test_shell APP
    SOURCES
        recording/message_boxes.cpp
        shell/activation_test.cpp
        shell/asked_times.cpp
        shell/commands_test.cpp
        shell/database_start_test.cpp
        shell/exception_guard_test.cpp
        shell/headset_test.cpp
        shell/instance_test.cpp
        shell/keys_test.cpp
        shell/main_state_test.cpp
        shell/menu_enabling_test.cpp
        shell/monitor_memory_test.cpp
        shell/monitor_thread_test.cpp
        shell/popup_menu_test.cpp
        shell/power_thread_test.cpp
        shell/scan_finished_test.cpp
        shell/shell_test.cpp
        shell/shut_down_test.cpp
        shell/sleep_timer_test.cpp
    LIBS ${KORA_APPLICATION})
# The browser is not started; the tests note what it would open, answer the boxes, and note the times asked for and who is
# brought to the front.
target_link_options(test_shell PRIVATE -Wl,--wrap=ShellExecuteEx,--wrap=ReadMsgQueue,--wrap=__imp_MessageBoxW,--wrap=__imp_Sleep,--wrap=__imp_SetTimer,--wrap=__imp_SetForegroundWindow)
