#include "channels/frequency_edit.h"

#include <cwchar>

#include "channels/frequency_input.h"

namespace {

constexpr int kFrequencyCapacity = 32;

WNDPROC OwnProcedure(HWND edit) {
    return reinterpret_cast<WNDPROC>(GetWindowLongW(edit, GWL_USERDATA));
}

LRESULT CALLBACK FrequencyEditProc(HWND edit, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_CHAR) {
        WCHAR text[kFrequencyCapacity] = L"";
        GetWindowTextW(edit, text, kFrequencyCapacity);
        if (!IsFrequencyCharacter(static_cast<WCHAR>(wParam), wcschr(text, L'.') != nullptr)) return 0;
    }
    return CallWindowProcW(OwnProcedure(edit), edit, message, wParam, lParam);
}

}  // namespace

void SubclassFrequencyEdit(HWND edit) {
    SetWindowLongW(edit, GWL_USERDATA, GetWindowLongW(edit, GWL_WNDPROC));
    SetWindowLongW(edit, GWL_WNDPROC, reinterpret_cast<LONG_PTR>(&FrequencyEditProc));
}

void RestoreFrequencyEdit(HWND edit) {
    if (OwnProcedure(edit) == nullptr) return;
    SetWindowLongW(edit, GWL_WNDPROC, reinterpret_cast<LONG_PTR>(OwnProcedure(edit)));
    SetWindowLongW(edit, GWL_USERDATA, 0);
}
