// What the system tests share: a fresh handset, and words for what the tuner was asked.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/support/handset_under_test.h"
#include "tests/support/radio.h"
#include "tests/support/tuner_contract.h"
#include "tests/support/wait.h"

namespace test {

class RadioTest : public testing::Test {
  protected:
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

    // How often the monitor has asked for the signal so far; true when it did so `more` times again.
    int Rounds() const { return Count(handset.TunerCalls(), "GetSignal"); }
    bool WaitForRounds(int more) const {
        const int before = Rounds();
        return WaitFor([&] { return Rounds() >= before + more; });
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
    template <class Read>
    static testing::AssertionResult WaitForText(const std::string& text, Read read) {
        std::string written;
        const bool came = WaitFor([&] { return (written = read()).find(text) != std::string::npos; });
        if (came) return testing::AssertionSuccess();
        return testing::AssertionFailure() << '"' << text << "\" is not in \"" << written << '"';
    }
};

}  // namespace test
