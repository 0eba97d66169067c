// Painting the soft-key bar.
#include "handset/aygshell/soft_key_look.h"

#include <string>

#include "handset/base/mnemonic.h"
#include "handset/base/shell_look.h"

namespace handset {
namespace {

constexpr COLORREF kDivider = RGB(58, 63, 60);
constexpr COLORREF kTextDisabled = RGB(124, 130, 126);
constexpr COLORREF kTextPressed = RGB(12, 16, 4);
// Pixels of a bar with the usual rows.
constexpr int kFontHeight = 12;
constexpr int kSideMargin = 6;
constexpr int kMenuMarkWidth = 7;
constexpr int kMenuMarkHeight = 4;
constexpr int kMenuMarkGap = 6;
constexpr int kDividerMargin = 5;

struct KeyColours {
    COLORREF ground;
    COLORREF text;
    COLORREF mark;
};

KeyColours ColoursFor(UINT itemState) {
    if ((itemState & CDIS_DISABLED) != 0) return {kShellGround, kTextDisabled, kTextDisabled};
    if ((itemState & CDIS_SELECTED) != 0) return {kShellAccent, kTextPressed, kTextPressed};
    return {kShellGround, kShellText, kShellAccent};
}

void Fill(HDC dc, const RECT& area, COLORREF colour) {
    const OwnedBrush brush(CreateSolidBrush(colour));
    FillRect(dc, &area, brush.get());
}

std::wstring ButtonText(HWND toolbar, UINT command) {
    const LRESULT length = SendMessageW(toolbar, TB_GETBUTTONTEXTW, command, 0);
    if (length <= 0) return {};
    std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
    SendMessageW(toolbar, TB_GETBUTTONTEXTW, command, reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

// By how much a bar of that many rows is larger than the usual one.
int ScaleOf(LONG rows) {
    return rows >= 2 * kUsualBarRows ? 2 : 1;
}

// A small arrowhead that points to where the menu will open.
void PaintMenuMark(HDC dc, int left, int middle, int scale, COLORREF colour) {
    const int height = kMenuMarkHeight * scale;
    const int tip = left + kMenuMarkWidth * scale / 2;
    for (int row = 0; row < height; ++row) {
        const int top = middle - height / 2 + row;
        Fill(dc, {tip - row, top, tip + row + 1, top + 1}, colour);
    }
}

void PaintLabel(HDC dc, RECT area, int scale, const std::wstring& label, bool hasMenu,
                const KeyColours& colours) {
    constexpr UINT kFormat = DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX;
    RECT text = area;
    DrawTextW(dc, label.c_str(), -1, &text, kFormat | DT_CALCRECT);
    const LONG markWidth = hasMenu ? (kMenuMarkGap + kMenuMarkWidth) * scale : 0;
    const LONG room = area.right - area.left - 2 * kSideMargin * scale - markWidth;
    const LONG width = text.right - text.left < room ? text.right - text.left : room;
    text = {area.left + (area.right - area.left - width - markWidth) / 2, area.top, 0, area.bottom};
    text.right = text.left + width;
    SetTextColor(dc, colours.text);
    DrawTextW(dc, label.c_str(), -1, &text, kFormat);
    if (hasMenu) {
        PaintMenuMark(dc, text.right + kMenuMarkGap * scale, (area.top + area.bottom) / 2, scale,
                      colours.mark);
    }
}

void PaintKey(const NMTBCUSTOMDRAW& draw, HFONT font) {
    const HDC dc = draw.nmcd.hdc;
    const KeyColours colours = ColoursFor(draw.nmcd.uItemState);
    RECT area = draw.nmcd.rc;
    const int scale = ScaleOf(area.bottom - area.top);
    area.top += scale;  // the hairline above the bar stays
    Fill(dc, area, colours.ground);
    if (area.left > 0 && colours.ground == kShellGround) {
        const int margin = kDividerMargin * scale;
        Fill(dc, {area.left, area.top + margin, area.left + scale, area.bottom - margin}, kDivider);
    }

    const int saved = SaveDC(dc);
    SelectObject(dc, font);
    SetBkMode(dc, TRANSPARENT);
    const auto command = static_cast<UINT>(draw.nmcd.dwItemSpec);
    PaintLabel(dc, area, scale, WithoutMnemonic(ButtonText(draw.nmcd.hdr.hwndFrom, command)),
               draw.nmcd.lItemlParam != 0, colours);
    RestoreDC(dc, saved);
}

}  // namespace

OwnedFont SoftKeyFont(int rows) {
    LOGFONTW font = {};
    font.lfHeight = -kFontHeight * ScaleOf(rows);
    font.lfWeight = FW_BOLD;
    font.lfCharSet = DEFAULT_CHARSET;
    font.lfQuality = CLEARTYPE_QUALITY;
    lstrcpynW(font.lfFaceName, L"Tahoma", LF_FACESIZE);
    return OwnedFont(CreateFontIndirectW(&font));
}

void PaintBarGround(HDC dc, const RECT& client) {
    Fill(dc, client, kShellGround);
    Fill(dc, {client.left, client.top, client.right, client.top + ScaleOf(client.bottom - client.top)},
         kShellAccent);
}

LRESULT PaintSoftKey(const NMTBCUSTOMDRAW& draw, HFONT font) {
    switch (draw.nmcd.dwDrawStage) {
        case CDDS_PREERASE:
            return CDRF_SKIPDEFAULT;
        case CDDS_PREPAINT: {
            RECT client = {};
            GetClientRect(draw.nmcd.hdr.hwndFrom, &client);
            PaintBarGround(draw.nmcd.hdc, client);
            return CDRF_NOTIFYITEMDRAW;
        }
        case CDDS_ITEMPREPAINT:
            PaintKey(draw, font);
            return CDRF_SKIPDEFAULT;
        default:
            return CDRF_DODEFAULT;
    }
}

}  // namespace handset
