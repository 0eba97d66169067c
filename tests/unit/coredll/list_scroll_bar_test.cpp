// The scroll bar of a list that has a picture behind its rows.
#include <gtest/gtest.h>
#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <set>

#include "handset_fixture.h"
#include "tests/support/contrast.h"

namespace {

constexpr COLORREF kGround = RGB(20, 26, 30);
constexpr int kRows = 30, kSeven = 7;

// As tests/support/contrast.h wants it.
std::uint32_t Plain(COLORREF colour) {
    return static_cast<std::uint32_t>(GetRValue(colour) << 16 | GetGValue(colour) << 8 | GetBValue(colour));
}

class ListScrollBar : public HandsetTest {
  protected:
    ListScrollBar() {
        window = CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 240, 320, nullptr, nullptr,
                                 nullptr, nullptr);
        list = CreateWindowExW(0, WC_LISTVIEWW, L"",
                               WS_CHILD | WS_VISIBLE | LVS_REPORT | LVS_SINGLESEL | LVS_NOCOLUMNHEADER, 0,
                               100, 240, 105, window, nullptr, nullptr, nullptr);
        LVCOLUMNW column = {};
        column.mask = LVCF_WIDTH;
        column.cx = 100;
        SendMessageW(list, LVM_INSERTCOLUMNW, 0, reinterpret_cast<LPARAM>(&column));
        for (int row = 0; row < kRows; ++row) {
            LVITEMW item = {};
            item.mask = LVIF_TEXT;
            item.iItem = row;
            item.pszText = const_cast<wchar_t*>(L"A row");
            SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
        }
        HandleMessages();
    }
    ~ListScrollBar() override {
        DestroyWindow(window);
        DeleteObject(picture);
    }

    void GivePicture() {
        const HDC screen = GetDC(nullptr), dc = CreateCompatibleDC(screen);
        picture = CreateCompatibleBitmap(screen, 240, 105);
        const HGDIOBJ before = SelectObject(dc, picture);
        const HBRUSH brush = CreateSolidBrush(kGround);
        const RECT whole = {0, 0, 240, 105};
        FillRect(dc, &whole, brush);
        DeleteObject(brush);
        SelectObject(dc, before);
        DeleteDC(dc);
        ReleaseDC(nullptr, screen);
        LVBKIMAGEW image = {};
        image.ulFlags = LVBKIF_SOURCE_HBITMAP | LVBKIF_STYLE_TILE;
        image.hbm = picture;
        SendMessageW(list, LVM_SETBKIMAGEW, 0, reinterpret_cast<LPARAM>(&image));
        HandleMessages();
        ASSERT_GE(BarWidth(), 8);
    }
    int BarWidth() const {
        RECT client = {};
        GetClientRect(list, &client);
        return 240 - client.right;
    }
    // Down the middle of the bar, and all of it.
    COLORREF At(int x, int y) const {
        const HDC dc = GetWindowDC(list);
        const COLORREF colour = GetPixel(dc, x, y);
        ReleaseDC(list, dc);
        return colour;
    }
    std::set<COLORREF> Colours() const {
        std::set<COLORREF> colours;
        for (int x = 240 - BarWidth(); x < 240; x += 2) {
            for (int y = 0; y < 105; ++y) colours.insert(At(x, y));
        }
        return colours;
    }
    COLORREF Thumb() const {
        for (const COLORREF colour : Colours()) {
            if (colour != kGround) return colour;
        }
        return kGround;
    }
    // The thumb's rows in the bar, at a column where no arrow stands.
    std::pair<int, int> ThumbRows() const {
        const int x = 240 - BarWidth() + 2;
        const COLORREF thumb = Thumb();
        int first = -1, last = -1;
        for (int y = 0; y < 105; ++y) {
            if (At(x, y) != thumb) continue;
            if (first < 0) first = y;
            last = y;
        }
        return {first, last};
    }
    int Top() const { return static_cast<int>(SendMessageW(list, LVM_GETTOPINDEX, 0, 0)); }
    // The stylus on the bar, so many pixels from its upper end.
    LPARAM OnBar(int y) const {
        RECT place = {};
        GetWindowRect(list, &place);
        return MAKELPARAM(place.right - BarWidth() / 2, place.top + y);
    }
    void Press(int y) {
        PostMessageW(list, WM_NCLBUTTONDOWN, HTVSCROLL, OnBar(y));
        HandleMessages();
    }
    void Move(int y) {
        PostMessageW(list, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(240 - BarWidth() / 2, y));
        HandleMessages();
    }
    void Lift(int y) {
        PostMessageW(list, WM_LBUTTONUP, 0, MAKELPARAM(240 - BarWidth() / 2, y));
        HandleMessages();
    }

    HWND window = nullptr, list = nullptr;
    HBITMAP picture = nullptr;
};

TEST_F(ListScrollBar, IsOfThePicturesColourWithAThumbThatStandsOut) {
    GivePicture();
    const std::set<COLORREF> colours = Colours();
    EXPECT_EQ(colours.size(), 2u) << testing::PrintToString(colours);
    EXPECT_EQ(colours.count(kGround), 1u);
    EXPECT_GE(test::Contrast(Plain(kGround), Plain(Thumb())), 3.0);
}

TEST_F(ListScrollBar, OfAListWithoutAPictureIsTheHosts) {
    const std::set<COLORREF> colours = Colours();
    EXPECT_EQ(colours.count(kGround), 0u);
    EXPECT_EQ(colours.count(GetSysColor(COLOR_BTNFACE)), 1u) << testing::PrintToString(colours);
}

TEST_F(ListScrollBar, KeepsItsColoursAndShowsWhereTheListStands) {
    GivePicture();
    const auto atTop = ThumbRows();
    SendMessageW(list, LVM_ENSUREVISIBLE, kRows - 1, FALSE);
    HandleMessages();
    EXPECT_EQ(Colours().size(), 2u);
    EXPECT_GT(ThumbRows().first, atTop.first + 20);
    // The foot of the bar alone was covered, and is painted again.
    const RECT foot = {220, 150, 240, 205};
    RedrawWindow(window, &foot, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
    HandleMessages();
    EXPECT_EQ(Colours().size(), 2u);
    EnableWindow(list, FALSE);
    EnableWindow(list, TRUE);
    HandleMessages();
    EXPECT_EQ(Colours().size(), 2u);
}

TEST_F(ListScrollBar, AnArrowScrollsByARowAndTheTrackByAPage) {
    GivePicture();
    Press(103);
    Lift(103);
    EXPECT_EQ(Top(), 1);
    Press(3);
    Lift(3);
    EXPECT_EQ(Top(), 0);
    const int below = ThumbRows().second + 4;
    Press(below);
    Lift(below);
    EXPECT_GE(Top(), kSeven - 1);
}

TEST_F(ListScrollBar, AnArrowThatIsHeldGoesOnUntilTheStylusIsLifted) {
    GivePicture();
    Press(103);
    EXPECT_TRUE(Eventually([&] {
        HandleMessages();
        return Top() >= 4;
    }));
    Lift(103);
    const int stands = Top();
    RealPause(300);
    HandleMessages();
    EXPECT_EQ(Top(), stands);
}

TEST_F(ListScrollBar, TheThumbIsDraggedFromOneEndToTheOther) {
    GivePicture();
    const int grip = (ThumbRows().first + ThumbRows().second) / 2;
    Press(grip);
    Move(grip);
    EXPECT_EQ(Top(), 0);
    Move(grip + 20);
    EXPECT_GT(Top(), 3);
    EXPECT_LT(Top(), kRows - kSeven);
    Move(104);
    EXPECT_EQ(Top(), kRows - kSeven);
    Move(0);
    EXPECT_EQ(Top(), 0);
    Lift(0);
    Move(104);
    EXPECT_EQ(Top(), 0);
}

}  // namespace
