// The device's registry and storage card, for tests of the application's code in process.
#pragma once

#include <windows.h>

#include <regext.h>

#include <string>

#include "shell/settings_key.h"

namespace test {

// As long as it lives this process has a device registry and a device root of its own, with a card in.
class DeviceSettings {
  public:
    DeviceSettings() {
        const std::wstring mark = std::to_wstring(GetCurrentProcessId());
        m_stateKey = L"Software\\Kora Settings Test " + mark;
        SetEnvironmentVariableW(L"KORA_STATEKEY", m_stateKey.c_str());
        // The folder of the temporary files is one that exists; nothing but the card's folder is made in it.
        SetEnvironmentVariableW(L"KORA_DEVICEROOT", HostFolder().c_str());
        CreateDirectoryW(L"\\Storage Card", nullptr);
        PutCardIn(true);
    }
    ~DeviceSettings() {
        PutCardIn(true);
        RemoveDirectoryW(L"\\Storage Card");
        RegDeleteTreeW(HKEY_CURRENT_USER, m_stateKey.c_str());
        for (const WCHAR* name : {L"KORA_STATEKEY", L"KORA_DEVICEROOT", L"KORA_STORAGECARD"}) {
            SetEnvironmentVariableW(name, nullptr);
        }
    }
    DeviceSettings(const DeviceSettings&) = delete;
    DeviceSettings& operator=(const DeviceSettings&) = delete;

    // One of the radio's settings (kEnableMute …).
    void Set(const WCHAR* setting, DWORD value) const { WriteSetting(setting, value); }
    void PutCardIn(bool in) const { SetEnvironmentVariableW(L"KORA_STORAGECARD", in ? L"1" : L"0"); }

  private:
    static std::wstring HostFolder() {
        WCHAR folder[MAX_PATH] = L"";
        GetEnvironmentVariableW(L"TEMP", folder, MAX_PATH);
        return folder;
    }
    std::wstring m_stateKey;
};

}  // namespace test
