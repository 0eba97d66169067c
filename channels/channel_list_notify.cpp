#include "channels/channel_list_notify.h"

#include <commctrl.h>

#include "channels/list_selection.h"
#include "shell/main_state.h"
#include "skin/screen.h"

namespace {

constexpr COLORREF kWideText = 0x9E9E9E;
constexpr COLORREF kNameText = 0x80FFFF;       // yellow
constexpr COLORREF kFrequencyText = 0xFFFF80;  // cyan
// Behind the selected row: the skin's green, dark enough for either text, and for the wide screen's grey.
constexpr COLORREF kSelectedRow = RGB(40, 57, 10);

COLORREF TextColour(int column) {
    if (IsWideScreen()) return kWideText;
    return column == 0 ? kNameText : kFrequencyText;
}

LRESULT OnCustomDraw(const CMainState& state, NMLVCUSTOMDRAW& draw) {
    const DWORD stage = draw.nmcd.dwDrawStage;
    if (stage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
    if (stage == CDDS_ITEMPREPAINT) return CDRF_NOTIFYSUBITEMDRAW;
    if (stage != (CDDS_ITEMPREPAINT | CDDS_SUBITEM)) return CDRF_DODEFAULT;
    SelectObject(draw.nmcd.hdc, state.m_hListFont);
    draw.clrText = TextColour(draw.iSubItem);
    // The platform's own selection would take its colours for the text as well, whatever they are.
    if ((draw.nmcd.uItemState & CDIS_SELECTED) != 0 && GetFocus() == draw.nmcd.hdr.hwndFrom) {
        draw.nmcd.uItemState &= ~static_cast<UINT>(CDIS_SELECTED);
        draw.clrTextBk = kSelectedRow;
    }
    return CDRF_NEWFONT;
}

}  // namespace

LRESULT OnChannelListNotify(CMainState& state, HWND window, NMHDR* header) {
    if (header->code == static_cast<UINT>(NM_CUSTOMDRAW)) {
        return OnCustomDraw(state, *reinterpret_cast<NMLVCUSTOMDRAW*>(header));
    }
    if (header->code == static_cast<UINT>(LVN_ITEMACTIVATE)) {
        TuneToRow(state, window, reinterpret_cast<NMITEMACTIVATE*>(header)->iItem);
    }
    if (header->code == static_cast<UINT>(LVN_ITEMCHANGED)) {
        TuneToRowAfterRest(state, window, reinterpret_cast<NMLISTVIEW*>(header)->iItem);
    }
    return 0;
}
