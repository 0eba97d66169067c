# The tuner device's portable sources under the sanitizers: their tests, and a fuzzer of the band file.
include(${CMAKE_SOURCE_DIR}/handset/fmdevice/portable.cmake)
add_library(fm_portable STATIC ${FM_PORTABLE_SOURCES})
target_include_directories(fm_portable PUBLIC ${CMAKE_SOURCE_DIR})
# Optimised a little: a hundred thousand band files are to be read in seconds.
target_compile_options(fm_portable PUBLIC -O1)
target_link_libraries(fm_portable PUBLIC kora_flags kora_base_portable kora_sound)

add_executable(test_fm_portable
    fmdevice/band_edit_test.cpp
    fmdevice/band_file_test.cpp
    fmdevice/band_fuzz_test.cpp
    fmdevice/programme_test.cpp
    fmdevice/rds_reader_test.cpp
    fmdevice/receiver_sound_test.cpp
    fmdevice/seek_test.cpp
    fmdevice/shipped_band_test.cpp)
target_link_libraries(test_fm_portable PRIVATE fm_portable GTest::gmock_main)
target_compile_definitions(test_fm_portable PRIVATE KORA_BAND_FILE="${CMAKE_SOURCE_DIR}/handset/fmdevice/band.ini")
add_test(NAME test_fm_portable COMMAND test_fm_portable)
set_tests_properties(test_fm_portable PROPERTIES TIMEOUT 600)

# Runs for as long as one lets it: fuzz_band_file [CORPUS …]. Not a test of its own.
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    add_executable(fuzz_band_file EXCLUDE_FROM_ALL fmdevice/band_fuzzer.cpp ${FM_PORTABLE_SOURCES} ${BASE_PORTABLE_SOURCES})
    target_include_directories(fuzz_band_file PRIVATE ${CMAKE_SOURCE_DIR})
    target_link_libraries(fuzz_band_file PRIVATE kora_flags)
    target_compile_options(fuzz_band_file PRIVATE -fsanitize=fuzzer)
    target_link_options(fuzz_band_file PRIVATE -fsanitize=fuzzer)
endif()
