# What a recording says of itself, written and read; for who looks at recordings, too.
set(RECORDING_FACTS_SOURCES
    ${CMAKE_CURRENT_LIST_DIR}/files/mp4_boxes.cpp
    ${CMAKE_CURRENT_LIST_DIR}/files/recording_facts.cpp
    ${CMAKE_CURRENT_LIST_DIR}/files/recording_tags.cpp)
# The sources of the recording filters that need nothing of Windows.
set(CAPTURE_PORTABLE_SOURCES
    ${CMAKE_CURRENT_LIST_DIR}/encoder/amr_encoder.cpp
    ${CMAKE_CURRENT_LIST_DIR}/encoder/amr_frames.cpp
    ${CMAKE_CURRENT_LIST_DIR}/files/amr_file_writer.cpp
    ${CMAKE_CURRENT_LIST_DIR}/files/mp4_movie.cpp
    ${CMAKE_CURRENT_LIST_DIR}/files/wav_writer.cpp
    ${CMAKE_CURRENT_LIST_DIR}/graph/stream_control.cpp
    ${CMAKE_CURRENT_LIST_DIR}/source/sound_converter.cpp)
