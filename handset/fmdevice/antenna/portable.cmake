# The part of the antenna's front end that needs neither Windows nor a thread.
set(FM_ANTENNA_SOURCES
    ${CMAKE_CURRENT_LIST_DIR}/air_receiver.cpp
    ${CMAKE_CURRENT_LIST_DIR}/band_memory.cpp
    ${CMAKE_CURRENT_LIST_DIR}/byte_ring.cpp
    ${CMAKE_CURRENT_LIST_DIR}/clocked_sound.cpp
    ${CMAKE_CURRENT_LIST_DIR}/gain_hold.cpp
    ${CMAKE_CURRENT_LIST_DIR}/sample_clock.cpp
    ${CMAKE_CURRENT_LIST_DIR}/station_texts.cpp)
