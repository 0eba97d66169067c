// The command line's options against a model, on lines made by chance.
#include "schedule/command_options.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdarg>
#include <cstdint>
#include <random>
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

// Leading blanks as the conversion skips them, a sign, digits; wraps to 32 bits.
std::uint32_t ModelNumber(const std::wstring& text) {
    std::size_t at = text.find_first_not_of(L"\t\n\v\f\r");
    if (at == std::wstring::npos) return 0;
    const bool negative = text[at] == L'-';
    if (text[at] == L'-' || text[at] == L'+') ++at;
    std::uint32_t value = 0;
    while (at < text.size() && text[at] >= L'0' && text[at] <= L'9') {
        value = value * 10 + static_cast<std::uint32_t>(text[at++] - L'0');
    }
    return negative ? 0 - value : value;
}

std::vector<std::wstring> Split(const std::wstring& line) {
    std::vector<std::wstring> tokens(1);
    for (const wchar_t c : line) {
        if (c != L' ') {
            tokens.back() += c;
        } else if (!tokens.back().empty()) {
            tokens.emplace_back();
        }
    }
    if (tokens.back().empty()) tokens.pop_back();
    return tokens;
}

Outcome ModelOf(const std::wstring& line) {
    Outcome outcome;
    std::vector<std::wstring> tokens = Split(line);
    while (!tokens.empty()) {
        const std::wstring option = tokens.front();
        tokens.erase(tokens.begin());
        if (option == L"-Rec") outcome.request.uRecord = 1;
        const bool channel = option == L"-Channel";
        if ((!channel && option != L"-Duration") || tokens.empty()) continue;
        (channel ? outcome.request.uChannel : outcome.request.uDuration_min) = ModelNumber(tokens.front());
        outcome.values.push_back((channel ? L"Channel: %s\r\n" : L"Duration: %s\r\n") + tokens.front());
        tokens.erase(tokens.begin());
    }
    return outcome;
}

}  // namespace

TEST(CommandOptions, LinesMadeByChanceAreReadAsTheModelReadsThem) {
    std::mt19937 random(52);
    const std::vector<std::wstring> pieces = {
        L"-Rec",     L"-rec",      L"-Channel", L"-Duration", L"-channel", L"8750", L"10800", L"60",
        L"0",        L"-5",        L"+7",       L"12x",       L"x12",      L"\t42", L"-",     L"-Record",
        L"Kora.vol", L"999999999", L"\x97f3",   L"\"-Rec\"",  L" ",        L"  ",   L"",      L"\t"};
    int withValues = 0;
    for (int round = 0; round < 200000; ++round) {
        std::wstring line;
        for (std::size_t left = random() % 12; left != 0; --left) {
            line += pieces[random() % pieces.size()];
            if (random() % 8 != 0) line += L' ';
        }
        const Outcome expected = ModelOf(line);
        const Outcome outcome = Read(line);
        ASSERT_EQ(outcome.request.uRecord, expected.request.uRecord);
        ASSERT_EQ(outcome.values, expected.values);
        // A run of digits that does not fit the platform's long is not the model's business.
        if (line.find(L"99999999999") != std::wstring::npos) continue;
        ASSERT_EQ(outcome.request.uChannel, expected.request.uChannel);
        ASSERT_EQ(outcome.request.uDuration_min, expected.request.uDuration_min);
        withValues += !expected.values.empty();
    }
    EXPECT_GT(withValues, 10000);
}

TEST(CommandOptions, AnyTextIsReadWithoutHarm) {
    std::mt19937 random(53);
    for (int round = 0; round < 100000; ++round) {
        std::wstring line;
        for (std::size_t left = random() % 40; left != 0; --left) {
            line += static_cast<wchar_t>(random() % 4 == 0 ? L' ' : 1 + random() % 0xD7FF);
        }
        const Outcome outcome = Read(line);
        ASSERT_EQ(outcome.request.uRecord, ModelOf(line).request.uRecord);
    }
}

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
