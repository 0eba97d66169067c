// The device's files, as the tuner device reads and writes them on the host.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace fm {

// The host path of a device path; empty while the path lies on a storage card that is out.
[[nodiscard]] std::wstring ReachableHostPath(const std::wstring& devicePath);
// The whole file, if it is there and holds at most `limit` bytes.
[[nodiscard]] std::optional<std::vector<std::uint8_t>> ReadHostFile(const std::wstring& hostPath,
                                                                    std::size_t limit);

}  // namespace fm
