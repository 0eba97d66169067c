// Who is in front when the radio starts.
#include "handset/state/process_start.h"
#include "tests/support/screen_picture.h"
#include "tests/system/radio_test.h"

namespace {

using test::Radio;
using test::RunProgram;
using test::WaitFor;
using testing::HasSubstr;
using testing::Not;

// Another program, in front of all and last used by hand.
class OtherProgram {
  public:
    OtherProgram() {
        WNDCLASSW windowClass = {};
        windowClass.lpfnWndProc = Proc;
        windowClass.lpszClassName = L"OtherProgram";
        RegisterClassW(&windowClass);
        s_clicks = 0;
        m_window = CreateWindowExW(0, L"OtherProgram", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 400, 100, 300,
                                   300, nullptr, nullptr, nullptr, nullptr);
        SetForegroundWindow(m_window);
        SetCursorPos(550, 250);
        for (const DWORD button : {MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP}) {
            INPUT input = {};
            input.type = INPUT_MOUSE;
            input.mi.dwFlags = button;
            SendInput(1, &input, sizeof input);
        }
        EXPECT_TRUE(WaitFor([this] { return GetForegroundWindow() == m_window && s_clicks == 1; }));
    }
    ~OtherProgram() { DestroyWindow(m_window); }
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;

  private:
    static LRESULT CALLBACK Proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == WM_LBUTTONUP) ++s_clicks;
        return DefWindowProcW(window, message, wParam, lParam);
    }
    static inline int s_clicks = 0;
    HWND m_window = nullptr;
};

class Foreground : public test::RadioTest {};

TEST_F(Foreground, ARadioThatIsStartedComesToTheFrontAndItsMonitorRuns) {
    const OtherProgram other;
    Radio radio(handset);
    radio.WaitUntilShown();
    EXPECT_TRUE(WaitFor([&] { return GetForegroundWindow() == radio.Window(); }));
    EXPECT_TRUE(WaitForRounds(3));
    EXPECT_THAT(handset.Trace(), HasSubstr("===WA_ACTIVE"));
    EXPECT_THAT(handset.Trace(), Not(HasSubstr("***WA_INACTIVE***")));
}

TEST_F(Foreground, SoDoesOneThatTheHostWouldShowBehindTheOthers) {
    const OtherProgram other;
    for (const WORD show : {SW_SHOWMINNOACTIVE, SW_SHOWNOACTIVATE, SW_HIDE}) {
        STARTUPINFOW startup = {};
        startup.cb = sizeof startup;
        startup.dwFlags = STARTF_USESHOWWINDOW;
        startup.wShowWindow = show;
        PROCESS_INFORMATION process = {};
        const std::wstring program = handset.DevicePath(L"\\Windows\\UI.exe");
        ASSERT_TRUE(handset::StartProcess(program.c_str(), nullptr, nullptr, nullptr, FALSE, 0, nullptr,
                                          nullptr, &startup, &process));
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
        HWND window = nullptr;
        ASSERT_TRUE(WaitFor([&] { return (window = FindWindowW(L"Kora", nullptr)) != nullptr; }));
        const Radio radio(window);
        EXPECT_TRUE(WaitFor([&] { return GetForegroundWindow() == window && IsWindowVisible(window); }))
            << show;
        EXPECT_FALSE(IsIconic(window)) << show;
        EXPECT_TRUE(WaitForRounds(3)) << show;
    }
}

TEST_F(Foreground, SoDoesTheBoxOfOneThatCannotPlayAndItsTitleSaysSo) {
    handset.PlugHeadset(false);
    const OtherProgram other;
    Radio radio(handset);
    const HWND box = radio.WaitForBox(L"WARNING");
    ASSERT_NE(box, nullptr);
    EXPECT_TRUE(WaitFor([&] { return GetForegroundWindow() == box; }));
    RECT title = {};
    GetWindowRect(box, &title);
    InflateRect(&title, -GetSystemMetrics(SM_CXDLGFRAME), -GetSystemMetrics(SM_CYDLGFRAME));
    title.bottom = title.top + GetSystemMetrics(SM_CYCAPTION) - 1;
    const std::size_t most =
        static_cast<std::size_t>(title.right - title.left) * (title.bottom - title.top) / 2;
    const COLORREF inFront = GetSysColor(COLOR_ACTIVECAPTION);
    EXPECT_TRUE(WaitFor([&] { return test::PixelsOf(test::PictureOf(title), inFront) > most; }));
    Radio::Answer(box, IDOK);
    EXPECT_TRUE(radio.WaitUntilGone());
}

TEST_F(Foreground, SoDoesOneThatTheCommandLineStarts) {
    const OtherProgram other;
    ASSERT_EQ(RunProgram(L"handset.exe", L"start"), 0u);
    HWND window = nullptr;
    ASSERT_TRUE(WaitFor([&] { return (window = FindWindowW(L"Kora", nullptr)) != nullptr; }));
    const Radio radio(window);
    EXPECT_TRUE(WaitFor([&] { return GetForegroundWindow() == window; }));
    EXPECT_TRUE(WaitForRounds(3));
}

}  // namespace
