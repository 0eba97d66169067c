// Whole files.
#include "handset/controls/encoding.h"

#include <windows.h>

#include "handset/base/owned.h"

namespace panel {

std::optional<std::string> ReadWholeFile(const std::wstring& path) {
    const handset::OwnedHandle file(handset::Opened(
        CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr)));
    LARGE_INTEGER size = {};
    if (!file || !GetFileSizeEx(file.get(), &size)) return std::nullopt;
    std::string bytes(static_cast<std::size_t>(size.QuadPart), '\0');
    DWORD read = 0;
    if (!ReadFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr)) {
        return std::nullopt;
    }
    bytes.resize(read);
    return bytes;
}

namespace {

constexpr int kReplaceTries = 500;
constexpr DWORD kReplaceRetry_ms = 3;

bool Fill(const std::wstring& path, const std::string& bytes) {
    const handset::OwnedHandle file(handset::Opened(
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr)));
    DWORD written = 0;
    return file && WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) &&
           written == bytes.size();
}

// A reader that does not let go of the old file is waited for.
bool TakesPlaceOf(const std::wstring& fresh, const std::wstring& path) {
    for (int i = 0; i < kReplaceTries; ++i) {
        if (MoveFileExW(fresh.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING)) return true;
        const DWORD error = GetLastError();
        if (error != ERROR_SHARING_VIOLATION && error != ERROR_ACCESS_DENIED) return false;
        if (GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES) return false;
        Sleep(kReplaceRetry_ms);
    }
    return false;
}

}  // namespace

bool WriteWholeFile(const std::wstring& path, const std::string& bytes) {
    // Under a name that nobody else writes to, and then in the place of the old one: whoever reads the file
    // finds one of them whole.
    const std::wstring fresh = path + L"." + std::to_wstring(GetCurrentThreadId()) + L".new";
    if (Fill(fresh, bytes) && TakesPlaceOf(fresh, path)) return true;
    const handset::CKeptLastError kept;
    DeleteFileW(fresh.c_str());
    return false;
}

}  // namespace panel
