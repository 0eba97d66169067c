// How the channel list's rows are drawn: what the list asks for at each stage, and the colours it is given.
#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include "channels/channel_list_notify.h"
#include "shell/main_state.h"

namespace {

class ListColours : public testing::Test {
  protected:
    ~ListColours() override {
        SetEnvironmentVariableW(L"KORA_SCREENWIDTH", nullptr);
        SetEnvironmentVariableW(L"KORA_SCREENHEIGHT", nullptr);
    }
    static void UseScreen(const WCHAR* width, const WCHAR* height) {
        SetEnvironmentVariableW(L"KORA_SCREENWIDTH", width);
        SetEnvironmentVariableW(L"KORA_SCREENHEIGHT", height);
    }
    LRESULT Draw(DWORD stage, int column) {
        draw.nmcd.hdr.code = static_cast<UINT>(NM_CUSTOMDRAW);
        draw.nmcd.dwDrawStage = stage;
        draw.iSubItem = column;
        draw.clrText = 0;
        return OnChannelListNotify(state, nullptr, &draw.nmcd.hdr);
    }
    COLORREF ColourOf(int column) {
        EXPECT_EQ(Draw(CDDS_ITEMPREPAINT | CDDS_SUBITEM, column), CDRF_NEWFONT);
        return draw.clrText;
    }
    CMainState state{GetModuleHandleW(nullptr), SkinTables()};
    NMLVCUSTOMDRAW draw = {};
};

TEST_F(ListColours, TheListIsAskedForEachCellOfEachRow) {
    EXPECT_EQ(Draw(CDDS_PREPAINT, 0), CDRF_NOTIFYITEMDRAW);
    EXPECT_EQ(Draw(CDDS_ITEMPREPAINT, 0), CDRF_NOTIFYSUBITEMDRAW);
    EXPECT_EQ(Draw(CDDS_POSTPAINT, 0), CDRF_DODEFAULT);
}

TEST_F(ListColours, ANameAndItsFrequencyHaveTheirOwn) {
    UseScreen(L"240", L"320");
    EXPECT_EQ(ColourOf(0), 0x80FFFFu);
    EXPECT_EQ(ColourOf(1), 0xFFFF80u);
}

TEST_F(ListColours, OnAWideScreenBothAreGrey) {
    UseScreen(L"480", L"640");
    EXPECT_EQ(ColourOf(0), 0x9E9E9Eu);
    EXPECT_EQ(ColourOf(1), 0x9E9E9Eu);
}

}  // namespace
