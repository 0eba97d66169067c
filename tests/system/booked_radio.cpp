#include "tests/system/booked_radio.h"

#include "tests/support/hand.h"
#include "tests/support/remote_list.h"

namespace test {
std::string Handset(const std::wstring& arguments) {
    std::string said;
    EXPECT_EQ(RunProgram(L"handset.exe", arguments, &said), 0u) << said;
    return said;
}

std::string HandsetTime() {
    return Handset(L"clock").substr(0, sizeof "2026-11-23 09:57:00" - 1);
}

void BookByHand(HWND dialog, const HandBooking& booking) {
    const HWND edit = GetDlgItem(dialog, IDC_SCHEDULE_CHANNEL);
    SendMessageW(edit, EM_SETSEL, 0, -1);
    for (const char* c = booking.channel; *c != '\0'; ++c)
        SendMessageW(edit, WM_CHAR, static_cast<WPARAM>(*c), 1);
    StepMinutes(GetDlgItem(dialog, IDC_SCHEDULE_START), booking.start_min);
    StepMinutes(GetDlgItem(dialog, IDC_SCHEDULE_END), booking.end_min);
    for (const int day : booking.daysToTap) {
        RECT place = {};
        GetWindowRect(GetDlgItem(dialog, IDC_SCHEDULE_SUNDAY + day), &place);
        Handset(L"tap " + std::to_wstring((place.left + place.right) / 2) + L" " +
                std::to_wstring((place.top + place.bottom) / 2) + L" 0");
    }
    const HWND list = GetDlgItem(dialog, IDC_SCHEDULE_LIST);
    const int before = RowCount(list);
    // Posted, as the taps are, so that it comes after them.
    PressButton(dialog, IDC_SCHEDULE_ADD);
    EXPECT_TRUE(WaitFor([&] { return RowCount(list) > before; })) << "nothing was booked";
    // Answered when all days are booked.
    SendMessageW(dialog, WM_NULL, 0, 0);
}

BookedRadioTest::BookedRadioTest() {
    Handset(L"clock 2026-11-23 09:57");
}

BookedRadioTest::~BookedRadioTest() {
    RunProgram(L"handset.exe", L"stop");
}

HWND BookedRadioTest::OpenSchedule(const Radio& radio) {
    radio.Command(IDC_SCHEDULE);
    EXPECT_NE(radio.WaitForBox(nullptr), nullptr) << "the schedule did not open";
    return radio.Box(nullptr);
}

void BookedRadioTest::CloseRadio(const Radio& radio) {
    Handset(L"stop");
    EXPECT_TRUE(radio.WaitUntilGone());
}

int BookedRadioTest::Traced(const std::string& text) const {
    const std::string trace = handset.Trace();
    int count = 0;
    for (std::size_t at = trace.find(text); at != std::string::npos; at = trace.find(text, at + 1)) ++count;
    return count;
}

bool BookedRadioTest::WaitForTraces(const std::string& text, int count, DWORD deadline_ms) const {
    return WaitFor([&] { return Traced(text) >= count; }, deadline_ms);
}

}  // namespace test
