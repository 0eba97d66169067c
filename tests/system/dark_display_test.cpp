// The radio in its phone while the display is dark.
#include "handset/state/own_windows.h"
#include "handset/state/process_start.h"
#include "tests/system/radio_test.h"

namespace {

using test::Radio;
using test::RunProgram;
using test::WaitFor;

constexpr UINT kAfSwitched = 0xA404;

// The phone around the radio.
class Phone {
  public:
    Phone() {
        std::wstring line = L"handset.exe panel";
        STARTUPINFOW startup = {};
        startup.cb = sizeof startup;
        EXPECT_TRUE(handset::StartProcess((test::BuildFolder() + L"\\handset.exe").c_str(), line.data(),
                                          nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                                          &m_process));
        EXPECT_TRUE(WaitFor([] { return IsWindowVisible(Window()) != FALSE; }));
    }
    ~Phone() {
        PostMessageW(Window(), WM_CLOSE, 0, 0);
        if (WaitForSingleObject(m_process.hProcess, 20000) != WAIT_OBJECT_0)
            TerminateProcess(m_process.hProcess, 1);
        CloseHandle(m_process.hThread);
        CloseHandle(m_process.hProcess);
    }
    Phone(const Phone&) = delete;
    Phone& operator=(const Phone&) = delete;
    static HWND Window() { return handset::FindOwnWindow(L"KoraHandsetPanel"); }
    static HWND Darkness() { return handset::FindOwnWindow(L"KoraHandsetDarkness"); }
    static bool IsDark() { return Darkness() != nullptr && IsWindowVisible(Darkness()); }

  private:
    PROCESS_INFORMATION m_process = {};
};

// As it stands on the screen, in the middle of the window.
COLORREF ColourOf(HWND window) {
    RECT place = {};
    GetWindowRect(window, &place);
    const HDC screen = GetDC(nullptr);
    const COLORREF colour = GetPixel(screen, (place.left + place.right) / 2, place.top + 40);
    ReleaseDC(nullptr, screen);
    return colour;
}

class DarkDisplay : public test::RadioTest {
  protected:
    Phone phone;
};

TEST_F(DarkDisplay, ReturnLightsItAgainAlsoAfterItWasTouched) {
    Radio radio(handset);
    radio.WaitUntilShown();
    ASSERT_EQ(RunProgram(L"handset.exe", L"key return"), 0u);
    ASSERT_TRUE(WaitFor(Phone::IsDark));
    RECT place = {};
    GetWindowRect(Phone::Darkness(), &place);
    SetCursorPos((place.left + place.right) / 2, (place.top + place.bottom) / 2);
    for (const DWORD button : {MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP}) {
        INPUT input = {};
        input.type = INPUT_MOUSE;
        input.mi.dwFlags = button;
        SendInput(1, &input, sizeof input);
    }
    // The pointer's way back is seen after its click.
    ASSERT_EQ(RunProgram(L"handset.exe", L"key return"), 0u);
    EXPECT_TRUE(WaitFor([] { return !Phone::IsDark(); }));
    EXPECT_EQ(handset.Trace().find("***WA_INACTIVE***"), std::string::npos);
}

TEST_F(DarkDisplay, ABoxThatComesMeanwhileIsSeenWhenItIsLitAgain) {
    Radio radio(handset);
    radio.WaitUntilShown();
    ASSERT_EQ(RunProgram(L"handset.exe", L"power unattended"), 0u);
    ASSERT_TRUE(WaitFor(Phone::IsDark));
    PostMessageW(radio.Window(), kAfSwitched, 0, 0);
    HWND box = nullptr;
    ASSERT_TRUE(WaitFor([&] { return (box = radio.Box(L"FM")) != nullptr && IsWindowVisible(box); }));
    // The phone looks at its windows several times meanwhile.
    const ULONGLONG end = GetTickCount64() + 700;
    COLORREF seen = 0;
    WaitFor([&] { return (seen |= ColourOf(box)) != 0 || GetTickCount64() > end; });
    EXPECT_EQ(seen, 0u);
    ASSERT_EQ(RunProgram(L"handset.exe", L"power on"), 0u);
    ASSERT_TRUE(WaitFor([] { return !Phone::IsDark(); }));
    EXPECT_TRUE(WaitFor([&] { return ColourOf(box) != 0; }));
    Radio::Answer(box, IDOK);
    EXPECT_TRUE(WaitFor([&] { return radio.Box(L"FM") == nullptr; }));
}

}  // namespace
