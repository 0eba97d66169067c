// The device's files, as the tuner device reads and writes them on the host.
#include "handset/fmdevice/band/host_file.h"

#include "handset/base/owned.h"
#include "handset/state/handset_state.h"

namespace fm {

std::wstring ReachableHostPath(const std::wstring& devicePath) {
    const handset::CDevicePath path = handset::OnDevice(devicePath.c_str());
    return path ? path.host() : L"";
}

std::optional<std::vector<std::uint8_t>> ReadHostFile(const std::wstring& hostPath, std::size_t limit) {
    const handset::OwnedHandle file(handset::Opened(
        CreateFileW(hostPath.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, 0, nullptr)));
    LARGE_INTEGER size;
    if (!file || !GetFileSizeEx(file.get(), &size)) return std::nullopt;
    if (size.QuadPart > static_cast<LONGLONG>(limit)) return std::nullopt;
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(size.QuadPart));
    DWORD read = 0;
    if (!ReadFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr))
        return std::nullopt;
    bytes.resize(read);
    return bytes;
}

}  // namespace fm
