# The tables in docs/ against the sources and the tests.
add_executable(native_docs
    docs/architecture_test.cpp
    docs/markdown_table.cpp
    docs/module_edges.cpp
    docs/module_edges_test.cpp
    docs/promise_table.cpp
    docs/promises_test.cpp
    docs/room_map.cpp
    docs/source_text.cpp
    docs/threads_and_locks.cpp
    docs/trouble_test.cpp)
target_include_directories(native_docs PRIVATE ${CMAKE_SOURCE_DIR})
target_compile_definitions(native_docs PRIVATE KORA_SOURCE_DIR="${CMAKE_SOURCE_DIR}")
# Regular expressions over every source: slow without.
target_compile_options(native_docs PRIVATE -O1)
target_link_libraries(native_docs PRIVATE kora_flags GTest::gmock_main)
add_test(NAME native_docs COMMAND native_docs)
