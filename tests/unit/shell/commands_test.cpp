#include "shell/commands.h"

#include "resources/resource_ids.h"
#include "shell/messages.h"
#include "tests/unit/shell/asked_times.h"
#include "tests/unit/shell/shell_test.h"

namespace {

using test::TraceOf;

class CommandsTest : public test::ShellTest {};

TEST_F(CommandsTest, TheSleepTimersCommandsAreKnown) {
    // Those that open nothing; the others are driven on the running radio.
    for (const WORD id : {0x8013, 0x8014, 0x8015, 0x8016}) {
        EXPECT_TRUE(RunCommand(*state, window, id)) << "0x" << std::hex << id;
    }
}

TEST_F(CommandsTest, AnUnknownCommandIsLeftToTheDefaultProcedure) {
    EXPECT_FALSE(RunCommand(*state, window, 1));
    EXPECT_FALSE(RunCommand(*state, window, 0x8009));
}

TEST_F(CommandsTest, ExitTracesAndClosesAtOnceWhenNothingIsRecorded) {
    const DWORD start = GetTickCount();
    const std::string trace = TraceOf([&] { RunCommand(*state, window, static_cast<WORD>(IDC_EXIT)); });
    EXPECT_EQ(trace, "== CLOSE FM ==\r\n");
    ASSERT_EQ(Seen().size(), 1u);
    EXPECT_EQ(Seen()[0].message, static_cast<UINT>(WM_CLOSE));
    EXPECT_LT(Seen()[0].tick - start, 900u);
}

TEST_F(CommandsTest, ExitDuringARecordingStopsItFirstAndWaitsOneSecondBeforeClosing) {
    g_app.bRecordingActive = 1;
    const test::AskedTimes asked;
    RunCommand(*state, window, static_cast<WORD>(IDC_EXIT));
    EXPECT_THAT(asked.sleeps_ms, testing::ElementsAre(1000u));
    ASSERT_EQ(Seen().size(), 2u);
    EXPECT_EQ(Seen()[0].message, WM_SKIN_CLICK);
    EXPECT_EQ(Seen()[0].wParam, 209u);
    EXPECT_EQ(Seen()[0].lParam, 0);
    EXPECT_EQ(Seen()[1].message, static_cast<UINT>(WM_CLOSE));
    EXPECT_GE(Seen()[1].tick - Seen()[0].tick, 990u);
}

}  // namespace
