// A handset of a test's own.
#include "tests/unit/aygshell/test_handset.h"

#include "handset/state/handset_protocol.h"

namespace test {

TestHandset::TestHandset()
    : m_stateKey(L"Software\\Kora Handset Test\\aygshell-" + std::to_wstring(GetCurrentProcessId())) {
    SetEnvironmentVariableW(L"KORA_STATEKEY", m_stateKey.c_str());
    SetScreen(240, 320);
}

TestHandset::~TestHandset() {
    // Not in the device's COREDLL, hence the host's own registry.
    RegDeleteTreeW(HKEY_CURRENT_USER, m_stateKey.c_str());
    SetEnvironmentVariableW(L"KORA_STATEKEY", nullptr);
}

void TestHandset::SetScreen(int width, int height) const {
    SetEnvironmentVariableW(L"KORA_SCREENWIDTH", std::to_wstring(width).c_str());
    SetEnvironmentVariableW(L"KORA_SCREENHEIGHT", std::to_wstring(height).c_str());
}

std::wstring TestHandset::HostKey(const wchar_t* rootName) const {
    return m_stateKey + L"\\Registry\\" + rootName;
}

void SendDisplayChange(HWND window) {
    SendMessageW(window, WM_SETTINGCHANGE, handset::kSettingChangeReset, 0);
}

std::string PlaceOf(HWND window) {
    RECT place = {};
    GetWindowRect(window, &place);
    return std::to_string(place.left) + "," + std::to_string(place.top) + " " +
           std::to_string(place.right - place.left) + "x" + std::to_string(place.bottom - place.top);
}

}  // namespace test
