#include "channels/list_senders.h"

#include <commctrl.h>

namespace {

LRESULT Pass(HWND list, UINT message, WPARAM wParam, LPARAM lParam) {
    return SendMessageW(list, message, wParam, lParam);
}

LRESULT PassItemText(HWND list, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto& text = *reinterpret_cast<const ListItemText*>(lParam);
    LVITEMW item = {};
    item.iSubItem = text.nColumn;
    item.pszText = const_cast<WCHAR*>(text.pszText);
    return SendMessageW(list, message, wParam, reinterpret_cast<LPARAM>(&item));
}

LRESULT PassColumnWidth(HWND list, UINT message, WPARAM wParam, LPARAM lParam) {
    return SendMessageW(list, message, wParam, *reinterpret_cast<const int*>(lParam));
}

LRESULT PassWithoutParameters(HWND list, UINT message, WPARAM wParam, LPARAM) {
    return SendMessageW(list, message, wParam, 0);
}

struct SenderRow {
    UINT uMessage;
    LRESULT (*pass)(HWND, UINT, WPARAM, LPARAM);
    bool bAnswers;
};

// clang-format off
constexpr SenderRow kChannelList[] = {
    {LVM_DELETEALLITEMS,   Pass,            false},
    {LVM_GETITEMCOUNT,     Pass,            true},
    {LVM_INSERTITEMW,      Pass,            false},
    {LVM_SETITEMTEXTW,     PassItemText,    false},
    {LVM_GETSELECTIONMARK, Pass,            true},
    {LVM_SETCOLUMNWIDTH,   PassColumnWidth, false},
};

constexpr SenderRow kGroupList[] = {
    {LB_ADDSTRING,    Pass,                  false},
    {LB_INSERTSTRING, Pass,                  false},
    {LB_DELETESTRING, PassWithoutParameters, false},
    {LB_SETCURSEL,    PassWithoutParameters, false},
    {LB_GETCURSEL,    Pass,                  true},
    {LB_GETTEXT,      Pass,                  true},
    {LB_GETCOUNT,     Pass,                  true},
    {LB_FINDSTRING,   Pass,                  true},
    {LB_GETITEMDATA,  PassWithoutParameters, true},
    {LB_SETITEMDATA,  Pass,                  false},
};
// clang-format on

template <std::size_t count>
LRESULT SendByTable(const SenderRow (&table)[count], void* context, UINT message, WPARAM wParam,
                    LPARAM lParam) {
    if (context == nullptr) return 0;
    for (const SenderRow& row : table) {
        if (row.uMessage != message) continue;
        const LRESULT answer = row.pass(static_cast<HWND>(context), message, wParam, lParam);
        return row.bAnswers ? answer : 0;
    }
    return 0;
}

}  // namespace

LRESULT SendToChannelList(void* context, UINT message, WPARAM wParam, LPARAM lParam) {
    return SendByTable(kChannelList, context, message, wParam, lParam);
}

LRESULT SendToGroupList(void* context, UINT message, WPARAM wParam, LPARAM lParam) {
    return SendByTable(kGroupList, context, message, wParam, lParam);
}
