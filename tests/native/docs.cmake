# The table of promises in docs/ against the tests and the application's sources.
add_executable(native_docs
    docs/promise_table.cpp
    docs/promises_test.cpp
    docs/source_text.cpp
    docs/trouble_test.cpp)
target_include_directories(native_docs PRIVATE ${CMAKE_SOURCE_DIR})
target_compile_definitions(native_docs PRIVATE KORA_SOURCE_DIR="${CMAKE_SOURCE_DIR}")
# Regular expressions over every source: slow without.
target_compile_options(native_docs PRIVATE -O1)
target_link_libraries(native_docs PRIVATE kora_flags GTest::gmock_main)
add_test(NAME native_docs COMMAND native_docs)
