# The files in which channel lists travel and the store behind them, under the sanitizers; what is written is read by
# programs that are not ours.
add_subdirectory(${CMAKE_SOURCE_DIR}/handset/lists ${CMAKE_BINARY_DIR}/lists)
target_compile_options(kora_lists PRIVATE -O1)
add_executable(native_lists
    cedb/volume_file.cpp
    lists/csv_lists_test.cpp
    lists/exchange_fuzz_test.cpp
    lists/foreign_readers_test.cpp
    lists/import_plan_test.cpp
    lists/json_lists_test.cpp
    lists/list_store_test.cpp
    lists/sample_lists.cpp)
target_compile_options(native_lists PRIVATE -O1)
target_link_libraries(native_lists PRIVATE kora_lists GTest::gmock_main)
add_test(NAME native_lists COMMAND native_lists)
set_tests_properties(native_lists PROPERTIES TIMEOUT 300)
