// A recording that is booked by hand: the handset's service starts the radio for it, which tunes, records for
// the booked minutes and closes.
#include "resources/resource_ids.h"
#include "tests/system/radio_test.h"

namespace {

using test::Radio;
using test::WaitFor;
using testing::HasSubstr;

// handset.exe in its service's place, writing to the same logs as the radio.
class ServiceProcess {
  public:
    explicit ServiceProcess(const test::HandsetUnderTest& handset) {
        SECURITY_ATTRIBUTES inherit = {sizeof inherit, nullptr, TRUE};
        const auto log = [&inherit](const std::wstring& path) {
            return CreateFileW(path.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherit,
                               OPEN_ALWAYS, 0, nullptr);
        };
        STARTUPINFOW startup = {};
        startup.cb = sizeof startup;
        startup.dwFlags = STARTF_USESTDHANDLES;
        startup.hStdError = log(handset.TraceFile());
        startup.hStdOutput = log(handset.ConsoleFile());
        std::wstring line = L"\"" + test::BuildFolder() + L"\\handset.exe\" service";
        EXPECT_TRUE(CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                                   &startup, &m_process));
        CloseHandle(startup.hStdError);
        CloseHandle(startup.hStdOutput);
    }
    ~ServiceProcess() {
        Kill();
        CloseHandle(m_process.hThread);
        CloseHandle(m_process.hProcess);
    }
    ServiceProcess(const ServiceProcess&) = delete;
    ServiceProcess& operator=(const ServiceProcess&) = delete;
    void Kill() {
        TerminateProcess(m_process.hProcess, 99);
        WaitForSingleObject(m_process.hProcess, 5000);
    }

  private:
    PROCESS_INFORMATION m_process = {};
};

std::string Handset(const std::wstring& arguments) {
    std::string said;
    EXPECT_EQ(test::RunProgram(L"handset.exe", arguments, &said), 0u) << said;
    return said;
}

std::wstring TextOf(HWND window) {
    wchar_t text[64] = L"";
    SendMessageW(window, WM_GETTEXT, 64, reinterpret_cast<LPARAM>(text));
    return text;
}

void Press(HWND window, int x, int y) {
    SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
    SendMessageW(window, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
}

class ScheduledRecording : public test::RadioTest {
  protected:
    // Monday, the 23rd of November 2026, 09:57.
    ScheduledRecording() { Handset(L"clock 2026-11-23 09:57"); }
    // The service's radio is nobody's child here.
    ~ScheduledRecording() override { test::RunProgram(L"handset.exe", L"stop"); }

    HWND OpenDialog(const Radio& radio) const {
        radio.Command(IDC_SCHEDULE);
        EXPECT_TRUE(
            WaitFor([&] { return radio.Box(nullptr) != nullptr && IsWindowVisible(radio.Box(nullptr)); }));
        return radio.Box(nullptr);
    }
    // Types a channel, taps further days, and books from 09:58 to 09:59: one minute.
    void BookByHand(HWND dialog, const char* channel, const std::vector<int>& furtherDays) const {
        const HWND edit = GetDlgItem(dialog, IDC_SCHEDULE_CHANNEL);
        SendMessageW(edit, EM_SETSEL, 0, -1);
        for (const char* c = channel; *c != '\0'; ++c)
            SendMessageW(edit, WM_CHAR, static_cast<WPARAM>(*c), 1);
        StepMinute(GetDlgItem(dialog, IDC_SCHEDULE_START), 1);
        StepMinute(GetDlgItem(dialog, IDC_SCHEDULE_END), 2);
        EXPECT_EQ(TextOf(GetDlgItem(dialog, IDC_SCHEDULE_START)), L"09 : 58");
        EXPECT_EQ(TextOf(GetDlgItem(dialog, IDC_SCHEDULE_END)), L"09 : 59");
        int taps = Traced("Check Result ");
        for (const int day : furtherDays) {
            RECT place = {};
            GetWindowRect(GetDlgItem(dialog, IDC_SCHEDULE_SUNDAY + day), &place);
            // The display begins at the corner of the screen.
            Handset(L"tap " + std::to_wstring((place.left + place.right) / 2) + L" " +
                    std::to_wstring((place.top + place.bottom) / 2));
            EXPECT_TRUE(WaitForTraces("Check Result ", ++taps)) << day;
        }
        SendMessageW(GetDlgItem(dialog, IDC_SCHEDULE_ADD), BM_CLICK, 0, 0);
    }
    // A tap on the minutes, and the up key.
    static void StepMinute(HWND picker, int times) {
        RECT client = {};
        GetClientRect(picker, &client);
        for (int x = 30; x < client.right && x < 50; x += 5) Press(picker, x, client.bottom / 2);
        for (; times > 0; --times) SendMessageW(picker, WM_KEYDOWN, VK_UP, 1);
    }
    static void CloseRadio(const Radio& radio) {
        Handset(L"stop");
        EXPECT_TRUE(radio.WaitUntilGone());
    }
    int Traced(const std::string& text) const {
        const std::string trace = handset.Trace();
        int count = 0;
        for (std::size_t at = trace.find(text); at != std::string::npos; at = trace.find(text, at + 1))
            ++count;
        return count;
    }
    bool WaitForTraces(const std::string& text, int count) const {
        return WaitFor([&] { return Traced(text) >= count; });
    }
};

TEST_F(ScheduledRecording, BookedByHandStartsTheRadioAtItsTimeWithItsCommandLine) {
    const ServiceProcess service(handset);
    {
        Radio radio(handset);
        radio.WaitUntilShown();
        BookByHand(OpenDialog(radio), "98.5", {});
        EXPECT_THAT(handset.Trace(), HasSubstr("PreRecord total time is\t1 min\r\n"));
        CloseRadio(radio);
    }
    handset.ClearTunerLog();
    EXPECT_THAT(Handset(L"schedule"),
                HasSubstr("next Mon 2026-11-23 09:58:00, every week  \\Windows\\UI.exe -Rec "
                          "-Channel 9850 -Duration 1  RunAppAtTime-0000000001"));
    EXPECT_EQ(Traced("Channel: 9850\r\n"), 0);
    Handset(L"clock 2026-11-23 09:57:58");
    ASSERT_TRUE(WaitForTrace("Channel: 9850\r\nDuration: 1\r\n"));
    EXPECT_TRUE(WaitForCall("SetChannel 9850 -> 0"));
}

TEST_F(ScheduledRecording, TakesThePlaceOfARadioThatIsRunningWithItsDialogOpen) {
    const ServiceProcess service(handset);
    Radio radio(handset);
    radio.WaitUntilShown();
    BookByHand(OpenDialog(radio), "107.9", {});
    Handset(L"clock 2026-11-23 09:57:58");
    ASSERT_TRUE(radio.WaitUntilGone());
    EXPECT_TRUE(WaitForCall("SetChannel 10790 -> 0"));
    EXPECT_THAT(handset.Trace(), HasSubstr("FM is exist.szWindowClass : Kora"));
    EXPECT_EQ(Count(handset.TunerCalls(), "Initialize"), 2);
}

TEST_F(ScheduledRecording, StartsOnceThoughTheServiceIsKilledBeforeAndAfter) {
    {
        ServiceProcess service(handset);
        Radio radio(handset);
        radio.WaitUntilShown();
        BookByHand(OpenDialog(radio), "98.5", {});
        CloseRadio(radio);
        service.Kill();
    }
    {
        ServiceProcess service(handset);
        Handset(L"clock 2026-11-23 09:57:58");
        ASSERT_TRUE(WaitForTrace("Channel: 9850\r\n"));
        service.Kill();
    }
    const ServiceProcess service(handset);
    ASSERT_TRUE(
        WaitFor([] { return Handset(L"status").find("Service       running") != std::string::npos; }));
    // One that came later shows that the service has looked.
    Handset(L"clock 2026-11-30 09:57:59");
    ASSERT_TRUE(WaitForTraces("Channel: 9850\r\n", 2));
    EXPECT_EQ(Traced("Channel: 9850\r\n"), 2);
}

TEST_F(ScheduledRecording, ThreeDaysBookedByHandEachRecordAndCloseTheRadio) {
    const ServiceProcess service(handset);
    {
        Radio radio(handset);
        radio.WaitUntilShown();
        BookByHand(OpenDialog(radio), "87.6", {2, 4});
        CloseRadio(radio);
    }
    const int terminated = Traced("FM: Program Terminated.\n");
    Handset(L"clock 60");
    int done = 0;
    for (const wchar_t* day : {L"23", L"24", L"26"}) {
        Handset(std::wstring(L"clock 2026-11-") + day + L" 09:57:00");
        ++done;
        ASSERT_TRUE(WaitForTraces("** Pre-Record Time Out **\n", done)) << done;
        ASSERT_TRUE(WaitForTraces("FM: Program Terminated.\n", terminated + done)) << done;
    }
    EXPECT_EQ(Traced("Channel: 8760\r\nDuration: 1\r\n"), 3);
    const std::string schedule = Handset(L"schedule");
    for (const char* next :
         {"next Mon 2026-11-30 09:58:00", "next Tue 2026-12-01 09:58:00", "next Thu 2026-12-03 09:58:00"}) {
        EXPECT_THAT(schedule, HasSubstr(next));
    }
    EXPECT_THAT(Handset(L"status"), HasSubstr("not running"));
}

TEST_F(ScheduledRecording, WakesASleepingHandset) {
    const ServiceProcess service(handset);
    {
        Radio radio(handset);
        radio.WaitUntilShown();
        BookByHand(OpenDialog(radio), "98.5", {});
        CloseRadio(radio);
    }
    Handset(L"power suspend");
    Handset(L"clock 2026-11-23 09:57:58");
    ASSERT_TRUE(WaitForTrace("Channel: 9850\r\n"));
    EXPECT_TRUE(WaitForCall("SetChannel 9850 -> 0"));
    EXPECT_THAT(Handset(L"status"), HasSubstr("unattended"));
}

}  // namespace
