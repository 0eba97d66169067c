# The device's database calls, without COREDLL around them; and a program to be killed while it writes.
add_executable(cedb_writer cedb/writer_main.cpp cedb/no_suspension.cpp)
target_link_libraries(cedb_writer PRIVATE kora_host_flags kora_cedb)
target_link_options(cedb_writer PRIVATE -static -municode)

kora_test(test_cedb
    SOURCES
        cedb/collation_test.cpp
        cedb/database_fixture.cpp
        cedb/database_test.cpp
        cedb/durability_test.cpp
        cedb/no_suspension.cpp
        cedb/read_test.cpp
        cedb/seek_test.cpp
        cedb/volume_test.cpp
        cedb/write_test.cpp
    LIBS kora_cedb)
add_dependencies(test_cedb cedb_writer)

# The same calls as the application makes them, COREDLL's CloseHandle included.
kora_test(test_cedb_device APP SOURCES cedb/device_test.cpp)
