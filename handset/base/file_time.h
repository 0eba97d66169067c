// A FILETIME and one number for the same: 100 ns each since the beginning of 1601.
#pragma once

#include <windows.h>

#include <cstdint>

namespace handset {

[[nodiscard]] constexpr std::uint64_t Ticks(const FILETIME& time) {
    return std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
}

[[nodiscard]] constexpr FILETIME FileTime(std::uint64_t ticks) {
    return {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
}

}  // namespace handset
