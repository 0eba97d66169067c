// The command line's options: every choice and order of them, and what is none.
#include "schedule/command_options.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdarg>
#include <cstdint>
#include <string>
#include <vector>

namespace {

std::vector<std::wstring> g_values;

void RecordValue(const wchar_t* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    g_values.push_back(std::wstring(format) + va_arg(arguments, const wchar_t*));
    va_end(arguments);
}

struct Outcome {
    CommandLineRequest request = {};
    std::vector<std::wstring> values;
};

Outcome Read(const std::wstring& line, CommandLineRequest before = {}) {
    g_values.clear();
    std::vector<wchar_t> buffer(line.begin(),
                                line.end());  // exactly as long as the text: reads beyond are seen
    buffer.push_back(L'\0');
    Outcome outcome;
    outcome.request = before;
    ReadCommandOptions(buffer.data(), outcome.request, RecordValue);
    outcome.values = g_values;
    return outcome;
}

}  // namespace

TEST(CommandOptions, WhatIsNotNamedKeepsItsValue) {
    const Outcome outcome = Read(L"-Duration 5", {1, 9850, 60});
    EXPECT_EQ(outcome.request.uRecord, 1U);
    EXPECT_EQ(outcome.request.uChannel, 9850U);
    EXPECT_EQ(outcome.request.uDuration_min, 5U);
}

TEST(CommandOptions, EveryOrderAndOmissionGivesWhatIsNamed) {
    const std::vector<std::wstring> options = {L"-Rec", L"-Channel 9850", L"-Duration 60"};
    int lines = 0;
    for (unsigned chosen = 0; chosen < 8; ++chosen) {
        std::vector<std::size_t> order;
        for (std::size_t option = 0; option < options.size(); ++option) {
            if ((chosen & 1U << option) != 0) order.push_back(option);
        }
        do {
            std::wstring line;
            for (const std::size_t option : order) line += (line.empty() ? L"" : L" ") + options[option];
            const Outcome outcome = Read(line);
            EXPECT_EQ(outcome.request.uRecord, (chosen & 1) != 0 ? 1U : 0U);
            EXPECT_EQ(outcome.request.uChannel, (chosen & 2) != 0 ? 9850U : 0U);
            EXPECT_EQ(outcome.request.uDuration_min, (chosen & 4) != 0 ? 60U : 0U);
            ++lines;
        } while (std::next_permutation(order.begin(), order.end()));
    }
    EXPECT_EQ(lines, 1 + 3 + 6 + 6);
}

TEST(CommandOptions, NoOtherLetterCaseIsRecognised) {
    const std::vector<std::wstring> options = {L"-Rec", L"-Channel", L"-Duration"};
    for (const std::wstring& option : options) {
        // One letter at a time in the other case.
        for (std::size_t at = 1; at < option.size(); ++at) {
            std::wstring other = option;
            other[at] = static_cast<wchar_t>(other[at] ^ 0x20);
            const Outcome outcome = Read(other + L" 7");
            EXPECT_EQ(outcome.request.uRecord, 0U);
            EXPECT_EQ(outcome.request.uChannel, 0U);
            EXPECT_EQ(outcome.request.uDuration_min, 0U);
            EXPECT_TRUE(outcome.values.empty());
        }
    }
}
