# Sources that need nothing but the C++ standard library.
set(BASE_PORTABLE_SOURCES
    ${CMAKE_CURRENT_LIST_DIR}/antenna_text.cpp
    ${CMAKE_CURRENT_LIST_DIR}/calendar.cpp
    ${CMAKE_CURRENT_LIST_DIR}/clock_moment.cpp
    ${CMAKE_CURRENT_LIST_DIR}/device_path.cpp
    ${CMAKE_CURRENT_LIST_DIR}/number_text.cpp
    ${CMAKE_CURRENT_LIST_DIR}/utf8.cpp)
