// Whatever stands in the registry, and whatever changes there while it is read: the radio lives, answers and
// closes.
#include "tests/support/odd_values.h"
#include "tests/system/outside_test.h"

namespace {

using test::Radio;
using test::ReadPlace;
using test::WaitFor;

class OutsideRegistry : public test::OutsideTest {
  protected:
    // One thing that a user does; each reads other values.
    static void Use(const Radio& radio, unsigned which) {
        static constexpr WORD kDialogs[] = {IDC_SETTINGS, IDC_SCHEDULE, IDC_CHANNEL_LISTS, IDC_ADD_CURRENT};
        if (which < std::size(kDialogs)) {
            radio.Command(kDialogs[which]);
            WaitFor([&] { return !radio.Runs() || radio.Box(nullptr) != nullptr; }, 2000);
        } else if (which == 4) {
            radio.Tap(28, 251);  // record, and stop
        } else {
            radio.Type(which % 2 == 0 ? "985" : "876");
        }
    }
    static constexpr unsigned kUses = 7;
};

TEST_F(OutsideRegistry, AnyValueOfAnyKindThatChangesWhileItIsReadLeavesTheRadioAlive) {
    // Some seconds of them at either rate.
    const int rounds = Hurry(kClockRate) == 1 ? 5 : 50;
    Radio radio(handset);
    radio.WaitUntilShown();
    const int roundsBefore = Rounds();
    unsigned written = 0;
    {
        const test::OddWriter writer(test::kReadByTheRadio, 20260108);
        const ULONGLONG end = GetTickCount64() + test::FuzzTime_ms(8);
        for (unsigned use = 0; GetTickCount64() < end; ++use) {
            Use(radio, use % kUses);
            ASSERT_TRUE(Answers(radio)) << "after use " << use;
        }
        written = writer.Written();
    }
    EXPECT_GT(written, 500u);
    EXPECT_TRUE(WaitFor([&] { return Rounds() > roundsBefore + rounds; })) << "the monitor stands still";
    EXPECT_FALSE(CaughtAFault());

    // What was written is no reason to be any worse afterwards.
    handset.DeleteRegistryKey(test::kRadioSettings);
    for (const ReadPlace& place : test::kReadByTheRadio) {
        if (place.pszKey[0] == L'\0') handset.DeleteState(place.pszValue);
    }
    // A recording that still runs ends with a box, which would take the keys.
    PostMessageW(radio.Window(), 0x8003, SKIN_STOP_RECORD, 0);
    ASSERT_TRUE(IsDone(radio));
    ASSERT_TRUE(Answers(radio));
    const std::size_t before = handset.TunerCalls().size();
    ASSERT_TRUE(Types1079(radio));
    EXPECT_TRUE(WaitFor([&] { return Contains(TunerCommands(before), "SetChannel 10790 -> 0"); }));
    EXPECT_TRUE(Closes(radio));
}

TEST_F(OutsideRegistry, AHeadsetValueThatIsNoNumberEndsTheRadio) {
    Hurry(kClockRate);
    int warned = 0;
    for (const std::wstring& odd : {std::wstring(), std::wstring(L"1"), std::wstring(5000, L'x')}) {
        handset.PlugHeadset(true);
        Radio radio(handset);
        radio.WaitUntilShown();
        handset.SetRegistry(L"HKLM\\System\\State\\Hardware", L"Headset", odd);
        EXPECT_TRUE(radio.WaitUntilGone());
        EXPECT_EQ(radio.ExitCode(), 0u);
        // The box is there for a moment alone on so fast a clock.
        EXPECT_EQ(Count(test::Lines(handset.Trace()), "FM: === Headset off ==="), ++warned);
    }
}

TEST_F(OutsideRegistry, AStartFromAnyValuesOpensOrEndsWithItsWarning) {
    std::mt19937 random(20260109);
    const ULONGLONG end = GetTickCount64() + test::FuzzTime_ms(8);
    int opened = 0;
    for (int start = 0; GetTickCount64() < end; ++start) {
        SCOPED_TRACE(start);
        for (const ReadPlace& place : test::kReadAtAStart) {
            // One start in three finds nothing but texts beyond every buffer.
            start % 3 == 1 ? WriteLongText(place) : WriteOddValue(place, random);
        }
        const bool headset = start % 4 != 0;
        if (headset) handset.PlugHeadset(true);
        for (const wchar_t* program :
             {L"status", L"schedule", L"reg get HKLM\\System\\Notifications LastNumber"})
            EXPECT_LT(test::RunProgram(L"handset.exe", program), 0x100u) << "the command line crashed";

        Radio radio(handset);
        ASSERT_TRUE(WaitFor([&] {
            return !radio.Runs() || radio.Box(L"WARNING") != nullptr ||
                   (radio.Window() != nullptr && IsWindowVisible(radio.Window()));
        })) << "nothing is shown";
        if (const HWND warning = radio.Box(L"WARNING"); warning != nullptr && radio.Window() == nullptr) {
            EXPECT_FALSE(headset);
            Radio::Answer(warning, IDOK);
            EXPECT_TRUE(radio.WaitUntilGone());
            EXPECT_EQ(radio.ExitCode(), 0u);
            continue;
        }
        EXPECT_TRUE(Closes(radio));
        ++opened;
    }
    EXPECT_GT(opened, 0);
    EXPECT_FALSE(CaughtAFault());
}

TEST_F(OutsideRegistry, PresetsOfAnyKindAreBuiltOrRefusedAndTheVolumeCanBeRead) {
    std::mt19937 random(20260110);
    const ULONGLONG end = GetTickCount64() + test::FuzzTime_ms(4);
    while (GetTickCount64() < end) {
        for (const ReadPlace& place : test::kReadAsPresets) WriteOddValue(place, random);
        Radio builder(handset, L"Kora.vol");
        ASSERT_TRUE(WaitFor([&] { return !builder.Runs() || builder.Box(nullptr) != nullptr; }));
        ASSERT_NE(builder.Box(nullptr), nullptr) << "it ended with " << Hex(builder.ExitCode());
        Radio::Answer(builder.Box(nullptr), IDOK);
        ASSERT_TRUE(builder.WaitUntilGone());
        EXPECT_EQ(builder.ExitCode(), 0u);
        EXPECT_FALSE(Stored().empty());
    }
}

}  // namespace
