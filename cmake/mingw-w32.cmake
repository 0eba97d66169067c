# Toolchain with the device's word size: the application is compiled with it, to hold its structures to
# the sizes that 32 bits give. Nothing is linked.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(KORA_TRIPLE i686-w64-mingw32)
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-common.cmake)
