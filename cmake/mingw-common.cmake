# What both mingw toolchains share. The posix flavour carries std::mutex, which the handset's DLLs use.
set(CMAKE_C_COMPILER ${KORA_TRIPLE}-gcc-posix)
set(CMAKE_CXX_COMPILER ${KORA_TRIPLE}-g++-posix)
set(CMAKE_RC_COMPILER ${KORA_TRIPLE}-windres)
set(CMAKE_DLLTOOL ${KORA_TRIPLE}-dlltool)
set(CMAKE_FIND_ROOT_PATH /usr/${KORA_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
# No library is linked unless a target names it.
set(CMAKE_C_STANDARD_LIBRARIES "" CACHE STRING "" FORCE)
set(CMAKE_CXX_STANDARD_LIBRARIES "" CACHE STRING "" FORCE)
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../scripts/wine-run)
