# The receiver of what is on the air: portable sources alone, which the sanitizers' build shares.
set(SDR_SOURCES
    ${CMAKE_CURRENT_LIST_DIR}/audio_filter.cpp
    ${CMAKE_CURRENT_LIST_DIR}/band_scan.cpp
    ${CMAKE_CURRENT_LIST_DIR}/channel_filter.cpp
    ${CMAKE_CURRENT_LIST_DIR}/channelizer.cpp
    ${CMAKE_CURRENT_LIST_DIR}/clock_bridge.cpp
    ${CMAKE_CURRENT_LIST_DIR}/discriminator.cpp
    ${CMAKE_CURRENT_LIST_DIR}/fir_design.cpp
    ${CMAKE_CURRENT_LIST_DIR}/fourier.cpp
    ${CMAKE_CURRENT_LIST_DIR}/iq_file.cpp
    ${CMAKE_CURRENT_LIST_DIR}/kernels.cpp
    ${CMAKE_CURRENT_LIST_DIR}/kernels_avx2.cpp
    ${CMAKE_CURRENT_LIST_DIR}/kernels_plain.cpp
    ${CMAKE_CURRENT_LIST_DIR}/pilot_loop.cpp
    ${CMAKE_CURRENT_LIST_DIR}/receiver.cpp
    ${CMAKE_CURRENT_LIST_DIR}/rtl_tcp_protocol.cpp
    ${CMAKE_CURRENT_LIST_DIR}/sample_form.cpp
    ${CMAKE_CURRENT_LIST_DIR}/sigmf.cpp
    ${CMAKE_CURRENT_LIST_DIR}/signal_meter.cpp
    ${CMAKE_CURRENT_LIST_DIR}/stereo_decoder.cpp
    ${CMAKE_CURRENT_LIST_DIR}/tuning.cpp)
# The one source whose code is for certain processors alone. On Windows the stack is aligned to 16 bytes only, so what is
# kept there must be moved as if it were not aligned at all.
if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64")
    set(SDR_AVX2_OPTIONS -mavx2 -mfma)
    if(WIN32)
        list(APPEND SDR_AVX2_OPTIONS -Wa,-muse-unaligned-vector-move)
    endif()
    set_source_files_properties(${CMAKE_CURRENT_LIST_DIR}/kernels_avx2.cpp PROPERTIES
        COMPILE_OPTIONS "${SDR_AVX2_OPTIONS}")
endif()
