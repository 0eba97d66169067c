# The one place for compiler flags. kora_flags: everything of ours. kora_app_flags: the application, which
# sees the device's headers first. kora_host_flags: the handset's DLLs, which see the desktop's own.
add_library(kora_flags INTERFACE)
target_compile_features(kora_flags INTERFACE cxx_std_17)
target_compile_options(kora_flags INTERFACE
    -Wall -Wextra -Wshadow -Wswitch-enum -Werror
    $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor -Woverloaded-virtual>
    -fvisibility=hidden)
if(KORA_SANITIZE)
    target_compile_options(kora_flags INTERFACE -fsanitize=address,undefined -fno-omit-frame-pointer
        -fno-sanitize-recover=all)
    target_link_options(kora_flags INTERFACE -fsanitize=address,undefined)
endif()

if(WIN32)
    # Wide printf formats follow the Microsoft rules: %s is a wide string.
    target_compile_definitions(kora_flags INTERFACE UNICODE _UNICODE __USE_MINGW_ANSI_STDIO=0
        WIN32_LEAN_AND_MEAN NOMINMAX)

    # Sections begin on a page of the file, so that the loader maps them and only what is used takes memory; else it
    # reads a program into memory whole, images and all.
    set(KORA_LINK_MAPPED -Wl,--file-alignment=4096)
    target_link_options(kora_flags INTERFACE ${KORA_LINK_MAPPED})

    add_library(kora_app_flags INTERFACE)
    target_link_libraries(kora_app_flags INTERFACE kora_flags)
    # SYSTEM would put the folder behind the compiler's own; the device's windows.h must come first.
    target_include_directories(kora_app_flags INTERFACE ${CMAKE_SOURCE_DIR} ${CMAKE_SOURCE_DIR}/handset/include)
    target_compile_definitions(kora_app_flags INTERFACE _WIN32_WINNT=0x0600)
    # The console is the device's printf; the compiler would make a puts of the runtime out of plain texts.
    target_compile_options(kora_app_flags INTERFACE -fno-builtin-printf)

    add_library(kora_host_flags INTERFACE)
    target_link_libraries(kora_host_flags INTERFACE kora_flags)
    target_include_directories(kora_host_flags INTERFACE ${CMAKE_SOURCE_DIR})
    target_compile_definitions(kora_host_flags INTERFACE _WIN32_WINNT=0x0601)
    # The handset's programs carry the C++ runtime in themselves: nothing else has to be installed.
    target_link_options(kora_host_flags INTERFACE -static)
endif()
