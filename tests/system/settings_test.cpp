// The settings of the running radio, worked with the stylus and read back from the device's registry.
#include "resources/resource_ids.h"
#include "tests/support/dialog.h"
#include "tests/support/tuner_contract.h"
#include "tests/system/radio_test.h"

namespace {

using test::ControlPlace;
using test::ControlText;
using test::IsChecked;
using test::IsEnabled;
using test::Radio;
using test::RunProgram;
using test::TapControl;
using test::WaitFor;

class Settings : public test::RadioTest {
  protected:
    HWND Open(Radio& radio) {
        radio.WaitUntilShown();
        radio.Command(IDC_SETTINGS);
        const HWND dialog = radio.WaitForBox(nullptr);
        EXPECT_NE(dialog, nullptr);
        // The radio answers again once the dialog stands.
        WaitFor([&] { return IsChecked(dialog, IDC_SAVE_DEFAULT) || IsChecked(dialog, IDC_SAVE_DEFINED); });
        return dialog;
    }
    void ExpectTapStores(HWND dialog, int id, const wchar_t* value, std::uint32_t expected) {
        TapControl(dialog, id);
        EXPECT_TRUE(WaitFor([&] { return handset.RegistryNumber(test::kRadioSettings, value) == expected; }))
            << id << " did not store " << expected;
    }
    void Turn(const wchar_t* orientation) {
        EXPECT_EQ(RunProgram(L"handset.exe", std::wstring(L"orientation ") + orientation), 0u);
    }
    // The save-file dialog, answered with `typed` and a button.
    void AnswerFileDialog(Radio& radio, HWND settings, const WCHAR* typed, int button) {
        TapControl(settings, IDC_SAVE_BROWSE);
        HWND dialog = nullptr;
        ASSERT_TRUE(WaitFor([&] {
            dialog = FileDialog(radio, settings);
            return dialog != nullptr && IsWindowVisible(dialog);
        }));
        constexpr int kFileName = 0x47C;  // a combo box
        SendMessageW(GetDlgItem(dialog, kFileName), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(typed));
        PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0);
        ASSERT_TRUE(WaitFor([&] { return !IsWindow(dialog); }));
    }
    static HWND FileDialog(Radio& radio, HWND settings) {
        for (HWND box = FindWindowExW(nullptr, nullptr, L"#32770", nullptr); box != nullptr;
             box = FindWindowExW(nullptr, box, L"#32770", nullptr)) {
            DWORD process = 0;
            GetWindowThreadProcessId(box, &process);
            if (process == radio.ProcessId() && box != settings && GetWindow(box, GW_OWNER) == settings)
                return box;
        }
        return nullptr;
    }
};

TEST_F(Settings, EveryTapIsStoredAtOnceUnderItsName) {
    Radio radio(handset);
    const HWND dialog = Open(radio);
    ExpectTapStores(dialog, IDC_RECORD_WAV_STEREO, L"RecordAudioType", 2);
    ExpectTapStores(dialog, IDC_RECORD_WAV, L"RecordAudioType", 1);
    ExpectTapStores(dialog, IDC_RECORD_AMR, L"RecordAudioType", 0);
    ExpectTapStores(dialog, IDC_SAVE_DEFINED, L"SaveFileType", 1);
    EXPECT_TRUE(WaitFor([&] { return IsEnabled(dialog, IDC_SAVE_BROWSE); }));
    ExpectTapStores(dialog, IDC_SAVE_DEFAULT, L"SaveFileType", 0);
    EXPECT_TRUE(WaitFor([&] { return !IsEnabled(dialog, IDC_SAVE_BROWSE); }));
    ExpectTapStores(dialog, IDC_MUTE_WEAK, L"EnableMute", 1);
    ExpectTapStores(dialog, IDC_SHOW_RDS, L"EnableRDSPSPTY", 1);
    ExpectTapStores(dialog, IDC_AF_SWITCH, L"EnableAFAutoSwitch", 1);
    ExpectTapStores(dialog, IDC_SHOW_RDS, L"EnableRDSPSPTY", 0);
    radio.Answer(dialog, IDC_SETTINGS_DONE);
    EXPECT_TRUE(WaitFor([&] { return radio.Box(nullptr) == nullptr; }));
    EXPECT_TRUE(radio.Runs());
}

TEST_F(Settings, WhatWasStoredIsShownWhenTheDialogIsOpenedAgainAndAfterARestart) {
    handset.SetRegistry(test::kRadioSettings, L"EnableRDSPSPTY", 0u);
    {
        Radio radio(handset);
        const HWND dialog = Open(radio);
        ExpectTapStores(dialog, IDC_RECORD_WAV, L"RecordAudioType", 1);
        ExpectTapStores(dialog, IDC_AF_SWITCH, L"EnableAFAutoSwitch", 1);
        radio.Answer(dialog, IDC_SETTINGS_CANCEL);
        ASSERT_TRUE(WaitFor([&] { return radio.Box(nullptr) == nullptr; }));
        const HWND again = Open(radio);
        EXPECT_TRUE(IsChecked(again, IDC_RECORD_WAV));
        EXPECT_TRUE(IsChecked(again, IDC_AF_SWITCH));
    }
    Radio radio(handset);
    const HWND dialog = Open(radio);
    EXPECT_TRUE(IsChecked(dialog, IDC_RECORD_WAV));
    EXPECT_FALSE(IsChecked(dialog, IDC_RECORD_AMR));
    EXPECT_TRUE(IsChecked(dialog, IDC_AF_SWITCH));
    EXPECT_FALSE(IsChecked(dialog, IDC_SHOW_RDS));
}

TEST_F(Settings, AChosenFileIsStoredAsAPathOfTheDevice) {
    Radio radio(handset);
    const HWND dialog = Open(radio);
    ExpectTapStores(dialog, IDC_SAVE_DEFINED, L"SaveFileType", 1);
    AnswerFileDialog(radio, dialog, L"Today.", IDOK);
    EXPECT_TRUE(WaitFor(
        [&] { return handset.RegistryText(test::kRadioSettings, L"DefineFileName") == L"\\Today."; }));
    EXPECT_TRUE(WaitFor([&] { return ControlText(dialog, IDC_SAVE_FILE_NAME) == L"\\Today."; }));
}

TEST_F(Settings, CancellingTheFileDialogKeepsTheNameAndThePlace) {
    handset.SetRegistry(test::kRadioSettings, L"DefineFileName", std::wstring(L"\\Before."));
    Radio radio(handset);
    const HWND dialog = Open(radio);
    ExpectTapStores(dialog, IDC_SAVE_DEFINED, L"SaveFileType", 1);
    AnswerFileDialog(radio, dialog, L"Other.", IDCANCEL);
    EXPECT_EQ(ControlText(dialog, IDC_SAVE_FILE_NAME), L"\\Before.");
    EXPECT_EQ(handset.RegistryText(test::kRadioSettings, L"DefineFileName"), L"\\Before.");
    EXPECT_EQ(handset.RegistryNumber(test::kRadioSettings, L"SaveFileType"), 1u);
}

TEST_F(Settings, TurningTheDeviceWhileTheDialogIsOpenMovesItsControls) {
    Radio radio(handset);
    const HWND dialog = Open(radio);
    const std::string upright = ControlPlace(dialog, IDC_SAVE_DEFAULT);
    Turn(L"landscape");
    // From below the formats to their right.
    EXPECT_TRUE(WaitFor([&] { return std::stoi(ControlPlace(dialog, IDC_SAVE_DEFAULT)) > 120; }))
        << ControlPlace(dialog, IDC_SAVE_DEFAULT);
    // Nothing of the other layout's frames is left between the last format and the foot of its frame.
    RECT format = {}, frame = {};
    GetWindowRect(GetDlgItem(dialog, IDC_RECORD_WAV_STEREO), &format);
    GetWindowRect(GetDlgItem(dialog, IDC_LABEL), &frame);
    MapWindowPoints(nullptr, radio.Window(), reinterpret_cast<POINT*>(&format), 2);
    MapWindowPoints(nullptr, radio.Window(), reinterpret_cast<POINT*>(&frame), 2);
    ASSERT_GT(frame.bottom, format.bottom + 6);
    EXPECT_TRUE(WaitFor([&] {
        const COLORREF ground = radio.Pixel(60, format.bottom + 2);
        for (LONG y = format.bottom + 3; y < frame.bottom - 4; ++y) {
            if (radio.Pixel(60, y) != ground) return false;
        }
        return true;
    }));
    Turn(L"portrait");
    EXPECT_TRUE(WaitFor([&] { return ControlPlace(dialog, IDC_SAVE_DEFAULT) == upright; }));
}

TEST_F(Settings, OnAScreenOnItsSideTheDialogOpensInItsOtherLayout) {
    handset.SetState(L"ScreenWidth", 320);
    handset.SetState(L"ScreenHeight", 240);
    Radio radio(handset);
    const HWND dialog = Open(radio);
    RECT client = {};
    GetClientRect(dialog, &client);
    EXPECT_EQ(client.right, 320);
    RECT place = {};
    GetWindowRect(GetDlgItem(dialog, IDC_SAVE_FILE_NAME), &place);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
    EXPECT_GT(place.left, 160);
}

}  // namespace
