#include "handset/coredll/windows/top_bar_look.h"

#include <algorithm>

#include "handset/base/owned.h"
#include "handset/base/shell_look.h"

namespace coredll {
namespace {

using handset::OwnedBrush;
using handset::OwnedFont;

constexpr COLORREF kSign = RGB(214, 220, 216);
constexpr COLORREF kUnlit = RGB(72, 78, 75);

// All of the following are pixels of a bar with the usual rows.
constexpr int kFontHeight = 12;
constexpr int kMargin = 6;
constexpr int kGap = 5;
constexpr int kSignHeight = 11;
constexpr int kSignWidth = 12;

// A sign as it stands on the bar, row by row: '#' a pixel, '+' a faint one.
using Sign = const char* const[kSignHeight];

constexpr Sign kLoudspeaker = {
    "    #    +  ",  //
    "   ##  +  # ",  //
    "  ###   # + ",  //
    "#####   +  #",  //
    "#####  # + #",  //
    "#####  # + #",  //
    "#####  # + #",  //
    "#####   +  #",  //
    "  ###   # + ",  //
    "   ##  +  # ",  //
    "    #    +  ",  //
};
constexpr Sign kHeadphones = {
    "   ######   ",  //
    " +##++++##+ ",  //
    " ##      ## ",  //
    "+#        #+",  //
    "##        ##",  //
    "#          #",  //
    "####    ####",  //
    "####    ####",  //
    "####    ####",  //
    "####    ####",  //
    " ##      ## ",  //
};
constexpr Sign kReceiver = {
    "            ",  //
    "            ",  //
    "  +######+  ",  //
    "+##########+",  //
    "############",  //
    "####+  +####",  //
    "####    ####",  //
    "+##+    +##+",  //
    "            ",  //
    "            ",  //
    "            ",  //
};

void Fill(HDC dc, const RECT& area, COLORREF colour) {
    const OwnedBrush brush(CreateSolidBrush(colour));
    FillRect(dc, &area, brush.get());
}

COLORREF Faint(COLORREF colour) {
    const auto half = [](int a, int b) { return static_cast<BYTE>((a + b) / 2); };
    return RGB(half(GetRValue(colour), GetRValue(handset::kShellGround)),
               half(GetGValue(colour), GetGValue(handset::kShellGround)),
               half(GetBValue(colour), GetBValue(handset::kShellGround)));
}

// One bar, being painted: signs and texts are put to its right end, one beside the other.
class CBarDrawing {
  public:
    CBarDrawing(HDC dc, const RECT& area)
        : dc_(dc),
          area_(area),
          scale_(std::max(1, static_cast<int>(area.bottom - area.top) / handset::kUsualBarRows)),
          right_(area.right - Px(kMargin)) {}

    void PutSign(const Sign& sign, COLORREF colour) {
        const POINT corner = PlaceForSign();
        for (int y = 0; y < kSignHeight; ++y) {
            for (int x = 0; sign[y][x] != '\0'; ++x) {
                if (sign[y][x] != ' ') Dot(corner, x, y, 1, 1, sign[y][x] == '#' ? colour : Faint(colour));
            }
        }
    }
    void PutSignal(int lit) {
        const POINT corner = PlaceForSign();
        for (int bar = 0; bar < kSignalBars; ++bar) {
            const int height = kSignHeight - 3 * (kSignalBars - 1 - bar);
            Dot(corner, 3 * bar, kSignHeight - height, 2, height, bar < lit ? kSign : kUnlit);
        }
    }
    void PutClock(const std::wstring& text) {
        SIZE size = {};
        GetTextExtentPoint32W(dc_, text.c_str(), static_cast<int>(text.size()), &size);
        right_ -= size.cx;
        Write(text, right_, right_ + size.cx);
        right_ -= Px(kGap);
    }
    // In what is left.
    void PutTitle(const std::wstring& text) { Write(text, area_.left + Px(kMargin), right_); }

    [[nodiscard]] int Px(int usual) const { return usual * scale_; }

  private:
    POINT PlaceForSign() {
        right_ -= Px(kSignWidth);
        const POINT corner = {right_, area_.top + (area_.bottom - area_.top - Px(kSignHeight)) / 2};
        right_ -= Px(kGap);
        return corner;
    }
    void Dot(POINT corner, int x, int y, int width, int height, COLORREF colour) const {
        Fill(dc_, {corner.x + Px(x), corner.y + Px(y), corner.x + Px(x + width), corner.y + Px(y + height)},
             colour);
    }
    void Write(const std::wstring& text, LONG left, LONG right) const {
        RECT place = {left, area_.top, right, area_.bottom};
        DrawTextW(dc_, text.c_str(), static_cast<int>(text.size()), &place,
                  DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
    }

    HDC dc_;
    RECT area_;
    int scale_;
    LONG right_;  // where the next sign ends
};

OwnedFont TextFont(int height) {
    LOGFONTW font = {};
    font.lfHeight = -height;
    font.lfWeight = FW_BOLD;
    font.lfCharSet = DEFAULT_CHARSET;
    font.lfQuality = CLEARTYPE_QUALITY;
    lstrcpynW(font.lfFaceName, L"Tahoma", LF_FACESIZE);
    return OwnedFont(CreateFontIndirectW(&font));
}

}  // namespace

void PaintTopBar(HDC dc, const RECT& area, const TopBarState& state) {
    CBarDrawing bar(dc, area);
    const OwnedFont font = TextFont(bar.Px(kFontHeight));
    const int saved = SaveDC(dc);
    SelectObject(dc, font.get());
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, handset::kShellText);
    Fill(dc, area, handset::kShellGround);
    Fill(dc, {area.left, area.bottom - bar.Px(1), area.right, area.bottom}, handset::kShellAccent);
    bar.PutClock(state.clock);
    bar.PutSign(state.headset ? kHeadphones : kLoudspeaker, kSign);
    bar.PutSignal(state.signal_bars);
    if (state.call) bar.PutSign(kReceiver, handset::kShellAccent);
    bar.PutTitle(state.title);
    RestoreDC(dc, saved);
}

}  // namespace coredll
