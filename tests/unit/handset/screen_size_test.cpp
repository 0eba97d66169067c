// The display's size, which is asked for with every paint and so is not looked up for each.
#include "handset/state/screen_size.h"

#include "handset/state/handset_state.h"
#include "handset/state/write_count.h"
#include "tests/support/wait.h"
#include "tests/unit/handset/handset_fixture.h"

namespace panel {
namespace {

constexpr wchar_t kWidth[] = L"ScreenWidth";

class ScreenSize : public HandsetTest {};

TEST_F(ScreenSize, TheNextQuestionAfterATurnHasTheNewSides) {
    for (std::uint32_t width = 200; width < 300; ++width) {
        ASSERT_TRUE(handset::SetScreenSize(width, width + 100));
        ASSERT_EQ(handset::ScreenWidth(), width);
        ASSERT_EQ(handset::ScreenHeight(), width + 100);
    }
}

// Who is told of a change by the registry may ask before the writer has done.
TEST_F(ScreenSize, WhileItIsWrittenEachQuestionHasWhatIsThere) {
    for (std::uint32_t width = 200; width < 300; ++width) {
        (void)handset::ScreenWidth();  // from here on kept
        const handset::CCountedWrite write;
        ASSERT_TRUE(handset::SetStateDword(kWidth, width));
        ASSERT_EQ(handset::ScreenWidth(), width);
        ASSERT_TRUE(handset::SetStateDword(kWidth, width + 100));
        ASSERT_EQ(handset::ScreenWidth(), width + 100);
    }
}

TEST_F(ScreenSize, AProgramThatDiedWhileItWroteHidesNothing) {
    const handset::CWriteCount count;
    ASSERT_TRUE(count);
    count.Begin();
    for (std::uint32_t width = 200; width < 300; ++width) {
        ASSERT_TRUE(handset::SetStateDword(kWidth, width));
        ASSERT_EQ(handset::ScreenWidth(), width);
        ASSERT_TRUE(handset::SetScreenSize(width + 100, 320));
        ASSERT_EQ(handset::ScreenWidth(), width + 100);
    }
    count.End();
}

TEST_F(ScreenSize, WhatNobodyCountsIsSeenAMomentLater) {
    for (std::uint32_t width = 200; width < 220; ++width) {
        ASSERT_TRUE(handset::SetStateDword(kWidth, width));
        ASSERT_TRUE(test::WaitFor([&] { return handset::ScreenWidth() == width; }, 2000)) << width;
    }
}

}  // namespace
}  // namespace panel
