// A handset of a test's own: its registry lies under a key of its own, its screen has the size that the test
// gives it.
#pragma once

#include <windows.h>

#include <string>

namespace test {

class TestHandset {
  public:
    TestHandset();
    ~TestHandset();
    TestHandset(const TestHandset&) = delete;
    TestHandset& operator=(const TestHandset&) = delete;

    // Turns the display without telling anybody.
    void SetScreen(int width, int height) const;
    // The key below the host's HKEY_CURRENT_USER that is the device's root of that name, such as L"HKLM".
    std::wstring HostKey(const wchar_t* rootName) const;

  private:
    std::wstring m_stateKey;
};

// The device's message that the display has other dimensions, sent to one window.
void SendDisplayChange(HWND window);
// The place of a window on the screen, and its size: "0,294 240x26".
std::string PlaceOf(HWND window);

}  // namespace test
