// A volume in which anything was changed: the radio starts, shows what it can read, and works on.
#include <random>

#include "tests/system/outside_test.h"

namespace {

using test::Radio;
using test::WaitFor;

class OutsideVolume : public test::OutsideTest {
  protected:
    void SetUp() override {
        OutsideTest::SetUp();
        m_whole = test::ReadWholeFile(Volume());
        ASSERT_GT(m_whole.size(), 4096u);
    }
    std::wstring Volume() const { return handset.DevicePath(L"\\KORA.vol"); }

    // Few bytes, and half of them where a page begins; now and then the end is missing.
    void Damage() {
        std::string bytes = m_whole;
        for (unsigned hits = 1 + m_random() % 12; hits > 0; --hits) {
            std::size_t at = m_random() % bytes.size();
            if (m_random() % 2 == 0) at = at / 4096 * 4096 + m_random() % 120;
            bytes[at] = static_cast<char>(m_random());
        }
        if (m_random() % 8 == 0) bytes.resize(m_random() % bytes.size());
        // In place: an operation that failed may have left the volume mounted.
        test::WriteWholeFile(Volume(), bytes);
    }

    std::string m_whole;
    std::mt19937 m_random{20260112};
};

TEST_F(OutsideVolume, AStartFromAVolumeWithAnyByteChangedOpensAndCloses) {
    const ULONGLONG end = GetTickCount64() + test::FuzzTime_ms(5);
    for (int start = 0; GetTickCount64() < end; ++start) {
        SCOPED_TRACE(start);
        Damage();
        Radio radio(handset);
        ASSERT_TRUE(WaitFor(
            [&] { return !radio.Runs() || (radio.Window() != nullptr && IsWindowVisible(radio.Window())); }));
        ASSERT_TRUE(Closes(radio));
    }
    EXPECT_FALSE(CaughtAFault());
}

TEST_F(OutsideVolume, OneThatChangesUnderARunningRadioLeavesItAliveAndAWholeOneIsReadAgain) {
    SetClockRate(kClockRate);
    Radio radio(handset);
    radio.WaitUntilShown();
    const ULONGLONG end = GetTickCount64() + test::FuzzTime_ms(8);
    unsigned volumes = 0;
    for (; GetTickCount64() < end; ++volumes) {
        SCOPED_TRACE(volumes);
        Damage();
        // A look at the name of what is tuned; a fill of the list; an insertion.
        radio.Type(volumes % 2 == 0 ? "985" : "876");
        ASSERT_TRUE(Answers(radio));
        if (volumes % 4 == 0) {
            radio.Command(IDC_CHANNEL_LISTS);
            if (const HWND dialog = radio.WaitForBox(nullptr)) {
                test::PickRow(dialog, IDC_GROUP_LIST, 0);
                test::PressSoftKey(dialog, test::SoftKey::kLeft);
            }
        } else if (volumes % 4 == 1) {
            radio.Command(IDC_ADD_CURRENT);
            if (const HWND dialog = radio.WaitForBox(nullptr))
                test::PressSoftKey(dialog, test::SoftKey::kLeft);
        }
        ASSERT_TRUE(Answers(radio));
    }
    EXPECT_GT(volumes, 5u);
    EXPECT_FALSE(CaughtAFault());

    EXPECT_TRUE(Closes(radio));
    for (const wchar_t* journal : {L"-journal", L"-wal", L"-shm"}) DeleteFileW((Volume() + journal).c_str());
    test::WriteWholeFile(Volume(), m_whole);
    Select(L"Test");
    Radio next(handset);
    next.WaitUntilShown();
    EXPECT_TRUE(WaitForRows(next, 3));
    EXPECT_TRUE(Closes(next));
}

}  // namespace
