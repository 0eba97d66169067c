// A device of a test's own, without a channel volume: its root is the temporary folder, its state a key of
// its own. For code that is built as the application is.
#pragma once

#include <windows.h>

namespace test {

class OwnDevice {
  public:
    explicit OwnDevice(const WCHAR* stateKey) {
        WCHAR folder[MAX_PATH] = L"";
        ::GetEnvironmentVariableW(L"TEMP", folder, MAX_PATH);
        SetEnvironmentVariableW(L"KORA_DEVICEROOT", folder);
        SetEnvironmentVariableW(L"KORA_STATEKEY", stateKey);
        DeleteFileW(L"\\KORA.vol");
    }
    ~OwnDevice() {
        DeleteFileW(L"\\KORA.vol");
        SetEnvironmentVariableW(L"KORA_DEVICEROOT", nullptr);
        SetEnvironmentVariableW(L"KORA_STATEKEY", nullptr);
    }
    OwnDevice(const OwnDevice&) = delete;
    OwnDevice& operator=(const OwnDevice&) = delete;
};

}  // namespace test
