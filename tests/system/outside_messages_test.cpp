// Another program sends the radio's own private messages, with anything in them.
#include <random>

#include "tests/system/outside_test.h"

namespace {

using test::Radio;
using test::WaitFor;

// As they are fixed: the scan's end, the skin's five, and what the platform tells.
constexpr UINT kPrivate[] = {0x2B0F, 0x8001, 0x8002, 0x8003, 0x8004, 0x8005, 0xA401, 0xA402, 0xA403, 0xA404};
constexpr UINT kHeadsetChanged = 0xA401;

class OutsideMessages : public test::OutsideTest {
  protected:
    // Ids of the main screen's elements, numbers at their bounds, and any.
    WPARAM AnyParameter() {
        static constexpr LONGLONG kNumbers[] = {0,          1,          -1,         62,         63,
                                                0xFFFF,     0x10000,    0x200E0,    0x7FFFFFFF, 0x80000000,
                                                0xFFFFFFFF, 0x00010000, 0x00020000, 0x20000000};
        switch (m_random() % 4) {
            case 0:
                return static_cast<WPARAM>(kNumbers[m_random() % std::size(kNumbers)]);
            case 1:
                return static_cast<WPARAM>(m_random()) << 32 | m_random();
            case 2:
                return (m_random() % 3) << 16 | (198 + m_random() % 32);
            default:
                return 198 + m_random() % 32;
        }
    }
    std::mt19937 m_random{20260111};
};

TEST_F(OutsideMessages, AnyPrivateMessageWithAnyParametersLeavesTheRadioAlive) {
    Hurry(kClockRate);
    Radio radio(handset);
    radio.WaitUntilShown();
    unsigned posted = 0;
    const ULONGLONG end = GetTickCount64() + test::FuzzTime_ms(8);
    // However long so many take: a radio that keeps the pace of life does less in the same time.
    constexpr unsigned kLeast = 101;
    while (posted < kLeast || GetTickCount64() < end) {
        // Several at a time: what one of them opens does not keep the next from coming.
        for (unsigned left = 1 + m_random() % 6; left != 0; --left) {
            const UINT message = kPrivate[m_random() % std::size(kPrivate)];
            const WPARAM wParam = AnyParameter();
            // Of a headset that is gone the radio ends, as it should.
            if (message == kHeadsetChanged && wParam == 0) continue;
            PostMessageW(radio.Window(), message, wParam, static_cast<LPARAM>(AnyParameter()));
            ++posted;
        }
        ASSERT_TRUE(Answers(radio)) << "after message " << posted;
    }
    EXPECT_FALSE(CaughtAFault());

    // It still is a radio: a call that is over lets it play, and it tunes.
    PostMessageW(radio.Window(), 0xA403, 0, 0);
    ASSERT_TRUE(Answers(radio));
    const std::size_t before = handset.TunerCalls().size();
    PostMessageW(radio.Window(), 0x8003, 0x20000 | SKIN_STEP_UP, 0);
    PostMessageW(radio.Window(), 0x8002, SKIN_STEP_UP, 0);
    EXPECT_TRUE(WaitFor([&] { return !TunerCommands(before).empty(); }));
    EXPECT_TRUE(Closes(radio));
}

}  // namespace
