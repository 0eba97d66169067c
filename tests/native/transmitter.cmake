# The transmitter's sources under the sanitizers, for the tests of the receiver too.
include(${CMAKE_SOURCE_DIR}/handset/transmitter/portable.cmake)
add_library(transmitter STATIC ${TRANSMITTER_SOURCES})
target_include_directories(transmitter PUBLIC ${CMAKE_SOURCE_DIR})
# Optimised: a second of air is a million samples.
target_compile_options(transmitter PRIVATE -O2)
target_link_libraries(transmitter PUBLIC kora_flags)
