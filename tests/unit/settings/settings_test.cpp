#include "tests/unit/settings/settings_test.h"

#include <regext.h>

namespace test {

SettingsTest::SettingsTest() {
    g_app = {};
    g_app.hInstance = GetModuleHandleW(nullptr);
    g_app.pFMDevice = &device;
}

SettingsTest::~SettingsTest() {
    if (dialog != nullptr) DestroyWindow(dialog);
    g_app = {};
}

void SettingsTest::Open(UINT templateId) {
    const HMODULE module = GetModuleHandleW(nullptr);
    const HRSRC resource = FindResourceW(module, MAKEINTRESOURCEW(templateId), RT_DIALOG);
    dialog = CreateDialogIndirectParamW(module, static_cast<LPCDLGTEMPLATEW>(LoadResource(module, resource)),
                                        nullptr, SettingsProc, 0);
    ASSERT_NE(dialog, nullptr);
}

void SettingsTest::Click(int id) const {
    SendMessageW(GetDlgItem(dialog, id), BM_CLICK, 0, 0);
}

void SettingsTest::Notify(int id) const {
    SendMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(id), 0);
}

bool SettingsTest::Checked(int id) const {
    return SendDlgItemMessageW(dialog, id, BM_GETCHECK, 0, 0) == BST_CHECKED;
}

bool SettingsTest::Enabled(int id) const {
    return IsWindowEnabled(GetDlgItem(dialog, id));
}

std::wstring SettingsTest::Text(int id) const {
    WCHAR text[300] = L"";
    GetDlgItemTextW(dialog, id, text, 300);
    return text;
}

std::string SettingsTest::CheckedOf(std::initializer_list<int> ids) const {
    std::string checked;
    for (const int id : ids) {
        if (Checked(id)) checked += (checked.empty() ? "" : " ") + std::to_string(id);
    }
    return checked;
}

std::string SettingsTest::Stored(const WCHAR* value) {
    DWORD data = 0;
    const HRESULT result = RegistryGetDWORD(HKEY_CLASSES_ROOT, kSettingsKey, value, &data);
    return SUCCEEDED(result) ? std::to_string(data) : "(missing)";
}

std::wstring SettingsTest::StoredText(const WCHAR* value) {
    WCHAR text[300] = L"";
    const HRESULT result = RegistryGetString(HKEY_CLASSES_ROOT, kSettingsKey, value, text, 300);
    return SUCCEEDED(result) ? text : L"(missing)";
}

void SettingsTest::StoreText(const WCHAR* value, const std::wstring& text) {
    RegistrySetString(HKEY_CLASSES_ROOT, kSettingsKey, value, text.c_str());
}

}  // namespace test
