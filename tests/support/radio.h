// A running UI.exe, driven from outside: as a hand, the platform or another program would.
#pragma once

#include <windows.h>

#include <string>

#include "tests/support/handset_under_test.h"

namespace test {

class Radio {
  public:
    // Starts \Windows\UI.exe with `arguments` as its whole command line.
    explicit Radio(HandsetUnderTest& handset, const std::wstring& arguments = L"");
    // The radio that somebody else has started, by its main window. One that is gone already does not run.
    explicit Radio(HWND window);
    // Ends the process if it still runs.
    ~Radio();
    Radio(const Radio&) = delete;
    Radio& operator=(const Radio&) = delete;

    // Waits until the main window is there and has painted; fails the test otherwise.
    void WaitUntilShown();
    bool Runs() const;
    bool WaitUntilGone(DWORD deadline_ms = 20000) const;
    DWORD ExitCode() const;
    DWORD ProcessId() const { return m_process.dwProcessId; }
    HANDLE Process() const { return m_process.hProcess; }

    // The main window, null while there is none.
    HWND Window() const;
    HWND ListView() const;
    HWND MenuBar() const;

    // Stylus and keys, as posted messages; points are in the window's client area. They return at once: wait
    // for what they bring about.
    void Press(int x, int y) const;
    void MoveTo(int x, int y) const;
    void Lift(int x, int y) const;
    void Tap(int x, int y) const;
    void Key(WPARAM virtualKey) const;
    void Type(const std::string& digits) const;
    // A menu command, as the soft-key menus send it.
    void Command(WORD id) const;
    // The same as the accelerator table makes it of a key.
    void Shortcut(WORD id) const;
    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;

    // A message box of the process by its caption (null: any); null when there is none.
    HWND Box(const wchar_t* caption) const;
    static HWND BoxOf(DWORD process, const wchar_t* caption);
    HWND WaitForBox(const wchar_t* caption) const;
    static std::wstring BoxText(HWND box);
    static void Answer(HWND box, int button);

    // Colour of a pixel of the window as it stands on the screen.
    COLORREF Pixel(int x, int y) const;

  private:
    PROCESS_INFORMATION m_process = {};
};

}  // namespace test
