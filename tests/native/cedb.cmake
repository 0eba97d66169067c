# The database engine against a simple model, and against files that are damaged or not volumes at all.
add_subdirectory(${CMAKE_SOURCE_DIR}/handset/coredll/cedb ${CMAKE_BINARY_DIR}/cedb)
add_executable(native_cedb
    cedb/engine_model.cpp
    cedb/crash_test.cpp
    cedb/damaged_volume_test.cpp
    cedb/engine_test.cpp
    cedb/engine_against_model_test.cpp
    cedb/sort_key_test.cpp
    cedb/volume_file.cpp)
# Hundreds of thousands of operations are run.
target_compile_options(native_cedb PRIVATE -O1)
target_compile_options(kora_cedb_engine PRIVATE -O1)
target_link_libraries(native_cedb PRIVATE kora_cedb_engine GTest::gtest_main)
add_test(NAME native_cedb COMMAND native_cedb)
set_tests_properties(native_cedb PROPERTIES TIMEOUT 600)
