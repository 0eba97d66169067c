# A program of the device that works, listens to the power manager, or holds and resets what it is told to.
add_executable(power_stand_in power/stand_in.cpp)
target_link_libraries(power_stand_in PRIVATE kora_app_flags)
add_dependencies(power_stand_in device_libraries COREDLL AYGSHELL COMMCTRL COMMDLG)
target_link_libraries(power_stand_in PRIVATE ${KORA_DEVICE_LIBRARIES} kernel32)
target_link_options(power_stand_in PRIVATE -static)

# The phone as a whole: what its programs notice of one another's power states.
kora_test(test_power
    SOURCES
        power/clock_rate_test.cpp
        power/idle_timer_test.cpp
        power/locks_test.cpp
        power/notices_test.cpp
        power/phone_under_test.cpp
        power/queues_test.cpp
        power/sleep_test.cpp
    LIBS kora_state)
add_dependencies(test_power power_stand_in)
