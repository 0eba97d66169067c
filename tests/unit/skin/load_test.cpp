// Loading the skin's images. This test program has, as resources, the fourteen plain ones and a background
// for wide screens in each orientation; each is of a size of its own.
#include "skin/skin_load.h"
#include "tests/unit/skin/skin_on_screen.h"

namespace {

SIZE SizeOf(HBITMAP bitmap) {
    BITMAP data = {};
    if (GetObjectW(bitmap, sizeof(data), &data) == 0) return {0, 0};
    return {data.bmWidth, data.bmHeight};
}

class LoadedImages : public SkinOnScreen {
  protected:
    void SetUp() override {}

    void Load(const Screen& on) {
        UseScreen(on);
        LoadAndOwn();
    }

    // The program keeps its images; the test does not.
    void LoadAndOwn() {
        LoadSkinBitmaps(m_skin);
        for (int i = 0; i < m_skin.nBitmaps; ++i) {
            m_loaded.emplace_back(m_skin.pBitmaps[i].hPortrait);
            m_loaded.emplace_back(m_skin.pBitmaps[i].hLandscape);
        }
    }

    void ExpectIs(HBITMAP bitmap, int id) {
        SCOPED_TRACE(id);
        ASSERT_NE(bitmap, nullptr);
        EXPECT_TRUE(Same(Picture::OfResource(id), Picture::OfBitmap(bitmap)));
    }

    std::vector<OwnedBitmap> m_loaded;
};

TEST_F(LoadedImages, EachRowGetsItsTwoBitmapsOnANarrowScreen) {
    for (const Screen& on : {kPortrait, kLandscape}) {
        Load(on);
        for (int i = 0; i < 7; ++i) {
            ExpectIs(m_skin.pBitmaps[i].hPortrait, static_cast<int>(kBitmapLayout[i][0]));
            ExpectIs(m_skin.pBitmaps[i].hLandscape, static_cast<int>(kBitmapLayout[i][1]));
        }
    }
}

TEST_F(LoadedImages, AWideScreenGetsTheImagesDrawnForItWhereThereAreAny) {
    for (const Screen& on : {kWidePortrait, kWideLandscape}) {
        Load(on);
        ExpectIs(m_skin.pBitmaps[0].hPortrait, 1186);
        ExpectIs(m_skin.pBitmaps[0].hLandscape, 1188);
        for (int i = 1; i < 7; ++i) {
            ExpectIs(m_skin.pBitmaps[i].hPortrait, static_cast<int>(kBitmapLayout[i][0]));
            ExpectIs(m_skin.pBitmaps[i].hLandscape, static_cast<int>(kBitmapLayout[i][1]));
        }
    }
}

TEST_F(LoadedImages, AScreenThatIsWideInLandscapeOnlyGetsTheWideImageForThatOrientation) {
    Load({"Tall", 240, 400, true, false});
    ExpectIs(m_skin.pBitmaps[0].hPortrait, 186);
    ExpectIs(m_skin.pBitmaps[0].hLandscape, 1188);
}

TEST_F(LoadedImages, AMissingTableStopsTheLoading) {
    UseScreen(kPortrait);
    m_skin.pBitmaps = nullptr;
    LoadSkinBitmaps(m_skin);
    EXPECT_EQ(m_skin.nBitmaps, 7);
}

TEST_F(LoadedImages, AMissingImageLeavesANullHandleAndTheRestIsLoaded) {
    UseScreen(kPortrait);
    m_skin.pBitmaps[2].uPortraitId = 999;
    LoadAndOwn();
    EXPECT_EQ(m_skin.pBitmaps[2].hPortrait, nullptr);
    EXPECT_NE(m_skin.pBitmaps[2].hLandscape, nullptr);
    EXPECT_NE(m_skin.pBitmaps[6].hLandscape, nullptr);
}

TEST_F(LoadedImages, AnImageForOnePaintIsTheWideOneOnAWideScreen) {
    UseScreen(kPortrait);
    EXPECT_EQ(SizeOf(LoadSkinImage(m_skin.hInstance, 211).get()).cx, 24);
    UseScreen(kWidePortrait);
    EXPECT_EQ(SizeOf(LoadSkinImage(m_skin.hInstance, 211).get()).cx, 49);
    EXPECT_EQ(SizeOf(LoadSkinImage(m_skin.hInstance, 217).get()).cx, 159) << "there is none for wide screens";
    EXPECT_FALSE(LoadSkinImage(m_skin.hInstance, 999));
}

}  // namespace
