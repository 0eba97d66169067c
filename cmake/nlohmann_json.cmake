# kora_json: the JSON library of the distribution's package nlohmann-json3-dev, which is headers alone; for the handset's
# programs and for this machine alike. The headers are copied: in a build for Windows nothing else of the folder in which
# they lie may be seen.
if(TARGET kora_json)
    return()
endif()
set(KORA_JSON_HEADERS /usr/include/nlohmann)
if(NOT EXISTS ${KORA_JSON_HEADERS}/json.hpp)
    message(FATAL_ERROR "The headers of the package nlohmann-json3-dev are missing")
endif()
file(COPY ${KORA_JSON_HEADERS} DESTINATION ${CMAKE_BINARY_DIR}/json)
add_library(kora_json INTERFACE)
target_include_directories(kora_json SYSTEM INTERFACE ${CMAKE_BINARY_DIR}/json)
