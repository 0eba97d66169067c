# The resource compiler does not take the C++ flags, hence a library of its own.
add_library(test_aygshell_resources OBJECT aygshell/resources.rc)
target_include_directories(test_aygshell_resources PRIVATE ${CMAKE_SOURCE_DIR})
set_source_files_properties(aygshell/resources.rc PROPERTIES
    OBJECT_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/aygshell/picture.bmp)

kora_test(test_aygshell
    SOURCES
        aygshell/activation_test.cpp
        aygshell/app_at_time_test.cpp
        aygshell/dialog_test.cpp
        aygshell/failing_memory_test.cpp
        aygshell/image_test.cpp
        aygshell/menu_bar_keys_test.cpp
        aygshell/menu_bar_test.cpp
        aygshell/registry_condition_test.cpp
        aygshell/registry_notify_test.cpp
        aygshell/registry_values_test.cpp
        aygshell/test_handset.cpp
        aygshell/test_window.cpp
        ../support/failing_memory.cpp
        $<TARGET_OBJECTS:test_aygshell_resources>
    LIBS AYGSHELL COREDLL kora_state)
add_dependencies(test_aygshell handset)
