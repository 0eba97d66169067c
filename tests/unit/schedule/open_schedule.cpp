#include "tests/unit/schedule/open_schedule.h"

#include <commctrl.h>

#include <algorithm>
#include <atomic>

#include "schedule/schedule_dialog.h"

namespace test {
namespace {

constexpr wchar_t kDialogClass[] = L"#32770";
constexpr wchar_t kMenuClass[] = L"#32768";
constexpr UINT kGetMenu = 0x01E1;  // MN_GETHMENU

bool HasClass(HWND window, const wchar_t* name) {
    wchar_t actual[32] = L"";
    GetClassNameW(window, actual, 32);
    return _wcsicmp(actual, name) == 0;
}

struct Search {
    const wchar_t* className;
    HWND except;
    HWND found;
};

BOOL CALLBACK Match(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<Search*>(parameter);
    if (window == search.except || !HasClass(window, search.className) || !IsWindowVisible(window))
        return TRUE;
    search.found = window;
    return FALSE;
}

HWND VisibleOfThread(DWORD threadId, const wchar_t* className, HWND except = nullptr) {
    Search search = {className, except, nullptr};
    EnumThreadWindows(threadId, Match, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

std::wstring TextOf(HWND window) {
    wchar_t text[512] = L"";
    SendMessageW(window, WM_GETTEXT, 512, reinterpret_cast<LPARAM>(text));
    return text;
}

BoxSeen See(HWND box) {
    BoxSeen seen;
    seen.caption = TextOf(box);
    for (HWND child = GetWindow(box, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        if (HasClass(child, L"Button") && IsWindowVisible(child)) ++seen.buttons;
        if (!HasClass(child, L"Static")) continue;
        const bool icon = (GetWindowLongW(child, GWL_STYLE) & SS_TYPEMASK) == SS_ICON;
        seen.icon |= icon && SendMessageW(child, STM_GETICON, 0, 0) != 0;
        if (!icon) seen.text += TextOf(child);
    }
    return seen;
}

}  // namespace

OpenSchedule::OpenSchedule() {
    std::atomic<DWORD> threadId = 0;
    m_thread = std::thread([this, &threadId] {
        threadId = GetCurrentThreadId();
        m_result = RunScheduleDialog(nullptr);
    });
    WaitFor([&] { return threadId != 0; });
    m_threadId = threadId;
    EXPECT_TRUE(WaitFor([this] {
        m_dialog = VisibleOfThread(m_threadId, kDialogClass);
        return m_dialog != nullptr;
    }));
    Settle();
}

OpenSchedule::~OpenSchedule() {
    if (!m_thread.joinable()) return;
    while (const HWND box = FindBox()) {
        PostMessageW(box, WM_COMMAND, IDCANCEL, 0);
        WaitFor([&] { return !IsWindow(box); });
    }
    PostMessageW(m_dialog, WM_CLOSE, 0, 0);
    m_thread.join();
}

std::wstring OpenSchedule::Text(int id) const {
    return TextOf(Control(id));
}

void OpenSchedule::Command(int id) const {
    PostMessageW(m_dialog, WM_COMMAND, static_cast<WPARAM>(id), 0);
}

INT_PTR OpenSchedule::Result() {
    EXPECT_TRUE(WaitFor([this] { return !IsWindow(m_dialog); }));
    m_thread.join();
    return m_result;
}

void OpenSchedule::SetChannel(const wchar_t* text) const {
    SetDlgItemTextW(m_dialog, IDC_SCHEDULE_CHANNEL, text);
}

void OpenSchedule::SetTime(int picker, WORD hour, WORD minute) const {
    SYSTEMTIME time = {};
    GetLocalTime(&time);
    time.wHour = hour;
    time.wMinute = minute;
    SendMessageW(Control(picker), DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&time));
}

void OpenSchedule::SetTimes(WORD startHour, WORD startMinute, WORD endHour, WORD endMinute) const {
    SetTime(IDC_SCHEDULE_START, startHour, startMinute);
    SetTime(IDC_SCHEDULE_END, endHour, endMinute);
}

void OpenSchedule::TapDay(int day) const {
    RECT place = {};
    GetWindowRect(Control(IDC_SCHEDULE_SUNDAY + day), &place);
    POINT middle = {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
    // A static lets the stylus through to its dialog.
    EXPECT_EQ(
        SendMessageW(Control(IDC_SCHEDULE_SUNDAY + day), WM_NCHITTEST, 0, MAKELPARAM(middle.x, middle.y)),
        HTTRANSPARENT);
    ScreenToClient(m_dialog, &middle);
    SendMessageW(m_dialog, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(middle.x, middle.y));
    SendMessageW(m_dialog, WM_LBUTTONUP, 0, MAKELPARAM(middle.x, middle.y));
}

std::vector<int> OpenSchedule::SelectedDays() const {
    std::vector<int> days;
    const HDC dc = GetDC(nullptr);
    const HDC memory = CreateCompatibleDC(dc);
    for (int day = 0; day < 7; ++day) {
        SendMessageW(m_dialog, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(memory),
                     reinterpret_cast<LPARAM>(Control(IDC_SCHEDULE_SUNDAY + day)));
        if (GetBkColor(memory) == RGB(0, 0, 0)) days.push_back(day);
    }
    DeleteDC(memory);
    ReleaseDC(nullptr, dc);
    return days;
}

void OpenSchedule::ChooseDays(const std::vector<int>& days) const {
    const std::vector<int> now = SelectedDays();
    for (int day = 0; day < 7; ++day) {
        const auto isIn = [day](const std::vector<int>& list) {
            return std::find(list.begin(), list.end(), day) != list.end();
        };
        if (isIn(now) != isIn(days)) TapDay(day);
    }
}

void OpenSchedule::Settle() const {
    SendMessageW(m_dialog, WM_NULL, 0, 0);
}

void OpenSchedule::Add() const {
    DWORD_PTR result = 0;
    EXPECT_NE(
        SendMessageTimeoutW(m_dialog, WM_COMMAND, IDC_SCHEDULE_ADD, 0, SMTO_NORMAL, kDeadline_ms, &result), 0)
        << "a box came up";
}

BoxSeen OpenSchedule::AddAndAnswer() const {
    Command(IDC_SCHEDULE_ADD);
    return AnswerBox(IDOK);
}

HWND OpenSchedule::FindBox() const {
    return VisibleOfThread(m_threadId, kDialogClass, m_dialog);
}

BoxSeen OpenSchedule::AnswerBox(int button) const {
    HWND box = nullptr;
    EXPECT_TRUE(WaitFor([&] {
        box = FindBox();
        return box != nullptr;
    })) << "no box came up";
    if (box == nullptr) return {};
    const BoxSeen seen = See(box);
    PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(button), 0);
    EXPECT_TRUE(WaitFor([&] { return !IsWindow(box); }));
    Settle();
    return seen;
}

std::vector<std::wstring> OpenSchedule::ContextMenu(UINT command) const {
    PostMessageW(m_dialog, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(m_dialog), MAKELPARAM(60, 200));
    return ChooseFromMenu(command);
}

std::vector<std::wstring> OpenSchedule::SoftKeyMenu(UINT command) const {
    Command(IDC_SELECTED_BOOKING);
    return ChooseFromMenu(command);
}

std::vector<std::wstring> OpenSchedule::ChooseFromMenu(UINT command) const {
    HWND window = nullptr;
    EXPECT_TRUE(WaitFor([&] {
        window = VisibleOfThread(m_threadId, kMenuClass);
        return window != nullptr;
    })) << "no menu came up";
    std::vector<std::wstring> items;
    const auto menu = reinterpret_cast<HMENU>(SendMessageW(window, kGetMenu, 0, 0));
    UINT row = 0;
    for (UINT id : {888u, 889u}) {
        MENUITEMINFOW item = {};
        wchar_t text[64] = L"";
        item.cbSize = sizeof item;
        item.fMask = MIIM_STRING | MIIM_STATE;
        item.dwTypeData = text;
        item.cch = 64;
        if (!GetMenuItemInfoW(menu, id, FALSE, &item)) continue;
        items.push_back(text + std::wstring((item.fState & MFS_GRAYED) != 0 ? L" (grey)" : L""));
        if (id < command) ++row;
    }
    // Down to the item and Return, or out of the menu.
    for (UINT step = 0; command != 0 && step <= row; ++step) PostMessageW(m_dialog, WM_KEYDOWN, VK_DOWN, 1);
    PostMessageW(m_dialog, WM_KEYDOWN, command != 0 ? VK_RETURN : VK_ESCAPE, 1);
    EXPECT_TRUE(WaitFor([&] { return !IsWindowVisible(window); }));
    return items;
}

void OpenSchedule::SelectRow(int row) const {
    const HWND list = Control(IDC_SCHEDULE_LIST);
    LVITEMW item = {};
    item.state = item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    SendMessageW(list, LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    SendMessageW(list, LVM_SETSELECTIONMARK, 0, row);
}

std::vector<Texts> OpenSchedule::Rows() const {
    std::vector<Texts> rows;
    const HWND list = Control(IDC_SCHEDULE_LIST);
    const auto count = static_cast<int>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
    for (int row = 0; row < count; ++row) {
        std::wstring parts[4];
        for (int column = 0; column < 4; ++column) {
            wchar_t text[64] = L"";
            LVITEMW item = {};
            item.iSubItem = column;
            item.pszText = text;
            item.cchTextMax = 64;
            SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
            parts[column] = text;
        }
        rows.push_back({parts[0], parts[1], parts[2], parts[3]});
    }
    return rows;
}

void OpenSchedule::WaitForRows(std::size_t count) const {
    EXPECT_TRUE(WaitFor([&] { return Rows().size() == count; }));
}

}  // namespace test
