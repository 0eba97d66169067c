# The ether's sources that need nothing of Windows.
set(ETHER_SOURCES
    ${CMAKE_CURRENT_LIST_DIR}/air.cpp
    ${CMAKE_CURRENT_LIST_DIR}/command_reader.cpp
    ${CMAKE_CURRENT_LIST_DIR}/station_signal.cpp
    ${CMAKE_CURRENT_LIST_DIR}/stick.cpp
    ${CMAKE_CURRENT_LIST_DIR}/stream.cpp
    ${CMAKE_CURRENT_LIST_DIR}/studio.cpp
    ${CMAKE_CURRENT_LIST_DIR}/synthesis.cpp
    ${CMAKE_CURRENT_LIST_DIR}/texts_on_air.cpp)
