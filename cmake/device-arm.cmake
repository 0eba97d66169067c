# Toolchain for the phone itself: clang for an ARMv4T without operating system, whose objects lld joins and a converter
# of ours makes a Windows CE program of (see docs/device.md).
set(CMAKE_SYSTEM_NAME Generic)
set(CMAKE_SYSTEM_PROCESSOR armv4t)
set(CMAKE_C_COMPILER clang)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_C_COMPILER_TARGET armv4t-none-eabi)
set(CMAKE_CXX_COMPILER_TARGET armv4t-none-eabi)
# Nothing can be linked before the import stubs are there.
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
set(KORA_DEVICE ON)
