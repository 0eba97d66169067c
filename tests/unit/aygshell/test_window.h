// A top-level window of the size of the display that records what reaches it.
#pragma once

#include <windows.h>

#include <functional>
#include <vector>

namespace test {

struct Received {
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
};

class TestWindow {
  public:
    TestWindow();
    ~TestWindow();
    TestWindow(const TestWindow&) = delete;
    TestWindow& operator=(const TestWindow&) = delete;

    HWND Get() const { return m_window; }
    void Destroy();
    std::vector<Received> Of(UINT message) const;
    std::size_t Count(UINT message) const { return Of(message).size(); }
    void Forget() { m_received.clear(); }

    // Called for each message before the window handles it.
    std::function<void(const Received&)> onMessage;

  private:
    static LRESULT CALLBACK Proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    HWND m_window = nullptr;
    std::vector<Received> m_received;
};

// The menus that are open on this thread, in the order of the z-order.
std::vector<HWND> OpenMenus();

}  // namespace test
