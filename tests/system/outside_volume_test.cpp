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
        for (std::size_t at = 0; at < m_whole.size(); ++at) {
            if (m_whole[at] != 0) m_used.push_back(at);
        }
        ASSERT_GT(m_used.size(), 500u);
        // Around each of the three names: what the records say of themselves.
        const std::string name("B\0e\0t\0a\0", 8), other("G\0a\0m\0m\0a\0", 10), third("A\0l\0p\0h\0a\0", 10);
        for (const std::string& text : {name, other, third}) {
            for (std::size_t at = m_whole.find(text); at != m_whole.npos; at = m_whole.find(text, at + 1)) {
                for (std::size_t place = at - 40; place < at + 40; ++place) m_records.push_back(place);
                for (std::size_t place = at - 8; place < at; ++place) m_heads.push_back(place);
            }
        }
        ASSERT_GE(m_records.size(), 3u * 80);
    }
    std::wstring Volume() const { return handset.DevicePath(L"\\KORA.vol"); }

    // As it was, but for the count of its changes: whoever has read the one before does not take it for the
    // same.
    std::string Counted() {
        std::string bytes = m_whole;
        ++m_changes;
        for (std::size_t i = 0; i < 4; ++i) bytes[24 + i] = static_cast<char>(m_changes >> (24 - 8 * i));
        return bytes;
    }
    // One byte or a few, of the records, of all that hold something, or where a page begins; now and then the
    // end is missing.
    void Damage() {
        std::string bytes = Counted();
        for (unsigned hits = m_random() % 4 == 0 ? 1 + m_random() % 12 : 1; hits > 0; --hits) {
            const std::vector<std::size_t>& places = m_random() % 2 == 0 ? m_used : m_records;
            std::size_t at = places[m_random() % places.size()];
            if (m_random() % 8 == 0) at = at / 4096 * 4096 + m_random() % 120;
            bytes[at] = static_cast<char>(m_random());
        }
        if (m_random() % 16 == 0) bytes.resize(m_random() % bytes.size());
        Write(bytes);
    }
    // The kind and the length of a few names alone: the volume is still one, and its records are read.
    void DamageRecords() {
        std::string bytes = Counted();
        for (int hits = 0; hits < 3; ++hits)
            bytes[m_heads[m_random() % m_heads.size()]] = static_cast<char>(m_random());
        Write(bytes);
    }
    void Write(const std::string& bytes) const {
        // In place: an operation that failed may have left the volume mounted.
        test::WriteWholeFile(Volume(), bytes);
    }

    std::string m_whole;
    std::vector<std::size_t> m_used, m_records, m_heads;
    std::uint32_t m_changes = 1'000'000;
    std::mt19937 m_random{20260112};
};

TEST_F(OutsideVolume, AStartFromAVolumeWithAnyByteChangedOpensAndCloses) {
    const ULONGLONG end = GetTickCount64() + test::FuzzTime_ms(5);
    for (int start = 0; GetTickCount64() < end; ++start) {
        SCOPED_TRACE(start);
        start % 2 == 0 ? Damage() : DamageRecords();
        Radio radio(handset);
        ASSERT_TRUE(WaitFor(
            [&] { return !radio.Runs() || (radio.Window() != nullptr && IsWindowVisible(radio.Window())); }));
        ASSERT_TRUE(Closes(radio));
    }
    EXPECT_FALSE(CaughtAFault());
}

TEST_F(OutsideVolume, OneThatChangesUnderARunningRadioLeavesItAliveAndAWholeOneIsReadAgain) {
    Hurry(kClockRate);
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Type("876");
    ASSERT_TRUE(WaitForCall("SetChannel 8760 -> 0"));
    const ULONGLONG end = GetTickCount64() + test::FuzzTime_ms(8);
    // However long so many take: a radio that keeps the pace of life does less in the same time.
    constexpr unsigned kLeast = 21;
    for (unsigned volumes = 0; volumes < kLeast || GetTickCount64() < end; ++volumes) {
        SCOPED_TRACE(volumes);
        Damage();
        // A look at the name of what is tuned; now and then a fill of the list, or an insertion.
        radio.Send(0x8002, static_cast<WPARAM>(volumes % 2 == 0 ? SKIN_STEP_UP : SKIN_STEP_DOWN), 0);
        if (volumes % 16 == 0) {
            radio.Command(IDC_CHANNEL_LISTS);
            if (const HWND dialog = radio.WaitForBox(nullptr)) {
                test::PickRow(dialog, IDC_GROUP_LIST, 0);
                test::PressSoftKey(dialog, test::SoftKey::kLeft);
            }
        } else if (volumes % 16 == 8) {
            radio.Command(IDC_ADD_CURRENT);
            if (const HWND dialog = radio.WaitForBox(nullptr))
                test::PressSoftKey(dialog, test::SoftKey::kLeft);
        }
        ASSERT_TRUE(Answers(radio));
    }
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
