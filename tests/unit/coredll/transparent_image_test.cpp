// TransparentImage with a bitmap as its source.
#include <gtest/gtest.h>
#include <windows.h>

#include "handset_fixture.h"

namespace {

constexpr COLORREF kLeftOut = RGB(255, 0, 255);
constexpr COLORREF kGround = RGB(10, 20, 30);
constexpr COLORREF kInk = RGB(200, 100, 50);

// A 20 by 20 picture to paint on, and a source of 6 by 4 whose left half is left out.
class TransparentImageTest : public HandsetTest {
  protected:
    TransparentImageTest()
        : screen(GetDC(nullptr)),
          picture(CreateCompatibleDC(screen)),
          ground(CreateCompatibleBitmap(screen, 20, 20)),
          source(CreateCompatibleBitmap(screen, 6, 4)),
          previous(SelectObject(picture, source)) {
        Fill({0, 0, 3, 4}, kLeftOut);
        Fill({3, 0, 6, 4}, kInk);
        SelectObject(picture, ground);
        Fill({0, 0, 20, 20}, kGround);
    }
    ~TransparentImageTest() override {
        SelectObject(picture, previous);
        DeleteObject(source);
        DeleteObject(ground);
        DeleteDC(picture);
        ReleaseDC(nullptr, screen);
    }
    void Fill(const RECT& rect, COLORREF colour) const {
        const HBRUSH brush = CreateSolidBrush(colour);
        FillRect(picture, &rect, brush);
        DeleteObject(brush);
    }
    // The pixels of that colour are those of the rectangle, and no others.
    void ExpectInk(const RECT& rect) const {
        for (int y = 0; y < 20; ++y) {
            for (int x = 0; x < 20; ++x) {
                const bool inside = x >= rect.left && x < rect.right && y >= rect.top && y < rect.bottom;
                ASSERT_EQ(GetPixel(picture, x, y), inside ? kInk : kGround) << x << ", " << y;
            }
        }
    }

    HDC screen, picture;
    HBITMAP ground, source;
    HGDIOBJ previous;
};

TEST_F(TransparentImageTest, LeavesOutTheColour) {
    EXPECT_TRUE(TransparentImage(picture, 5, 7, 6, 4, source, 0, 0, 6, 4, kLeftOut));
    ExpectInk({8, 7, 11, 11});
}

TEST_F(TransparentImageTest, TakesAPartOfTheSource) {
    EXPECT_TRUE(TransparentImage(picture, 5, 7, 2, 3, source, 2, 1, 2, 3, kLeftOut));
    ExpectInk({6, 7, 7, 10});
}

TEST_F(TransparentImageTest, RefusesABitmapThatIsSelectedIntoADeviceContext) {
    const HDC holder = CreateCompatibleDC(screen);
    const HGDIOBJ before = SelectObject(holder, source);
    for (const int width : {6, 12}) {
        SetLastError(ERROR_SUCCESS);
        EXPECT_FALSE(TransparentImage(picture, 5, 7, width, 4, source, 0, 0, 6, 4, kLeftOut));
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    }
    SelectObject(holder, before);
    EXPECT_TRUE(TransparentImage(picture, 5, 7, 6, 4, source, 0, 0, 6, 4, kLeftOut));
    DeleteDC(holder);
    ExpectInk({8, 7, 11, 11});
}

TEST_F(TransparentImageTest, StretchesWhenTheSizesDiffer) {
    EXPECT_TRUE(TransparentImage(picture, 2, 2, 12, 8, source, 0, 0, 6, 4, kLeftOut));
    ExpectInk({8, 2, 14, 10});
}

TEST_F(TransparentImageTest, PaintsNothingWhereEverythingIsLeftOut) {
    EXPECT_TRUE(TransparentImage(picture, 5, 7, 3, 4, source, 0, 0, 3, 4, kLeftOut));
    ExpectInk({0, 0, 0, 0});
}

TEST_F(TransparentImageTest, GoesByTheOriginOfTheDeviceContext) {
    SetViewportOrgEx(picture, 4, 1, nullptr);
    EXPECT_TRUE(TransparentImage(picture, 1, 6, 6, 4, source, 0, 0, 6, 4, kLeftOut));
    SetViewportOrgEx(picture, 0, 0, nullptr);
    ExpectInk({8, 7, 11, 11});
}

TEST_F(TransparentImageTest, StaysInsideTheClipRegionAndLeavesItAsItWas) {
    IntersectClipRect(picture, 0, 0, 10, 20);
    EXPECT_TRUE(TransparentImage(picture, 5, 7, 6, 4, source, 0, 0, 6, 4, kLeftOut));
    RECT clip = {};
    GetClipBox(picture, &clip);
    EXPECT_EQ(clip.right, 10);
    EXPECT_EQ(clip.bottom, 20);
    SelectClipRgn(picture, nullptr);
    ExpectInk({8, 7, 10, 11});
}

}  // namespace
