// A handset with the stand-in for the radio on it, bookings, and a clock of the test's own.
#pragma once

#include <string>
#include <vector>

#include "handset/service/booking_store.h"
#include "tests/unit/handset/stand_in_test.h"

namespace panel {

// Starts that are booked here end at once ("exit 0 …"), so that each leaves a line of its own.
class BookedHandset : public StandInTest {
  protected:
    // 2026-11-23 10:00:00, a Monday, and the clock a little before it.
    BookedHandset();

    // Books the stand-in for a local time; its command line is "exit 0 WORD".
    void Book(const std::wstring& name, const std::wstring& word, handset::LocalSeconds time,
              handset::Repeat repeat = handset::Repeat::kEveryWeek) const;
    // The same with this very command line.
    void BookLine(const std::wstring& name, const std::wstring& commandLine, handset::LocalSeconds time,
                  handset::Repeat repeat = handset::Repeat::kEveryWeek) const;
    // How often the stand-in was started with this word.
    [[nodiscard]] int StartsOf(const std::string& word) const;
    [[nodiscard]] bool WaitForStart(const std::string& word) const;
    // Looks as a service that has just come into being does, until everything that is due had its turn; what
    // it said is in console_.
    void LookOnce();
    static void SetClock(handset::LocalSeconds time);

    const handset::LocalSeconds ten_ = *handset::ReadLocalTime(L"2026-11-23 10:00:00");
};

// handset.exe as a process of its own.
class HandsetProcess {
  public:
    explicit HandsetProcess(const std::wstring& arguments);
    ~HandsetProcess() { Kill(); }
    HandsetProcess(const HandsetProcess&) = delete;
    HandsetProcess& operator=(const HandsetProcess&) = delete;
    void Kill();
    // The exit code once it has ended; -1 when it does not.
    int Wait();
    [[nodiscard]] std::string Output() const;

  private:
    std::wstring m_file;
    handset::OwnedHandle m_process;
};

inline constexpr handset::LocalSeconds kMinute_s = 60, kHour_s = 3600, kDay_s = 86400, kWeek_s = 7 * kDay_s;

}  // namespace panel
