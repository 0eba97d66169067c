// The stand-in for the radio, installed on the test's handset, and what it wrote down.
#pragma once

#include <string>

#include "handset/panel/encoding.h"
#include "handset/panel/install.h"
#include "handset/panel/radio_process.h"
#include "handset/panel/tour_watch.h"
#include "tests/unit/panel/handset_fixture.h"

namespace panel {

inline constexpr unsigned kDeadline_ms = 20000;

class StandInTest : public HandsetTest {
  protected:
    StandInTest() { EXPECT_EQ(InstallHandset(ProgramsToInstall()).fault, L""); }
    ~StandInTest() override {
        if (const auto id = RadioProcess()) {
            const OwnedHandle process(OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, *id));
            TerminateProcess(process.get(), 1);
            WaitForSingleObject(process.get(), kDeadline_ms);
        }
    }
    [[nodiscard]] std::string Notes() const {
        return ReadWholeFile(Device(L"\\Windows\\UI.exe.log")).value_or("");
    }
    [[nodiscard]] bool WaitForNote(const std::string& note) const {
        return WaitUntil([&] { return Notes().find(note) != std::string::npos; }, kDeadline_ms);
    }
    void StartStandIn() {
        ASSERT_EQ(Run({L"start"}), kDone) << testing::PrintToString(console_.Complained());
        ASSERT_TRUE(WaitForNote("ready\n"));
    }
};

}  // namespace panel
