# The receiver as a whole, on what the transmitter sends and on what nobody would.
add_executable(test_reception
    reception/data_fuzz_test.cpp
    reception/file_fuzz_test.cpp
    reception/stream_fuzz_test.cpp)
target_compile_options(test_reception PRIVATE -O2)
target_link_libraries(test_reception PRIVATE sdr sdr_rds transmitter GTest::gmock_main)
add_test(NAME test_reception COMMAND test_reception)
set_tests_properties(test_reception PROPERTIES TIMEOUT 900)
