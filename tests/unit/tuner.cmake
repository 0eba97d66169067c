# Tuner control and the command line, on the real skin, with a tuner device that writes down its calls.
kora_test(test_tuner APP
    SOURCES
        tuner/af_dialog_test.cpp
        tuner/af_switch_test.cpp
        tuner/audio_test.cpp
        tuner/auto_scan_end_test.cpp
        tuner/auto_scan_test.cpp
        tuner/bluetooth_test.cpp
        tuner/command_line_test.cpp
        tuner/controls_test.cpp
        tuner/device_test.cpp
        tuner/digit_keys_test.cpp
        tuner/frequency_display_test.cpp
        tuner/monitor_paints_test.cpp
        tuner/monitor_round_test.cpp
        tuner/phone_calls_test.cpp
        recording/tick_count.cpp
        tuner/refused_threads.cpp
        tuner/scan_on_screen.cpp
        tuner/rds_dialog_test.cpp
        tuner/rds_display_test.cpp
        tuner/tuner_test.cpp
        tuner/volume_keys_test.cpp
        tuner/weak_signal_test.cpp
        ${CMAKE_SOURCE_DIR}/tests/native/tuner/frequency_test.cpp
        ${CMAKE_SOURCE_DIR}/tests/support/registered_controls.cpp
        ${CMAKE_SOURCE_DIR}/tests/support/skin_window.cpp
    LIBS ${KORA_APPLICATION} app_resources)
# The text fields' painting and the reading of settings go through the tests, which note them and pass them on; the
# tick count and the making of threads as well, which the tests may change and refuse.
target_link_options(test_tuner PRIVATE -Wl,--wrap=_Z12DrawSkinTextR5CSkiniPKw,--wrap=_Z12ShowSkinTextR5CSkiniPKw,--wrap=_Z16DrawScanProgressR5CSkini,--wrap=RegistryGetDWORD,--wrap=__imp_GetTickCount,--wrap=__imp_CreateThread,--wrap=__imp_InitCommonControlsEx)
