# What a recording says of itself, written and read; for who looks at recordings, too.
set(RECORDING_FACTS_SOURCES
    ${CMAKE_CURRENT_LIST_DIR}/mp4_boxes.cpp
    ${CMAKE_CURRENT_LIST_DIR}/recording_facts.cpp
    ${CMAKE_CURRENT_LIST_DIR}/recording_tags.cpp)
# The sources of the recording filters that need nothing of Windows.
set(CAPTURE_PORTABLE_SOURCES
    ${CMAKE_CURRENT_LIST_DIR}/amr_encoder.cpp
    ${CMAKE_CURRENT_LIST_DIR}/amr_file_writer.cpp
    ${CMAKE_CURRENT_LIST_DIR}/amr_frames.cpp
    ${CMAKE_CURRENT_LIST_DIR}/mp4_movie.cpp
    ${CMAKE_CURRENT_LIST_DIR}/sound_converter.cpp
    ${CMAKE_CURRENT_LIST_DIR}/stream_control.cpp
    ${CMAKE_CURRENT_LIST_DIR}/wav_writer.cpp)
