// What the system tests share: a fresh handset, and words for what the tuner was asked.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/support/handset_under_test.h"
#include "tests/support/radio.h"
#include "tests/support/wait.h"

namespace test {

class RadioTest : public testing::Test {
  protected:
    HandsetUnderTest handset;

    // Calls since `from`, without the queries that every paint makes.
    std::vector<std::string> TunerCommands(std::size_t from = 0) const {
        std::vector<std::string> commands;
        const std::vector<std::string> calls = handset.TunerCalls();
        for (std::size_t i = from; i < calls.size(); ++i) {
            if (calls[i].rfind("GetChannel", 0) != 0) commands.push_back(calls[i]);
        }
        return commands;
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
