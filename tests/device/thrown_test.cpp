// C++ exceptions in a program of the phone's kind: found, unwound and caught as the language says, wherever
// the program is loaded.
#include <gmock/gmock.h>

#include <algorithm>

#include "tests/device/phone.h"

namespace {

using device::Phone;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::uint32_t kEnded = 42;  // by the end of wWinMain
constexpr std::uint32_t kOwnBase = 0, kOtherBase = 0x02340000;

// By the address at which the program is loaded.
class ThrownOnAPhone : public ::testing::TestWithParam<std::uint32_t> {
  protected:
    Phone phone{KORA_DEVICE_THROWN, GetParam()};
    int Calls(const char* name) const {
        return static_cast<int>(std::count(phone.calls.begin(), phone.calls.end(), name));
    }
};

INSTANTIATE_TEST_SUITE_P(LoadedAt, ThrownOnAPhone, ::testing::Values(kOwnBase, kOtherBase));

TEST_P(ThrownOnAPhone, WithoutAnExceptionItEndsByItself) {
    EXPECT_EQ(phone.Start(""), kEnded);
    EXPECT_THAT(phone.trace, IsEmpty());
}

TEST_P(ThrownOnAPhone, EveryLocalOnTheWayIsDestroyedAndTheHandlerOfTheBaseIsFound) {
    EXPECT_EQ(phone.Start("base"), kEnded);
    EXPECT_THAT(phone.trace,
                ElementsAre("~even 1", "~odd 1", "~even 1", "~odd 1", "~passed 1", "caught 7 late"));
}

TEST_P(ThrownOnAPhone, AHandlerThatThrowsAgainHandsTheSameObjectOn) {
    EXPECT_EQ(phone.Start("again"), kEnded);
    EXPECT_THAT(phone.trace, ElementsAre("~inner 1", "~handler 1", "again 2"));
}

TEST_P(ThrownOnAPhone, OneIsThrownAndCaughtWhileAnotherIsHandled) {
    EXPECT_EQ(phone.Start("nested"), kEnded);
    EXPECT_THAT(phone.trace, ElementsAre("~second 1", "both 1 2", "none is caught: 1"));
}

TEST_P(ThrownOnAPhone, OfAnObjectWhoseConstructorThrowsThePartsAreDestroyedAndTheMemoryIsGivenBack) {
    EXPECT_EQ(phone.Start("constructor"), kEnded);
    EXPECT_THAT(phone.trace, ElementsAre("~second part 1", "~first part 1", "caught something"));
    // The compiler's library holds a reserve of its own from the start.
    EXPECT_EQ(Calls("malloc"), 3);
    EXPECT_EQ(Calls("free"), 2);
}

TEST_P(ThrownOnAPhone, TheLibrarysOwnAreCaughtAsStandardExceptions) {
    EXPECT_EQ(phone.Start("library"), kEnded);
    EXPECT_THAT(phone.trace, ElementsAre("too long a text"));
}

TEST_P(ThrownOnAPhone, EachThreadHasItsOwn) {
    EXPECT_EQ(phone.Start("thread"), kEnded);
    EXPECT_THAT(phone.trace, ElementsAre("thread, none is caught: 1", "~even 1", "~odd 1", "~even 1",
                                         "~odd 1", "~passed 1", "caught 7 late", "still 5"));
}

TEST_P(ThrownOnAPhone, WhatNobodyCatchesEndsTheProgramWith3) {
    EXPECT_EQ(phone.Start("uncaught"), 3u);
    EXPECT_THAT(phone.trace, IsEmpty());
}

}  // namespace
