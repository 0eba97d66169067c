#include "shell/database_start.h"

#include <gtest/gtest.h>

namespace {

TEST(DatabaseStart, TheWordInAnyLetterCaseIsTheWholeLine) {
    EXPECT_TRUE(IsDatabaseStart(L"Kora.vol"));
    EXPECT_TRUE(IsDatabaseStart(L"KORA.VOL"));
    EXPECT_TRUE(IsDatabaseStart(L"kora.vol"));
}

TEST(DatabaseStart, MoreThanTheWordOrLessIsAnOrdinaryStart) {
    EXPECT_FALSE(IsDatabaseStart(L"Kora.vol now"));
    EXPECT_FALSE(IsDatabaseStart(L" Kora.vol"));
    EXPECT_FALSE(IsDatabaseStart(L"Kora.vo"));
    EXPECT_FALSE(IsDatabaseStart(L""));
    EXPECT_FALSE(IsDatabaseStart(nullptr));
}

}  // namespace
