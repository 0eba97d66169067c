// A million texts in a frequency field, typed or put there by another program.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "channels/frequency_input.h"
#include "tests/native/fuzz_inputs.h"

namespace {

constexpr std::uint64_t kTexts = 1'000'000;

struct Reading {
    FrequencyInput result;
    std::uint32_t channel;
};

// A second reading: the digits, up to the first character that is none, as one decimal number.
std::uint64_t Digits(const std::wstring& text) {
    std::uint64_t number = 0;
    for (const wchar_t c : text) {
        if (c < L'0' || c > L'9') break;
        number =
            std::min<std::uint64_t>(number * 10 + static_cast<std::uint64_t>(c - L'0'), 1'000'000'000'000);
    }
    return number;
}
Reading ReadingOf(const std::wstring& text) {
    if (text.empty() || text[0] == L'.') return {FrequencyInput::kEmpty, 0};
    const std::size_t point = text.find(L'.');
    std::uint64_t channel = Digits(text) * 100;
    if (point != text.npos) {
        const std::wstring behind = text.substr(point + 1);
        if (behind.size() != 1 && behind.size() != 2) return {FrequencyInput::kInvalid, 0};
        channel += Digits(behind) * (behind.size() == 1 ? 10 : 1);
    }
    if (channel < 8750 || channel > 10800) return {FrequencyInput::kInvalid, 0};
    return {FrequencyInput::kValid, static_cast<std::uint32_t>(channel)};
}

// Half of them near a frequency of the band, the others anything, up to twice the room of a field.
std::wstring AnyText(std::mt19937& random) {
    std::wstring text;
    if (random() % 2 == 0) {
        text = std::to_wstring(85 + random() % 26);
        if (random() % 4 != 0) text += L'.';
        for (auto left = random() % 3; left != 0; --left) text += static_cast<wchar_t>(L'0' + random() % 10);
        if (random() % 4 == 0) text.insert(random() % (text.size() + 1), 1, L"0.x -\x661"[random() % 6]);
        return text;
    }
    for (auto left = random() % 32; left != 0; --left) {
        text +=
            random() % 4 == 0 ? static_cast<wchar_t>(1 + random() % 0xFFFF) : L"0123456789.."[random() % 12];
    }
    return text;
}

TEST(FrequencyFuzz, AMillionTextsAreReadAsTheNumberThatTheySay) {
    const std::uint64_t texts = test::FuzzInputs(kTexts);
    std::mt19937 random(20260107);
    std::uint64_t valid = 0;
    for (std::uint64_t i = 0; i < texts; ++i) {
        const std::wstring text = AnyText(random);
        // In memory of exactly its length: a look beyond its end is seen.
        const std::vector<wchar_t> tight(text.c_str(), text.c_str() + text.size() + 1);
        std::uint32_t channel = 0;
        const FrequencyInput result = ReadFrequency(tight.data(), &channel);
        const Reading expected = ReadingOf(text);
        ASSERT_EQ(result, expected.result) << testing::PrintToString(text) << ", text " << i;
        if (result != FrequencyInput::kValid) continue;
        ASSERT_EQ(channel, expected.channel) << testing::PrintToString(text) << ", text " << i;
        ++valid;
    }
    EXPECT_GT(valid, texts / 20) << "hardly any text is a frequency: the test has become an empty one";
}

// Numbers that are 98 when their upper bits are lost.
TEST(FrequencyInput, ANumberThatDoesNotFitIsNoFrequency) {
    for (const wchar_t* text : {L"4294967394", L"18446744073709551714", L"4294967394.5"}) {
        std::uint32_t channel = 0;
        EXPECT_EQ(ReadFrequency(text, &channel), FrequencyInput::kInvalid) << testing::PrintToString(text);
    }
}

}  // namespace
