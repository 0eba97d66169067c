#include "shell/main_state.h"

#include "skin/skin_tables.h"
#include "tests/unit/shell/shell_test.h"

namespace {

TEST(MainScreen, HasSevenBitmapsNineButtonsOneSliderAndThirteenTexts) {
    const SkinTables tables = MainScreenTables();
    EXPECT_EQ(tables.nBitmaps, 7);
    EXPECT_EQ(tables.nButtons, 9);
    EXPECT_EQ(tables.nSliders, 1);
    EXPECT_EQ(tables.nTexts, 13);
}

class MainStateTest : public test::ShellTest {};

TEST_F(MainStateTest, StartsWithItsWordsAtZeroAndAnEventThatIsNotSignalled) {
    EXPECT_FALSE(state->m_bSpeakerSelected);
    EXPECT_FALSE(state->m_BTInUse);
    EXPECT_FALSE(state->m_bMuted);
    EXPECT_FALSE(state->m_bMutedByCall);
    EXPECT_FALSE(state->m_bRecording);
    EXPECT_FALSE(state->m_bDigitSinceTick);
    EXPECT_EQ(state->m_hMutex, nullptr);
    EXPECT_EQ(state->m_request.uRecord, 0u);
    ASSERT_NE(state->m_hStopRecordEvent, nullptr);
    EXPECT_EQ(WaitForSingleObject(state->m_hStopRecordEvent, 0), static_cast<DWORD>(WAIT_TIMEOUT));
    // Auto-reset: a wait takes the signal away.
    SetEvent(state->m_hStopRecordEvent);
    EXPECT_EQ(WaitForSingleObject(state->m_hStopRecordEvent, 0), static_cast<DWORD>(WAIT_OBJECT_0));
    EXPECT_EQ(WaitForSingleObject(state->m_hStopRecordEvent, 0), static_cast<DWORD>(WAIT_TIMEOUT));
}

TEST_F(MainStateTest, AWindowWithoutOneGivesNull) {
    EXPECT_EQ(MainStateOf(window), nullptr);
}

}  // namespace
