# The transmitter's sources; none of them needs Windows.
set(TRANSMITTER_SOURCES
    ${CMAKE_CURRENT_LIST_DIR}/biphase.cpp
    ${CMAKE_CURRENT_LIST_DIR}/group.cpp
    ${CMAKE_CURRENT_LIST_DIR}/letters.cpp
    ${CMAKE_CURRENT_LIST_DIR}/modulator.cpp
    ${CMAKE_CURRENT_LIST_DIR}/multiplex.cpp
    ${CMAKE_CURRENT_LIST_DIR}/noise.cpp
    ${CMAKE_CURRENT_LIST_DIR}/path.cpp
    ${CMAKE_CURRENT_LIST_DIR}/programme.cpp
    ${CMAKE_CURRENT_LIST_DIR}/rate_change.cpp
    ${CMAKE_CURRENT_LIST_DIR}/sampled_programme.cpp
    ${CMAKE_CURRENT_LIST_DIR}/station_texts.cpp
    ${CMAKE_CURRENT_LIST_DIR}/stream_format.cpp
    ${CMAKE_CURRENT_LIST_DIR}/transmitter.cpp
    ${CMAKE_CURRENT_LIST_DIR}/wav_loop.cpp
    ${CMAKE_CURRENT_LIST_DIR}/windowed_sinc.cpp)
