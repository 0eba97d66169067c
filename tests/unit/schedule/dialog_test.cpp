// The dialog as it opens, its day buttons, its channel, its two layouts, and how it ends.
#include <windows.h>

#include <commctrl.h>

#include <cstdlib>
#include <utility>

#include "tests/support/registered_controls.h"
#include "tests/support/trace_capture.h"
#include "tests/support/wait.h"
#include "tests/unit/schedule/open_schedule.h"

namespace {

using test::OpenSchedule;
using test::Texts;
using testing::ElementsAre;
using testing::IsEmpty;

using Dialog = test::ScheduleTest;

TEST_F(Dialog, OpensWithTodayTheTunedChannelAndTheHandsetsTime) {
    SetClock(26, 21, 7);  // a Thursday
    device.channel = 10230;
    OpenSchedule schedule;
    EXPECT_THAT(schedule.SelectedDays(), ElementsAre(4));
    EXPECT_EQ(schedule.Text(IDC_SCHEDULE_CHANNEL), L"102.3");
    EXPECT_EQ(schedule.Text(IDC_SCHEDULE_START), L"21 : 07");
    EXPECT_EQ(schedule.Text(IDC_SCHEDULE_END), L"21 : 07");
    EXPECT_THAT(schedule.Rows(), IsEmpty());
    const std::wstring names[] = {L"Sun", L"Mon", L"Tue", L"Wed", L"Thu", L"Fri", L"Sat"};
    for (int day = 0; day < 7; ++day) EXPECT_EQ(schedule.Text(IDC_SCHEDULE_SUNDAY + day), names[day]);
}

TEST_F(Dialog, ItsListPickersAndArrowsAreRegisteredBeforeItOpens) {
    test::g_registeredControls.clear();
    const OpenSchedule schedule;
    EXPECT_THAT(test::g_registeredControls, ElementsAre(0x101u, static_cast<DWORD>(ICC_UPDOWN_CLASS)));
}

TEST_F(Dialog, OpensAtTheBeginningOfTheBandWithoutATuner) {
    g_app.pFMDevice = nullptr;
    OpenSchedule schedule;
    EXPECT_EQ(schedule.Text(IDC_SCHEDULE_CHANNEL), L"87.5");
}

TEST_F(Dialog, ListsTheStoredEntriesAsTheyStandWithFullRows) {
    WriteEntry(L"RunAppAtTime-0000000001", {L"87.5", L"Mon", L"10 : 00", L"11 : 00"});
    WriteEntry(L"RunAppAtTime-0000000002", {L"98.5", L"Sat", L"00 : 00", L"23 : 59"});
    OpenSchedule schedule;
    EXPECT_THAT(schedule.Rows(), ElementsAre(Texts{L"87.5", L"Mon", L"10 : 00", L"11 : 00"},
                                             Texts{L"98.5", L"Sat", L"00 : 00", L"23 : 59"}));
    const auto styles = SendMessageW(schedule.Control(IDC_SCHEDULE_LIST), LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0);
    EXPECT_NE(styles & LVS_EX_FULLROWSELECT, 0);
}

TEST_F(Dialog, ATapTogglesADayAndTracesAllOfThem) {
    OpenSchedule schedule;
    schedule.ChooseDays({});
    std::string trace = test::TraceOf([&] { schedule.TapDay(0); });
    EXPECT_EQ(trace, "Check Result Sun:1 ,Mon:0, Tue:0, Wed:0, Thr:0, Fri:0, Sat:0,\n");
    trace = test::TraceOf([&] { schedule.TapDay(6); });
    EXPECT_EQ(trace, "Check Result Sun:1 ,Mon:0, Tue:0, Wed:0, Thr:0, Fri:0, Sat:1,\n");
    trace = test::TraceOf([&] { schedule.TapDay(0); });
    EXPECT_EQ(trace, "Check Result Sun:0 ,Mon:0, Tue:0, Wed:0, Thr:0, Fri:0, Sat:1,\n");
    EXPECT_THAT(schedule.SelectedDays(), ElementsAre(6));
}

TEST_F(Dialog, OncePaintedItAsksForNoPaintAgain) {
    OpenSchedule schedule;
    schedule.ChooseDays({2});
    RedrawWindow(schedule.Dialog(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
    EXPECT_TRUE(test::WaitFor([&] { return !GetUpdateRect(schedule.Dialog(), nullptr, FALSE); }));
}

TEST_F(Dialog, AChosenDayIsWhiteOnBlackAndAnotherBlackOnWhite) {
    OpenSchedule schedule;
    schedule.ChooseDays({2});
    const HDC dc = CreateCompatibleDC(nullptr);
    for (const int day : {2, 3}) {
        const auto brush = reinterpret_cast<HBRUSH>(
            SendMessageW(schedule.Dialog(), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(dc),
                         reinterpret_cast<LPARAM>(schedule.Control(IDC_SCHEDULE_SUNDAY + day))));
        LOGBRUSH filled = {};
        GetObjectW(brush, sizeof filled, &filled);
        EXPECT_EQ(GetTextColor(dc), day == 2 ? RGB(255, 255, 255) : RGB(0, 0, 0)) << day;
        EXPECT_EQ(GetBkColor(dc), day == 2 ? RGB(0, 0, 0) : RGB(255, 255, 255)) << day;
        EXPECT_EQ(filled.lbColor, GetBkColor(dc)) << day;
    }
    DeleteDC(dc);
}

TEST_F(Dialog, ATapIsSeenOnTheDayAtOnce) {
    OpenSchedule schedule;
    schedule.ChooseDays({});
    const HWND day = schedule.Control(IDC_SCHEDULE_SUNDAY + 1);
    const HDC dc = GetDC(day);
    for (const COLORREF expected : {RGB(0, 0, 0), RGB(255, 255, 255)}) {
        schedule.TapDay(1);
        EXPECT_EQ(GetPixel(dc, 1, 1), expected);
    }
    ReleaseDC(day, dc);
}

TEST_F(Dialog, ATapBesideTheDaysTogglesNone) {
    OpenSchedule schedule;
    const std::string trace =
        test::TraceOf([&] { SendMessageW(schedule.Dialog(), WM_LBUTTONUP, 0, MAKELPARAM(3, 3)); });
    EXPECT_EQ(trace, "");
    EXPECT_THAT(schedule.SelectedDays(), ElementsAre(3));
}

TEST_F(Dialog, TheArrowsStepByOneTenthOfAMegahertzWithinTheBand) {
    device.channel = 8750;
    OpenSchedule schedule;
    const HWND arrows = schedule.Control(IDC_SCHEDULE_CHANNEL_SPIN);
    int low = 0, high = 0;
    SendMessageW(arrows, UDM_GETRANGE32, reinterpret_cast<WPARAM>(&low), reinterpret_cast<LPARAM>(&high));
    EXPECT_EQ(low, 8750);
    EXPECT_EQ(high, 10800);
    EXPECT_EQ(SendMessageW(arrows, UDM_GETBUDDY, 0, 0),
              reinterpret_cast<LRESULT>(schedule.Control(IDC_SCHEDULE_CHANNEL)));
    UDACCEL acceleration[2] = {};
    EXPECT_EQ(SendMessageW(arrows, UDM_GETACCEL, 2, reinterpret_cast<LPARAM>(acceleration)), 1);
    EXPECT_EQ(acceleration[0].nInc, 10u);
    // Up and down keys belong to the arrows of a field.
    SendMessageW(schedule.Control(IDC_SCHEDULE_CHANNEL), WM_KEYDOWN, VK_UP, 1);
    EXPECT_EQ(schedule.Text(IDC_SCHEDULE_CHANNEL), L"87.6");
    SendMessageW(schedule.Control(IDC_SCHEDULE_CHANNEL), WM_KEYDOWN, VK_DOWN, 1);
    SendMessageW(schedule.Control(IDC_SCHEDULE_CHANNEL), WM_KEYDOWN, VK_DOWN, 1);
    EXPECT_EQ(schedule.Text(IDC_SCHEDULE_CHANNEL), L"87.5");
}

TEST_F(Dialog, TheArrowsGoOnFromAFrequencyThatWasTyped) {
    OpenSchedule schedule;
    schedule.SetChannel(L"98.5");
    SendMessageW(schedule.Control(IDC_SCHEDULE_CHANNEL), WM_KEYDOWN, VK_UP, 1);
    EXPECT_EQ(schedule.Text(IDC_SCHEDULE_CHANNEL), L"98.6");
}

TEST_F(Dialog, TheTunersHundredthsAreKeptByTheArrows) {
    device.channel = 8755;
    OpenSchedule schedule;
    EXPECT_EQ(schedule.Text(IDC_SCHEDULE_CHANNEL), L"87.5");
    EXPECT_EQ(SendMessageW(schedule.Control(IDC_SCHEDULE_CHANNEL_SPIN), UDM_GETPOS32, 0, 0), 8755);
}

TEST_F(Dialog, TheChannelTakesDigitsAndOnePoint) {
    OpenSchedule schedule;
    schedule.SetChannel(L"");
    for (const wchar_t c : std::wstring(L"9x8.a5.-")) {
        SendMessageW(schedule.Control(IDC_SCHEDULE_CHANNEL), WM_CHAR, c, 1);
    }
    EXPECT_EQ(schedule.Text(IDC_SCHEDULE_CHANNEL), L"98.5");
    SendMessageW(schedule.Control(IDC_SCHEDULE_CHANNEL), WM_CHAR, VK_BACK, 1);
    EXPECT_EQ(schedule.Text(IDC_SCHEDULE_CHANNEL), L"98.");
}

TEST_F(Dialog, EndsWithTheButtonThatClosedIt) {
    OpenSchedule done;
    done.Command(IDOK);
    EXPECT_EQ(done.Result(), IDOK);
    OpenSchedule closed;
    closed.Command(IDC_SCHEDULE_CLOSE);
    EXPECT_EQ(closed.Result(), 1054);
}

TEST_F(Dialog, EndsWith16WhenItsWindowIsClosed) {
    OpenSchedule schedule;
    PostMessageW(schedule.Dialog(), WM_CLOSE, 0, 0);
    EXPECT_EQ(schedule.Result(), 16);
}

// Whether every control lies where the template has it.
void ExpectLaidOutAs(const OpenSchedule& schedule, UINT templateId) {
    const HWND reference = CreateDialogParamW(
        g_app.hInstance, MAKEINTRESOURCEW(templateId), nullptr,
        [](HWND, UINT, WPARAM, LPARAM) -> INT_PTR { return FALSE; }, 0);
    for (const int id : {IDC_SCHEDULE_START, IDC_SCHEDULE_END, IDC_SCHEDULE_LIST, IDC_SCHEDULE_SUNDAY,
                         IDC_SCHEDULE_SUNDAY + 6, IDC_SCHEDULE_ADD, IDC_SCHEDULE_CLOSE}) {
        RECT expected = {}, actual = {};
        GetWindowRect(GetDlgItem(reference, id), &expected);
        GetWindowRect(schedule.Control(id), &actual);
        MapWindowPoints(nullptr, reference, reinterpret_cast<POINT*>(&expected), 2);
        MapWindowPoints(nullptr, schedule.Dialog(), reinterpret_cast<POINT*>(&actual), 2);
        // A pixel may be lost in rounding dialog units.
        const LONG differences[] = {expected.left - actual.left, expected.top - actual.top,
                                    expected.right - actual.right, expected.bottom - actual.bottom};
        for (const LONG difference : differences) EXPECT_LE(std::abs(difference), 1) << id;
    }
    DestroyWindow(reference);
}

TEST_F(Dialog, IsLaidOutForTheScreenThatItOpensOn) {
    OpenSchedule upright;
    ExpectLaidOutAs(upright, IDD_SCHEDULE_PORTRAIT);
    upright.Command(IDOK);
    EXPECT_EQ(upright.Result(), IDOK);
    handset.SetScreen(320, 240);
    OpenSchedule lying;
    ExpectLaidOutAs(lying, IDD_SCHEDULE_LANDSCAPE);
}

// Where the arrows begin and end, from the right end of their field.
std::pair<LONG, LONG> ArrowsFromTheirField(const OpenSchedule& schedule) {
    RECT field = {}, arrows = {};
    GetWindowRect(schedule.Control(IDC_SCHEDULE_CHANNEL), &field);
    GetWindowRect(schedule.Control(IDC_SCHEDULE_CHANNEL_SPIN), &arrows);
    return {arrows.left - field.right, arrows.right - field.left};
}

TEST_F(Dialog, TheArrowsStayInTheirFieldWhenTheDisplayTurns) {
    OpenSchedule schedule;
    const std::pair<LONG, LONG> opened = ArrowsFromTheirField(schedule);
    handset.SetScreen(320, 240);
    test::SendDisplayChange(schedule.Dialog());
    EXPECT_EQ(ArrowsFromTheirField(schedule), opened);
    handset.SetScreen(240, 320);
    test::SendDisplayChange(schedule.Dialog());
    EXPECT_EQ(ArrowsFromTheirField(schedule), opened);
    schedule.SetChannel(L"101.2");
    EXPECT_EQ(schedule.Text(IDC_SCHEDULE_CHANNEL), L"101.2");
}

TEST_F(Dialog, IsLaidOutAgainWhenTheDisplayTurnsAndKeepsWhatItShows) {
    WriteEntry(L"RunAppAtTime-0000000001", {L"87.5", L"Mon", L"10 : 00", L"11 : 00"});
    OpenSchedule schedule;
    schedule.ChooseDays({1, 5});
    schedule.SetChannel(L"101.2");
    handset.SetScreen(320, 240);
    test::SendDisplayChange(schedule.Dialog());
    ExpectLaidOutAs(schedule, IDD_SCHEDULE_LANDSCAPE);
    EXPECT_THAT(schedule.SelectedDays(), ElementsAre(1, 5));
    EXPECT_EQ(schedule.Text(IDC_SCHEDULE_CHANNEL), L"101.2");
    EXPECT_EQ(schedule.Rows().size(), 1u);
    handset.SetScreen(240, 320);
    test::SendDisplayChange(schedule.Dialog());
    ExpectLaidOutAs(schedule, IDD_SCHEDULE_PORTRAIT);
}

}  // namespace
