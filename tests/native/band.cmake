# The band's portable sources under the sanitizers: their tests, and a fuzzer of the band file.
include(${CMAKE_SOURCE_DIR}/handset/fmdevice/band/portable.cmake)
add_library(fm_band STATIC ${FM_BAND_SOURCES})
target_include_directories(fm_band PUBLIC ${CMAKE_SOURCE_DIR})
# Optimised a little: a hundred thousand band files are to be read in seconds.
target_compile_options(fm_band PUBLIC -O1)
target_link_libraries(fm_band PUBLIC kora_flags kora_base_portable kora_sound)

add_executable(native_band
    band/band_edit_test.cpp
    band/band_file_test.cpp
    band/band_fuzz_test.cpp
    band/programme_test.cpp
    band/rds_reader_test.cpp
    band/receiver_sound_test.cpp
    band/seek_test.cpp
    band/shipped_band_test.cpp)
target_link_libraries(native_band PRIVATE fm_band GTest::gmock_main)
target_compile_definitions(native_band PRIVATE KORA_BAND_FILE="${CMAKE_SOURCE_DIR}/handset/fmdevice/band/band.ini")
add_test(NAME native_band COMMAND native_band)
set_tests_properties(native_band PROPERTIES TIMEOUT 600)

# Runs for as long as one lets it: fuzz_band_file [CORPUS …]. Not a test of its own.
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    add_executable(fuzz_band_file EXCLUDE_FROM_ALL band/band_fuzzer.cpp ${FM_BAND_SOURCES} ${BASE_PORTABLE_SOURCES})
    target_include_directories(fuzz_band_file PRIVATE ${CMAKE_SOURCE_DIR})
    target_link_libraries(fuzz_band_file PRIVATE kora_flags kora_sound)
    target_compile_features(fuzz_band_file PRIVATE cxx_std_20)
    target_compile_options(fuzz_band_file PRIVATE -fsanitize=fuzzer)
    target_link_options(fuzz_band_file PRIVATE -fsanitize=fuzzer)
endif()
