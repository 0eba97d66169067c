// What the shell's tests share: a main state with a tuner device that writes down its calls, and a window
// that writes down its messages.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "shell/app_block.h"
#include "shell/main_state.h"
#include "tests/support/fake_fm_device.h"
#include "tests/support/trace_capture.h"
#include "tests/support/wait.h"

namespace test {

struct SeenMessage {
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    DWORD tick;
};

class ShellTest : public testing::Test {
  protected:
    ShellTest();
    ~ShellTest() override;

    // Messages of the private ranges, commands and WM_CLOSE that reached the window.
    std::vector<SeenMessage> Seen() const { return m_seen; }
    bool HasSeen(UINT message) const;

    // Shows the window with its list, so that they can have the focus.
    void ShowWithList() const;
    // What the program has told the phone with AllKeys.
    static DWORD KeysWanted() { return StateDword(L"AllKeys"); }
    // A number of the handset's state; 0 when there is none.
    static DWORD StateDword(const WCHAR* name);
    // Called with each of them.
    std::function<void(UINT)> onMessage;

    FakeFMDevice device;
    CMainState* state = nullptr;
    HWND window = nullptr;

  private:
    static LRESULT CALLBACK Proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    std::vector<SeenMessage> m_seen;
};

// A worker thread that runs until its stop event, calling the platform all the while.
class Worker {
  public:
    explicit Worker(HANDLE stopEvent);
    HANDLE Thread() const { return m_thread; }
    // Rounds made so far.
    long Rounds() const { return m_rounds; }
    bool KeepsRunning() const;

  private:
    static DWORD WINAPI Run(LPVOID worker);
    HANDLE m_stop;
    HANDLE m_thread;
    volatile long m_rounds = 0;
};

}  // namespace test
