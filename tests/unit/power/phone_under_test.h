// A phone of a test's own, and programs that run on it.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "handset/state/handset_state.h"
#include "handset/state/power_manager.h"
#include "tests/support/wait.h"

namespace test {

class PhoneTest : public testing::Test {
  protected:
    PhoneTest();
    ~PhoneTest() override;

    // Starts the stand-in (see stand_in.cpp) and waits until it works.
    void StartProgram(const std::wstring& arguments);
    void KillPrograms();
    // All that were started have ended by themselves.
    bool ProgramsEnd();
    // An empty file in the device's root.
    void PutFile(const wchar_t* file) const;
    // A timeout of the device's registry, in seconds.
    void SetTimeout(const wchar_t* value, std::uint32_t seconds);

    // The program goes on working; it has stopped and stays so for a while.
    bool Works();
    bool StandsStill();
    std::vector<std::string> Notices() const { return LinesOf(L"notices.txt"); }
    // Of a file that the stand-in writes.
    std::vector<std::string> LinesOf(const wchar_t* file) const;
    static std::wstring State() { return handset::CurrentPowerState().name; }

  private:
    std::uint64_t WorkDone() const;

    std::wstring root_;
    std::vector<HANDLE> programs_;
};

}  // namespace test
