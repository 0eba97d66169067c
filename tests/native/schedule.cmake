# The schedule's rules and the times of booked programs, under the sanitizers.
add_executable(native_schedule
    schedule/app_booking_test.cpp
    schedule/booking_fuzz_test.cpp
    schedule/booking_rule_test.cpp
    schedule/conflict_test.cpp
    ${CMAKE_SOURCE_DIR}/handset/state/app_booking.cpp
    ${CMAKE_SOURCE_DIR}/schedule/booking_rule.cpp
    ${CMAKE_SOURCE_DIR}/schedule/command_options.cpp)
target_include_directories(native_schedule PRIVATE platform ${CMAKE_SOURCE_DIR})
# Eighty-five million pairs of spans are walked.
target_compile_options(native_schedule PRIVATE -O1)
target_link_libraries(native_schedule PRIVATE kora_base_portable GTest::gmock_main)
add_test(NAME native_schedule COMMAND native_schedule)
set_tests_properties(native_schedule PROPERTIES TIMEOUT 600)
