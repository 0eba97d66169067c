# The phone's own UI.exe (./kora device): its file as the loader would read it, and its start, some keys and its end in
# an emulated processor. And what makes the file, on small inputs.
find_library(KORA_UNICORN unicorn REQUIRED)
add_executable(native_device
    ../device/calls_drawing.cpp
    ../device/calls_kernel.cpp
    ../device/calls_runtime.cpp
    ../device/calls_shell.cpp
    ../device/calls_store.cpp
    ../device/calls_windows.cpp
    ../device/converter_test.cpp
    ../device/disassembly.cpp
    ../device/guard_test.cpp
    ../device/machine.cpp
    ../device/phone.cpp
    ../device/program_file.cpp
    ../device/program_test.cpp
    ../device/refusal_test.cpp
    ../device/setup_test.cpp
    ../device/start_test.cpp
    ../device/thrown_test.cpp
    ${CMAKE_SOURCE_DIR}/device/pe/elf_image.cpp
    ${CMAKE_SOURCE_DIR}/device/pe/functions.cpp
    ${CMAKE_SOURCE_DIR}/device/pe/imports.cpp
    ${CMAKE_SOURCE_DIR}/device/pe/program.cpp
    ${CMAKE_SOURCE_DIR}/device/pe/resources.cpp)
target_include_directories(native_device PRIVATE ${CMAKE_SOURCE_DIR})
target_compile_definitions(native_device PRIVATE KORA_SOURCE_DIR="${CMAKE_SOURCE_DIR}"
    KORA_DEVICE_BUILD="${CMAKE_SOURCE_DIR}/build/device"
    KORA_DEVICE_PROGRAM="${CMAKE_SOURCE_DIR}/build/device/UI.exe"
    KORA_DEVICE_THROWN="${CMAKE_SOURCE_DIR}/build/device/Thrown.exe"
    KORA_DEVICE_ELF="${CMAKE_SOURCE_DIR}/build/device/UI.elf")
target_compile_options(native_device PRIVATE -O1)
target_link_libraries(native_device PRIVATE kora_flags GTest::gmock_main ${KORA_UNICORN})
add_test(NAME native_device COMMAND native_device)
set_tests_properties(native_device PROPERTIES TIMEOUT 300)
