# The sources of the band that need nothing of Windows.
set(FM_BAND_SOURCES
    ${CMAKE_CURRENT_LIST_DIR}/band_edit.cpp
    ${CMAKE_CURRENT_LIST_DIR}/band_file.cpp
    ${CMAKE_CURRENT_LIST_DIR}/band_line.cpp
    ${CMAKE_CURRENT_LIST_DIR}/generators.cpp
    ${CMAKE_CURRENT_LIST_DIR}/programme.cpp
    ${CMAKE_CURRENT_LIST_DIR}/pty_names.cpp
    ${CMAKE_CURRENT_LIST_DIR}/rds_reader.cpp
    ${CMAKE_CURRENT_LIST_DIR}/receiver_sound.cpp
    ${CMAKE_CURRENT_LIST_DIR}/seek.cpp
    ${CMAKE_CURRENT_LIST_DIR}/voice.cpp)
