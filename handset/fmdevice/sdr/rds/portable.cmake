# The RDS decoder; nothing of it needs Windows.
set(SDR_RDS_SOURCES
    ${CMAKE_CURRENT_LIST_DIR}/alternatives_reader.cpp
    ${CMAKE_CURRENT_LIST_DIR}/baseband.cpp
    ${CMAKE_CURRENT_LIST_DIR}/block_code.cpp
    ${CMAKE_CURRENT_LIST_DIR}/block_decision.cpp
    ${CMAKE_CURRENT_LIST_DIR}/block_sync.cpp
    ${CMAKE_CURRENT_LIST_DIR}/characters.cpp
    ${CMAKE_CURRENT_LIST_DIR}/clock_reader.cpp
    ${CMAKE_CURRENT_LIST_DIR}/decoder.cpp
    ${CMAKE_CURRENT_LIST_DIR}/group_reader.cpp
    ${CMAKE_CURRENT_LIST_DIR}/matched_filter.cpp
    ${CMAKE_CURRENT_LIST_DIR}/other_networks.cpp
    ${CMAKE_CURRENT_LIST_DIR}/radio_text_plus.cpp
    ${CMAKE_CURRENT_LIST_DIR}/receiver_chain.cpp
    ${CMAKE_CURRENT_LIST_DIR}/signal_search.cpp
    ${CMAKE_CURRENT_LIST_DIR}/symbol_tracker.cpp
    ${CMAKE_CURRENT_LIST_DIR}/text_voter.cpp)
