// The list of alternative frequencies.
#include "tuner/af_dialog.h"

#include <commctrl.h>

#include <map>

#include "channels/channel_list_window.h"
#include "tests/support/modal_dialog.h"
#include "tests/support/registered_controls.h"
#include "tests/unit/tuner/tuner_test.h"

namespace {

using test::ModalDialog;
using testing::ElementsAre;
using testing::IsEmpty;

struct Grade {
    std::int32_t level;
    int picture;
};

TEST(AFSignalGrade, SevenPicturesGradeTheLevel) {
    for (const Grade& row : {Grade{-1, 0}, Grade{0, 0}, Grade{9, 0}, Grade{10, 1}, Grade{20, 1}, Grade{21, 2},
                             Grade{30, 2}, Grade{31, 3}, Grade{40, 3}, Grade{41, 4}, Grade{50, 4},
                             Grade{51, 5}, Grade{64, 5}, Grade{65, 6}, Grade{1000, 6}}) {
        EXPECT_EQ(AFSignalGrade(row.level), row.picture) << row.level;
    }
}

class AFDialog : public TunerTest {
  protected:
    AFDialog() { device.alternatives = {L"98.5", L"102.3"}; }

    // `work` on the dialog; it is ended with its own button.
    INT_PTR Open(const std::function<void(HWND)>& work, WORD end = IDC_AF_CLOSE) {
        return ModalDialog::Run([this] { return ShowAFList(window); },
                                [&](HWND dialog) {
                                    work(dialog);
                                    SendMessageW(dialog, WM_COMMAND, end, 0);
                                });
    }
    static HWND List(HWND dialog) { return GetDlgItem(dialog, IDC_AF_FREQUENCIES); }
    static std::wstring Row(HWND dialog, int row) {
        WCHAR text[32] = L"";
        LVITEMW item = {};
        item.pszText = text;
        item.cchTextMax = 32;
        SendMessageW(List(dialog), LVM_GETITEMTEXTW, static_cast<WPARAM>(row),
                     reinterpret_cast<LPARAM>(&item));
        return text;
    }
    static int Picture(HWND dialog, int row) {
        LVITEMW item = {};
        item.mask = LVIF_IMAGE;
        item.iItem = row;
        SendMessageW(List(dialog), LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
        return item.iImage;
    }
    static HIMAGELIST Pictures(HWND dialog) {
        return reinterpret_cast<HIMAGELIST>(SendMessageW(List(dialog), LVM_GETIMAGELIST, LVSIL_SMALL, 0));
    }
    static void Activate(HWND dialog, int row) {
        NMITEMACTIVATE activation = {};
        activation.hdr.hwndFrom = List(dialog);
        activation.hdr.idFrom = IDC_AF_FREQUENCIES;
        activation.hdr.code = static_cast<UINT>(LVN_ITEMACTIVATE);
        activation.iItem = row;
        SendMessageW(dialog, WM_NOTIFY, IDC_AF_FREQUENCIES, reinterpret_cast<LPARAM>(&activation));
    }
};

TEST_F(AFDialog, EveryAlternativeIsARowOfASmallIconListWithSevenPictures) {
    int rows = 0, pictures = 0, cx = 0, cy = 0;
    LONG_PTR style = 0;
    LRESULT extended = 0, width = 0;
    std::vector<std::wstring> texts;
    Open([&](HWND dialog) {
        rows = static_cast<int>(SendMessageW(List(dialog), LVM_GETITEMCOUNT, 0, 0));
        texts = {Row(dialog, 0), Row(dialog, 1)};
        pictures = ImageList_GetImageCount(Pictures(dialog));
        ImageList_GetIconSize(Pictures(dialog), &cx, &cy);
        style = GetWindowLongW(List(dialog), GWL_STYLE);
        extended = SendMessageW(List(dialog), LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0);
        width = SendMessageW(List(dialog), LVM_GETCOLUMNWIDTH, 0, 0);
    });
    EXPECT_EQ(rows, 2);
    EXPECT_THAT(texts, ElementsAre(L"98.5", L"102.3"));
    EXPECT_EQ(pictures, 7);
    EXPECT_EQ(cx, 16);
    EXPECT_EQ(cy, 16);
    EXPECT_EQ(static_cast<DWORD>(style) & LVS_TYPEMASK, static_cast<DWORD>(LVS_SMALLICON));
    EXPECT_TRUE(extended & LVS_EX_ONECLICKACTIVATE);
    EXPECT_THAT(device.Calls(), ElementsAre("GetAFCount", "GetAFItem 0", "GetAFItem 1"));
}

TEST_F(AFDialog, WithoutACountTheListIsEmpty) {
    device.results["GetAFCount"] = E_FAIL;
    LRESULT rows = -1;
    Open([&](HWND dialog) { rows = SendMessageW(List(dialog), LVM_GETITEMCOUNT, 0, 0); });
    EXPECT_EQ(rows, 0);
}

TEST_F(AFDialog, MeasuringGradesEveryRowMutedAndGoesBackToTheTunedFrequency) {
    const std::map<std::uint32_t, std::int32_t> signals = {{9850, 25}, {10230, 70}};
    device.onCall = [&](const std::string& call) {
        if (call == "GetSignal") device.signal = signals.at(device.channel);
    };
    device.channel = 8760;
    int first = -1, second = -1;
    Open([&](HWND dialog) {
        device.ForgetCalls();
        SendMessageW(dialog, WM_COMMAND, IDC_AF_MEASURE, 0);
        first = Picture(dialog, 0);
        second = Picture(dialog, 1);
    });
    EXPECT_EQ(first, 2);
    EXPECT_EQ(second, 6);
    EXPECT_THAT(device.Calls(), ElementsAre("SetMute 1", "GetChannel", "SetChannel 9850", "GetSignal",
                                            "SetChannel 10230", "GetSignal", "SetChannel 8760", "SetMute 0"));
}

TEST_F(AFDialog, ARowThatIsTappedIsTunedAndTheDialogStaysOpenWithItsPicturesReleased) {
    bool open = false;
    HIMAGELIST before = nullptr, after = nullptr;
    Open([&](HWND dialog) {
        before = Pictures(dialog);
        device.ForgetCalls();
        Activate(dialog, 1);
        open = IsWindowVisible(dialog) != FALSE;
        after = Pictures(dialog);
        Activate(dialog, 0);  // and another one can be tried
    });
    EXPECT_TRUE(open);
    EXPECT_NE(before, nullptr);
    EXPECT_EQ(after, nullptr);
    EXPECT_THAT(device.Calls(), ElementsAre("SetChannel 10230", "SetChannel 9850"));
}

TEST_F(AFDialog, OKEndsItWith1AndTheCloseButtonWithItsId) {
    EXPECT_EQ(Open([](HWND) {}, IDOK), 1);
    EXPECT_EQ(Open([](HWND) {}, IDC_AF_CLOSE), 1065);
}

TEST_F(AFDialog, AnyOtherCommandLeavesItOpenAndTheTunerAlone) {
    constexpr WORD kNoControl = 4711;
    bool open = false;
    const INT_PTR ended = Open([&](HWND dialog) {
        device.ForgetCalls();
        for (const WORD id : {WORD{IDCANCEL}, kNoControl}) SendMessageW(dialog, WM_COMMAND, id, 0);
        SendMessageW(dialog, WM_CLOSE, 0, 0);
        open = IsWindowVisible(dialog) != FALSE;
    });
    EXPECT_TRUE(open);
    EXPECT_EQ(ended, IDC_AF_CLOSE);
    EXPECT_THAT(device.Calls(), IsEmpty());
}

TEST_F(AFDialog, TheButtonOpensItOnlyForAStationWithAList) {
    Click(SKIN_AF_LIST);
    EXPECT_THAT(device.Calls(), ElementsAre("GetRDSInfo"));
    device.rdsInfo.b_RDS_AF = 1;
    bool opened = false;
    ModalDialog::Run(
        [this]() -> INT_PTR {
            Click(SKIN_AF_LIST);
            return 0;
        },
        [&](HWND dialog) {
            opened = true;
            SendMessageW(dialog, WM_COMMAND, IDOK, 0);
        });
    EXPECT_TRUE(opened);
}

TEST_F(AFDialog, TheButtonDoesNothingWhileARecordingRuns) {
    device.rdsInfo.b_RDS_AF = 1;
    state->m_bRecording = TRUE;
    Click(SKIN_AF_LIST);
    EXPECT_THAT(device.Calls(), IsEmpty());
}

TEST_F(AFDialog, ItsListIsRegisteredBeforeItOpens) {
    test::g_registeredControls.clear();
    Open([](HWND) {
        EXPECT_THAT(test::g_registeredControls, ElementsAre(static_cast<DWORD>(ICC_LISTVIEW_CLASSES)));
    });
}

class ChannelListControl : public TunerTest {
  protected:
    ~ChannelListControl() override { test::g_onRegisterControls = nullptr; }
};

TEST_F(ChannelListControl, IsRegisteredBeforeTheMainWindowsListIsMade) {
    bool before = false;
    test::g_onRegisterControls = [&](DWORD classes) {
        before = classes == ICC_LISTVIEW_CLASSES &&
                 FindWindowExW(window, nullptr, WC_LISTVIEWW, nullptr) == nullptr;
    };
    EXPECT_TRUE(CreateChannelList(*state, window));
    EXPECT_TRUE(before);
    EXPECT_NE(FindWindowExW(window, nullptr, WC_LISTVIEWW, nullptr), nullptr);
}

}  // namespace
