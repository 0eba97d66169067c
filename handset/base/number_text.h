// Numbers as people write them into the registry, the environment and the command line. Portable.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace handset {

// A whole decimal or 0x… number and nothing around it; nothing for any other text.
[[nodiscard]] std::optional<std::uint64_t> ParseNumber(const std::wstring& text);

}  // namespace handset
