#include "tests/support/handset_here.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "handset/state/handset_state.h"

namespace test {
namespace {

std::wstring NameOf(const std::wstring& family, DWORD processId, int number) {
    return family + L'-' + std::to_wstring(processId) + L'-' + std::to_wstring(number);
}

std::wstring NextName(const std::wstring& family) {
    static int number = 0;
    return NameOf(family, GetCurrentProcessId(), ++number);
}

std::wstring KeyOf(const std::wstring& name) {
    return L"Software\\Kora Handset Test\\" + name;
}

std::wstring RootOf(const std::wstring& name) {
    wchar_t folder[MAX_PATH] = L"";
    GetTempPathW(MAX_PATH, folder);
    return folder + name;
}

}  // namespace

std::string Bytes(const std::wstring& hostPath) {
    const HANDLE file = CreateFileW(hostPath.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                    nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return "";
    // Piece by piece: a file that grows meanwhile has at least what its header, read first, says.
    std::string bytes;
    char piece[65536];
    DWORD read = 0;
    while (ReadFile(file, piece, sizeof piece, &read, nullptr) && read > 0) bytes.append(piece, read);
    CloseHandle(file);
    return bytes;
}

void WriteBytes(const std::wstring& hostPath, const std::string& bytes) {
    const HANDLE file =
        CreateFileW(hostPath.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS, 0, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    DWORD written = 0;
    WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    CloseHandle(file);
}

HandsetHere::HandsetHere(const std::wstring& family) : m_name(NextName(family)), m_root(RootOf(m_name)) {
    // Numbers of processes come again: an earlier run may have ended here without cleaning up.
    Forget(m_name);
    SetEnvironmentVariableW(L"KORA_STATEKEY", KeyOf(m_name).c_str());
    if (GetEnvironmentVariableW(L"KORA_HOSTSOUND", nullptr, 0) == 0)
        SetEnvironmentVariableW(L"KORA_HOSTSOUND", L"0");
    std::filesystem::create_directories(m_root + L"\\Windows");
    handset::SetStateString(L"DeviceRoot", m_root);
}

HandsetHere::~HandsetHere() {
    Forget(m_name);
}

std::wstring HandsetHere::FirstNameIn(const std::wstring& family, DWORD processId) {
    return NameOf(family, processId, 1);
}

void HandsetHere::Forget(const std::wstring& name) {
    RegDeleteTreeW(HKEY_CURRENT_USER, KeyOf(name).c_str());
    std::error_code ignored;
    std::filesystem::remove_all(RootOf(name), ignored);
}

}  // namespace test
