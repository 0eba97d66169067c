// What lies beyond the edges of the channel list, worked out when an arrow key is let go.
#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include "channels/channel_list_keys.h"

namespace {

constexpr int kListHeight = 105;  // of an upright screen

class ListEdges : public testing::Test {
  protected:
    ListEdges() {
        SetEnvironmentVariableW(L"KORA_SCREENWIDTH", L"240");
        SetEnvironmentVariableW(L"KORA_SCREENHEIGHT", L"320");
        InitCommonControls();
        list =
            CreateWindowExW(0, WC_LISTVIEWW, L"", WS_POPUP | LVS_REPORT | LVS_SINGLESEL | LVS_NOCOLUMNHEADER,
                            0, 0, 240, kListHeight, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
        LVCOLUMNW column = {};
        column.mask = LVCF_WIDTH;
        column.cx = 100;
        SendMessageW(list, LVM_INSERTCOLUMNW, 0, reinterpret_cast<LPARAM>(&column));
        SubclassChannelList(list);
    }
    ~ListEdges() override {
        DestroyWindow(list);
        SetEnvironmentVariableW(L"KORA_SCREENWIDTH", nullptr);
        SetEnvironmentVariableW(L"KORA_SCREENHEIGHT", nullptr);
    }

    void Fill(int rows) const {
        LVITEMW item = {};
        for (int row = 0; row < rows; ++row)
            SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    }
    const ListEdgeHints& LetGo(WPARAM key) const {
        SendMessageW(list, WM_KEYUP, key, 0);
        return ChannelListHints();
    }
    long Top(int row) const {
        POINT position = {};
        SendMessageW(list, LVM_GETITEMPOSITION, static_cast<WPARAM>(row),
                     reinterpret_cast<LPARAM>(&position));
        return position.y;
    }
    HWND list = nullptr;
};

TEST_F(ListEdges, AtTheTopThereIsMoreBelowAndNothingAbove) {
    Fill(30);
    const ListEdgeHints& hints = LetGo(VK_DOWN);
    EXPECT_FALSE(hints.bMoreAbove);
    EXPECT_TRUE(hints.bMoreBelow);
    EXPECT_EQ(hints.nFirstRow, 0);
    // The row that the lower edge cuts, or that ends within a row's height of it.
    EXPECT_LT(Top(hints.nLastRow), kListHeight);
    EXPECT_GE(Top(hints.nLastRow) + 15, kListHeight);
}

TEST_F(ListEdges, AtTheEndThereIsMoreAboveAndNothingBelow) {
    Fill(30);
    SendMessageW(list, LVM_ENSUREVISIBLE, 29, FALSE);
    const ListEdgeHints& hints = LetGo(VK_UP);
    EXPECT_TRUE(hints.bMoreAbove);
    EXPECT_FALSE(hints.bMoreBelow);
    EXPECT_EQ(hints.nFirstRow, SendMessageW(list, LVM_GETTOPINDEX, 0, 0));
}

TEST_F(ListEdges, BackAtTheTopTheFirstRowIsTheTopmostAgain) {
    Fill(30);
    SendMessageW(list, LVM_ENSUREVISIBLE, 29, FALSE);
    ASSERT_GT(LetGo(VK_UP).nFirstRow, 0);
    SendMessageW(list, LVM_ENSUREVISIBLE, 0, FALSE);
    EXPECT_EQ(LetGo(VK_UP).nFirstRow, 0);
}

TEST_F(ListEdges, AListWhoseLastRowLiesAtTheLowerEdgeHasNothingBelow) {
    Fill(30);
    const int last = LetGo(VK_DOWN).nLastRow;
    SendMessageW(list, LVM_DELETEALLITEMS, 0, 0);
    Fill(last + 1);
    const ListEdgeHints& hints = LetGo(VK_DOWN);
    EXPECT_EQ(hints.nLastRow, last);
    EXPECT_FALSE(hints.bMoreBelow);
}

TEST_F(ListEdges, AListThatFitsHasNothingBeyondThem) {
    Fill(2);
    const ListEdgeHints& hints = LetGo(VK_DOWN);
    EXPECT_FALSE(hints.bMoreAbove);
    EXPECT_FALSE(hints.bMoreBelow);
}

TEST_F(ListEdges, OnAScreenOnItsSideTheListEndsHigher) {
    SetEnvironmentVariableW(L"KORA_SCREENWIDTH", L"320");
    SetEnvironmentVariableW(L"KORA_SCREENHEIGHT", L"240");
    Fill(30);
    const ListEdgeHints& hints = LetGo(VK_DOWN);
    EXPECT_LT(Top(hints.nLastRow), 60);
    EXPECT_GE(Top(hints.nLastRow) + 15, 60);
}

TEST_F(ListEdges, AnotherKeyLeavesThemAsTheyWere) {
    Fill(2);
    LetGo(VK_DOWN);
    Fill(30);
    EXPECT_FALSE(LetGo('5').bMoreBelow);
    EXPECT_TRUE(LetGo(VK_UP).bMoreBelow);
}

}  // namespace
