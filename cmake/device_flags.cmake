# How the application is compiled for the phone. The C and platform headers are mingw's below the device's own
# (handset/include), the C++ headers those of its compiler, told by device/include that there are neither threads nor a
# C99 library.
execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-resource-dir OUTPUT_VARIABLE KORA_CLANG_FOLDER
    OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND x86_64-w64-mingw32-g++-posix -print-file-name=include/c++ OUTPUT_VARIABLE KORA_CXX_HEADERS
    OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND x86_64-w64-mingw32-g++-posix -print-sysroot OUTPUT_VARIABLE KORA_MINGW_SYSROOT
    OUTPUT_STRIP_TRAILING_WHITESPACE)
find_path(KORA_C_HEADERS winnt.h PATHS /usr/share/mingw-w64/include ${KORA_MINGW_SYSROOT}/include
    /usr/x86_64-w64-mingw32/include NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH REQUIRED)

add_library(kora_app_flags INTERFACE)
target_compile_features(kora_app_flags INTERFACE cxx_std_17)
target_compile_options(kora_app_flags INTERFACE
    -marm -mfloat-abi=soft -fno-pic
    # Types as the device's compiler lays them out.
    -fshort-wchar -fno-short-enums -mms-bitfields -fms-extensions
    # The console is the device's printf; the compiler would make a puts of plain texts.
    -fno-builtin-printf
    -fexceptions -ffunction-sections -fdata-sections -fvisibility=hidden
    -Wall -Wextra -Wshadow -Wswitch-enum -Werror
    # The platform headers speak to another compiler; the calling conventions are one on this processor.
    -Wno-ignored-attributes -Wno-unknown-pragmas -Wno-unused-command-line-argument -Wno-pragma-pack
    -nostdinc $<$<COMPILE_LANGUAGE:CXX>:-nostdinc++>)
target_compile_definitions(kora_app_flags INTERFACE
    _WIN32 WIN32 __MINGW32__ _M_ARM UNDER_CE __USE_MINGW_ANSI_STDIO=0 UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN
    # The header asks for this by the processors that it knows.
    _ALLOCA_S_MARKER_SIZE=8
    _WIN32_WINNT=0x0600 __stdcall= __cdecl= __fastcall= __thiscall= _stdcall= _cdecl=)
target_include_directories(kora_app_flags INTERFACE ${CMAKE_SOURCE_DIR} ${CMAKE_SOURCE_DIR}/handset/include
    ${CMAKE_SOURCE_DIR}/device/include)
target_compile_options(kora_app_flags INTERFACE
    "SHELL:-isystem ${KORA_CXX_HEADERS}" "SHELL:-isystem ${KORA_CXX_HEADERS}/x86_64-w64-mingw32"
    "SHELL:-isystem ${KORA_CLANG_FOLDER}/include" "SHELL:-isystem ${KORA_C_HEADERS}")
