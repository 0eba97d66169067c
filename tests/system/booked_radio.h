// What the tests of booked recordings share: the service, the handset's command line, and a hand that books
// in the radio's dialog.
#pragma once

#include <string>
#include <vector>

#include "tests/support/service_process.h"
#include "tests/system/recording_test.h"

namespace test {

// Runs the handset's command line, which must succeed; what it said.
std::string Handset(const std::wstring& arguments);
// The handset's local time: "2026-11-23 09:57:00".
std::string HandsetTime();

// What is booked by hand in the dialog: on each of the days that are shown as selected once the further ones
// have been tapped, in minutes after the time that the dialog opens with.
struct HandBooking {
    const char* channel;
    std::vector<int> daysToTap;  // 0 = Sunday
    int start_min, end_min;
};
// Returns when it is booked. The handset's command line taps the days, so the display must lie at the
// screen's corner.
void BookByHand(HWND dialog, const HandBooking& booking);

class BookedRadioTest : public RecordingTest {
  protected:
    // Monday, the 23rd of November 2026, 09:57.
    BookedRadioTest();
    // The service's radio is nobody's child here.
    ~BookedRadioTest() override;

    static HWND OpenSchedule(const Radio& radio);
    static void CloseRadio(const Radio& radio);
    int Traced(const std::string& text) const;
    bool WaitForTraces(const std::string& text, int count, DWORD deadline_ms = kDeadline_ms) const;
};

}  // namespace test
