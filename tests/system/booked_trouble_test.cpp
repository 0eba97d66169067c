// Bookings in trouble: the clock is set, daylight saving comes and goes, and the registry is full of
// nonsense.
#include "tests/support/remote_list.h"
#include "tests/system/booked_radio.h"

namespace {

using test::BookByHand;
using test::Handset;
using test::HandsetTime;
using test::Radio;
using test::ServiceProcess;
using test::WaitFor;
using testing::HasSubstr;

constexpr wchar_t kNotifications[] = L"HKLM\\System\\Notifications";

class BookedTrouble : public test::BookedRadioTest {
  protected:
    // One minute from two minutes after `time` on.
    void BookAt(const wchar_t* time, const char* channel) {
        Radio radio(handset);
        radio.WaitUntilShown();
        Handset(L"clock " + std::wstring(time));
        BookByHand(OpenSchedule(radio), {channel, {}, 2, 3});
        CloseRadio(radio);
    }
    int Starts() const { return Traced("Duration: "); }
    // Sets the clock a little before a time and lets it come.
    static void PassTime(const wchar_t* before, const std::string& after) {
        Handset(L"clock " + std::wstring(before));
        EXPECT_TRUE(WaitFor([&] { return HandsetTime() >= after; })) << after;
    }
    void CloseStarted(int starts) {
        ASSERT_TRUE(WaitFor([&] { return Starts() >= starts; })) << Starts();
        ASSERT_TRUE(WaitFor([] { return FindWindowW(L"Kora", nullptr) != nullptr; }));
        Handset(L"stop");
    }
};

// A tap on a row, the list's menu, its second item, and yes.
void DeleteAllByHand(const Radio& radio, HWND dialog) {
    const HWND list = GetDlgItem(dialog, IDC_SCHEDULE_LIST);
    const LPARAM row = MAKELPARAM(20, 50);
    PostMessageW(list, WM_LBUTTONDOWN, MK_LBUTTON, row);
    PostMessageW(list, WM_LBUTTONUP, 0, row);
    ASSERT_TRUE(WaitFor([&] { return test::SelectedRow(list) >= 0; }));
    PostMessageW(dialog, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(list), MAKELPARAM(60, 200));
    const auto menu = [] { return FindWindowW(L"#32768", nullptr); };
    ASSERT_TRUE(WaitFor([&] { return menu() != nullptr && IsWindowVisible(menu()); })) << "no menu";
    for (const WPARAM key : {VK_DOWN, VK_DOWN, VK_RETURN}) PostMessageW(dialog, WM_KEYDOWN, key, 1);
    HWND box = nullptr;
    ASSERT_TRUE(WaitFor([&] { return (box = radio.Box(L"FM")) != nullptr && box != dialog; }));
    Radio::Answer(box, IDOK);
    EXPECT_TRUE(WaitFor([&] { return test::RowCount(list) == 0; }));
}

TEST_F(BookedTrouble, AClockThatIsSetBackAndForwardStartsEachTimeOnce) {
    const ServiceProcess service(handset);
    BookAt(L"2026-11-23 09:56", "98.5");
    Handset(L"clock 2026-11-23 09:57:59");
    ASSERT_NO_FATAL_FAILURE(CloseStarted(1));
    // Back across it, and once more through it.
    PassTime(L"2026-11-23 09:57:59", "2026-11-23 09:58:01");
    // Back by days, forward to the day before the next.
    PassTime(L"2026-11-20 09:57:59", "2026-11-20 09:58:01");
    PassTime(L"2026-11-29 09:57:59", "2026-11-29 09:58:01");
    EXPECT_EQ(Starts(), 1);
    // Forward across the next one: it is made up for within the hour.
    Handset(L"clock 2026-11-30 10:50");
    ASSERT_NO_FATAL_FAILURE(CloseStarted(2));
    // Forward across the one after it by too much.
    PassTime(L"2026-12-07 11:05", "2026-12-07 11:05:01");
    EXPECT_EQ(Starts(), 2);
    EXPECT_THAT(Handset(L"schedule"), HasSubstr("next Mon 2026-12-14 09:58:00"));
}

// As two programs may book them; the radio's own dialog takes no two of one minute.
TEST_F(BookedTrouble, OfTwoBookingsOfOneMinuteTheLaterOneIsRecordedAndOneRadioIsLeft) {
    PlayTone();
    const auto book = [this](const wchar_t* name, const wchar_t* channel) {
        const std::wstring booking = kNotifications + (L"\\" + std::wstring(name));
        handset.SetRegistry(booking, L"Application", L"\\Windows\\UI.exe");
        handset.SetRegistry(booking, L"CommandLine",
                            L"-Rec -Channel " + std::wstring(channel) + L" -Duration 1");
        handset.SetRegistry(booking, L"Repeat", 2u);
        handset.SetRegistry(booking, L"Start", L"2026-11-23 10:00:00");
    };
    book(L"RunAppAtTime-0000000001", L"8760");
    book(L"RunAppAtTime-0000000002", L"9850");
    Handset(L"clock " + std::to_wstring(test::OnTheEther() ? 1 : 4));
    Handset(L"clock 2026-11-23 09:59:58");
    const ServiceProcess service(handset);
    EXPECT_TRUE(WaitForTraces("Channel: 9850", 1));
    EXPECT_TRUE(WaitForTraces("FM: Program Terminated.", 1));
    // The first was closed before it recorded, the second by itself when its minute was over.
    EXPECT_TRUE(WaitForTraces("FM: Program Terminated.", 2, test::kBookedMinute_ms));
    EXPECT_EQ(Starts(), 2);
    EXPECT_THAT(handset.Trace(), testing::Not(HasSubstr("SetFileName() failed")));
    EXPECT_THAT(Handset(L"status"), HasSubstr("not running"));
    EXPECT_TRUE(Exists(test::Music(L"98.5-0000.amr")));
    EXPECT_FALSE(Exists(test::Music(L"87.6-0000.amr")));
}

TEST_F(BookedTrouble, DaylightSavingNeitherLosesARecordingNorStartsItTwice) {
    NEEDS_THE_SIMULATED_BAND("more than an hour and a half, which pass on a fast clock alone");
    handset.SetState(L"TimeZone", L"W. Europe Standard Time");
    const ServiceProcess service(handset);
    // Both on a Sunday at 02:32: an hour that is left out in March and comes twice in October.
    BookAt(L"2027-03-21 02:30", "98.5");
    Handset(L"clock 2027-03-28 01:59:59");
    ASSERT_NO_FATAL_FAILURE(CloseStarted(1));
    EXPECT_EQ(HandsetTime().substr(0, 14), "2027-03-28 03:");

    Handset(L"clock 2027-10-31 02:31:59");
    ASSERT_NO_FATAL_FAILURE(CloseStarted(2));
    // From 02:32 to 03:10 it is 98 minutes now.
    Handset(L"clock 1200");
    EXPECT_TRUE(WaitFor([] { return HandsetTime() >= "2027-10-31 03:10"; }));
    EXPECT_EQ(Starts(), 2);
}

TEST_F(BookedTrouble, HundredsOfBookingsAndNonsenseAreListedAndDeletedByHand) {
    constexpr int kBookings = 300;
    const auto text = [&](const std::wstring& name, const wchar_t* value, const std::wstring& data) {
        handset.SetRegistry(test::kRadioSettings + (L"\\" + name), value, data);
    };
    const std::size_t others = handset.RegistrySubkeys(test::kRadioSettings).size();
    for (int i = 1; i <= kBookings; ++i) {
        wchar_t name[32];
        swprintf(name, 32, L"RunAppAtTime-%010d", i);
        text(name, L"Channel", L"98.5");
        text(name, L"StartTime", L"10 : 00");
        text(name, L"EndTime", L"10 : 01");
        text(name, L"Week", L"Mon");
        const std::wstring booking = kNotifications + (L"\\" + std::wstring(name));
        handset.SetRegistry(booking, L"Application", L"\\Windows\\UI.exe");
        handset.SetRegistry(booking, L"CommandLine", L"-Rec -Channel 9850 -Duration 1");
        handset.SetRegistry(booking, L"Repeat", 2u);
        handset.SetRegistry(booking, L"Start", L"2026-11-23 10:00:00");
    }
    // Edited by hand into nonsense; the last is no booking's.
    text(L"RunAppAtTime-0000000008", L"StartTime", L"never");
    text(L"RunAppAtTime-0000000008", L"Week", L"Someday");
    text(L"RunAppAtTime-0000000009", L"Channel", std::wstring(5000, L'9'));
    handset.SetRegistry(test::kRadioSettings + std::wstring(L"\\RunAppAtTime-0000000010"), L"Week", 77u);
    text(std::wstring(250, L'k'), L"Channel", L"99.9");

    Radio radio(handset);
    radio.WaitUntilShown();
    const HWND dialog = OpenSchedule(radio);
    const HWND list = GetDlgItem(dialog, IDC_SCHEDULE_LIST);
    const int listed = test::RowCount(list);
    EXPECT_GE(listed, kBookings - 2);
    BookByHand(dialog, {"107.9", {}, 1, 2});
    EXPECT_EQ(test::RowCount(list), listed + 1);
    EXPECT_THAT(Handset(L"schedule"), HasSubstr("-Channel 10790 -Duration 1"));
    DeleteAllByHand(radio, dialog);
    EXPECT_EQ(test::RowCount(list), 0);
    EXPECT_TRUE(WaitFor([&] { return handset.RegistrySubkeys(kNotifications).empty(); }));
    EXPECT_EQ(handset.RegistrySubkeys(test::kRadioSettings).size(), others + 1);
}

}  // namespace
