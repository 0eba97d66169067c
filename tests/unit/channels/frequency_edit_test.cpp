// What a field for a frequency takes of what is typed.
#include "channels/frequency_edit.h"

#include <gtest/gtest.h>

#include <string>

namespace {

class FrequencyEdit : public testing::Test {
  protected:
    ~FrequencyEdit() override { DestroyWindow(edit); }
    std::wstring Typed(const wchar_t* keys) const {
        SetWindowTextW(edit, L"");
        for (; *keys != L'\0'; ++keys) SendMessageW(edit, WM_CHAR, *keys, 1);
        WCHAR text[32] = L"";
        GetWindowTextW(edit, text, 32);
        return text;
    }
    HWND edit = CreateWindowExW(0, L"EDIT", L"", WS_POPUP, 0, 0, 80, 20, nullptr, nullptr,
                                GetModuleHandleW(nullptr), nullptr);
};

TEST_F(FrequencyEdit, TakesDigitsAndOnePoint) {
    SubclassFrequencyEdit(edit);
    EXPECT_EQ(Typed(L"a9 8-.5.x0"), L"98.50");
}

TEST_F(FrequencyEdit, TakesAnythingAgainOnceItIsRestored) {
    SubclassFrequencyEdit(edit);
    RestoreFrequencyEdit(edit);
    EXPECT_EQ(Typed(L"a.b."), L"a.b.");
}

TEST_F(FrequencyEdit, OneThatWasNeverSubclassedStaysAsItIs) {
    RestoreFrequencyEdit(edit);
    EXPECT_EQ(Typed(L"a.b."), L"a.b.");
}

}  // namespace
