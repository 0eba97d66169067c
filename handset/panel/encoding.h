// Text between UTF-8 (files, pipes) and UTF-16 (the system's calls), and whole files.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace panel {

std::string Utf8(const std::wstring& text);
std::wstring Wide(const std::string& utf8);

// A whole decimal or 0x… number and nothing after it; nothing for any other text.
std::optional<std::uint64_t> ParseNumber(const std::wstring& text);

// The bytes of a host file; nothing when it cannot be read. Other processes may be writing to it.
std::optional<std::string> ReadWholeFile(const std::wstring& path);
bool WriteWholeFile(const std::wstring& path, const std::string& bytes);

}  // namespace panel
