# The RDS decoder under the sanitizers, fed with a multiplex of the tests' own.
include(${CMAKE_SOURCE_DIR}/handset/fmdevice/sdr/rds/portable.cmake)
add_library(sdr_rds STATIC ${SDR_RDS_SOURCES})
target_include_directories(sdr_rds PUBLIC ${CMAKE_SOURCE_DIR})
# Optimised: minutes of signal are decoded.
target_compile_options(sdr_rds PUBLIC -O2)
target_link_libraries(sdr_rds PUBLIC kora_flags kora_base_portable)

add_executable(test_rds
    rds/block_code_test.cpp
    rds/block_decision_test.cpp
    rds/block_sync_test.cpp
    rds/group_reader_test.cpp
    rds/matched_filter_test.cpp
    rds/real_groups_test.cpp
    rds/reception_test.cpp
    rds/signal_search_test.cpp
    rds/symbol_tracker_test.cpp
    rds/text_voter_test.cpp
    rds/synthetic_mpx.cpp)
target_link_libraries(test_rds PRIVATE sdr_rds GTest::gmock_main)
add_test(NAME test_rds COMMAND test_rds)
set_tests_properties(test_rds PROPERTIES TIMEOUT 600)
