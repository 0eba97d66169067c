// The raw bytes of one resource of a module.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>

struct ResourceBytes {
    const std::uint8_t* data = nullptr;  // null when the resource is not there
    std::size_t size = 0;
};

// The resource `id` of a type (RT_…) in a module; the test program's own when `module` is null.
[[nodiscard]] ResourceBytes FindBytes(LPCWSTR type, unsigned id, HMODULE module = nullptr);
