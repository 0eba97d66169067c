// The schedule dialog on a thread of its own, and a hand that works it.
#pragma once

#include <string>
#include <thread>
#include <vector>

#include "tests/unit/schedule/schedule_test.h"

namespace test {

// A message box as it stood before it was answered.
struct BoxSeen {
    std::wstring caption, text;
    bool icon = false;
    std::size_t buttons = 0;
};

// Open for as long as the object lives, unless it is closed before.
class OpenSchedule {
  public:
    OpenSchedule();
    ~OpenSchedule();
    OpenSchedule(const OpenSchedule&) = delete;
    OpenSchedule& operator=(const OpenSchedule&) = delete;

    HWND Dialog() const { return m_dialog; }
    HWND Control(int id) const { return GetDlgItem(m_dialog, id); }
    std::wstring Text(int id) const;
    void Command(int id) const;
    // The dialog's result; waits until it is closed.
    INT_PTR Result();

    void SetChannel(const wchar_t* text) const;
    void SetTime(int picker, WORD hour, WORD minute) const;
    void SetTimes(WORD startHour, WORD startMinute, WORD endHour, WORD endMinute) const;
    // The stylus lifted from a day's middle.
    void TapDay(int day) const;
    // Selects exactly these days.
    void ChooseDays(const std::vector<int>& days) const;
    std::vector<int> SelectedDays() const;
    // "Add", with nothing in the way; then with a box that it brings up.
    void Add() const;
    BoxSeen AddAndAnswer() const;

    // Opens the list's context menu and gives its items, a grey one with "(grey)" behind it. The command is
    // then chosen; 0 leaves the menu.
    std::vector<std::wstring> ContextMenu(UINT command) const;
    // The same menu, opened by the soft key.
    std::vector<std::wstring> SoftKeyMenu(UINT command) const;
    BoxSeen AnswerBox(int button) const;
    void SelectRow(int row) const;
    std::vector<Texts> Rows() const;
    void WaitForRows(std::size_t count) const;

    // Everything that is posted to the dialog's thread before has been handled when this returns.
    void Settle() const;

  private:
    std::vector<std::wstring> ChooseFromMenu(UINT command) const;
    HWND FindBox() const;

    HWND m_dialog = nullptr;
    DWORD m_threadId = 0;
    INT_PTR m_result = -2;
    std::thread m_thread;
};

}  // namespace test
