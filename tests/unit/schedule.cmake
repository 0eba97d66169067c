# The schedule on the real resources: its entries in a registry of the test's own, and its dialog, worked from
# another thread as a hand does. The texts of a booking are read with the device's own runtime as well as on this machine.
kora_test(test_schedule APP
    SOURCES
        aygshell/test_handset.cpp
        schedule/add_test.cpp
        schedule/bad_entries_test.cpp
        schedule/delete_test.cpp
        schedule/dialog_test.cpp
        schedule/entry_test.cpp
        schedule/listing_test.cpp
        schedule/open_schedule.cpp
        schedule/schedule_test.cpp
        ${CMAKE_SOURCE_DIR}/tests/native/schedule/booking_rule_test.cpp
        ${CMAKE_SOURCE_DIR}/tests/support/registered_controls.cpp
    LIBS ${KORA_APPLICATION} app_resources)
# The deletion of an entry's key goes through the tests, which may refuse it as a registry does, and so does the
# registration of controls, which they note. The keys that a listing finds are counted.
target_link_options(test_schedule PRIVATE -Wl,--wrap=_Z17DeleteScheduleKeyP6HKEY__PKwS2_,--wrap=__imp_InitCommonControlsEx,--wrap=__imp_RegOpenKeyExW,--wrap=RegistryGetString)
