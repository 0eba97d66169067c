// SHLoadImageResource.
#include <gtest/gtest.h>

#include "handset/include/aygshell.h"
#include "tests/unit/aygshell/resource_ids.h"

namespace {

void ExpectThePicture(UINT id) {
    const HBITMAP bitmap = SHLoadImageResource(GetModuleHandleW(nullptr), id);
    ASSERT_NE(bitmap, nullptr);
    BITMAP shape = {};
    ASSERT_NE(GetObjectW(bitmap, sizeof shape, &shape), 0);
    EXPECT_EQ(shape.bmWidth, 5);
    EXPECT_EQ(shape.bmHeight, 3);
    const HDC dc = CreateCompatibleDC(nullptr);
    const HGDIOBJ previous = SelectObject(dc, bitmap);
    EXPECT_EQ(GetPixel(dc, 0, 0), RGB(10, 20, 30));
    EXPECT_EQ(GetPixel(dc, 4, 2), RGB(200, 100, 50));
    SelectObject(dc, previous);
    DeleteDC(dc);
    EXPECT_TRUE(DeleteObject(bitmap));
}

TEST(ImageResource, ABitmapIsLoadedWithItsSizeAndColours) {
    ExpectThePicture(PICTURE);
}

TEST(ImageResource, AnotherFormIsLoadedAsWell) {
    ExpectThePicture(PICTURE_GIF);
}

// As on the device: a skin declared as bitmaps would be missing there.
TEST(ImageResource, AResourceOfAnotherTypeIsNoImage) {
    EXPECT_EQ(SHLoadImageResource(GetModuleHandleW(nullptr), PICTURE_OF_ANOTHER_TYPE), nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_RESOURCE_TYPE_NOT_FOUND));
}

TEST(ImageResource, ABrokenImageIsNone) {
    EXPECT_EQ(SHLoadImageResource(GetModuleHandleW(nullptr), PICTURE_BROKEN), nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_DATA));
}

TEST(ImageResource, IsNullWhenItIsNotThere) {
    EXPECT_EQ(SHLoadImageResource(GetModuleHandleW(nullptr), NO_SUCH_RESOURCE), nullptr);
    EXPECT_EQ(SHLoadImageResource(GetModuleHandleW(nullptr), 0x10000), nullptr);
}

TEST(ImageResource, IsNullWithoutAModule) {
    // The desktop's own pictures have such numbers.
    EXPECT_EQ(SHLoadImageResource(nullptr, 32754), nullptr);
}

}  // namespace
