// What the schedule's tests share: the radio's settings key and the platform's bookings, on a handset of the
// test's own.
#pragma once

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "schedule/schedule_entry.h"
#include "shell/app_block.h"
#include "shell/settings_key.h"
#include "tests/support/fake_fm_device.h"
#include "tests/support/wait.h"
#include "tests/unit/aygshell/test_handset.h"

namespace test {

// A row of the list, or the texts of an entry.
struct Texts {
    std::wstring channel, week, start, end;
    bool operator==(const Texts& other) const {
        return channel == other.channel && week == other.week && start == other.start && end == other.end;
    }
};
std::ostream& operator<<(std::ostream& out, const Texts& texts);

class ScheduleTest : public testing::Test {
  protected:
    ScheduleTest();
    ~ScheduleTest() override;

    // The subkeys of the settings key, and what one of them says.
    static std::vector<std::wstring> EntryNames();
    static Texts EntryTexts(const std::wstring& name);
    static void WriteEntry(const std::wstring& name, const Texts& texts);
    // The platform's bookings, by name.
    static std::vector<std::wstring> Booked();
    static std::wstring BookedValue(const std::wstring& name, const wchar_t* value);
    // Sets the handset's clock to a local time of November 2026; the 22nd is a Sunday.
    static void SetClock(WORD day, WORD hour, WORD minute);

    TestHandset handset;
    FakeFMDevice device;
};

}  // namespace test
