// The handset's clock.
#include "handset/controls/handset_clock.h"

#include "handset/state/handset_clock.h"
#include "handset/state/handset_state.h"
#include "tests/unit/handset/handset_fixture.h"

namespace panel {
namespace {

constexpr std::uint64_t kSecond = 10000000;  // in FILETIME units

class Clock : public HandsetTest {
  protected:
    static void WriteRaw(const wchar_t* name, DWORD type, const void* data, std::size_t size) {
        ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, handset::StateKeyPath().c_str(), name, type, data,
                                  static_cast<DWORD>(size)),
                  ERROR_SUCCESS);
    }
    static void WriteMoment(const handset::ClockMoment& moment) {
        const handset::StoredMoment bytes = handset::Stored(moment);
        WriteRaw(L"ClockMoment", REG_BINARY, bytes.data(), bytes.size());
    }
    static std::uint64_t Shown() { return handset::ShownAt(*handset::SharedMoment(), handset::RealTime()); }
};

TEST_F(Clock, WithoutAMomentItShowsRealTime) {
    EXPECT_FALSE(handset::SharedMoment().has_value());
    EXPECT_EQ(ShownRate(), 1u);
}

TEST_F(Clock, GoesOnFromTheTimeThatItShowsWhenTheRateChanges) {
    // Ten real seconds ago the handset was an hour ahead and ran at 100.
    const std::uint64_t now = handset::RealTime();
    WriteMoment({now - 10 * kSecond, now + 3600 * kSecond, 100});
    EXPECT_EQ(Run({L"clock", L"5"}), kDone);
    const std::uint64_t after = handset::RealTime();
    const auto moment = handset::SharedMoment();
    ASSERT_TRUE(moment.has_value());
    EXPECT_EQ(moment->rate, 5u);
    EXPECT_GE(moment->real, now);
    EXPECT_LE(moment->real, after);
    const std::uint64_t expected = now + 3600 * kSecond + (moment->real - now + 10 * kSecond) * 100;
    EXPECT_EQ(moment->shown, expected);
}

TEST_F(Clock, TheSameRateAgainChangesNoTime) {
    EXPECT_EQ(Run({L"clock", L"3600"}), kDone);
    const auto first = handset::SharedMoment();
    EXPECT_EQ(Run({L"clock", L"3600"}), kDone);
    const auto second = handset::SharedMoment();
    EXPECT_EQ(handset::ShownAt(*first, second->real), second->shown);
}

TEST_F(Clock, ResetGoesBackToRealTime) {
    Run({L"clock", L"3600"});
    EXPECT_EQ(Run({L"clock", L"reset"}), kDone);
    EXPECT_FALSE(handset::SharedMoment().has_value());
    EXPECT_EQ(ShownRate(), 1u);
}

TEST_F(Clock, IsPrintedWithItsRate) {
    Run({L"clock", L"60"});
    EXPECT_EQ(Run({L"clock"}), kDone);
    EXPECT_NE(console_.Said().find(L", 60 handset seconds per real second"), std::wstring::npos);
}

TEST_F(Clock, ARateThatIsNoneIsTheNearestThatThereIs) {
    handset::SetStateDword(L"ClockRate", 0);
    EXPECT_EQ(handset::ClockRate(), 1u);
    handset::SetStateDword(L"ClockRate", 100000);
    EXPECT_EQ(handset::ClockRate(), 3600u);
    handset::SetStateString(L"ClockRate", L"fast");
    EXPECT_EQ(handset::ClockRate(), 1u);
    SetEnvironmentVariableW(L"KORA_CLOCKRATE", L"faster");
    EXPECT_EQ(handset::ClockRate(), 1u);
    SetEnvironmentVariableW(L"KORA_CLOCKRATE", L"0");
    EXPECT_EQ(handset::ClockRate(), 1u);
    EXPECT_GT(RealTimeUntil_ms(LocalNow() + 5, 10000), 3000u);
    SetEnvironmentVariableW(L"KORA_CLOCKRATE", nullptr);
}

TEST_F(Clock, OfAHostWhoseClockWasSetBackGoesBackWithIt) {
    const std::uint64_t now = handset::RealTime();
    // Set when the host showed an hour more.
    WriteMoment({now + 3600 * kSecond, now, 1});
    EXPECT_LT(Shown(), now - 3590 * kSecond);
}

TEST_F(Clock, ARateThatWasWrittenByHandIsTakenOverWithoutAJump) {
    const std::uint64_t now = handset::RealTime();
    WriteMoment({now - 3600 * kSecond, now, 1});
    handset::SetStateDword(L"ClockRate", 60);
    ASSERT_TRUE(handset::FixClock());
    const auto moment = handset::SharedMoment();
    EXPECT_EQ(moment->rate, 60u);
    EXPECT_GE(moment->shown, now + 3600 * kSecond);
    EXPECT_LT(moment->shown, now + 3660 * kSecond);
    ASSERT_TRUE(handset::FixClock());
    EXPECT_EQ(handset::SharedMoment(), moment);
}

TEST_F(Clock, WhateverIsWrittenAsItsMomentItGoesOn) {
    const handset::LocalSeconds begun = LocalNow();
    const std::string bytes(200, '\xFF');
    for (const DWORD type :
         {REG_NONE, REG_SZ, REG_EXPAND_SZ, REG_BINARY, REG_DWORD, REG_MULTI_SZ, REG_QWORD}) {
        for (const std::size_t size : {0u, 1u, 7u, 8u, 23u, 25u, 200u}) {
            WriteRaw(L"ClockMoment", type, bytes.data(), size);
            EXPECT_FALSE(handset::SharedMoment().has_value()) << type << " " << size;
            EXPECT_GE(LocalNow(), begun);
            EXPECT_EQ(Run({L"clock"}), kDone);
        }
    }
    // One that is none but for its length.
    WriteRaw(L"ClockMoment", REG_BINARY, bytes.data(), handset::kStoredMoment_bytes);
    EXPECT_EQ(Run({L"clock"}), kDone);
    EXPECT_EQ(Run({L"clock", L"2026-11-23", L"10:00"}), kDone);
    EXPECT_EQ(handset::LocalTimeText(LocalNow()).substr(0, 15), L"2026-11-23 10:0");
}

}  // namespace
}  // namespace panel
