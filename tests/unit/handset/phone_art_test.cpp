// The phone's pictures: all there, and where the layout has what they show.
#include "handset/phone/phone_art.h"

#include <gtest/gtest.h>

#include <string>

#include "handset/controls/encoding.h"
#include "tests/unit/handset/drawn_panel.h"

namespace panel {
namespace {

std::uint32_t Alpha(const ArtPicture& picture, int x, int y) {
    return picture.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width) +
                          static_cast<std::size_t>(x)] >>
           24;
}

TEST(PhoneArt, EveryPictureIsInTheProgramOnce) {
    std::size_t number = 0;
    for (const ArtRow& row : ArtRows()) {
        EXPECT_EQ(static_cast<std::size_t>(row.art), number++) << Utf8(row.name);
        const ArtPicture& picture = PictureOf(row.art);
        EXPECT_GT(picture.width, 0) << Utf8(row.name);
        EXPECT_EQ(picture.pixels.size(),
                  static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height));
    }
    EXPECT_EQ(number, static_cast<std::size_t>(Art::kTuned) + 1);
}

// By what is seen of them: the colour of a pixel that is nearly clear says little.
bool NearlyTheSame(std::uint32_t one, std::uint32_t other) {
    const auto seen = [](std::uint32_t pixel, int shift) {
        const auto alpha = static_cast<int>(pixel >> 24);
        return shift == 24 ? alpha : static_cast<int>((pixel >> shift) & 0xFF) * alpha / 255;
    };
    for (int shift = 0; shift < 32; shift += 8) {
        const int difference = seen(one, shift) - seen(other, shift);
        if (difference < -2 || difference > 2) return false;
    }
    return true;
}

// Otherwise a corner would be drawn out with it; of a soft shadow a trace may be left there.
TEST(PhoneArt, BetweenItsCornersAPictureIsTheSameFromColumnToColumn) {
    for (const ArtRow& row : ArtRows()) {
        if (row.corner == 0) continue;
        const ArtPicture& picture = PictureOf(row.art);
        const int corner = row.corner + row.margin;
        ASSERT_LE(2 * corner, picture.width) << Utf8(row.name);
        ASSERT_LE(2 * corner, picture.height) << Utf8(row.name);
        for (int y = 0; y < picture.height; ++y) {
            const auto* first = &picture.pixels[static_cast<std::size_t>(y * picture.width)];
            for (int x = corner; x < picture.width - corner; ++x)
                EXPECT_TRUE(NearlyTheSame(first[x], first[corner])) << Utf8(row.name) << " " << x << " " << y;
        }
    }
}

// The layout's box is what is seen: beyond it is a shadow at most, which ends with the picture.
TEST(PhoneArt, APicturesEdgesLieWhereItsBoxHasThem) {
    for (const ArtRow& row : ArtRows()) {
        // The frame around what has the keys lies outside.
        if (row.corner == 0 || row.art == Art::kFocus) continue;
        const ArtPicture& picture = PictureOf(row.art);
        const int x = picture.width / 2, y = picture.height / 2, margin = row.margin;
        const int right = picture.width - 1, lower = picture.height - 1;
        // The band's own edge is a shadow that falls into it.
        const std::uint32_t least = row.art == Art::kBand ? 60 : 240;
        EXPECT_GT(Alpha(picture, x, margin), least) << Utf8(row.name);
        EXPECT_GT(Alpha(picture, x, lower - margin), least) << Utf8(row.name);
        EXPECT_GT(Alpha(picture, margin, y), least) << Utf8(row.name);
        EXPECT_GT(Alpha(picture, right - margin, y), least) << Utf8(row.name);
        if (margin == 0) continue;
        EXPECT_LT(Alpha(picture, x, margin - 1), 240u) << Utf8(row.name);
        EXPECT_LT(Alpha(picture, x, lower - margin + 1), 240u) << Utf8(row.name);
        EXPECT_LT(Alpha(picture, margin - 1, y), 240u) << Utf8(row.name);
        EXPECT_LT(Alpha(picture, right - margin + 1, y), 240u) << Utf8(row.name);
        EXPECT_LT(Alpha(picture, x, 0), 25u) << Utf8(row.name);
        EXPECT_LT(Alpha(picture, x, lower), 160u) << Utf8(row.name);
        EXPECT_LT(Alpha(picture, 0, y), 25u) << Utf8(row.name);
        EXPECT_LT(Alpha(picture, right, y), 25u) << Utf8(row.name);
    }
}

struct Screen {
    int width, height;
};
class DrawnPhone : public testing::TestWithParam<Screen> {
  protected:
    // What has changed, is it at this box and nowhere else?
    static void ExpectAt(const Box& box, const Box& changed, const std::wstring& what) {
        constexpr int kGlow = 6;
        EXPECT_GE(changed.w, 8) << Utf8(what);
        EXPECT_GE(changed.h, 8) << Utf8(what);
        EXPECT_TRUE(changed.x >= box.x - kGlow && changed.y >= box.y - kGlow &&
                    changed.Right() <= box.Right() + kGlow && changed.Bottom() <= box.Bottom() + kGlow)
            << Utf8(what);
    }
    PanelView view_ = ViewOf(GetParam().width, GetParam().height);
    DrawnPanel before_ = Draw(view_);
};
INSTANTIATE_TEST_SUITE_P(Screens, DrawnPhone,
                         testing::Values(Screen{240, 320}, Screen{320, 240}, Screen{480, 640},
                                         Screen{640, 480}),
                         [](const auto& screen) {
                             return std::to_string(screen.param.width) + "x" +
                                    std::to_string(screen.param.height);
                         });

TEST_P(DrawnPhone, APressedKeyIsSeenWhereItIsPressed) {
    for (const KeyPlace& place : view_.phone.keys) {
        view_.pressedKey = place.key;
        ExpectAt(place.box, Difference(before_, Draw(view_)), std::to_wstring(static_cast<int>(place.key)));
    }
}

TEST_P(DrawnPhone, APressedSwitchIsSeenWhereItIsPressed) {
    for (const SwitchPlace& place : view_.column.switches) {
        // One that is lit stays it, and the slider shows the signal itself.
        if (place.row->kind == SwitchKind::kSlider || place.row->isOn(view_.now)) continue;
        view_.pressedSwitch = place.row;
        ExpectAt(place.box, Difference(before_, Draw(view_)), place.row->label);
    }
}

TEST_P(DrawnPhone, TheSignalIsSeenOnItsSlider) {
    view_.now.signalLimit = 60;
    const Box changed = Difference(before_, Draw(view_));
    for (const SwitchPlace& place : view_.column.switches) {
        if (place.row->kind == SwitchKind::kSlider) ExpectAt(place.box, changed, place.row->label);
    }
}

// Nothing of what is below shows through, from one edge of the display to the other.
TEST_P(DrawnPhone, TheDisplayIsDarkGlassAndTheBodyBrighterAroundIt) {
    view_.now.lit = false;  // without its words
    const DrawnPanel drawn = Draw(view_);
    const Box& d = view_.phone.display;
    const auto grey = [&](int x, int y) { return (drawn.At(x, y) >> 8) & 0xFF; };
    for (const int x : {d.x, d.x + d.w / 2, d.Right() - 1}) {
        for (const int y : {d.y, d.y + d.h / 2, d.Bottom() - 1})
            EXPECT_LT(grey(x, y), 0x20u) << x << " " << y;
    }
    const Box& glass = view_.phone.glass;
    EXPECT_GT(grey(d.x + d.w / 2, glass.y - 4), 0x20u);
    EXPECT_GT(grey(d.x + d.w / 2, glass.Bottom() + 3), 0x20u);
    EXPECT_GT(grey(glass.x - 4, d.y + d.h / 2), 0x20u);
    EXPECT_GT(grey(glass.Right() + 3, d.y + d.h / 2), 0x20u);
}

}  // namespace
}  // namespace panel
