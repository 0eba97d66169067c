// The stand-in for the radio, installed on the test's handset, and what it wrote down.
#pragma once

#include <sstream>
#include <string>

#include "handset/controls/encoding.h"
#include "handset/controls/radio_process.h"
#include "handset/controls/wait.h"
#include "handset/setup/install.h"
#include "tests/unit/handset/handset_fixture.h"

namespace panel {

inline constexpr unsigned kDeadline_ms = 20000;

class StandInTest : public HandsetTest {
  protected:
    StandInTest() { EXPECT_EQ(InstallHandset(ProgramsToInstall()).fault, L""); }
    ~StandInTest() override {
        for (const DWORD id : RadioProcesses()) {
            const handset::OwnedHandle process(OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, id));
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
    // The notes of programs that begin and of those that take their time with their windows, in their order.
    [[nodiscard]] std::string Beginnings() const {
        return NotesOf([](const std::string& line) {
            return line.rfind("command line", 0) == 0 || line.rfind("window", 0) == 0;
        });
    }
    // Those of keys: the host may bring a window to the front between any two.
    [[nodiscard]] std::string Keys() const {
        return NotesOf([](const std::string& line) { return line.find(" key") != std::string::npos; });
    }
    void StartStandIn() {
        ASSERT_EQ(Run({L"start"}), kDone) << testing::PrintToString(console_.Complained());
        ASSERT_TRUE(WaitForNote("ready\n"));
    }

  private:
    template <typename Wanted>
    std::string NotesOf(Wanted wanted) const {
        std::istringstream notes(Notes());
        std::string found;
        for (std::string line; std::getline(notes, line);) {
            if (wanted(line)) found += line + "\n";
        }
        return found;
    }
};

}  // namespace panel
