// A root of the device that no test has used: in the shared one a volume may be open, and cannot be deleted
// then.
#pragma once

#include <windows.h>

#include <string>

namespace test {

class UnusedRoot {
  public:
    UnusedRoot() {
        WCHAR root[MAX_PATH] = L"";
        GetEnvironmentVariableW(L"KORA_DEVICEROOT", root, MAX_PATH);
        m_before = root;
        const std::wstring own =
            L"\\Unused " + std::to_wstring(GetCurrentProcessId()) + L' ' + std::to_wstring(GetTickCount());
        CreateDirectoryW(own.c_str(), nullptr);
        SetEnvironmentVariableW(L"KORA_DEVICEROOT", (m_before + own).c_str());
    }
    ~UnusedRoot() { SetEnvironmentVariableW(L"KORA_DEVICEROOT", m_before.c_str()); }
    UnusedRoot(const UnusedRoot&) = delete;
    UnusedRoot& operator=(const UnusedRoot&) = delete;

  private:
    std::wstring m_before;
};

}  // namespace test
