// Where the phone's keys and the switches lie, and what is hit where.
#include <gtest/gtest.h>

#include <algorithm>

#include "handset/phone/phone_keys.h"
#include "handset/phone/phone_layout.h"
#include "handset/phone/switch_column.h"

namespace panel {
namespace {

struct Screen {
    int width, height;
};
class PhoneLayoutTest : public testing::TestWithParam<Screen> {
  protected:
    PhoneLayout layout_ = LayOutPhone(GetParam().width, GetParam().height);
};
INSTANTIATE_TEST_SUITE_P(Screens, PhoneLayoutTest,
                         testing::Values(Screen{240, 320}, Screen{320, 240}, Screen{480, 640},
                                         Screen{640, 480}),
                         [](const auto& screen) {
                             return std::to_string(screen.param.width) + "x" +
                                    std::to_string(screen.param.height);
                         });

bool Inside(const Box& inner, const Box& outer) {
    return inner.x >= outer.x && inner.y >= outer.y && inner.Right() <= outer.Right() &&
           inner.Bottom() <= outer.Bottom();
}

bool Overlap(const Box& a, const Box& b) {
    return a.x < b.Right() && b.x < a.Right() && a.y < b.Bottom() && b.y < a.Bottom();
}

TEST_P(PhoneLayoutTest, TheDisplayHasTheScreensPixelsInsideGlassAndBody) {
    EXPECT_EQ(layout_.display.w, GetParam().width);
    EXPECT_EQ(layout_.display.h, GetParam().height);
    EXPECT_TRUE(Inside(layout_.display, layout_.glass));
    EXPECT_TRUE(Inside(layout_.glass, layout_.body));
    EXPECT_TRUE(Inside(layout_.body, {0, 0, layout_.width, layout_.height}));
}

TEST_P(PhoneLayoutTest, EveryKeyIsThereOnceOnTheBodyAndBesideTheDisplay) {
    for (const PhoneKeyRow& row : PhoneKeys()) {
        int count = 0;
        for (const KeyPlace& place : layout_.keys) count += place.key == row.key ? 1 : 0;
        EXPECT_EQ(count, 1) << testing::PrintToString(std::wstring(row.name));
        const Box* box = PlaceOf(layout_, row.key);
        ASSERT_NE(box, nullptr);
        EXPECT_TRUE(Inside(*box, layout_.body));
        EXPECT_FALSE(Overlap(*box, layout_.glass));
    }
}

TEST_P(PhoneLayoutTest, NoTwoKeysOverlap) {
    for (std::size_t i = 0; i < layout_.keys.size(); ++i) {
        for (std::size_t k = i + 1; k < layout_.keys.size(); ++k) {
            EXPECT_FALSE(Overlap(layout_.keys[i].box, layout_.keys[k].box)) << i << " " << k;
        }
    }
}

TEST_P(PhoneLayoutTest, EachKeyIsHitInItsMiddleAndAtItsFirstAndLastPixel) {
    for (const KeyPlace& place : layout_.keys) {
        const Box& b = place.box;
        EXPECT_EQ(KeyAt(layout_, b.x + b.w / 2, b.y + b.h / 2), place.key);
        EXPECT_EQ(KeyAt(layout_, b.x, b.y), place.key);
        EXPECT_EQ(KeyAt(layout_, b.Right() - 1, b.Bottom() - 1), place.key);
    }
}

TEST_P(PhoneLayoutTest, TheArrowKeysPointWhereTheScreensDirectionsAre) {
    const Box& middle = *PlaceOf(layout_, PhoneKey::kReturn);
    EXPECT_LT(PlaceOf(layout_, PhoneKey::kUp)->y, middle.y);
    EXPECT_GT(PlaceOf(layout_, PhoneKey::kDown)->y, middle.y);
    EXPECT_LT(PlaceOf(layout_, PhoneKey::kLeft)->x, middle.x);
    EXPECT_GT(PlaceOf(layout_, PhoneKey::kRight)->x, middle.x);
}

TEST_P(PhoneLayoutTest, ThePadHasNoDeadPlace) {
    const Box& pad = layout_.pad;
    for (int y = pad.y; y < pad.Bottom(); ++y) {
        for (int x = pad.x; x < pad.Right(); ++x) {
            const auto key = KeyAt(layout_, x, y);
            ASSERT_TRUE(key.has_value()) << x << " " << y;
            const int dx = x - (pad.x + pad.w / 2);
            const int dy = y - (pad.y + pad.h / 2);
            if (*key == PhoneKey::kUp) {
                EXPECT_LE(dy, 0);
            }
            if (*key == PhoneKey::kRight) {
                EXPECT_GE(dx, 0);
            }
        }
    }
}

TEST_P(PhoneLayoutTest, NothingIsHitOnTheDisplayAndBesideThePhone) {
    const Box& d = layout_.display;
    EXPECT_FALSE(KeyAt(layout_, d.x + d.w / 2, d.y + d.h / 2).has_value());
    EXPECT_FALSE(KeyAt(layout_, 0, 0).has_value());
    EXPECT_FALSE(KeyAt(layout_, layout_.width + 10, layout_.height + 10).has_value());
}

TEST_P(PhoneLayoutTest, TheSwitchesLieBesideThePhoneInsideTheWindowAndApartFromOneAnother) {
    const ColumnLayout column = LayOutColumn(layout_.column);
    const Box client = {0, 0, layout_.width, layout_.height};
    for (const SwitchPlace& place : column.switches) {
        EXPECT_TRUE(Inside(place.box, client)) << testing::PrintToString(std::wstring(place.row->label));
        EXPECT_FALSE(Overlap(place.box, layout_.body));
        EXPECT_EQ(SwitchAt(column, place.box.x + place.box.w / 2, place.box.y + place.box.h / 2), &place);
        for (const SwitchPlace& other : column.switches) {
            EXPECT_TRUE(&other == &place || !Overlap(place.box, other.box));
        }
    }
}

TEST_P(PhoneLayoutTest, TheBandLiesInTheWindowApartFromPhoneAndSwitches) {
    EXPECT_TRUE(Inside(layout_.band, {0, 0, layout_.width, layout_.height}));
    EXPECT_EQ(layout_.band.h, kBandHeight);
    EXPECT_FALSE(Overlap(layout_.band, layout_.body));
    EXPECT_FALSE(Overlap(layout_.band, layout_.close));
    // Each channel has its own place.
    EXPECT_GE(layout_.band.w, 420);
    for (const SwitchPlace& place : LayOutColumn(layout_.column).switches)
        EXPECT_FALSE(Overlap(layout_.band, place.box))
            << testing::PrintToString(std::wstring(place.row->label));
}

TEST(PhoneLayout, ThePhoneLiesOnItsSideWhenTheScreenIsWiderThanTall) {
    EXPECT_FALSE(LayOutPhone(240, 320).landscape);
    EXPECT_TRUE(LayOutPhone(320, 240).landscape);
    EXPECT_FALSE(LayOutPhone(240, 240).landscape);
    const PhoneLayout upright = LayOutPhone(240, 320);
    const PhoneLayout turned = LayOutPhone(320, 240);
    EXPECT_EQ(upright.body.w, turned.body.h);
    EXPECT_EQ(upright.body.h, turned.body.w);
    // Its top lies on the left: the keys are right of the display.
    EXPECT_GT(PlaceOf(turned, PhoneKey::k5)->x, turned.display.Right());
}

TEST(PhoneLayout, ThePanelFitsASmallDesktop) {
    const PhoneLayout upright = LayOutPhone(240, 320);
    EXPECT_LE(upright.width, 500);
    EXPECT_LE(upright.height, 728);  // of 768, without the host's own bar
}

TEST(PhoneKeyTable, EveryKeyHasAVirtualKeyOfItsOwn) {
    for (const PhoneKeyRow& row : PhoneKeys()) {
        EXPECT_NE(row.virtualKey, 0) << testing::PrintToString(std::wstring(row.name));
        EXPECT_EQ(KeyNamed(row.name), row.key);
        for (const PhoneKeyRow& other : PhoneKeys()) {
            EXPECT_TRUE(&other == &row || other.virtualKey != row.virtualKey);
        }
    }
    EXPECT_FALSE(KeyNamed(L"menu").has_value());
}

TEST(PhoneKeyTable, KeysHaveTheCodesOfTheHandsetsKeyboard) {
    struct Row {
        const wchar_t* name;
        WORD code;
    };
    const Row kRows[] = {{L"0", 0x30},     {L"9", 0x39},     {L"left", 0x25},   {L"up", 0x26},
                         {L"right", 0x27}, {L"down", 0x28},  {L"return", 0x0D}, {L"call", 0x72},
                         {L"end", 0x73},   {L"soft1", 0x70}, {L"soft2", 0x71}};
    for (const Row& row : kRows) EXPECT_EQ(RowOf(*KeyNamed(row.name)).virtualKey, row.code);
}

TEST(PhoneKeyTable, TheSoftKeysAndTheTelephonesAreTakenFromTheComputersKeyboardAndNoOthers) {
    for (const PhoneKeyRow& row : PhoneKeys()) {
        const bool first4 = row.virtualKey >= VK_F1 && row.virtualKey <= VK_F4;
        EXPECT_EQ(KeyOfComputer(row.virtualKey), first4 ? std::optional(row.key) : std::nullopt)
            << testing::PrintToString(std::wstring(row.name));
    }
    EXPECT_EQ(KeyOfComputer(VK_F1), PhoneKey::kSoftLeft);
    EXPECT_EQ(KeyOfComputer(VK_F4), PhoneKey::kHangUp);
    EXPECT_FALSE(KeyOfComputer(VK_F5).has_value());
}

TEST(SignalSlider, ReachesFromNothingToNoLimit) {
    const Box slider = {100, 50, 176, 42};
    const Box track = SliderTrack(slider);
    EXPECT_TRUE(slider.Contains(track.x, track.y));
    EXPECT_EQ(SliderLevelAt(slider, track.x - 50), 0u);
    EXPECT_EQ(SliderLevelAt(slider, track.x), 0u);
    EXPECT_EQ(SliderLevelAt(slider, track.x + track.w / 2), 50u);
    EXPECT_FALSE(SliderLevelAt(slider, track.Right()).has_value());
    EXPECT_FALSE(SliderLevelAt(slider, track.Right() + 50).has_value());
}

TEST(SwitchColumn, TellsAPhoneThatSleepsFromOneWhoseDisplayIsDark) {
    const auto& rows = SwitchGroups().front().rows;
    const auto display = std::find_if(
        rows.begin(), rows.end(), [](const SwitchRow& row) { return row.label == std::wstring(L"Display"); });
    ASSERT_NE(display, rows.end());
    Snapshot now = {};
    now.lit = true;
    EXPECT_STREQ(display->note(now), L"");
    now.lit = false;
    EXPECT_STREQ(display->note(now), L"dark");
    now.sleeps = true;
    EXPECT_STREQ(display->note(now), L"asleep");
    EXPECT_FALSE(now == Snapshot{});
}

TEST(Hints, EverySwitchAndKeySaysWhatItDoesInAWholeSentence) {
    const auto isSentence = [](const wchar_t* hint) {
        return hint != nullptr && std::wcslen(hint) > 5 && hint[std::wcslen(hint) - 1] == L'.';
    };
    for (const SwitchGroup& group : SwitchGroups()) {
        for (const SwitchRow& row : group.rows)
            EXPECT_TRUE(isSentence(row.hint)) << testing::PrintToString(std::wstring(row.label));
    }
    for (const PhoneKeyRow& row : PhoneKeys())
        EXPECT_TRUE(isSentence(row.hint)) << testing::PrintToString(std::wstring(row.name));
}

}  // namespace
}  // namespace panel
