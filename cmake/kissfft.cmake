# kora_kissfft: the Fourier transform of kissfft in single precision as a static library, for the handset's DLLs and
# for this machine alike, from the distribution's source package. Needs the package dpkg-dev.
if(TARGET kora_kissfft)
    return()
endif()
execute_process(COMMAND ${CMAKE_CURRENT_LIST_DIR}/../scripts/source_packages.sh kissfft
    OUTPUT_VARIABLE KORA_KISSFFT_SOURCE OUTPUT_STRIP_TRAILING_WHITESPACE RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "The Fourier transform's sources could not be made ready")
endif()
add_library(kora_kissfft STATIC ${KORA_KISSFFT_SOURCE}/kiss_fft.c)
target_compile_definitions(kora_kissfft PUBLIC kiss_fft_scalar=float)
target_include_directories(kora_kissfft SYSTEM PUBLIC ${KORA_KISSFFT_SOURCE})
# Somebody else's code: its warnings are not ours to act on. Nobody steps through it either.
target_compile_options(kora_kissfft PRIVATE -w $<$<CONFIG:Debug>:-fno-sanitize=all -O2>)
if(KORA_SANITIZE)
    target_compile_options(kora_kissfft PRIVATE -fsanitize=address)
endif()
