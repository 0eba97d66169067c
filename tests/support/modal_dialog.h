// A modal dialog of the calling thread, worked on while it is open.
#pragma once

#include <windows.h>

#include <functional>
#include <string>

namespace test {

class ModalDialog {
  public:
    // Runs `show`, which opens a dialog and returns when it ends, and once it is there `work` on it. `work`
    // has to end the dialog; one that it leaves open is ended by force, with kLeftOpen. The result of `show`.
    static constexpr INT_PTR kLeftOpen = 9999;
    static INT_PTR Run(const std::function<INT_PTR()>& show, const std::function<void(HWND)>& work) {
        ModalDialog self(work);
        const UINT_PTR timer = SetTimer(nullptr, 0, 10, Poll);
        const INT_PTR result = show();
        KillTimer(nullptr, timer);
        return result;
    }

  private:
    explicit ModalDialog(const std::function<void(HWND)>& work) : m_work(work) { Current() = this; }
    ~ModalDialog() { Current() = nullptr; }
    static ModalDialog*& Current() {
        static ModalDialog* current = nullptr;
        return current;
    }
    static BOOL CALLBACK FindDialog(HWND window, LPARAM found) {
        WCHAR name[16] = L"";
        GetClassNameW(window, name, 16);
        if (wcscmp(name, L"#32770") != 0 || !IsWindowVisible(window)) return TRUE;
        *reinterpret_cast<HWND*>(found) = window;
        return FALSE;
    }
    static void CALLBACK Poll(HWND, UINT, UINT_PTR, DWORD) {
        ModalDialog* self = Current();
        HWND dialog = nullptr;
        EnumThreadWindows(GetCurrentThreadId(), FindDialog, reinterpret_cast<LPARAM>(&dialog));
        if (self == nullptr || dialog == nullptr) return;
        if (self->m_worked) {
            EndDialog(dialog, kLeftOpen);
            return;
        }
        self->m_worked = true;
        self->m_work(dialog);
    }
    std::function<void(HWND)> m_work;
    bool m_worked = false;
};

// The text of one control.
inline std::wstring ControlText(HWND dialog, int id) {
    WCHAR text[260] = L"";
    GetDlgItemTextW(dialog, id, text, 260);
    return text;
}

}  // namespace test
