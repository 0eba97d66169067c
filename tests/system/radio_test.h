// What the system tests share: a fresh handset, and words for what the tuner was asked.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/ether_under_test.h"
#include "tests/support/handset_under_test.h"
#include "tests/support/radio.h"
#include "tests/support/tuner_contract.h"
#include "tests/support/wait.h"

namespace test {

// Whether this run has the simulated ether as every handset's antenna (KORA_TEST_ANTENNA=ether): the same
// radio on real signals.
bool OnTheEther();

// First in a test, or in its SetUp, of what real signals cannot show: on the ether the test is left out,
// and the run names it with this reason.
#define NEEDS_THE_SIMULATED_BAND(reason) \
    if (test::OnTheEther()) GTEST_SKIP() << (reason)

class RadioTest : public testing::Test {
  protected:
    RadioTest();
    ~RadioTest() override;

    HandsetUnderTest handset;

    // Calls since `from`, without the queries that every paint and every round of the monitor makes.
    std::vector<std::string> TunerCommands(std::size_t from = 0) const {
        std::vector<std::string> commands;
        const std::vector<std::string> calls = handset.TunerCalls();
        for (std::size_t i = from; i < calls.size(); ++i) {
            if (!IsQuery(calls[i])) commands.push_back(calls[i]);
        }
        return commands;
    }
    static bool IsQuery(const std::string& call) {
        for (const char* query : {"GetChannel", "GetSignal", "GetStereo", "GetRDSData", "GetPTYText"}) {
            if (call.rfind(query, 0) == 0) return true;
        }
        return false;
    }

    // One of the radio's settings, such as L"EnableMute"; it takes effect with the next round of the monitor.
    void Set(const wchar_t* setting, std::uint32_t value) const {
        handset.SetRegistry(kRadioSettings, setting, value);
    }
    // What radios that are started from now on take for a second.
    void SetClockRate(std::uint32_t rate) const { handset.SetState(L"ClockRate", rate); }
    // The same where it only saves time; on the ether, which has a pace of its own, the test takes its time.
    // The rate that holds.
    int Hurry(int rate) const {
        const int holds = OnTheEther() ? 1 : rate;
        SetClockRate(static_cast<std::uint32_t>(holds));
        return holds;
    }

    // How often the monitor has asked for the signal so far; true when it did so `more` times again.
    int Rounds() const { return Count(handset.TunerCalls(), "GetSignal"); }
    bool WaitForRounds(int more) const {
        const int before = Rounds();
        return WaitFor([&] { return Rounds() >= before + more; });
    }

    // The last level that the tuner gave; -1 before the first.
    int Level() const {
        int level = -1;
        for (const std::string& call : handset.TunerCalls()) {
            if (call.rfind("GetSignal -> 0: ", 0) == 0) level = std::atoi(call.c_str() + 16);
        }
        return level;
    }
    testing::AssertionResult WaitForLevel(int lowest, int highest) const {
        if (WaitFor([&] { return Level() >= lowest && Level() <= highest; }))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "the level is " << Level();
    }
    // A station's own level; real signals come in a little better or worse.
    testing::AssertionResult WaitForLevel(int level) const {
        const int slack = OnTheEther() ? 2 : 0;
        return WaitForLevel(level - slack, level + slack);
    }
    // The alternatives of the tuned station are known; the simulated band's are at once.
    testing::AssertionResult WaitForAlternatives(const std::string& name) const {
        if (!OnTheEther()) return testing::AssertionSuccess();
        const auto named = WaitForCall("GetRDSData -> 0: 4 " + name);
        // The list takes a few groups more than the name.
        if (named && !WaitForRounds(4)) return testing::AssertionFailure() << "the monitor stands still";
        return named;
    }

    // How often a key came to the main window. Not every line of the trace before it has an end of its own.
    int KeysTaken() const { return CountIn(handset.Trace(), "WM_KEYDOWN\n"); }
    // What was posted before is done, or has opened its dialog.
    bool WaitUntilKeysCome(const Radio& radio) const {
        const int before = KeysTaken();
        radio.Key(VK_F5);
        return WaitFor([&] { return KeysTaken() > before; });
    }

    // A wait that was in vain shows what came instead.
    testing::AssertionResult WaitForCall(const std::string& call) const {
        std::vector<std::string> calls;
        const bool came = WaitFor([&] {
            calls = handset.TunerCalls();
            return std::find(calls.begin(), calls.end(), call) != calls.end();
        });
        if (came) return testing::AssertionSuccess();
        return testing::AssertionFailure() << call << " is not among " << testing::PrintToString(calls);
    }

    testing::AssertionResult WaitForTrace(const std::string& text) const {
        return WaitForText(text, [this] { return handset.Trace(); });
    }

    testing::AssertionResult WaitForConsole(const std::string& text) const {
        return WaitForText(text, [this] { return handset.Console(); });
    }

    static int Count(const std::vector<std::string>& lines, const std::string& start) {
        return static_cast<int>(std::count_if(
            lines.begin(), lines.end(), [&](const std::string& line) { return line.rfind(start, 0) == 0; }));
    }

    static int CountIn(const std::string& text, const std::string& part) {
        int count = 0;
        for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; ++at) ++count;
        return count;
    }

  private:
    std::unique_ptr<EtherUnderTest> m_ether;

    template <class Read>
    static testing::AssertionResult WaitForText(const std::string& text, Read read) {
        std::string written;
        const bool came = WaitFor([&] { return (written = read()).find(text) != std::string::npos; });
        if (came) return testing::AssertionSuccess();
        return testing::AssertionFailure() << '"' << text << "\" is not in \"" << written << '"';
    }
};

}  // namespace test
