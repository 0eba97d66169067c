// A settings dialog on a handset of the test's own, with a tuner device that writes down its calls.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "resources/resource_ids.h"
#include "shell/app_block.h"
#include "shell/settings_dialog.h"
#include "shell/settings_key.h"
#include "tests/support/fake_fm_device.h"
#include "tests/unit/aygshell/test_handset.h"

namespace test {

class SettingsTest : public testing::Test {
  protected:
    SettingsTest();
    ~SettingsTest() override;

    // Opens the dialog without waiting for its end.
    void Open(UINT templateId = IDD_SETTINGS_PORTRAIT);
    // A tap on a control: it takes its new state and tells the dialog.
    void Click(int id) const;
    // The notification alone, as if the control had not changed.
    void Notify(int id) const;
    bool Checked(int id) const;
    bool Enabled(int id) const;
    std::wstring Text(int id) const;
    // Ids of the buttons of the row that are checked.
    std::string CheckedOf(std::initializer_list<int> ids) const;

    // Values of the settings key; "(missing)" when they are not there.
    static std::string Stored(const WCHAR* value);
    static std::wstring StoredText(const WCHAR* value);
    static void StoreText(const WCHAR* value, const std::wstring& text);

    TestHandset handset;
    FakeFMDevice device;
    HWND dialog = nullptr;
};

}  // namespace test
