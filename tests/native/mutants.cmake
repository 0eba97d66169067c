# What `./kora mutants` changes in a line of code, and what it leaves alone.
add_library(mutants_portable STATIC ${CMAKE_SOURCE_DIR}/tests/mutants/mutations.cpp)
target_include_directories(mutants_portable PUBLIC ${CMAKE_SOURCE_DIR})
target_link_libraries(mutants_portable PUBLIC kora_flags)
add_executable(mutate ${CMAKE_SOURCE_DIR}/tests/mutants/mutate_main.cpp)
target_link_libraries(mutate PRIVATE mutants_portable)
add_executable(native_mutants mutants/mutations_test.cpp)
target_link_libraries(native_mutants PRIVATE mutants_portable GTest::gmock_main)
add_test(NAME native_mutants COMMAND native_mutants)
