// Texts in UTF-8 and UTF-16.
#include "handset/base/utf8.h"

#include <gtest/gtest.h>

namespace {

using handset::IsUtf8;
using handset::Utf16;
using handset::Utf8;
using handset::Wide;

struct Letter {
    const char* utf8;
    std::u16string utf16;
};
// The first and the last of each length, on both sides of the surrogates.
const Letter kLetters[] = {
    {"\x01", u"\x01"},
    {"\x7F", u"\x7F"},
    {"\xC2\x80", u"\u0080"},
    {"\xDF\xBF", u"\u07FF"},
    {"\xE0\xA0\x80", u"\u0800"},
    {"\xED\x9F\xBF", u"\uD7FF"},
    {"\xEE\x80\x80", u"\uE000"},
    {"\xEF\xBF\xBF", u"\uFFFF"},
    {"\xF0\x90\x80\x80", u"\U00010000"},
    {"\xF4\x8F\xBF\xBF", u"\U0010FFFF"},
};

TEST(Utf8Text, EveryLengthComesOverAndBack) {
    for (const Letter& letter : kLetters) {
        SCOPED_TRACE(letter.utf8);
        EXPECT_TRUE(IsUtf8(letter.utf8));
        EXPECT_EQ(Utf16(letter.utf8), letter.utf16);
        EXPECT_EQ(Utf8(letter.utf16), letter.utf8);
        EXPECT_EQ(Utf8(Wide(letter.utf8)), letter.utf8);
        EXPECT_EQ(handset::Utf8Length(letter.utf8), 1u);
    }
}

TEST(Utf8Text, OverlongFormsSurrogatesAndWhatLiesAboveAreNone) {
    for (const char* const bytes :
         {"\x80", "\xC0\x80", "\xC1\xBF", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xED\xBF\xBF", "\xF0\x8F\xBF\xBF",
          "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80", "\xC3", "\xE2\x82", "\xE2\x28\xA1"}) {
        SCOPED_TRACE(testing::PrintToString(bytes));
        EXPECT_FALSE(IsUtf8(bytes));
        EXPECT_EQ(Utf16(bytes), std::nullopt);
    }
}

TEST(Utf8Text, WhatIsNoCharacterIsReplacedAndTheRestIsThere) {
    EXPECT_EQ(Wide("a\xFF"
                   "b\xE2\x82"),
              L"a\uFFFDb\uFFFD\uFFFD");
    EXPECT_EQ(Utf8(std::u16string{u'a', 0xD800, u'b', 0xDC00}), "a\uFFFDb\uFFFD");
    EXPECT_EQ(Utf8(std::u16string{0xDBFF}), "\uFFFD");
}

TEST(Utf8Text, ACharacterIsTakenWholeOrNotAtAll) {
    std::string_view text = "\xE2\x82\xAC\xE2\x82";
    EXPECT_EQ(handset::TakeCharacter(&text), U'€');
    EXPECT_EQ(handset::TakeCharacter(&text), std::nullopt);
    EXPECT_EQ(text, "\xE2\x82");
    text = {};
    EXPECT_EQ(handset::TakeCharacter(&text), std::nullopt);
}

TEST(Utf8Text, TheFirstCharactersAreCutBetweenTwo) {
    EXPECT_EQ(handset::Utf8Prefix("Grüße", 3), "Grü");
    EXPECT_EQ(handset::Utf8Prefix("Grüße", 5), "Grüße");
    EXPECT_EQ(handset::Utf8Prefix("Grüße", 9), "Grüße");
    EXPECT_EQ(handset::Utf8Prefix("Grüße", 0), "");
}

}  // namespace
