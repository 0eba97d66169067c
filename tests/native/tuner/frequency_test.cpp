// The band and the texts of a frequency, for every value of the band and beyond it.
#include "tuner/frequency.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

// The expected text, made digit by digit and not with a format.
std::wstring Decimal(std::uint32_t value) {
    std::wstring digits;
    do {
        digits.insert(digits.begin(), static_cast<wchar_t>(L'0' + value % 10));
        value /= 10;
    } while (value != 0);
    return digits;
}

std::wstring ExpectedPlain(std::uint32_t channel) {
    std::wstring text = Decimal(channel / 10);  // whole megahertz and tenths; the hundredths are gone
    if (text.size() < 2) text.insert(text.begin(), L'0');
    text.insert(text.end() - 1, L'.');
    return text;
}

constexpr std::uint32_t kAround[] = {0,    1,     9,     10,    99,         100,        8740,      8749,
                                     8750, 10800, 10801, 10810, 2147483647, 2147483648, 4294967295};

}  // namespace

TEST(Frequency, TheBandReachesFrom8750To10800BothIncluded) {
    for (std::uint32_t channel = 0; channel <= 20000; ++channel) {
        ASSERT_EQ(IsInBand(channel), channel >= 8750 && channel <= 10800) << channel;
    }
    EXPECT_FALSE(IsInBand(2147483648U));
    EXPECT_FALSE(IsInBand(4294967295U));
}

TEST(Frequency, EveryFormOfEveryValueOfTheBandIsRight) {
    for (std::uint32_t channel = 8750; channel <= 10800; ++channel) {
        const std::wstring plain = ExpectedPlain(channel);
        ASSERT_EQ(PlainFrequencyText(channel).sz, plain);
        ASSERT_EQ(ScreenFrequencyText(channel).sz, plain + L" MHz");
        ASSERT_EQ(ListFrequencyText(channel).sz, plain + L" MHz ");
        ASSERT_EQ(HeadlineFrequencyText(channel).sz, L"FM " + plain + L" MHz");
    }
}

TEST(Frequency, ValuesOutsideTheBandHaveTextsToo) {
    for (const std::uint32_t channel : kAround) {
        EXPECT_EQ(PlainFrequencyText(channel).sz, ExpectedPlain(channel));
        EXPECT_EQ(HeadlineFrequencyText(channel).sz, L"FM " + ExpectedPlain(channel) + L" MHz");
    }
}

TEST(Frequency, TheHundredthsAreDroppedAndNotRounded) {
    EXPECT_STREQ(PlainFrequencyText(8755).sz, L"87.5");
    EXPECT_STREQ(PlainFrequencyText(8759).sz, L"87.5");
    EXPECT_STREQ(PlainFrequencyText(8750).sz, L"87.5");
    EXPECT_STREQ(PlainFrequencyText(10800).sz, L"108.0");
    EXPECT_STREQ(PlainFrequencyText(10230).sz, L"102.3");
}

TEST(Frequency, AnAlternativeFrequencyLosesItsPointAndGainsAZero) {
    EXPECT_EQ(ChannelFromAFText(L"98.5"), 9850U);
    EXPECT_EQ(ChannelFromAFText(L"102.3"), 10230U);
    for (std::uint32_t channel = 8750; channel <= 10800; channel += 10) {
        ASSERT_EQ(ChannelFromAFText(PlainFrequencyText(channel).sz), channel);
    }
}

TEST(Frequency, AnAFTextWithoutADecimalPointIsNotValidInputForTheConversion) {
    EXPECT_EQ(ChannelFromAFText(L"985"), 0U);
    EXPECT_EQ(ChannelFromAFText(L"9850"), 0U);
    EXPECT_EQ(ChannelFromAFText(L""), 0U);
}

TEST(Frequency, AnAFTextThatIsNoNumberGivesNoChannel) {
    EXPECT_EQ(ChannelFromAFText(L"9a.5"), 0U);
    EXPECT_EQ(ChannelFromAFText(L"9.8.5"), 0U);
    EXPECT_EQ(ChannelFromAFText(L" 98.5"), 0U);
    EXPECT_EQ(ChannelFromAFText(L"-98.5"), 0U);
    EXPECT_EQ(ChannelFromAFText(L"99999999999999999999999.9"), 0U);
    EXPECT_EQ(ChannelFromAFText(L"42949672.9"), 4294967290U);
    EXPECT_EQ(ChannelFromAFText(L"42949673.0"), 0U);
}

TEST(Frequency, AnyAFTextOfTheDeviceIsReadWithoutHarm) {
    std::mt19937 random(20070701);
    const std::wstring letters = L"0123456789..  -+,xé\x97f3";
    int channels = 0;
    for (int round = 0; round < 200000; ++round) {
        std::wstring text;
        for (std::size_t left = random() % 26; left != 0; --left) text += letters[random() % letters.size()];
        const std::uint32_t channel = ChannelFromAFText(text.c_str());
        std::wstring digits;
        for (const wchar_t c : text) {
            if (c != L'.') digits += c;
        }
        const bool number =
            text.size() == digits.size() + 1 && digits.find_first_not_of(L"0123456789") == std::wstring::npos;
        const unsigned long long value =
            number && !digits.empty() && digits.size() < 17 ? std::stoull(digits) * 10 : 0;
        const bool fits = number && digits.size() < 17 && value <= 4294967295ULL;
        // Leading zeros apart, more digits than 16 are too many for 32 bits.
        if (number && digits.size() >= 17) continue;
        ASSERT_EQ(channel, fits ? static_cast<std::uint32_t>(value) : 0U);
        channels += channel != 0;
    }
    EXPECT_GT(channels, 100);
}
