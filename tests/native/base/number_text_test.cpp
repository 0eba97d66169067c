// Numbers as people write them.
#include "handset/base/number_text.h"

#include <gtest/gtest.h>

namespace handset {
namespace {

TEST(Numbers, AreDecimalOrHexadecimal) {
    EXPECT_EQ(ParseNumber(L"0"), 0U);
    EXPECT_EQ(ParseNumber(L"010"), 10U);
    EXPECT_EQ(ParseNumber(L"0x1F"), 31U);
    EXPECT_EQ(ParseNumber(L"0XffffFFFFffffFFFF"), 0xFFFFFFFFFFFFFFFFU);
    EXPECT_EQ(ParseNumber(L"9999999999999999999"), 9999999999999999999U);
}

TEST(Numbers, AreNothingElse) {
    for (const wchar_t* text : {L"", L"fast", L"-1", L"+1", L" 1", L"1 ", L"1.5", L"0x", L"x1", L"12a",
                                L"10000000000000000000", L"0x10000000000000000"}) {
        EXPECT_FALSE(ParseNumber(text).has_value()) << testing::PrintToString(std::wstring(text));
    }
}

}  // namespace
}  // namespace handset
