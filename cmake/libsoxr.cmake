# kora_soxr: the resampler out of libsoxr as a static library, for the handset's DLLs and for this machine alike, from
# the distribution's source package. Needs the package dpkg-dev.
if(TARGET kora_soxr)
    return()
endif()
execute_process(COMMAND ${CMAKE_CURRENT_LIST_DIR}/../scripts/source_packages.sh libsoxr
    OUTPUT_VARIABLE KORA_SOXR_SOURCE OUTPUT_STRIP_TRAILING_WHITESPACE RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "The resampler's sources could not be made ready")
endif()
# What the package's own build would find out; of its engines those in single precision, for a constant rate (the
# processor's vectors where it has them) and for a variable one.
set(HAVE_FENV_H ON)
set(HAVE_STDBOOL_H ON)
set(HAVE_STDINT_H ON)
set(HAVE_LRINT ON)
set(WITH_CR32 ON)
set(WITH_CR32S ON)
set(WITH_PFFFT ON)
set(WITH_VR32 ON)
configure_file(${KORA_SOXR_SOURCE}/soxr-config.h.in ${CMAKE_BINARY_DIR}/libsoxr/soxr-config.h)
set(KORA_SOXR_UNITS soxr data-io vr32 cr cr32 cr32s dbesi0 fft4g32 fft4g64 filter pffft32s util32s)
list(TRANSFORM KORA_SOXR_UNITS REPLACE "(.+)" "${KORA_SOXR_SOURCE}/src/\\1.c")
add_library(kora_soxr STATIC ${KORA_SOXR_UNITS})
target_compile_definitions(kora_soxr PRIVATE SOXR_LIB)
target_include_directories(kora_soxr PRIVATE ${CMAKE_BINARY_DIR}/libsoxr)
target_include_directories(kora_soxr SYSTEM INTERFACE ${KORA_SOXR_SOURCE}/src)
# Somebody else's code: its warnings are not ours to act on. Nobody steps through it, and sound is to come in time.
target_compile_options(kora_soxr PRIVATE -w $<$<CONFIG:Debug>:-fno-sanitize=all -O2>)
if(KORA_SANITIZE)
    target_compile_options(kora_soxr PRIVATE -fsanitize=address)
endif()
