# kora_amrnb: the AMR narrow-band encoder of opencore-amr as a static library, for the handset's DLLs and for this
# machine alike, from the distribution's source package. Needs the package dpkg-dev.
if(TARGET kora_amrnb)
    return()
endif()
execute_process(COMMAND ${CMAKE_CURRENT_LIST_DIR}/../scripts/source_packages.sh opencore-amr
    OUTPUT_VARIABLE KORA_AMR_SOURCE OUTPUT_STRIP_TRAILING_WHITESPACE RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "The AMR encoder's sources could not be made ready")
endif()
set(amr ${KORA_AMR_SOURCE}/opencore/codecs_v2/audio/gsm_amr)
file(GLOB KORA_AMR_FILES ${amr}/amr_nb/enc/src/*.cpp ${amr}/amr_nb/common/src/*.cpp)
# What the package's own build leaves out as well: other ways in, and what is there twice or not used.
list(FILTER KORA_AMR_FILES EXCLUDE REGEX
    "/(gsmamr_encoder_wrapper|bits2prm|copy|r_fft|vad2|common/src/(div_32|l_abs|vad1))\\.cpp$")
add_library(kora_amrnb STATIC ${KORA_AMR_SOURCE}/amrnb/wrapper.cpp ${KORA_AMR_FILES})
target_compile_definitions(kora_amrnb PRIVATE DISABLE_AMRNB_DECODER)
target_include_directories(kora_amrnb PRIVATE ${KORA_AMR_SOURCE}/oscl ${amr}/common/dec/include
    ${amr}/amr_nb/enc/src ${amr}/amr_nb/enc/include ${amr}/amr_nb/common/include ${amr}/amr_nb/dec/src
    ${amr}/amr_nb/dec/include)
target_include_directories(kora_amrnb SYSTEM INTERFACE ${KORA_AMR_SOURCE}/amrnb)
# Somebody else's code, of before C++17: its warnings are not ours to act on.
set_target_properties(kora_amrnb PROPERTIES CXX_STANDARD 11)
target_compile_options(kora_amrnb PRIVATE -w)
if(KORA_SANITIZE)
    target_compile_options(kora_amrnb PRIVATE -fsanitize=address -O1)
else()
    # Its arithmetic shifts negative numbers, as that of its time does: undefined, and not for us to trap. Nobody steps
    # through it either, and sound is to be encoded as fast as it comes.
    target_compile_options(kora_amrnb PRIVATE $<$<CONFIG:Debug>:-fno-sanitize=all -O2>)
endif()
