// DrawText, for letters that the host draws wider than it counts them: small ones, which its font has as
// bitmaps, while it measures the outlines of the same letters. What is laid at the right edge by that measure
// would lose its end.
#include <algorithm>
#include <climits>
#include <string>
#include <vector>

#include "handset/base/mnemonic.h"
#include "handset/coredll/kernel/call_guard.h"

namespace {

// No larger letters are bitmaps.
constexpr LONG kLargestBitmap_px = 16;

// As it is drawn.
std::wstring Letters(const wchar_t* text, int length, UINT format) {
    const std::wstring all =
        length < 0 ? std::wstring(text) : std::wstring(text, static_cast<std::size_t>(length));
    return (format & DT_NOPREFIX) != 0 ? all : handset::WithoutMnemonic(all);
}

bool HasBitmaps(HDC dc) {
    TEXTMETRICW metrics = {};
    GetTextMetricsW(dc, &metrics);
    return (metrics.tmPitchAndFamily & TMPF_TRUETYPE) != 0 &&
           metrics.tmHeight - metrics.tmInternalLeading <= kLargestBitmap_px;
}

// As it counts, where nobody knows.
LONG DrawnWidth(HDC dc, wchar_t letter, LONG counted) {
    constexpr MAT2 kUpright = {{0, 1}, {0, 0}, {0, 0}, {0, 1}};
    GLYPHMETRICS metrics = {};
    const DWORD drawn = GetGlyphOutlineW(dc, letter, GGO_BITMAP, &metrics, 0, nullptr, &kUpright);
    return drawn == GDI_ERROR ? counted : metrics.gmCellIncX;
}

// By how much a line of the text may be drawn wider than it is counted, in lines that count `width`.
LONG Surplus(HDC dc, const std::wstring& letters, LONG width) {
    const int count = static_cast<int>(letters.size());
    if (count == 0 || !HasBitmaps(dc)) return 0;
    std::vector<int> counted(letters.size());
    SIZE whole = {};
    if (!GetTextExtentExPointW(dc, letters.c_str(), count, 0, nullptr, counted.data(), &whole)) return 0;
    std::vector<LONG> ends = {0}, surplus = {0};  // up to each letter
    for (std::size_t at = 0; at < letters.size(); ++at) {
        ends.push_back(counted[at]);
        const LONG own = ends[at + 1] - ends[at];
        surplus.push_back(surplus.back() + DrawnWidth(dc, letters[at], own) - own);
    }
    if (whole.cx <= width) return std::max(surplus.back(), LONG{0});
    // Wherever its lines begin and end.
    LONG most = 0;
    for (std::size_t from = 0; from < letters.size(); ++from) {
        for (std::size_t to = from + 1; to < ends.size() && ends[to] - ends[from] <= width; ++to)
            most = std::max(most, surplus[to] - surplus[from]);
    }
    return most;
}

// What is clipped to a rectangle while the scope lasts.
class CClipped {
  public:
    CClipped(HDC dc, const RECT& rect) : dc_(dc), saved_(SaveDC(dc)) {
        IntersectClipRect(dc, rect.left, rect.top, rect.right, rect.bottom);
    }
    ~CClipped() { RestoreDC(dc_, saved_); }
    CClipped(const CClipped&) = delete;
    CClipped& operator=(const CClipped&) = delete;

  private:
    HDC dc_;
    int saved_;
};

// How wide a line can become: what is neither broken nor shortened by dots is as long as it is.
LONG WidthOfLines(const RECT& rect, UINT format) {
    constexpr UINT kFits = DT_WORDBREAK | DT_END_ELLIPSIS | DT_WORD_ELLIPSIS | DT_PATH_ELLIPSIS;
    return (format & kFits) != 0 ? rect.right - rect.left : LONG_MAX;
}

int Laid(HDC dc, const wchar_t* text, int length, RECT& rect, UINT format) {
    const LONG surplus = Surplus(dc, Letters(text, length, format), WidthOfLines(rect, format));
    if (surplus == 0) return DrawTextW(dc, text, length, &rect, format);
    RECT narrower = rect;
    narrower.right -= surplus;
    if ((format & DT_CALCRECT) != 0) {
        const int height = DrawTextW(dc, text, length, &narrower, format);
        rect = narrower;
        rect.right += surplus;
        return height;
    }
    if ((format & DT_NOCLIP) != 0) return DrawTextW(dc, text, length, &narrower, format);
    const CClipped clipped(dc, rect);
    return DrawTextW(dc, text, length, &narrower, format | DT_NOCLIP);
}

}  // namespace

COREDLL_EXPORT int WINAPI DeviceDrawTextW(HDC dc, const wchar_t* text, int length, RECT* rect,
                                          UINT format) try {
    const coredll::CCallGuard guard;
    if (text == nullptr || rect == nullptr || length < -1) return DrawTextW(dc, text, length, rect, format);
    return Laid(dc, text, length, *rect, format);
} catch (...) {
    return handset::EdgeAnswer<int>();
}
