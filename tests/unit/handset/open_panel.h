// The panel in a process of its own, handset.exe, with the stand-in for the radio on its display.
#pragma once

#include <string>

#include "handset/controls/host_folder.h"
#include "handset/controls/radio_windows.h"
#include "handset/phone/phone_layout.h"
#include "handset/phone/switch_column.h"
#include "handset/state/handset_protocol.h"
#include "handset/state/process_start.h"
#include "tests/unit/handset/booked_handset.h"

namespace panel {

class OpenPanelTest : public BookedHandset {
  protected:
    void SetUp() override {
        // There is one panel to a desktop: tests that open one take turns.
        turn_ = handset::OwnedHandle(CreateMutexW(nullptr, FALSE, L"KoraPanelTests"));
        WaitForSingleObject(turn_.get(), INFINITE);
        OpenPanel();
    }
    void TearDown() override {
        if (process_) {
            PostMessageW(window_, WM_CLOSE, 0, 0);
            if (WaitForSingleObject(process_.get(), kDeadline_ms) != WAIT_OBJECT_0)
                TerminateProcess(process_.get(), 1);
        }
        ReleaseMutex(turn_.get());
    }
    void OpenPanel() {
        std::wstring line = L"handset.exe panel";
        STARTUPINFOW startup = {};
        startup.cb = sizeof startup;
        PROCESS_INFORMATION process = {};
        ASSERT_TRUE(handset::StartProcess((ProgramFolder() + L"\\handset.exe").c_str(), line.data(), nullptr,
                                          nullptr, FALSE, 0, nullptr, nullptr, &startup, &process));
        CloseHandle(process.hThread);
        process_ = handset::OwnedHandle(process.hProcess);
        ASSERT_TRUE(WaitUntil(
            [&] {
                window_ = FindWindowW(handset::kPanelClass, nullptr);
                DWORD owner = 0;
                GetWindowThreadProcessId(window_, &owner);
                return owner == process.dwProcessId && IsWindowVisible(window_);
            },
            kDeadline_ms));
    }
    // As a program asks for it.
    void ClosePanel() {
        PostMessageW(window_, WM_CLOSE, 0, 0);
        ASSERT_EQ(WaitForSingleObject(process_.get(), kDeadline_ms), WAIT_OBJECT_0);
        process_ = handset::OwnedHandle();
    }
    [[nodiscard]] HWND Question() const {
        const HWND box = FindWindowW(L"#32770", L"Kora handset");
        DWORD owner = 0;
        GetWindowThreadProcessId(box, &owner);
        return box != nullptr && owner == GetProcessId(process_.get()) ? box : nullptr;
    }
    [[nodiscard]] bool HasEnded() const { return WaitForSingleObject(process_.get(), 0) == WAIT_OBJECT_0; }
    // Moved by its body, until it stands there: the host may still be placing it where it was opened.
    void DragTo(LONG x, LONG y) const {
        const POINT held = {upright_.body.x + 3, upright_.body.y + upright_.body.h / 2};
        ASSERT_TRUE(WaitUntil(
            [&] {
                RECT place = {};
                GetWindowRect(window_, &place);
                if (place.left == x && place.top == y) return true;
                SendMessageW(window_, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(held.x, held.y));
                SendMessageW(window_, WM_MOUSEMOVE, MK_LBUTTON,
                             MAKELPARAM(held.x + x - place.left, held.y + y - place.top));
                SendMessageW(window_, WM_LBUTTONUP, 0, MAKELPARAM(held.x, held.y));
                return false;
            },
            kDeadline_ms));
    }
    [[nodiscard]] POINT Origin() const { return DisplayOrigin(); }
    [[nodiscard]] bool RadioIsAtTheDisplay() const {
        RECT place = {};
        GetWindowRect(RadioMainWindow(), &place);
        const POINT origin = Origin();
        return place.left == origin.x && place.top == origin.y + 26;
    }
    void Click(const Box& box) const {
        const LPARAM place = MAKELPARAM(box.x + box.w / 2, box.y + box.h / 2);
        PostMessageW(window_, WM_LBUTTONDOWN, MK_LBUTTON, place);
        PostMessageW(window_, WM_LBUTTONUP, 0, place);
    }
    void ClickSwitch(const PhoneLayout& layout, const std::wstring& label) const {
        for (const SwitchPlace& place : LayOutColumn(layout.column).switches) {
            if (place.row->label == label) return Click(place.box);
        }
        FAIL() << "no such switch";
    }

    handset::OwnedHandle turn_, process_;
    HWND window_ = nullptr;
    PhoneLayout upright_ = LayOutPhone(240, 320);
};

}  // namespace panel
