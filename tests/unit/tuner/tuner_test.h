// What the tests of the tuner control share: the main state on a window with the real skin, and a tuner
// device that writes down its calls.
#pragma once

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "shell/app_block.h"
#include "shell/main_state.h"
#include "shell/messages.h"
#include "tests/support/fake_fm_device.h"
#include "tests/support/trace_capture.h"
#include "tests/support/wait.h"

// A text that was shown in a field of the main screen.
struct ShownText {
    int field;
    std::wstring text;
    bool operator==(const ShownText& other) const { return field == other.field && text == other.text; }
};
std::ostream& operator<<(std::ostream& out, const ShownText& shown);

class TunerTest : public testing::Test {
  protected:
    TunerTest();
    ~TunerTest() override;

    // A click as the skin reports it, on a toggle that has come to `frame`.
    void ClickToggle(int id, int frame);
    void Click(int id);
    void Repeat(int id);
    void Key(WPARAM virtualKey);
    void Type(const char* digits);
    // The stylus on the middle of an element.
    void Press(int buttonId);
    void Lift(int buttonId);

    // What the fields showed since the test began or ForgetShown; the last text of one field.
    static std::vector<ShownText> Shown();
    static std::wstring LastShown(int field);
    static void ForgetShown();

    test::FakeFMDevice device;
    std::unique_ptr<CMainState> state;
    HWND window = nullptr;

  private:
    LPARAM MiddleOf(int buttonId) const;
};
