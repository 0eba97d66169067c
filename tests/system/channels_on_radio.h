// What the system tests of the stored channels share: a volume built from presets, and its contents read
// back.
#pragma once

#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "tests/support/hand.h"
#include "tests/support/remote_list.h"
#include "tests/support/tuner_contract.h"
#include "tests/system/radio_test.h"

namespace test {

class ChannelsOnRadio : public RadioTest {
  protected:
    // A preset group; its channels get numbers from 1.
    struct Preset {
        std::wstring name;
        std::uint32_t value;
        std::wstring guide;
    };
    void SetPresets(const std::wstring& subkey, const std::wstring& group,
                    const std::vector<Preset>& channels) const {
        const std::wstring key = L"HKCU\\Software\\Quillon\\Kora\\My Favorite\\" + subkey;
        handset.SetRegistry(key, L"Name", group);
        int number = 0;
        for (const Preset& channel : channels) {
            const std::wstring n = std::to_wstring(++number);
            handset.SetRegistry(key, (L"ChannelValue" + n).c_str(), channel.value);
            handset.SetRegistry(key, (L"ChannelName" + n).c_str(), channel.name);
            handset.SetRegistry(key, (L"ChannelProgramGuide" + n).c_str(), channel.guide);
        }
    }
    // The presets that come with the handset would stand beside those of the test.
    void ForgetPresets() const { handset.DeleteRegistryKey(L"HKCU\\Software\\Quillon\\Kora\\My Favorite"); }
    void Select(const std::wstring& group) const { handset.SetRegistry(kRadioSettings, L"Selected", group); }

    // Starts the radio to build the volume and answers its box; the box's text.
    std::wstring BuildVolume() {
        Radio builder(handset, L"Kora.vol");
        const HWND box = builder.WaitForBox(nullptr);
        EXPECT_NE(box, nullptr);
        const std::wstring text = Radio::BoxText(box);
        Radio::Answer(box, IDOK);
        EXPECT_TRUE(builder.WaitUntilGone());
        return text;
    }

    // Groups and channels of the volume, as channel_dump prints them.
    std::vector<std::string> Stored() const {
        std::string printed;
        EXPECT_EQ(RunProgram(L"channel_dump.exe", L"", &printed), 0u);
        return Lines(printed);
    }
    testing::AssertionResult WaitForRows(const Radio& radio, int rows) const {
        if (WaitFor([&] { return RowCount(radio.ListView()) == rows; })) return testing::AssertionSuccess();
        return testing::AssertionFailure() << RowCount(radio.ListView()) << " rows";
    }
    static std::vector<std::wstring> Names(const Radio& radio) {
        std::vector<std::wstring> names;
        for (int row = 0; row < RowCount(radio.ListView()); ++row)
            names.push_back(RowText(radio.ListView(), row, 0));
        return names;
    }
    // Opens a dialog by its menu command.
    static HWND OpenDialog(const Radio& radio, WORD command) {
        radio.Command(command);
        const HWND dialog = radio.WaitForBox(nullptr);
        EXPECT_NE(dialog, nullptr) << "no dialog for command " << command;
        return dialog;
    }
    // The list of alternative frequencies, of which the tuner knows some time after it was tuned.
    static HWND OpenAlternatives(const Radio& radio) {
        constexpr UINT kSkinClick = 0x8003;
        HWND dialog = nullptr;
        EXPECT_TRUE(WaitFor([&] {
            PostMessageW(radio.Window(), kSkinClick, SKIN_AF_LIST, 0);
            return WaitFor([&] { return (dialog = radio.Box(nullptr)) != nullptr; }, 500);
        })) << "no list of alternatives";
        return dialog;
    }
    // The box that a dialog shows above itself; dialogs and boxes may have the same caption.
    static HWND BoxOver(const Radio& radio, HWND dialog, const wchar_t* caption) {
        HWND box = nullptr;
        WaitFor([&] {
            box = radio.Box(caption);
            return box != nullptr && box != dialog && IsWindowVisible(box);
        });
        EXPECT_NE(box, nullptr) << "no box";
        return box;
    }
    // Waits for the box, answers it, and gives its text.
    static std::wstring AnswerBoxOver(const Radio& radio, HWND dialog, const wchar_t* caption,
                                      int button = IDOK) {
        const HWND box = BoxOver(radio, dialog, caption);
        const std::wstring text = Radio::BoxText(box);
        Radio::Answer(box, button);
        EXPECT_TRUE(WaitUntilClosed(box));
        return text;
    }
    static bool WaitUntilClosed(HWND dialog) {
        return WaitFor([&] { return !IsWindow(dialog); });
    }
};

// Three channels in the selected group "Test", as the shipped band of the tests has its stations.
class ThreeChannelsOnRadio : public ChannelsOnRadio {
  protected:
    void SetUp() override {
        ForgetPresets();
        SetPresets(L"G1", L"Test",
                   {{L"Alpha", 8760, L""}, {L"Beta", 9850, L"http://beta"}, {L"Gamma", 10790, L""}});
        Select(L"Test");
        EXPECT_EQ(BuildVolume(), L"The channel database was created.");
    }
};

}  // namespace test
