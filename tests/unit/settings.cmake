# The settings and information dialogs and the re-layout of dialogs, on the real templates.
add_library(test_settings_resources OBJECT settings/relayout.rc)
target_include_directories(test_settings_resources PRIVATE ${CMAKE_SOURCE_DIR})

kora_test(test_settings APP
    SOURCES
        aygshell/test_handset.cpp
        aygshell/test_window.cpp
        settings/information_test.cpp
        settings/relayout_test.cpp
        settings/settings_dialog_test.cpp
        settings/settings_test.cpp
        $<TARGET_OBJECTS:test_settings_resources>
    LIBS ${KORA_APPLICATION} app_resources)
