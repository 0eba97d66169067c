# Sources that need nothing but the C++ standard library.
set(SOUND_PORTABLE_SOURCES
    ${CMAKE_CURRENT_LIST_DIR}/ring.cpp
    ${CMAKE_CURRENT_LIST_DIR}/samples.cpp
    ${CMAKE_CURRENT_LIST_DIR}/wav.cpp)
