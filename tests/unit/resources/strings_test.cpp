// The texts: all there, within their lengths, and the formats with exactly the arguments that they are given.
#include <gtest/gtest.h>
#include <windows.h>

#include <set>
#include <string>

#include "resources/resource_ids.h"

namespace {

struct Text {
    unsigned id;
    std::size_t most;  // characters that its reader has room for, without the end
    int arguments;     // "%s" in it
};

// clang-format off
const Text kTexts[] = {
    { 1,  99, 0}, { 4, 259, 0}, { 5, 259, 0}, { 6, 259, 0}, { 7, 259, 0}, { 8, 259, 0}, { 9, 259, 0},
    {10, 259, 0}, {11, 259, 0}, {12,  50, 0}, {16, 259, 0}, {18, 259, 0}, {20, 259, 0}, {21, 259, 1},
    {22, 259, 1}, {23, 259, 0}, {24, 259, 0}, {25, 259, 0}, {26, 259, 0}, {27, 259, 3}, {28, 259, 0},
    {29, 259, 0}, {30, 259, 0}, {31, 259, 0}, {32, 259, 0}, {33, 259, 0}, {34, 259, 0}, {35, 259, 0},
    {36, 259, 0}, {37, 259, 0}, {38,  99, 0}, {39,  63, 0}, {40,  63, 0}, {42,  15, 0}, {43,  15, 0},
    {44,  15, 0}, {45,  15, 0}, {46,  15, 0}, {47,  15, 0}, {48,  15, 0}, {49, 259, 1}, {50, 259, 0},
    {IDS_SOFTKEY_OK, 12, 0}, {IDS_SOFTKEY_CANCEL, 12, 0}, {IDS_SOFTKEY_DONE, 12, 0},
    {IDS_SOFTKEY_MENU, 12, 0}, {IDS_SOFTKEY_CHANNELS, 12, 0}, {IDS_SCHEDULE_COLUMN, 15, 0},
    {IDS_SCHEDULE_COLUMN + 1, 15, 0}, {IDS_SCHEDULE_COLUMN + 2, 15, 0}, {IDS_SCHEDULE_COLUMN + 3, 15, 0},
};
// clang-format on

std::wstring Load(unsigned id) {
    WCHAR text[1024] = L"";
    return {text, static_cast<std::size_t>(LoadStringW(nullptr, id, text, ARRAYSIZE(text)))};
}

}  // namespace

TEST(Strings, EveryTextIsThereAndWithinItsLength) {
    for (const Text& expected : kTexts) {
        const std::wstring text = Load(expected.id);
        EXPECT_FALSE(text.empty()) << expected.id;
        EXPECT_LE(text.size(), expected.most) << expected.id;
    }
}

TEST(Strings, AFormatTakesExactlyTheTextsThatItIsGiven) {
    for (const Text& expected : kTexts) {
        const std::wstring text = Load(expected.id);
        int arguments = 0;
        for (std::size_t at = text.find(L'%'); at != std::wstring::npos; at = text.find(L'%', at + 1)) {
            EXPECT_EQ(text.substr(at, 2), L"%s") << expected.id;
            ++arguments;
        }
        EXPECT_EQ(arguments, expected.arguments) << expected.id;
    }
}

TEST(Strings, TheDaysOfTheWeekCanBeToldApart) {
    std::set<std::wstring> days;
    for (unsigned day = 0; day < 7; ++day) days.insert(Load(IDS_SUNDAY + day));
    EXPECT_EQ(days.size(), 7u);
}

TEST(Strings, TheTwoAnswersOfTheRdsDialogDiffer) {
    EXPECT_NE(Load(IDS_RDS_PRESENT), Load(IDS_RDS_ABSENT));
}
