# The parts of the bench that could print a wrong figure: counting, limits, demands, drawings, the peer's words.
set(RECEPTION_BENCH ${CMAKE_SOURCE_DIR}/tests/bench/reception)
add_executable(test_reception_bench
    bench/curve_test.cpp
    bench/demands_test.cpp
    bench/ether_demands_test.cpp
    bench/ideal_limit_test.cpp
    bench/peer_decoder_test.cpp
    bench/reference_multiplex_test.cpp
    bench/report_test.cpp
    bench/scored_groups_test.cpp
    bench/tone_file_test.cpp
    bench/tone_watch_test.cpp
    ${CMAKE_SOURCE_DIR}/tests/bench/ether/ether_demands.cpp
    ${CMAKE_SOURCE_DIR}/tests/bench/ether/tone_file.cpp
    ${CMAKE_SOURCE_DIR}/tests/bench/ether/tone_watch.cpp
    ${RECEPTION_BENCH}/curve.cpp
    ${RECEPTION_BENCH}/demands.cpp
    ${RECEPTION_BENCH}/ideal_limit.cpp
    ${RECEPTION_BENCH}/peer_decoder.cpp
    ${RECEPTION_BENCH}/reference_multiplex.cpp
    ${RECEPTION_BENCH}/report.cpp
    ${RECEPTION_BENCH}/scored_groups.cpp)
# Optimised: limits are found by trying all words.
target_compile_options(test_reception_bench PRIVATE -O2)
target_link_libraries(test_reception_bench PRIVATE capture_portable transmitter GTest::gmock_main)
add_test(NAME test_reception_bench COMMAND test_reception_bench)
set_tests_properties(test_reception_bench PROPERTIES TIMEOUT 300)
