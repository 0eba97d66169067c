// The message boxes that the program under test shows, answered by the test at once.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

namespace test {

struct ShownBox {
    HWND owner;
    std::wstring text;
    std::wstring caption;
    UINT style;
};

class MessageBoxes {
  public:
    MessageBoxes();
    ~MessageBoxes();
    MessageBoxes(const MessageBoxes&) = delete;
    MessageBoxes& operator=(const MessageBoxes&) = delete;

    int answer = IDOK;
    std::function<void()> whileShown;  // called on the thread that shows a box
    std::vector<ShownBox> Shown() const;
};

}  // namespace test
