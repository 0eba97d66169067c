// A frequency as it is typed into the channel dialog.
#include "channels/frequency_input.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct Typed {
    const wchar_t* text;
    FrequencyInput result;
    std::uint32_t channel;
};

std::ostream& operator<<(std::ostream& out, const Typed& typed) {
    const std::wstring text = typed.text;
    return out << '"' << std::string(text.begin(), text.end()) << '"';
}

class TypedFrequency : public testing::TestWithParam<Typed> {};

TEST_P(TypedFrequency, IsReadAsMegahertz) {
    std::uint32_t channel = 0;
    EXPECT_EQ(ReadFrequency(GetParam().text, &channel), GetParam().result);
    if (GetParam().result == FrequencyInput::kValid) EXPECT_EQ(channel, GetParam().channel);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Table, TypedFrequency, testing::Values(
    Typed{L"98",     FrequencyInput::kValid,   9800},
    Typed{L"98.5",   FrequencyInput::kValid,   9850},
    Typed{L"98.25",  FrequencyInput::kValid,   9825},
    Typed{L"108",    FrequencyInput::kValid,  10800},
    Typed{L"108.0",  FrequencyInput::kValid,  10800},
    Typed{L"87.5",   FrequencyInput::kValid,   8750},
    Typed{L"87.50",  FrequencyInput::kValid,   8750},
    Typed{L"98.255", FrequencyInput::kInvalid,    0},
    Typed{L"98.",    FrequencyInput::kInvalid,    0},
    Typed{L"87.4",   FrequencyInput::kInvalid,    0},
    Typed{L"87.49",  FrequencyInput::kInvalid,    0},
    Typed{L"108.1",  FrequencyInput::kInvalid,    0},
    Typed{L"0",      FrequencyInput::kInvalid,    0},
    Typed{L"99999",  FrequencyInput::kInvalid,    0},
    Typed{L"",       FrequencyInput::kEmpty,      0},
    Typed{L".",      FrequencyInput::kEmpty,      0},
    Typed{L".985",   FrequencyInput::kEmpty,      0},
    Typed{L"98x",    FrequencyInput::kValid,   9800},   // digits are read up to the first that is none
    Typed{L"98.5x",  FrequencyInput::kValid,   9805},   // two characters behind the point: hundredths
    Typed{L"x98",    FrequencyInput::kInvalid,    0}));
// clang-format on

TEST(FrequencyCharacters, DigitsBackspaceAndOnePointMayBeTyped) {
    for (wchar_t character = 1; character < 0x300; ++character) {
        const bool digit = character >= L'0' && character <= L'9';
        EXPECT_EQ(IsFrequencyCharacter(character, false), digit || character == L'.' || character == 8)
            << character;
        EXPECT_EQ(IsFrequencyCharacter(character, true), digit || character == 8) << character;
    }
}

}  // namespace
