# Sound as files and as figures, under the sanitizers.
include(${CMAKE_SOURCE_DIR}/cmake/kissfft.cmake)
include(${CMAKE_SOURCE_DIR}/handset/sound/portable.cmake)
add_library(kora_sound STATIC ${SOUND_PORTABLE_SOURCES})
target_include_directories(kora_sound PUBLIC ${CMAKE_SOURCE_DIR})
target_compile_options(kora_sound PRIVATE -O1)
target_link_libraries(kora_sound PUBLIC kora_flags)

add_executable(native_sound
    sound/analysis_test.cpp
    sound/ring_test.cpp
    sound/samples_test.cpp
    sound/wav_test.cpp
    ${CMAKE_SOURCE_DIR}/handset/sound/analysis.cpp)
target_compile_options(native_sound PRIVATE -O1)
target_link_libraries(native_sound PRIVATE kora_sound kora_kissfft GTest::gmock_main)
add_test(NAME native_sound COMMAND native_sound)
set_tests_properties(native_sound PROPERTIES TIMEOUT 120)
